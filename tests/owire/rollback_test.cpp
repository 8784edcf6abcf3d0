// Buffer exhaustion: every encoding call that runs out of room leaves the
// iterator so that the matching ...Complete(iter, false) rolls the open item
// back, and after owireRealignEncodeIteratorBuffer the call succeeds. A whole
// nested write started from a tiny buffer gives the same bytes as one started
// from a large buffer.
#include "owire_test_util.h"

using namespace owire_test;

namespace {

struct Defs {
  OwfFieldSetDefEntry fields[3] = {{22, OWF_SET_REAL_8RB}, {25, OWF_SET_UINT_4}, {5, OWF_SET_TIME_5}};
  OwfElementSetDefEntry elements[2];
  OwfLocalFieldSetDefDb fdb;
  OwfLocalElementSetDefDb edb;
  Defs() {
    elements[0] = OwfElementSetDefEntry{buf("Name"), 17};
    elements[1] = OwfElementSetDefEntry{buf("Size"), OWF_SET_INT_2};
    for (auto& d : fdb.definitions) d = OwfFieldSetDef{OWF_SET_DEF_FREE, 0, nullptr};
    for (auto& d : edb.definitions) d = OwfElementSetDef{OWF_SET_DEF_FREE, 0, nullptr};
    fdb.definitions[2] = OwfFieldSetDef{2, 3, fields};
    edb.definitions[1] = OwfElementSetDef{1, 2, elements};
    fdb.memory = edb.memory = OwfBuffer{0, nullptr};
  }
};

// A field list row with set-defined data and standard data, one standard
// entry holding an array, one holding an element list.
void fieldRow(Enc& e, const Defs& defs, int n) {
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID | OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
  l.setId = 2;
  l.dictionaryId = 1;
  l.fieldListNum = static_cast<Int16>(n);
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldListInit(&e.it, &l, &defs.fdb, 0); },
                      [&] { return owireEncodeFieldListComplete(&e.it, false); }));
  OwfReal r{0, 12, 10000 + n};
  UInt64 u = static_cast<UInt64>(n) * 1000;
  OwfTime t{9, 30, static_cast<UInt8>(n % 60), 123};
  OwfFieldEntry f{0, 8, {0, nullptr}};
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &r); }));
  f.dataType = 4;
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &u); }));
  f.dataType = 10;
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &f, &t); }));
  const std::string name = "ROW-" + std::to_string(n) + std::string(static_cast<size_t>(n % 5) * 40, '*');
  OwfBuffer nb = buf(name);
  OwfFieldEntry s{3, 17, {0, nullptr}};
  ASSERT_EQ(0, e.step([&] { return owireEncodeFieldEntry(&e.it, &s, &nb); }));
  // An array, written in place.
  OwfFieldEntry a{30, 15, {0, nullptr}};
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldEntryInit(&e.it, &a, 0); },
                      [&] { return owireEncodeFieldEntryComplete(&e.it, false); }));
  OwfArray arr{4, 0, {0, nullptr}};
  ASSERT_EQ(0, e.init([&] { return owireEncodeArrayInit(&e.it, &arr); },
                      [&] { return owireEncodeArrayComplete(&e.it, false); }));
  for (UInt64 k = 0; k < static_cast<UInt64>(n % 4) + 1; ++k) {
    UInt64 item = k << (8 * k);
    ASSERT_EQ(0, e.step([&] { return owireEncodeArrayEntry(&e.it, nullptr, &item); }));
  }
  ASSERT_EQ(0, owireEncodeArrayComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, true));
  // An element list with set data, written in place.
  OwfFieldEntry el{31, 133, {0, nullptr}};
  ASSERT_EQ(0, e.init([&] { return owireEncodeFieldEntryInit(&e.it, &el, 0); },
                      [&] { return owireEncodeFieldEntryComplete(&e.it, false); }));
  OwfElementList list{};
  list.flags = OWF_ELF_HAS_SET_DATA | OWF_ELF_HAS_SET_ID | OWF_ELF_HAS_STANDARD_DATA;
  list.setId = 1;
  ASSERT_EQ(0, e.init([&] { return owireEncodeElementListInit(&e.it, &list, &defs.edb, 0); },
                      [&] { return owireEncodeElementListComplete(&e.it, false); }));
  OwfElementEntry ee{{0, nullptr}, 17, {0, nullptr}};
  ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &ee, &nb); }));
  Int64 size = -n;
  ee.dataType = 3;
  ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &ee, &size); }));
  OwfState st{1, 1, 0, buf("fine")};
  OwfElementEntry se{buf("State"), 13, {0, nullptr}};
  ASSERT_EQ(0, e.step([&] { return owireEncodeElementEntry(&e.it, &se, &st); }));
  ASSERT_EQ(0, owireEncodeElementListComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
}

