#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/win/SyncObject.h>

#include "platform/Wait.h"

namespace vorn::base::win {

namespace {
const char* const kSource = "vorn/base/win/SyncObject";
}

VORN_DEFINE_CLASS_BASE(CSyncObject, "vorn::base::win::CSyncObject", "vorn::base::CObject")

unsigned int CSyncObject::WaitForSingleSyncObject(void* handle, unsigned int timeout) {
    if (handle == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid wait handle.");
    return vorn::platform::WaitForSingleObject(handle, timeout);
}

unsigned int CSyncObject::WaitForMultipleSyncObject(unsigned int count, void* const* handles,
                                                    bool waitAll, unsigned int timeout) {
    if (count < 2)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid wait handle count.");
    if (handles == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid wait handle array.");
    return vorn::platform::WaitForMultipleObjects(count, handles, waitAll, timeout);
}

} // namespace vorn::base::win
