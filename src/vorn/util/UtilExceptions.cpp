#include <vorn/util/EmptyQueueException.h>
#include <vorn/util/EmptyStackException.h>
#include <vorn/util/NoSuchElementException.h>

namespace vorn::util {

VORN_DEFINE_CLASS_BASE(CEmptyQueueException, "vorn::util::CEmptyQueueException",
                       "vorn::base::CException")

CEmptyQueueException::CEmptyQueueException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

VORN_DEFINE_CLASS_BASE(CEmptyStackException, "vorn::util::CEmptyStackException",
                       "vorn::base::CException")

CEmptyStackException::CEmptyStackException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

// The record names CMemoryException as base while the class derives from CException;
// callers rely on IsInstanceOf answering that way.
VORN_DEFINE_CLASS_BASE(CNoSuchElementException, "vorn::util::CNoSuchElementException",
                       "vorn::base::CMemoryException")

CNoSuchElementException::CNoSuchElementException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

} // namespace vorn::util
