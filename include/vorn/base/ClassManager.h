// The process-wide registry of class records.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class CClass;
class CObject;

class VORN_API IClassManager {
public:
    virtual ~IClassManager() {}
    virtual void RegisterClass(CClass* cls) = 0;
    virtual void UnregisterClass(CClass* cls) = 0;
    virtual const CClass* FindClassByName(const char* name) = 0;
    // Throws CClassNotFoundException for a name without a record.
    virtual CObject* CreateInstanceByName(const char* name) = 0;
    // Null for a null `cls`.
    virtual CObject* CreateInstanceOf(const CClass* cls) = 0;
};

class VORN_API CClassManager : public IClassManager {
public:
    // The one manager, made on first use.
    static CClassManager& GetInstance();

    void RegisterClass(CClass* cls) override;
    void UnregisterClass(CClass* cls) override;
    const CClass* FindClassByName(const char* name) override;
    CObject* CreateInstanceByName(const char* name) override;
    CObject* CreateInstanceOf(const CClass* cls) override;

    unsigned int GetClassCount() const { return m_classCount; }
    // 1 while the name hash is in use; the first registration ends it.
    int GetHashMode() const { return m_hashMode; }

    CClassManager();
    ~CClassManager() override;
    CClassManager(const CClassManager&) = delete;
    CClassManager& operator=(const CClassManager&) = delete;

private:
    struct ClassHashEntry;

    bool InitHashTable();
    void ReleaseHashTable();
    bool HashInsert(const char* key, CClass* value);
    CClass* HashLookup(const char* key) const;
    bool HashRemove(const char* key);
    bool HashGrow();

    CClass* m_head;
    unsigned int m_classCount;
    int m_hashMode;
    ClassHashEntry** m_buckets;
    unsigned int m_bucketCount;
    unsigned int m_entryCount;
    unsigned int m_threshold;
    float m_loadFactor;
};

} // namespace vorn::base
