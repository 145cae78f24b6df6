#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <vorn/vorn.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

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
VORN_DEFINE_CLASS(
    CTestBroken, "test::CTestBroken", "vorn::base::CObject", nullptr, nullptr,
    +[]() -> CObject* { return nullptr; })

} // namespace classtest

namespace {

using namespace classtest;
using vorn::test::ExpectThrowAt;

TEST(ClassRegistry, FindsByFullQualifiedNameOnly) {
    EXPECT_EQ(CClass::FindClass(nullptr), nullptr);
    EXPECT_EQ(CClass::FindClass(""), nullptr);
    const CClass* object = CClass::FindClass("vorn::base::CObject");
    ASSERT_EQ(object, &CObject::m_classCObject);
    EXPECT_STREQ(object->GetName(), "CObject");
    EXPECT_EQ(object->GetBaseClass1(), nullptr);
    for (const char* near : {"CObject", "VORN::BASE::COBJECT", "vorn::base::CObjec"})
        EXPECT_EQ(CClass::FindClass(near), nullptr) << near;
    const CClass* noColon = CClass::FindClass("NoColon");
    ASSERT_NE(noColon, nullptr);
    EXPECT_EQ(noColon->GetName(), noColon->GetQualifiedName());
}

TEST(ClassRegistry, HashingEndsWithTheFirstRegistration) {
    EXPECT_EQ(CClassManager::GetInstance().GetHashMode(), 0);
    CClassManager fresh;
    EXPECT_EQ(fresh.GetHashMode(), 1);
    {
        vorn::test::FailAllocation fail(1); // no bucket memory: no hashing from the start
        EXPECT_EQ(CClassManager().GetHashMode(), 0);
    }
    // Move one record into the private manager for a moment.
    CClassManager& global = CClassManager::GetInstance();
    global.UnregisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(CClass::FindClass("NoColon"), nullptr);
    fresh.RegisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(fresh.GetHashMode(), 0);
    EXPECT_EQ(fresh.FindClassByName("NoColon"), &CNoColon::m_classCNoColon);
    fresh.UnregisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(fresh.GetClassCount(), 0u);
    global.RegisterClass(&CNoColon::m_classCNoColon);
    EXPECT_EQ(CClass::FindClass("NoColon"), &CNoColon::m_classCNoColon);

    // The newest registration of a name shadows the older one while it lives.
    CClass first("test::Twin", nullptr, nullptr, nullptr, 1, nullptr);
    {
        CClass second("test::Twin", nullptr, nullptr, nullptr, 2, nullptr);
        EXPECT_EQ(CClass::FindClass("test::Twin"), &second);
    }
    EXPECT_EQ(CClass::FindClass("test::Twin"), &first);
}

TEST(ClassRecords, InstanceOfWalksAllThreeBasesAsTheyRegister) {
    CTestSquare square;
    const CClass* shape = CClass::FindClass("test::CTestShape");
    EXPECT_EQ(square.GetClass()->GetSize(), sizeof(CTestSquare));
    EXPECT_TRUE(square.IsInstanceOf(&CTestSquare::m_classCTestSquare));
    EXPECT_TRUE(square.IsInstanceOf(shape));
    EXPECT_TRUE(square.IsInstanceOf(&CObject::m_classCObject));
    EXPECT_FALSE(square.IsInstanceOf(nullptr));
    EXPECT_FALSE(square.IsInstanceOf(&CException::m_classCException));
    EXPECT_EQ(CTestSquare::m_classCTestSquare.GetBaseClass1(), nullptr); // never registered
    EXPECT_EQ(CTestSquare::m_classCTestSquare.GetBaseClass3(), shape);

    const CClass& noColon = CNoColon::m_classCNoColon;
    EXPECT_EQ(noColon.GetBaseClass1(), nullptr);
    static CClass late("test::LateBase", nullptr, nullptr, nullptr, 0, nullptr);
    EXPECT_EQ(noColon.GetBaseClass1(), &late);
    EXPECT_TRUE(noColon.IsInstanceOf(&late));
}

TEST(CreationByName, MakesAClientObjectThroughItsFactory) {
    IClassManager& manager = CClassManager::GetInstance();
    const int before = CTestWidget::s_made;
    CObject* object = manager.CreateInstanceByName("test::CTestWidget");
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetClass(), &CTestWidget::m_classCTestWidget);
    EXPECT_EQ(static_cast<CTestWidget*>(object)->m_size, 7);
    delete object;
    delete manager.CreateInstanceOf(&CTestWidget::m_classCTestWidget);
    EXPECT_EQ(CTestWidget::s_made, before + 2);
    EXPECT_EQ(manager.CreateInstanceOf(nullptr), nullptr);
    // The factory's own allocation failure is that of the class operators.
    vorn::test::ExpectNoMemory([&] { manager.CreateInstanceByName("test::CTestWidget"); },
                               "vorn/base/Base", 148);
    EXPECT_EQ(CTestWidget::s_made, before + 2);
}

