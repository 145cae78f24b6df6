#include <gtest/gtest.h>

#include <vorn/base/UnicodeString.h>
#include <vorn/io/Writer.h>

#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::test::W;
using vorn::test::WString;

// Only the primitive, recording the units and counting the calls.
class CUnits : public vorn::io::CWriter {
public:
    using CWriter::Write;
    void Write(unsigned short const* text, unsigned int offset, unsigned int count) override {
        ++calls;
        units.append(text + offset, count);
    }
    void Flush() override {}
    void Close() override {}
    WString units;
    int calls = 0;
};

TEST(Writer, TextFormsCutToTheTextAndSkipWhatIsEmpty) {
    CUnits w;
    CUnicodeString text(W(u"héllo").c_str());
    w.Write(text);
    w.Write(text, 1, 2);
    w.Write(text, 3, 100);
    w.Write(text, 4, 0xFFFFFFFFu); // the sum would wrap: still cut at the end
    EXPECT_EQ(w.units, W(u"hélloélloo"));
    w.Write(CUnicodeString());
    w.Write(CUnicodeString(), 0, 5);
    w.Write(text, 5, 1);
    w.Write(static_cast<unsigned short const*>(nullptr));
    w.Write(static_cast<unsigned short const*>(nullptr), 3);
    EXPECT_EQ(w.calls, 4);
}

TEST(Writer, PointerAndUnitFormsGoToThePrimitive) {
    CUnits w;
    WString text = W(u"xyz");
    w.Write(text.c_str());
    w.Write(text.c_str(), 2);
    w.Write(static_cast<unsigned short>(0x263A));
    w.Write(static_cast<unsigned short>(0));
    EXPECT_EQ(w.units, W(u"xyzxy☺") + WString(1, 0));
}

} // namespace
