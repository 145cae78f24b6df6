// CUnknownCharacterException: a character that the encoding can't represent.
#pragma once

#include <vorn/io/CharConversionException.h>

namespace vorn::io {

class VORN_API CUnknownCharacterException : public CCharConversionException {
    VORN_DECLARE_CLASS(CUnknownCharacterException)

public:
    CUnknownCharacterException(const char* file, int line, unsigned short character);

private:
    [[maybe_unused]] unsigned short m_character; // kept for a debugger; there is no getter
};

} // namespace vorn::io
