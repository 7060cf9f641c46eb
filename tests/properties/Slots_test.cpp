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

TEST(Slots, IZProperty) {
  ExpectInOrder(3, {ZDM_SLOT(IZProperty, GetName),        ZDM_SLOT(IZProperty, SetName),
                    ZDM_SLOT(IZProperty, GetDisplayName), ZDM_SLOT(IZProperty, SetDisplayName),
                    ZDM_SLOT(IZProperty, GetGUID),        ZDM_SLOT(IZProperty, SetGUID),
                    ZDM_SLOT(IZProperty, GetExtra2),      ZDM_SLOT(IZProperty, SetExtra2),
                    ZDM_SLOT(IZProperty, GetVariant),     ZDM_SLOT(IZProperty, SetVariant),
                    ZDM_SLOT(IZProperty, GetExtra1),      ZDM_SLOT(IZProperty, SetExtra1),
                    ZDM_SLOT(IZProperty, GetExtra3),      ZDM_SLOT(IZProperty, SetExtra3),
                    ZDM_SLOT(IZProperty, IsReadOnly),     ZDM_SLOT(IZProperty, SetReadOnly),
                    ZDM_SLOT(IZProperty, IsValueUniform), ZDM_SLOT(IZProperty, SetValueUniform),
                    ZDM_SLOT(IZProperty, CopyFrom),       ZDM_SLOT(IZProperty, MergeWith),
                    ZDM_SLOT(IZProperty, ResetValue),     ZDM_SLOT(IZProperty, Reserved24),
                    ZDM_SLOT(IZProperty, GetExtra4),      ZDM_SLOT(IZProperty, SetExtra4),
                    ZDM_SLOT(IZProperty, SetRange),       ZDM_SLOT(IZProperty, GetRange),
                    ZDM_SLOT(IZProperty, IsInRange),      ZDM_SLOT(IZProperty, SetIntRange),
                    ZDM_SLOT(IZProperty, GetIntRange),    ZDM_SLOT(IZProperty, IsInIntRange),
                    ZDM_SLOT(IZProperty, IsFlag40),       ZDM_SLOT(IZProperty, SetFlag40),
                    ZDM_SLOT(IZProperty, GetShort),       ZDM_SLOT(IZProperty, SetShort),
                    ZDM_SLOT(IZProperty, GetDouble),      ZDM_SLOT(IZProperty, SetDouble),
                    ZDM_SLOT(IZProperty, GetString),      ZDM_SLOT(IZProperty, SetString),
                    ZDM_SLOT(IZProperty, GetType),        ZDM_SLOT(IZProperty, SetType),
                    ZDM_SLOT(IZProperty, GetULong),       ZDM_SLOT(IZProperty, SetULong),
                    ZDM_SLOT(IZProperty, GetLong),        ZDM_SLOT(IZProperty, SetLong),
                    ZDM_SLOT(IZProperty, GetBool),        ZDM_SLOT(IZProperty, SetBool),
                    ZDM_SLOT(IZProperty, GetObject),      ZDM_SLOT(IZProperty, SetObject),
                    ZDM_SLOT(IZProperty, IsFlag20),       ZDM_SLOT(IZProperty, SetFlag20),
                    ZDM_SLOT(IZProperty, IsFlag02),       ZDM_SLOT(IZProperty, SetFlag02),
                    ZDM_SLOT(IZProperty, IsLinked),       ZDM_SLOT(IZProperty, SetLinked),
                    ZDM_SLOT(IZProperty, Save),           ZDM_SLOT(IZProperty, Load),
                    ZDM_SLOT(IZProperty, Reserved59),     ZDM_SLOT(IZProperty, Reserved60),
                    ZDM_SLOT(IZProperty, HasGUID)});
}

