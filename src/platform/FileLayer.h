// Start and stop of the file layer; files themselves come with the file streams.
#pragma once

#include "platform/UniString.h"

namespace IO {

// Starts the file layer; `rootPath` is where relative locations resolve (empty: the working
// directory). Returns 0 on success.
int Init(bool primary, const ZK::UniString& rootPath);
int End();

} // namespace IO

namespace vorn::platform {
// How often the file layer has been started and ended since the process began.
int FileLayerInitCalls();
int FileLayerEndCalls();
bool FileLayerRunning();
} // namespace vorn::platform
