#include <vorn/base/ClassNotFoundException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CClassNotFoundException, "vorn::base::CClassNotFoundException",
                       "vorn::base::CException")

CClassNotFoundException::CClassNotFoundException(const char* file, unsigned int line,
                                                 const char* description, const char* message,
                                                 const char* className)
    : CException(file, line, description, message) {
    if (className != nullptr && *className != '\0')
        m_className = className;
}

CClassNotFoundException::CClassNotFoundException(const CClassNotFoundException& other)
    : CException(other), m_className(other.m_className) {}

CClassNotFoundException& CClassNotFoundException::operator=(const CClassNotFoundException& other) {
    CException::operator=(other);
    m_className = other.m_className;
    return *this;
}

} // namespace vorn::base