// The whole scenario: a map with definitions (retried as the data model
// does), an in-place summary, entries with rows, a delete entry, and a nested
// vector holding a filter list and a series.
std::string scenario(UInt32 capacity, int* grows = nullptr) {
  Defs defs;
  Enc e(capacity);
  OwfMap m{};
  m.flags = OWF_MPF_HAS_SET_DEFS | OWF_MPF_HAS_SUMMARY_DATA | OWF_MPF_HAS_TOTAL_COUNT_HINT |
            OWF_MPF_HAS_KEY_FIELD_ID | OWF_MPF_HAS_PER_ENTRY_PERM_DATA;
  m.containerType = 132;
  m.keyPrimitiveType = 17;
  m.keyFieldId = 3;
  m.totalCountHint = 12;
  EXPECT_EQ(0, e.init([&] { return owireEncodeMapInit(&e.it, &m, 0, 0); },
                      [&] { return owireEncodeMapComplete(&e.it, false); }));
  // Definitions: as DataDefWriteIterator::complete does it.
  auto writeDb = [&] {
    EXPECT_EQ(0, e.init([&] { return owireEncodeLocalFieldSetDefDb(&e.it, &defs.fdb); },
                        [&] { return owireEncodeMapSetDefsComplete(&e.it, false); }));
  };
  writeDb();
  int ret;
  while ((ret = owireEncodeMapSetDefsComplete(&e.it, true)) == OWIRE_RET_BUFFER_TOO_SMALL) {
    EXPECT_EQ(0, owireEncodeMapComplete(&e.it, false));
    e.grow();
    owireEncodeMapInit(&e.it, &m, 0, 0);
    writeDb();
  }
  EXPECT_EQ(0, ret);
  EXPECT_EQ(EncodeLevelSummary, encodeLevelState(&e.it));
  fieldRow(e, defs, 0);
  EXPECT_EQ(0, e.step([&] { return owireEncodeMapSummaryDataComplete(&e.it, true); }));
  for (int n = 1; n <= 10; ++n) {
    const std::string key = "KEY" + std::to_string(n);
    OwfBuffer kb = buf(key);
    OwfMapEntry me{};
    me.action = static_cast<UInt8>(1 + n % 2);
    me.flags = n % 3 ? OWF_MPEF_HAS_PERM_DATA : 0;
    me.permData = buf("perm");
    EXPECT_EQ(0, e.init([&] { return owireEncodeMapEntryInit(&e.it, &me, &kb, 0); },
                        [&] { return owireEncodeMapEntryComplete(&e.it, false); }));
    fieldRow(e, defs, n);
    EXPECT_EQ(0, owireEncodeMapEntryComplete(&e.it, true));
  }
  OwfMapEntry del{};
  del.action = 3;
  del.encKey = buf("GONE");
  EXPECT_EQ(0, e.step([&] { return owireEncodeMapEntry(&e.it, &del, nullptr); }));
  EXPECT_EQ(0, owireEncodeMapComplete(&e.it, true));
  if (grows) *grows = e.grows;
  return e.bytes();
}

