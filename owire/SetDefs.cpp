// Set definitions: the local set-definition databases on the wire, and the
// set-defined rows of field and element lists, packed by set codes 64..80.
#include <cstring>

#include "owire/CodecInternal.h"

namespace orvo {
namespace owire {

namespace {

// Fixed widths of the packed codes; REAL_4RB and REAL_8RB vary (0 here).
const UInt8 kPackedWidth[17] = {1, 1, 2, 2, 4, 4, 8, 8, 4, 8, 0, 0, 4, 3, 5, 7, 9};
const UInt8 kRealWidths4[4] = {1, 2, 3, 4};
const UInt8 kRealWidths8[4] = {1, 2, 4, 8};

inline bool isPacked(UInt8 code) { return code >= OWF_SET_INT_1 && code <= OWF_SET_DATETIME_9; }
inline bool rowCodeValid(UInt8 code) { return code < 64 || code >= 128 || isPacked(code); }

union AnyValue {
  Int64 i;
  UInt64 u;
  float f;
  double d;
  UInt16 e;
  OwfReal real;
  OwfDate date;
  OwfTime time;
  OwfDateTime dateTime;
};

// Encodes the packed form of `v` (of type `type`, or blank) into out[0..];
// returns the width or a negative code.
int packValue(UInt8 code, UInt8 type, const AnyValue* v, char* out) {
  const UInt8 base = setCodeBaseType(code);
  switch (code) {
    case OWF_SET_INT_1:
    case OWF_SET_INT_2:
    case OWF_SET_INT_4:
    case OWF_SET_INT_8:
    case OWF_SET_UINT_1:
    case OWF_SET_UINT_2:
    case OWF_SET_UINT_4:
    case OWF_SET_UINT_8: {
      if (v == nullptr || (type != 3 && type != 4)) return OWIRE_RET_INVALID_DATA;
      const int w = kPackedWidth[code - 64];
      if (base == 3) {
        if (type == 4 && v->u > static_cast<UInt64>(INT64_MAX)) return OWIRE_RET_INVALID_DATA;
        const Int64 x = type == 3 ? v->i : static_cast<Int64>(v->u);
        if (signedBytes(x) > w) return OWIRE_RET_INVALID_DATA;
        storeLE(out, static_cast<UInt64>(x), w);
      } else {
        if (type == 3 && v->i < 0) return OWIRE_RET_INVALID_DATA;
        const UInt64 x = type == 4 ? v->u : static_cast<UInt64>(v->i);
        if (unsignedBytes(x) > w) return OWIRE_RET_INVALID_DATA;
        storeLE(out, x, w);
      }
      return w;
    }
    case OWF_SET_FLOAT_4: {
      if (v == nullptr || (type != 5 && type != 6)) return OWIRE_RET_INVALID_DATA;
      const float f = type == 5 ? v->f : static_cast<float>(v->d);
      std::memcpy(out, &f, 4);
      return 4;
    }
    case OWF_SET_DOUBLE_8: {
      if (v == nullptr || (type != 5 && type != 6)) return OWIRE_RET_INVALID_DATA;
      const double d = type == 6 ? v->d : static_cast<double>(v->f);
      std::memcpy(out, &d, 8);
      return 8;
    }
    case OWF_SET_REAL_4RB:
    case OWF_SET_REAL_8RB: {
      OwfReal r{1, 14, 0};
      if (v != nullptr) {
        if (type == 8) r = v->real;
        else if (type == 3) r = OwfReal{0, 14, v->i};
        else return OWIRE_RET_INVALID_DATA;
      }
      if (r.isBlank) {
        out[0] = 0x3F;
        return 1;
      }
      if (!realHintValid(r.hint)) return OWIRE_RET_INVALID_DATA;
      const UInt8* widths = code == OWF_SET_REAL_4RB ? kRealWidths4 : kRealWidths8;
      const int need = signedBytes(r.value);
      int wc = 0;
      while (wc < 4 && widths[wc] < need) ++wc;
      if (wc == 4) return OWIRE_RET_INVALID_DATA;
      out[0] = static_cast<char>(r.hint | (wc << 6));
      storeLE(out + 1, static_cast<UInt64>(r.value), widths[wc]);
      return 1 + widths[wc];
    }
    case OWF_SET_DATE_4:
      if (v != nullptr && type != 9) return OWIRE_RET_INVALID_DATA;
      return encodeFixedContent(9, v ? &v->date : nullptr, 4, out, out + 9) == OWIRE_RET_SUCCESS
                 ? 4
                 : OWIRE_RET_INVALID_DATA;
    case OWF_SET_TIME_3:
    case OWF_SET_TIME_5: {
      if (v != nullptr && type != 10) return OWIRE_RET_INVALID_DATA;
      const UInt16 w = code == OWF_SET_TIME_3 ? 3 : 5;
      const int ret = encodeFixedContent(10, v ? &v->time : nullptr, w, out, out + 9);
      return ret == OWIRE_RET_SUCCESS ? static_cast<int>(w) : static_cast<int>(OWIRE_RET_INVALID_DATA);
    }
    case OWF_SET_DATETIME_7:
    case OWF_SET_DATETIME_9: {
      if (v != nullptr && type != 11) return OWIRE_RET_INVALID_DATA;
      const UInt16 w = code == OWF_SET_DATETIME_7 ? 7 : 9;
      const int ret = encodeFixedContent(11, v ? &v->dateTime : nullptr, w, out, out + 9);
      return ret == OWIRE_RET_SUCCESS ? static_cast<int>(w) : static_cast<int>(OWIRE_RET_INVALID_DATA);
    }
    default: return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
  }
}

}  // namespace

UInt8 setCodeBaseType(UInt8 code) {
  switch (code) {
    case 64: case 66: case 68: case 70: return 3;
    case 65: case 67: case 69: case 71: return 4;
    case 72: return 5;
    case 73: return 6;
    case 74: case 75: return 8;
    case 76: return 9;
    case 77: case 78: return 10;
    case 79: case 80: return 11;
    default: return code;
  }
}

int packedRowWidth(UInt8 code, const char* p, const char* end) {
  if (!isPacked(code)) return 0;
  int w = kPackedWidth[code - 64];
  if (w == 0) {
    if (p >= end) return -1;
    const UInt8 b = static_cast<UInt8>(*p);
    if (b == 0x3F) return 1;
    const UInt8* widths = code == OWF_SET_REAL_4RB ? kRealWidths4 : kRealWidths8;
    w = 1 + widths[b >> 6];
  }
  return end - p >= w ? w : -1;
}

int encodeSetRow(OwfEncodeIterator* it, UInt8 code, UInt8 valueType, const void* value,
                 const OwfBuffer* enc) {
  if (!rowCodeValid(code)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
  const UInt8 base = setCodeBaseType(code);
  UInt8 type = normalizeType(valueType ? valueType : base);
  if (isPacked(code)) {
    AnyValue v;
    const AnyValue* pv = nullptr;
    if (value != nullptr) {
      std::memset(&v, 0, sizeof v);
      switch (type) {
        case 3: case 4: case 5: case 6: case 8: case 9: case 10: case 11:
          std::memcpy(&v, value, type == 5 ? 4 : type == 8 ? sizeof(OwfReal)
                                 : type == 9 ? sizeof(OwfDate) : type == 10 ? sizeof(OwfTime)
                                 : type == 11 ? sizeof(OwfDateTime) : 8);
          pv = &v;
          break;
        default: return OWIRE_RET_INVALID_DATA;
      }
    } else if (enc != nullptr && enc->length != 0) {
      if (valueType == 0) type = base;
      const int ret = decodePrimitiveContent(type, enc->data, enc->length, &v);
      if (ret == OWIRE_RET_SUCCESS) pv = &v;
      else if (ret != OWIRE_RET_BLANK_DATA) return ret;
    }
    // A blank value: only reals, dates and times have a packed blank form.
    if (pv == nullptr) type = base;
    char tmp[16];
    const int w = packValue(code, type, pv, tmp);
    if (w < 0) return w;
    if (room(it) < static_cast<std::size_t>(w)) return OWIRE_RET_BUFFER_TOO_SMALL;
    std::memcpy(it->curPos, tmp, static_cast<std::size_t>(w));
    it->curPos += w;
    return OWIRE_RET_SUCCESS;
  }
  // Length-prefixed row.
  if (value != nullptr) {
    if (!isPrimitiveType(type) || type == 15) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
    UInt32 size;
    int ret = primitiveContentSize(type, value, &size);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    const int vs = varintSize(size);
    if (room(it) < vs + static_cast<std::size_t>(size)) return OWIRE_RET_BUFFER_TOO_SMALL;
    char* p = putVarint(it->curPos, size);
    UInt32 n;
    ret = encodePrimitiveContent(type, value, p, it->endPos, &n);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    it->curPos = p + n;
    return OWIRE_RET_SUCCESS;
  }
  const UInt32 len = enc ? enc->length : 0;
  if (len && enc->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (room(it) < varintSize(len) + static_cast<std::size_t>(len)) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = putVarint(it->curPos, len);
  if (len) std::memcpy(p, enc->data, len);
  it->curPos = p + len;
  return OWIRE_RET_SUCCESS;
}

int decodeSetRow(UInt8 code, const char*& p, const char* end, const char** data, UInt32* len) {
  if (!rowCodeValid(code)) return OWIRE_RET_INVALID_DATA;
  if (isPacked(code)) {
    const int w = packedRowWidth(code, p, end);
    if (w < 0) return OWIRE_RET_INCOMPLETE_DATA;
    *data = p;
    *len = static_cast<UInt32>(w);
    if ((code == OWF_SET_REAL_4RB || code == OWF_SET_REAL_8RB) && w == 1) *len = 0;
    p += w;
    return OWIRE_RET_SUCCESS;
  }
  if (!readSpan(p, end, data, len)) return OWIRE_RET_INCOMPLETE_DATA;
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Databases.

namespace {

// Where a database is written: in the open set-definition part of a Map,
// Series or Vector, or at the top of the buffer.
int dbWriteCheck(OwfEncodeIterator* it) {
  if (it == nullptr || it->curPos == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  OwfEncodeLevel* lv = encodeLevel(it);
  if (lv == nullptr) return it->encodingLevel == -1 ? OWIRE_RET_SUCCESS : OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateSetDefs) return OWIRE_RET_INVALID_ENCODE_STATE;
  it->curPos = lv->lengthPos + kSlotWidth;  // a repeated write replaces the first
  return OWIRE_RET_SUCCESS;
}

template <class Db, class Size, class Put>
int encodeDb(OwfEncodeIterator* it, const Db* db, Size entrySize, Put put) {
  int ret = dbWriteCheck(it);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (db == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::size_t need = 1;
  int defs = 0;
  for (int i = 0; i < OWF_MAX_LOCAL_SET_DEFS; ++i) {
    const auto& d = db->definitions[i];
    if (d.setId == OWF_SET_DEF_FREE) continue;
    if (d.setId >= OWF_MAX_LOCAL_SET_DEFS) return OWIRE_RET_INVALID_DATA;
    if (d.count != 0 && d.entries == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
    need += 2;
    for (int k = 0; k < d.count; ++k) {
      if (!rowCodeValid(d.entries[k].dataType)) return OWIRE_RET_INVALID_DATA;
      const std::size_t n = entrySize(d.entries[k]);
      if (n == 0) return OWIRE_RET_INVALID_DATA;
      need += n;
    }
    ++defs;
  }
  if (room(it) < need) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = it->curPos;
  *p++ = static_cast<char>(defs);
  for (int i = 0; i < OWF_MAX_LOCAL_SET_DEFS; ++i) {
    const auto& d = db->definitions[i];
    if (d.setId == OWF_SET_DEF_FREE) continue;
    *p++ = static_cast<char>(d.setId);
    *p++ = static_cast<char>(d.count);
    for (int k = 0; k < d.count; ++k) p = put(p, d.entries[k]);
  }
  it->curPos = p;
  return OWIRE_RET_SUCCESS;
}

// The bytes of the set definitions the iterator stands on.
int dbSource(OwfDecodeIterator* it, const char** s, const char** e) {
  if (it == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const int L = it->decodingLevel;
  if (L < -1 || L >= OWIRE_MAX_LEVELS) return OWIRE_RET_INVALID_ARGUMENT;
  if (L == -1) {
    *s = it->curPos;
    *e = it->levels[0].endPos;
    if (*s == nullptr || *e == nullptr) {
      if (*s != *e) return OWIRE_RET_INVALID_ARGUMENT;
    } else if (*e < *s) {
      return OWIRE_RET_INVALID_ARGUMENT;
    }
    return OWIRE_RET_SUCCESS;
  }
  const OwfDecodeLevel& lv = it->levels[L];
  if (lv.setDefsPos == nullptr) return OWIRE_RET_BLANK_DATA;
  *s = lv.setDefsPos;
  *e = lv.setDefsPos + lv.setDefsLength;
  return OWIRE_RET_SUCCESS;
}

template <class Db>
void freeAll(Db* db) {
  for (auto& d : db->definitions) {
    d.setId = OWF_SET_DEF_FREE;
    d.count = 0;
    d.entries = nullptr;
  }
}

template <class Entry>
Entry* carve(char*& mem, char* memEnd, std::size_t count) {
  const std::uintptr_t a = alignof(Entry);
  const std::uintptr_t at = (reinterpret_cast<std::uintptr_t>(mem) + a - 1) & ~(a - 1);
  const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(memEnd);
  if (at > end || (end - at) / sizeof(Entry) < count) return nullptr;
  mem = reinterpret_cast<char*>(at + count * sizeof(Entry));
  return reinterpret_cast<Entry*>(at);
}

template <class Db, class Entry, class Get>
int decodeDb(OwfDecodeIterator* it, Db* db, Get get) {
  if (db == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  freeAll(db);
  const char* p;
  const char* end;
  const int ret = dbSource(it, &p, &end);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (p == end) return OWIRE_RET_BLANK_DATA;
  char* mem = db->memory.data;
  char* memEnd = mem ? mem + db->memory.length : nullptr;
  const UInt8 defs = static_cast<UInt8>(*p++);
  if (defs > OWF_MAX_LOCAL_SET_DEFS) return OWIRE_RET_INVALID_DATA;
  for (int i = 0; i < defs; ++i) {
    if (end - p < 2) {
      freeAll(db);
      return OWIRE_RET_INCOMPLETE_DATA;
    }
    const UInt8 id = static_cast<UInt8>(p[0]);
    const UInt8 count = static_cast<UInt8>(p[1]);
    p += 2;
    if (id >= OWF_MAX_LOCAL_SET_DEFS || db->definitions[id].setId != OWF_SET_DEF_FREE) {
      freeAll(db);
      return OWIRE_RET_INVALID_DATA;
    }
    Entry* entries = nullptr;
    if (count) {
      entries = mem ? carve<Entry>(mem, memEnd, count) : nullptr;
      if (entries == nullptr) {
        freeAll(db);
        return OWIRE_RET_BUFFER_TOO_SMALL;
      }
    }
    for (int k = 0; k < count; ++k) {
      const int r = get(p, end, &entries[k]);
      if (r != OWIRE_RET_SUCCESS) {
        freeAll(db);
        return r;
      }
      if (!rowCodeValid(entries[k].dataType)) {
        freeAll(db);
        return OWIRE_RET_INVALID_DATA;
      }
    }
    auto& d = db->definitions[id];
    d.setId = id;
    d.count = count;
    d.entries = entries;
  }
  return p == end ? OWIRE_RET_SUCCESS : OWIRE_RET_INVALID_DATA;
}

}  // namespace

}  // namespace owire
}  // namespace orvo

using namespace orvo::owire;

int owireEncodeLocalFieldSetDefDb(OwfEncodeIterator* iter, const OwfLocalFieldSetDefDb* db) {
  return encodeDb(
      iter, db, [](const OwfFieldSetDefEntry&) -> std::size_t { return 3; },
      [](char* p, const OwfFieldSetDefEntry& e) {
        storeU16(p, static_cast<UInt16>(e.fieldId));
        p[2] = static_cast<char>(e.dataType);
        return p + 3;
      });
}

int owireEncodeLocalElementSetDefDb(OwfEncodeIterator* iter, const OwfLocalElementSetDefDb* db) {
  return encodeDb(
      iter, db,
      [](const OwfElementSetDefEntry& e) -> std::size_t {
        if (e.name.length != 0 && e.name.data == nullptr) return 0;
        if (e.name.length > 0xFFFF) return 0;
        return static_cast<std::size_t>(varintSize(e.name.length)) + e.name.length + 1;
      },
      [](char* p, const OwfElementSetDefEntry& e) {
        p = putVarint(p, e.name.length);
        if (e.name.length) std::memcpy(p, e.name.data, e.name.length);
        p += e.name.length;
        *p++ = static_cast<char>(e.dataType);
        return p;
      });
}

int owireDecodeLocalFieldSetDefDb(OwfDecodeIterator* iter, OwfLocalFieldSetDefDb* db) {
  return decodeDb<OwfLocalFieldSetDefDb, OwfFieldSetDefEntry>(
      iter, db, [](const char*& p, const char* end, OwfFieldSetDefEntry* e) {
        if (end - p < 3) return static_cast<int>(OWIRE_RET_INCOMPLETE_DATA);
        e->fieldId = static_cast<Int16>(loadU16(p));
        e->dataType = static_cast<UInt8>(p[2]);
        p += 3;
        return static_cast<int>(OWIRE_RET_SUCCESS);
      });
}

int owireDecodeLocalElementSetDefDb(OwfDecodeIterator* iter, OwfLocalElementSetDefDb* db) {
  return decodeDb<OwfLocalElementSetDefDb, OwfElementSetDefEntry>(
      iter, db, [](const char*& p, const char* end, OwfElementSetDefEntry* e) {
        const char* name;
        UInt32 len;
        if (!readSpan(p, end, &name, &len) || p >= end)
          return static_cast<int>(OWIRE_RET_INCOMPLETE_DATA);
        e->name.length = len;
        e->name.data = const_cast<char*>(name);
        e->dataType = static_cast<UInt8>(*p++);
        return static_cast<int>(OWIRE_RET_SUCCESS);
      });
}
