#include "platform/Resources.h"

#include <atomic>
#include <cstring>

namespace {

struct ResourceText {
    short id;
    short index;
    const char* text;
};

// Resource id 1: the texts of regular expression failures. 1 and 2 are format strings; the
// others describe one syntax error each and go in place of the second "%s" of 2.
const ResourceText kTexts[] = {
    {1, 1, "Invalid regular expression \"%s\"."},
    {1, 2, "Invalid regular expression \"%s\": %s."},
    {1, 3, "a character that is not allowed here"},
    {1, 4, "a back reference to a group that does not exist"},
    {1, 5, "a backslash at the end, with nothing to escape"},
    {1, 6, "an unknown kind of group after \"(?\""},
    {1, 7, "\"(?<\" not followed by \"=\" or \"!\""},
    {1, 8, "a comment group without its closing parenthesis"},
    {1, 9, "a group without its closing parenthesis"},
    {1, 10, "the pattern ends inside a modifier group"},
    {1, 11, "a modifier group without its colon"},
    {1, 12, "the pattern ends inside a conditional group"},
    {1, 13, "a condition that is no back reference, anchor or look-around"},
    {1, 14, "a conditional group with more than two branches"},
    {1, 15, "\"\\c\" not followed by a character from @ to _"},
    {1, 16, "a character category without its opening brace"},
    {1, 17, "a property name without its closing brace"},
    {1, 18, "a special character where none may stand"},
    {1, 19, "an unknown character property"},
    {1, 20, "a POSIX class without its closing \":]\""},
    {1, 21, "the pattern ends inside a character class"},
    {1, 22, "an unknown POSIX class name"},
    {1, 23, "a class subtraction without its closing bracket"},
    {1, 24, "a character class without its closing bracket"},
    {1, 25, "a character that must be escaped inside a class range"},
    {1, 26, "an empty character class"},
    {1, 27, "an opening bracket is missing"},
    {1, 28, "a class operation not followed by a bracket or parenthesis"},
    {1, 29, "a malformed hexadecimal character escape"},
    {1, 30, "a hexadecimal escape with too few digits"},
    {1, 31, "a \"\\x{\" escape without its closing brace"},
    {1, 32, "a code point outside Unicode"},
    {1, 33, "an anchor where none may stand"},
    {1, 34, "a repetition with nothing to repeat"},
    {1, 35, "a range running backwards or an unknown escape"},
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
int OpenResourceCaches() {
    return g_open.load();
}
} // namespace vorn::platform
