// Copies and clones of data-model objects, and the order in which one gives up what it holds.
#include "platform/core/ZCore.h"
#include "platform/ole/CAtlException.h"
#include "tests/model/ModelSupport.h"

ZDM_TEST_CLASS(Tree, IZObject, IZTreeData)

namespace zdm::test {

/// Tree data that writes down when it goes.
class Tree : public IZObjectImpl<IZTreeData> {
  ZDM_OBJECT(Tree)
 public:
  explicit Tree(std::string& log) : log_(log) {}
  ~Tree() override { log_ += "tree "; }

 private:
  std::string& log_;
};

/// A parameter array that writes down when it goes, and cannot be copied.
class LastArray : public CZParameterArray {
 public:
  using CZParameterArray::Clone;

  explicit LastArray(std::string& log) : log_(log) {}
  ~LastArray() override { log_ += "parameters "; }
  void Clone(IZParameterArray**) override { throw CAtlException(E_OUTOFMEMORY); }

 private:
  std::string& log_;
};

/// A relation that writes down when it goes.
class LastReltn : public CZPlainSingleReltn {
 public:
  explicit LastReltn(std::string& log) : log_(log) {}
  ~LastReltn() override { log_ += "relations "; }

 private:
  std::string& log_;
};

ZDM_OBJECT_BODY(Tree)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

constexpr GUID kKey = {1, 0, 0, {}};

TEST_F(DMObject, CloneCarriesIDOwnerAndCopiesOfWhatItHolds) {
  auto target = db.MakeObject();
  auto object = db.MakeObject(OLESTR("wall"), 20);
  object->SetOptionAllowed(5);
  object->SetStatus(40);
  object->AddRelation(RelationTo(target));
  object->SetExtData(kKey, MakeItem(OLESTR("item")));
  const auto array = ParametersTo(target);
  object->SetParameterArray(array, false);

  IZObject* bare = object->Clone();
  EXPECT_EQ(bare->GetReferenceCount(), 0u);
  const ZRefPtr<IZDMObject> clone = bare;
  EXPECT_NE(clone->GetOID(), object->GetOID());
  EXPECT_EQ(clone->GetOID()->Object, clone.Get());
  EXPECT_EQ(clone->GetID(), 20u);
  EXPECT_EQ(clone->GetOwner(), static_cast<IZDMObject*>(&db));
  EXPECT_EQ(clone->GetOID()->Status, std::bitset<64>().set(2).set(12));
  EXPECT_EQ(clone->GetOptionAllowed(), 5);
  EXPECT_EQ(NameOf(*clone), "wall");
  EXPECT_EQ(IDsOffered(*clone), "-1 1 1 ");
  EXPECT_NE(clone->GetReltnColl()->GetHead(), object->GetReltnColl()->GetHead());
  EXPECT_NE(clone->GetExtData(kKey, OLESTR("item")), nullptr);
  EXPECT_NE(clone->GetExtData(kKey, OLESTR("item")), object->GetExtData(kKey, OLESTR("item")));
  ASSERT_NE(clone->PeekParameterArray(), nullptr);
  EXPECT_EQ(clone->PeekParameterArray()->GetOwner(), clone.Get());
  EXPECT_EQ(array->GetOwner(), object.Get());
  // The table still lists the original alone.
  EXPECT_EQ(db.GetOIDByID(20)->Object, object.Get());
}

TEST_F(DMObject, CopyTakesAwayWhatTheSourceLacks) {
  auto source = MakePlain();
  auto object = db.MakeObject();
  object->AddRelation(RelationTo(source));
  object->SetParameterArray(ParametersTo(source), false);
  object->SetExtData(kKey, MakeItem(OLESTR("item")));
  object->CopyFrom(source.Get());
  EXPECT_TRUE(object->IsObjectValid());  // an invalid source does not take it away
  EXPECT_EQ(object->GetReltnColl(), nullptr);
  EXPECT_EQ(object->PeekParameterArray(), nullptr);
  EXPECT_NE(object->GetExtData(kKey, OLESTR("item")), nullptr);
  EXPECT_EQ(object->GetID(), 1u);
}

TEST_F(DMObject, CopyFromItselfOrNothingLosesNothing) {
  auto object = db.MakeObject(OLESTR("wall"));
  object->AddRelation(RelationTo(object));
  IZReltnColl* relations = object->GetReltnColl();
  object->CopyFrom(object.Get(), zdm::kCopyMode);
  object->CopyFrom(static_cast<IZDMObject*>(nullptr), zdm::kCopyMode);
  object->CopyFrom(static_cast<IZRelation*>(nullptr));
  object->CopyFrom(RelationTo(object).Get());
  EXPECT_EQ(object->GetReltnColl(), relations);
  EXPECT_EQ(relations->GetCount(), 1);
  EXPECT_EQ(NameOf(*object), "wall");
}

// The source is an element of the relations that the copy lets go of, and held by nothing else.
TEST_F(DMObject, CopiesFromAnObjectAmongItsOwnRelations) {
  auto object = db.MakeObject();
  auto source = db.MakeObject(OLESTR("wall"));
  source->AddRelation(RelationTo(object));
  source->SetOptionAllowed(5);
  object->AddRelation(source);
  IZDMObject* last = source;
  source = nullptr;
  object->CopyFrom(last, zdm::kCopyMode);
  EXPECT_EQ(NameOf(*object), "wall");
  EXPECT_EQ(object->GetOptionAllowed(), 5);
  EXPECT_EQ(IDsOffered(*object), "-1 1 ");
}

TEST_F(DMObject, KeepsWhatItHoldsWhenTheSourceCannotBeCopied) {
  std::string log;
  auto source = db.MakeObject();
  source->SetOptionAllowed(5);
  source->SetParameterArray(zdm::MakeObject<IZParameterArray, LastArray>(log), false);
  auto object = MakePlain();
  object->AddRelation(RelationTo(source));
  EXPECT_THROW(object->CopyFrom(source, zdm::kCopyMode), CAtlException);
  EXPECT_FALSE(object->IsObjectValid());
  EXPECT_NE(object->GetOptionAllowed(), 5);
  EXPECT_EQ(object->GetReltnColl()->GetCount(), 1);
  ZRefPtr<IZDMObject> clone;
  EXPECT_THROW(source->CloneObject(clone.Out()), CAtlException);
  EXPECT_EQ(clone, nullptr);
}

TEST_F(DMObject, GivesUpItsRecordThenTreeDataParametersRelations) {
  std::string log;
  auto object = db.MakeObject();
  const OID* record = object->GetOID();
  object->SetTreeData(zdm::MakeObject<IZObject, Tree>(log));
  object->SetTreeData(zdm::MakeObject<IZObject, Tree>(log));
  EXPECT_EQ(log, "tree ");
  ZRefPtr<IZDMObject> copy;
  object->CloneObject(copy.Out());
  EXPECT_EQ(copy->GetTreeData(), nullptr);
  object->AddRelation(zdm::MakeObject<IZObject, LastReltn>(log));
  object->SetParameterArray(zdm::MakeObject<IZParameterArray, LastArray>(log), false);
  object = nullptr;
  EXPECT_EQ(record->Object, nullptr);
  EXPECT_EQ(log, "tree tree parameters relations ");
}

TEST_F(DMObject, CannotBeClonedWhereTheFactoryDoesNotKnowItsClass) {
  Stray object;
  EXPECT_EQ(object.Clone(), nullptr);
  IZDMObject* copy = &object;
  object.CloneObject(&copy);
  EXPECT_EQ(copy, nullptr);
}

TEST_F(DMObject, AnnouncesClonesToTheFactory) {
  CZObject* announced = nullptr;
  auto former = ZCore::GetZFactory()->SetCreateReactor([&](CZObject* object, const GUID& classId) {
    announced = object;
    EXPECT_EQ(classId, CZDMPlainObject::kClassID);
  });
  auto object = MakePlain();
  ZRefPtr<IZDMObject> copy;
  object->CloneObject(copy.Out());
  ZCore::GetZFactory()->SetCreateReactor(former);
  EXPECT_EQ(announced, static_cast<CZObject*>(copy.Get()));
  EXPECT_EQ(copy->GetReferenceCount(), 1u);
}

}  // namespace
