// CDataInputStream and CJavaDataInputStream reading an arbitrary sequence of typed values from
// arbitrary bytes. Each value is checked against the bytes it came from (integers big-endian,
// floating values as they lie, short reads raising nothing), each whole value is written back
// through the matching output stream to the same bytes, and strings against FromUTF8 of theirs.
#include <vorn/base/Exception.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/DataInputStream.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/JavaDataInputStream.h>
#include <vorn/io/JavaDataOutputStream.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include <memory>
#include <string>

#include "Fuzz.h"

using vorn::base::CException;
using vorn::base::CUnicodeString;
using namespace vorn::io;

namespace {

// A string's count is honoured by allocating it before anything is read: a count from outside
// can ask for 4 GiB, so the target stops before one above this.
constexpr unsigned long kMaxStringCount = 1ul << 20;

class Cursor {
public:
    Cursor(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    std::size_t Available() const { return m_size - m_pos; }
    // The next `n` bytes as a reader gets them: what is there, zeros past the end.
    unsigned long long BigEndian(std::size_t n) const {
        unsigned long long v = 0;
        for (std::size_t i = 0; i < n; ++i)
            v = v << 8 | (i < Available() ? m_data[m_pos + i] : 0);
        return v;
    }
    std::string Peek(std::size_t n) const {
        return std::string(reinterpret_cast<const char*>(m_data + m_pos),
                           n < Available() ? n : Available());
    }
    std::string Take(std::size_t n) {
        std::string s = Peek(n);
        m_pos += s.size();
        return s;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};

template <typename T> std::string Bytes(const T& v) {
    return std::string(reinterpret_cast<const char*>(&v), sizeof v);
}

void Read(CDataInputStream& in, CDataOutputStream& out, Cursor& c, std::string& whole, bool java) {
    while (c.Available() > 0) {
        FUZZ_CHECK(in.GetAvailable() == c.Available());
        const unsigned op = static_cast<unsigned char>(in.ReadSByte()) % 12;
        c.Take(1);
        const bool complete[] = {true,
                                 true,
                                 true,
                                 c.Available() >= 2,
                                 c.Available() >= 2,
                                 c.Available() >= 4,
                                 c.Available() >= 4,
                                 c.Available() >= 4,
                                 c.Available() >= 8};
        const std::string next = c.Peek(8);
        const auto at = [&](std::size_t i) { return i < next.size() ? next[i] : '\xFF'; };
        if (op < 9 && complete[op])
            whole += c.Peek(op < 3 ? 1 : op < 5 ? 2 : op < 8 ? 4 : 8);
        switch (op) {
        case 0: {
            const bool v = in.ReadBool();
            FUZZ_CHECK(v == (next.size() > 0 && next[0] == 1));
            if (next.size() > 0 && (next[0] == 0 || next[0] == 1))
                out.WriteBool(v);
            else if (next.size() > 0)
                whole.pop_back();
            c.Take(1);
            break;
        }
        case 1:
            FUZZ_CHECK(in.ReadByte() == at(0));
            if (!next.empty())
                out.WriteByte(at(0));
            c.Take(1);
            break;
        case 2:
            FUZZ_CHECK(in.ReadSByte() == static_cast<unsigned char>(at(0)));
            if (!next.empty())
                out.WriteUByte(static_cast<unsigned char>(at(0)));
            c.Take(1);
            break;
        case 3:
        case 4: {
            const auto v = op == 3 ? static_cast<unsigned short>(in.ReadInt16()) : in.ReadUInt16();
            if (complete[op]) {
                FUZZ_CHECK(v == c.BigEndian(2));
                op == 3 ? out.WriteInt16(static_cast<short>(v)) : out.WriteUInt16(v);
            }
            c.Take(2);
            break;
        }
        case 5:
        case 6: {
            const auto v = op == 5 ? static_cast<unsigned int>(in.ReadInt32()) : in.ReadUInt32();
            if (complete[op]) {
                FUZZ_CHECK(v == c.BigEndian(4));
                op == 5 ? out.WriteInt32(static_cast<int>(v)) : out.WriteUInt32(v);
            }
            c.Take(4);
            break;
        }
        case 7: {
            const float v = in.ReadFloat();
            if (complete[op]) {
                FUZZ_CHECK(Bytes(v) == next.substr(0, 4));
                out.WriteFloat(v);
            }
            c.Take(4);
            break;
        }
        case 8: {
            const double v = in.ReadDouble();
            if (complete[op]) {
                FUZZ_CHECK(Bytes(v) == next.substr(0, 8));
                out.WriteDouble(v);
            }
            c.Take(8);
            break;
        }
        case 9: {
            const std::size_t prefix = java ? 2 : 4;
            const unsigned long long count = c.BigEndian(prefix);
            if (count > kMaxStringCount)
                return;
            const CUnicodeString s = in.ReadString();
            c.Take(prefix);
            const std::string text = c.Take(count);
            CUnicodeString expected;
            expected.FromUTF8(text.c_str(), -1);
            FUZZ_CHECK(s == expected);
            break;
        }
        case 10: {
            char buffer[3] = {};
            const int n = in.Read(buffer, 3);
            const std::string got = c.Take(3);
            FUZZ_CHECK(n == (got.empty() ? -1 : static_cast<int>(got.size())));
            FUZZ_CHECK(got == std::string(buffer, got.size()));
            break;
        }
        default:
            FUZZ_CHECK(in.Read() ==
                       (c.Available() > 0 ? static_cast<signed char>(at(0)) : CInputStream::EOS));
            c.Take(1);
            break;
        }
    }
    // At the end every read gives its end value and raises nothing.
    FUZZ_CHECK(in.ReadInt32() == 0 && in.ReadByte() == '\xFF' && !in.ReadBool());
    FUZZ_CHECK(in.ReadString().IsEmpty() && in.Read() == CInputStream::EOS);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const bool java = data[0] & 1;
    CMemoryInputStream bytes(reinterpret_cast<const char*>(data + 1),
                             static_cast<unsigned int>(size - 1), false);
    CMemoryOutputStream sink;
    std::unique_ptr<CDataInputStream> in(java ? new CJavaDataInputStream(&bytes)
                                              : new CDataInputStream(&bytes));
    std::unique_ptr<CDataOutputStream> out(java ? new CJavaDataOutputStream(&sink)
                                                : new CDataOutputStream(&sink));
    Cursor cursor(data + 1, size - 1);
    std::string whole;
    try {
        Read(*in, *out, cursor, whole, java);
    } catch (const CException& e) {
        vorn::fuzz::Fail(__FILE__, __LINE__, e.GetErrorDescription());
    }
    FUZZ_CHECK(std::string(sink.GetBuffer(), sink.GetBufferSize()) == whole);
    in->Close();
    in->Close();
    try {
        in->ReadInt32();
        FUZZ_CHECK(!"a closed stream reads");
    } catch (const CIOException& e) {
        FUZZ_CHECK(vorn::fuzz::Says(e, "Stream closed."));
    }
    return 0;
}
