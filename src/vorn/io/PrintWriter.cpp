#include <vorn/io/PrintWriter.h>

#include <cstdarg>

#include <vorn/base/Bool.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/io/IOException.h>

#include "platform/Format.h"
#include "platform/UniText.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CString;
using vorn::base::CUnicodeString;

namespace {

constexpr const char* kSource = "vorn/io/PrintWriter";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Writer closed.",
                                      beneath::SecondClose::kQuiet};
const unsigned short kCRLF[] = {13, 10, 0};
constexpr unsigned int kScratchUnits = 256;

} // namespace

VORN_DEFINE_CLASS_BASE(CPrintWriter, "vorn::io::CPrintWriter", "vorn::io::CWriter")

CPrintWriter::CPrintWriter(vorn::base::CRef<CWriter> const& writer, bool autoFlush,
                           unsigned short const* endOfLine)
    : m_writer(beneath::Require(writer.GetPointer(), kSource, __LINE__, "Invalid writer.")),
      m_writerRef(writer), m_autoFlush(autoFlush), m_scratch{}, m_text(), m_endOfLine() {
    if (endOfLine != nullptr)
        m_endOfLine = endOfLine;
}

CPrintWriter::CPrintWriter(CWriter* writer, bool autoFlush, unsigned short const* endOfLine)
    : m_writer(beneath::Require(writer, kSource, __LINE__, "Invalid writer.")), m_writerRef(),
      m_autoFlush(autoFlush), m_scratch{}, m_text(), m_endOfLine() {
    if (endOfLine != nullptr)
        m_endOfLine = endOfLine;
}

CPrintWriter::~CPrintWriter() {}

void CPrintWriter::Write(CUnicodeString const& text, unsigned int offset, unsigned int count) {
    beneath::Open(m_writer, kClosed)->Write(text, offset, count);
}

void CPrintWriter::Write(CUnicodeString const& text) {
    beneath::Open(m_writer, kClosed)->Write(text);
}

void CPrintWriter::Write(unsigned short const* text, unsigned int offset, unsigned int count) {
    beneath::Open(m_writer, kClosed)->Write(text, offset, count);
}

void CPrintWriter::Write(unsigned short const* text, unsigned int count) {
    beneath::Open(m_writer, kClosed)->Write(text, count);
}

void CPrintWriter::Write(unsigned short value) {
    beneath::Open(m_writer, kClosed)->Write(value);
}

void CPrintWriter::Flush() {
    beneath::Open(m_writer, kClosed)->Flush();
}

void CPrintWriter::Close() {
    beneath::Close(m_writer, kClosed, [this] { m_writer->Flush(); });
}

void CPrintWriter::GetEndOfLine(CUnicodeString& result) {
    if (m_endOfLine.IsEmpty())
        result = kCRLF;
    else
        result = m_endOfLine;
}

void CPrintWriter::PrintFormatted(char const* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int count = ZK::vsnuprintf(m_scratch, kScratchUnits, format, arguments);
    va_end(arguments);
    // A text that fills the scratch area has no terminator: it is written as far as it got.
    unsigned int length = count >= 0 && static_cast<unsigned int>(count) < kScratchUnits
                              ? static_cast<unsigned int>(ZK::ucslen(m_scratch))
                              : kScratchUnits;
    Write(m_scratch, 0, length);
}

void CPrintWriter::Print(CString const& text) {
    m_text = static_cast<const char*>(text);
    Write(m_text);
}

void CPrintWriter::Print(CUnicodeString const& text) {
    Write(text);
}

void CPrintWriter::Print(char value) {
    PrintFormatted("%c", value);
}
void CPrintWriter::Print(short value) {
    PrintFormatted("%d", value);
}
void CPrintWriter::Print(unsigned short value) {
    PrintFormatted("%lc", value);
}
void CPrintWriter::Print(int value) {
    PrintFormatted("%ld", value);
}
void CPrintWriter::Print(unsigned int value) {
    PrintFormatted("%lu", value);
}
void CPrintWriter::Print(float value) {
    PrintFormatted("%f", static_cast<double>(value));
}
void CPrintWriter::Print(double value) {
    PrintFormatted("%lf", value);
}

void CPrintWriter::Print(char const* text) {
    if (text == nullptr)
        return;
    m_text = text;
    Write(m_text);
}

void CPrintWriter::Print(unsigned short const* text) {
    if (text == nullptr)
        return;
    Write(text, 0, static_cast<unsigned int>(ZK::ucslen(text)));
}

// Deliberate "%lu": it reads 32 bits, so the 64-bit value's low half is what is passed.
void CPrintWriter::Print(unsigned long long value) {
    PrintFormatted("%lu", static_cast<unsigned int>(value));
}

void CPrintWriter::Print(bool value) {
    ZK::ucscpy(m_scratch, value ? vorn::base::CBool::WSZ_TRUE : vorn::base::CBool::WSZ_FALSE);
    Write(m_scratch, 0, static_cast<unsigned int>(ZK::ucslen(m_scratch)));
}

void CPrintWriter::PrintInt(int value) {
    PrintFormatted("%d", value);
}
void CPrintWriter::PrintUnsignedChar(unsigned char value) {
    PrintFormatted("%d", value);
}
void CPrintWriter::PrintUnsignedInt(unsigned int value) {
    PrintFormatted("%u", value);
}
void CPrintWriter::PrintUnsignedShort(unsigned short value) {
    PrintFormatted("%hu", value);
}

void CPrintWriter::WriteNewLine() {
    // Only a null text reaches here unchecked; the closed writer is then a null access.
    if (m_writer == nullptr)
        throw vorn::base::CNullReferenceException(kSource, __LINE__);
    if (!m_endOfLine.IsEmpty())
        m_writer->Write(m_endOfLine);
    else
        m_writer->Write(kCRLF);
    if (m_autoFlush)
        m_writer->Flush();
}

void CPrintWriter::Println(CString const& text) {
    Print(text);
    WriteNewLine();
}

void CPrintWriter::Println(CUnicodeString const& text) {
    Print(text);
    WriteNewLine();
}

void CPrintWriter::Println(char value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(short value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(unsigned short value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(int value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(unsigned int value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(float value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(double value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println(unsigned short const* text) {
    Print(text);
    WriteNewLine();
}

void CPrintWriter::Println(bool value) {
    Print(value);
    WriteNewLine();
}

void CPrintWriter::Println() {
    beneath::Open(m_writer, kClosed);
    WriteNewLine();
}

} // namespace vorn::io
