// XMLTextWriterContextStack: the open elements of an XML text writer, innermost on top. It answers
// the writer's namespace questions by searching from the top down, so an inner binding hides an
// outer one, and keeps the default namespace in scope as PopElement recomputes it. Internal.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/Stack.h>

#include "vorn/io/XMLTextWriterContext.h"

namespace vorn::io {

class XMLTextWriterContextStack
    : public vorn::util::CStack<vorn::base::CRef<XMLTextWriterContext>> {
public:
    XMLTextWriterContextStack();

    // A null name, prefix or URI is stored as the empty text; a prefix map refuses an empty
    // prefix ("Invalid key.").
    void PushElement(const unsigned short* name);
    // Records the binding whether or not the writer printed a declaration for it.
    void PushElementWithPrefix(const unsigned short* name, const unsigned short* prefix,
                               const unsigned short* uri);
    void PushElementWithDefaultNamespace(const unsigned short* name, const unsigned short* uri);
    // On the top context, replacing a binding of the same prefix there; nothing on an empty stack.
    void AddPrefix(const unsigned short* prefix, const unsigned short* uri);

    // CEmptyStackException on an empty stack, for both.
    XMLTextWriterContext& Top();
    // Removes the top context and walks the rest from the top down for the namespaces in force.
    // The walk stops early only at a default below a context with prefixes, so otherwise the
    // outermost default on the stack is the one kept, not the nearest.
    void PopElement();

    bool HasPrefixForUri(const unsigned short* uri) const;
    // CNoSuchElementException when no context binds it.
    const vorn::base::CUnicodeString& GetPrefixForUri(const unsigned short* uri) const;
    bool HasUriForPrefix(const unsigned short* prefix) const;
    // CNoSuchElementException when no context binds it.
    const vorn::base::CUnicodeString& GetUriForPrefix(const unsigned short* prefix) const;

    // Empty when none.
    const vorn::base::CUnicodeString& GetDefaultNamespace() const { return m_defaultNamespace; }
    // The namespace of the latest element pushed with one; nothing in the writer reads it.
    const vorn::base::CUnicodeString& GetCurrentNamespace() const { return m_currentNamespace; }

private:
    // The nearest context whose map binds `uri` (as a value) or `prefix` (as a key); null if none.
    const XMLTextWriterContext* FindUri(const unsigned short* uri) const;
    const XMLTextWriterContext* FindPrefix(const unsigned short* prefix) const;
    // A context for `name`, built whole before it goes on the stack.
    static vorn::base::CRef<XMLTextWriterContext> NewContext(const unsigned short* name);

    vorn::base::CUnicodeString m_currentNamespace;
    vorn::base::CUnicodeString m_defaultNamespace;
};

} // namespace vorn::io
