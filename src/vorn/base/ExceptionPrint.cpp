#include <vorn/base/Exception.h>

#include <vorn/io/PrintStream.h>

namespace vorn::base {

// The banner's spelling is part of the output that callers match on.
void CException::Print(vorn::io::CPrintStream& stream) const {
    stream.Println(
        "--- Exception occured ----------------------------------------------------------");
    stream.Print('\t');
    stream.Println(GetClass()->GetQualifiedName());
    const bool located = m_sourceFile != nullptr && m_sourceLine != 0;
    if (located || m_errorDescription != nullptr || m_message != nullptr)
        stream.Println(
            "--- Details --------------------------------------------------------------------");
    if (located) {
        stream.Println("\tLocation :");
        stream.Print("\t\t");
        stream.Print(m_sourceFile);
        stream.Print("(");
        stream.Print(static_cast<int>(m_sourceLine));
        stream.Println(")");
    }
    if (m_errorDescription != nullptr) {
        stream.Println("\tError description :");
        stream.Print("\t\t");
        stream.Println(m_errorDescription);
    }
    if (m_message != nullptr) {
        stream.Println("\tMessage : ");
        stream.Print("\t\t");
        stream.Println(m_message);
    }
}

} // namespace vorn::base
