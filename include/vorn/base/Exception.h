// CException: root of every failure the library reports. It records the source file and line of
// the throw, a fixed description and an owned message.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::io {
class CPrintStream;
}

namespace vorn::base {

class VORN_API CException : public CObject {
    VORN_DECLARE_CLASS(CException)

public:
    // `file` and `errorDescription` are kept as pointers (literals are expected); the message is
    // copied.
    CException(const char* file, unsigned int line, const char* errorDescription,
               const char* message);
    CException(const CException& other);
    CException& operator=(const CException& other);
    ~CException() override;

    const char* GetSourceFile() const { return m_sourceFile; }
    unsigned int GetSourceLine() const { return m_sourceLine; }
    const char* GetErrorDescription() const { return m_errorDescription; }
    const char* GetMessage() const { return m_message; }

    // Replaces the message by a copy of `text`; null or empty clears it. False when out of memory,
    // and then the message is null.
    bool SetMessage(const char* text);

    // Writes the exception's banners and fields to `stream`.
    virtual void Print(vorn::io::CPrintStream& stream) const;

private:
    const char* m_sourceFile;
    unsigned int m_sourceLine;
    const char* m_errorDescription;
    char* m_message;
};

} // namespace vorn::base
