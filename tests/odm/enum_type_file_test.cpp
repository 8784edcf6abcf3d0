// Reading the enum type file: tables shared by several fields, displays in
// quotes and in hex, lines that pass through, failures and what they leave,
// and the dictionary id agreed between the two files.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "Data/Impl/ODMEnumTableInt.h"
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

const char kFields[] =
    "ALPHA \"A\" 1 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "BETA \"B\" 2 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "GAMMA \"G\" 3 NULL ENUMERATED 3 ( 3 ) ENUM 1\n"
    "MINUS \"M\" -7 NULL ENUMERATED 3 ( 3 ) ENUM 1\n";

class EnumFileTest : public ::testing::Test {
 protected:
  Raised loadEnums(const std::string& contents) {
    const std::string path = _dir.write("enums" + std::to_string(_files++) + ".def", contents);
    return raisedBy([&] { _d->readODMEnumTypeDef(str(path)); });
  }
  void enumsOk(const std::string& contents) { ASSERT_EQ(loadEnums(contents).text, "<none>"); }
  Raised loadFields(const std::string& contents) {
    const std::string path = _dir.write("fields" + std::to_string(_files++) + ".def", contents);
    return raisedBy([&] { _d->readODMFieldDictionary(str(path)); });
  }
  void fieldsOk(const std::string& contents = kFields) {
    ASSERT_EQ(loadFields(contents).text, "<none>");
  }
  std::string display(int fid, int value) {
    try {
      return text(_d->displayValueFor(fid, value));
    } catch (const common::InvalidUsageException& e) {
      return std::string("<raised> ") + e.what();
    }
  }
  unsigned tables() { return _d->enumTables().size(); }

  ScratchDir _dir;
  ScopedDictionary _d;
  int _files = 0;
};

TEST_F(EnumFileTest, EmptyFileGivesNoTables) {
  enumsOk("");
  EXPECT_EQ(tables(), 0u);
  enumsOk("! only comments\n!tag Desc nothing here\n");
  EXPECT_EQ(tables(), 0u);
  EXPECT_EQ(text(_d->getEnumDesc()), "nothing here");
}

TEST_F(EnumFileTest, ConsecutiveAcronymLinesShareOneTable) {
  fieldsOk();
  enumsOk(
      "ALPHA 1\nBETA  2   anything behind the id\n"
      "  0  \"ZERO\"  meaning text\n"
      "  5  \"FIVE\"\n"
      "          a continuation of the meaning column\n"
      "GAMMA 3\n"
      "  5  \"OTHER FIVE\"\n");
  EXPECT_EQ(tables(), 2u);
  EXPECT_EQ(display(1, 0), "ZERO");
  EXPECT_EQ(display(2, 5), "FIVE");
  EXPECT_EQ(display(3, 5), "OTHER FIVE");
  const ODMEnumTableInt* shared = _d->enumTables()[0];
  ASSERT_EQ(shared->fids().size(), 2u);
  EXPECT_EQ(shared->fids()[0], 1);
  EXPECT_EQ(shared->fids()[1], 2);
  // Both definitions point at the one table.
  EXPECT_EQ(&_d->displayValueFor(1, 5), &_d->displayValueFor(2, 5));
  EXPECT_EQ(display(1, 4),
            "<raised> ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: \"1\" EnumValue: "
            "\"4\" enumeration value not found.");
}

TEST_F(EnumFileTest, DisplaysInQuotesAndInHex) {
  enumsOk(
      "ALPHA 1\n"
      "  1  \"ABC\"  meaning text\n"
      "  2  #414243#\n"
      "  3  #41424#\n"
      "  4  #4100#\n"
      "  5  \"#not hex#\"\n"
      "  6  #E282AC#  euro sign\n"
      "  7  #4G#\n"
      "  8  #G1#\n"
      "  9  \"\"\n"
      "  10 \"a \\\" b\"\n"
      "  -2 \"NEG\"\n"
      "  abc \"not a number reads as zero\"\n");
  fieldsOk();
  EXPECT_EQ(display(1, 1), "ABC");
  EXPECT_EQ(display(1, 2), "ABC");
  EXPECT_EQ(display(1, 3), std::string("AB\x04"));
  EXPECT_EQ(display(1, 4), "A");
  EXPECT_EQ(display(1, 5), "#not hex#");
  EXPECT_EQ(display(1, 6), "\xe2\x82\xac");
  EXPECT_EQ(display(1, 7), "\x04");  // strtol stops at the G
  EXPECT_EQ(display(1, 8), "");      // a zero byte first: empty
  EXPECT_EQ(display(1, 9), "");
  EXPECT_EQ(display(1, 10), "a \\");  // no escapes: the text ends at the next quote
  EXPECT_EQ(display(1, -2), "NEG");
  EXPECT_EQ(display(1, 0), "not a number reads as zero");
}

