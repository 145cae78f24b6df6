// CClassNotFoundException: no class record under the name asked for.
#pragma once

#include <vorn/base/Exception.h>
#include <vorn/base/String.h>

namespace vorn::base {

class VORN_API CClassNotFoundException : public CException {
    VORN_DECLARE_CLASS(CClassNotFoundException)

public:
    // An empty or null `className` leaves the name empty.
    CClassNotFoundException(const char* file, unsigned int line, const char* description,
                            const char* message, const char* className);
    CClassNotFoundException(const CClassNotFoundException& other);
    CClassNotFoundException& operator=(const CClassNotFoundException& other);

    const CString& GetClassName() const { return m_className; }

private:
    CString m_className;
};

} // namespace vorn::base
