#include "drawing/DrawingBuilder.h"

#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingDictionary.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/CZDMDrawingRecord.h"
#include "drawing/CZDMDrawingSection.h"
#include "drawing/CZDMDrawingSequence.h"
#include "drawing/DrawingTree.h"
#include "drawing/EntryOwners.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"
#include "drawing/Numbers.h"

#include <algorithm>
#include <utility>

namespace zdm {

namespace {

const WideString kHeader = OLESTR("HEADER");
const WideString kClasses = OLESTR("CLASSES");
const WideString kTables = OLESTR("TABLES");
const WideString kBlocks = OLESTR("BLOCKS");
const WideString kEntities = OLESTR("ENTITIES");
const WideString kObjects = OLESTR("OBJECTS");

/// Merging adds to these, or merges them by the names of their records.
bool IsMerged(const WideString& section) {
  return section == kHeader || section == kClasses || section == kTables || section == kBlocks ||
         section == kEntities || section == kObjects;
}

constexpr OLECHAR kInside = 1;  // between the names of a path

WideString PathOf(const WideString& container, const WideString& name) {
  return container + kInside + NameKey(name);
}

}  // namespace

DrawingBuilder::DrawingBuilder(CZDMDrawing& drawing, const TextCodec& codec, Warnings& warnings)
    : drawing_(drawing),
      codec_(codec),
      warnings_(warnings),
      isMerging_(!drawing.Groups().IsEmpty() || !drawing.IsEmpty()) {
  if (!isMerging_) return;
  NotePresent(drawing_, {});
  ForEachPart(drawing_, [this](IZDMObject&, DrawingPart& part) {
    const auto handle = ParseHandle(part.Handle());
    if (handle) takenHandles_.insert(*handle);
    highestHandle_ = std::max(highestHandle_, handle.value_or(0));
    nextPlace_ = std::max(nextPlace_, part.Place() + 1);
  });
}

/// Sections, tables, and the records in them that have names.
void DrawingBuilder::NotePresent(IZDMObjMgr& manager, const WideString& path) {
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    IZDMObject* object = manager.GetNext(pos);
    const DrawingPart* part = PartOf(object);
    if (part == nullptr) continue;
    Bstr shown;
    object->GetName(shown.Out());
    WideString name(shown.View());
    if (path == PathOf({}, kClasses)) name = drawing_.GetCodec().Show(part->Groups().Find(1));
    present_.emplace(PathOf(path, name), object);
    if (auto* block = dynamic_cast<CZDMDrawingBlock*>(object)) {
      blocks_.emplace(NameKey(name), block);
      takenNames_.insert(NameKey(name));
    }
    auto* section = dynamic_cast<CZDMDrawingSection*>(object);
    if (section != nullptr && std::ranges::count(path, kInside) < 2) {
      NotePresent(*section, PathOf(path, name));
    }
  }
}

// Reading.

void DrawingBuilder::Add(const Group& group, ULONG line) {
  const bool isVariable = group.code == kVariableCode && (section_ == nullptr || isHeader_);
  const bool isHead = group.code == kTypeCode || isVariable;
  if (isHead && !isEnded_) {
    Flush();
    record_.Clear();
    line_ = line;
    isEnded_ = group.code == kTypeCode && Trimmed(group.text) == "EOF";
  } else if (isHead) {
    warnings_.Add(WarningCode::kAfterEnd, line, Trimmed(group.text));
  }
  record_.Append(group);
}

void DrawingBuilder::Finish() {
  if (!isEnded_) Flush();
  CloseSection(false);
  if (isEnded_) {
    if (!isMerging_) drawing_.AppendTail(record_);
  } else {
    warnings_.Add(WarningCode::kNoEnd, 0);
  }
  PlacePending();
}

std::string_view DrawingBuilder::Type() const { return Trimmed((*record_.begin()).text); }

WideString DrawingBuilder::NameIn(LONG code) const {
  return drawing_.GetCodec().Show(record_.Find(code));
}

void DrawingBuilder::Flush() {
  if (record_.IsEmpty()) return;
  Recode();
  const LONG code = (*record_.begin()).code;
  const bool isPreamble = isFirst_ && code != kTypeCode && code != kVariableCode;
  isFirst_ = false;
  if (isPreamble) {
    if (!isMerging_) drawing_.SetGroups(record_);
    return;
  }
  const std::string_view type = code == kTypeCode ? Type() : std::string_view();
  if (type == "SECTION") return OpenSection();
  if (type == "ENDSEC" && section_ != nullptr) return CloseSection(true);
  if (isSkipping_) return;
  Rename();
  FlushInside();
}

