// CXMLTextTabulator: the indentation that a CXMLTextWriter puts in front of some of its lines.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::io {

class VORN_API CXMLTextTabulator : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CXMLTextTabulator)

public:
    CXMLTextTabulator();
    ~CXMLTextTabulator() override;

    // NUL-terminated, or null for none. The writer tells no depth: whatever indentation logic
    // there is lives in the subclass, which may count the calls.
    virtual unsigned short const* GetTabulation() = 0;

private:
    CXMLTextTabulator(const CXMLTextTabulator&) = delete;
    CXMLTextTabulator& operator=(const CXMLTextTabulator&) = delete;
};

} // namespace vorn::io
