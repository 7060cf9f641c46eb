// A document in few words: make or open one, put objects into it, relate them, ask what refers to
// what, save. It holds a CZDocument, and everything of that is within reach through `->`.
//
//   auto document = zdm::Document::Create(OLESTR("House"));
//   IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
//   IZDMObject* wall = document.Add(OLESTR("South wall"), walls);
//   IZDMObject* door = document.Add(OLESTR("Front door"), walls);
//   document.Relate(door, wall, ZR_DIFFUSIBLE);
//   document.Save("house.zdm");
//
// Pointers handed out are borrowed: the document's managers hold the objects. Objects handed in are
// this document's, and null only where that is said. What fails throws zdm::DocumentError; an
// argument that is out of bounds throws CAtlException, which is no std::exception.
#pragma once

#include "document/CZDocument.h"
#include "document/Copy.h"
#include "document/Deletion.h"
#include "document/Merge.h"
#include "document/References.h"
#include "document/Referrers.h"
#include "platform/system/Text.h"
#include "zdm/relations/IZSingleReltn.h"
#include "zdm/relations/eZRelation.h"

#include <filesystem>
#include <span>
#include <utility>
#include <vector>

namespace zdm {

class Document {
 public:
  /// With what CZDocument::MakeDefaults gives it: the default material, a manager of categories.
  static Document Create(WideView name = {});
  static Document Open(const std::filesystem::path& path, IZProgressMeter* meter = nullptr);

  CZDocument* Get() const { return document_; }
  CZDocument* operator->() const { return document_; }

  /// Saves where it was opened or saved last.
  void Save(IZProgressMeter* meter = nullptr) { document_->Save(meter); }
  void Save(const std::filesystem::path& path, IZProgressMeter* meter = nullptr) {
    document_->SaveAs(path, meter);
  }

  /// A new plain object in `manager` (null: in the document itself), with the next ID.
  IZDMObject* Add(WideView name, IZDMObjMgr* manager = nullptr);
  /// A new plain manager, likewise.
  IZDMObjMgr* AddManager(WideView name, IZDMObjMgr* manager = nullptr);
  /// Adds an object of any class. The manager holds it.
  void Add(IZDMObject* object, IZDMObjMgr* manager);

  /// A new plain relation of `from` to `to`.
  /// @param kind  ZR_DIFFUSIBLE: changes of `to` concern `from`, and `to` is not deleted while
  ///     `from` is there; ZR_NONDIFFUSIBLE otherwise.
  IZSingleReltn* Relate(IZDMObject* from, IZDMObject* to, eZRelation kind = ZR_NONDIFFUSIBLE);

  /// The category that the object is in; null for none. The objects in a category are among those
  /// who refer to it. Categories and what they show: zdm/categories.
  IZCategory* CategoryOf(IZDMObject* object) const;
  /// Puts the object into the category of that number, in place of the one that it is in. Where
  /// there is none of that number yet, it is made and called `name`. Nothing changes where it is in
  /// that one.
  /// @param number  1 or more, otherwise CAtlException(E_INVALIDARG).
  IZCategory* SetCategory(IZDMObject* object, LONG number, WideView name = {});

  /// The valid object of that ID; null for none.
  IZDMObject* Find(LONG id) const;
  /// What `object` refers to, and who refers to it; see References.h.
  std::vector<Reference> ReferencesOf(IZDMObject* object) const;
  std::vector<Reference> ReferencesTo(IZDMObject* object) const;

  // The same by IDs, each once and ascending, from the index that the document keeps: no walk. Only
  // valid objects refer to something.

  /// Who refers to the object of that ID. Borrowed until the document is asked again.
  std::span<const LONG> ReferrersOf(LONG id) const;
  /// The same for any number of IDs while nothing changes. Borrowed until anything in the
  /// document changes.
  Referrers GetReferrers() const;
  /// All objects that lead to one of these over any chain of references, these left out: what has
  /// to be looked at when they change.
  std::vector<LONG> DependentsOf(std::span<const LONG> ids) const;
  /// All valid objects that these lead to, these left out: what has to come along with them.
  std::vector<LONG> ClosureOf(std::span<const LONG> ids) const;

  /// Copies the objects, managers with everything below them; see Copy.h.
  Copies Copy(const std::vector<IZDMObject*>& objects);
  /// Into another document: below `manager` of it (null: the document itself).
  Copies CopyTo(Document& other, const std::vector<IZDMObject*>& objects,
                IZDMObjMgr* manager = nullptr);
  /// Takes in the objects of another document; see Merge.h.
  MergeReport Merge(const Document& other, const MergeOptions& options = {});

  /// Deletes the objects, managers with everything below them, unless one of them is in use.
  /// @return  what was in the way, and what now refers to nothing; see Deletion.h. The objects are
  ///     gone only if nothing was in the way.
  Deletion Delete(const std::vector<IZDMObject*>& objects);

 private:
  explicit Document(ZRefPtr<CZDocument> document) : document_(std::move(document)) {}

  ZRefPtr<CZDocument> document_;
};

}  // namespace zdm
