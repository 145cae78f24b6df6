#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/vorn.h>

#include "support/AllocFailure.h"

using namespace vorn::base;

namespace classtest {

// Client classes with records of their own; the third-base case resolves only through base 3.
class CTestShape : public CObject {
    VORN_DECLARE_CLASS(CTestShape)
};
VORN_DEFINE_CLASS_BASE(CTestShape, "test::CTestShape", "vorn::base::CObject")

class CTestSquare : public CTestShape {
    VORN_DECLARE_CLASS(CTestSquare)
};
VORN_DEFINE_CLASS(CTestSquare, "test::CTestSquare", "test::Missing1", nullptr, "test::CTestShape",
                  nullptr)

class CNoColon : public CObject {
    VORN_DECLARE_CLASS(CNoColon)
};
VORN_DEFINE_CLASS_BASE(CNoColon, "NoColon", "test::LateBase")

} // namespace classtest

namespace {

using namespace classtest;

TEST(ClassRegistry, FindsByFullQualifiedNameOnly) {
    EXPECT_EQ(CClass::FindClass(nullptr), nullptr);
    EXPECT_EQ(CClass::FindClass(""), nullptr);
    const CClass* object = CClass::FindClass("vorn::base::CObject");
    ASSERT_EQ(object, &CObject::m_classCObject);
    EXPECT_STREQ(object->GetName(), "CObject");
    EXPECT_EQ(object->GetBaseClass1(), nullptr);
    EXPECT_EQ(object->GetQualifiedBaseClassName1(), nullptr);
    EXPECT_EQ(CClass::FindClass("CObject"), nullptr);
    EXPECT_EQ(CClass::FindClass("VORN::BASE::COBJECT"), nullptr);
    EXPECT_EQ(CClass::FindClass("vorn::base::CObjec"), nullptr);
}

TEST(ClassRegistry, HashingEndsWithTheFirstRegistration) {
    EXPECT_EQ(CClassManager::GetInstance().GetHashMode(), 0);
    CClassManager fresh;
    EXPECT_EQ(fresh.GetHashMode(), 1);

    // Move one record into the private manager for a moment.
    CClassManager& global = CClassManager::GetInstance();
    unsigned int before = global.GetClassCount();
    global.UnregisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(global.GetClassCount(), before - 1);
    EXPECT_EQ(CClass::FindClass("NoColon"), nullptr);
    fresh.RegisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(fresh.GetHashMode(), 0);
    EXPECT_EQ(fresh.GetClassCount(), 1u);
    EXPECT_EQ(fresh.FindClassByName("NoColon"), &CNoColon::m_classCNoColon);
    fresh.UnregisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(fresh.GetClassCount(), 0u);
    EXPECT_EQ(fresh.FindClassByName("NoColon"), nullptr);
    global.RegisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(CClass::FindClass("NoColon"), &CNoColon::m_classCNoColon);
}

TEST(ClassRegistry, NoBucketMemoryMeansNoHashingFromTheStart) {
    vorn::test::FailAllocation fail(1);
    CClassManager fresh;
    EXPECT_EQ(fresh.GetHashMode(), 0);
}

TEST(ClassRegistry, NewestRegistrationShadowsOlder) {
    CClass first("test::Twin", nullptr, nullptr, nullptr, 1, nullptr);
    {
        CClass second("test::Twin", nullptr, nullptr, nullptr, 2, nullptr);
        EXPECT_EQ(CClass::FindClass("test::Twin"), &second);
    }
    EXPECT_EQ(CClass::FindClass("test::Twin"), &first);
}

TEST(ClassRecords, NamesAndSizes) {
    const CClass* square = CClass::FindClass("test::CTestSquare");
    ASSERT_NE(square, nullptr);
    EXPECT_STREQ(square->GetName(), "CTestSquare");
    EXPECT_STREQ(square->GetQualifiedName(), "test::CTestSquare");
    EXPECT_STREQ(square->GetQualifiedBaseClassName3(), "test::CTestShape");
    EXPECT_EQ(square->GetSize(), sizeof(CTestSquare));
    EXPECT_EQ(square->GetConstructor(), nullptr);
    const CClass* noColon = CClass::FindClass("NoColon");
    ASSERT_NE(noColon, nullptr);
    EXPECT_EQ(noColon->GetName(), noColon->GetQualifiedName());
}

TEST(ClassRecords, InstanceOfWalksAllThreeBases) {
    CTestSquare square;
    const CClass* shape = CClass::FindClass("test::CTestShape");
    EXPECT_TRUE(square.IsInstanceOf(&CTestSquare::m_classCTestSquare));
    EXPECT_TRUE(square.IsInstanceOf(shape));
    EXPECT_TRUE(square.IsInstanceOf(&CObject::m_classCObject));
    EXPECT_FALSE(square.IsInstanceOf(nullptr));
    EXPECT_FALSE(square.IsInstanceOf(&CException::m_classCException));
    EXPECT_EQ(CTestSquare::m_classCTestSquare.GetBaseClass1(), nullptr); // never registered
    EXPECT_EQ(CTestSquare::m_classCTestSquare.GetBaseClass3(), shape);
}

TEST(ClassRecords, BaseResolvesOnceItRegisters) {
    const CClass& noColon = CNoColon::m_classCNoColon;
    EXPECT_EQ(noColon.GetBaseClass1(), nullptr);
    {
        static CClass late("test::LateBase", nullptr, nullptr, nullptr, 0, nullptr);
        EXPECT_EQ(noColon.GetBaseClass1(), &late);
        EXPECT_TRUE(noColon.IsInstanceOf(&late));
    }
}

TEST(Objects, Defaults) {
    CObject a;
    CObject b;
    EXPECT_EQ(a.GetClass(), &CObject::m_classCObject);
    EXPECT_TRUE(a.Equals(&a));
    EXPECT_FALSE(a.Equals(&b));
    EXPECT_FALSE(a.Equals(nullptr));
    EXPECT_EQ(a.Clone(), nullptr);
    auto address = static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&a));
    EXPECT_EQ(a.GetHashCode(), static_cast<int>(static_cast<unsigned int>(address + (address >> 32))));
    EXPECT_NE(a.GetHashCode(), b.GetHashCode());
}

