// What an array of parameters holds, in which order, and what it does with them.
#include "tests/parameters/ArraySupport.h"
#include "tests/parameters/ValueKinds.h"
#include "tests/support/SlotOf.h"
#include "zdm/relations/IZSingleReltn.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace zdm::test;

namespace {

// Every field decides, and every one is unsigned.
TEST_F(ParameterArray, IsInTheOrderOfTheDefinitionsKeys) {
  const std::vector<GUID> ordered = {{1, 0xFFFF, 0xFFFF, {0xFF}},
                                     {2, 1, 0xFFFF, {0xFF}},
                                     {2, 0x7FFF, 0xFFFF, {0xFF}},
                                     {2, 0x8000, 1, {0xFF}},
                                     {2, 0x8000, 0x7FFF, {0xFF}},
                                     {2, 0x8000, 0x8000, {0x7F, 0xFF}},
                                     {2, 0x8000, 0x8000, {0x80, 0}},
                                     {2, 0x8000, 0x8000, {0x80, 0, 0, 0, 0, 0, 0, 0x7F}},
                                     {2, 0x8000, 0x8000, {0x80, 0, 0, 0, 0, 0, 0, 0x80}},
                                     {0x80000000, 0, 0, {}}};
  for (const std::size_t step : {3, 7}) {  // two bulk adds: the second merges
    array->BeginAdd();
    for (std::size_t i = 0; i < ordered.size(); ++i) {
      const std::size_t at = i * step % ordered.size();
      if ((at % 2 == 0) != (step == 3)) continue;
      const auto definition = db.Make(1);
      definition->GetProperty()->SetGUID(ordered[at]);
      array->Add(MakeParameter(definition), 0);
    }
    array->EndAdd();
  }
  ASSERT_EQ(array->GetCount(), 10);
  for (LONG i = 0; i < 10; ++i) {
    const GUID& key = ordered[static_cast<std::size_t>(i)];
    EXPECT_EQ(KeyOf(array->GetAt(i)), key) << i;
    EXPECT_TRUE(array->IsExist(key)) << i;
    EXPECT_EQ(array->GetParameter(key), array->GetAt(i)) << i;
  }
  EXPECT_EQ(array->GetAt(10), nullptr);
  EXPECT_EQ(array->GetAt(-1), nullptr);

  for (std::size_t gone = 1; gone < 4; ++gone) {  // until they are few
    array->RemoveAt(0);
    EXPECT_EQ(array->GetParameter(ordered[gone - 1]), nullptr);
    for (std::size_t i = gone; i < ordered.size(); ++i) {
      IZParameter* const expected = array->GetAt(static_cast<LONG>(i - gone));
      EXPECT_EQ(KeyOf(expected), ordered[i]);
      EXPECT_EQ(array->GetParameter(ordered[i]), expected);
    }
  }
}

TEST_F(ParameterArray, TakesParametersOnlyInABulkAdd) {
  const auto parameter = MakeParameter();
  array->Add(parameter, 0);
  array->AddDoubleParameter(db.manager, At(1), 1, 1.0, 0);
  array->EndAdd();
  EXPECT_TRUE(array->IsEmpty());
  EXPECT_EQ(parameter->GetReferenceCount(), 1u);
  EXPECT_EQ(parameter->GetOwner(), nullptr);

  array->BeginAdd();
  array->Add(nullptr, 0);
  array->Add(parameter, 0);
  array->BeginAdd();  // keeps what is open
  EXPECT_TRUE(array->IsEmpty());
  EXPECT_EQ(parameter->GetOwner(), array.Get());
  array->EndAdd();
  EXPECT_EQ(array->GetCount(), 1);
  array->EndAdd();
  array->Add(MakeParameter(), 0);
  EXPECT_EQ(array->GetCount(), 1);
}

// A second parameter of a definition can be added, but a bulk add starts with one of each.
TEST_F(ParameterArray, ABulkAddDropsWhatTheArrayHoldsTwice) {
  Add({1, 2, 1});
  EXPECT_EQ(KeysIn(array), "1 1 2");
  const ZRefPtr<IZParameter> first = array->GetAt(0);
  const ZRefPtr<IZParameter> second = array->GetAt(1);
  Add({1});
  EXPECT_EQ(KeysIn(array), "1 1 2");
  EXPECT_EQ(array->GetAt(0), first.Get());
  EXPECT_NE(array->GetAt(1), second.Get());
  EXPECT_EQ(second->GetOwner(), nullptr);
}

TEST_F(ParameterArray, UnregisteringTheModuleEndsBulkAdds) {
  const auto parameter = MakeParameter();
  Add({1});
  array->BeginAdd();
  array->Add(parameter, 0);
  DllUnRegisterZModule();
  DllRegisterZModule();
  EXPECT_EQ(parameter->GetReferenceCount(), 1u);
  array->Add(parameter, 0);
  array->EndAdd();
  EXPECT_EQ(KeysIn(array), "1");
  {
    const auto gone = MakeArray();
    gone->BeginAdd();
    gone->Add(parameter, 0);
  }
  EXPECT_EQ(parameter->GetReferenceCount(), 1u);
  EXPECT_EQ(parameter->GetOwner(), nullptr);
  Add({2});
  EXPECT_EQ(KeysIn(array), "1 2");
}

// Definitions change their keys under the array's feet.
TEST_F(ParameterArray, FindsAParameterWhoseDefinitionHasChanged) {
  Add({1, 2, 3});
  EXPECT_EQ(array->GetParameter(Key(1)), array->GetAt(0));
  array->GetAt(0)->GetDefinition()->GetProperty()->SetGUID(Key(9));
  EXPECT_EQ(KeysIn(array), "9 2 3");
  EXPECT_EQ(array->GetParameter(Key(1)), nullptr);
  EXPECT_EQ(array->GetParameter(Key(9)), array->GetAt(0));
  EXPECT_FALSE(array->IsExist(Key(9)));
  EXPECT_TRUE(array->IsExist(Key(3)));
  EXPECT_TRUE(array->RemoveByGUID(Key(9)));
  EXPECT_EQ(KeysIn(array), "2 3");

  // Keys exchanged, so that what is remembered names another parameter.
  IZProperty* const second = array->GetAt(0)->GetDefinition()->GetProperty();
  IZProperty* const third = array->GetAt(1)->GetDefinition()->GetProperty();
  second->SetGUID(Key(3));
  third->SetGUID(Key(2));
  EXPECT_EQ(array->GetParameter(Key(2)), array->GetAt(1));
  EXPECT_EQ(array->GetParameter(Key(3)), array->GetAt(0));
}

TEST_F(ParameterArray, ReadsAndWritesByKeyAndReportsToItsOwner) {
  Add({1, 2});
  double number = 7;
  EXPECT_TRUE(array->GetParamDouble(At(2), &number));
  EXPECT_EQ(number, 2.0);
  EXPECT_TRUE(array->SetParamDouble(At(2), 2.5));
  EXPECT_EQ(array->GetAt(1)->GetDouble(), 2.5);
  EXPECT_EQ(owner->notices, 1);

  EXPECT_FALSE(array->SetParamRelation(At(1), owner, true));  // a number
  array->GetAt(0)->SetRelation(nullptr, false);
  EXPECT_EQ(owner->notices, 2);
  EXPECT_TRUE(array->SetParamRelation(At(1), owner, true));
  EXPECT_EQ(owner->notices, 2);
  EXPECT_EQ(array->GetAt(0)->GetRelation(), owner.Get());
  EXPECT_TRUE(static_cast<ZDfRelation*>(array->GetAt(0)->GetValue())->Value->IsReltnDiffusible());

  // A parameter without definition answers GUID_UNSET, and is not found by it.
  array->BeginAdd();
  array->Add(MakeParameter(), 0);
  array->EndAdd();
  number = 7;
  const GUID unknown = Key(99);
  for (const GUID* key : {&GUID_UNSET, &unknown, static_cast<const GUID*>(nullptr)}) {
    EXPECT_FALSE(array->GetParamDouble(key, &number));
    EXPECT_FALSE(array->SetParamDouble(key, 1));
    EXPECT_FALSE(array->SetParamRelation(key, owner, true));
  }
  EXPECT_EQ(number, 7);
  EXPECT_EQ(array->GetParameter(GUID_UNSET), nullptr);
  EXPECT_FALSE(array->IsExist(GUID_UNSET));
  EXPECT_FALSE(array->RemoveByGUID(GUID_UNSET));
}

TEST_F(ParameterArray, AddsParametersOfEachType) {
  const auto target = db.MakeObject(nullptr, 77);
  array->BeginAdd();
  AddOfEachType(*array, db, target);
  array->EndAdd();
  for (int i = 0; i < 6; ++i) ExpectOfEachType(array->GetAt(i), i);
  EXPECT_EQ(array->GetAt(0)->GetReferenceCount(), 1u);
  EXPECT_EQ(owner->notices, 0);

  const GUID unknown = Key(99);
  array->BeginAdd();
  array->AddLongParameter(db.manager, &unknown, 1, 1, 0);
  array->AddBoolParameter(nullptr, nullptr, true, 0);
  array->EndAdd();
  EXPECT_EQ(KeysIn(array), "1 2 3 4 5 6 - -");
}

TEST_F(ParameterArray, RemovesByPlaceKeyAndIdentity) {
  Add({1, 2, 3, 4});
  const ZRefPtr<IZParameter> second = array->GetAt(1);
  EXPECT_FALSE(array->RemoveAt(4) || array->RemoveAt(-1));
  EXPECT_TRUE(array->RemoveAt(1));
  EXPECT_EQ(KeysIn(array), "1 3 4");
  EXPECT_EQ(second->GetReferenceCount(), 1u);
  second->SetDouble(1);  // reports to nobody
  EXPECT_EQ(owner->notices, 0);
  EXPECT_FALSE(array->Remove(second) || array->Remove(nullptr));
  EXPECT_TRUE(array->Remove(array->GetAt(2)));
  EXPECT_TRUE(array->RemoveByGUID(Key(1)));
  EXPECT_FALSE(array->RemoveByGUID(Key(1)));
  EXPECT_EQ(KeysIn(array), "3");
  EXPECT_EQ(array->GetParameter(Key(3)), array->GetAt(0));

  array->BeginAdd();  // one parameter in two places
  array->Add(second, 0);
  array->Add(second, 0);
  array->EndAdd();
  EXPECT_TRUE(array->Remove(second));
  EXPECT_EQ(array->GetCount(), 2);
  EXPECT_EQ(second->GetOwner(), array.Get());
}

TEST_F(ParameterArray, ForgetsAnOwnerThatDoesNotHoldIt) {
  const auto loose = MakeArray();
  Add({1}, loose);
  loose->SetOwner(owner);
  loose->SetParamDouble(At(1), 3);
  EXPECT_EQ(owner->notices, 1);
  owner = nullptr;
  EXPECT_EQ(loose->GetOwner(), nullptr);
  loose->SetParamDouble(At(1), 4);
  EXPECT_EQ(array->GetOwner(), nullptr);
}

// Two keys that a look-up takes for one until it asks the parameters.
TEST_F(ParameterArray, TellsKeysOfOneMarkApart) {
  const GUID one = {0xACC672E2, 0, 0, {0, 0, 0, 0, 0x36, 0x5A, 0x2C, 0x60}};
  const GUID other = {0x3134189A, 0, 0, {0, 0, 0, 0, 0x97, 0x41, 0x07, 0x02}};
  const auto add = [&](const GUID& key) {
    const auto definition = db.Make(1);
    definition->GetProperty()->SetGUID(key);
    array->BeginAdd();
    array->Add(MakeParameter(definition), 0);
    array->EndAdd();
  };
  add(one);
  EXPECT_EQ(array->GetParameter(other), nullptr);
  EXPECT_FALSE(array->RemoveByGUID(other));
  add(other);
  EXPECT_EQ(array->GetParameter(other), array->GetAt(0));
  EXPECT_EQ(array->GetParameter(one), array->GetAt(1));
  EXPECT_TRUE(array->RemoveByGUID(one));
  EXPECT_EQ(array->GetParameter(one), nullptr);
  EXPECT_EQ(array->GetParameter(other), array->GetAt(0));
}

/// What a binary search for a key that is there comes to.
IZParameter* Searched(IZParameterArray& array, BYTE number) {
  LONG low = 0;
  LONG high = array.GetCount() - 1;
  for (;;) {
    const LONG middle = (low + high) / 2;
    const BYTE found = KeyOf(array.GetAt(middle)).Data4[7];
    if (found == number) return array.GetAt(middle);
    if (found < number) {
      low = middle + 1;
    } else {
      high = middle - 1;
    }
  }
}

// As many as are found by marks in the array itself, by marks beside it, and without marks.
TEST_F(ParameterArray, OfTwoOfOneKeyGivesTheOneThatASearchComesTo) {
  for (const BYTE count : {BYTE{4}, BYTE{7}, BYTE{30}, BYTE{90}}) {
    const auto many = MakeArray();
    std::vector<BYTE> keys(count);
    std::iota(keys.begin(), keys.end(), BYTE{1});
    Add(keys, many);
    for (LONG twice = 0; twice < count; ++twice) {
      const auto sheet = MakeArray();
      std::vector<zdm::ParaEntry> entries;
      for (LONG i = 0; i < count; ++i) {
        for (LONG copy = 0; copy < (i == twice ? 2 : 1); ++copy) {
          auto& entry = entries.emplace_back();
          many->GetAt(i)->CloneParameter(entry.parameter.Out());
          entry.key = zdm::GuidKey(KeyOf(entry.parameter));
        }
      }
      sheet->GetParaArray()->Assign(entries);
      const auto number = static_cast<BYTE>(twice + 1);
      EXPECT_EQ(sheet->GetParameter(Key(number)), Searched(*sheet, number))
          << int{count} << ", " << twice;
    }
  }
}

TEST_F(ParameterArray, CopiesOfTheStorageHoldReferencesOfTheirOwn) {
  Add({1, 2});
  ZParaArray copy = *array->GetParaArray();
  const ZRefPtr<IZParameter> first = copy.at(0);
  EXPECT_EQ(first->GetReferenceCount(), 3u);
  array->RemoveAll();
  EXPECT_EQ(copy.GetParameter(Key(2)), copy.at(1));
  EXPECT_TRUE(copy.IsExist(Key(1)));
  copy = ZParaArray();
  EXPECT_EQ(first->GetReferenceCount(), 1u);
  Add({1, 2, 3});
  copy.AssignCopies(*array->GetParaArray(), [](IZParameter* parameter) {
    if (KeyOf(parameter) == Key(2)) parameter->GetOwner()->RemoveAll();
    return MakeParameter();
  });
  EXPECT_EQ(copy.GetCount(), 2) << "what copying takes out of the source is not copied";
  for (const LONG count : {100, 7, 12, 8, 65, 0}) {  // one size in place of another
    std::vector<BYTE> keys(static_cast<std::size_t>(count));
    std::iota(keys.begin(), keys.end(), BYTE{1});
    const auto sized = MakeArray();
    Add(keys, sized);
    copy = *sized->GetParaArray();
    ASSERT_EQ(copy.GetCount(), count);
    for (const BYTE key : keys) EXPECT_EQ(copy.GetParameter(Key(key)), sized->GetAt(key - 1));
    EXPECT_EQ(copy.GetParameter(Key(101)), nullptr);
    copy.AssignCopies(*sized->GetParaArray(), [](IZParameter* parameter) {
      ZRefPtr<IZParameter> copied;
      parameter->CloneParameter(copied.Out());
      return copied;
    });
    ASSERT_EQ(copy.GetCount(), count);
    for (const BYTE key : keys) EXPECT_EQ(copy.GetParameter(Key(key)), copy.at(key - 1));
  }
  EXPECT_EQ(SlotOf(&ZParaArray::Save), 0);
  EXPECT_EQ(SlotOf(&ZParaArray::Load), 1);
}

}  // namespace
