#include "vorn/io/XMLDOMTokenizer.h"

#include <vorn/io/IOException.h>

#include "vorn/io/XMLDOMTokens.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CRef;
using xercesc::DOMNode;

namespace {

const char* const kSource = "vorn/io/XMLDOMTokenizer";

xercesc::DOMElement* RootOf(const xercesc::DOMDocument* document) {
    xercesc::DOMElement* root = document == nullptr ? nullptr : document->getDocumentElement();
    if (root == nullptr)
        throw CIOException(kSource, __LINE__, "Invalid DOM document.", nullptr);
    return root;
}

// Element, text, CDATA section, entity reference, processing instruction and comment.
bool MakesToken(DOMNode::NodeType type) {
    return ((0x1BAu >> type) & 1u) != 0;
}

} // namespace

XMLDOMTokenizer::XMLDOMTokenizer(const xercesc::DOMDocument* document)
    : m_document(document), m_root(RootOf(m_document)), m_currentNode(nullptr), m_endTokens(5, 2) {}

DOMNode* XMLDOMTokenizer::NextNode(DOMNode* node, bool descend) {
    if (node == nullptr)
        return m_root;
    if (descend && node->hasChildNodes())
        return node->getFirstChild();
    if (node != m_root) {
        if (DOMNode* sibling = node->getNextSibling())
            return sibling;
        for (DOMNode* parent = node->getParentNode(); parent != nullptr;
             parent = parent->getParentNode()) {
            m_endTokens.Push(HoldToken(new CXMLDOMEndElementToken(parent)));
            if (parent == m_root)
                break;
            if (DOMNode* sibling = parent->getNextSibling())
                return sibling;
        }
    }
    // Only at the end of the walk: a sibling found above leaves the stack in push order.
    ReverseEndTokens();
    return nullptr;
}

void XMLDOMTokenizer::ReverseEndTokens() {
    unsigned int low = 0;
    unsigned int high = m_endTokens.GetSize();
    while (high > low + 1) {
        --high;
        const CRef<IXMLToken> kept = m_endTokens.GetElementAt(low);
        m_endTokens.GetElementAt(low) = m_endTokens.GetElementAt(high);
        m_endTokens.GetElementAt(high) = kept;
        ++low;
    }
}

DOMNode* XMLDOMTokenizer::AdvanceNode() {
    if (m_root == nullptr)
        return nullptr;
    DOMNode* node = NextNode(m_currentNode, true);
    // Below an element every node makes a token. Were there another, it is stepped over from
    // itself: stepping again from the current node would give it again, for ever.
    while (node != nullptr && !MakesToken(node->getNodeType()))
        node = NextNode(node, true);
    m_currentNode = node;
    return node;
}

CRef<IXMLToken> XMLDOMTokenizer::MakeToken(DOMNode* node) {
    switch (node->getNodeType()) {
    case DOMNode::ELEMENT_NODE:
        return HoldToken(new CXMLDOMStartElementToken(node));
    case DOMNode::TEXT_NODE:
    case DOMNode::ENTITY_REFERENCE_NODE: // the reference node itself, as text
        return HoldToken(new CXMLDOMTextToken(node));
    case DOMNode::CDATA_SECTION_NODE:
        return HoldToken(new CXMLDOMCDATAToken(node));
    case DOMNode::PROCESSING_INSTRUCTION_NODE:
        return HoldToken(new CXMLDOMPIToken(node));
    case DOMNode::COMMENT_NODE:
        return HoldToken(new CXMLDOMCommentToken(node));
    default:
        return CRef<IXMLToken>();
    }
}

CRef<IXMLToken> XMLDOMTokenizer::GetNextToken() {
    if (!m_endTokens.IsEmpty()) {
        // The top is the token the previous call gave out, unless that call popped it: then
        // this drops the next one.
        m_endTokens.Pop();
        if (m_endTokens.IsEmpty())
            return m_currentNode == nullptr ? CRef<IXMLToken>() : MakeToken(m_currentNode);
        return m_endTokens.Peek();
    }
    if (AdvanceNode() != nullptr)
        return m_endTokens.IsEmpty() ? MakeToken(m_currentNode) : m_endTokens.Peek();
    if (m_endTokens.IsEmpty())
        return CRef<IXMLToken>();
    return m_endTokens.Pop();
}

} // namespace vorn::io
