// Conversions between reals and floating values, text parsers, validity
// checks and the text form of every primitive (docs/wire-format.md, "Text
// forms").
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "owire/CodecInternal.h"

using namespace orvo::owire;

namespace {

// ---------------------------------------------------------------------------
// Reals.

const double kPow10[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14};

int toReal(OwfReal* real, double d, UInt8 hint) {
  if (real == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (!realHintValid(hint)) return OWIRE_RET_INVALID_ARGUMENT;
  if (std::isnan(d)) {
    *real = OwfReal{0, 35, 0};
    return OWIRE_RET_SUCCESS;
  }
  if (std::isinf(d)) {
    *real = OwfReal{0, static_cast<UInt8>(d > 0 ? 33 : 34), 0};
    return OWIRE_RET_SUCCESS;
  }
  if (hint >= 33) {
    *real = OwfReal{0, hint, 0};
    return OWIRE_RET_SUCCESS;
  }
  double scaled;
  if (hint <= 14) scaled = d * kPow10[14 - hint];
  else if (hint <= 21) scaled = d / kPow10[hint - 14];
  else scaled = std::ldexp(d, hint - 22);
  scaled = std::nearbyint(scaled);
  // Out of the mantissa's range at this hint: the value has no form here, which
  // is a blank result, not a failure of the call.
  if (!(scaled >= -9223372036854775808.0 && scaled < 9223372036854775808.0)) {
    *real = OwfReal{1, hint, 0};
    return OWIRE_RET_SUCCESS;
  }
  *real = OwfReal{0, hint, static_cast<Int64>(scaled)};
  return OWIRE_RET_SUCCESS;
}

int realToDouble(double* out, const OwfReal& r) {
  if (r.isBlank) return OWIRE_RET_BLANK_DATA;
  const double v = static_cast<double>(r.value);
  if (r.hint <= 14) *out = v / kPow10[14 - r.hint];
  else if (r.hint <= 21) *out = v * kPow10[r.hint - 14];
  else if (r.hint <= 30) *out = std::ldexp(v, -(r.hint - 22));
  else if (r.hint == 33) *out = HUGE_VAL;
  else if (r.hint == 34) *out = -HUGE_VAL;
  else if (r.hint == 35) *out = std::nan("");
  else return OWIRE_RET_INVALID_DATA;
  return OWIRE_RET_SUCCESS;
}

// ---------------------------------------------------------------------------
// Text scanning.

struct Scan {
  const char* p;
  const char* e;
  bool done() const { return p == e; }
  char peek() const { return p < e ? *p : '\0'; }
  void spaces() {
    while (p < e && (*p == ' ' || *p == '\t')) ++p;
  }
  bool ch(char c) {
    if (p < e && *p == c) {
      ++p;
      return true;
    }
    return false;
  }
  // Up to maxDigits decimal digits (at least one).
  bool digits(UInt64* v, int maxDigits, int* count = nullptr) {
    int n = 0;
    UInt64 x = 0;
    while (p < e && *p >= '0' && *p <= '9' && n < maxDigits) {
      x = x * 10 + static_cast<UInt64>(*p - '0');
      ++p;
      ++n;
    }
    if (count) *count = n;
    *v = x;
    return n > 0;
  }
};

Scan trimmed(const OwfBuffer* text) {
  Scan s{text->data, text->data + text->length};
  if (text->data == nullptr) s.p = s.e = nullptr;
  s.spaces();
  while (s.e > s.p && (s.e[-1] == ' ' || s.e[-1] == '\t' || s.e[-1] == '\0')) --s.e;
  return s;
}

bool equalsNoCase(const char* p, const char* e, const char* word) {
  const std::size_t n = std::strlen(word);
  if (static_cast<std::size_t>(e - p) != n) return false;
  for (std::size_t i = 0; i < n; ++i) {
    char c = p[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != word[i]) return false;
  }
  return true;
}

int parseReal(OwfReal* real, const OwfBuffer* text) {
  if (real == nullptr || text == nullptr || (text->data == nullptr && text->length != 0))
    return OWIRE_RET_INVALID_ARGUMENT;
  Scan s = trimmed(text);
  if (s.done()) {
    *real = OwfReal{1, 14, 0};
    return OWIRE_RET_BLANK_DATA;
  }
  if (equalsNoCase(s.p, s.e, "inf") || equalsNoCase(s.p, s.e, "+inf") ||
      equalsNoCase(s.p, s.e, "infinity")) {
    *real = OwfReal{0, 33, 0};
    return OWIRE_RET_SUCCESS;
  }
  if (equalsNoCase(s.p, s.e, "-inf") || equalsNoCase(s.p, s.e, "-infinity")) {
    *real = OwfReal{0, 34, 0};
    return OWIRE_RET_SUCCESS;
  }
  if (equalsNoCase(s.p, s.e, "nan")) {
    *real = OwfReal{0, 35, 0};
    return OWIRE_RET_SUCCESS;
  }
  const auto bad = [real]() {
    *real = OwfReal{1, 14, 0};
    return static_cast<int>(OWIRE_RET_INVALID_DATA);
  };
  bool neg = false;
  if (s.ch('-')) neg = true;
  else s.ch('+');
  // Mantissa digits, with the position of the point.
  UInt64 mant = 0;
  int digitsSeen = 0;
  int fracDigits = 0;
  bool point = false;
  bool dropped = false;
  int extraExp = 0;
  while (!s.done()) {
    const char c = s.peek();
    if (c >= '0' && c <= '9') {
      if (mant > (UINT64_MAX - 9) / 10 || dropped) {
        // Past 19 digits only zeros may follow; they scale the exponent.
        if (c != '0') return bad();
        dropped = true;
        if (!point) ++extraExp;
        ++digitsSeen;
        ++s.p;
        continue;
      }
      mant = mant * 10 + static_cast<UInt64>(c - '0');
      ++digitsSeen;
      if (point) ++fracDigits;
      ++s.p;
    } else if (c == '.' && !point) {
      point = true;
      ++s.p;
    } else {
      break;
    }
  }
  if (digitsSeen == 0) return bad();
  const UInt64 limit = neg ? (UInt64{1} << 63) : (UInt64{1} << 63) - 1;
  // Fraction form: "W N/D" or "N/D".
  if (!point && !dropped && !s.done() && (s.peek() == ' ' || s.peek() == '/')) {
    UInt64 whole = 0, num = mant, den;
    if (s.peek() == ' ') {
      s.spaces();
      whole = mant;
      if (!s.digits(&num, 19)) return bad();
    }
    if (!s.ch('/') || !s.digits(&den, 4) || !s.done()) return bad();
    int log2 = -1;
    for (int k = 0; k <= 8; ++k)
      if (den == (UInt64{1} << k)) log2 = k;
    if (log2 < 0 || (num >= den && whole != 0) || num > limit) return bad();
    if (whole > (limit - num) / den) return bad();
    const UInt64 mag = whole * den + num;
    *real = OwfReal{0, static_cast<UInt8>(22 + log2),
                    neg ? static_cast<Int64>(0 - mag) : static_cast<Int64>(mag)};
    return OWIRE_RET_SUCCESS;
  }
  long exp10 = extraExp - fracDigits;
  if (s.ch('e') || s.ch('E')) {
    bool eneg = false;
    if (s.ch('-')) eneg = true;
    else s.ch('+');
    UInt64 ev;
    if (!s.digits(&ev, 4)) return bad();
    exp10 += eneg ? -static_cast<long>(ev) : static_cast<long>(ev);
  }
  if (!s.done()) return bad();
  long hint = 14 + exp10;
  while ((hint < 0 || mant > limit) && mant % 10 == 0 && mant != 0) {
    mant /= 10;
    ++hint;
  }
  if (mant == 0 && hint < 0) hint = 0;
  if (hint < 0) return bad();
  while (hint > 21) {
    if (mant > limit / 10) return bad();
    mant *= 10;
    --hint;
  }
  if (mant > limit) return bad();
  *real = OwfReal{0, static_cast<UInt8>(hint), neg ? static_cast<Int64>(0 - mant) : static_cast<Int64>(mant)};
  return OWIRE_RET_SUCCESS;
}

const char* const kMonths[12] = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                 "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

// ---------------------------------------------------------------------------
// Text output.

struct Out {
  char* p;
  char* e;
  bool ok = true;
  void put(const char* s, std::size_t n) {
    if (!ok || static_cast<std::size_t>(e - p) < n) {
      ok = false;
      return;
    }
    std::memcpy(p, s, n);
    p += n;
  }
  void put(const char* s) { put(s, std::strlen(s)); }
  template <class... A>
  void fmt(const char* f, A... a) {
    char tmp[64];
    const int n = std::snprintf(tmp, sizeof tmp, f, a...);
    if (n < 0 || n >= static_cast<int>(sizeof tmp)) {
      ok = false;
      return;
    }
    put(tmp, static_cast<std::size_t>(n));
  }
};

void putUInt(Out& o, UInt64 v) { o.fmt("%llu", static_cast<unsigned long long>(v)); }

void realText(Out& o, const OwfReal& r) {
  if (r.hint == 33) return o.put("Inf");
  if (r.hint == 34) return o.put("-Inf");
  if (r.hint == 35) return o.put("NaN");
  const bool neg = r.value < 0;
  const UInt64 mag = neg ? 0 - static_cast<UInt64>(r.value) : static_cast<UInt64>(r.value);
  if (r.hint >= 22) {
    const UInt64 den = UInt64{1} << (r.hint - 22);
    const UInt64 whole = mag / den, num = mag % den;
    if (neg) o.put("-");
    if (num == 0) return putUInt(o, whole);
    if (whole != 0) {
      putUInt(o, whole);
      o.put(" ");
    }
    return o.fmt("%llu/%llu", static_cast<unsigned long long>(num), static_cast<unsigned long long>(den));
  }
  char digits[24];
  int n = std::snprintf(digits, sizeof digits, "%llu", static_cast<unsigned long long>(mag));
  if (neg) o.put("-");
  if (r.hint >= 14) {
    o.put(digits, static_cast<std::size_t>(n));
    if (mag != 0)
      for (int k = 14; k < r.hint; ++k) o.put("0");
    return;
  }
  const int decimals = 14 - r.hint;
  if (n <= decimals) {
    o.put("0.");
    for (int k = n; k < decimals; ++k) o.put("0");
    return o.put(digits, static_cast<std::size_t>(n));
  }
  o.put(digits, static_cast<std::size_t>(n - decimals));
  o.put(".");
  o.put(digits + (n - decimals), static_cast<std::size_t>(decimals));
}

template <class F>
void shortestFloat(Out& o, F v, int from, int to) {
  if (std::isnan(v)) return o.put("NaN");
  if (std::isinf(v)) return o.put(v > 0 ? "Inf" : "-Inf");
  char tmp[48];
  for (int prec = from; prec <= to; ++prec) {
    std::snprintf(tmp, sizeof tmp, "%.*g", prec, static_cast<double>(v));
    if (static_cast<F>(std::strtod(tmp, nullptr)) == v) break;
  }
  o.put(tmp);
}

void dateText(Out& o, const OwfDate& d) {
  if (d.month >= 1 && d.month <= 12)
    o.fmt("%02u %s %04u", unsigned{d.day}, kMonths[d.month - 1], unsigned{d.year});
  else
    o.fmt("%02u %02u %04u", unsigned{d.day}, unsigned{d.month}, unsigned{d.year});
}

void timeText(Out& o, const OwfTime& t) {
  o.fmt("%02u:%02u:%02u", unsigned{t.hour}, unsigned{t.minute}, unsigned{t.second});
  if (t.millisecond > 999) o.fmt(":%u", unsigned{t.millisecond});
  else if (t.millisecond != 0) o.fmt(".%03u", unsigned{t.millisecond});
}

bool dateBlank(const OwfDate& d) { return d.day == 0 && d.month == 0 && d.year == 0; }
bool timeBlank(const OwfTime& t) { return t.hour == 255 && t.minute == 255; }

void qosText(Out& o, const OwfQos& q) {
  switch (q.timeliness) {
    case 0: o.put("Unspecified"); break;
    case 1: o.put("RealTime"); break;
    case 2: o.put("DelayedUnknown"); break;
    case 3: o.fmt("Delayed:%u", unsigned{q.timeInfo}); break;
    default: o.fmt("Timeliness%u", unsigned{q.timeliness}); break;
  }
  o.put("/");
  switch (q.rate) {
    case 0: o.put("Unspecified"); break;
    case 1: o.put("TickByTick"); break;
    case 2: o.put("JustInTimeConflated"); break;
    case 3: o.fmt("Rate:%u", unsigned{q.rateInfo}); break;
    default: o.fmt("Rate%u", unsigned{q.rate}); break;
  }
  if (q.flags) o.fmt("/Flags:0x%02X", unsigned{q.flags});
}

// Text of a decoded or given value; BLANK when blank.
int valueText(Out& o, UInt8 type, const void* v) {
  switch (normalizeType(type)) {
    case 3: o.fmt("%lld", static_cast<long long>(*static_cast<const Int64*>(v))); break;
    case 4: putUInt(o, *static_cast<const UInt64*>(v)); break;
    case 5: shortestFloat(o, *static_cast<const float*>(v), 6, 9); break;
    case 6: shortestFloat(o, *static_cast<const double*>(v), 15, 17); break;
    case 8: {
      const OwfReal& r = *static_cast<const OwfReal*>(v);
      if (r.isBlank) return OWIRE_RET_BLANK_DATA;
      if (!realHintValid(r.hint)) return OWIRE_RET_INVALID_DATA;
      realText(o, r);
      break;
    }
    case 9: {
      const OwfDate& d = *static_cast<const OwfDate*>(v);
      if (dateBlank(d)) return OWIRE_RET_BLANK_DATA;
      dateText(o, d);
      break;
    }
    case 10: {
      const OwfTime& t = *static_cast<const OwfTime*>(v);
      if (timeBlank(t)) return OWIRE_RET_BLANK_DATA;
      timeText(o, t);
      break;
    }
    case 11: {
      const OwfDateTime& dt = *static_cast<const OwfDateTime*>(v);
      if (dateBlank(dt.date) && timeBlank(dt.time)) return OWIRE_RET_BLANK_DATA;
      dateText(o, dt.date);
      o.put(" ");
      if (timeBlank(dt.time)) o.put("--:--:--");
      else timeText(o, dt.time);
      break;
    }
    case 12: qosText(o, *static_cast<const OwfQos*>(v)); break;
    case 13: {
      const OwfState& s = *static_cast<const OwfState*>(v);
      o.fmt("stream=%u data=%u code=%u text=\"", unsigned{s.streamState}, unsigned{s.dataState},
            unsigned{s.code});
      if (s.text.length) o.put(s.text.data, s.text.length);
      o.put("\"");
      break;
    }
    case 14: putUInt(o, *static_cast<const UInt16*>(v)); break;
    default: {
      if (!isBufferType(type)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
      const OwfBuffer& b = *static_cast<const OwfBuffer*>(v);
      if (b.length == 0) return OWIRE_RET_BLANK_DATA;
      if (b.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
      o.put(b.data, b.length);
      break;
    }
  }
  return OWIRE_RET_SUCCESS;
}

union AnyValue {
  Int64 i;
  UInt64 u;
  float f;
  double d;
  UInt16 e;
  OwfReal real;
  OwfDate date;
  OwfTime time;
  OwfDateTime dateTime;
  OwfQos qos;
  OwfState state;
  OwfBuffer buffer;
};

int finish(Out& o, OwfBuffer* out, int ret) {
  if (ret != OWIRE_RET_SUCCESS) return ret;
  if (!o.ok) return OWIRE_RET_BUFFER_TOO_SMALL;
  out->length = static_cast<UInt32>(o.p - out->data);
  if (o.p < o.e) *o.p = '\0';
  return OWIRE_RET_SUCCESS;
}

int arrayText(Out& o, const char* s, const char* e) {
  OwfBuffer buf{static_cast<UInt32>(e - s), const_cast<char*>(s)};
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  setDecodeIteratorBuffer(&it, &buf);
  OwfArray array;
  int ret = owireDecodeArray(&it, &array);
  if (ret == OWIRE_RET_BLANK_DATA) return ret;
  if (ret != OWIRE_RET_SUCCESS) return ret;
  o.put("[");
  OwfBuffer item;
  bool first = true;
  while ((ret = owireDecodeArrayEntry(&it, &item)) == OWIRE_RET_SUCCESS) {
    if (!first) o.put(", ");
    first = false;
    AnyValue v;
    const int r = decodePrimitiveContent(array.primitiveType, item.data, item.length, &v);
    if (r == OWIRE_RET_BLANK_DATA) continue;
    if (r < 0) return r;
    const int t = valueText(o, array.primitiveType, &v);
    if (t < 0) return t;
  }
  if (ret != OWIRE_RET_END_OF_CONTAINER) return ret;
  o.put("]");
  return OWIRE_RET_SUCCESS;
}

bool leapYear(unsigned y) { return y % 4 == 0 && (y % 100 != 0 || y % 400 == 0); }

}  // namespace

int owireFloatToReal(OwfReal* real, const float* value, UInt8 hint) {
  if (value == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return toReal(real, static_cast<double>(*value), hint);
}

int owireDoubleToReal(OwfReal* real, const double* value, UInt8 hint) {
  if (value == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return toReal(real, *value, hint);
}

int owireRealToDouble(double* value, const OwfReal* real) {
  if (value == nullptr || real == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  return realToDouble(value, *real);
}

int owireNumericStringToReal(OwfReal* real, const OwfBuffer* text) { return parseReal(real, text); }

int owireNumericStringToDouble(double* value, const OwfBuffer* text) {
  if (value == nullptr || text == nullptr || (text->data == nullptr && text->length != 0))
    return OWIRE_RET_INVALID_ARGUMENT;
  OwfReal r;
  const int ret = parseReal(&r, text);
  if (ret == OWIRE_RET_SUCCESS) return realToDouble(value, r);
  if (ret == OWIRE_RET_BLANK_DATA) {
    *value = 0;
    return ret;
  }
  const Scan s = trimmed(text);
  char tmp[128];
  const std::size_t n = static_cast<std::size_t>(s.e - s.p);
  if (n == 0 || n >= sizeof tmp) return OWIRE_RET_INVALID_DATA;
  std::memcpy(tmp, s.p, n);
  tmp[n] = '\0';
  char* end = nullptr;
  const double d = std::strtod(tmp, &end);
  if (end != tmp + n) return OWIRE_RET_INVALID_DATA;
  *value = d;
  return OWIRE_RET_SUCCESS;
}

int owireDateStringToDate(OwfDate* date, const OwfBuffer* text) {
  if (date == nullptr || text == nullptr || (text->data == nullptr && text->length != 0))
    return OWIRE_RET_INVALID_ARGUMENT;
  *date = OwfDate{0, 0, 0};
  Scan s = trimmed(text);
  if (s.done()) return OWIRE_RET_BLANK_DATA;
  UInt64 a, b, c;
  int na;
  if (!s.digits(&a, 5, &na)) return OWIRE_RET_INVALID_DATA;
  if (s.ch('-')) {  // YYYY-MM-DD
    if (!s.digits(&b, 2) || !s.ch('-') || !s.digits(&c, 2) || !s.done() || a > 65535)
      return OWIRE_RET_INVALID_DATA;
    *date = OwfDate{static_cast<UInt8>(c), static_cast<UInt8>(b), static_cast<UInt16>(a)};
    return OWIRE_RET_SUCCESS;
  }
  if (s.ch('/')) {  // MM/DD/YYYY
    if (!s.digits(&b, 2) || !s.ch('/') || !s.digits(&c, 5) || !s.done() || a > 255 || c > 65535)
      return OWIRE_RET_INVALID_DATA;
    *date = OwfDate{static_cast<UInt8>(b), static_cast<UInt8>(a), static_cast<UInt16>(c)};
    return OWIRE_RET_SUCCESS;
  }
  // DD MMM YYYY, or DD MM YYYY
  s.spaces();
  if (a > 255 || s.e - s.p < 2) return OWIRE_RET_INVALID_DATA;
  if (s.peek() >= '0' && s.peek() <= '9') {
    if (!s.digits(&b, 3) || b > 255) return OWIRE_RET_INVALID_DATA;
    s.spaces();
    if (!s.digits(&c, 5) || !s.done() || c > 65535) return OWIRE_RET_INVALID_DATA;
    *date = OwfDate{static_cast<UInt8>(a), static_cast<UInt8>(b), static_cast<UInt16>(c)};
    return OWIRE_RET_SUCCESS;
  }
  if (s.e - s.p < 3) return OWIRE_RET_INVALID_DATA;
  int month = 0;
  static const char* const kLower[12] = {"jan", "feb", "mar", "apr", "may", "jun",
                                         "jul", "aug", "sep", "oct", "nov", "dec"};
  for (int m = 0; m < 12; ++m)
    if (equalsNoCase(s.p, s.p + 3, kLower[m])) month = m + 1;
  if (month == 0) return OWIRE_RET_INVALID_DATA;
  s.p += 3;
  s.spaces();
  if (!s.digits(&c, 5) || !s.done() || c > 65535) return OWIRE_RET_INVALID_DATA;
  *date = OwfDate{static_cast<UInt8>(a), static_cast<UInt8>(month), static_cast<UInt16>(c)};
  return OWIRE_RET_SUCCESS;
}

int owireTimeStringToTime(OwfTime* time, const OwfBuffer* text) {
  if (time == nullptr || text == nullptr || (text->data == nullptr && text->length != 0))
    return OWIRE_RET_INVALID_ARGUMENT;
  *time = OwfTime{255, 255, 255, 65535};
  Scan s = trimmed(text);
  if (s.done()) return OWIRE_RET_BLANK_DATA;
  UInt64 h, m, sec = 0, ms = 0;
  if (!s.digits(&h, 3) || !s.ch(':') || !s.digits(&m, 3)) return OWIRE_RET_INVALID_DATA;
  if (s.ch(':')) {
    if (!s.digits(&sec, 3)) return OWIRE_RET_INVALID_DATA;
    if (s.ch('.')) {  // a decimal fraction of a second
      int n;
      if (!s.digits(&ms, 3, &n)) return OWIRE_RET_INVALID_DATA;
      for (; n < 3; ++n) ms *= 10;
    } else if (s.ch(':')) {  // milliseconds as a whole number
      if (!s.digits(&ms, 5)) return OWIRE_RET_INVALID_DATA;
    }
  }
  if (!s.done() || h > 255 || m > 255 || sec > 255 || ms > 65535) return OWIRE_RET_INVALID_DATA;
  *time = OwfTime{static_cast<UInt8>(h), static_cast<UInt8>(m), static_cast<UInt8>(sec),
                  static_cast<UInt16>(ms)};
  return OWIRE_RET_SUCCESS;
}

bool owireDateIsValid(const OwfDate* date) {
  if (date == nullptr) return false;
  if (dateBlank(*date)) return true;
  static const UInt8 kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (date->month < 1 || date->month > 12 || date->day < 1) return false;
  const unsigned dim = kDays[date->month - 1] + (date->month == 2 && leapYear(date->year) ? 1 : 0);
  return date->day <= dim;
}

bool owireTimeIsValid(const OwfTime* time) {
  if (time == nullptr) return false;
  if (time->hour == 255 && time->minute == 255 && time->second == 255 && time->millisecond == 65535)
    return true;
  return time->hour <= 23 && time->minute <= 59 && time->second <= 59 && time->millisecond <= 999;
}

bool owireDateTimeIsValid(const OwfDateTime* dateTime) {
  return dateTime != nullptr && owireDateIsValid(&dateTime->date) && owireTimeIsValid(&dateTime->time);
}

int owirePrimitiveToString(const void* value, UInt8 primitiveType, OwfBuffer* out) {
  if (out == nullptr || out->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (value == nullptr) {
    if (!isPrimitiveType(primitiveType)) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
    out->length = 0;
    return OWIRE_RET_BLANK_DATA;
  }
  if (normalizeType(primitiveType) == 15) return OWIRE_RET_UNSUPPORTED_DATA_TYPE;
  Out o{out->data, out->data + out->length};
  const int ret = valueText(o, primitiveType, value);
  if (ret == OWIRE_RET_BLANK_DATA) out->length = 0;
  return finish(o, out, ret);
}

int owireEncodedPrimitiveToString(OwfDecodeIterator* iter, UInt8 primitiveType, OwfBuffer* out) {
  if (out == nullptr || out->data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const char* s;
  const char* e;
  int ret = valueRange(iter, &s, &e);
  if (ret != OWIRE_RET_SUCCESS) return ret;
  Out o{out->data, out->data + out->length};
  if (normalizeType(primitiveType) == 15) {
    if (s == e) {
      out->length = 0;
      return OWIRE_RET_BLANK_DATA;
    }
    return finish(o, out, arrayText(o, s, e));
  }
  AnyValue v;
  ret = decodePrimitiveContent(primitiveType, s, static_cast<UInt32>(e - s), &v);
  if (ret == OWIRE_RET_BLANK_DATA) {
    out->length = 0;
    return ret;
  }
  if (ret != OWIRE_RET_SUCCESS) return ret;
  ret = valueText(o, primitiveType, &v);
  if (ret == OWIRE_RET_BLANK_DATA) out->length = 0;
  return finish(o, out, ret);
}
