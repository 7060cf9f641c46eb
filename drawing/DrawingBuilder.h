// Makes the objects of a drawing out of groups, one after the other, in the tree in which the file
// has them: sections, tables, blocks, entities. Merging, what the drawing has already by name stays
// and is taken for what the file has: variables, classes, entries of tables, blocks. Handles and
// names of blocks without a user's name that are taken are exchanged for new ones.
#pragma once

#include "drawing/CZDMDrawing.h"
#include "drawing/Warnings.h"

#include <unordered_map>
#include <unordered_set>

class CZDMDrawingBlock;

namespace zdm {

/// An object that came of the file.
struct MadeObject {
  IZDMObject* object;  // borrowed
  ULONG line;          // in the file, of its first group
  bool isEntity;       // it belongs to a layer
};

class DrawingBuilder {
 public:
  /// @param drawing  in a document already.
  /// @param codec    of the file; texts are kept in that of the drawing.
  DrawingBuilder(CZDMDrawing& drawing, const TextCodec& codec, Warnings& warnings);

  void Add(const Group& group, ULONG line);
  /// Behind the last group.
  void Finish();

  /// The drawing had something already.
  bool IsMerging() const { return isMerging_; }
  /// The highest handle in use, when merging.
  ULONGLONG HighestHandle() const { return highestHandle_; }
  /// In the order of the file, but for those of OBJECTS, which come last.
  const std::vector<MadeObject>& Made() const { return made_; }
  /// The object of a handle in the file (borrowed), which may be one that was there before; null
  /// for none.
  IZDMObject* FindHandle(std::string_view handle) const;
  /// The block of that name (borrowed); null for none.
  CZDMDrawingBlock* FindBlock(const WideString& name) const;

 private:
  struct Pending {
    ZRefPtr<IZDMObject> object;
    ULONG line;
  };

  void NotePresent(IZDMObjMgr& manager, const WideString& path);
  void Flush();
  void FlushInside();
  void OpenSection();
  void CloseSection(bool isSound);
  void OpenTable();
  void CloseTable(bool isSound);
  void OpenBlock();
  void CloseBlock(bool isSound);
  void CloseEntity();
  bool AddToEntity();
  void AddRecord();
  void AddPresent(IZDMObject* present);
  void AddPending();
  void PlacePending();

  void Recode();
  void Rename();
  std::string FreshName(std::string_view name);
  void TakeHandle(IZDMObject* object);

  std::string_view Type() const;
  WideString NameIn(LONG code) const;
  IZDMObject* FindPresent(const WideString& name) const;
  template <class Class>
  ZRefPtr<IZDMObject> Make(const WideString& name);
  ZRefPtr<IZDMObject> MakeRecord();
  IZDMObjMgr* Top();
  void Enter(const ZRefPtr<IZDMObject>& object, IZDMObjMgr& manager, bool isEntity);

  CZDMDrawing& drawing_;
  TextCodec codec_;  // of the file
  Warnings& warnings_;
  bool isMerging_;

  GroupList record_;  // being gathered
  ULONG line_ = 0;
  bool isFirst_ = true;  // nothing was made yet
  bool isEnded_ = false;

  IZDMObjMgr* section_ = nullptr;
  IZDMObjMgr* table_ = nullptr;
  CZDMDrawingBlock* block_ = nullptr;
  IZDMObjMgr* entity_ = nullptr;  // whose vertices or attributes may follow
  WideString sectionName_;
  WideString tableName_;
  bool isHeader_ = false;
  bool isSectionPresent_ = false;
  bool isTablePresent_ = false;
  bool isSkipping_ = false;            // a section without names that is there already
  std::vector<IZDMObject*> template_;  // of a block that is there already: its objects
  std::size_t templateAt_ = 0;
  bool isTemplate_ = false;

  // What there was before, by names in their sections.
  std::unordered_map<WideString, IZDMObject*> present_;
  std::unordered_map<WideString, CZDMDrawingBlock*> blocks_;
  std::unordered_set<WideString> takenNames_;  // of blocks
  std::unordered_map<WideString, std::string> renamed_;
  std::unordered_set<ULONGLONG> takenHandles_;
  ULONGLONG highestHandle_ = 0;

  std::unordered_map<ULONGLONG, IZDMObject*> byHandle_;
  std::vector<MadeObject> made_;
  std::vector<Pending> pending_;  // the objects of OBJECTS
  LONG nextPlace_ = 1;
};

}  // namespace zdm
