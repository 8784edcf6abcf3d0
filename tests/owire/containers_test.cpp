// Containers: every kind nested 16 deep, level states, item counts, decoded
// buffers pointing into the input, summary data and set definitions of the
// keyed containers, filter lists and arrays, misuse codes.
#include "owire_test_util.h"

using namespace owire_test;

namespace {

const UInt8 kKinds[] = {132, 133, 135, 136, 137, 138};

// Opens a container of `kind` whose entries hold `child`.
void openContainer(Enc& e, UInt8 kind, UInt8 child) {
  int ret = -1;
  switch (kind) {
    case 132: {
      OwfFieldList l{};
      l.flags = OWF_FLF_HAS_STANDARD_DATA | OWF_FLF_HAS_FIELD_LIST_INFO;
      l.dictionaryId = 1;
      l.fieldListNum = 77;
      ret = e.init([&] { return owireEncodeFieldListInit(&e.it, &l, nullptr, 0); },
                   [&] { return owireEncodeFieldListComplete(&e.it, false); });
      break;
    }
    case 133: {
      OwfElementList l{};
      l.flags = OWF_ELF_HAS_STANDARD_DATA;
      ret = e.init([&] { return owireEncodeElementListInit(&e.it, &l, nullptr, 0); },
                   [&] { return owireEncodeElementListComplete(&e.it, false); });
      break;
    }
    case 135: {
      OwfFilterList l{};
      l.containerType = child;
      ret = e.init([&] { return owireEncodeFilterListInit(&e.it, &l); },
                   [&] { return owireEncodeFilterListComplete(&e.it, false); });
      break;
    }
    case 136: {
      OwfVector v{};
      v.containerType = child;
      v.flags = OWF_VTF_HAS_TOTAL_COUNT_HINT;
      v.totalCountHint = 1;
      ret = e.init([&] { return owireEncodeVectorInit(&e.it, &v, 0, 0); },
                   [&] { return owireEncodeVectorComplete(&e.it, false); });
      break;
    }
    case 137: {
      OwfMap m{};
      m.containerType = child;
      m.keyPrimitiveType = 17;
      m.flags = OWF_MPF_HAS_KEY_FIELD_ID;
      m.keyFieldId = -5;
      ret = e.init([&] { return owireEncodeMapInit(&e.it, &m, 0, 0); },
                   [&] { return owireEncodeMapComplete(&e.it, false); });
      break;
    }
    case 138: {
      OwfSeries s{};
      s.containerType = child;
      ret = e.init([&] { return owireEncodeSeriesInit(&e.it, &s, 0, 0); },
                   [&] { return owireEncodeSeriesComplete(&e.it, false); });
      break;
    }
  }
  ASSERT_EQ(OWIRE_RET_SUCCESS, ret) << int(kind);
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
}

void closeContainer(Enc& e, UInt8 kind) {
  int ret = -1;
  switch (kind) {
    case 132: ret = owireEncodeFieldListComplete(&e.it, true); break;
    case 133: ret = owireEncodeElementListComplete(&e.it, true); break;
    case 135: ret = owireEncodeFilterListComplete(&e.it, true); break;
    case 136: ret = owireEncodeVectorComplete(&e.it, true); break;
    case 137: ret = owireEncodeMapComplete(&e.it, true); break;
    case 138: ret = owireEncodeSeriesComplete(&e.it, true); break;
  }
  ASSERT_EQ(OWIRE_RET_SUCCESS, ret);
}

// Opens entry number i of `kind`, whose data is written in place.
void openEntry(Enc& e, UInt8 kind, UInt8 child, int i) {
  int ret = -1;
  const std::string key = "key" + std::to_string(i);
  switch (kind) {
    case 132: {
      OwfFieldEntry f{static_cast<Int16>(i), child, {0, nullptr}};
      ret = e.init([&] { return owireEncodeFieldEntryInit(&e.it, &f, 0); },
                   [&] { return owireEncodeFieldEntryComplete(&e.it, false); });
      break;
    }
    case 133: {
      OwfElementEntry el{buf(key), child, {0, nullptr}};
      ret = e.init([&] { return owireEncodeElementEntryInit(&e.it, &el, 0); },
                   [&] { return owireEncodeElementEntryComplete(&e.it, false); });
      break;
    }
    case 135: {
      OwfFilterEntry f{};
      f.action = 1;
      f.id = static_cast<UInt8>(i);
      ret = e.init([&] { return owireEncodeFilterEntryInit(&e.it, &f, 0); },
                   [&] { return owireEncodeFilterEntryComplete(&e.it, false); });
      break;
    }
    case 136: {
      OwfVectorEntry v{};
      v.action = 2;
      v.index = static_cast<UInt32>(i * 1000);
      ret = e.init([&] { return owireEncodeVectorEntryInit(&e.it, &v, 0); },
                   [&] { return owireEncodeVectorEntryComplete(&e.it, false); });
      break;
    }
    case 137: {
      OwfMapEntry m{};
      m.action = 1;
      m.flags = OWF_MPEF_HAS_PERM_DATA;
      m.permData = buf("perm");
      m.encKey = buf(key);
      ret = e.init([&] { return owireEncodeMapEntryInit(&e.it, &m, nullptr, 0); },
                   [&] { return owireEncodeMapEntryComplete(&e.it, false); });
      break;
    }
    case 138: {
      OwfSeriesEntry s{};
      ret = e.init([&] { return owireEncodeSeriesEntryInit(&e.it, &s, 0); },
                   [&] { return owireEncodeSeriesEntryComplete(&e.it, false); });
      break;
    }
  }
  ASSERT_EQ(OWIRE_RET_SUCCESS, ret);
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
}

void closeEntry(Enc& e, UInt8 kind) {
  int ret = -1;
  switch (kind) {
    case 132: ret = owireEncodeFieldEntryComplete(&e.it, true); break;
    case 133: ret = owireEncodeElementEntryComplete(&e.it, true); break;
    case 135: ret = owireEncodeFilterEntryComplete(&e.it, true); break;
    case 136: ret = owireEncodeVectorEntryComplete(&e.it, true); break;
    case 137: ret = owireEncodeMapEntryComplete(&e.it, true); break;
    case 138: ret = owireEncodeSeriesEntryComplete(&e.it, true); break;
  }
  ASSERT_EQ(OWIRE_RET_SUCCESS, ret);
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
}

// A complete entry whose data is an unsigned integer (blank: empty data).
void valueEntry(Enc& e, UInt8 kind, int i, UInt64 v, bool blank = false) {
  char content[16];
  OwfEncodeIterator tmp;
  clearEncodeIterator(&tmp);
  OwfBuffer cb{sizeof content, content};
  setEncodeIteratorBuffer(&tmp, &cb);
  ASSERT_EQ(0, owireEncodePrimitiveType(&tmp, 4, &v));
  const OwfBuffer enc{blank ? 0 : getEncodedLength(&tmp), content};
  const std::string key = "key" + std::to_string(i);
  int ret = -1;
  switch (kind) {
    case 132: {
      OwfFieldEntry f{static_cast<Int16>(i), 4, {0, nullptr}};
      ret = e.step([&] { return owireEncodeFieldEntry(&e.it, &f, blank ? nullptr : &v); });
      break;
    }
    case 133: {
      OwfElementEntry el{buf(key), 4, enc};
      ret = e.step([&] { return owireEncodeElementEntry(&e.it, &el, nullptr); });
      break;
    }
    case 135: {
      OwfFilterEntry f{};
      f.action = 1;
      f.id = static_cast<UInt8>(i);
      f.encData = enc;
      ret = e.step([&] { return owireEncodeFilterEntry(&e.it, &f); });
      break;
    }
    case 136: {
      OwfVectorEntry ve{};
      ve.action = 1;
      ve.index = static_cast<UInt32>(i);
      ve.encData = enc;
      ret = e.step([&] { return owireEncodeVectorEntry(&e.it, &ve); });
      break;
    }
    case 137: {
      OwfMapEntry m{};
      m.action = 1;
      m.encData = enc;
      OwfBuffer k = buf(key);
      ret = e.step([&] { return owireEncodeMapEntry(&e.it, &m, &k); });
      break;
    }
    case 138: {
      OwfSeriesEntry s{enc};
      ret = e.step([&] { return owireEncodeSeriesEntry(&e.it, &s); });
      break;
    }
  }
  ASSERT_EQ(OWIRE_RET_SUCCESS, ret);
}

// 16 containers, each the only... entry of the one above, the innermost
// holding two integers.
std::string nested(const std::vector<UInt8>& kinds, UInt32 capacity) {
  Enc e(capacity);
  const int n = static_cast<int>(kinds.size());
  for (int d = 0; d < n; ++d) {
    const UInt8 child = d + 1 < n ? kinds[d + 1] : 4;
    openContainer(e, kinds[d], child);
    if (d + 1 < n) {
      // A first entry: a value in a list, an empty payload elsewhere.
      valueEntry(e, kinds[d], 100 + d, static_cast<UInt64>(d), kinds[d] != 132 && kinds[d] != 133);
      openEntry(e, kinds[d], child, d);
    }
  }
  EXPECT_EQ(n - 1, e.it.encodingLevel);
  valueEntry(e, kinds[n - 1], 1, 11);
  valueEntry(e, kinds[n - 1], 2, UINT64_MAX);
  for (int d = n - 1; d >= 0; --d) {
    closeContainer(e, kinds[d]);
    if (d > 0) closeEntry(e, kinds[d - 1]);
  }
  EXPECT_EQ(-1, e.it.encodingLevel);
  EXPECT_EQ(0, encodeLevelState(&e.it));
  return e.bytes();
}

// Decodes the chain on one iterator, the way a single read iterator does:
// header, entry, header of the entry's data, down to the innermost values.
void readChain(const std::string& bytes, const std::vector<UInt8>& kinds) {
  Dec d(bytes);
  OwfDecodeIterator* it = &d.it;
  const int n = static_cast<int>(kinds.size());
  for (int lvl = 0; lvl < n; ++lvl) {
    const UInt8 kind = kinds[lvl];
    const UInt8 child = lvl + 1 < n ? kinds[lvl + 1] : 4;
    int ret = -1;
    OwfBuffer data{0, nullptr};
    switch (kind) {
      case 132: {
        OwfFieldList l;
        ASSERT_EQ(0, owireDecodeFieldList(it, &l, nullptr));
        EXPECT_EQ(77, l.fieldListNum);
        OwfFieldEntry f;
        ASSERT_EQ(0, owireDecodeFieldEntry(it, &f));
        if (lvl + 1 < n) ret = owireDecodeFieldEntry(it, &f);
        data = f.encData;
        break;
      }
      case 133: {
        OwfElementList l;
        ASSERT_EQ(0, owireDecodeElementList(it, &l, nullptr));
        OwfElementEntry el;
        ASSERT_EQ(0, owireDecodeElementEntry(it, &el));
        EXPECT_EQ(4, el.dataType);
        if (lvl + 1 < n) {
          ret = owireDecodeElementEntry(it, &el);
          EXPECT_EQ(child, el.dataType);
          EXPECT_TRUE(d.inside(el.name));
        }
        data = el.encData;
        break;
      }
      case 135: {
        OwfFilterList l;
        ASSERT_EQ(0, owireDecodeFilterList(it, &l));
        EXPECT_EQ(child, l.containerType);
        OwfFilterEntry f;
        ASSERT_EQ(0, owireDecodeFilterEntry(it, &f));
        if (lvl + 1 < n) ret = owireDecodeFilterEntry(it, &f);
        data = f.encData;
        break;
      }
      case 136: {
        OwfVector v;
        ASSERT_EQ(0, owireDecodeVector(it, &v));
        EXPECT_EQ(child, v.containerType);
        EXPECT_EQ(1u, v.totalCountHint);
        OwfVectorEntry ve;
        ASSERT_EQ(0, owireDecodeVectorEntry(it, &ve));
        if (lvl + 1 < n) {
          ret = owireDecodeVectorEntry(it, &ve);
          EXPECT_EQ(static_cast<UInt32>(lvl * 1000), ve.index);
          EXPECT_EQ(2, ve.action);
        }
        data = ve.encData;
        break;
      }
      case 137: {
        OwfMap m;
        ASSERT_EQ(0, owireDecodeMap(it, &m));
        EXPECT_EQ(child, m.containerType);
        EXPECT_EQ(-5, m.keyFieldId);
        OwfMapEntry me;
        OwfBuffer key;
        ASSERT_EQ(0, owireDecodeMapEntry(it, &me, &key));
        if (lvl + 1 < n) {
          ret = owireDecodeMapEntry(it, &me, &key);
          EXPECT_EQ("key" + std::to_string(lvl), str(key));
          EXPECT_EQ("perm", str(me.permData));
          EXPECT_TRUE(d.inside(me.permData));
          EXPECT_TRUE(d.inside(key));
        }
        data = me.encData;
        break;
      }
      case 138: {
        OwfSeries s;
        ASSERT_EQ(0, owireDecodeSeries(it, &s));
        OwfSeriesEntry se;
        ASSERT_EQ(0, owireDecodeSeriesEntry(it, &se));
        if (lvl + 1 < n) ret = owireDecodeSeriesEntry(it, &se);
        data = se.encData;
        break;
      }
    }
    EXPECT_EQ(lvl, it->decodingLevel);
    EXPECT_EQ(2, it->levels[lvl].itemCount);
    EXPECT_TRUE(d.inside(data));
    if (lvl + 1 < n) {
      ASSERT_EQ(0, ret);
      EXPECT_EQ(data.data, it->curPos);
    } else {
      // The iterator stands on the innermost first value.
      UInt64 v;
      ASSERT_EQ(0, owireDecodeUInt(it, &v));
      EXPECT_EQ(11u, v);
    }
  }
}

}  // namespace

