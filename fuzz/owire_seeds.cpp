// Writes the seed corpora of the codec's fuzz targets, made by the encoder:
//   owire_seeds <corpus dir>
// gives <dir>/owire_container_fuzzer/, <dir>/owire_primitive_fuzzer/ and
// <dir>/owire_setdef_fuzzer/. Each seed is: selector byte(s), then bytes.
#include <sys/stat.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "bench/owire_cases.h"
#include "orvo/owire/owire.h"

namespace {

std::string root;
int written = 0;

void put(const std::string& target, const std::string& name, const std::string& bytes) {
  const std::string dir = root + "/" + target;
  mkdir(root.c_str(), 0755);
  mkdir(dir.c_str(), 0755);
  FILE* f = std::fopen((dir + "/" + name).c_str(), "wb");
  if (!f) {
    std::perror(dir.c_str());
    return;
  }
  std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
  ++written;
}

// Runs `body` on a fresh iterator over a large buffer; returns the bytes.
std::string encode(const std::function<void(OwfEncodeIterator*)>& body) {
  static std::vector<char> mem(1 << 20);
  OwfBuffer b{static_cast<UInt32>(mem.size()), mem.data()};
  OwfEncodeIterator it;
  clearEncodeIterator(&it);
  setEncodeIteratorBuffer(&it, &b);
  body(&it);
  return std::string(mem.data(), getEncodedLength(&it));
}

OwfBuffer buf(const char* s) { return OwfBuffer{static_cast<UInt32>(std::strlen(s)), const_cast<char*>(s)}; }

std::string with(UInt8 selector, const std::string& bytes) { return std::string(1, static_cast<char>(selector)) + bytes; }

// Container selector indexes: 132 133 135 136 137 138 15.
enum { kFL = 0, kEL = 1, kFT = 2, kVEC = 3, kMAP = 4, kSER = 5, kAR = 6 };

OwfLocalFieldSetDefDb fieldDb(OwfFieldSetDefEntry* entries, UInt8 count) {
  OwfLocalFieldSetDefDb db;
  for (auto& d : db.definitions) d = OwfFieldSetDef{OWF_SET_DEF_FREE, 0, nullptr};
  db.definitions[1] = OwfFieldSetDef{1, count, entries};
  db.memory = OwfBuffer{0, nullptr};
  return db;
}

}  // namespace

