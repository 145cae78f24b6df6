// CStringHashtable: a chained hash table from text keys to values, hashed with GetStringHashCode
// and compared byte for byte. It grows to twice its buckets plus one and never shrinks.
#pragma once

#include <cstring>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/String.h>
#include <vorn/util/Enumeration.h>
#include <vorn/util/HashFunctions.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/HashChains.h>

namespace vorn::util {

template <typename V> class CStringHashtable {
    using Chains = detail::HashChains<vorn::base::CString, V>;
    using Entry = typename Chains::Entry;

public:
    // A capacity of 0 gives 11 buckets. A load factor at or below 0 is kept as 0.75, yet the
    // first threshold comes from the factor as passed: with 0 the first insertion grows at once.
    explicit CStringHashtable(unsigned int capacity = 11, float loadFactor = 0.75f)
        : m_chains(capacity == 0 ? 11 : capacity, loadFactor > 0.0f ? loadFactor : 0.75f,
                   detail::HashThreshold(capacity == 0 ? 11 : capacity, loadFactor),
                   "vorn/util/StringHashtable", __LINE__) {}
    // Chains are rebuilt head first, so a copy enumerates each bucket in reverse order.
    CStringHashtable(const CStringHashtable& other)
        : m_chains(other.m_chains, "vorn/util/StringHashtable", __LINE__) {}
    // The source is left empty, without buckets; it grows again on its next insertion.
    CStringHashtable(CStringHashtable&& other) noexcept : m_chains(std::move(other.m_chains)) {}

    // Takes the source's buckets, threshold and load factor. A failure changes nothing.
    CStringHashtable& operator=(const CStringHashtable& other) {
        m_chains.CopyFrom(other.m_chains, "vorn/util/StringHashtable", __LINE__);
        return *this;
    }
    CStringHashtable& operator=(CStringHashtable&& other) noexcept {
        m_chains.MoveFrom(other.m_chains);
        return *this;
    }

    // Returns true when the key was present: its value is replaced, and the old one handed to
    // `oldValue` if given.
    bool Put(const char* key, const V& value, V* oldValue = nullptr) {
        CheckKey(key, __LINE__);
        return m_chains.Put(GetStringHashCode(key), SameText{key}, key, value, oldValue,
                            "vorn/util/StringHashtable", __LINE__);
    }

    // Returns the value that the key held.
    V Remove(const char* key) {
        CheckKey(key, __LINE__);
        return m_chains.Remove(GetStringHashCode(key), SameText{key}, "vorn/util/StringHashtable",
                               __LINE__);
    }

    V& Get(const char* key) {
        Entry* e = key == nullptr ? nullptr : m_chains.Find(GetStringHashCode(key), SameText{key});
        if (e == nullptr)
            throw CNoSuchElementException("vorn/util/StringHashtable", __LINE__);
        return e->value;
    }
    const V& Get(const char* key) const { return const_cast<CStringHashtable*>(this)->Get(key); }

    // An empty or null key is refused, as in Put.
    bool ContainsKey(const char* key) const {
        CheckKey(key, __LINE__);
        return m_chains.Find(GetStringHashCode(key), SameText{key}) != nullptr;
    }

    // Frees every entry; the buckets stay.
    void Empty() { m_chains.Empty(); }

    // Same count, and each key found with an equal value in the other table's bucket for it.
    bool operator==(const CStringHashtable& other) const {
        return m_chains.SameEntries(other.m_chains,
                                    [](const vorn::base::CString& a, const vorn::base::CString& b) {
                                        return std::strcmp(a, b) == 0;
                                    });
    }
    bool operator!=(const CStringHashtable& other) const { return !(*this == other); }

    unsigned int GetSize() const { return m_chains.GetCount(); }
    bool IsEmpty() const { return m_chains.GetCount() == 0; }
    unsigned int GetCapacity() const { return m_chains.GetCapacity(); }
    unsigned int GetThreshold() const { return m_chains.GetThreshold(); }
    float GetLoadFactor() const { return m_chains.GetLoadFactor(); }

    // Walks the keys by ascending bucket, each chain from its head (the newest key first). The
    // table must outlive the walk; a change during the walk isn't detected.
    class CKeyEnumeration : public IEnumeration<vorn::base::CString> {
    public:
        explicit CKeyEnumeration(const CStringHashtable* table)
            : m_table(table), m_visited(0), m_bucket(-1), m_current(nullptr) {}

        bool HasMoreElements() const override {
            return m_visited < static_cast<int>(m_table->m_chains.GetCount());
        }

        const vorn::base::CString& GetNextElement() const override {
            return const_cast<CKeyEnumeration*>(this)->GetNextElement();
        }

        vorn::base::CString& GetNextElement() override {
            const Chains& chains = m_table->m_chains;
            if (m_current != nullptr && StillChained() && m_current->next != nullptr) {
                ++m_visited;
                m_current = m_current->next;
                return m_current->key;
            }
            if (m_visited < static_cast<int>(chains.GetCount())) {
                // Bounded by the buckets, where the count alone would bound it on an unchanged
                // table: a walk over a table emptied under it ends as exhausted.
                unsigned int b = static_cast<unsigned int>(m_bucket + 1);
                while (b < chains.GetCapacity() && chains.GetBucket(b) == nullptr)
                    ++b;
                if (b < chains.GetCapacity()) {
                    m_bucket = static_cast<int>(b);
                    ++m_visited;
                    m_current = chains.GetBucket(b);
                    return m_current->key;
                }
            }
            m_current = nullptr;
            throw CNoSuchElementException("vorn/util/StringHashtable", __LINE__);
        }

        void Reset() override {
            m_visited = 0;
            m_bucket = -1;
            m_current = nullptr;
        }

    private:
        // A removal can free the entry the walk stands on: its link is followed only while the
        // entry is still in its bucket's chain.
        bool StillChained() const {
            const Chains& chains = m_table->m_chains;
            if (m_bucket < 0 || static_cast<unsigned int>(m_bucket) >= chains.GetCapacity())
                return false;
            for (Entry* e = chains.GetBucket(static_cast<unsigned int>(m_bucket)); e != nullptr;
                 e = e->next)
                if (e == m_current)
                    return true;
            return false;
        }

        const CStringHashtable* m_table;
        int m_visited;
        int m_bucket;
        Entry* m_current;
    };

    CEnumeration<vorn::base::CString> GetKeys() const {
        return CEnumeration<vorn::base::CString>(new CKeyEnumeration(this));
    }

private:
    struct SameText {
        const char* text;
        bool operator()(const vorn::base::CString& key) const {
            return std::strcmp(key, text) == 0;
        }
    };

    static void CheckKey(const char* key, unsigned int line) {
        if (key == nullptr || *key == '\0')
            throw vorn::base::CIllegalArgumentException("vorn/util/StringHashtable", line,
                                                        "Invalid key.");
    }

    Chains m_chains;
};

} // namespace vorn::util
