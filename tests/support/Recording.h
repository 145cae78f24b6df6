// Stream doubles that keep what reaches them and fail on request.
#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <vorn/io/IOException.h>
#include <vorn/io/OutputStream.h>
#include <vorn/io/Reader.h>
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
        FailIf(failWrite || ++counted == failCountedWrite, "Write failed.");
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
    // The counted write of this number (1 = the first) fails, once.
    int failCountedWrite = 0, counted = 0;

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

// A reader over `units` that keeps the count of each read asked of it in `asked`; -1 at the end.
class CUnitSource : public vorn::io::CReader {
public:
    explicit CUnitSource(WString text) : units(std::move(text)) {}
    using CReader::Read;
    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override {
        asked.push_back(count);
        if (position == units.size())
            return -1;
        const std::size_t n = std::min<std::size_t>(count, units.size() - position);
        units.copy(buffer + offset, n, position);
        position += n;
        return static_cast<int>(n);
    }
    int Skip(unsigned int count) override {
        const std::size_t n = std::min<std::size_t>(count, units.size() - position);
        position += n;
        return static_cast<int>(n);
    }
    void Reset() override { position = 0; }
    void Close() override { FailIf(failClose, "Close failed."); }

    WString units;
    std::size_t position = 0;
    std::vector<unsigned int> asked;
    bool failClose = false;
};

} // namespace vorn::test
