// Damaged files: what survives comes back right, what does not is named, and no object comes under
// another's manager.
#include "document/Salvage.h"

#include "document/CZDMAbsentObject.h"
#include "document/Crc32c.h"
#include "document/Document.h"
#include "document/DocumentError.h"
#include "document/DocumentFormat.h"
#include "platform/core/IZStream.h"
#include "platform/ole/CompoundFile.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestDatabase.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMProxyObject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <map>
#include <random>
#include <string>

using namespace zdm::test;
using zdm::DocumentError;
using zdm::DocumentFault;
using zdm::ObjectFate;
using zdm::RangeKind;
using zdm::SalvageStage;

namespace {

using Bytes = std::vector<BYTE>;

constexpr GUID kForeignClass = zdm::ParseGuid("F0F0F0F0-0001-4000-8000-0123456789AB");
constexpr std::size_t kSector = 512;

/// Writes records of a class that nobody has.
class Foreign : public CZDMPlainObject {
 public:
  void WriteHeader(IZStream* stream) override {
    const zdm::ObjectHeader header = {
        kForeignClass,     7, 8, static_cast<LONG>(GetID()), static_cast<LONG>(GetOwnerID()), 1,
        GetOptionAllowed()};
    stream->Write(&header, sizeof(header));
  }
};

std::string NameOf(IZDMObject* object) {
  zdm::Bstr name;
  object->GetName(name.Out());
  const auto view = name.View();
  return {view.begin(), view.end()};
}

std::string IDOf(IZDMObject* object) { return std::to_string(static_cast<LONG>(object->GetID())); }

/// For each object but the manager Recovered "name@owner>target>target", by their IDs.
std::map<LONG, std::string> Contents(CZDocument& document) {
  std::map<LONG, std::string> contents;
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr || !oid->JudgeStatus(ZOS_VALID)) continue;
    std::string text = NameOf(oid->Object);
    if (text == "Recovered") continue;
    IZDMObject* owner = oid->Object->GetOwner();
    const bool isGathered = owner != nullptr && NameOf(owner) == "Recovered";
    text += '@' + (owner == nullptr ? "none" : isGathered ? "Recovered" : IDOf(owner));
    for (const auto& reference : zdm::ReferencesOf(oid->Object)) {
      text += '>' + std::to_string(reference.to->ID);
    }
    contents[oid->ID] = text;
  }
  return contents;
}

/// Of a line of Contents.
std::string OwnerIn(const std::string& text) {
  const auto at = text.find('@');
  return text.substr(at, text.find('>', at) - at);
}
std::string WithoutOwner(const std::string& text) {
  return text.substr(0, text.find('@')) + text.substr(text.find('@') + OwnerIn(text).size());
}

/// Managers 1 and 2, objects 3 to 62 in them, a foreign object 63, a proxy 64, an embedded one 65.
Bytes SavedHouse() {
  auto document = zdm::Document::Create(OLESTR("House"));
  std::vector<IZDMObjMgr*> managers = {document.AddManager(OLESTR("Walls")),
                                       document.AddManager(OLESTR("Doors"))};
  std::vector<IZDMObject*> objects;
  for (int i = 0; i < 60; ++i) {
    const std::string name = "Object number " + std::to_string(i);
    const std::basic_string<OLECHAR> wide(name.begin(), name.end());
    objects.push_back(document.Add(wide, managers[static_cast<std::size_t>(i % 2)]));
  }
  for (std::size_t i = 0; i < 60; ++i) document.Relate(objects[i], objects[(7 * i + 1) % 60]);
  auto foreign = zdm::MakeObject<IZDMObject, Foreign>();
  document.Add(foreign, managers[0]);
  document.Relate(foreign, objects[0]);
  auto proxy = zdm::MakeObject<CZDMProxyObject, CZDMProxyObject>();
  document.Add(proxy, managers[0]);
  proxy->SetClassGuid(&kForeignClass);
  proxy->SetData("bytes of a stranger", 19);
  auto embedded = zdm::MakeObject<CZDMObjEmbed, CZDMObjEmbed>();
  document.Add(embedded, managers[1]);
  document->GetPIDManager()->QueryPID(objects[5]);
  managers[0]->MoveToTail(managers[0]->GetHeadPosition());
  document.Save(TempFile("house.zdm"));
  return FileBytes(document->GetPath());
}

