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
// Little-endian store of all 8 bytes (the caller has the room and counts
// only the bytes it needs).
inline void store8(char* dst, UInt64 v) {
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  std::memcpy(dst, &v, 8);
#else
  for (int i = 0; i < 8; ++i) dst[i] = static_cast<char>(v >> (8 * i));
#endif
}
inline UInt32 load32(const char* p) {
  UInt32 v;
  std::memcpy(&v, p, 4);
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  v = __builtin_bswap32(v);
#endif
  return v;
}
// Little-endian load of n bytes (1 <= n <= 8), zero-extended, reading only
// those n bytes: overlapping fixed-size loads, no byte loop.
inline UInt64 loadLE(const char* src, int n) {
  if (n >= 4) {
    const UInt64 lo = load32(src);
    const UInt64 hi = load32(src + n - 4);
    return lo | (hi << (8 * (n - 4)));
  }
  if (n <= 0) return 0;
  const UInt64 b0 = static_cast<UInt8>(src[0]);
  const UInt64 bm = static_cast<UInt8>(src[n >> 1]);
  const UInt64 bl = static_cast<UInt8>(src[n - 1]);
  return b0 | (bm << (8 * (n >> 1))) | (bl << (8 * (n - 1)));
}
inline Int64 loadSignedLE(const char* src, int n) {
  const UInt64 v = loadLE(src, n);
  const int shift = 64 - 8 * n;
  return static_cast<Int64>(v << shift) >> shift;
}
// Copies n bytes (n <= 16) with overlapping fixed-size moves, no call.
inline void copySmall(char* dst, const char* src, UInt32 n) {
  if (n >= 8) {
    UInt64 a, b;
    std::memcpy(&a, src, 8);
    std::memcpy(&b, src + n - 8, 8);
    std::memcpy(dst, &a, 8);
    std::memcpy(dst + n - 8, &b, 8);
  } else if (n >= 4) {
    UInt32 a, b;
    std::memcpy(&a, src, 4);
    std::memcpy(&b, src + n - 4, 4);
    std::memcpy(dst, &a, 4);
    std::memcpy(dst + n - 4, &b, 4);
  } else if (n > 0) {
    const char a = src[0], m = src[n >> 1], z = src[n - 1];
    dst[0] = a;
    dst[n >> 1] = m;
    dst[n - 1] = z;
  }
}
inline void copyBytes(char* dst, const char* src, UInt32 n) {
  if (n <= 16) copySmall(dst, src, n);
  else std::memcpy(dst, src, n);
}

inline UInt16 loadU16(const char* p) { return static_cast<UInt16>(loadLE(p, 2)); }
inline void storeU16(char* p, UInt16 v) { storeLE(p, v, 2); }

// ---------------------------------------------------------------------------
// Fast paths, inline, for the hot types.

// Encodes the content of INT, UINT, FLOAT, DOUBLE, REAL, DATE, TIME or ENUM
// at dst, which must have at least kFastRoom bytes of room. Returns the
// content length, or -1 for any other type or a value to leave to
// encodePrimitiveContent (which then reports it).
enum { kFastRoom = 16 };
inline int encodeNumericFast(UInt8 type, const void* value, char* dst) {
  switch (type) {
    case 3: {
      const Int64 v = *static_cast<const Int64*>(value);
      store8(dst, static_cast<UInt64>(v));
      return signedBytes(v);
    }
    case 4: {
      const UInt64 v = *static_cast<const UInt64*>(value);
      store8(dst, v);
      return unsignedBytes(v);
    }
    case 5: std::memcpy(dst, value, 4); return 4;
    case 6: std::memcpy(dst, value, 8); return 8;
    case 8: {
      const OwfReal& r = *static_cast<const OwfReal*>(value);
      if (r.isBlank) return 0;
      if (r.hint > 30) return -1;
      dst[0] = static_cast<char>(r.hint);
      store8(dst + 1, static_cast<UInt64>(r.value));
      return 1 + signedBytes(r.value);
    }
    case 9: {
      const OwfDate& d = *static_cast<const OwfDate*>(value);
      if (d.day == 0 && d.month == 0 && d.year == 0) return 0;
      dst[0] = static_cast<char>(d.day);
      dst[1] = static_cast<char>(d.month);
      storeU16(dst + 2, d.year);
      return 4;
    }
    case 10: {
      const OwfTime& t = *static_cast<const OwfTime*>(value);
      if (t.hour == 255 && t.minute == 255) return 0;
      dst[0] = static_cast<char>(t.hour);
      dst[1] = static_cast<char>(t.minute);
      dst[2] = static_cast<char>(t.second);
      storeU16(dst + 3, t.millisecond);
      return t.millisecond ? 5 : t.second ? 3 : 2;
    }
    case 14: {
      const UInt16 v = *static_cast<const UInt16*>(value);
      storeU16(dst, v);
      return v > 0xFF ? 2 : 1;
    }
    default: return -1;
  }
}

