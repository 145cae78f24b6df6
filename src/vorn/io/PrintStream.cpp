#include <vorn/io/PrintStream.h>

#include <cstdarg>
#include <cstring>

#include <vorn/base/Bool.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>

#include "platform/Debug.h"
#include "platform/Format.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CString;

namespace {
constexpr const char* kSource = "vorn/io/PrintStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};
} // namespace

VORN_DEFINE_CLASS_BASE(CPrintStream, "vorn::io::CPrintStream", "vorn::io::COutputStream")

// The doubled letter of "ooutput" is deliberate.
CPrintStream::CPrintStream(vorn::base::CRef<COutputStream> const& stream, bool autoFlush)
    : m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid ooutput stream.")),
      m_streamRef(stream), m_autoFlush(autoFlush), m_scratch{}, m_endOfLine(ZK::EOL) {}

CPrintStream::CPrintStream(COutputStream* stream, bool autoFlush)
    : m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid output stream.")),
      m_streamRef(), m_autoFlush(autoFlush), m_scratch{}, m_endOfLine(ZK::EOL) {}

CPrintStream::~CPrintStream() {}

void CPrintStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    beneath::Open(m_stream, kClosed)->Write(buffer, offset, count);
}

void CPrintStream::Write(char const* buffer, unsigned int count) {
    beneath::Open(m_stream, kClosed)->Write(buffer, count);
}

void CPrintStream::Write(char value) {
    beneath::Open(m_stream, kClosed)->Write(value);
}

void CPrintStream::Flush() {
    beneath::Open(m_stream, kClosed)->Flush();
}

void CPrintStream::Close() {
    beneath::Close(m_stream, kClosed, [this] { m_stream->Flush(); });
}

void CPrintStream::PrintFormatted(char const* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int length = vorn::platform::FormatV(m_scratch, sizeof m_scratch, format, arguments);
    va_end(arguments);
    // None of the formats comes near the scratch size; the bound keeps the write inside it.
    if (length < 0 || static_cast<unsigned int>(length) >= sizeof m_scratch)
        length = static_cast<int>(std::strlen(m_scratch));
    Write(m_scratch, static_cast<unsigned int>(length));
}

void CPrintStream::Print(CString const& text) {
    if (text.IsEmpty())
        return;
    Write(static_cast<const char*>(text), text.GetLength());
}

void CPrintStream::Print(char const* text) {
    if (text == nullptr)
        return;
    Write(text, static_cast<unsigned int>(std::strlen(text)));
}

void CPrintStream::Print(char value) {
    PrintFormatted("%c", value);
}
void CPrintStream::Print(double value) {
    PrintFormatted("%lg", value);
}
void CPrintStream::Print(float value) {
    PrintFormatted("%g", static_cast<double>(value));
}
void CPrintStream::Print(unsigned int value) {
    PrintFormatted("%lu", value);
}
void CPrintStream::Print(int value) {
    PrintFormatted("%ld", value);
}
void CPrintStream::Print(short value) {
    PrintFormatted("%hd", value);
}

void CPrintStream::Print(bool value) {
    PrintFormatted("%s", value ? vorn::base::CBool::SZ_TRUE : vorn::base::CBool::SZ_FALSE);
}

void CPrintStream::WriteNewLine() {
    beneath::Open(m_stream, kClosed)
        ->Write(static_cast<const char*>(m_endOfLine), m_endOfLine.GetLength());
    if (m_autoFlush)
        m_stream->Flush();
}

void CPrintStream::Println(CString const& text) {
    Print(text);
    WriteNewLine();
}

void CPrintStream::Println(char const* text) {
    Print(text);
    WriteNewLine();
}

void CPrintStream::Println(char value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(double value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(float value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(unsigned int value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(int value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(short value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println(bool value) {
    Print(value);
    WriteNewLine();
}

void CPrintStream::Println() {
    WriteNewLine();
}

} // namespace vorn::io
