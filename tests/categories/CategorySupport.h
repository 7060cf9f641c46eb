// Categories and their relations for tests, and trees of them as text.
#pragma once

#include "document/CZDispAttrib.h"
#include "tests/support/TestClasses.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/Thrown.h"
#include "zdm/categories/CZCategoryReltn.h"
#include "zdm/categories/CZDMCategory.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/relations/CZReltnColl.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <string>
#include <vector>

namespace zdm::test {
class OfferNotes;
}

ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::OfferNotes,
              "00000000-0000-0000-0000-000000000000", IZObject, IZReltnVisitor)

namespace zdm::test {

/// Looks inside every relation and writes down the IDs it is offered, each with '*' when no
/// relation is named for it. Answers true once to the ID `stopAt`.
class OfferNotes : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(OfferNotes)
 public:
  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject*, IZDMObject*, OID*) override { return false; }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation* reltn, OID** oid) override {
    text += std::to_string((*oid)->ID) + (reltn == nullptr ? "* " : " ");
    return (*oid)->ID == stopAt;
  }

  std::string text;
  LONG stopAt = 0;
};

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

/// Bytes one after another, for expected records.
class Record {
 public:
  template <class T>
  Record& Add(T value) {
    const auto* bytes = reinterpret_cast<const BYTE*>(&value);
    bytes_.insert(bytes_.end(), bytes, bytes + sizeof(value));
    return *this;
  }
  Record& Add(const std::vector<BYTE>& bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return *this;
  }
  /// Pattern length and pattern, then 50, 0 and 1 unless `first` says otherwise.
  Record& AddHatch(const std::vector<BYTE>& pattern, double first = 50.0) {
    return Add(pattern).Add(first).Add(0.0).Add(1.0);
  }
  const std::vector<BYTE>& Bytes() const { return bytes_; }

 private:
  std::vector<BYTE> bytes_;
};

inline const std::vector<BYTE> kNullText = {0, 0, 0, 0};
inline const std::vector<BYTE> kEmptyText = {2, 0, 0, 0, 0, 0};

/// The first length from `from` on at which `load` takes a shorter piece of `bytes`, or fails with
/// something else than E_FAIL; the whole length when every piece fails as it should.
template <class Load>
std::size_t FirstCutTaken(const std::vector<BYTE>& bytes, std::size_t from, Load load) {
  for (std::size_t length = from; length < bytes.size(); ++length) {
    const std::vector<BYTE> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
    if (Thrown([&] { load(cut); }) != E_FAIL) return length;
  }
  return bytes.size();
}

}  // namespace zdm::test
