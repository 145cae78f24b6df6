// CInstantiationException: a class record that can't make an object.
#pragma once

#include <vorn/base/Exception.h>
#include <vorn/base/String.h>

namespace vorn::base {

class VORN_API CInstantiationException : public CException {
    VORN_DECLARE_CLASS(CInstantiationException)

public:
    // An empty or null `className` leaves the name empty.
    CInstantiationException(const char* file, unsigned int line, const char* description,
                            const char* message, const char* className);
    CInstantiationException(const CInstantiationException& other);
    CInstantiationException& operator=(const CInstantiationException& other);

    const CString& GetClassName() const { return m_className; }

private:
    CString m_className;
};

} // namespace vorn::base
