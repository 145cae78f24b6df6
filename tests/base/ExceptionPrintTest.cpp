#include <gtest/gtest.h>

#include <string>

#include <vorn/base/Exception.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/System.h>
#include <vorn/io/CRLFPrintStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/PrintStream.h>

#include "support/DebugCapture.h"

namespace {

using vorn::base::CException;

const std::string kBanner =
    "--- Exception occured ----------------------------------------------------------\n";
const std::string kDetails =
    "--- Details --------------------------------------------------------------------\n";

std::string Printed(const CException& e) {
    vorn::io::CMemoryOutputStream memory;
    vorn::io::CPrintStream out(&memory, false);
    e.Print(out);
    return std::string(memory.GetBuffer(), memory.GetBufferSize());
}

TEST(ExceptionPrint, LocationOnly) {
    EXPECT_EQ(Printed(vorn::base::CMemoryException("vorn/base/Base", 148)),
              kBanner + "\tvorn::base::CMemoryException\n" + kDetails +
                  "\tLocation :\n\t\tvorn/base/Base(148)\n");
}

TEST(ExceptionPrint, EveryFieldInOrder) {
    EXPECT_EQ(Printed(vorn::io::CIOException("vorn/io/X", 12, "Stream closed.", "at byte 3")),
              kBanner + "\tvorn::io::CIOException\n" + kDetails +
                  "\tLocation :\n\t\tvorn/io/X(12)\n" +
                  "\tError description :\n\t\tStream closed.\n" + "\tMessage : \n\t\tat byte 3\n");
}

TEST(ExceptionPrint, EachOptionalFieldAlone) {
    // A file with line 0 is no location; with nothing else there is no details banner.
    EXPECT_EQ(Printed(CException("f", 0, nullptr, nullptr)),
              kBanner + "\tvorn::base::CException\n");
    EXPECT_EQ(Printed(CException(nullptr, 7, nullptr, nullptr)),
              kBanner + "\tvorn::base::CException\n");
    EXPECT_EQ(Printed(CException("f", 0, "Described.", nullptr)),
              kBanner + "\tvorn::base::CException\n" + kDetails +
                  "\tError description :\n\t\tDescribed.\n");
    EXPECT_EQ(Printed(CException(nullptr, 0, nullptr, "said")),
              kBanner + "\tvorn::base::CException\n" + kDetails + "\tMessage : \n\t\tsaid\n");
}

TEST(ExceptionPrint, LineIsPrintedAsInt) {
    EXPECT_EQ(Printed(CException("f", 0x80000000u, nullptr, nullptr)),
              kBanner + "\tvorn::base::CException\n" + kDetails +
                  "\tLocation :\n\t\tf(-2147483648)\n");
}

TEST(ExceptionPrint, UsesTheStreamsLineEnd) {
    vorn::io::CMemoryOutputStream memory;
    vorn::io::CCRLFPrintStream out(&memory, false);
    vorn::base::CMemoryException("f", 1).Print(out);
    std::string expected = Printed(vorn::base::CMemoryException("f", 1));
    for (std::size_t at = expected.find('\n'); at != std::string::npos;
         at = expected.find('\n', at + 2))
        expected.insert(at, "\r");
    EXPECT_EQ(std::string(memory.GetBuffer(), memory.GetBufferSize()), expected);
}

TEST(ExceptionPrint, ToTheDebugOutputAsToAPrintStream) {
    vorn::io::CIOException e("vorn/io/X", 9, "Stream closed.", "message");
    vorn::test::DebugCapture capture;
    e.Print(vorn::base::CSystem::debugOut);
    EXPECT_EQ(capture.Text(), Printed(e));
}

} // namespace
