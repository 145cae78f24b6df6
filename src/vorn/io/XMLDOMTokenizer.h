// XMLDOMTokenizer: walks a Xerces-C DOM from its document element and makes tokens over the
// nodes. End tokens come from a stack that the walk fills as it climbs out of a node's last
// child; their order is the walk's own (see docs/GUIDE.md): a childless element gets none, and at
// the end of the document the second one is dropped. The walk is never finished: once it has
// given everything, the next call starts over at the document element. Internal.
#pragma once

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/io/XMLToken.h>
#include <vorn/util/Stack.h>

namespace vorn::io {

class XMLDOMTokenizer : public vorn::base::CBase {
public:
    // "Invalid DOM document." for a null document or one without a document element. The
    // document is not owned and must outlive the tokenizer and its tokens.
    explicit XMLDOMTokenizer(const xercesc::DOMDocument* document);

    // The next token, or an empty reference.
    vorn::base::CRef<IXMLToken> GetNextToken();

private:
    // The next node of the walk, pushing an end token for each element climbed out of.
    xercesc::DOMNode* NextNode(xercesc::DOMNode* node, bool descend);
    // The next node of a type that makes a token; it becomes the current node.
    xercesc::DOMNode* AdvanceNode();
    static vorn::base::CRef<IXMLToken> MakeToken(xercesc::DOMNode* node);
    void ReverseEndTokens();

    const xercesc::DOMDocument* m_document;
    xercesc::DOMElement* m_root;
    xercesc::DOMNode* m_currentNode; // null before the first node and after the last
    vorn::util::CStack<vorn::base::CRef<IXMLToken>> m_endTokens;
};

} // namespace vorn::io