TEST(CreationByName, Failures) {
    IClassManager& manager = CClassManager::GetInstance();
    // Library classes have no factory.
    ExpectThrowAt<CInstantiationException>(
        [&] { manager.CreateInstanceOf(&CException::m_classCException); }, "vorn/base/Class", 221,
        "Attempt to instantiate an interface or an abstract class.");
    try {
        manager.CreateInstanceOf(&CException::m_classCException);
    } catch (const CInstantiationException& e) {
        EXPECT_TRUE(e.GetClassName() == "vorn::base::CException");
    }
    ExpectThrowAt<CMemoryException>([] { CTestBroken::m_classCTestBroken.CreateNewInstance(); },
                                    "vorn/base/Class", 216);
    // Names are compared in full.
    for (const char* name : {"CObject", "test::CTestWidgetX", "", (const char*)nullptr}) {
        SCOPED_TRACE(name == nullptr ? "null" : name);
        ExpectThrowAt<CClassNotFoundException>([&] { manager.CreateInstanceByName(name); },
                                               "vorn/base/ClassManager", 183,
                                               "The specified class is not found.");
        try {
            manager.CreateInstanceByName(name);
        } catch (const CClassNotFoundException& e) {
            EXPECT_STREQ(e.GetClassName(), name == nullptr ? "" : name);
        }
    }
}

TEST(Objects, DefaultsAndTheBoolRecord) {
    CObject a, b;
    EXPECT_TRUE(a.Equals(&a));
    EXPECT_FALSE(a.Equals(&b) || a.Equals(nullptr));
    EXPECT_EQ(a.Clone(), nullptr);
    auto address = static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(&a));
    EXPECT_EQ(a.GetHashCode(),
              static_cast<int>(static_cast<unsigned int>(address + (address >> 32))));
    EXPECT_NE(a.GetHashCode(), b.GetHashCode());
    EXPECT_STREQ(CBool::ToString(false), "false");
    EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>(CBool::ToUnicodeString(true))),
              u"true");
    EXPECT_EQ(CBool::CC_TRUE, 4u);
    EXPECT_EQ(CBool::WCC_TRUE, 5u); // one more than its text
}

// Every record of the library, by the first base it names.
const std::pair<const char*, std::vector<const char*>> kRecords[] = {
    {"vorn::base::CObject", {"vorn::base::CBool", "vorn::base::CException"}},
    {"vorn::base::CException",
     {"vorn::base::CArrayIndexOutOfBoundsException", "vorn::base::CClassCastException",
      "vorn::base::CIllegalArgumentException", "vorn::base::CIllegalComparisonException",
      "vorn::base::CIllegalStateException", "vorn::base::CMemoryException",
      "vorn::base::CNullReferenceException", "vorn::base::CNumberFormatException",
      "vorn::base::CSynchronizationException", "vorn::base::win::CWinSystemErrorException",
      "vorn::io::CIOException", "vorn::util::CEmptyQueueException",
      "vorn::util::CEmptyStackException", "vorn::base::CClassNotFoundException",
      "vorn::base::CInstantiationException"}},
    {"vorn::base::CSynchronizationException", {"vorn::base::CTimeoutException"}},
    {"vorn::io::CIOException",
     {"vorn::io::CAccessDeniedException", "vorn::io::CCharConversionException",
      "vorn::io::CInterruptedIOException", "vorn::io::CXMLException", "vorn::net::CSocketException",
      "vorn::io::CUnsupportedEncodingException", "vorn::net::CUnknownHostException"}},
    {"vorn::io::CCharConversionException", {"vorn::io::CUnknownCharacterException"}},
    {"vorn::net::CSocketException", {"vorn::net::CWinSocketException"}},
    {"vorn::base::CMemoryException", {"vorn::util::CNoSuchElementException"}},
};

TEST(ClassTable, EveryRecordNamesItsFirstBaseOnly) {
    for (const auto& [base, names] : kRecords) {
        for (const char* name : names) {
            SCOPED_TRACE(name);
            const CClass* cls = CClass::FindClass(name);
            ASSERT_NE(cls, nullptr);
            EXPECT_STREQ(cls->GetQualifiedBaseClassName1(), base);
            EXPECT_EQ(cls->GetQualifiedBaseClassName2(), nullptr);
            EXPECT_EQ(cls->GetQualifiedBaseClassName3(), nullptr);
            EXPECT_EQ(cls->GetConstructor(), nullptr);
            ASSERT_NE(cls->GetBaseClass1(), nullptr);
            EXPECT_TRUE(cls->IsInstanceOf(&CObject::m_classCObject));
        }
    }
}

} // namespace
