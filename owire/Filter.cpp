// Filter lists and arrays.
#include <cstring>

#include "owire/CodecInternal.h"

using namespace orvo::owire;

namespace {

OwfEncodeLevel* levelOf(OwfEncodeIterator* it, UInt8 type) {
  if (it == nullptr || it->curPos == nullptr) return nullptr;
  OwfEncodeLevel* lv = encodeLevel(it);
  return (lv && lv->containerType == type) ? lv : nullptr;
}

inline std::size_t spanSize(UInt32 len) { return static_cast<std::size_t>(varintSize(len)) + len; }

// Filter entry head: flags and action, id, own container type, permission.
struct FilterHead {
  char bytes[3];
  std::size_t fixed;
  const OwfBuffer* perm;
};

int filterHead(const OwfFilterEntry* e, FilterHead* h) {
  if (e->action > 0x0F) return OWIRE_RET_INVALID_DATA;
  const bool perm = (e->flags & OWF_FTEF_HAS_PERM_DATA) != 0;
  const bool type = (e->flags & OWF_FTEF_HAS_CONTAINER_TYPE) != 0;
  h->bytes[0] = static_cast<char>((e->action & 0x0F) | (perm ? 0x10 : 0) | (type ? 0x20 : 0));
  h->bytes[1] = static_cast<char>(e->id);
  h->fixed = 2;
  if (type) h->bytes[h->fixed++] = static_cast<char>(static_cast<UInt8>(e->containerType - 128));
  h->perm = perm ? &e->permData : nullptr;
  if (h->perm && h->perm->length && h->perm->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return OWIRE_RET_SUCCESS;
}

std::size_t filterHeadSize(const FilterHead& h) {
  return h.fixed + (h.perm ? spanSize(h.perm->length) : 0);
}

char* putFilterHead(const FilterHead& h, char* p) {
  std::memcpy(p, h.bytes, h.fixed);
  p += h.fixed;
  if (h.perm) {
    p = putVarint(p, h.perm->length);
    if (h.perm->length) std::memcpy(p, h.perm->data, h.perm->length);
    p += h.perm->length;
  }
  return p;
}

bool arrayItemType(UInt8 t) { return isPrimitiveType(t) && normalizeType(t) != 15; }

}  // namespace

// ---------------------------------------------------------------------------
// Filter list.

int owireEncodeFilterListInit(OwfEncodeIterator* iter, OwfFilterList* list) {
  if (list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  OwfEncodeLevel* lv;
  const int ret = pushEncodeLevel(iter, 135, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const UInt8 flags = list->flags & 0x03;
  lv->flags = flags;
  const std::size_t need = 4 + ((flags & OWF_FTF_HAS_TOTAL_COUNT_HINT) ? 1 : 0);
  if (room(iter) < need) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = iter->curPos;
  p[0] = static_cast<char>(flags);
  p[1] = static_cast<char>(static_cast<UInt8>(list->containerType - 128));
  p += 2;
  if (flags & OWF_FTF_HAS_TOTAL_COUNT_HINT) *p++ = static_cast<char>(list->totalCountHint);
  lv->countPos = p;
  storeU16(p, 0);
  iter->curPos = p + 2;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

int owireEncodeFilterListComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 135, success);
}

int owireEncodeFilterEntry(OwfEncodeIterator* iter, OwfFilterEntry* entry) {
  OwfEncodeLevel* lv = levelOf(iter, 135);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  FilterHead h;
  int ret = filterHead(entry, &h);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const OwfBuffer& d = entry->encData;
  if (d.length && d.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (room(iter) < filterHeadSize(h) + spanSize(d.length)) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = putFilterHead(h, iter->curPos);
  p = putVarint(p, d.length);
  if (d.length) std::memcpy(p, d.data, d.length);
  iter->curPos = p + d.length;
  ++lv->itemCount;
  return OWIRE_RET_SUCCESS;
}

int owireEncodeFilterEntryInit(OwfEncodeIterator* iter, OwfFilterEntry* entry, UInt16) {
  OwfEncodeLevel* lv = levelOf(iter, 135);
  if (lv == nullptr || entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  FilterHead h;
  const int ret = filterHead(entry, &h);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  lv->entryStart = iter->curPos;
  lv->entryFlags = 0;
  lv->levelState = kStateEntryOpen;
  if (room(iter) < filterHeadSize(h) + kSlotWidth) return OWIRE_RET_BUFFER_TOO_SMALL;
  lv->lengthPos = putFilterHead(h, iter->curPos);
  iter->curPos = lv->lengthPos + kSlotWidth;
  return OWIRE_RET_SUCCESS;
}

int owireEncodeFilterEntryComplete(OwfEncodeIterator* iter, bool success) {
  OwfEncodeLevel* lv = levelOf(iter, 135);
  if (!success && lv && lv->levelState == kStateEntries) return OWIRE_RET_SUCCESS;  // nothing open
  if (lv == nullptr ||
      (lv->levelState != kStateEntryOpen && lv->levelState != kStateFilterEntryDone))
    return OWIRE_RET_INVALID_ENCODE_STATE;
  if (!success) {
    iter->curPos = lv->entryStart;
    lv->levelState = kStateEntries;
    return OWIRE_RET_SUCCESS;
  }
  const int ret = closeSlot(iter, lv->lengthPos);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  ++lv->itemCount;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

int owireDecodeFilterList(OwfDecodeIterator* iter, OwfFilterList* list) {
  if (iter == nullptr || list == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::memset(list, 0, sizeof *list);
  const char* s;
  const char* e;
  int ret = valueRange(iter, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const char* savedPos = iter->curPos;
  OwfDecodeLevel* lv;
  ret = pushDecodeLevel(iter, 135, s, e, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (s == e) return OWIRE_RET_BLANK_DATA;
  auto fail = [&](int code) {
    --iter->decodingLevel;
    iter->curPos = savedPos;
    return code;
  };
  const char* p = s;
  if (e - p < 2) return fail(OWIRE_RET_INCOMPLETE_DATA);
  const UInt8 flags = static_cast<UInt8>(p[0]);
  if (flags & 0xFC) return fail(OWIRE_RET_INVALID_DATA);
  list->flags = flags;
  list->containerType = static_cast<UInt8>(static_cast<UInt8>(p[1]) + 128);
  p += 2;
  if (flags & OWF_FTF_HAS_TOTAL_COUNT_HINT) {
    if (p >= e) return fail(OWIRE_RET_INCOMPLETE_DATA);
    list->totalCountHint = static_cast<UInt8>(*p++);
  }
  if (e - p < 2) return fail(OWIRE_RET_INCOMPLETE_DATA);
  const UInt16 count = loadU16(p);
  p += 2;
  setBuf(&list->encEntries, p, static_cast<UInt32>(e - p));
  lv->flags = flags;
  lv->itemCount = count;
  lv->standardLeft = count;
  lv->nextEntryPos = p;
  lv->entryEnd = p;
  lv->entryType = list->containerType;
  iter->curPos = p;
  return OWIRE_RET_SUCCESS;
}

int owireDecodeFilterEntry(OwfDecodeIterator* iter, OwfFilterEntry* entry) {
  OwfDecodeLevel* lv;
  const int ret = entryLevel(iter, 135, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* p = lv->nextEntryPos;
  const char* e = lv->endPos;
  if (e - p < 2) return OWIRE_RET_INCOMPLETE_DATA;
  const UInt8 b = static_cast<UInt8>(p[0]);
  if (b & 0xC0) return OWIRE_RET_INVALID_DATA;
  const UInt8 id = static_cast<UInt8>(p[1]);
  p += 2;
  UInt8 type = 0;
  if (b & 0x20) {
    if (p >= e) return OWIRE_RET_INCOMPLETE_DATA;
    type = static_cast<UInt8>(static_cast<UInt8>(*p++) + 128);
  }
  const char* perm = nullptr;
  UInt32 permLen = 0;
  if ((b & 0x10) && !readSpan(p, e, &perm, &permLen)) return OWIRE_RET_INCOMPLETE_DATA;
  const char* data;
  UInt32 len;
  if (!readSpan(p, e, &data, &len)) return OWIRE_RET_INCOMPLETE_DATA;
  entry->flags = static_cast<UInt8>(((b & 0x10) ? OWF_FTEF_HAS_PERM_DATA : 0) |
                                    ((b & 0x20) ? OWF_FTEF_HAS_CONTAINER_TYPE : 0));
  entry->action = b & 0x0F;
  entry->id = id;
  entry->containerType = (b & 0x20) ? type : lv->entryType;
  setBuf(&entry->permData, perm, permLen);
  setBuf(&entry->encData, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Array.

int owireEncodeArrayInit(OwfEncodeIterator* iter, OwfArray* array) {
  if (array == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (!arrayItemType(array->primitiveType)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
  OwfEncodeLevel* lv;
  const int ret = pushEncodeLevel(iter, 15, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  lv->keyType = normalizeType(array->primitiveType);
  lv->itemLength = array->itemLength;
  if (room(iter) < 5) return OWIRE_RET_BUFFER_TOO_SMALL;
  char* p = iter->curPos;
  p[0] = static_cast<char>(lv->keyType);
  storeU16(p + 1, array->itemLength);
  lv->countPos = p + 3;
  storeU16(p + 3, 0);
  iter->curPos = p + 5;
  lv->levelState = kStateEntries;
  return OWIRE_RET_SUCCESS;
}

int owireEncodeArrayComplete(OwfEncodeIterator* iter, bool success) {
  return popEncodeLevel(iter, 15, success);
}

int owireEncodeArrayEntry(OwfEncodeIterator* iter, const OwfBuffer* encoded, const void* value) {
  OwfEncodeLevel* lv = levelOf(iter, 15);
  if (lv == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->levelState != kStateEntries) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->itemCount >= kMaxCount) return OWIRE_RET_INVALID_DATA;
  if (encoded && encoded->length && encoded->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  int ret;
  if (lv->itemLength != 0) {
    if (value != nullptr || encoded == nullptr)
      ret = encodeFixedContent(lv->keyType, value, lv->itemLength, iter->curPos, iter->endPos);
    else
      ret = refitFixedContent(lv->keyType, encoded->data, encoded->length, lv->itemLength,
                              iter->curPos, iter->endPos);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    iter->curPos += lv->itemLength;
    ++lv->itemCount;
    return OWIRE_RET_SUCCESS;
  }
  if (value != nullptr) {
    UInt32 size;
    ret = primitiveContentSize(lv->keyType, value, &size);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    if (room(iter) < spanSize(size)) return OWIRE_RET_BUFFER_TOO_SMALL;
    char* p = putVarint(iter->curPos, size);
    UInt32 n;
    ret = encodePrimitiveContent(lv->keyType, value, p, iter->endPos, &n);
    if (ret != OWIRE_RET_SUCCESS) return ret;
    iter->curPos = p + n;
  } else {
    const UInt32 len = encoded ? encoded->length : 0;
    if (room(iter) < spanSize(len)) return OWIRE_RET_BUFFER_TOO_SMALL;
    char* p = putVarint(iter->curPos, len);
    if (len) std::memcpy(p, encoded->data, len);
    iter->curPos = p + len;
  }
  ++lv->itemCount;
  return OWIRE_RET_SUCCESS;
}

int owireDecodeArray(OwfDecodeIterator* iter, OwfArray* array) {
  if (iter == nullptr || array == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  std::memset(array, 0, sizeof *array);
  const char* s;
  const char* e;
  int ret = valueRange(iter, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  const char* savedPos = iter->curPos;
  OwfDecodeLevel* lv;
  ret = pushDecodeLevel(iter, 15, s, e, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (s == e) return OWIRE_RET_BLANK_DATA;
  auto fail = [&](int code) {
    --iter->decodingLevel;
    iter->curPos = savedPos;
    return code;
  };
  if (e - s < 5) return fail(OWIRE_RET_INCOMPLETE_DATA);
  const UInt8 type = static_cast<UInt8>(s[0]);
  if (!arrayItemType(type)) return fail(OWIRE_RET_INVALID_DATA);
  const UInt16 width = loadU16(s + 1);
  const UInt16 count = loadU16(s + 3);
  const char* p = s + 5;
  if (width != 0 && static_cast<std::size_t>(e - p) != std::size_t{width} * count)
    return fail(OWIRE_RET_INVALID_DATA);
  array->primitiveType = type;
  array->itemLength = width;
  setBuf(&array->encData, p, static_cast<UInt32>(e - p));
  lv->itemCount = count;
  lv->standardLeft = count;
  lv->nextEntryPos = p;
  lv->entryEnd = p;
  lv->entryType = type;
  lv->itemLength = width;
  iter->curPos = p;
  return OWIRE_RET_SUCCESS;
}

int owireDecodeArrayEntry(OwfDecodeIterator* iter, OwfBuffer* entry) {
  OwfDecodeLevel* lv;
  const int ret = entryLevel(iter, 15, &lv);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (entry == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* p = lv->nextEntryPos;
  const char* data;
  UInt32 len;
  if (lv->itemLength != 0) {
    if (lv->endPos - p < lv->itemLength) return OWIRE_RET_INCOMPLETE_DATA;
    data = p;
    len = lv->itemLength;
    p += len;
  } else if (!readSpan(p, lv->endPos, &data, &len)) {
    return OWIRE_RET_INCOMPLETE_DATA;
  }
  setBuf(entry, data, len);
  lv->nextEntryPos = p;
  --lv->standardLeft;
  enterEntryData(iter, lv, data, len);
  return OWIRE_RET_SUCCESS;
}
