// What a relation collection offers, hands on, compares and copies.
#include "platform/geometry/SubID.h"
#include "platform/ole/CAtlException.h"
#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

class GiContext {};

namespace {

using namespace zdm::test;

/// Does something to the collection when it is shown b, and then notes what it was shown.
struct Meddler : ZReltnVisitor<IZReltnVisitor> {
  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject*, IZDMObject*, IZRelation* reltn) override {
    if (reltn->GetReltnTag() == 'b') deed(reltn);
    letters += static_cast<char>(reltn->GetReltnTag());
    return false;
  }

  std::function<void(IZRelation*)> deed;
  std::string letters;
};

Shape* AddShape(IZReltnColl& coll) {
  auto* shape = new Shape;
  coll.AddTail(shape);
  shape->Release();
  return shape;
}

TEST(ReltnColl, HasNoStatusOfItsOwn) {
  const auto coll = MakeReltns("a");
  coll->SetReltnTag(5);
  coll->SetReltnDiffusible(true);
  EXPECT_EQ(coll->GetReltnStatus(), 0);
  EXPECT_EQ(coll->GetReltnTag(), -1);
  EXPECT_FALSE(coll->JudgeReltnStatus(0));
  EXPECT_FALSE(coll->IsReltnDiffusible());
  EXPECT_TRUE(coll->IsValid());
  EXPECT_EQ(coll->Clone(), nullptr);
}

TEST(ReltnColl, MayChangeWhileItIsShown) {
  auto coll = MakeReltns("");
  const struct {
    const char* what;
    std::function<void(IZRelation*)> deed;
    const char* shown;
    const char* left;
  } rows[] = {
      {"the element shown goes", [&](IZRelation* b) { coll->RemoveItem(b); }, "abcd", "acd"},
      {"the next one goes", [&](IZRelation*) { coll->RemoveAt(coll->FindIndex(2)); }, "abd", "abd"},
      {"both go", [&](IZRelation* b) { coll->RemoveItem(b), coll->RemoveAt(coll->FindIndex(1)); },
       "abd", "ad"},
      {"the former one goes", [&](IZRelation*) { coll->RemoveHeadNoReturn(); }, "abcd", "bcd"},
      {"all go", [&](IZRelation*) { coll->RemoveAll(); }, "ab", ""},
      {"all go and one comes", [&](IZRelation*) { coll->RemoveAll(), coll->AddTail(Valid('x')); },
       "ab", "x"},
      {"another takes its place", [&](IZRelation*) { coll->SetAt(coll->FindIndex(1), Valid('x')); },
       "abcd", "axcd"},
      {"one comes", [&](IZRelation*) { coll->AddTail(Valid('x')); }, "abcd", "abcdx"},
      {"it becomes the last", [&](IZRelation*) { coll->MoveToTail(coll->FindIndex(1)); }, "abcd",
       "acdb"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    coll = MakeReltns("abcd");
    Meddler visitor;
    visitor.deed = [&](IZRelation* b) {
      if (visitor.letters == "a") row.deed(b);
    };
    EXPECT_FALSE(coll->Accept(nullptr, nullptr, &visitor));
    EXPECT_EQ(visitor.letters, row.shown);
    EXPECT_EQ(LettersIn(*coll), row.left);
  }
}

TEST(ReltnColl, MayEndWhileItIsShown) {
  const int before = PlainReltn::alive;
  auto coll = MakeReltns("abcd");
  Meddler visitor;
  Meddler inner;
  inner.deed = [&](IZRelation*) { coll.Reset(); };
  visitor.deed = [&](IZRelation*) { coll->Accept(nullptr, nullptr, &inner); };
  EXPECT_FALSE(coll->Accept(nullptr, nullptr, &visitor));
  EXPECT_EQ(visitor.letters + inner.letters, "abab");
  EXPECT_EQ(PlainReltn::alive, before);
}

TEST(ReltnColl, IsWholeAfterAVisitorThrew) {
  const auto coll = MakeReltns("abc");
  Meddler visitor;
  visitor.deed = [](IZRelation*) { throw CAtlException(E_FAIL); };
  EXPECT_THROW(coll->Accept(nullptr, nullptr, &visitor), CAtlException);
  coll->RemoveAt(coll->FindIndex(2));
  EXPECT_EQ(LettersIn(*coll), "ab");
}

TEST(ReltnColl, ElementMayLeaveInItsOwnUpdate) {
  struct Leaver : Shape {
    explicit Leaver(IZReltnColl* coll) : coll_(coll) {}
    void Update(IZUpdater*, GiContext*) override {
      coll_->RemoveItem(this);
      EXPECT_EQ(std::exchange(coll_, nullptr)->GetCount(), 1);
    }
    IZReltnColl* coll_;
  };
  const auto coll = MakeReltns("");
  coll->AddTail(zdm::MakeObject<IZRelation, Leaver>(coll.Get()));
  const Shape* other = AddShape(*coll);
  coll->Update(nullptr, nullptr);
  EXPECT_EQ(other->updates, 1);
}

TEST(ReltnColl, FindsElementsByStatus) {
  const auto coll = MakeReltns("aB-cde");
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    IZRelation* element = coll->GetNext(pos);
    if (element != nullptr && element->GetReltnTag() != 'd') element->SetReltnStatus(0x1);
  }
  const struct {
    LONG mask;
    const char* found;
  } rows[] = {
      {0, "aBcde"}, {0x1, "aBce"}, {ZRS_VALID, "acde"}, {ZRS_VALID | 0x1, "ace"}, {0x2, ""}};
  for (const auto& row : rows) {
    const auto onwards = MakeReltns("");
    const auto backwards = MakeReltns("");
    for (LONGLONG pos = coll->GetHeadStatusPosition(row.mask); pos != 0;) {
      onwards->AddTail(coll->GetStatusNext(row.mask, pos));
    }
    for (LONGLONG pos = coll->GetTailStatusPosition(row.mask); pos != 0;) {
      backwards->AddHead(coll->GetStatusPrev(row.mask, pos));
    }
    EXPECT_EQ(LettersIn(*onwards), row.found);
    EXPECT_EQ(LettersIn(*backwards), row.found);
  }
}

