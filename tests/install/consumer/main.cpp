// A minimal application of the installed library: starts it, finds a class, throws and catches.
#include <vorn/vorn.h>

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
    vorn::Terminate();
    std::puts("consumer ok");
    return 0;
}
