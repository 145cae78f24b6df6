#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

#include <vorn/vorn.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;

TEST(Exception, FieldsAsGiven) {
    CException e("vorn/base/Test", 12, "A description.", "A message.");
    EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Test");
    EXPECT_EQ(e.GetSourceLine(), 12u);
    EXPECT_STREQ(e.GetErrorDescription(), "A description.");
    EXPECT_STREQ(e.GetMessage(), "A message.");
    EXPECT_EQ(e.Clone(), nullptr);
    EXPECT_EQ(e.GetClass(), &CException::m_classCException);
}

TEST(Exception, FixedClassesHaveNoTexts) {
    CMemoryException e("f", 1);
    EXPECT_EQ(e.GetErrorDescription(), nullptr);
    EXPECT_EQ(e.GetMessage(), nullptr);
    CIllegalArgumentException a("f", 2, "Invalid pointer.");
    EXPECT_STREQ(a.GetErrorDescription(), "Invalid pointer.");
    EXPECT_EQ(a.GetMessage(), nullptr);
}

TEST(Exception, SetMessageClearsOnNullAndEmpty) {
    CException e("f", 1, nullptr, "old");
    EXPECT_TRUE(e.SetMessage(""));
    EXPECT_EQ(e.GetMessage(), nullptr);
    EXPECT_TRUE(e.SetMessage("again"));
    EXPECT_STREQ(e.GetMessage(), "again");
    EXPECT_TRUE(e.SetMessage(nullptr));
    EXPECT_EQ(e.GetMessage(), nullptr);
}

TEST(Exception, SetMessageWithoutMemoryReturnsFalse) {
    CException e("f", 1, nullptr, "old");
    {
        vorn::test::FailAllocation fail(1);
        EXPECT_FALSE(e.SetMessage("new"));
    }
    EXPECT_EQ(e.GetMessage(), nullptr);
    {
        vorn::test::FailAllocation fail(1);
        CException lost("f", 2, "desc", "message");
        EXPECT_EQ(lost.GetMessage(), nullptr);
        EXPECT_STREQ(lost.GetErrorDescription(), "desc");
    }
}

TEST(Exception, CopiesOwnTheirMessage) {
    CException e("f", 3, "d", "text");
    CException copy(e);
    EXPECT_STREQ(copy.GetMessage(), "text");
    EXPECT_NE(copy.GetMessage(), e.GetMessage());
    EXPECT_EQ(copy.GetErrorDescription(), e.GetErrorDescription());
    CException assigned("g", 4, nullptr, nullptr);
    assigned = e;
    EXPECT_STREQ(assigned.GetMessage(), "text");
    EXPECT_NE(assigned.GetMessage(), e.GetMessage());
    EXPECT_EQ(assigned.GetSourceLine(), 3u);
    assigned = assigned;
    EXPECT_STREQ(assigned.GetMessage(), "text");
}

TEST(Exception, ThrownByValueAndCaughtByBase) {
    try {
        throw vorn::io::CXMLException("vorn/io/Test", 5, "Bad XML.", "line 3");
    } catch (const vorn::io::CIOException& e) {
        EXPECT_STREQ(e.GetClass()->GetQualifiedName(), "vorn::io::CXMLException");
        EXPECT_TRUE(e.IsInstanceOf(&vorn::io::CIOException::m_classCIOException));
        EXPECT_STREQ(e.GetMessage(), "line 3");
    }
}

TEST(Exception, NoSuchElementIsAMemoryExceptionOnlyByRecord) {
    vorn::util::CNoSuchElementException e("f", 1);
    EXPECT_TRUE(e.IsInstanceOf(&CMemoryException::m_classCMemoryException));
    bool caughtAsMemory = false;
    try {
        throw e;
    } catch (const CMemoryException&) {
        caughtAsMemory = true;
    } catch (const CException&) {
    }
    EXPECT_FALSE(caughtAsMemory);
}

