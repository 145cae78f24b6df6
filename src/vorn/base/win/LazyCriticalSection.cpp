#include <new>

#include <vorn/base/MemoryException.h>
#include <vorn/base/SynchronizationException.h>
#include <vorn/base/win/LazyCriticalSection.h>

#include "platform/Memory.h"
#include "vorn/base/SpinGuard.h"
#include "vorn/base/win/SyncSection.h"

namespace vorn::base::win {

namespace {
const char* const kSource = "vorn/base/win/LazyCriticalSection";
}

VORN_DEFINE_CLASS_BASE(CLazyCriticalSection, "vorn::base::win::CLazyCriticalSection",
                       "vorn::base::win::CSyncObject")

CLazyCriticalSection::CLazyCriticalSection() : m_section(nullptr) {}

// The section's memory is not given back.
CLazyCriticalSection::~CLazyCriticalSection() {
    if (m_section != nullptr)
        m_section->~SyncSection();
}

void CLazyCriticalSection::Acquire() {
    if (m_section == nullptr)
        Create();
    // Without a section the native enter would fault; its guard reports it as a failed enter.
    if (m_section == nullptr)
        throw CSynchronizationException(kSource, __LINE__, "Failed to enter critical section.",
                                        nullptr);
    m_section->Acquire(kSource, __LINE__);
}

bool CLazyCriticalSection::TryAcquire(unsigned int /*timeout*/) {
    if (m_section == nullptr)
        Create();
    // Without a section the attempt fails instead of faulting.
    return m_section != nullptr && m_section->TryEnter();
}

void CLazyCriticalSection::Release() {
    if (m_section != nullptr)
        m_section->Leave();
}

void CLazyCriticalSection::Create() {
    SpinGuard guard(m_creationLock);
    // Deliberate: the test is for an existing section, as in CLazyLock, so creation only ever
    // replaces one and a fresh object is never given one.
    if (m_section != nullptr) {
        // The platform's critical section: 40 bytes where the class was first made, more here.
        void* block = ZK_malloc(sizeof(SyncSection));
        m_section = static_cast<SyncSection*>(block);
        if (block == nullptr)
            throw CMemoryException(kSource, __LINE__);
        m_section = new (block) SyncSection(kSource, __LINE__);
    }
}

} // namespace vorn::base::win
