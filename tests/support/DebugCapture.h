// Captures the library's debug output for the life of the object.
#pragma once

#include <string>

#include "platform/Debug.h"

namespace vorn::test {

class DebugCapture {
public:
    DebugCapture() { vorn::platform::SetDebugHook(&DebugCapture::Append, this); }
    ~DebugCapture() { vorn::platform::SetDebugHook(nullptr, nullptr); }
    DebugCapture(const DebugCapture&) = delete;
    DebugCapture& operator=(const DebugCapture&) = delete;

    const std::string& Text() const { return m_text; }
    void Clear() { m_text.clear(); }

private:
    static void Append(const char* text, std::size_t length, void* context) {
        static_cast<DebugCapture*>(context)->m_text.append(text, length);
    }
    std::string m_text;
};

} // namespace vorn::test
