#include <vorn/util/StringTokenizer.h>

#include <vorn/base/IllegalArgumentException.h>

#include "vorn/util/Tokenizing.h"

namespace vorn::util {

using vorn::base::CIllegalArgumentException;
using vorn::base::CString;

namespace {
constexpr const char* kSource = "vorn/util/StringTokenizer";
using Walk = detail::Tokenizing<CStringTokenizer>;
} // namespace

CStringTokenizer::CStringTokenizer(const char* text, const char* delimiters, bool returnDelimiters)
    : m_returnDelimiters(returnDelimiters), m_length(0), m_position(0) {
    if (detail::IsEmptyText(text))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid source text.");
    if (detail::IsEmptyText(delimiters))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid delimiters.");
    m_text = text;
    m_delimiters = delimiters;
    m_length = m_text.GetLength();
}

CStringTokenizer::CStringTokenizer(const CStringTokenizer& other) = default;
CStringTokenizer::CStringTokenizer(CStringTokenizer&& other) = default;
CStringTokenizer& CStringTokenizer::operator=(const CStringTokenizer& other) = default;
CStringTokenizer& CStringTokenizer::operator=(CStringTokenizer&& other) = default;
CStringTokenizer::~CStringTokenizer() = default;

bool CStringTokenizer::HasMoreTokens() const {
    return Walk::HasMoreTokens(*this);
}

const CString& CStringTokenizer::GetNextToken() {
    return Walk::GetNextToken(*this, m_token, kSource, __LINE__);
}

const CString& CStringTokenizer::GetNextToken(const char* delimiters) {
    if (detail::IsEmptyText(delimiters))
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid delimiters.");
    m_delimiters = delimiters;
    return GetNextToken();
}

unsigned int CStringTokenizer::GetTokenCount() const {
    return Walk::GetTokenCount(*this);
}

} // namespace vorn::util
