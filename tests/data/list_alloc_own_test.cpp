// Counts heap allocations while lists are read and written: a decoded list
// is walked on views of its bytes, and a write into a buffer that is big
// enough touches no allocator. The global allocation functions of this test
// program are replaced by counting ones.
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/ORVO_String.h"
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

namespace {
long gAllocations = 0;

void* countedAllocation(std::size_t size) {
  ++gAllocations;
  if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
  throw std::bad_alloc();
}
}  // namespace

void* operator new(std::size_t size) { return countedAllocation(size); }
void* operator new[](std::size_t size) { return countedAllocation(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++gAllocations;
  return std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  ++gAllocations;
  return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace orvo {
namespace {

using common::Buffer;
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

constexpr int kEntries = 1000;
const char kText[] = "some text of a field";

// The field types of a mixed list, by position.
common::UInt8 typeAt(int i) {
  static const common::UInt8 kTypes[] = {data::IntEnum, data::RealEnum, data::DateEnum,
                                         data::AsciiStringEnum, data::DoubleEnum};
  return kTypes[i % 5];
}

void setValue(int i, DataBuffer& value) {
  switch (typeAt(i)) {
    case data::IntEnum:
      value.setInt(i * 1000003LL);
      break;
    case data::RealEnum: {
      data::Real64 real;
      real.setValue(i);
      real.setMagnitudeType(12);
      value.setReal(real);
      break;
    }
    case data::DateEnum: {
      data::Date date;
      date.setYear(2000);
      date.setMonth(1 + i % 12);
      date.setDay(1 + i % 28);
      value.setDate(date);
      break;
    }
    case data::AsciiStringEnum:
      value.setBuffer(Buffer(reinterpret_cast<unsigned char*>(const_cast<char*>(kText)),
                             sizeof(kText) - 1, sizeof(kText) - 1, false),
                      data::AsciiStringEnum);
      break;
    default:
      value.setDouble(i / 4.0);
      break;
  }
}

// Reads a value and folds it into a sum, so that nothing is optimised away.
long readValue(const DataBuffer& value) {
  switch (value.getDataBufferType()) {
    case data::IntEnum:
      return static_cast<long>(value.getInt());
    case data::RealEnum:
      return static_cast<long>(value.getReal().getValue());
    case data::DateEnum:
      return value.getDate().getDay();
    case data::AsciiStringEnum:
      return value.getBuffer().size();
    default:
      return static_cast<long>(value.getDouble());
  }
}

void writeMixedFieldList(FieldList& list) {
  FieldListWriteIterator writer;
  writer.start(list, FieldListWriteIterator::StandardDataFlag);
  DataBuffer value(true);
  FieldEntry entry(false);
  for (int i = 0; i < kEntries; ++i) {
    setValue(i, value);
    entry.setFieldID(static_cast<short>(i));
    entry.setData(value);
    writer.bind(entry);
  }
  writer.complete();
}

TEST(ListAllocationTest, WalkingADecodedFieldListAllocatesNothing) {
  FieldList written(true);
  writeMixedFieldList(written);
  FieldList received(false);
  received.setEncodedBuffer(written.getEncodedBuffer());
  FieldListReadIterator reader;

  const long before = gAllocations;
  long sum = 0;
  int count = 0;
  for (reader.start(received); !reader.off(); reader.forth(), ++count) {
    const FieldEntry& entry = reader.value();
    sum += readValue(static_cast<const DataBuffer&>(entry.getData(typeAt(entry.getFieldID()))));
  }
  EXPECT_EQ(0, gAllocations - before);
  EXPECT_EQ(kEntries, count);
  EXPECT_NE(0, sum);
}

TEST(ListAllocationTest, WalkingADecodedElementListAllocatesOnlyTheFirstName) {
  ElementList written(true);
  {
    ElementListWriteIterator writer;
    writer.start(written, ElementListWriteIterator::StandardDataFlag);
    DataBuffer value(true);
    ElementEntry entry(true);
    for (int i = 0; i < kEntries; ++i) {
      setValue(i, value);
      entry.setName(ORVO_String(("E" + std::to_string(i)).c_str()));
      entry.setData(value);
      writer.bind(entry);
    }
    writer.complete();
  }
  ElementList received(false);
  received.setEncodedBuffer(written.getEncodedBuffer());
  ElementListReadIterator reader;

  const long before = gAllocations;
  long sum = 0;
  for (reader.start(received); !reader.off(); reader.forth()) {
    sum += reader.value().getName().length();
    sum += readValue(static_cast<const DataBuffer&>(reader.value().getData()));
  }
  // The entry's name text is allocated once and reused for every entry.
  EXPECT_LE(gAllocations - before, 1);
  EXPECT_NE(0, sum);
}

// An element list holding a field list holding a field list.
class NestedWrite {
 public:
  NestedWrite() : _outer(true), _middle(false), _inner(false), _element(false), _field(false) {
    _value.setInt(42);
    _text.setBuffer(Buffer(reinterpret_cast<unsigned char*>(const_cast<char*>(kText)),
                           sizeof(kText) - 1, sizeof(kText) - 1, false),
                    data::AsciiStringEnum);
  }

  void write() {
    _outerWriter.start(_outer, ElementListWriteIterator::StandardDataFlag);
    _element.setName(_middleName);
    _element.setData(_middle);
    _outerWriter.bind(_element);
    _middleWriter.start(_middle, FieldListWriteIterator::StandardDataFlag);
    _field.setFieldID(1);
    _field.setData(_inner);
    _middleWriter.bind(_field);
    _innerWriter.start(_inner, FieldListWriteIterator::StandardDataFlag);
    for (short fid = 0; fid < 600; ++fid) {
      _field.setFieldID(fid);
      _field.setData(fid % 2 ? _value : _text);
      _innerWriter.bind(_field);
    }
    _innerWriter.complete();
    _middleWriter.complete();
    _element.setName(_lastName);
    _element.setData(_value);
    _outerWriter.bind(_element);
    _outerWriter.complete();
  }

  void clear() {
    _outer.clear();
    _middle.clear();
    _inner.clear();
  }

  const ElementList& outer() const { return _outer; }

 private:
  ElementList _outer;
  FieldList _middle, _inner;
  ElementEntry _element;
  FieldEntry _field;
  DataBuffer _value{false}, _text{false};
  ORVO_String _middleName{"middle"}, _lastName{"last"};
  ElementListWriteIterator _outerWriter;
  FieldListWriteIterator _middleWriter, _innerWriter;
};

TEST(ListAllocationTest, WritingANestedListIntoABigEnoughBufferAllocatesNothing) {
  NestedWrite nested;
  const long first = gAllocations;
  nested.write();  // grows the outer buffer as far as it needs
  EXPECT_GT(gAllocations - first, 0);
  const int firstSize = nested.outer().getEncodedBuffer().size();
  ASSERT_GT(firstSize, 4096);
  nested.clear();

  const long before = gAllocations;
  nested.write();
  EXPECT_EQ(0, gAllocations - before);
  EXPECT_EQ(firstSize, nested.outer().getEncodedBuffer().size());
}

}  // namespace
}  // namespace orvo
