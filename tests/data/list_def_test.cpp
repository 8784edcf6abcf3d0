#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Data/Impl/ElementListDefInt.h"
#include "Data/Impl/FieldListDefInt.h"
#include "entry_test_util.h"
#include "gtest/gtest.h"
#include "orvo/data/ElementEntryDef.h"
#include "orvo/data/ElementListDef.h"
#include "orvo/data/ElementListDefReadIterator.h"
#include "orvo/data/ElementListDefWriteIterator.h"
#include "orvo/data/FieldEntryDef.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/data/FieldListDefReadIterator.h"
#include "orvo/data/FieldListDefWriteIterator.h"

namespace orvo {
namespace {

using common::ORVO_String;
using common::UInt8;
using data::ElementEntryDef;
using data::ElementListDef;
using data::ElementListDefReadIterator;
using data::ElementListDefWriteIterator;
using data::FieldEntryDef;
using data::FieldListDef;
using data::FieldListDefReadIterator;
using data::FieldListDefWriteIterator;
using internal::ElementListDefInt;
using internal::FieldListDefInt;
using testing::usageTextOf;

struct SetCodeRow {
  UInt8 type;
  UInt8 encodedType;
  UInt8 setCode;
};

// Every packed form, and the set code it is written with.
const std::vector<SetCodeRow> kPackedForms = {{3, 1, 64},  {4, 1, 65},  {3, 2, 66},  {4, 2, 67},
                                              {3, 4, 68},  {4, 4, 69},  {3, 7, 70},  {4, 7, 71},
                                              {5, 4, 72},  {6, 7, 73},  {8, 9, 75},  {9, 4, 76},
                                              {10, 3, 77}, {10, 5, 78}, {11, 6, 79}, {11, 8, 80}};

FieldEntryDef fieldRow(short fid, UInt8 type, UInt8 encodedType) {
  FieldEntryDef row;
  row.setFieldID(fid);
  row.setType(type, encodedType);
  return row;
}

ElementEntryDef elementRow(const char* name, UInt8 type, UInt8 encodedType) {
  ElementEntryDef row;
  row.setName(ORVO_String(name));
  row.setType(type, encodedType);
  return row;
}

std::vector<short> fieldIdsOf(const FieldListDef& def) {
  std::vector<short> ids;
  FieldListDefReadIterator reader;
  for (reader.start(def); !reader.off(); reader.forth()) ids.push_back(reader.value().getFieldID());
  return ids;
}

std::vector<std::string> namesOf(const ElementListDef& def) {
  std::vector<std::string> names;
  ElementListDefReadIterator reader;
  for (reader.start(def); !reader.off(); reader.forth()) {
    names.push_back(reader.value().getName().c_str());
  }
  return names;
}

TEST(ListDefSetCodeTest, EveryPackedFormIsWrittenAndReadBack) {
  FieldListDef fields;
  ElementListDef elements;
  FieldListDefWriteIterator fieldWriter;
  ElementListDefWriteIterator elementWriter;
  fieldWriter.start(fields, 0);
  elementWriter.start(elements, 0);
  short fid = 1;
  for (const SetCodeRow& row : kPackedForms) {
    fieldWriter.bind(fieldRow(fid++, row.type, row.encodedType));
    elementWriter.bind(elementRow("e", row.type, row.encodedType));
  }
  ASSERT_EQ(kPackedForms.size(), fields.getCount());
  ASSERT_EQ(kPackedForms.size(), elements.getCount());
  const OwfFieldSetDef& fieldRecord = FieldListDefInt::setDef(fields);
  const OwfElementSetDef& elementRecord = ElementListDefInt::setDef(elements);
  FieldListDefReadIterator fieldReader;
  ElementListDefReadIterator elementReader;
  fieldReader.start(fields);
  elementReader.start(elements);
  for (size_t i = 0; i < kPackedForms.size(); ++i) {
    const SetCodeRow& row = kPackedForms[i];
    SCOPED_TRACE(int(row.setCode));
    EXPECT_EQ(row.setCode, fieldRecord.entries[i].dataType);
    EXPECT_EQ(row.setCode, elementRecord.entries[i].dataType);
    EXPECT_EQ(row.type, fieldReader.value().getType());
    EXPECT_EQ(row.encodedType, fieldReader.value().getEncodedType());
    EXPECT_EQ(row.type, elementReader.value().getType());
    EXPECT_EQ(row.encodedType, elementReader.value().getEncodedType());
    fieldReader.forth();
    elementReader.forth();
  }
  EXPECT_TRUE(fieldReader.off());
  EXPECT_TRUE(elementReader.off());
}

TEST(ListDefSetCodeTest, PlainTypesAndOlderCodes) {
  FieldListDef def;
  FieldListDefWriteIterator writer;
  writer.start(def);
  writer.bind(fieldRow(1, 17, 0));  // a plain type is its own set code
  writer.bind(fieldRow(2, 1, 1));   // an older int code folds to 3
  writer.bind(fieldRow(3, 7, 9));   // and an older real code to 8
  const OwfFieldSetDef& record = FieldListDefInt::setDef(def);
  EXPECT_EQ(17, record.entries[0].dataType);
  EXPECT_EQ(64, record.entries[1].dataType);
  EXPECT_EQ(75, record.entries[2].dataType);
  FieldListDefReadIterator reader;
  reader.start(def);
  EXPECT_EQ(17, reader.value().getType());
  EXPECT_EQ(0, reader.value().getEncodedType());
  reader.forth();
  EXPECT_EQ(3, reader.value().getType());
}

// A decoded definition may carry code 74, which reads as the pair that is
// written as 75.
TEST(ListDefSetCodeTest, TheOtherRealCodeReadsAsThePairWrittenAs75) {
  OwfFieldSetDefEntry rows[3] = {{1, 74}, {2, 2}, {3, 200}};
  OwfLocalFieldSetDefDb db{};
  db.definitions[6] = OwfFieldSetDef{6, 3, rows};
  FieldListDef view;
  FieldListDefInt::viewDecoded(view, &db, db.definitions[6]);
  EXPECT_EQ(6, view.getDataDefID());
  EXPECT_EQ(FieldListDef::DataDefIDFlag, view.getContentMask());
  FieldListDefReadIterator reader;
  reader.start(view);
  EXPECT_EQ(8, reader.value().getType());
  EXPECT_EQ(9, reader.value().getEncodedType());
  reader.forth();
  EXPECT_EQ(4, reader.value().getType());  // a plain older code folds on reading too
  reader.forth();
  EXPECT_EQ(200, reader.value().getType());
  EXPECT_EQ(0, reader.value().getEncodedType());
}

TEST(ListDefWriteTest, PairsWithoutAPackedFormFailAndAddNoRow) {
  FieldListDef def;
  FieldListDefWriteIterator writer;
  EXPECT_EQ(
      "Failed to call start function before calling bind. in class [FieldListDefWriteIterator] "
      "in method [bind]",
      usageTextOf([&] { writer.bind(fieldRow(1, 3, 0)); }));
  writer.start(def);
  EXPECT_EQ("Wrong combination", usageTextOf([&] { writer.bind(fieldRow(1, 3, 5)); }));
  EXPECT_EQ("Wrong combination", usageTextOf([&] { writer.bind(fieldRow(1, 4, 9)); }));
  EXPECT_EQ("Wrong combination of Type and EncodedType",
            usageTextOf([&] { writer.bind(fieldRow(1, 9, 7)); }));
  EXPECT_EQ(0, def.getCount());

  ElementListDef elements;
  ElementListDefWriteIterator elementWriter;
  EXPECT_EQ(
      "Failed to call start function before calling bind. in class [ElementListDefWriteIterator] "
      "in method [bind]",
      usageTextOf([&] { elementWriter.bind(elementRow("a", 3, 0)); }));
  elementWriter.start(elements);
  EXPECT_EQ("Wrong combination of Type and EncodedType",
            usageTextOf([&] { elementWriter.bind(elementRow("a", 11, 1)); }));
  elementWriter.bind(elementRow("b", 11, 8));
  EXPECT_EQ((std::vector<std::string>{"b"}), namesOf(elements));
}

TEST(ListDefWriteTest, SetIdsRunFromZeroToFifteen) {
  FieldListDef fields;
  EXPECT_EQ(0, fields.getContentMask());
  fields.setDataDefID(15);
  EXPECT_EQ(15, fields.getDataDefID());
  EXPECT_EQ(FieldListDef::DataDefIDFlag, fields.getContentMask());
  EXPECT_EQ(
      "Data definition identifier setId out of range in class [FieldListDef] in method "
      "[setDataDefID]",
      usageTextOf([&] { fields.setDataDefID(16); }));
  EXPECT_EQ(15, fields.getDataDefID());

  ElementListDef elements;
  EXPECT_EQ(0, elements.getContentMask());
  EXPECT_EQ(
      "Data definition identifier setId out of range in class [ElementListDef] in method "
      "[setDataDefID]",
      usageTextOf([&] { elements.setDataDefID(16); }));
  elements.setDataDefID(0);
  EXPECT_EQ(ElementListDef::DataDefIDFlag, elements.getContentMask());
}

TEST(ListDefWriteTest, RowsGrowByTenAndAStartThatNeedsMoreRoomDropsThem) {
  FieldListDef def;
  FieldListDefWriteIterator writer;
  writer.start(def, 0);
  for (short fid = 1; fid <= 11; ++fid) writer.bind(fieldRow(fid, 3, 0));
  EXPECT_EQ(11, def.getCount());
  std::vector<short> expected = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  EXPECT_EQ(expected, fieldIdsOf(def));

  // Room for 20 rows is there: a second start appends.
  writer.start(def, 15);
  writer.bind(fieldRow(12, 3, 0));
  expected.push_back(12);
  EXPECT_EQ(expected, fieldIdsOf(def));
  // A start that needs a larger array begins empty.
  writer.start(def, 30);
  EXPECT_EQ(0, def.getCount());
  writer.bind(fieldRow(99, 3, 0));
  EXPECT_EQ(std::vector<short>{99}, fieldIdsOf(def));

  ElementListDef elements;
  ElementListDefWriteIterator elementWriter;
  elementWriter.start(elements);
  std::vector<std::string> names;
  for (int i = 0; i < 25; ++i) {
    names.push_back("element" + std::to_string(i));
    elementWriter.bind(elementRow(names.back().c_str(), 17, 0));
  }
  elementWriter.complete();
  EXPECT_EQ(names, namesOf(elements));
}

TEST(ListDefWriteTest, TheRowCountIsEightBitsWide) {
  FieldListDef def;
  FieldListDefWriteIterator writer;
  writer.start(def);
  for (int i = 0; i < 256; ++i) writer.bind(fieldRow(static_cast<short>(i), 4, 0));
  EXPECT_EQ(0, def.getCount());
  static_assert(std::is_same<decltype(def.getCount()), UInt8>::value, "narrow count");
  static_assert(std::is_same<decltype(ElementListDef().getCount()), common::UInt32>::value,
                "wide count");

  ElementListDef elements;
  ElementListDefWriteIterator elementWriter;
  elementWriter.start(elements);
  for (int i = 0; i < 257; ++i) elementWriter.bind(elementRow("n", 4, 0));
  EXPECT_EQ(1u, elements.getCount());
}

TEST(ListDefReadTest, AnEmptyDefinitionIsOffAtOnce) {
  FieldListDef fields;
  FieldListDefReadIterator fieldReader;
  fieldReader.start(fields);
  EXPECT_TRUE(fieldReader.off());
  EXPECT_EQ(0, fieldReader.value().getFieldID());

  // An element row read before an empty definition loses its name only.
  ElementListDef one;
  ElementListDefWriteIterator writer;
  writer.start(one);
  writer.bind(elementRow("Name", 10, 5));
  ElementListDefReadIterator elementReader;
  elementReader.start(one);
  EXPECT_STREQ("Name", elementReader.value().getName().c_str());
  ElementListDef empty;
  elementReader.start(empty);
  EXPECT_TRUE(elementReader.off());
  EXPECT_TRUE(elementReader.value().getName().empty());
  EXPECT_EQ(10, elementReader.value().getType());
  EXPECT_EQ(5, elementReader.value().getEncodedType());
}

TEST(ListDefCopyTest, CopiesOwnTheirRowsAndNames) {
  ElementListDef original;
  original.setDataDefID(4);
  ElementListDefWriteIterator writer;
  writer.start(original);
  writer.bind(elementRow("Bid", 8, 9));
  writer.bind(elementRow("Ask", 8, 9));

  ElementListDef copied(original);
  std::unique_ptr<common::DataDef> cloned(original.clone());
  ElementListDef assigned;
  assigned = original;
  const ElementListDef& itself = assigned;
  assigned = itself;  // assigning to itself changes nothing
  ASSERT_EQ(0, cloned->getDefType());
  const ElementListDef& clone = static_cast<const ElementListDef&>(*cloned);
  for (const ElementListDef* def : std::vector<const ElementListDef*>{&copied, &clone, &assigned}) {
    EXPECT_EQ(4, def->getDataDefID());
    EXPECT_EQ(ElementListDef::DataDefIDFlag, def->getContentMask());
    EXPECT_EQ((std::vector<std::string>{"Bid", "Ask"}), namesOf(*def));
    EXPECT_NE(ElementListDefInt::setDef(original).entries[0].name.data,
              ElementListDefInt::setDef(*def).entries[0].name.data);
  }
  original.clear();
  EXPECT_EQ(0u, original.getCount());
  EXPECT_EQ(0, original.getContentMask());
  EXPECT_EQ((std::vector<std::string>{"Bid", "Ask"}), namesOf(copied));

  FieldListDef fields;
  fields.setDataDefID(2);
  FieldListDefWriteIterator fieldWriter;
  fieldWriter.start(fields);
  fieldWriter.bind(fieldRow(22, 3, 0));
  std::unique_ptr<common::DataDef> fieldClone(fields.clone());
  EXPECT_EQ(1, fieldClone->getDefType());
  fields.clear();
  EXPECT_EQ(std::vector<short>{22}, fieldIdsOf(static_cast<FieldListDef&>(*fieldClone)));
}

// A copy of a definition that views a decoded table still names the table,
// though its rows are its own; assignment does not take the table.
TEST(ListDefCopyTest, CopiesOfAViewKeepTheirRowsAfterTheTableIsGone) {
  std::unique_ptr<FieldListDef> copy;
  FieldListDef assigned;
  {
    OwfFieldSetDefEntry rows[2] = {{7, 3}, {8, 68}};
    OwfLocalFieldSetDefDb db{};
    db.definitions[1] = OwfFieldSetDef{1, 2, rows};
    FieldListDef view;
    FieldListDefInt::viewDecoded(view, &db, db.definitions[1]);
    copy.reset(static_cast<FieldListDef*>(view.clone()));
    EXPECT_EQ(&db, FieldListDefInt::defDb(*copy));
    assigned = view;
    EXPECT_EQ(nullptr, FieldListDefInt::defDb(assigned));
  }
  EXPECT_EQ((std::vector<short>{7, 8}), fieldIdsOf(*copy));
  EXPECT_EQ((std::vector<short>{7, 8}), fieldIdsOf(assigned));
}

TEST(ListDefEntryTest, EntriesClearToZero) {
  FieldEntryDef field = fieldRow(5, 2, 4);
  EXPECT_EQ(4, field.getType());
  field.clear();
  EXPECT_EQ(0, field.getFieldID());
  EXPECT_EQ(0, field.getType());
  EXPECT_EQ(0, field.getEncodedType());
  ElementEntryDef element = elementRow("n", 7, 9);
  EXPECT_EQ(8, element.getType());
  element.clear();
  EXPECT_TRUE(element.getName().empty());
  EXPECT_EQ(0, element.getType());
}

}  // namespace
}  // namespace orvo
