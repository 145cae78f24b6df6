#include <vorn/base/MemoryException.h>
#include <vorn/base/StringH.h>

#include <cstring>

#include "platform/Memory.h"
#include "platform/Text.h"

namespace vorn::base {

namespace {
constexpr const char* kSource = "vorn/base/StringH";
} // namespace

CStringH::CStringH(const CStringH& s) : m_handle(nullptr), m_capacity(0), m_length(0) {
    if (!s.IsEmpty())
        AllocCopy(s.m_handle, -1);
}

CStringH::CStringH(const CString& s) : m_handle(nullptr), m_capacity(0), m_length(0) {
    if (!s.IsEmpty())
        AllocCopy(s, -1);
}

CStringH::CStringH(const char* s) : m_handle(nullptr), m_capacity(0), m_length(0) {
    if (s != nullptr)
        AllocCopy(s, -1);
}

CStringH::~CStringH() {
    ReleaseBuffer();
}

CStringH& CStringH::operator=(const CStringH& s) {
    if (this == &s)
        return *this;
    if (s.IsEmpty())
        Empty();
    else
        AllocCopy(s.m_handle, -1);
    return *this;
}

CStringH& CStringH::operator=(const CString& s) {
    if (s.IsEmpty())
        Empty();
    else
        AllocCopy(s, -1);
    return *this;
}

CStringH& CStringH::operator=(const char* s) {
    if (s == nullptr)
        Empty();
    else
        AllocCopy(s, -1);
    return *this;
}

void CStringH::Empty() {
    if (m_handle != nullptr && m_length > 0) {
        (*m_handle)[0] = '0';
        m_length = 0;
    }
}

int CStringH::CompareText(const char* s, bool sEmpty) const {
    if (sEmpty)
        return IsEmpty() ? 0 : 1;
    if (IsEmpty())
        return -1;
    return CHCompareTexts(*m_handle, -1, s, -1, 1, 0);
}

int CStringH::Compare(const CStringH& s) const {
    return CompareText(s, s.IsEmpty());
}

int CStringH::Compare(const CString& s) const {
    return CompareText(s, s.IsEmpty());
}

int CStringH::Compare(const char* s) const {
    return CompareText(s, s == nullptr || *s == '\0');
}

void CStringH::AllocBuffer(unsigned int n) {
    Grow(n, 232);
}

void CStringH::EnsureBufferCapacity(unsigned int n) {
    Grow(n, 367);
}

// To the exact size, with no rounding. A refused resize leaves the old block and text in place.
void CStringH::Grow(unsigned int n, unsigned int line) {
    if (m_capacity >= n)
        return;
    char** handle =
        m_handle != nullptr ? BMReallocHandle(m_handle, n, 0, 0) : BMAllocateHandle(n, 0, 0);
    if (handle == nullptr)
        throw CMemoryException(kSource, line);
    m_handle = handle;
    m_capacity = n;
}

void CStringH::ReleaseBuffer() {
    if (m_handle == nullptr)
        return;
    BMKillHandle(&m_handle);
    m_capacity = 0;
}

void CStringH::AllocCopy(const char* text, int count) {
    AllocCopy(0u, text, count);
}

void CStringH::AllocCopy(char** text, int count) {
    AllocCopy(0u, text, count);
}

void CStringH::AllocCopy(unsigned int capacity, char** text, int count) {
    AllocCopy(capacity, text == nullptr ? nullptr : *text, count);
}

void CStringH::AllocCopy(unsigned int capacity, const char* text, int count) {
    unsigned int size;
    if (count == -1)
        size = text == nullptr ? 0 : static_cast<unsigned int>(std::strlen(text));
    else
        size = static_cast<unsigned int>(count);
    AllocBuffer(size + 1 > capacity ? size + 1 : capacity);
    char* target = *m_handle;
    if (text == nullptr) {
        target[0] = '\0';
        m_length = 0;
    } else if (count == -1) {
        CHCopyC(text, target);
        m_length = static_cast<unsigned int>(std::strlen(target));
    } else {
        // The count bounds the copy terminator included, so the last byte of a full count is lost.
        CHTruncate(text, target, count, 0);
        target[count] = '\0';
        m_length = static_cast<unsigned int>(count);
    }
}

bool operator==(const CString& a, const CStringH& b) {
    return b.Compare(a) == 0;
}
bool operator==(const CStringH& a, const CStringH& b) {
    return a.Compare(b) == 0;
}
bool operator==(const CStringH& a, const CString& b) {
    return a.Compare(b) == 0;
}
bool operator==(const CStringH& a, const char* b) {
    return a.Compare(b) == 0;
}
bool operator==(const char* a, const CStringH& b) {
    return b.Compare(a) == 0;
}
bool operator!=(const CString& a, const CStringH& b) {
    return b.Compare(a) != 0;
}
bool operator!=(const CStringH& a, const CStringH& b) {
    return a.Compare(b) != 0;
}
bool operator!=(const CStringH& a, const CString& b) {
    return a.Compare(b) != 0;
}
bool operator!=(const CStringH& a, const char* b) {
    return a.Compare(b) != 0;
}
bool operator!=(const char* a, const CStringH& b) {
    return b.Compare(a) != 0;
}

} // namespace vorn::base