TEST(Slots, Collections) {
  ExpectInOrder(33, {ZDM_SLOT(IZPropertyColl, AddTailColl), ZDM_SLOT(IZPropertyColl, AddProperty),
                     ZDM_SLOT(IZPropertyColl, AddNamedProperty), ZDM_SLOT(IZPropertyColl, AddYesNo),
                     ZDM_SLOT(IZPropertyColl, AddDouble), ZDM_SLOT(IZPropertyColl, AddLong),
                     ZDM_SLOT(IZPropertyColl, AddString), ZDM_SLOT(IZPropertyColl, AddBool)});
  ExpectInOrder(3, {ZDM_SLOT(IZPropertyGroup, Reserved3), ZDM_SLOT(IZPropertyGroup, GetGroups),
                    ZDM_SLOT(IZPropertyGroup, GetProperties), ZDM_SLOT(IZPropertyGroup, GetName),
                    ZDM_SLOT(IZPropertyGroup, SetName), ZDM_SLOT(IZPropertyGroup, IsEmpty),
                    ZDM_SLOT(IZPropertyGroup, AddGroup), ZDM_SLOT(IZPropertyGroup, AddDouble),
                    ZDM_SLOT(IZPropertyGroup, AddLong), ZDM_SLOT(IZPropertyGroup, AddString),
                    ZDM_SLOT(IZPropertyGroup, AddBool), ZDM_SLOT(IZPropertyGroup, FindProperty)});
  ExpectInOrder(
      33, {ZDM_SLOT(IZPropertyGroupColl, AddTailColl), ZDM_SLOT(IZPropertyGroupColl, Reserved34),
           ZDM_SLOT(IZPropertyGroupColl, AddGroup), ZDM_SLOT(IZPropertyGroupColl, FindProperty),
           ZDM_SLOT(IZPropertyGroupColl, FindGroup)});
  ExpectInOrder(33,
                {ZDM_SLOT(IZPropertyPairs, AddTailColl), ZDM_SLOT(IZPropertyPairs, MergePairs)});
}

TEST(Slots, Kinds) {
  ExpectInOrder(
      62, {ZDM_SLOT(IZPropertyScaleIndex, GetScaleCount), ZDM_SLOT(IZPropertyScaleIndex, SetScale),
           ZDM_SLOT(IZPropertyScaleIndex, GetScale), ZDM_SLOT(IZPropertyScaleIndex, GetScaleText),
           ZDM_SLOT(IZPropertyScaleIndex, AddScale), ZDM_SLOT(IZPropertyScaleIndex, GetFirstScale),
           ZDM_SLOT(IZPropertyScaleIndex, GetNextScale),
           ZDM_SLOT(IZPropertyScaleIndex, RemoveAllScales),
           ZDM_SLOT(IZPropertyScaleIndex, AddStandardScale),
           ZDM_SLOT(IZPropertyScaleIndex, AddStandardScales),
           ZDM_SLOT(IZPropertyScaleIndex, AddScales)});
  ExpectInOrder(
      62, {ZDM_SLOT(IZPropertyIndex, GetEntryCount), ZDM_SLOT(IZPropertyIndex, GetEntryText),
           ZDM_SLOT(IZPropertyIndex, AddEntry), ZDM_SLOT(IZPropertyIndex, GetFirstEntry),
           ZDM_SLOT(IZPropertyIndex, GetNextEntry), ZDM_SLOT(IZPropertyIndex, RemoveAllEntries)});
  ExpectInOrder(62, {ZDM_SLOT(IZPropertyYesNo, GetYes), ZDM_SLOT(IZPropertyYesNo, SetYes)});
  ExpectInOrder(
      62, {ZDM_SLOT(IZPropertyPoint, GetPoint), ZDM_SLOT(IZPropertyPoint, SetPoint),
           ZDM_SLOT(IZPropertyPoint, SetUniformX), ZDM_SLOT(IZPropertyPoint, IsUniformX),
           ZDM_SLOT(IZPropertyPoint, SetUniformY), ZDM_SLOT(IZPropertyPoint, IsUniformY),
           ZDM_SLOT(IZPropertyPoint, SetUniformZ), ZDM_SLOT(IZPropertyPoint, IsUniformZ),
           ZDM_SLOT(IZPropertyPoint, GetPair), ZDM_SLOT(IZPropertyPoint, SetPair),
           ZDM_SLOT(IZPropertyPoint, SetPointFromArray), ZDM_SLOT(IZPropertyPoint, CombinePoint)});
  EXPECT_EQ(SlotOf(&IZPropertyArray::GetHead), 62);
  ExpectInOrder(92,
                {ZDM_SLOT(IZPropertyArray, AddTailColl), ZDM_SLOT(IZPropertyArray, SetPointCount),
                 ZDM_SLOT(IZPropertyArray, GetPointCount), ZDM_SLOT(IZPropertyArray, AddPoints),
                 ZDM_SLOT(IZPropertyArray, SetPoints)});
  ExpectInOrder(62, {ZDM_SLOT(IZPropertyCsCurve, SetCurve), ZDM_SLOT(IZPropertyCsCurve, GetCurve)});
  EXPECT_EQ(SlotOf(&IZPropertyText::GetSharedBuffer), 62);
  ExpectInOrder(SlotOf(&CZPropertyPair::getVersion) + 1,
                {ZDM_SLOT(CZPropertyPair, GetPairValue), ZDM_SLOT(CZPropertyPair, SetPairValue)});
  ExpectInOrder(3, {ZDM_SLOT(IZPropKeyArray, AddKey), ZDM_SLOT(IZPropKeyArray, GetKeys),
                    ZDM_SLOT(IZPropKeyArray, IsEmpty)});
}

}  // namespace