std::string vectorScenario(UInt32 capacity) {
  Enc e(capacity);
  OwfVector v{};
  v.flags = OWF_VTF_HAS_SUMMARY_DATA | OWF_VTF_HAS_PER_ENTRY_PERM_DATA;
  v.containerType = 135;
  EXPECT_EQ(0, e.init([&] { return owireEncodeVectorInit(&e.it, &v, 0, 0); },
                      [&] { return owireEncodeVectorComplete(&e.it, false); }));
  // The summary: raw bytes copied in place by the caller.
  const std::string summary(150, 'S');
  while (static_cast<size_t>(e.it.endPos - e.it.curPos) < summary.size()) e.grow();
  std::memcpy(e.it.curPos, summary.data(), summary.size());
  e.it.curPos += summary.size();
  EXPECT_EQ(0, e.step([&] { return owireEncodeVectorSummaryDataComplete(&e.it, true); }));
  for (UInt32 i = 0; i < 6; ++i) {
    OwfVectorEntry ve{};
    ve.action = static_cast<UInt8>(1 + i % 5);
    ve.index = i * 70000;
    ve.flags = OWF_VTEF_HAS_PERM_DATA;
    ve.permData = buf("pv");
    EXPECT_EQ(0, e.init([&] { return owireEncodeVectorEntryInit(&e.it, &ve, 0); },
                        [&] { return owireEncodeVectorEntryComplete(&e.it, false); }));
    OwfFilterList fl{};
    fl.containerType = 138;
    EXPECT_EQ(0, e.init([&] { return owireEncodeFilterListInit(&e.it, &fl); },
                        [&] { return owireEncodeFilterListComplete(&e.it, false); }));
    for (UInt8 id = 1; id <= 2; ++id) {
      OwfFilterEntry fe{};
      fe.action = 1;
      fe.id = id;
      EXPECT_EQ(0, e.init([&] { return owireEncodeFilterEntryInit(&e.it, &fe, 0); },
                          [&] { return owireEncodeFilterEntryComplete(&e.it, false); }));
      OwfSeries s{};
      s.containerType = 4;
      EXPECT_EQ(0, e.init([&] { return owireEncodeSeriesInit(&e.it, &s, 0, 0); },
                          [&] { return owireEncodeSeriesComplete(&e.it, false); }));
      for (UInt64 k = 0; k < i + id; ++k) {
        OwfSeriesEntry se{};
        EXPECT_EQ(0, e.init([&] { return owireEncodeSeriesEntryInit(&e.it, &se, 0); },
                            [&] { return owireEncodeSeriesEntryComplete(&e.it, false); }));
        UInt64 value = k * 1000003;
        EXPECT_EQ(0, e.step([&] { return owireEncodePrimitiveType(&e.it, 4, &value); }));
        EXPECT_EQ(0, owireEncodeSeriesEntryComplete(&e.it, true));
      }
      EXPECT_EQ(0, owireEncodeSeriesComplete(&e.it, true));
      EXPECT_EQ(EncodeLevelFilterEntryDone, encodeLevelState(&e.it));
      EXPECT_EQ(0, owireEncodeFilterEntryComplete(&e.it, true));
    }
    EXPECT_EQ(0, owireEncodeFilterListComplete(&e.it, true));
    EXPECT_EQ(0, owireEncodeVectorEntryComplete(&e.it, true));
  }
  EXPECT_EQ(0, owireEncodeVectorComplete(&e.it, true));
  return e.bytes();
}

}  // namespace

TEST(OwireRollback, WholeNestedWriteFromAnyStartingSizeGivesTheSameBytes) {
  int grows = 0;
  const std::string reference = scenario(1 << 20, &grows);
  EXPECT_EQ(0, grows);
  ASSERT_GT(reference.size(), 1000u);
  const int startGrows = [&] {
    int g;
    scenario(16, &g);
    return g;
  }();
  EXPECT_GE(startGrows, 6);
  EXPECT_EQ(reference, scenario(16));
  for (UInt32 capacity = 1; capacity <= 300; ++capacity) {
    ASSERT_EQ(reference, scenario(capacity)) << "starting with " << capacity << " bytes";
  }
  const std::string text = walk(reference, 137);
  EXPECT_NE(std::string::npos, text.find("k=GONE")) << text;
  EXPECT_NE(std::string::npos, text.find("k=KEY10=FL{15 6 f22=100.10 f25=10000 f5=09:30:10.123")) << text;

  const std::string vref = vectorScenario(1 << 20);
  for (UInt32 capacity = 1; capacity <= 200; ++capacity) ASSERT_EQ(vref, vectorScenario(capacity)) << capacity;
  Dec d(vref);
  OwfVector v;
  ASSERT_EQ(0, owireDecodeVector(&d.it, &v));
  EXPECT_EQ(std::string(150, 'S'), str(v.encSummaryData));
  EXPECT_EQ(6, d.it.levels[0].itemCount);
}

