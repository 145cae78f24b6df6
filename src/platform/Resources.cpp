#include "platform/Resources.h"

#include <atomic>
#include <cstring>

namespace {

struct ResourceText {
    short id;
    short index;
    const char* text;
};

// Resource id 1: the texts of regular expression failures. 1 and 2 are format strings.
const ResourceText kTexts[] = {
    {1, 1, "Invalid regular expression \"%s\"."},
    {1, 2, "Invalid regular expression \"%s\": %s."},
};

std::atomic<int> g_open{0};
std::atomic<std::int64_t> g_nextCache{1};

} // namespace

std::int64_t RSInitModuleImageCache(const void* /*module*/) {
    g_open.fetch_add(1);
    return g_nextCache.fetch_add(1);
}

void RSRemoveModuleImageCache(std::int64_t cache) {
    if (cache > 0)
        g_open.fetch_sub(1);
}

char* RSGetIndString_ParamAdapter(const char* /*file*/, int /*line*/, char* buffer,
                                  std::size_t bufferSize, short resourceId, short index,
                                  std::int64_t cache, int /*stringType*/) {
    if (buffer == nullptr || bufferSize == 0)
        return buffer;
    buffer[0] = '\0';
    if (cache <= 0)
        return buffer;
    for (const ResourceText& entry : kTexts) {
        if (entry.id == resourceId && entry.index == index) {
            std::size_t n = std::strlen(entry.text);
            if (n >= bufferSize)
                n = bufferSize - 1;
            std::memcpy(buffer, entry.text, n);
            buffer[n] = '\0';
            break;
        }
    }
    return buffer;
}

namespace vorn::platform {
int OpenResourceCaches() { return g_open.load(); }
} // namespace vorn::platform