TEST(ReltnColl, StatusStepsHandOutTheElementThatStandsThere) {
  const auto coll = MakeReltns("AbCd");
  LONGLONG pos = coll->GetHeadPosition();
  EXPECT_EQ(coll->GetValidNext(pos)->GetReltnTag(), 'a') << "whether it passes or not";
  EXPECT_EQ(coll->GetValidNext(pos)->GetReltnTag(), 'b');
  EXPECT_EQ(coll->GetValidNext(pos)->GetReltnTag(), 'd');
  EXPECT_EQ(pos, 0);
  EXPECT_THROW(coll->GetValidNext(pos), CAtlException);
  EXPECT_THROW(coll->GetValidPrev(pos), CAtlException);
  pos = coll->GetValidTailPosition();
  EXPECT_EQ(coll->GetValidPrev(pos)->GetReltnTag(), 'd');
  EXPECT_EQ(coll->GetAt(pos)->GetReltnTag(), 'b');
}

TEST(ReltnColl, HandsStatusAndDisplayOnToEveryElement) {
  const auto coll = MakeReltns("aB-");
  coll->AddTail(MakeReltns("n"));
  coll->ClearReltnStatus(ZRS_VALID);
  EXPECT_EQ(LettersIn(*coll), "AB-?");
  EXPECT_EQ(LettersIn(*zdm::ViewAs<IZReltnColl>(coll->GetTail())), "N");
  coll->SetReltnStatus(ZRS_VALID);
  EXPECT_EQ(LettersIn(*coll), "ab-?");
  Shape* first = AddShape(*coll);
  Shape* second = AddShape(*coll);
  first->ClearReltnStatus(ZRS_VALID);
  coll->SetVisibility(zdm::kCategoryDraw, false, nullptr);
  coll->Update(nullptr, nullptr);
  coll->AssertValid(nullptr);
  for (const Shape* shape : {first, second}) {
    EXPECT_FALSE(shape->visible);
    EXPECT_EQ(shape->updates, 1);
    EXPECT_EQ(shape->validations, 1);
  }
}

TEST(ReltnColl, AnswersTheFirstDisplayAttribute) {
  const auto coll = MakeReltns("-a");
  AddShape(*coll);
  EXPECT_EQ(coll->GetDispAttrib(), nullptr);
  IZRelationImpl<IZDispAttrib> first;
  IZRelationImpl<IZDispAttrib> second;
  AddShape(*coll)->attribute = &first;
  AddShape(*coll)->attribute = &second;
  EXPECT_EQ(coll->GetDispAttrib(), &first);
}

TEST(ReltnColl, UnitesTheBoxesOfAllElements) {
  const auto coll = MakeReltns("-");
  double box[6] = {};
  coll->GetBox(box, nullptr, nullptr);
  EXPECT_EQ(std::vector<double>(box, box + 6),
            (std::vector<double>{1e20, 1e20, 1e20, -1e20, -1e20, -1e20}));

  Shape* first = AddShape(*coll);
  Shape* second = AddShape(*coll);
  second->ClearReltnStatus(ZRS_VALID);
  second->box[0] = -5;
  second->box[5] = 9;
  SubID sub;
  first->askedSub = &sub;
  GiContext context;
  coll->GetBox(box, &sub, &context);
  EXPECT_EQ(std::vector<double>(box, box + 6), (std::vector<double>{-5, 0, 0, 1, 1, 9}));
  EXPECT_EQ(first->askedSub, nullptr);
  EXPECT_EQ(first->askedContext, &context);

  coll->AddTail(Valid('a'));  // shows nothing, but its maxima are 1e20
  coll->GetBox(box, nullptr, nullptr);
  EXPECT_EQ(std::vector<double>(box, box + 6), (std::vector<double>{-5, 0, 0, 1e20, 1e20, 1e20}));
  EXPECT_EQ(coll->GetSizeX(nullptr, nullptr), 1e20);
}

