// The byte layout of every message class, written once as lists of parts and
// walked by the encoder, the sizer, the decoder, the copier and the validator,
// so that none of them can disagree on which field travels when.
#ifndef ORVO_OWIRE_MSG_LAYOUT_H_
#define ORVO_OWIRE_MSG_LAYOUT_H_

#include <cstddef>

#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace owire {

// How one field of a record travels.
enum class MsgPartKind : UInt8 {
  kU8,      // one byte
  kU16,     // two bytes
  kVarU32,  // varint of at most five bytes holding a 32-bit value
  kI32,     // four bytes, two's complement
  kBuffer,  // varint length, then the bytes
  kQos,     // quality of service content
  kState,   // state content
  kKey,     // key flags, then the key's own parts
};

struct MsgPart {
  UInt16 flag;  // the flag that makes the part travel; 0 when it always does
  MsgPartKind kind;
  UInt16 copyMask;  // OWIRE_CPMF_* bit of the bytes a kBuffer or kState holds
  UInt16 offset;    // of the field within its record (class record or key)
};

struct MsgPartList {
  const MsgPart* parts;
  int count;
};

struct MsgClassLayout {
  std::size_t recordSize;  // bytes of the class record; nothing after it is read
  MsgPartList parts;       // in wire order
};

// Null for a class outside 1..8.
const MsgClassLayout* msgClassLayout(UInt8 msgClass);

// The parts of a key, driven by its keyFlags.
const MsgPartList& msgKeyParts();

// Buffers of the common part: the copier and validator visit them in every
// class, whether or not they travel.
const MsgPartList& msgBaseBuffers();

inline bool partTravels(const MsgPart& part, UInt16 flags) {
  return part.flag == 0 || (flags & part.flag) != 0;
}

template <typename T>
const T& fieldAt(const void* record, UInt16 offset) {
  return *reinterpret_cast<const T*>(static_cast<const char*>(record) + offset);
}

template <typename T>
T& fieldAt(void* record, UInt16 offset) {
  return *reinterpret_cast<T*>(static_cast<char*>(record) + offset);
}

// msgClass, modelType, bodyFormat, streamId (4), flags (2).
constexpr std::size_t kMsgHeaderSize = 9;

// Bytes owireEncodeMsg writes for `msg`, whose class must be known.
UInt64 msgEncodedSize(const OwireMsg& msg, const MsgClassLayout& layout);

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_MSG_LAYOUT_H_
