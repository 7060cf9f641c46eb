// The order of operations of the interfaces of objects, extended data and parameters, as a caller
// compiled elsewhere sees it.
#include "document/CZDMPlainObject.h"
#include "tests/support/SlotOf.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/CZExtDataCollection.h"
#include "zdm/extdata/CZExtDataMgr.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/CZProxyExtDataObj.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/model/CZDMDictionary.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjIterator.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/IZParameterColl.h"

namespace {

using namespace zdm::test;

TEST(Slots, IZDMObject) {
  ZDM_EXPECT_SLOTS(61, IZDMObject, IsObjectValid, IsObjectAttached, SetStatus, ClearStatus,
                   CloneObject);
  EXPECT_EQ(SlotOfOverload<void(IZDMObject*, LONG)>(&IZDMObject::CopyFrom), 66);
  EXPECT_EQ(SlotOfOverload<bool(IZDMObject*)>(&IZDMObject::JudgeSame), 67);
  ZDM_EXPECT_SLOTS(68, IZDMObject, GetTypeByte, SetOID, SetID, GetOID, GetID, SetOwnerOID,
                   SetOwnerID, GetOwnerOID, GetOwnerID, SetOwner, GetOwner, GetDatabase,
                   VisitReferences, SetObjectValid, GetDMType, AddOptionAllowed, ClearOptionAllowed,
                   JudgeOptionAllowed, SetOptionAllowed, GetOptionAllowed, BuildPropertyGroups,
                   FillProperties, ApplyProperties, Reserved91, Reserved92, GetDisplayName,
                   GetNumber, GetCategory, Reserved96, GetCategoryMaterial, GetExtDataMgr,
                   GetExtData, SetExtData, RemoveExtData, ClearExtData, AddRelation, GetReltnColl,
                   GetParameterArray, PeekParameterArray, SetParameterArray, GetParameter,
                   Reserved109, AddParameter, ClearParameters, OnParametersChanged, GetParamDouble,
                   SetParamDouble, GetParamLong, SetParamLong, GetParamString, SetParamString,
                   GetParamValue, SetParamValue, GetParamRelation, SetParamRelation, GetParamBool,
                   SetParamBool, GetMaterial, Reserved126, Reserved127, SetTreeData, GetTreeData);
}

TEST(Slots, TheTemplateAddsItsOwnBehindTheInterface) {
  ZDM_EXPECT_SLOTS(130, IZGiMaterial, IsByCategory);
  ZDM_EXPECT_SLOTS(130, CZDMPlainObject, CloneRelation, CloneInto, LoadExtData, LoadOwnData,
                   SaveExtData, SaveOwnData, SetExtDataMgr, SaveHead, LoadHead, SaveBody, LoadBody,
                   SaveTail, LoadTail, WriteHeader, ReadHeader, ReservedQuery16);
}

TEST(Slots, TheManagerTemplateAddsItsOwnBehindThoseOfTheObjectTemplate) {
  ZDM_EXPECT_SLOTS(184, CZDMObjMgr, CloneRelation, CloneInto);
  ZDM_EXPECT_SLOTS(199, CZDMObjMgr, ReservedQuery16, MergeFrom, FindSameManager);
  ZDM_EXPECT_SLOTS(200, CZDMDictionary, MergeFrom, FindSameManager);
}

TEST(Slots, IZDMObjMgr) {
  ZDM_EXPECT_SLOTS(130, IZDMObjMgr, GetHead, GetTail, RemoveHead, RemoveTail, RemoveItem, AddHead,
                   AddTail, GetNext, GetPrev, GetAt, SetAt, InsertAfter, InsertBefore, Find, Has,
                   GetCount, IsEmpty, RemoveHeadNoReturn, RemoveTailNoReturn, RemoveAll,
                   GetHeadPosition, GetTailPosition, RemoveAt, MoveToHead, MoveToTail, SwapElements,
                   FindIndex, MovePrev, MoveNext, MovePrevStatus, MoveNextStatus,
                   GetHeadStatusPosition, GetTailStatusPosition, GetStatusNext, GetStatusPrev,
                   AttachTail, AttachHead, GetCurrent, SetCurrent, FindObject, Reserved170,
                   GetStatusCount, Reserved172, Reserved173, RemoveStatusObjects, ClearStatusTree,
                   GetValidHeadPosition, GetValidNext, CollectStatusInterface, Collect, FindByName,
                   FindByNameStatus, FindByInterface, GetUniqueName);
}

TEST(Slots, IZDMObjIterator) {
  ZDM_EXPECT_SLOTS(3, IZDMObjIterator, GetHeadPosition, GetTailPosition, GetHeadStatusPosition,
                   GetTailStatusPosition, GetStatusNext, GetStatusPrev, GetStatusCount, GetNext,
                   GetPrev, GetValidHeadPosition, GetValidNext, IsEmpty);
}

TEST(Slots, IZDMObjColl) {
  ZDM_EXPECT_SLOTS(33, IZDMObjColl, AddTailColl, GetHeadStatusPosition, GetTailStatusPosition,
                   GetStatusNext, GetStatusPrev, Isolate, SelfContained, GetStatusCount, DrawStatus,
                   DrawAll, DrawOptionAllowed, DrawAllEx, GetSortedCopy, GetValidHeadPosition,
                   GetValidNext, ClearStatusAll, SetStatusAll, TransformAll, UnionBoxes, CloneAll,
                   IsSameClass, CollectInterface, Collect, GetInterfaceCount, FindByName,
                   FindByNameStatus, SelectInterface, HasName, AddOwners, AddOwnersVector,
                   AddObject, AddTailUnique, FindByID, SetOwnerOIDAll, GetObjects, GetUniqueName,
                   AddLine, AddCircle, AddArc, AddArcFrom, SetValidAll);
}

TEST(Slots, ExtendedData) {
  ZDM_EXPECT_SLOTS(3, IZExtData, GetName, SetName, CopyFrom, Load, Save);
  EXPECT_EQ(SlotOfOverload<void(IZExtData**)>(&IZExtData::Clone), 8);
  ZDM_EXPECT_SLOTS(9, IZExtDataAccess, GetByte, SetByte, SetShort, GetShort, SetLong, GetLong,
                   SetULong, GetULong, SetDouble, GetDouble, SetString, GetString, SetBool, GetBool,
                   SetCollection, GetCollection, SetObject, GetObject, SetVariant, GetVariant,
                   SetFloat, GetFloat, GetType);
  EXPECT_EQ(SlotOf(&CZExtDataObj::IsDumpRef), SlotOf(&CZExtDataObj::getVersion) + 1);
  EXPECT_EQ(SlotOf(&IZExtDataCollection::AddTailColl), 33);
  EXPECT_EQ(SlotOfOverload<void(IZExtDataCollection**)>(&IZExtDataCollection::Clone), 34);
  ZDM_EXPECT_SLOTS(35, IZExtDataCollection, CopyFrom, Save, Load);
  EXPECT_EQ(SlotOf(&CZExtDataCollection::IsDumpRef), SlotOf(&CZExtDataCollection::getVersion) + 1);
  ZDM_EXPECT_SLOTS(3, IZExtDataMgr, GetCollection, QueryCollection, RemoveCollection, RemoveAll);
  EXPECT_EQ(SlotOfOverload<void(IZExtDataMgr**)>(&IZExtDataMgr::Clone), 7);
  ZDM_EXPECT_SLOTS(8, IZExtDataMgr, Save, Load, GetKeys);
  EXPECT_EQ(SlotOf(&CZExtDataMgr::IsDumpRef), SlotOf(&CZExtDataMgr::getVersion) + 1);
  EXPECT_EQ(SlotOfOverload<const GUID*()>(&IZProxyExtDataObj::GetClassID), 3);
  ZDM_EXPECT_SLOTS(4, IZProxyExtDataObj, SetClassID, GetData, SetData);
  ZDM_EXPECT_SLOTS(9, IZExtDataObjImpl<IZExtData>, LoadData, SaveData, CopyData);
}

TEST(Slots, IZParameter) {
  ZDM_EXPECT_SLOTS(3, IZParameter, GetDefinitionGUID, GetElement, SetElement, GetGUID, SetGUID,
                   GetUlongPtr, SetUlongPtr, GetDouble, SetDouble, GetRelation, SetRelation,
                   GetLong, SetLong, GetString, SetString, GetValue, SetValue, GetBool, SetBool,
                   GetPropertyType, IsFlag02, SetFlag02, GetDefinition, SetDefinition, GetKey,
                   SetKey, CloneParameter, CopyFrom, GetDefinitionIndex, GetName, FillProperty,
                   ApplyProperty, AddPropertyTo, GetFlags, SetFlags, GetLinkedObject,
                   SetLinkedObject, IsEqual, IsReadOnly, SetReadOnly, IsFlag08, SetFlag08, Save,
                   Load, IsFlag10, SetFlag10, Accept, SetOwner, GetOwner, IsFlag20, SetFlag20);
}

TEST(Slots, IZParameterArray) {
  EXPECT_EQ(SlotOf(&IZParameterColl::GetHead), 3);
  ZDM_EXPECT_SLOTS(3, IZParameterArray, BeginAdd, Add, EndAdd, RemoveAll, IsEmpty, GetCount, GetAt,
                   RemoveAt, RemoveByGUID, Remove, GetParameter, BuildPropertyGroups,
                   FillProperties, ApplyProperties, GetParamDouble, SetParamDouble, GetParamLong,
                   SetParamLong, GetParamString, SetParamString, GetParamBool, SetParamBool);
  EXPECT_EQ(SlotOfOverload<void(IZParameterArray**)>(&IZParameterArray::Clone), 25);
  ZDM_EXPECT_SLOTS(26, IZParameterArray, GetParamRelation, SetParamRelation, GetParamValue,
                   SetParamValue, AddDoubleParameter, AddLongParameter, AddRelationParameter,
                   AddStringParameter, AddBoolParameter, AddValueParameter, IsEqualTo, UpdateFrom,
                   Save, Load, Accept, SetOwner, GetOwner, OnParameterChanged, Reserved44,
                   GetParaArray, AddMissingFrom, ReplaceFrom, IsExist, CreateParameter);
}

TEST(Slots, IZCategory) {
  ZDM_EXPECT_SLOTS(130, IZCategory, IsFlag8000, SetFlag8000, IsFlag4000, SetFlag4000, IsFlag2000,
                   SetFlag2000, IsFlag1000, SetFlag1000, CategoryReserved138, CategoryReserved139,
                   IsFlag0800, SetFlag0800, GetProjectionDispAttrib, SetProjectionDispAttrib,
                   GetHatchA, SetHatchA, GetSectionDispAttrib, SetSectionDispAttrib, GetHatchB,
                   SetHatchB, SetCategoryName, GetParentCategory, SetParentCategory,
                   IsCategoryVisible, SetCategoryVisible, SetNumber, AddMember, GetMembers,
                   GetMemberCount, GetMemberColl, SetMemberColl, CreateCategoryReltn, SetFlags,
                   GetFlags, SetFlag0100, IsFlag0100, SetFlag0200, IsFlag0200, SetLevel, GetLevel,
                   SetFlag0080, IsFlag0080);
  EXPECT_EQ(SlotOfOverload<IZGiMaterial*()>(&IZCategory::GetMaterial), 172);
  ZDM_EXPECT_SLOTS(173, IZCategory, SetMaterial, GetReference, SetReference, GetKey, SetKey);
}

}  // namespace
