// What the classes of drawing objects have in common, over an object or a manager: their groups,
// their category, which objects count as the same. An object without a name of its own shows the
// type of its record as its name, and a layer the name of its category. Base is
// NamedObject<IZDMObject> or an IZDMObjMgrImpl.
#pragma once

#include "document/Categorize.h"
#include "document/Counterpart.h"
#include "drawing/ClassTable.h"
#include "drawing/DrawingPart.h"
#include "platform/ole/Bstr.h"
#include "platform/system/CodePage.h"
#include "zdm/model/IZDMObjMgrImpl.h"
#include "zdm/relations/IZReltnColl.h"

template <class Base>
class DrawingObject : public Base, public zdm::DrawingPart {
 public:
  using Base::CopyFrom;
  using Base::JudgeSame;

  void GetName(BSTR* name) override {
    zdm::Bstr own;
    Base::GetName(own.Out());
    IZCategory* layer = own.IsEmpty() && Type() == "LAYER" ? GetCategory() : nullptr;
    if (layer != nullptr) layer->GetName(own.Out());
    if (own.IsEmpty()) own = zdm::Bstr(zdm::FromCodePage(Type(), zdm::kLatin1CodePage));
    *name = own.Detach();
  }
  IZCategory* GetCategory() override {
    IZCategoryReltn* relation = zdm::GetCategoryReltn(*this);
    return relation != nullptr ? relation->GetCategory() : nullptr;
  }
  /// Of another object of a drawing also the groups.
  void CopyFrom(IZDMObject* source, LONG mode) override {
    if (source == nullptr || source == static_cast<IZDMObject*>(this)) return;
    Base::CopyFrom(source, mode);
    if (const zdm::DrawingPart* part = zdm::PartOf(source)) DrawingPart::operator=(*part);
  }
  /// Inside one document the object itself; between two documents an object of the same class and
  /// the same ID.
  bool JudgeSame(IZDMObject* other) override {
    return other == static_cast<IZDMObject*>(this) ||
           (other != nullptr && zdm::AreCounterparts(*this, *other));
  }

  void SaveOwnData(IZStream* stream, IZDatabase* database) override {
    Base::SaveOwnData(stream, database);
    SavePart(stream);
  }
  void LoadOwnData(IZStream* stream, IZDatabase* database) override {
    Base::LoadOwnData(stream, database);
    LoadPart(stream);
  }
};
