// CUnicodeStringTokenizer: splits a UTF-16 text at delimiter characters. Without returned
// delimiters, runs of delimiters separate tokens and leading or trailing ones give no empty tokens.
// With them, every call consumes one character, delimiter or not, and returns an empty token.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/UnicodeString.h>

namespace vorn::util {

namespace detail {
template <typename T> struct Tokenizing;
}

class VORN_API CUnicodeStringTokenizer {
public:
    // A null or empty text or delimiter set is refused with CIllegalArgumentException.
    CUnicodeStringTokenizer(const unsigned short* text, const unsigned short* delimiters,
                            bool returnDelimiters);
    CUnicodeStringTokenizer(const CUnicodeStringTokenizer& other);
    CUnicodeStringTokenizer(CUnicodeStringTokenizer&& other);
    CUnicodeStringTokenizer& operator=(const CUnicodeStringTokenizer& other);
    CUnicodeStringTokenizer& operator=(CUnicodeStringTokenizer&& other);
    ~CUnicodeStringTokenizer();

    // Steps over the delimiters ahead (unless they are returned), so even this call moves the
    // position: a tokenizer is not safe for concurrent reading.
    bool HasMoreTokens() const;
    // The next token, valid until the next call; CNoSuchElementException at the end.
    const vorn::base::CUnicodeString& GetNextToken();
    // Replaces the delimiter set for good, then takes the next token.
    const vorn::base::CUnicodeString& GetNextToken(const unsigned short* delimiters);
    // Tokens from the present position on, without moving it. With returned delimiters it counts
    // each delimiter and each token, while GetNextToken takes one call per remaining character.
    unsigned int GetTokenCount() const;

private:
    template <typename T> friend struct detail::Tokenizing;

    vorn::base::CUnicodeString m_text;
    vorn::base::CUnicodeString m_delimiters;
    bool m_returnDelimiters;
    unsigned int m_length;
    mutable unsigned int m_position;
    vorn::base::CUnicodeString m_token;
};

} // namespace vorn::util