void DrawingBuilder::FlushInside() {
  const std::string_view type = Type();
  if (sectionName_ == kTables && type == "TABLE") return OpenTable();
  if (table_ != nullptr && type == "ENDTAB") return CloseTable(true);
  if (sectionName_ == kBlocks && type == "BLOCK") return OpenBlock();
  if (block_ != nullptr && type == "ENDBLK") return CloseBlock(true);
  if (isTemplate_) {
    const bool isSame =
        templateAt_ < template_.size() && PartOf(template_[templateAt_])->Type() == type;
    if (isSame) return AddPresent(template_[templateAt_++]);
    warnings_.Add(WarningCode::kDifferentBlock, line_, Type());
    return;
  }
  if (!AddToEntity()) AddRecord();
}

// Containers.

void DrawingBuilder::OpenSection() {
  CloseSection(false);
  sectionName_ = NameIn(kNameCode);
  isHeader_ = sectionName_ == kHeader;
  IZDMObject* present = FindPresent(sectionName_);
  isSectionPresent_ = present != nullptr;
  if (isSectionPresent_) {
    isSkipping_ = !IsMerged(sectionName_);
    if (isSkipping_) warnings_.Add(WarningCode::kSectionKept, line_, record_.Find(kNameCode));
    section_ = ViewAs<IZDMObjMgr>(present);
    return;
  }
  const auto section = Make<CZDMDrawingSection>(sectionName_);
  Enter(section, drawing_, false);
  section_ = ViewAs<IZDMObjMgr>(section.Get());
}

void DrawingBuilder::CloseSection(bool isSound) {
  if (section_ == nullptr) return;
  CloseTable(false);
  CloseBlock(false);
  CloseEntity();
  if (!isSound) warnings_.Add(WarningCode::kSectionUnclosed, line_, ToUtf8(sectionName_));
  if (isSound && !isSectionPresent_) PartOf(section_)->AppendTail(record_);
  section_ = nullptr;
  sectionName_.clear();
  isHeader_ = false;
  isSkipping_ = false;
}

void DrawingBuilder::OpenTable() {
  CloseTable(false);
  tableName_ = NameIn(kNameCode);
  IZDMObject* present = FindPresent(tableName_);
  isTablePresent_ = present != nullptr;
  if (isTablePresent_) {
    AddPresent(present);
    table_ = ViewAs<IZDMObjMgr>(present);
    return;
  }
  const auto table = Make<CZDMDrawingSection>(tableName_);
  Enter(table, *section_, false);
  table_ = ViewAs<IZDMObjMgr>(table.Get());
}

void DrawingBuilder::CloseTable(bool isSound) {
  if (table_ == nullptr) return;
  if (!isSound) warnings_.Add(WarningCode::kTableUnclosed, line_, ToUtf8(tableName_));
  if (isSound && !isTablePresent_) PartOf(table_)->AppendTail(record_);
  table_ = nullptr;
  tableName_.clear();
}

/// The spaces of a drawing take what comes; another block that is there already is the one meant.
void DrawingBuilder::OpenBlock() {
  CloseBlock(false);
  const WideString name = NameIn(kNameCode);
  const std::string_view written = record_.Find(kNameCode);
  CZDMDrawingBlock* present = FindBlock(name);
  const bool wasThere = takenNames_.contains(NameKey(name));
  if (present != nullptr && !wasThere) {
    warnings_.Add(WarningCode::kDoubledBlock, line_, written);
  }
  if (present != nullptr && wasThere) {
    AddPresent(present);
    block_ = present;
    isTemplate_ = !IsModelSpace(written) && !IsPaperSpace(written);
    template_.clear();
    templateAt_ = 0;
    ForEachPart(*present, [&](IZDMObject& object, DrawingPart&) {
      if (&object != static_cast<IZDMObject*>(present)) template_.push_back(&object);
    });
    return;
  }
  const auto made = Make<CZDMDrawingBlock>(name);
  Enter(made, *section_, false);
  block_ = dynamic_cast<CZDMDrawingBlock*>(made.Get());
  blocks_.emplace(NameKey(name), block_);
}

