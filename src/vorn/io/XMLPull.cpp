#include "vorn/io/XMLPull.h"

#include <vorn/base/MemoryException.h>
#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>

#include "vorn/io/XMLReaderState.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io::pull {

using vorn::base::CException;
using vorn::base::CMemoryException;
using vorn::base::CNullReferenceException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;

void CheckName(const unsigned short* name, const char* source, unsigned int line,
               const char* words) {
    if (IsEmptyText(name))
        throw CXMLException(source, line, words, nullptr);
}

void CheckNames(const unsigned short* localName, const unsigned short* namespaceURI,
                const char* source, unsigned int line) {
    CheckName(localName, source, line, "Invalid local name.");
    if (HasColon(localName))
        throw CXMLException(source, line, "Local name must be unqualified name.", nullptr);
    if (namespaceURI == nullptr)
        throw CXMLException(source, line, "Invalid namespace URI.", nullptr);
}

const CRef<IXMLToken>& Guard(const CRef<IXMLToken>* current, const char* source,
                             unsigned int line) {
    if (current == nullptr)
        ThrowIO(source, line, "Reader closed.");
    if (current->IsNull())
        ThrowIO(source, line, "There is no valid token.");
    return *current;
}

XMLTokenType TypeOf(const CRef<IXMLToken>& token, const char* source, unsigned int line,
                    const char* words) {
    try {
        return token->GetType();
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, source, line, words);
    }
}

CUnicodeString ValueOf(const CRef<IXMLToken>& token, const char* source, unsigned int line,
                       const char* words) {
    try {
        return token->GetValue();
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, source, line, words);
    }
}

IXMLStartElementToken& StartElement(const CRef<IXMLToken>* current, const char* source,
                                    unsigned int line) {
    const CRef<IXMLToken>& token = Guard(current, source, line);
    try {
        // A CXMLException here, where the base class says CIOException.
        if (token->GetType() != XMLTokenStartElement)
            throw CXMLException(source, line, "Attributes available only in start element nodes.",
                                nullptr);
        return AsStartElement(token, source, line);
    } catch (const CNullReferenceException&) {
        ThrowIO(source, line, "Failed to check the type of current token.");
    }
}

namespace {

// Joins the run that begins at the current token into one text token.
void JoinRun(CXMLReader& reader, XMLReaderState& state, bool cdataContinues) {
    CUnicodeString run = state.current->GetValue();
    while (reader.ReadToken()) {
        const XMLTokenType type = state.current->GetType();
        if (type != XMLTokenText && !(cdataContinues && type == XMLTokenCDATA))
            break;
        run += state.current->GetValue();
    }
    // The token that ended the run is given out next; empty at the end of the input.
    state.pending = state.current;
    state.current = HoldToken(new CXMLTextToken(run));
}

} // namespace

void ReadRun(CXMLReader& reader, XMLReaderState* state, bool cdataContinues, CUnicodeString* text,
             const char* source, unsigned int line) {
    try {
        // No stop at an end tag: an element without text runs on into what follows.
        while (reader.ReadToken())
            if (IsText(state->current->GetType()))
                break;
        if (!state->current.IsNull())
            JoinRun(reader, *state, cdataContinues);
        if (state->current.IsNull())
            ThrowIO(source, line, "End of stream reached.");
        if (text != nullptr)
            *text = state->current->GetValue();
    } catch (const CMemoryException&) {
        ThrowIO(source, line, "Memory full.");
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, source, line, "Failed to read element text.");
    }
}

bool ReadRunIfAvailable(CXMLReader& reader, XMLReaderState* state, const char* source,
                        unsigned int line) {
    try {
        // There is no closed check of its own: on a closed reader the state is the null it
        // reads, reported as that null access.
        if (state == nullptr)
            throw CNullReferenceException(source, line);
        const CRef<IXMLToken> kept = state->current;
        if (reader.ReadToken()) {
            // Only this one token is looked at: a comment before the text counts as no text.
            if (!IsText(state->current->GetType())) {
                state->pending = state->current;
                state->current = kept;
                return false;
            }
            JoinRun(reader, *state, true);
        }
        if (state->current.IsNull())
            ThrowIO(source, line, "End of stream reached.");
        return true;
    } catch (const CMemoryException&) {
        ThrowIO(source, line, "Memory full.");
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, source, line, "Failed to read element text.");
    }
}

} // namespace vorn::io::pull
