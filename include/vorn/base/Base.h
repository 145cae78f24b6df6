// The frame of the library: its start and stop, the allocation operators every object inherits,
// and the two empty helper classes.
#pragma once

#include <cstddef>

#include <vorn/base/Export.h>

namespace vorn {

// Counts nested starts; the first one starts the file layer. Returns the new count.
VORN_API int Initialize();
// Undoes one Initialize; the last one stops the file layer. Returns the count left.
VORN_API int Terminate();

namespace base {

// Root of every object: gives all classes the library's allocation operators.
class VORN_API CBase {
protected:
    constexpr CBase() {}

public:
    CBase(const CBase&) {}
    ~CBase() {}
    CBase& operator=(const CBase&) { return *this; }

    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const char* file, int line);
    static void* operator new(std::size_t size, void* place) noexcept;
    static void* operator new(std::size_t size, void* place, const char* file, int line) noexcept;
    static void* operator new[](std::size_t size);
    static void* operator new[](std::size_t size, const char* file, int line);
    static void* operator new[](std::size_t size, void* place) noexcept;
    static void* operator new[](std::size_t size, void* place, const char* file, int line) noexcept;

    static void operator delete(void* p);
    static void operator delete(void* p, const char* file, int line);
    static void operator delete(void* p, void* place) noexcept;
    static void operator delete(void* p, void* place, const char* file, int line) noexcept;
    static void operator delete[](void* p);
    static void operator delete[](void* p, const char* file, int line);
    static void operator delete[](void* p, void* place) noexcept;
    static void operator delete[](void* p, void* place, const char* file, int line) noexcept;

private:
    [[noreturn]] static void _ThrowMemoryException(const char* file, int line);
};

// Base of classes whose objects must not be copied.
class VORN_API CNonCopyable {
protected:
    CNonCopyable() {}
    ~CNonCopyable() {}

private:
    CNonCopyable(const CNonCopyable&) = delete;
    CNonCopyable& operator=(const CNonCopyable&) = delete;
};

// A token that stands for "no object" where a caller writes vorn::null.
class VORN_API CNull {
public:
    constexpr CNull() {}
    CNull(const CNull&) = default;
    CNull& operator=(const CNull&);
    CNull& operator=(CNull&&);
};

} // namespace base

VORN_API extern const base::CNull null;

} // namespace vorn
