#include "zdm/relations/ZDfValues.h"

#include "platform/core/IZStream.h"
#include "platform/geometry/CMT.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/IZReltnVisitor.h"
#include "zdm/relations/IZSingleReltn.h"

#include <cmath>
#include <memory>

ZDfValue::~ZDfValue() = default;
bool ZDfValue::Accept(IZDMObject*, IZDMObject*, IZReltnVisitor*) { return false; }

// NOLINTBEGIN(bugprone-macro-parentheses): Class names a type.
// What is alike in all values: life, registration, type.
#define ZDM_FIELD_VALUE_BODY(Class)                      \
  ZDfValueRxClass* Class::gpDesc = nullptr;              \
  ZDfValue* Class::Creator() { return new Class; }       \
  void Class::rxInit() { Register<Class>(); }            \
  Class::Class(const Class& other) = default;            \
  Class& Class::operator=(const Class& other) = default; \
  Class::~Class() = default;                             \
  unsigned char Class::GetType() { return kType; }       \
  void Class::Release() { delete this; }

// Values whose payload is copied as it is.
#define ZDM_PLAIN_VALUE_BODY(Class)                                              \
  ZDM_FIELD_VALUE_BODY(Class)                                                    \
  Class::Class() = default;                                                      \
  void Class::Clone(ZDfValue** out) { *out = new Class(*this); }                 \
  void Class::CopyFrom(ZDfValue* other) {                                        \
    if (const auto* source = dynamic_cast<Class*>(other)) Value = source->Value; \
  }

// NOLINTEND(bugprone-macro-parentheses)

namespace {

template <class V>
void Register() {
  auto record = std::make_unique<ZDfValueRxClass>();
  record->type = V::kType;
  record->creator = &V::Creator;
  // Where the code is taken, the record in force stays the one that is known.
  if (ZDfValueRxClass::AddRxClass(record.get())) V::gpDesc = record.release();
}

template <class V>
bool SamePayload(const V& value, ZDfValue* other) {
  const auto* same = dynamic_cast<V*>(other);
  return same != nullptr && value.Value == same->Value;
}

template <class T>
T ReadPlain(IZStream* stream) {
  T value = {};
  stream->Read(&value, sizeof(value));
  return value;
}

ZRefPtr<IZSingleReltn> NewReltn() {
  auto reltn = zdm::CreateAs<IZSingleReltn>(zdm::kPlainReltnClass);
  if (reltn != nullptr) reltn->SetReltnDiffusible(false);
  return reltn;
}

ZRefPtr<IZReltnColl> NewColl() { return zdm::CreateAs<IZReltnColl, CZReltnColl>(); }

/// The held object, or a new one; without either a record can be neither read nor written.
template <class T>
ZRefPtr<T> HeldOr(const ZRefPtr<T>& held, ZRefPtr<T> (*make)()) {
  ZRefPtr<T> object = held != nullptr ? held : make();
  if (object == nullptr) throw CAtlException(E_FAIL);
  return object;
}

}  // namespace

ZDM_PLAIN_VALUE_BODY(ZDfDouble)
ZDM_PLAIN_VALUE_BODY(ZDfGUID)
ZDM_PLAIN_VALUE_BODY(ZDfLong)
ZDM_PLAIN_VALUE_BODY(ZDfBool)
ZDM_PLAIN_VALUE_BODY(ZDfUlongPtr)
ZDM_FIELD_VALUE_BODY(ZDfRelation)
ZDM_FIELD_VALUE_BODY(ZDfCComBSTR)
ZDM_FIELD_VALUE_BODY(ZDfElement)
ZDM_FIELD_VALUE_BODY(ZDfReltnColl)

bool ZDfDouble::JudgeSame(ZDfValue* other) {
  const auto* same = dynamic_cast<ZDfDouble*>(other);
  return same != nullptr && std::abs(Value - same->Value) < CMT::GetDist();
}

void ZDfDouble::Load(IZStream* stream, IZDatabase*) { Value = ReadPlain<double>(stream); }
void ZDfDouble::Save(IZStream* stream, IZDatabase*) { stream->Write(&Value, sizeof(Value)); }

bool ZDfGUID::JudgeSame(ZDfValue* other) { return SamePayload(*this, other); }
void ZDfGUID::Load(IZStream* stream, IZDatabase*) { Value = ReadPlain<GUID>(stream); }
void ZDfGUID::Save(IZStream* stream, IZDatabase*) { stream->Write(&Value, sizeof(Value)); }

bool ZDfLong::JudgeSame(ZDfValue* other) { return SamePayload(*this, other); }
void ZDfLong::Load(IZStream* stream, IZDatabase*) { Value = ReadPlain<LONG>(stream); }
void ZDfLong::Save(IZStream* stream, IZDatabase*) { stream->Write(&Value, sizeof(Value)); }

