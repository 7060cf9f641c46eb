#include "document/ObjectSheet.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/IZPropertyColl.h"

namespace zdm {

namespace {

constexpr LONG kContext = 0;  // of the application; nothing here depends on it

}  // namespace

ObjectSheet::ObjectSheet(IZDMObject* object)
    : object_(object), built_(NewOf<IZPropertyGroupColl, CZPropertyGroupColl>()) {
  object_->BuildPropertyGroups(kContext, built_);
  if (IZParameterArray* array = object_->PeekParameterArray()) {
    array->BuildPropertyGroups(kContext, built_);
  }
  List(built_);
}

void ObjectSheet::List(IZPropertyGroupColl* groups) {
  for (LONGLONG pos = groups->GetHeadPosition(); pos != 0;) {
    IZPropertyGroup* const group = groups->GetNext(pos);
    if (group == nullptr) continue;
    Group& listed = groups_.emplace_back();
    group->GetName(listed.name.Out());
    IZPropertyColl* const properties = group->GetProperties();
    for (LONGLONG at = properties->GetHeadPosition(); at != 0;) {
      IZProperty* const property = properties->GetNext(at);
      if (property == nullptr) continue;
      Fill(property);
      listed.properties.push_back(property);
    }
    List(group->GetGroups());
  }
}

void ObjectSheet::Fill(IZProperty* property) const {
  property->ResetValue();
  object_->FillProperties(kContext, property);
  if (IZParameterArray* array = object_->PeekParameterArray()) {
    array->FillProperties(kContext, property);
  }
}

void ObjectSheet::Apply(IZProperty* property) const {
  object_->ApplyProperties(kContext, property, 0);
  if (IZParameterArray* array = object_->PeekParameterArray()) {
    array->ApplyProperties(kContext, property, 0);
  }
  Fill(property);
}

}  // namespace zdm
