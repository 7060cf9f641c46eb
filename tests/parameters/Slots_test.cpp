// The order of operations of definitions, parameters that are objects, and their managers, as a
// caller compiled elsewhere sees it. IZParameter and IZParameterArray are in tests/model.
#include "tests/support/SlotOf.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/parameters/CZDMParameterMgr.h"
#include "zdm/parameters/IZDMParameter.h"

namespace {

using zdm::test::ExpectInOrder;
using zdm::test::SlotOf;

TEST(Slots, IZDefinition) {
  ExpectInOrder(3, {ZDM_SLOT(IZDefinition, GetFlag), ZDM_SLOT(IZDefinition, SetFlag),
                    ZDM_SLOT(IZDefinition, GetName), ZDM_SLOT(IZDefinition, GetIndex),
                    ZDM_SLOT(IZDefinition, SetIndex), ZDM_SLOT(IZDefinition, GetKey),
                    ZDM_SLOT(IZDefinition, SetProperty), ZDM_SLOT(IZDefinition, GetProperty),
                    ZDM_SLOT(IZDefinition, PropertyCall), ZDM_SLOT(IZDefinition, AddPropertyCopyTo),
                    ZDM_SLOT(IZDefinition, GetFlags), ZDM_SLOT(IZDefinition, SetFlags),
                    ZDM_SLOT(IZDefinition, GetDefinitionMgr), ZDM_SLOT(IZDefinition, GetIndexName),
                    ZDM_SLOT(IZDefinition, GetKind), ZDM_SLOT(IZDefinition, SetKind),
                    ZDM_SLOT(IZDefinition, GetExtra), ZDM_SLOT(IZDefinition, SetExtra),
                    ZDM_SLOT(IZDefinition, MatchKey)});
  EXPECT_EQ(SlotOf(&CZDefinition::IsDumpRef), SlotOf(&CZDefinition::getVersion) + 1);
}

TEST(Slots, IZDefinitionMgr) {
  ExpectInOrder(
      184,
      {ZDM_SLOT(IZDefinitionMgr, FindDefinition), ZDM_SLOT(IZDefinitionMgr, AddDefinition),
       ZDM_SLOT(IZDefinitionMgr, GetNameByKey), ZDM_SLOT(IZDefinitionMgr, RegisterName),
       ZDM_SLOT(IZDefinitionMgr, GetNameTable), ZDM_SLOT(IZDefinitionMgr, SortKeysByRegistration),
       ZDM_SLOT(IZDefinitionMgr, HasDefinition)});
}

TEST(Slots, IZDMParameter) {
  ExpectInOrder(54, {ZDM_SLOT(IZDMParameter, Reserved54), ZDM_SLOT(IZDMParameter, Reserved55),
                     ZDM_SLOT(IZDMParameter, Reserved56), ZDM_SLOT(IZDMParameter, Reserved57),
                     ZDM_SLOT(IZDMParameter, Reserved58), ZDM_SLOT(IZDMParameter, Reserved59),
                     ZDM_SLOT(IZDMParameter, Reserved60), ZDM_SLOT(IZDMParameter, Reserved61),
                     ZDM_SLOT(IZDMParameter, Reserved62), ZDM_SLOT(IZDMParameter, Reserved63),
                     ZDM_SLOT(IZDMParameter, Reserved64), ZDM_SLOT(IZDMParameter, Reserved65)});
}

TEST(Slots, IZParameterMgr) {
  EXPECT_EQ(SlotOf(&IZDMObject::SetParamRelation), 122);
  ExpectInOrder(
      184,
      {ZDM_SLOT(IZParameterMgr, FindParameter), ZDM_SLOT(IZParameterMgr, ExportParameters),
       ZDM_SLOT(IZParameterMgr, SetManagedParamRelation),
       ZDM_SLOT(IZParameterMgr, AddDoubleParameter), ZDM_SLOT(IZParameterMgr, AddLongParameter),
       ZDM_SLOT(IZParameterMgr, AddRelationParameter), ZDM_SLOT(IZParameterMgr, AddStringParameter),
       ZDM_SLOT(IZParameterMgr, AddBoolParameter), ZDM_SLOT(IZParameterMgr, AddValueParameter),
       ZDM_SLOT(IZParameterMgr, IsEqualTo), ZDM_SLOT(IZParameterMgr, UpdateFrom),
       ZDM_SLOT(IZParameterMgr, HasParameter)});
  EXPECT_EQ(SlotOf(&CZDMParameterMgr::CreateParameter),
            SlotOf(&CZDMParameterMgr::FindSameManager) + 1);
}

}  // namespace
