// CPrintWriter: writes values as UTF-16 text on the writer beneath, lines ending in CR LF unless
// told otherwise. The XML text writer prints through one.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/Writer.h>

namespace vorn::io {

class VORN_API CPrintWriter : public CWriter {
    VORN_DECLARE_CLASS(CPrintWriter)

public:
    // A null or empty `endOfLine` selects CR LF.
    CPrintWriter(vorn::base::CRef<CWriter> const& writer, bool autoFlush,
                 unsigned short const* endOfLine);
    CPrintWriter(CWriter* writer, bool autoFlush, unsigned short const* endOfLine);
    ~CPrintWriter() override;

    using CWriter::Write;
    // Each checks for closed and hands the call on unchanged.
    void Write(vorn::base::CUnicodeString const& text, unsigned int offset,
               unsigned int count) override;
    void Write(vorn::base::CUnicodeString const& text) override;
    void Write(unsigned short const* text, unsigned int offset, unsigned int count) override;
    void Write(unsigned short const* text, unsigned int count) override;
    void Write(unsigned short value) override;
    void Flush() override;
    // Flushes and closes the writer beneath; closed afterwards even when that fails.
    void Close() override;

    void GetEndOfLine(vorn::base::CUnicodeString& result);

    // Even empty text goes to Write, so a closed writer always says so.
    void Print(vorn::base::CString const& text);
    void Print(vorn::base::CUnicodeString const& text);
    void Print(char value);
    void Print(short value);
    // The character with that code, not the number.
    void Print(unsigned short value);
    void Print(int value);
    void Print(unsigned int value);
    void Print(float value);
    void Print(double value);
    // A null pointer writes nothing, in this form and the next.
    void Print(char const* text);
    void Print(unsigned short const* text);
    // Only the low 32 bits reach the text.
    void Print(unsigned long long value);
    void Print(bool value);
    void PrintInt(int value);
    void PrintUnsignedChar(unsigned char value);
    void PrintUnsignedInt(unsigned int value);
    void PrintUnsignedShort(unsigned short value);

    // Print, then the line end; with autoFlush the writer beneath is flushed after it.
    void Println(vorn::base::CString const& text);
    void Println(vorn::base::CUnicodeString const& text);
    void Println(char value);
    void Println(short value);
    void Println(unsigned short value);
    void Println(int value);
    void Println(unsigned int value);
    void Println(float value);
    void Println(double value);
    void Println(unsigned short const* text);
    void Println(bool value);
    void Println();

private:
    CPrintWriter(const CPrintWriter&) = delete;
    CPrintWriter& operator=(const CPrintWriter&) = delete;

    void PrintFormatted(char const* format, ...);
    void WriteNewLine();

    CWriter* m_writer; // null once closed
    vorn::base::CRef<CWriter> m_writerRef;
    bool m_autoFlush;
    unsigned short m_scratch[256];
    vorn::base::CUnicodeString m_text;
    vorn::base::CUnicodeString m_endOfLine;
};

} // namespace vorn::io
