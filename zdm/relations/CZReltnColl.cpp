#include "zdm/relations/CZReltnColl.h"

#include "platform/geometry/GeBox.h"
#include "zdm/relations/ReltnSelector.h"

ZDM_OBJECT_BODY(CZReltnColl)

// Here, so that an element which looks at the collection as it goes finds it whole.
CZReltnColl::~CZReltnColl() { List::RemoveAll(); }

void CZReltnColl::GetBox(double* box, SubID*, GiContext* context) {
  GeBox bounds;
  ForEach([&](IZRelation& element) {
    GeBox part;
    element.GetGeBox(&part, nullptr, context);
    bounds.UnionBoxToSelf(part);
  });
  bounds.GetBox(box);
}

void CZReltnColl::SetVisibility(eZGiDraw draw, bool visible, GiContext* context) {
  ForEach([&](IZRelation& element) { element.SetVisibility(draw, visible, context); });
}

IZDispAttrib* CZReltnColl::GetDispAttrib() {
  IZDispAttrib* attribute = nullptr;
  AnyOf([&](IZRelation& element) {
    attribute = element.GetDispAttrib();
    return attribute != nullptr;
  });
  return attribute;
}

void CZReltnColl::CopyFrom(IZRelation* other) {
  // Held, as it may be one of the elements that go.
  const ZRefPtr<IZReltnColl> source = zdm::ViewAs<IZReltnColl>(other);
  if (source == nullptr || source == static_cast<IZReltnColl*>(this)) return;
  List copies;
  for (LONGLONG pos = source->GetHeadPosition(); pos != 0;) {
    const auto copy = zdm::CloneAs<IZRelation>(source->GetNext(pos));
    if (copy != nullptr) copies.AddTail(copy);
  }
  List::RemoveAll();
  List::AddTailList(copies);
}

void CZReltnColl::Update(IZUpdater* updater, GiContext* context) {
  ForEach([&](IZRelation& element) { element.Update(updater, context); });
}

void CZReltnColl::SetReltnStatus(LONG bits) {
  ForEach([&](IZRelation& element) { element.SetReltnStatus(bits); });
}

void CZReltnColl::ClearReltnStatus(LONG bits) {
  ForEach([&](IZRelation& element) { element.ClearReltnStatus(bits); });
}

void CZReltnColl::AssertValid(IZDatabase* database) {
  ForEach([&](IZRelation& element) { element.AssertValid(database); });
}

bool CZReltnColl::JudgeSame(IZRelation* other) {
  auto* coll = zdm::ViewAs<IZReltnColl>(other);
  if (coll == nullptr) return false;
  LONGLONG mine = GetValidHeadPosition();
  LONGLONG theirs = coll->GetValidHeadPosition();
  while (mine != 0 && theirs != 0) {
    if (!GetValidNext(mine)->JudgeSame(coll->GetValidNext(theirs))) return false;
  }
  return mine == theirs;
}

bool CZReltnColl::Visit(IZDMObject* root, IZDMObject* owner, IZReltnColl* coll) {
  if (coll == nullptr || coll == static_cast<IZReltnColl*>(this)) return false;
  for (LONGLONG pos = coll->GetValidHeadPosition(); pos != 0;) {
    if (Visit(root, owner, coll->GetValidNext(pos))) return true;
  }
  return false;
}

bool CZReltnColl::Visit(IZDMObject*, IZDMObject*, IZRelation* reltn) {
  if (reltn != nullptr && zdm::SelectsStrictly(selector_, *reltn)) List::AddTail(reltn);
  return false;
}

void CZReltnColl::Clone(IZRelation** out) {
  *out = nullptr;
  ZRefPtr<IZReltnColl> copy = zdm::CreateAs<IZReltnColl, CZReltnColl>();
  if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
  copy->CopyFrom(static_cast<IZReltnColl*>(this));
  *out = copy.Detach();
}
