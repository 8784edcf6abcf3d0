// Set definitions and set-defined rows: every packed set code at its limits,
// blank forms, refusals, rows written in place, element rows, databases.
#include <cfloat>
#include <climits>

#include "owire_test_util.h"

using namespace owire_test;

namespace {

struct Db {
  OwfLocalFieldSetDefDb field;
  OwfLocalElementSetDefDb element;
  Db() {
    for (auto& d : field.definitions) d = OwfFieldSetDef{OWF_SET_DEF_FREE, 0, nullptr};
    for (auto& d : element.definitions) d = OwfElementSetDef{OWF_SET_DEF_FREE, 0, nullptr};
    field.memory = element.memory = OwfBuffer{0, nullptr};
  }
};

union Value {
  Int64 i;
  UInt64 u;
  float f;
  double d;
  OwfReal r;
  OwfDate date;
  OwfTime time;
  OwfDateTime dt;
  OwfBuffer b;
};

struct Row {
  UInt8 code;
  UInt8 type;  // the value's type
  Value v;
  size_t width;  // bytes of the row
};

std::vector<Row> limitRows() {
  std::vector<Row> rows;
  auto add = [&](UInt8 code, UInt8 type, Value v, size_t w) { rows.push_back(Row{code, type, v, w}); };
  Value v{};
  v.i = INT8_MIN; add(64, 3, v, 1);
  v.i = INT8_MAX; add(64, 3, v, 1);
  v.u = UINT8_MAX; add(65, 4, v, 1);
  v.i = INT16_MIN; add(66, 3, v, 2);
  v.u = UINT16_MAX; add(67, 4, v, 2);
  v.i = INT32_MIN; add(68, 3, v, 4);
  v.u = UINT32_MAX; add(69, 4, v, 4);
  v.i = INT64_MIN; add(70, 3, v, 8);
  v.i = INT64_MAX; add(70, 3, v, 8);
  v.u = UINT64_MAX; add(71, 4, v, 8);
  v.u = 0; add(71, 4, v, 8);
  v.f = FLT_MAX; add(72, 5, v, 4);
  v.d = -DBL_MAX; add(73, 6, v, 8);
  v.r = OwfReal{0, 10, INT32_MIN}; add(74, 8, v, 5);
  v.r = OwfReal{0, 0, 5}; add(74, 8, v, 2);
  v.r = OwfReal{0, 30, INT64_MAX}; add(75, 8, v, 9);
  v.r = OwfReal{0, 14, -300}; add(75, 8, v, 3);
  v.r = OwfReal{0, 33, 0}; add(75, 8, v, 2);
  v.date = OwfDate{31, 12, 65535}; add(76, 9, v, 4);
  v.time = OwfTime{23, 59, 59, 0}; add(77, 10, v, 3);
  v.time = OwfTime{23, 59, 59, 999}; add(78, 10, v, 5);
  v.dt = OwfDateTime{{1, 1, 0}, {0, 0, 1, 0}}; add(79, 11, v, 7);
  v.dt = OwfDateTime{{31, 12, 9999}, {23, 59, 59, 999}}; add(80, 11, v, 9);
  return rows;
}

void expectValue(OwfDecodeIterator* it, const Row& row) {
  Value out{};
  switch (row.type) {
    case 3: ASSERT_EQ(0, owireDecodeInt(it, &out.i)); EXPECT_EQ(row.v.i, out.i); break;
    case 4: ASSERT_EQ(0, owireDecodeUInt(it, &out.u)); EXPECT_EQ(row.v.u, out.u); break;
    case 5: ASSERT_EQ(0, owireDecodeFloat(it, &out.f)); EXPECT_EQ(row.v.f, out.f); break;
    case 6: ASSERT_EQ(0, owireDecodeDouble(it, &out.d)); EXPECT_EQ(row.v.d, out.d); break;
    case 8:
      ASSERT_EQ(0, owireDecodeReal(it, &out.r));
      EXPECT_EQ(row.v.r.hint, out.r.hint);
      EXPECT_EQ(row.v.r.value, out.r.value);
      break;
    case 9:
      ASSERT_EQ(0, owireDecodeDate(it, &out.date));
      EXPECT_EQ(row.v.date.day, out.date.day);
      EXPECT_EQ(row.v.date.year, out.date.year);
      break;
    case 10:
      ASSERT_EQ(0, owireDecodeTime(it, &out.time));
      EXPECT_EQ(row.v.time.second, out.time.second);
      EXPECT_EQ(row.v.time.millisecond, out.time.millisecond);
      break;
    case 11:
      ASSERT_EQ(0, owireDecodeDateTime(it, &out.dt));
      EXPECT_EQ(row.v.dt.date.year, out.dt.date.year);
      EXPECT_EQ(row.v.dt.time.second, out.dt.time.second);
      EXPECT_EQ(row.v.dt.time.millisecond, out.dt.time.millisecond);
      break;
  }
}

}  // namespace

