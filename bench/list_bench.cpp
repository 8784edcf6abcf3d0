// Writing and reading a FieldList of 25 fields of mixed types, in
// nanoseconds per entry (the "per_entry" counter).
#include <benchmark/benchmark.h>

#include "orvo/common/Buffer.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/data/FieldListWriteIterator.h"

namespace {

using orvo::common::Buffer;
using orvo::data::DataBuffer;
using orvo::data::FieldEntry;
using orvo::data::FieldList;
using orvo::data::FieldListReadIterator;
using orvo::data::FieldListWriteIterator;

constexpr int kFields = 25;
const char kText[] = "ACME.X";

// Five kinds of values, as a quote update carries them.
struct Values {
  DataBuffer integer{true}, real{true}, date{true}, text{true}, enumeration{true};
  Values() {
    integer.setInt(123456789);
    orvo::data::Real64 price;
    price.setValue(1234567);
    price.setMagnitudeType(10);
    real.setReal(price);
    orvo::data::Date d;
    d.setYear(2024);
    d.setMonth(6);
    d.setDay(14);
    date.setDate(d);
    text.setBuffer(Buffer(reinterpret_cast<unsigned char*>(const_cast<char*>(kText)),
                          sizeof(kText) - 1, sizeof(kText) - 1, false),
                   orvo::data::AsciiStringEnum);
    enumeration.setEnumeration(3);
  }
  const DataBuffer& at(int i) const {
    const DataBuffer* all[] = {&integer, &real, &date, &text, &enumeration};
    return *all[i % 5];
  }
};

orvo::common::UInt8 typeAt(int i) {
  static const orvo::common::UInt8 kTypes[] = {orvo::data::IntEnum, orvo::data::RealEnum,
                                               orvo::data::DateEnum, orvo::data::AsciiStringEnum,
                                               orvo::data::EnumerationEnum};
  return kTypes[i % 5];
}

void writeList(FieldList& list, FieldListWriteIterator& writer, FieldEntry& entry,
               const Values& values) {
  list.clear();
  writer.start(list, FieldListWriteIterator::StandardDataFlag);
  for (int i = 0; i < kFields; ++i) {
    entry.setFieldID(static_cast<short>(i + 1));
    entry.setData(values.at(i));
    writer.bind(entry);
  }
  writer.complete();
}

void perEntry(benchmark::State& state) {
  state.counters["per_entry"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * kFields,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_WriteFieldList25(benchmark::State& state) {
  Values values;
  FieldList list(true);
  FieldListWriteIterator writer;
  FieldEntry entry(false);
  for (auto _ : state) {
    writeList(list, writer, entry, values);
    benchmark::DoNotOptimize(list.getEncodedBuffer().size());
  }
  perEntry(state);
}
BENCHMARK(BM_WriteFieldList25);

void BM_ReadFieldList25(benchmark::State& state) {
  Values values;
  FieldList written(true);
  FieldListWriteIterator writer;
  FieldEntry entry(false);
  writeList(written, writer, entry, values);
  FieldListReadIterator reader;
  for (auto _ : state) {
    FieldList received(false);
    received.setEncodedBuffer(written.getEncodedBuffer());
    long sum = 0;
    for (reader.start(received); !reader.off(); reader.forth()) {
      const FieldEntry& e = reader.value();
      const DataBuffer& v = static_cast<const DataBuffer&>(e.getData(typeAt(e.getFieldID() - 1)));
      switch (v.getDataBufferType()) {
        case orvo::data::IntEnum:
          sum += v.getInt();
          break;
        case orvo::data::RealEnum:
          sum += v.getReal().getValue();
          break;
        case orvo::data::DateEnum:
          sum += v.getDate().getDay();
          break;
        case orvo::data::AsciiStringEnum:
          sum += v.getBuffer().size();
          break;
        default:
          sum += v.getEnumeration();
          break;
      }
    }
    benchmark::DoNotOptimize(sum);
  }
  perEntry(state);
}
BENCHMARK(BM_ReadFieldList25);

}  // namespace

BENCHMARK_MAIN();
