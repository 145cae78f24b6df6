#include "vorn/io/XMLAttributeList.h"

#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>

namespace vorn::io {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CSystem;
using vorn::base::CUnicodeString;

namespace {

const char* const kSource = "vorn/io/XMLAttributeList";

bool IsEmptyText(const unsigned short* text) {
    return text == nullptr || *text == 0;
}

[[noreturn]] void Refuse(unsigned int line, const char* words) {
    throw CXMLException(kSource, line, words, nullptr);
}

} // namespace

void XMLAttributeList::AddAttribute(const unsigned short* namespaceURI,
                                    const unsigned short* localName,
                                    const unsigned short* qualifiedName,
                                    const unsigned short* value) {
    if (namespaceURI == nullptr || IsEmptyText(localName) || IsEmptyText(qualifiedName))
        return;
    XMLAttribute attribute{CopyText(qualifiedName), {}, CopyText(namespaceURI), CopyText(value)};
    attribute.localName = CopyText(localName, qualifiedName, attribute.qualifiedName);
    AddElement(attribute);
}

void XMLAttributeList::AddAttribute(const unsigned short* qualifiedName,
                                    const unsigned short* value) {
    if (IsEmptyText(qualifiedName))
        return;
    AddElement({CopyText(qualifiedName), {}, {}, CopyText(value)});
}

template <typename Matches> int XMLAttributeList::Scan(Matches matches) const {
    try {
        for (unsigned int i = 0; i < GetSize(); ++i)
            if (matches(GetElementAt(i)))
                return static_cast<int>(i);
        return -1;
    } catch (const CArrayIndexOutOfBoundsException& e) {
        e.Print(CSystem::debugOut);
        return kAccessFailed;
    }
}

int XMLAttributeList::Find(const unsigned short* namespaceURI,
                           const unsigned short* localName) const {
    if (IsEmptyText(namespaceURI))
        Refuse(__LINE__, "Invalid namespace URI.");
    if (IsEmptyText(localName))
        Refuse(__LINE__, "Invalid local name.");
    return Scan([&](const XMLAttribute& a) {
        return a.localName == localName && a.namespaceURI == namespaceURI;
    });
}

int XMLAttributeList::Find(const unsigned short* qualifiedName) const {
    if (IsEmptyText(qualifiedName))
        Refuse(__LINE__, "Invalid qualified name.");
    return Scan([&](const XMLAttribute& a) { return a.qualifiedName == qualifiedName; });
}

const CUnicodeString& XMLAttributeList::ValueAt(int at) const {
    if (at == kAccessFailed)
        Refuse(__LINE__, "Failed to get the specified attribute of attribute list.");
    if (at < 0)
        Refuse(__LINE__, "No such attribute.");
    return GetElementAt(static_cast<unsigned int>(at)).value;
}

bool XMLAttributeList::HasAttribute(const unsigned short* namespaceURI,
                                    const unsigned short* localName) const {
    return Find(namespaceURI, localName) >= 0;
}

bool XMLAttributeList::HasAttribute(const unsigned short* qualifiedName) const {
    return Find(qualifiedName) >= 0;
}

const CUnicodeString& XMLAttributeList::GetAttribute(const unsigned short* namespaceURI,
                                                     const unsigned short* localName) const {
    return ValueAt(Find(namespaceURI, localName));
}

const CUnicodeString& XMLAttributeList::GetAttribute(const unsigned short* qualifiedName) const {
    return ValueAt(Find(qualifiedName));
}

} // namespace vorn::io
