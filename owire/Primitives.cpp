// Primitive content: encoding and decoding of every primitive type.
#include "owire/Primitives.h"

#include <cstring>

namespace orvo {
namespace owire {

namespace {

inline bool dateIsZero(const OwfDate& d) { return d.day == 0 && d.month == 0 && d.year == 0; }
inline bool timeIsBlankMark(const OwfTime& t) { return t.hour == 255 && t.minute == 255; }
inline void setBlankTime(OwfTime* t) {
  t->hour = 255;
  t->minute = 255;
  t->second = 255;
  t->millisecond = 65535;
}
inline int timeWidth(const OwfTime& t) {
  if (t.millisecond != 0) return 5;
  if (t.second != 0) return 3;
  return 2;
}
inline void putTime(char* p, const OwfTime& t, int width) {
  p[0] = static_cast<char>(t.hour);
  p[1] = static_cast<char>(t.minute);
  if (width >= 3) p[2] = static_cast<char>(t.second);
  if (width == 5) storeU16(p + 3, t.millisecond);
}
inline void putDate(char* p, const OwfDate& d) {
  p[0] = static_cast<char>(d.day);
  p[1] = static_cast<char>(d.month);
  storeU16(p + 2, d.year);
}
inline void getDate(const char* p, OwfDate* d) {
  d->day = static_cast<UInt8>(p[0]);
  d->month = static_cast<UInt8>(p[1]);
  d->year = loadU16(p + 2);
}
// Time of 2, 3 or 5 bytes; false on another width.
inline bool getTime(const char* p, UInt32 n, OwfTime* t) {
  if (n != 2 && n != 3 && n != 5) return false;
  t->hour = static_cast<UInt8>(p[0]);
  t->minute = static_cast<UInt8>(p[1]);
  t->second = n >= 3 ? static_cast<UInt8>(p[2]) : 0;
  t->millisecond = n == 5 ? loadU16(p + 3) : 0;
  if (t->hour == 255 && t->minute == 255) {
    // A short blank mark still reads as the full blank mark.
    if (n < 3) t->second = 255;
    if (n < 5) t->millisecond = 65535;
  }
  return true;
}

UInt32 qosSize(const OwfQos& q) {
  return 2u + (q.timeliness == 3 ? 2u : 0u) + (q.rate == 3 ? 2u : 0u);
}

}  // namespace

int primitiveContentSize(UInt8 type, const void* value, UInt32* size) {
  type = normalizeType(type);
  if (value == nullptr) {
    if (!isPrimitiveType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
    *size = 0;
    return OWIRE_RET_SUCCESS;
  }
  switch (type) {
    case 3: *size = static_cast<UInt32>(signedBytes(*static_cast<const Int64*>(value))); break;
    case 4: *size = static_cast<UInt32>(unsignedBytes(*static_cast<const UInt64*>(value))); break;
    case 5: *size = 4; break;
    case 6: *size = 8; break;
    case 8: {
      const OwfReal& r = *static_cast<const OwfReal*>(value);
      if (r.isBlank) *size = 0;
      else if (!realHintValid(r.hint)) return OWIRE_RET_INVALID_DATA;
      else if (r.hint >= 33) *size = 1;
      else *size = 1u + static_cast<UInt32>(signedBytes(r.value));
      break;
    }
    case 9: *size = dateIsZero(*static_cast<const OwfDate*>(value)) ? 0 : 4; break;
    case 10: {
      const OwfTime& t = *static_cast<const OwfTime*>(value);
      *size = timeIsBlankMark(t) ? 0 : static_cast<UInt32>(timeWidth(t));
      break;
    }
    case 11: {
      const OwfDateTime& dt = *static_cast<const OwfDateTime*>(value);
      if (dateIsZero(dt.date) && timeIsBlankMark(dt.time)) *size = 0;
      else if (timeIsBlankMark(dt.time)) *size = 9;
      else *size = 4u + static_cast<UInt32>(timeWidth(dt.time));
      break;
    }
    case 12: {
      const OwfQos& q = *static_cast<const OwfQos*>(value);
      if (q.timeliness > 15 || q.rate > 15) return OWIRE_RET_INVALID_DATA;
      *size = qosSize(q);
      break;
    }
    case 13: {
      const OwfState& s = *static_cast<const OwfState*>(value);
      if (s.text.length != 0 && s.text.data == nullptr) return OWIRE_RET_INVALID_DATA;
      *size = 3u + s.text.length;
      if (*size < s.text.length) return OWIRE_RET_INVALID_DATA;
      break;
    }
    case 14: *size = *static_cast<const UInt16*>(value) > 0xFF ? 2 : 1; break;
    default: {
      if (!isBufferType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
      const OwfBuffer& b = *static_cast<const OwfBuffer*>(value);
      if (b.length != 0 && b.data == nullptr) return OWIRE_RET_INVALID_DATA;
      *size = b.length;
      break;
    }
  }
  return OWIRE_RET_SUCCESS;
}

int encodePrimitiveContent(UInt8 type, const void* value, char* dst, char* end, UInt32* written) {
  type = normalizeType(type);
  const std::size_t room = static_cast<std::size_t>(end - dst);
  if (value == nullptr) {
    if (!isPrimitiveType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
    *written = 0;
    return OWIRE_RET_SUCCESS;
  }
  switch (type) {
    case 3: {
      const Int64 v = *static_cast<const Int64*>(value);
      const int n = signedBytes(v);
      if (room < static_cast<std::size_t>(n)) return OWIRE_RET_BUFFER_TOO_SMALL;
      storeLE(dst, static_cast<UInt64>(v), n);
      *written = static_cast<UInt32>(n);
      return OWIRE_RET_SUCCESS;
    }
    case 4: {
      const UInt64 v = *static_cast<const UInt64*>(value);
      const int n = unsignedBytes(v);
      if (room < static_cast<std::size_t>(n)) return OWIRE_RET_BUFFER_TOO_SMALL;
      storeLE(dst, v, n);
      *written = static_cast<UInt32>(n);
      return OWIRE_RET_SUCCESS;
    }
    case 5:
      if (room < 4) return OWIRE_RET_BUFFER_TOO_SMALL;
      std::memcpy(dst, value, 4);
      *written = 4;
      return OWIRE_RET_SUCCESS;
    case 6:
      if (room < 8) return OWIRE_RET_BUFFER_TOO_SMALL;
      std::memcpy(dst, value, 8);
      *written = 8;
      return OWIRE_RET_SUCCESS;
    case 8: {
      const OwfReal& r = *static_cast<const OwfReal*>(value);
      if (r.isBlank) {
        *written = 0;
        return OWIRE_RET_SUCCESS;
      }
      if (!realHintValid(r.hint)) return OWIRE_RET_INVALID_DATA;
      const int n = r.hint >= 33 ? 0 : signedBytes(r.value);
      if (room < static_cast<std::size_t>(n + 1)) return OWIRE_RET_BUFFER_TOO_SMALL;
      dst[0] = static_cast<char>(r.hint);
      storeLE(dst + 1, static_cast<UInt64>(r.value), n);
      *written = static_cast<UInt32>(n + 1);
      return OWIRE_RET_SUCCESS;
    }
    case 14: {
      const UInt16 v = *static_cast<const UInt16*>(value);
      const int n = v > 0xFF ? 2 : 1;
      if (room < static_cast<std::size_t>(n)) return OWIRE_RET_BUFFER_TOO_SMALL;
      storeLE(dst, v, n);
      *written = static_cast<UInt32>(n);
      return OWIRE_RET_SUCCESS;
    }
    default: break;
  }
  UInt32 size;
  const int ret = primitiveContentSize(type, value, &size);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (room < size) return OWIRE_RET_BUFFER_TOO_SMALL;
  *written = size;
  if (size == 0) return OWIRE_RET_SUCCESS;
  switch (type) {
    case 9: putDate(dst, *static_cast<const OwfDate*>(value)); break;
    case 10: putTime(dst, *static_cast<const OwfTime*>(value), static_cast<int>(size)); break;
    case 11: {
      const OwfDateTime& dt = *static_cast<const OwfDateTime*>(value);
      putDate(dst, dt.date);
      putTime(dst + 4, dt.time, static_cast<int>(size) - 4);
      break;
    }
    case 12: {
      const OwfQos& q = *static_cast<const OwfQos*>(value);
      dst[0] = static_cast<char>(q.timeliness | (q.rate << 4));
      dst[1] = static_cast<char>(q.flags);
      char* p = dst + 2;
      if (q.timeliness == 3) {
        storeU16(p, q.timeInfo);
        p += 2;
      }
      if (q.rate == 3) storeU16(p, q.rateInfo);
      break;
    }
    case 13: {
      const OwfState& s = *static_cast<const OwfState*>(value);
      dst[0] = static_cast<char>(s.streamState);
      dst[1] = static_cast<char>(s.dataState);
      dst[2] = static_cast<char>(s.code);
      if (s.text.length) std::memcpy(dst + 3, s.text.data, s.text.length);
      break;
    }
    default: std::memcpy(dst, static_cast<const OwfBuffer*>(value)->data, size); break;
  }
  return OWIRE_RET_SUCCESS;
}

int decodePrimitiveContent(UInt8 type, const char* p, UInt32 n, void* value) {
  type = normalizeType(type);
  switch (type) {
    case 3: return decodeIntContent(p, n, static_cast<Int64*>(value));
    case 4: return decodeUIntContent(p, n, static_cast<UInt64*>(value));
    case 5:
      if (n == 0) {
        *static_cast<float*>(value) = 0;
        return OWIRE_RET_BLANK_DATA;
      }
      if (n != 4) return OWIRE_RET_INVALID_DATA;
      std::memcpy(value, p, 4);
      return OWIRE_RET_SUCCESS;
    case 6:
      if (n == 0) {
        *static_cast<double*>(value) = 0;
        return OWIRE_RET_BLANK_DATA;
      }
      if (n != 8) return OWIRE_RET_INVALID_DATA;
      std::memcpy(value, p, 8);
      return OWIRE_RET_SUCCESS;
    case 8: {
      OwfReal* r = static_cast<OwfReal*>(value);
      if (n == 0 || (n == 1 && static_cast<UInt8>(p[0]) == 0x3F)) {
        r->isBlank = 1;
        r->hint = 14;
        r->value = 0;
        return OWIRE_RET_BLANK_DATA;
      }
      if (n > 9) return OWIRE_RET_INVALID_DATA;
      const UInt8 hint = static_cast<UInt8>(p[0]) & 0x3F;
      if (!realHintValid(hint)) return OWIRE_RET_INVALID_DATA;
      r->isBlank = 0;
      r->hint = hint;
      r->value = n > 1 ? loadSignedLE(p + 1, static_cast<int>(n - 1)) : 0;
      return OWIRE_RET_SUCCESS;
    }
    case 9: {
      OwfDate* d = static_cast<OwfDate*>(value);
      if (n == 0) {
        *d = OwfDate{0, 0, 0};
        return OWIRE_RET_BLANK_DATA;
      }
      if (n != 4) return OWIRE_RET_INVALID_DATA;
      getDate(p, d);
      return dateIsZero(*d) ? OWIRE_RET_BLANK_DATA : OWIRE_RET_SUCCESS;
    }
    case 10: {
      OwfTime* t = static_cast<OwfTime*>(value);
      if (n == 0) {
        setBlankTime(t);
        return OWIRE_RET_BLANK_DATA;
      }
      if (!getTime(p, n, t)) return OWIRE_RET_INVALID_DATA;
      return timeIsBlankMark(*t) ? OWIRE_RET_BLANK_DATA : OWIRE_RET_SUCCESS;
    }
    case 11: {
      OwfDateTime* dt = static_cast<OwfDateTime*>(value);
      if (n == 0) {
        dt->date = OwfDate{0, 0, 0};
        setBlankTime(&dt->time);
        return OWIRE_RET_BLANK_DATA;
      }
      if (n < 6 || !getTime(p + 4, n - 4, &dt->time)) return OWIRE_RET_INVALID_DATA;
      getDate(p, &dt->date);
      return dateIsZero(dt->date) && timeIsBlankMark(dt->time) ? OWIRE_RET_BLANK_DATA
                                                              : OWIRE_RET_SUCCESS;
    }
    case 12: {
      OwfQos* q = static_cast<OwfQos*>(value);
      *q = OwfQos{0, 0, 0, 0, 0};
      if (n == 0) return OWIRE_RET_BLANK_DATA;
      if (n < 2) return OWIRE_RET_INVALID_DATA;
      q->timeliness = static_cast<UInt8>(p[0]) & 0x0F;
      q->rate = static_cast<UInt8>(p[0]) >> 4;
      q->flags = static_cast<UInt8>(p[1]);
      if (n != qosSize(*q)) return OWIRE_RET_INVALID_DATA;
      const char* x = p + 2;
      if (q->timeliness == 3) {
        q->timeInfo = loadU16(x);
        x += 2;
      }
      if (q->rate == 3) q->rateInfo = loadU16(x);
      return OWIRE_RET_SUCCESS;
    }
    case 13: {
      OwfState* s = static_cast<OwfState*>(value);
      s->streamState = s->dataState = s->code = 0;
      s->text.length = 0;
      s->text.data = nullptr;
      if (n == 0) return OWIRE_RET_BLANK_DATA;
      if (n < 3) return OWIRE_RET_INVALID_DATA;
      s->streamState = static_cast<UInt8>(p[0]);
      s->dataState = static_cast<UInt8>(p[1]);
      s->code = static_cast<UInt8>(p[2]);
      s->text.length = n - 3;
      s->text.data = n > 3 ? const_cast<char*>(p + 3) : nullptr;
      return OWIRE_RET_SUCCESS;
    }
    case 14: {
      UInt16* out = static_cast<UInt16*>(value);
      if (n == 0) {
        *out = 0;
        return OWIRE_RET_BLANK_DATA;
      }
      if (n > 8) return OWIRE_RET_INVALID_DATA;
      const UInt64 v = loadLE(p, static_cast<int>(n));
      if (v > 0xFFFF) return OWIRE_RET_INVALID_DATA;
      *out = static_cast<UInt16>(v);
      return OWIRE_RET_SUCCESS;
    }
    default: {
      if (!isBufferType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
      OwfBuffer* b = static_cast<OwfBuffer*>(value);
      b->length = n;
      b->data = const_cast<char*>(p);
      return n == 0 ? OWIRE_RET_BLANK_DATA : OWIRE_RET_SUCCESS;
    }
  }
}

int encodeFixedContent(UInt8 type, const void* value, UInt16 width, char* dst, char* end) {
  type = normalizeType(type);
  if (width == 0) return OWIRE_RET_INVALID_ARGUMENT;
  if (end - dst < width) return OWIRE_RET_BUFFER_TOO_SMALL;
  switch (type) {
    case 3: {
      if (value == nullptr || width > 8) return OWIRE_RET_INVALID_DATA;
      const Int64 v = *static_cast<const Int64*>(value);
      if (signedBytes(v) > width) return OWIRE_RET_INVALID_DATA;
      storeLE(dst, static_cast<UInt64>(v), width);
      return OWIRE_RET_SUCCESS;
    }
    case 4:
    case 14: {
      if (value == nullptr || width > 8) return OWIRE_RET_INVALID_DATA;
      const UInt64 v = type == 4 ? *static_cast<const UInt64*>(value)
                                 : *static_cast<const UInt16*>(value);
      if (unsignedBytes(v) > width) return OWIRE_RET_INVALID_DATA;
      storeLE(dst, v, width);
      return OWIRE_RET_SUCCESS;
    }
    case 5:
    case 6:
      if (value == nullptr || width != (type == 5 ? 4 : 8)) return OWIRE_RET_INVALID_DATA;
      std::memcpy(dst, value, width);
      return OWIRE_RET_SUCCESS;
    case 9: {
      if (width != 4) return OWIRE_RET_INVALID_DATA;
      const OwfDate d = value ? *static_cast<const OwfDate*>(value) : OwfDate{0, 0, 0};
      putDate(dst, d);
      return OWIRE_RET_SUCCESS;
    }
    case 10:
    case 11: {
      OwfTime t;
      OwfDate d{0, 0, 0};
      if (value == nullptr) {
        setBlankTime(&t);
      } else if (type == 10) {
        t = *static_cast<const OwfTime*>(value);
      } else {
        d = static_cast<const OwfDateTime*>(value)->date;
        t = static_cast<const OwfDateTime*>(value)->time;
      }
      const int tw = static_cast<int>(width) - (type == 11 ? 4 : 0);
      if (tw != 2 && tw != 3 && tw != 5) return OWIRE_RET_INVALID_DATA;
      if (!timeIsBlankMark(t) && timeWidth(t) > tw) return OWIRE_RET_INVALID_DATA;
      char* p = dst;
      if (type == 11) {
        putDate(p, d);
        p += 4;
      }
      putTime(p, t, tw);
      return OWIRE_RET_SUCCESS;
    }
    default: {
      if (!isBufferType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
      const OwfBuffer* b = static_cast<const OwfBuffer*>(value);
      const UInt32 len = b ? b->length : 0;
      if (len > width || (len != 0 && b->data == nullptr)) return OWIRE_RET_INVALID_DATA;
      if (len) std::memcpy(dst, b->data, len);
      std::memset(dst + len, 0, width - len);
      return OWIRE_RET_SUCCESS;
    }
  }
}

int refitFixedContent(UInt8 type, const char* src, UInt32 length, UInt16 width, char* dst,
                      char* end) {
  type = normalizeType(type);
  if (isBufferType(type)) {
    OwfBuffer b{length, const_cast<char*>(src)};
    return encodeFixedContent(type, &b, width, dst, end);
  }
  union {
    Int64 i;
    UInt64 u;
    float f;
    double d;
    UInt16 e;
    OwfDate date;
    OwfTime time;
    OwfDateTime dateTime;
  } v;
  std::memset(&v, 0, sizeof v);
  const int ret = decodePrimitiveContent(type, src, length, &v);
  if (ret == OWIRE_RET_BLANK_DATA) {
    if (type == 9 || type == 10 || type == 11) return encodeFixedContent(type, nullptr, width, dst, end);
    return OWIRE_RET_INVALID_DATA;
  }
  if (ret < 0) return ret;
  return encodeFixedContent(type, &v, width, dst, end);
}

}  // namespace owire
}  // namespace orvo
