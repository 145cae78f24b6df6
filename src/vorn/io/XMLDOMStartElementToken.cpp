#include <xercesc/dom/DOMElement.hpp>

#include <vorn/io/XMLException.h>

#include "vorn/io/XMLAttributeList.h"
#include "vorn/io/XMLDOMTokens.h"
#include "vorn/io/XMLPull.h"
#include "vorn/io/XercesText.h"

namespace vorn::io {

using vorn::base::CException;
using vorn::base::CUnicodeString;

namespace {

const char* const kSource = "vorn/io/XMLDOMStartElementToken";

const xercesc::DOMElement* Element(const CXMLDOMToken& token) {
    return static_cast<const xercesc::DOMElement*>(token.GetNode());
}

// The attribute that `find` gives: a CException passes on as it is, anything else the DOM throws
// becomes a CXMLException.
template <typename Find> CUnicodeString Attribute(Find&& find, unsigned int line) {
    try {
        const XMLCh* value = find();
        if (value == nullptr)
            throw CXMLException(kSource, line, "No such attribute.", nullptr);
        return CopyText(U(value));
    } catch (const CException&) {
        throw;
    } catch (...) {
        throw CXMLException(kSource, line, "Failed to get the specified attribute.", nullptr);
    }
}

} // namespace

bool CXMLDOMStartElementToken::HasAttribute(const unsigned short* namespaceURI,
                                            const unsigned short* localName) const {
    pull::CheckName(namespaceURI, kSource, __LINE__, "Invalid namespace URI.");
    pull::CheckName(localName, kSource, __LINE__, "Invalid local name.");
    return Element(*this)->getAttributeNS(X(namespaceURI), X(localName)) != nullptr;
}

bool CXMLDOMStartElementToken::HasAttribute(const unsigned short* qualifiedName) const {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid qualidied name.");
    return Element(*this)->getAttribute(X(qualifiedName)) != nullptr;
}

CUnicodeString CXMLDOMStartElementToken::GetAttribute(const unsigned short* namespaceURI,
                                                      const unsigned short* localName) const {
    pull::CheckName(namespaceURI, kSource, __LINE__, "Invalid namespace URI.");
    pull::CheckName(localName, kSource, __LINE__, "Invalid local name.");
    return Attribute([&] { return Element(*this)->getAttributeNS(X(namespaceURI), X(localName)); },
                     __LINE__);
}

CUnicodeString CXMLDOMStartElementToken::GetAttribute(const unsigned short* qualifiedName) const {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid qualidied name.");
    return Attribute([&] { return Element(*this)->getAttribute(X(qualifiedName)); }, __LINE__);
}

} // namespace vorn::io