class Salvage : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    sound = SavedHouse();
    contents = Contents(*CZDocument::Open(TempFilePath()));
  }
  static std::filesystem::path TempFilePath() {
    const auto path = TempFile("sound.zdm");
    WriteFileBytes(path, sound);
    return path;
  }

  /// Where record `id` begins, by the ledger of the sound file.
  static const zdm::SalvagedObject& RecordOf(LONG id) {
    static const zdm::SalvageLedger ledger = zdm::Salvage(std::span<const BYTE>(sound)).ledger;
    return *std::ranges::find(ledger.objects, id, &zdm::SalvagedObject::id);
  }

  /// Salvages; checks what holds for every damage. Answers how many objects are as saved.
  std::size_t Try(const Bytes& damaged) {
    salvaged = {};
    salvaged = zdm::Salvage(std::span<const BYTE>(damaged));
    const auto found = Contents(*salvaged.document);
    std::size_t right = 0;
    for (const auto& object : salvaged.ledger.objects) {
      if (object.fate == ObjectFate::kLost) continue;
      const auto saved = contents.find(object.id);
      EXPECT_NE(saved, contents.end()) << "an object that was never saved: " << object.id;
      if (saved == contents.end() || !found.contains(object.id)) continue;
      const std::string& now = found.at(object.id);
      const bool isHome = OwnerIn(now) == OwnerIn(saved->second);
      EXPECT_TRUE(isHome || now.find("@Recovered") != std::string::npos)
          << object.id << " came under another manager: " << now;
      if (object.fate == ObjectFate::kDoubtful) continue;
      EXPECT_EQ(WithoutOwner(now), WithoutOwner(saved->second))
          << object.id << " is called recovered";
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

  const zdm::SalvagedObject* Account(LONG id) const {
    const auto& objects = salvaged.ledger.objects;
    const auto found = std::ranges::find(objects, id, &zdm::SalvagedObject::id);
    return found != objects.end() ? &*found : nullptr;
  }

  static inline Bytes sound;
  static inline std::map<LONG, std::string> contents;
  zdm::Salvaged salvaged;
};

Bytes WithoutSector(Bytes bytes, std::size_t at) {
  std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), std::min(kSector, bytes.size() - at),
              BYTE{0});
  return bytes;
}

TEST_F(Salvage, OfASoundFileOpensIt) {
  const auto opened = zdm::Salvage(TempFilePath());
  EXPECT_EQ(opened.ledger.stage, SalvageStage::kSound);
  EXPECT_EQ(Contents(*opened.document), contents);
  EXPECT_FALSE(opened.document->IsModified());
  EXPECT_EQ(opened.ledger.Count(ObjectFate::kLost), 0u);
  EXPECT_EQ(opened.ledger.CountOwnerless(), 0u);
  for (const auto& range : opened.ledger.ranges) {
    EXPECT_NE(range.kind, RangeKind::kUnknown) << range.begin;
    EXPECT_NE(range.kind, RangeKind::kDamaged) << range.begin;
  }
  // Read as a damaged one it is the same document, order in managers included.
  EXPECT_EQ(Try(sound), contents.size());
  salvaged.document->SaveAs(TempFile("again.zdm"));
  EXPECT_EQ(FileBytes(salvaged.document->GetPath()), sound);
}

TEST_F(Salvage, LosesFewObjectsToALostSector) {
  const std::size_t inSector = 8;  // records, and parts of them at its ends
  for (std::size_t at = 0; at < sound.size(); at += kSector) {
    SCOPED_TRACE(at);
    EXPECT_GE(Try(WithoutSector(sound, at)) + inSector, contents.size());
  }
}

