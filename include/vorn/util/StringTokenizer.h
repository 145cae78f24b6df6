// CStringTokenizer: splits a narrow text at delimiter characters. Without returned delimiters,
// runs of delimiters separate tokens and leading or trailing ones give no empty tokens. With
// them, every call consumes one character, delimiter or not, and returns an empty token.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>

namespace vorn::util {

namespace detail {
template <typename T> struct Tokenizing;
}

class VORN_API CStringTokenizer {
public:
    // A null or empty text or delimiter set is refused with CIllegalArgumentException.
    CStringTokenizer(const char* text, const char* delimiters, bool returnDelimiters);
    CStringTokenizer(const CStringTokenizer& other);
    CStringTokenizer(CStringTokenizer&& other);
    CStringTokenizer& operator=(const CStringTokenizer& other);
    CStringTokenizer& operator=(CStringTokenizer&& other);
    ~CStringTokenizer();

    // Steps over the delimiters ahead (unless they are returned), so even this call moves the
    // position: a tokenizer is not safe for concurrent reading.
    bool HasMoreTokens() const;
    // The next token, valid until the next call; CNoSuchElementException at the end.
    const vorn::base::CString& GetNextToken();
    // Replaces the delimiter set for good, then takes the next token.
    const vorn::base::CString& GetNextToken(const char* delimiters);
    // Tokens from the present position on, without moving it. With returned delimiters it counts
    // each delimiter and each token, while GetNextToken takes one call per remaining character.
    unsigned int GetTokenCount() const;

private:
    template <typename T> friend struct detail::Tokenizing;

    vorn::base::CString m_text;
    vorn::base::CString m_delimiters;
    bool m_returnDelimiters;
    unsigned int m_length;
    mutable unsigned int m_position;
    vorn::base::CString m_token;
};

} // namespace vorn::util
