// What the check of compound files accepts, what it refuses and as what.
#include "platform/ole/CompoundFileCheck.h"

#include "StorageSupport.h"
#include "platform/ole/StorageFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

namespace zdm {

/// For messages of failed tests.
static void PrintTo(CompoundFault fault, std::ostream* out) { *out << DescribeFault(fault); }

namespace test {
namespace {

using enum CompoundFault;

CompoundFault FaultOf(const Bytes& file) {
  CompoundFileReport report;
  const HRESULT result = CheckCompoundFile(file.data(), file.size(), &report);
  EXPECT_EQ(result == S_OK, report.fault == kNone);
  return report.fault;
}

// One file with everything: two levels, small and large streams, an empty one, unused entries.
struct Sample {
  explicit Sample(int version) : builder(version) {
    folder = builder.AddStorage(0, OLESTR("folder"));
    small = builder.AddStream(0, OLESTR("small"), Pattern(100));
    builder.AddStream(0, OLESTR("other"), Pattern(200));
    large = builder.AddStream(folder, OLESTR("large"), Pattern(20000));
    second = builder.AddStream(folder, OLESTR("second"), Pattern(5000));
    empty = builder.AddStream(folder, OLESTR("empty"), {});
    file = builder.Build();
    first = builder.SectorOf(large);
  }

  void Header16(std::size_t at, USHORT value) { Put16(file, at, value); }
  void Header(std::size_t at, ULONG value) { Put32(file, at, value); }
  void Entry(ULONG entry, std::size_t at, ULONG value) {
    Put32(file, builder.EntryAt(entry) + at, value);
  }
  void Type(ULONG entry, BYTE type) { file[builder.EntryAt(entry) + 66] = type; }
  void NameAt(std::size_t at, USHORT value) { Put16(file, builder.EntryAt(small) + at, value); }
  void NameBytes(USHORT value) { NameAt(64, value); }
  void Fat(ULONG sector, ULONG value) { Put32(file, builder.FatAt(sector), value); }
  void MiniFat(ULONG sector, ULONG value) { Put32(file, builder.MiniFatAt(sector), value); }

