// The stream beneath a decorator, and each decorator class's rule for being closed. Internal.
//
// How a decorator uses it. It keeps the two members its layout fixes: a raw pointer to the
// stream beneath (`m_stream`, or `m_writer`...), through which every call goes and which is null
// once closed, and beside it a CRef that is null for the raw-pointer constructor and only keeps
// the object alive. Its .cpp file names its rule once and goes through the functions below:
//
//   constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
//                                         beneath::SecondClose::kThrows};
//
//   CFoo::CFoo(const CRef<CInputStream>& s)
//       : m_stream(beneath::Require(s.GetPointer(), kSource, __LINE__, "Invalid stream.")),
//         m_streamRef(s) {}
//   int CFoo::Read() { return beneath::Open(m_stream, kClosed)->Read(); }
//   void CFoo::Close() { beneath::Close(m_stream, kClosed); }
//   void CBar::Close() { beneath::Close(m_stream, kClosed, [this] { FlushBuffer(); }); }
//
// Output decorators take a second Close quietly (kQuiet); input ones mostly throw their closed
// words (kThrows). A decorator with no closed state of its own (kNoState) calls through its
// pointer without Open, and its Close only passes the call on.
#pragma once

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>

namespace vorn::io::beneath {

enum class SecondClose : unsigned char {
    kQuiet,   // a Close on a closed decorator does nothing
    kThrows,  // it throws the closed words
    kNoState, // the decorator is never closed itself: every Close goes beneath
};

// "Stream closed.", "Reader closed." or "Writer closed.", from one place in the class's file.
struct ClosedRule {
    const char* source;
    unsigned int line;
    const char* words;
    SecondClose second;
};

// Throws CIOException with the rule's words, source and line.
[[noreturn]] void ThrowClosed(const ClosedRule& rule);

// The constructor's check: a null stream is CIllegalArgumentException with the class's words.
template <typename T>
T* Require(T* stream, const char* source, unsigned int line, const char* words) {
    if (stream == nullptr)
        throw vorn::base::CIllegalArgumentException(source, line, words);
    return stream;
}

// The stream beneath, or the closed words when there is none.
template <typename T> T* Open(T* stream, const ClosedRule& rule) {
    if (stream == nullptr)
        ThrowClosed(rule);
    return stream;
}

// Closes the stream beneath. The decorator is closed afterwards even when that Close throws
// CIOException, which passes on.
template <typename T> void Close(T*& stream, const ClosedRule& rule) {
    if (rule.second == SecondClose::kNoState) {
        stream->Close();
        return;
    }
    if (stream == nullptr) {
        if (rule.second == SecondClose::kThrows)
            ThrowClosed(rule);
        return;
    }
    try {
        stream->Close();
    } catch (const CIOException&) {
        stream = nullptr;
        throw;
    }
    stream = nullptr;
}

// The same with a flush first. A CIOException from the flush still closes beneath, drops any
// CIOException of that Close, and leaves as the one reported.
template <typename T, typename F> void Close(T*& stream, const ClosedRule& rule, F&& flush) {
    if (stream == nullptr && rule.second != SecondClose::kNoState) {
        Close(stream, rule);
        return;
    }
    try {
        flush();
    } catch (const CIOException&) {
        try {
            Close(stream, rule);
        } catch (const CIOException&) {
            // the flush's failure is the one to report
        }
        throw;
    }
    Close(stream, rule);
}

} // namespace vorn::io::beneath
