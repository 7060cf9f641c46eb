// Trees of category relations, and two indexes over every relation in them: by category and by
// number. Display code asks it for the values of a category number without walking the trees.
// The map holds the collection of roots; the indexes hold nothing, and what is gone is not found.
// Neither Load nor CopyFrom fills the indexes: RebuildCategoryMap does. Results are borrowed.
// Stream form: above Save in ZCategoryReltnMap.cpp.
#pragma once

#include "zdm/framework/WeakView.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/relations/IZReltnColl.h"

#include <map>

struct IZCategory;
struct IZDatabase;
struct IZDispAttrib;
struct IZStream;

class ZDM_API ZCategoryReltnMap {
 public:
  ZCategoryReltnMap() = default;
  /// A copy shares the collection.
  ZCategoryReltnMap(const ZCategoryReltnMap&) = default;
  ZCategoryReltnMap& operator=(const ZCategoryReltnMap&) = default;
  virtual ~ZCategoryReltnMap();

  /// Without collection and entries.
  void Initialize();
  /// Takes `coll` (one reference; null for none) and fills the indexes from it.
  void SetCategoryColl(IZReltnColl* coll);
  IZReltnColl* GetCategoryColl() const { return categoryColl_; }

  /// Appends the relation tree of `category` to the collection, made when absent. Its root takes
  /// the category's place in both indexes, also from a relation indexed before.
  void AddRelation(IZCategory* category);
  /// Fills the indexes anew.
  void RebuildCategoryMap();
  /// Adds the trees of `coll` to the indexes, a parent before its sub-relations; the first relation
  /// of a category, and of a number, stays. Elements without category go out of their collection
  /// with all below them. Throws CAtlException(E_FAIL) for a tree of more than 10^6 relations.
  void RebuildCategoryMap(IZReltnColl* coll);

  /// Null when there is none.
  IZRelation* GetCategoryReltn(LONG number) const;
  IZRelation* GetCategoryReltn(IZCategory* category) const;
  /// True for number 0, and for a number without relation.
  bool GetCategoryVisible(LONG number) const;
  /// The first that the trees answer, in order; the indexes are not asked.
  IZDispAttrib* FindProjectionDispAttrib(LONG number) const;
  IZDispAttrib* FindSectionDispAttrib(LONG number) const;

  /// Makes every category show the values of its relation.
  void RefreshCategoryDispAttribToSysCategorizing();

  void Save(IZStream* stream, IZDatabase* database) const;
  /// Replaces the elements of the collection, if the record has one, and empties the indexes.
  void Load(IZStream* stream, IZDatabase* database);
  /// Takes clones of the other's trees, and empties the indexes. Itself: nothing changes.
  void CopyFrom(const ZCategoryReltnMap& other);

 private:
  /// With the category's own handle, since one that is gone leaves its address to others.
  struct CategoryEntry {
    zdm::WeakView<IZCategory> category;
    zdm::WeakView<IZRelation> relation;
  };

  void ClearIndexes();
  void Rebuild(IZReltnColl* coll, bool isOfRoots);
  void Index(IZCategory* category, IZRelation* relation);

  ZRefPtr<IZReltnColl> categoryColl_;
  std::map<IZCategory*, CategoryEntry> byCategory_;
  std::map<LONG, zdm::WeakView<IZRelation>> byNumber_;
};