TEST(OwireContainer, EveryKindNestedSixteenDeep) {
  for (UInt8 kind : kKinds) {
    const std::vector<UInt8> kinds(OWIRE_MAX_LEVELS, kind);
    const std::string bytes = nested(kinds, 1 << 16);
    readChain(bytes, kinds);
    EXPECT_EQ(bytes, nested(kinds, 16)) << "kind " << int(kind);
    const std::string text = walk(bytes, kind);
    // Standard fields carry no type: the walker shows their raw bytes.
    if (kind != 132) {
      EXPECT_NE(std::string::npos, text.find("18446744073709551615")) << text;
    }
  }
}

TEST(OwireContainer, MixedKindsNestedSixteenDeep) {
  std::vector<UInt8> kinds;
  for (int i = 0; i < OWIRE_MAX_LEVELS; ++i) kinds.push_back(kKinds[(i * 5) % 6]);
  const std::string bytes = nested(kinds, 1 << 16);
  readChain(bytes, kinds);
  EXPECT_EQ(bytes, nested(kinds, 16));
  walk(bytes, kinds[0]);
}

TEST(OwireContainer, SeventeenthLevelIsRefused) {
  Enc e;
  for (int d = 0; d < OWIRE_MAX_LEVELS; ++d) {
    openContainer(e, 138, 138);
    if (d + 1 < OWIRE_MAX_LEVELS) openEntry(e, 138, 138, d);
  }
  OwfSeriesEntry s{};
  ASSERT_EQ(0, owireEncodeSeriesEntryInit(&e.it, &s, 0));
  OwfSeries series{};
  series.containerType = 138;
  EXPECT_EQ(OWIRE_RET_ITERATOR_OVERRUN, owireEncodeSeriesInit(&e.it, &series, 0, 0));
  EXPECT_EQ(OWIRE_MAX_LEVELS - 1, e.it.encodingLevel);
  // Decoding stops at 16 levels too.
  ASSERT_EQ(0, owireEncodeSeriesEntryComplete(&e.it, true));
  for (int d = OWIRE_MAX_LEVELS - 1; d >= 0; --d) {
    closeContainer(e, 138);
    if (d > 0) closeEntry(e, 138);
  }
  Dec dec(e.bytes());
  OwfSeriesEntry se;
  for (int d = 0; d < OWIRE_MAX_LEVELS; ++d) {
    ASSERT_EQ(0, owireDecodeSeries(&dec.it, &series));
    ASSERT_EQ(0, owireDecodeSeriesEntry(&dec.it, &se));
  }
  EXPECT_EQ(OWIRE_RET_ITERATOR_OVERRUN, owireDecodeSeries(&dec.it, &series));
}

