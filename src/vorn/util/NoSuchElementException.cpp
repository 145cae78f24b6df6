#include <vorn/util/NoSuchElementException.h>

namespace vorn::util {

// The record names CMemoryException as base while the class derives from CException;
// callers rely on IsInstanceOf answering that way.
VORN_DEFINE_CLASS_BASE(CNoSuchElementException, "vorn::util::CNoSuchElementException",
                       "vorn::base::CMemoryException")

CNoSuchElementException::CNoSuchElementException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

} // namespace vorn::util
