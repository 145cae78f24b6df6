#include <gtest/gtest.h>

#include "support/Recording.h"
#include "support/Throws.h"
#include "vorn/io/StreamBeneath.h"

namespace {

using vorn::io::CIOException;
using vorn::io::COutputStream;
using vorn::io::beneath::ClosedRule;
using vorn::io::beneath::SecondClose;
using vorn::test::CRecordingStream;
using vorn::test::ExpectThrowAt;

constexpr ClosedRule kQuiet{"test/Quiet", 11, "Stream closed.", SecondClose::kQuiet};
constexpr ClosedRule kThrows{"test/Throws", 22, "Reader closed.", SecondClose::kThrows};
constexpr ClosedRule kNoState{"test/NoState", 33, "unused", SecondClose::kNoState};

TEST(StreamBeneath, SecondCloseByRule) {
    CRecordingStream below;
    COutputStream* quiet = &below;
    vorn::io::beneath::Close(quiet, kQuiet);
    vorn::io::beneath::Close(quiet, kQuiet, [] { ADD_FAILURE() << "flushed when closed"; });
    EXPECT_EQ(quiet, nullptr);
    ExpectThrowAt<CIOException>([&] { vorn::io::beneath::Open(quiet, kQuiet); }, "test/Quiet", 11,
                                "Stream closed.");

    COutputStream* strict = &below;
    vorn::io::beneath::Close(strict, kThrows);
    ExpectThrowAt<CIOException>([&] { vorn::io::beneath::Close(strict, kThrows); }, "test/Throws",
                                22, "Reader closed.");

    COutputStream* stateless = &below;
    vorn::io::beneath::Close(stateless, kNoState);
    vorn::io::beneath::Close(stateless, kNoState);
    EXPECT_EQ(stateless, &below);
    EXPECT_EQ(below.closes, 4);
}

TEST(StreamBeneath, ClosedEvenWhenClosingFails) {
    CRecordingStream below;
    below.failClose = true;
    COutputStream* stream = &below;
    ExpectThrowAt<CIOException>([&] { vorn::io::beneath::Close(stream, kQuiet); }, "test/Recording",
                                1, "Close failed.");
    EXPECT_EQ(stream, nullptr);

    // The flush fails too: the stream beneath is closed all the same and the flush's failure
    // leaves.
    below.failFlush = true;
    stream = &below;
    ExpectThrowAt<CIOException>(
        [&] { vorn::io::beneath::Close(stream, kQuiet, [&] { stream->Flush(); }); },
        "test/Recording", 1, "Flush failed.");
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(below.log, "|C|F|C");
}

} // namespace
