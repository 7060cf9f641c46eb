#include "zdm/categories/IZCategoryImpl.h"

#include "platform/core/IZStream.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CategoryTree.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnVisitor.h"

#include <utility>

namespace {

ZRefPtr<IZSingleReltn> NewReltn(bool diffusible) {
  auto relation = zdm::CreateAs<IZSingleReltn>(zdm::kPlainReltnClass);
  if (relation != nullptr && diffusible) relation->SetReltnDiffusible(true);
  return relation;
}

ZRefPtr<IZDispAttrib> NewAttrib() { return zdm::CreateAs<IZDispAttrib>(zdm::kDispAttribClass); }

/// Points `relation`, made when absent, at `object`; null takes the relation away.
void PointAt(ZRefPtr<IZSingleReltn>& relation, IZObject* object, bool diffusible) {
  if (object == nullptr) return relation.Reset();
  if (relation == nullptr) relation = NewReltn(diffusible);
  if (relation != nullptr) relation->SetReltnObj(object);
}

template <class T>
T* TargetOf(const ZRefPtr<IZSingleReltn>& relation) {
  return relation != nullptr ? zdm::ViewAs<T>(relation->GetReltnObject()) : nullptr;
}

void CopyInto(ZRefPtr<IZDispAttrib>& attribute, IZDispAttrib* source) {
  if (attribute == nullptr) attribute = NewAttrib();
  if (attribute != nullptr) attribute->CopyFrom(source);
}

/// Calls `action(IZCategory&)` for every member that is one, in order.
template <class Action>
void ForEachMember(IZReltnColl* members, Action action) {
  zdm::AnyElement<IZSingleReltn>(members, [&](IZSingleReltn& element) {
    if (auto* member = zdm::ViewAs<IZCategory>(element.GetReltnObject())) action(*member);
    return false;
  });
}

/// Throws for a tree of too many relations before any of them is made.
void CheckSize(IZCategory& category) {
  const zdm::TreeStep<zdm::Counting> step(&category, category.GetMemberColl());
  if (step.IsTaken()) ForEachMember(category.GetMemberColl(), CheckSize);
}

template <class T>
void SavePart(const ZRefPtr<T>& part, IZStream* stream, IZDatabase* database) {
  stream->WriteFlag(part != nullptr);
  if (part != nullptr) part->Save(stream, database);
}

/// A part that is not in the stream stays as it is.
template <class T, class Make>
void LoadPart(ZRefPtr<T>& part, Make make, IZStream* stream, IZDatabase* database) {
  if (!stream->ReadFlag()) return;
  if (part == nullptr) part = make();
  if (part == nullptr) throw CAtlException(E_FAIL);
  part->Load(stream, database);
}

}  // namespace

// The plain operations. They stand here since calls through a second base reach them by thunks,
// which the library does not export for inline members.

IZObject* IZCategoryImpl::Clone() { return IZDMObjectImpl::Clone(); }
void IZCategoryImpl::SetCategoryReltn(IZObject* relation) { categoryReltn_ = relation; }
IZCategoryReltn* IZCategoryImpl::GetCategoryReltn() { return categoryReltn_; }
void IZCategoryImpl::GetName(BSTR* name) { name_.CopyTo(name); }
void IZCategoryImpl::SetName(const OLECHAR* name) { this->SetCategoryName(name); }
ULONG IZCategoryImpl::GetNumber() { return number_; }
bool IZCategoryImpl::IsFlag8000() { return JudgeFlag(0x8000); }
void IZCategoryImpl::SetFlag8000(bool set) { SetFlag(0x8000, set); }
bool IZCategoryImpl::IsFlag4000() { return JudgeFlag(0x4000); }
void IZCategoryImpl::SetFlag4000() { SetFlag(0x4000, true); }
bool IZCategoryImpl::IsFlag2000() { return JudgeFlag(0x2000); }
void IZCategoryImpl::SetFlag2000(bool set) { SetFlag(0x2000, set); }
bool IZCategoryImpl::IsFlag1000() { return JudgeFlag(0x1000); }
void IZCategoryImpl::SetFlag1000(bool set) { SetFlag(0x1000, set); }
LONG IZCategoryImpl::CategoryReserved138() { return -1; }
void IZCategoryImpl::CategoryReserved139() {}
bool IZCategoryImpl::IsFlag0800() { return JudgeFlag(0x0800); }
void IZCategoryImpl::SetFlag0800(bool set) { SetFlag(0x0800, set); }
IZDispAttrib* IZCategoryImpl::GetProjectionDispAttrib() { return projectionAttrib_; }
ZGiHatchData* IZCategoryImpl::GetHatchA() { return &hatchA_; }
IZDispAttrib* IZCategoryImpl::GetSectionDispAttrib() { return sectionAttrib_; }
ZGiHatchData* IZCategoryImpl::GetHatchB() { return &hatchB_; }
void IZCategoryImpl::SetCategoryName(const OLECHAR* name) { name_ = zdm::Bstr(name); }
bool IZCategoryImpl::IsCategoryVisible() { return JudgeFlag(0x0400); }
void IZCategoryImpl::SetCategoryVisible(bool visible) { SetFlag(0x0400, visible); }
void IZCategoryImpl::SetNumber(ULONG number) { number_ = number; }
LONG IZCategoryImpl::GetMemberCount() { return members_ != nullptr ? members_->GetCount() : 0; }
IZReltnColl* IZCategoryImpl::GetMemberColl() { return members_; }
void IZCategoryImpl::SetMemberColl(IZObject* relations) {
  members_ = relations;
  zdm::ChangeWatch::Changed(*this);
}
void IZCategoryImpl::SetFlags(USHORT flags) { flags_ = flags; }
USHORT IZCategoryImpl::GetFlags() { return flags_; }
void IZCategoryImpl::SetFlag0100(bool set) { SetFlag(0x0100, set); }
bool IZCategoryImpl::IsFlag0100() { return JudgeFlag(0x0100); }
void IZCategoryImpl::SetFlag0200(bool set) { SetFlag(0x0200, set); }
bool IZCategoryImpl::IsFlag0200() { return JudgeFlag(0x0200); }
void IZCategoryImpl::SetLevel(BYTE level) { level_ = level; }
BYTE IZCategoryImpl::GetLevel() { return level_; }
void IZCategoryImpl::SetFlag0080(bool set) { SetFlag(0x0080, set); }
bool IZCategoryImpl::IsFlag0080() { return JudgeFlag(0x0080); }
GUID* IZCategoryImpl::GetKey() { return &key_; }
void IZCategoryImpl::SetKey(const GUID* key) {
  if (key != nullptr) key_ = *key;
}

