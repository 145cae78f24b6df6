#include <vorn/base/Object.h>

#include <cstdint>

namespace vorn::base {

CClass CObject::m_classCObject("vorn::base::CObject", nullptr, nullptr, nullptr,
                               static_cast<unsigned int>(sizeof(CObject)), nullptr);

CObject::~CObject() {}

const CClass* CObject::GetClass() const {
    return &m_classCObject;
}

int CObject::GetHashCode() const {
    std::uint64_t address = reinterpret_cast<std::uintptr_t>(this);
    return static_cast<int>(static_cast<std::uint32_t>(address + (address >> 32)));
}

bool CObject::Equals(const CObject* other) const {
    return other == this;
}

CObject* CObject::Clone() const {
    return nullptr;
}

bool CObject::IsInstanceOf(const CClass* cls) const {
    const CClass* own = GetClass();
    return own != nullptr && own->IsInstanceOf(cls);
}

} // namespace vorn::base
