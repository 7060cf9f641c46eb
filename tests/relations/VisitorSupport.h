// Objects that refer to each other, for tests of visitors.
#pragma once

#include "tests/relations/ReltnSupport.h"
#include "zdm/identity/CID.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/model/IZDMObjColl.h"

#include <functional>
#include <initializer_list>

ZDM_TEST_CLASS(Compound, IZObject, IZRelation)

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
