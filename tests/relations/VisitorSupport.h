// Objects that refer to each other, for tests of visitors.
#pragma once

#include "tests/relations/ReltnSupport.h"
#include "zdm/framework/IZListImpl.h"
#include "zdm/identity/CID.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/model/IZDMObjColl.h"

#include <functional>
#include <initializer_list>

namespace zdm::test {
class Compound;
class ObjColl;
}  // namespace zdm::test

ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::Compound,
              "00000000-0000-0000-0000-000000000000", IZObject, IZRelation)
ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::ObjColl,
              "D2D24CAC-3F85-4D40-8D86-059634C6B126", IZObject, IZDMObjColl)

namespace zdm::test {

/// A relation that offers, in this order and each unless it is empty: a relation inside it, a
/// collection inside it, a reference record, a path.
class Compound : public IZRelationImpl<IZRelation> {
  ZDM_OBJECT(Compound)
 public:
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;

  ZRefPtr<IZRelation> inner;
  ZRefPtr<IZReltnColl> innerColl;
  UID uid;
  PID* path = nullptr;             // borrowed
  std::function<void()> onAccept;  // called first
};

/// The operations that visitors use, of a collection of objects.
class ObjColl : public IZListImpl<IZDMObjColl, IZDMObject> {
  ZDM_OBJECT(ObjColl)
 public:
  LONGLONG GetHeadStatusPosition(LONG) override { return 0; }
  LONGLONG GetTailStatusPosition(LONG) override { return 0; }
  IZDMObject* GetStatusNext(LONG, LONGLONG&) override { return nullptr; }
  IZDMObject* GetStatusPrev(LONG, LONGLONG&) override { return nullptr; }
  void Isolate(LONG, bool) override {}
  void SelfContained() override {}
  ULONG GetStatusCount(LONG) override { return 0; }
  void DrawStatus(LONG, IZGiDevice*) override {}
  void DrawAll(IZGiDevice*, GiContext*) override {}
  void DrawOptionAllowed(LONGLONG, IZGiDevice*) override {}
  void DrawAllEx(IZGiDevice*, GiContext*) override {}
  void GetSortedCopy(IZDMObjColl**) override {}
  LONGLONG GetValidHeadPosition() override { return 0; }
  IZDMObject* GetValidNext(LONGLONG&) override { return nullptr; }
  void ClearStatusAll(LONG) override {}
  void SetStatusAll(LONG) override {}
  void TransformAll(const GeMatrix&) override {}
  void UnionBoxes(GeBox*, GiContext*, bool) override {}
  void CloneAll(IZDMObjColl**) override {}
  bool IsSameClass() override { return true; }
  void CollectInterface(IZDMObjColl*, LONG, unsigned short) override {}
  void Collect(unsigned short, bool, IZDMObjColl**) override {}
  ULONG GetInterfaceCount(unsigned short) override { return 0; }
  IZDMObject* FindByName(const OLECHAR*) override { return nullptr; }
  IZDMObject* FindByNameStatus(const OLECHAR*, LONG) override { return nullptr; }
  void SelectInterface(unsigned short, IZDMObjColl**) override {}
  bool HasName(const OLECHAR*) override { return false; }
  void AddOwners(const std::list<OID*>&) override {}
  void AddOwnersVector(const std::vector<OID*>&) override {}
  void AddObject(IZObject*) override {}
  void AddTailUnique(IZDMObjIterator*) override {}
  void FindByID(IZDMObject*, IZDMObject**) override {}
  void SetOwnerOIDAll(OID*) override {}
  void GetObjects(std::vector<IZDMObject*>&) override {}
  void GetUniqueName(const OLECHAR*, BSTR*) override {}
  void AddLine(const XYZ&, const XYZ&) override {}
  void AddCircle(const XYZ&, const XYZ&, double) override {}
  void AddArc(const GeArc&, ULONG) override {}
  void AddArcFrom(IGeArc*) override {}
  void SetValidAll(bool) override {}
};

/// Valid objects numbered from 1, all with the options of a new object.
class Objects {
 public:
  explicit Objects(LONG count);

  IZDMObject* operator[](LONG id) const { return objects_[static_cast<std::size_t>(id - 1)]; }
  OID* Record(LONG id) const { return (*this)[id]->GetOID(); }
  LONG GetCount() const { return static_cast<LONG>(objects_.size()); }

  /// A plain relation from one to the other, held by `from`; 0 for no target.
  ZRefPtr<IZSingleReltn> Refer(LONG from, LONG to, bool diffusible = false) const;
  /// An empty compound relation held by `from`.
  ZRefPtr<IZRelation> Compose(LONG from, Compound*& compound) const;
  /// The numbers of the objects with the status bit, in order.
  std::string With(LONG bit) const;
  ZRefPtr<IZDMObjColl> Collect(std::initializer_list<LONG> ids) const;

 private:
  std::vector<ZRefPtr<IZDMObject>> objects_;
};

ZRefPtr<IZDMObjColl> NewObjColl();
/// The numbers of its objects, in order.
std::string NumbersIn(IZDMObjColl& objects);
/// A plain relation to `object`, which may be null.
ZRefPtr<IZSingleReltn> ReltnTo(IZDMObject* object);

}  // namespace zdm::test
