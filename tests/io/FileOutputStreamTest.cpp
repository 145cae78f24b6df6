#include <gtest/gtest.h>

#include <string>

#include <sched.h>
#include <sys/mount.h>

#include <vorn/io/FileOutputStream.h>
#include <vorn/io/IOException.h>

#include "support/Child.h"
#include "support/Files.h"
#include "support/Throws.h"

namespace {

using vorn::io::CFileOutputStream;
using vorn::io::CIOException;
using vorn::test::ExpectThrow;
using vorn::test::GetFile;

const char* const kSource = "vorn/io/FileOutputStream";

TEST(FileOutputStream, WritingReplacesTheFileAndAppendingExtendsIt) {
    vorn::test::TempDir dir;
    const std::string path = dir / "f";
    vorn::test::PutFile(path, "0123456789");
    {
        CFileOutputStream s(path.c_str(), false);
        s.Write('a');
        s.Write("xbcx", 1, 2);
        s.Write(nullptr, 5);
        EXPECT_EQ(GetFile(path), "abc"); // no buffer: on disk at once
    }                                    // the destructor closes
    CFileOutputStream(path.c_str(), true).Write("def", 3);
    EXPECT_EQ(GetFile(path), "abcdef");
    ExpectThrow<CIOException>([&] { CFileOutputStream s(dir.Path().c_str(), false); }, kSource,
                              "Failed to open the underlying file.");
    ExpectThrow<CIOException>([&] { CFileOutputStream s((dir / "no/dir").c_str(), false); },
                              kSource, "Failed to open the underlying file.");
}

TEST(FileOutputStream, AFullDeviceFailsTheWriteAndAClosedStreamEverything) {
    CFileOutputStream full("/dev/full", false);
    ExpectThrow<CIOException>([&] { full.Write('x'); }, kSource,
                              "Failed to write the specified byte the the underlying file.");
    ExpectThrow<CIOException>([&] { full.Write("xy", 2); }, kSource,
                              "Failed to write the specified number of bytes to the underlying "
                              "file.");
    full.Flush();
    full.Close();
    for (auto call :
         {+[](CFileOutputStream& f) { f.Write('x'); },
          +[](CFileOutputStream& f) { f.Write("x", 0, 1); },
          +[](CFileOutputStream& f) { f.Flush(); }, +[](CFileOutputStream& f) { f.Close(); }})
        ExpectThrow<CIOException>([&] { call(full); }, kSource, "Stream closed.");
    full.Write(nullptr, 0, 1); // a refused source is dropped before the check
}

// A tmpfs of 16 KB in a child's own mount namespace: blocks go in until the disk is full, and
// every block accepted before the failure is in the file.
TEST(FileOutputStream, NothingAcceptedBeforeAFullDiskIsLost) {
    vorn::test::TempDir dir;
    const std::string seen = vorn::test::InChild([&]() -> std::string {
        if (unshare(CLONE_NEWNS) != 0 ||
            mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) ||
            mount("tmpfs", dir.Path().c_str(), "tmpfs", 0, "size=16k") != 0)
            return "no tmpfs";
        std::string accepted;
        const std::string words = vorn::test::Thrown([&] {
            CFileOutputStream s((dir / "f").c_str(), false);
            for (char block = 'a';; ++block) {
                const std::string bytes(3000, block);
                s.Write(bytes.data(), 3000);
                accepted += bytes;
            }
        });
        const bool kept = GetFile(dir / "f").compare(0, accepted.size(), accepted) == 0;
        return words + (kept && accepted.size() >= 12000 ? " kept" : " lost");
    });
    if (seen == "no tmpfs")
        GTEST_SKIP() << "no tmpfs can be mounted here";
    EXPECT_EQ(
        seen,
        "CIOException: Failed to write the specified number of bytes to the underlying file. kept");
}

} // namespace
