// Start and stop of the file layer. POSIX files need no start, so IO::File works whether or not
// the layer runs; the calls are counted so that the library's frame can be tested.
#pragma once

#include "platform/UniString.h"

namespace IO {

// `rootPath` is where relative locations resolve; only the empty root, the working directory, is
// supported, and any other gives a non-zero result. `primary` has no meaning here.
int Init(bool primary, const ZK::UniString& rootPath);
int End();

} // namespace IO

namespace vorn::platform {
// How often the file layer has been started and ended since the process began.
int FileLayerInitCalls();
int FileLayerEndCalls();
bool FileLayerRunning();
} // namespace vorn::platform
