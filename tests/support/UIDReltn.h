// A relation that refers through a UID, paths included.
#pragma once

#include "tests/support/TestClasses.h"
#include "zdm/identity/UID.h"
#include "zdm/relations/IZRelationImpl.h"
#include "zdm/relations/IZReltnVisitor.h"

namespace zdm::test {
class UIDReltn;
}

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::UIDReltn,
              "7E570000-0000-4000-8000-000000000203", IZObject, IZRelation)

namespace zdm::test {

class UIDReltn : public IZRelationImpl<IZRelation> {
  ZDM_OBJECT(UIDReltn)
 public:
  void CopyFrom(IZRelation* other) override {
    IZRelationImpl::CopyFrom(other);
    if (auto* source = dynamic_cast<UIDReltn*>(other)) uid.CopyFrom(&source->uid);
  }
  void Load(IZStream* stream, IZDatabase* database) override {
    IZRelationImpl::Load(stream, database);
    uid.Load(stream, database, true);
  }
  void Save(IZStream* stream, IZDatabase* database) override {
    IZRelationImpl::Save(stream, database);
    uid.Save(stream, database, true);
  }
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override {
    ++walks;
    return visitor->MapUID(root, owner, this, &uid);
  }

  UID uid;
  LONG walks = 0;  // into it
};

}  // namespace zdm::test
