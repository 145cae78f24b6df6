// The steps that the pull readers share: the guard on the current token, the element searches and
// the joining of a run of text. Each reader names its own source file, line and words; the steps
// move it through its virtual ReadToken. Internal.
#pragma once

#include <vorn/base/Exception.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/Ref.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/XMLReader.h>
#include <vorn/io/XMLToken.h>

#include "vorn/io/XMLReaderState.h"

namespace vorn::io {

namespace pull {

inline bool IsEmptyText(const unsigned short* text) {
    return text == nullptr || *text == 0;
}

inline bool HasColon(const unsigned short* text) {
    for (; *text != 0; ++text)
        if (*text == u':')
            return true;
    return false;
}

inline bool IsText(XMLTokenType type) {
    return type == XMLTokenText || type == XMLTokenCDATA;
}

// CXMLException with `words` for a null or empty name.
void CheckName(const unsigned short* name, const char* source, unsigned int line,
               const char* words);
// The two-name forms: a local name without colon, and a namespace URI that may be empty (no
// namespace) but not null.
void CheckNames(const unsigned short* localName, const unsigned short* namespaceURI,
                const char* source, unsigned int line);

// "Reader closed." for a null `current` (a closed reader), "There is no valid token." for an
// empty one.
const vorn::base::CRef<IXMLToken>& Guard(const vorn::base::CRef<IXMLToken>* current,
                                         const char* source, unsigned int line);
// The type and the value of the token, the null access reported in `words`.
XMLTokenType TypeOf(const vorn::base::CRef<IXMLToken>& token, const char* source, unsigned int line,
                    const char* words);
vorn::base::CUnicodeString ValueOf(const vorn::base::CRef<IXMLToken>& token, const char* source,
                                   unsigned int line, const char* words);
// The guarded token's start element face, for the attribute questions: CXMLException for
// another type.
IXMLStartElementToken& StartElement(const vorn::base::CRef<IXMLToken>* current, const char* source,
                                    unsigned int line);

// The next token of a reader with a lookahead: `state.pending` if there is one, else the
// tokenizer's; false, with no current token, at the end.
template <typename Tokenizer>
bool ReadToken(Tokenizer* tokenizer, XMLReaderState* state, const char* source, unsigned int line);

// Steps until a token of `type` that `matches`, dropping all on the way at any depth; "End of
// stream reached." if none comes. `current()` is the reader's current token after each step.
template <typename Current, typename Matches>
void Seek(CXMLReader& reader, Current&& current, XMLTokenType type, Matches&& matches,
          const char* source, unsigned int line, const char* failed) {
    try {
        while (reader.ReadToken())
            if (current()->GetType() == type && matches())
                break;
        if (current().IsNull())
            ThrowIO(source, line, "End of stream reached.");
    } catch (const vorn::base::CNullReferenceException& e) {
        ReplaceWith(e, source, line, failed);
    }
}

// The text of a pull reader with a lookahead (`state.pending`), from the next text token on:
// the run is joined into one text token, which becomes current; the token that ended it is given
// out next. `cdataContinues` says whether a CDATA section continues a run. `text`, unless null,
// receives the run.
void ReadRun(CXMLReader& reader, XMLReaderState* state, bool cdataContinues,
             vorn::base::CUnicodeString* text, const char* source, unsigned int line);
// The same when the very next token is text; otherwise false, with that token put back into the
// lookahead and the reader as it was.
bool ReadRunIfAvailable(CXMLReader& reader, XMLReaderState* state, const char* source,
                        unsigned int line);

template <typename Tokenizer>
bool ReadToken(Tokenizer* tokenizer, XMLReaderState* state, const char* source, unsigned int line) {
    if (tokenizer == nullptr)
        ThrowIO(source, line, "Reader closed.");
    try {
        if (!state->pending.IsNull()) {
            state->current = state->pending;
            state->pending = vorn::null;
            return true;
        }
        state->current = tokenizer->GetNextToken();
        return !state->current.IsNull();
    } catch (const vorn::base::CMemoryException&) {
        ThrowIO(source, line, "Memory full.");
    }
}

} // namespace pull

} // namespace vorn::io