TEST_F(EnumFileTest, ValueLinesThatDoNotScanAreIgnored) {
  enumsOk(
      "ALPHA 1\n"
      "  3  ABC\n"
      "  ABC\n"
      "  3  \"ABC\n"
      "  3  #4142\n"
      "  3\n"
      "   \n"
      "  4  \"KEPT\"\n");
  fieldsOk();
  EXPECT_EQ(tables(), 1u);
  EXPECT_EQ(display(1, 4), "KEPT");
  EXPECT_EQ(display(1, 3).rfind("<raised>", 0), 0u);
}

TEST_F(EnumFileTest, LastDisplayOfAValueWins) {
  enumsOk("ALPHA 1\n 1 \"FIRST\"\n 1 \"SECOND\"\n");
  fieldsOk();
  EXPECT_EQ(display(1, 1), "SECOND");
  EXPECT_EQ(_d->enumTables()[0]->sizeHint(), 2u + (5u + 2u) + (6u + 2u));
}

TEST_F(EnumFileTest, LinesThatOpenNewTables) {
  // A blank line between acronym lines counts as a value line; a line that
  // starts with a tab is an acronym line, its id word "\"TWO\"" reading as 0.
  enumsOk("ALPHA 1\n \nBETA 2\n 1 \"B\"\n\t2 \"TWO\"\n 2 \"deux\"\n");
  fieldsOk();
  ASSERT_EQ(tables(), 3u);
  EXPECT_EQ(display(1, 1).rfind("<raised>", 0), 0u);  // ALPHA's table holds no values
  EXPECT_EQ(display(2, 1), "B");
  EXPECT_EQ(_d->enumTables()[2]->fids()[0], 0);
  EXPECT_EQ(text(*_d->enumTables()[2]->getDisplay(2)), "deux");
}

TEST_F(EnumFileTest, EmptyLinesCloseTablesAndTheLastOneStays) {
  enumsOk("ALPHA 1\n 1 \"X\"\n\nBETA 2\n 1 \"Y\"\n\n");
  fieldsOk();
  ASSERT_EQ(tables(), 3u);
  EXPECT_EQ(_d->enumTables()[1]->fids().size(), 1u);  // BETA joined the table the empty line opened
  EXPECT_EQ(_d->enumTables()[2]->fids().size(), 0u);
  EXPECT_EQ(display(2, 1), "Y");
}

TEST_F(EnumFileTest, TablesMayNameFieldsTheDictionaryDoesNotHold) {
  enumsOk("ALPHA 1\nNOBODY 44\nFAR 99999\nMINUS -7\n 1 \"ONE\"\n");
  const ODMEnumTableInt* table = _d->enumTables()[0];
  ASSERT_EQ(table->fids().size(), 4u);
  EXPECT_EQ(table->fids()[2], 99999);
  // Linked when the field definitions arrive.
  fieldsOk(std::string(kFields) + "NOBODY \"N\" 44 NULL ENUMERATED 3 ( 3 ) ENUM 1\n");
  EXPECT_EQ(display(44, 1), "ONE");
  EXPECT_EQ(display(-7, 1), "ONE");
  EXPECT_EQ(display(1, 1), "ONE");
  EXPECT_EQ(display(2, 1).rfind("<raised>", 0), 0u);
}

TEST_F(EnumFileTest, AcronymMustMatchTheLoadedDefinition) {
  const std::string enums = "ALPHA 1\n 1 \"ONE\"\nWRONG 2\n 1 \"TWO\"\n";
  enumsOk(enums);  // no field definitions: nothing to match
  fieldsOk();
  const Raised raised = loadEnums(enums);
  EXPECT_EQ(raised.text,
            "ODMFieldDictionary::readODMEnumTypeDef - Acronym mismatch between Field Dictionary "
            "and Enum Type Dictionary for fid 2");
  EXPECT_EQ(raised.state, 1);
}

