// XMLAttributeList: the attributes of one start element token, in the order the document gave
// them. Lookups are linear and the first match wins; duplicates are kept.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/Vector.h>

namespace vorn::io {

// A token's copy of a text; an empty one takes no block, since the null string reads the same.
inline vorn::base::CUnicodeString CopyText(const unsigned short* text) {
    return text == nullptr || *text == 0 ? vorn::base::CUnicodeString()
                                         : vorn::base::CUnicodeString(text);
}

// The same for a text that may equal one copied before into `copy` (a local name that is its
// qualified name): that copy is shared instead. Only within one token, which one thread holds.
inline vorn::base::CUnicodeString CopyText(const unsigned short* text, const unsigned short* copied,
                                           const vorn::base::CUnicodeString& copy) {
    if (text != nullptr && copied != nullptr) {
        const unsigned short *a = text, *b = copied;
        while (*a != 0 && *a == *b)
            ++a, ++b;
        if (*a == *b)
            return copy;
    }
    return CopyText(text);
}

struct XMLAttribute {
    vorn::base::CUnicodeString qualifiedName;
    vorn::base::CUnicodeString localName;
    vorn::base::CUnicodeString namespaceURI;
    vorn::base::CUnicodeString value;
};

class XMLAttributeList : public vorn::base::CBase, public vorn::util::CVector<XMLAttribute> {
public:
    XMLAttributeList(unsigned int initialCapacity, unsigned int increment)
        : vorn::util::CVector<XMLAttribute>(initialCapacity, increment) {}

    // Adds nothing, silently, for a null namespace URI or a null or empty name; an empty
    // namespace URI is kept. A null value is stored as the empty string.
    void AddAttribute(const unsigned short* namespaceURI, const unsigned short* localName,
                      const unsigned short* qualifiedName, const unsigned short* value);
    // Leaves the local name and namespace URI empty.
    void AddAttribute(const unsigned short* qualifiedName, const unsigned short* value);

    bool HasAttribute(const unsigned short* namespaceURI, const unsigned short* localName) const;
    bool HasAttribute(const unsigned short* qualifiedName) const;
    const vorn::base::CUnicodeString& GetAttribute(const unsigned short* namespaceURI,
                                                   const unsigned short* localName) const;
    const vorn::base::CUnicodeString& GetAttribute(const unsigned short* qualifiedName) const;

private:
    // What Find gives when the bounds-checked access failed; the failure has been printed.
    static constexpr int kAccessFailed = -2;

    // The names checked, then the index of the first match, or -1.
    int Find(const unsigned short* namespaceURI, const unsigned short* localName) const;
    int Find(const unsigned short* qualifiedName) const;
    template <typename Matches> int Scan(Matches matches) const;
    // The value at what Find gave, or the failure it stands for.
    const vorn::base::CUnicodeString& ValueAt(int at) const;
};

} // namespace vorn::io
