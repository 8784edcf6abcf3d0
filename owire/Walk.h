// Walks encoded data of any type with the public decode functions and
// describes every header, entry and value as text. For tests, fuzzers and
// tools; not part of the codec's hot path. Bounded by the input: each entry
// decode consumes bytes, and nesting stops at OWIRE_MAX_LEVELS.
#ifndef ORVO_OWIRE_WALK_H_
#define ORVO_OWIRE_WALK_H_

#include <cstdio>
#include <memory>
#include <string>

#include "orvo/owire/owire.h"

namespace orvo {
namespace owire {

class Walker {
 public:
  std::string out;
  int errors = 0;  // negative results met

  // Describes the value of `type` the iterator stands on.
  void walk(OwfDecodeIterator* it, UInt8 type, const OwfLocalFieldSetDefDb* fdb = nullptr,
            const OwfLocalElementSetDefDb* edb = nullptr) {
    const int level = it->decodingLevel;
    switch (type) {
      case 132: fieldList(it, fdb); break;
      case 133: elementList(it, edb); break;
      case 135: filterList(it); break;
      case 136: keyed(it, 136); break;
      case 137: keyed(it, 137); break;
      case 138: keyed(it, 138); break;
      case 15: array(it); break;
      case 128: out += "NoData"; break;
      default: primitive(it, type); break;
    }
    it->decodingLevel = static_cast<Int8>(level);  // whatever happened inside
  }

 private:
  void code(int ret) {
    if (ret < 0) ++errors;
    char tmp[16];
    std::snprintf(tmp, sizeof tmp, "<%d>", ret);
    out += tmp;
  }
  // A container that failed or is blank: its code, and for a blank one the
  // end of its entries.
  template <class F>
  void blank(int ret, F drain) {
    code(ret);
    if (ret == OWIRE_RET_BLANK_DATA) drain();
    out += '}';
  }
  void num(long long v) { out += std::to_string(v); }
  void bytes(const OwfBuffer& b) {
    out += '"';
    if (b.length) out.append(b.data, b.length);
    out += '"';
  }

  void primitive(OwfDecodeIterator* it, UInt8 type) {
    char text[512];
    OwfBuffer o{sizeof text, text};
    const int ret = owireEncodedPrimitiveToString(it, type, &o);
    if (ret == OWIRE_RET_SUCCESS) out.append(text, o.length);
    else code(ret);
  }

  void fieldList(OwfDecodeIterator* it, const OwfLocalFieldSetDefDb* db) {
    OwfFieldList list;
    int ret = owireDecodeFieldList(it, &list, db);
    out += "FL{";
    if (ret != OWIRE_RET_SUCCESS) return blank(ret, [&] { OwfFieldEntry e; owireDecodeFieldEntry(it, &e); });
    num(list.flags);
    out += ' ';
    num(it->levels[it->decodingLevel].itemCount);
    const OwfFieldSetDef* def = it->levels[it->decodingLevel].fieldSetDef;
    OwfFieldEntry e;
    while ((ret = owireDecodeFieldEntry(it, &e)) == OWIRE_RET_SUCCESS) {
      out += " f";
      num(e.fieldId);
      out += '=';
      // Standard entries carry no type: read them as a buffer.
      walk(it, e.dataType != 0 ? e.dataType : 16, db, nullptr);
    }
    (void)def;
    if (ret != OWIRE_RET_END_OF_CONTAINER) code(ret);
    out += '}';
  }

  void elementList(OwfDecodeIterator* it, const OwfLocalElementSetDefDb* db) {
    OwfElementList list;
    int ret = owireDecodeElementList(it, &list, db);
    out += "EL{";
    if (ret != OWIRE_RET_SUCCESS) return blank(ret, [&] { OwfElementEntry e; owireDecodeElementEntry(it, &e); });
    num(list.flags);
    OwfElementEntry e;
    while ((ret = owireDecodeElementEntry(it, &e)) == OWIRE_RET_SUCCESS) {
      out += ' ';
      bytes(e.name);
      out += ':';
      num(e.dataType);
      out += '=';
      walk(it, e.dataType, nullptr, db);
    }
    if (ret != OWIRE_RET_END_OF_CONTAINER) code(ret);
    out += '}';
  }

  void filterList(OwfDecodeIterator* it) {
    OwfFilterList list;
    int ret = owireDecodeFilterList(it, &list);
    out += "FT{";
    if (ret != OWIRE_RET_SUCCESS) return blank(ret, [&] { OwfFilterEntry e; owireDecodeFilterEntry(it, &e); });
    num(list.containerType);
    OwfFilterEntry e;
    while ((ret = owireDecodeFilterEntry(it, &e)) == OWIRE_RET_SUCCESS) {
      out += " #";
      num(e.id);
      out += 'a';
      num(e.action);
      out += '=';
      walk(it, e.containerType);
    }
    if (ret != OWIRE_RET_END_OF_CONTAINER) code(ret);
    out += '}';
  }