// IZCategorizing.

IZDispAttrib* IZCategoryImpl::GetCategorizedDispAttrib(bool projection) {
  if (categoryReltn_ == nullptr) return projectionAttrib_;
  return projection ? categoryReltn_->GetProjectionDispAttrib()
                    : categoryReltn_->GetSectionDispAttrib();
}

ZGiHatchData* IZCategoryImpl::GetCategorizedHatch(bool second) {
  if (categoryReltn_ == nullptr) return &hatchB_;
  return second ? categoryReltn_->GetHatchB() : categoryReltn_->GetHatchA();
}

bool IZCategoryImpl::IsCategorizedVisible() {
  return categoryReltn_ == nullptr || categoryReltn_->IsVisible(zdm::kCategoryDraw, nullptr);
}

// Values.

void IZCategoryImpl::SetProjectionDispAttrib(IZDispAttrib* source) {
  CopyInto(projectionAttrib_, source);
}

void IZCategoryImpl::SetSectionDispAttrib(IZDispAttrib* source) {
  CopyInto(sectionAttrib_, source);
}

void IZCategoryImpl::SetHatchA(const ZGiHatchData* source) {
  if (source != nullptr) hatchA_ = *source;
}

void IZCategoryImpl::SetHatchB(const ZGiHatchData* source) {
  if (source != nullptr) hatchB_ = *source;
}

IZCategory* IZCategoryImpl::GetParentCategory() { return TargetOf<IZCategory>(parent_); }
void IZCategoryImpl::SetParentCategory(IZObject* parent) {
  PointAt(parent_, parent, false);
  zdm::ChangeWatch::Changed(*this);
}
IZGiMaterial* IZCategoryImpl::GetMaterial() { return TargetOf<IZGiMaterial>(material_); }
void IZCategoryImpl::SetMaterial(IZObject* material) {
  PointAt(material_, material, true);
  zdm::ChangeWatch::Changed(*this);
}
IZDMObject* IZCategoryImpl::GetReference() { return TargetOf<IZDMObject>(reference_); }
void IZCategoryImpl::SetReference(IZObject* object) {
  PointAt(reference_, object, true);
  zdm::ChangeWatch::Changed(*this);
}

// Members.

void IZCategoryImpl::AddMember(IZDMObject* object) {
  if (object == nullptr) return;
  if (members_ == nullptr) members_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
  const ZRefPtr<IZSingleReltn> relation = NewReltn(false);
  if (relation == nullptr) return;
  relation->SetReltnObj(object);
  members_->AddTail(relation);
  zdm::ChangeWatch::Changed(*this);
  if (auto* member = zdm::ViewAs<IZCategory>(object)) {
    member->SetParentCategory(static_cast<IZCategory*>(this));
  }
}

IZDMObjColl* IZCategoryImpl::GetMembers() {
  if (members_ == nullptr || members_->IsEmpty()) return nullptr;
  auto objects = zdm::NewOf<IZDMObjColl, CZDMObjColl>();
  zdm::AnyElement<IZSingleReltn>(members_, [&](IZSingleReltn& element) {
    objects->AddTail(element.GetReltnObject());
    return false;
  });
  IZDMObjColl* result = objects.Detach();
  result->ForgetReference();
  return result;
}

