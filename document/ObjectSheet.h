// The property sheet of one object, as an application shows it: what the object itself builds, then
// the groups of its parameters, every property filled. To change a value: change the property and
// Apply it.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"

#include <vector>

struct IZDMObject;

namespace zdm {

class ObjectSheet {
 public:
  struct Group {
    Bstr name;
    std::vector<IZProperty*> properties;  // borrowed from the sheet
  };

  /// `object` must outlive the sheet.
  explicit ObjectSheet(IZDMObject* object);

  /// In the order of the sheet; a group's own groups follow it.
  const std::vector<Group>& GetGroups() const { return groups_; }

  /// Fills a property anew from the object.
  void Fill(IZProperty* property) const;
  /// Takes an edited property back into the object, and fills it anew. Nobody is told of the
  /// change.
  void Apply(IZProperty* property) const;

 private:
  void List(IZPropertyGroupColl* groups);

  IZDMObject* object_;
  ZRefPtr<IZPropertyGroupColl> built_;
  std::vector<Group> groups_;
};

}  // namespace zdm
