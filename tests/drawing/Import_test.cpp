// Drawings into documents and back.
#include "document/Audit.h"
#include "document/CZDispAttrib.h"
#include "drawing/DrawingCounts.h"
#include "drawing/DrawingTree.h"
#include "drawing/ExtendedData.h"
#include "drawing/GroupDefinitions.h"
#include "tests/drawing/DrawingSupport.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/extdata/ZExtDataWrapper.h"
#include "zdm/identity/CPIDManager.h"
#include "zdm/identity/PID.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace zdm;
using namespace zdm::test;

namespace {

IZDMObject* FindType(CZDocument& document, std::string_view type, int nth = 0) {
  IZDMObject* found = nullptr;
  ForEachPart(*FindDrawing(document), [&](IZDMObject& object, DrawingPart& part) {
    if (part.Type() == type && nth-- == 0) found = &object;
  });
  return found;
}

/// The places at which two files differ, as "index:code=text".
std::string Differences(const GroupTexts& before, const GroupTexts& after) {
  std::string text = before.size() == after.size() ? "" : "other length ";
  for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    if (before[i] != after[i]) text += std::to_string(after[i].first) + '=' + after[i].second + ' ';
  }
  return text;
}

struct Sample {
  const char* name;
  std::vector<ULONGLONG> counts;
};

std::vector<ULONGLONG> Numbers(const DrawingCounts& n) {
  return {n.layers,        n.blocks,    n.entModel,   n.entPaper, n.entBlocks,  n.entTotal,
          n.insModel,      n.insTotal,  n.nestModel,  n.nestAny,  n.pathsModel, n.attdefs,
          n.attribs,       n.vertices,  n.withHandle, n.noHandle, n.dupHandles, n.xdataRecords,
          n.xdataEntities, n.xdataApps, n.objects,    n.dicts,    n.xrecords,   n.xdictLinks};
}