TEST(OwireSetDefs, EveryPackedCodeAtItsLimitsInAFieldList) {
  const std::vector<Row> rows = limitRows();
  std::vector<OwfFieldSetDefEntry> entries;
  for (size_t i = 0; i < rows.size(); ++i)
    entries.push_back(OwfFieldSetDefEntry{static_cast<Int16>(i + 1), rows[i].code});
  Db db;
  db.field.definitions[5] = OwfFieldSetDef{5, static_cast<UInt8>(entries.size()), entries.data()};
  for (UInt32 capacity : {16u, 4096u}) {
    Enc e(capacity);
    OwfFieldList l{};
    l.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID | OWF_FLF_HAS_STANDARD_DATA;
    l.setId = 5;
    ASSERT_EQ(0, e.init([&] { return owireEncodeFieldListInit(&e.it, &l, &db.field, 0); },
                        [&] { return owireEncodeFieldListComplete(&e.it, false); }));
    for (const Row& row : rows) {
      OwfFieldEntry f{0, row.type, {0, nullptr}};
      ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &row.v); })) << int(row.code);
    }
    EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
    Int64 extra = 5;
    OwfFieldEntry f{999, 3, {0, nullptr}};
    ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &extra); }));
    ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));

    Dec d(e.bytes());
    OwfFieldList out;
    ASSERT_EQ(0, owireDecodeFieldList(&d.it, &out, &db.field));
    EXPECT_EQ(5, out.setId);
    size_t total = 0;
    for (const Row& row : rows) total += row.width;
    EXPECT_EQ(total, out.encSetData.length);  // packed widths, no prefixes
    EXPECT_EQ(rows.size() + 1, d.it.levels[0].itemCount);
    EXPECT_EQ(&db.field.definitions[5], d.it.levels[0].fieldSetDef);
    for (size_t i = 0; i < rows.size(); ++i) {
      OwfFieldEntry fe;
      ASSERT_EQ(0, owireDecodeFieldEntry(&d.it, &fe));
      EXPECT_EQ(static_cast<Int16>(i + 1), fe.fieldId);
      EXPECT_EQ(rows[i].type, fe.dataType);
      EXPECT_TRUE(d.inside(fe.encData));
      expectValue(&d.it, rows[i]);
    }
    OwfFieldEntry fe;
    ASSERT_EQ(0, owireDecodeFieldEntry(&d.it, &fe));
    EXPECT_EQ(999, fe.fieldId);
    EXPECT_EQ(0, fe.dataType);
    EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d.it, &fe));

    // Without the definition: the count still holds the rows, which are
    // skipped; only the standard entry is read.
    Dec m(e.bytes());
    ASSERT_EQ(0, owireDecodeFieldList(&m.it, &out, nullptr));
    EXPECT_EQ(rows.size() + 1, m.it.levels[0].itemCount);
    EXPECT_EQ(nullptr, m.it.levels[0].fieldSetDef);
    ASSERT_EQ(0, owireDecodeFieldEntry(&m.it, &fe));
    EXPECT_EQ(999, fe.fieldId);
    EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&m.it, &fe));
  }
}

