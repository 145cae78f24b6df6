#include "vorn/io/XMLTextWriterContext.h"

#include <vorn/util/NoSuchElementException.h>

#include "platform/UniText.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/XMLTextWriterContext";
}

// Most elements declare no prefix, so the map takes its arrays at its first binding: an element
// then costs the context and its count block and nothing more.
XMLTextWriterContext::XMLTextWriterContext(const unsigned short* name)
    : m_name(name != nullptr ? name : ZK::EmptyUTF16), m_defaultNamespace(),
      m_hasDefaultNamespace(false), m_prefixes(0, 5) {}

const vorn::base::CUnicodeString& XMLTextWriterContext::GetPrefix(const unsigned short* uri) const {
    const int index = m_prefixes.GetIndexOf(uri);
    if (index < 0)
        throw vorn::util::CNoSuchElementException(kSource, __LINE__);
    return m_prefixes.GetKeyAt(static_cast<unsigned int>(index));
}

} // namespace vorn::io
