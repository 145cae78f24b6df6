#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/ClassCastException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/IllegalComparisonException.h>
#include <vorn/base/IllegalStateException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/NumberFormatException.h>
#include <vorn/base/SynchronizationException.h>
#include <vorn/base/TimeoutException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CArrayIndexOutOfBoundsException,
                       "vorn::base::CArrayIndexOutOfBoundsException", "vorn::base::CException")

CArrayIndexOutOfBoundsException::CArrayIndexOutOfBoundsException(const char* file,
                                                                 unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

VORN_DEFINE_CLASS_BASE(CClassCastException, "vorn::base::CClassCastException",
                       "vorn::base::CException")

CClassCastException::CClassCastException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

VORN_DEFINE_CLASS_BASE(CIllegalArgumentException, "vorn::base::CIllegalArgumentException",
                       "vorn::base::CException")

CIllegalArgumentException::CIllegalArgumentException(const char* file, unsigned int line,
                                                     const char* description)
    : CException(file, line, description, nullptr) {}

VORN_DEFINE_CLASS_BASE(CIllegalComparisonException, "vorn::base::CIllegalComparisonException",
                       "vorn::base::CException")

CIllegalComparisonException::CIllegalComparisonException(const char* file, unsigned int line,
                                                         const char* description,
                                                         const char* message)
    : CException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CIllegalStateException, "vorn::base::CIllegalStateException",
                       "vorn::base::CException")

CIllegalStateException::CIllegalStateException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CMemoryException, "vorn::base::CMemoryException", "vorn::base::CException")

CMemoryException::CMemoryException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

VORN_DEFINE_CLASS_BASE(CNullReferenceException, "vorn::base::CNullReferenceException",
                       "vorn::base::CException")

CNullReferenceException::CNullReferenceException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

VORN_DEFINE_CLASS_BASE(CNumberFormatException, "vorn::base::CNumberFormatException",
                       "vorn::base::CException")

CNumberFormatException::CNumberFormatException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CSynchronizationException, "vorn::base::CSynchronizationException",
                       "vorn::base::CException")

CSynchronizationException::CSynchronizationException(const char* file, unsigned int line,
                                                     const char* description, const char* message)
    : CException(file, line, description, message) {}

VORN_DEFINE_CLASS_BASE(CTimeoutException, "vorn::base::CTimeoutException",
                       "vorn::base::CSynchronizationException")

CTimeoutException::CTimeoutException(const char* file, unsigned int line, const char* description,
                                     const char* message)
    : CSynchronizationException(file, line, description, message) {}

} // namespace vorn::base