  CompoundBuilder builder;
  ULONG folder, small, large, second, empty;
  ULONG first;  // sector of the large stream
  Bytes file;
};

struct Damage {
  const char* name;
  CompoundFault fault;
  std::function<void(Sample&)> apply;
};

constexpr std::size_t kLeft = 68, kRight = 72, kChild = 76, kStart = 116, kSize = 120;

const Damage kDamages[] = {
    {"signature", kNotCompound, [](Sample& s) { s.file[7] ^= 1; }},
    {"empty file", kNotCompound, [](Sample& s) { s.file.clear(); }},
    {"header cut", kHeader, [](Sample& s) { s.file.resize(511); }},
    {"version 5", kHeader, [](Sample& s) { s.Header16(26, 5); }},
    {"byte order", kHeader, [](Sample& s) { s.Header16(28, 0xFEFF); }},
    {"sector shift 31", kHeader, [](Sample& s) { s.Header16(30, 31); }},
    {"mini shift 0", kHeader, [](Sample& s) { s.Header16(32, 0); }},
    {"cutoff 0", kHeader, [](Sample& s) { s.Header(56, 0); }},
    {"no FAT", kFatPlaces, [](Sample& s) { s.Header(44, 0); }},
    {"FAT past the file", kFatPlaces, [](Sample& s) { s.Header(44, 0x7FFFFFFF); }},
    {"FAT place missing", kFatPlaces, [](Sample& s) { s.Header(44, 2); }},
    {"FAT place past the file", kFatPlaces, [](Sample& s) { s.Header(76, 9999); }},
    {"FAT place twice", kFatPlaces,
     [](Sample& s) {
       s.Header(44, 2);
       s.Header(80, s.builder.FatStart());
     }},
    {"DIFAT count past the file", kFatPlaces, [](Sample& s) { s.Header(72, 0xFFFFFFFF); }},
    {"DIFAT counted but missing", kFatPlaces, [](Sample& s) { s.Header(72, 1); }},
    {"DIFAT chain without count", kFatPlaces, [](Sample& s) { s.Header(68, 3); }},
    {"directory missing", kDirectory, [](Sample& s) { s.Header(48, kEndOfChain); }},
    {"directory past the file", kDirectory, [](Sample& s) { s.Header(48, 9999); }},
    {"directory in the FAT", kDirectory, [](Sample& s) { s.Header(48, s.builder.FatStart()); }},
    {"directory in a cycle", kDirectory, [](Sample& s) { s.Fat(0, 0); }},
    {"no root", kDirectory, [](Sample& s) { s.Type(0, kEntryStorage); }},
    {"second root", kEntry, [](Sample& s) { s.Type(s.folder, kEntryRoot); }},
    {"type unknown", kEntry, [](Sample& s) { s.Type(s.large, 3); }},
    {"free entry in the tree", kEntry, [](Sample& s) { s.Type(s.large, kEntryFree); }},
    {"stream with children", kEntry, [](Sample& s) { s.Entry(s.small, kChild, s.large); }},
    {"name of 0 bytes", kName, [](Sample& s) { s.NameBytes(0); }},
    {"name empty", kName, [](Sample& s) { s.NameBytes(2); }},
    {"name of odd length", kName, [](Sample& s) { s.NameBytes(13); }},
    {"name of 66 bytes", kName, [](Sample& s) { s.NameBytes(66); }},
    {"name of 65535 bytes", kName, [](Sample& s) { s.NameBytes(65535); }},
    {"name without terminator", kName, [](Sample& s) { s.NameBytes(10); }},
    {"name with a zero inside", kName, [](Sample& s) { s.NameBytes(14); }},
    {"half a surrogate pair", kName, [](Sample& s) { s.NameAt(0, 0xD801); }},
    {"child past the directory", kTree, [](Sample& s) { s.Entry(s.folder, kChild, 1000); }},
    {"child is the root", kTree, [](Sample& s) { s.Entry(s.folder, kChild, 0); }},
    {"sibling of itself", kTree, [](Sample& s) { s.Entry(s.large, kRight, s.large); }},
    {"storage inside itself", kTree, [](Sample& s) { s.Entry(s.folder, kChild, s.folder); }},
    {"siblings out of order", kTree,
     [](Sample& s) {
       const std::size_t root = s.builder.EntryAt(Get32(s.file, s.builder.EntryAt(0) + kChild));
       const ULONG left = Get32(s.file, root + kLeft);
       Put32(s.file, root + kLeft, Get32(s.file, root + kRight));
       Put32(s.file, root + kRight, left);
     }},
    {"two of one name", kTree,
     [](Sample& s) {
       for (const std::size_t at : {0, 2, 4, 6, 8}) {
         s.NameAt(at, static_cast<USHORT>("OTHER"[at / 2]));
       }
     }},
    {"elements nobody leads to", kTree, [](Sample& s) { s.Entry(s.folder, kChild, kNoEntry); }},
    {"mini FAT count", kMiniStream, [](Sample& s) { s.Header(64, 2); }},
    {"mini FAT in a cycle", kMiniStream,
     [](Sample& s) { s.Fat(s.builder.MiniFatStart(), s.builder.MiniFatStart()); }},
    {"mini stream too short", kMiniStream, [](Sample& s) { s.Entry(0, kSize, 1000000); }},
    {"mini stream is the directory", kMiniStream, [](Sample& s) { s.Entry(0, kStart, 0); }},
    {"mini chain in a cycle", kChain, [](Sample& s) { s.MiniFat(1, 0); }},
    {"mini chain past the mini stream", kChain, [](Sample& s) { s.MiniFat(1, 100); }},
    {"mini chain too short", kChain, [](Sample& s) { s.MiniFat(0, kEndOfChain); }},
    {"mini chain runs into a free one", kChain, [](Sample& s) { s.MiniFat(1, kFreeSector); }},
    {"mini sectors of another stream", kChain, [](Sample& s) { s.Entry(s.small, kStart, 2); }},
    {"small stream without mini stream", kChain, [](Sample& s) { s.Entry(0, kSize, 0); }},
    {"chain in a cycle", kChain, [](Sample& s) { s.Fat(s.first + 2, s.first); }},
    {"chain past the file", kChain, [](Sample& s) { s.Fat(s.first, s.builder.SectorCount()); }},
    {"chain too short", kChain, [](Sample& s) { s.Fat(s.first, kEndOfChain); }},
    {"chain runs into a free sector", kChain, [](Sample& s) { s.Fat(s.first, kFreeSector); }},
    {"sectors of another stream", kChain, [](Sample& s) { s.Entry(s.second, kStart, s.first); }},
    {"size past the chain", kChain, [](Sample& s) { s.Entry(s.large, kSize, 0x7FFFFFFF); }},
    {"start past the file", kChain, [](Sample& s) { s.Entry(s.large, kStart, 0xFFFFFFFF); }},
};

TEST(CompoundFileCheck, RefusesEachDamageAsWhatItIs) {
  for (const int version : {3, 4}) {
    for (const Damage& damage : kDamages) {
      SCOPED_TRACE(std::string(damage.name) + ", version " + std::to_string(version));
      Sample sample(version);
      damage.apply(sample);
      EXPECT_EQ(FaultOf(sample.file), damage.fault);
    }
  }
  Sample sample(3);
  sample.MiniFat(1, 0);
  CompoundFileReport report;
  CheckCompoundFile(sample.file.data(), sample.file.size(), &report);
  EXPECT_EQ(report.place, sample.small);
  EXPECT_EQ(CheckCompoundFile(nullptr, 0, nullptr), STG_E_INVALIDHEADER);
}

TEST(CompoundFileCheck, RefusesCyclesInALongListOfFatSectors) {
  CompoundBuilder builder;
  builder.AddStream(0, OLESTR("large"), Bytes(std::size_t{16} << 20));  // 2 DIFAT sectors
  const Bytes sound = builder.Build();
  EXPECT_EQ(FaultOf(sound), kNone);
  Bytes damaged = sound;
  const ULONG first = Get32(sound, 68);
  Put32(damaged, builder.DifatAt() + 508, first);
  EXPECT_EQ(FaultOf(damaged), kFatPlaces);
  damaged = sound;
  Put32(damaged, builder.DifatAt(), Get32(sound, 76));
  EXPECT_EQ(FaultOf(damaged), kFatPlaces);
}

struct Oddity {
  const char* name;
  std::function<void(Sample&)> apply;
};

// Seen in files of other programs, or allowed to them.
const Oddity kOddities[] = {
    {"nothing odd", [](Sample&) {}},
    {"other minor version", [](Sample& s) { s.Header16(24, 0x21); }},
    {"list of FAT sectors ended as free", [](Sample& s) { s.Header(68, kFreeSector); }},
    {"red entries", [](Sample& s) { s.file[s.builder.EntryAt(s.large) + 67] = 0; }},
    {"start of an empty stream", [](Sample& s) { s.Entry(s.empty, kStart, 12345); }},
    {"start of a storage", [](Sample& s) { s.Entry(s.folder, kStart, 12345); }},
    {"unused entry with remains", [](Sample& s) { s.Entry(s.builder.UsedEntries(), kChild, 1); }},
    {"chain longer than the stream", [](Sample& s) { s.Entry(s.large, kSize, 15000); }},
    {"sectors that belong to nothing",
     [](Sample& s) { s.file.resize(s.file.size() + s.builder.sectorSize()); }},
    {"bytes behind the last sector", [](Sample& s) { s.file.resize(s.file.size() + 17); }},
    {"name with a slash", [](Sample& s) { Put16(s.file, s.builder.EntryAt(s.large) + 2, '/'); }},
};

TEST(CompoundFileCheck, AcceptsWhatOtherProgramsWrite) {
  for (const int version : {3, 4}) {
    for (const Oddity& oddity : kOddities) {
      SCOPED_TRACE(std::string(oddity.name) + ", version " + std::to_string(version));
      Sample sample(version);
      oddity.apply(sample);
      CompoundFileReport report;
      EXPECT_EQ(CheckCompoundFile(sample.file.data(), sample.file.size(), &report), S_OK)
          << DescribeFault(report.fault) << " at " << report.place;
      EXPECT_EQ(report.storages, 1U);
      EXPECT_EQ(report.streams, 5U);
    }
  }
}

TEST(CompoundFileCheck, AcceptsATableCountedButMissingWhenNothingIsSmall) {
  CompoundBuilder builder;
  builder.AddStream(0, OLESTR("large"), Pattern(5000));
  Bytes file = builder.Build();
  Put32(file, 64, 1);
  EXPECT_EQ(FaultOf(file), kNone);
}

TEST(CompoundFileCheck, RefusesEveryCut) {
  const Sample sample(3);
  for (std::size_t size = 0; size < sample.file.size(); ++size) {
    const Bytes cut(sample.file.begin(), sample.file.begin() + static_cast<std::ptrdiff_t>(size));
    ASSERT_NE(FaultOf(cut), kNone) << size;
  }
}

/// Says it has all bytes and gives only the first of them: a file that is cut while it is read.
class CutBytes final : public CompoundBytes {
 public:
  CutBytes(const Bytes& file, std::size_t left) : file_(file), left_(left) {}
  ULONGLONG Size() const override { return file_.size(); }
  bool Read(ULONGLONG place, void* data, std::size_t size) const override {
    return CompoundMemory(file_.data(), left_).Read(place, data, size);
  }

