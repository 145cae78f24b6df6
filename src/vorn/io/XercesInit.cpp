// Starts Xerces-C with the module and stops it at unload: every XML and regular expression
// class of the library needs it started before its first use.
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/Debug.h"

namespace vorn::io {

namespace {

class CXercesInit {
public:
    CXercesInit() {
        try {
            xercesc::XMLPlatformUtils::Initialize();
            m_started = true;
        } catch (...) {
            // A module can't refuse to load here; the failure is told and the engine stays off.
            DBPrintf("vorn: Xerces-C failed to start\n");
        }
    }
    ~CXercesInit() {
        if (m_started)
            xercesc::XMLPlatformUtils::Terminate();
    }

private:
    bool m_started = false;
};

CXercesInit xercesInit;

} // namespace

} // namespace vorn::io
