#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <vorn/platform/File.h>

#include "support/AllocFailure.h"
#include "support/Child.h"
#include "support/Files.h"
#include "support/Utf16.h"

namespace {

using IO::File;
using IO::Location;
using vorn::test::GetFile;
using vorn::test::PutFile;
using vorn::test::TempDir;
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
    {
        vorn::test::FailAllocation fail(1);
        EXPECT_FALSE(Location(wide.c_str()).IsValid());
    }
    File unbound(Location(""), IO::kCreateIfNotFound);
    EXPECT_EQ(unbound.GetStatus(), IO::kStatusInvalidLocation);
    EXPECT_EQ(unbound.Open(IO::kOpenWrite, IO::kReportAccessDenied), IO::kStatusInvalidLocation);
}

TEST(File, ConstructionReportsOnlyAMissingFileAndOpenCreatesIt) {
    TempDir dir;
    const std::string path = dir / "new";
    EXPECT_EQ(File(path.c_str(), IO::kFailIfNotFound).GetStatus(), IO::kStatusNotFound);
    EXPECT_EQ(File((dir / "no/such").c_str(), IO::kFailIfNotFound).GetStatus(),
              IO::kStatusNotFound);
    File created(path.c_str(), IO::kCreateIfNotFound);
    EXPECT_EQ(created.GetStatus(), 0u);
    EXPECT_FALSE(std::filesystem::exists(path)); // not before Open
    EXPECT_EQ(created.Open(IO::kOpenRead, IO::kReportAccessDenied), 0u);
    EXPECT_TRUE(created.IsOpen());
    EXPECT_EQ(created.Open(IO::kOpenRead, IO::kReportAccessDenied), IO::kStatusAlreadyOpen);
    EXPECT_EQ(created.Close(), 0u);
    EXPECT_EQ(created.Close(), IO::kStatusNotOpen);
    File bad(path.c_str(), IO::kFailIfNotFound);
    EXPECT_EQ(bad.Open(IO::OpenMode(1), IO::kReportAccessDenied), IO::kStatusInvalidArgument);
    EXPECT_EQ(bad.Open(IO::kOpenRead, IO::AccessDeniedTreatment(0)), IO::kStatusInvalidArgument);
    EXPECT_FALSE(bad.IsOpen());
}

TEST(File, WriteTruncatesAppendAddsAndReadsReportTheEnd) {
    TempDir dir;
    const std::string path = dir / "data";
    PutFile(path, "0123456789");
    {
        File out(path.c_str(), IO::kCreateIfNotFound);
        ASSERT_EQ(out.Open(IO::kOpenWrite, IO::kReportAccessDenied), 0u);
        EXPECT_EQ(out.WriteBin("abc", 3, nullptr), 0u);
        out << 'd' << static_cast<short>(0x6665);
        EXPECT_EQ(out.GetOutputStatus(), 0u);
        EXPECT_EQ(out.Flush(), 0u);
    } // the destructor closes
    EXPECT_EQ(GetFile(path), "abcdef");
    File add(path.c_str(), IO::kFailIfNotFound);
    ASSERT_EQ(add.Open(IO::kOpenAppend, IO::kReportAccessDenied), 0u);
    EXPECT_EQ(add.Seek(IO::kSeekBegin, 0), 0u);
    EXPECT_EQ(add.WriteBin("gh", 2, nullptr), 0u); // at the end whatever the position
    add.Close();
    EXPECT_EQ(GetFile(path), "abcdefgh");

    File in(path.c_str(), IO::kFailIfNotFound);
    ASSERT_EQ(in.Open(IO::kOpenRead, IO::kReportAccessDenied), 0u);
    unsigned long long length = 0, available = 0;
    EXPECT_EQ(in.GetDataLength(&length), 0u);
    EXPECT_EQ(length, 8u);
    char c = 0;
    short s = 0;
    EXPECT_EQ(in.Read(c), 0u);
    EXPECT_EQ(in.Read(s), 0u);
    EXPECT_EQ(c, 'a');
    EXPECT_EQ(s, 0x6362);
    EXPECT_EQ(in.Seek(IO::kSeekCurrent, 2), 0u);
    EXPECT_EQ(in.GetAvailable(&available), 0u);
    EXPECT_EQ(available, 3u);
    char buffer[8] = {};
    unsigned int read = 99;
    EXPECT_EQ(in.ReadBin(buffer, 8, &read), ZK::kStatusEndOfInput);
    EXPECT_EQ(std::string(buffer, read), "fgh");
    EXPECT_EQ(in.Read(c), ZK::kStatusEndOfInput);
    EXPECT_EQ(in.Seek(IO::kSeekEnd, 5), 0u);
    EXPECT_EQ(in.GetAvailable(&available), 0u);
    EXPECT_EQ(available, 0u); // past the end
    EXPECT_EQ(in.Seek(IO::kSeekBegin, -1), IO::kStatusInvalidArgument);
    EXPECT_EQ(in.SetPosition(7), 0u);
    EXPECT_EQ(in.Read(s), ZK::kStatusEndOfInput);                    // one byte of two
    EXPECT_EQ(in.WriteBin("x", 1, nullptr), IO::kStatusSystemError); // EBADF: opened to read
    EXPECT_EQ(in.GetOutputStatus(), IO::kStatusSystemError);
}