TEST(OwireContainer, LevelStatesOfMapWithDefinitionsSummaryAndEntries) {
  Enc e;
  EXPECT_EQ(EncodeLevelNone, encodeLevelState(&e.it));
  OwfMap m{};
  m.flags = OWF_MPF_HAS_SET_DEFS | OWF_MPF_HAS_SUMMARY_DATA | OWF_MPF_HAS_TOTAL_COUNT_HINT;
  m.containerType = 132;
  m.keyPrimitiveType = 4;
  m.totalCountHint = 300;
  ASSERT_EQ(0, owireEncodeMapInit(&e.it, &m, 0, 0));
  OwfLocalFieldSetDefDb db;
  for (auto& d : db.definitions) d = OwfFieldSetDef{OWF_SET_DEF_FREE, 0, nullptr};
  OwfFieldSetDefEntry defEntries[2] = {{22, OWF_SET_REAL_8RB}, {25, OWF_SET_REAL_8RB}};
  db.definitions[3] = OwfFieldSetDef{3, 2, defEntries};
  db.memory = OwfBuffer{0, nullptr};
  ASSERT_EQ(0, owireEncodeLocalFieldSetDefDb(&e.it, &db));
  ASSERT_EQ(0, owireEncodeMapSetDefsComplete(&e.it, true));
  EXPECT_EQ(EncodeLevelSummary, encodeLevelState(&e.it));
  // The summary: a field list written in place.
  OwfFieldList sum{};
  sum.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &sum, nullptr, 0));
  EXPECT_EQ(1, e.it.encodingLevel);
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
  OwfBuffer name = buf("SUMMARY");
  OwfFieldEntry f{3, 17, name};
  ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &f, nullptr));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  EXPECT_EQ(EncodeLevelSummary, encodeLevelState(&e.it));
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeMapComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeMapSummaryDataComplete(&e.it, true));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
  // One entry with a set-defined row, written in place.
  for (UInt64 key = 1; key <= 2; ++key) {
    OwfMapEntry me{};
    me.action = 2;
    ASSERT_EQ(0, owireEncodeMapEntryInit(&e.it, &me, &key, 0));
    EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
    OwfFieldList row{};
    row.flags = OWF_FLF_HAS_SET_DATA | OWF_FLF_HAS_SET_ID;
    row.setId = 3;
    ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &row, &db, 0));
    OwfReal r{0, 12, static_cast<Int64>(key * 100)};
    OwfFieldEntry fe{0, 8, {0, nullptr}};
    ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &fe, &r));
    EXPECT_EQ(5, encodeLevelState(&e.it));  // set data continues
    ASSERT_EQ(0, owireEncodeFieldEntry(&e.it, &fe, &r));
    EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
    // A list without standard data takes no standard entry.
    EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeFieldEntry(&e.it, &fe, &r));
    ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
    EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
    ASSERT_EQ(0, owireEncodeMapEntryComplete(&e.it, true));
  }
  ASSERT_EQ(0, owireEncodeMapComplete(&e.it, true));
  EXPECT_EQ(-1, e.it.encodingLevel);
  EXPECT_EQ(EncodeLevelNone, encodeLevelState(&e.it));

  // Decode: the map, its definitions, its summary, rows with the database.
  Dec d(e.bytes());
  OwfMap out;
  ASSERT_EQ(0, owireDecodeMap(&d.it, &out));
  EXPECT_EQ(m.flags, out.flags);
  EXPECT_EQ(132, out.containerType);
  EXPECT_EQ(300u, out.totalCountHint);
  EXPECT_EQ(2, d.it.levels[0].itemCount);
  EXPECT_TRUE(d.inside(out.encSetDefs) && d.inside(out.encSummaryData) && d.inside(out.encEntries));
  char mem[OWF_FIELD_SET_DEF_DB_MEMORY];
  OwfLocalFieldSetDefDb rdb;
  rdb.memory = OwfBuffer{sizeof mem, mem};
  ASSERT_EQ(0, owireDecodeLocalFieldSetDefDb(&d.it, &rdb));
  EXPECT_EQ(3, rdb.definitions[3].setId);
  EXPECT_EQ(OWF_SET_DEF_FREE, rdb.definitions[0].setId);
  ASSERT_EQ(2, rdb.definitions[3].count);
  EXPECT_EQ(25, rdb.definitions[3].entries[1].fieldId);
  // The iterator stands on the summary right after the header.
  EXPECT_EQ(out.encSummaryData.data, d.it.curPos);
  OwfFieldList sl;
  ASSERT_EQ(0, owireDecodeFieldList(&d.it, &sl, nullptr));
  OwfFieldEntry se;
  ASSERT_EQ(0, owireDecodeFieldEntry(&d.it, &se));
  EXPECT_EQ("SUMMARY", str(se.encData));
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d.it, &se));
  EXPECT_EQ(0, d.it.decodingLevel);
  for (UInt64 key = 1; key <= 2; ++key) {
    OwfMapEntry me;
    UInt64 k = 0;
    ASSERT_EQ(0, owireDecodeMapEntry(&d.it, &me, &k));
    EXPECT_EQ(key, k);
    EXPECT_EQ(2, me.action);
    OwfFieldList row;
    ASSERT_EQ(0, owireDecodeFieldList(&d.it, &row, &rdb));
    EXPECT_EQ(&rdb.definitions[3], d.it.levels[1].fieldSetDef);
    EXPECT_EQ(2, d.it.levels[1].itemCount);
    for (int i = 0; i < 2; ++i) {
      OwfFieldEntry fe;
      ASSERT_EQ(0, owireDecodeFieldEntry(&d.it, &fe));
      EXPECT_EQ(i == 0 ? 22 : 25, fe.fieldId);
      EXPECT_EQ(8, fe.dataType);
      OwfReal r;
      ASSERT_EQ(0, owireDecodeReal(&d.it, &r));
      EXPECT_EQ(static_cast<Int64>(key * 100), r.value);
      EXPECT_EQ(12, r.hint);
    }
    OwfFieldEntry fe;
    EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d.it, &fe));
  }
  OwfMapEntry me;
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeMapEntry(&d.it, &me, nullptr));
  EXPECT_EQ(-1, d.it.decodingLevel);
}

