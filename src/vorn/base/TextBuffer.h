// The counted buffer plan that CString and CUnicodeString share, over bytes or UTF-16 units: a
// 12-byte header in front of the text, five pooled tiers up to 1024 units, sharing until a change,
// and the operations whose every step is the same for both. Each class keeps its own text
// functions, and names the source and line of each failure itself.
//
// Every buffer keeps two rules beyond those of its header: the length plus the terminator fit in
// the capacity, and the unit at the length is 0. So no walk to a terminator leaves the block, even
// when the length runs past the text or a 0 was stored inside it.
#pragma once

#include <vorn/base/MemoryException.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "platform/Memory.h"
#include "platform/UniText.h"
#include "vorn/base/FixBlockAllocator.h"

namespace vorn::base::detail {

inline unsigned int Length(const char* s) {
    return s == nullptr ? 0 : static_cast<unsigned int>(std::strlen(s));
}

inline unsigned int Length(const unsigned short* s) {
    return s == nullptr ? 0 : static_cast<unsigned int>(ZK::ucslen(s));
}

// S is the string class: its `m_pchData` points at the text and GetData() at the header in front,
// and AllocBuffer, EnsureBufferCapacity, ReleaseBuffer and AllocCopy are its own.
template <typename S> class TextBuffer {
public:
    using Unit = std::remove_pointer_t<decltype(S::m_pchData)>;
    using Data = std::remove_pointer_t<decltype(std::declval<const S&>().GetData())>;
    static_assert(sizeof(Data) == 12, "the text stands 12 bytes from the block's start");

    // ---- Blocks

    static void AllocBuffer(S& s, unsigned int n, const char* source, unsigned int line) {
        Data* data = s.GetData();
        if (data != nullptr && data->capacity >= n && data->references <= 1)
            return;
        if (data != nullptr)
            ReleaseBuffer(s);
        data = TakeBlock(n);
        // Left unchecked, a refused block would be written through; it is reported as what it is.
        if (data == nullptr)
            throw CMemoryException(source, line);
        s.m_pchData = reinterpret_cast<Unit*>(data + 1);
        s.m_pchData[0] = 0;
    }

    static void EnsureBufferCapacity(S& s, unsigned int n, const char* source, unsigned int line) {
        Data* old = s.GetData();
        if (old != nullptr && old->capacity >= n && old->references < 2)
            return;
        // A shared buffer is copied whole, even when less room is asked for.
        if (old != nullptr && n < old->length + 1)
            n = old->length + 1;
        Data* data = TakeBlock(n);
        if (data == nullptr)
            throw CMemoryException(source, line);
        auto* text = reinterpret_cast<Unit*>(data + 1);
        if (old != nullptr) {
            // The whole length is copied, so units behind a stored 0 stay what they were.
            std::memcpy(text, s.m_pchData, std::size_t{old->length} * sizeof(Unit));
            text[old->length] = 0;
            data->length = old->length;
            ReleaseBuffer(s);
        } else {
            text[0] = 0;
        }
        s.m_pchData = text;
    }

    static void ReleaseBuffer(S& s) {
        Data* data = s.GetData();
        if (data == nullptr)
            return;
        if (data->references <= 1)
            GiveBlock(data);
        else
            --data->references;
        s.m_pchData = nullptr;
    }

    static void CopyRefBeforeModify(S& s) {
        Data* data = s.GetData();
        if (data != nullptr && data->references >= 2)
            s.AllocCopy(s.m_pchData, -1);
    }

    // Room for `count` units of `text` (all of it for -1) and a terminator; `copy(target, text,
    // count, size)` then fills the buffer and gives the length.
    template <typename Copy> static void AllocCopy(S& s, const Unit* text, int count, Copy copy) {
        // A count past the end of this string's own text must not free that text before it is
        // read, and one beyond the int range can't index the buffer: both stop at the end.
        if (count < -1 ||
            (count > 0 && Owns(s, text) && static_cast<unsigned int>(count) > Length(text)))
            count = static_cast<int>(Length(text));
        const unsigned int size = count == -1 ? Length(text) : static_cast<unsigned int>(count);
        s.AllocBuffer(size + 1);
        Data* data = s.GetData();
        if (text == nullptr) {
            s.m_pchData[0] = 0;
            data->length = 0;
            return;
        }
        data->length = copy(s.m_pchData, text, count, size);
    }

    static bool Owns(const S& s, const Unit* p) {
        if (s.m_pchData == nullptr || p == nullptr)
            return false;
        const auto at = reinterpret_cast<std::uintptr_t>(p);
        const auto begin = reinterpret_cast<std::uintptr_t>(s.m_pchData);
        return at >= begin && at < begin + std::size_t{s.GetData()->capacity} * sizeof(Unit);
    }

    // ---- Assignment and single units

    static S& Assign(S& s, const S& other) {
        if (&s == &other)
            return s;
        if (!other.IsEmpty()) {
            s.ReleaseBuffer();
            s.Share(other);
        } else {
            s.Empty();
        }
        return s;
    }

    static void SetAt(S& s, unsigned int i, Unit c) {
        if (i >= s.GetLength())
            return;
        s.CopyRefBeforeModify();
        // Unsharing measures the text anew, and a stored 0 may have shortened it.
        if (i < s.GetLength())
            s.m_pchData[i] = c;
    }

    // ---- Changes

    static unsigned int Insert(S& s, unsigned int pos, Unit c) {
        if (s.IsEmpty()) {
            s.AllocBuffer(2);
            s.m_pchData[0] = c;
            // The length stays 0; the zero behind keeps any later walk inside the block.
            s.m_pchData[1] = 0;
            return 1;
        }
        s.CopyRefBeforeModify();
        const unsigned int length = s.GetLength();
        if (pos > length)
            pos = length;
        s.EnsureBufferCapacity(length + 2);
        Unit* text = s.m_pchData;
        std::memmove(text + pos + 1, text + pos, (length - pos + 1) * sizeof(Unit));
        text[pos] = c;
        return ++s.GetData()->length;
    }

    static unsigned int Insert(S& s, unsigned int pos, const Unit* added) {
        if (s.IsEmpty()) {
            s.AllocCopy(added, -1);
            return s.GetLength();
        }
        if (added == nullptr || *added == 0)
            return s.GetLength();
        if (Owns(s, added)) {
            // A piece of this string's own text must survive the move of its buffer.
            const S copy(added);
            return Insert(s, pos, copy.m_pchData);
        }
        s.CopyRefBeforeModify();
        const unsigned int length = s.GetLength();
        const unsigned int count = Length(added);
        if (pos > length)
            pos = length;
        s.EnsureBufferCapacity(length + count + 1);
        Unit* text = s.m_pchData;
        std::memmove(text + pos + count, text + pos, (length - pos + 1) * sizeof(Unit));
        std::memcpy(text + pos, added, count * sizeof(Unit));
        s.GetData()->length = length + count;
        return length + count;
    }

    static unsigned int Delete(S& s, unsigned int pos, unsigned int count) {
        if (s.m_pchData == nullptr)
            return 0;
        const unsigned int length = s.GetLength();
        if (length == 0 || count == 0 || pos >= length)
            return length;
        s.CopyRefBeforeModify();
        const unsigned int now = s.GetLength();
        if (pos >= now)
            return length;
        // A count past the end would move units from outside the text: the rest goes instead.
        if (count > now - pos)
            count = now - pos;
        Unit* text = s.m_pchData;
        std::memmove(text + pos, text + pos + count, (now - pos - count + 1) * sizeof(Unit));
        s.GetData()->length = now - count;
        return length;
    }

    // Replaces each non-overlapping `from` that `search(text, from)` finds by `to`, in two passes
    // that count and then replace, and returns the count. Matches are sought on the text and,
    // behind each stored 0, on the rest of the length. `from` is neither null nor empty, and `to`
    // isn't null.
    template <typename Search>
    static unsigned int Replace(S& s, const Unit* from, const Unit* to, Search search) {
        const long long fromLength = Length(from);
        const long long toLength = Length(to);
        unsigned int matches = 0;
        {
            const Unit* end = s.m_pchData + s.GetLength();
            for (const Unit* p = s.m_pchData; p < end;) {
                const Unit* found = search(p, from);
                if (found != nullptr) {
                    ++matches;
                    p = found + fromLength;
                } else {
                    p += Length(p) + 1;
                }
            }
        }
        if (matches == 0)
            return 0;

        s.CopyRefBeforeModify();
        const long long newLength =
            static_cast<long long>(s.GetLength()) + matches * (toLength - fromLength);
        s.EnsureBufferCapacity(static_cast<unsigned int>(newLength) + 1);
        Unit* text = s.m_pchData;
        long long length = s.GetLength();
        unsigned int done = 0;
        for (long long pos = 0; pos < length && done < matches;) {
            const Unit* found = search(text + pos, from);
            if (found == nullptr) {
                pos += static_cast<long long>(Length(text + pos)) + 1;
                continue;
            }
            const long long at = found - text;
            std::memmove(text + at + toLength, text + at + fromLength,
                         static_cast<std::size_t>(length - at - fromLength + 1) * sizeof(Unit));
            std::memcpy(text + at, to, static_cast<std::size_t>(toLength) * sizeof(Unit));
            length += toLength - fromLength;
            text[length] = 0;
            pos = at + toLength;
            ++done;
        }
        s.GetData()->length = static_cast<unsigned int>(length);
        return matches;
    }

    // Strips the characters at the start for which `qualifies(p)` holds, stepping by `next(p)`.
    // The string isn't empty.
    template <typename Qualifies, typename Next>
    static void TrimLeftWhile(S& s, Qualifies qualifies, Next next) {
        s.CopyRefBeforeModify();
        const Unit* p = s.m_pchData;
        while (*p != 0 && qualifies(p))
            p = next(p);
        if (p == s.m_pchData)
            return;
        if (*p == 0) {
            s.Empty();
            return;
        }
        const auto shift = static_cast<unsigned int>(p - s.m_pchData);
        std::memmove(s.m_pchData, p, (std::size_t{Length(p)} + 1) * sizeof(Unit));
        Data* data = s.GetData();
        data->length -= shift;
        s.m_pchData[data->length] = 0;
    }

    // Cuts the last run of characters for which `qualifies(p)` holds, found by a walk of the whole
    // text, stepping by `next(p)`. The string isn't empty.
    template <typename Qualifies, typename Next>
    static void TrimRightWhile(S& s, Qualifies qualifies, Next next) {
        s.CopyRefBeforeModify();
        const Unit* run = nullptr;
        for (const Unit* p = s.m_pchData; *p != 0; p = next(p)) {
            if (!qualifies(p))
                run = nullptr;
            else if (run == nullptr)
                run = p;
        }
        if (run == nullptr)
            return;
        if (run == s.m_pchData) {
            s.Empty();
            return;
        }
        s.m_pchData[run - s.m_pchData] = 0;
        s.GetData()->length = Length(s.m_pchData);
    }

    // ---- Substrings

    static S SubString(S& s, unsigned int start) {
        S result;
        if (s.IsEmpty() || start >= s.GetLength())
            return result;
        result.AllocCopy(s.m_pchData + start, -1);
        return result;
    }

    static S SubString(S& s, unsigned int start, unsigned int end) {
        S result;
        const unsigned int length = s.GetLength();
        if (s.IsEmpty() || start >= length || start >= end)
            return result;
        const unsigned int stop = end < length ? end : length;
        result.AllocCopy(s.m_pchData + start, static_cast<int>(stop - start));
        return result;
    }

    static S Mid(S& s, unsigned int start, int count) {
        return SubString(s, start, start + static_cast<unsigned int>(count));
    }

    static S Left(S& s, unsigned int n) {
        if (s.IsEmpty())
            return S();
        if (n >= s.GetLength())
            return s;
        return Mid(s, 0, static_cast<int>(n));
    }

    // Starts one unit early, and so ends one short of the end of the text.
    static S Right(S& s, unsigned int n) {
        if (s.IsEmpty())
            return S();
        if (n >= s.GetLength())
            return s;
        return Mid(s, s.GetLength() - n - 1, static_cast<int>(n));
    }

    // ---- Formatting

    // Formats into a temporary of 1024 units, and again with 1024 more for as long as the result
    // is exactly one below the room, then takes the text. `formatter(buffer, units, format,
    // arguments)` gives the formatter's result; a refused temporary throws from `source` at
    // `firstLine`, or at `retryLine` when it grows.
    template <typename Formatter>
    static void FormatV(S& s, const Unit* format, va_list arguments, Formatter formatter,
                        const char* source, unsigned int firstLine, unsigned int retryLine) {
        std::size_t units = 1024;
        // One unit more than the formatter may fill: output that filled every unit, or didn't
        // fit, has no terminator of its own.
        auto* buffer = static_cast<Unit*>(ZK_malloc((units + 1) * sizeof(Unit)));
        if (buffer == nullptr)
            throw CMemoryException(source, firstLine);
        int result = formatter(buffer, units, format, arguments);
        while (result == static_cast<int>(units) - 1) {
            ZK_free(buffer);
            units += 1024;
            buffer = static_cast<Unit*>(ZK_malloc((units + 1) * sizeof(Unit)));
            if (buffer == nullptr)
                throw CMemoryException(source, retryLine);
            result = formatter(buffer, units, format, arguments);
        }
        buffer[units] = 0;
        try {
            s.AllocCopy(buffer, -1);
        } catch (...) {
            ZK_free(buffer);
            throw;
        }
        ZK_free(buffer);
    }

private:
    static FixBlockAllocator* Pool(unsigned int capacity) {
        if constexpr (sizeof(Unit) == 1)
            return StringBlockPool(capacity);
        else
            return UnicodeBlockPool(capacity);
    }

    // A block with room for `n` units by the tier table, its header set to that room, length 0
    // and one reference. Null when the system refuses a block above 1024; the pools throw for
    // themselves.
    static Data* TakeBlock(unsigned int n) {
        const unsigned int capacity = BlockPoolCapacity(n);
        FixBlockAllocator* pool = Pool(capacity);
        void* block = pool != nullptr
                          ? pool->Allocate()
                          : ZK_malloc(std::size_t{capacity} * sizeof(Unit) + sizeof(Data));
        return block == nullptr ? nullptr : new (block) Data{capacity, 0, 1};
    }

    static void GiveBlock(Data* data) {
        if (FixBlockAllocator* pool = Pool(data->capacity))
            pool->Release(data);
        else
            ZK_free(data);
    }
};

} // namespace vorn::base::detail
