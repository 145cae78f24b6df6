// CDebugPrintStream: the print calls sent straight to the debug channel, one DBPrintf each. It is
// no byte sink: its Write always throws, so no decorator goes over it. CSystem::debugOut is one.
#pragma once

#include <vorn/io/PrintStream.h>

namespace vorn::io {

class VORN_API CDebugPrintStream : public CPrintStream {
    VORN_DECLARE_CLASS(CDebugPrintStream)

public:
    constexpr CDebugPrintStream() : CPrintStream(), m_open(true) {}

    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    // Silences the stream for good; repeatable.
    void Close() override;

    // Some of these print what their formats say rather than the value: Print(unsigned int)
    // prints "lu", Print(double) the low half of the value's bits as an int.
    void Print(vorn::base::CString const& text) override;
    void Print(char const* text) override;
    void Print(char value) override;
    void Print(double value) override;
    void Print(float value) override;
    void Print(unsigned int value) override;
    void Print(int value) override;
    void Print(short value) override;
    void Print(bool value) override;
    // Empty or null text prints nothing, not even the line end.
    void Println(vorn::base::CString const& text) override;
    void Println(char const* text) override;
    void Println(char value) override;
    void Println(double value) override;
    void Println(float value) override;
    void Println(unsigned int value) override;
    void Println(int value) override;
    void Println(short value) override;
    void Println(bool value) override;
    void Println() override;

private:
    void CheckOpen() const;

    bool m_open;
};

} // namespace vorn::io