TEST_F(EnumFileTest, AnIdOutOfRangeKeepsTheDefinitionFoundBefore) {
  fieldsOk();
  // The out-of-range line still checks against, and links, ALPHA.
  EXPECT_EQ(loadEnums("ALPHA 1\n 1 \"x\"\nBETA 70000\n").text,
            "ODMFieldDictionary::readODMEnumTypeDef - Acronym mismatch between Field Dictionary "
            "and Enum Type Dictionary for fid 70000");
  enumsOk("ALPHA 1\n 1 \"first\"\nALPHA 70000\n 1 \"second\"\n");
  EXPECT_EQ(display(1, 1), "second");
  // An id in range without a definition resets what was found.
  enumsOk("ALPHA 1\n 1 \"first\"\nNOBODY 44\nBETA 70000\n 1 \"second\"\n");
  EXPECT_EQ(display(1, 1), "first");
}

TEST_F(EnumFileTest, ValueBeforeAnyTableFails) {
  const Raised raised = loadEnums("! heading\n  3  \"ABC\"  meaning\n");
  EXPECT_EQ(raised.text,
            "ODMFieldDictionary::readODMEnumTypeDef - Attempt to add enumeration 'ABC' value '3'  "
            "while enumeration table is not defined. Line = 2");
  EXPECT_EQ(loadEnums(" 7 #4142#\n").text,
            "ODMFieldDictionary::readODMEnumTypeDef - Attempt to add enumeration 'AB' value '7'  "
            "while enumeration table is not defined. Line = 1");
  // Value lines that do not scan come first without harm.
  enumsOk("  no display\nALPHA 1\n 1 \"ONE\"\n");
}

TEST_F(EnumFileTest, TypeTagMustBeTwo) {
  enumsOk("!tag Type 2\n");
  EXPECT_EQ(loadEnums("!tag Desc x\n!tag Type 1\n").text,
            "ODMFieldDictionaryInt::readODMEnumTypeDef -!TagType 1 indicates this is not a set of "
            "enum tables. Line Number: \"2\"");
}

TEST_F(EnumFileTest, Tags) {
  enumsOk(
      "!tag Filename  enums.def \n!tag Desc  described  \n!tag Date 2026\n"
      "!tag RT_Version   12.1  \n!tag DT_Version\t 3 \n!tag Version ignored\n");
  EXPECT_EQ(text(_d->getEnumFileName()), "enums.def ");
  EXPECT_EQ(text(_d->getEnumDesc()), "described  ");
  EXPECT_EQ(text(_d->getEnumDate()), "2026");
  EXPECT_EQ(text(_d->getEnumRTversion()), "12.1");
  EXPECT_EQ(text(_d->getEnumDTversion()), "3");
  EXPECT_TRUE(_d->getVersion().empty());
}

TEST_F(EnumFileTest, FailedReadKeepsWhatWasReadAndARereadRepairsIt) {
  fieldsOk();
  enumsOk("GAMMA 3\n 1 \"old gamma\"\n");
  const Raised raised = loadEnums(
      "!tag Desc partial\nALPHA 1\n 1 \"a-one\"\n"
      "BETA 2\nWRONG 3\n 1 \"never\"\n");
  EXPECT_EQ(raised.text.rfind("ODMFieldDictionary::readODMEnumTypeDef - Acronym mismatch", 0), 0u);
  EXPECT_EQ(tables(), 1u);  // ALPHA's; BETA's was in progress
  EXPECT_EQ(display(1, 1), "a-one");
  // BETA still points at the table in progress, which holds no values yet.
  EXPECT_EQ(display(2, 1),
            "<raised> ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: \"2\" EnumValue: "
            "\"1\" enumeration value not found.");
  EXPECT_EQ(display(3, 1).rfind("<raised>", 0), 0u);  // the old tables are gone
  EXPECT_EQ(text(_d->getEnumDesc()), "partial");
  enumsOk("ALPHA 1\nBETA 2\nGAMMA 3\n 1 \"all\"\n");
  EXPECT_EQ(tables(), 1u);
  EXPECT_EQ(display(3, 1), "all");
}

TEST_F(EnumFileTest, ReloadUnlinksFieldsTheNewFileDoesNotList) {
  fieldsOk();
  enumsOk("ALPHA 1\nBETA 2\n 1 \"ONE\"\n");
  enumsOk("BETA 2\n 1 \"UNO\"\n");
  EXPECT_EQ(display(2, 1), "UNO");
  EXPECT_EQ(display(1, 1),
            "<raised> ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: \"1\" EnumValue: "
            "\"1\" enumeration table not found.");
  const ODMFidDef& alpha = _d->getFidDef(1);
  EXPECT_EQ(failureOf([&] { alpha.displayValueFor(1); }),
            "Enumeration Table is NOT set in ODMFidDefInt::displayValueFor( Int )");
}