TEST(OwireSetDefs, BlankFormsRefusalsAndPreEncodedRows) {
  const UInt8 blankable[] = {74, 75, 76, 77, 78, 79, 80};
  for (UInt8 code : blankable) {
    OwfFieldSetDefEntry entry{1, code};
    Db db;
    db.field.definitions[0] = OwfFieldSetDef{0, 1, &entry};
    Enc e;
    OwfFieldList l{};
    l.flags = OWF_FLF_HAS_SET_DATA;
    ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &l, &db.field, 0));
    OwfFieldEntry f{1, 0, {0, nullptr}};
    ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &f, nullptr)) << int(code);
    ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
    Dec d(e.bytes());
    OwfFieldList out;
    ASSERT_EQ(0, owireDecodeFieldList(&d.it, &out, &db.field));
    OwfFieldEntry fe;
    ASSERT_EQ(0, owireDecodeFieldEntry(&d.it, &fe));
    char text[64];
    OwfBuffer tb{sizeof text, text};
    EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireEncodedPrimitiveToString(&d.it, fe.dataType, &tb)) << int(code);
  }
  // Integers and floats have no packed blank; values must fit.
  const struct {
    UInt8 code;
    UInt8 type;
    Int64 value;
  } refused[] = {{64, 3, 128}, {65, 4, 256}, {66, 3, -40000}, {67, 3, -1}, {68, 4, 1LL << 32}};
  for (const auto& r : refused) {
    OwfFieldSetDefEntry entry{1, r.code};
    Db db;
    db.field.definitions[0] = OwfFieldSetDef{0, 1, &entry};
    Enc e;
    OwfFieldList l{};
    l.flags = OWF_FLF_HAS_SET_DATA;
    ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &l, &db.field, 0));
    OwfFieldEntry f{1, r.type, {0, nullptr}};
    EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeFieldEntry(&e.it, &f, &r.value)) << int(r.code);
    EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeFieldEntry(&e.it, &f, nullptr)) << int(r.code);
    EXPECT_EQ(5, encodeLevelState(&e.it));  // still waiting for the row
  }
  OwfFieldSetDefEntry timeEntry{1, OWF_SET_TIME_3};
  Db tdb;
  tdb.field.definitions[0] = OwfFieldSetDef{0, 1, &timeEntry};
  Enc te;
  OwfFieldList tl{};
  tl.flags = OWF_FLF_HAS_SET_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&te.it, &tl, &tdb.field, 0));
  OwfTime withMs{1, 2, 3, 4};
  OwfFieldEntry tf{1, 10, {0, nullptr}};
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeFieldEntry(&te.it, &tf, &withMs));

  // Pre-encoded standard content is repacked into the set's form.
  OwfFieldSetDefEntry two[2] = {{1, OWF_SET_INT_4}, {2, OWF_SET_REAL_4RB}};
  Db db;
  db.field.definitions[2] = OwfFieldSetDef{2, 2, two};
  Enc e;
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID;
  l.setId = 2;
  ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &l, &db.field, 0));
  const char minusTwo = static_cast<char>(0xFE);
  OwfFieldEntry f1{0, 3, {1, const_cast<char*>(&minusTwo)}};
  ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &f1, nullptr));
  const char real[3] = {12, 0x39, 0x30};  // 123.45
  OwfFieldEntry f2{0, 8, {3, const_cast<char*>(real)}};
  ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &f2, nullptr));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  EXPECT_EQ("FL{6 2 f1=-2 f2=123.45}", [&] {
    Dec d(e.bytes());
    orvo::owire::Walker w;
    w.walk(&d.it, 132, &db.field);
    return w.out;
  }());
  // Pre-encoded set data in the record: copied as it is.
  OwfFieldList copy{};
  copy.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID;
  copy.setId = 2;
  {
    Dec d(e.bytes());
    OwfFieldList out;
    ASSERT_EQ(0, owireDecodeFieldList(&d.it, &out, &db.field));
    copy.encSetData = out.encSetData;
    Enc c;
    ASSERT_EQ(0, owireEncodeFieldListInit(&c.it, &copy, &db.field, 0));
    EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&c.it));
    ASSERT_EQ(0, owireEncodeFieldListComplete(&c.it, true));
    EXPECT_EQ(e.bytes(), c.bytes());
  }
}

