// A byte sink that records each call that reaches it: a counted write as "[hex]", a single byte
// as "<hex>", a flush as "F" and a close as "C" (which can be made to fail).
#pragma once

#include <cstdio>
#include <string>

#include <vorn/io/IOException.h>
#include <vorn/io/OutputStream.h>

namespace vorn::test {

class CStreamLog : public vorn::io::COutputStream {
public:
    void Write(char const* buffer, unsigned int offset, unsigned int count) override {
        log += "[" + Hex(buffer + offset, count) + "]";
    }
    void Write(char const* buffer, unsigned int count) override { Write(buffer, 0, count); }
    void Write(char value) override { log += "<" + Hex(&value, 1) + ">"; }
    void Flush() override { log += "F"; }
    void Close() override {
        log += "C";
        if (failClose)
            throw vorn::io::CIOException("log", 1, "Close failed.", nullptr);
    }

    static std::string Hex(char const* bytes, unsigned int count) {
        std::string text;
        char digits[3];
        for (unsigned int i = 0; i < count; ++i) {
            std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(bytes[i]));
            text += digits;
        }
        return text;
    }

    std::string log;
    bool failClose = false;
};

} // namespace vorn::test
