#include <vorn/io/AccessDeniedException.h>
#include <vorn/io/CharConversionException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/InterruptedIOException.h>
#include <vorn/io/UnknownCharacterException.h>
#include <vorn/io/XMLException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CIOException, "vorn::io::CIOException", "vorn::base::CException")

CIOException::CIOException(const char* file, unsigned int line, const char* description,
                           const char* message)
    : vorn::base::CException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CAccessDeniedException, "vorn::io::CAccessDeniedException",
                       "vorn::io::CIOException")

CAccessDeniedException::CAccessDeniedException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CIOException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CCharConversionException, "vorn::io::CCharConversionException",
                       "vorn::io::CIOException")

CCharConversionException::CCharConversionException(const char* file, unsigned int line,
                                                   const char* description, const char* message)
    : CIOException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CInterruptedIOException, "vorn::io::CInterruptedIOException",
                       "vorn::io::CIOException")

CInterruptedIOException::CInterruptedIOException(const char* file, unsigned int line,
                                                 const char* description, const char* message)
    : CIOException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CXMLException, "vorn::io::CXMLException", "vorn::io::CIOException")

CXMLException::CXMLException(const char* file, unsigned int line, const char* description,
                             const char* message)
    : CIOException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CUnknownCharacterException, "vorn::io::CUnknownCharacterException",
                       "vorn::io::CCharConversionException")

CUnknownCharacterException::CUnknownCharacterException(const char* file, int line,
                                                       unsigned short character)
    : CCharConversionException(file, static_cast<unsigned int>(line), nullptr, nullptr),
      m_character(character) {}

} // namespace vorn::io
