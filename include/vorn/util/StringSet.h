// CStringSet: a set of texts on a CStringHashtable, with the set operators.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>
#include <vorn/util/Enumeration.h>
#include <vorn/util/StringHashtable.h>

namespace vorn::util {

class VORN_API CStringSet {
public:
    // A capacity of 0 gives 11 buckets.
    explicit CStringSet(unsigned int capacity = 101, float loadFactor = 0.75f);
    // A copy enumerates each bucket in reverse order of its source.
    CStringSet(const CStringSet& other);
    // The source is left empty.
    CStringSet(CStringSet&& other) noexcept;
    CStringSet& operator=(const CStringSet& other);
    CStringSet& operator=(CStringSet&& other) noexcept;
    ~CStringSet();

    // An empty or null text is refused with "Invalid key.", also by Contains and Remove.
    void Put(const char* text);
    // Throws CNoSuchElementException for a text that isn't there.
    void Remove(const char* text);
    bool Contains(const char* text) const;
    void Empty();

    unsigned int GetSize() const;
    bool IsEmpty() const;
    unsigned int GetCapacity() const;
    // By ascending bucket, the newest text of a bucket first. The set must outlive the walk.
    CEnumeration<vorn::base::CString> GetElements() const;

    bool operator==(const CStringSet& other) const;
    bool operator!=(const CStringSet& other) const;
    // Union, difference and intersection with the elements of `other`.
    CStringSet& operator+=(const CStringSet& other);
    CStringSet& operator-=(const CStringSet& other);
    CStringSet& operator*=(const CStringSet& other);
    bool IsSubSetOf(const CStringSet& other) const;
    bool IsSuperSetOf(const CStringSet& other) const;

private:
    CStringHashtable<bool> m_table;
};

} // namespace vorn::util