inline int decodeIntContent(const char* p, UInt32 n, Int64* out) {
  if (n - 1 < 8) {
    *out = loadSignedLE(p, static_cast<int>(n));
    return OWIRE_RET_SUCCESS;
  }
  *out = 0;
  return n == 0 ? OWIRE_RET_BLANK_DATA : OWIRE_RET_INVALID_DATA;
}
inline int decodeUIntContent(const char* p, UInt32 n, UInt64* out) {
  if (n - 1 < 8) {
    *out = loadLE(p, static_cast<int>(n));
    return OWIRE_RET_SUCCESS;
  }
  *out = 0;
  return n == 0 ? OWIRE_RET_BLANK_DATA : OWIRE_RET_INVALID_DATA;
}
inline int decodeRealContent(const char* p, UInt32 n, OwfReal* r) {
  if (n - 1 < 9) {
    const UInt8 hint = static_cast<UInt8>(p[0]) & 0x3F;
    if (hint <= 30) {
      r->isBlank = 0;
      r->hint = hint;
      r->value = n > 1 ? loadSignedLE(p + 1, static_cast<int>(n - 1)) : 0;
      return OWIRE_RET_SUCCESS;
    }
  }
  return decodePrimitiveContent(8, p, n, r);
}
inline int decodeEnumContent(const char* p, UInt32 n, UInt16* out) {
  if (n - 1 < 2) {
    *out = static_cast<UInt16>(loadLE(p, static_cast<int>(n)));
    return OWIRE_RET_SUCCESS;
  }
  return decodePrimitiveContent(14, p, n, out);
}

inline int decodeDateContent(const char* p, UInt32 n, OwfDate* d) {
  if (n == 4) {
    d->day = static_cast<UInt8>(p[0]);
    d->month = static_cast<UInt8>(p[1]);
    d->year = loadU16(p + 2);
    if (d->day | d->month | d->year) return OWIRE_RET_SUCCESS;
  }
  return decodePrimitiveContent(9, p, n, d);
}
inline int decodeTimeContent(const char* p, UInt32 n, OwfTime* t) {
  if ((n == 5 || n == 3 || n == 2) && static_cast<UInt8>(p[0]) != 255) {
    t->hour = static_cast<UInt8>(p[0]);
    t->minute = static_cast<UInt8>(p[1]);
    t->second = n >= 3 ? static_cast<UInt8>(p[2]) : 0;
    t->millisecond = n == 5 ? loadU16(p + 3) : 0;
    return OWIRE_RET_SUCCESS;
  }
  return decodePrimitiveContent(10, p, n, t);
}
inline int decodeBufferContent(const char* p, UInt32 n, OwfBuffer* b) {
  b->length = n;
  b->data = const_cast<char*>(p);
  return n == 0 ? OWIRE_RET_BLANK_DATA : OWIRE_RET_SUCCESS;
}

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_PRIMITIVES_H_
