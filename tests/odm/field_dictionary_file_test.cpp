// Reading the field dictionary file: grammar, tags, quirks kept on purpose,
// every failure text with its line number, and what a failed load leaves.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "Data/Impl/ODMDictionaryLineReader.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ODMFieldDictionaryReader.h"
#include "odm/dictionary_test_util.h"

namespace orvo {
namespace odm {
namespace {

using common::Int64;
using common::ORVO_String;
using testing::failureOf;
using testing::Raised;
using testing::raisedBy;
using testing::ScopedDictionary;
using testing::ScratchDir;
using testing::str;
using testing::text;

const char kGoodLine[] = "GOOD_ONE \"GOOD ONE\" 1 NULL INTEGER 5 UINT32 2\n";

class FieldFileTest : public ::testing::Test {
 protected:
  Raised load(const std::string& contents) {
    const std::string path = _dir.write("fields" + std::to_string(_files++) + ".def", contents);
    return raisedBy([&] { _d->readODMFieldDictionary(str(path)); });
  }
  void loadOk(const std::string& contents) {
    const Raised raised = load(contents);
    ASSERT_EQ(raised.text, "<none>");
  }
  Raised loadEnums(const std::string& contents) {
    const std::string path = _dir.write("enums" + std::to_string(_files++) + ".def", contents);
    return raisedBy([&] { _d->readODMEnumTypeDef(str(path)); });
  }
  const ODMFidDef& def(int fid) { return _d->getFidDef(fid); }

