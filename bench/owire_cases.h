// The benchmark cases of the wire codec, as plain data plus encode and
// decode functions, so that other programs (the peer comparisons in
// bench/peers/, the fuzz seed writer) build exactly the same content.
//
//  (a) Update: a 25-field field list: 10 reals with hints, 4 uints, 3 ints,
//      2 dates, 2 times, 2 enums, 2 strings of 8-16 bytes.
//  (b) Book: a map of 100 entries keyed by a UInt, each a 10-field field list
//      (4 reals, 2 uints, 1 int, 1 date, 1 time, 1 string).
//
// Decoding reads every value and folds it into a checksum, so that nothing
// can be skipped; encodeX(decodeX) checksums match between codecs.
#ifndef ORVO_BENCH_OWIRE_CASES_H_
#define ORVO_BENCH_OWIRE_CASES_H_

#include <cstring>
#include <string>
#include <vector>

#include "orvo/owire/owire.h"

namespace owire_cases {

enum FieldKind : UInt8 { kReal = 8, kUInt = 4, kInt = 3, kDate = 9, kTime = 10, kEnum = 14, kString = 17 };

struct Field {
  Int16 fid;
  FieldKind kind;
  // The value of the kind.
  OwfReal real;
  UInt64 u;
  Int64 i;
  OwfDate date;
  OwfTime time;
  UInt16 e;
  std::string s;
};

using Row = std::vector<Field>;

struct Book {
  std::vector<UInt64> keys;
  std::vector<Row> rows;
};

inline Field makeField(Int16 fid, FieldKind kind, UInt32 seed) {
  Field f{};
  f.fid = fid;
  f.kind = kind;
  const UInt32 r = seed * 2654435761u + static_cast<UInt32>(fid) * 40503u;
  switch (kind) {
    case kReal: f.real = OwfReal{0, static_cast<UInt8>(10 + r % 5), static_cast<Int64>(r % 10000000)}; break;
    case kUInt: f.u = r % 1000000; break;
    case kInt: f.i = static_cast<Int64>(r % 200000) - 100000; break;
    case kDate: f.date = OwfDate{static_cast<UInt8>(1 + r % 28), static_cast<UInt8>(1 + r % 12), 2024}; break;
    case kTime:
      f.time = OwfTime{static_cast<UInt8>(r % 24), static_cast<UInt8>(r % 60), static_cast<UInt8>(r % 59),
                       static_cast<UInt16>(r % 1000)};
      break;
    case kEnum: f.e = static_cast<UInt16>(r % 300); break;
    case kString: f.s = std::string("SYM") + std::to_string(r % 100000) + ".XCHG" + (r % 2 ? "X" : ""); break;
  }
  return f;
}

// A quote update: ids spread over the small and the two-byte range.
inline Row makeUpdate(UInt32 seed) {
  Row row;
  const Int16 realIds[10] = {101, 104, 107, 110, 113, 116, 119, 122, 125, 1301};
  for (Int16 id : realIds) row.push_back(makeField(id, kReal, seed));
  for (Int16 id : {140, 143, 1310, 3120}) row.push_back(makeField(id, kUInt, seed));
  for (Int16 id : {150, 153, 1320}) row.push_back(makeField(id, kInt, seed));
  for (Int16 id : {160, 1330}) row.push_back(makeField(id, kDate, seed));
  for (Int16 id : {170, 1340}) row.push_back(makeField(id, kTime, seed));
  for (Int16 id : {180, 183}) row.push_back(makeField(id, kEnum, seed));
  for (Int16 id : {190, 1350}) row.push_back(makeField(id, kString, seed));
  return row;
}

inline Row makeBookRow(UInt32 seed) {
  Row row;
  for (Int16 id : {3427, 3428, 3429, 3430}) row.push_back(makeField(id, kReal, seed));
  for (Int16 id : {3431, 3432}) row.push_back(makeField(id, kUInt, seed));
  row.push_back(makeField(3433, kInt, seed));
  row.push_back(makeField(3434, kDate, seed));
  row.push_back(makeField(3435, kTime, seed));
  row.push_back(makeField(3436, kString, seed));
  return row;
}

inline Book makeBook(UInt32 seed, int entries = 100) {
  Book b;
  for (int i = 0; i < entries; ++i) {
    b.keys.push_back(1000000 + seed * 1000 + static_cast<UInt64>(i));
    b.rows.push_back(makeBookRow(seed + static_cast<UInt32>(i)));
  }
  return b;
}

// Field types by id, as a dictionary would give them (standard entries carry
// no type on the wire).
struct Dictionary {
  UInt8 type[4096] = {};
  void add(const Row& row) {
    for (const Field& f : row) type[f.fid & 4095] = f.kind;
  }
};

// ---------------------------------------------------------------------------
// Encoding. The iterator has its buffer; returns a codec result.

// A row ready for encoding: the entry records and value pointers the data
// model hands the codec (built once, like a protobuf message object).
struct RowPlan {
  std::vector<OwfFieldEntry> entries;
  std::vector<const void*> values;
  std::vector<OwfBuffer> strings;
  explicit RowPlan(const Row& row) {
    strings.reserve(row.size());
    for (const Field& f : row) {
      entries.push_back(OwfFieldEntry{f.fid, static_cast<UInt8>(f.kind), {0, nullptr}});
      switch (f.kind) {
        case kReal: values.push_back(&f.real); break;
        case kUInt: values.push_back(&f.u); break;
        case kInt: values.push_back(&f.i); break;
        case kDate: values.push_back(&f.date); break;
        case kTime: values.push_back(&f.time); break;
        case kEnum: values.push_back(&f.e); break;
        default:
          strings.push_back(OwfBuffer{static_cast<UInt32>(f.s.size()), const_cast<char*>(f.s.data())});
          values.push_back(&strings.back());
          break;
      }
    }
  }
};

inline int encodeRowEntries(OwfEncodeIterator* it, const RowPlan& plan) {
  const size_t n = plan.entries.size();
  for (size_t k = 0; k < n; ++k) {
    const int ret = owireEncodeFieldEntry(it, const_cast<OwfFieldEntry*>(&plan.entries[k]), plan.values[k]);
    if (ret < 0) return ret;
  }
  return OWIRE_RET_SUCCESS;
}

inline int encodeRow(OwfEncodeIterator* it, const RowPlan& plan) {
  OwfFieldList list{};
  list.flags = OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
  list.dictionaryId = 1;
  list.fieldListNum = 1;
  int ret = owireEncodeFieldListInit(it, &list, nullptr, 0);
  if (ret < 0) return ret;
  ret = encodeRowEntries(it, plan);
  if (ret < 0) return ret;
  return owireEncodeFieldListComplete(it, true);
}

// Straight from the row's fields, no plan: the values are taken from the
// objects on the way (no allocation either).
inline int encodeRowEntries(OwfEncodeIterator* it, const Row& row) {
  OwfFieldEntry entry{0, 0, {0, nullptr}};
  for (const Field& f : row) {
    entry.fieldId = f.fid;
    entry.dataType = f.kind;
    const void* value;
    OwfBuffer s;
    switch (f.kind) {
      case kReal: value = &f.real; break;
      case kUInt: value = &f.u; break;
      case kInt: value = &f.i; break;
      case kDate: value = &f.date; break;
      case kTime: value = &f.time; break;
      case kEnum: value = &f.e; break;
      default:
        s = OwfBuffer{static_cast<UInt32>(f.s.size()), const_cast<char*>(f.s.data())};
        value = &s;
        break;
    }
    const int ret = owireEncodeFieldEntry(it, &entry, value);
    if (ret < 0) return ret;
  }
  return OWIRE_RET_SUCCESS;
}

inline int encodeRow(OwfEncodeIterator* it, const Row& row) {
  OwfFieldList list{};
  list.flags = OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
  list.dictionaryId = 1;
  list.fieldListNum = 1;
  int ret = owireEncodeFieldListInit(it, &list, nullptr, 0);
  if (ret < 0) return ret;
  ret = encodeRowEntries(it, row);
  if (ret < 0) return ret;
  return owireEncodeFieldListComplete(it, true);
}

struct BookPlan {
  std::vector<UInt64> keys;
  std::vector<RowPlan> rows;
  explicit BookPlan(const Book& book) : keys(book.keys) {
    for (const Row& r : book.rows) rows.emplace_back(r);
  }
};

inline int encodeBook(OwfEncodeIterator* it, const BookPlan& book) {
  OwfMap map{};
  map.flags = OWF_MPF_HAS_TOTAL_COUNT_HINT;
  map.keyPrimitiveType = 4;
  map.containerType = 132;
  map.totalCountHint = static_cast<UInt32>(book.rows.size());
  int ret = owireEncodeMapInit(it, &map, 0, 0);
  if (ret < 0) return ret;
  OwfMapEntry entry{};
  entry.action = 2;
  for (size_t i = 0; i < book.rows.size(); ++i) {
    ret = owireEncodeMapEntryInit(it, &entry, &book.keys[i], 0);
    if (ret < 0) return ret;
    ret = encodeRow(it, book.rows[i]);
    if (ret < 0) return ret;
    ret = owireEncodeMapEntryComplete(it, true);
    if (ret < 0) return ret;
  }
  return owireEncodeMapComplete(it, true);
}

// Builds the plan on the way: the cost of taking the values from objects.
inline int encodeBookBuilding(OwfEncodeIterator* it, const Book& book) {
  OwfMap map{};
  map.flags = OWF_MPF_HAS_TOTAL_COUNT_HINT;
  map.keyPrimitiveType = 4;
  map.containerType = 132;
  map.totalCountHint = static_cast<UInt32>(book.rows.size());
  int ret = owireEncodeMapInit(it, &map, 0, 0);
  if (ret < 0) return ret;
  OwfMapEntry entry{};
  entry.action = 2;
  for (size_t i = 0; i < book.rows.size(); ++i) {
    ret = owireEncodeMapEntryInit(it, &entry, &book.keys[i], 0);
    if (ret < 0) return ret;
    ret = encodeRow(it, book.rows[i]);
    if (ret < 0) return ret;
    ret = owireEncodeMapEntryComplete(it, true);
    if (ret < 0) return ret;
  }
  return owireEncodeMapComplete(it, true);
}

// ---------------------------------------------------------------------------
// Decoding: every value is read and folded into *sum.

inline UInt64 mix(UInt64 h, UInt64 v) { return (h ^ v) * 0x100000001B3ull; }

// Reads the entries of the field list open at the iterator's level.
inline int readRowEntries(OwfDecodeIterator* it, const Dictionary& dict, UInt64* sum) {
  OwfFieldEntry entry;
  int ret;
  UInt64 h = *sum;
  while ((ret = owireDecodeFieldEntry(it, &entry)) == OWIRE_RET_SUCCESS) {
    h = mix(h, static_cast<UInt16>(entry.fieldId));
    switch (dict.type[entry.fieldId & 4095]) {
      case kReal: {
        OwfReal r;
        ret = owireDecodeReal(it, &r);
        h = mix(h, static_cast<UInt64>(r.value) + r.hint);
        break;
      }
      case kUInt: {
        UInt64 u;
        ret = owireDecodeUInt(it, &u);
        h = mix(h, u);
        break;
      }
      case kInt: {
        Int64 i;
        ret = owireDecodeInt(it, &i);
        h = mix(h, static_cast<UInt64>(i));
        break;
      }
      case kDate: {
        OwfDate d;
        ret = owireDecodeDate(it, &d);
        h = mix(h, d.day + 32u * d.month + 512u * d.year);
        break;
      }
      case kTime: {
        OwfTime t;
        ret = owireDecodeTime(it, &t);
        h = mix(h, t.hour + 32u * t.minute + 4096u * t.second + 262144u * t.millisecond);
        break;
      }
      case kEnum: {
        UInt16 e;
        ret = owireDecodeEnum(it, &e);
        h = mix(h, e);
        break;
      }
      default: {
        OwfBuffer b;
        ret = owireDecodeBuffer(it, &b);
        h = mix(h, b.length);
        if (b.length) h = mix(h, static_cast<UInt8>(b.data[0]) + 256u * static_cast<UInt8>(b.data[b.length - 1]));
        break;
      }
    }
    if (ret < 0) return ret;
  }
  *sum = h;
  return ret == OWIRE_RET_END_OF_CONTAINER ? OWIRE_RET_SUCCESS : ret;
}

inline int decodeUpdate(const char* data, UInt32 length, const Dictionary& dict, UInt64* sum) {
  OwfBuffer buffer{length, const_cast<char*>(data)};
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  setDecodeIteratorBuffer(&it, &buffer);
  OwfFieldList list;
  const int ret = owireDecodeFieldList(&it, &list, nullptr);
  if (ret < 0) return ret;
  return readRowEntries(&it, dict, sum);
}

inline int decodeBook(const char* data, UInt32 length, const Dictionary& dict, UInt64* sum) {
  OwfBuffer buffer{length, const_cast<char*>(data)};
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  setDecodeIteratorBuffer(&it, &buffer);
  OwfMap map;
  int ret = owireDecodeMap(&it, &map);
  if (ret < 0) return ret;
  OwfMapEntry entry;
  UInt64 key;
  while ((ret = owireDecodeMapEntry(&it, &entry, &key)) == OWIRE_RET_SUCCESS) {
    *sum = mix(*sum, key);
    OwfFieldList list;
    ret = owireDecodeFieldList(&it, &list, nullptr);
    if (ret < 0) return ret;
    ret = readRowEntries(&it, dict, sum);
    if (ret < 0) return ret;
  }
  return ret == OWIRE_RET_END_OF_CONTAINER ? OWIRE_RET_SUCCESS : ret;
}

// Checksum of the values themselves, the same as decoding gives.
inline UInt64 expectedSum(const Row& row, UInt64 h) {
  for (const Field& f : row) {
    h = mix(h, static_cast<UInt16>(f.fid));
    switch (f.kind) {
      case kReal: h = mix(h, static_cast<UInt64>(f.real.value) + f.real.hint); break;
      case kUInt: h = mix(h, f.u); break;
      case kInt: h = mix(h, static_cast<UInt64>(f.i)); break;
      case kDate: h = mix(h, f.date.day + 32u * f.date.month + 512u * f.date.year); break;
      case kTime:
        h = mix(h, f.time.hour + 32u * f.time.minute + 4096u * f.time.second + 262144u * f.time.millisecond);
        break;
      case kEnum: h = mix(h, f.e); break;
      default:
        h = mix(h, f.s.size());
        if (!f.s.empty())
          h = mix(h, static_cast<UInt8>(f.s.front()) + 256u * static_cast<UInt8>(f.s.back()));
        break;
    }
  }
  return h;
}

inline UInt64 expectedSum(const Book& book, UInt64 h) {
  for (size_t i = 0; i < book.rows.size(); ++i) h = expectedSum(book.rows[i], mix(h, book.keys[i]));
  return h;
}

}  // namespace owire_cases

#endif  // ORVO_BENCH_OWIRE_CASES_H_
