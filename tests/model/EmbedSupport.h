// An extension for embedded objects: a number, and one relation that it offers.
#pragma once

#include "tests/support/TestDatabase.h"
#include "zdm/host/IZDMObjExt.h"
#include "zdm/relations/IZReltnVisitor.h"

#include <string>

namespace zdm::test {
class Extension;
}

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Extension,
              "7E570000-0000-4000-8000-000000000301", IZObject, IZDMObjExt)

namespace zdm::test {

class Extension : public IZObjectImpl<IZDMObjExt> {
  ZDM_OBJECT(Extension)
 public:
  void LoadData(IZStream* stream, IZDatabase*) override { stream->Read(&number, sizeof(number)); }
  void SaveData(IZStream* stream, IZDatabase*) override { stream->Write(&number, sizeof(number)); }
  void Update(IZUpdater*, GiContext*) override { calls += "update "; }
  void AssertValid(IZDatabase*) override { calls += "validate "; }
  void CopyFrom(IZDMObjExt* source) override {
    if (source != nullptr) number = static_cast<Extension*>(source)->number;
    calls += source != nullptr ? "copy " : "copy-nothing ";
  }
  bool JudgeSame(IZDMObjExt* other) override {
    return static_cast<Extension*>(other)->number == number;
  }
  bool VisitReferences(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override {
    calls += root == owner ? "visit " : "visit-below ";
    return relation != nullptr && visitor->Visit(root, owner, relation.Get());
  }

  LONG number = 0;
  ZRefPtr<IZSingleReltn> relation;
  std::string calls;
};

}  // namespace zdm::test
