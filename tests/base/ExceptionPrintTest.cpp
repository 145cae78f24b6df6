#include <gtest/gtest.h>

#include <string>

#include <vorn/base/ClassNotFoundException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/System.h>
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
    const std::string head = kBanner + "\tvorn::base::CException\n";
    // A file with line 0 is no location; with nothing else there is no details banner.
    EXPECT_EQ(Printed(CException("f", 0, nullptr, nullptr)), head);
    EXPECT_EQ(Printed(CException(nullptr, 7, nullptr, nullptr)), head);
    EXPECT_EQ(Printed(CException("f", 0, "Described.", nullptr)),
              head + kDetails + "\tError description :\n\t\tDescribed.\n");
    EXPECT_EQ(Printed(CException(nullptr, 0, nullptr, "said")),
              head + kDetails + "\tMessage : \n\t\tsaid\n");
    EXPECT_EQ(Printed(CException("f", 0x80000000u, nullptr, nullptr)),
              head + kDetails + "\tLocation :\n\t\tf(-2147483648)\n"); // the line is an int
}

TEST(ExceptionPrint, ExtraFieldsStayOut) {
    vorn::base::CClassNotFoundException e("f", 3, nullptr, nullptr, "app::CMissing");
    EXPECT_EQ(Printed(e), kBanner + "\tvorn::base::CClassNotFoundException\n" + kDetails +
                              "\tLocation :\n\t\tf(3)\n");
}

TEST(ExceptionPrint, ToTheDebugOutputAsToAPrintStream) {
    vorn::io::CIOException e("vorn/io/X", 9, "Stream closed.", "message");
    vorn::test::DebugCapture capture;
    e.Print(vorn::base::CSystem::debugOut);
    EXPECT_EQ(capture.Text(), Printed(e));
}

} // namespace
