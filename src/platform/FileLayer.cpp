#include "platform/FileLayer.h"

#include <atomic>

#include <vorn/platform/File.h>

namespace {
std::atomic<int> g_initCalls{0};
std::atomic<int> g_endCalls{0};
std::atomic<bool> g_running{false};
} // namespace

namespace IO {

int Init(bool /*primary*/, const ZK::UniString& rootPath) {
    g_initCalls.fetch_add(1);
    g_running.store(true);
    return rootPath.Text().empty() ? 0 : static_cast<int>(kStatusInvalidArgument);
}

int End() {
    g_endCalls.fetch_add(1);
    g_running.store(false);
    return 0;
}

} // namespace IO

namespace vorn::platform {
int FileLayerInitCalls() {
    return g_initCalls.load();
}
int FileLayerEndCalls() {
    return g_endCalls.load();
}
bool FileLayerRunning() {
    return g_running.load();
}
} // namespace vorn::platform
