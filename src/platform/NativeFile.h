// Files written straight through the system, without the file layer: the steps of
// CNativeFileOutputStream. A handle is a descriptor; -1 is none.
#pragma once

namespace vorn::platform {

constexpr int kNoNativeFile = -1;

// Opens `path` (UTF-8) for writing, creating it if needed and never truncating it; others may
// read it meanwhile. -1 on failure, with `*accessDenied` telling whether access was refused.
int OpenNativeFileForWriting(const char* path, bool* accessDenied);
bool SeekNativeFileToEnd(int handle);
// All `count` bytes or false; a failed write may have written some of them.
bool WriteNativeFile(int handle, const char* data, unsigned int count);
bool FlushNativeFile(int handle);
void CloseNativeFile(int handle);

} // namespace vorn::platform
