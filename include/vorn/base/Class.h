// CClass: the static run-time record of a class, found by its qualified name.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class CObject;
class CClassManager;

class VORN_API CClass {
public:
    using Factory = CObject* (*)();

    // Registers the record; the names are kept as given, not copied.
    CClass(const char* name, const char* base1, const char* base2, const char* base3,
           unsigned int size, Factory constructor);
    ~CClass();

    const char* GetQualifiedName() const { return m_name; }
    // The part behind the last ':'.
    const char* GetName() const;
    const char* GetQualifiedBaseClassName1() const { return m_baseName1; }
    const char* GetQualifiedBaseClassName2() const { return m_baseName2; }
    const char* GetQualifiedBaseClassName3() const { return m_baseName3; }
    // Resolved at first need, so that a base may register after its derived class.
    const CClass* GetBaseClass1() const;
    const CClass* GetBaseClass2() const;
    const CClass* GetBaseClass3() const;
    unsigned int GetSize() const { return m_size; }
    Factory GetConstructor() const { return m_constructor; }

    bool IsInstanceOf(const CClass* cls) const;

    // A new object from the factory, owned by the caller. Throws CInstantiationException for a
    // record without a factory, and CMemoryException when the factory gives null.
    CObject* CreateNewInstance() const;

    // The record registered under the full qualified name (case-sensitive), or null.
    static const CClass* FindClass(const char* name);

private:
    CClass(const CClass& other);
    CClass& operator=(const CClass& other);

    friend class CClassManager;

    const char* m_name;
    const char* m_baseName1;
    const char* m_baseName2;
    const char* m_baseName3;
    unsigned int m_size;
    Factory m_constructor;
    mutable const CClass* m_base1;
    mutable const CClass* m_base2;
    mutable const CClass* m_base3;
    CClass* m_previous;
    CClass* m_next;
};

} // namespace vorn::base

// In a class body: the record m_class<Name> and the GetClass that returns it.
#define VORN_DECLARE_CLASS(Name)                                                                   \
public:                                                                                            \
    static ::vorn::base::CClass m_class##Name;                                                     \
    const ::vorn::base::CClass* GetClass() const override;

// In one source file, in the class's namespace: defines the record with all six values.
#define VORN_DEFINE_CLASS(Name, QualifiedName, Base1, Base2, Base3, Factory)                       \
    ::vorn::base::CClass Name::m_class##Name(QualifiedName, Base1, Base2, Base3,                   \
                                             static_cast<unsigned int>(sizeof(Name)), Factory);    \
    const ::vorn::base::CClass* Name::GetClass() const {                                           \
        return &m_class##Name;                                                                     \
    }

// The common case: one base and no factory.
#define VORN_DEFINE_CLASS_BASE(Name, QualifiedName, Base1)                                         \
    VORN_DEFINE_CLASS(Name, QualifiedName, Base1, nullptr, nullptr, nullptr)

// A factory for VORN_DEFINE_CLASS that makes a default-constructed object of the class.
#define VORN_CLASS_FACTORY(Name) (+[]() -> ::vorn::base::CObject* { return new Name(); })
