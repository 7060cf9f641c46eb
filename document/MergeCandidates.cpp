#include "document/MergeCandidates.h"

#include "document/ClassTable.h"
#include "platform/geometry/CMT.h"
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/parameters/CZDMParameter.h"
#include "zdm/relations/IZSingleReltn.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <typeinfo>

namespace zdm {

namespace {

/// Classes of the document judge by class and ID.
bool IsOfDocument(IZDMObject* object) { return object->GetZRMID() == DocumentModule::kID; }

std::string KeyOf(const GUID& classId, const std::string& rest) {
  return std::string(reinterpret_cast<const char*>(&classId), sizeof(classId)) + rest;
}

std::string KeyOfManager(IZDMObject* manager) {
  Bstr name;
  manager->GetName(name.Out());
  return KeyOf(manager->GetZRID(), ToUtf8(name.View()));
}

std::string KeyOfNumber(ULONG number) { return 'n' + std::to_string(number); }

std::string KeyOfDefinition(IZDefinition& definition) {
  GUID guid = GUID_NULL;
  return KeyOf(*definition.GetKey(&guid), {});
}

/// What an object of the library judges by alone; empty for one that has to be asked.
std::string KeyOfJudgement(IZDMObject* object) {
  const GUID classId = object->GetZRID();
  if (classId == CZDMCategory::kClassID)
    return KeyOfNumber(ViewAs<IZCategory>(object)->GetNumber());
  if (classId == CZDefinition::kClassID) return KeyOfDefinition(*ViewAs<IZDefinition>(object));
  return {};
}

/// Parameters count as the same by their values, which a merge is to bring together.
bool AreOneParameter(IZDMObject* left, IZDMObject* right) {
  auto* one = ViewAs<IZDMParameter>(left);
  auto* other = ViewAs<IZDMParameter>(right);
  if (one == nullptr || other == nullptr) return false;
  GUID keys[2];
  return *one->GetDefinitionGUID(&keys[0]) == *other->GetDefinitionGUID(&keys[1]);
}

template <class T>
std::string BytesOf(const T& value) {
  return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

/// Equal keys for values that are the same; none for a value that has to be asked, such as text
/// that may be equal to another one although it is written otherwise. Numbers are keys themselves.
std::optional<std::string> KeyOfValue(ZDfValue& value, double* number) {
  const std::type_info& type = typeid(value);
  const std::string never = BytesOf(&value);  // not even the same as itself
  if (type == typeid(ZDfDouble)) {
    const double held = static_cast<ZDfDouble&>(value).Value;
    if (!std::isfinite(held)) return never;
    *number = held;
    return std::string();
  }
  if (type == typeid(ZDfLong)) return BytesOf(static_cast<ZDfLong&>(value).Value);
  if (type == typeid(ZDfBool)) return BytesOf(static_cast<ZDfBool&>(value).Value);
  if (type == typeid(ZDfGUID)) return BytesOf(static_cast<ZDfGUID&>(value).Value);
  if (type == typeid(ZDfUlongPtr)) return BytesOf(static_cast<ZDfUlongPtr&>(value).Value);
  if (type == typeid(ZDfElement)) return BytesOf(static_cast<ZDfElement&>(value).Value.Get());
  if (type == typeid(ZDfReltnColl)) return never;
  if (type == typeid(ZDfRelation)) {
    IZSingleReltn* const relation = static_cast<ZDfRelation&>(value).Value;
    return BytesOf(relation != nullptr ? relation->GetReltnObject() : nullptr);
  }
  if (type == typeid(ZDfCComBSTR)) {
    const auto text = static_cast<ZDfCComBSTR&>(value).Value.View();
    const auto isPlain = [](OLECHAR unit) { return unit >= 0x20 && unit < 0x7F; };
    if (std::ranges::all_of(text, isPlain)) return std::string(text.begin(), text.end());
  }
  return std::nullopt;
}

/// What CZDMParameter compares.
std::optional<std::pair<std::string, double>> KeyOfParameter(IZParameter& parameter) {
  std::pair<std::string, double> key = {BytesOf(parameter.GetKey()), 0.0};
  key.first += parameter.GetDefinition() != nullptr ? 'd' : '-';
  ZDfValue* const value = parameter.GetValue();
  if (value == nullptr) return key;
  const std::optional<std::string> payload = KeyOfValue(*value, &key.second);
  if (!payload.has_value()) return std::nullopt;
  key.first += static_cast<char>(value->GetType());
  key.first += BytesOf(parameter.GetFlags()) + *payload;
  return key;
}

}  // namespace

MergeCandidates::MergeCandidates(IZDMObjMgr& manager) {
  for (LONGLONG pos = manager.GetValidHeadPosition(); pos != 0;) {
    IZDMObject* object = manager.GetValidNext(pos);
    byID_.try_emplace(object->GetID(), object);
    if (ViewAs<IZDMObjMgr>(object) != nullptr) {
      managers_.try_emplace(KeyOfManager(object), object);
    } else if (!IsOfDocument(object)) {
      Add({others_++, object});
    }
  }
}

void MergeCandidates::Add(const Place& place) {
  if (place.object->GetZRID() == CZDMParameter::kClassID) {
    allParameters_.push_back(place);
    const auto key = KeyOfParameter(*ViewAs<IZParameter>(place.object));
    if (key.has_value()) {
      parameters_.try_emplace(*key, place);
    } else {
      asked_.push_back(place);
    }
    return;
  }
  const Key key = KeyOfJudgement(place.object);
  if (key.empty()) {
    asked_.push_back(place);
  } else {
    judging_.try_emplace(key, place);
  }
}

IZDMObject* MergeCandidates::Find(IZDMObject* source) const {
  const auto same = byID_.find(source->GetID());
  IZDMObject* sameID = same != byID_.end() ? same->second : nullptr;
  if (ViewAs<IZDMObjMgr>(source) != nullptr) return FindManager(source, sameID);
  if (sameID != nullptr && (sameID->JudgeSame(source) || AreOneParameter(sameID, source))) {
    return sameID;
  }
  return FindOther(source);
}

IZDMObject* MergeCandidates::FindManager(IZDMObject* source, IZDMObject* sameID) const {
  const Key key = KeyOfManager(source);
  const bool isOne = sameID != nullptr && ViewAs<IZDMObjMgr>(sameID) != nullptr;
  if (isOne && KeyOfManager(sameID) == key) return sameID;
  const auto found = managers_.find(key);
  return found != managers_.end() ? found->second : nullptr;
}

/// The first that counts as the same.
IZDMObject* MergeCandidates::FindOther(IZDMObject* source) const {
  Place first = {others_, nullptr};
  const auto look = [&](const Key& key) {
    const auto found = judging_.find(key);
    if (found != judging_.end() && found->second.index < first.index) first = found->second;
  };
  if (auto* category = ViewAs<IZCategory>(source)) look(KeyOfNumber(category->GetNumber()));
  if (auto* definition = ViewAs<IZDefinition>(source)) look(KeyOfDefinition(*definition));
  if (auto* parameter = ViewAs<IZParameter>(source)) LookForParameter(source, *parameter, first);
  LookAmong(asked_, source, first);
  return first.object;
}

void MergeCandidates::LookAmong(const Places& places, IZDMObject* source, Place& first) const {
  for (const Place& place : places) {
    if (place.index > first.index) break;
    if (place.object->JudgeSame(source)) {
      first = place;
      break;
    }
  }
}

void MergeCandidates::LookForParameter(IZDMObject* source, IZParameter& parameter,
                                       Place& first) const {
  const auto key = KeyOfParameter(parameter);
  if (!key.has_value()) return LookAmong(allParameters_, source, first);
  auto at = parameters_.lower_bound({key->first, key->second - CMT::GetDist()});
  const std::pair last = {key->first, key->second + CMT::GetDist()};
  for (; at != parameters_.end() && at->first <= last; ++at) {
    const Place& place = at->second;
    if (place.index < first.index && place.object->JudgeSame(source)) first = place;
  }
}

}  // namespace zdm
