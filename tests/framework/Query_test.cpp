// What an object answers to, and that every view reaches the one count.
#include "platform/core/ZCore.h"
#include "tests/support/TestClasses.h"
#include "zdm/framework/CreateAs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace {

using namespace zdm::test;

TEST(Query, AnswersTheRowNotTheBases) {
  auto reserved = zdm::MakeObject<ITestElement, Reserved>();
  EXPECT_TRUE(reserved->IsA(ZInterface<ITestElement>::ID()));
  EXPECT_FALSE(reserved->IsA(ZInterface<ITestExtra>::ID()));
  EXPECT_EQ(zdm::ViewAs<ITestExtra>(reserved), nullptr);
  const ZRefPtr<ITestExtra> extra = reserved->GetIZObject();
  EXPECT_EQ(extra.Get(), nullptr);
  EXPECT_EQ(reserved->GetReferenceCount(), 1u);

  auto object = zdm::MakeObject<ITestElement, Twofold>();
  CZObject* identity = object.Get();
  EXPECT_TRUE(identity->IsA(ZInterface<IZObject>::ID()));
  EXPECT_TRUE(identity->IsA(ZInterface<ITestExtra>::ID()));
  EXPECT_FALSE(identity->IsA(ZInterface<ITestColl>::ID()));
  EXPECT_FALSE(identity->IsA(0));
  EXPECT_FALSE(identity->IsA(0xFFFF));
  EXPECT_EQ(identity->_GetOffsetofClass(0xFFFF), 0xFFFFFFFFFFFFFFFFull);
}

TEST(Query, EveryViewIsTheSameObject) {
  auto element = zdm::MakeObject<ITestElement, Twofold>();
  ZRefPtr<ITestExtra> extra;
  ASSERT_EQ(extra.Query(element), S_OK);
  EXPECT_EQ(extra->Extra(), 42);
  EXPECT_EQ(element->GetReferenceCount(), 2u);
  EXPECT_TRUE(extra->EqualTo(element.Get()));
  EXPECT_FALSE(extra->EqualTo(zdm::MakeObject<ITestElement, Twofold>().Get()));
  // IZObject is a base twice; the canonical view is the same from everywhere.
  EXPECT_EQ(zdm::ViewAs<IZObject>(extra), element->GetIZObject());
  EXPECT_EQ(static_cast<void*>(element->GetLPVOID()), extra->GetLPVOID());
}

TEST(Query, FailureNullsTheOutPointerAndLeavesTheCount) {
  auto element = zdm::MakeObject<ITestElement, Element>("a");
  void* out = &element;
  EXPECT_EQ(QueryZInterface(element, ZInterface<ITestColl>::ID(), &out), E_NOINTERFACE);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(element->GetReferenceCount(), 1u);
  out = &element;
  EXPECT_EQ(QueryZInterface(nullptr, ZInterface<IZObject>::ID(), &out), E_INVALIDARG);
  EXPECT_EQ(out, nullptr);
  EXPECT_EQ(QueryZInterface(element, ZInterface<IZObject>::ID(), nullptr), E_INVALIDARG);
}

TEST(Query, LastReleaseThroughAnyViewEndsTheObjectOnce) {
  Twofold::destroyed = 0;
  auto* object = new Twofold;
  ITestElement* element = object;
  ITestExtra* extra = object;
  EXPECT_EQ(element->AddRef(), 2u);
  EXPECT_EQ(element->Release(), 1u);
  EXPECT_EQ(extra->Release(), 0u);
  EXPECT_EQ(Twofold::destroyed, 1);
}

