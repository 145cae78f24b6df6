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

// A client class that can be created by name.
class CTestWidget : public CObject {
    VORN_DECLARE_CLASS(CTestWidget)

public:
    CTestWidget() : m_size(7) { ++s_made; }
    int m_size;
    static int s_made;
};
int CTestWidget::s_made = 0;
VORN_DEFINE_CLASS(CTestWidget, "test::CTestWidget", "vorn::base::CObject", nullptr, nullptr,
                  VORN_CLASS_FACTORY(CTestWidget))

// A factory that reports no object.
class CTestBroken : public CObject {
    VORN_DECLARE_CLASS(CTestBroken)
};
VORN_DEFINE_CLASS(CTestBroken, "test::CTestBroken", "vorn::base::CObject", nullptr, nullptr,
                  +[]() -> CObject* { return nullptr; })

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

TEST(CreationByName, MakesAClientObjectThroughItsFactory) {
    IClassManager& manager = CClassManager::GetInstance();
    const int before = CTestWidget::s_made;
    CObject* object = manager.CreateInstanceByName("test::CTestWidget");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetClass(), &CTestWidget::m_classCTestWidget);
    EXPECT_EQ(static_cast<CTestWidget*>(object)->m_size, 7);
    delete object;
    object = manager.CreateInstanceOf(&CTestWidget::m_classCTestWidget);
    ASSERT_NE(object, nullptr);
    delete object;
    delete CTestWidget::m_classCTestWidget.CreateNewInstance();
    EXPECT_EQ(CTestWidget::s_made, before + 3);
    EXPECT_EQ(manager.CreateInstanceOf(nullptr), nullptr);

    // The factory's own allocation failure is that of the class operators.
    try {
        vorn::test::FailAllocation fail(1);
        manager.CreateInstanceByName("test::CTestWidget");
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Base");
        EXPECT_EQ(e.GetSourceLine(), 148u);
    }
    EXPECT_EQ(CTestWidget::s_made, before + 3);
}

TEST(CreationByName, Failures) {
    IClassManager& manager = CClassManager::GetInstance();
    // Library classes have no factory.
    try {
        manager.CreateInstanceOf(&CException::m_classCException);
        ADD_FAILURE() << "no exception";
    } catch (const CInstantiationException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Class");
        EXPECT_EQ(e.GetSourceLine(), 221u);
        EXPECT_STREQ(e.GetErrorDescription(),
                     "Attempt to instantiate an interface or an abstract class.");
        EXPECT_EQ(e.GetMessage(), nullptr);
        EXPECT_TRUE(e.GetClassName() == "vorn::base::CException");
    }
    try {
        CTestBroken::m_classCTestBroken.CreateNewInstance();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Class");
        EXPECT_EQ(e.GetSourceLine(), 216u);
    }
    // Names are compared in full.
    const char* const names[] = {"CObject", "test::CTestWidgetX", "", nullptr};
    for (const char* name : names) {
        SCOPED_TRACE(name == nullptr ? "null" : name);
        try {
            manager.CreateInstanceByName(name);
            ADD_FAILURE() << "no exception";
        } catch (const CClassNotFoundException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/base/ClassManager");
            EXPECT_EQ(e.GetSourceLine(), 183u);
            EXPECT_STREQ(e.GetErrorDescription(), "The specified class is not found.");
            EXPECT_EQ(e.GetMessage(), nullptr);
            EXPECT_STREQ(e.GetClassName(), name == nullptr ? "" : name);
            EXPECT_EQ(e.GetClassName().IsEmpty(), name == nullptr || *name == '\0');
        }
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
    {"vorn::base::CClassNotFoundException", "vorn::base::CException"},
    {"vorn::base::CInstantiationException", "vorn::base::CException"},
    {"vorn::io::CUnsupportedEncodingException", "vorn::io::CIOException"},
    {"vorn::net::CUnknownHostException", "vorn::io::CIOException"},
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
