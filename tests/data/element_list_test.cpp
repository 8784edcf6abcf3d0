#include <string>
#include <vector>

#include "Data/Impl/ElementListInt.h"
#include "entry_test_util.h"
#include "gtest/gtest.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementEntryDef.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/ElementListDef.h"
#include "orvo/data/ElementListDefWriteIterator.h"
#include "orvo/data/ElementListReadIterator.h"
#include "orvo/data/ElementListWriteIterator.h"

namespace orvo {
namespace {

using common::ORVO_String;
using common::UInt8;
using data::DataBuffer;
using data::ElementEntry;
using data::ElementEntryDef;
using data::ElementList;
using data::ElementListDef;
using data::ElementListDefWriteIterator;
using data::ElementListReadIterator;
using data::ElementListWriteIterator;
using internal::ElementListInt;
using testing::asValue;
using testing::usageTextOf;

constexpr UInt8 kStandard = ElementListWriteIterator::StandardDataFlag;
constexpr UInt8 kDefined = ElementListWriteIterator::DefinedDataFlag;

void bindUInt(ElementListWriteIterator& writer, const ORVO_String& name, common::UInt64 value) {
  DataBuffer v(false);
  v.setUInt(value);
  ElementEntry entry(false);
  entry.setName(name);
  entry.setData(v);
  writer.bind(entry);
}

ElementListDef twoElementDef(const std::vector<std::string>& names) {
  ElementListDef def;
  def.setDataDefID(5);
  ElementListDefWriteIterator writer;
  writer.start(def);
  for (const std::string& name : names) {
    ElementEntryDef row;
    row.setName(ORVO_String(name.c_str()));
    row.setType(data::UIntEnum, 2);
    writer.bind(row);
  }
  return def;
}

TEST(ElementEntryTest, NamesMustNotBeEmpty) {
  ElementEntry entry(true);
  EXPECT_EQ(
      "ElementEntry's name MUST NOT be empty. in class [ElementEntry] in method [setName( const "
      "ORVO_string& )]",
      usageTextOf([&] { entry.setName(ORVO_String()); }));

  ElementList list(true);
  ElementListWriteIterator writer;
  writer.start(list, kStandard);
  DataBuffer v(false);
  v.setInt(1);
  ElementEntry nameless(false);
  nameless.setData(v);
  EXPECT_EQ(
      "Empty element name is not allowed in class ElementListWriteIterator in method bind( const "
      "ElementEntry& )",
      usageTextOf([&] { writer.bind(nameless); }));
  ElementEntry empty(false);
  ORVO_String name("x");
  empty.setName(name);
  EXPECT_EQ(
      "Attempt to bind an empty ElementEntry in class ElementListWriteIterator in method bind( "
      "const ElementEntry& )",
      usageTextOf([&] { writer.bind(empty); }));
}

TEST(ElementEntryTest, ManagedEntriesCopyTheNameAndUnmanagedOnesPointAtIt) {
  ORVO_String name("Bid");
  ElementEntry managed(true), unmanaged(false);
  managed.setName(name);
  unmanaged.setName(name);
  name = "Ask";
  EXPECT_STREQ("Bid", managed.getName().c_str());
  EXPECT_STREQ("Ask", unmanaged.getName().c_str());

  testing::AnyMsg msg;
  EXPECT_EQ(
      "Attempt to pass in invalid data format. in class [ElementEntry] in method [setData( const "
      "Data & )]",
      usageTextOf([&] { managed.setData(msg); }));
  DataBuffer v(false);
  v.setInt(3);
  managed.setData(v);
  managed.clear();
  EXPECT_TRUE(managed.getName().empty());
  EXPECT_EQ(0, ElementListInt::record(managed).dataType);
}

TEST(ElementListWriteTest, FailuresNameTheElementIterator) {
  ElementList list(true);
  ElementListWriteIterator writer;
  EXPECT_EQ(
      "ElementListDef was NOT specified while DefinedDataFlag was in class "
      "ElementListWriteIterator in method start",
      usageTextOf([&] { writer.start(list, kDefined); }));
  EXPECT_EQ(
      "IteratorMask does NOT specify either StandardDataFlag or DefinedDataFlag in class "
      "ElementListWriteIterator in method start",
      usageTextOf([&] { writer.start(list, 0); }));

  writer.start(list, kStandard);
  DataBuffer v(false);
  v.setUInt(1);
  EXPECT_EQ(
      "Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set in class "
      "ElementListWriteIterator in method bind( const Data& )",
      usageTextOf([&] { writer.bind(v); }));

  ElementListDef def = twoElementDef({"A", "B"});
  ElementList defined(true);
  writer.start(defined, kDefined, &def);
  ElementEntry entry(false);
  ORVO_String name("C");
  entry.setName(name);
  entry.setData(v);
  EXPECT_EQ(
      "Attempt to bind StandardData while StandardDataFlag was NOT set in class "
      "ElementListWriteIterator in method bind( const ElementEntry& )",
      usageTextOf([&] { writer.bind(entry); }));
  writer.bind(v);
  EXPECT_EQ(
      "Attempt to complete ElementList encoding while NOT all DefinedData was bound in class "
      "ElementListWriteIterator in method complete",
      usageTextOf([&] { writer.complete(); }));
  writer.bind(v);
  EXPECT_EQ(
      "Attempt to bind extraneous DefinedData in class ElementListWriteIterator in method bind( "
      "const Data& )",
      usageTextOf([&] { writer.bind(v); }));

  ElementList both(true);
  writer.start(both, kDefined | kStandard, &def);
  writer.bind(v);
  EXPECT_EQ(
      "Attempt to bind StandardData before finishing DefinedData in class "
      "ElementListWriteIterator in method bind( const ElementEntry& )",
      usageTextOf([&] { writer.bind(entry); }));
}

TEST(ElementListWriteTest, ADefinitionRowWithoutANameFailsWhenReached) {
  ElementListDef def = twoElementDef({"A", ""});
  ElementList list(true);
  ElementListWriteIterator writer;
  writer.start(list, kDefined, &def);
  DataBuffer v(false);
  v.setUInt(1);
  writer.bind(v);
  EXPECT_EQ(
      "Empty element name is not allowed in class ElementListWriteIterator in method bind( const "
      "Data& )",
      usageTextOf([&] { writer.bind(v); }));
}

TEST(ElementListRoundTripTest, EveryPrimitiveComesBackWithItsName) {
  const auto cases = testing::everyPrimitive();
  ElementList list(true);
  list.setElementListNum(12);
  ElementListWriteIterator writer;
  writer.start(list, kStandard);
  for (const auto& c : cases) {
    DataBuffer v(true);
    c.set(v);
    ElementEntry entry(true);
    entry.setName(ORVO_String(c.name.c_str()));
    entry.setData(v);
    writer.bind(entry);
  }
  writer.complete();

  ElementList received(false);
  testing::viewBytesOf(list, &received);
  EXPECT_EQ(12, received.getElementListNum());
  EXPECT_EQ(ElementList::InfoFlag, received.getHintMask());
  EXPECT_EQ(cases.size(), received.getStandardDataCount());
  ElementListReadIterator reader;
  reader.start(received);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ASSERT_FALSE(reader.off());
    EXPECT_EQ(c.name, reader.value().getName().c_str());
    EXPECT_EQ(0, reader.value().getContentMask());
    c.expectSame(asValue(reader.value().getData()));
    reader.forth();
  }
  EXPECT_TRUE(reader.off());
}

TEST(ElementListReadTest, TheContentMaskTellsSetDefinedElementsApart) {
  ElementListDef def = twoElementDef({"Bid", "Ask"});
  ElementList list(true);
  ElementListWriteIterator writer;
  writer.start(list, kDefined | kStandard, &def);
  DataBuffer bid(false), ask(false);
  bid.setUInt(100);
  ask.setUInt(101);
  writer.bind(bid);
  writer.bind(ask);
  bindUInt(writer, "X", 1);
  bindUInt(writer, "Y", 2);
  bindUInt(writer, "Z", 3);
  writer.complete();

  OwfLocalElementSetDefDb db = ElementListInt::defDb(list);
  ElementList received(false);
  testing::viewBytesOf(list, &received);
  ElementListInt::setDefDbInUse(received, &db);
  EXPECT_EQ(3u, received.getStandardDataCount());
  EXPECT_EQ(5, received.getDataDefID());
  std::vector<int> masks;
  std::vector<std::string> names;
  std::vector<common::UInt64> values;
  ElementListReadIterator reader;
  for (reader.start(received); !reader.off(); reader.forth()) {
    masks.push_back(reader.value().getContentMask());
    names.push_back(reader.value().getName().c_str());
    values.push_back(asValue(reader.value().getData()).getUInt());
  }
  EXPECT_EQ((std::vector<int>{1, 1, 0, 0, 0}), masks);
  EXPECT_EQ((std::vector<std::string>{"Bid", "Ask", "X", "Y", "Z"}), names);
  EXPECT_EQ((std::vector<common::UInt64>{100, 101, 1, 2, 3}), values);

  ElementListDef other = twoElementDef({"Bid", "Ask"});
  EXPECT_EQ(
      "Trying to decode with local and external definitions in class [ElementListReadIterator] "
      "in method ['start']",
      usageTextOf([&] { reader.start(received, 0, &other); }));
}

TEST(ElementListFindTest, FindIsExactOnCaseAndTheFirstMatchWins) {
  ElementList list(true);
  ElementListWriteIterator writer;
  writer.start(list, kStandard);
  bindUInt(writer, "NAME", 1);
  bindUInt(writer, "Other", 2);
  bindUInt(writer, "NAME", 3);
  writer.complete();

  ElementEntry found(true);
  EXPECT_FALSE(list.find(ORVO_String("Name"), found));
  EXPECT_TRUE(found.getName().empty());
  ASSERT_TRUE(list.find(ORVO_String("NAME"), found));
  EXPECT_STREQ("NAME", found.getName().c_str());
  EXPECT_EQ(1u, asValue(found.getData()).getUInt());
  ASSERT_TRUE(list.find(ORVO_String("Other"), found));
  EXPECT_EQ(2u, asValue(found.getData()).getUInt());

  // A managed entry keeps what it found after the list is gone.
  {
    ElementList gone(true);
    ElementListWriteIterator w;
    w.start(gone, kStandard);
    bindUInt(w, "Kept", 77);
    w.complete();
    ASSERT_TRUE(gone.find(ORVO_String("Kept"), found));
  }
  EXPECT_STREQ("Kept", found.getName().c_str());
  EXPECT_EQ(77u, asValue(found.getData()).getUInt());
}

TEST(ElementListReadTest, BytesThatAreNotAListFailInsteadOfCrashing) {
  ElementList list(true);
  ElementListWriteIterator writer;
  writer.start(list, kStandard);
  bindUInt(writer, "first", 1);
  bindUInt(writer, "second", 2);
  writer.complete();
  const std::string bytes = testing::textOf(list.getEncodedBuffer());
  int failures = 0;
  for (size_t cut = 1; cut < bytes.size(); ++cut) {
    const std::string truncated = bytes.substr(0, cut);
    ElementList broken(false);
    broken.setEncodedBuffer(testing::bufferOf(truncated));
    const std::string text = usageTextOf([&] {
      ElementListReadIterator reader;
      for (reader.start(broken); !reader.off(); reader.forth()) {
        reader.value().getName();
        reader.value().getData().isBlank();
      }
    });
    if (text == "no failure") continue;
    ++failures;
    const bool named =
        text.find(" in class ElementList in method startDecode") != std::string::npos ||
        text.find(" in class ElementListReadIterator in method start()") != std::string::npos ||
        text.find(" in class ElementListReadIterator in method forth()") != std::string::npos ||
        text.find("DataBuffer") != std::string::npos;
    EXPECT_TRUE(named) << text;
  }
  EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace orvo
