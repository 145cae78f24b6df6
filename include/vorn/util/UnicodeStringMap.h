// CUnicodeStringMap: UTF-16 keys to UTF-16 values in insertion order, held as two parallel arrays
// and searched linearly with exact comparison. Meant for small key sets; nothing is hashed.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/detail/TextPairs.h>

namespace vorn::util {

class VORN_API CUnicodeStringMap {
public:
    using CKeyIterator = detail::TextIterator<CUnicodeStringMap, vorn::base::CUnicodeString, true>;
    using CConstKeyIterator =
        detail::TextIterator<const CUnicodeStringMap, const vorn::base::CUnicodeString, true>;
    using CValueIterator =
        detail::TextIterator<CUnicodeStringMap, vorn::base::CUnicodeString, false>;
    using CConstValueIterator =
        detail::TextIterator<const CUnicodeStringMap, const vorn::base::CUnicodeString, false>;

    // An increment of 0 becomes 5.
    explicit CUnicodeStringMap(unsigned int initialCapacity = 10, unsigned int increment = 5);
    CUnicodeStringMap(const CUnicodeStringMap& other);
    // Keeps its own increment.
    CUnicodeStringMap& operator=(const CUnicodeStringMap& other);
    ~CUnicodeStringMap();

    // One-way: every key of this map must be found in the other with an equal value; sizes
    // don't count.
    bool operator==(const CUnicodeStringMap& other) const;
    bool operator!=(const CUnicodeStringMap& other) const;

    // Replaces the value of a present key (a null value empties it), else appends the pair.
    void Put(const unsigned short* key, const unsigned short* value);
    // Removes the pair and then throws CNoSuchElementException all the same: callers catch it.
    void Remove(const unsigned short* key);
    void RemoveAll();

    // The value, which may be assigned to.
    vorn::base::CUnicodeString& Get(const unsigned short* key);
    const vorn::base::CUnicodeString& Get(const unsigned short* key) const;
    // By insertion order.
    vorn::base::CUnicodeString& GetAt(unsigned int index);
    const vorn::base::CUnicodeString& GetAt(unsigned int index) const;
    vorn::base::CUnicodeString& GetKeyAt(unsigned int index);
    const vorn::base::CUnicodeString& GetKeyAt(unsigned int index) const;

    // A null or empty value looks for an empty one. Indexes are -1 when nothing matches.
    bool ContainsKey(const unsigned short* key) const;
    bool Contains(const unsigned short* value) const;
    int GetIndexOfKey(const unsigned short* key) const;
    int GetIndexOf(const unsigned short* value) const;

    CKeyIterator GetKeyIterator() { return CKeyIterator(this); }
    CConstKeyIterator GetKeyIterator() const { return CConstKeyIterator(this); }
    CValueIterator GetValueIterator() { return CValueIterator(this); }
    CConstValueIterator GetValueIterator() const { return CConstValueIterator(this); }

    unsigned int GetSize() const { return m_pairs.GetSize(); }
    bool IsEmpty() const { return m_pairs.GetSize() == 0; }
    unsigned int GetCapacity() const { return m_pairs.GetCapacity(); }
    unsigned int GetIncrement() const { return m_pairs.GetIncrement(); }

    void EnsureCapacity(unsigned int capacity);
    // The one way to a capacity that isn't a multiple of the increment.
    void TrimToSize();

private:
    unsigned int FindKey(const unsigned short* key, unsigned int line) const;

    detail::TextPairs<vorn::base::CUnicodeString> m_pairs;
};

} // namespace vorn::util