TEST(Bool, Constants) {
    EXPECT_STREQ(CBool::ToString(true), "true");
    EXPECT_STREQ(CBool::ToString(false), "false");
    EXPECT_EQ(CBool::CC_TRUE, 4u);
    EXPECT_EQ(CBool::CC_FALSE, 5u);
    EXPECT_EQ(CBool::WCC_TRUE, 5u);
    EXPECT_EQ(CBool::WCC_FALSE, 5u);
    const unsigned short* t = CBool::ToUnicodeString(true);
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(t)), u"true");
    EXPECT_EQ(CBool::ToUnicodeString(false), CBool::WSZ_FALSE);
    EXPECT_TRUE(CBool().IsInstanceOf(&CObject::m_classCObject));
}

// Every record of the library with the first base it names.
struct Record {
    const char* name;
    const char* base;
};
const Record kRecords[] = {
    {"vorn::base::CBool", "vorn::base::CObject"},
    {"vorn::base::CException", "vorn::base::CObject"},
    {"vorn::base::CArrayIndexOutOfBoundsException", "vorn::base::CException"},
    {"vorn::base::CClassCastException", "vorn::base::CException"},
    {"vorn::base::CIllegalArgumentException", "vorn::base::CException"},
    {"vorn::base::CIllegalComparisonException", "vorn::base::CException"},
    {"vorn::base::CIllegalStateException", "vorn::base::CException"},
    {"vorn::base::CMemoryException", "vorn::base::CException"},
    {"vorn::base::CNullReferenceException", "vorn::base::CException"},
    {"vorn::base::CNumberFormatException", "vorn::base::CException"},
    {"vorn::base::CSynchronizationException", "vorn::base::CException"},
    {"vorn::base::CTimeoutException", "vorn::base::CSynchronizationException"},
    {"vorn::base::win::CWinSystemErrorException", "vorn::base::CException"},
    {"vorn::io::CIOException", "vorn::base::CException"},
    {"vorn::io::CAccessDeniedException", "vorn::io::CIOException"},
    {"vorn::io::CCharConversionException", "vorn::io::CIOException"},
    {"vorn::io::CInterruptedIOException", "vorn::io::CIOException"},
    {"vorn::io::CXMLException", "vorn::io::CIOException"},
    {"vorn::io::CUnknownCharacterException", "vorn::io::CCharConversionException"},
    {"vorn::net::CSocketException", "vorn::io::CIOException"},
    {"vorn::net::CWinSocketException", "vorn::net::CSocketException"},
    {"vorn::util::CEmptyQueueException", "vorn::base::CException"},
    {"vorn::util::CEmptyStackException", "vorn::base::CException"},
    {"vorn::util::CNoSuchElementException", "vorn::base::CMemoryException"},
};

TEST(ClassTable, EveryRecordNamesItsFirstBaseOnly) {
    for (const Record& r : kRecords) {
        SCOPED_TRACE(r.name);
        const CClass* cls = CClass::FindClass(r.name);
        ASSERT_NE(cls, nullptr);
        EXPECT_STREQ(cls->GetQualifiedBaseClassName1(), r.base);
        EXPECT_EQ(cls->GetQualifiedBaseClassName2(), nullptr);
        EXPECT_EQ(cls->GetQualifiedBaseClassName3(), nullptr);
        EXPECT_EQ(cls->GetConstructor(), nullptr);
        ASSERT_NE(cls->GetBaseClass1(), nullptr);
        EXPECT_TRUE(cls->IsInstanceOf(&CObject::m_classCObject));
    }
}

} // namespace