TEST(OwireSetDefs, RowsWrittenInPlace) {
  // A nested field list and a packed real, both opened with EntryInit.
  OwfFieldSetDefEntry entries[3] = {{1, 132}, {2, OWF_SET_REAL_8RB}, {3, 17}};
  Db db;
  db.field.definitions[1] = OwfFieldSetDef{1, 3, entries};
  Enc e(16);
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID;
  l.setId = 1;
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldListInit(&e.it, &l, &db.field, 0); },
                      [&] { return owireEncodeFieldListComplete(&e.it, false); }));
  OwfFieldEntry f{0, 132, {0, nullptr}};
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldEntryInit(&e.it, &f, 0); },
                      [&] { return owireEncodeFieldEntryComplete(&e.it, false); }));
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
  OwfFieldList inner{};
  inner.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldListInit(&e.it, &inner, nullptr, 0); },
                      [&] { return owireEncodeFieldListComplete(&e.it, false); }));
  UInt64 u = 77;
  OwfFieldEntry fu{10, 4, {0, nullptr}};
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &fu, &u); }));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, true));
  EXPECT_EQ(5, encodeLevelState(&e.it));
  f.dataType = 8;
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldEntryInit(&e.it, &f, 0); },
                      [&] { return owireEncodeFieldEntryComplete(&e.it, false); }));
  OwfReal r{0, 12, -98765};
  ASSERT_EQ(0, e.step([&] { return owireEncodePrimitiveType(&e.it, 8, &r); }));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, true));
  // A rolled-back row is written again.
  f.dataType = 17;
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&e.it, &f, 0));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, false));
  EXPECT_EQ(5, encodeLevelState(&e.it));
  OwfBuffer s = buf("last");
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &s); }));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  Dec d(e.bytes());
  orvo::owire::Walker w;
  w.walk(&d.it, 132, &db.field);
  EXPECT_EQ("FL{6 3 f1=FL{8 1 f10=M} f2=-987.65 f3=last}", w.out);
}

