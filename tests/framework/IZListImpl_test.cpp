// The list behind every collection: order, positions, references and misuse.
#include "tests/support/Sanitized.h"
#include "tests/support/TestClasses.h"
#include "tests/support/Thrown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

ZDM_TEST_CLASS(Meddler, IZObject, ITestElement)

namespace zdm::test {

/// Empties, extends or shortens the collection that is about to let go of it.
class Meddler : public IZObjectImpl<ITestElement> {
  ZDM_OBJECT(Meddler)
 public:
  Meddler(ITestColl* coll, void (*deed)(ITestColl*)) : coll_(coll), deed_(deed) {}
  ~Meddler() override { deed_(coll_); }
  const std::string& Name() override { return name_; }

 private:
  std::string name_ = "m";
  ITestColl* coll_;
  void (*deed_)(ITestColl*);
};

ZDM_OBJECT_BODY(Meddler)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

#if defined(ZDM_ADDRESS_SANITIZER)
extern "C" int __asan_address_is_poisoned(const volatile void* address);
#endif

/// The memory behind a position is still held, or went back to the heap. Only the address sanitizer
/// can tell.
void ExpectHeld([[maybe_unused]] LONGLONG pos, [[maybe_unused]] bool held) {
#if defined(ZDM_ADDRESS_SANITIZER)
  EXPECT_EQ(__asan_address_is_poisoned(reinterpret_cast<void*>(pos)) == 0, held);
#endif
}

/// Forwards and backwards at once, so that no broken link goes unseen.
void ExpectNames(ITestColl& coll, const std::string& names) {
  EXPECT_EQ(NamesIn(coll), names);
  std::string reversed = NamesBackwards(coll);
  std::reverse(reversed.begin(), reversed.end());  // names are single letters
  EXPECT_EQ(reversed, names);
  EXPECT_EQ(coll.GetCount(), static_cast<LONG>((names.size() + 1) / 2));
}

TEST(List, EmptyListAnswersAbsenceAndThrowsOnRemoval) {
  auto coll = MakeColl();
  ITestElement* out = nullptr;
  EXPECT_EQ(coll->GetHead(), nullptr);
  EXPECT_EQ(coll->GetTail(), nullptr);
  EXPECT_EQ(coll->GetHeadPosition(), 0);
  EXPECT_EQ(coll->FindIndex(0), 0);
  EXPECT_TRUE(coll->IsEmpty());
  EXPECT_EQ(Thrown([&] { coll->RemoveHead(&out); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->RemoveTail(&out); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->RemoveHeadNoReturn(); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->RemoveTailNoReturn(); }), E_FAIL);
  EXPECT_EQ(coll->RemoveAll(), S_OK);
}

TEST(List, PositionZeroAndNullAreMisuse) {
  auto coll = MakeColl("a");
  ITestElement* a = coll->GetHead();
  LONGLONG none = 0;
  EXPECT_EQ(Thrown([&] { coll->GetNext(none); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->GetPrev(none); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->GetAt(0); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->SetAt(0, a); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->MoveToHead(0); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { coll->MoveToTail(0); }), E_FAIL);
  const struct {
    const char* call;
    HRESULT result;
  } refused[] = {{"RemoveAt", coll->RemoveAt(0)},
                 {"SetAt", coll->SetAt(coll->GetHeadPosition(), nullptr)},
                 {"InsertAfter null", coll->InsertAfter(nullptr, &none)},
                 {"InsertBefore null", coll->InsertBefore(nullptr, &none)},
                 {"InsertAfter", coll->InsertAfter(a, nullptr)},
                 {"InsertBefore", coll->InsertBefore(a, nullptr)},
                 {"RemoveHead", coll->RemoveHead(nullptr)},
                 {"RemoveTail", coll->RemoveTail(nullptr)},
                 {"RemoveItem", coll->RemoveItem(nullptr)},
                 {"AddHeadColl", coll->AddHeadColl(nullptr)},
                 {"AddTailColl", coll->AddTailColl(nullptr)}};
  for (const auto& [call, result] : refused) EXPECT_EQ(result, E_INVALIDARG) << call;
  EXPECT_EQ(coll->MovePrev(nullptr), E_FAIL);
  EXPECT_EQ(coll->FindIndex(1), 0);
  coll->AddTail(nullptr);
  ExpectNames(*coll, "a");
}

TEST(List, AnObjectWithoutTheInterfaceBecomesANullElement) {
  auto coll = MakeColl("a");
  EXPECT_FALSE(coll->Has(nullptr));
  coll->AddTail(zdm::MakeObject<IZObject, Stranger>());
  coll->AddHead(zdm::MakeObject<IZObject, Stranger>());
  EXPECT_EQ(NamesIn(*coll), "- a -");
  EXPECT_TRUE(coll->Has(nullptr));
  EXPECT_EQ(coll->Find(nullptr, 0), 0);
}

TEST(List, RemovedElementsComeWithTheListsReference) {
  const int before = Element::alive;
  auto coll = MakeColl("a b c");
  ITestElement* out = nullptr;
  ASSERT_EQ(coll->RemoveHead(&out), S_OK);
  EXPECT_EQ(out->Name(), "a");
  EXPECT_EQ(out->Release(), 0u);
  ASSERT_EQ(coll->RemoveTail(&out), S_OK);
  EXPECT_EQ(out->Name(), "c");
  EXPECT_EQ(out->Release(), 0u);
  coll->RemoveHeadNoReturn();
  EXPECT_EQ(Element::alive, before);
  EXPECT_TRUE(coll->IsEmpty());
  coll->AddTail(zdm::MakeObject<ITestElement, Element>("d"));
  ExpectNames(*coll, "d");
}

TEST(List, InsertsBesideAPositionOrAtTheEnd) {
  auto coll = MakeColl("b d");
  auto insert = [&](bool after, const char* name, LONGLONG pos) {
    auto element = zdm::MakeObject<ITestElement, Element>(name);
    EXPECT_EQ(after ? coll->InsertAfter(element, &pos) : coll->InsertBefore(element, &pos), S_OK);
    EXPECT_EQ(coll->GetAt(pos), element.Get());
    EXPECT_EQ(element->GetReferenceCount(), 2u);
  };
  insert(true, "c", PositionOf(*coll, "b"));
  insert(false, "x", PositionOf(*coll, "b"));
  insert(true, "e", 0);
  insert(false, "a", 0);
  ExpectNames(*coll, "a x b c d e");
}

TEST(List, FindLooksOnlyBehindTheStart) {
  auto coll = MakeColl("a b");
  ITestElement* a = coll->GetHead();
  coll->AddTail(a);
  const LONGLONG first = coll->Find(a, 0);
  EXPECT_EQ(first, coll->GetHeadPosition());
  const LONGLONG second = coll->Find(a, first);
  EXPECT_EQ(second, coll->GetTailPosition());
  EXPECT_EQ(coll->Find(a, second), 0);
  EXPECT_EQ(coll->RemoveItem(a), S_OK);  // only the first
  ExpectNames(*coll, "b a");
  Element other("b");
  EXPECT_FALSE(coll->Has(&other));
  EXPECT_EQ(coll->RemoveItem(&other), S_OK);
}

TEST(List, SetAtReplacesAndReleases) {
  const int before = Element::alive;
  auto coll = MakeColl("a b");
  auto c = zdm::MakeObject<ITestElement, Element>("c");
  const LONGLONG pos = coll->GetHeadPosition();
  EXPECT_EQ(coll->SetAt(pos, c), S_OK);
  EXPECT_EQ(coll->SetAt(pos, c), S_OK);
  EXPECT_EQ(c->GetReferenceCount(), 2u);
  EXPECT_EQ(Element::alive, before + 2);
  ExpectNames(*coll, "c b");
}

TEST(List, MovesElementsByOnePlace) {
  auto coll = MakeColl("b a c");
  EXPECT_EQ(coll->MoveNext(coll->GetHead()), S_OK);
  ExpectNames(*coll, "a b c");
  EXPECT_EQ(coll->MovePrev(coll->GetTail()), S_OK);
  ExpectNames(*coll, "a c b");
  EXPECT_EQ(coll->MovePrev(coll->GetHead()), E_FAIL);
  EXPECT_EQ(coll->MoveNext(coll->GetTail()), E_FAIL);
  Element absent("z");
  EXPECT_EQ(coll->MovePrev(&absent), E_FAIL);
  EXPECT_EQ(coll->MoveNext(&absent), E_FAIL);
  ExpectNames(*coll, "a c b");
}

TEST(List, MovesTheOccurrenceNearestToWhereItSearchesFrom) {
  auto coll = MakeColl("a b c");
  ITestElement* b = coll->GetAt(coll->FindIndex(1));
  coll->AddTail(b);
  coll->MovePrev(b);  // from the tail
  ExpectNames(*coll, "a b b c");
  auto other = MakeColl("a c");
  other->AddHead(b);
  other->AddTail(b);
  other->AddTail(coll->GetTail());
  other->MoveNext(b);  // from the head
  ExpectNames(*other, "a b c b c");
}

TEST(List, AppendsOtherCollectionsInTheirOrderAndItselfNotAtAll) {
  auto coll = MakeColl("x");
  auto other = MakeColl("a b");
  EXPECT_EQ(coll->AddHeadColl(other), S_OK);
  EXPECT_EQ(coll->AddTailColl(other), S_OK);
  ExpectNames(*coll, "a b x a b");
  EXPECT_EQ(other->GetHead()->GetReferenceCount(), 3u);
  EXPECT_EQ(coll->AddHeadColl(coll), S_OK);
  EXPECT_EQ(coll->AddTailColl(coll), S_OK);
  ExpectNames(*coll, "a b x a b");

  CZList<ITestElement> list;
  CZList<ITestElement> source;
  source.AddTail(other->GetHead());
  list.AddTailList(source);
  list.AddTailList(list);
  list.AddHeadList(&list);
  EXPECT_EQ(list.GetCount(), 1u);
  source.AddHead();
  list.AddHeadList(&source);
  EXPECT_EQ(list.GetHead().Get(), nullptr);
  EXPECT_EQ(list.GetCount(), 3u);
  EXPECT_EQ(Thrown([&] { list.CZAtlList::AddTailList(nullptr); }), E_FAIL);
  EXPECT_EQ(Thrown([&] { list.AddHeadList(nullptr); }), E_FAIL);
}

TEST(List, SurvivesAnElementThatChangesItWhileBeingReleased) {
  const struct {
    void (*deed)(ITestColl*);
    const char* left;
  } kCases[] = {
      {[](ITestColl* coll) { coll->RemoveAll(); }, ""},
      {[](ITestColl* coll) { coll->AddTail(zdm::MakeObject<ITestElement, Element>("n")); },
       "a b n"},
      {[](ITestColl* coll) { coll->RemoveTailNoReturn(); }, "a"},
  };
  for (const auto& row : kCases) {
    auto coll = MakeColl("a");
    coll->AddTail(zdm::Attached<ITestElement>(new Meddler(coll, row.deed)));
    coll->AddTail(zdm::MakeObject<ITestElement, Element>("b"));
    coll->RemoveAt(coll->FindIndex(1));
    EXPECT_EQ(NamesIn(*coll), row.left);
  }
  auto alone = MakeColl();
  for (bool destroy : {false, true}) {
    alone->AddTail(zdm::Attached<ITestElement>(new Meddler(alone, kCases[0].deed)));
    destroy ? alone.Reset() : void(alone->RemoveAll());
  }
}

TEST(List, IsWholeWhileAnElementIsBeingReleased) {
  auto coll = MakeColl();
  coll->AddTail(zdm::Attached<ITestElement>(new Meddler(coll, [](ITestColl* list) {
    EXPECT_EQ(list->GetHead(), nullptr);
    EXPECT_EQ(list->GetTail(), nullptr);
    EXPECT_EQ(list->GetCount(), 0);
    EXPECT_TRUE(list->IsEmpty());
    EXPECT_EQ(list->GetHeadPosition(), 0);
    EXPECT_EQ(list->FindIndex(0), 0);
  })));
  coll->RemoveHeadNoReturn();
}

TEST(List, ReusesNodesAndGivesItsBlocksBackWhenItBecomesEmpty) {
  auto coll = MakeColl("a b");
  const LONGLONG first = coll->GetHeadPosition();
  coll->RemoveHeadNoReturn();
  coll->AddTail(zdm::MakeObject<ITestElement, Element>("c"));
  EXPECT_EQ(coll->GetTailPosition(), first);
  ExpectHeld(first, true);
  coll->RemoveHeadNoReturn();
  coll->RemoveHeadNoReturn();
  ExpectHeld(first, false);
  coll->AddTail(zdm::MakeObject<ITestElement, Element>("d"));
  ExpectNames(*coll, "d");
}

// A few elements, where every step is at an end or beside one, then many.
TEST(List, KeepsOrderAndPositionsThroughRandomOperations) {
  std::mt19937 random(20);
  const int before = Element::alive;
  {
    auto coll = MakeColl();
    std::vector<LONGLONG> model;  // positions in list order
    std::map<LONGLONG, ITestElement*> elements;
    const auto expectModel = [&] {
      std::vector<LONGLONG> walked;
      for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
        walked.push_back(pos);
        EXPECT_EQ(coll->GetNext(pos), elements[walked.back()]);
      }
      EXPECT_EQ(walked, model);
      std::vector<LONGLONG> backwards;
      for (LONGLONG pos = coll->GetTailPosition(); pos != 0; coll->GetPrev(pos)) {
        backwards.push_back(pos);
      }
      EXPECT_TRUE(std::equal(model.rbegin(), model.rend(), backwards.begin(), backwards.end()));
      EXPECT_EQ(coll->GetCount(), static_cast<LONG>(model.size()));
    };
    for (int step = 0; step < 20000; ++step) {
      const auto place = [&](std::size_t i) {
        return model.begin() + static_cast<std::ptrdiff_t>(i);
      };
      const auto operation = random() % 6;
      const bool isFull = step < 10000 && model.size() == 6;
      const std::size_t i = model.empty() ? 0 : random() % model.size();
      if (model.empty() || (operation < 2 && !isFull)) {
        LONGLONG pos = model.empty() ? 0 : model[i];
        const auto element = zdm::MakeObject<ITestElement, Element>("e");
        coll->InsertBefore(element, &pos);
        model.insert(place(i), pos);
        elements[pos] = element;
      } else if (operation <= 2) {
        coll->RemoveAt(model[i]);
        model.erase(place(i));
      } else if (operation == 3) {
        const std::size_t j = random() % model.size();
        coll->SwapElements(model[i], model[j]);
        std::swap(model[i], model[j]);
      } else {
        const LONGLONG pos = model[i];
        operation == 4 ? coll->MoveToHead(pos) : coll->MoveToTail(pos);
        model.erase(place(i));
        model.insert(operation == 4 ? model.begin() : model.end(), pos);
      }
      if (step < 10000) expectModel();
      ASSERT_FALSE(HasFailure()) << step;
    }
    expectModel();
  }
  EXPECT_EQ(Element::alive, before);
}

}  // namespace