TEST_F(Salvage, LosesFewObjectsToFlippedBits) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    SCOPED_TRACE(round);
    Bytes damaged = sound;
    for (int i = 0; i < 6; ++i)
      damaged[random() % damaged.size()] ^= static_cast<BYTE>(1 << random() % 8);
    EXPECT_GE(Try(damaged) + 6, contents.size());
  }
}

/// The container stays sound when a bit of a name flips, and nothing is found under that name.
TEST_F(Salvage, FindsRecordsInAStreamThatLostItsName) {
  const std::basic_string<BYTE> name = {'O', 0, 'b', 0, 'j', 0, 'e', 0, 'c', 0, 't', 0, 's', 0};
  const std::basic_string<BYTE> all(sound.begin(), sound.end());
  const auto at = all.find(name);
  ASSERT_NE(at, std::string::npos);
  Bytes damaged = sound;
  damaged[at + 10] ^= 1;
  EXPECT_EQ(Try(damaged), contents.size());
}

TEST_F(Salvage, OfACutFileHasWhatStandsBeforeTheCut) {
  for (std::size_t size = kSector; size < sound.size(); size += 777) {
    SCOPED_TRACE(size);
    const auto before =
        static_cast<std::size_t>(std::ranges::count_if(contents, [&](const auto& object) {
          const auto& record = RecordOf(object.first);
          const bool isFrame = object.first > 63;
          return !isFrame && record.place + record.length <= size;
        }));
    try {
      EXPECT_GE(Try(Bytes(sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(size))),
                before);
    } catch (const DocumentError& error) {
      EXPECT_EQ(error.Fault(), DocumentFault::kNotDocument);
      EXPECT_EQ(before, 0u);
    }
  }
}

TEST_F(Salvage, MendsABitAndTrustsTheRecordAgain) {
  Bytes damaged = sound;
  const auto& record = RecordOf(30);
  damaged[record.place + offsetof(zdm::ObjectHeader, ownerId)] ^= 3 ^ 1;
  EXPECT_EQ(Try(damaged), contents.size());
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kStreams);
  EXPECT_TRUE(Account(30)->isMended);
  EXPECT_EQ(Contents(*salvaged.document), contents);
}

TEST_F(Salvage, NeverBelievesTheOwnerOfADoubtfulRecord) {
  Bytes damaged = sound;
  BYTE* record = &damaged[RecordOf(30).place];
  record[offsetof(zdm::ObjectHeader, ownerId)] ^= 3;
  record[offsetof(zdm::ObjectHeader, auxWord1)] ^= 1;
  EXPECT_EQ(Try(damaged), contents.size() - 1);
  EXPECT_EQ(Account(30)->fate, ObjectFate::kDoubtful);
  EXPECT_TRUE(Account(30)->isOwnerless);
  EXPECT_EQ(NameOf(salvaged.document->GetOIDByID(30)->Object->GetOwner()), "Recovered");
  EXPECT_EQ(salvaged.document->GetCount(), 5)
      << "materials, categories, walls, doors and Recovered";
}

TEST_F(Salvage, GathersTheObjectsOfALostManager) {
  Bytes damaged = sound;
  std::fill_n(&damaged[RecordOf(1).place], RecordOf(1).length, BYTE{0});
  Try(damaged);
  EXPECT_EQ(Account(1)->fate, ObjectFate::kLost);
  EXPECT_EQ(salvaged.ledger.CountOwnerless(), 32u) << "30 walls, the foreign object, the proxy";
  const auto& ranges = salvaged.ledger.ranges;
  EXPECT_TRUE(std::ranges::any_of(ranges, [&](const auto& range) {
    return range.kind == RangeKind::kDamaged && range.begin == RecordOf(1).place;
  }));
}

