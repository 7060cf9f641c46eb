#include "zdm/parameters/PropertyBridge.h"

#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZPropertyIterator.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/relations/IZSingleReltn.h"

namespace zdm {

namespace {

/// What types have in common. What they stand for beside that is the host's.
enum class Form {
  kNone,
  kText,
  kTextShown,
  kLong,
  kDouble,
  kRelation,
  kYesNo,
  kValue,
  kValueShown,
  kChoice,
};

Form FormOf(ULONG type) {
  switch (type) {
    case 1:
      return Form::kText;
    case 8:
      return Form::kTextShown;
    case 2:
    case 20:
    case 25:
      return Form::kLong;
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
    case 22:
    case 159:
    case 172:
      return Form::kDouble;
    case 9:
      return Form::kRelation;
    case 10:
      return Form::kYesNo;
    case 27:
      return Form::kValue;
    case 21:
    case 29:
      return Form::kValueShown;
    case 17:
    case 24:
      return Form::kChoice;
    default:
      return Form::kNone;
  }
}

constexpr ULONG kShownUnhandled = 29;
constexpr ULONG kChoiceOrNone = 17;  // shows that nothing is chosen, which 24 does not

template <class V>
V* As(ZDfValue* value) {
  return dynamic_cast<V*>(value);
}

IZDMObject* TargetOf(const ZDfRelation& relation) {
  return relation.Value != nullptr ? relation.Value->GetReltnObject() : nullptr;
}

void ShowText(ZDfValue* value, bool namesToo, IZProperty& property) {
  if (const auto* text = As<ZDfCComBSTR>(value)) {
    property.SetString(text->Value.Get());
  } else if (const auto* relation = As<ZDfRelation>(value); relation != nullptr && namesToo) {
    Bstr name(OLESTR(""));
    if (IZDMObject* target = TargetOf(*relation)) target->GetName(name.Out());
    property.SetString(name.Get());
  }
}

void ShowYesNo(ZDfValue* value, IZProperty& property) {
  if (const auto* flag = As<ZDfBool>(value)) {
    property.SetBool(flag->Value);
  } else if (const auto* relation = As<ZDfRelation>(value)) {
    IZDMObject* target = TargetOf(*relation);
    property.SetBool(target != nullptr && target->IsObjectValid());
  }
}

void ShowChoice(ZDfValue* value, bool alsoNone, IZProperty& property) {
  const auto* relation = As<ZDfRelation>(value);
  auto* choice = ViewAs<IZPropertyIterator>(&property);
  if (relation == nullptr || relation->Value == nullptr || choice == nullptr) return;
  IZDMObject* target = TargetOf(*relation);
  if (target == nullptr && !alsoNone) return;
  choice->SetChosenObject(target);
  choice->Rebuild();
}

void TakeTarget(ZDfValue* value, IZDMObject* target) {
  const auto* relation = As<ZDfRelation>(value);
  if (relation != nullptr && relation->Value != nullptr) relation->Value->SetReltnObj(target);
}

}  // namespace

void ShowValue(ULONG type, ZDfValue* value, IZProperty& property, bool& handled) {
  const Form form = FormOf(type);
  if (form != Form::kNone && type != kShownUnhandled) handled = true;
  switch (form) {
    case Form::kNone:
      break;
    case Form::kText:
    case Form::kTextShown:
      ShowText(value, form == Form::kText, property);
      break;
    case Form::kLong:
      if (const auto* number = As<ZDfLong>(value)) property.SetLong(number->Value);
      break;
    case Form::kDouble:
      if (const auto* number = As<ZDfDouble>(value)) property.SetDouble(number->Value);
      break;
    case Form::kRelation:
    case Form::kValue:
    case Form::kValueShown:
      property.SetObject(value);
      break;
    case Form::kYesNo:
      ShowYesNo(value, property);
      break;
    case Form::kChoice:
      ShowChoice(value, type == kChoiceOrNone, property);
      break;
  }
}

void TakeValue(ULONG type, HeldValue& value, IZProperty& property, bool& handled) {
  const Form form = FormOf(type);
  if (form == Form::kNone || form == Form::kTextShown || form == Form::kValueShown) return;
  handled = true;
  switch (form) {
    case Form::kText:
      if (auto* text = value.As<ZDfCComBSTR>()) {
        Bstr taken;
        property.GetString(taken.Out());
        text->Value = std::move(taken);
      }
      break;
    case Form::kLong:
      if (auto* number = value.As<ZDfLong>()) number->Value = property.GetLong();
      break;
    case Form::kDouble:
      if (auto* number = value.As<ZDfDouble>()) number->Value = property.GetDouble();
      break;
    case Form::kRelation:
      if (const auto* taken = As<ZDfRelation>(property.GetObject())) {
        TakeTarget(value.Get(), TargetOf(*taken));
      }
      break;
    case Form::kYesNo:
      if (auto* flag = value.As<ZDfBool>()) flag->Value = property.GetBool();
      break;
    case Form::kValue:
      if (const ZDfValue* taken = property.GetObject()) value.CopyFrom(*taken);
      break;
    case Form::kChoice:
      if (auto* choice = ViewAs<IZPropertyIterator>(&property)) {
        TakeTarget(value.Get(), ViewAs<IZDMObject>(choice->GetChosenObject()));
      }
      break;
    default:
      break;
  }
}

}  // namespace zdm
