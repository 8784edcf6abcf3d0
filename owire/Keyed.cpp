// Map, Series and Vector: the containers with set definitions, summary data
// and a payload type for their entries.
#include <cstring>

#include "owire/CodecInternal.h"

using namespace orvo::owire;

namespace {

enum : UInt8 { kSetDefs = 0x01, kSummary = 0x02 };

struct Kind {
  UInt8 type;
  UInt8 flagMask;
  UInt8 hintFlag;
  bool hasKey;
};
const Kind kMap{137, 0x1F, OWF_MPF_HAS_TOTAL_COUNT_HINT, true};
const Kind kSeries{138, 0x07, OWF_SEF_HAS_TOTAL_COUNT_HINT, false};
const Kind kVector{136, 0x1F, OWF_VTF_HAS_TOTAL_COUNT_HINT, false};

OwfEncodeLevel* keyedLevel(OwfEncodeIterator* it, UInt8 type) {
  if (it == nullptr || it->curPos == nullptr) return nullptr;
  OwfEncodeLevel* lv = encodeLevel(it);
  return (lv && lv->containerType == type) ? lv : nullptr;
}

inline std::size_t spanSize(UInt32 len) { return static_cast<std::size_t>(varintSize(len)) + len; }
inline char* putSpan(char* p, const char* data, UInt32 len) {
  p = putVarint(p, len);
  if (len) std::memcpy(p, data, len);
  return p + len;
}

// Bytes written from the summary on: the summary (or its slot), the count hint
// and the count.
std::size_t restSize(const OwfEncodeLevel* lv, UInt8 hintFlag) {
  std::size_t n = 0;
  if (lv->flags & kSummary) {
    if (lv->pendingSummaryLength == 0) return kSlotWidth;
    n += spanSize(lv->pendingSummaryLength);
  }
  if (lv->flags & hintFlag) n += static_cast<std::size_t>(varintSize(lv->totalCountHint));
  return n + 2;
}

// Writes from the summary on; room was checked by the caller.
void writeRest(OwfEncodeIterator* it, OwfEncodeLevel* lv, UInt8 hintFlag) {
  char* p = it->curPos;
  if (lv->flags & kSummary) {
    if (lv->pendingSummaryLength == 0) {
      lv->lengthPos = p;
      it->curPos = p + kSlotWidth;
      lv->levelState = kStateSummary;
      return;
    }
    p = putSpan(p, lv->pendingSummary, lv->pendingSummaryLength);
    lv->pendingSummary = nullptr;
    lv->pendingSummaryLength = 0;
  }
  if (lv->flags & hintFlag) p = putVarint(p, lv->totalCountHint);
  lv->countPos = p;
  storeU16(p, 0);
  it->curPos = p + 2;
  lv->levelState = kStateEntries;
}

int keyedInit(OwfEncodeIterator* it, const Kind& k, UInt8 flags, UInt8 containerType,
              UInt8 keyType, Int16 keyFieldId, const OwfBuffer& setDefs,
              const OwfBuffer& summary, UInt32 hint) {
  if ((setDefs.length && setDefs.data == nullptr) || (summary.length && summary.data == nullptr))
    return OWIRE_RET_INVALID_ARGUMENT;
  OwfEncodeLevel* lv;
  const int ret = pushEncodeLevel(it, k.type, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  flags &= k.flagMask;
  lv->flags = flags;
  lv->keyType = keyType;
  lv->totalCountHint = hint;
  if (flags & kSummary) {
    lv->pendingSummary = summary.data;
    lv->pendingSummaryLength = summary.length;
  }
  const bool keyField = k.hasKey && (flags & OWF_MPF_HAS_KEY_FIELD_ID);
  std::size_t need = 2 + (k.hasKey ? 1 : 0) + (keyField ? 2 : 0);
  const bool defsInPlace = (flags & kSetDefs) && setDefs.length == 0;
  if (defsInPlace) need += kSlotWidth;
  else need += ((flags & kSetDefs) ? spanSize(setDefs.length) : 0) + restSize(lv, k.hintFlag);
  if (room(it) < need) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = it->curPos;
  p[0] = static_cast<char>(flags);
  p[1] = static_cast<char>(static_cast<UInt8>(containerType - 128));
  p += 2;
  if (k.hasKey) *p++ = static_cast<char>(keyType);
  if (keyField) {
    storeU16(p, static_cast<UInt16>(keyFieldId));
    p += 2;
  }
  if (defsInPlace) {
    lv->lengthPos = p;
    it->curPos = p + kSlotWidth;
    lv->levelState = kStateSetDefs;
    return OWIRE_RET_SUCCESS;
  }
  if (flags & kSetDefs) p = putSpan(p, setDefs.data, setDefs.length);
  it->curPos = p;
  writeRest(it, lv, k.hintFlag);
  return OWIRE_RET_SUCCESS;
}

int setDefsComplete(OwfEncodeIterator* it, const Kind& k, bool success) {
  OwfEncodeLevel* lv = keyedLevel(it, k.type);
  if (lv == nullptr || lv->levelState != kStateSetDefs) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (!success) {
    it->curPos = lv->lengthPos + kSlotWidth;
    return OWIRE_RET_SUCCESS;
  }
  if (room(it) < restSize(lv, k.hintFlag)) return OWIRE_RET_BUFFER_TOO_SMALL;
  const int ret = closeSlot(it, lv->lengthPos);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  writeRest(it, lv, k.hintFlag);
  return OWIRE_RET_SUCCESS;
}

int summaryComplete(OwfEncodeIterator* it, const Kind& k, bool success) {
  OwfEncodeLevel* lv = keyedLevel(it, k.type);
  if (lv == nullptr || lv->levelState != kStateSummary) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (!success) {
    it->curPos = lv->lengthPos + kSlotWidth;
    return OWIRE_RET_SUCCESS;
  }
  const std::size_t tail = ((lv->flags & k.hintFlag) ? varintSize(lv->totalCountHint) : 0) + 2;
  if (room(it) < tail) return OWIRE_RET_BUFFER_TOO_SMALL;
  const int ret = closeSlot(it, lv->lengthPos);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  char* p = it->curPos;
  if (lv->flags & k.hintFlag) p = putVarint(p, lv->totalCountHint);
  lv->countPos = p;
  storeU16(p, 0);
  it->curPos = p + 2;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

// Entry head of a keyed container, built into the buffer: returns its size or
// writes it (when `out` is not null).
struct Head {
  UInt8 first;         // flags and action byte (Map, Vector)
  bool hasFirst;
  UInt32 index;        // Vector position
  bool hasIndex;
  const OwfBuffer* perm;
  // Map key: unencoded or encoded
  UInt8 keyType;
  const void* keyValue;
  const OwfBuffer* encKey;
  bool hasKey;
  UInt32 keyLen;
};

int headSize(Head& h, std::size_t* n) {
  std::size_t s = 0;
  if (h.hasFirst) s += 1;
  if (h.hasIndex) s += static_cast<std::size_t>(varintSize(h.index));
  if (h.perm) {
    if (h.perm->length && h.perm->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
    s += spanSize(h.perm->length);
  }
  if (h.hasKey) {
    if (h.keyValue) {
      if (h.keyType == 15 || !isPrimitiveType(h.keyType)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
      const int ret = primitiveContentSize(h.keyType, h.keyValue, &h.keyLen);
      if (ret != OWIRE_RET_SUCCESS) return ret;
    } else {
      if (h.encKey->length && h.encKey->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
      h.keyLen = h.encKey->length;
    }
    s += spanSize(h.keyLen);
  }
  *n = s;
  return OWIRE_RET_SUCCESS;
}

char* writeHead(const Head& h, char* p, char* end) {
  if (h.hasFirst) *p++ = static_cast<char>(h.first);
  if (h.hasIndex) p = putVarint(p, h.index);
  if (h.perm) p = putSpan(p, h.perm->data, h.perm->length);
  if (h.hasKey) {
    p = putVarint(p, h.keyLen);
    if (h.keyValue) {
      UInt32 n;
      encodePrimitiveContent(h.keyType, h.keyValue, p, end, &n);
      p += n;
    } else if (h.keyLen) {
      std::memcpy(p, h.encKey->data, h.keyLen);
      p += h.keyLen;
    }
  }
  return p;
}

int putEntry(OwfEncodeIterator* it, UInt8 type, Head& h, const OwfBuffer& data) {
  OwfEncodeLevel* lv = keyedLevel(it, type);
  if (lv == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  if (data.length && data.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::size_t n;
  const int ret = headSize(h, &n);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (room(it) < n + spanSize(data.length)) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = writeHead(h, it->curPos, it->endPos);
  it->curPos = putSpan(p, data.data, data.length);
  ++lv->itemCount;
  return OWIRE_RET_SUCCESS;
}

int openEntry(OwfEncodeIterator* it, UInt8 type, Head& h) {
  OwfEncodeLevel* lv = keyedLevel(it, type);
  if (lv == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  std::size_t n;
  const int ret = headSize(h, &n);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  lv->entryStart = it->curPos;
  lv->entryFlags = 0;
  lv->levelState = kStateEntryOpen;
  if (room(it) < n + kSlotWidth) return OWIRE_RET_BUFFER_TOO_SMALL;
  lv->lengthPos = writeHead(h, it->curPos, it->endPos);
  it->curPos = lv->lengthPos + kSlotWidth;
  return OWIRE_RET_SUCCESS;
}

int entryComplete(OwfEncodeIterator* it, UInt8 type, bool success) {
  OwfEncodeLevel* lv = keyedLevel(it, type);
  if (!success && lv && lv->levelState == kStateEntries) return OWIRE_RET_SUCCESS;  // nothing open
  if (lv == nullptr || lv->levelState != kStateEntryOpen) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (!success) {
    it->curPos = lv->entryStart;
    lv->levelState = kStateEntries;
    return OWIRE_RET_SUCCESS;
  }
  const int ret = closeSlot(it, lv->lengthPos);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  ++lv->itemCount;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

Head mapHead(const OwfEncodeLevel* lv, const OwfMapEntry* e, const void* keyValue, int* err) {
  Head h{};
  *err = e->action > 0x0F ? OWIRE_RET_INVALID_DATA : OWIRE_RET_SUCCESS;
  const bool perm = (e->flags & OWF_MPEF_HAS_PERM_DATA) != 0;
  h.first = static_cast<UInt8>((e->action & 0x0F) | (perm ? 0x10 : 0));
  h.hasFirst = true;
  h.perm = perm ? &e->permData : nullptr;
  h.hasKey = true;
  h.keyType = lv ? lv->keyType : 0;
  h.keyValue = keyValue;
  h.encKey = &e->encKey;
  return h;
}

Head vectorHead(const OwfVectorEntry* e, int* err) {
  Head h{};
  *err = e->action > 0x0F ? OWIRE_RET_INVALID_DATA : OWIRE_RET_SUCCESS;
  const bool perm = (e->flags & OWF_VTEF_HAS_PERM_DATA) != 0;
  h.first = static_cast<UInt8>((e->action & 0x0F) | (perm ? 0x10 : 0));
  h.hasFirst = true;
  h.index = e->index;
  h.hasIndex = true;
  h.perm = perm ? &e->permData : nullptr;
  return h;
}

// ---------------------------------------------------------------------------
// Decoding.

struct KeyedHeader {
  UInt8 flags;
  UInt8 containerType;
  UInt8 keyType;
  Int16 keyFieldId;
  OwfBuffer setDefs;
  OwfBuffer summary;
  UInt32 hint;
  OwfBuffer entries;
};

int keyedDecode(OwfDecodeIterator* it, const Kind& k, KeyedHeader* h) {
  std::memset(h, 0, sizeof *h);
  const char* s;
  const char* e;
  int ret = valueRange(it, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const char* savedPos = it->curPos;
  OwfDecodeLevel* lv;
  ret = pushDecodeLevel(it, k.type, s, e, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (s == e) return OWIRE_RET_BLANK_DATA;
  auto fail = [&](int code) {
    --it->decodingLevel;
    it->curPos = savedPos;
    return code;
  };
  const char* p = s;
  const std::size_t fixed = k.hasKey ? 3 : 2;
  if (static_cast<std::size_t>(e - p) < fixed) return fail(OWIRE_RET_INCOMPLETE_DATA);
  const UInt8 flags = static_cast<UInt8>(p[0]);
  if (flags & ~k.flagMask) return fail(OWIRE_RET_INVALID_DATA);
  h->flags = flags;
  h->containerType = static_cast<UInt8>(static_cast<UInt8>(p[1]) + 128);
  if (k.hasKey) h->keyType = static_cast<UInt8>(p[2]);
  p += fixed;
  if (k.hasKey && (flags & OWF_MPF_HAS_KEY_FIELD_ID)) {
    if (e - p < 2) return fail(OWIRE_RET_INCOMPLETE_DATA);
    h->keyFieldId = static_cast<Int16>(loadU16(p));
    p += 2;
  }
  const char* d;
  UInt32 n;
  if (flags & kSetDefs) {
    if (!readSpan(p, e, &d, &n)) return fail(OWIRE_RET_INCOMPLETE_DATA);
    setBuf(&h->setDefs, d, n);
  }
  if (flags & kSummary) {
    if (!readSpan(p, e, &d, &n)) return fail(OWIRE_RET_INCOMPLETE_DATA);
    setBuf(&h->summary, d, n);
  }
  if ((flags & k.hintFlag) && !readVarint(p, e, &h->hint)) return fail(OWIRE_RET_INCOMPLETE_DATA);
  if (e - p < 2) return fail(OWIRE_RET_INCOMPLETE_DATA);
  const UInt16 count = loadU16(p);
  p += 2;
  setBuf(&h->entries, p, static_cast<UInt32>(e - p));
  lv->flags = flags;
  lv->itemCount = count;
  lv->standardLeft = count;
  lv->nextEntryPos = p;
  lv->entryEnd = p;
  lv->entryType = h->keyType;
  if (flags & kSetDefs) {
    lv->setDefsPos = h->setDefs.data;
    lv->setDefsLength = h->setDefs.length;
  }
  if ((flags & kSummary) && h->summary.length) {
    lv->summaryPos = h->summary.data;
    lv->summaryLength = h->summary.length;
    it->curPos = h->summary.data;  // the summary can be decoded at once
    lv->entryEnd = h->summary.data + h->summary.length;
  } else {
    it->curPos = p;
  }
  return OWIRE_RET_SUCCESS;
}

}  // namespace

// ---------------------------------------------------------------------------
// Map.

int owireEncodeMapInit(OwfEncodeIterator* iter, OwfMap* map, UInt16, UInt16) {
  if (map == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return keyedInit(iter, kMap, map->flags, map->containerType, map->keyPrimitiveType,
                   map->keyFieldId, map->encSetDefs, map->encSummaryData, map->totalCountHint);
}
int owireEncodeMapSetDefsComplete(OwfEncodeIterator* iter, bool success) {
  return setDefsComplete(iter, kMap, success);
}
int owireEncodeMapSummaryDataComplete(OwfEncodeIterator* iter, bool success) {
  return summaryComplete(iter, kMap, success);
}
int owireEncodeMapComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 137, success);
}
int owireEncodeMapEntry(OwfEncodeIterator* iter, OwfMapEntry* entry, const void* keyValue) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  int err;
  Head h = mapHead(keyedLevel(iter, 137), entry, keyValue, &err);
  if (err != OWIRE_RET_SUCCESS) return err;
  return putEntry(iter, 137, h, entry->encData);
}
int owireEncodeMapEntryInit(OwfEncodeIterator* iter, OwfMapEntry* entry, const void* keyValue,
                            UInt16) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  // Fast path: a numeric key given as a value, no permission data.
  OwfEncodeLevel* fast = keyedLevel(iter, 137);
  if (fast != nullptr && keyValue != nullptr && fast->levelState == kStateEntries &&
      fast->itemCount < kMaxCount && entry->action <= 0x0F &&
      !(entry->flags & OWF_MPEF_HAS_PERM_DATA) && room(iter) >= 2 + kFastRoom + kSlotWidth) {
    char* p = iter->curPos;
    const int n = encodeNumericFast(fast->keyType, keyValue, p + 2);
    if (n >= 0) {
      p[0] = static_cast<char>(entry->action);
      p[1] = static_cast<char>(n);
      fast->entryStart = p;
      fast->entryFlags = 0;
      fast->levelState = kStateEntryOpen;
      fast->lengthPos = p + 2 + n;
      iter->curPos = fast->lengthPos + kSlotWidth;
      return OWIRE_RET_SUCCESS;
    }
  }
  int err;
  Head h = mapHead(keyedLevel(iter, 137), entry, keyValue, &err);
  if (err != OWIRE_RET_SUCCESS) return err;
  return openEntry(iter, 137, h);
}
int owireEncodeMapEntryComplete(OwfEncodeIterator* iter, bool success) {
  return entryComplete(iter, 137, success);
}

int owireDecodeMap(OwfDecodeIterator* iter, OwfMap* map) {
  if (iter == nullptr || map == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  KeyedHeader h;
  const int ret = keyedDecode(iter, kMap, &h);
  std::memset(map, 0, sizeof *map);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  map->flags = h.flags;
  map->keyPrimitiveType = h.keyType;
  map->keyFieldId = h.keyFieldId;
  map->containerType = h.containerType;
  map->encSetDefs = h.setDefs;
  map->encSummaryData = h.summary;
  map->totalCountHint = h.hint;
  map->encEntries = h.entries;
  return OWIRE_RET_SUCCESS;
}

int owireDecodeMapEntry(OwfDecodeIterator* iter, OwfMapEntry* entry, void* keyValue) {
  OwfDecodeLevel* lv;
  int ret = entryLevel(iter, 137, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* p = lv->nextEntryPos;
  const char* e = lv->endPos;
  if (p >= e) return OWIRE_RET_INCOMPLETE_DATA;
  const UInt8 b = static_cast<UInt8>(*p++);
  if (b & 0xE0) return OWIRE_RET_INVALID_DATA;
  const char* perm = nullptr;
  UInt32 permLen = 0;
  if ((b & 0x10) && !readSpan(p, e, &perm, &permLen)) return OWIRE_RET_INCOMPLETE_DATA;
  const char* key;
  UInt32 keyLen;
  const char* data;
  UInt32 len;
  if (!readSpan(p, e, &key, &keyLen) || !readSpan(p, e, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  if (keyValue != nullptr) {
    ret = decodePrimitiveContent(lv->entryType, key, keyLen, keyValue);
    if (ret < 0) return ret;
  }
  entry->flags = (b & 0x10) ? OWF_MPEF_HAS_PERM_DATA : 0;
  entry->action = b & 0x0F;
  setBuf(&entry->permData, perm, permLen);
  setBuf(&entry->encKey, key, keyLen);
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Series.

int owireEncodeSeriesInit(OwfEncodeIterator* iter, OwfSeries* series, UInt16, UInt16) {
  if (series == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return keyedInit(iter, kSeries, series->flags, series->containerType, 0, 0, series->encSetDefs,
                   series->encSummaryData, series->totalCountHint);
}
int owireEncodeSeriesSetDefsComplete(OwfEncodeIterator* iter, bool success) {
  return setDefsComplete(iter, kSeries, success);
}
int owireEncodeSeriesSummaryDataComplete(OwfEncodeIterator* iter, bool success) {
  return summaryComplete(iter, kSeries, success);
}
int owireEncodeSeriesComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 138, success);
}
int owireEncodeSeriesEntry(OwfEncodeIterator* iter, OwfSeriesEntry* entry) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  Head h{};
  return putEntry(iter, 138, h, entry->encData);
}
int owireEncodeSeriesEntryInit(OwfEncodeIterator* iter, OwfSeriesEntry* entry, UInt16) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  Head h{};
  return openEntry(iter, 138, h);
}
int owireEncodeSeriesEntryComplete(OwfEncodeIterator* iter, bool success) {
  return entryComplete(iter, 138, success);
}

namespace {

// Series and vectors share one header record layout.
template <class Record>
int decodeSeriesLike(OwfDecodeIterator* iter, const Kind& kind, Record* out) {
  KeyedHeader h;
  const int ret = keyedDecode(iter, kind, &h);
  std::memset(out, 0, sizeof *out);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  out->flags = h.flags;
  out->containerType = h.containerType;
  out->encSetDefs = h.setDefs;
  out->encSummaryData = h.summary;
  out->totalCountHint = h.hint;
  out->encEntries = h.entries;
  return OWIRE_RET_SUCCESS;
}

}  // namespace

int owireDecodeSeries(OwfDecodeIterator* iter, OwfSeries* series) {
  if (iter == nullptr || series == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return decodeSeriesLike(iter, kSeries, series);
}

int owireDecodeSeriesEntry(OwfDecodeIterator* iter, OwfSeriesEntry* entry) {
  OwfDecodeLevel* lv;
  const int ret = entryLevel(iter, 138, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* p = lv->nextEntryPos;
  const char* data;
  UInt32 len;
  if (!readSpan(p, lv->endPos, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Vector.

int owireEncodeVectorInit(OwfEncodeIterator* iter, OwfVector* vector, UInt16, UInt16) {
  if (vector == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return keyedInit(iter, kVector, vector->flags, vector->containerType, 0, 0, vector->encSetDefs,
                   vector->encSummaryData, vector->totalCountHint);
}
int owireEncodeVectorSetDefsComplete(OwfEncodeIterator* iter, bool success) {
  return setDefsComplete(iter, kVector, success);
}
int owireEncodeVectorSummaryDataComplete(OwfEncodeIterator* iter, bool success) {
  return summaryComplete(iter, kVector, success);
}
int owireEncodeVectorComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 136, success);
}
int owireEncodeVectorEntry(OwfEncodeIterator* iter, OwfVectorEntry* entry) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  int err;
  Head h = vectorHead(entry, &err);
  if (err != OWIRE_RET_SUCCESS) return err;
  return putEntry(iter, 136, h, entry->encData);
}
int owireEncodeVectorEntryInit(OwfEncodeIterator* iter, OwfVectorEntry* entry, UInt16) {
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  int err;
  Head h = vectorHead(entry, &err);
  if (err != OWIRE_RET_SUCCESS) return err;
  return openEntry(iter, 136, h);
}
int owireEncodeVectorEntryComplete(OwfEncodeIterator* iter, bool success) {
  return entryComplete(iter, 136, success);
}

int owireDecodeVector(OwfDecodeIterator* iter, OwfVector* vector) {
  if (iter == nullptr || vector == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return decodeSeriesLike(iter, kVector, vector);
}

int owireDecodeVectorEntry(OwfDecodeIterator* iter, OwfVectorEntry* entry) {
  OwfDecodeLevel* lv;
  const int ret = entryLevel(iter, 136, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* p = lv->nextEntryPos;
  const char* e = lv->endPos;
  if (p >= e) return OWIRE_RET_INCOMPLETE_DATA;
  const UInt8 b = static_cast<UInt8>(*p++);
  if (b & 0xE0) return OWIRE_RET_INVALID_DATA;
  UInt32 index;
  if (!readVarint(p, e, &index)) return OWIRE_RET_INCOMPLETE_DATA;
  const char* perm = nullptr;
  UInt32 permLen = 0;
  if ((b & 0x10) && !readSpan(p, e, &perm, &permLen)) return OWIRE_RET_INCOMPLETE_DATA;
  const char* data;
  UInt32 len;
  if (!readSpan(p, e, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  entry->flags = (b & 0x10) ? OWF_VTEF_HAS_PERM_DATA : 0;
  entry->action = b & 0x0F;
  entry->index = index;
  setBuf(&entry->permData, perm, permLen);
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}

int owireEncodeSetContainerType(OwfEncodeIterator* iter, UInt8 containerType) {
  OwfEncodeLevel* lv = iter ? encodeLevel(iter) : nullptr;
  if (lv == nullptr || lv->levelState == kStateNone) return OWIRE_RET_INVALID_ENCODE_STATE;
  switch (lv->containerType) {
    case 135: case 136: case 137: case 138: break;
    default: return OWIRE_RET_INVALID_ENCODE_STATE;
  }
  lv->containerStart[1] = static_cast<char>(static_cast<UInt8>(containerType - 128));
  return OWIRE_RET_SUCCESS;
}
