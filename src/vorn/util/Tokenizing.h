// The walk that CStringTokenizer and CUnicodeStringTokenizer share. T is the tokenizer: its text,
// delimiters, flag, length, position and token are read and written here.
#pragma once

#include <cstring>

#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/NoSuchElementException.h>

namespace vorn::util::detail {

// A character is a delimiter when the set finds it. An ASCII byte is always a character of its
// own in UTF-8, so a byte comparison finds it as the character search would, without decoding.
inline bool IsDelimiter(const vorn::base::CString& delimiters, char c) {
    if (static_cast<unsigned char>(c) >= 0x80)
        return delimiters.Find(c) >= 0;
    if (c == '\0')
        return false;
    for (const char* d = delimiters; *d != '\0'; ++d)
        if (*d == c)
            return true;
    return false;
}

inline bool IsDelimiter(const vorn::base::CUnicodeString& delimiters, unsigned short c) {
    return delimiters.Find(c) >= 0;
}

template <typename Char> bool IsEmptyText(const Char* text) {
    return text == nullptr || *text == 0;
}

inline const char* Units(const vorn::base::CString& text) {
    return text;
}

inline const unsigned short* Units(const vorn::base::CUnicodeString& text) {
    return text;
}

template <typename T> struct Tokenizing {
    // Bounded by the length: no position past the text is ever read.
    static unsigned int SkipDelimiters(const T& t, unsigned int p) {
        const auto* text = Units(t.m_text);
        while (p < t.m_length && IsDelimiter(t.m_delimiters, text[p]))
            ++p;
        return p;
    }

    static unsigned int SkipToken(const T& t, unsigned int p) {
        const auto* text = Units(t.m_text);
        if constexpr (sizeof(*text) == 1) {
            // One ASCII delimiter, the common case: a plain byte search.
            const char first = Units(t.m_delimiters)[0];
            if (t.m_delimiters.GetLength() == 1 && static_cast<unsigned char>(first) < 0x80) {
                const void* found = std::memchr(text + p, first, t.m_length - p);
                return found == nullptr
                           ? t.m_length
                           : static_cast<unsigned int>(static_cast<const char*>(found) - text);
            }
        }
        while (p < t.m_length && !IsDelimiter(t.m_delimiters, text[p]))
            ++p;
        return p;
    }

    static bool HasMoreTokens(const T& t) {
        if (!t.m_returnDelimiters)
            t.m_position = SkipDelimiters(t, t.m_position);
        return t.m_position < t.m_length;
    }

    template <typename S>
    static const S& GetNextToken(T& t, S& token, const char* source, unsigned int line) {
        if (!t.m_returnDelimiters)
            t.m_position = SkipDelimiters(t, t.m_position);
        if (t.m_position >= t.m_length)
            throw CNoSuchElementException(source, line);
        if (t.m_returnDelimiters) {
            // The text from the new position to itself: one character gone, an empty token.
            ++t.m_position;
            token.Empty();
        } else {
            const unsigned int start = t.m_position;
            t.m_position = SkipToken(t, start);
            // Fills the token's own buffer when nobody else holds it.
            token.Set(Units(t.m_text) + start, t.m_position - start);
        }
        return token;
    }

    static unsigned int GetTokenCount(const T& t) {
        unsigned int p = t.m_position;
        unsigned int count = 0;
        const auto* text = Units(t.m_text);
        while (p < t.m_length) {
            while (p < t.m_length && IsDelimiter(t.m_delimiters, text[p])) {
                ++p;
                if (t.m_returnDelimiters)
                    ++count;
            }
            if (p >= t.m_length)
                break;
            p = SkipToken(t, p);
            ++count;
        }
        return count;
    }
};

} // namespace vorn::util::detail
