// A document in few words: make or open one, put objects into it, relate them, ask what refers to
// what, save. It holds a CZDocument, and everything of that is within reach through `->`.
//
//   auto document = zdm::Document::Create(u"House");
//   IZDMObjMgr* walls = document.AddManager(u"Walls");
//   IZDMObject* wall = document.Add(u"South wall", walls);
//   IZDMObject* door = document.Add(u"Front door", walls);
//   document.Relate(door, wall, ZR_DIFFUSIBLE);
//   document.Save("house.zdm");
//
// Pointers handed out are borrowed: the document's managers hold the objects. What fails throws
// zdm::DocumentError.
#pragma once

#include "document/CZDocument.h"
#include "document/References.h"
#include "zdm/relations/IZSingleReltn.h"
#include "zdm/relations/eZRelation.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace zdm {

class Document {
 public:
  static Document Create(std::u16string_view name = {});
  static Document Open(const std::filesystem::path& path, IZProgressMeter* meter = nullptr);

  CZDocument* Get() const { return document_; }
  CZDocument* operator->() const { return document_; }

  /// Saves where it was opened or saved last.
  void Save() { document_->Save(); }
  void Save(const std::filesystem::path& path) { document_->SaveAs(path); }

  /// A new plain object in `manager` (null: in the document itself), with the next ID.
  IZDMObject* Add(std::u16string_view name, IZDMObjMgr* manager = nullptr);
  /// A new plain manager, likewise.
  IZDMObjMgr* AddManager(std::u16string_view name, IZDMObjMgr* manager = nullptr);
  /// Adds an object of any class. The manager holds it.
  void Add(IZDMObject* object, IZDMObjMgr* manager);

  /// A new plain relation of `from` to `to`.
  /// @param kind  ZR_DIFFUSIBLE: changes of `to` concern `from`, and `to` is not deleted while
  ///     `from` is there; ZR_NONDIFFUSIBLE otherwise.
  IZSingleReltn* Relate(IZDMObject* from, IZDMObject* to, eZRelation kind = ZR_NONDIFFUSIBLE);

  /// The valid object of that ID; null for none.
  IZDMObject* Find(LONG id) const;
  /// What `object` refers to, and who refers to it; see References.h.
  std::vector<Reference> ReferencesOf(IZDMObject* object) const;
  std::vector<Reference> ReferencesTo(IZDMObject* object) const;

  /// The objects are deleted, each unless it is in use (COIDManager::JudgeDelete). Managers go with
  /// everything below them.
  /// @return  those that were left, because they are in use.
  std::vector<IZDMObject*> Delete(const std::vector<IZDMObject*>& objects);

 private:
  explicit Document(ZRefPtr<CZDocument> document) : document_(std::move(document)) {}

  ZRefPtr<CZDocument> document_;
};

}  // namespace zdm