TEST(OwireContainer, PreEncodedSummaryAndDefinitionsFromTheRecord) {
  // Summary bytes: a field list encoded on its own.
  Enc s;
  OwfFieldList sl{};
  sl.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&s.it, &sl, nullptr, 0));
  Int64 v = -77;
  OwfFieldEntry f{1, 3, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeFieldEntry(&s.it, &f, &v));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&s.it, true));
  const std::string summary = s.bytes();

  for (int variant = 0; variant < 3; ++variant) {
    Enc e(16);
    OwfSeries series{};
    series.flags = OWF_SEF_HAS_SUMMARY_DATA;
    series.containerType = 132;
    if (variant == 0) {
      // Summary from the record at Init.
      series.encSummaryData = buf(summary);
      ASSERT_EQ(0, e.init([&] { return owireEncodeSeriesInit(&e.it, &series, 0, 0); },
                          [&] { return owireEncodeSeriesComplete(&e.it, false); }));
    } else if (variant == 1) {
      // Summary copied in place by the caller after Init.
      ASSERT_EQ(0, e.init([&] { return owireEncodeSeriesInit(&e.it, &series, 0, 0); },
                          [&] { return owireEncodeSeriesComplete(&e.it, false); }));
      ASSERT_EQ(EncodeLevelSummary, encodeLevelState(&e.it));
      while (static_cast<size_t>(e.it.endPos - e.it.curPos) < summary.size()) e.grow();
      std::memcpy(e.it.curPos, summary.data(), summary.size());
      e.it.curPos += summary.size();
      ASSERT_EQ(0, e.step([&] { return owireEncodeSeriesSummaryDataComplete(&e.it, true); }));
    } else {
      // Definitions in place, then the summary from the record.
      series.flags |= OWF_SEF_HAS_SET_DEFS;
      series.encSummaryData = buf(summary);
      ASSERT_EQ(0, e.init([&] { return owireEncodeSeriesInit(&e.it, &series, 0, 0); },
                          [&] { return owireEncodeSeriesComplete(&e.it, false); }));
      OwfLocalFieldSetDefDb db;
      for (auto& d : db.definitions) d = OwfFieldSetDef{OWF_SET_DEF_FREE, 0, nullptr};
      ASSERT_EQ(0, e.init([&] { return owireEncodeLocalFieldSetDefDb(&e.it, &db); },
                          [&] { return owireEncodeSeriesSetDefsComplete(&e.it, false); }));
      ASSERT_EQ(0, e.step([&] { return owireEncodeSeriesSetDefsComplete(&e.it, true); }));
    }
    EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
    OwfSeriesEntry entry{buf(summary)};
    ASSERT_EQ(0, e.step([&] { return owireEncodeSeriesEntry(&e.it, &entry); }));
    ASSERT_EQ(0, owireEncodeSeriesComplete(&e.it, true));
    Dec d(e.bytes());
    OwfSeries out;
    ASSERT_EQ(0, owireDecodeSeries(&d.it, &out));
    EXPECT_EQ(summary, str(out.encSummaryData));
    EXPECT_EQ(1, d.it.levels[0].itemCount);
    walk(e.bytes(), 138);
  }
}