TEST(OwireRollback, EachTooSmallCallRollsBackAndSucceedsAfterRealign) {
  char small[8];
  OwfBuffer sb{sizeof small, small};
  OwfEncodeIterator it;
  clearEncodeIterator(&it);
  setEncodeIteratorBuffer(&it, &sb);
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
  ASSERT_EQ(0, owireEncodeFieldListInit(&it, &l, nullptr, 0));
  const UInt32 used = getEncodedLength(&it);
  // An entry that does not fit: the level is left open for the rollback.
  OwfFieldEntry f{1, 132, {0, nullptr}};
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeFieldEntryInit(&it, &f, 0));
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&it));
  ASSERT_EQ(OWIRE_RET_SUCCESS, owireEncodeFieldEntryComplete(&it, false));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&it));
  EXPECT_EQ(used, getEncodedLength(&it));
  // A realign to a buffer smaller than what was written is refused.
  char tiny[2];
  OwfBuffer tb{sizeof tiny, tiny};
  EXPECT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireRealignEncodeIteratorBuffer(&it, &tb));
  EXPECT_EQ(&sb, it.buffer);
  // After the realign the same call succeeds.
  char big[256];
  OwfBuffer bb{sizeof big, big};
  ASSERT_EQ(0, owireRealignEncodeIteratorBuffer(&it, &bb));
  EXPECT_EQ(&bb, it.buffer);
  EXPECT_EQ(used, getEncodedLength(&it));
  EXPECT_EQ(big, it.levels[0].containerStart);
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&it, &f, 0));
  // A nested container whose Init is too small is rolled back by its own
  // Complete(false), which leaves the parent's entry open.
  it.endPos = it.curPos + 1;
  OwfFieldList inner{};
  inner.flags = OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeFieldListInit(&it, &inner, nullptr, 0));
  EXPECT_EQ(1, it.encodingLevel);
  ASSERT_EQ(0, owireEncodeFieldListComplete(&it, false));
  EXPECT_EQ(0, it.encodingLevel);
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&it));
  it.endPos = big + sizeof big;
  ASSERT_EQ(0, owireEncodeFieldListInit(&it, &inner, nullptr, 0));
  // A one-step entry that does not fit writes nothing and can be repeated.
  const UInt32 before = getEncodedLength(&it);
  it.endPos = it.curPos + 3;
  Int64 v = 1 << 20;
  OwfFieldEntry fe{2, 3, {0, nullptr}};
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeFieldEntry(&it, &fe, &v));
  EXPECT_EQ(before, getEncodedLength(&it));
  // Its matching rollback has nothing to undo and succeeds.
  ASSERT_EQ(OWIRE_RET_SUCCESS, owireEncodeFieldEntryComplete(&it, false));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&it));
  EXPECT_EQ(before, getEncodedLength(&it));
  it.endPos = big + sizeof big;
  ASSERT_EQ(0, owireEncodeFieldEntry(&it, &fe, &v));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&it, true));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&it, true));
  Dec nd(std::string(big, getEncodedLength(&it)));
  OwfFieldList outer;
  ASSERT_EQ(0, owireDecodeFieldList(&nd.it, &outer, nullptr));
  ASSERT_EQ(0, owireDecodeFieldEntry(&nd.it, &f));
  ASSERT_EQ(0, owireDecodeFieldList(&nd.it, &outer, nullptr));
  ASSERT_EQ(0, owireDecodeFieldEntry(&nd.it, &fe));
  Int64 back;
  ASSERT_EQ(0, owireDecodeInt(&nd.it, &back));
  EXPECT_EQ(v, back);

  // Summary completion and set-definition completion that do not fit.
  char mbuf[64];
  OwfBuffer mb{sizeof mbuf, mbuf};
  clearEncodeIterator(&it);
  setEncodeIteratorBuffer(&it, &mb);
  OwfSeries s{};
  s.flags = OWF_SEF_HAS_SUMMARY_DATA | OWF_SEF_HAS_TOTAL_COUNT_HINT | OWF_SEF_HAS_SET_DEFS;
  s.totalCountHint = 1u << 30;
  s.containerType = 133;
  ASSERT_EQ(0, owireEncodeSeriesInit(&it, &s, 0, 0));
  OwfLocalElementSetDefDb edb;
  for (auto& d : edb.definitions) d = OwfElementSetDef{OWF_SET_DEF_FREE, 0, nullptr};
  OwfElementSetDefEntry entries[1] = {{buf("A-very-long-element-name-that-fills"), 17}};
  edb.definitions[0] = OwfElementSetDef{0, 1, entries};
  it.endPos = it.curPos + 10;
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeLocalElementSetDefDb(&it, &edb));
  ASSERT_EQ(0, owireEncodeSeriesSetDefsComplete(&it, false));
  it.endPos = mbuf + sizeof mbuf;
  ASSERT_EQ(0, owireEncodeLocalElementSetDefDb(&it, &edb));
  it.endPos = it.curPos + 2;
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeSeriesSetDefsComplete(&it, true));
  EXPECT_EQ(3, encodeLevelState(&it));
  it.endPos = mbuf + sizeof mbuf;
  ASSERT_EQ(0, owireEncodeSeriesSetDefsComplete(&it, true));
  EXPECT_EQ(EncodeLevelSummary, encodeLevelState(&it));
  const char summary[3] = {1, 2, 3};
  std::memcpy(it.curPos, summary, 3);
  it.curPos += 3;
  it.endPos = it.curPos + 5;  // the hint takes 5 bytes and the count 2
  ASSERT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owireEncodeSeriesSummaryDataComplete(&it, true));
  EXPECT_EQ(EncodeLevelSummary, encodeLevelState(&it));
  it.endPos = mbuf + sizeof mbuf;
  ASSERT_EQ(0, owireEncodeSeriesSummaryDataComplete(&it, true));
  ASSERT_EQ(0, owireEncodeSeriesComplete(&it, true));
  Dec d(std::string(mbuf, getEncodedLength(&it)));
  OwfSeries out;
  ASSERT_EQ(0, owireDecodeSeries(&d.it, &out));
  EXPECT_EQ(std::string(summary, 3), str(out.encSummaryData));
  EXPECT_EQ(1u << 30, out.totalCountHint);
}

