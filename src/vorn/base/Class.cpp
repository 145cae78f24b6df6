#include <vorn/base/Class.h>
#include <vorn/base/ClassManager.h>
#include <vorn/base/InstantiationException.h>
#include <vorn/base/MemoryException.h>

#include <cstring>

namespace vorn::base {

CClass::CClass(const char* name, const char* base1, const char* base2, const char* base3,
               unsigned int size, Factory constructor)
    : m_name(name), m_baseName1(base1), m_baseName2(base2), m_baseName3(base3), m_size(size),
      m_constructor(constructor), m_base1(nullptr), m_base2(nullptr), m_base3(nullptr),
      m_previous(nullptr), m_next(nullptr) {
    CClassManager::GetInstance().RegisterClass(this);
}

CClass::~CClass() {
    CClassManager::GetInstance().UnregisterClass(this);
}

CClass::CClass(const CClass& other)
    : m_name(other.m_name), m_baseName1(other.m_baseName1), m_baseName2(other.m_baseName2),
      m_baseName3(other.m_baseName3), m_size(other.m_size), m_constructor(other.m_constructor),
      m_base1(other.m_base1), m_base2(other.m_base2), m_base3(other.m_base3),
      m_previous(other.m_previous), m_next(other.m_next) {}

CClass& CClass::operator=(const CClass& other) {
    m_name = other.m_name;
    m_baseName1 = other.m_baseName1;
    m_baseName2 = other.m_baseName2;
    m_baseName3 = other.m_baseName3;
    m_size = other.m_size;
    m_constructor = other.m_constructor;
    m_base1 = other.m_base1;
    m_base2 = other.m_base2;
    m_base3 = other.m_base3;
    m_previous = other.m_previous;
    m_next = other.m_next;
    return *this;
}

const char* CClass::GetName() const {
    if (m_name == nullptr)
        return nullptr;
    const char* colon = std::strrchr(m_name, ':');
    return colon != nullptr ? colon + 1 : m_name;
}

namespace {
const CClass* Resolve(const char* name, const CClass*& cache) {
    if (name != nullptr && cache == nullptr)
        cache = CClass::FindClass(name);
    return cache;
}
} // namespace

const CClass* CClass::GetBaseClass1() const {
    return Resolve(m_baseName1, m_base1);
}
const CClass* CClass::GetBaseClass2() const {
    return Resolve(m_baseName2, m_base2);
}
const CClass* CClass::GetBaseClass3() const {
    return Resolve(m_baseName3, m_base3);
}

bool CClass::IsInstanceOf(const CClass* cls) const {
    if (cls == nullptr)
        return false;
    if (cls == this)
        return true;
    const CClass* base = GetBaseClass1();
    if (base != nullptr && base->IsInstanceOf(cls))
        return true;
    base = GetBaseClass2();
    if (base != nullptr && base->IsInstanceOf(cls))
        return true;
    base = GetBaseClass3();
    return base != nullptr && base->IsInstanceOf(cls);
}

CObject* CClass::CreateNewInstance() const {
    if (m_constructor == nullptr)
        throw CInstantiationException("vorn/base/Class", 221,
                                      "Attempt to instantiate an interface or an abstract class.",
                                      nullptr, m_name);
    CObject* object = m_constructor();
    if (object == nullptr)
        throw CMemoryException("vorn/base/Class", 216);
    return object;
}

const CClass* CClass::FindClass(const char* name) {
    static IClassManager* manager = &CClassManager::GetInstance();
    return manager->FindClassByName(name);
}

} // namespace vorn::base
