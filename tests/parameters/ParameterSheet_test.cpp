// Values shown in properties and taken back from them, by the type of the definition's property.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/host/IZPropertyIterator.h"
#include "zdm/properties/IZPropertyImpl.h"

#include <gtest/gtest.h>

#include <functional>

ZDM_TEST_CLASS(Chooser, IZObject, IZProperty, IZPropertyIterator)

namespace zdm::test {

/// A property that lets the user choose an object, and may do anything as one is shown.
class Chooser : public IZPropertyImpl<IZProperty>, public IZObjectImpl<IZPropertyIterator> {
  ZDM_OBJECT(Chooser)
 public:
  using IZPropertyImpl::AddRef;
  using IZPropertyImpl::Release;
  IZObject* Clone() override { return nullptr; }
  void SetChosenObject(IZDMObject* object) override {
    if (onShown) onShown();
    chosen = object;
    steps += "set ";
  }
  void Rebuild() override { steps += "rebuild"; }
  IZObject* GetChosenObject() override { return chosen; }

  IZDMObject* chosen = nullptr;
  std::string steps;
  std::function<void()> onShown;
};

ZDM_OBJECT_BODY(Chooser)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

constexpr ULONG kTypes[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,   9,   10,  11,  17,        18,
                            20, 21, 22, 24, 25, 27, 29, 30, 100, 159, 172, 173, 0xFFFFFFFF};

/// A property that lets the user choose an object, offered to the parameter of definition 1.
ZRefPtr<Chooser> OfferedChooser() {
  auto property = zdm::MakeObject<Chooser, Chooser>();
  property->SetGUID(Key(1));
  return property;
}

/// The types that `used` is true for.
template <class Used>
std::string TypesWith(Definitions& db, const std::function<void(IZParameter*)>& set, Used used) {
  std::string types;
  for (const ULONG type : kTypes) {
    const auto parameter = MakeParameter(db.Make(1, type));
    set(parameter);
    if (used(*parameter.Get(), *Offered().Get())) {
      types += (types.empty() ? "" : " ") + std::to_string(type);
    }
  }
  return types;
}

TEST(ParameterSheet, ShowsAValueInThePropertyOfItsType) {
  Definitions db;
  const auto object = db.MakeObject(OLESTR("target"));
  const auto text = [](IZProperty& p) { return TextOf([&](BSTR* out) { p.GetString(out); }); };
  const auto attached = [](IZProperty& p) { return p.GetObject() != nullptr; };
  const struct {
    const char* name;
    std::function<void(IZParameter*)> set;
    std::function<bool(IZProperty&)> shown;
    const char* types;
  } rows[] = {
      {"string", [](IZParameter* p) { p->SetString(OLESTR("t")); },
       [&](IZProperty& p) { return text(p) == "t"; }, "1 8"},
      {"name of the object", [&](IZParameter* p) { p->SetRelation(object, false); },
       [&](IZProperty& p) { return text(p) == "target"; }, "1"},
      {"no object", [](IZParameter* p) { p->SetRelation(nullptr, false); },
       [&](IZProperty& p) { return text(p).empty(); }, "1"},
      {"long", [](IZParameter* p) { p->SetLong(5); },
       [](IZProperty& p) { return p.GetLong() == 5; }, "2 20 25"},
      {"double", [](IZParameter* p) { p->SetDouble(2.5); },
       [](IZProperty& p) { return p.GetDouble() == 2.5; }, "3 4 5 6 7 22 159 172"},
      {"bool", [](IZParameter* p) { p->SetBool(true); }, [](IZProperty& p) { return p.GetBool(); },
       "10"},
      {"object is valid", [&](IZParameter* p) { p->SetRelation(object, false); },
       [](IZProperty& p) { return p.GetBool(); }, "10"},
      {"any value", [](IZParameter* p) { p->SetGUID(Key(2)); }, attached, "9 21 27 29"},
  };
  for (const auto& row : rows) {
    const auto shows = [&](IZParameter& parameter, IZProperty& property) {
      const Answer answer = Fill(&parameter, &property);
      if (!row.shown(property)) return false;
      EXPECT_EQ(answer.isHandled, parameter.GetPropertyType() != 29) << row.name;
      return true;
    };
    EXPECT_EQ(TypesWith(db, row.set, shows), row.types) << row.name;
  }
}

TEST(ParameterSheet, TakesWhatWasEditedBack) {
  Definitions db;
  const auto object = db.MakeObject();
  using P = IZParameter&;
  ZDfRelation reference;
  reference.Value->SetReltnObj(object.Get());
  const auto toObject = [&](IZProperty& p) { p.SetObject(&reference); };
  const auto toText = [](IZProperty& p) { p.SetString(OLESTR("new")); };
  const auto hasObject = [&](P p) { return p.GetRelation() == object; };
  const struct {
    const char* name;
    std::function<void(IZParameter*)> set;
    std::function<void(IZProperty&)> edit;
    std::function<bool(IZParameter&)> taken;
    const char* types;
  } rows[] = {
      {"string", [](IZParameter* p) { p->SetString(OLESTR("t")); }, toText,
       [](P p) { return StringOf(&p) == "new"; }, "1"},
      {"long", [](IZParameter* p) { p->SetLong(5); }, [](IZProperty& p) { p.SetLong(6); },
       [](P p) { return p.GetLong() == 6; }, "2 20 25"},
      {"double", [](IZParameter* p) { p->SetDouble(2.5); }, [](IZProperty& p) { p.SetDouble(3.5); },
       [](P p) { return p.GetDouble() == 3.5; }, "3 4 5 6 7 22 159 172"},
      {"bool", [](IZParameter* p) { p->SetBool(false); }, [](IZProperty& p) { p.SetBool(true); },
       [](P p) { return p.GetBool(); }, "10"},
      {"object", [](IZParameter* p) { p->SetRelation(nullptr, false); }, toObject, hasObject,
       "9 27"},
      {"any value", [](IZParameter* p) { p->SetLong(5); }, toObject, hasObject, "27"},
      {"wrong kind", [](IZParameter* p) { p->SetBool(false); }, toText,
       [](P p) { return p.GetValue()->GetType() != 7; }, ""},
  };
  for (const auto& row : rows) {
    const auto takes = [&](IZParameter& parameter, IZProperty& property) {
      row.edit(property);
      EXPECT_TRUE(Apply(&parameter, &property).serves);
      return row.taken(parameter);
    };
    EXPECT_EQ(TypesWith(db, row.set, takes), row.types) << row.name;
  }
  const auto isHandled = [](IZParameter& parameter, IZProperty& property) {
    return Apply(&parameter, &property).isHandled;
  };
  EXPECT_EQ(TypesWith(
                db, [](IZParameter* p) { p->SetUlongPtr(1); }, isHandled),
            "1 2 3 4 5 6 7 9 10 17 20 22 24 25 27 159 172")
      << "handled whatever the value";
}

TEST(ParameterSheet, ChoosesObjects) {
  Definitions db;
  const auto object = db.MakeObject();
  const struct {
    ULONG type;
    IZDMObject* target;
    const char* steps;
  } rows[] = {{17, object, "set rebuild"},
              {17, nullptr, "set rebuild"},
              {24, object, "set rebuild"},
              {24, nullptr, ""}};
  for (const auto& row : rows) {
    const auto parameter = MakeParameter(db.Make(1, row.type));
    parameter->SetRelation(row.target, false);
    const auto property = OfferedChooser();
    EXPECT_EQ(Fill(parameter, property.Get()), kHandled);
    EXPECT_EQ(property->steps, row.steps) << row.type;
    EXPECT_EQ(property->chosen, row.target);

    const auto chosen = db.MakeObject();
    property->chosen = chosen;
    EXPECT_TRUE(Apply(parameter, property.Get()).serves);
    EXPECT_EQ(parameter->GetRelation(), chosen);
  }
}

TEST(ParameterSheet, ServesThePropertiesOfItsDefinitionAlone) {
  Definitions db;
  const auto definition = db.Make(1, 2);
  const auto empty = MakeParameter(definition);
  const auto strange = MakeParameter(db.Make(2, 2));
  const auto undefined = MakeParameter();
  strange->SetLong(5);
  undefined->SetLong(5);
  for (IZParameter* parameter : {empty.Get(), strange.Get(), undefined.Get()}) {
    const auto property = Offered();
    const Bytes before = Saved(property);
    EXPECT_EQ(Fill(parameter, property), kStrange);
    EXPECT_EQ(Apply(parameter, property), kStrange);
    EXPECT_EQ(Saved(property), before);
  }
}

TEST(ParameterSheet, ShowsTheSourceOfALinkByTheOwnDefinition) {
  Definitions db;
  const auto definition = db.Make(1, 3);
  for (IZDefinition* sources : {db.Make(2, 1).Get(), static_cast<IZDefinition*>(nullptr)}) {
    const auto source = MakeSource(db, sources);
    source->SetDouble(2.5);
    source->SetReadOnly(true);
    const auto parameter = MakeParameter(definition);
    parameter->SetDouble(1.0);
    parameter->SetFlag10(true);
    parameter->SetLinkedObject(ObjectOf(source));
    const auto property = Offered();
    EXPECT_EQ(Fill(parameter, property), kHandled);
    EXPECT_EQ(property->GetDouble(), 2.5);
    EXPECT_FALSE(property->IsReadOnly()) << "the parameter's own, not the source's";
    EXPECT_TRUE(property->IsFlag02());
    EXPECT_TRUE(property->IsLinked());
    EXPECT_EQ(source->GetDefinition(), sources);

    source->SetValue(nullptr);
    EXPECT_EQ(Fill(parameter, property), (Answer{true, false})) << "no value, nothing shown";
  }
}

TEST(ParameterSheet, GivesTheSourceItsDefinitionBackWhenShowingThrows) {
  Definitions db;
  const auto source = MakeSource(db);
  source->SetRelation(source->GetRelation(), false);
  const auto parameter = MakeParameter(db.Make(1, 17));
  parameter->SetBool(true);
  parameter->SetLinkedObject(ObjectOf(source));
  const auto property = OfferedChooser();
  property->onShown = [] { throw CAtlException(E_FAIL); };
  EXPECT_EQ(Thrown([&] { Fill(parameter, property.Get()); }), E_FAIL);
  EXPECT_EQ(source->GetDefinition(), nullptr);
  property->onShown = nullptr;
  EXPECT_TRUE(Fill(parameter, property.Get()).serves);
  EXPECT_TRUE(property->IsLinked()) << "the link is still followed";
}

TEST(ParameterSheet, ShowsToTheEndWhatIsTakenAwayMeanwhile) {
  Definitions db;
  auto array = zdm::NewOf<IZParameterArray, CZParameterArray>();
  auto source = MakeSource(db);
  source->SetRelation(nullptr, false);
  auto parameter = MakeParameter(db.Make(1, 17));
  parameter->SetBool(true);
  parameter->SetLinkedObject(ObjectOf(source));
  array->BeginAdd();
  array->Add(parameter, 0);
  array->EndAdd();
  parameter = nullptr;
  const auto property = OfferedChooser();
  property->onShown = [&] {
    source = nullptr;
    array->RemoveAll();
    array = nullptr;
  };
  EXPECT_TRUE(array->FillProperties(0, property.Get()));
  EXPECT_EQ(property->steps, "set rebuild");
  EXPECT_TRUE(property->IsLinked());
}

}  // namespace