TEST_F(EnumFileTest, BothOrdersGiveTheSameDisplays) {
  const std::string enums = "ALPHA 1\nMINUS -7\n 1 \"one\"\n 2 #74776F#\nGAMMA 3\n 9 \"nine\"\n";
  fieldsOk();
  enumsOk(enums);
  const std::string fieldsFirst[] = {display(1, 1), display(-7, 2), display(3, 9), display(2, 1)};
  ScopedDictionary other;
  const std::string enumPath = _dir.write("order.def", enums);
  const std::string fieldPath = _dir.write("order-fields.def", kFields);
  other->readODMEnumTypeDef(str(enumPath));
  other->readODMFieldDictionary(str(fieldPath));
  auto otherDisplay = [&](int fid, int value) {
    try {
      return text(other->displayValueFor(fid, value));
    } catch (const common::InvalidUsageException& e) {
      return std::string("<raised> ") + e.what();
    }
  };
  EXPECT_EQ(otherDisplay(1, 1), fieldsFirst[0]);
  EXPECT_EQ(otherDisplay(-7, 2), fieldsFirst[1]);
  EXPECT_EQ(otherDisplay(3, 9), fieldsFirst[2]);
  EXPECT_EQ(otherDisplay(2, 1), fieldsFirst[3]);
  EXPECT_EQ(fieldsFirst[1], "two");
}

TEST_F(EnumFileTest, DictionaryIdRulesBetweenTheFiles) {
  const std::string mismatch =
      "ODMFieldDictionaryInt::readODMEnumTypeDef -!TagEnum Tables DictionaryId->5 does not match "
      "the current/existing DictionaryId-> 4 that was set earlier\n Line Number: \"2\"";
  // Field definitions loaded with an id: the enum file must agree.
  fieldsOk("!tag DictionaryId 4\n" + std::string(kFields));
  EXPECT_EQ(loadEnums("ALPHA 1\n!tag DictionaryId 5\n").text, mismatch);
  enumsOk("!tag DictionaryId 4\nALPHA 1\n");
  EXPECT_EQ(_d->getDictId(), 4);

  // No field definitions: each enum read starts afresh, and takes ids the
  // field file would refuse.
  ScopedDictionary fresh;
  const std::string big = _dir.write("big.def", "!tag DictionaryId 20000\nALPHA 1\n 1 \"x\"\n");
  fresh->readODMEnumTypeDef(str(big));
  EXPECT_EQ(fresh->getDictId(), 20000);
  const std::string seven = _dir.write("seven.def", "!tag DictionaryId 7\nALPHA 1\n 1 \"x\"\n");
  EXPECT_EQ(failureOf([&] { fresh->readODMEnumTypeDef(str(seven)); }), "<none>");
  EXPECT_EQ(fresh->getDictId(), 7);
  // With tables loaded the field file keeps their id and checks its own.
  const std::string fields8 = _dir.write("f8.def", "!tag DictionaryId 8\n" + std::string(kFields));
  EXPECT_EQ(failureOf([&] { fresh->readODMFieldDictionary(str(fields8)); }),
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag field definitions "
            "DictionaryId->8 does not match the current/existing DictionaryId-> 7 that was set "
            "earlier\n Line Number: \"1\"");
  fresh->readODMEnumTypeDef(str(big));
  const std::string fields20000 =
      _dir.write("f20000.def", "!tag DictionaryId 20000\n" + std::string(kFields));
  EXPECT_EQ(failureOf([&] { fresh->readODMFieldDictionary(str(fields20000)); }),
            "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag -dictionaryId is out of range. "
            "It should be in the range of -16383 to 16383\n Line Number: \"1\"");
  const std::string untagged = _dir.write("untagged.def", kFields);
  fresh->readODMFieldDictionary(str(untagged));
  EXPECT_EQ(fresh->getDictId(), 20000);
  EXPECT_EQ(text(fresh->displayValueFor(1, 1)), "x");
}

