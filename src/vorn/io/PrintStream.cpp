#include <vorn/io/PrintStream.h>

#include <cstdarg>
#include <cstring>

#include <vorn/base/Bool.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>

#include "platform/Debug.h"
#include "platform/Format.h"

namespace vorn::io {

using vorn::base::CString;

namespace {
const char* const kSource = "vorn/io/PrintStream";
}

VORN_DEFINE_CLASS_BASE(CPrintStream, "vorn::io::CPrintStream", "vorn::io::COutputStream")

CPrintStream::CPrintStream(vorn::base::CRef<COutputStream> const& stream, bool autoFlush)
    : m_stream(nullptr), m_streamRef(), m_autoFlush(autoFlush), m_scratch{}, m_endOfLine() {
    if (stream.IsNull())
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid ooutput stream.");
    m_endOfLine = ZK::EOL;
    m_streamRef = stream;
    m_stream = stream.GetPointer();
}

CPrintStream::CPrintStream(COutputStream* stream, bool autoFlush)
    : m_stream(nullptr), m_streamRef(), m_autoFlush(autoFlush), m_scratch{}, m_endOfLine() {
    if (stream == nullptr)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid output stream.");
    m_endOfLine = ZK::EOL;
    m_stream = stream;
}

CPrintStream::~CPrintStream() {}

void CPrintStream::CheckOpen(unsigned int line) const {
    if (m_stream == nullptr)
        throw CIOException(kSource, line, "Stream closed.", nullptr);
}

void CPrintStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    CheckOpen(__LINE__);
    m_stream->Write(buffer, offset, count);
}

void CPrintStream::Write(char const* buffer, unsigned int count) {
    CheckOpen(__LINE__);
    m_stream->Write(buffer, count);
}

void CPrintStream::Write(char value) {
    CheckOpen(__LINE__);
    m_stream->Write(value);
}

void CPrintStream::Flush() {
    CheckOpen(__LINE__);
    m_stream->Flush();
}

void CPrintStream::Close() {
    if (m_stream == nullptr)
        return;
    try {
        m_stream->Flush();
    } catch (CIOException&) {
        try {
            m_stream->Close();
        } catch (CIOException&) {
            // the flush's failure is the one to report
        }
        m_stream = nullptr;
        throw;
    }
    try {
        m_stream->Close();
    } catch (CIOException&) {
        m_stream = nullptr;
        throw;
    }
    m_stream = nullptr;
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
    CheckOpen(__LINE__);
    m_stream->Write(static_cast<const char*>(m_endOfLine), m_endOfLine.GetLength());
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
