#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FieldListInt.h"
#include "entry_test_util.h"
#include "gtest/gtest.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/data/FieldListDefWriteIterator.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/data/NoData.h"

namespace orvo {
namespace {

using common::Buffer;
using common::UInt8;
using data::DataBuffer;
using data::FieldEntry;
using data::FieldEntryDef;
using data::FieldList;
using data::FieldListDef;
using data::FieldListDefWriteIterator;
using data::FieldListReadIterator;
using data::FieldListWriteIterator;
using internal::DataInt;
using internal::FieldListInt;
using testing::asValue;
using testing::everyPrimitive;
using testing::usageTextOf;

constexpr UInt8 kStandard = FieldListWriteIterator::StandardDataFlag;
constexpr UInt8 kDefined = FieldListWriteIterator::DefinedDataFlag;

// Writes one standard field holding an integer.
void bindInt(FieldListWriteIterator& writer, short fid, common::Int64 value) {
  DataBuffer v(false);
  v.setInt(value);
  FieldEntry entry(false);
  entry.setFieldID(fid);
  entry.setData(v);
  writer.bind(entry);
}

void writeInts(FieldList& list, const std::vector<std::pair<short, common::Int64>>& fields) {
  FieldListWriteIterator writer;
  writer.start(list, kStandard);
  for (const auto& f : fields) bindInt(writer, f.first, f.second);
  writer.complete();
}

std::vector<std::pair<short, common::Int64>> readInts(const FieldList& list) {
  std::vector<std::pair<short, common::Int64>> fields;
  FieldListReadIterator reader;
  for (reader.start(list); !reader.off(); reader.forth()) {
    const FieldEntry& e = reader.value();
    fields.emplace_back(e.getFieldID(), asValue(e.getData(data::IntEnum)).getInt());
  }
  return fields;
}

// A definition of three packed fields: a 4-byte int, a real and a date.
FieldListDef threeFieldDef(common::UInt16 id) {
  FieldListDef def;
  def.setDataDefID(id);
  FieldListDefWriteIterator writer;
  writer.start(def, 0);
  const std::vector<std::pair<short, std::pair<UInt8, UInt8>>> rows = {
      {10, {data::IntEnum, 4}}, {11, {data::RealEnum, 9}}, {12, {data::DateEnum, 4}}};
  for (const auto& row : rows) {
    FieldEntryDef e;
    e.setFieldID(row.first);
    e.setType(row.second.first, row.second.second);
    writer.bind(e);
  }
  writer.complete();
  return def;
}

// Values for the rows of threeFieldDef, kept alive for the test.
std::vector<const DataBuffer*> threeFieldValues() {
  static DataBuffer i(true), r(true), d(true);
  i.setInt(-70000);
  data::Real64 real;
  real.setValue(31415);
  real.setMagnitudeType(10);
  r.setReal(real);
  data::Date date;
  date.setYear(2001);
  date.setMonth(9);
  date.setDay(11);
  d.setDate(date);
  return {&i, &r, &d};
}

TEST(FieldListWriteTest, StartRefusesAMaskWithoutDataAndDefinedDataWithoutDefinition) {
  FieldList list(true);
  FieldListWriteIterator writer;
  EXPECT_EQ(
      "IteratorMask does NOT specify either StandardDataFlag or DefinedDataFlag in class "
      "FieldListWriteIterator in method start",
      usageTextOf([&] { writer.start(list, 0); }));
  EXPECT_EQ(
      "FieldListDef was NOT specified while DefinedDataFlag was in class FieldListWriteIterator "
      "in method start",
      usageTextOf([&] { writer.start(list, kDefined | kStandard); }));
  // The standard flag was already recorded when the definition was found missing.
  EXPECT_EQ(0x08, FieldListInt::record(list).flags);
}

TEST(FieldListWriteTest, BindsOutOfOrderFailWithTheirOwnTexts) {
  FieldList list(true);
  FieldListWriteIterator writer;
  writer.start(list, kStandard);
  DataBuffer v(false);
  v.setInt(1);
  EXPECT_EQ(
      "Invalid attempt to bind DefinedData while DefinedDataFlag was NOT set in class "
      "FieldListWriteIterator in method bind( const Data& )",
      usageTextOf([&] { writer.bind(v); }));
  FieldEntry empty(false);
  empty.setFieldID(3);
  EXPECT_EQ(
      "Attempt to bind an empty FieldEntry in class FieldListWriteIterator in method bind( const "
      "FieldEntry& )",
      usageTextOf([&] { writer.bind(empty); }));

  FieldListDef def = threeFieldDef(1);
  FieldList defined(true);
  writer.start(defined, kDefined, &def);
  FieldEntry entry(false);
  entry.setFieldID(1);
  entry.setData(v);
  EXPECT_EQ(
      "Attempt to bind StandardData while StandardDataFlag was NOT set in class "
      "FieldListWriteIterator in method bind( const FieldEntry& )",
      usageTextOf([&] { writer.bind(entry); }));
  EXPECT_EQ(
      "Attempt to complete FieldList encoding while NOT all DefinedData was bound in class "
      "FieldListWriteIterator in method complete",
      usageTextOf([&] { writer.complete(); }));

  FieldList both(true);
  writer.start(both, kDefined | kStandard, &def);
  writer.bind(v);
  EXPECT_EQ(
      "Attempt to bind StandardData before finishing DefinedData in class "
      "FieldListWriteIterator in method bind( const FieldEntry& )",
      usageTextOf([&] { writer.bind(entry); }));
}

TEST(FieldListWriteTest, OneDefinedEntryTooManyIsExtraneous) {
  FieldListDef def = threeFieldDef(0);
  FieldList list(true);
  FieldListWriteIterator writer;
  writer.start(list, kDefined, &def);
  for (const DataBuffer* v : threeFieldValues()) writer.bind(*v);
  DataBuffer v(false);
  v.setInt(7);
  EXPECT_EQ(
      "Attempt to bind extraneous DefinedData in class FieldListWriteIterator in method bind( "
      "const Data& )",
      usageTextOf([&] { writer.bind(v); }));
}

TEST(FieldListWriteTest, CallsBeforeStartFailInsteadOfCrashing) {
  FieldListWriteIterator writer;
  DataBuffer v(false);
  v.setInt(1);
  FieldEntry entry(false);
  entry.setData(v);
  EXPECT_NE("no failure", usageTextOf([&] { writer.bind(v); }));
  EXPECT_NE("no failure", usageTextOf([&] { writer.bind(entry); }));
  EXPECT_NE("no failure", usageTextOf([&] { writer.complete(); }));
}

TEST(FieldListWriteTest, CodecRefusalsNameTheBindingMethod) {
  FieldListDef def = threeFieldDef(0);
  FieldList list(true);
  FieldListWriteIterator writer;
  writer.start(list, kDefined | kStandard, &def);
  writer.bind(*threeFieldValues()[0]);
  writer.bind(*threeFieldValues()[1]);
  // The third row holds a date, which an integer value cannot fill.
  const std::string defined = usageTextOf([&] { writer.bind(*threeFieldValues()[0]); });
  EXPECT_NE(std::string::npos,
            defined.find(" in class FieldListWriteIterator in method bind( const Data& )"))
      << defined;

  FieldList standard(true);
  writer.start(standard, kStandard);
  DataBuffer unknownType(false);
  unknownType.setInt(5);
  unknownType.setDataBufferType(99);
  FieldEntry entry(false);
  entry.setFieldID(1);
  entry.setData(unknownType);
  const std::string text = usageTextOf([&] { writer.bind(entry); });
  EXPECT_NE(std::string::npos,
            text.find(" in class FieldListWriteIterator in method bind( const FieldEntry& )"))
      << text;
}

TEST(FieldListReadTest, DecodingAtAnOuterReadersPositionNamesItsOwnMethod) {
  // The first byte of a list, without the rest.
  FieldList written(true);
  writeInts(written, {{1, 10}});
  OwfBuffer cut{1, DataInt::encodedData(&written).data};
  FieldList own(false);
  own.setEncodedBuffer(Buffer(reinterpret_cast<unsigned char*>(cut.data), 1, 1, false));
  const std::string text = usageTextOf([&] { own.getDataDefID(); });
  ASSERT_NE(std::string::npos, text.find(" in class FieldList in method startDecode")) << text;

  OwfDecodeIterator outer;
  std::memset(&outer, 0, sizeof(outer));
  clearDecodeIterator(&outer);
  setDecodeIteratorBuffer(&outer, &cut);
  FieldList nested(false);
  const std::string nestedText =
      usageTextOf([&] { FieldListInt::startDecodeSRI(nested, &outer, nullptr); });
  EXPECT_NE(std::string::npos, nestedText.find(" in class FieldList in method startDecodeSRI"))
      << nestedText;
}

TEST(FieldListRoundTripTest, EveryPrimitiveComesBackThroughUnmanagedEntries) {
  const auto cases = everyPrimitive();
  FieldList list(true);
  FieldListWriteIterator writer;
  writer.start(list, kStandard);
  short fid = 100;
  for (const auto& c : cases) {
    DataBuffer v(true);  // an unmanaged value would point at the case's temporaries
    c.set(v);
    FieldEntry entry(false);
    entry.setFieldID(fid++);
    entry.setData(v);
    writer.bind(entry);
  }
  writer.complete();
  EXPECT_EQ(common::Data::EncodeStateEncoded, DataInt::encodeState(&list));

  FieldList received(false);
  testing::viewBytesOf(list, &received);
  EXPECT_EQ(cases.size(), received.getStandardDataCount());
  FieldListReadIterator reader;
  reader.start(received);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ASSERT_FALSE(reader.off());
    const FieldEntry& e = reader.value();
    EXPECT_EQ(0, e.getContentMask());
    const DataBuffer& value = asValue(e.getData(c.type));
    EXPECT_EQ(c.type, value.getDataBufferType());
    EXPECT_FALSE(value.isBlank());
    c.expectSame(value);
    reader.forth();
  }
  EXPECT_TRUE(reader.off());
}

TEST(FieldListRoundTripTest, ManagedEntriesKeepCopiesOfValuesThatAreGone) {
  const auto cases = everyPrimitive();
  std::vector<std::unique_ptr<FieldEntry>> entries;
  for (const auto& c : cases) {
    auto entry = std::make_unique<FieldEntry>(true);
    {
      DataBuffer v(true);
      c.set(v);
      entry->setFieldID(static_cast<short>(entries.size()));
      entry->setData(v);
    }
    entries.push_back(std::move(entry));
  }
  for (size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(cases[i].name);
    cases[i].expectSame(asValue(entries[i]->getData(cases[i].type)));
  }
  FieldList list(false);
  FieldListWriteIterator writer;
  writer.start(list, kStandard);
  for (const auto& e : entries) writer.bind(*e);
  writer.complete();

  FieldListReadIterator reader;
  size_t i = 0;
  for (reader.start(list); !reader.off(); reader.forth(), ++i) {
    SCOPED_TRACE(cases[i].name);
    cases[i].expectSame(asValue(reader.value().getData(cases[i].type)));
  }
  EXPECT_EQ(cases.size(), i);
}

TEST(FieldListRoundTripTest, BlankValuesGiveBlankEntries) {
  FieldList list(true);
  FieldListWriteIterator writer;
  writer.start(list, kStandard);
  const std::vector<UInt8> types = {data::IntEnum, data::RealEnum, data::DateEnum,
                                    data::AsciiStringEnum};
  short fid = 1;
  for (UInt8 type : types) {
    DataBuffer blank(false);
    blank.setBlankData(type);
    FieldEntry entry(false);
    entry.setFieldID(fid++);
    entry.setData(blank);
    writer.bind(entry);
  }
  bindInt(writer, 99, 5);  // closes the last blank entry before it
  DataBuffer blank(false);
  blank.setBlankData(data::UIntEnum);
  FieldEntry last(false);
  last.setFieldID(100);
  last.setData(blank);
  writer.bind(last);
  writer.complete();  // and this the one left open at the end

  FieldListReadIterator reader;
  reader.start(list);
  for (UInt8 type : types) {
    ASSERT_FALSE(reader.off());
    EXPECT_TRUE(reader.value().getData(type).isBlank()) << int(type);
    reader.forth();
  }
  EXPECT_EQ(5, asValue(reader.value().getData(data::IntEnum)).getInt());
  reader.forth();
  EXPECT_EQ(100, reader.value().getFieldID());
  EXPECT_TRUE(reader.value().getData(data::UIntEnum).isBlank());
  reader.forth();
  EXPECT_TRUE(reader.off());
}

TEST(FieldListRoundTripTest, DefinedAndStandardDataTogether) {
  FieldListDef def = threeFieldDef(3);
  FieldList list(true);
  list.setInfo(7, 42);
  FieldListWriteIterator writer;
  writer.start(list, kDefined | kStandard, &def);
  for (const DataBuffer* v : threeFieldValues()) writer.bind(*v);
  bindInt(writer, 500, 1);
  bindInt(writer, 501, 2);
  writer.complete();

  // Without the definition the reader cannot tell set-defined entries apart.
  FieldList bare(false);
  testing::viewBytesOf(list, &bare);
  EXPECT_EQ(5u, bare.getStandardDataCount());
  EXPECT_EQ(FieldList::SetDefinedDataFlag, bare.getContentMask());
  EXPECT_EQ(3, bare.getDataDefID());
  EXPECT_EQ(7, bare.getInfoDictID());
  EXPECT_EQ(42, bare.getInfoFieldListNum());
  EXPECT_EQ(FieldList::InfoFlag, bare.getHintMask());

  // With it, as a container that carried the definition would give it.
  OwfLocalFieldSetDefDb db = FieldListInt::defDb(list);
  FieldList withDefs(false);
  testing::viewBytesOf(list, &withDefs);
  FieldListInt::setDefDbInUse(withDefs, &db);
  EXPECT_EQ(2u, withDefs.getStandardDataCount());
  EXPECT_EQ(FieldList::SetDefinedDataFlag | FieldList::DataDefAvailableFlag,
            withDefs.getContentMask());
  FieldListReadIterator reader;
  reader.start(withDefs);
  EXPECT_EQ(1, reader.value().getContentMask());
  EXPECT_EQ(10, reader.value().getFieldID());
  EXPECT_EQ(-70000, asValue(reader.value().getData()).getInt());
  reader.forth();
  EXPECT_EQ(31415, asValue(reader.value().getData()).getReal().getValue());
  reader.forth();
  EXPECT_EQ(11, asValue(reader.value().getData()).getDate().getDay());
  reader.forth();
  EXPECT_EQ(0, reader.value().getContentMask());
  EXPECT_EQ(500, reader.value().getFieldID());
  EXPECT_EQ("getData() called without type information in class [FieldEntry] in method [getData()]",
            usageTextOf([&] { reader.value().getData(); }));
  EXPECT_EQ(1, asValue(reader.value().getData(data::IntEnum)).getInt());
  reader.forth();
  reader.forth();
  EXPECT_TRUE(reader.off());

  FieldListDef other = threeFieldDef(3);
  EXPECT_EQ(
      "Trying to decode with local and external definitions in class [FieldListReadIterator] in "
      "method ['start']",
      usageTextOf([&] { reader.start(withDefs, 0, &other); }));
}

TEST(FieldListReadTest, TwoReadersOverOneListAdvanceIndependently) {
  FieldList list(true);
  writeInts(list, {{1, 10}, {2, 20}, {3, 30}});
  FieldListReadIterator a, b;
  a.start(list);
  a.forth();
  b.start(list);
  EXPECT_EQ(2, a.value().getFieldID());
  EXPECT_EQ(1, b.value().getFieldID());
  a.forth();
  b.forth();
  EXPECT_EQ(30, asValue(a.value().getData(data::IntEnum)).getInt());
  EXPECT_EQ(20, asValue(b.value().getData(data::IntEnum)).getInt());
  a.forth();
  EXPECT_TRUE(a.off());
  EXPECT_FALSE(b.off());
  // A restart walks from the first entry again.
  a.start(list);
  EXPECT_EQ(1, a.value().getFieldID());
}

TEST(FieldListReadTest, AnEmptyListIsOffAtOnce) {
  FieldList written(true);
  FieldListWriteIterator writer;
  writer.start(written, kStandard);
  writer.complete();
  FieldListReadIterator reader;
  reader.start(written);
  EXPECT_TRUE(reader.off());
  EXPECT_EQ(0u, written.getStandardDataCount());

  FieldList noBytes(false);
  noBytes.setEncodedBuffer(Buffer());
  reader.start(noBytes);
  EXPECT_TRUE(reader.off());
  EXPECT_EQ(0u, noBytes.getStandardDataCount());
}

TEST(FieldListReadTest, BytesThatAreNotAListFailInsteadOfCrashing) {
  FieldList nullBytes(false);
  nullBytes.setEncodedBuffer(Buffer(nullptr, 5, 5, false));
  EXPECT_EQ("General failure in class FieldList in method startDecode",
            usageTextOf([&] { nullBytes.getStandardDataCount(); }));
  // Not decoded, so the next getter tries and fails again.
  EXPECT_EQ("General failure in class FieldList in method startDecode",
            usageTextOf([&] { nullBytes.getDataDefID(); }));

  FieldList written(true);
  writeInts(written, {{1, 10}, {2, 20}, {3, 30}});
  const Buffer& good = written.getEncodedBuffer();
  const std::string bytes(reinterpret_cast<const char*>(good.c_buf()), good.size());
  int failures = 0;
  for (size_t cut = 1; cut < bytes.size(); ++cut) {
    const std::string truncated = bytes.substr(0, cut);
    FieldList list(false);
    list.setEncodedBuffer(testing::bufferOf(truncated));
    const std::string text = usageTextOf([&] {
      FieldListReadIterator reader;
      for (reader.start(list); !reader.off(); reader.forth()) {
        reader.value().getData(data::IntEnum).isBlank();
      }
    });
    if (text == "no failure") continue;
    ++failures;
    const bool named =
        text.find(" in class FieldList in method startDecode") != std::string::npos ||
        text.find(" in class FieldListReadIterator in method start()") != std::string::npos ||
        text.find(" in class FieldListReadIterator in method forth()") != std::string::npos ||
        text.find("DataBuffer") != std::string::npos;
    EXPECT_TRUE(named) << text;
  }
  EXPECT_GT(failures, 0);
}

TEST(FieldListFindTest, FindsTheFirstFieldWithTheIdAndClearsTheEntryOtherwise) {
  FieldList list(true);
  writeInts(list, {{5, 50}, {6, 60}, {5, 51}});
  FieldEntry found(true);
  ASSERT_TRUE(list.find(6, data::IntEnum, found));
  EXPECT_EQ(6, found.getFieldID());
  EXPECT_EQ(60, asValue(found.getData(data::IntEnum)).getInt());
  ASSERT_TRUE(list.find(5, data::IntEnum, found));
  EXPECT_EQ(50, asValue(found.getData(data::IntEnum)).getInt());

  EXPECT_FALSE(list.find(7, data::IntEnum, found));
  EXPECT_EQ(0, found.getFieldID());
  EXPECT_EQ(data::NoDataEnum, found.getData(data::NoDataEnum).getDataType());

  // After clear the list keeps its search iterator and searches new bytes.
  list.clear();
  writeInts(list, {{7, 70}});
  ASSERT_TRUE(list.find(7, data::IntEnum, found));
  EXPECT_EQ(70, asValue(found.getData(data::IntEnum)).getInt());
}

TEST(FieldListTest, ANewListIsBlankAndTheSetIdIsFlaggedOnlyWhenNotZero) {
  FieldList list(true);
  EXPECT_TRUE(list.isBlank());
  EXPECT_EQ(data::FieldListEnum, list.getDataType());
  list.setDataDefID(0);
  EXPECT_EQ(0, FieldListInt::record(list).flags);
  list.setDataDefID(4);
  EXPECT_EQ(0x04, FieldListInt::record(list).flags);
  list.setInfo(1, 2);
  EXPECT_EQ(0x05, FieldListInt::record(list).flags);
  list.clear();
  EXPECT_EQ(0, FieldListInt::record(list).flags);
  for (const OwfFieldSetDef& slot : FieldListInt::defDb(list).definitions) {
    EXPECT_EQ(OWF_SET_DEF_FREE, slot.setId);
  }
}

TEST(FieldListTest, ClearKeepsTheBufferForTheNextWrite) {
  FieldList list(true);
  writeInts(list, {{1, 1}});
  const char* buffer = DataInt::encodedData(&list).data;
  const auto capacity = DataInt::capacity(&list);
  list.clear();
  EXPECT_TRUE(list.isBlank());
  writeInts(list, {{2, 2}});
  EXPECT_EQ(buffer, DataInt::encodedData(&list).data);
  EXPECT_EQ(capacity, DataInt::capacity(&list));
  EXPECT_EQ((std::vector<std::pair<short, common::Int64>>{{2, 2}}), readInts(list));
}

TEST(FieldEntryTest, SetDataRefusesMessagesAndClearKeepsTheType) {
  FieldEntry entry(false);
  testing::AnyMsg msg;
  EXPECT_EQ(
      "Attempt to pass in invalid data format. in class [FieldEntry] in method [setData( const "
      "Data& )]",
      usageTextOf([&] { entry.setData(msg); }));
  data::NoData none(false);
  entry.setData(none);
  DataBuffer v(false);
  v.setDouble(1.0);
  entry.setFieldID(9);
  entry.setData(v);
  EXPECT_EQ(data::FieldEntryEnum, entry.getEntryType());
  EXPECT_EQ(data::DoubleEnum, FieldListInt::record(entry).dataType);
  entry.clear();
  EXPECT_EQ(0, entry.getFieldID());
  EXPECT_EQ(data::DoubleEnum, FieldListInt::record(entry).dataType);
  EXPECT_EQ(0u, FieldListInt::record(entry).encData.length);
}

}  // namespace
}  // namespace orvo