TEST(OwireContainer, MapThatBeginsWithDeleteEntriesTakesItsTypeLater) {
  Enc e;
  OwfMap m{};
  m.containerType = 128;
  m.keyPrimitiveType = 17;
  ASSERT_EQ(0, owireEncodeMapInit(&e.it, &m, 0, 0));
  OwfMapEntry del{};
  del.action = 3;
  del.encKey = buf("gone");
  ASSERT_EQ(0, owireEncodeMapEntry(&e.it, &del, nullptr));
  ASSERT_EQ(0, owireEncodeSetContainerType(&e.it, 133));
  EXPECT_EQ(static_cast<char>(133 - 128), e.it.levels[0].containerStart[1]);
  OwfMapEntry add{};
  add.action = 2;
  add.encKey = buf("new");
  ASSERT_EQ(0, owireEncodeMapEntryInit(&e.it, &add, nullptr, 0));
  OwfElementList el{};
  el.flags = OWF_ELF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeElementListInit(&e.it, &el, nullptr, 0));
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeSetContainerType(&e.it, 132));
  ASSERT_EQ(0, owireEncodeElementListComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeMapEntryComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeMapComplete(&e.it, true));
  Dec d(e.bytes());
  OwfMap out;
  ASSERT_EQ(0, owireDecodeMap(&d.it, &out));
  EXPECT_EQ(133, out.containerType);
  OwfMapEntry me;
  ASSERT_EQ(0, owireDecodeMapEntry(&d.it, &me, nullptr));
  EXPECT_EQ(3, me.action);
  EXPECT_EQ(0u, me.encData.length);
  EXPECT_EQ("MAP{133 a3 k=gone=EL{<15>} a2 k=new=EL{8}}", walk(e.bytes(), 137));
}