void DrawingBuilder::CloseBlock(bool isSound) {
  CloseEntity();
  if (block_ == nullptr) return;
  if (!isSound) warnings_.Add(WarningCode::kBlockUnclosed, line_, block_->Groups().Find(kNameCode));
  if (isTemplate_ && templateAt_ != template_.size()) {
    warnings_.Add(WarningCode::kDifferentBlock, line_, block_->Groups().Find(kNameCode));
  }
  const bool isNew = block_->Tail() == block_->Groups().Count() && !isTemplate_;
  if (isSound && isNew) block_->AppendTail(record_);
  block_ = nullptr;
  isTemplate_ = false;
}

void DrawingBuilder::CloseEntity() { entity_ = nullptr; }

/// Vertices belong to their polyline, attributes to their insert, up to the end of the sequence.
bool DrawingBuilder::AddToEntity() {
  if (entity_ == nullptr) return false;
  const bool isInsert = PartOf(entity_)->Type() == "INSERT";
  const std::string_view type = Type();
  const bool isEnd = type == "SEQEND";
  if (!isEnd && type != (isInsert ? "ATTRIB" : "VERTEX")) return false;
  Enter(MakeRecord(), *entity_, true);
  if (isEnd) CloseEntity();
  return true;
}

IZDMObjMgr* DrawingBuilder::Top() {
  if (block_ != nullptr) return block_;
  if (table_ != nullptr) return table_;
  if (section_ != nullptr) return section_;
  return &drawing_;
}

void DrawingBuilder::AddRecord() {
  CloseEntity();
  if (section_ == nullptr) warnings_.Add(WarningCode::kOutsideSection, line_, Type());
  if (sectionName_ == kObjects) return AddPending();
  WideString name;
  if (table_ != nullptr) name = NameIn(kNameCode);
  if ((*record_.begin()).code == kVariableCode) name = NameIn(kVariableCode);
  const bool isClass = sectionName_ == kClasses;
  if (table_ != nullptr || isHeader_ || isClass) {
    if (IZDMObject* present = FindPresent(isClass ? NameIn(1) : name)) return AddPresent(present);
  }
  ZRefPtr<IZDMObject> object;
  const std::string_view type = Type();
  if (type == "POLYLINE") {
    object = Make<CZDMDrawingSequence>(name);
  } else if (type == "INSERT") {
    object = Make<CZDMDrawingInsert>(name);
  } else {
    object = MakeRecord();
    if (type != "LAYER" && !name.empty()) object->SetName(name.c_str());
  }
  Enter(object, *Top(), block_ != nullptr || sectionName_ == kEntities);
  if (type == "POLYLINE" || type == "INSERT") entity_ = ViewAs<IZDMObjMgr>(object.Get());
}

/// What the file has is there already.
void DrawingBuilder::AddPresent(IZDMObject* present) {
  const LONG code = HandleCodeOf(Type());
  const auto handle = ParseHandle(record_.Find(code));
  if (handle && (*record_.begin()).code == kTypeCode) byHandle_.emplace(*handle, present);
}

// The objects of OBJECTS.

void DrawingBuilder::AddPending() {
  const ZRefPtr<IZDMObject> object =
      IsDictionary(Type()) ? Make<CZDMDrawingDictionary>({}) : MakeRecord();
  PartOf(object)->SetPlace(nextPlace_++);
  TakeHandle(object);
  pending_.push_back({object, line_});
}

/// Each below the dictionary that has it as an entry, otherwise in the section itself.
void DrawingBuilder::PlacePending() {
  if (pending_.empty()) return;
  IZDMObjMgr* objects = drawing_.FindSection("OBJECTS");
  std::vector<IZDMObject*> all;
  for (const Pending& each : pending_) all.push_back(each.object);
  const std::vector<Entry> entries =
      OwnersOfEntries(all, [this](std::string_view handle) { return FindHandle(handle); });
  for (const Entry& entry : entries) {
    const Pending& pending = pending_[entry.index];
    IZDMObjMgr* owner = entry.owner != nullptr ? ViewAs<IZDMObjMgr>(entry.owner) : objects;
    if (!entry.name.empty()) {
      pending.object->SetName(drawing_.GetCodec().Show(entry.name).c_str());
    }
    owner->AddTail(pending.object);
    made_.push_back({pending.object, pending.line, false});
  }
  pending_.clear();
}

