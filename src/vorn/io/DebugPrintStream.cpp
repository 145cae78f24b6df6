#include <vorn/io/DebugPrintStream.h>

#include <cstdint>
#include <cstring>

#include <vorn/io/IOException.h>

#include "platform/Debug.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CString;

namespace {

constexpr const char* kSource = "vorn/io/DebugPrintStream";
// Nothing beneath: m_open is the closed state, and Close only clears it.
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};

// What "%ld" finds in the argument slot of a double: the low 32 bits of its pattern. Passing the
// double itself to a 32-bit read would be undefined here.
int LowBits(double value) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return static_cast<int>(static_cast<std::uint32_t>(bits));
}

} // namespace

VORN_DEFINE_CLASS_BASE(CDebugPrintStream, "vorn::io::CDebugPrintStream", "vorn::io::CPrintStream")

void CDebugPrintStream::CheckOpen() const {
    if (!m_open)
        beneath::ThrowClosed(kClosed);
}

void CDebugPrintStream::Write(char const*, unsigned int, unsigned int) {
    CheckOpen();
    throw CIOException(kSource, __LINE__, "Unsupported on class CDebugPrintStream.", nullptr);
}

void CDebugPrintStream::Write(char const*, unsigned int) {
    CheckOpen();
    throw CIOException(kSource, __LINE__, "Unsupported on class CDebugPrintStream.", nullptr);
}

void CDebugPrintStream::Write(char) {
    CheckOpen();
    throw CIOException(kSource, __LINE__, "Unsupported on class CDebugPrintStream.", nullptr);
}

void CDebugPrintStream::Flush() {
    CheckOpen();
}

void CDebugPrintStream::Close() {
    m_open = false;
}

void CDebugPrintStream::Print(CString const& text) {
    CheckOpen();
    if (!text.IsEmpty())
        DBPrintf("%s", static_cast<const char*>(text));
}

void CDebugPrintStream::Print(char const* text) {
    CheckOpen();
    if (text != nullptr && *text != '\0')
        DBPrintf("%s", text);
}

void CDebugPrintStream::Print(char value) {
    CheckOpen();
    DBPrintf("%c", value);
}

void CDebugPrintStream::Print(double value) {
    CheckOpen();
    // Deliberate: "%ld" with the double's bits, where Println(double) has "%lf".
    DBPrintf("%ld", LowBits(value));
}

void CDebugPrintStream::Print(float value) {
    CheckOpen();
    DBPrintf("%f", static_cast<double>(value));
}

void CDebugPrintStream::Print(unsigned int value) {
    CheckOpen();
    // Deliberate: the format has no percent sign, so the letters lu are printed, not the value.
    DBPrintf("lu", value);
}

void CDebugPrintStream::Print(int value) {
    CheckOpen();
    DBPrintf("%ld", value);
}

void CDebugPrintStream::Print(short value) {
    CheckOpen();
    DBPrintf("%d", value);
}

void CDebugPrintStream::Print(bool value) {
    CheckOpen();
    DBPrintf("%s", value ? "true" : "false");
}

void CDebugPrintStream::Println(CString const& text) {
    CheckOpen();
    if (!text.IsEmpty())
        DBPrintf("%s\n", static_cast<const char*>(text));
}

void CDebugPrintStream::Println(char const* text) {
    CheckOpen();
    if (text != nullptr && *text != '\0')
        DBPrintf("%s\n", text);
}

void CDebugPrintStream::Println(char value) {
    CheckOpen();
    DBPrintf("%c\n", value);
}

void CDebugPrintStream::Println(double value) {
    CheckOpen();
    DBPrintf("%lf\n", value);
}

void CDebugPrintStream::Println(float value) {
    CheckOpen();
    DBPrintf("%f\n", static_cast<double>(value));
}

void CDebugPrintStream::Println(unsigned int value) {
    CheckOpen();
    DBPrintf("%lu\n", value);
}

void CDebugPrintStream::Println(int value) {
    CheckOpen();
    DBPrintf("%ld\n", value);
}

void CDebugPrintStream::Println(short value) {
    CheckOpen();
    DBPrintf("%d\n", value);
}

void CDebugPrintStream::Println(bool value) {
    CheckOpen();
    DBPrintf("%s\n", value ? "true" : "false");
}

void CDebugPrintStream::Println() {
    CheckOpen();
    DBPrintf("\n");
}

} // namespace vorn::io
