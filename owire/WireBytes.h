// Bounded byte writer and reader shared by every part of the codec. All
// multi-byte integers on the wire are little-endian. A writer never writes
// past its end and a reader never reads past its end: each operation returns
// false instead, and leaves its position unchanged.
#ifndef ORVO_OWIRE_WIRE_BYTES_H_
#define ORVO_OWIRE_WIRE_BYTES_H_

#include <cstddef>
#include <cstring>

#include "orvo/common/Types.h"

namespace orvo {
namespace owire {

using common::Int64;
using common::UInt16;
using common::UInt32;
using common::UInt64;
using common::UInt8;

// Number of bytes of the shortest two's-complement form of `v` (1..8).
inline int signedWidth(Int64 v) {
  int n = 1;
  while (n < 8) {
    const Int64 lo = -(Int64{1} << (8 * n - 1));
    const Int64 hi = (Int64{1} << (8 * n - 1)) - 1;
    if (v >= lo && v <= hi) break;
    ++n;
  }
  return n;
}

// Number of bytes of the shortest unsigned form of `v` (1..8).
inline int unsignedWidth(UInt64 v) {
  int n = 1;
  while (n < 8 && (v >> (8 * n)) != 0) ++n;
  return n;
}

// Number of bytes of the variable-length form of `v` (7 bits a byte, high bit
// set on every byte but the last).
inline int varintWidth(UInt64 v) {
  int n = 1;
  while (v >= 0x80) {
    v >>= 7;
    ++n;
  }
  return n;
}

class WireWriter {
 public:
  WireWriter(char* pos, char* end) : _pos(pos), _end(end) {}

  char* pos() const { return _pos; }
  std::size_t room() const { return static_cast<std::size_t>(_end - _pos); }

  bool putU8(UInt8 v) {
    if (_pos == _end) return false;
    *_pos++ = static_cast<char>(v);
    return true;
  }
  bool putU16(UInt16 v) { return putLittle(v, 2); }
  bool putU32(UInt32 v) { return putLittle(v, 4); }
  bool putU64(UInt64 v) { return putLittle(v, 8); }
  // The low `width` bytes of `v`, little-endian.
  bool putLittle(UInt64 v, int width) {
    if (room() < static_cast<std::size_t>(width)) return false;
    for (int i = 0; i < width; ++i) _pos[i] = static_cast<char>(v >> (8 * i));
    _pos += width;
    return true;
  }
  bool putVarint(UInt64 v) {
    if (room() < static_cast<std::size_t>(varintWidth(v))) return false;
    while (v >= 0x80) {
      *_pos++ = static_cast<char>((v & 0x7F) | 0x80);
      v >>= 7;
    }
    *_pos++ = static_cast<char>(v);
    return true;
  }
  bool putBytes(const void* data, std::size_t n) {
    if (room() < n) return false;
    if (n != 0) std::memcpy(_pos, data, n);
    _pos += n;
    return true;
  }
  // A varint length followed by the bytes.
  bool putLengthPrefixed(const void* data, std::size_t n) {
    char* start = _pos;
    if (putVarint(n) && putBytes(data, n)) return true;
    _pos = start;
    return false;
  }

 private:
  char* _pos;
  char* _end;
};

class WireReader {
 public:
  WireReader(const char* pos, const char* end) : _pos(pos), _end(end) {}

  const char* pos() const { return _pos; }
  const char* end() const { return _end; }
  std::size_t remaining() const { return static_cast<std::size_t>(_end - _pos); }
  bool atEnd() const { return _pos == _end; }

  bool getU8(UInt8* v) {
    if (_pos == _end) return false;
    *v = static_cast<UInt8>(*_pos++);
    return true;
  }
  bool getU16(UInt16* v) {
    UInt64 x;
    if (!getLittle(&x, 2)) return false;
    *v = static_cast<UInt16>(x);
    return true;
  }
  bool getU32(UInt32* v) {
    UInt64 x;
    if (!getLittle(&x, 4)) return false;
    *v = static_cast<UInt32>(x);
    return true;
  }
  bool getU64(UInt64* v) { return getLittle(v, 8); }
  bool getLittle(UInt64* v, int width) {
    if (remaining() < static_cast<std::size_t>(width)) return false;
    UInt64 x = 0;
    for (int i = 0; i < width; ++i) x |= UInt64{static_cast<UInt8>(_pos[i])} << (8 * i);
    _pos += width;
    *v = x;
    return true;
  }
  // Sign-extends a `width`-byte little-endian value.
  bool getSigned(Int64* v, int width) {
    UInt64 x;
    if (width < 1 || width > 8 || !getLittle(&x, width)) return false;
    if (width < 8 && (x >> (8 * width - 1)) & 1) x |= ~UInt64{0} << (8 * width);
    *v = static_cast<Int64>(x);
    return true;
  }
  // At most ten bytes; a longer or unterminated form fails.
  bool getVarint(UInt64* v) {
    UInt64 x = 0;
    const char* p = _pos;
    for (int shift = 0; shift < 64; shift += 7) {
      if (p == _end) return false;
      const UInt8 b = static_cast<UInt8>(*p++);
      x |= UInt64{b & 0x7Fu} << shift;
      if ((b & 0x80) == 0) {
        _pos = p;
        *v = x;
        return true;
      }
    }
    return false;
  }
  // A view of the next `n` bytes; nothing is copied.
  bool getView(const char** data, std::size_t n) {
    if (remaining() < n) return false;
    *data = _pos;
    _pos += n;
    return true;
  }
  bool getLengthPrefixed(const char** data, std::size_t* n) {
    const char* start = _pos;
    UInt64 len;
    if (getVarint(&len) && len <= remaining() && getView(data, static_cast<std::size_t>(len))) {
      *n = static_cast<std::size_t>(len);
      return true;
    }
    _pos = start;
    return false;
  }
  bool skip(std::size_t n) {
    if (remaining() < n) return false;
    _pos += n;
    return true;
  }

 private:
  const char* _pos;
  const char* _end;
};

}  // namespace owire
}  // namespace orvo

#endif  // ORVO_OWIRE_WIRE_BYTES_H_