IZCategoryReltn* IZCategoryImpl::CreateCategoryReltn() {
  using Step = zdm::TreeStep<IZCategoryReltn>;
  if (!Step::IsUnderWay()) CheckSize(*this);
  const Step step(this, members_);
  if (!step.IsTaken()) return nullptr;
  auto relation = zdm::CreateAs<IZCategoryReltn, CZCategoryReltn>();
  if (relation == nullptr) return nullptr;
  relation->SetProjectionDispAttrib(projectionAttrib_);
  relation->SetSectionDispAttrib(sectionAttrib_);
  relation->SetReltnObj(static_cast<IZCategory*>(this));
  ForEachMember(members_, [&](IZCategory& member) {
    const ZRefPtr<IZCategoryReltn> below = member.CreateCategoryReltn();
    if (below != nullptr) static_cast<CZCategoryReltn&>(*relation).AppendSubReltn(below);
  });
  IZCategoryReltn* result = relation.Detach();
  result->ForgetReference();
  return result;
}

// IZDMObject.

bool IZCategoryImpl::JudgeSame(IZDMObject* other) {
  auto* category = zdm::ViewAs<IZCategory>(other);
  return category != nullptr && category->GetNumber() == number_;
}

void IZCategoryImpl::CopyFrom(IZDMObject* source, LONG) {
  if (source == nullptr || static_cast<CZObject*>(source) == static_cast<CZObject*>(this)) return;
  const ZRefPtr<IZCategory> category = zdm::ViewAs<IZCategory>(source);
  IZDMObjectImpl::CopyFrom(source, zdm::kCopyMode);
  if (category == nullptr) return;
  zdm::Bstr name;
  category->GetName(name.Out());
  name_ = std::move(name);
  number_ = category->GetNumber();
  SetKey(category->GetKey());
  flags_ = category->GetFlags();
  SetParentCategory(category->GetParentCategory());
  SetProjectionDispAttrib(category->GetProjectionDispAttrib());
  SetSectionDispAttrib(category->GetSectionDispAttrib());
  ZRefPtr<IZReltnColl> members;
  if (IZReltnColl* coll = category->GetMemberColl()) coll->Clone(members.Out(), true);
  members_ = members;
  zdm::ChangeWatch::Changed(*this);
  SetHatchA(category->GetHatchA());
  SetHatchB(category->GetHatchB());
  SetMaterial(category->GetMaterial());
  SetReference(category->GetReference());
}

bool IZCategoryImpl::VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) {
  if (IZDMObjectImpl::VisitReferences(root, visitor)) return true;
  IZDMObject* const owner = static_cast<IZCategory*>(this);
  IZRelation* const offered[] = {projectionAttrib_.Get(), sectionAttrib_.Get(), material_.Get(),
                                 reference_.Get(), parent_.Get()};
  for (IZRelation* relation : offered) {
    if (relation != nullptr && visitor->Visit(root, owner, relation)) return true;
  }
  return members_ != nullptr && members_->Accept(root, owner, visitor);
}

// Own data, little-endian.
//   size      field
//      4      number
//      2      display flags
//      1      level
//   variable  name (IZStream::WriteBSTR)
//   variable  hatch A, then hatch B (ZGiHatchData)
//   then a byte each that is 1 when the record behind it is there, else 0:
//             members (relation collection), parent, projection attribute, section attribute,
//             material, reference
//     16      key
void IZCategoryImpl::SaveOwnData(IZStream* stream, IZDatabase* database) {
  stream->Write(&number_, sizeof(number_));
  stream->Write(&flags_, sizeof(flags_));
  stream->Write(&level_, sizeof(level_));
  stream->WriteBSTR(name_.Get());
  hatchA_.Save(stream);
  hatchB_.Save(stream);
  SavePart(members_, stream, database);
  SavePart(parent_, stream, database);
  SavePart(projectionAttrib_, stream, database);
  SavePart(sectionAttrib_, stream, database);
  SavePart(material_, stream, database);
  SavePart(reference_, stream, database);
  stream->Write(&key_, sizeof(key_));
}

void IZCategoryImpl::LoadOwnData(IZStream* stream, IZDatabase* database) {
  stream->Read(&number_, sizeof(number_));
  stream->Read(&flags_, sizeof(flags_));
  stream->Read(&level_, sizeof(level_));
  stream->ReadBSTR(name_.Out());
  hatchA_.Load(stream);
  hatchB_.Load(stream);
  if (stream->ReadFlag()) {
    if (members_ == nullptr) members_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
    members_->RemoveAll();
    members_->Load(stream, database);
  }
  const auto plain = [] { return NewReltn(false); };
  const auto diffusible = [] { return NewReltn(true); };
  LoadPart(parent_, plain, stream, database);
  LoadPart(projectionAttrib_, NewAttrib, stream, database);
  LoadPart(sectionAttrib_, NewAttrib, stream, database);
  LoadPart(material_, diffusible, stream, database);
  LoadPart(reference_, diffusible, stream, database);
  zdm::ChangeWatch::Changed(*this);
  stream->Read(&key_, sizeof(key_));
}