TEST(OwireContainer, FilterListStatesAndOwnTypes) {
  Enc e;
  OwfFilterList fl{};
  fl.containerType = 132;
  fl.flags = OWF_FTF_HAS_TOTAL_COUNT_HINT | OWF_FTF_HAS_PER_ENTRY_PERM_DATA;
  fl.totalCountHint = 3;
  ASSERT_EQ(0, owireEncodeFilterListInit(&e.it, &fl));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
  OwfFilterEntry fe{};
  fe.action = 1;
  fe.id = 7;
  fe.flags = OWF_FTEF_HAS_CONTAINER_TYPE | OWF_FTEF_HAS_PERM_DATA;
  fe.containerType = 133;
  fe.permData = buf("pp");
  ASSERT_EQ(0, owireEncodeFilterEntryInit(&e.it, &fe, 0));
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
  OwfElementList el{};
  el.flags = OWF_ELF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeElementListInit(&e.it, &el, nullptr, 0));
  ASSERT_EQ(0, owireEncodeElementListComplete(&e.it, true));
  EXPECT_EQ(EncodeLevelFilterEntryDone, encodeLevelState(&e.it));
  ASSERT_EQ(0, owireEncodeFilterEntryComplete(&e.it, true));
  EXPECT_EQ(EncodeLevelSetDone, encodeLevelState(&e.it));
  OwfFilterEntry clear{};
  clear.action = 3;
  clear.id = 8;
  ASSERT_EQ(0, owireEncodeFilterEntry(&e.it, &clear));
  ASSERT_EQ(0, owireEncodeFilterListComplete(&e.it, true));
  Dec d(e.bytes());
  OwfFilterList out;
  ASSERT_EQ(0, owireDecodeFilterList(&d.it, &out));
  EXPECT_EQ(132, out.containerType);
  EXPECT_EQ(3, out.totalCountHint);
  EXPECT_EQ(fl.flags, out.flags);
  OwfFilterEntry a, b;
  ASSERT_EQ(0, owireDecodeFilterEntry(&d.it, &a));
  EXPECT_EQ(133, a.containerType);
  EXPECT_EQ(fe.flags, a.flags);
  EXPECT_EQ("pp", str(a.permData));
  ASSERT_EQ(0, owireDecodeFilterEntry(&d.it, &b));
  EXPECT_EQ(132, b.containerType);  // the list's type
  EXPECT_EQ(3, b.action);
  EXPECT_EQ(8, b.id);
}

