// CBool: the texts of the two truth values.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::base {

class VORN_API CBool : public CObject {
    VORN_DECLARE_CLASS(CBool)

public:
    static const unsigned int CC_FALSE;
    static const unsigned int CC_TRUE;
    static const unsigned int WCC_FALSE;
    // 5 although "true" has four characters; callers rely on the value as it is.
    static const unsigned int WCC_TRUE;
    static const char* const SZ_FALSE;
    static const char* const SZ_TRUE;
    static const unsigned short* WSZ_FALSE;
    static const unsigned short* WSZ_TRUE;

    static const char* ToString(bool value);
    static const unsigned short* ToUnicodeString(bool value);
};

} // namespace vorn::base