TEST(Exception, SystemErrorTextForNonZeroCodes) {
    vorn::base::win::CWinSystemErrorException none("f", 1, "Failed.", 0);
    EXPECT_EQ(none.GetMessage(), nullptr);
    EXPECT_EQ(none.GetErrorCode(), 0u);
    vorn::base::win::CWinSystemErrorException denied("f", 1, "Failed.", EACCES);
    EXPECT_STREQ(denied.GetMessage(), std::strerror(EACCES));
    EXPECT_EQ(denied.GetErrorCode(), static_cast<unsigned long>(EACCES));
    vorn::base::win::CWinSystemErrorException unknown("f", 1, "Failed.", 987654);
    EXPECT_EQ(unknown.GetMessage(), nullptr);
    vorn::base::win::CWinSystemErrorException copy(denied);
    EXPECT_EQ(copy.GetErrorCode(), static_cast<unsigned long>(EACCES));
    EXPECT_STREQ(copy.GetMessage(), denied.GetMessage());

    vorn::net::CWinSocketException socket("f", 1, "Socket failed.", ECONNREFUSED);
    EXPECT_STREQ(socket.GetMessage(), std::strerror(ECONNREFUSED));
    EXPECT_EQ(socket.GetErrorCode(), ECONNREFUSED);
}

TEST(Exception, UnknownCharacterIsFixed) {
    vorn::io::CUnknownCharacterException e("f", 9, 0xD800);
    EXPECT_EQ(e.GetErrorDescription(), nullptr);
    EXPECT_EQ(e.GetMessage(), nullptr);
    EXPECT_EQ(e.GetSourceLine(), 9u);
    EXPECT_TRUE(e.IsInstanceOf(&vorn::io::CCharConversionException::m_classCCharConversionException));
}

TEST(NamedException, NamesAreKeptInStrings) {
    char name[] = "app::CMissing";
    CClassNotFoundException missing("f", 1, "d", "m", name);
    name[0] = 'X';
    CClassNotFoundException copy(missing), assigned("g", 2, nullptr, nullptr, nullptr);
    EXPECT_TRUE(assigned.GetClassName().IsEmpty());
    assigned = missing;
    for (const CClassNotFoundException* e : {&missing, &copy, &assigned}) {
        EXPECT_STREQ(e->GetClassName(), "app::CMissing");
        EXPECT_STREQ(e->GetMessage(), "m");
        EXPECT_EQ(e->GetSourceLine(), 1u);
    }
    // The name goes in only when it isn't empty: "" leaves no buffer behind.
    EXPECT_TRUE(CInstantiationException("f", 3, nullptr, nullptr, "").GetClassName() ==
                static_cast<const char*>(nullptr));
    CInstantiationException abstract("f", 3, "d", nullptr, "app::CShape");
    EXPECT_STREQ(CInstantiationException(abstract).GetClassName(), "app::CShape");

    vorn::io::CUnsupportedEncodingException encoding("f", 4, "UTF-7"), other("f", 5, nullptr);
    EXPECT_TRUE(other.GetEncoding().IsEmpty());
    EXPECT_EQ(encoding.GetErrorDescription(), nullptr);
    other = encoding;
    EXPECT_STREQ(other.GetEncoding(), "UTF-7");

    vorn::net::CUnknownHostException host("f", 6, "nowhere.invalid");
    EXPECT_STREQ(host.GetErrorDescription(), "Unknown host name.");
    EXPECT_EQ(host.GetMessage(), nullptr);
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        vorn::net::CUnknownHostException empty("f", 7, none);
        ASSERT_NE(empty.GetHostName(), nullptr);
        EXPECT_STREQ(empty.GetHostName(), "");
        empty = host;
        EXPECT_STREQ(empty.GetHostName(), "nowhere.invalid");
    }
}

TEST(NamedException, NoMemoryForTheNameFailsTheConstruction) {
    // A name too long for the pools, with no memory for it, gives the string's own failure.
    std::string longName(3000, 'n');
    try {
        vorn::test::FailAllocation fail(1);
        throw CClassNotFoundException("f", 9, nullptr, nullptr, longName.c_str());
    } catch (const CClassNotFoundException&) {
        ADD_FAILURE() << "constructed without memory";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/String");
    }
}

} // namespace