// Objects.

template <class Class>
ZRefPtr<IZDMObject> DrawingBuilder::Make(const WideString& name) {
  auto object = MakeObject<IZDMObject, Class>();
  if (!name.empty()) object->SetName(name.c_str());
  PartOf(object)->SetGroups(record_);
  return object;
}

ZRefPtr<IZDMObject> DrawingBuilder::MakeRecord() { return Make<CZDMDrawingRecord>({}); }

void DrawingBuilder::Enter(const ZRefPtr<IZDMObject>& object, IZDMObjMgr& manager, bool isEntity) {
  TakeHandle(object);
  manager.AddTail(object.Get());
  made_.push_back({object, line_, isEntity});
}

/// Merging, a handle that is taken is exchanged for a new one; the references follow when they are
/// written.
void DrawingBuilder::TakeHandle(IZDMObject* object) {
  DrawingPart* part = PartOf(object);
  const auto handle = ParseHandle(part->Handle());
  if (!handle) return;
  if (!byHandle_.emplace(*handle, object).second) {
    warnings_.Add(WarningCode::kDoubledHandle, line_, part->Handle());
  }
  if (!isMerging_) return;
  ULONGLONG taken = *handle;
  if (!takenHandles_.insert(taken).second) {
    do {
      taken = ++highestHandle_;
    } while (!takenHandles_.insert(taken).second);
    const ULONG index = part->Groups().IndexOf(HandleCodeOf(part->Type()));
    part->SetGroups(part->Groups().With(index, HandleText(taken)));
  }
  highestHandle_ = std::max(highestHandle_, taken);
}

IZDMObject* DrawingBuilder::FindHandle(std::string_view handle) const {
  const auto number = ParseHandle(handle);
  const auto found = number ? byHandle_.find(*number) : byHandle_.end();
  return found != byHandle_.end() ? found->second : nullptr;
}

CZDMDrawingBlock* DrawingBuilder::FindBlock(const WideString& name) const {
  const auto found = blocks_.find(NameKey(name));
  return found != blocks_.end() ? found->second : nullptr;
}

IZDMObject* DrawingBuilder::FindPresent(const WideString& name) const {
  if (!isMerging_) return nullptr;
  WideString path;
  if (section_ != nullptr) path = PathOf(path, sectionName_);
  if (table_ != nullptr) path = PathOf(path, tableName_);
  const auto found = present_.find(PathOf(path, name));
  return found != present_.end() ? found->second : nullptr;
}

// Merging.

/// The texts of all groups of a drawing are in one code page.
void DrawingBuilder::Recode() {
  const TextCodec& codec = drawing_.GetCodec();
  if (codec == codec_) return;
  GroupList recoded;
  for (const Group group : record_) {
    const bool isAscii = std::ranges::none_of(group.text, [](char c) { return (c & 0x80) != 0; });
    if (isAscii) {
      recoded.Append(group);
    } else {
      recoded.Append({group.code, codec.Write(FromCodePage(group.text, codec_.codePage))});
    }
  }
  record_ = std::move(recoded);
}

void DrawingBuilder::Rename() {
  if (!isMerging_) return;
  const std::string_view type = Type();
  const bool isBlock = type == "BLOCK";
  if (!isBlock && !RefersToBlock(type)) return;
  const std::string_view name = record_.Find(kNameCode);
  if (!IsAnonymous(name)) return;
  const std::string fresh = FreshName(name);
  if (fresh == name) return;
  const ULONG title = record_.IndexOf(3);
  record_ = record_.With(record_.IndexOf(kNameCode), fresh);
  if (isBlock && title < record_.Count()) record_ = record_.With(title, fresh);
}

/// Such blocks are of the same name in every file, and of another content.
std::string DrawingBuilder::FreshName(std::string_view name) {
  const WideString key = NameKey(FromCodePage(name, kLatin1CodePage));
  if (!takenNames_.contains(key)) return std::string(name);
  std::string& renamed = renamed_[key];
  if (!renamed.empty()) return renamed;
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  for (ULONG number = 1; renamed.empty(); ++number) {
    std::string fresh = std::string(name.substr(0, digits)) + std::to_string(number);
    if (takenNames_.insert(NameKey(FromCodePage(fresh, kLatin1CodePage))).second) {
      renamed = std::move(fresh);
    }
  }
  return renamed;
}

}  // namespace zdm