TEST(OwireSetDefs, ElementRowsAndDatabasesOnTheWire) {
  std::string n1 = "BID", n2 = "ASK", n3 = "NAME";
  OwfElementSetDefEntry entries[3] = {{buf(n1), OWF_SET_REAL_4RB}, {buf(n2), OWF_SET_UINT_2}, {buf(n3), 17}};
  OwfFieldSetDefEntry fentries[2] = {{-7, OWF_SET_DATE_4}, {32767, 8}};
  Db db;
  db.element.definitions[15] = OwfElementSetDef{15, 3, entries};
  db.field.definitions[0] = OwfFieldSetDef{0, 2, fentries};
  db.field.definitions[9] = OwfFieldSetDef{9, 0, nullptr};

  // Vector of element lists with the definitions on the wire.
  Enc e(16);
  OwfVector v{};
  v.flags = OWF_VTF_HAS_SET_DEFS;
  v.containerType = 133;
  ASSERT_EQ(0, e.init([&] { return owireEncodeVectorInit(&e.it, &v, 0, 0); },
                      [&] { return owireEncodeVectorComplete(&e.it, false); }));
  EXPECT_EQ(3, encodeLevelState(&e.it));
  ASSERT_EQ(0, e.init([&] { return owireEncodeLocalElementSetDefDb(&e.it, &db.element); },
                      [&] { return owireEncodeVectorSetDefsComplete(&e.it, false); }));
  ASSERT_EQ(0, e.step([&] { return owireEncodeVectorSetDefsComplete(&e.it, true); }));
  for (UInt32 i = 0; i < 2; ++i) {
    OwfVectorEntry ve{};
    ve.action = 1;
    ve.index = i;
    ASSERT_EQ(0, e.init([&] { return owireEncodeVectorEntryInit(&e.it, &ve, 0); },
                        [&] { return owireEncodeVectorEntryComplete(&e.it, false); }));
    OwfElementList l{};
    l.flags = OWF_ELF_HAS_SET_DATA | OWF_ELF_HAS_SET_ID | OWF_ELF_HAS_STANDARD_DATA;
    l.setId = 15;
    ASSERT_EQ(0, e.init([&] { return owireEncodeElementListInit(&e.it, &l, &db.element, 0); },
                        [&] { return owireEncodeElementListComplete(&e.it, false); }));
    OwfReal r{0, 12, 1000 + i};
    UInt64 u = 65535;
    OwfBuffer s = buf("NAME");
    OwfElementEntry el{{0, nullptr}, 8, {0, nullptr}};
    ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &el, &r); }));
    el.dataType = 4;
    ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &el, &u); }));
    el.dataType = 17;
    ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &el, &s); }));
    std::string longName(300, 'n');
    OwfElementEntry extra{buf(longName), 3, {0, nullptr}};
    Int64 x = -1;
    ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &extra, &x); }));
    ASSERT_EQ(0, owireEncodeElementListComplete(&e.it, true));
    ASSERT_EQ(0, owireEncodeVectorEntryComplete(&e.it, true));
  }
  ASSERT_EQ(0, owireEncodeVectorComplete(&e.it, true));
  const std::string text = walk(e.bytes(), 136);
  EXPECT_NE(std::string::npos, text.find("\"BID\":8=10.00 \"ASK\":4=65535 \"NAME\":17=NAME")) << text;
  EXPECT_NE(std::string::npos, text.find("\"BID\":8=10.01")) << text;

  Dec d(e.bytes());
  OwfVector out;
  ASSERT_EQ(0, owireDecodeVector(&d.it, &out));
  char mem[OWF_ELEMENT_SET_DEF_DB_MEMORY];
  OwfLocalElementSetDefDb rdb;
  rdb.memory = OwfBuffer{sizeof mem, mem};
  ASSERT_EQ(0, owireDecodeLocalElementSetDefDb(&d.it, &rdb));
  ASSERT_EQ(3, rdb.definitions[15].count);
  EXPECT_EQ("ASK", str(rdb.definitions[15].entries[1].name));
  EXPECT_TRUE(d.inside(rdb.definitions[15].entries[1].name));  // names point into the input
  EXPECT_EQ(OWF_SET_UINT_2, rdb.definitions[15].entries[1].dataType);
  OwfVectorEntry ve;
  ASSERT_EQ(0, owireDecodeVectorEntry(&d.it, &ve));
  OwfElementList l;
  ASSERT_EQ(0, owireDecodeElementList(&d.it, &l, &rdb));
  EXPECT_EQ(&rdb.definitions[15], d.it.levels[1].elementSetDef);
  EXPECT_EQ(4, d.it.levels[1].itemCount);
  OwfElementEntry el;
  ASSERT_EQ(0, owireDecodeElementEntry(&d.it, &el));
  EXPECT_EQ("BID", str(el.name));
  EXPECT_EQ(8, el.dataType);

  // A field database on its own, and its refusals.
  Enc f;
  ASSERT_EQ(0, owireEncodeLocalFieldSetDefDb(&f.it, &db.field));
  Dec fd(f.bytes());
  char fmem[OWF_FIELD_SET_DEF_DB_MEMORY];
  OwfLocalFieldSetDefDb fdb;
  fdb.memory = OwfBuffer{sizeof fmem, fmem};
  ASSERT_EQ(0, owireDecodeLocalFieldSetDefDb(&fd.it, &fdb));
  EXPECT_EQ(2, fdb.definitions[0].count);
  EXPECT_EQ(-7, fdb.definitions[0].entries[0].fieldId);
  EXPECT_EQ(32767, fdb.definitions[0].entries[1].fieldId);
  EXPECT_EQ(9, fdb.definitions[9].setId);
  EXPECT_EQ(0, fdb.definitions[9].count);
  EXPECT_EQ(OWF_SET_DEF_FREE, fdb.definitions[1].setId);
  Dec small(f.bytes());
  char tiny[4];
  fdb.memory = OwfBuffer{sizeof tiny, tiny};
  EXPECT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireDecodeLocalFieldSetDefDb(&small.it, &fdb));
  EXPECT_EQ(OWF_SET_DEF_FREE, fdb.definitions[0].setId);
  Dec bad(std::string("\x01\x10\x00", 3));  // set id 16
  fdb.memory = OwfBuffer{sizeof fmem, fmem};
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireDecodeLocalFieldSetDefDb(&bad.it, &fdb));
  OwfFieldSetDefEntry badCode{1, 100};
  Db wrong;
  wrong.field.definitions[0] = OwfFieldSetDef{0, 1, &badCode};
  Enc w;
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeLocalFieldSetDefDb(&w.it, &wrong.field));
}
