#include "platform/UniString.h"

#include <unicode/ustring.h>

#include <cstring>

namespace ZK {

UniString::UniString(const char* text, ZKCharCode /*charCode*/) {
    if (text == nullptr || *text == '\0')
        return;
    // The default character set is UTF-8; bad sequences become U+FFFD.
    int32_t needed = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(nullptr, 0, &needed, text, -1, 0xFFFD, nullptr, &status);
    m_text.resize(static_cast<std::size_t>(needed));
    status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(m_text.data()), needed, nullptr, text, -1, 0xFFFD,
                         nullptr, &status);
}

} // namespace ZK
