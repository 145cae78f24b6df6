#include <vorn/util/UnicodeStringTokenizer.h>

#include <vorn/base/IllegalArgumentException.h>

#include "vorn/util/Tokenizing.h"

namespace vorn::util {

using vorn::base::CIllegalArgumentException;
using vorn::base::CUnicodeString;

namespace {
constexpr const char* kSource = "vorn/util/UnicodeStringTokenizer";
using Walk = detail::Tokenizing<CUnicodeStringTokenizer>;
} // namespace

CUnicodeStringTokenizer::CUnicodeStringTokenizer(const unsigned short* text,
                                                 const unsigned short* delimiters,
                                                 bool returnDelimiters)
    : m_returnDelimiters(returnDelimiters), m_length(0), m_position(0) {
    if (detail::IsEmptyText(text))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid source text.");
    if (detail::IsEmptyText(delimiters))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid delimiters.");
    m_text = text;
    m_delimiters = delimiters;
    m_length = m_text.GetLength();
}

CUnicodeStringTokenizer::CUnicodeStringTokenizer(const CUnicodeStringTokenizer& other) = default;
CUnicodeStringTokenizer::CUnicodeStringTokenizer(CUnicodeStringTokenizer&& other) = default;
CUnicodeStringTokenizer&
CUnicodeStringTokenizer::operator=(const CUnicodeStringTokenizer& other) = default;
CUnicodeStringTokenizer&
CUnicodeStringTokenizer::operator=(CUnicodeStringTokenizer&& other) = default;
CUnicodeStringTokenizer::~CUnicodeStringTokenizer() = default;

bool CUnicodeStringTokenizer::HasMoreTokens() const {
    return Walk::HasMoreTokens(*this);
}

const CUnicodeString& CUnicodeStringTokenizer::GetNextToken() {
    return Walk::GetNextToken(*this, m_token, kSource, __LINE__);
}

const CUnicodeString& CUnicodeStringTokenizer::GetNextToken(const unsigned short* delimiters) {
    if (detail::IsEmptyText(delimiters))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid delimiters.");
    m_delimiters = delimiters;
    return GetNextToken();
}

unsigned int CUnicodeStringTokenizer::GetTokenCount() const {
    return Walk::GetTokenCount(*this);
}

} // namespace vorn::util