TEST_F(EnumFileTest, OpeningFailure) {
  enumsOk("ALPHA 1\n 1 \"kept\"\n");
  const std::string missing = _dir.path() + "/missing enums.def";
  const Raised raised = raisedBy([&] { _d->readODMEnumTypeDef(str(missing)); });
  EXPECT_EQ(raised.text, "ODMFieldDictionary::readODMEnumTypeDef -Error opening File: " + missing);
  EXPECT_EQ(raised.state, 1);
  EXPECT_EQ(tables(), 1u);
  ORVO_String broken;
  broken.set("x\0\xc3", 3);
  const Raised conversion = raisedBy([&] { _d->readODMEnumTypeDef(broken); });
  EXPECT_EQ(conversion.text.rfind("Dictionary path [x] failure: [", 0), 0u);
  EXPECT_EQ(conversion.state, 2);
}

TEST(EnumTypeDefBytesTest, ReadsFromMemory) {
  ScopedDictionary d;
  const std::string contents = "ALPHA 1\r\n 1 \"ONE\"\r\n";
  ODMFieldDictionaryReader::readEnumTypeDefBytes(*d, contents.data(), contents.size());
  ASSERT_EQ(d->enumTables().size(), 1u);
  EXPECT_EQ(text(*d->enumTables()[0]->getDisplay(1)), "ONE");
}

// Each pair of a hex display is what strtol makes of it in base 16, also
// for pairs that are not two hex digits: signs, blanks, "0x", other bytes.
TEST(EnumTypeDefBytesTest, HexPairsReadAsStrtolReadsThem) {
  const std::string bytes = "0123456789abcdefABCDEFxXgG+- \t\x7f\x80\xff";
  std::string contents = "ALPHA 1\n";
  std::vector<std::string> pairs;
  for (char high : bytes) {
    for (char low : bytes) {
      pairs.push_back(std::string{high, low});
      contents += " " + std::to_string(pairs.size() - 1) + " #" + pairs.back() + "#\n";
    }
  }
  contents += " 100000 #4#\n";  // an odd last character stands alone
  ScopedDictionary d;
  ODMFieldDictionaryReader::readEnumTypeDefBytes(*d, contents.data(), contents.size());
  ASSERT_EQ(d->enumTables().size(), 1u);
  const ODMEnumTableInt& table = *d->enumTables()[0];
  for (std::size_t value = 0; value < pairs.size(); ++value) {
    const char byte = char(std::strtol(pairs[value].c_str(), nullptr, 16) & 0xFF);
    const std::string expected = byte == '\0' ? "" : std::string(1, byte);
    ASSERT_NE(table.getDisplay(Int64(value)), nullptr) << value;
    EXPECT_EQ(text(*table.getDisplay(Int64(value))), expected) << "pair " << pairs[value];
  }
  EXPECT_EQ(text(*table.getDisplay(100000)), "\x04");
}

// Tables with many values, values given twice and values far apart keep
// every display apart from the others.
TEST(EnumTypeDefBytesTest, ManyDisplaysPerTable) {
  std::string contents = "ALPHA 1\n";
  for (int value = 0; value < 300; ++value) {
    contents += " " + std::to_string(value) + " \"FIRST " + std::to_string(value) + "\"\n";
  }
  for (int value = 0; value < 300; value += 3) {
    contents += " " + std::to_string(value) + " \"LAST " + std::to_string(value) + "\"\n";
  }
  contents += " -70000 \"FAR BELOW\"\n 70000 \"FAR ABOVE\"\nBETA 2\n 5 \"OTHER\"\n";
  ScopedDictionary d;
  ODMFieldDictionaryReader::readEnumTypeDefBytes(*d, contents.data(), contents.size());
  ASSERT_EQ(d->enumTables().size(), 2u);
  const ODMEnumTableInt& table = *d->enumTables()[0];
  for (int value = 0; value < 300; ++value) {
    const std::string expected = (value % 3 == 0 ? "LAST " : "FIRST ") + std::to_string(value);
    ASSERT_NE(table.getDisplay(value), nullptr) << value;
    EXPECT_EQ(text(*table.getDisplay(value)), expected);
  }
  EXPECT_EQ(text(*table.getDisplay(-70000)), "FAR BELOW");
  EXPECT_EQ(text(*table.getDisplay(70000)), "FAR ABOVE");
  EXPECT_EQ(table.getDisplay(300), nullptr);
  EXPECT_EQ(text(*d->enumTables()[1]->getDisplay(5)), "OTHER");
}

}  // namespace
}  // namespace odm
}  // namespace orvo
