#include "vorn/io/StreamBeneath.h"

namespace vorn::io::beneath {

// Out of line, so that the check in front of every call beneath stays a compare and a branch.
void ThrowClosed(const ClosedRule& rule) {
    throw CIOException(rule.source, rule.line, rule.words, nullptr);
}

} // namespace vorn::io::beneath
