#include <gtest/gtest.h>

#include <vorn/base/UnicodeString.h>
#include <vorn/io/Writer.h>

#include "support/Recording.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::test::W;
using vorn::test::WString;

TEST(Writer, TextFormsCutToTheTextAndSkipWhatIsEmpty) {
    vorn::test::CRecordingWriter w;
    CUnicodeString text(W(u"héllo").c_str());
    w.Write(text);
    w.Write(text, 1, 2);
    w.Write(text, 3, 100);
    w.Write(text, 4, 0xFFFFFFFFu); // the sum would wrap: still cut at the end
    EXPECT_EQ(w.log, W(u"hélloélloo"));
    w.Write(CUnicodeString());
    w.Write(CUnicodeString(), 0, 5);
    w.Write(text, 5, 1);
    w.Write(static_cast<unsigned short const*>(nullptr));
    w.Write(static_cast<unsigned short const*>(nullptr), 3);
    EXPECT_EQ(w.writes, 4);
    // Pointer and unit forms go to the primitive.
    w.log.clear();
    WString xyz = W(u"xyz");
    w.Write(xyz.c_str());
    w.Write(xyz.c_str(), 2);
    w.Write(static_cast<unsigned short>(0x263A));
    w.Write(static_cast<unsigned short>(0));
    EXPECT_EQ(w.log, W(u"xyzxy☺") + WString(1, 0));
}

} // namespace
