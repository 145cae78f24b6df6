// CXMLWriter: the checked writer of XML documents, as text (CXMLTextWriter) or into a DOM. A
// caller starts the document, starts elements, writes their attributes and then their content,
// ends the elements and ends the document. Names and texts are NUL-terminated UTF-16: `local` is
// a name without prefix, `uri` a namespace URI, `prefix` a namespace prefix. The typed names say
// Long for an int and UnsignedLong for an unsigned int.
//
// This base gives the typed operations, which format their value and hand the text on to the
// string forms, and the binary ones, which encode their bytes as base64 or binhex text.
//
// Threads: the typed operations of this base format into ONE scratch area of 256 units shared by
// every writer of the process, without a lock. They must not run on two threads at once, even on
// different writers. CXMLTextWriter overrides them all with an area of its own in each object.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/io/XMLSerializable.h>

namespace vorn::io {

class VORN_API CXMLWriter : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CXMLWriter)

public:
    CXMLWriter();
    ~CXMLWriter() override;

    virtual void WriteStartDocument() = 0;
    virtual void WriteEndDocument() = 0;
    virtual void WriteCDATA(unsigned short const* text) = 0;
    virtual void WriteComment(unsigned short const* text) = 0;
    virtual void WriteProcessingInstruction(unsigned short const* target,
                                            unsigned short const* data) = 0;
    virtual void WriteEntityRef(unsigned short const* name) = 0;
    virtual void WriteWhitespace(unsigned short const* text) = 0;
    virtual void WriteStartElement(unsigned short const* prefix, unsigned short const* local,
                                   unsigned short const* uri) = 0;
    virtual void WriteStartElement(unsigned short const* local, unsigned short const* uri) = 0;
    virtual void WriteStartElement(unsigned short const* local) = 0;
    // Closes the innermost open element.
    virtual void WriteEndElement() = 0;
    // The same; the text writer gives it a separate end tag.
    virtual void WriteFullEndElement() = 0;

    // A whole element with text content, in one call. Here: "true" or "false", then "%d", "%ld",
    // "%lu", "%f" and "%lf".
    virtual void WriteElementBool(unsigned short const* local, unsigned short const* uri,
                                  bool value);
    virtual void WriteElementBool(unsigned short const* local, bool value);
    virtual void WriteElementShort(unsigned short const* local, unsigned short const* uri,
                                   short value);
    virtual void WriteElementShort(unsigned short const* local, short value);
    virtual void WriteElementLong(unsigned short const* local, unsigned short const* uri,
                                  int value);
    virtual void WriteElementLong(unsigned short const* local, int value);
    virtual void WriteElementUnsignedLong(unsigned short const* local, unsigned short const* uri,
                                          unsigned int value);
    virtual void WriteElementUnsignedLong(unsigned short const* local, unsigned int value);
    virtual void WriteElementFloat(unsigned short const* local, unsigned short const* uri,
                                   float value);
    virtual void WriteElementFloat(unsigned short const* local, float value);
    virtual void WriteElementDouble(unsigned short const* local, unsigned short const* uri,
                                    double value);
    virtual void WriteElementDouble(unsigned short const* local, double value);
    virtual void WriteElementString(unsigned short const* local, unsigned short const* uri,
                                    unsigned short const* value) = 0;
    virtual void WriteElementString(unsigned short const* local, unsigned short const* value) = 0;
    // The `count` bytes from `data + offset`, encoded; a null or refused `data` writes nothing.
    virtual void WriteElementBinHex(unsigned short const* local, unsigned short const* uri,
                                    char const* data, unsigned int offset, unsigned int count);
    virtual void WriteElementBinHex(unsigned short const* local, char const* data,
                                    unsigned int offset, unsigned int count);
    virtual void WriteElementBase64(unsigned short const* local, unsigned short const* uri,
                                    char const* data, unsigned int offset, unsigned int count);
    virtual void WriteElementBase64(unsigned short const* local, char const* data,
                                    unsigned int offset, unsigned int count);

    // Attributes belong right after a WriteStartElement, before any content.
    virtual void WriteAttribute(unsigned short const* prefix, unsigned short const* local,
                                unsigned short const* uri, unsigned short const* value) = 0;
    virtual void WriteAttribute(unsigned short const* local, unsigned short const* uri,
                                unsigned short const* value) = 0;
    virtual void WriteAttribute(unsigned short const* local, unsigned short const* value) = 0;
    virtual void WriteAttrDefaultNamespaceDeclaration(unsigned short const* uri) = 0;
    virtual void WriteAttrNamespaceDeclaration(unsigned short const* prefix,
                                               unsigned short const* uri) = 0;
    virtual void WriteAttrBool(unsigned short const* local, unsigned short const* uri, bool value);
    virtual void WriteAttrBool(unsigned short const* local, bool value);
    virtual void WriteAttrShort(unsigned short const* local, unsigned short const* uri,
                                short value);
    virtual void WriteAttrShort(unsigned short const* local, short value);
    virtual void WriteAttrLong(unsigned short const* local, unsigned short const* uri, int value);
    virtual void WriteAttrLong(unsigned short const* local, int value);
    virtual void WriteAttrUnsignedLong(unsigned short const* local, unsigned short const* uri,
                                       unsigned int value);
    virtual void WriteAttrUnsignedLong(unsigned short const* local, unsigned int value);
    virtual void WriteAttrFloat(unsigned short const* local, unsigned short const* uri,
                                float value);
    virtual void WriteAttrFloat(unsigned short const* local, float value);
    virtual void WriteAttrDouble(unsigned short const* local, unsigned short const* uri,
                                 double value);
    virtual void WriteAttrDouble(unsigned short const* local, double value);

    // Content.
    virtual void WriteBool(bool value);
    virtual void WriteShort(short value);
    virtual void WriteLong(int value);
    virtual void WriteUnsignedLong(unsigned int value);
    virtual void WriteFloat(float value);
    virtual void WriteDouble(double value);
    virtual void WriteString(unsigned short const* value) = 0;
    // A null or refused `data` writes nothing; a count of 0 writes the empty string.
    virtual void WriteBase64(char const* data, unsigned int offset, unsigned int count);
    virtual void WriteBinHex(char const* data, unsigned int offset, unsigned int count);
    // Hands this writer to the object: no wrapper element and no check of its own.
    virtual void WriteObject(IXMLSerializable const& object);

    virtual void Flush() = 0;
    virtual void Close() = 0;

private:
    CXMLWriter(const CXMLWriter&) = delete;
    CXMLWriter& operator=(const CXMLWriter&) = delete;
};

} // namespace vorn::io
