// The file layer where the file streams can't reach it: locations, statuses, positions. What the
// streams make of each status is tested with them.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include <vorn/platform/File.h>

#include "support/AllocFailure.h"
#include "support/Files.h"
#include "support/Utf16.h"

namespace {

using IO::File;
using IO::Location;
using vorn::test::W;

std::string PathOf(const Location& location) {
    return location.IsValid() ? location.GetPath() : "(invalid)";
}

TEST(Location, NarrowPathsAsGivenWidePathsAsUtf8) {
    EXPECT_EQ(PathOf("d\xC3\xA9/\xFF"), "d\xC3\xA9/\xFF"); // bytes, not checked as UTF-8
    const auto wide = W(u"d\u00E9/\u6587\U0001F600.txt");
    EXPECT_EQ(PathOf(wide.c_str()), "d\xC3\xA9/\xE6\x96\x87\xF0\x9F\x98\x80.txt");
    for (const char16_t* bad : {u"a\xD800", u"\xDC00z", u"\xD800\xD800\xDC00x", u""})
        EXPECT_FALSE(Location(W(bad).c_str()).IsValid());
    EXPECT_FALSE(Location(static_cast<const char*>(nullptr)).IsValid());
    Location copy("x"), other("y");
    copy = other;
    EXPECT_EQ(PathOf(copy), "y");
    vorn::test::FailAllocation fail(1);
    EXPECT_FALSE(Location(wide.c_str()).IsValid());
}

TEST(File, StatusesTheStreamsNeverSee) {
    vorn::test::TempDir dir;
    const std::string path = dir / "new";
    EXPECT_EQ(File(Location(""), IO::kCreateIfNotFound).GetStatus(), IO::kStatusInvalidLocation);
    EXPECT_EQ(File((dir / "no/such").c_str(), IO::kFailIfNotFound).GetStatus(),
              IO::kStatusNotFound);
    File file(path.c_str(), IO::kCreateIfNotFound);
    EXPECT_FALSE(std::filesystem::exists(path)); // created by Open, not before
    EXPECT_EQ(file.Open(IO::OpenMode(1), IO::kReportAccessDenied), IO::kStatusInvalidArgument);
    EXPECT_EQ(file.Open(IO::kOpenRead, IO::AccessDeniedTreatment(0)), IO::kStatusInvalidArgument);
    char c;
    unsigned int done = 7;
    EXPECT_EQ(file.ReadBin(&c, 1, &done), IO::kStatusNotOpen);
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(file.Close(), IO::kStatusNotOpen);
    file << 'x';
    EXPECT_EQ(file.GetOutputStatus(), IO::kStatusNotOpen);
    ASSERT_EQ(file.Open(IO::kOpenWrite, IO::kReportAccessDenied), 0u);
    EXPECT_EQ(file.Open(IO::kOpenRead, IO::kReportAccessDenied), IO::kStatusAlreadyOpen);
    file << 'a' << static_cast<short>(0x6362);
    EXPECT_EQ(file.Read(c), IO::kStatusSystemError); // opened to write
    EXPECT_EQ(file.GetSystemError(), EBADF);
    file.Close();

    File in(path.c_str(), IO::kFailIfNotFound);
    ASSERT_EQ(in.Open(IO::kOpenRead, IO::kReportAccessDenied), 0u);
    short s = 0;
    EXPECT_EQ(in.SetPosition(1), 0u);
    EXPECT_EQ(in.Read(s), 0u);
    EXPECT_EQ(s, 0x6362); // memory order both ways
    EXPECT_EQ(in.Seek(IO::kSeekEnd, -1), 0u);
    EXPECT_EQ(in.Read(s), ZK::kStatusEndOfInput); // one byte of two
    EXPECT_EQ(in.Seek(IO::kSeekBegin, -1), IO::kStatusInvalidArgument);
    File full("/dev/full", IO::kFailIfNotFound);
    ASSERT_EQ(full.Open(IO::kOpenAppend, IO::kReportAccessDenied), 0u);
    EXPECT_EQ(full.WriteBin("ab", 2, &done), IO::kStatusNoSpace);
    EXPECT_EQ(full.Flush(), 0u); // a device has nothing to sync
}

} // namespace