TEST(OwireContainer, ArraysVariableAndFixed) {
  // Variable-width strings and fixed-width integers, times and strings.
  struct Case {
    UInt8 type;
    UInt16 width;
  };
  Enc e;
  OwfArray a{17, 0, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeArrayInit(&e.it, &a));
  for (const char* s : {"ACME.X", "", "WIDGET.Y"}) {
    OwfBuffer b = buf(s);
    ASSERT_EQ(0, owireEncodeArrayEntry(&e.it, nullptr, &b));
  }
  ASSERT_EQ(0, owireEncodeArrayComplete(&e.it, true));
  EXPECT_EQ("AR{17 ACME.X <15> WIDGET.Y}", walk(e.bytes(), 15));

  Enc f;
  OwfArray ai{3, 2, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeArrayInit(&f.it, &ai));
  for (Int64 v : {Int64{-32768}, Int64{32767}, Int64{5}})
    ASSERT_EQ(0, owireEncodeArrayEntry(&f.it, nullptr, &v));
  Int64 tooBig = 40000;
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeArrayEntry(&f.it, nullptr, &tooBig));
  // A pre-encoded 1-byte integer is widened to the item length.
  const char one = 9;
  OwfBuffer pre{1, const_cast<char*>(&one)};
  ASSERT_EQ(0, owireEncodeArrayEntry(&f.it, &pre, nullptr));
  ASSERT_EQ(0, owireEncodeArrayComplete(&f.it, true));
  Dec d(f.bytes());
  OwfArray out;
  ASSERT_EQ(0, owireDecodeArray(&d.it, &out));
  EXPECT_EQ(3, out.primitiveType);
  EXPECT_EQ(2, out.itemLength);
  EXPECT_EQ(4, d.it.levels[0].itemCount);
  OwfBuffer item;
  const Int64 want[] = {-32768, 32767, 5, 9};
  for (Int64 w : want) {
    ASSERT_EQ(0, owireDecodeArrayEntry(&d.it, &item));
    EXPECT_EQ(2u, item.length);
    Int64 v;
    ASSERT_EQ(0, owireDecodeInt(&d.it, &v));
    EXPECT_EQ(w, v);
  }
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeArrayEntry(&d.it, &item));

  Enc t;
  OwfArray at{10, 3, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeArrayInit(&t.it, &at));
  OwfTime ok{9, 30, 15, 0}, withMs{9, 30, 15, 5};
  ASSERT_EQ(0, owireEncodeArrayEntry(&t.it, nullptr, &ok));
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeArrayEntry(&t.it, nullptr, &withMs));
  ASSERT_EQ(0, owireEncodeArrayEntry(&t.it, nullptr, nullptr));  // blank time
  ASSERT_EQ(0, owireEncodeArrayComplete(&t.it, true));
  EXPECT_EQ("AR{10 09:30:15 <15>}", walk(t.bytes(), 15));

  Enc s;
  OwfArray as{17, 4, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeArrayInit(&s.it, &as));
  OwfBuffer ab = buf("AB"), abcde = buf("ABCDE");
  ASSERT_EQ(0, owireEncodeArrayEntry(&s.it, nullptr, &ab));
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodeArrayEntry(&s.it, nullptr, &abcde));
  ASSERT_EQ(0, owireEncodeArrayComplete(&s.it, true));
  Dec sd(s.bytes());
  ASSERT_EQ(0, owireDecodeArray(&sd.it, &out));
  ASSERT_EQ(0, owireDecodeArrayEntry(&sd.it, &item));
  EXPECT_EQ(std::string("AB\0\0", 4), str(item));  // zero padded to the width

  OwfArray bad{132, 0, {0, nullptr}};
  EXPECT_EQ(OWIRE_RET_UNSUPPORTED_DATA_TYPE, owireEncodeArrayInit(&s.it, &bad));
  // An array in a field list, read as text.
  Enc fl;
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&fl.it, &l, nullptr, 0));
  OwfFieldEntry fe{1, 15, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&fl.it, &fe, 0));
  ASSERT_EQ(0, owireEncodeArrayInit(&fl.it, &ai));
  Int64 v = 1;
  ASSERT_EQ(0, owireEncodeArrayEntry(&fl.it, nullptr, &v));
  ASSERT_EQ(0, owireEncodeArrayComplete(&fl.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&fl.it, true));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&fl.it, true));
  Dec fd(fl.bytes());
  OwfFieldList lo;
  ASSERT_EQ(0, owireDecodeFieldList(&fd.it, &lo, nullptr));
  ASSERT_EQ(0, owireDecodeFieldEntry(&fd.it, &fe));
  char text[64];
  OwfBuffer tb{sizeof text, text};
  ASSERT_EQ(0, owireEncodedPrimitiveToString(&fd.it, 15, &tb));
  EXPECT_EQ("[1]", str(tb));
}

