#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>

#include <vorn/vorn.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;

TEST(Exception, MessagesAreOwnedAndDescriptionsAreNot) {
    CException e("f", 3, "d", "text");
    CException copy(e), assigned("g", 4, nullptr, nullptr);
    assigned = e;
    for (const CException* other : {&copy, &assigned}) {
        EXPECT_STREQ(other->GetMessage(), "text");
        EXPECT_NE(other->GetMessage(), e.GetMessage());
        EXPECT_EQ(other->GetErrorDescription(), e.GetErrorDescription());
        EXPECT_EQ(other->GetSourceLine(), 3u);
    }
    // "" clears like null; without memory the message is lost and SetMessage says so.
    EXPECT_TRUE(e.SetMessage(""));
    EXPECT_EQ(e.GetMessage(), nullptr);
    EXPECT_TRUE(e.SetMessage("again"));
    {
        vorn::test::FailAllocation fail(1, true);
        EXPECT_FALSE(e.SetMessage("new"));
        CException lost("f", 2, "desc", "message");
        EXPECT_EQ(lost.GetMessage(), nullptr);
        EXPECT_STREQ(lost.GetErrorDescription(), "desc");
    }
    EXPECT_EQ(e.GetMessage(), nullptr);
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

TEST(Exception, SystemErrorTextForKnownNonZeroCodes) {
    vorn::base::win::CWinSystemErrorException none("f", 1, "Failed.", 0);
    EXPECT_EQ(none.GetMessage(), nullptr);
    vorn::base::win::CWinSystemErrorException denied("f", 1, "Failed.", EACCES);
    EXPECT_STREQ(denied.GetMessage(), std::strerror(EACCES));
    EXPECT_EQ(denied.GetErrorCode(), static_cast<unsigned long>(EACCES));
    EXPECT_EQ(vorn::base::win::CWinSystemErrorException("f", 1, "Failed.", 987654).GetMessage(),
              nullptr);
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
    }
    // The name goes in only when it isn't empty: "" leaves no buffer behind.
    EXPECT_TRUE(CInstantiationException("f", 3, nullptr, nullptr, "").GetClassName() ==
                static_cast<const char*>(nullptr));

    vorn::io::CUnsupportedEncodingException encoding("f", 4, "UTF-7"), other("f", 5, nullptr);
    EXPECT_EQ(encoding.GetErrorDescription(), nullptr);
    other = encoding;
    EXPECT_STREQ(other.GetEncoding(), "UTF-7");

    vorn::net::CUnknownHostException host("f", 6, "nowhere.invalid");
    EXPECT_STREQ(host.GetErrorDescription(), "Unknown host name.");
    for (const char* none : {"", static_cast<const char*>(nullptr)}) {
        vorn::net::CUnknownHostException empty("f", 7, none);
        ASSERT_NE(empty.GetHostName(), nullptr);
        EXPECT_STREQ(empty.GetHostName(), "");
        empty = host;
        EXPECT_STREQ(empty.GetHostName(), "nowhere.invalid");
    }

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
