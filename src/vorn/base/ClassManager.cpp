#include <vorn/base/Class.h>
#include <vorn/base/ClassManager.h>
#include <vorn/base/ClassNotFoundException.h>
#include <vorn/base/MemoryException.h>

#include "platform/Memory.h"
#include "platform/Text.h"
#include "vorn/base/TextHash.h"

namespace vorn::base {

namespace {
const unsigned int kInitialBuckets = 8191;
const unsigned int kInitialThreshold = 6143;
} // namespace

struct CClassManager::ClassHashEntry {
    int hash;
    const char* key;
    CClass* value;
    ClassHashEntry* next;
};

CClassManager& CClassManager::GetInstance() {
    // Made by the first record's constructor, so it is destroyed after every record.
    static CClassManager manager;
    return manager;
}

CClassManager::CClassManager()
    : m_head(nullptr), m_classCount(0), m_hashMode(0), m_buckets(nullptr), m_bucketCount(0),
      m_entryCount(0), m_threshold(0), m_loadFactor(0.75f) {
    m_hashMode = InitHashTable() ? 1 : 0;
}

CClassManager::~CClassManager() {
    ReleaseHashTable();
}

bool CClassManager::InitHashTable() {
    m_bucketCount = 0;
    m_entryCount = 0;
    m_loadFactor = 0.75f;
    m_threshold = kInitialThreshold;
    m_buckets = static_cast<ClassHashEntry**>(ZK_malloc(kInitialBuckets * sizeof(ClassHashEntry*)));
    if (m_buckets == nullptr)
        return false;
    for (unsigned int i = 0; i < kInitialBuckets; ++i)
        m_buckets[i] = nullptr;
    m_bucketCount = kInitialBuckets;
    for (CClass* cls = m_head; cls != nullptr; cls = cls->m_next) {
        if (!HashInsert(cls->GetName(), cls)) {
            ReleaseHashTable();
            return false;
        }
    }
    return true;
}

void CClassManager::ReleaseHashTable() {
    if (m_buckets == nullptr)
        return;
    for (unsigned int i = 0; i < m_bucketCount; ++i) {
        ClassHashEntry* entry = m_buckets[i];
        while (entry != nullptr) {
            ClassHashEntry* next = entry->next;
            ZK_free(entry);
            entry = next;
        }
    }
    ZK_free(m_buckets);
    m_buckets = nullptr;
    m_entryCount = 0;
}

bool CClassManager::HashInsert(const char* key, CClass* value) {
    for (;;) {
        if (m_buckets == nullptr)
            return false;
        int hash = detail::HashText(key);
        unsigned int index = (static_cast<unsigned int>(hash) & 0x7FFFFFFFu) % m_bucketCount;
        // Keys are the records' own name pointers, so identity is enough.
        for (ClassHashEntry* e = m_buckets[index]; e != nullptr; e = e->next) {
            if (e->hash == hash && e->key == key) {
                e->value = value;
                return true;
            }
        }
        if (m_entryCount >= m_threshold) {
            if (!HashGrow())
                return false;
            continue;
        }
        auto* entry = static_cast<ClassHashEntry*>(ZK_malloc(sizeof(ClassHashEntry)));
        if (entry == nullptr)
            throw CMemoryException("vorn/base/Base", 148);
        entry->hash = hash;
        entry->key = key;
        entry->value = value;
        entry->next = m_buckets[index];
        m_buckets[index] = entry;
        ++m_entryCount;
        return true;
    }
}

bool CClassManager::HashGrow() {
    unsigned int newCount = m_bucketCount * 2 + 1;
    auto* buckets = static_cast<ClassHashEntry**>(ZK_malloc(newCount * sizeof(ClassHashEntry*)));
    if (buckets == nullptr)
        return false;
    for (unsigned int i = 0; i < newCount; ++i)
        buckets[i] = nullptr;
    for (unsigned int i = 0; i < m_bucketCount; ++i) {
        ClassHashEntry* entry = m_buckets[i];
        while (entry != nullptr) {
            ClassHashEntry* next = entry->next;
            unsigned int index = (static_cast<unsigned int>(entry->hash) & 0x7FFFFFFFu) % newCount;
            entry->next = buckets[index];
            buckets[index] = entry;
            entry = next;
        }
    }
    ZK_free(m_buckets);
    m_buckets = buckets;
    m_bucketCount = newCount;
    m_threshold = static_cast<unsigned int>(static_cast<float>(newCount) * m_loadFactor);
    return true;
}

CClass* CClassManager::HashLookup(const char* key) const {
    if (m_buckets == nullptr)
        return nullptr;
    int hash = detail::HashText(key);
    unsigned int index = (static_cast<unsigned int>(hash) & 0x7FFFFFFFu) % m_bucketCount;
    for (ClassHashEntry* e = m_buckets[index]; e != nullptr; e = e->next)
        if (e->hash == hash && e->key == key)
            return e->value;
    return nullptr;
}

bool CClassManager::HashRemove(const char* key) {
    if (m_buckets == nullptr)
        return false;
    int hash = detail::HashText(key);
    unsigned int index = (static_cast<unsigned int>(hash) & 0x7FFFFFFFu) % m_bucketCount;
    ClassHashEntry** link = &m_buckets[index];
    for (ClassHashEntry* e = *link; e != nullptr; link = &e->next, e = e->next) {
        if (e->hash == hash && e->key == key) {
            *link = e->next;
            ZK_free(e);
            --m_entryCount;
            return true;
        }
    }
    return false;
}

void CClassManager::RegisterClass(CClass* cls) {
    if (cls == nullptr)
        return;
    cls->m_previous = nullptr;
    cls->m_next = m_head;
    if (m_head != nullptr)
        m_head->m_previous = cls;
    ++m_classCount;
    m_head = cls;
    // Deliberate: a successful insertion ends hashing; from the first registration on, the list
    // serves.
    if (m_hashMode == 1 && HashInsert(cls->GetName(), cls)) {
        m_hashMode = 0;
        ReleaseHashTable();
    }
}

void CClassManager::UnregisterClass(CClass* cls) {
    if (cls == nullptr)
        return;
    if (cls == m_head) {
        // The new head keeps its previous link to the leaving record; nothing reads a head's.
        m_head = cls->m_next;
        if (cls->m_next != nullptr)
            cls->m_previous = nullptr;
    } else {
        if (cls->m_next != nullptr)
            cls->m_next->m_previous = cls->m_previous;
        if (cls->m_previous != nullptr)
            cls->m_previous->m_next = cls->m_next;
    }
    --m_classCount;
    if (m_hashMode == 1)
        HashRemove(cls->GetName());
}

const CClass* CClassManager::FindClassByName(const char* name) {
    if (name == nullptr || *name == '\0')
        return nullptr;
    if (m_hashMode == 1)
        return HashLookup(name);
    for (CClass* cls = m_head; cls != nullptr; cls = cls->m_next)
        if (CHCompareTexts(cls->m_name, -1, name, -1, 1, 0) == 0)
            return cls;
    return nullptr;
}

CObject* CClassManager::CreateInstanceByName(const char* name) {
    const CClass* cls = FindClassByName(name);
    if (cls == nullptr)
        throw CClassNotFoundException("vorn/base/ClassManager", 183,
                                      "The specified class is not found.", nullptr, name);
    return cls->CreateNewInstance();
}

CObject* CClassManager::CreateInstanceOf(const CClass* cls) {
    return cls == nullptr ? nullptr : cls->CreateNewInstance();
}

} // namespace vorn::base
