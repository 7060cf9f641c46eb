// Damage to the file around the records: lost sectors, cuts, and what tells where they stand.
#include "document/Crc32c.h"
#include "document/DocumentError.h"
#include "document/DocumentFormat.h"
#include "platform/ole/CompoundFile.h"
#include "tests/document/SalvageSupport.h"
#include "tests/support/Bytes.h"
#include "zdm/categories/IZCategoryMgr.h"

#include <cstring>
#include <random>

using namespace zdm::test;
using zdm::DocumentError;
using zdm::DocumentFault;
using zdm::ObjectFate;
using zdm::RangeKind;
using zdm::SalvageStage;

namespace {

constexpr std::size_t kSector = 512;

TEST_F(SalvageTest, LosesFewObjectsToALostSector) {
  const std::size_t inSector = 8;  // records, and parts of them at its ends
  for (std::size_t at = 0; at < sound.size(); at += kSector) {
    SCOPED_TRACE(at);
    EXPECT_GE(Try(Without(at, kSector)) + inSector, contents.size());
  }
}

/// The container stays sound when a bit of a name flips, and nothing is found under that name.
TEST_F(SalvageTest, FindsRecordsInAStreamThatLostItsName) {
  const Bytes name = Hex("4F0062006A006500630074007300");  // Objects
  const auto at = std::search(sound.begin(), sound.end(), name.begin(), name.end()) - sound.begin();
  ASSERT_LT(at, std::ssize(sound));
  Bytes damaged = sound;
  damaged[static_cast<std::size_t>(at) + 10] ^= 1;
  EXPECT_EQ(Try(damaged), contents.size());
}

TEST_F(SalvageTest, OfACutFileHasWhatStandsBeforeTheCut) {
  for (std::size_t size = kSector; size < sound.size(); size += 777) {
    SCOPED_TRACE(size);
    const auto before = std::ranges::count_if(contents, [&](const auto& object) {
      const auto& record = RecordOf(object.first);
      const bool isFrame = object.first > 63;
      return !isFrame && record.place + record.length <= size;
    });
    try {
      EXPECT_GE(static_cast<std::ptrdiff_t>(Try(Cut(sound, size))), before);
    } catch (const DocumentError& error) {
      EXPECT_EQ(error.Fault(), DocumentFault::kNotDocument);
      EXPECT_EQ(before, 0);
    }
  }
}

/// All of the compound file's own tables are gone.
TEST_F(SalvageTest, NeedsNoTableOfTheContainer) {
  EXPECT_GE(Try(WithoutKinds({RangeKind::kContainer})) + 2, contents.size())
      << "embedded object and proxy have no index of their own";
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kBytes);
  EXPECT_EQ(Account(63).fate, ObjectFate::kAbsentClass);
  EXPECT_EQ(NameOf(salvaged.document), "House");
}

/// Without index and version nothing has a checksum. What a new document has is given to one whose
/// own record is lost, unless it is there.
TEST_F(SalvageTest, WithoutIndexReadsWhatCanBeRead) {
  Bytes damaged = WithoutKinds({RangeKind::kTables, RangeKind::kContainer});
  EXPECT_GE(Try(damaged) + 2, contents.size());
  EXPECT_TRUE(Account(30).isUnchecked);
  EXPECT_EQ(Account(63).fate, ObjectFate::kAbsentClass) << "between known records";

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
TEST_F(SalvageTest, FollowsChainsWithoutADirectory) {
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
  const auto nextOf = [&](ULONG sector) {
    return zdm::ReadU32(&sound[(fat + 1) * kSector + 4 * sector]);
  };
  Bytes shuffled = sound;
  for (ULONG i = 0; i < count; ++i) {
    std::copy_n(&sound[(i + 1) * kSector], kSector, &shuffled[std::size_t{moved(i) + 1} * kSector]);
  }
  for (ULONG i = 0; i < count; ++i) {
    const ULONG next = moved(nextOf(i));
    std::memcpy(&shuffled[std::size_t{moved(fat) + 1} * kSector + 4 * moved(i)], &next, 4);
  }
  const ULONG place = moved(fat);
  std::memcpy(&shuffled[76], &place, 4);
  for (ULONG sector = header.directoryStart; sector < count; sector = nextOf(sector)) {
    std::fill_n(&shuffled[(moved(sector) + 1) * kSector], kSector, BYTE{0});
  }
  EXPECT_GE(Try(shuffled) + 2, contents.size());
  EXPECT_EQ(salvaged.ledger.stage, SalvageStage::kContainer);
}

TEST_F(SalvageTest, RefusesWhatIsNoDocumentOrALaterOne) {
  const Bytes magic(zdm::kMagic, zdm::kMagic + 8);
  Bytes later = sound;
  BYTE* version = &*std::search(later.begin(), later.end(), std::begin(magic), std::end(magic));
  version[8] = 2;
  const ULONG checksum = zdm::Crc32c({version, 44});
  std::memcpy(version + 44, &checksum, 4);
  const std::pair<Bytes, DocumentFault> rows[] = {{{}, DocumentFault::kNotDocument},
                                                  {Bytes(5000, 'a'), DocumentFault::kNotDocument},
                                                  {Cut(sound, 512), DocumentFault::kNotDocument},
                                                  {later, DocumentFault::kNewerFormat}};
  for (const auto& [bytes, fault] : rows) {
    try {
      zdm::Salvage(std::span<const BYTE>(bytes));
      ADD_FAILURE() << "salvaged from " << bytes.size();
    } catch (const DocumentError& error) {
      EXPECT_EQ(error.Fault(), fault) << bytes.size();
    }
  }
  EXPECT_THROW(zdm::Salvage(TempFile("absent.zdm")), DocumentError);
}

}  // namespace
