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
    AddElement(
        {CopyText(qualifiedName), CopyText(localName), CopyText(namespaceURI), CopyText(value)});
}

void XMLAttributeList::AddAttribute(const unsigned short* qualifiedName,
                                    const unsigned short* value) {
    if (IsEmptyText(qualifiedName))
        return;
    AddElement({CopyText(qualifiedName), {}, {}, CopyText(value)});
}

int XMLAttributeList::Find(const unsigned short* namespaceURI,
                           const unsigned short* localName) const {
    for (unsigned int i = 0; i < GetSize(); ++i) {
        const XMLAttribute& attribute = GetElementAt(i);
        if (attribute.localName == localName && attribute.namespaceURI == namespaceURI)
            return static_cast<int>(i);
    }
    return -1;
}

int XMLAttributeList::Find(const unsigned short* qualifiedName) const {
    for (unsigned int i = 0; i < GetSize(); ++i)
        if (GetElementAt(i).qualifiedName == qualifiedName)
            return static_cast<int>(i);
    return -1;
}

bool XMLAttributeList::HasAttribute(const unsigned short* namespaceURI,
                                    const unsigned short* localName) const {
    if (IsEmptyText(namespaceURI))
        Refuse(__LINE__, "Invalid namespace URI.");
    if (IsEmptyText(localName))
        Refuse(__LINE__, "Invalid local name.");
    try {
        return Find(namespaceURI, localName) >= 0;
    } catch (const CArrayIndexOutOfBoundsException& e) {
        e.Print(CSystem::debugOut);
        return false;
    }
}

bool XMLAttributeList::HasAttribute(const unsigned short* qualifiedName) const {
    if (IsEmptyText(qualifiedName))
        Refuse(__LINE__, "Invalid qualified name.");
    try {
        return Find(qualifiedName) >= 0;
    } catch (const CArrayIndexOutOfBoundsException& e) {
        e.Print(CSystem::debugOut);
        return false;
    }
}

const CUnicodeString& XMLAttributeList::GetAttribute(const unsigned short* namespaceURI,
                                                     const unsigned short* localName) const {
    if (IsEmptyText(namespaceURI))
        Refuse(__LINE__, "Invalid namespace URI.");
    if (IsEmptyText(localName))
        Refuse(__LINE__, "Invalid local name.");
    int at;
    try {
        at = Find(namespaceURI, localName);
    } catch (const CArrayIndexOutOfBoundsException& e) {
        e.Print(CSystem::debugOut);
        Refuse(__LINE__, "Failed to get the specified attribute of attribute list.");
    }
    if (at < 0)
        Refuse(__LINE__, "No such attribute.");
    return GetElementAt(static_cast<unsigned int>(at)).value;
}

const CUnicodeString& XMLAttributeList::GetAttribute(const unsigned short* qualifiedName) const {
    if (IsEmptyText(qualifiedName))
        Refuse(__LINE__, "Invalid qualified name.");
    int at;
    try {
        at = Find(qualifiedName);
    } catch (const CArrayIndexOutOfBoundsException& e) {
        e.Print(CSystem::debugOut);
        Refuse(__LINE__, "Failed to get the specified attribute of attribute list.");
    }
    if (at < 0)
        Refuse(__LINE__, "No such attribute.");
    return GetElementAt(static_cast<unsigned int>(at)).value;
}

} // namespace vorn::io