TEST_F(Salvage, KeepsTheIDsOfLostTargets) {
  Bytes damaged = sound;
  std::fill_n(&damaged[RecordOf(4).place], RecordOf(4).length, BYTE{0});
  Try(damaged);
  EXPECT_EQ(Account(4)->fate, ObjectFate::kLost);
  ASSERT_EQ(Account(4)->ownerId, 0);
  salvaged.document->SaveAs(TempFile("lost.zdm"));
  const auto reopened = Contents(*CZDocument::Open(salvaged.document->GetPath()));
  EXPECT_EQ(reopened.at(3), contents.at(3)) << "refers to object 4";
  EXPECT_EQ(reopened.size(), contents.size() - 1);
}

/// The compound file's own tables, one after the other and all together.
TEST_F(Salvage, NeedsNoTableOfTheContainer) {
  const zdm::SalvageLedger ledger = zdm::Salvage(std::span<const BYTE>(sound)).ledger;
  Bytes all = sound;
  for (const auto& range : ledger.ranges) {
    if (range.kind != RangeKind::kContainer) continue;
    std::fill(all.begin() + static_cast<std::ptrdiff_t>(range.begin),
              all.begin() + static_cast<std::ptrdiff_t>(range.end), BYTE{0});
  }
  EXPECT_GE(Try(all) + 2, contents.size())
      << "embedded object and proxy have no index of their own";
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kBytes);
  EXPECT_EQ(Account(63)->fate, ObjectFate::kAbsentClass);
  EXPECT_EQ(NameOf(salvaged.document), "House");
}

/// Without index and version nothing has a checksum. What a new document has is given to one whose
/// own record is lost, unless it is there.
TEST_F(Salvage, WithoutIndexReadsWhatCanBeRead) {
  const zdm::SalvageLedger ledger = zdm::Salvage(std::span<const BYTE>(sound)).ledger;
  Bytes damaged = sound;
  for (const auto& range : ledger.ranges) {
    if (range.kind != RangeKind::kTables && range.kind != RangeKind::kContainer) continue;
    std::fill(damaged.begin() + static_cast<std::ptrdiff_t>(range.begin),
              damaged.begin() + static_cast<std::ptrdiff_t>(range.end), BYTE{0});
  }
  EXPECT_GE(Try(damaged) + 2, contents.size());
  EXPECT_TRUE(Account(30)->isUnchecked);
  EXPECT_EQ(Account(63)->fate, ObjectFate::kAbsentClass) << "between known records";

  const auto expectDefaults = [&] {
    CZDocument& document = *salvaged.document;
    EXPECT_NE(document.GetDefaultDispAttrib(), nullptr);
    EXPECT_NE(document.GetMaterialMgr(), nullptr);
    EXPECT_NE(document.FindByInterface(ZInterface<IZCategoryMgr>::ID()), nullptr);
    EXPECT_EQ(document.GetCount(), 4) << "materials, categories, walls and doors";
  };
  expectDefaults();
  for (const LONG id : {-2, -3, -4}) {
    std::fill_n(&damaged[RecordOf(id).place], RecordOf(id).length, BYTE{0});
  }
  Try(damaged);
  expectDefaults();
}

/// Streams whose sectors stand in any order are put together by the allocation table alone.
TEST_F(Salvage, FollowsChainsWithoutADirectory) {
  const zdm::CompoundMemory memory(sound.data(), sound.size());
  const zdm::CompoundImage image(memory);
  zdm::CompoundHeader header;
  ASSERT_TRUE(image.ReadHeader(&header));
  ASSERT_EQ(header.fatSectors, 1u);
  const ULONG fat = image.HeaderFatPlace(0);
  const auto count = static_cast<ULONG>(sound.size() / kSector - 1);
  ASSERT_LE(count, 128u);
  std::vector<ULONG> placeOf(count);
  for (ULONG i = 0; i < count; ++i) placeOf[i] = i;
  std::shuffle(placeOf.begin(), placeOf.end(), std::mt19937(5));
  const auto moved = [&](ULONG sector) { return sector < count ? placeOf[sector] : sector; };
  Bytes shuffled = sound;
  for (ULONG i = 0; i < count; ++i) {
    std::copy_n(&sound[(i + 1) * kSector], kSector, &shuffled[(moved(i) + 1) * kSector]);
  }
  for (ULONG i = 0; i < count; ++i) {
    const ULONG next = moved(zdm::ReadU32(&sound[(fat + 1) * kSector + 4 * i]));
    std::memcpy(&shuffled[(moved(fat) + 1) * kSector + 4 * moved(i)], &next, 4);
  }
  const ULONG place = moved(fat);
  std::memcpy(&shuffled[76], &place, 4);
  ULONG sector = header.directoryStart;
  while (sector < count) {
    std::fill_n(&shuffled[(moved(sector) + 1) * kSector], kSector, BYTE{0});
    sector = zdm::ReadU32(&sound[(fat + 1) * kSector + 4 * sector]);
  }
  EXPECT_GE(Try(shuffled) + 2, contents.size());
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kContainer);
}