const Sample kSamples[] = {
    {"house.dxf", {24, 145, 967,  3, 2678, 3648, 10, 285, 1,   2,  10, 2,
                   8,  0,   3660, 0, 0,    31,   16, 13,  114, 28, 9,  7}},
    {"blocks2.dxf", {4, 3, 4, 0, 13, 17, 1, 3, 2, 2, 3, 0, 0, 0, 17, 0, 0, 0, 0, 0, 2, 2, 0, 0}},
    {"routes_gbk_r12.dxf",
     {0, 1, 8, 0, 1, 9, 4, 4, 1, 1, 4, 1, 4, 86, 0, 107, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"supported_entities.dxf",
     {4, 16, 52, 0, 26, 78, 13, 15, 2, 2, 15, 0, 0, 0, 78, 0, 0, 17, 0, 1, 62, 8, 47, 0}},
    {"truncated_header.dxf",
     {1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
};

TEST(Import, KeepsEveryGroupOfRealDrawings) {
  for (const Sample& sample : kSamples) {
    SCOPED_TRACE(sample.name);
    const std::string bytes = SampleBytes(sample.name);
    const auto document = NewDocument();
    ImportDrawing(*document, bytes, sample.name, {.codePage = "GBK"});
    const auto opened = Reopened(*document);
    EXPECT_EQ(Differences(GroupsOf(bytes), GroupsOf(Exported(*opened))), "");
    EXPECT_EQ(Numbers(Count(*FindDrawing(*opened))), sample.counts);
    EXPECT_TRUE(Audit(*opened).empty());
    EXPECT_EQ(opened->GetPIDManager()->GetPIDs().size(), sample.counts[10]);
  }
}

struct BadCase {
  const char* name;
  std::string bytes;
  std::string warnings;
};

TEST(Import, WarnsOfMalformedFilesAndLosesNothing) {
  const std::string line = "0 LINE 8 Walls 10 1 20 2 11 3 21 4 ";
  const BadCase cases[] = {
      {"sound", SmallFile(line), ""},
      {"no end", FileOf("0 SECTION 2 ENTITIES 0 LINE 8 Walls"),
       "no-end section-unclosed layer-undefined "},
      {"something after the end", SmallFile(line) + FileOf("0 LINE"), "after-end "},
      {"the header ends too early",
       FileOf("0 SECTION 2 HEADER 9 $ACADVER 1 AC1015 0 ENDSEC 9 $INSBASE 10 0.0 0 ENDSEC "
              "0 SECTION 2 ENTITIES 0 ENDSEC 0 EOF"),
       "outside-section "},
      {"no ends of table and block",
       FileOf("0 SECTION 2 TABLES 0 TABLE 2 STYLE 0 ENDSEC 0 SECTION 2 BLOCKS 0 BLOCK 2 A "
              "0 BLOCK 2 B 0 ENDBLK 0 ENDSEC 0 EOF"),
       "table-unclosed block-unclosed "},
      {"an undefined layer", SmallFile("0 LINE 8 Doors "), "layer-undefined "},
      {"decimal commas", SmallFile("0 LINE 8 Walls 10 1,5 "), "decimal-comma "},
      {"no number", SmallFile("0 LINE 8 Walls 10 wide 62 1.5e "), "number-bad "},
      {"a handle twice", SmallFile("0 LINE 5 A 8 Walls 0 LINE 5 A 8 Walls "), "handle-doubled "},
      {"a handle of nothing", SmallFile("0 LINE 8 Walls 330 BEEF "), "handle-unresolved "},
      {"an insert of nothing", SmallFile("0 INSERT 8 Walls 2 NONE "), "block-missing "},
      {"a block twice", SmallFile(line, "0 BLOCK 2 A 0 ENDBLK 0 BLOCK 2 a 0 ENDBLK "),
       "block-doubled "},
      {"blocks in each other",
       SmallFile("0 INSERT 8 Walls 2 A ",
                 "0 BLOCK 2 A 0 INSERT 8 Walls 2 B 0 ENDBLK "
                 "0 BLOCK 2 B 0 INSERT 8 Walls 2 A 0 ENDBLK "),
       "block-cycle "},
      {"an unknown code page", FileOf("0 SECTION 2 HEADER 9 $DWGCODEPAGE 3 klingon 0 ENDSEC 0 EOF"),
       "codepage-unknown "},
  };
  for (const BadCase& each : cases) {
    SCOPED_TRACE(each.name);
    const auto document = NewDocument();
    EXPECT_EQ(CodesOf(ImportDrawing(*document, each.bytes, "bad.dxf")), each.warnings);
    EXPECT_EQ(Differences(GroupsOf(each.bytes), GroupsOf(Exported(*Reopened(*document)))), "");
    EXPECT_TRUE(Audit(*document).empty());
  }
}

TEST(Import, NumbersLayersInTheOrderOfTheirTable) {
  const auto document = NewDocument();
  ImportDrawing(*document, SmallFile("0 LINE 8 WALLS 0 LINE 8 Doors "), "a.dxf");
  IZCategory* walls = FindType(*document, "LINE", 0)->GetCategory();
  IZCategory* doors = FindType(*document, "LINE", 1)->GetCategory();
  EXPECT_EQ(walls->GetNumber(), 1u);
  EXPECT_EQ(doors->GetNumber(), 2u);
  const DispValues values =
      dynamic_cast<CZDispAttrib*>(walls->GetProjectionDispAttrib())->GetValues();
  EXPECT_EQ(values.color, 0xFF0000u);
  EXPECT_EQ(values.lineType, Bstr(OLESTR("DASHED")));
  EXPECT_EQ(FindType(*document, "LAYER")->GetCategory(), walls);
}

TEST(Export, WritesExactlyWhatWasChanged) {
  const std::string bytes = SmallFile(
      "0 LINE 5 A1 8 Walls 62 3 10 1.50 20 2 1001 MINE 1000 old 1070 7 "
      "0 INSERT 5 A2 8 Walls 2 DOOR 66 1 10 0 20 0 0 ATTRIB 5 A3 8 Walls 2 NO 1 17 "
      "0 SEQEND 8 Walls ",
      "0 BLOCK 8 Walls 2 DOOR 3 DOOR 0 LINE 8 Walls 330 A1 0 ENDBLK ");
  using D = CZDocument;
  const GUID x = KeyOfCode(10);
  const GUID colour = KeyOfCode(62);
  const GUID tag = KeyOfTag(OLESTR("NO"));
  const GUID mine = KeyOfApplication(OLESTR("MINE"));
  const auto categoryOf = [](D& d) { return FindType(d, "LINE")->GetCategory(); };
  const auto setData = [&](D& d, const OLECHAR* text) {
    ZExtDataWrapper::AddExtData(FindType(d, "LINE", 1), mine, OLESTR("1000"), text, true);
  };
  struct Case {
    const char* name;
    std::function<void(D&)> change;
    const char* differences;
  };
  const Case cases[] = {
      {"a number", [&](D& d) { FindType(d, "LINE", 1)->SetParamDouble(&x, 2.25); }, "10=2.25 "},
      {"an integer", [&](D& d) { FindType(d, "LINE", 1)->SetParamLong(&colour, 5); }, "62=5 "},
      {"the attribute of an insert",
       [&](D& d) { FindType(d, "INSERT")->SetParamString(&tag, OLESTR("18 Ω")); },
       "1=18 \\U+03A9 "},
      {"the name of a layer", [&](D& d) { categoryOf(d)->SetCategoryName(OLESTR("Mauern")); },
       "2=Mauern 8=Mauern 8=Mauern 8=Mauern 8=Mauern 8=Mauern "},
      {"its visibility", [&](D& d) { categoryOf(d)->SetCategoryVisible(false); }, "62=-1 "},
      {"the name of a block", [](D& d) { FindType(d, "BLOCK")->SetName(OLESTR("GATE")); },
       "2=GATE 3=GATE 2=GATE "},
      {"extended data", [&](D& d) { setData(d, OLESTR("new")); }, "1000=new "},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.name);
    const auto document = NewDocument();
    ImportDrawing(*document, bytes, "a.dxf");
    const auto opened = Reopened(*document);
    each.change(*opened);
    EXPECT_EQ(Differences(GroupsOf(bytes), GroupsOf(Exported(*Reopened(*opened)))),
              each.differences);
  }
}

TEST(Import, NamesWhatIsInsideBlocksByPath) {
  const auto document = NewDocument();
  ImportDrawing(
      *document,
      SmallFile("0 INSERT 8 Walls 2 A 10 100 20 0 50 90 ",
                "0 BLOCK 2 A 10 1 20 0 0 INSERT 8 Walls 2 B 10 11 20 0 41 2 42 2 0 ENDBLK "
                "0 BLOCK 2 B 0 POINT 8 Walls 10 3 20 0 0 ENDBLK "),
      "a.dxf");
  const auto opened = Reopened(*document);
  ASSERT_EQ(opened->GetPIDManager()->GetPIDs().size(), 2u);
  GeMatrix matrix;
  opened->GetPIDManager()->GetPIDs().back()->get_SToP(matrix);
  // 3 is 6 in A, at 17; from its base 16; turned and moved.
  EXPECT_TRUE(matrix.TransformPoint({3, 0, 0}).IsSame({100, 16, 0}));
}

TEST(Import, MergesAnotherFileByNames) {
  const std::string first = SmallFile("0 LINE 5 A1 8 Walls 0 INSERT 5 A2 8 Walls 2 DOOR 330 A1 ",
                                      "0 BLOCK 5 B1 2 DOOR 0 LINE 5 B2 8 Walls 0 ENDBLK ");
  const auto document = NewDocument();
  ImportDrawing(*document, first, "a.dxf");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(CodesOf(ImportDrawing(*document, first, "a.dxf")), "");
  }
  const DrawingCounts counts = Count(*FindDrawing(*document));
  EXPECT_EQ(counts.layers, 1u);
  EXPECT_EQ(counts.blocks, 1u);
  EXPECT_EQ(counts.entModel, 6u);
  EXPECT_EQ(counts.entBlocks, 1u);
  EXPECT_EQ(counts.dupHandles, 0u);
  EXPECT_EQ(counts.pathsModel, 3u);
  EXPECT_TRUE(Audit(*document).empty());

  // Each insert refers to the line that came with it, also where handles are new.
  const auto again = NewDocument();
  EXPECT_EQ(CodesOf(ImportDrawing(*again, Exported(*document), "b.dxf")), "");
  for (int i = 0; i < 3; ++i) {
    IZDMObject* insert = FindType(*again, "INSERT", i);
    IZSingleReltn* relation = RelationOf(*insert, PartOf(insert)->Groups().IndexOf(330));
    ASSERT_NE(relation, nullptr);
    EXPECT_EQ(relation->GetReltnObject(), FindType(*again, "LINE", i + 1));
  }
}

TEST(Import, MergesRealDrawingsWithoutDoubledIDs) {
  const auto document = NewDocument();
  for (const Sample& sample : kSamples) {
    for (int i = 0; i < 2; ++i) ImportDrawing(*document, SampleBytes(sample.name), sample.name);
  }
  EXPECT_TRUE(Audit(*document).empty());
  const DrawingCounts counts = Count(*FindDrawing(*document));
  EXPECT_EQ(counts.dupHandles, 0u);
  EXPECT_EQ(counts.entModel, 2u * (967 + 4 + 8 + 52));
}

}  // namespace
