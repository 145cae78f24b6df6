// The chained table behind CHashtable and CStringHashtable: buckets of singly linked entries that
// keep each key's full hash, growing to twice the buckets plus one when the threshold is reached.
// Failures are reported with the source and line of the public operation that was called.
#pragma once

#include <cstring>
#include <new>
#include <utility>

#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/Storage.h>

namespace vorn::util::detail {

// The truncated product of buckets and load factor. A negative or NaN product would convert with
// undefined behaviour: it counts as 0, so the next insertion grows the table; one past the range
// of the count gives the largest count.
inline unsigned int HashThreshold(unsigned int capacity, float loadFactor) {
    const float product = static_cast<float>(capacity) * loadFactor;
    if (!(product > 0.0f))
        return 0;
    if (product >= 4294967296.0f)
        return 0xFFFFFFFFu;
    return static_cast<unsigned int>(product);
}

template <typename K, typename V> struct HashEntry {
    int hash;
    K key;
    V value;
    HashEntry* next;
};

template <typename K, typename V> class HashChains {
public:
    using Entry = HashEntry<K, V>;

    // A capacity of 0 leaves no buckets; the first insertion then grows the table to 1, 3, ...
    HashChains(unsigned int capacity, float loadFactor, unsigned int threshold, const char* file,
               unsigned int line)
        : m_buckets(AllocateBuckets(capacity, file, line)), m_capacity(capacity), m_count(0),
          m_threshold(threshold), m_loadFactor(loadFactor) {}

    // The copy's chains run in reverse order of the source's.
    HashChains(const HashChains& other, const char* file, unsigned int line)
        : m_buckets(nullptr), m_capacity(0), m_count(0), m_threshold(0),
          m_loadFactor(other.m_loadFactor) {
        CopyFrom(other, file, line);
    }

    // Leaves `other` empty with no buckets.
    HashChains(HashChains&& other) noexcept
        : m_buckets(other.m_buckets), m_capacity(other.m_capacity), m_count(other.m_count),
          m_threshold(other.m_threshold), m_loadFactor(other.m_loadFactor) {
        other.Detach();
    }

    HashChains(const HashChains&) = delete;
    HashChains& operator=(const HashChains&) = delete;

    ~HashChains() {
        Empty();
        FreeBlock(m_buckets);
    }

    // The whole copy is built before the old contents go, so a failure changes nothing.
    void CopyFrom(const HashChains& other, const char* file, unsigned int line) {
        if (this == &other)
            return;
        HashChains copy(other.m_capacity, other.m_loadFactor, other.m_threshold, file, line);
        for (unsigned int b = 0; b < other.m_capacity; ++b)
            for (Entry* e = other.m_buckets[b]; e != nullptr; e = e->next)
                copy.Link(copy.NewEntry(e->hash, e->key, e->value, file, line), b);
        Swap(copy);
    }

    void MoveFrom(HashChains& other) noexcept {
        if (this == &other)
            return;
        Empty();
        FreeBlock(m_buckets);
        m_buckets = other.m_buckets;
        m_capacity = other.m_capacity;
        m_count = other.m_count;
        m_threshold = other.m_threshold;
        m_loadFactor = other.m_loadFactor;
        other.Detach();
    }

    // `matches(key)` compares a stored key, once the hashes agree.
    template <typename Match> Entry* Find(int hash, const Match& matches) const {
        if (m_capacity == 0)
            return nullptr;
        for (Entry* e = m_buckets[BucketOf(hash)]; e != nullptr; e = e->next)
            if (e->hash == hash && matches(e->key))
                return e;
        return nullptr;
    }

    // Replaces the value of a present key and returns true, handing the old value to `oldValue`
    // when given; otherwise inserts (growing first once the threshold is reached) and returns
    // false. `key` is whatever constructs K.
    template <typename Match, typename KeySource>
    bool Put(int hash, const Match& matches, const KeySource& key, const V& value, V* oldValue,
             const char* file, unsigned int line) {
        for (;;) {
            if (Entry* e = Find(hash, matches)) {
                if (oldValue != nullptr)
                    *oldValue = e->value;
                e->value = value;
                return true;
            }
            if (m_count < m_threshold) {
                Link(NewEntry(hash, key, value, file, line), BucketOf(hash));
                return false;
            }
            Rehash(file, line);
        }
    }

    template <typename Match>
    V Remove(int hash, const Match& matches, const char* file, unsigned int line) {
        Entry** link = m_capacity == 0 ? nullptr : &m_buckets[BucketOf(hash)];
        for (; link != nullptr && *link != nullptr; link = &(*link)->next) {
            Entry* e = *link;
            if (e->hash != hash || !matches(e->key))
                continue;
            *link = e->next;
            --m_count;
            V value(std::move(e->value));
            DeleteEntry(e);
            return value;
        }
        throw CNoSuchElementException(file, line);
    }

    // The buckets stay.
    void Empty() {
        for (unsigned int b = 0; b < m_capacity; ++b) {
            Entry* e = m_buckets[b];
            m_buckets[b] = nullptr;
            while (e != nullptr) {
                Entry* next = e->next;
                DeleteEntry(e);
                e = next;
            }
        }
        m_count = 0;
    }

    // Each entry is sought in `other`'s bucket for its hash. Every member of that chain is
    // inspected: an equal key must be there, and no equal key may hold a different value.
    template <typename Match>
    bool SameEntries(const HashChains& other, const Match& sameKey) const {
        if (this == &other)
            return true;
        if (m_count != other.m_count)
            return false;
        for (unsigned int b = 0; b < m_capacity; ++b) {
            for (Entry* e = m_buckets[b]; e != nullptr; e = e->next) {
                if (other.m_capacity == 0)
                    return false;
                bool found = false, differs = false;
                for (Entry* o = other.m_buckets[other.BucketOf(e->hash)]; o != nullptr;
                     o = o->next) {
                    if (o->hash == e->hash && sameKey(o->key, e->key)) {
                        found = true;
                        if (!(o->value == e->value))
                            differs = true;
                    }
                }
                if (!found || differs)
                    return false;
            }
        }
        return true;
    }

    Entry* GetBucket(unsigned int index) const { return m_buckets[index]; }
    unsigned int GetCapacity() const { return m_capacity; }
    unsigned int GetCount() const { return m_count; }
    unsigned int GetThreshold() const { return m_threshold; }
    float GetLoadFactor() const { return m_loadFactor; }

private:
    unsigned int BucketOf(int hash) const {
        return (static_cast<unsigned int>(hash) & 0x7fffffffu) % m_capacity;
    }

    static Entry** AllocateBuckets(unsigned int capacity, const char* file, unsigned int line) {
        if (capacity == 0)
            return nullptr;
        const std::size_t bytes = static_cast<std::size_t>(capacity) * sizeof(Entry*);
        void* block = AllocateBlock(bytes, file, line);
        std::memset(block, 0, bytes);
        return static_cast<Entry**>(block);
    }

    template <typename KeySource>
    static Entry* NewEntry(int hash, const KeySource& key, const V& value, const char* file,
                           unsigned int line) {
        void* block = AllocateBlock(sizeof(Entry), file, line);
        try {
            return ::new (block) Entry{hash, K(key), value, nullptr};
        } catch (...) {
            FreeBlock(block);
            throw;
        }
    }

    static void DeleteEntry(Entry* e) {
        e->~Entry();
        FreeBlock(e);
    }

    void Link(Entry* e, unsigned int bucket) {
        e->next = m_buckets[bucket];
        m_buckets[bucket] = e;
        ++m_count;
    }

    // Entries are relinked, never copied, head first into their new chains.
    void Rehash(const char* file, unsigned int line) {
        const unsigned int capacity = m_capacity * 2 + 1;
        Entry** buckets = AllocateBuckets(capacity, file, line);
        for (unsigned int b = 0; b < m_capacity; ++b) {
            Entry* e = m_buckets[b];
            while (e != nullptr) {
                Entry* next = e->next;
                const unsigned int to =
                    (static_cast<unsigned int>(e->hash) & 0x7fffffffu) % capacity;
                e->next = buckets[to];
                buckets[to] = e;
                e = next;
            }
        }
        FreeBlock(m_buckets);
        m_buckets = buckets;
        m_capacity = capacity;
        m_threshold = HashThreshold(capacity, m_loadFactor);
    }

    void Swap(HashChains& other) noexcept {
        std::swap(m_buckets, other.m_buckets);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_count, other.m_count);
        std::swap(m_threshold, other.m_threshold);
        std::swap(m_loadFactor, other.m_loadFactor);
    }

    void Detach() noexcept {
        m_buckets = nullptr;
        m_capacity = 0;
        m_count = 0;
        m_threshold = 0;
    }

    Entry** m_buckets;
    unsigned int m_capacity;
    unsigned int m_count;
    unsigned int m_threshold;
    float m_loadFactor;
};

} // namespace vorn::util::detail
