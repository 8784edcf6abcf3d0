// Primitive content: the bytes of one primitive value without any length
// prefix, as docs/wire-format.md ("Primitive content") lays them out. This is
// the codec's internal API for every part that writes or reads a primitive:
// the containers here and the message codec (owire/Msg*.cpp). Stable: the
// functions below keep their signatures and meaning.
//
// Value pointers, by data type code (the same as owireEncodePrimitiveType):
//   3 INT Int64*            4 UINT UInt64*          5 FLOAT float*
//   6 DOUBLE double*        8 REAL OwfReal*         9 DATE OwfDate*
//  10 TIME OwfTime*        11 DATETIME OwfDateTime* 12 QOS OwfQos*
//  13 STATE OwfState*      14 ENUM UInt16*
//  16 BUFFER, 17 ASCII_STRING, 18 UTF8_STRING, 19 OMTES_STRING, 130 OPAQUE,
//  131 XML, 134 ANSI_PAGE: OwfBuffer* (the bytes are the content).
// The legacy codes 1, 2 and 7 are taken as 3, 4 and 8.
//
// Blank is zero-length content. Encoding with a null value writes blank.
#ifndef ORVO_OWIRE_PRIMITIVES_H_
#define ORVO_OWIRE_PRIMITIVES_H_

#include <cstddef>
#include <cstring>

#include "orvo/owire/owire.h"

namespace orvo {
namespace owire {

// Largest content of any fixed-layout primitive (DATETIME: 9 bytes; REAL: 9).
enum { kMaxNumericContent = 9 };

// 1 -> 3, 2 -> 4, 7 -> 8; any other code unchanged.
inline UInt8 normalizeType(UInt8 type) {
  switch (type) {
    case 1: return 3;
    case 2: return 4;
    case 7: return 8;
    default: return type;
  }
}

// True for the codes that have primitive content: 3..6, 8..19, 130, 131, 134
// (15, ARRAY, is primitive on the wire but has no value pointer form).
inline bool isPrimitiveType(UInt8 type) {
  type = normalizeType(type);
  return (type >= 3 && type <= 19 && type != 7) || type == 130 || type == 131 || type == 134;
}

// Byte-string types: content is the bytes themselves.
inline bool isBufferType(UInt8 type) {
  return (type >= 16 && type <= 19) || type == 130 || type == 131 || type == 134;
}

// Real hints: 0..14 exponent -14..0, 15..21 exponent +1..+7, 22..30 the
// divisors 1, 2, 4, ..., 256, 33 +infinity, 34 -infinity, 35 not a number.
inline bool realHintValid(UInt8 hint) { return hint <= 30 || (hint >= 33 && hint <= 35); }

// Encodes the content of `value` (null: blank, zero bytes) into [dst, end).
// Returns OWIRE_RET_SUCCESS and sets *written, or OWIRE_RET_BUFFER_TOO_SMALL
// (nothing counted as written), OWIRE_RET_INVALID_DATA (value not encodable)
// or OWIRE_RET_UNSUPPORTED_DATA_TYPE.
int encodePrimitiveContent(UInt8 type, const void* value, char* dst, char* end, UInt32* written);

// Exact content size of `value` of `type` (null: 0). Same failures as above,
// never OWIRE_RET_BUFFER_TOO_SMALL.
int primitiveContentSize(UInt8 type, const void* value, UInt32* size);

// Decodes content [data, data + length) into the record for `type`. Returns
// OWIRE_RET_SUCCESS, OWIRE_RET_BLANK_DATA (the record holds the blank form:
// zeros; a time holds 255, 255, 255, 65535; a real has isBlank 1),
// OWIRE_RET_INVALID_DATA or OWIRE_RET_UNSUPPORTED_DATA_TYPE. Never reads
// outside the range. Buffers and state texts point into `data`.
int decodePrimitiveContent(UInt8 type, const char* data, UInt32 length, void* value);

// Fixed-width content (Array items of item length `width`): the value padded
// to exactly `width` bytes. Types 3, 4, 14 (1..8 bytes, value must fit),
// 5 (4), 6 (8), 9 (4), 10 (2, 3, 5), 11 (6, 7, 9), byte strings (zero padded).
// Null value writes the blank form where one exists (DATE, TIME, DATETIME).
int encodeFixedContent(UInt8 type, const void* value, UInt16 width, char* dst, char* end);
// Re-encodes existing content `src` to the fixed width (for pre-encoded items).
int refitFixedContent(UInt8 type, const char* src, UInt32 length, UInt16 width, char* dst,
                      char* end);

// ---------------------------------------------------------------------------
// Small helpers shared by the codec's parts.

inline int signedBytes(Int64 v) {
  const UInt64 u = static_cast<UInt64>(v ^ (v >> 63));
  const int bits = 64 - __builtin_clzll(u | 1);
  return bits / 8 + 1;
}
inline int unsignedBytes(UInt64 v) {
  const int bits = 64 - __builtin_clzll(v | 1);
  return (bits + 7) / 8;
}
// Little-endian store of the low n bytes (n <= 8).
inline void storeLE(char* dst, UInt64 v, int n) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  std::memcpy(dst, &v, static_cast<std::size_t>(n));
#else
  for (int i = 0; i < n; ++i) dst[i] = static_cast<char>(v >> (8 * i));
#endif
}
// Little-endian load of n bytes (n <= 8), zero-extended.
inline UInt64 loadLE(const char* src, int n) {
  UInt64 v = 0;
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  std::memcpy(&v, src, static_cast<std::size_t>(n));
#else
  for (int i = 0; i < n; ++i) v |= UInt64{static_cast<UInt8>(src[i])} << (8 * i);
#endif
  return v;
}
inline Int64 loadSignedLE(const char* src, int n) {
  const UInt64 v = loadLE(src, n);
  const int shift = 64 - 8 * n;
  return static_cast<Int64>(v << shift) >> shift;
}
inline UInt16 loadU16(const char* p) { return static_cast<UInt16>(loadLE(p, 2)); }
inline void storeU16(char* p, UInt16 v) { storeLE(p, v, 2); }

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_PRIMITIVES_H_
