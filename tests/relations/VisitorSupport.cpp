#include "tests/relations/VisitorSupport.h"

namespace zdm::test {

ZDM_OBJECT_BODY(Compound)
ZDM_OBJECT_BODY(ObjColl)

namespace {

void Append(std::string& words, ULONG number) {
  words += (words.empty() ? "" : " ") + std::to_string(number);
}

}  // namespace

bool Compound::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  if (onAccept) onAccept();
  if (inner != nullptr && visitor->Visit(root, owner, inner)) return true;
  if (innerColl != nullptr && visitor->Visit(root, owner, innerColl.Get())) return true;
  if (uid.CID != nullptr && visitor->MapUID(root, owner, this, &uid)) return true;
  return path != nullptr && visitor->MapPID(root, owner, this, &path);
}

Objects::Objects(LONG count) {
  for (LONG id = 1; id <= count; ++id) {
    objects_.push_back(MakeObject<IZDMObject, Thing>());
    objects_.back()->SetID(static_cast<ULONG>(id));
    objects_.back()->SetObjectValid(true);
  }
}

ZRefPtr<IZSingleReltn> Objects::Refer(LONG from, LONG to, bool diffusible) const {
  auto reltn = ReltnTo(to != 0 ? (*this)[to] : nullptr);
  reltn->SetReltnDiffusible(diffusible);
  (*this)[from]->AddRelation(reltn);
  return reltn;
}

ZRefPtr<IZRelation> Objects::Compose(LONG from, Compound*& compound) const {
  compound = new Compound;
  auto reltn = Attached<IZRelation>(compound);
  (*this)[from]->AddRelation(reltn);
  return reltn;
}

std::string Objects::With(LONG bit) const {
  std::string words;
  for (const auto& object : objects_) {
    if (object->JudgeStatus(bit)) Append(words, object->GetID());
  }
  return words;
}

ZRefPtr<IZDMObjColl> Objects::Collect(std::initializer_list<LONG> ids) const {
  auto coll = NewObjColl();
  for (const LONG id : ids) coll->AddTail((*this)[id]);
  return coll;
}

ZRefPtr<IZDMObjColl> NewObjColl() { return MakeObject<IZDMObjColl, ObjColl>(); }

std::string NumbersIn(IZDMObjColl& objects) {
  std::string words;
  for (LONGLONG pos = objects.GetHeadPosition(); pos != 0;) {
    Append(words, objects.GetNext(pos)->GetID());
  }
  return words;
}

ZRefPtr<IZSingleReltn> ReltnTo(IZDMObject* object) {
  auto reltn = MakeObject<IZSingleReltn, PlainReltn>();
  reltn->SetReltnObj(object);
  return reltn;
}

}  // namespace zdm::test