TEST_F(Salvage, RefusesWhatIsNoDocumentOrALaterOne) {
  const auto faultOf = [](const Bytes& bytes) {
    try {
      zdm::Salvage(std::span<const BYTE>(bytes));
    } catch (const DocumentError& error) {
      return error.Fault();
    }
    return DocumentFault::kFailed;
  };
  EXPECT_EQ(faultOf({}), DocumentFault::kNotDocument);
  EXPECT_EQ(faultOf(Bytes(5000, 'a')), DocumentFault::kNotDocument);
  EXPECT_EQ(faultOf(Bytes(sound.begin(), sound.begin() + 512)), DocumentFault::kNotDocument);
  const std::string_view all(reinterpret_cast<const char*>(sound.data()), sound.size());
  const auto at = all.find(std::string_view(reinterpret_cast<const char*>(zdm::kMagic), 8));
  Bytes later = sound;
  later[at + 8] = 2;
  const ULONG checksum = zdm::Crc32c(std::span<const BYTE>(later).subspan(at, 44));
  std::memcpy(&later[at + 44], &checksum, 4);
  EXPECT_EQ(faultOf(later), DocumentFault::kNewerFormat);
  EXPECT_THROW(zdm::Salvage(TempFile("absent.zdm")), DocumentError);
}

TEST_F(Salvage, SaysWhatBecameOfEverythingAsJson) {
  Bytes damaged = sound;
  std::fill_n(&damaged[RecordOf(4).place], RecordOf(4).length, BYTE{0});
  Try(damaged);
  const std::string json = salvaged.ledger.ToJson();
  for (const char* part : {R"({"stage":"streams","container":"sound","size":)",
                           R"("absent-class":1,"doubtful":0,"lost":1)", R"({"id":4,"fate":"lost"})",
                           R"("owner":1,"class":"{BAC66A06-E7EB-42B1-8755-E0E8AC0AC5A1}","at":)",
                           R"("kind":"damaged"})", R"({"name":"Index","state":"sound"})"}) {
    EXPECT_NE(json.find(part), std::string::npos) << part;
  }
  EXPECT_EQ(std::ranges::count(json, '{'), std::ranges::count(json, '}'));
}

TEST(FlippedBit, IsFoundWhereverItIs) {
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    Bytes bytes(2 + random() % 400);
    for (BYTE& byte : bytes) byte = static_cast<BYTE>(random());
    const ULONG checksum = zdm::Crc32c(bytes);
    const std::size_t bit = random() % (8 * bytes.size());
    bytes[bit / 8] ^= static_cast<BYTE>(1 << bit % 8);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum), bit);
    const std::size_t other = (bit + 9) % (8 * bytes.size());
    bytes[other / 8] ^= static_cast<BYTE>(1 << other % 8);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum), zdm::kNoBit);
    bytes[other / 8] ^= static_cast<BYTE>(1 << other % 8);
    bytes[bit / 8] ^= static_cast<BYTE>(1 << bit % 8);
    EXPECT_EQ(zdm::FlippedBit(bytes, checksum ^ 0x100), 8 * bytes.size() + 8);
  }
}

}  // namespace
