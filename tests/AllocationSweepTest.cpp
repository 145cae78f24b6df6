// Whole operations run with each of their allocations failing in turn: every failure is the
// library's own exception, what survives it stays usable, and (under asan) nothing leaks.
#include <gtest/gtest.h>

#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/DataInputStream.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/Serializable.h>
#include <vorn/io/XMLTextReader.h>
#include <vorn/util/StringMap.h>

#include <string>

#include "platform/Memory.h"
#include "support/AllocFailure.h"
#include "support/DebugCapture.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CException;
using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::test::SweepAllocations;
using vorn::test::W;

bool IsMemory(const CException& e) {
    return dynamic_cast<const CMemoryException*>(&e) != nullptr;
}
bool Says(const CException& e, const char* words) {
    return e.GetErrorDescription() != nullptr && std::string(e.GetErrorDescription()) == words;
}

const std::string kBig(3000, 'x'); // past the pooled tiers, so the heap is asked too

TEST(AllocationSweep, StringsAndFormattingStayUsable) {
    CString narrow;
    CUnicodeString wide;
    vorn::base::CStringBuffer buffer(32);
    const auto wideBig = W(std::u16string(kBig.begin(), kBig.end()).c_str());
    const unsigned long swept = SweepAllocations(
        [&] {
            narrow = "start";
            narrow += kBig.c_str();
            CString copy = narrow;
            copy.MakeUpper();
            copy.Replace("X", "yz");
            wide = copy;
            wide += wideBig.c_str();
            wide.FromUTF8(copy, -1);
            buffer = "b";
            buffer += wide;
            narrow.Format("%s-%d-%ls", kBig.c_str(), 42, W(u"wide").c_str());
            wide.Format(W(u"%d %ls").c_str(), 7, wideBig.c_str());
            // Output past the first 1024 units is cut there: a negative count asks no retry.
            EXPECT_STREQ(wide.ToUTF8(), ("7 " + kBig).substr(0, 1024).c_str());
        },
        [&](const CException& e, unsigned long nth) {
            EXPECT_TRUE(IsMemory(e)) << nth;
            narrow = "usable";
            wide = "usable";
            buffer = "usable";
            EXPECT_STREQ(narrow, "usable");
            EXPECT_TRUE(wide == "usable");
            EXPECT_STREQ(buffer, "usable");
        });
    EXPECT_GT(swept, 8u);
}

TEST(AllocationSweep, MapsKeepEveryPairTheyTook) {
    vorn::test::DebugCapture quiet;
    vorn::util::CStringMap map(true, 2, 2);
    unsigned int put = 0;
    auto key = [](unsigned int i) { return "key" + std::to_string(i) + kBig.substr(0, i * 40); };
    const unsigned long swept = SweepAllocations(
        [&] {
            map.RemoveAll();
            for (put = 0; put < 30; ++put)
                map.Put(key(put).c_str(), std::to_string(put).c_str());
            vorn::util::CStringMap copy(map);
            copy.Remove(key(3).c_str());
            map = copy;
        },
        [&](const CException& e, unsigned long nth) {
            EXPECT_TRUE(IsMemory(e)) << nth;
            EXPECT_LE(map.GetSize(), put + 1);
            for (unsigned int i = 0; i < map.GetSize(); ++i)
                EXPECT_EQ(map.Get(map.GetKeyAt(i)), map.GetAt(i)) << nth;
            map.Put("after", "failure");
            EXPECT_STREQ(map.Get("after"), "failure");
        });
    EXPECT_GT(swept, 30u);
}

struct Point : vorn::io::ISerializable {
    int x = 0;
    CUnicodeString name;
    void Read(vorn::io::CDataInputStream& s) override {
        x = s.ReadInt32();
        name = s.ReadString();
    }
    void Write(vorn::io::CDataOutputStream& s) const override {
        s.WriteInt32(x);
        s.WriteString(name);
    }
};

TEST(AllocationSweep, SerialisingLeavesTheStreamsUsable) {
    vorn::io::CMemoryOutputStream bytes(16, 16);
    vorn::io::CDataOutputStream out(&bytes);
    Point written;
    written.x = 7;
    written.name.FromUTF8(kBig.c_str(), -1);
    const unsigned long swept = SweepAllocations(
        [&] {
            bytes.Reset();
            out.WriteDouble(1.5);
            out.WriteObject(written);
            out.WriteString(W(u"\u00e9t\u00e9").c_str());
            vorn::io::CMemoryInputStream source(bytes.GetBuffer(), bytes.GetBufferSize(), false);
            vorn::io::CDataInputStream in(&source);
            Point read;
            EXPECT_EQ(in.ReadDouble(), 1.5);
            in.ReadObject(read);
            EXPECT_EQ(read.x, 7);
            EXPECT_TRUE(read.name == written.name);
            EXPECT_TRUE(in.ReadString() == W(u"\u00e9t\u00e9").c_str());
        },
        [&](const CException& e, unsigned long nth) {
            EXPECT_TRUE(IsMemory(e) || Says(e, "Memory full.")) << nth;
            bytes.Reset();
            out.WriteInt32(1);
            EXPECT_EQ(bytes.GetBufferSize(), 4u);
        });
    EXPECT_GT(swept, 3u);
}

TEST(AllocationSweep, ReadingADocumentFreesEveryBinaryBlock) {
    const std::string doc =
        "<r xmlns:p='urn:p' n='12'><h>0AFF</h><p:b>TWFu</p:b><s>" + kBig + "</s><d>2.5</d></r>";
    vorn::test::DebugCapture quiet;
    const unsigned long swept = SweepAllocations(
        [&] {
            vorn::io::CMemoryInputStream stream(doc.data(), static_cast<unsigned int>(doc.size()),
                                                false);
            vorn::io::CXMLTextReader reader(&stream);
            reader.ReadStartElement(W(u"r").c_str());
            EXPECT_EQ(reader.ReadAttrLong(W(u"n").c_str()), 12);
            char* data = nullptr;
            unsigned int size = 0;
            reader.ReadElementBinHex(W(u"h").c_str(), data, size);
            ZK_free(data);
            reader.ReadElementBase64(W(u"b").c_str(), W(u"urn:p").c_str(), data, size);
            ZK_free(data);
            EXPECT_EQ(reader.ReadElementString(W(u"s").c_str()).GetLength(), kBig.size());
            EXPECT_EQ(reader.ReadElementDouble(W(u"d").c_str()), 2.5);
            reader.ReadEndElement(W(u"r").c_str());
        },
        [&](const CException& e, unsigned long nth) {
            EXPECT_TRUE(IsMemory(e) || Says(e, "Memory full.") ||
                        Says(e, "Failed to create XML text tokenizer."))
                << nth << ": " << (e.GetErrorDescription() ? e.GetErrorDescription() : "");
        });
    EXPECT_GT(swept, 20u);
}

} // namespace
