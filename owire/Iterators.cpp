// Primitive values at the iterator, and moving an encode iterator to a
// larger buffer.
#include <cstring>

#include "owire/CodecInternal.h"

using namespace orvo::owire;

namespace {

int decodeAt(OwfDecodeIterator* iter, UInt8 type, void* value) {
  if (value == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* s;
  const char* e;
  const int ret = valueRange(iter, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  return decodePrimitiveContent(type, s, static_cast<UInt32>(e - s), value);
}

}  // namespace

// The hot types skip the general dispatch.
#define ORVO_DECODE_FAST(fn)                                          \
  if (value == nullptr) return OWIRE_RET_INVALID_ARGUMENT;            \
  const char* s;                                                      \
  const char* e;                                                      \
  const int ret = valueRange(iter, &s, &e);                           \
  if (ret != OWIRE_RET_SUCCESS) return ret;                           \
  return fn(s, static_cast<UInt32>(e - s), value)

int owireDecodeInt(OwfDecodeIterator* iter, Int64* value) { ORVO_DECODE_FAST(decodeIntContent); }
int owireDecodeUInt(OwfDecodeIterator* iter, UInt64* value) { ORVO_DECODE_FAST(decodeUIntContent); }
int owireDecodeFloat(OwfDecodeIterator* iter, float* value) { return decodeAt(iter, 5, value); }
int owireDecodeDouble(OwfDecodeIterator* iter, double* value) { return decodeAt(iter, 6, value); }
int owireDecodeReal(OwfDecodeIterator* iter, OwfReal* value) { ORVO_DECODE_FAST(decodeRealContent); }
int owireDecodeDate(OwfDecodeIterator* iter, OwfDate* value) { ORVO_DECODE_FAST(decodeDateContent); }
int owireDecodeTime(OwfDecodeIterator* iter, OwfTime* value) { ORVO_DECODE_FAST(decodeTimeContent); }
int owireDecodeDateTime(OwfDecodeIterator* iter, OwfDateTime* value) {
  return decodeAt(iter, 11, value);
}
int owireDecodeQos(OwfDecodeIterator* iter, OwfQos* value) { return decodeAt(iter, 12, value); }
int owireDecodeState(OwfDecodeIterator* iter, OwfState* value) { return decodeAt(iter, 13, value); }
int owireDecodeEnum(OwfDecodeIterator* iter, UInt16* value) { ORVO_DECODE_FAST(decodeEnumContent); }
int owireDecodeBuffer(OwfDecodeIterator* iter, OwfBuffer* value) {
  ORVO_DECODE_FAST(decodeBufferContent);
}

int owireEncodePrimitiveType(OwfEncodeIterator* iter, UInt8 primitiveType, const void* value) {
  if (iter == nullptr || iter->curPos == nullptr || iter->endPos == nullptr)
    return OWIRE_RET_INVALID_ARGUMENT;
  if (normalizeType(primitiveType) == 15) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
  UInt32 n;
  const int ret = encodePrimitiveContent(primitiveType, value, iter->curPos, iter->endPos, &n);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  iter->curPos += n;
  return OWIRE_RET_SUCCESS;
}

int owireRealignEncodeIteratorBuffer(OwfEncodeIterator* iter, OwfBuffer* newBuffer) {
  if (iter == nullptr || newBuffer == nullptr || newBuffer->data == nullptr ||
      iter->buffer == nullptr || iter->curPos == nullptr)
    return OWIRE_RET_INVALID_ARGUMENT;
  char* oldStart = iter->buffer->data;
  if (oldStart == nullptr || iter->curPos < oldStart) return OWIRE_RET_INVALID_ARGUMENT;
  const std::size_t used = static_cast<std::size_t>(iter->curPos - oldStart);
  if (newBuffer->length < used) return OWIRE_RET_BUFFER_TOO_SMALL;
  if (iter->encodingLevel < -1 || iter->encodingLevel >= OWIRE_MAX_LEVELS)
    return OWIRE_RET_INVALID_ARGUMENT;
  char* newStart = newBuffer->data;
  if (used) std::memmove(newStart, oldStart, used);
  auto move = [&](char*& p) {
    if (p != nullptr) p = newStart + (p - oldStart);
  };
  for (int i = 0; i <= iter->encodingLevel; ++i) {
    OwfEncodeLevel& lv = iter->levels[i];
    move(lv.containerStart);
    move(lv.countPos);
    move(lv.entryStart);
    move(lv.lengthPos);
    move(lv.setDataPos);
  }
  iter->curPos = newStart + used;
  iter->endPos = newStart + newBuffer->length;
  iter->buffer = newBuffer;
  return OWIRE_RET_SUCCESS;
}
