// CStringMap: text keys to text values in insertion order, held as two parallel arrays and
// searched linearly. Meant for small key sets; nothing is hashed.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>
#include <vorn/util/detail/TextPairs.h>

namespace vorn::util {

class VORN_API CStringMap {
public:
    using CKeyIterator = detail::TextIterator<CStringMap, vorn::base::CString, true>;
    using CConstKeyIterator =
        detail::TextIterator<const CStringMap, const vorn::base::CString, true>;
    using CValueIterator = detail::TextIterator<CStringMap, vorn::base::CString, false>;
    using CConstValueIterator =
        detail::TextIterator<const CStringMap, const vorn::base::CString, false>;

    // An increment of 0 becomes 5.
    explicit CStringMap(bool caseSensitive = true, unsigned int initialCapacity = 10,
                        unsigned int increment = 5);
    CStringMap(const CStringMap& other);
    // Takes the other map's pairs and key rule; keeps its own increment.
    CStringMap& operator=(const CStringMap& other);
    ~CStringMap();

    // One-way: every key of the driving map must be found in the other with an equal value;
    // sizes don't count. The driver is this map, unless it ignores case and the other doesn't.
    bool operator==(const CStringMap& other) const;
    bool operator!=(const CStringMap& other) const;

    // Replaces the value of a present key (a null value empties it), else appends the pair.
    void Put(const char* key, const char* value);
    void Remove(const char* key);
    void RemoveAll();

    // The value, which may be assigned to.
    vorn::base::CString& Get(const char* key);
    const vorn::base::CString& Get(const char* key) const;
    // By insertion order.
    vorn::base::CString& GetAt(unsigned int index);
    const vorn::base::CString& GetAt(unsigned int index) const;
    vorn::base::CString& GetKeyAt(unsigned int index);
    const vorn::base::CString& GetKeyAt(unsigned int index) const;

    // Keys are compared by the map's case rule; values always case-sensitively, and a null or
    // empty value looks for an empty one. Indexes are -1 when nothing matches.
    bool ContainsKey(const char* key) const;
    bool Contains(const char* value) const;
    int GetIndexOfKey(const char* key) const;
    int GetIndexOf(const char* value) const;

    CKeyIterator GetKeyIterator() { return CKeyIterator(this); }
    CConstKeyIterator GetKeyIterator() const { return CConstKeyIterator(this); }
    CValueIterator GetValueIterator() { return CValueIterator(this); }
    CConstValueIterator GetValueIterator() const { return CConstValueIterator(this); }

    unsigned int GetSize() const { return m_pairs.GetSize(); }
    bool IsEmpty() const { return m_pairs.GetSize() == 0; }
    bool IsKeyCaseSensitive() const { return m_caseSensitive; }
    unsigned int GetCapacity() const { return m_pairs.GetCapacity(); }
    unsigned int GetIncrement() const { return m_pairs.GetIncrement(); }

    void EnsureCapacity(unsigned int capacity);
    // The one way to a capacity that isn't a multiple of the increment.
    void TrimToSize();

private:
    unsigned int FindKey(const char* key, unsigned int line) const;

    bool m_caseSensitive;
    detail::TextPairs<vorn::base::CString> m_pairs;
};

} // namespace vorn::util