TEST(File, DirectoriesClosedFilesAndAFullDevice) {
    TempDir dir;
    for (IO::OpenMode mode : {IO::kOpenRead, IO::kOpenWrite, IO::kOpenAppend}) {
        File directory(dir.Path().c_str(), IO::kFailIfNotFound);
        EXPECT_EQ(directory.GetStatus(), 0u);
        EXPECT_EQ(directory.Open(mode, IO::kReportAccessDenied), IO::kStatusIsDirectory);
        EXPECT_FALSE(directory.IsOpen());
    }
    File closed((dir / "f").c_str(), IO::kCreateIfNotFound);
    char c;
    unsigned long long n;
    unsigned int done = 7;
    EXPECT_EQ(closed.ReadBin(&c, 1, &done), IO::kStatusNotOpen);
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(closed.Read(c), IO::kStatusNotOpen);
    EXPECT_EQ(closed.GetAvailable(&n), IO::kStatusNotOpen);
    EXPECT_EQ(closed.SetPosition(0), IO::kStatusNotOpen);
    EXPECT_EQ(closed.Flush(), IO::kStatusNotOpen);
    closed << 'x';
    EXPECT_EQ(closed.GetOutputStatus(), IO::kStatusNotOpen);

    File full("/dev/full", IO::kFailIfNotFound);
    ASSERT_EQ(full.Open(IO::kOpenWrite, IO::kReportAccessDenied), 0u);
    EXPECT_EQ(full.WriteBin("abc", 3, &done), IO::kStatusNoSpace);
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(full.GetSystemError(), ENOSPC);
    full << static_cast<short>(1);
    EXPECT_EQ(full.GetStatus(), IO::kStatusNoSpace);
    EXPECT_EQ(full.Flush(), 0u); // a device has nothing to sync
    EXPECT_EQ(full.WriteBin(nullptr, 0, nullptr), 0u);
    EXPECT_EQ(full.WriteBin(nullptr, 1, nullptr), IO::kStatusInvalidArgument);
}

TEST(File, AnotherUsersFileIsDeniedAtOpen) {
    TempDir dir;
    const std::string path = dir / "secret";
    PutFile(path, "x");
    std::filesystem::permissions(dir.Path(), std::filesystem::perms(0755));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const std::string seen = vorn::test::InChild([&] {
        if (!vorn::test::DropRoot())
            return std::string("setuid failed");
        File file(path.c_str(), IO::kFailIfNotFound);
        const std::string built = std::to_string(file.GetStatus());
        const std::string opened =
            std::to_string(file.Open(IO::kOpenRead, IO::kReportAccessDenied));
        return built + " " + opened + " " + std::to_string(file.GetSystemError());
    });
    EXPECT_EQ(seen, "0 " + std::to_string(IO::kStatusAccessDenied) + " " + std::to_string(EACCES));
}

} // namespace
