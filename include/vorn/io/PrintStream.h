// CPrintStream: writes values as text on the byte stream beneath, with the platform's line end.
// Numbers are formatted in a scratch area inside the object, so printing allocates nothing.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/String.h>
#include <vorn/io/OutputStream.h>

namespace vorn::io {

class VORN_API CPrintStream : public COutputStream {
    VORN_DECLARE_CLASS(CPrintStream)

public:
    // The handle shares ownership of `stream`; the raw pointer leaves it with the caller.
    CPrintStream(vorn::base::CRef<COutputStream> const& stream, bool autoFlush);
    CPrintStream(COutputStream* stream, bool autoFlush);
    ~CPrintStream() override;

    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    // Flushes and closes the stream beneath; closed afterwards even when that fails.
    void Close() override;

    // Empty or null text writes nothing, so it doesn't notice a closed stream either.
    virtual void Print(vorn::base::CString const& text);
    virtual void Print(char const* text);
    virtual void Print(char value);
    virtual void Print(double value);
    virtual void Print(float value);
    virtual void Print(unsigned int value);
    virtual void Print(int value);
    virtual void Print(short value);
    virtual void Print(bool value);
    // Print, then the line end; with autoFlush the stream beneath is flushed after it.
    virtual void Println(vorn::base::CString const& text);
    virtual void Println(char const* text);
    virtual void Println(char value);
    virtual void Println(double value);
    virtual void Println(float value);
    virtual void Println(unsigned int value);
    virtual void Println(int value);
    virtual void Println(short value);
    virtual void Println(bool value);
    virtual void Println();

protected:
    // For subclasses with nothing beneath. Constant, so that a static instance needs no start-up.
    constexpr CPrintStream()
        : m_stream(nullptr), m_streamRef(), m_autoFlush(false), m_scratch{}, m_endOfLine() {}

private:
    CPrintStream(const CPrintStream&) = delete;
    CPrintStream& operator=(const CPrintStream&) = delete;

    void PrintFormatted(char const* format, ...);
    void WriteNewLine();

protected:
    COutputStream* m_stream; // null once closed
    vorn::base::CRef<COutputStream> m_streamRef;
    bool m_autoFlush;
    char m_scratch[256];
    vorn::base::CString m_endOfLine;
};

} // namespace vorn::io
