// Byte forms of the small values inside a message: 32-bit varints, length-
// prefixed buffers, quality of service and state. Readers return an owire
// code: OWIRE_RET_INCOMPLETE_DATA when the bytes end too soon,
// OWIRE_RET_INVALID_DATA when they cannot be a value of the field.
#ifndef ORVO_OWIRE_MSG_PRIMITIVES_H_
#define ORVO_OWIRE_MSG_PRIMITIVES_H_

#include <cstddef>

#include "orvo/owire/owire_msg.h"
#include "owire/Primitives.h"
#include "owire/WireBytes.h"

namespace orvo {
namespace owire {

constexpr int kMaxVarint32Width = 5;

// A varint whose value fits 32 bits, in at most five bytes.
inline int getVarint32(WireReader& in, UInt32* value) {
  UInt32 result = 0;
  for (int i = 0; i < kMaxVarint32Width; ++i) {
    UInt8 byte;
    if (!in.getU8(&byte)) return OWIRE_RET_INCOMPLETE_DATA;
    if (i == kMaxVarint32Width - 1 && byte > 0x0F) return OWIRE_RET_INVALID_DATA;
    result |= static_cast<UInt32>(byte & 0x7F) << (7 * i);
    if ((byte & 0x80) == 0) {
      *value = result;
      return OWIRE_RET_SUCCESS;
    }
  }
  return OWIRE_RET_INVALID_DATA;  // unreachable: the fifth byte was checked above
}

inline std::size_t bufferSize(const OwfBuffer& buffer) {
  return varintWidth(buffer.length) + buffer.length;
}

// OWIRE_RET_INVALID_ARGUMENT for a length without data.
inline int putBuffer(WireWriter& out, const OwfBuffer& buffer) {
  if (buffer.length != 0 && buffer.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return out.putLengthPrefixed(buffer.data, buffer.length) ? OWIRE_RET_SUCCESS
                                                           : OWIRE_RET_BUFFER_TOO_SMALL;
}

// The result points into the reader's bytes, also when it is empty.
inline int getBuffer(WireReader& in, OwfBuffer* buffer) {
  UInt32 length;
  const int rc = getVarint32(in, &length);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  const char* data;
  if (!in.getView(&data, length)) return OWIRE_RET_INCOMPLETE_DATA;
  buffer->length = length;
  buffer->data = const_cast<char*>(data);
  return OWIRE_RET_SUCCESS;
}

// Quality of service and state travel as primitive content (owire/Primitives.h)
// behind a varint length, so that a blank value is simply length 0.
enum : UInt8 { kQosType = 12, kStateType = 13 };

inline OwfQos toPrimitive(const OwireQos& qos) {
  return OwfQos{qos.timeliness, qos.rate, qos.qosBits, qos.timeInfo, qos.rateInfo};
}

inline OwireQos fromPrimitive(const OwfQos& qos) {
  return OwireQos{qos.timeliness, qos.rate, qos.flags, qos.timeInfo, qos.rateInfo};
}

inline OwfState toPrimitive(const OwireState& state) {
  return OwfState{state.streamState, state.dataState, state.statusCode, state.text};
}

inline OwireState fromPrimitive(const OwfState& state) {
  return OwireState{state.streamState, state.dataState, state.code, state.text};
}

// Content size of a primitive value, 0 when it cannot be encoded (the
// encoder then reports why).
template <typename Value>
UInt32 contentSize(UInt8 type, const Value& value) {
  UInt32 size = 0;
  return primitiveContentSize(type, &value, &size) == OWIRE_RET_SUCCESS ? size : 0;
}

template <typename Value>
int putContent(WireWriter& out, UInt8 type, const Value& value) {
  UInt32 size;
  int rc = primitiveContentSize(type, &value, &size);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  if (out.room() < varintWidth(size) + std::size_t{size}) return OWIRE_RET_BUFFER_TOO_SMALL;
  out.putVarint(size);
  char* const end = out.pos() + out.room();
  UInt32 written;
  rc = encodePrimitiveContent(type, &value, out.pos(), out.pos() + size, &written);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  out = WireWriter(out.pos() + written, end);  // the content was written in place
  return OWIRE_RET_SUCCESS;
}

// A blank value decodes as all zeros.
template <typename Value>
int getContent(WireReader& in, UInt8 type, Value* value) {
  OwfBuffer content;
  const int rc = getBuffer(in, &content);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  const int decoded = decodePrimitiveContent(type, content.data, content.length, value);
  return decoded == OWIRE_RET_BLANK_DATA ? OWIRE_RET_SUCCESS : decoded;
}

inline std::size_t qosSize(const OwireQos& qos) {
  const UInt32 size = contentSize(kQosType, toPrimitive(qos));
  return varintWidth(size) + size;
}

inline int putQos(WireWriter& out, const OwireQos& qos) {
  return putContent(out, kQosType, toPrimitive(qos));
}

inline int getQos(WireReader& in, OwireQos* qos) {
  OwfQos value;
  const int rc = getContent(in, kQosType, &value);
  if (rc == OWIRE_RET_SUCCESS) *qos = fromPrimitive(value);
  return rc;
}

inline std::size_t stateSize(const OwireState& state) {
  const UInt32 size = contentSize(kStateType, toPrimitive(state));
  return varintWidth(size) + size;
}

inline int putState(WireWriter& out, const OwireState& state) {
  if (state.text.length != 0 && state.text.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return putContent(out, kStateType, toPrimitive(state));
}

inline int getState(WireReader& in, OwireState* state) {
  OwfState value;
  const int rc = getContent(in, kStateType, &value);
  if (rc == OWIRE_RET_SUCCESS) *state = fromPrimitive(value);
  return rc;
}

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_MSG_PRIMITIVES_H_
