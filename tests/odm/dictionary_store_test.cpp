// The in-memory dictionary: indexes, lookups and their failures, enumeration
// tables, type names, and the list of live dictionaries.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "Data/Impl/EnumValToDiplayValTable.h"
#include "Data/Impl/ODMDictionaryList.h"
#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ORTGenHash.h"
#include "Data/Impl/SpinCountLock.h"
#include "Data/Impl/StringToType.h"
#include "odm/dictionary_test_util.h"

namespace orvo {
namespace odm {
namespace {

using common::Int64;
using common::ORVO_String;
using testing::failureOf;
using testing::ScopedDictionary;
using testing::text;

ODMFidDefInt* makeDef(const char* name, Int64 fid) {
  return new ODMFidDefInt(ORVO_String(name), ORVO_String("LONG NAME"), fid, ORVO_String("NULL"), 0,
                          FeedPrice, 0, 17, OMMReal, 7);
}

// Adds a definition the dictionary must take; fails the test otherwise.
void add(ODMFieldDictionaryInt& d, const char* name, Int64 fid) {
  ODMFidDefInt* def = makeDef(name, fid);
  ASSERT_TRUE(d.addFidDef(def)) << name << " " << fid;
}

TEST(HashTableTest, BucketCountsSkipSmallDivisorsIncluding91) {
  using Table = ORTGenHash<const ORVO_String, int>::Table;
  EXPECT_EQ(Table::roundUpBucketCount(0), 2u);
  EXPECT_EQ(Table::roundUpBucketCount(2), 2u);
  EXPECT_EQ(Table::roundUpBucketCount(65537), 65537u);
  EXPECT_EQ(Table::roundUpBucketCount(109), 109u);
  EXPECT_EQ(Table::roundUpBucketCount(23), 23u);  // a divisor itself passes
  EXPECT_EQ(Table::roundUpBucketCount(100), 101u);
  EXPECT_EQ(Table::roundUpBucketCount(9), 11u);
  // 8281 = 91 * 91 is hit by 7 and 91; 8283 = 3 * 11 * 251; 8285 = 5 * ...; 8287 is prime.
  EXPECT_EQ(Table::roundUpBucketCount(8281), 8287u);
  // 91 * 101 = 9191 is hit by 7 and 91; 9193 is 29 * 317; 9195 = 3 * 5 * 613; 9197 is 17 * 541;
  // 9199 is prime.
  EXPECT_EQ(Table::roundUpBucketCount(9191), 9199u);
}

TEST(HashTableTest, HashStepFollowsSignedBytes) {
  // h = ((h mod 8388593) << 8) + byte, bytes taken as signed.
  EXPECT_EQ(ortHashBytes(0, "A", 1), 65u);
  EXPECT_EQ(ortHashBytes(0, "AB", 2), 65u * 256 + 66);
  EXPECT_EQ(ortHashBytes(0, "\xff", 1), 0xFFFFFFFFu);
  const common::UInt32 big = ortHashBytes(0, "ZZZZZ", 5);
  common::UInt32 expected = 0;
  for (int i = 0; i < 5; ++i) expected = ((expected % 8388593u) << 8) + 'Z';
  EXPECT_EQ(big, expected);
  // Any bytes and any seed, against the plain formula.
  std::mt19937 random(7);
  for (int round = 0; round < 2000; ++round) {
    char bytes[16];
    for (char& b : bytes) b = static_cast<char>(random());
    const common::UInt32 seed = random();
    common::UInt32 plain = seed;
    for (char b : bytes) {
      plain = ((plain % 8388593u) << 8) + static_cast<common::UInt32>(static_cast<signed char>(b));
    }
    ASSERT_EQ(ortHashBytes(seed, bytes, sizeof(bytes)), plain) << round;
  }
  // Text names of every length up to 40, where whole blocks of bytes below
  // 0x80 take a shortcut, with a negative byte at each place in turn.
  for (int length = 1; length <= 40; ++length) {
    for (int negativeAt = -1; negativeAt < length; ++negativeAt) {
      std::string name;
      for (int i = 0; i < length; ++i) name += char(i == negativeAt ? 0x80 + i : 'A' + i % 26);
      const common::UInt32 seed = random();
      common::UInt32 plain = seed;
      for (char b : name) {
        plain =
            ((plain % 8388593u) << 8) + static_cast<common::UInt32>(static_cast<signed char>(b));
      }
      ASSERT_EQ(ortHashBytes(seed, name.data(), name.size()), plain) << length << " " << negativeAt;
    }
  }
  // Type names are seeded with their first byte.
  EXPECT_EQ(StringToType::hashTypeName("A", 1), ((65u % 8388593u) << 8) + 65u);
  EXPECT_EQ(StringToType::hashTypeName("", 0), 0u);
}

TEST(HashTableTest, LaterEqualKeyShadowsEarlierAndBothStay) {
  ORVO_String first("KEY");
  ORVO_String second("KEY");
  ORVO_String other("OTHER");
  int one = 1;
  int two = 2;
  int three = 3;
  ORTGenHash<const ORVO_String, int> table(7, &StringToType::hashTypeName);
  table.insert(&first, &one);
  table.insert(&other, &three);
  table.insert(&second, &two);
  EXPECT_EQ(table.size(), 3u);
  EXPECT_EQ(table.find(ORVO_String("KEY")), &two);
  EXPECT_EQ(table.find(ORVO_String("OTHER")), &three);
  EXPECT_EQ(table.find(ORVO_String("KE")), nullptr);
  int visited = 0;
  table.removeAll([&visited](const ORVO_String*, int*) { ++visited; });
  EXPECT_EQ(visited, 3);
  EXPECT_EQ(table.size(), 0u);
  EXPECT_EQ(table.find(ORVO_String("KEY")), nullptr);
}

TEST(TypeNameTest, WireTypesByEverySpellingAndBack) {
  const struct {
    const char* name;
    int type;
    const char* canonical;
  } cases[] = {{"INT32", 3, "INT"},
               {"INT64", 3, "INT"},
               {"UINT", 4, "UINT"},
               {"UINT64", 4, "UINT"},
               {"FLOAT", 5, "FLOAT"},
               {"DOUBLE", 6, "DOUBLE"},
               {"REAL32", 8, "REAL"},
               {"REAL64", 8, "REAL"},
               {"DATE", 9, "DATE"},
               {"TIME", 10, "TIME"},
               {"DATE_TIME", 11, "DATETIME"},
               {"QOS", 12, "QOS"},
               {"STATE", 13, "STATUS"},
               {"ENUM", 14, "ENUM"},
               {"ARRAY", 15, "ARRAY"},
               {"BUFFER", 16, "BUFFER"},
               {"ASCII_STRING", 17, "ASCII_STRING"},
               {"UTF8_STRING", 18, "UTF8_STRING"},
               {"OMTES_STRING", 19, "OMTES_STRING"},
               {"OPAQUE", 130, "OPAQUE"},
               {"XML", 131, "XML"},
               {"FIELD_LIST", 132, "FIELD_LIST"},
               {"ELEM_LIST", 133, "ELEMENT_LIST"},
               {"ANSI_PAGE", 134, "ANSI_PAGE"},
               {"FILTER_LIST", 135, "FILTER_LIST"},
               {"VECTOR", 136, "VECTOR"},
               {"MAP", 137, "MAP"},
               {"SERIES", 138, "SERIES"},
               {"MSG", 141, "MSG"}};
  for (const auto& c : cases) {
    EXPECT_EQ(ODMFidDef::stringToOMMType(c.name), c.type) << c.name;
    EXPECT_EQ(text(ODMFidDef::ommTypeToString(c.type)), c.canonical) << c.type;
  }
  EXPECT_EQ(ODMFidDef::stringToOMMType("int"), 0);  // case counts
  EXPECT_EQ(ODMFidDef::stringToOMMType("REAL "), 0);
  EXPECT_EQ(ODMFidDef::stringToOMMType(""), 0);
  EXPECT_EQ(text(ODMFidDef::ommTypeToString(0)), "UNKNOWN");
  EXPECT_EQ(text(ODMFidDef::ommTypeToString(7)), "UNKNOWN");
}

TEST(TypeNameTest, FeedTypesMissAsMinusOneAndNoneIsNoName) {
  const char* names[] = {"TIME_SECONDS", "INTEGER",          "NUMERIC",    "DATE",
                         "PRICE",        "ALPHANUMERIC",     "ENUMERATED", "TIME",
                         "BINARY",       "LONGALPHANUMERIC", "OPAQUETYPE"};
  for (int type = 0; type <= 10; ++type) {
    EXPECT_EQ(ODMFidDef::stringToFieldType(names[type]), type);
    EXPECT_EQ(text(ODMFidDef::fieldTypeToString(type)), names[type]);
  }
  EXPECT_EQ(ODMFidDef::stringToFieldType("NONE"), -1);
  EXPECT_EQ(ODMFidDef::stringToFieldType("Price"), -1);
  EXPECT_EQ(text(ODMFidDef::fieldTypeToString(-1)), "NONE");
  EXPECT_EQ(text(ODMFidDef::fieldTypeToString(11)), "NONE");
}

TEST(EnumDisplayTableTest, GapsAboveMaximumAndLastDisplayWins) {
  EnumValToDiplayValTable table;
  EXPECT_EQ(table.getDisplay(0), nullptr);  // empty table, nothing stored yet
  table.setDisplay(2, ORVO_String("TWO"));
  table.setDisplay(5, ORVO_String("FIVE"));
  table.setDisplay(2, ORVO_String("DEUX"));
  EXPECT_EQ(table.maxValue(), 5);
  EXPECT_EQ(text(*table.getDisplay(2)), "DEUX");
  EXPECT_EQ(text(*table.getDisplay(5)), "FIVE");
  EXPECT_EQ(table.getDisplay(3), nullptr);  // a gap
  EXPECT_EQ(table.getDisplay(6), nullptr);  // above the maximum, within the spare slots
  EXPECT_EQ(table.getDisplay(1000), nullptr);
  EXPECT_GE(table.displays().size(), 6u);
}

TEST(EnumDisplayTableTest, NegativeAndFarValues) {
  EnumValToDiplayValTable table;
  table.setDisplay(-1, ORVO_String("M1"));
  table.setDisplay(-7, ORVO_String("M7"));
  table.setDisplay(70000, ORVO_String("FAR"));
  table.setDisplay(-2000000000, ORVO_String("FAR NEGATIVE"));
  EXPECT_EQ(table.minValue(), -7);
  EXPECT_EQ(table.maxValue(), 0);
  EXPECT_EQ(text(*table.getDisplay(-1)), "M1");
  EXPECT_EQ(text(*table.getDisplay(-7)), "M7");
  EXPECT_EQ(table.getDisplay(-3), nullptr);
  EXPECT_EQ(table.getDisplay(-8), nullptr);
  EXPECT_EQ(text(*table.getDisplay(70000)), "FAR");
  EXPECT_EQ(text(*table.getDisplay(-2000000000)), "FAR NEGATIVE");
  EXPECT_EQ(table.getDisplay(70001), nullptr);
  // A far value takes no slots.
  EXPECT_LT(table.displays().size() + table.negDisplays().size(), 20u);
}

std::vector<std::pair<Int64, std::string>> walk(const EnumValToDiplayValTable& table) {
  std::vector<std::pair<Int64, std::string>> seen;
  EnumValToDiplayValTableIter it(table);
  for (it.start(); !it.off(); it.forth())
    seen.emplace_back(it.getEnumValue(), text(*it.getDisplayValue()));
  return seen;
}

TEST(EnumDisplayTableTest, IterationVisitsValuesInOrderSkippingGaps) {
  EnumValToDiplayValTable table;
  EXPECT_TRUE(walk(table).empty());
  table.setDisplay(7, ORVO_String("G"));
  table.setDisplay(1, ORVO_String("A"));
  table.setDisplay(4, ORVO_String("D"));
  using Seen = std::vector<std::pair<Int64, std::string>>;
  EXPECT_EQ(walk(table), (Seen{{1, "A"}, {4, "D"}, {7, "G"}}));
  table.setDisplay(0, ORVO_String("Z"));
  table.setDisplay(-2, ORVO_String("N"));
  EXPECT_EQ(walk(table), (Seen{{-2, "N"}, {0, "Z"}, {1, "A"}, {4, "D"}, {7, "G"}}));
}

TEST(EnumDisplayTableTest, LoneLargeValuesTakeNoSlots) {
  EnumValToDiplayValTable table;
  table.setDisplay(65535, ORVO_String("HIGH"));
  table.setDisplay(-65535, ORVO_String("LOW"));
  EXPECT_EQ(table.displays().size() + table.negDisplays().size(), 0u);
  EXPECT_EQ(text(*table.getDisplay(65535)), "HIGH");
  EXPECT_EQ(text(*table.getDisplay(-65535)), "LOW");
  // Once the table holds enough values for the slots to reach it, a value
  // moves into its slot.
  table.setDisplay(2000, ORVO_String("MID"));
  EXPECT_EQ(table.farDisplays().count(2000), 1u);
  for (Int64 v = 0; v < 200; ++v) table.setDisplay(v, ORVO_String("V"));
  table.setDisplay(1999, ORVO_String("NEXT TO MID"));
  EXPECT_EQ(text(*table.getDisplay(2000)), "MID");
  ASSERT_GT(table.displays().size(), 2000u);
  EXPECT_EQ(text(*table.displays()[2000]), "MID");
  EXPECT_EQ(table.farDisplays().count(2000), 0u);
  EXPECT_EQ(table.maxValue(), 2000);
}

// Lookups and iteration against a plain ordered map, over values of both
// signs, near and far, set more than once.
TEST(EnumDisplayTableTest, BehavesLikeAnOrderedMap) {
  std::mt19937 random(31);
  for (int round = 0; round < 30; ++round) {
    EnumValToDiplayValTable table;
    std::map<Int64, std::string> model;
    const int count = 1 + int(random() % 400);
    for (int i = 0; i < count; ++i) {
      Int64 value;
      switch (random() % 4) {
        case 0:
          value = Int64(random() % 300);
          break;
        case 1:
          value = -Int64(random() % 300);
          break;
        case 2:
          value = Int64(random() % 140000) - 70000;
          break;
        default:
          value = Int64(random()) - 2147483648LL;
          break;
      }
      const std::string display = "d" + std::to_string(i);
      table.setDisplay(value, ORVO_String(display.c_str()));
      model[value] = display;
    }
    for (Int64 probe = -400; probe <= 400; ++probe) {
      const ORVO_String* found = table.getDisplay(probe);
      const auto expected = model.find(probe);
      ASSERT_EQ(found != nullptr, expected != model.end()) << probe;
      if (found != nullptr) {
        EXPECT_EQ(text(*found), expected->second);
      }
    }
    for (const auto& entry : model) {
      ASSERT_NE(table.getDisplay(entry.first), nullptr) << entry.first;
      EXPECT_EQ(text(*table.getDisplay(entry.first)), entry.second);
    }
    const std::vector<std::pair<Int64, std::string>> inOrder(model.begin(), model.end());
    EXPECT_EQ(walk(table), inOrder) << "round " << round;
    // The slots stay within the budget the displays allow.
    EXPECT_LE(table.displays().size() + table.negDisplays().size(),
              EnumValToDiplayValTable::kFreeSlots +
                  EnumValToDiplayValTable::kSlotsPerDisplay * unsigned(count));
  }
}

TEST(EnumTableTest, SizeHintCountsIdsAndEveryDisplayGiven) {
  ODMEnumTableInt table;
  table.addFid(10);
  table.addFid(99999);  // ids out of range are kept as given
  table.addDisplay(1, ORVO_String("ABC"));
  table.addDisplay(1, ORVO_String("ABCDE"));
  EXPECT_EQ(table.sizeHint(), 2u + 2u + (3u + 2u) + (5u + 2u));
  ASSERT_EQ(table.fids().size(), 2u);
  EXPECT_EQ(table.fids()[1], 99999);
  EXPECT_EQ(text(*table.getDisplay(1)), "ABCDE");
}

TEST(DictionaryStoreTest, NewDictionaryIsEmpty) {
  ScopedDictionary d;
  EXPECT_EQ(d->size(), 0u);
  EXPECT_EQ(d->getMaxFieldId(), 0);
  EXPECT_EQ(d->getMinNegFieldId(), 0);
  EXPECT_EQ(d->getDictId(), 1);
  EXPECT_FALSE(d->isDictIdSet());
  EXPECT_TRUE(d->getVersion().empty());
  EXPECT_TRUE(d->getODMFldDesc().empty());
  EXPECT_TRUE(d->getEnumDTversion().empty());
  EXPECT_EQ(d->enumTables().size(), 0u);
}

TEST(DictionaryStoreTest, LookupsByIdAtTheRangeLimits) {
  ScopedDictionary d;
  add(*d, "ZERO", 0);
  add(*d, "TOP", 32767);
  add(*d, "BOTTOM", -32768);
  add(*d, "MINUS_ONE", -1);
  EXPECT_EQ(d->size(), 4u);
  EXPECT_EQ(d->getMaxFieldId(), 32767);
  EXPECT_EQ(d->getMinNegFieldId(), -32768);
  EXPECT_EQ(text(d->getFidDef(0).getName()), "ZERO");
  EXPECT_EQ(text(d->getFidDef(32767).getName()), "TOP");
  EXPECT_EQ(text(d->getFidDef(-32768).getName()), "BOTTOM");
  EXPECT_EQ(text(d->getFidDef(-1).getName()), "MINUS_ONE");
  EXPECT_EQ(failureOf([&] { d->getFidDef(32768); }),
            "ODMFieldDictionary::getFidDef( Int32 ) - FieldId: \"32768\" out of range.");
  EXPECT_EQ(failureOf([&] { d->getFidDef(-32769); }),
            "ODMFieldDictionary::getFidDef( Int32 ) - FieldId: \"-32769\" out of range.");
  EXPECT_EQ(failureOf([&] { d->getFidDef(1); }),
            "ODMFieldDictionary::getFidDef( Int32 ) - FieldId: \"1\" not found.");
  EXPECT_EQ(failureOf([&] { d->getFidDef(-2); }),
            "ODMFieldDictionary::getFidDef( Int32 ) - FieldId: \"-2\" not found.");
}

TEST(DictionaryStoreTest, LookupsByName) {
  ScopedDictionary d;
  add(*d, "QT_BUY", 22);
  add(*d, "NEG", -5);
  EXPECT_EQ(d->getFidDef("QT_BUY").getFieldId(), 22);
  EXPECT_EQ(d->getFidDef("NEG").getFieldId(), -5);
  EXPECT_EQ(failureOf([&] { d->getFidDef("QT_BU"); }),
            "ODMFieldDictionary::getFidDef( const char* ) - FieldName: \"QT_BU\" not found.");
  EXPECT_EQ(failureOf([&] { d->getFidDef(""); }),
            "ODMFieldDictionary::getFidDef( const char* ) - FieldName: \"\" not found.");
}

TEST(DictionaryStoreTest, FirstDefinitionOfAnIdWins) {
  ScopedDictionary d;
  add(*d, "FIRST", 7);
  ODMFidDefInt* second = makeDef("SECOND", 7);
  EXPECT_FALSE(d->addFidDef(second));
  // Its size hint is set all the same.
  EXPECT_EQ(second->sizeHint(), 4u + 9u + 6u + 10u);
  delete second;
  EXPECT_EQ(d->size(), 1u);
  EXPECT_EQ(text(d->getFidDef(7).getName()), "FIRST");
  EXPECT_EQ(d->getFidDef("FIRST").getFieldId(), 7);
  EXPECT_NE(failureOf([&] { d->getFidDef("SECOND"); }), "<none>");
}

TEST(DictionaryStoreTest, SameAcronymTwiceFindsTheLastByName) {
  ScopedDictionary d;
  add(*d, "TWIN", 100);
  add(*d, "TWIN", 200);
  EXPECT_EQ(d->size(), 2u);
  EXPECT_EQ(d->getFidDef(100).getFieldId(), 100);
  EXPECT_EQ(d->getFidDef(200).getFieldId(), 200);
  EXPECT_EQ(d->getFidDef("TWIN").getFieldId(), 200);
}

TEST(DictionaryStoreTest, ClearKeepsTheMaximaAndEmptiesBothIndexes) {
  ScopedDictionary d;
  add(*d, "A", 500);
  add(*d, "B", -300);
  d->clearFidDefs();
  EXPECT_EQ(d->size(), 0u);
  EXPECT_EQ(d->getMaxFieldId(), 500);
  EXPECT_EQ(d->getMinNegFieldId(), -300);
  EXPECT_NE(failureOf([&] { d->getFidDef(500); }), "<none>");
  EXPECT_NE(failureOf([&] { d->getFidDef("A"); }), "<none>");
  // A later add raises the maxima only.
  add(*d, "C", 10);
  EXPECT_EQ(d->getMaxFieldId(), 500);
  EXPECT_EQ(d->getFidDef("C").getFieldId(), 10);
}

TEST(DictionaryStoreTest, DisplayValueForFailsInOrder) {
  ScopedDictionary d;
  add(*d, "PLAIN", 1);
  add(*d, "ENUMD", 2);
  testing::ScratchDir dir;
  d->readODMEnumTypeDef(testing::str(dir.write("e.def", "ENUMD 2\n 3 \"THREE\"\n")));
  const char* head = "ODMFieldDictionary::displayValueFor( Int, Int ) - FieldId: ";
  EXPECT_EQ(text(d->displayValueFor(2, 3)), "THREE");
  EXPECT_EQ(failureOf([&] { d->displayValueFor(40000, 3); }),
            std::string(head) + "\"40000\" out of range.");
  EXPECT_EQ(failureOf([&] { d->displayValueFor(-32769, 3); }),
            std::string(head) + "\"-32769\" out of range.");
  EXPECT_EQ(failureOf([&] { d->displayValueFor(9, 3); }), std::string(head) + "\"9\" not found.");
  EXPECT_EQ(failureOf([&] { d->displayValueFor(1, 3); }),
            std::string(head) + "\"1\" EnumValue: \"3\" enumeration table not found.");
  EXPECT_EQ(failureOf([&] { d->displayValueFor(2, 4); }),
            std::string(head) + "\"2\" EnumValue: \"4\" enumeration value not found.");
  const ODMFidDef& plain = d->getFidDef(1);
  const ODMFidDef& enumerated = d->getFidDef(2);
  EXPECT_EQ(text(enumerated.displayValueFor(3)), "THREE");
  EXPECT_EQ(failureOf([&] { plain.displayValueFor(3); }),
            "Enumeration Table is NOT set in ODMFidDefInt::displayValueFor( Int )");
  EXPECT_EQ(failureOf([&] { enumerated.displayValueFor(-4); }),
            "Enumeration Table does NOT contain entry for enum = -4");
}

TEST(DictionaryStoreTest, DictIdAndVersionSetters) {
  ScopedDictionary d;
  const std::string range =
      "ODMFieldDictionary::setDictId() -dictionaryId is out of range. It should be in the range "
      "of -16383 to 16383.";
  EXPECT_EQ(failureOf([&] { d->setDictId(16384); }), range);
  EXPECT_EQ(failureOf([&] { d->setDictId(-16384); }), range);
  EXPECT_FALSE(d->isDictIdSet());
  EXPECT_EQ(d->getDictId(), 1);
  d->setDictId(-16383);
  EXPECT_EQ(d->getDictId(), -16383);
  EXPECT_TRUE(d->isDictIdSet());
  d->setDictId(16383);
  EXPECT_EQ(d->getDictId(), 16383);

  EXPECT_EQ(failureOf([&] { d->setVersion(ORVO_String()); }),
            "ODMFieldDictionary::setVersion() -Empty value passed for Version.");
  d->setVersion(ORVO_String("4.20"));
  EXPECT_EQ(text(d->getVersion()), "4.20");
}

TEST(DictionaryListTest, CreateRegistersAndDestroyUnregisters) {
  const unsigned int before = ODMDictionaryList::count();
  ODMFieldDictionary& a = ODMFieldDictionary::create();
  ODMFieldDictionary& b = ODMFieldDictionary::create();
  ODMFieldDictionary& c = ODMFieldDictionary::create();
  EXPECT_NE(&a, &b);
  EXPECT_EQ(ODMDictionaryList::count(), before + 3);
  b.destroy();
  EXPECT_EQ(ODMDictionaryList::count(), before + 2);
  EXPECT_TRUE(ODMDictionaryList::contains(&a));
  EXPECT_FALSE(ODMDictionaryList::contains(&b));
  EXPECT_TRUE(ODMDictionaryList::contains(&c));
  a.destroy();
  c.destroy();
  EXPECT_EQ(ODMDictionaryList::count(), before);
}

TEST(DictionaryListTest, ConcurrentCreateAndDestroyKeepTheListConsistent) {
  const unsigned int before = ODMDictionaryList::count();
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([] {
      for (int i = 0; i < 10; ++i) ODMFieldDictionary::create().destroy();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(ODMDictionaryList::count(), before);
}

TEST(SpinCountLockTest, IsRecursiveAndExcludesOtherThreads) {
  internal::SpinCountLock lock;
  EXPECT_EQ(lock.spinCount(), 4000u);
  lock.lock();
  EXPECT_TRUE(lock.try_lock());  // the same thread again
  bool otherGotIt = true;
  std::thread other([&] { otherGotIt = lock.try_lock(); });
  other.join();
  EXPECT_FALSE(otherGotIt);
  lock.unlock();
  lock.unlock();
  std::thread after([&] {
    otherGotIt = lock.try_lock();
    if (otherGotIt) lock.unlock();
  });
  after.join();
  EXPECT_TRUE(otherGotIt);
}

}  // namespace
}  // namespace odm
}  // namespace orvo
