#include <vorn/base/Bool.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CBool, "vorn::base::CBool", "vorn::base::CObject")

namespace {
const unsigned short kFalse[] = {'f', 'a', 'l', 's', 'e', 0};
const unsigned short kTrue[] = {'t', 'r', 'u', 'e', 0};
} // namespace

const unsigned int CBool::CC_FALSE = 5;
const unsigned int CBool::CC_TRUE = 4;
const unsigned int CBool::WCC_FALSE = 5;
const unsigned int CBool::WCC_TRUE = 5;
const char* const CBool::SZ_FALSE = "false";
const char* const CBool::SZ_TRUE = "true";
const unsigned short* CBool::WSZ_FALSE = kFalse;
const unsigned short* CBool::WSZ_TRUE = kTrue;

const char* CBool::ToString(bool value) {
    return value ? SZ_TRUE : SZ_FALSE;
}

const unsigned short* CBool::ToUnicodeString(bool value) {
    return value ? WSZ_TRUE : WSZ_FALSE;
}

} // namespace vorn::base