 private:
  const Bytes& file_;
  std::size_t left_;
};

TEST(CompoundFileCheck, ReportsAFileThatIsCutMeanwhile) {
  const Sample sample(3);
  for (std::size_t left = 0; left < sample.file.size(); left += 100) {
    CompoundFileReport report;
    EXPECT_EQ(CheckCompoundFile(CutBytes(sample.file, left), &report), STG_E_READFAULT) << left;
    EXPECT_EQ(report.fault, kUnreadable);
  }
}

// Programs differ in the order of letters outside ASCII; equal names are then not always
// neighbours.
TEST(CompoundFileCheck, FindsEqualNamesWithALetterOutsideAsciiBetween) {
  for (const bool equal : {false, true}) {
    CompoundBuilder builder;
    builder.ChainSiblings();
    const ULONG first = builder.AddStream(0, OLESTR("B"), {});
    const ULONG second = builder.AddStream(0, OLESTR("C"), {});
    const ULONG third = builder.AddStream(0, OLESTR("D"), {});
    Bytes file = builder.Build();
    Put16(file, builder.EntryAt(first), 'A');
    Put16(file, builder.EntryAt(second), 0xE9);
    Put16(file, builder.EntryAt(third), equal ? 'a' : 'F');
    EXPECT_EQ(FaultOf(file), equal ? kTree : kNone);
  }
}

TEST(CompoundFileCheck, TakesTheUpperHalfOfASizeInVersion4Only) {
  for (const int version : {3, 4}) {
    Sample sample(version);
    sample.Entry(sample.large, kSize + 4, 1);
    EXPECT_EQ(FaultOf(sample.file), version == 3 ? kNone : kChain);
  }
}

// Whatever is accepted after bits were turned in the tables can be opened, and every stream has
// the bytes its size promises.
TEST(CompoundFileCheck, WhatPassesWithTurnedBitsCanBeRead) {
  const Name path = FreshPath("turned");
  unsigned state = 1;
  int accepted = 0;
  for (int i = 0; i < 4000; ++i) {
    Sample sample(i % 2 == 0 ? 3 : 4);
    const std::size_t tables[][2] = {
        {0, 512},
        {sample.builder.EntryAt(0), 1024},
        {sample.builder.MiniFatAt(0), 64},
        {sample.builder.FatAt(0), 4 * std::size_t{sample.builder.SectorCount()}}};
    for (int flips = 1 + i % 3; flips > 0; --flips) {
      state = state * 1664525U + 1013904223U;
      const auto& table = tables[(state >> 8) % 4];
      state = state * 1664525U + 1013904223U;
      sample.file[table[0] + (state >> 8) % table[1]] ^= static_cast<BYTE>(1U << (state >> 29));
    }
    if (FaultOf(sample.file) != kNone || ++accepted % 10 != 0) continue;
    WriteFile(path, sample.file);
    const Storage storage = OpenAt(path, STGM_READ | STGM_SHARE_EXCLUSIVE);
    ASSERT_TRUE(storage);
    const std::string text = Describe(storage.Get());
    EXPECT_EQ(text.find('?'), std::string::npos) << text;
    EXPECT_EQ(text.find("SHORT"), std::string::npos) << text;
  }
  EXPECT_GT(accepted, 300);
}

TEST(CompoundFileCheck, AnswersDeepAndWideFiles) {
  CompoundBuilder nested;
  for (ULONG i = 0; i < 10000; ++i) nested.AddStorage(i, OLESTR("d"));
  EXPECT_EQ(FaultOf(nested.Build()), kDepth);

  CompoundBuilder allowed;
  for (ULONG i = 0; i < kMaxStorageDepth; ++i) allowed.AddStorage(i, OLESTR("d"));
  EXPECT_EQ(FaultOf(allowed.Build()), kNone);

  CompoundBuilder wide;
  for (ULONG i = 0; i < 100000; ++i) wide.AddStream(0, Numbered(i), {});
  EXPECT_EQ(FaultOf(wide.Build()), kNone);
  wide.ChainSiblings();
  EXPECT_EQ(FaultOf(wide.Build()), kDepth);
}

TEST(ElementName, ComparesByLengthThenUpperCase) {
  EXPECT_LT(CompareElementNames(OLESTR("z"), OLESTR("aa")), 0);
  EXPECT_LT(CompareElementNames(OLESTR("a"), OLESTR("B")), 0);
  EXPECT_GT(CompareElementNames(OLESTR("_"), OLESTR("z")), 0);  // upper case stands before it
  EXPECT_EQ(CompareElementNames(OLESTR("Gr\u00f6\u00dfe"), OLESTR("GR\u00d6\u00dfE")), 0);
  EXPECT_NE(CompareElementNames(OLESTR("\u0131"), OLESTR("I")), 0);
}

}  // namespace
}  // namespace test
}  // namespace zdm
