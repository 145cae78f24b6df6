// A document as a flat list of events, from a DOM tree or from a text that Xerces-C parses, for
// comparing what writers and readers made of it.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <vorn/base/Ref.h>
#include <vorn/io/XMLToken.h>

#include "support/Utf16.h"

namespace vorn::test {

struct Attribute {
    std::string qname, uri, local, value;
};

// One token of a document: S, E, T (text), D (CDATA), C (comment) or P; `token` is the reader's.
struct Event {
    char kind;
    std::string name, uri, local, text;
    std::vector<Attribute> attributes;
    vorn::base::CRef<vorn::io::IXMLToken> token;

    std::string Describe(bool withAttributes) const {
        std::string out = std::string(1, kind) + ":" + name;
        if (kind == 'S' || kind == 'E')
            out += "{" + uri + "}" + local;
        if (kind == 'S' && withAttributes) {
            std::vector<std::string> each;
            for (const Attribute& a : attributes)
                each.push_back(a.qname + "{" + a.uri + "}" + a.local + "=" + a.value);
            std::sort(each.begin(), each.end());
            for (const std::string& a : each)
                out += " " + a;
        }
        return out + (kind == 'S' || kind == 'E' ? "" : text);
    }
};

// Without the line ends the writer puts in, adjacent texts joined, empty texts and CDATA and
// the white space around the root dropped.
inline std::vector<Event> Normal(const std::vector<Event>& events) {
    std::vector<Event> out;
    int depth = 0;
    for (Event e : events) {
        depth += e.kind == 'S' ? 1 : e.kind == 'E' ? -1 : 0;
        if (e.kind == 'T')
            e.text.erase(std::remove(e.text.begin(), e.text.end(), '\n'), e.text.end());
        if ((e.kind == 'T' && (e.text.empty() || depth == 0)) || (e.kind == 'D' && e.text.empty()))
            continue;
        if (e.kind == 'T' && !out.empty() && out.back().kind == 'T')
            out.back().text += e.text;
        else
            out.push_back(e);
    }
    return out;
}

inline std::string Join(const std::vector<Event>& events, bool withAttributes) {
    std::string out;
    for (const Event& e : events)
        out += e.Describe(withAttributes) + "\n";
    return out;
}

// The events on one line, attributes included.
inline std::string Flat(const std::vector<Event>& events) {
    std::string out;
    for (const Event& e : events)
        out += (out.empty() ? "" : " | ") + e.Describe(true);
    return out;
}

inline std::string Utf8(const WString& text) {
    return Narrow(text);
}
inline std::string Utf8(const XMLCh* text) {
    return text == nullptr ? ""
                           : Narrow(WString(text, text + std::char_traits<XMLCh>::length(text)));
}

// A node's local name, or its name where it was made without namespaces.
inline std::string LocalName(const xercesc::DOMNode* node) {
    return Utf8(node->getLocalName() != nullptr ? node->getLocalName() : node->getNodeName());
}

// The events under `node`, namespace declarations left out; an entity reference is R:name.
inline std::vector<Event> DomEvents(const xercesc::DOMNode* node) {
    using namespace xercesc;
    std::vector<Event> events;
    std::function<void(const DOMNode*)> walk = [&](const DOMNode* parent) {
        for (DOMNode* n = parent->getFirstChild(); n != nullptr; n = n->getNextSibling()) {
            switch (n->getNodeType()) {
            case DOMNode::ELEMENT_NODE: {
                Event e{
                    'S', Utf8(n->getNodeName()), Utf8(n->getNamespaceURI()), LocalName(n), "", {},
                    {}};
                DOMNamedNodeMap* attributes = n->getAttributes();
                for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
                    DOMNode* a = attributes->item(i);
                    const std::string qname = Utf8(a->getNodeName());
                    if (qname != "xmlns" && qname.compare(0, 6, "xmlns:") != 0)
                        e.attributes.push_back({qname, Utf8(a->getNamespaceURI()), LocalName(a),
                                                Utf8(a->getNodeValue())});
                }
                events.push_back(e);
                walk(n);
                events.push_back({'E', e.name, e.uri, e.local, "", {}, {}});
                break;
            }
            case DOMNode::TEXT_NODE:
                events.push_back({'T', "", "", "", Utf8(n->getNodeValue()), {}, {}});
                break;
            case DOMNode::CDATA_SECTION_NODE:
                events.push_back({'D', "", "", "", Utf8(n->getNodeValue()), {}, {}});
                break;
            case DOMNode::COMMENT_NODE:
                events.push_back({'C', "", "", "", Utf8(n->getNodeValue()), {}, {}});
                break;
            case DOMNode::PROCESSING_INSTRUCTION_NODE:
                events.push_back(
                    {'P', Utf8(n->getNodeName()), "", "", "=" + Utf8(n->getNodeValue()), {}, {}});
                break;
            case DOMNode::ENTITY_REFERENCE_NODE:
                events.push_back({'R', Utf8(n->getNodeName()), "", "", "", {}, {}});
                break;
            default:
                break;
            }
        }
    };
    walk(node);
    return events;
}

// The document as Xerces-C's DOM sees it, with namespaces; an error of any kind fails.
inline std::vector<Event> ParseWithXerces(const std::string& document, std::string& error) {
    using namespace xercesc;
    XercesDOMParser parser;
    parser.setDoNamespaces(true);
    parser.setCreateEntityReferenceNodes(false);
    MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()), document.size(),
                             "doc");
    try {
        parser.parse(source);
    } catch (...) {
        error = "exception";
    }
    if (parser.getErrorCount() != 0 || parser.getDocument() == nullptr) {
        error += "errors";
        return {};
    }
    return DomEvents(parser.getDocument());
}

} // namespace vorn::test