bool ZDfBool::JudgeSame(ZDfValue* other) { return SamePayload(*this, other); }
void ZDfBool::Load(IZStream* stream, IZDatabase*) { Value = ReadPlain<BYTE>(stream) != 0; }

void ZDfBool::Save(IZStream* stream, IZDatabase*) {
  const BYTE flag = Value ? 1 : 0;
  stream->Write(&flag, sizeof(flag));
}

bool ZDfUlongPtr::JudgeSame(ZDfValue* other) { return SamePayload(*this, other); }
void ZDfUlongPtr::Load(IZStream*, IZDatabase*) {}
void ZDfUlongPtr::Save(IZStream*, IZDatabase*) {}

ZDfCComBSTR::ZDfCComBSTR() : Value(OLESTR("")) {}
void ZDfCComBSTR::Clone(ZDfValue** out) { *out = new ZDfCComBSTR(*this); }

bool ZDfCComBSTR::JudgeSame(ZDfValue* other) {
  const auto* same = dynamic_cast<ZDfCComBSTR*>(other);
  return same != nullptr && zdm::SameName(Value.Get(), same->Value.Get());
}

void ZDfCComBSTR::CopyFrom(ZDfValue* other) {
  const auto* source = dynamic_cast<ZDfCComBSTR*>(other);
  if (source != nullptr && source != this) Value = source->Value;
}

void ZDfCComBSTR::Load(IZStream* stream, IZDatabase*) { stream->ReadBSTR(Value.Out()); }
void ZDfCComBSTR::Save(IZStream* stream, IZDatabase*) { stream->WriteBSTR(Value.Get()); }

ZDfElement::ZDfElement() = default;

void ZDfElement::Clone(ZDfValue** out) {
  auto copy = std::make_unique<ZDfElement>();
  copy->Value = zdm::CloneAs<IZDMObject>(Value);
  *out = copy.release();
}

bool ZDfElement::JudgeSame(ZDfValue* other) { return SamePayload(*this, other); }

void ZDfElement::CopyFrom(ZDfValue* other) {
  const auto* source = dynamic_cast<ZDfElement*>(other);
  if (source == nullptr || source->Value == Value) return;
  Value = zdm::CloneAs<IZDMObject>(source->Value);
}

void ZDfElement::Load(IZStream*, IZDatabase*) {}
void ZDfElement::Save(IZStream*, IZDatabase*) {}

ZDfRelation::ZDfRelation() : Value(NewReltn()) {}

void ZDfRelation::Clone(ZDfValue** out) {
  auto copy = std::make_unique<ZDfRelation>();
  if (copy->Value != nullptr) copy->Value->CopyFrom(Value);
  *out = copy.release();
}

bool ZDfRelation::JudgeSame(ZDfValue* other) {
  const auto* same = dynamic_cast<ZDfRelation*>(other);
  if (same == nullptr) return false;
  const auto target = [](IZSingleReltn* reltn) {
    return reltn != nullptr ? reltn->GetReltnObject() : nullptr;
  };
  return target(Value) == target(same->Value);
}

void ZDfRelation::CopyFrom(ZDfValue* other) {
  const auto* source = dynamic_cast<ZDfRelation*>(other);
  if (source != nullptr) Value = zdm::CloneAs<IZSingleReltn>(source->Value);
}

void ZDfRelation::Load(IZStream* stream, IZDatabase* database) {
  Value = HeldOr(Value, &NewReltn);
  Value->Load(stream, database);
}

void ZDfRelation::Save(IZStream* stream, IZDatabase* database) {
  HeldOr(Value, &NewReltn)->Save(stream, database);
}

bool ZDfRelation::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  return Value != nullptr && visitor->Visit(root, owner, Value.Get());
}

ZDfReltnColl::ZDfReltnColl() : Value(NewColl()) {}

void ZDfReltnColl::Clone(ZDfValue** out) {
  auto copy = std::make_unique<ZDfReltnColl>();
  copy->CopyFrom(this);
  *out = copy.release();
}

bool ZDfReltnColl::JudgeSame(ZDfValue*) { return false; }

void ZDfReltnColl::CopyFrom(ZDfValue* other) {
  const auto* source = dynamic_cast<ZDfReltnColl*>(other);
  if (source == nullptr || source == this) return;
  ZRefPtr<IZReltnColl> copy;
  if (source->Value != nullptr) source->Value->Clone(copy.Out(), true);
  Value = copy;
}

void ZDfReltnColl::Load(IZStream* stream, IZDatabase* database) {
  Value = HeldOr(Value, &NewColl);
  Value->Load(stream, database);
}

void ZDfReltnColl::Save(IZStream* stream, IZDatabase* database) {
  HeldOr(Value, &NewColl)->Save(stream, database);
}

bool ZDfReltnColl::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  return Value != nullptr && Value->Accept(root, owner, visitor);
}
