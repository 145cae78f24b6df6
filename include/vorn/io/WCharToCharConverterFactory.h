// CWCharToCharConverterFactory: the maker of one kind of converter, registered by its encoding
// name while it lives. The registry is filled at library load and has no lock: a caller that
// registers later keeps lookups on other threads away meanwhile.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/Ref.h>
#include <vorn/base/String.h>
#include <vorn/io/WCharToCharConverter.h>
#include <vorn/util/Hashtable.h>

namespace vorn::io {

class VORN_API CWCharToCharConverterFactory {
public:
    // Registers itself under `encoding`, which is kept as a pointer and must outlive the factory.
    // An empty or null encoding is refused with "Invalid encoding.".
    explicit CWCharToCharConverterFactory(const char* encoding);
    // Removes whatever factory is registered under this one's name.
    virtual ~CWCharToCharConverterFactory();
    virtual vorn::base::CRef<CWCharToCharConverter> CreateConverter() = 0;

    const char* GetEncoding() const { return m_encoding; }

    // The factory for `encoding`, compared byte for byte, or null.
    static CWCharToCharConverterFactory* GetConverterFactory(const vorn::base::CString& encoding);
    // Throws "Invalid encoding." for any non-empty name; an empty or null one is looked up.
    static CWCharToCharConverterFactory* GetConverterFactory(const char* encoding);
    // Replaces any factory of the same name. False for null or when memory runs out.
    static bool RegisterConverterFactory(CWCharToCharConverterFactory* factory);
    // Removes the factory's name. The result is false whatever happened.
    static bool UnregisterConverterFactory(CWCharToCharConverterFactory* factory);

    CWCharToCharConverterFactory(const CWCharToCharConverterFactory&) = delete;
    CWCharToCharConverterFactory& operator=(const CWCharToCharConverterFactory&) = delete;

private:
    const char* m_encoding;

    static vorn::util::CHashtable<vorn::base::CString, CWCharToCharConverterFactory*>
        m_theConverterFactories;
};

// Makes converters of type T, default-constructed.
template <typename T>
class CConcreteWCharToCharConverterFactory : public CWCharToCharConverterFactory {
public:
    explicit CConcreteWCharToCharConverterFactory(const char* encoding)
        : CWCharToCharConverterFactory(encoding) {}

    vorn::base::CRef<CWCharToCharConverter> CreateConverter() override {
        T* converter = new T();
        try {
            return vorn::base::CRef<CWCharToCharConverter>(converter);
        } catch (...) {
            delete converter;
            throw;
        }
    }
};

} // namespace vorn::io
