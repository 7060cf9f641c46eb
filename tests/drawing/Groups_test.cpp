// Reading groups and texts.
#include "drawing/TextCodec.h"
#include "tests/drawing/DrawingSupport.h"

#include <gtest/gtest.h>

using namespace zdm;
using namespace zdm::test;

namespace {

struct ReaderCase {
  const char* name;
  std::string bytes;
  GroupTexts groups;
  const char* warnings;
};

std::string WarningsOf(std::string_view bytes) {
  Warnings warnings;
  GroupReader reader(bytes, &warnings);
  for (Group group; reader.Next(group);) {
  }
  std::string codes;
  for (const Warning& warning : warnings.All()) codes += std::string(NameOf(warning.code)) + ' ';
  return codes;
}

TEST(GroupReader, ReadsPairsOfLines) {
  const std::string nul("  1\na\0b\n", 8);
  const ReaderCase cases[] = {
      {"LF", "  0\nLINE\n 10\n 1.0 \n", {{0, "LINE"}, {10, " 1.0 "}}, ""},
      {"CRLF", "0\r\nLINE\r\n1\r\n\r\n", {{0, "LINE"}, {1, ""}}, ""},
      {"CR", "0\rLINE\r62\r7", {{0, "LINE"}, {62, "7"}}, ""},
      {"no end of line", "0\nEOF", {{0, "EOF"}}, ""},
      {"byte order mark",
       "\xEF\xBB\xBF"
       "0\nEOF\n",
       {{0, "EOF"}},
       ""},
      {"blank lines at the end", "0\nEOF\n\n \n", {{0, "EOF"}}, ""},
      {"a zero byte", nul, {{1, std::string("a\0b", 3)}}, ""},
      {"a line too many", "0\nLINE\nstray\n8\nA\n", {{0, "LINE"}, {8, "A"}}, "code-unreadable "},
      {"codes out of range", "-6\na\n1072\nb\n", {{-6, "a"}, {1072, "b"}}, "code-out-of-range "},
      {"a code beyond 32 bits", "99999999999\n0\nEOF\n", {{0, "EOF"}}, "code-unreadable "},
      {"no value", "0\nEOF\n8\n", {{0, "EOF"}}, "cut-off "},
  };
  for (const ReaderCase& each : cases) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(GroupsOf(each.bytes), each.groups);
    EXPECT_EQ(WarningsOf(each.bytes), each.warnings);
  }
}

TEST(TextCodec, ShowsBytesAndWritesThemBack) {
  struct Case {
    const char* codePage;
    std::string bytes;
    WideString shown;
  };
  const Case cases[] = {
      {"ANSI_1252", "50\xB0 \x80", OLESTR("50° €")},
      {"ANSI_1251", "\xCF\xEB\xE0\xED", OLESTR("План")},
      {"ANSI_936", "\xB1\xC8\xD1\xA1", OLESTR("比选")},
      {"MAC-ROMAN", "\x8E", OLESTR("é")},
      {"iso8859-1", "\xDC", OLESTR("Ü")},
      {"utf-8", "\xCE\xA9", OLESTR("Ω")},
      {"ANSI_1252", "\\U+2126", OLESTR("\x2126")},
  };
  for (const Case& each : cases) {
    SCOPED_TRACE(each.codePage);
    const TextCodec codec = {CodePageOf(each.codePage).value_or(0)};
    EXPECT_EQ(codec.Show(each.bytes), each.shown);
    EXPECT_EQ(codec.Write(each.shown), each.bytes);
  }
  EXPECT_EQ(TextCodec().Show("\\U+004 \\U+0041\\U"), OLESTR("\\U+004 A\\U"));
  EXPECT_EQ(TextCodec().Write(OLESTR("a\nb")), "a^Jb");
  EXPECT_FALSE(CodePageOf("ANSI_").has_value());
  EXPECT_FALSE(CodePageOf("klingon").has_value());
}

TEST(DrawingFile, RefusesWhatIsNoTextDrawing) {
  const std::pair<const char*, std::string> cases[] = {
      {"empty", ""},
      {"text", "Dear reader,\nthis is a letter.\n"},
      {"no section", "0\nLINE\n8\n0\n0\nEOF\n"},
      {"binary form", std::string("A name of 18 chars\r\n\x1A\0\0\0", 24)},
      {"DWG", std::string("AC1018\0\0\0\0", 10)},
  };
  for (const auto& [name, bytes] : cases) {
    SCOPED_TRACE(name);
    const auto document = NewDocument();
    EXPECT_THROW(ImportDrawing(*document, bytes, "x.dxf"), DocumentError);
    EXPECT_TRUE(document->IsEmpty());
  }
}

}  // namespace
