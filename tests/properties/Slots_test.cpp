// The order of operations as a caller compiled elsewhere sees it.
#include "tests/support/SlotOf.h"
#include "zdm/properties/CZPropertyPair.h"
#include "zdm/properties/IZPropKeyArray.h"
#include "zdm/properties/IZPropertyArray.h"
#include "zdm/properties/IZPropertyColl.h"
#include "zdm/properties/IZPropertyCsCurve.h"
#include "zdm/properties/IZPropertyGroup.h"
#include "zdm/properties/IZPropertyGroupColl.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/properties/IZPropertyPairs.h"
#include "zdm/properties/IZPropertyPoint.h"
#include "zdm/properties/IZPropertyScaleIndex.h"
#include "zdm/properties/IZPropertyText.h"
#include "zdm/properties/IZPropertyYesNo.h"

namespace {

using namespace zdm::test;

TEST(Slots, OfProperties) {
  ZDM_EXPECT_SLOTS(3, IZProperty, GetName, SetName, GetDisplayName, SetDisplayName, GetGUID,
                   SetGUID, GetExtra2, SetExtra2, GetVariant, SetVariant, GetExtra1, SetExtra1,
                   GetExtra3, SetExtra3, IsReadOnly, SetReadOnly, IsValueUniform, SetValueUniform,
                   CopyFrom, MergeWith, ResetValue, Reserved24, GetExtra4, SetExtra4, SetRange,
                   GetRange, IsInRange, SetIntRange, GetIntRange, IsInIntRange, IsFlag40, SetFlag40,
                   GetShort, SetShort, GetDouble, SetDouble, GetString, SetString, GetType, SetType,
                   GetULong, SetULong, GetLong, SetLong, GetBool, SetBool, GetObject, SetObject,
                   IsFlag20, SetFlag20, IsFlag02, SetFlag02, IsLinked, SetLinked, Save, Load,
                   Reserved59, Reserved60, HasGUID);
  ZDM_EXPECT_SLOTS(33, IZPropertyColl, AddTailColl, AddProperty, AddNamedProperty, AddYesNo,
                   AddDouble, AddLong, AddString, AddBool);
  ZDM_EXPECT_SLOTS(3, IZPropertyGroup, Reserved3, GetGroups, GetProperties, GetName, SetName,
                   IsEmpty, AddGroup, AddDouble, AddLong, AddString, AddBool, FindProperty);
  ZDM_EXPECT_SLOTS(33, IZPropertyGroupColl, AddTailColl, Reserved34, AddGroup, FindProperty,
                   FindGroup);
  ZDM_EXPECT_SLOTS(33, IZPropertyPairs, AddTailColl, MergePairs);
  ZDM_EXPECT_SLOTS(62, IZPropertyScaleIndex, GetScaleCount, SetScale, GetScale, GetScaleText,
                   AddScale, GetFirstScale, GetNextScale, RemoveAllScales, AddStandardScale,
                   AddStandardScales, AddScales);
  ZDM_EXPECT_SLOTS(62, IZPropertyIndex, GetEntryCount, GetEntryText, AddEntry, GetFirstEntry,
                   GetNextEntry, RemoveAllEntries);
  ZDM_EXPECT_SLOTS(62, IZPropertyYesNo, GetYes, SetYes);
  ZDM_EXPECT_SLOTS(62, IZPropertyPoint, GetPoint, SetPoint, SetUniformX, IsUniformX, SetUniformY,
                   IsUniformY, SetUniformZ, IsUniformZ, GetPair, SetPair, SetPointFromArray,
                   CombinePoint);
  EXPECT_EQ(SlotOf(&IZPropertyArray::GetHead), 62);
  ZDM_EXPECT_SLOTS(92, IZPropertyArray, AddTailColl, SetPointCount, GetPointCount, AddPoints,
                   SetPoints);
  ZDM_EXPECT_SLOTS(62, IZPropertyCsCurve, SetCurve, GetCurve);
  EXPECT_EQ(SlotOf(&IZPropertyText::GetSharedBuffer), 62);
  ZDM_EXPECT_SLOTS(SlotOf(&CZPropertyPair::getVersion) + 1, CZPropertyPair, GetPairValue,
                   SetPairValue);
  ZDM_EXPECT_SLOTS(3, IZPropKeyArray, AddKey, GetKeys, IsEmpty);
}

}  // namespace
