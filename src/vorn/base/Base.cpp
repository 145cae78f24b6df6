#include <vorn/base/Base.h>
#include <vorn/base/MemoryException.h>

#include "platform/Memory.h"

namespace vorn::base {

void* CBase::operator new(std::size_t size) {
    void* p = ZK_malloc(size);
    if (p == nullptr)
        _ThrowMemoryException("vorn/base/Base", 148);
    return p;
}

void* CBase::operator new[](std::size_t size) {
    void* p = ZK_malloc(size);
    if (p == nullptr)
        _ThrowMemoryException("vorn/base/Base", 196);
    return p;
}

void* CBase::operator new(std::size_t size, const char* file, int line) {
    void* p = ZK_malloc(size);
    if (p == nullptr)
        _ThrowMemoryException(file, line);
    return p;
}

void* CBase::operator new[](std::size_t size, const char* file, int line) {
    void* p = ZK_malloc(size);
    if (p == nullptr)
        _ThrowMemoryException(file, line);
    return p;
}

void* CBase::operator new(std::size_t, void* place) noexcept {
    return place;
}
void* CBase::operator new[](std::size_t, void* place) noexcept {
    return place;
}
void* CBase::operator new(std::size_t, void* place, const char*, int) noexcept {
    return place;
}
void* CBase::operator new[](std::size_t, void* place, const char*, int) noexcept {
    return place;
}

void CBase::operator delete(void* p) {
    ZK_free(p);
}
void CBase::operator delete[](void* p) {
    ZK_free(p);
}
void CBase::operator delete(void* p, const char*, int) {
    ZK_free(p);
}
void CBase::operator delete[](void* p, const char*, int) {
    ZK_free(p);
}
void CBase::operator delete(void*, void*) noexcept {}
void CBase::operator delete[](void*, void*) noexcept {}
void CBase::operator delete(void*, void*, const char*, int) noexcept {}
void CBase::operator delete[](void*, void*, const char*, int) noexcept {}

void CBase::_ThrowMemoryException(const char* file, int line) {
    throw CMemoryException(file, static_cast<unsigned int>(line));
}

CNull& CNull::operator=(const CNull&) {
    return *this;
}
CNull& CNull::operator=(CNull&&) {
    return *this;
}

} // namespace vorn::base

namespace vorn {
const base::CNull null;
}
