// The order of operations of the interfaces of objects, extended data and parameters, as a caller
// compiled elsewhere sees it.
#include "document/CZDMPlainObject.h"
#include "tests/support/SlotOf.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/IZExtDataAccess.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/model/CZDMDictionary.h"
#include "zdm/model/CZDMObjColl.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObjIterator.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/IZParameterColl.h"

namespace {

using zdm::test::ExpectInOrder;
using zdm::test::SlotOf;

/// The place of one overload.
template <class Signature, class C>
int SlotOfOverload(Signature C::*operation) {
  return SlotOf(operation);
}

TEST(Slots, IZDMObject) {
  ExpectInOrder(61, {ZDM_SLOT(IZDMObject, IsObjectValid),
                     ZDM_SLOT(IZDMObject, IsObjectAttached),
                     ZDM_SLOT(IZDMObject, SetStatus),
                     ZDM_SLOT(IZDMObject, ClearStatus),
                     ZDM_SLOT(IZDMObject, CloneObject),
                     {"CopyFrom", SlotOfOverload<void(IZDMObject*, LONG)>(&IZDMObject::CopyFrom)},
                     {"JudgeSame", SlotOfOverload<bool(IZDMObject*)>(&IZDMObject::JudgeSame)},
                     ZDM_SLOT(IZDMObject, GetTypeByte),
                     ZDM_SLOT(IZDMObject, SetOID),
                     ZDM_SLOT(IZDMObject, SetID),
                     ZDM_SLOT(IZDMObject, GetOID),
                     ZDM_SLOT(IZDMObject, GetID),
                     ZDM_SLOT(IZDMObject, SetOwnerOID),
                     ZDM_SLOT(IZDMObject, SetOwnerID),
                     ZDM_SLOT(IZDMObject, GetOwnerOID),
                     ZDM_SLOT(IZDMObject, GetOwnerID),
                     ZDM_SLOT(IZDMObject, SetOwner),
                     ZDM_SLOT(IZDMObject, GetOwner),
                     ZDM_SLOT(IZDMObject, GetDatabase),
                     ZDM_SLOT(IZDMObject, VisitReferences),
                     ZDM_SLOT(IZDMObject, SetObjectValid),
                     ZDM_SLOT(IZDMObject, GetDMType),
                     ZDM_SLOT(IZDMObject, AddOptionAllowed),
                     ZDM_SLOT(IZDMObject, ClearOptionAllowed),
                     ZDM_SLOT(IZDMObject, JudgeOptionAllowed),
                     ZDM_SLOT(IZDMObject, SetOptionAllowed),
                     ZDM_SLOT(IZDMObject, GetOptionAllowed),
                     ZDM_SLOT(IZDMObject, BuildPropertyGroups),
                     ZDM_SLOT(IZDMObject, FillProperties),
                     ZDM_SLOT(IZDMObject, ApplyProperties),
                     ZDM_SLOT(IZDMObject, Reserved91),
                     ZDM_SLOT(IZDMObject, Reserved92),
                     ZDM_SLOT(IZDMObject, GetDisplayName),
                     ZDM_SLOT(IZDMObject, GetNumber),
                     ZDM_SLOT(IZDMObject, GetCategory),
                     ZDM_SLOT(IZDMObject, Reserved96),
                     ZDM_SLOT(IZDMObject, GetCategoryMaterial),
                     ZDM_SLOT(IZDMObject, GetExtDataMgr),
                     ZDM_SLOT(IZDMObject, GetExtData),
                     ZDM_SLOT(IZDMObject, SetExtData),
                     ZDM_SLOT(IZDMObject, RemoveExtData),
                     ZDM_SLOT(IZDMObject, ClearExtData),
                     ZDM_SLOT(IZDMObject, AddRelation),
                     ZDM_SLOT(IZDMObject, GetReltnColl),
                     ZDM_SLOT(IZDMObject, GetParameterArray),
                     ZDM_SLOT(IZDMObject, PeekParameterArray),
                     ZDM_SLOT(IZDMObject, SetParameterArray),
                     ZDM_SLOT(IZDMObject, GetParameter),
                     ZDM_SLOT(IZDMObject, Reserved109),
                     ZDM_SLOT(IZDMObject, AddParameter),
                     ZDM_SLOT(IZDMObject, ClearParameters),
                     ZDM_SLOT(IZDMObject, OnParametersChanged),
                     ZDM_SLOT(IZDMObject, GetParamDouble),
                     ZDM_SLOT(IZDMObject, SetParamDouble),
                     ZDM_SLOT(IZDMObject, GetParamLong),
                     ZDM_SLOT(IZDMObject, SetParamLong),
                     ZDM_SLOT(IZDMObject, GetParamString),
                     ZDM_SLOT(IZDMObject, SetParamString),
                     ZDM_SLOT(IZDMObject, GetParamValue),
                     ZDM_SLOT(IZDMObject, SetParamValue),
                     ZDM_SLOT(IZDMObject, GetParamRelation),
                     ZDM_SLOT(IZDMObject, SetParamRelation),
                     ZDM_SLOT(IZDMObject, GetParamBool),
                     ZDM_SLOT(IZDMObject, SetParamBool),
                     ZDM_SLOT(IZDMObject, GetMaterial),
                     ZDM_SLOT(IZDMObject, Reserved126),
                     ZDM_SLOT(IZDMObject, Reserved127),
                     ZDM_SLOT(IZDMObject, SetTreeData),
                     ZDM_SLOT(IZDMObject, GetTreeData)});
}

TEST(Slots, TheTemplateAddsItsOwnBehindTheInterface) {
  ExpectInOrder(
      130, {ZDM_SLOT(CZDMPlainObject, CloneRelation), ZDM_SLOT(CZDMPlainObject, CloneInto),
            ZDM_SLOT(CZDMPlainObject, LoadExtData), ZDM_SLOT(CZDMPlainObject, LoadOwnData),
            ZDM_SLOT(CZDMPlainObject, SaveExtData), ZDM_SLOT(CZDMPlainObject, SaveOwnData),
            ZDM_SLOT(CZDMPlainObject, SetExtDataMgr), ZDM_SLOT(CZDMPlainObject, SaveHead),
            ZDM_SLOT(CZDMPlainObject, LoadHead), ZDM_SLOT(CZDMPlainObject, SaveBody),
            ZDM_SLOT(CZDMPlainObject, LoadBody), ZDM_SLOT(CZDMPlainObject, SaveTail),
            ZDM_SLOT(CZDMPlainObject, LoadTail), ZDM_SLOT(CZDMPlainObject, WriteHeader),
            ZDM_SLOT(CZDMPlainObject, ReadHeader), ZDM_SLOT(CZDMPlainObject, ReservedQuery16)});
}

TEST(Slots, TheManagerTemplateAddsItsOwnBehindThoseOfTheObjectTemplate) {
  ExpectInOrder(184, {ZDM_SLOT(CZDMObjMgr, CloneRelation), ZDM_SLOT(CZDMObjMgr, CloneInto)});
  ExpectInOrder(199, {ZDM_SLOT(CZDMObjMgr, ReservedQuery16), ZDM_SLOT(CZDMObjMgr, MergeFrom),
                      ZDM_SLOT(CZDMObjMgr, FindSameManager), ZDM_SLOT(CZDMObjMgr, getVersion)});
  ExpectInOrder(201,
                {ZDM_SLOT(CZDMDictionary, FindSameManager), ZDM_SLOT(CZDMDictionary, getVersion)});
  EXPECT_EQ(SlotOf(&CZDMObjColl::getVersion), 74);
}

TEST(Slots, IZGiMaterial) { ExpectInOrder(130, {ZDM_SLOT(IZGiMaterial, IsByCategory)}); }

TEST(Slots, IZDMObjMgr) {
  ExpectInOrder(130, {ZDM_SLOT(IZDMObjMgr, GetHead),
                      ZDM_SLOT(IZDMObjMgr, GetTail),
                      ZDM_SLOT(IZDMObjMgr, RemoveHead),
                      ZDM_SLOT(IZDMObjMgr, RemoveTail),
                      ZDM_SLOT(IZDMObjMgr, RemoveItem),
                      ZDM_SLOT(IZDMObjMgr, AddHead),
                      ZDM_SLOT(IZDMObjMgr, AddTail),
                      ZDM_SLOT(IZDMObjMgr, GetNext),
                      ZDM_SLOT(IZDMObjMgr, GetPrev),
                      ZDM_SLOT(IZDMObjMgr, GetAt),
                      ZDM_SLOT(IZDMObjMgr, SetAt),
                      ZDM_SLOT(IZDMObjMgr, InsertAfter),
                      ZDM_SLOT(IZDMObjMgr, InsertBefore),
                      ZDM_SLOT(IZDMObjMgr, Find),
                      ZDM_SLOT(IZDMObjMgr, Has),
                      ZDM_SLOT(IZDMObjMgr, GetCount),
                      ZDM_SLOT(IZDMObjMgr, IsEmpty),
                      ZDM_SLOT(IZDMObjMgr, RemoveHeadNoReturn),
                      ZDM_SLOT(IZDMObjMgr, RemoveTailNoReturn),
                      ZDM_SLOT(IZDMObjMgr, RemoveAll),
                      ZDM_SLOT(IZDMObjMgr, GetHeadPosition),
                      ZDM_SLOT(IZDMObjMgr, GetTailPosition),
                      ZDM_SLOT(IZDMObjMgr, RemoveAt),
                      ZDM_SLOT(IZDMObjMgr, MoveToHead),
                      ZDM_SLOT(IZDMObjMgr, MoveToTail),
                      ZDM_SLOT(IZDMObjMgr, SwapElements),
                      ZDM_SLOT(IZDMObjMgr, FindIndex),
                      ZDM_SLOT(IZDMObjMgr, MovePrev),
                      ZDM_SLOT(IZDMObjMgr, MoveNext),
                      ZDM_SLOT(IZDMObjMgr, MovePrevStatus),
                      ZDM_SLOT(IZDMObjMgr, MoveNextStatus),
                      ZDM_SLOT(IZDMObjMgr, GetHeadStatusPosition),
                      ZDM_SLOT(IZDMObjMgr, GetTailStatusPosition),
                      ZDM_SLOT(IZDMObjMgr, GetStatusNext),
                      ZDM_SLOT(IZDMObjMgr, GetStatusPrev),
                      ZDM_SLOT(IZDMObjMgr, AttachTail),
                      ZDM_SLOT(IZDMObjMgr, AttachHead),
                      ZDM_SLOT(IZDMObjMgr, GetCurrent),
                      ZDM_SLOT(IZDMObjMgr, SetCurrent),
                      ZDM_SLOT(IZDMObjMgr, FindObject),
                      ZDM_SLOT(IZDMObjMgr, Reserved170),
                      ZDM_SLOT(IZDMObjMgr, GetStatusCount),
                      ZDM_SLOT(IZDMObjMgr, Reserved172),
                      ZDM_SLOT(IZDMObjMgr, Reserved173),
                      ZDM_SLOT(IZDMObjMgr, RemoveStatusObjects),
                      ZDM_SLOT(IZDMObjMgr, ClearStatusTree),
                      ZDM_SLOT(IZDMObjMgr, GetValidHeadPosition),
                      ZDM_SLOT(IZDMObjMgr, GetValidNext),
                      ZDM_SLOT(IZDMObjMgr, CollectStatusInterface),
                      ZDM_SLOT(IZDMObjMgr, Collect),
                      ZDM_SLOT(IZDMObjMgr, FindByName),
                      ZDM_SLOT(IZDMObjMgr, FindByNameStatus),
                      ZDM_SLOT(IZDMObjMgr, FindByInterface),
                      ZDM_SLOT(IZDMObjMgr, GetUniqueName)});
}

TEST(Slots, IZDMObjIterator) {
  ExpectInOrder(
      3, {ZDM_SLOT(IZDMObjIterator, GetHeadPosition), ZDM_SLOT(IZDMObjIterator, GetTailPosition),
          ZDM_SLOT(IZDMObjIterator, GetHeadStatusPosition),
          ZDM_SLOT(IZDMObjIterator, GetTailStatusPosition),
          ZDM_SLOT(IZDMObjIterator, GetStatusNext), ZDM_SLOT(IZDMObjIterator, GetStatusPrev),
          ZDM_SLOT(IZDMObjIterator, GetStatusCount), ZDM_SLOT(IZDMObjIterator, GetNext),
          ZDM_SLOT(IZDMObjIterator, GetPrev), ZDM_SLOT(IZDMObjIterator, GetValidHeadPosition),
          ZDM_SLOT(IZDMObjIterator, GetValidNext), ZDM_SLOT(IZDMObjIterator, IsEmpty)});
}

TEST(Slots, IZDMObjColl) {
  ExpectInOrder(34, {ZDM_SLOT(IZDMObjColl, GetHeadStatusPosition),
                     ZDM_SLOT(IZDMObjColl, GetTailStatusPosition),
                     ZDM_SLOT(IZDMObjColl, GetStatusNext),
                     ZDM_SLOT(IZDMObjColl, GetStatusPrev),
                     ZDM_SLOT(IZDMObjColl, Isolate),
                     ZDM_SLOT(IZDMObjColl, SelfContained),
                     ZDM_SLOT(IZDMObjColl, GetStatusCount),
                     ZDM_SLOT(IZDMObjColl, DrawStatus),
                     ZDM_SLOT(IZDMObjColl, DrawAll),
                     ZDM_SLOT(IZDMObjColl, DrawOptionAllowed),
                     ZDM_SLOT(IZDMObjColl, DrawAllEx),
                     ZDM_SLOT(IZDMObjColl, GetSortedCopy),
                     ZDM_SLOT(IZDMObjColl, GetValidHeadPosition),
                     ZDM_SLOT(IZDMObjColl, GetValidNext),
                     ZDM_SLOT(IZDMObjColl, ClearStatusAll),
                     ZDM_SLOT(IZDMObjColl, SetStatusAll),
                     ZDM_SLOT(IZDMObjColl, TransformAll),
                     ZDM_SLOT(IZDMObjColl, UnionBoxes),
                     ZDM_SLOT(IZDMObjColl, CloneAll),
                     ZDM_SLOT(IZDMObjColl, IsSameClass),
                     ZDM_SLOT(IZDMObjColl, CollectInterface),
                     ZDM_SLOT(IZDMObjColl, Collect),
                     ZDM_SLOT(IZDMObjColl, GetInterfaceCount),
                     ZDM_SLOT(IZDMObjColl, FindByName),
                     ZDM_SLOT(IZDMObjColl, FindByNameStatus),
                     ZDM_SLOT(IZDMObjColl, SelectInterface),
                     ZDM_SLOT(IZDMObjColl, HasName),
                     ZDM_SLOT(IZDMObjColl, AddOwners),
                     ZDM_SLOT(IZDMObjColl, AddOwnersVector),
                     ZDM_SLOT(IZDMObjColl, AddObject),
                     ZDM_SLOT(IZDMObjColl, AddTailUnique),
                     ZDM_SLOT(IZDMObjColl, FindByID),
                     ZDM_SLOT(IZDMObjColl, SetOwnerOIDAll),
                     ZDM_SLOT(IZDMObjColl, GetObjects),
                     ZDM_SLOT(IZDMObjColl, GetUniqueName),
                     ZDM_SLOT(IZDMObjColl, AddLine),
                     ZDM_SLOT(IZDMObjColl, AddCircle),
                     ZDM_SLOT(IZDMObjColl, AddArc),
                     ZDM_SLOT(IZDMObjColl, AddArcFrom),
                     ZDM_SLOT(IZDMObjColl, SetValidAll)});
}

TEST(Slots, IZExtData) {
  ExpectInOrder(3, {ZDM_SLOT(IZExtData, GetName),
                    ZDM_SLOT(IZExtData, SetName),
                    ZDM_SLOT(IZExtData, CopyFrom),
                    ZDM_SLOT(IZExtData, Load),
                    ZDM_SLOT(IZExtData, Save),
                    {"Clone", SlotOfOverload<void(IZExtData**)>(&IZExtData::Clone)}});
}

TEST(Slots, IZExtDataAccess) {
  ExpectInOrder(9,
                {ZDM_SLOT(IZExtDataAccess, GetByte),       ZDM_SLOT(IZExtDataAccess, SetByte),
                 ZDM_SLOT(IZExtDataAccess, SetShort),      ZDM_SLOT(IZExtDataAccess, GetShort),
                 ZDM_SLOT(IZExtDataAccess, SetLong),       ZDM_SLOT(IZExtDataAccess, GetLong),
                 ZDM_SLOT(IZExtDataAccess, SetULong),      ZDM_SLOT(IZExtDataAccess, GetULong),
                 ZDM_SLOT(IZExtDataAccess, SetDouble),     ZDM_SLOT(IZExtDataAccess, GetDouble),
                 ZDM_SLOT(IZExtDataAccess, SetString),     ZDM_SLOT(IZExtDataAccess, GetString),
                 ZDM_SLOT(IZExtDataAccess, SetBool),       ZDM_SLOT(IZExtDataAccess, GetBool),
                 ZDM_SLOT(IZExtDataAccess, SetCollection), ZDM_SLOT(IZExtDataAccess, GetCollection),
                 ZDM_SLOT(IZExtDataAccess, SetObject),     ZDM_SLOT(IZExtDataAccess, GetObject),
                 ZDM_SLOT(IZExtDataAccess, SetVariant),    ZDM_SLOT(IZExtDataAccess, GetVariant),
                 ZDM_SLOT(IZExtDataAccess, SetFloat),      ZDM_SLOT(IZExtDataAccess, GetFloat),
                 ZDM_SLOT(IZExtDataAccess, GetType)});
}

TEST(Slots, IZExtDataCollection) {
  ExpectInOrder(
      34, {{"Clone", SlotOfOverload<void(IZExtDataCollection**)>(&IZExtDataCollection::Clone)},
           ZDM_SLOT(IZExtDataCollection, CopyFrom),
           ZDM_SLOT(IZExtDataCollection, Save),
           ZDM_SLOT(IZExtDataCollection, Load)});
}

TEST(Slots, IZExtDataMgr) {
  ExpectInOrder(3, {ZDM_SLOT(IZExtDataMgr, GetCollection),
                    ZDM_SLOT(IZExtDataMgr, QueryCollection),
                    ZDM_SLOT(IZExtDataMgr, RemoveCollection),
                    ZDM_SLOT(IZExtDataMgr, RemoveAll),
                    {"Clone", SlotOfOverload<void(IZExtDataMgr**)>(&IZExtDataMgr::Clone)},
                    ZDM_SLOT(IZExtDataMgr, Save),
                    ZDM_SLOT(IZExtDataMgr, Load),
                    ZDM_SLOT(IZExtDataMgr, GetKeys)});
}

TEST(Slots, IZParameter) {
  ExpectInOrder(3, {ZDM_SLOT(IZParameter, GetDefinitionGUID),
                    ZDM_SLOT(IZParameter, GetElement),
                    ZDM_SLOT(IZParameter, SetElement),
                    ZDM_SLOT(IZParameter, GetGUID),
                    ZDM_SLOT(IZParameter, SetGUID),
                    ZDM_SLOT(IZParameter, GetUlongPtr),
                    ZDM_SLOT(IZParameter, SetUlongPtr),
                    ZDM_SLOT(IZParameter, GetDouble),
                    ZDM_SLOT(IZParameter, SetDouble),
                    ZDM_SLOT(IZParameter, GetRelation),
                    ZDM_SLOT(IZParameter, SetRelation),
                    ZDM_SLOT(IZParameter, GetLong),
                    ZDM_SLOT(IZParameter, SetLong),
                    ZDM_SLOT(IZParameter, GetString),
                    ZDM_SLOT(IZParameter, SetString),
                    ZDM_SLOT(IZParameter, GetValue),
                    ZDM_SLOT(IZParameter, SetValue),
                    ZDM_SLOT(IZParameter, GetBool),
                    ZDM_SLOT(IZParameter, SetBool),
                    ZDM_SLOT(IZParameter, GetPropertyType),
                    ZDM_SLOT(IZParameter, IsFlag02),
                    ZDM_SLOT(IZParameter, SetFlag02),
                    ZDM_SLOT(IZParameter, GetDefinition),
                    ZDM_SLOT(IZParameter, SetDefinition),
                    ZDM_SLOT(IZParameter, GetKey),
                    ZDM_SLOT(IZParameter, SetKey),
                    ZDM_SLOT(IZParameter, CloneParameter),
                    ZDM_SLOT(IZParameter, CopyFrom),
                    ZDM_SLOT(IZParameter, GetDefinitionIndex),
                    ZDM_SLOT(IZParameter, GetName),
                    ZDM_SLOT(IZParameter, FillProperty),
                    ZDM_SLOT(IZParameter, ApplyProperty),
                    ZDM_SLOT(IZParameter, AddPropertyTo),
                    ZDM_SLOT(IZParameter, GetFlags),
                    ZDM_SLOT(IZParameter, SetFlags),
                    ZDM_SLOT(IZParameter, GetLinkedObject),
                    ZDM_SLOT(IZParameter, SetLinkedObject),
                    ZDM_SLOT(IZParameter, IsEqual),
                    ZDM_SLOT(IZParameter, IsReadOnly),
                    ZDM_SLOT(IZParameter, SetReadOnly),
                    ZDM_SLOT(IZParameter, IsFlag08),
                    ZDM_SLOT(IZParameter, SetFlag08),
                    ZDM_SLOT(IZParameter, Save),
                    ZDM_SLOT(IZParameter, Load),
                    ZDM_SLOT(IZParameter, IsFlag10),
                    ZDM_SLOT(IZParameter, SetFlag10),
                    ZDM_SLOT(IZParameter, Accept),
                    ZDM_SLOT(IZParameter, SetOwner),
                    ZDM_SLOT(IZParameter, GetOwner),
                    ZDM_SLOT(IZParameter, IsFlag20),
                    ZDM_SLOT(IZParameter, SetFlag20)});
}

TEST(Slots, IZParameterArray) {
  ExpectInOrder(3, {ZDM_SLOT(IZParameterArray, BeginAdd),
                    ZDM_SLOT(IZParameterArray, Add),
                    ZDM_SLOT(IZParameterArray, EndAdd),
                    ZDM_SLOT(IZParameterArray, RemoveAll),
                    ZDM_SLOT(IZParameterArray, IsEmpty),
                    ZDM_SLOT(IZParameterArray, GetCount),
                    ZDM_SLOT(IZParameterArray, GetAt),
                    ZDM_SLOT(IZParameterArray, RemoveAt),
                    ZDM_SLOT(IZParameterArray, RemoveByGUID),
                    ZDM_SLOT(IZParameterArray, Remove),
                    ZDM_SLOT(IZParameterArray, GetParameter),
                    ZDM_SLOT(IZParameterArray, BuildPropertyGroups),
                    ZDM_SLOT(IZParameterArray, FillProperties),
                    ZDM_SLOT(IZParameterArray, ApplyProperties),
                    ZDM_SLOT(IZParameterArray, GetParamDouble),
                    ZDM_SLOT(IZParameterArray, SetParamDouble),
                    ZDM_SLOT(IZParameterArray, GetParamLong),
                    ZDM_SLOT(IZParameterArray, SetParamLong),
                    ZDM_SLOT(IZParameterArray, GetParamString),
                    ZDM_SLOT(IZParameterArray, SetParamString),
                    ZDM_SLOT(IZParameterArray, GetParamBool),
                    ZDM_SLOT(IZParameterArray, SetParamBool),
                    {"Clone", SlotOfOverload<void(IZParameterArray**)>(&IZParameterArray::Clone)},
                    ZDM_SLOT(IZParameterArray, GetParamRelation),
                    ZDM_SLOT(IZParameterArray, SetParamRelation),
                    ZDM_SLOT(IZParameterArray, GetParamValue),
                    ZDM_SLOT(IZParameterArray, SetParamValue),
                    ZDM_SLOT(IZParameterArray, AddDoubleParameter),
                    ZDM_SLOT(IZParameterArray, AddLongParameter),
                    ZDM_SLOT(IZParameterArray, AddRelationParameter),
                    ZDM_SLOT(IZParameterArray, AddStringParameter),
                    ZDM_SLOT(IZParameterArray, AddBoolParameter),
                    ZDM_SLOT(IZParameterArray, AddValueParameter),
                    ZDM_SLOT(IZParameterArray, IsEqualTo),
                    ZDM_SLOT(IZParameterArray, UpdateFrom),
                    ZDM_SLOT(IZParameterArray, Save),
                    ZDM_SLOT(IZParameterArray, Load),
                    ZDM_SLOT(IZParameterArray, Accept),
                    ZDM_SLOT(IZParameterArray, SetOwner),
                    ZDM_SLOT(IZParameterArray, GetOwner),
                    ZDM_SLOT(IZParameterArray, OnParameterChanged),
                    ZDM_SLOT(IZParameterArray, Reserved44),
                    ZDM_SLOT(IZParameterArray, GetParaArray),
                    ZDM_SLOT(IZParameterArray, AddMissingFrom),
                    ZDM_SLOT(IZParameterArray, ReplaceFrom),
                    ZDM_SLOT(IZParameterArray, IsExist),
                    ZDM_SLOT(IZParameterArray, CreateParameter)});
}

TEST(Slots, IZCategory) {
  ExpectInOrder(130, {ZDM_SLOT(IZCategory, IsFlag8000),
                      ZDM_SLOT(IZCategory, SetFlag8000),
                      ZDM_SLOT(IZCategory, IsFlag4000),
                      ZDM_SLOT(IZCategory, SetFlag4000),
                      ZDM_SLOT(IZCategory, IsFlag2000),
                      ZDM_SLOT(IZCategory, SetFlag2000),
                      ZDM_SLOT(IZCategory, IsFlag1000),
                      ZDM_SLOT(IZCategory, SetFlag1000),
                      ZDM_SLOT(IZCategory, CategoryReserved138),
                      ZDM_SLOT(IZCategory, CategoryReserved139),
                      ZDM_SLOT(IZCategory, IsFlag0800),
                      ZDM_SLOT(IZCategory, SetFlag0800),
                      ZDM_SLOT(IZCategory, GetProjectionDispAttrib),
                      ZDM_SLOT(IZCategory, SetProjectionDispAttrib),
                      ZDM_SLOT(IZCategory, GetHatchA),
                      ZDM_SLOT(IZCategory, SetHatchA),
                      ZDM_SLOT(IZCategory, GetSectionDispAttrib),
                      ZDM_SLOT(IZCategory, SetSectionDispAttrib),
                      ZDM_SLOT(IZCategory, GetHatchB),
                      ZDM_SLOT(IZCategory, SetHatchB),
                      ZDM_SLOT(IZCategory, SetCategoryName),
                      ZDM_SLOT(IZCategory, GetParentCategory),
                      ZDM_SLOT(IZCategory, SetParentCategory),
                      ZDM_SLOT(IZCategory, IsCategoryVisible),
                      ZDM_SLOT(IZCategory, SetCategoryVisible),
                      ZDM_SLOT(IZCategory, SetNumber),
                      ZDM_SLOT(IZCategory, AddMember),
                      ZDM_SLOT(IZCategory, GetMembers),
                      ZDM_SLOT(IZCategory, GetMemberCount),
                      ZDM_SLOT(IZCategory, GetMemberColl),
                      ZDM_SLOT(IZCategory, SetMemberColl),
                      ZDM_SLOT(IZCategory, CreateCategoryReltn),
                      ZDM_SLOT(IZCategory, SetFlags),
                      ZDM_SLOT(IZCategory, GetFlags),
                      ZDM_SLOT(IZCategory, SetFlag0100),
                      ZDM_SLOT(IZCategory, IsFlag0100),
                      ZDM_SLOT(IZCategory, SetFlag0200),
                      ZDM_SLOT(IZCategory, IsFlag0200),
                      ZDM_SLOT(IZCategory, SetLevel),
                      ZDM_SLOT(IZCategory, GetLevel),
                      ZDM_SLOT(IZCategory, SetFlag0080),
                      ZDM_SLOT(IZCategory, IsFlag0080),
                      {"GetMaterial", SlotOfOverload<IZGiMaterial*()>(&IZCategory::GetMaterial)},
                      ZDM_SLOT(IZCategory, SetMaterial),
                      ZDM_SLOT(IZCategory, GetReference),
                      ZDM_SLOT(IZCategory, SetReference),
                      ZDM_SLOT(IZCategory, GetKey),
                      ZDM_SLOT(IZCategory, SetKey)});
}

TEST(Slots, ListsStandBehindTheirBase) {
  EXPECT_EQ(SlotOf(&IZDMObjColl::AddTailColl), 33);
  EXPECT_EQ(SlotOf(&IZExtDataCollection::AddTailColl), 33);
  EXPECT_EQ(SlotOf(&IZParameterColl::GetHead), 3);
}

}  // namespace
