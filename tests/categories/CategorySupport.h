// Categories and their relations for tests, and trees of them as text.
#pragma once

#include "document/CZDispAttrib.h"
#include "tests/support/Bytes.h"
#include "tests/support/IDNotes.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/Thrown.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/relations/CZReltnColl.h"

#include <string>

namespace zdm::test {

/// A category of the document whose ID is its number.
inline ZRefPtr<IZCategory> NewCategory(TestDatabase& db, LONG number) {
  auto category = MakeObject<IZCategory, CZDMCategory>();
  category->SetNumber(static_cast<ULONG>(number));
  db.Add(category, number);
  return category;
}

inline ZRefPtr<IZCategoryReltn> ReltnTo(IZDMObject* category) {
  RegisterDocumentClasses();  // display attributes
  auto relation = MakeObject<IZCategoryReltn, CZCategoryReltn>();
  relation->SetReltnObj(category);
  return relation;
}

inline ZRefPtr<IZReltnColl> NewReltns() { return NewOf<IZReltnColl, CZReltnColl>(); }

inline std::string TreesOf(IZReltnColl* coll);

/// The category's number, and in parentheses the trees of the sub-relations.
inline std::string TreeOf(IZCategoryReltn* relation) {
  if (relation == nullptr) return "none";
  std::string text = std::to_string(relation->GetCategoryNumber());
  if (relation->GetSubReltns() != nullptr) text += '(' + TreesOf(relation->GetSubReltns()) + ')';
  return text;
}

inline std::string TreesOf(IZReltnColl* coll) {
  std::string text;
  if (coll == nullptr) return text;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) {
    if (!text.empty()) text += ' ';
    text += TreeOf(ViewAs<IZCategoryReltn>(coll->GetNext(pos)));
  }
  return text;
}

/// An attribute that differs from others by its colour.
inline ZRefPtr<CZDispAttrib> Colored(ULONG color) {
  auto attribute = MakeObject<CZDispAttrib, CZDispAttrib>();
  DispValues values;
  values.color = color;
  attribute->SetValues(values);
  return attribute;
}

/// -1 for null.
inline LONG ColorOf(IZDispAttrib* attribute) {
  auto* colored = dynamic_cast<CZDispAttrib*>(attribute);
  return colored != nullptr ? static_cast<LONG>(colored->GetValues().color) : -1;
}

inline ZGiHatchData Hatch(const OLECHAR* pattern, double first) {
  ZGiHatchData hatch;
  hatch.Pattern = Bstr(pattern);
  hatch.Values[0] = first;
  return hatch;
}

/// The stored form of a hatch without pattern.
inline const Bytes kNoHatch = Hex("00000000 0000000000004940 0000000000000000 000000000000F03F");

}  // namespace zdm::test
