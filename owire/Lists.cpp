// Field lists and element lists: headers, set-defined rows, standard entries.
#include <cstring>

#include "owire/CodecInternal.h"

using namespace orvo::owire;

namespace {

enum : UInt8 {
  kInfo = 0x01,
  kSetData = 0x02,
  kSetId = 0x04,
  kStandard = 0x08,
};

// Shared list head: flags, info, set id, standard count, set data.
// info: 4 bytes for a field list, 2 for an element list.
template <class Def>
int listInit(OwfEncodeIterator* it, UInt8 type, UInt8 flags, const char* info, int infoLen,
             UInt16 setId, const OwfBuffer& encSetData, const Def* def) {
  OwfEncodeLevel* lv;
  int ret = pushEncodeLevel(it, type, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  flags &= 0x0F;
  lv->flags = flags;
  const bool inPlaceSet = (flags & kSetData) && encSetData.length == 0;
  if ((flags & kSetData) && def == nullptr) {
    --it->encodingLevel;
    return OWIRE_RET_SET_DEF_NOT_PROVIDED;
  }
  if ((flags & kSetData) && encSetData.data == nullptr && encSetData.length != 0) {
    --it->encodingLevel;
    return OWIRE_RET_INVALID_ARGUMENT;
  }
  std::size_t need = 1;
  if (flags & kInfo) need += static_cast<std::size_t>(infoLen);
  if (flags & kSetId) need += static_cast<std::size_t>(varintSize(setId));
  if (flags & kStandard) need += 2;
  if (flags & kSetData)
    need += 1 + (inPlaceSet ? std::size_t{kSlotWidth} : varintSize(encSetData.length) + std::size_t{encSetData.length});
  if (room(it) < need) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = it->curPos;
  *p++ = static_cast<char>(flags);
  if (flags & kInfo) {
    std::memcpy(p, info, static_cast<std::size_t>(infoLen));
    p += infoLen;
  }
  if (flags & kSetId) p = putVarint(p, setId);
  if (flags & kStandard) {
    lv->countPos = p;
    storeU16(p, 0);
    p += 2;
  }
  lv->levelState = kStateEntries;
  if (flags & kSetData) {
    *p++ = static_cast<char>(def->count);
    if (inPlaceSet) {
      lv->setDef = def;
      lv->setDataPos = p;
      p += kSlotWidth;
      lv->levelState = kStateSetData;
    } else {
      p = putVarint(p, encSetData.length);
      std::memcpy(p, encSetData.data, encSetData.length);
      p += encSetData.length;
    }
  }
  it->curPos = p;
  if (lv->levelState == kStateSetData && def->count == 0) {
    closeSlot(it, lv->setDataPos);
    lv->levelState = kStateEntries;
  }
  return OWIRE_RET_SUCCESS;
}

// After a set-defined row: the next row, or the end of the set data.
template <class Def>
void afterSetRow(OwfEncodeIterator* it, OwfEncodeLevel* lv) {
  ++lv->setIndex;
  if (lv->setIndex >= static_cast<const Def*>(lv->setDef)->count) {
    closeSlot(it, lv->setDataPos);
    lv->levelState = kStateEntries;
  } else {
    lv->levelState = kStateSetData;
  }
}

OwfEncodeLevel* listLevel(OwfEncodeIterator* it, UInt8 type) {
  if (it == nullptr || it->curPos == nullptr) return nullptr;
  OwfEncodeLevel* lv = encodeLevel(it);
  return (lv && lv->containerType == type) ? lv : nullptr;
}

// Opens an entry at curPos: `head` bytes of the entry head, then a 4-byte
// length slot. The level is in the open state even when the buffer is too
// small, so that ...EntryComplete(false) rolls back.
int openEntry(OwfEncodeIterator* it, OwfEncodeLevel* lv, const char* head, std::size_t headLen,
              UInt8 entryFlags) {
  lv->entryStart = it->curPos;
  lv->entryFlags = entryFlags;
  lv->levelState = kStateEntryOpen;
  if (room(it) < headLen + kSlotWidth) return OWIRE_RET_BUFFER_TOO_SMALL;
  if (headLen) std::memcpy(it->curPos, head, headLen);
  lv->lengthPos = it->curPos + headLen;
  it->curPos = lv->lengthPos + kSlotWidth;
  return OWIRE_RET_SUCCESS;
}

// Converts the standard content written in place for a packed set row into
// its packed form.
int packInPlace(OwfEncodeIterator* it, OwfEncodeLevel* lv, UInt8 code) {
  char* content = lv->lengthPos + kSlotWidth;
  const UInt32 len = static_cast<UInt32>(it->curPos - content);
  char tmp[64];
  if (len > sizeof tmp) return OWIRE_RET_INVALID_DATA;
  std::memcpy(tmp, content, len);
  it->curPos = lv->lengthPos;
  OwfBuffer enc{len, tmp};
  const int ret = encodeSetRow(it, code, 0, nullptr, &enc);
  if (ret != OWIRE_RET_SUCCESS) it->curPos = content + len;
  return ret;
}

template <class Def>
int entryComplete(OwfEncodeIterator* it, UInt8 type, bool success) {
  OwfEncodeLevel* lv = listLevel(it, type);
  // Rolling back when no entry is open (after a one-step entry call that
  // found the buffer too small) has nothing to undo.
  if (!success && lv && (lv->levelState == kStateEntries || lv->levelState == kStateSetData))
    return OWIRE_RET_SUCCESS;
  if (lv == nullptr || lv->levelState != kStateEntryOpen) return OWIRE_RET_INVALID_ENCODE_STATE;
  const bool setRow = (lv->entryFlags & kOpenSetRow) != 0;
  if (!success) {
    it->curPos = lv->entryStart;
    lv->levelState = setRow ? kStateSetData : kStateEntries;
    return OWIRE_RET_SUCCESS;
  }
  if (setRow) {
    const Def* def = static_cast<const Def*>(lv->setDef);
    const UInt8 code = def->entries[lv->setIndex].dataType;
    const int ret = (code >= 64 && code <= 80) ? packInPlace(it, lv, code) : closeSlot(it, lv->lengthPos);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    afterSetRow<Def>(it, lv);
    return OWIRE_RET_SUCCESS;
  }
  const int ret = closeSlot(it, lv->lengthPos);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  ++lv->itemCount;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

// A standard entry: `head` (field id, or name and type), then the content
// of `value` (unencoded, of `type`) or `enc`.
template <int HeadLen>
inline void putHead(char* p, const char* head, std::size_t headLen) {
  if (HeadLen == 2) {
    p[0] = head[0];
    p[1] = head[1];
  } else if (headLen) {
    std::memcpy(p, head, headLen);
  }
}

template <int HeadLen>
int putStandardEntry(OwfEncodeIterator* it, OwfEncodeLevel* lv, const char* head,
                     std::size_t headLen, UInt8 type, const void* value, const OwfBuffer& enc) {
  if (!(lv->flags & kStandard)) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  char* p = it->curPos;
  const std::size_t avail = room(it);
  if (value != nullptr) {
    type = normalizeType(type);
    if (avail >= headLen + 1 + kFastRoom) {
      const int n = encodeNumericFast(type, value, p + headLen + 1);
      if (n >= 0) {
        putHead<HeadLen>(p, head, headLen);
        p[headLen] = static_cast<char>(n);
        it->curPos = p + headLen + 1 + n;
        ++lv->itemCount;
        return OWIRE_RET_SUCCESS;
      }
    }
    if (isBufferType(type)) {
      const OwfBuffer& b = *static_cast<const OwfBuffer*>(value);
      if (b.length < 0x80 && avail >= headLen + 1 + b.length && (b.length == 0 || b.data != nullptr)) {
        putHead<HeadLen>(p, head, headLen);
        p[headLen] = static_cast<char>(b.length);
        if (b.length) std::memcpy(p + headLen + 1, b.data, b.length);
        it->curPos = p + headLen + 1 + b.length;
        ++lv->itemCount;
        return OWIRE_RET_SUCCESS;
      }
    }
    if (type <= 14 && type != 7 && type != 13) {
      // Numeric content is at most 9 bytes: a 1-byte length.
      UInt32 size;
      const int r = primitiveContentSize(type, value, &size);
      if (r != OWIRE_RET_SUCCESS) return r;
      if (avail < headLen + 1 + size) return OWIRE_RET_BUFFER_TOO_SMALL;
      UInt32 n;
      const int r2 = encodePrimitiveContent(type, value, p + headLen + 1, it->endPos, &n);
      if (r2 != OWIRE_RET_SUCCESS) return r2;
      putHead<HeadLen>(p, head, headLen);
      p[headLen] = static_cast<char>(n);
      it->curPos = p + headLen + 1 + n;
      ++lv->itemCount;
      return OWIRE_RET_SUCCESS;
    }
    if (!isPrimitiveType(type) || type == 15) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
    UInt32 size;
    int r = primitiveContentSize(type, value, &size);
    if (r != OWIRE_RET_SUCCESS) return r;
    if (avail < headLen + varintSize(size) + std::size_t{size}) return OWIRE_RET_BUFFER_TOO_SMALL;
    std::memcpy(p, head, headLen);
    char* q = putVarint(p + headLen, size);
    UInt32 n;
    r = encodePrimitiveContent(type, value, q, it->endPos, &n);
    if (r != OWIRE_RET_SUCCESS) return r;
    it->curPos = q + n;
    ++lv->itemCount;
    return OWIRE_RET_SUCCESS;
  }
  if (enc.length != 0 && enc.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (avail < headLen + varintSize(enc.length) + std::size_t{enc.length})
    return OWIRE_RET_BUFFER_TOO_SMALL;
  std::memcpy(p, head, headLen);
  char* q = putVarint(p + headLen, enc.length);
  if (enc.length) std::memcpy(q, enc.data, enc.length);
  it->curPos = q + enc.length;
  ++lv->itemCount;
  return OWIRE_RET_SUCCESS;
}

// Element entry head: name, type. Returns its length, 0 when it does not fit.
std::size_t elementHead(const OwfElementEntry* e, char* out, std::size_t cap) {
  const std::size_t n = static_cast<std::size_t>(varintSize(e->name.length)) + e->name.length + 1;
  if (n > cap) return 0;
  char* p = putVarint(out, e->name.length);
  if (e->name.length) std::memcpy(p, e->name.data, e->name.length);
  p[e->name.length] = static_cast<char>(e->dataType);
  return n;
}

// ---------------------------------------------------------------------------
// Decoding.

template <class Def>
int listDecode(OwfDecodeIterator* it, UInt8 type, int infoLen, UInt8* flagsOut, char* info,
               UInt16* setIdOut, OwfBuffer* setData, OwfBuffer* entries, const Def* const* defs,
               bool haveDb, OwfDecodeLevel** out) {
  const char* s;
  const char* e;
  int ret = valueRange(it, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const char* savedPos = it->curPos;
  OwfDecodeLevel* lv;
  ret = pushDecodeLevel(it, type, s, e, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  *out = lv;
  if (s == e) return OWIRE_RET_BLANK_DATA;
  auto fail = [&](int code) {
    --it->decodingLevel;
    it->curPos = savedPos;
    return code;
  };
  const char* p = s;
  const UInt8 flags = static_cast<UInt8>(*p++);
  if (flags & 0xF0) return fail(OWIRE_RET_INVALID_DATA);
  if (flags & kInfo) {
    if (e - p < infoLen) return fail(OWIRE_RET_INCOMPLETE_DATA);
    std::memcpy(info, p, static_cast<std::size_t>(infoLen));
    p += infoLen;
  }
  UInt32 setId = 0;
  if ((flags & kSetId) && (!readVarint(p, e, &setId) || setId > 0xFFFF))
    return fail(OWIRE_RET_INVALID_DATA);
  UInt16 standard = 0;
  if (flags & kStandard) {
    if (e - p < 2) return fail(OWIRE_RET_INCOMPLETE_DATA);
    standard = loadU16(p);
    p += 2;
  }
  UInt8 rows = 0;
  const char* setPos = nullptr;
  UInt32 setLen = 0;
  if (flags & kSetData) {
    if (p >= e) return fail(OWIRE_RET_INCOMPLETE_DATA);
    rows = static_cast<UInt8>(*p++);
    if (!readSpan(p, e, &setPos, &setLen)) return fail(OWIRE_RET_INCOMPLETE_DATA);
  }
  const UInt32 total = UInt32{rows} + standard;
  if (total > 0xFFFF) return fail(OWIRE_RET_INVALID_DATA);
  const Def* def = nullptr;
  if ((flags & kSetData) && haveDb && setId < OWF_MAX_LOCAL_SET_DEFS &&
      defs[setId]->setId != OWF_SET_DEF_FREE) {
    def = defs[setId];
    if (def->count != rows || (rows != 0 && def->entries == nullptr)) return fail(OWIRE_RET_INVALID_DATA);
  }
  *flagsOut = flags;
  *setIdOut = static_cast<UInt16>(setId);
  setBuf(setData, setPos, setLen);
  setBuf(entries, p, static_cast<UInt32>(e - p));
  lv->flags = flags;
  lv->itemCount = static_cast<UInt16>(total);
  lv->standardLeft = standard;
  lv->nextEntryPos = p;
  lv->entryEnd = p;
  if (def) {
    lv->setCount = rows;
    lv->setCountTotal = rows;
    lv->setPos = setPos;
    lv->setEnd = setPos + setLen;
  }
  it->curPos = p;
  return OWIRE_RET_SUCCESS;
}

template <class Def>
int nextSetRow(OwfDecodeIterator* it, OwfDecodeLevel* lv, const Def* def, int* index,
               const char** data, UInt32* len) {
  const int idx = lv->setCountTotal - lv->setCount;
  const char* p = lv->setPos;
  const int ret = decodeSetRow(def->entries[idx].dataType, p, lv->setEnd, data, len);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  lv->setPos = p;
  --lv->setCount;
  *index = idx;
  enterEntryData(it, lv, *data, *len);
  return OWIRE_RET_SUCCESS;
}

}  // namespace

// ---------------------------------------------------------------------------
// Field list.

int owireEncodeFieldListInit(OwfEncodeIterator* iter, OwfFieldList* list,
                             const OwfLocalFieldSetDefDb* setDb, UInt16 /*setEncodingMaxSize*/) {
  if (list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  char info[4];
  storeU16(info, static_cast<UInt16>(list->dictionaryId));
  storeU16(info + 2, static_cast<UInt16>(list->fieldListNum));
  const OwfFieldSetDef* def = nullptr;
  if (setDb && list->setId < OWF_MAX_LOCAL_SET_DEFS &&
      setDb->definitions[list->setId].setId != OWF_SET_DEF_FREE)
    def = &setDb->definitions[list->setId];
  if (def && def->count && def->entries == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return listInit(iter, 132, list->flags, info, 4, list->setId, list->encSetData, def);
}

int owireEncodeFieldListComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 132, success);
}

namespace {
__attribute__((noinline)) int encodeFieldEntrySlow(OwfEncodeIterator* iter, OwfFieldEntry* entry,
                                                   const void* value);
}  // namespace

int owireEncodeFieldEntry(OwfEncodeIterator* iter, OwfFieldEntry* entry, const void* value) {
  // Fast path: a numeric value as a standard entry with room to spare.
  if (iter != nullptr && entry != nullptr && value != nullptr &&
      static_cast<unsigned>(iter->encodingLevel) < OWIRE_MAX_LEVELS) {
    OwfEncodeLevel* lv = &iter->levels[iter->encodingLevel];
    char* p = iter->curPos;
    // Everything is read before the first byte is written: byte stores may
    // alias anything, so later reads would be repeated.
    const UInt32 count = lv->itemCount;
    const UInt16 fid = static_cast<UInt16>(entry->fieldId);
    const UInt8 type = entry->dataType;
    if (lv->containerType == 132 && lv->levelState == kStateEntries && (lv->flags & kStandard) &&
        count < kMaxCount && p != nullptr && iter->endPos - p >= 3 + kFastRoom) {
      const int n = encodeNumericFast(type, value, p + 3);
      if (n >= 0) {
        lv->itemCount = count + 1;
        iter->curPos = p + 3 + n;
        storeU16(p, fid);
        p[2] = static_cast<char>(n);
        return OWIRE_RET_SUCCESS;
      }
      // A short byte string.
      if (type == 17 || type == 16 || type == 18) {
        const OwfBuffer b = *static_cast<const OwfBuffer*>(value);
        if (b.length < 0x80 && iter->endPos - p >= 3 + static_cast<std::ptrdiff_t>(b.length) &&
            (b.data != nullptr || b.length == 0)) {
          lv->itemCount = count + 1;
          iter->curPos = p + 3 + b.length;
          storeU16(p, fid);
          p[2] = static_cast<char>(b.length);
          copyBytes(p + 3, b.data, b.length);
          return OWIRE_RET_SUCCESS;
        }
      }
    }
  }
  return encodeFieldEntrySlow(iter, entry, value);
}

namespace {
int encodeFieldEntrySlow(OwfEncodeIterator* iter, OwfFieldEntry* entry, const void* value) {
  OwfEncodeLevel* lv = listLevel(iter, 132);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState == kStateSetData) {
    const OwfFieldSetDef* def = static_cast<const OwfFieldSetDef*>(lv->setDef);
    const int ret = encodeSetRow(iter, def->entries[lv->setIndex].dataType, entry->dataType, value,
                                 &entry->encData);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    afterSetRow<OwfFieldSetDef>(iter, lv);
    return OWIRE_RET_SUCCESS;
  }
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  char head[2];
  storeU16(head, static_cast<UInt16>(entry->fieldId));
  return putStandardEntry<2>(iter, lv, head, 2, entry->dataType, value, entry->encData);
}
}  // namespace

int owireEncodeFieldEntryInit(OwfEncodeIterator* iter, OwfFieldEntry* entry, UInt16 /*maxSize*/) {
  OwfEncodeLevel* lv = listLevel(iter, 132);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState == kStateSetData) return openEntry(iter, lv, nullptr, 0, kOpenSetRow);
  if (lv->levelState != kStateEntries || !(lv->flags & kStandard)) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  char head[2];
  storeU16(head, static_cast<UInt16>(entry->fieldId));
  return openEntry(iter, lv, head, 2, 0);
}

int owireEncodeFieldEntryComplete(OwfEncodeIterator* iter, bool success) {
  return entryComplete<OwfFieldSetDef>(iter, 132, success);
}

int owireDecodeFieldList(OwfDecodeIterator* iter, OwfFieldList* list,
                         const OwfLocalFieldSetDefDb* setDb) {
  if (iter == nullptr || list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::memset(list, 0, sizeof *list);
  const OwfFieldSetDef* defs[OWF_MAX_LOCAL_SET_DEFS];
  if (setDb)
    for (int i = 0; i < OWF_MAX_LOCAL_SET_DEFS; ++i) defs[i] = &setDb->definitions[i];
  char info[4] = {0, 0, 0, 0};
  OwfDecodeLevel* lv = nullptr;
  const int ret = listDecode<OwfFieldSetDef>(iter, 132, 4, &list->flags, info, &list->setId,
                                             &list->encSetData, &list->encEntries, defs,
                                             setDb != nullptr, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  list->dictionaryId = static_cast<Int16>(loadU16(info));
  list->fieldListNum = static_cast<Int16>(loadU16(info + 2));
  if ((list->flags & kSetData) && setDb && list->setId < OWF_MAX_LOCAL_SET_DEFS &&
      setDb->definitions[list->setId].setId != OWF_SET_DEF_FREE)
    lv->fieldSetDef = &setDb->definitions[list->setId];
  return OWIRE_RET_SUCCESS;
}

namespace {
__attribute__((noinline)) int decodeFieldEntrySlow(OwfDecodeIterator* iter, OwfFieldEntry* entry);
}  // namespace

int owireDecodeFieldEntry(OwfDecodeIterator* iter, OwfFieldEntry* entry) {
  // Fast path: a standard entry with a 1-byte length.
  if (iter != nullptr && entry != nullptr &&
      static_cast<unsigned>(iter->decodingLevel) < OWIRE_MAX_LEVELS) {
    OwfDecodeLevel* lv = &iter->levels[iter->decodingLevel];
    const char* p = lv->nextEntryPos;
    if (lv->containerType == 132 && lv->setCount == 0 && lv->standardLeft != 0 &&
        lv->endPos - p >= 3) {
      const UInt8 len = static_cast<UInt8>(p[2]);
      if (len < 0x80 && lv->endPos - (p + 3) >= len) {
        // The level and the iterator first: the entry's byte-wide fields may
        // alias anything.
        lv->nextEntryPos = p + 3 + len;
        --lv->standardLeft;
        lv->entryEnd = p + 3 + len;
        iter->curPos = p + 3;
        entry->fieldId = static_cast<Int16>(loadU16(p));
        entry->encData.length = len;
        entry->encData.data = const_cast<char*>(p + 3);
        entry->dataType = 0;
        return OWIRE_RET_SUCCESS;
      }
    }
  }
  return decodeFieldEntrySlow(iter, entry);
}

namespace {
int decodeFieldEntrySlow(OwfDecodeIterator* iter, OwfFieldEntry* entry) {
  OwfDecodeLevel* lv;
  int ret = entryLevel(iter, 132, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* data;
  UInt32 len;
  if (lv->setCount != 0) {
    int idx;
    ret = nextSetRow(iter, lv, lv->fieldSetDef, &idx, &data, &len);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    const OwfFieldSetDefEntry& d = lv->fieldSetDef->entries[idx];
    entry->fieldId = d.fieldId;
    entry->dataType = setCodeBaseType(d.dataType);
    setBuf(&entry->encData, data, len);
    return OWIRE_RET_SUCCESS;
  }
  const char* p = lv->nextEntryPos;
  const char* e = lv->endPos;
  if (e - p < 2) return OWIRE_RET_INCOMPLETE_DATA;
  const Int16 fid = static_cast<Int16>(loadU16(p));
  p += 2;
  if (!readSpan(p, e, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  entry->fieldId = fid;
  entry->dataType = 0;
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}

}  // namespace

// ---------------------------------------------------------------------------
// Element list.

int owireEncodeElementListInit(OwfEncodeIterator* iter, OwfElementList* list,
                               const OwfLocalElementSetDefDb* setDb, UInt16 /*setEncodingMaxSize*/) {
  if (list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  char info[2];
  storeU16(info, static_cast<UInt16>(list->elementListNum));
  const OwfElementSetDef* def = nullptr;
  if (setDb && list->setId < OWF_MAX_LOCAL_SET_DEFS &&
      setDb->definitions[list->setId].setId != OWF_SET_DEF_FREE)
    def = &setDb->definitions[list->setId];
  if (def && def->count && def->entries == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return listInit(iter, 133, list->flags, info, 2, list->setId, list->encSetData, def);
}

int owireEncodeElementListComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 133, success);
}

int owireEncodeElementEntry(OwfEncodeIterator* iter, OwfElementEntry* entry, const void* value) {
  OwfEncodeLevel* lv = listLevel(iter, 133);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState == kStateSetData) {
    const OwfElementSetDef* def = static_cast<const OwfElementSetDef*>(lv->setDef);
    const int ret = encodeSetRow(iter, def->entries[lv->setIndex].dataType, entry->dataType, value,
                                 &entry->encData);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    afterSetRow<OwfElementSetDef>(iter, lv);
    return OWIRE_RET_SUCCESS;
  }
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if ((entry->name.length != 0 && entry->name.data == nullptr) || entry->name.length > 0xFFFF)
    return OWIRE_RET_INVALID_ARGUMENT;
  char small[64];
  const std::size_t headLen = elementHead(entry, small, sizeof small);
  if (headLen != 0) return putStandardEntry<0>(iter, lv, small, headLen, entry->dataType, value, entry->encData);
  // Long name: write the head in place.
  const std::size_t n = static_cast<std::size_t>(varintSize(entry->name.length)) + entry->name.length + 1;
  if (room(iter) < n) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* start = iter->curPos;
  elementHead(entry, start, n);
  iter->curPos += n;
  // The head is in the buffer already: put an empty head after it.
  const int ret = putStandardEntry<0>(iter, lv, start, 0, entry->dataType, value, entry->encData);
  if (ret != OWIRE_RET_SUCCESS) iter->curPos = start;
  return ret;
}

int owireEncodeElementEntryInit(OwfEncodeIterator* iter, OwfElementEntry* entry, UInt16 /*maxSize*/) {
  OwfEncodeLevel* lv = listLevel(iter, 133);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState == kStateSetData) return openEntry(iter, lv, nullptr, 0, kOpenSetRow);
  if (lv->levelState != kStateEntries || !(lv->flags & kStandard)) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  if ((entry->name.length != 0 && entry->name.data == nullptr) || entry->name.length > 0xFFFF)
    return OWIRE_RET_INVALID_ARGUMENT;
  const std::size_t n = static_cast<std::size_t>(varintSize(entry->name.length)) + entry->name.length + 1;
  lv->entryStart = iter->curPos;
  lv->entryFlags = 0;
  lv->levelState = kStateEntryOpen;
  if (room(iter) < n + kSlotWidth) return OWIRE_RET_BUFFER_TOO_SMALL;
  elementHead(entry, iter->curPos, n);
  lv->lengthPos = iter->curPos + n;
  iter->curPos = lv->lengthPos + kSlotWidth;
  return OWIRE_RET_SUCCESS;
}

int owireEncodeElementEntryComplete(OwfEncodeIterator* iter, bool success) {
  return entryComplete<OwfElementSetDef>(iter, 133, success);
}

int owireDecodeElementList(OwfDecodeIterator* iter, OwfElementList* list,
                           const OwfLocalElementSetDefDb* setDb) {
  if (iter == nullptr || list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::memset(list, 0, sizeof *list);
  const OwfElementSetDef* defs[OWF_MAX_LOCAL_SET_DEFS];
  if (setDb)
    for (int i = 0; i < OWF_MAX_LOCAL_SET_DEFS; ++i) defs[i] = &setDb->definitions[i];
  char info[2] = {0, 0};
  OwfDecodeLevel* lv = nullptr;
  const int ret = listDecode<OwfElementSetDef>(iter, 133, 2, &list->flags, info, &list->setId,
                                               &list->encSetData, &list->encEntries, defs,
                                               setDb != nullptr, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  list->elementListNum = static_cast<Int16>(loadU16(info));
  if ((list->flags & kSetData) && setDb && list->setId < OWF_MAX_LOCAL_SET_DEFS &&
      setDb->definitions[list->setId].setId != OWF_SET_DEF_FREE)
    lv->elementSetDef = &setDb->definitions[list->setId];
  return OWIRE_RET_SUCCESS;
}

int owireDecodeElementEntry(OwfDecodeIterator* iter, OwfElementEntry* entry) {
  OwfDecodeLevel* lv;
  int ret = entryLevel(iter, 133, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* data;
  UInt32 len;
  if (lv->setCount != 0) {
    int idx;
    ret = nextSetRow(iter, lv, lv->elementSetDef, &idx, &data, &len);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    const OwfElementSetDefEntry& d = lv->elementSetDef->entries[idx];
    entry->name = d.name;
    entry->dataType = setCodeBaseType(d.dataType);
    setBuf(&entry->encData, data, len);
    return OWIRE_RET_SUCCESS;
  }
  const char* p = lv->nextEntryPos;
  const char* e = lv->endPos;
  const char* name;
  UInt32 nameLen;
  if (!readSpan(p, e, &name, &nameLen) || p >= e) return OWIRE_RET_INCOMPLETE_DATA;
  const UInt8 type = static_cast<UInt8>(*p++);
  if (!readSpan(p, e, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  setBuf(&entry->name, name, nameLen);
  entry->dataType = type;
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}
