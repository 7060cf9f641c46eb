// The order of operations of definitions, parameters that are objects, and their managers, as a
// caller compiled elsewhere sees it.
#include "tests/support/SlotOf.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/parameters/CZDMParameterMgr.h"
#include "zdm/parameters/CZParameter.h"
#include "zdm/parameters/IZDMParameter.h"

namespace {

using namespace zdm::test;

struct Exposed : CZParameter {
  using CZParameter::GetPropertyValue;
  using CZParameter::LoadBody;
  using CZParameter::SaveBody;
};

TEST(Slots, OfParameters) {
  ZDM_EXPECT_SLOTS(3, IZDefinition, GetFlag, SetFlag, GetName, GetIndex, SetIndex, GetKey,
                   SetProperty, GetProperty, PropertyCall, AddPropertyCopyTo, GetFlags, SetFlags,
                   GetDefinitionMgr, GetIndexName, GetKind, SetKind, GetExtra, SetExtra, MatchKey);
  EXPECT_EQ(SlotOf(&CZDefinition::IsDumpRef), SlotOf(&CZDefinition::getVersion) + 1);
  ZDM_EXPECT_SLOTS(184, IZDefinitionMgr, FindDefinition, AddDefinition, GetNameByKey, RegisterName,
                   GetNameTable, SortKeysByRegistration, HasDefinition);
  ZDM_EXPECT_SLOTS(SlotOf(&Exposed::GetPropertyValue), Exposed, GetPropertyValue, LoadBody,
                   SaveBody);
  EXPECT_EQ(SlotOf(&CZParameter::IsDumpRef), SlotOf(&CZParameter::getVersion) + 1);
  EXPECT_EQ(SlotOf(&CZDMParameter::IsDumpRef), SlotOf(&CZDMParameter::getVersion) + 1);
  ZDM_EXPECT_SLOTS(54, IZDMParameter, Reserved54, Reserved55, Reserved56, Reserved57, Reserved58,
                   Reserved59, Reserved60, Reserved61, Reserved62, Reserved63, Reserved64,
                   Reserved65);
  EXPECT_EQ(SlotOf(&IZDMObject::SetParamRelation), 122);
  ZDM_EXPECT_SLOTS(184, IZParameterMgr, FindParameter, ExportParameters, SetManagedParamRelation,
                   AddDoubleParameter, AddLongParameter, AddRelationParameter, AddStringParameter,
                   AddBoolParameter, AddValueParameter, IsEqualTo, UpdateFrom, HasParameter);
  EXPECT_EQ(SlotOf(&CZDMParameterMgr::CreateParameter),
            SlotOf(&CZDMParameterMgr::FindSameManager) + 1);
}

}  // namespace
