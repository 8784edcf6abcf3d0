// Internal helpers shared by the container parts of the codec: level push and
// pop, length slots, varints, and the byte range of the value the decode
// iterator stands on. Not for use outside owire/.
#ifndef ORVO_OWIRE_CODEC_INTERNAL_H_
#define ORVO_OWIRE_CODEC_INTERNAL_H_

#include <cstring>

#include "orvo/owire/owire.h"
#include "owire/Primitives.h"

namespace orvo {
namespace owire {

// Private level states (the public ones are 0, 2, 7, 8, 15).
enum : UInt8 {
  kStateNone = EncodeLevelNone,
  kStateSummary = EncodeLevelSummary,    // summary data written in place
  kStateSetDefs = 3,                     // set definitions written in place
  kStateSetData = 5,                     // set-defined rows of a list
  kStateEntries = EncodeLevelSetDone,    // entries phase
  kStateEntryOpen = EncodeLevelEntryOpen,
  kStateFilterEntryDone = EncodeLevelFilterEntryDone,
};

// entryFlags bit: the open entry is a set-defined row.
enum : UInt8 { kOpenSetRow = 0x01 };

enum : UInt32 { kMaxCount = 0xFFFF, kMaxSlot = (1u << 28) - 1 };
constexpr int kSlotWidth = 4;

// Standard maximum widths of header parts.
inline int varintSize(UInt32 v) {
  return v < (1u << 7) ? 1 : v < (1u << 14) ? 2 : v < (1u << 21) ? 3 : v < (1u << 28) ? 4 : 5;
}
inline char* putVarint(char* p, UInt32 v) {
  while (v >= 0x80) {
    *p++ = static_cast<char>((v & 0x7F) | 0x80);
    v >>= 7;
  }
  *p++ = static_cast<char>(v);
  return p;
}
// The 4-byte form of a length slot (non-minimal varint, values < 2^28).
inline void putPadded4(char* p, UInt32 v) {
  p[0] = static_cast<char>((v & 0x7F) | 0x80);
  p[1] = static_cast<char>(((v >> 7) & 0x7F) | 0x80);
  p[2] = static_cast<char>(((v >> 14) & 0x7F) | 0x80);
  p[3] = static_cast<char>((v >> 21) & 0x7F);
}

inline std::size_t room(const OwfEncodeIterator* it) {
  return static_cast<std::size_t>(it->endPos - it->curPos);
}

inline OwfEncodeLevel* encodeLevel(OwfEncodeIterator* it) {
  return (it->encodingLevel >= 0 && it->encodingLevel < OWIRE_MAX_LEVELS)
             ? &it->levels[it->encodingLevel]
             : nullptr;
}

// Opens a level for a container of `type` at curPos. Allowed at the top, or
// inside an open entry, an open set-defined row or an open summary.
inline int pushEncodeLevel(OwfEncodeIterator* it, UInt8 type, OwfEncodeLevel** out) {
  if (it == nullptr || it->curPos == nullptr || it->endPos == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (it->encodingLevel >= OWIRE_MAX_LEVELS - 1) return OWIRE_RET_ITERATOR_OVERRUN;
  if (it->encodingLevel < -1) return OWIRE_RET_INVALID_ARGUMENT;
  if (it->encodingLevel >= 0) {
    const UInt8 s = it->levels[it->encodingLevel].levelState;
    if (s != kStateEntryOpen && s != kStateSummary) return OWIRE_RET_INVALID_ENCODE_STATE;
  }
  OwfEncodeLevel* lv = &it->levels[++it->encodingLevel];
  lv->containerStart = it->curPos;
  lv->countPos = nullptr;
  lv->entryStart = it->curPos;
  lv->lengthPos = nullptr;
  lv->itemCount = 0;
  lv->containerType = type;
  lv->levelState = kStateNone;
  lv->flags = 0;
  lv->entryFlags = 0;
  lv->setDef = nullptr;
  lv->setIndex = 0;
  lv->keyType = 0;
  lv->phase = 0;
  lv->totalCountHint = 0;
  lv->pendingSummary = nullptr;
  lv->pendingSummaryLength = 0;
  lv->itemLength = 0;
  lv->setDataPos = nullptr;
  *out = lv;
  return OWIRE_RET_SUCCESS;
}

// Closes the current level. success: patches the count; failure: rolls the
// whole container back. Either way the level is popped.
inline int popEncodeLevel(OwfEncodeIterator* it, UInt8 type, bool success) {
  OwfEncodeLevel* lv = encodeLevel(it);
  if (lv == nullptr || lv->containerType != type) return OWIRE_RET_INVALID_ENCODE_STATE;
  if (!success) {
    it->curPos = lv->containerStart;
    lv->levelState = kStateNone;
    --it->encodingLevel;
    return OWIRE_RET_SUCCESS;
  }
  if (lv->levelState != kStateEntries && !(lv->levelState == kStateNone && type == 15))
    return OWIRE_RET_INVALID_ENCODE_STATE;
  if (lv->countPos) storeU16(lv->countPos, static_cast<UInt16>(lv->itemCount));
  lv->levelState = kStateNone;
  --it->encodingLevel;
  if (it->encodingLevel >= 0) {
    OwfEncodeLevel* parent = &it->levels[it->encodingLevel];
    if (parent->levelState == kStateEntryOpen && parent->containerType == 135)
      parent->levelState = kStateFilterEntryDone;
  }
  return OWIRE_RET_SUCCESS;
}

// Closes a length slot whose content runs from slot + 4 to curPos: content
// under 128 bytes moves down to a 1-byte length, longer content keeps the
// 4-byte form.
inline int closeSlot(OwfEncodeIterator* it, char* slot) {
  const std::size_t len = static_cast<std::size_t>(it->curPos - (slot + kSlotWidth));
  if (len < 0x80) {
    if (len) std::memmove(slot + 1, slot + kSlotWidth, len);
    slot[0] = static_cast<char>(len);
    it->curPos -= kSlotWidth - 1;
    return OWIRE_RET_SUCCESS;
  }
  if (len > kMaxSlot) return OWIRE_RET_INVALID_DATA;
  putPadded4(slot, static_cast<UInt32>(len));
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Decoding.

// Reads a varint of at most 5 bytes whose value fits 32 bits.
inline bool readVarint(const char*& p, const char* end, UInt32* v) {
  if (p < end && static_cast<UInt8>(*p) < 0x80) {
    *v = static_cast<UInt8>(*p++);
    return true;
  }
  UInt64 x = 0;
  const char* q = p;
  for (int shift = 0; shift < 35; shift += 7) {
    if (q >= end) return false;
    const UInt8 b = static_cast<UInt8>(*q++);
    x |= UInt64{b & 0x7Fu} << shift;
    if ((b & 0x80) == 0) {
      if (x > 0xFFFFFFFFull) return false;
      *v = static_cast<UInt32>(x);
      p = q;
      return true;
    }
  }
  return false;
}
// A varint length and that many bytes, all before `end`.
inline bool readSpan(const char*& p, const char* end, const char** data, UInt32* len) {
  UInt32 n;
  const char* q = p;
  if (!readVarint(q, end, &n)) return false;
  if (static_cast<std::size_t>(end - q) < n) return false;
  *data = q;
  *len = n;
  p = q + n;
  return true;
}
inline void setBuf(OwfBuffer* b, const char* data, UInt32 len) {
  b->length = len;
  b->data = len ? const_cast<char*>(data) : const_cast<char*>(data);
}

// The bytes of the value the iterator stands on: from curPos to the end of
// the top buffer, or to entryEnd, the end of the entry decoded last (a header
// with summary data sets it to the summary's end).
inline int valueRange(const OwfDecodeIterator* it, const char** start, const char** end) {
  if (it == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const int L = it->decodingLevel;
  if (L < -1 || L >= OWIRE_MAX_LEVELS) return OWIRE_RET_INVALID_ARGUMENT;
  const char* s = it->curPos;
  const char* e = L < 0 ? it->levels[0].endPos : it->levels[L].entryEnd;
  if (s == nullptr || e == nullptr) {
    if (s != e) return OWIRE_RET_INVALID_ARGUMENT;
  } else if (e < s) {
    return OWIRE_RET_INVALID_ARGUMENT;
  }
  *start = s;
  *end = e;
  return OWIRE_RET_SUCCESS;
}

// Opens a decode level for a container of `type` over [start, end).
inline int pushDecodeLevel(OwfDecodeIterator* it, UInt8 type, const char* start, const char* end,
                           OwfDecodeLevel** out) {
  if (it->decodingLevel >= OWIRE_MAX_LEVELS - 1) return OWIRE_RET_ITERATOR_OVERRUN;
  OwfDecodeLevel* lv = &it->levels[++it->decodingLevel];
  lv->endPos = end;
  lv->nextEntryPos = end;
  lv->nextItem = 0;
  lv->containerType = type;
  lv->flags = 0;
  lv->fieldSetDef = nullptr;
  lv->elementSetDef = nullptr;
  lv->itemCount = 0;
  lv->setCount = 0;
  lv->reserved = 0;
  lv->entryEnd = start;
  lv->summaryPos = nullptr;
  lv->setDefsPos = nullptr;
  lv->setPos = nullptr;
  lv->setEnd = nullptr;
  lv->summaryLength = 0;
  lv->setDefsLength = 0;
  lv->standardLeft = 0;
  lv->itemLength = 0;
  lv->entryType = 0;
  lv->setCountTotal = 0;
  it->curPos = start;
  *out = lv;
  return OWIRE_RET_SUCCESS;
}

// Common head of every entry decode: the level of `type`, or the end.
inline int entryLevel(OwfDecodeIterator* it, UInt8 type, OwfDecodeLevel** out) {
  if (it == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const int L = it->decodingLevel;
  if (L < 0) return OWIRE_RET_END_OF_CONTAINER;
  if (L >= OWIRE_MAX_LEVELS) return OWIRE_RET_INVALID_ARGUMENT;
  OwfDecodeLevel* lv = &it->levels[L];
  if (lv->containerType != type) return OWIRE_RET_INVALID_ARGUMENT;
  if (lv->setCount == 0 && lv->standardLeft == 0) {
    it->curPos = lv->endPos;
    --it->decodingLevel;
    return OWIRE_RET_END_OF_CONTAINER;
  }
  *out = lv;
  return OWIRE_RET_SUCCESS;
}

// Marks the entry whose data is [data, data + len) as the current value.
inline void enterEntryData(OwfDecodeIterator* it, OwfDecodeLevel* lv, const char* data, UInt32 len) {
  lv->entryEnd = data + len;
  it->curPos = data;
}

// Set rows: the width of a packed set code's bytes at p (0 = not packed,
// -1 = bad or truncated).
int packedRowWidth(UInt8 code, const char* p, const char* end);
// Base data type of a set code (64..80), or the code itself.
UInt8 setCodeBaseType(UInt8 code);
// Encodes one set-defined row value. `valueType` is the caller's type (0 = the
// set's own), `value` an unencoded value or null, `enc` pre-encoded content.
int encodeSetRow(OwfEncodeIterator* it, UInt8 code, UInt8 valueType, const void* value,
                 const OwfBuffer* enc);
// Decodes one set-defined row at *p: the entry data, as content that the
// primitive decoders take.
int decodeSetRow(UInt8 code, const char*& p, const char* end, const char** data, UInt32* len);

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_CODEC_INTERNAL_H_
