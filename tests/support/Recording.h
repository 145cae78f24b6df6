// Stream doubles that keep what reaches them and fail on request.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include <vorn/io/IOException.h>
#include <vorn/io/OutputStream.h>
#include <vorn/io/Writer.h>

#include "support/Utf16.h"

namespace vorn::test {

inline void FailIf(bool fail, const char* text) {
    if (fail)
        throw vorn::io::CIOException("test/Recording", 1, text, nullptr);
}

// `bytes` as written; `log` the same with each flush as "|F" and each close as "|C"; `calls`
// with each counted write as "[hex]", each single byte as "<hex>", a flush as "F", a close as "C".
class CRecordingStream : public vorn::io::COutputStream {
public:
    using COutputStream::Write;
    void Write(const char* buffer, unsigned int offset, unsigned int count) override {
        FailIf(failWrite, "Write failed.");
        blocks.push_back(count);
        Keep(buffer + offset, count, "[", "]");
    }
    void Write(char value) override {
        FailIf(failWrite, "Write failed.");
        Keep(&value, 1, "<", ">");
    }
    void Flush() override {
        ++flushes;
        log += "|F";
        calls += "F";
        FailIf(failFlush, "Flush failed.");
    }
    void Close() override {
        ++closes;
        log += "|C";
        calls += "C";
        FailIf(failClose, "Close failed.");
    }

    std::string bytes, log, calls;
    std::vector<unsigned int> blocks;
    int flushes = 0, closes = 0;
    bool failWrite = false, failFlush = false, failClose = false;

private:
    void Keep(const char* data, unsigned int count, const char* open, const char* close) {
        bytes.append(data, count);
        log.append(data, count);
        calls += open;
        for (char digits[3]; count-- > 0; calls += digits)
            std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(*data++));
        calls += close;
    }
};

// `log` holds the units written with each flush as "|F" and each close as "|C"; `writes` counts
// the calls of the primitive.
class CRecordingWriter : public vorn::io::CWriter {
public:
    using CWriter::Write;
    void Write(const unsigned short* text, unsigned int offset, unsigned int count) override {
        ++writes;
        log.append(text + offset, count);
    }
    void Flush() override {
        log += W(u"|F");
        FailIf(failFlush, "Flush failed.");
    }
    void Close() override {
        log += W(u"|C");
        FailIf(failClose, "Close failed.");
    }

    WString log;
    int writes = 0;
    bool failFlush = false, failClose = false;
};

} // namespace vorn::test
