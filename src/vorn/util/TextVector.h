// What CStringVector and CUnicodeStringVector add to the generic vector of their text type:
// refused null elements, searches that compare the stored texts exactly, a quiet SetElementAt past
// the end, a RemoveElement that insists, and the view-only enumeration. Each throw carries the
// source and line its caller passes.
#pragma once

#include <cstdlib>
#include <cstring>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/Enumeration.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/Vector.h>

#include "platform/UniText.h"

namespace vorn::util::detail {

inline bool SameText(const vorn::base::CString& stored, const char* text) {
    return std::strcmp(stored, text) == 0;
}
inline bool SameText(const vorn::base::CUnicodeString& stored, const unsigned short* text) {
    return ZK::ucscmp(stored, text) == 0;
}

template <typename S, typename Char> struct TextVector {
    static void Check(const Char* element, const char* source, unsigned int line) {
        if (element == nullptr)
            throw vorn::base::CIllegalArgumentException(source, line, "Invalid element.");
    }

    template <typename V>
    static auto& At(V& vector, unsigned int index, const char* source, unsigned int line) {
        if (index >= vector.GetSize())
            throw vorn::base::CArrayIndexOutOfBoundsException(source, line);
        return vector[index];
    }

    template <typename V> static auto& First(V& vector, const char* source, unsigned int line) {
        if (vector.IsEmpty())
            throw CNoSuchElementException(source, line);
        return vector[0];
    }

    template <typename V> static auto& Last(V& vector, const char* source, unsigned int line) {
        if (vector.IsEmpty())
            throw CNoSuchElementException(source, line);
        return vector[vector.GetSize() - 1];
    }

    static int IndexOf(const CVector<S>& vector, const Char* element) {
        for (unsigned int i = 0; i < vector.GetSize(); ++i)
            if (SameText(vector[i], element))
                return static_cast<int>(i);
        return -1;
    }

    static int LastIndexOf(const CVector<S>& vector, const Char* element) {
        for (unsigned int i = vector.GetSize(); i-- > 0;)
            if (SameText(vector[i], element))
                return static_cast<int>(i);
        return -1;
    }

    // Past the end it does nothing, and says nothing.
    static void Set(CVector<S>& vector, const Char* element, unsigned int index) {
        if (index < vector.GetSize())
            vector[index] = element;
    }

    static void Remove(CVector<S>& vector, const Char* element, const char* source,
                       unsigned int line) {
        const int index = IndexOf(vector, element);
        if (index < 0)
            throw CNoSuchElementException(source, line);
        vector.RemoveElementAt(static_cast<unsigned int>(index));
    }

    // The runtime's qsort over the 8-byte slots: `compare` receives pointers to the strings.
    static void Sort(CVector<S>& vector, int (*compare)(const void*, const void*),
                     const char* source, unsigned int line) {
        static_assert(sizeof(S) == 8, "a text is one pointer");
        if (compare == nullptr)
            throw vorn::base::CIllegalArgumentException(source, line, "Invalid compare function.");
        if (!vector.IsEmpty())
            std::qsort(&vector[0], vector.GetSize(), sizeof(S), compare);
    }
};

// A view of a text vector with no copy: the index starts at -1 and the walk ends one short of
// the size, as signed numbers.
template <typename V, typename S, const char* Source>
class TextVectorEnumeration : public IEnumeration<S> {
public:
    explicit TextVectorEnumeration(V* vector) : m_vector(vector), m_index(-1) {}
    bool HasMoreElements() const override {
        return m_index < static_cast<int>(m_vector->GetSize()) - 1;
    }
    const S& GetNextElement() const override {
        return const_cast<TextVectorEnumeration*>(this)->GetNextElement();
    }
    S& GetNextElement() override {
        if (!HasMoreElements())
            throw CNoSuchElementException(Source, __LINE__);
        ++m_index;
        return m_vector->GetElementAt(static_cast<unsigned int>(m_index));
    }
    void Reset() override { m_index = -1; }

private:
    V* m_vector;
    int m_index;
};

} // namespace vorn::util::detail
