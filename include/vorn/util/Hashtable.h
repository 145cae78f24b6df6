// CHashtable: a chained hash table with the hash function given by its creator and keys compared
// with their operator==. It grows to twice its buckets plus one and never shrinks.
#pragma once

#include <type_traits>
#include <utility>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/HashChains.h>

namespace vorn::util {

namespace detail {
// Keys with an IsEmpty() (the string types) refuse the empty key; other keys take any value.
template <typename K, typename = void> struct HasEmptiness : std::false_type {};
template <typename K>
struct HasEmptiness<K, std::void_t<decltype(std::declval<const K&>().IsEmpty())>> : std::true_type {
};
} // namespace detail

template <typename K, typename V> class CHashtable {
    using Chains = detail::HashChains<K, V>;

public:
    using HashFunction = int (*)(const K&);

    // A capacity of 0 or below gives 101 buckets; a load factor at or below 0 gives 0.75. A null
    // hash function would be called through null at the first use: it is refused here.
    explicit CHashtable(HashFunction hash, int capacity = 101, float loadFactor = 0.75f)
        : m_chains(capacity > 0 ? static_cast<unsigned int>(capacity) : 101u,
                   loadFactor > 0.0f ? loadFactor : 0.75f,
                   detail::HashThreshold(capacity > 0 ? static_cast<unsigned int>(capacity) : 101u,
                                         loadFactor > 0.0f ? loadFactor : 0.75f),
                   "vorn/util/Hashtable", __LINE__),
          m_hash(hash) {
        if (hash == nullptr)
            throw vorn::base::CNullReferenceException("vorn/util/Hashtable", __LINE__);
    }

    CHashtable(const CHashtable& other)
        : m_chains(other.m_chains, "vorn/util/Hashtable", __LINE__), m_hash(other.m_hash) {}

    // Takes the source's buckets, entries and hash function. A failure changes nothing.
    CHashtable& operator=(const CHashtable& other) {
        m_chains.CopyFrom(other.m_chains, "vorn/util/Hashtable", __LINE__);
        m_hash = other.m_hash;
        return *this;
    }

    // Returns true when the key was present: its value is replaced, and the old one handed to
    // `oldValue` if given.
    bool Put(const K& key, const V& value, V* oldValue = nullptr) {
        CheckKey(key, __LINE__);
        return m_chains.Put(m_hash(key), SameKey{key}, key, value, oldValue, "vorn/util/Hashtable",
                            __LINE__);
    }

    // Returns the value that the key held.
    V Remove(const K& key) {
        CheckKey(key, __LINE__);
        return m_chains.Remove(m_hash(key), SameKey{key}, "vorn/util/Hashtable", __LINE__);
    }

    V& Get(const K& key) {
        auto* e = m_chains.Find(m_hash(key), SameKey{key});
        if (e == nullptr)
            throw CNoSuchElementException("vorn/util/Hashtable", __LINE__);
        return e->value;
    }
    const V& Get(const K& key) const { return const_cast<CHashtable*>(this)->Get(key); }

    bool ContainsKey(const K& key) const {
        return m_chains.Find(m_hash(key), SameKey{key}) != nullptr;
    }

    // Frees every entry; the buckets stay.
    void Empty() { m_chains.Empty(); }

    unsigned int GetSize() const { return m_chains.GetCount(); }
    bool IsEmpty() const { return m_chains.GetCount() == 0; }
    unsigned int GetCapacity() const { return m_chains.GetCapacity(); }
    unsigned int GetThreshold() const { return m_chains.GetThreshold(); }
    float GetLoadFactor() const { return m_chains.GetLoadFactor(); }

private:
    struct SameKey {
        const K& key;
        bool operator()(const K& stored) const { return stored == key; }
    };

    static void CheckKey(const K& key, unsigned int line) {
        if constexpr (detail::HasEmptiness<K>::value) {
            if (key.IsEmpty())
                throw vorn::base::CIllegalArgumentException("vorn/util/Hashtable", line,
                                                            "Invalid key.");
        }
    }

    Chains m_chains;
    HashFunction m_hash;
};

} // namespace vorn::util