  void array(OwfDecodeIterator* it) {
    OwfArray a;
    int ret = owireDecodeArray(it, &a);
    out += "AR{";
    if (ret != OWIRE_RET_SUCCESS) return blank(ret, [&] { OwfBuffer e; owireDecodeArrayEntry(it, &e); });
    num(a.primitiveType);
    OwfBuffer item;
    while ((ret = owireDecodeArrayEntry(it, &item)) == OWIRE_RET_SUCCESS) {
      out += ' ';
      walk(it, a.primitiveType);
    }
    if (ret != OWIRE_RET_END_OF_CONTAINER) code(ret);
    out += '}';
  }

  void keyed(OwfDecodeIterator* it, UInt8 type) {
    UInt8 flags = 0, containerType = 0, keyType = 0;
    OwfBuffer summary{0, nullptr};
    int ret;
    if (type == 137) {
      OwfMap m;
      ret = owireDecodeMap(it, &m);
      flags = m.flags, containerType = m.containerType, keyType = m.keyPrimitiveType;
      summary = m.encSummaryData;
      out += "MAP{";
    } else if (type == 138) {
      OwfSeries s;
      ret = owireDecodeSeries(it, &s);
      flags = s.flags, containerType = s.containerType, summary = s.encSummaryData;
      out += "SER{";
    } else {
      OwfVector v;
      ret = owireDecodeVector(it, &v);
      flags = v.flags, containerType = v.containerType, summary = v.encSummaryData;
      out += "VEC{";
    }
    if (ret != OWIRE_RET_SUCCESS)
      return blank(ret, [&] {
        OwfMapEntry m;
        OwfSeriesEntry se;
        OwfVectorEntry v;
        if (type == 137) owireDecodeMapEntry(it, &m, nullptr);
        else if (type == 138) owireDecodeSeriesEntry(it, &se);
        else owireDecodeVectorEntry(it, &v);
      });
    num(containerType);
    const int level = it->decodingLevel;
    // Set definitions, in work memory of the sizes the data model gives.
    std::unique_ptr<char[]> fmem, emem;
    std::unique_ptr<OwfLocalFieldSetDefDb> fdb;
    std::unique_ptr<OwfLocalElementSetDefDb> edb;
    if (flags & 0x01) {
      if (containerType == 132) {
        fmem.reset(new char[OWF_FIELD_SET_DEF_DB_MEMORY]);
        fdb.reset(new OwfLocalFieldSetDefDb());
        fdb->memory = OwfBuffer{OWF_FIELD_SET_DEF_DB_MEMORY, fmem.get()};
        const int r = owireDecodeLocalFieldSetDefDb(it, fdb.get());
        out += " defs";
        code(r);
        if (r < 0) fdb.reset();
      } else if (containerType == 133) {
        emem.reset(new char[OWF_ELEMENT_SET_DEF_DB_MEMORY]);
        edb.reset(new OwfLocalElementSetDefDb());
        edb->memory = OwfBuffer{OWF_ELEMENT_SET_DEF_DB_MEMORY, emem.get()};
        const int r = owireDecodeLocalElementSetDefDb(it, edb.get());
        out += " defs";
        code(r);
        if (r < 0) edb.reset();
      }
    }
    if (summary.length) {
      out += " sum=";
      it->curPos = summary.data;
      walk(it, containerType, fdb.get(), edb.get());
      it->decodingLevel = static_cast<Int8>(level);
    }
    for (;;) {
      if (type == 137) {
        OwfMapEntry e;
        // The key is decoded twice: into a value by the map's key type (any
        // record fits the union), and as text through a second iterator.
        union {
          Int64 i;
          OwfReal r;
          OwfDateTime dt;
          OwfQos q;
          OwfState s;
          OwfBuffer b;
        } key;
        ret = owireDecodeMapEntry(it, &e, &key);
        if (ret < 0) ret = owireDecodeMapEntry(it, &e, nullptr);
        if (ret != OWIRE_RET_SUCCESS) break;
        out += " a";
        num(e.action);
        out += " k=";
        // The key, through a second iterator over the key bytes.
        OwfDecodeIterator kit;
        clearDecodeIterator(&kit);
        setDecodeIteratorBuffer(&kit, &e.encKey);
        walk(&kit, keyType);
        it->curPos = e.encData.data;
      } else if (type == 138) {
        OwfSeriesEntry e;
        ret = owireDecodeSeriesEntry(it, &e);
        if (ret != OWIRE_RET_SUCCESS) break;
      } else {
        OwfVectorEntry e;
        ret = owireDecodeVectorEntry(it, &e);
        if (ret != OWIRE_RET_SUCCESS) break;
        out += " i";
        num(e.index);
      }
      out += '=';
      walk(it, containerType, fdb.get(), edb.get());
    }
    if (ret != OWIRE_RET_END_OF_CONTAINER) code(ret);
    out += '}';
  }
};

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_WALK_H_
