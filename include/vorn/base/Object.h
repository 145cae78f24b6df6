// CObject: the base of nearly every class, with a run-time class record.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Class.h>

namespace vorn::base {

class VORN_API CObject : public CBase {
public:
    constexpr CObject() {}
    CObject(const CObject&) : CBase() {}
    CObject& operator=(const CObject&) { return *this; }
    virtual ~CObject();

    virtual const CClass* GetClass() const;
    // Folds the address: its upper 32 bits are added to it and the low 32 bits returned.
    virtual int GetHashCode() const;
    // Identity: true only for this very object.
    virtual bool Equals(const CObject* other) const;
    // Objects are not cloneable unless a class says so: null.
    virtual CObject* Clone() const;

    bool IsInstanceOf(const CClass* cls) const;

    static CClass m_classCObject;
};

} // namespace vorn::base
