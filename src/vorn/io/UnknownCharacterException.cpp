#include <vorn/io/UnknownCharacterException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CUnknownCharacterException, "vorn::io::CUnknownCharacterException",
                       "vorn::io::CCharConversionException")

CUnknownCharacterException::CUnknownCharacterException(const char* file, int line,
                                                       unsigned short character)
    : CCharConversionException(file, static_cast<unsigned int>(line), nullptr, nullptr),
      m_character(character) {}

} // namespace vorn::io