TEST(OwireContainer, EmptyContainersAndBlankEntries) {
  // A list with nothing: a header only, no entries.
  Enc e;
  OwfFieldList l{};
  ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &l, nullptr, 0));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  EXPECT_EQ(1u, e.bytes().size());
  Dec d(e.bytes());
  OwfFieldList out;
  ASSERT_EQ(0, owireDecodeFieldList(&d.it, &out, nullptr));
  EXPECT_EQ(0, d.it.levels[0].itemCount);
  OwfFieldEntry fe;
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d.it, &fe));
  // A blank entry: opened and closed with nothing written.
  Enc b;
  l.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&b.it, &l, nullptr, 0));
  OwfFieldEntry f{9, 3, {0, nullptr}};
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&b.it, &f, 0));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&b.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntry(&b.it, &f, nullptr));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&b.it, true));
  Dec bd(b.bytes());
  ASSERT_EQ(0, owireDecodeFieldList(&bd.it, &out, nullptr));
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(0, owireDecodeFieldEntry(&bd.it, &fe));
    Int64 v;
    EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireDecodeInt(&bd.it, &v));
  }
  // Empty content decodes as a blank container of each kind.
  for (UInt8 kind : kKinds) {
    Dec z{std::string()};
    orvo::owire::Walker w;
    w.walk(&z.it, kind);
    EXPECT_NE(std::string::npos, w.out.find("{<15>}")) << w.out;
  }
}

TEST(OwireContainer, MisuseCodes) {
  Enc e;
  OwfFieldEntry f{1, 3, {0, nullptr}};
  Int64 v = 1;
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireEncodeFieldEntry(&e.it, &f, &v));  // no list open
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeFieldListComplete(&e.it, true));
  OwfFieldList l{};
  l.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&e.it, &l, nullptr, 0));
  // A second container cannot start in the entries phase.
  OwfElementList el{};
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeElementListInit(&e.it, &el, nullptr, 0));
  OwfMapEntry me{};
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireEncodeMapEntry(&e.it, &me, nullptr));
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&e.it, &f, 0));
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeFieldListComplete(&e.it, true));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, true));
  // Set data needs its definition.
  OwfFieldList sl{};
  sl.flags = OWF_FLF_HAS_SET_DATA;
  ASSERT_EQ(0, owireEncodeFieldEntryInit(&e.it, &f, 0));
  EXPECT_EQ(OWIRE_RET_SET_DEF_NOT_PROVIDED, owireEncodeFieldListInit(&e.it, &sl, nullptr, 0));
  EXPECT_EQ(EncodeLevelEntryOpen, encodeLevelState(&e.it));
  ASSERT_EQ(0, owireEncodeFieldEntryComplete(&e.it, false));
  ASSERT_EQ(0, owireEncodeFieldListComplete(&e.it, true));
  // Decoding an entry of another kind than the level's.
  Dec d(e.bytes());
  OwfFieldList out;
  ASSERT_EQ(0, owireDecodeFieldList(&d.it, &out, nullptr));
  OwfMapEntry mo;
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireDecodeMapEntry(&d.it, &mo, nullptr));
  EXPECT_EQ(OWIRE_RET_INVALID_ENCODE_STATE, owireEncodeSetContainerType(&e.it, 132));
}