int main(int argc, char** argv) {
  root = argc > 1 ? argv[1] : "fuzz/corpus";
  using namespace owire_cases;
  const std::string C = "owire_container_fuzzer";

  // The benchmark cases.
  put(C, "update", with(kFL, encode([](OwfEncodeIterator* it) { encodeRow(it, makeUpdate(1)); })));
  put(C, "book", with(kMAP, encode([](OwfEncodeIterator* it) { encodeBookBuilding(it, makeBook(2, 4)); })));

  // Every packed set code in a field list, and the same rows in a map with
  // its definitions and a summary.
  static OwfFieldSetDefEntry packed[19];
  for (int i = 0; i < 17; ++i) packed[i] = OwfFieldSetDefEntry{static_cast<Int16>(100 + i), static_cast<UInt8>(64 + i)};
  packed[17] = OwfFieldSetDefEntry{117, 17};
  packed[18] = OwfFieldSetDefEntry{118, 8};
  static const OwfLocalFieldSetDefDb db = fieldDb(packed, 19);
  auto rows = [](OwfEncodeIterator* it) {
    OwfFieldList l{};
    l.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID | OWF_FLF_HAS_STANDARD_DATA;
    l.setId = 1;
    owireEncodeFieldListInit(it, &l, &db, 0);
    Int64 i = -5;
    UInt64 u = 200;
    float f = 1.5f;
    double d = -2.25;
    OwfReal r{0, 12, 12345};
    OwfDate date{7, 3, 2024};
    OwfTime t3{9, 30, 15, 0}, t5{9, 30, 15, 250};
    OwfDateTime dt7{{7, 3, 2024}, {9, 30, 15, 0}}, dt9{{7, 3, 2024}, {9, 30, 15, 250}};
    OwfBuffer s = buf("text");
    const void* values[19] = {&i, &u, &i, &u, &i, &u, &i, &u, &f, &d, &r, &r, &date, &t3, &t5, &dt7, &dt9, &s, &r};
    const UInt8 types[19] = {3, 4, 3, 4, 3, 4, 3, 4, 5, 6, 8, 8, 9, 10, 10, 11, 11, 17, 8};
    for (int k = 0; k < 19; ++k) {
      OwfFieldEntry e{0, types[k], {0, nullptr}};
      owireEncodeFieldEntry(it, &e, values[k]);
    }
    OwfFieldEntry e{1, 3, {0, nullptr}};
    owireEncodeFieldEntry(it, &e, &i);
    owireEncodeFieldListComplete(it, true);
  };
  put(C, "setrows", with(kFL, encode(rows)));
  put(C, "map_defs_summary", with(kMAP, encode([&](OwfEncodeIterator* it) {
        OwfMap m{};
        m.flags = OWF_MPF_HAS_SET_DEFS | OWF_MPF_HAS_SUMMARY_DATA | OWF_MPF_HAS_KEY_FIELD_ID |
                  OWF_MPF_HAS_TOTAL_COUNT_HINT;
        m.containerType = 132;
        m.keyPrimitiveType = 17;
        m.keyFieldId = 3;
        m.totalCountHint = 2;
        owireEncodeMapInit(it, &m, 0, 0);
        owireEncodeLocalFieldSetDefDb(it, &db);
        owireEncodeMapSetDefsComplete(it, true);
        encodeRow(it, makeUpdate(3));
        owireEncodeMapSummaryDataComplete(it, true);
        for (const char* key : {"A", "B"}) {
          OwfMapEntry e{};
          e.action = 1;
          e.flags = OWF_MPEF_HAS_PERM_DATA;
          e.permData = buf("pe");
          OwfBuffer k = buf(key);
          owireEncodeMapEntryInit(it, &e, &k, 0);
          rows(it);
          owireEncodeMapEntryComplete(it, true);
        }
        OwfMapEntry del{};
        del.action = 3;
        del.encKey = buf("C");
        owireEncodeMapEntry(it, &del, nullptr);
        owireEncodeMapComplete(it, true);
      })));

  // Element lists with set data, series of element lists, vector, filter list.
  static OwfElementSetDefEntry elementDefs[3] = {{buf("BID"), OWF_SET_REAL_4RB}, {buf("ASK"), OWF_SET_REAL_8RB},
                                                 {buf("NAME"), 17}};
  static OwfLocalElementSetDefDb edb;
  for (auto& d : edb.definitions) d = OwfElementSetDef{OWF_SET_DEF_FREE, 0, nullptr};
  edb.definitions[0] = OwfElementSetDef{0, 3, elementDefs};
  auto elementRow = [](OwfEncodeIterator* it, int n) {
    OwfElementList l{};
    l.flags = OWF_ELF_HAS_SET_DATA | OWF_ELF_HAS_STANDARD_DATA | OWF_ELF_HAS_ELEMENT_LIST_INFO;
    l.elementListNum = 5;
    owireEncodeElementListInit(it, &l, &edb, 0);
    OwfReal r{0, 14, n};
    OwfBuffer s = buf("name");
    OwfElementEntry e{{0, nullptr}, 8, {0, nullptr}};
    owireEncodeElementEntry(it, &e, &r);
    owireEncodeElementEntry(it, &e, &r);
    e.dataType = 17;
    owireEncodeElementEntry(it, &e, &s);
    OwfElementEntry std{buf("QOS"), 12, {0, nullptr}};
    OwfQos q{3, 3, 1, 500, 1000};
    owireEncodeElementEntry(it, &std, &q);
    OwfElementEntry st{buf("STATE"), 13, {0, nullptr}};
    OwfState state{1, 1, 0, buf("ok")};
    owireEncodeElementEntry(it, &st, &state);
    OwfElementEntry dt{buf("DT"), 11, {0, nullptr}};
    OwfDateTime v{{1, 2, 2003}, {4, 5, 6, 7}};
    owireEncodeElementEntry(it, &dt, &v);
    owireEncodeElementListComplete(it, true);
  };
  put(C, "series_elements", with(kSER, encode([&](OwfEncodeIterator* it) {
        OwfSeries s{};
        s.flags = OWF_SEF_HAS_SET_DEFS | OWF_SEF_HAS_SUMMARY_DATA | OWF_SEF_HAS_TOTAL_COUNT_HINT;
        s.containerType = 133;
        s.totalCountHint = 3;
        owireEncodeSeriesInit(it, &s, 0, 0);
        owireEncodeLocalElementSetDefDb(it, &edb);
        owireEncodeSeriesSetDefsComplete(it, true);
        elementRow(it, 0);
        owireEncodeSeriesSummaryDataComplete(it, true);
        for (int n = 1; n <= 3; ++n) {
          OwfSeriesEntry e{};
          owireEncodeSeriesEntryInit(it, &e, 0);
          elementRow(it, n);
          owireEncodeSeriesEntryComplete(it, true);
        }
        owireEncodeSeriesComplete(it, true);
      })));
  put(C, "vector", with(kVEC, encode([&](OwfEncodeIterator* it) {
        OwfVector v{};
        v.flags = OWF_VTF_HAS_PER_ENTRY_PERM_DATA | OWF_VTF_SUPPORTS_SORTING;
        v.containerType = 133;
        owireEncodeVectorInit(it, &v, 0, 0);
        for (UInt32 n = 0; n < 3; ++n) {
          OwfVectorEntry e{};
          e.action = static_cast<UInt8>(n + 1);
          e.index = n * 300;
          e.flags = OWF_VTEF_HAS_PERM_DATA;
          e.permData = buf("p");
          owireEncodeVectorEntryInit(it, &e, 0);
          OwfElementList l{};
          l.flags = OWF_ELF_HAS_STANDARD_DATA;
          owireEncodeElementListInit(it, &l, nullptr, 0);
          OwfElementEntry el{buf("N"), 4, {0, nullptr}};
          UInt64 u = n;
          owireEncodeElementEntry(it, &el, &u);
          owireEncodeElementListComplete(it, true);
          owireEncodeVectorEntryComplete(it, true);
        }
        owireEncodeVectorComplete(it, true);
      })));
  put(C, "filter", with(kFT, encode([&](OwfEncodeIterator* it) {
        OwfFilterList f{};
        f.flags = OWF_FTF_HAS_TOTAL_COUNT_HINT | OWF_FTF_HAS_PER_ENTRY_PERM_DATA;
        f.containerType = 133;
        f.totalCountHint = 2;
        owireEncodeFilterListInit(it, &f);
        OwfFilterEntry e{};
        e.action = 1;
        e.id = 1;
        owireEncodeFilterEntryInit(it, &e, 0);
        elementRow(it, 9);
        owireEncodeFilterEntryComplete(it, true);
        OwfFilterEntry g{};
        g.action = 2;
        g.id = 2;
        g.flags = OWF_FTEF_HAS_CONTAINER_TYPE | OWF_FTEF_HAS_PERM_DATA;
        g.containerType = 132;
        g.permData = buf("x");
        owireEncodeFilterEntryInit(it, &g, 0);
        encodeRow(it, makeBookRow(4));
        owireEncodeFilterEntryComplete(it, true);
        owireEncodeFilterListComplete(it, true);
      })));
  // Arrays: variable strings, fixed ints, fixed times, reals.
  put(C, "array_strings", with(kAR, encode([](OwfEncodeIterator* it) {
        OwfArray a{17, 0, {0, nullptr}};
        owireEncodeArrayInit(it, &a);
        for (const char* s : {"ACME.X", "", "WIDGET.Y"}) {
          OwfBuffer b = buf(s);
          owireEncodeArrayEntry(it, nullptr, &b);
        }
        owireEncodeArrayComplete(it, true);
      })));
  put(C, "array_fixed", with(kAR, encode([](OwfEncodeIterator* it) {
        OwfArray a{3, 4, {0, nullptr}};
        owireEncodeArrayInit(it, &a);
        for (Int64 v : {-1, 2, 100000}) owireEncodeArrayEntry(it, nullptr, &v);
        owireEncodeArrayComplete(it, true);
      })));
  put(C, "array_times", with(kAR, encode([](OwfEncodeIterator* it) {
        OwfArray a{10, 5, {0, nullptr}};
        owireEncodeArrayInit(it, &a);
        OwfTime t{1, 2, 3, 4};
        owireEncodeArrayEntry(it, nullptr, &t);
        owireEncodeArrayEntry(it, nullptr, nullptr);
        owireEncodeArrayComplete(it, true);
      })));
  put(C, "array_reals", with(kAR, encode([](OwfEncodeIterator* it) {
        OwfArray a{8, 0, {0, nullptr}};
        owireEncodeArrayInit(it, &a);
        for (UInt8 h : {0, 14, 21, 22, 30, 33}) {
          OwfReal r{0, h, -12345};
          owireEncodeArrayEntry(it, nullptr, &r);
        }
        owireEncodeArrayComplete(it, true);
      })));
  // Deep nesting: 16 levels of mixed containers.
  put(C, "deep", with(kMAP, encode([](OwfEncodeIterator* it) {
        const UInt8 chain[16] = {137, 138, 136, 135, 133, 132, 137, 138, 136, 135, 133, 132, 137, 138, 136, 132};
        for (int d = 0; d < 16; ++d) {
          const UInt8 child = d < 15 ? chain[d + 1] : 0;
          switch (chain[d]) {
            case 137: { OwfMap m{}; m.containerType = child; m.keyPrimitiveType = 4; owireEncodeMapInit(it, &m, 0, 0);
                        OwfMapEntry e{}; e.action = 1; UInt64 k = static_cast<UInt64>(d); owireEncodeMapEntryInit(it, &e, &k, 0); break; }
            case 138: { OwfSeries s{}; s.containerType = child; owireEncodeSeriesInit(it, &s, 0, 0);
                        OwfSeriesEntry e{}; owireEncodeSeriesEntryInit(it, &e, 0); break; }
            case 136: { OwfVector v{}; v.containerType = child; owireEncodeVectorInit(it, &v, 0, 0);
                        OwfVectorEntry e{}; e.action = 1; owireEncodeVectorEntryInit(it, &e, 0); break; }
            case 135: { OwfFilterList f{}; f.containerType = child; owireEncodeFilterListInit(it, &f);
                        OwfFilterEntry e{}; e.action = 1; owireEncodeFilterEntryInit(it, &e, 0); break; }
            case 133: { OwfElementList l{}; l.flags = OWF_ELF_HAS_STANDARD_DATA; owireEncodeElementListInit(it, &l, nullptr, 0);
                        OwfElementEntry e{buf("E"), child, {0, nullptr}}; owireEncodeElementEntryInit(it, &e, 0); break; }
            case 132: { OwfFieldList l{}; l.flags = OWF_FLF_HAS_STANDARD_DATA; owireEncodeFieldListInit(it, &l, nullptr, 0);
                        if (d < 15) { OwfFieldEntry e{1, child, {0, nullptr}}; owireEncodeFieldEntryInit(it, &e, 0); } break; }
          }
        }
        Int64 v = 42;
        OwfFieldEntry e{2, 3, {0, nullptr}};
        owireEncodeFieldEntry(it, &e, &v);
        for (int d = 15; d >= 0; --d) {
          switch (chain[d]) {
            case 137: if (d < 15) owireEncodeMapEntryComplete(it, true); owireEncodeMapComplete(it, true); break;
            case 138: if (d < 15) owireEncodeSeriesEntryComplete(it, true); owireEncodeSeriesComplete(it, true); break;
            case 136: if (d < 15) owireEncodeVectorEntryComplete(it, true); owireEncodeVectorComplete(it, true); break;
            case 135: if (d < 15) owireEncodeFilterEntryComplete(it, true); owireEncodeFilterListComplete(it, true); break;
            case 133: if (d < 15) owireEncodeElementEntryComplete(it, true); owireEncodeElementListComplete(it, true); break;
            case 132: if (d < 15) owireEncodeFieldEntryComplete(it, true); owireEncodeFieldListComplete(it, true); break;
          }
        }
      })));
  for (int k = 0; k < 7; ++k) put(C, "empty" + std::to_string(k), with(static_cast<UInt8>(k), ""));

  // Primitive seeds: type index byte, then the content.
  const std::string P = "owire_primitive_fuzzer";
  const UInt8 ptypes[] = {3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 130, 131, 134};
  auto prim = [&](UInt8 type, const void* v, const std::string& name) {
    int index = 0;
    while (ptypes[index] != type) ++index;
    put(P, name, with(static_cast<UInt8>(index), encode([&](OwfEncodeIterator* it) { owireEncodePrimitiveType(it, type, v); })));
  };
  Int64 imin = INT64_MIN, imax = INT64_MAX, ismall = -3;
  prim(3, &imin, "int_min");
  prim(3, &imax, "int_max");
  prim(3, &ismall, "int_small");
  UInt64 umax = UINT64_MAX, u300 = 300;
  prim(4, &umax, "uint_max");
  prim(4, &u300, "uint_300");
  float fl = 3.5f;
  double db2 = 0.1;
  prim(5, &fl, "float");
  prim(6, &db2, "double");
  for (UInt8 h : {0, 12, 14, 21, 22, 27, 30, 33, 34, 35}) {
    OwfReal r{0, h, -123456789};
    prim(8, &r, "real_" + std::to_string(h));
  }
  OwfDate date{31, 12, 2024};
  prim(9, &date, "date");
  OwfTime t2{23, 59, 0, 0}, t3{23, 59, 59, 0}, t5{23, 59, 59, 999};
  prim(10, &t2, "time2");
  prim(10, &t3, "time3");
  prim(10, &t5, "time5");
  OwfDateTime dtm{{1, 1, 2000}, {1, 2, 3, 4}};
  prim(11, &dtm, "datetime");
  OwfQos q{3, 3, 1, 100, 200}, q2{1, 1, 0, 0, 0};
  prim(12, &q, "qos_info");
  prim(12, &q2, "qos");
  OwfState st{4, 2, 17, buf("closed")};
  prim(13, &st, "state");
  UInt16 en = 1000;
  prim(14, &en, "enum");
  OwfBuffer text = buf("hello world");
  prim(17, &text, "ascii");
  put(P, "array", with(11, encode([](OwfEncodeIterator* it) {
        OwfArray a{4, 0, {0, nullptr}};
        owireEncodeArrayInit(it, &a);
        for (UInt64 v : {1u, 70000u}) owireEncodeArrayEntry(it, nullptr, &v);
        owireEncodeArrayComplete(it, true);
      })));
  put(P, "text_real", with(4, "12 3/8"));
  put(P, "text_date", with(5, "07 MAR 2024"));
  put(P, "text_time", with(6, "09:30:15.250"));

  // Set definition seeds: selector, database length, database, list.
  const std::string S = "owire_setdef_fuzzer";
  const std::string fdbBytes = encode([](OwfEncodeIterator* it) { owireEncodeLocalFieldSetDefDb(it, &db); });
  std::string fs(1, '\0');
  fs += static_cast<char>(fdbBytes.size());
  fs += fdbBytes + encode(rows);
  put(S, "field_rows", fs);
  const std::string edbBytes = encode([](OwfEncodeIterator* it) { owireEncodeLocalElementSetDefDb(it, &edb); });
  std::string es(1, '\1');
  es += static_cast<char>(edbBytes.size());
  es += edbBytes + encode([&](OwfEncodeIterator* it) { elementRow(it, 1); });
  put(S, "element_rows", es);

  std::printf("%d seeds written under %s\n", written, root.c_str());
  return 0;
}
