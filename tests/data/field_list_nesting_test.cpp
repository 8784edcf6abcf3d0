#include <string>
#include <vector>

#include "Data/Impl/DataInt.h"
#include "entry_test_util.h"
#include "gtest/gtest.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/ElementListReadIterator.h"
#include "orvo/data/ElementListWriteIterator.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/data/FieldListWriteIterator.h"

namespace orvo {
namespace {

using common::ORVO_String;
using data::DataBuffer;
using data::ElementEntry;
using data::ElementList;
using data::ElementListReadIterator;
using data::ElementListWriteIterator;
using data::FieldEntry;
using data::FieldList;
using data::FieldListReadIterator;
using data::FieldListWriteIterator;
using internal::DataInt;
using testing::asValue;
using testing::bufferOf;
using testing::textOf;

constexpr common::UInt8 kFieldStandard = FieldListWriteIterator::StandardDataFlag;
constexpr common::UInt8 kElementStandard = ElementListWriteIterator::StandardDataFlag;

std::string textNumbered(int n, size_t length) {
  std::string text = "v" + std::to_string(n) + ":";
  while (text.size() < length) text += static_cast<char>('a' + (text.size() + n) % 26);
  return text;
}

void bindText(FieldListWriteIterator& writer, short fid, const std::string& text) {
  DataBuffer v(false);
  v.setBuffer(bufferOf(text), data::AsciiStringEnum);
  FieldEntry entry(false);
  entry.setFieldID(fid);
  entry.setData(v);
  writer.bind(entry);
}

void bindText(ElementListWriteIterator& writer, const char* name, const std::string& text) {
  DataBuffer v(false);
  v.setBuffer(bufferOf(text), data::AsciiStringEnum);
  ElementEntry entry(false);
  ORVO_String n(name);
  entry.setName(n);
  entry.setData(v);
  writer.bind(entry);
}

std::string textAt(const common::Data& data) { return textOf(asValue(data).getBuffer()); }

// The innermost list: `count` numbered text fields.
void writeInner(FieldList& inner, int count, size_t length) {
  FieldListWriteIterator writer;
  writer.start(inner, kFieldStandard);
  for (int i = 0; i < count; ++i) bindText(writer, static_cast<short>(i), textNumbered(i, length));
  writer.complete();
}

void expectInner(const FieldList& inner, int count, size_t length) {
  FieldListReadIterator reader;
  int i = 0;
  for (reader.start(inner); !reader.off(); reader.forth(), ++i) {
    ASSERT_EQ(i, reader.value().getFieldID());
    ASSERT_EQ(textNumbered(i, length), textAt(reader.value().getData(data::AsciiStringEnum)));
  }
  EXPECT_EQ(count, i);
}

// An element list holding a field list holding a field list, all written
// into the element list's one buffer, which grows while the innermost list
// is open.
TEST(FieldListNestingTest, ThreeLevelsGoIntoTheOuterBufferWhileItGrows) {
  const int kInnerCount = 400;
  const size_t kInnerLength = 60;
  ElementList outer(true);
  FieldList middle(false), inner(false);

  ElementListWriteIterator outerWriter;
  outerWriter.start(outer, kElementStandard);
  bindText(outerWriter, "before", textNumbered(1, 1000));
  ElementEntry holder(false);
  ORVO_String middleName("middle");
  holder.setName(middleName);
  holder.setData(middle);
  outerWriter.bind(holder);
  {
    FieldListWriteIterator middleWriter;
    middleWriter.start(middle, kFieldStandard);
    bindText(middleWriter, 1, "first");
    FieldEntry innerHolder(false);
    innerHolder.setFieldID(2);
    innerHolder.setData(inner);
    middleWriter.bind(innerHolder);
    writeInner(inner, kInnerCount, kInnerLength);
    bindText(middleWriter, 3, textNumbered(3, 2000));
    middleWriter.complete();
  }
  bindText(outerWriter, "after", "last");
  outerWriter.complete();

  const common::Buffer& bytes = outer.getEncodedBuffer();
  EXPECT_GT(bytes.size(), 4 * 4096);
  EXPECT_GE(DataInt::capacity(&outer), static_cast<common::UInt32>(bytes.size()));
  // Only the outermost list received bytes; the list directly under it has no
  // buffer, and the one two deep holds an unused buffer of its own.
  EXPECT_EQ(0u, DataInt::capacity(&middle));
  EXPECT_EQ(4096u, DataInt::capacity(&inner));

  ElementList received(false);
  testing::viewBytesOf(outer, &received);
  ElementListReadIterator elements;
  elements.start(received);
  EXPECT_STREQ("before", elements.value().getName().c_str());
  EXPECT_EQ(textNumbered(1, 1000), textAt(elements.value().getData()));
  elements.forth();
  EXPECT_STREQ("middle", elements.value().getName().c_str());
  const common::Data& middleData = elements.value().getData();
  ASSERT_EQ(data::FieldListEnum, middleData.getDataType());
  FieldListReadIterator fields;
  fields.start(static_cast<const FieldList&>(middleData));
  EXPECT_EQ("first", textAt(fields.value().getData(data::AsciiStringEnum)));
  fields.forth();
  EXPECT_EQ(2, fields.value().getFieldID());
  expectInner(static_cast<const FieldList&>(fields.value().getData(data::FieldListEnum)),
              kInnerCount, kInnerLength);
  fields.forth();
  EXPECT_EQ(textNumbered(3, 2000), textAt(fields.value().getData(data::AsciiStringEnum)));
  fields.forth();
  EXPECT_TRUE(fields.off());
  elements.forth();
  EXPECT_EQ("last", textAt(elements.value().getData()));
  elements.forth();
  EXPECT_TRUE(elements.off());
}

// Moves the opening of a nested element list, its entries and its close
// across the end of the first buffer one byte at a time, so that every
// step meets a full buffer at some offset and must roll back and retry.
TEST(FieldListNestingTest, EveryStepSurvivesTheBufferFillingUpUnderIt) {
  for (size_t pad = 3900; pad < 4100; ++pad) {
    SCOPED_TRACE(pad);
    FieldList outer(true);
    ElementList nested(false);
    FieldListWriteIterator writer;
    writer.start(outer, kFieldStandard);
    bindText(writer, 1, std::string(pad, 'p'));
    FieldEntry holder(false);
    holder.setFieldID(2);
    holder.setData(nested);
    writer.bind(holder);
    ElementListWriteIterator nestedWriter;
    nestedWriter.start(nested, kElementStandard);
    bindText(nestedWriter, "a", "alpha");
    bindText(nestedWriter, "b", std::string(40, 'b'));
    nestedWriter.complete();
    bindText(writer, 3, "tail");
    writer.complete();

    FieldListReadIterator reader;
    reader.start(outer);
    ASSERT_EQ(pad, textAt(reader.value().getData(data::AsciiStringEnum)).size());
    reader.forth();
    ElementListReadIterator elements;
    elements.start(static_cast<const ElementList&>(reader.value().getData(data::ElementListEnum)));
    ASSERT_EQ("alpha", textAt(elements.value().getData()));
    elements.forth();
    ASSERT_EQ(std::string(40, 'b'), textAt(elements.value().getData()));
    elements.forth();
    ASSERT_TRUE(elements.off());
    reader.forth();
    ASSERT_EQ("tail", textAt(reader.value().getData(data::AsciiStringEnum)));
  }
}

// A second write of the same objects, after clear, reuses every buffer.
TEST(FieldListNestingTest, ClearedObjectsWriteTheSameBytesAgain) {
  FieldList outer(true), middle(false), inner(false);
  auto writeAll = [&] {
    FieldListWriteIterator writer;
    writer.start(outer, kFieldStandard);
    FieldEntry holder(false);
    holder.setFieldID(1);
    holder.setData(middle);
    writer.bind(holder);
    FieldListWriteIterator middleWriter;
    middleWriter.start(middle, kFieldStandard);
    FieldEntry innerHolder(false);
    innerHolder.setFieldID(2);
    innerHolder.setData(inner);
    middleWriter.bind(innerHolder);
    writeInner(inner, 50, 100);
    middleWriter.complete();
    writer.complete();
    return testing::textOf(outer.getEncodedBuffer());
  };
  const std::string first = writeAll();
  outer.clear();
  middle.clear();
  inner.clear();
  EXPECT_EQ(first, writeAll());
}

}  // namespace
}  // namespace orvo