TEST(OwireRollback, DecodingCopiesNothing) {
  const std::string bytes = scenario(4096);
  Dec d(bytes);
  OwfMap m;
  ASSERT_EQ(0, owireDecodeMap(&d.it, &m));
  EXPECT_TRUE(d.inside(m.encSetDefs) && d.inside(m.encSummaryData) && d.inside(m.encEntries));
  char mem[OWF_FIELD_SET_DEF_DB_MEMORY];
  OwfLocalFieldSetDefDb db;
  db.memory = OwfBuffer{sizeof mem, mem};
  ASSERT_EQ(0, owireDecodeLocalFieldSetDefDb(&d.it, &db));
  OwfMapEntry me;
  int entries = 0;
  while (owireDecodeMapEntry(&d.it, &me, nullptr) == OWIRE_RET_SUCCESS) {
    ++entries;
    EXPECT_TRUE(d.inside(me.encKey) && d.inside(me.permData) && d.inside(me.encData));
    if (me.action == 3) continue;
    OwfFieldList fl;
    ASSERT_EQ(0, owireDecodeFieldList(&d.it, &fl, &db));
    EXPECT_TRUE(d.inside(fl.encSetData) && d.inside(fl.encEntries));
    OwfFieldEntry fe;
    while (owireDecodeFieldEntry(&d.it, &fe) == OWIRE_RET_SUCCESS) {
      EXPECT_TRUE(d.inside(fe.encData));
      if (fe.fieldId == 31) {
        OwfElementList el;
        ASSERT_EQ(0, owireDecodeElementList(&d.it, &el, nullptr));
        OwfElementEntry ee;
        while (owireDecodeElementEntry(&d.it, &ee) == OWIRE_RET_SUCCESS) {
          EXPECT_TRUE(d.inside(ee.name) && d.inside(ee.encData));
          if (ee.dataType == 13) {
            OwfState st;
            ASSERT_EQ(0, owireDecodeState(&d.it, &st));
            EXPECT_TRUE(d.inside(st.text));
            EXPECT_EQ("fine", str(st.text));
          }
        }
      } else if (fe.fieldId == 30) {
        OwfArray a;
        ASSERT_EQ(0, owireDecodeArray(&d.it, &a));
        EXPECT_TRUE(d.inside(a.encData));
        OwfBuffer item;
        while (owireDecodeArrayEntry(&d.it, &item) == OWIRE_RET_SUCCESS) EXPECT_TRUE(d.inside(item));
      }
    }
  }
  EXPECT_EQ(11, entries);
}
