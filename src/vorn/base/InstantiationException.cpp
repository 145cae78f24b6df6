#include <vorn/base/InstantiationException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CInstantiationException, "vorn::base::CInstantiationException",
                       "vorn::base::CException")

CInstantiationException::CInstantiationException(const char* file, unsigned int line,
                                                 const char* description, const char* message,
                                                 const char* className)
    : CException(file, line, description, message) {
    if (className != nullptr && *className != '\0')
        m_className = className;
}

CInstantiationException::CInstantiationException(const CInstantiationException& other)
    : CException(other), m_className(other.m_className) {}

CInstantiationException& CInstantiationException::operator=(const CInstantiationException& other) {
    CException::operator=(other);
    m_className = other.m_className;
    return *this;
}

} // namespace vorn::base
