// A minimal application of the installed library: starts it, finds a class, throws and catches,
// releases the library's blocks itself, and calls Xerces-C, which reaches it only through vorn.
#include <vorn/vorn.h>
#include <xercesc/util/XMLString.hpp>

#include <cstdio>
#include <cstring>

int main() {
    using namespace vorn::base;
    if (vorn::Initialize() != 1)
        return 1;
    const CClass* cls = CClass::FindClass("vorn::io::CIOException");
    if (cls == nullptr || !cls->IsInstanceOf(CClass::FindClass("vorn::base::CException")))
        return 2;
    try {
        throw vorn::io::CIOException("consumer", 7, "Stream closed.", nullptr);
    } catch (const CException& e) {
        if (std::strcmp(e.GetClass()->GetQualifiedName(), "vorn::io::CIOException") != 0)
            return 3;
    }

    vorn::io::CMemoryOutputStream out;
    out.Write("abc", 3);
    char* block = out.DetachBuffer();
    if (block == nullptr || std::memcmp(block, "abc", 3) != 0)
        return 4;
    ZK_free(block);
    char* owned = static_cast<char*>(ZK_malloc(2));
    if (owned == nullptr)
        return 5;
    vorn::io::CMemoryInputStream in(owned, 2, true); // releases it with ZK_free

    if (xercesc::XMLString::stringLen("xml") != 3)
        return 6;
    vorn::util::regex::CRegEx pattern("a+b");
    if (!pattern.Matches("aab"))
        return 7;
    vorn::Terminate();
    std::puts("consumer ok");
    return 0;
}