TEST(ReltnColl, IsTheSameWithTheSameValidElements) {
  OID oid(0, 0, 1, nullptr);
  // Letters from x on refer to the record, the others to nothing.
  const auto make = [&](const char* letters) {
    auto coll = MakeReltns(letters);
    for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
      auto* single = zdm::ViewAs<IZSingleReltn>(coll->GetNext(pos));
      if (single != nullptr && single->GetReltnTag() >= 'x') single->SetReltnOID(&oid);
    }
    return coll;
  };
  const struct {
    const char* left;
    const char* right;
    bool same;
  } rows[] = {{"", "", true},      {"", "AB-", true},  {"a", "", false},    {"a", "b", true},
              {"a", "-Xb", true},  {"ax", "ay", true}, {"ax", "xa", false}, {"ax", "axa", false},
              {"axX", "ax", true}, {"x", "a", false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.left) + " and " + row.right);
    EXPECT_EQ(make(row.left)->JudgeSame(make(row.right)), row.same);
    EXPECT_EQ(make(row.right)->JudgeSame(make(row.left)), row.same);
  }
  const auto coll = make("ax");
  EXPECT_TRUE(coll->JudgeSame(coll));
  EXPECT_FALSE(coll->JudgeSame(nullptr));
  EXPECT_FALSE(coll->JudgeSame(Valid('a')));
}

TEST(ReltnCollCopy, SharesOrClonesEveryElement) {
  const auto coll = MakeReltns("aB-c");
  coll->AddTail(MakeReltns("n"));
  zdm::ViewAs<IZReltnCollector>(coll)->SetReltnType(ZR_NONDIFFUSIBLE);
  ZRefPtr<IZReltnColl> shared;
  coll->Clone(shared.Out(), false);
  EXPECT_EQ(LettersIn(*shared), "aB-c?");
  EXPECT_EQ(shared->GetHead(), coll->GetHead());
  ZRefPtr<IZReltnColl> deep;
  coll->Clone(deep.Out(), true);
  EXPECT_EQ(LettersIn(*deep), "aBc") << "what cannot be cloned is left out";
  EXPECT_NE(deep->GetHead(), coll->GetHead());
  EXPECT_EQ(deep->GetHead()->GetReferenceCount(), 1u);
  EXPECT_EQ(deep->GetReferenceCount(), 1u);
  zdm::ViewAs<IZReltnCollector>(deep)->Visit(nullptr, nullptr, Valid('x'));
  EXPECT_EQ(LettersIn(*deep), "aBc") << "the copy selects ZR_ALL";
}

TEST(ReltnCollCopy, TakesClonesInPlaceOfItsElements) {
  const int before = PlainReltn::alive;
  {
    const auto coll = MakeReltns("ab");
    const auto source = MakeReltns("cD-");
    coll->CopyFrom(source);
    EXPECT_EQ(LettersIn(*coll), "cD");
    EXPECT_NE(coll->GetHead(), source->GetHead());
    auto* whole = new CZReltnColl;
    whole->CopyFrom(coll);
    ZRefPtr<IZRelation> copy;
    whole->Clone(copy.Out());
    zdm::ViewAs<IZReltnColl>(whole)->Release();
    EXPECT_EQ(LettersIn(*zdm::ViewAs<IZReltnColl>(copy)), "cD");
    EXPECT_EQ(copy->GetReferenceCount(), 1u);
  }
  EXPECT_EQ(PlainReltn::alive, before);
}

TEST(ReltnCollCopy, NothingChangesWithoutAnotherCollectionWhichMayBeItsOwnElement) {
  const auto coll = MakeReltns("aB");
  coll->CopyFrom(coll);
  coll->CopyFrom(nullptr);
  coll->CopyFrom(Valid('x'));
  EXPECT_EQ(LettersIn(*coll), "aB");
  coll->AddTail(MakeReltns("xy"));
  coll->CopyFrom(coll->GetTail());
  EXPECT_EQ(LettersIn(*coll), "xy");
}

TEST(ReltnCollCopy, ElementThatThrowsLeavesTheFormerOnes) {
  struct Uncopyable : Shape {
    IZObject* Clone() override { throw CAtlException(E_OUTOFMEMORY); }
  };
  const auto source = MakeReltns("xy");
  source->AddTail(zdm::MakeObject<IZRelation, Uncopyable>());
  const auto coll = MakeReltns("ab");
  EXPECT_THROW(coll->CopyFrom(source), CAtlException);
  EXPECT_EQ(LettersIn(*coll), "ab");
  ZRefPtr<IZReltnColl> copy;
  EXPECT_THROW(source->Clone(copy.Out(), true), CAtlException);
  EXPECT_EQ(copy, nullptr);
}

}  // namespace