TEST(Class, FactoryCreatesByIdentifierWithOneReference) {
  CZRClass* description = Element::zInit();
  ASSERT_NE(description, nullptr);
  EXPECT_EQ(Element::zInit(), description);  // a second registration is the first
  const GUID classId = Element::kClassID;
  const CZFactory& factory = *ZCore::GetZFactory();
  auto object = zdm::Attached(factory.Create(classId)->GetIZObject());
  EXPECT_EQ(object->GetReferenceCount(), 1u);
  EXPECT_EQ(object->getZRClass(), description);
  EXPECT_STREQ(description->GetName(), "zdm::test::Element");
  GUID asked = {};
  EXPECT_EQ(object->GetClassID(&asked), S_OK);
  EXPECT_TRUE(asked == classId);
  EXPECT_TRUE(object->GetObjectCLSID() == classId);
  EXPECT_TRUE(object->GetZRMID() == TestModule::kID);
  EXPECT_EQ(zdm::test::Element().getVersion(), 1u);
  EXPECT_EQ(factory.Create(classId, &classId), nullptr);  // no such module
  EXPECT_EQ(factory.Create(GUID_NULL), nullptr);
}

TEST(Class, CreatesByTheViewThatIsWanted) {
  Element::zInit();
  Element::alive = 0;
  const auto element = zdm::CreateAs<ITestElement, Element>();
  ASSERT_NE(element.Get(), nullptr);
  EXPECT_EQ(element->GetReferenceCount(), 1u);
  EXPECT_EQ(zdm::CreateAs<ITestColl>(Element::kClassID).Get(), nullptr);  // no such view
  EXPECT_EQ(zdm::CreateAs<IZObject>(GUID_NULL).Get(), nullptr);           // no such class
  EXPECT_EQ((zdm::CreateAs<IZObject, Coll>().Get()), nullptr);            // not creatable
  EXPECT_EQ(Element::alive, 1);
}

TEST(Class, OneThatIsNotCreatableHasNoDescriptor) {
  EXPECT_EQ(Coll::zInit(), nullptr);
  Coll coll;
  EXPECT_EQ(coll.getZRClass(), nullptr);
  EXPECT_EQ(coll.getVersion(), 0u);
  GUID asked = {1, 1, 1, {}};
  EXPECT_EQ(coll.GetClassID(&asked), E_FAIL);
  EXPECT_TRUE(asked == GUID_NULL);
}

TEST(Class, RegistrationKeepsItsOrderAndRefusesHalfARecord) {
  Element::zInit();
  CZRClass* second = Stranger::zInit();
  const auto& classes = ZCore::GetZFactory()->GetClasses();
  EXPECT_LT(std::find(classes.begin(), classes.end(), Element::gpDesc),
            std::find(classes.begin(), classes.end(), second));
  EXPECT_EQ(std::count(classes.begin(), classes.end(), second), 1);
  const GUID unused = {1, 2, 3, {}};
  EXPECT_EQ(newZRClass(unused, "M", unused, "C", nullptr, &zdm::DestroyObject, 1), nullptr);
  EXPECT_EQ(newZRClass(unused, nullptr, unused, "C", &zdm::CreateObject<Stranger>,
                       &zdm::DestroyObject, 1),
            nullptr);
  EXPECT_FALSE(ZCore::GetZFactory()->IsRegistered(unused));
}

TEST(Class, InterfaceIdsAreStablePerName) {
  const unsigned short id = CZObject::AddInterface("ITestAnother");
  EXPECT_GE(id, 1);
  EXPECT_EQ(CZObject::AddInterface("ITestAnother"), id);
  EXPECT_STREQ(CZObject::GetInterfaceName(id), "ITestAnother");
  EXPECT_EQ(CZObject::GetInterfaceName(0), nullptr);
  EXPECT_EQ(CZObject::AddInterface(nullptr), 0);
  constexpr GUID kRead = {0xABCDEF01, 0x2345, 0x6789, {0xAB, 0xCD, 0xEF, 0, 1, 2, 3, 0x4F}};
  EXPECT_TRUE(zdm::ParseGuid("ABCDEF01-2345-6789-abcd-ef000102034f") == kRead);
}

}  // namespace
