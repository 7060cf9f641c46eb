#include "drawing/GroupRelations.h"

#include "document/CZPlainSingleReltn.h"
#include "drawing/DrawingObject.h"
#include "drawing/GroupCodes.h"
#include "drawing/Layers.h"
#include "drawing/Numbers.h"

#include <algorithm>

namespace zdm {

namespace {

WideString ShownName(IZDMObject& object) {
  Bstr name;
  object.GetName(name.Out());
  return WideString(name.View());
}

/// The name has changed when it is another one, not when it is written in other letters.
void EditName(const std::vector<Group>& groups, ULONG index, const WideString& name,
              const TextCodec& codec, GroupEdits* edits) {
  if (index >= groups.size() || edits->contains(index)) return;
  const std::string_view written = groups[index].text;
  if (NameKey(codec.Show(written)) != NameKey(name)) (*edits)[index] = codec.Write(name);
}

void EditReference(const std::vector<Group>& groups, IZSingleReltn& relation,
                   const TextCodec& codec, GroupEdits* edits) {
  const auto index = static_cast<ULONG>(relation.GetReltnTag());
  if (index >= groups.size()) return;
  const Group& group = groups[index];
  IZDMObject* target = relation.GetReltnObject();
  if (group.code == kNameCode) {
    if (target != nullptr) EditName(groups, index, ShownName(*target), codec, edits);
    return;
  }
  const DrawingPart* other = PartOf(target);
  const std::string_view handle = other != nullptr ? other->Handle() : std::string_view("0");
  if (ParseHandle(handle) != ParseHandle(group.text)) (*edits)[index] = handle;
}

bool IsNamed(IZDMObject& object) {
  const DrawingPart* owner = PartOf(object.GetOwner());
  return owner != nullptr && owner->Type() == "TABLE";
}

/// Names that were changed here. An object that never had one shows its type.
void EditOwnName(IZDMObject& object, const DrawingPart& part, const std::vector<Group>& groups,
                 const TextCodec& codec, GroupEdits* edits) {
  const bool isBlock = part.Type() == "BLOCK";
  const bool isVariable = !groups.empty() && groups[0].code == kVariableCode;
  if (!isBlock && !isVariable && !IsNamed(object)) return;
  const WideString name = ShownName(object);
  if (name == codec.Show(part.Type())) return;
  EditName(groups, part.Groups().IndexOf(isVariable ? kVariableCode : kNameCode), name, codec,
           edits);
  if (isBlock) EditName(groups, part.Groups().IndexOf(3), name, codec, edits);
}

}  // namespace

IZSingleReltn* RelationOf(IZDMObject& object, ULONG index) {
  IZReltnColl* relations = object.GetReltnColl();
  if (relations == nullptr) return nullptr;
  for (LONGLONG pos = relations->GetValidHeadPosition(); pos != 0;) {
    auto* relation = ViewAs<IZSingleReltn>(relations->GetValidNext(pos));
    if (relation != nullptr && relation->GetReltnTag() == static_cast<LONG>(index)) return relation;
  }
  return nullptr;
}

void RelateGroup(IZDMObject& object, ULONG index, IZDMObject* target, bool hard) {
  const auto relation = MakeObject<IZSingleReltn, CZPlainSingleReltn>();
  relation->SetReltnDiffusible(hard);
  relation->SetReltnTag(static_cast<LONG>(index));
  relation->SetReltnObj(target);
  object.AddRelation(relation);
}

void CollectRelationEdits(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                          GroupEdits* edits) {
  const std::vector<Group> groups = part.Groups().All();
  IZReltnColl* relations = object.GetReltnColl();
  for (LONGLONG pos = relations != nullptr ? relations->GetValidHeadPosition() : 0; pos != 0;) {
    auto* relation = ViewAs<IZSingleReltn>(relations->GetValidNext(pos));
    if (relation != nullptr && relation->GetReltnTag() >= 0) {
      EditReference(groups, *relation, codec, edits);
    }
  }
  if (part.Type() == "LAYER") {
    CollectLayerEdits(object, part, codec, edits);
    return;
  }
  EditOwnName(object, part, groups, codec, edits);
  if (const IZCategoryReltn* layer = GetCategoryReltn(object); layer != nullptr) {
    EditName(groups, part.Groups().IndexOf(kLayerCode), LayerNameOf(object), codec, edits);
  }
}

}  // namespace zdm
