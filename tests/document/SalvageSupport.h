// A saved document, damage to its file, and what has to hold whatever the damage is.
#pragma once

#include "document/Document.h"
#include "document/Salvage.h"
#include "tests/document/DocumentSupport.h"
#include "tests/document/RandomDocument.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMProxyObject.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace zdm::test {

constexpr LONG kGathered = -1000;  // in place of the ID of the manager Recovered

/// What there is to know of an object.
struct Kept {
  LONG owner = 0;
  std::string shape;
  bool operator==(const Kept&) const = default;
};

/// By ID, of all objects but the manager Recovered.
inline std::map<LONG, Kept> ContentsOf(CZDocument& document) {
  std::map<LONG, Kept> contents;
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    if (NameOf(oid->Object) == "Recovered") continue;
    IZDMObject* owner = oid->Object->GetOwner();
    const bool isGathered = owner != nullptr && NameOf(owner) == "Recovered";
    contents[oid->ID] = {isGathered         ? kGathered
                         : owner != nullptr ? IDOf(owner)
                                            : 0,
                         ShapeOf(oid->Object)};
  }
  return contents;
}

/// Managers 1 and 2, objects 3 to 62 in them, a foreign object 63, a proxy 64, an embedded one 65.
inline std::vector<BYTE> SavedHouse() {
  auto document = Document::Create(OLESTR("House"));
  IZDMObjMgr* const managers[] = {document.AddManager(OLESTR("Walls")),
                                  document.AddManager(OLESTR("Doors"))};
  std::vector<IZDMObject*> objects;
  objects.reserve(60);
  for (int i = 0; i < 60; ++i) {
    objects.push_back(
        document.Add(FromUtf8("Object number " + std::to_string(i)), managers[i % 2]));
  }
  for (std::size_t i = 0; i < 60; ++i) document.Relate(objects[i], objects[(7 * i + 1) % 60]);
  auto foreign = MakeObject<IZDMObject, ForeignObject>();
  document.Add(foreign, managers[0]);
  document.Relate(foreign, objects[0]);
  auto proxy = MakeObject<CZDMProxyObject, CZDMProxyObject>();
  document.Add(proxy, managers[0]);
  proxy->SetClassGuid(&ForeignObject::kClass);
  proxy->SetData("bytes of a stranger", 19);
  document.Add(MakeObject<CZDMObjEmbed, CZDMObjEmbed>(), managers[1]);
  document->GetPIDManager()->QueryPID(objects[5]);
  managers[0]->MoveToTail(managers[0]->GetHeadPosition());
  document.Save(TempFile("house.zdm"));
  return FileBytes(document->GetPath());
}

class SalvageTest : public testing::Test {
 protected:
  using Bytes = std::vector<BYTE>;

  static void SetUpTestSuite() {
    if (!sound.empty()) return;
    sound = SavedHouse();
    contents = ContentsOf(*CZDocument::Open(SoundFile()));
    ledger = Salvage(std::span<const BYTE>(sound)).ledger;
  }
  static std::filesystem::path SoundFile() {
    auto path = TempFile("sound.zdm");
    WriteFileBytes(path, sound);
    return path;
  }

  /// Throws when there is none.
  static const SalvagedObject& In(const SalvageLedger& account, LONG id) {
    const auto found = std::ranges::find(account.objects, id, &SalvagedObject::id);
    return found != account.objects.end() ? *found : throw std::out_of_range(std::to_string(id));
  }
  /// The sound file's account of an object, with the place of its record.
  static const SalvagedObject& RecordOf(LONG id) { return In(ledger, id); }

  /// The sound file with zeros over a piece of it, over a record, over all that is of some kinds.
  static Bytes Without(std::size_t begin, std::size_t length) {
    Bytes bytes = sound;
    std::fill_n(&bytes[begin], std::min(length, bytes.size() - begin), BYTE{0});
    return bytes;
  }
  static Bytes WithoutRecord(LONG id) { return Without(RecordOf(id).place, RecordOf(id).length); }
  static Bytes WithoutKinds(std::initializer_list<RangeKind> kinds) {
    Bytes bytes = sound;
    for (const auto& range : ledger.ranges) {
      if (std::ranges::find(kinds, range.kind) == kinds.end()) continue;
      std::fill_n(&bytes[range.begin], range.end - range.begin, BYTE{0});
    }
    return bytes;
  }

  /// Salvages; checks what holds for every damage. Answers how many objects are as saved.
  std::size_t Try(const Bytes& damaged) {
    salvaged = {};
    salvaged = Salvage(std::span<const BYTE>(damaged));
    const auto found = ContentsOf(*salvaged.document);
    std::size_t right = 0;
    for (const auto& object : salvaged.ledger.objects) {
      if (object.fate == ObjectFate::kLost) continue;
      const auto saved = contents.find(object.id);
      EXPECT_NE(saved, contents.end()) << "an object that was never saved: " << object.id;
      if (saved == contents.end() || !found.contains(object.id)) continue;
      const auto& [owner, shape] = found.at(object.id);
      EXPECT_TRUE(owner == saved->second.owner || owner == kGathered)
          << object.id << " came under another manager: " << owner;
      if (object.fate == ObjectFate::kDoubtful) continue;
      EXPECT_EQ(shape, saved->second.shape) << object.id << " is called recovered";
      ++right;
    }
    ULONGLONG end = 0;
    for (const auto& range : salvaged.ledger.ranges) {
      EXPECT_EQ(range.begin, end);
      end = range.end;
    }
    EXPECT_EQ(end, damaged.size());
    return right;
  }

  const SalvagedObject& Account(LONG id) const { return In(salvaged.ledger, id); }

  static inline Bytes sound;
  static inline std::map<LONG, Kept> contents;
  static inline SalvageLedger ledger;  // of the sound file
  Salvaged salvaged;
};

}  // namespace zdm::test
