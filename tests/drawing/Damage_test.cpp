// Drawings that are cut off, damaged, or made to take all time and memory.
#include "drawing/DrawingCounts.h"
#include "drawing/NestedPaths.h"
#include "tests/drawing/DrawingSupport.h"
#include "zdm/identity/CPIDManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

using namespace zdm;
using namespace zdm::test;

namespace {

/// ZDM_EVERY_DAMAGE takes every place; without it a run looks at some of them.
bool IsEveryPlaceWanted() { return std::getenv("ZDM_EVERY_DAMAGE") != nullptr; }

/// What can be imported can be written and read again as the same groups.
void ImportAndExport(std::string_view bytes) try {
  const auto document = NewDocument();
  ImportDrawing(*document, bytes, "damaged.dxf");
  const std::string written = Exported(*document);
  const auto again = NewDocument();
  ImportDrawing(*again, written, "again.dxf");
  ASSERT_EQ(GroupsOf(Exported(*again)), GroupsOf(written));
} catch (const DocumentError& refused) {
  EXPECT_EQ(refused.Fault(), DocumentFault::kNotDocument);
}

TEST(DrawingDamage, TruncationsOfSmallFiles) {
  for (const char* name : {"truncated_header.dxf", "routes_gbk_r12.dxf", "blocks2.dxf"}) {
    SCOPED_TRACE(name);
    const std::string bytes = SampleBytes(name);
    const std::size_t step = IsEveryPlaceWanted() ? 1 : 797;
    for (std::size_t end = 0; end < bytes.size(); end += step) {
      ImportAndExport(std::string_view(bytes).substr(0, end));
    }
  }
}

TEST(DrawingDamage, ByteInTheHousePlan) {
  const std::string sound = SampleBytes("house.dxf");
  std::mt19937 random(7);
  const int places = IsEveryPlaceWanted() ? 1000 : 2;
  for (int i = 0; i < places; ++i) {
    std::string bytes = sound;
    bytes[random() % bytes.size()] = static_cast<char>(random());
    ImportAndExport(bytes);
  }
}

TEST(DrawingDamage, LineOfAHundredMegabytes) {
  const std::string bytes = SmallFile("0 TEXT 8 Walls 1 " + std::string(100'000'000, 'x') + ' ');
  const auto document = NewDocument();
  EXPECT_EQ(CodesOf(ImportDrawing(*document, bytes, "long.dxf")), "text-long ");
  EXPECT_GE(Exported(*document).size(), 100'000'000u);
}

/// Each block inserts the next one: a way of so many steps, and so many blocks.
TEST(DrawingDamage, BlocksNestedWithoutEnd) {
  const int blocks = IsEveryPlaceWanted() ? 1'000'000 : 5'000;
  std::string text;
  for (int i = 0; i < blocks; ++i) {
    text += "0 BLOCK 2 B" + std::to_string(i) + " 0 INSERT 8 Walls 2 B" + std::to_string(i + 1) +
            " 0 ENDBLK ";
  }
  const auto document = NewDocument();
  EXPECT_EQ(
      CodesOf(ImportDrawing(*document, SmallFile("0 INSERT 8 Walls 2 B0 ", text), "deep.dxf")),
      "block-missing paths-too-many ");
  EXPECT_EQ(Count(*FindDrawing(*document)).nestModel, static_cast<ULONGLONG>(blocks) + 1);
}

/// Ten inserts of the next block in each of twenty: more paths than there is memory.
TEST(DrawingDamage, MorePathsThanMemory) {
  std::string text;
  for (int i = 0; i < 20; ++i) {
    text += "0 BLOCK 2 B" + std::to_string(i) + ' ';
    for (int j = 0; j < 10; ++j) text += "0 INSERT 8 Walls 2 B" + std::to_string(i + 1) + ' ';
    text += "0 ENDBLK ";
  }
  text += "0 BLOCK 2 B20 0 ENDBLK ";
  const auto document = NewDocument();
  const std::string file = SmallFile("0 INSERT 8 Walls 2 B0 ", text);
  EXPECT_EQ(CodesOf(ImportDrawing(*document, file, "many.dxf")), "paths-too-many ");
  EXPECT_LE(document->GetPIDManager()->GetPIDs().size(), kMostSteps);
  EXPECT_EQ(Count(*FindDrawing(*document)).nestModel, 21u);
}

}  // namespace
