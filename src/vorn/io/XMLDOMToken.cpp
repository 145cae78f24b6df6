#include <xercesc/dom/DOMCharacterData.hpp>
#include <xercesc/dom/DOMProcessingInstruction.hpp>

#include <vorn/base/NullReferenceException.h>

#include "vorn/io/XMLAttributeList.h"
#include "vorn/io/XMLDOMTokens.h"
#include "vorn/io/XercesText.h"

namespace vorn::io {

using vorn::base::CUnicodeString;
using xercesc::DOMNode;

CUnicodeString CXMLDOMToken::CharacterData() const {
    switch (m_node->getNodeType()) {
    case DOMNode::TEXT_NODE:
    case DOMNode::CDATA_SECTION_NODE:
    case DOMNode::COMMENT_NODE:
        return CopyText(U(static_cast<xercesc::DOMCharacterData*>(m_node)->getData()));
    default:
        throw vorn::base::CNullReferenceException("vorn/io/XMLDOMToken", __LINE__);
    }
}

CUnicodeString CXMLDOMElementToken::GetValue() const {
    return CUnicodeString();
}

bool CXMLDOMElementToken::HasNamespaceURI() const {
    return GetNode()->getNamespaceURI() != nullptr;
}

CUnicodeString CXMLDOMElementToken::GetQualifiedName() const {
    return CopyText(U(GetNode()->getNodeName()));
}

CUnicodeString CXMLDOMElementToken::GetLocalName() const {
    return CopyText(U(GetNode()->getLocalName()));
}

CUnicodeString CXMLDOMElementToken::GetNamespaceURI() const {
    return CopyText(U(GetNode()->getNamespaceURI()));
}

CUnicodeString CXMLDOMPIToken::GetValue() const {
    return CUnicodeString();
}

CUnicodeString CXMLDOMPIToken::GetTarget() const {
    return CopyText(U(static_cast<xercesc::DOMProcessingInstruction*>(GetNode())->getTarget()));
}

CUnicodeString CXMLDOMPIToken::GetData() const {
    return CopyText(U(static_cast<xercesc::DOMProcessingInstruction*>(GetNode())->getData()));
}

} // namespace vorn::io
