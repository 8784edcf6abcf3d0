// The sample dictionary bundled in data/: its shape, both orders of loading,
// and the orvo-dict tool run on it.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <set>
#include <string>

#include "Data/Impl/EnumValToDiplayValTable.h"
#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "odm/dictionary_test_util.h"

namespace orvo {
namespace odm {
namespace {

using common::Int64;
using testing::ScopedDictionary;
using testing::ScratchDir;
using testing::str;
using testing::text;

const std::string kFieldFile = std::string(ORVO_SOURCE_DIR) + "/data/orvo-fields.def";
const std::string kEnumFile = std::string(ORVO_SOURCE_DIR) + "/data/orvo-enums.def";

class SampleDictionaryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _d->readODMFieldDictionary(str(kFieldFile));
    _d->readODMEnumTypeDef(str(kEnumFile));
  }
  // Every definition, by id.
  std::map<Int64, const ODMFidDefInt*> definitions() {
    std::map<Int64, const ODMFidDefInt*> all;
    for (Int64 id = ODMFieldDictionaryInt::kMinFieldId; id <= ODMFieldDictionaryInt::kMaxFieldId;
         ++id) {
      if (const ODMFidDefInt* def = _d->findFidDef(id)) all[id] = def;
    }
    return all;
  }
  ScopedDictionary _d;
};

TEST_F(SampleDictionaryTest, HoldsEveryTypeNegativeIdsAndBothEndsOfTheRange) {
  const auto all = definitions();
  EXPECT_EQ(all.size(), _d->size());
  EXPECT_GE(all.size(), 400u);
  std::set<Int64> wireTypes;
  std::set<Int64> feedTypes;
  int negative = 0;
  for (const auto& entry : all) {
    wireTypes.insert(entry.second->getOMMType());
    feedTypes.insert(entry.second->getFieldType());
    if (entry.first < 0) ++negative;
    // The name index finds each one under its acronym.
    EXPECT_EQ(_d->getFidDef(entry.second->getName().c_str()).getFieldId(), entry.first);
  }
  const std::set<Int64> everyWireType = {3,   4,   5,   6,   8,   9,   10,  11,  12,
                                         13,  14,  15,  16,  17,  18,  19,  130, 131,
                                         132, 133, 134, 135, 136, 137, 138, 141};
  EXPECT_EQ(wireTypes, everyWireType);
  EXPECT_EQ(feedTypes, (std::set<Int64>{-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  EXPECT_GE(negative, 20);
  EXPECT_EQ(_d->getMinNegFieldId(), -32768);
  EXPECT_EQ(_d->getMaxFieldId(), 32767);
  EXPECT_TRUE(_d->isDictIdSet());
  EXPECT_FALSE(_d->getVersion().empty());
}

TEST_F(SampleDictionaryTest, RippleChainsResolveByName) {
  int ripples = 0;
  int longestChain = 0;
  for (const auto& entry : definitions()) {
    const ODMFidDefInt* def = entry.second;
    if (text(def->getRippleToName()) == "NULL") {
      EXPECT_EQ(def->getRippleToFieldId(), 0);
      continue;
    }
    ++ripples;
    EXPECT_EQ(def->getRippleToFieldId(),
              _d->getFidDef(def->getRippleToName().c_str()).getFieldId());
    int chain = 0;
    for (Int64 at = def->getRippleToFieldId(); at != 0 && chain < 100; ++chain) {
      at = _d->getFidDef(static_cast<common::Int32>(at)).getRippleToFieldId();
    }
    longestChain = std::max(longestChain, chain);
  }
  EXPECT_GE(ripples, 30);
  EXPECT_GE(longestChain, 10);
}

TEST_F(SampleDictionaryTest, EnumeratedFieldsHaveTablesSomeSharedSomeInHex) {
  const auto& tables = _d->enumTables();
  EXPECT_GE(tables.size(), 40u);
  unsigned shared = 0;
  unsigned withHighBytes = 0;
  for (const ODMEnumTableInt* table : tables) {
    if (table->fids().size() > 1) ++shared;
    EnumValToDiplayValTableIter it(table->enumDisplays());
    for (it.start(); !it.off(); it.forth()) {
      for (char c : text(*it.getDisplayValue())) {
        if (static_cast<unsigned char>(c) >= 0x80) {
          ++withHighBytes;
          break;
        }
      }
    }
    // Every id a table lists belongs to a definition pointing at that table.
    for (Int64 fid : table->fids()) {
      const ODMFidDefInt* def = _d->findFidDef(fid);
      ASSERT_NE(def, nullptr) << fid;
      EXPECT_EQ(def->enumTable(), table) << fid;
    }
  }
  EXPECT_GE(shared, 5u);
  EXPECT_GE(withHighBytes, 5u);
  for (const auto& entry : definitions()) {
    EXPECT_EQ(entry.second->getFieldType() == FeedEnumerated, entry.second->enumTable() != nullptr)
        << entry.first;
  }
}

TEST_F(SampleDictionaryTest, BothOrdersOfLoadingGiveTheSameDisplays) {
  ScopedDictionary enumsFirst;
  enumsFirst->readODMEnumTypeDef(str(kEnumFile));
  enumsFirst->readODMFieldDictionary(str(kFieldFile));
  ASSERT_EQ(enumsFirst->size(), _d->size());
  unsigned compared = 0;
  for (const ODMEnumTableInt* table : _d->enumTables()) {
    EnumValToDiplayValTableIter it(table->enumDisplays());
    for (it.start(); !it.off(); it.forth()) {
      for (Int64 fid : table->fids()) {
        EXPECT_EQ(text(enumsFirst->displayValueFor(fid, it.getEnumValue())),
                  text(_d->displayValueFor(fid, it.getEnumValue())));
        ++compared;
      }
    }
  }
  EXPECT_GT(compared, 500u);
}

// Runs a command, answering its exit status and what it wrote.
int run(const std::string& command, std::string* output) {
  std::FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return -1;
  char buffer[4096];
  std::size_t n;
  while ((n = std::fread(buffer, 1, sizeof(buffer), pipe)) != 0) output->append(buffer, n);
  const int status = pclose(pipe);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(SampleDictionaryTest, ToolSummarisesAndReportsBadFiles) {
  const std::string tool = std::string(ORVO_BINARY_DIR) + "/tools/orvo-dict";
  if (access(tool.c_str(), X_OK) != 0) GTEST_SKIP() << "orvo-dict is not built";
  std::string output;
  EXPECT_EQ(
      run("'" + tool + "' '" + kFieldFile + "' '" + kEnumFile + "' 15 QUOTE_CCY -32768", &output),
      0)
      << output;
  EXPECT_NE(output.find(std::to_string(_d->size()) + " definitions"), std::string::npos) << output;
  EXPECT_NE(output.find(std::to_string(_d->enumTables().size()) + " enumeration tables"),
            std::string::npos)
      << output;
  EXPECT_NE(output.find("-> \"" + text(_d->displayValueFor(15, 36)) + "\""), std::string::npos)
      << output;
  EXPECT_NE(output.find(text(_d->getFidDef(-32768).getName())), std::string::npos) << output;

  ScratchDir dir;
  const std::string bad = dir.write("bad.def", "GOOD \"G\" 1 NULL INTEGER 5 UINT 2\nBAD \"B\"\n");
  output.clear();
  EXPECT_EQ(run("'" + tool + "' '" + bad + "' '" + kEnumFile + "'", &output), 1);
  EXPECT_NE(output.find("ODMFieldDictionaryInt::readODMFieldDictionary -Cannot find FID Line= 2"),
            std::string::npos)
      << output;
  output.clear();
  const std::string badEnums = dir.write("bad-enums.def", " 1 \"orphan\"\n");
  EXPECT_EQ(run("'" + tool + "' '" + kFieldFile + "' '" + badEnums + "'", &output), 1);
  EXPECT_NE(output.find("while enumeration table is not defined. Line = 1"), std::string::npos)
      << output;
}

}  // namespace
}  // namespace odm
}  // namespace orvo
