// Who owns what: reference pointers, clones, aggregated objects and weak handles.
#include "platform/core/ZWeakHandle.h"
#include "tests/support/TestClasses.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

TEST(ZRefPtr, HoldsOneReferenceEach) {
  const int before = Element::alive;
  {
    auto first = zdm::MakeObject<ITestElement, Element>("a");
    ZRefPtr<ITestElement> second = first;
    ZRefPtr<ITestElement> third = std::move(second);
    EXPECT_EQ(first->GetReferenceCount(), 2u);
    third = first.Get();
    EXPECT_EQ(first->GetReferenceCount(), 2u);
    ITestElement* detached = third.Detach();
    EXPECT_EQ(third.Get(), nullptr);
    first = nullptr;
    EXPECT_EQ(Element::alive, before + 1);
    EXPECT_EQ(detached->Release(), 0u);
  }
  EXPECT_EQ(Element::alive, before);
}

TEST(ZRefPtr, ClonesComeWithCountZero) {
  const int before = Element::alive;
  {
    Element original("a");
    EXPECT_EQ(Stranger().Clone(), nullptr);
    ZRefPtr<IZObject> copy = original.Clone();
    EXPECT_EQ(copy->GetReferenceCount(), 1u);
    EXPECT_EQ(zdm::CloneAs<ITestElement>(&original)->Name(), "a");
    // A copy that lacks the wanted interface dies instead of leaking.
    EXPECT_EQ(zdm::CloneAs<ITestColl>(&original).Get(), nullptr);
    EXPECT_EQ(Element::alive, before + 2);
  }
  EXPECT_EQ(Element::alive, before);
}

TEST(ZRefPtr, CopiesOfAnObjectStartAtOneAndAssignmentLeavesCountsAlone) {
  Element original("a");
  original.AddRef();
  Element copy(original);
  EXPECT_EQ(copy.GetReferenceCount(), 1u);
  copy = original;
  EXPECT_EQ(copy.GetReferenceCount(), 1u);
  EXPECT_EQ(original.GetReferenceCount(), 2u);
}

TEST(Aggregation, HoldsOneObjectPerInterfaceUntilTheEnd) {
  const int before = Element::alive;
  auto outer = zdm::MakeObject<IZObject, Stranger>();
  outer->AddAggregation(7, zdm::MakeObject<IZObject, Element>("first"));
  outer->AddAggregation(7, zdm::MakeObject<IZObject, Element>("second"));
  EXPECT_EQ(Element::alive, before + 1);
  EXPECT_TRUE(outer->HasAggregation(7));
  EXPECT_FALSE(outer->HasAggregation(8));
  EXPECT_EQ(outer->GetAggregation(7)->GetReferenceCount(), 1u);
  outer->RemoveAggregation(7);
  EXPECT_EQ(outer->GetAggregation(7), nullptr);
  outer->AddAggregation(8, zdm::MakeObject<IZObject, Element>("null takes it away"));
  outer->AddAggregation(8, nullptr);
  EXPECT_EQ(Element::alive, before);
  outer->AddAggregation(9, zdm::MakeObject<IZObject, Element>("third"));
  outer.Reset();
  EXPECT_EQ(Element::alive, before);
}

/// Its destructor takes and gives back a reference of itself and looks at its own handle.
class LastWords : public IZObjectImpl<IZObject> {
 public:
  explicit LastWords(bool* seen) : handle(this), seen_(seen) {}
  ~LastWords() override {
    AddRef();
    Release();
    *seen_ = handle.Get() == nullptr;
  }
  ZWeakHandle handle;

 private:
  bool* seen_;
};

TEST(WeakHandle, AnswersNullOnceTheObjectIsGone) {
  ZWeakHandle handle;
  EXPECT_EQ(handle.Get(), nullptr);
  {
    auto object = zdm::MakeObject<IZObject, Stranger>();
    handle = ZWeakHandle(object);
    const ZWeakHandle copy = handle;
    EXPECT_EQ(copy.Get(), object.Get());
    EXPECT_EQ(object->GetReferenceCount(), 1u);
  }
  EXPECT_EQ(handle.Get(), nullptr);
  {
    Stranger automatic;  // ends without a release
    handle = ZWeakHandle(&automatic);
    EXPECT_EQ(handle.Get(), &automatic);
  }
  EXPECT_EQ(handle.Get(), nullptr);
}

/// Takes a handle of another object when it ends.
class Latecomer : public IZObjectImpl<IZObject> {
 public:
  Latecomer(CZObject* outer, ZWeakHandle* handle) : outer_(outer), handle_(handle) {}
  ~Latecomer() override { *handle_ = ZWeakHandle(outer_); }

 private:
  CZObject* outer_;
  ZWeakHandle* handle_;
};

TEST(WeakHandle, IsEmptyWhenMadeWhileTheObjectIsBeingDestroyed) {
  ZWeakHandle handle;
  auto outer = zdm::MakeObject<IZObject, Stranger>();
  outer->AddAggregation(1, zdm::Attached<IZObject>(new Latecomer(outer, &handle)));
  outer.Reset();
  EXPECT_EQ(handle.Get(), nullptr);
}

TEST(WeakHandle, IsDeadWhileItsObjectIsBeingDestroyedAndDestructionHappensOnce) {
  bool seen = false;
  (new LastWords(&seen))->Release();
  EXPECT_TRUE(seen);
}

}  // namespace