  ScratchDir _dir;
  ScopedDictionary _d;
  int _files = 0;
};

std::string lineFailure(const std::string& reason, int line) {
  return "ODMFieldDictionaryInt::readODMFieldDictionary -" + reason +
         " Line= " + std::to_string(line) + "\n";
}

TEST_F(FieldFileTest, ReadsEveryColumn) {
  loadOk(
      "!tag Type 1\n"
      "QT_BUY   \"QUOTE BUY\"  22  QT_BUY_1  PRICE  17  REAL64  7\n"
      "QT_BUY_1 \"QUOTE BUY 1\" 23  NULL  PRICE  17  REAL64  7  trailing words ignored\n"
      "VENUE \"VENUE OF TRADE\" -4 NULL ENUMERATED 3 ( 5 ) ENUM 1\n"
      "TABBED\t\"T\"\t24\tNULL\tWEIRD\t8\tSTRANGE\t9\t\n");
  EXPECT_EQ(_d->size(), 4u);
  const ODMFidDef& buy = def(22);
  EXPECT_EQ(text(buy.getName()), "QT_BUY");
  EXPECT_EQ(text(buy.getLongName()), "QUOTE BUY");
  EXPECT_EQ(buy.getFieldId(), 22);
  EXPECT_EQ(text(buy.getRippleToName()), "QT_BUY_1");
  EXPECT_EQ(buy.getRippleToFieldId(), 23);  // forward reference
  EXPECT_EQ(buy.getFieldType(), FeedPrice);
  EXPECT_EQ(buy.getLength(), 17);
  EXPECT_EQ(buy.getEnumLength(), 0);
  EXPECT_EQ(buy.getOMMType(), OMMReal);
  EXPECT_EQ(buy.getOMMLength(), 7);
  EXPECT_EQ(text(def(23).getRippleToName()), "NULL");
  EXPECT_EQ(def(23).getRippleToFieldId(), 0);
  const ODMFidDef& venue = def(-4);
  EXPECT_EQ(venue.getFieldType(), FeedEnumerated);
  EXPECT_EQ(venue.getEnumLength(), 5);
  EXPECT_EQ(venue.getOMMType(), OMMEnum);
  EXPECT_EQ(def(24).getFieldType(), -1);  // unknown names are no failure
  EXPECT_EQ(def(24).getOMMType(), 0);
  EXPECT_EQ(def(24).getOMMLength(), 9);
  EXPECT_EQ(_d->getMaxFieldId(), 24);
  EXPECT_EQ(_d->getMinNegFieldId(), -4);
  EXPECT_EQ(_d->getMaxLength(), 17u);
  EXPECT_EQ(_d->getMaxEnumLength(), 5u);
  EXPECT_EQ(_d->getMaxOwfLength(), 9u);
}

TEST_F(FieldFileTest, EmptyFileAndCommentsOnlyLoadNothing) {
  loadOk("");
  EXPECT_EQ(_d->size(), 0u);
  loadOk("! just a comment\n!tag Desc  comments and tags only\n\n   \n\t\n");
  EXPECT_EQ(_d->size(), 0u);
  EXPECT_EQ(text(_d->getODMFldDesc()), "comments and tags only");
  // A line whose first byte is NUL is a blank line, whatever follows.
  loadOk(std::string("\0GARBAGE \"X\" 99999\n", 19) + kGoodLine);
  EXPECT_EQ(_d->size(), 1u);
}

TEST_F(FieldFileTest, TagsAndTheirValues) {
  loadOk(
      "!tag Filename  fields.def\n"
      "!tag Desc   text  \n"
      "!tag Version   7.4  \n"
      "!tag Build 0042\n"
      "!tag Date 1-Jan-2026\n"
      "!tag Unknown whatever\n" +
      std::string(kGoodLine) + "!tag Date later\n");
  EXPECT_EQ(text(_d->getODMFldFileName()), "fields.def");
  EXPECT_EQ(text(_d->getODMFldDesc()), "text  ");  // untrimmed
  EXPECT_EQ(text(_d->getVersion()), "7.4");        // trimmed
  EXPECT_EQ(text(_d->getODMFldBuild()), "0042");
  EXPECT_EQ(text(_d->getODMFldDate()), "later");  // tags may stand between field lines
  loadOk("!tag Build\n");
  EXPECT_EQ(text(_d->getODMFldBuild()), "");  // an empty value is a value
}

TEST_F(FieldFileTest, LinesThatOnlyLookLikeTagsAreComments) {
  // Each would fail the load if it were taken as the Type tag.
  loadOk("!tag\n!TAG Type 2\n!tagType 2\n! tag Type 2\n!tag  \n" + std::string(kGoodLine));
  EXPECT_EQ(_d->size(), 1u);
  EXPECT_EQ(failureOf([&] { _d->getFidDef("GOOD_ONE"); }), "<none>");
}

TEST_F(FieldFileTest, TypeTagMustBeOne) {
  loadOk("!tag Type 1\n!tag Type +1x\n");
  const Raised raised = load(std::string(kGoodLine) + "!tag Type   2  \n");
  EXPECT_EQ(raised.text,
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag Type 2   indicates this is not a "
            "field definitions dictionary. Line Number: \"2\"");
  EXPECT_EQ(raised.state, 1);
  EXPECT_EQ(load("!tag Type\n").text,
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag Type  indicates this is not a "
            "field definitions dictionary. Line Number: \"1\"");
}

TEST_F(FieldFileTest, DictionaryIdRangeAndAgreement) {
  const std::string range =
      "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag -dictionaryId is out of range. It "
      "should be in the range of -16383 to 16383\n Line Number: \"1\"";
  EXPECT_EQ(load("!tag DictionaryId 16384\n").text, range);
  EXPECT_EQ(load("!tag DictionaryId -16384\n").text, range);
  loadOk("!tag DictionaryId -16383\n");
  EXPECT_EQ(_d->getDictId(), -16383);
  // Without enum tables each load starts from id 1, unset.
  loadOk("!tag DictionaryId 16383\n");
  EXPECT_EQ(_d->getDictId(), 16383);
  loadOk(kGoodLine);
  EXPECT_EQ(_d->getDictId(), 1);
  EXPECT_FALSE(_d->isDictIdSet());
  // Within one file the id is set by the first tag.
  EXPECT_EQ(load("!tag DictionaryId 2\n!tag DictionaryId 2\n!tag DictionaryId 05\n").text,
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag field definitions "
            "DictionaryId->05 does not match the current/existing DictionaryId-> 2 that was set "
            "earlier\n Line Number: \"3\"");
}

TEST_F(FieldFileTest, DictionaryIdMustMatchLoadedEnumTables) {
  ASSERT_EQ(loadEnums("!tag DictionaryId 3\nVENUE 4\n 1 \"ONE\"\n").text, "<none>");
  EXPECT_EQ(load(std::string(kGoodLine) + "!tag DictionaryId 4\n").text,
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag field definitions "
            "DictionaryId->4 does not match the current/existing DictionaryId-> 3 that was set "
            "earlier\n Line Number: \"2\"");
  EXPECT_EQ(_d->getDictId(), 3);
  loadOk("!tag DictionaryId 3\n" + std::string(kGoodLine));
  loadOk(kGoodLine);  // no tag: the tables' id stands
  EXPECT_EQ(_d->getDictId(), 3);
  EXPECT_TRUE(_d->isDictIdSet());
}

TEST_F(FieldFileTest, EveryFieldLineFailureNamesItsLine) {
  const struct {
    const char* line;
    std::string expected;
  } cases[] = {
      {"\v\n", lineFailure("Cannot find ACRONYM", 3)},
      {"ACR\n", lineFailure("Cannot find DDE ACRONYM", 3)},
      {"ACR NAME 5 NULL INTEGER 5 UINT 2\n", lineFailure("Cannot find DDE ACRONYM", 3)},
      {"ACR \"UNCLOSED 5 NULL INTEGER 5 UINT 2\n", lineFailure("Cannot find DDE ACRONYM", 3)},
      {"  ! not a comment when indented\n", lineFailure("Cannot find DDE ACRONYM", 3)},
      {"ACR \"X\"\n", lineFailure("Cannot find FID", 3)},
      {"ACR \"X\" 32768 NULL INTEGER 5 UINT 2\n",
       "ODMFieldDictionaryInt::readODMFieldDictionary - Illegal FID = 32768 Line = 3\n"},
      {"ACR \"X\" -32769 NULL INTEGER 5 UINT 2\n",
       "ODMFieldDictionaryInt::readODMFieldDictionary - Illegal FID = -32769 Line = 3\n"},
      {"ACR \"X\" 99999999999 NULL INTEGER 5 UINT 2\n",
       "ODMFieldDictionaryInt::readODMFieldDictionary - Illegal FID = 2147483647 Line = 3\n"},
      {"ACR \"X\" 5\n", lineFailure("Cannot find RIPPLES TO", 3)},
      {"ACR \"X\" 5 NULL\n", lineFailure("Cannot find FIELD TYPE", 3)},
      {"ACR \"X\" 5 NULL INTEGER\n", lineFailure("Cannot find LENGTH", 3)},
      {"ACR \"X\" 5 NULL INTEGER -1 UINT 2\n", lineFailure("LENGTH less than 0", 3)},
      {"ACR \"X\" 5 NULL INTEGER 65536 UINT 2\n",
       lineFailure("LENGTH exceeds allowed maximum of 65535", 3)},
      {"ACR \"X\" 5 NULL INTEGER 5\n", lineFailure("Cannot find OWF TYPE", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 (\n", lineFailure("Cannot find EnumLen", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 ( -1 ) ENUM 1\n", lineFailure("EnumLen less than 0", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 ( 65536 ) ENUM 1\n",
       lineFailure("EnumLen exceeds allowed maximum of 65535", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 ( 3\n", lineFailure("Cannot find  end ')' in EnumLen", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 ( 3 ENUM 1\n",
       lineFailure("No ')' at end of EnumLen definition", 3)},
      {"ACR \"X\" 1 NULL INTEGER 5 (2) ENUM 1\n",
       lineFailure("No ')' at end of EnumLen definition", 3)},
      {"ACR \"X\" 5 NULL ENUMERATED 5 ( 3 )\n", lineFailure("Cannot find OWF TYPE", 3)},
      {"ACR \"X\" 5 NULL INTEGER 5 UINT\n", lineFailure("Cannot find Owf Length", 3)},
      {"ACR \"X\" 5 NULL INTEGER 5 UINT -2\n", lineFailure("Owf Length less than 0", 3)},
      {"ACR \"X\" 5 NULL INTEGER 5 UINT 65536\n",
       lineFailure("Owf Length exceeds allowed maximum of 65535", 3)},
  };
  for (const auto& c : cases) {
    const Raised raised = load(std::string("!tag Type 1\n") + kGoodLine + c.line + kGoodLine);
    EXPECT_EQ(raised.text, c.expected) << c.line;
    EXPECT_EQ(raised.state, 1) << c.line;
    EXPECT_EQ(_d->size(), 0u) << c.line;
  }
}

TEST_F(FieldFileTest, ColumnLimitsThatPass) {
  loadOk(
      "LOW \"L\" -32768 NULL INTEGER 0 ( 0 ) ENUM 0\n"
      "HIGH \"H\" 32767 NULL INTEGER 65535 ( 65535 ) ENUM 65535\n"
      "BRACKETS \"B\" 3 NULL INTEGER 5 ( 2 )) ENUM 1\n"
      "WORDY \"W\" 4 NULL INTEGER 5 ( 2 )x ENUM 1\n"
      "NOT_A_NUMBER \"N\" abc NULL INTEGER 5 UINT 2\n");
  EXPECT_EQ(text(def(-32768).getName()), "LOW");
  EXPECT_EQ(def(32767).getEnumLength(), 65535);
  EXPECT_EQ(def(3).getEnumLength(), 2);
  EXPECT_EQ(def(4).getOMMType(), OMMEnum);
  // A FID word that is not a number reads as 0: a real field id.
  EXPECT_EQ(text(def(0).getName()), "NOT_A_NUMBER");
  EXPECT_EQ(_d->getMaxOwfLength(), 65535u);
}

TEST_F(FieldFileTest, IndentedLinesRunTheirLastWordIntoTheOldLineEnd) {
  loadOk(
      "  TWO_BLANKS \"X\" 1 NULL INTEGER 5 UINT 12\n"
      " ONE_BLANK \"X\" 2 NULL INTEGER 5 UINT 12\n"
      "\tTAB_AND_TRAILING \"X\" 3 NULL INTEGER 5 UINT 7   \n"
      "NO_INDENT \"X\" 4 NULL INTEGER 5 UINT 12   \n");
  EXPECT_EQ(def(1).getOMMLength(), 1212);
  EXPECT_EQ(def(2).getOMMLength(), 122);
  EXPECT_EQ(def(3).getOMMLength(), 77);  // the old end starts with the last digit
  EXPECT_EQ(def(4).getOMMLength(), 12);
}

TEST_F(FieldFileTest, DuplicateIdIsDroppedAndIsNotThePreviousLine) {
  loadOk(
      "A \"A\" 1 NULL INTEGER 5 UINT 2\n"
      "B \"B\" 2 NULL INTEGER 5 UINT 2\n"
      "B2 \"B2\" 2 NULL INTEGER 9 UINT 2\n"
      "C \"C\" 3 B2 INTEGER 5 UINT 2\n"
      "D \"D\" 4 C INTEGER 5 UINT 2\n"
      "E \"E\" 5 A INTEGER 5 UINT 2\n"
      "F \"F\" 6 NOBODY INTEGER 5 UINT 2\n");
  EXPECT_EQ(_d->size(), 6u);
  EXPECT_EQ(text(def(2).getName()), "B");
  EXPECT_EQ(def(2).getLength(), 5);
  EXPECT_NE(failureOf([&] { _d->getFidDef("B2"); }), "<none>");
  EXPECT_EQ(def(3).getRippleToFieldId(), 0);  // B2 was never entered
  EXPECT_EQ(def(4).getRippleToFieldId(), 3);  // the line just before
  EXPECT_EQ(def(5).getRippleToFieldId(), 1);  // backward, by name
  EXPECT_EQ(def(6).getRippleToFieldId(), 0);  // no such acronym
  EXPECT_EQ(_d->getMaxLength(), 9u);          // maxima count the dropped line too
}

TEST_F(FieldFileTest, RipplesToAFieldNamedNull) {
  loadOk(
      "X \"X\" 1 NULL INTEGER 5 UINT 2\n"
      "NULL \"ODD NAME\" 2 NULL INTEGER 5 UINT 2\n");
  EXPECT_EQ(def(1).getRippleToFieldId(), 2);
  EXPECT_EQ(def(2).getRippleToFieldId(), 2);  // "NULL" names it too
}

TEST_F(FieldFileTest, LongLinesAreReadIn254ByteParts) {
  // 254 bytes and a line feed: the feed comes back as a blank line of its own.
  std::string exact = "EXACT \"X\" 1 NULL INTEGER 5 UINT 2";
  exact.resize(254, ' ');
  EXPECT_EQ(load(exact + "\nBAD\n").text, lineFailure("Cannot find DDE ACRONYM", 3));
  // 300 bytes: the rest is parsed as the next line.
  std::string longLine = "LONG \"X\" 1 NULL INTEGER 5 UINT 2";
  longLine.resize(280, ' ');
  longLine += "TAIL WORDS\n";
  EXPECT_EQ(load(longLine).text, lineFailure("Cannot find DDE ACRONYM", 2));
  std::string quietTail = "LONG \"X\" 1 NULL INTEGER 5 UINT 2";
  quietTail.resize(300, ' ');
  loadOk(quietTail + "\n" + kGoodLine);
  EXPECT_EQ(_d->size(), 1u);
  EXPECT_EQ(text(def(1).getName()), "LONG");  // GOOD_ONE has the same id and comes later
}

TEST_F(FieldFileTest, CarriageReturnLineFeedReadsAsLineFeed) {
  loadOk("!tag Desc  windows text\r\n!tag Date a\rb\r\nCR \"C R\" 7 NULL INTEGER 5 UINT 2\r\n");
  EXPECT_EQ(text(_d->getODMFldDesc()), "windows text");
  EXPECT_EQ(text(_d->getODMFldDate()), "a\rb");  // a lone CR stays
  EXPECT_EQ(def(7).getOMMLength(), 2);
}

TEST_F(FieldFileTest, FailedLoadKeepsTagsMaximaAndTablesButNoDefinitions) {
  ASSERT_EQ(loadEnums("VENUE 4\n 1 \"ONE\"\n").text, "<none>");
  loadOk("!tag Desc first\nVENUE \"V\" 4 NULL ENUMERATED 3 ( 3 ) ENUM 1\n");
  EXPECT_EQ(text(_d->displayValueFor(4, 1)), "ONE");
  const Raised raised = load(
      "!tag Desc second\n!tag DictionaryId 9\n"
      "HIGH \"H\" 30000 NULL INTEGER 700 UINT 2\n"
      "LOW \"L\" -900 NULL INTEGER 5 UINT 2\n"
      "BROKEN \"B\" 5 NULL INTEGER 800\n"
      "!tag Build never\n");
  EXPECT_EQ(raised.text, lineFailure("Cannot find OWF TYPE", 5));
  EXPECT_EQ(_d->size(), 0u);
  EXPECT_NE(failureOf([&] { _d->getFidDef(4); }), "<none>");
  EXPECT_NE(failureOf([&] { _d->getFidDef("HIGH"); }), "<none>");
  EXPECT_EQ(text(_d->getODMFldDesc()), "second");
  EXPECT_TRUE(_d->getODMFldBuild().empty());
  EXPECT_EQ(_d->getDictId(), 9);
  EXPECT_TRUE(_d->isDictIdSet());
  EXPECT_EQ(_d->getMaxFieldId(), 30000);
  EXPECT_EQ(_d->getMinNegFieldId(), -900);
  EXPECT_EQ(_d->getMaxLength(), 800u);  // raised by the failing line itself
  EXPECT_EQ(_d->enumTables().size(), 1u);
  // The tables link again on the next good load.
  loadOk("!tag DictionaryId 9\nVENUE \"V\" 4 NULL ENUMERATED 3 ( 3 ) ENUM 1\n");
  EXPECT_EQ(text(_d->displayValueFor(4, 1)), "ONE");
}

TEST_F(FieldFileTest, SuccessfulLoadReplacesAllDefinitions) {
  loadOk("A \"A\" 1 NULL INTEGER 5 UINT 2\nB \"B\" 2 NULL INTEGER 5 UINT 2\n");
  loadOk("C \"C\" 3 NULL INTEGER 5 UINT 2\n");
  EXPECT_EQ(_d->size(), 1u);
  EXPECT_NE(failureOf([&] { _d->getFidDef(1); }), "<none>");
  EXPECT_NE(failureOf([&] { _d->getFidDef("B"); }), "<none>");
  EXPECT_EQ(_d->getMaxFieldId(), 3);
}

// Definitions of a read share storage that the next read reuses; dropped
// duplicates, failed reads and definitions added by hand must not disturb
// what the dictionary holds.
TEST_F(FieldFileTest, RereadsAfterDuplicatesFailuresAndAddedDefinitions) {
  std::string big;
  for (int id = 1; id <= 700; ++id) {
    const std::string name = "F" + std::to_string(id);
    big += name + " \"" + name + "\" " + std::to_string(id) + " NULL INTEGER 5 UINT 2\n";
    if (id % 100 == 0) big += "DUP \"DUP\" " + std::to_string(id) + " NULL INTEGER 5 UINT 2\n";
  }
  for (int round = 0; round < 3; ++round) {
    loadOk(big);
    ASSERT_EQ(_d->size(), 700u);
    EXPECT_EQ(text(_d->getFidDef(100).getName()), "F100");
    EXPECT_EQ(_d->getFidDef("F700").getFieldId(), 700);
    EXPECT_NE(failureOf([&] { _d->getFidDef("DUP"); }), "<none>");
    ASSERT_EQ(load(big + "BAD \"BAD\" 9999 NULL\n").text,
              lineFailure("Cannot find FIELD TYPE", 708));
    EXPECT_EQ(_d->size(), 0u);
    EXPECT_NE(failureOf([&] { _d->getFidDef("F1"); }), "<none>");
  }
  loadOk(kGoodLine);
  ODMFidDefInt* added = new ODMFidDefInt(ORVO_String("BY_HAND"), ORVO_String("BY HAND"), 2,
                                         ORVO_String("NULL"), 0, 1, 0, 5, 4, 2);
  ASSERT_TRUE(_d->addFidDef(added));
  loadOk(big);
  EXPECT_EQ(_d->size(), 700u);
  EXPECT_NE(failureOf([&] { _d->getFidDef("BY_HAND"); }), "<none>");
  EXPECT_EQ(_d->getFidDef("F2").getFieldId(), 2);
}

// A dictionary of thousands of names empties its name index as a whole on a
// reload; names of the old file must be gone and the new ones found.
TEST_F(FieldFileTest, ReloadOfALargeDictionary) {
  auto file = [](const std::string& prefix) {
    std::string contents;
    for (int id = 1; id <= 10000; ++id) {
      const std::string name = prefix + std::to_string(id);
      contents += name + " \"X\" " + std::to_string(id) + " NULL INTEGER 5 UINT 2\n";
    }
    return contents;
  };
  loadOk(file("OLD"));
  loadOk(file("NEW"));
  EXPECT_EQ(_d->size(), 10000u);
  for (int id = 1; id <= 10000; id += 999) {
    EXPECT_EQ(_d->getFidDef(("NEW" + std::to_string(id)).c_str()).getFieldId(), id);
    EXPECT_NE(failureOf([&] { _d->getFidDef(("OLD" + std::to_string(id)).c_str()); }), "<none>");
  }
  loadOk(kGoodLine);
  EXPECT_EQ(_d->getFidDef("GOOD_ONE").getFieldId(), 1);
  EXPECT_NE(failureOf([&] { _d->getFidDef("NEW1"); }), "<none>");
}

TEST_F(FieldFileTest, OpeningFailuresChangeNothing) {
  loadOk(kGoodLine);
  const std::string missing = _dir.path() + "/no-such-file.def";
  const Raised raised = raisedBy([&] { _d->readODMFieldDictionary(str(missing)); });
  EXPECT_EQ(raised.text,
            "ODMFieldDictionary::readODMFieldDictionary -Error opening file: \"" + missing + "\"");
  EXPECT_EQ(raised.state, 1);
  EXPECT_EQ(
      failureOf([&] { _d->readODMFieldDictionary(str(_dir.path())); }),
      "ODMFieldDictionary::readODMFieldDictionary -Error opening file: \"" + _dir.path() + "\"");
  EXPECT_EQ(_d->size(), 1u);
}

TEST_F(FieldFileTest, PathsAreUtf8OrBytes) {
  const std::string utf8 = _dir.write("f\xc3\xa9ld.def", kGoodLine);
  EXPECT_EQ(failureOf([&] { _d->readODMFieldDictionary(str(utf8)); }), "<none>");
  const std::string latin1 = _dir.write("f\xe9ld.def", "OTHER \"O\" 2 NULL INTEGER 5 UINT 2\n");
  EXPECT_EQ(failureOf([&] { _d->readODMFieldDictionary(str(latin1)); }), "<none>");
  EXPECT_EQ(text(def(2).getName()), "OTHER");
  // Valid up to an embedded zero, invalid behind it: the conversion fails.
  ORVO_String broken;
  broken.set("bad\0\xff", 5);
  const Raised raised = raisedBy([&] { _d->readODMFieldDictionary(broken); });
  EXPECT_EQ(raised.text.rfind("Dictionary path [bad] failure: [", 0), 0u) << raised.text;
  EXPECT_EQ(raised.text.back(), ']');
  EXPECT_EQ(raised.state, 2);
  EXPECT_EQ(_d->size(), 1u);
}

// fgets(line, 255, f) over the stream with each CR LF made LF.
std::vector<std::string> referenceLines(const std::string& bytes) {
  std::string translated;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') continue;
    translated += bytes[i];
  }
  std::vector<std::string> lines;
  std::size_t at = 0;
  while (at < translated.size()) {
    std::size_t n = 0;
    while (n < 254 && at + n < translated.size()) {
      if (translated[at + n++] == '\n') break;
    }
    lines.push_back(translated.substr(at, n));
    at += n;
  }
  return lines;
}

std::vector<std::string> readerLines(ODMDictionaryLineReader& reader) {
  std::vector<std::string> lines;
  char line[ODMDictionaryLineReader::kLineBufferSize];
  common::UInt32 length = 0;
  while (reader.readLine(line, &length)) {
    EXPECT_EQ(line[length], '\0');
    lines.emplace_back(line, length);
  }
  return lines;
}

TEST(DictionaryLineReaderTest, MatchesFgetsOnTextModeStreams) {
  std::mt19937 random(20260314);
  const char alphabet[] = {'a', 'b', ' ', '\n', '\r', '\0', '!', '"'};
  for (int round = 0; round < 40; ++round) {
    std::string bytes;
    const std::size_t size = random() % 40000;
    // Long runs without a feed make lines of every length up to 254 and beyond.
    const unsigned feedOdds = 1 + random() % 300;
    for (std::size_t i = 0; i < size; ++i) {
      const unsigned pick = random() % feedOdds;
      bytes += pick == 0 ? (random() % 2 ? '\n' : '\r') : alphabet[random() % sizeof(alphabet)];
    }
    ODMDictionaryLineReader memory(bytes.data(), bytes.size());
    EXPECT_EQ(readerLines(memory), referenceLines(bytes)) << "round " << round;
  }
}

TEST(DictionaryLineReaderTest, CarriageReturnOnAChunkBoundary) {
  ScratchDir dir;
  for (std::size_t crAt : {16382u, 16383u, 16384u, 32767u}) {
    std::string bytes(crAt, 'x');
    for (std::size_t i = 100; i < crAt; i += 200) bytes[i] = '\n';
    bytes += "\r\nafter\r";
    const std::string path = dir.write("chunk" + std::to_string(crAt), bytes);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    ODMDictionaryLineReader fromFile(file);
    EXPECT_EQ(readerLines(fromFile), referenceLines(bytes)) << crAt;
    std::fclose(file);
    ODMDictionaryLineReader fromMemory(bytes.data(), bytes.size());
    EXPECT_EQ(readerLines(fromMemory), referenceLines(bytes)) << crAt;
  }
}

TEST(FieldDictionaryBytesTest, MemoryReaderAgreesWithTheFileReader) {
  const std::string contents =
      "!tag Version 2\nA \"A\" 1 B INTEGER 5 UINT 2\nB \"B\" 2 NULL INTEGER 5 UINT 2\n";
  ScopedDictionary d;
  ODMFieldDictionaryReader::readFieldDictionaryBytes(*d, contents.data(), contents.size());
  EXPECT_EQ(d->size(), 2u);
  EXPECT_EQ(d->getFidDef(1).getRippleToFieldId(), 2);
  EXPECT_EQ(text(d->getVersion()), "2");
  const std::string bad = "A \"A\" 1\n";
  EXPECT_EQ(failureOf([&] {
              ODMFieldDictionaryReader::readFieldDictionaryBytes(*d, bad.data(), bad.size());
            }),
            lineFailure("Cannot find RIPPLES TO", 1));
}

}  // namespace
}  // namespace odm
}  // namespace orvo
