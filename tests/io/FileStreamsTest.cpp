// What the file streams share: how they meet a refused file, paths outside ASCII in both forms,
// and descriptors that never leak.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <vorn/io/FileInputStream.h>
#include <vorn/io/FileOutputStream.h>
#include <vorn/io/FileReader.h>
#include <vorn/io/FileWriter.h>
#include <vorn/io/IOException.h>
#include <vorn/io/NativeFileOutputStream.h>

#include "support/Child.h"
#include "support/Files.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using namespace vorn::io;
using vorn::test::TempDir;
using vorn::test::Thrown;
using vorn::test::W;
using vorn::test::WString;

TEST(FileStreams, AccessDeniedAtOpenForEveryClass) {
    TempDir dir;
    const std::string path = dir / "locked";
    vorn::test::PutFile(path, "ab");
    std::filesystem::permissions(dir.Path(), std::filesystem::perms(0755));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    const WString wide = vorn::test::Wide(path);
    const std::string seen = vorn::test::InChild([&] {
        if (!vorn::test::DropRoot())
            return std::string("setuid failed");
        const char* p = path.c_str();
        return Thrown([&] { CFileInputStream s(p); }) + "|" +
               Thrown([&] { CFileOutputStream s(p, true); }) + "|" +
               Thrown([&] { CFileReader s(p); }) + "|" + Thrown([&] { CFileWriter s(p); }) + "|" +
               Thrown([&] { CNativeFileOutputStream s(wide.c_str(), false); });
    });
    const std::string denied = "CIOException: Access denied.";
    EXPECT_EQ(seen, denied + "|" + denied + "|" + denied + "|" + denied + "|" + denied);
}

TEST(FileStreams, PathsOutsideAsciiInBothForms) {
    TempDir dir;
    const WString name = W(u"/\u00E9t\u00E9 \u6587\U0001F600.bin");
    const WString wide = vorn::test::Wide(dir.Path()) + name;
    const std::string narrow = dir / "\xC3\xA9t\xC3\xA9 \xE6\x96\x87\xF0\x9F\x98\x80.bin";
    CFileOutputStream(wide.c_str(), false).Write("ab", 2);
    CNativeFileOutputStream(wide.c_str(), true).Write("c", 1);
    char bytes[4] = {};
    EXPECT_EQ(CFileInputStream(narrow.c_str()).Read(bytes, 4), 3);
    EXPECT_EQ(std::string(bytes), "abc");
    CFileWriter(narrow.c_str()).Write(W(u"xy").c_str());
    EXPECT_EQ(CFileReader(wide.c_str()).Read(), 'x');
}

TEST(FileStreams, ThousandsOfOpensLeaveNoDescriptorBehind) {
    TempDir dir;
    const std::string file = dir / "f", odd = dir / "odd", none = dir / "none";
    vorn::test::PutFile(odd, "abc");
    const WString wideFile = vorn::test::Wide(file), wideDir = vorn::test::Wide(dir.Path());
    const char* const folder = dir.Path().c_str();
    const int before = vorn::test::OpenDescriptors();
    for (int i = 0; i < 1000; ++i) {
        CFileOutputStream(file.c_str(), i % 2 == 0).Write('x'); // closed by the destructor
        CFileInputStream(file.c_str()).Close();
        CFileWriter(file.c_str()).Write(W(u"ab").c_str());
        CFileReader(file.c_str()).Close();
        CNativeFileOutputStream(wideFile.c_str(), true).Write('y');
        // Failed at construction, at Open, and after Open (the odd length).
        for (const std::string& words : {Thrown([&] { CFileInputStream s(none.c_str()); }),
                                         Thrown([&] { CFileInputStream s(folder); }),
                                         Thrown([&] { CFileReader s(odd.c_str()); }),
                                         Thrown([&] { CFileOutputStream s(folder, false); }),
                                         Thrown([&] { CFileWriter s(folder); }), Thrown([&] {
                                             CNativeFileOutputStream s(wideDir.c_str(), false);
                                         })})
            ASSERT_EQ(words.rfind("CIOException", 0), 0u) << words;
    }
    EXPECT_EQ(vorn::test::OpenDescriptors(), before);
}

} // namespace
