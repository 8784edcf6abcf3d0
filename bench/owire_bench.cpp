// Micro benchmarks of the wire codec: encode, and decode-and-read-every-value,
// of (a) a 25-field field-list update and (b) a 100-entry map of 10-field
// field-list rows. Buffers and iterators are reused; nothing is allocated in
// the timed loops. The content comes from bench/owire_cases.h, shared with
// the peer comparisons.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench/owire_cases.h"

namespace {

using namespace owire_cases;

struct Fixture {
  Row update = makeUpdate(7);
  Book book = makeBook(7);
  RowPlan updatePlan{update};
  BookPlan bookPlan{book};
  Dictionary dict;
  std::vector<char> out = std::vector<char>(1 << 16);
  OwfBuffer buffer{static_cast<UInt32>(1 << 16), nullptr};
  OwfEncodeIterator it;

  Fixture() {
    dict.add(update);
    dict.add(book.rows[0]);
    buffer.data = out.data();
  }
  // Encodes with `f` into the reused buffer; returns the length.
  template <class F>
  UInt32 encode(F f) {
    clearEncodeIterator(&it);
    setEncodeIteratorBuffer(&it, &buffer);
    if (f(&it) < 0) {
      std::fprintf(stderr, "encoding failed\n");
      std::abort();
    }
    return getEncodedLength(&it);
  }
};

Fixture& fixture() {
  static Fixture f;
  return f;
}

// Encoding from entry records and value pointers made once (as a protobuf
// message object is made once before it is serialized).
void BM_UpdateEncode(benchmark::State& state) {
  Fixture& f = fixture();
  UInt32 len = 0;
  for (auto _ : state) {
    len = f.encode([&](OwfEncodeIterator* it) { return encodeRow(it, f.updatePlan); });
    benchmark::DoNotOptimize(f.out.data());
    benchmark::ClobberMemory();
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

// Encoding straight from the value objects, taking each field's value on the way.
void BM_UpdateBuildEncode(benchmark::State& state) {
  Fixture& f = fixture();
  UInt32 len = 0;
  for (auto _ : state) {
    len = f.encode([&](OwfEncodeIterator* it) { return encodeRow(it, f.update); });
    benchmark::DoNotOptimize(f.out.data());
    benchmark::ClobberMemory();
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

void BM_UpdateDecode(benchmark::State& state) {
  Fixture& f = fixture();
  const UInt32 len = f.encode([&](OwfEncodeIterator* it) { return encodeRow(it, f.update); });
  const UInt64 want = expectedSum(f.update, 0);
  for (auto _ : state) {
    UInt64 sum = 0;
    if (decodeUpdate(f.out.data(), len, f.dict, &sum) != 0 || sum != want) {
      state.SkipWithError("decoding failed");
      break;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

void BM_BookEncode(benchmark::State& state) {
  Fixture& f = fixture();
  UInt32 len = 0;
  for (auto _ : state) {
    len = f.encode([&](OwfEncodeIterator* it) { return encodeBook(it, f.bookPlan); });
    benchmark::DoNotOptimize(f.out.data());
    benchmark::ClobberMemory();
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

void BM_BookBuildEncode(benchmark::State& state) {
  Fixture& f = fixture();
  UInt32 len = 0;
  for (auto _ : state) {
    len = f.encode([&](OwfEncodeIterator* it) { return encodeBookBuilding(it, f.book); });
    benchmark::DoNotOptimize(f.out.data());
    benchmark::ClobberMemory();
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

void BM_BookDecode(benchmark::State& state) {
  Fixture& f = fixture();
  const UInt32 len = f.encode([&](OwfEncodeIterator* it) { return encodeBook(it, f.bookPlan); });
  const UInt64 want = expectedSum(f.book, 0);
  for (auto _ : state) {
    UInt64 sum = 0;
    if (decodeBook(f.out.data(), len, f.dict, &sum) != 0 || sum != want) {
      state.SkipWithError("decoding failed");
      break;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["bytes"] = len;
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * len);
}

}  // namespace

BENCHMARK(BM_UpdateEncode);
BENCHMARK(BM_UpdateBuildEncode);
BENCHMARK(BM_UpdateDecode);
BENCHMARK(BM_BookEncode);
BENCHMARK(BM_BookBuildEncode);
BENCHMARK(BM_BookDecode);

BENCHMARK_MAIN();
