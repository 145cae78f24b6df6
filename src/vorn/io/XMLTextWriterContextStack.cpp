#include "vorn/io/XMLTextWriterContextStack.h"

#include <vorn/util/EmptyStackException.h>
#include <vorn/util/NoSuchElementException.h>

#include "platform/UniText.h"

namespace vorn::io {

using vorn::base::CRef;
using vorn::base::CUnicodeString;

namespace {

const char* const kSource = "vorn/io/XMLTextWriterContextStack";

const unsigned short* Text(const unsigned short* text) {
    return text != nullptr ? text : ZK::EmptyUTF16;
}

} // namespace

XMLTextWriterContextStack::XMLTextWriterContextStack()
    : CStack<CRef<XMLTextWriterContext>>(10, 5), m_currentNamespace(), m_defaultNamespace() {}

CRef<XMLTextWriterContext> XMLTextWriterContextStack::NewContext(const unsigned short* name) {
    auto* context = new XMLTextWriterContext(name);
    try {
        return CRef<XMLTextWriterContext>(context);
    } catch (...) {
        // The handle's count block could not be had: nobody owns the context yet.
        delete context;
        throw;
    }
}

void XMLTextWriterContextStack::PushElement(const unsigned short* name) {
    Push(NewContext(name));
}

void XMLTextWriterContextStack::PushElementWithPrefix(const unsigned short* name,
                                                      const unsigned short* prefix,
                                                      const unsigned short* uri) {
    CRef<XMLTextWriterContext> context = NewContext(name);
    context->m_prefixes.Put(Text(prefix), Text(uri));
    Push(context);
    m_currentNamespace = Text(uri);
}

void XMLTextWriterContextStack::PushElementWithDefaultNamespace(const unsigned short* name,
                                                                const unsigned short* uri) {
    CRef<XMLTextWriterContext> context = NewContext(name);
    context->m_defaultNamespace = Text(uri);
    context->m_hasDefaultNamespace = true;
    Push(context);
    m_defaultNamespace = context->m_defaultNamespace;
    m_currentNamespace = context->m_defaultNamespace;
}

void XMLTextWriterContextStack::AddPrefix(const unsigned short* prefix, const unsigned short* uri) {
    if (IsEmpty())
        return;
    Peek()->m_prefixes.Put(Text(prefix), Text(uri));
}

XMLTextWriterContext& XMLTextWriterContextStack::Top() {
    if (IsEmpty())
        throw vorn::util::CEmptyStackException(kSource, __LINE__);
    return *Peek();
}

void XMLTextWriterContextStack::PopElement() {
    if (IsEmpty())
        throw vorn::util::CEmptyStackException(kSource, __LINE__);
    RemoveElementAt(GetSize() - 1);
    if (IsEmpty()) {
        m_defaultNamespace.Empty();
        m_currentNamespace.Empty();
        return;
    }
    bool foundDefault = false;
    bool foundCurrent = false;
    for (unsigned int i = GetSize(); i-- > 0;) {
        const XMLTextWriterContext& context = *GetElementAt(i);
        if (context.m_hasDefaultNamespace) {
            m_defaultNamespace = context.m_defaultNamespace;
            foundDefault = true;
            if (foundCurrent)
                return;
            m_currentNamespace = m_defaultNamespace;
        } else if (!context.m_prefixes.IsEmpty()) {
            m_currentNamespace = context.m_prefixes.GetAt(0);
            foundCurrent = true;
        }
    }
    if (!foundDefault)
        m_defaultNamespace.Empty();
    if (!foundCurrent)
        m_currentNamespace.Empty();
}

const XMLTextWriterContext* XMLTextWriterContextStack::FindUri(const unsigned short* uri) const {
    for (unsigned int i = GetSize(); i-- > 0;) {
        const XMLTextWriterContext& context = *GetElementAt(i);
        if (context.m_prefixes.Contains(uri))
            return &context;
    }
    return nullptr;
}

const XMLTextWriterContext*
XMLTextWriterContextStack::FindPrefix(const unsigned short* prefix) const {
    for (unsigned int i = GetSize(); i-- > 0;) {
        const XMLTextWriterContext& context = *GetElementAt(i);
        if (context.m_prefixes.ContainsKey(prefix))
            return &context;
    }
    return nullptr;
}

bool XMLTextWriterContextStack::HasPrefixForUri(const unsigned short* uri) const {
    return FindUri(uri) != nullptr;
}

const CUnicodeString& XMLTextWriterContextStack::GetPrefixForUri(const unsigned short* uri) const {
    const XMLTextWriterContext* context = FindUri(uri);
    if (context == nullptr)
        throw vorn::util::CNoSuchElementException(kSource, __LINE__);
    return context->GetPrefix(uri);
}

bool XMLTextWriterContextStack::HasUriForPrefix(const unsigned short* prefix) const {
    return FindPrefix(prefix) != nullptr;
}

const CUnicodeString&
XMLTextWriterContextStack::GetUriForPrefix(const unsigned short* prefix) const {
    const XMLTextWriterContext* context = FindPrefix(prefix);
    if (context == nullptr)
        throw vorn::util::CNoSuchElementException(kSource, __LINE__);
    return context->m_prefixes.Get(prefix);
}

} // namespace vorn::io
