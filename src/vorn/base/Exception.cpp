#include <vorn/base/Exception.h>

#include <cstring>

#include "platform/Memory.h"

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CException, "vorn::base::CException", "vorn::base::CObject")

CException::CException(const char* file, unsigned int line, const char* errorDescription,
                       const char* message)
    : m_sourceFile(file), m_sourceLine(line), m_errorDescription(errorDescription),
      m_message(nullptr) {
    SetMessage(message); // an exception that lost its message to low memory still travels
}

CException::CException(const CException& other)
    : CObject(other), m_sourceFile(other.m_sourceFile), m_sourceLine(other.m_sourceLine),
      m_errorDescription(other.m_errorDescription), m_message(nullptr) {
    SetMessage(other.m_message);
}

CException& CException::operator=(const CException& other) {
    if (this != &other) {
        m_sourceFile = other.m_sourceFile;
        m_sourceLine = other.m_sourceLine;
        m_errorDescription = other.m_errorDescription;
        SetMessage(other.m_message);
    }
    return *this;
}

CException::~CException() {
    ZK_free(m_message);
}

bool CException::SetMessage(const char* text) {
    if (m_message != nullptr) {
        ZK_free(m_message);
        m_message = nullptr;
    }
    if (text == nullptr || *text == '\0')
        return true;
    std::size_t size = std::strlen(text) + 1;
    char* copy = static_cast<char*>(ZK_malloc(size));
    if (copy == nullptr)
        return false;
    std::memcpy(copy, text, size);
    m_message = copy;
    return true;
}

} // namespace vorn::base
