#include <new>

#include <vorn/base/win/CriticalSection.h>

#include "vorn/base/win/SyncSection.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/CriticalSection";

SyncSection& Section(unsigned char* storage) {
    return *std::launder(reinterpret_cast<SyncSection*>(storage));
}

} // namespace

VORN_DEFINE_CLASS_BASE(CCriticalSection, "vorn::base::win::CCriticalSection",
                       "vorn::base::win::CSyncObject")

CCriticalSection::CCriticalSection() {
    static_assert(sizeof(SyncSection) <= sizeof m_section && alignof(SyncSection) <= 16,
                  "the section fits the room the class keeps for it");
    new (static_cast<void*>(m_section)) SyncSection(kSource, __LINE__);
}

CCriticalSection::~CCriticalSection() {
    Section(m_section).~SyncSection();
}

void CCriticalSection::Acquire() {
    Section(m_section).Acquire(kSource, __LINE__);
}

bool CCriticalSection::TryAcquire(unsigned int /*timeout*/) {
    return Section(m_section).TryEnter();
}

void CCriticalSection::Release() {
    Section(m_section).Leave();
}

} // namespace vorn::base::win
