// A tour of the library: each section exercises one subsystem and says what it did.
#include <vorn/vorn.h>

#include <cstdio>

using namespace vorn::base;

namespace {

void Section(const char* title) { std::printf("\n== %s ==\n", title); }

void ClassRecords() {
    Section("Class records");
    const char* names[] = {"vorn::base::CObject", "vorn::io::CIOException",
                           "vorn::util::CNoSuchElementException", "CObject"};
    const CClass* exception = CClass::FindClass("vorn::base::CException");
    const CClass* memory = CClass::FindClass("vorn::base::CMemoryException");
    for (const char* name : names) {
        const CClass* cls = CClass::FindClass(name);
        if (cls == nullptr) {
            std::printf("%-38s not found (names are looked up in full)\n", name);
            continue;
        }
        std::printf("%-38s short name %-24s size %2u  exception: %-5s memory: %s\n", name,
                    cls->GetName(), cls->GetSize(), cls->IsInstanceOf(exception) ? "yes" : "no",
                    cls->IsInstanceOf(memory) ? "yes" : "no");
    }
}

void Exceptions() {
    Section("Exceptions");
    try {
        throw vorn::io::CIOException("examples/tour", __LINE__, "Stream closed.", "while reading");
    } catch (const CException& e) {
        std::printf("caught %s\n  from %s(%u)\n  description: %s\n  message: %s\n",
                    e.GetClass()->GetQualifiedName(), e.GetSourceFile(), e.GetSourceLine(),
                    e.GetErrorDescription(), e.GetMessage());
    }
    vorn::base::win::CWinSystemErrorException system("examples/tour", __LINE__,
                                                     "Failed to open.", 2);
    std::printf("system error %lu reads \"%s\"\n", system.GetErrorCode(), system.GetMessage());
}

} // namespace

int main() {
    std::printf("vorn::Initialize() -> %d\n", vorn::Initialize());
    std::printf("vorn::Initialize() -> %d (nested)\n", vorn::Initialize());
    ClassRecords();
    Exceptions();
    std::printf("\nvorn::Terminate() -> %d\n", vorn::Terminate());
    std::printf("vorn::Terminate() -> %d\n", vorn::Terminate());
    return 0;
}
