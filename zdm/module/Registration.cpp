// What happens when the library is loaded, in one place: interface names get their ids, then the
// creatable classes are registered with the factory in the order of the class table.
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/CZDMCategoryMgr.h"
#include "zdm/extdata/CZExtDataCollection.h"
#include "zdm/extdata/CZExtDataMgr.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/CZProxyExtDataObj.h"
#include "zdm/identity/ZReltnVisitorMapID.h"
#include "zdm/identity/ZReltnVisitorMapIDForPaste.h"
#include "zdm/model/CZDMDictionary.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/CZDMProxyObject.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/CZDMParameterMgr.h"
#include "zdm/parameters/CZParameter.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/parameters/CZParameterColl.h"
#include "zdm/properties/CZPropKeyArray.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/properties/CZPropertyArray.h"
#include "zdm/properties/CZPropertyColl.h"
#include "zdm/properties/CZPropertyCsCurve.h"
#include "zdm/properties/CZPropertyGroup.h"
#include "zdm/properties/CZPropertyGroupColl.h"
#include "zdm/properties/CZPropertyIndex.h"
#include "zdm/properties/CZPropertyPair.h"
#include "zdm/properties/CZPropertyPairs.h"
#include "zdm/properties/CZPropertyPoint.h"
#include "zdm/properties/CZPropertyScaleIndex.h"
#include "zdm/properties/CZPropertyText.h"
#include "zdm/properties/CZPropertyXYZ.h"
#include "zdm/properties/CZPropertyYesNo.h"
#include "zdm/relations/CZReltnColl.h"
#include "zdm/relations/CZReltnRecordObjInReltns.h"
#include "zdm/relations/ZReltnVisitorDeduce.h"
#include "zdm/relations/ZReltnVisitorDiffuse.h"
#include "zdm/relations/ZReltnVisitorIsDirectTo.h"
#include "zdm/relations/ZReltnVisitorRecord.h"
#include "zdm/relations/ZReltnVisitorSelfContained.h"
#include "zdm/relations/ZReltnVisitorStatus.h"

#include <array>

unsigned short zdm::interfaceIDs[zdm::kInterfaceNameCount];

namespace {

template <class C>
void InitClass() {
  C::zInit();
}

bool RegisterAll() {
#define ZDM_INTERFACE_NAME(name) \
  zdm::interfaceIDs[zdm::kIndex_##name] = CZObject::AddInterface(#name);
#include "zdm/framework/InterfaceNames.def"

#define ZDM_CLASS(Class, ...) InitClass<Class>();
#define ZDM_CLASS_NOT_CREATABLE(Class, ...) InitClass<Class>();
#include "zdm/module/ClassTable.def"
  return true;
}

[[maybe_unused]] const bool registered = RegisterAll();

template <class List>
struct NamesOf;

template <class... I>
struct NamesOf<zdm::InterfaceList<I...>> {
  static constexpr std::array<const char*, sizeof...(I)> kNames = {ZInterface<I>::kName...};
};

template <class C>
constexpr zdm::ClassInfo InfoOf() {
  using Row = zdm::ClassRow<C>;
  return {Row::kName, Row::kClassID, Row::kCreatable, NamesOf<typename Row::Interfaces>::kNames};
}

}  // namespace

std::span<const zdm::ClassInfo> zdm::GetClassTable() {
  static constexpr ClassInfo kTable[] = {
#define ZDM_CLASS(Class, ...) InfoOf<Class>(),
#define ZDM_CLASS_NOT_CREATABLE(Class, ...) InfoOf<Class>(),
#include "zdm/module/ClassTable.def"
  };
  return kTable;
}
