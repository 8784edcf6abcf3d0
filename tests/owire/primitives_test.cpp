// Primitive values: round trips at their limits, blank forms, widths, text
// forms and parsers, conversions, validity checks, iterator routines.
#include <cfloat>
#include <climits>
#include <cmath>

#include "owire/Primitives.h"
#include "owire_test_util.h"

using namespace owire_test;

namespace {

std::string encode(UInt8 type, const void* value) {
  Enc e(64);
  EXPECT_EQ(OWIRE_RET_SUCCESS, e.step([&] { return owireEncodePrimitiveType(&e.it, type, value); }));
  return e.bytes();
}

template <class T, class F>
int decode(const std::string& bytes, F f, T* out) {
  Dec d(bytes);
  return f(&d.it, out);
}

bool same(const OwfTime& a, const OwfTime& b) {
  return a.hour == b.hour && a.minute == b.minute && a.second == b.second &&
         a.millisecond == b.millisecond;
}

std::string text(UInt8 type, const std::string& bytes) {
  Dec d(bytes);
  char out[256];
  OwfBuffer o{sizeof out, out};
  const int ret = owireEncodedPrimitiveToString(&d.it, type, &o);
  if (ret == OWIRE_RET_BLANK_DATA) return "<blank>";
  EXPECT_EQ(OWIRE_RET_SUCCESS, ret);
  return std::string(out, o.length);
}

}  // namespace

TEST(OwirePrimitive, IntLimitsAndWidths) {
  const std::pair<Int64, size_t> cases[] = {
      {0, 1}, {1, 1}, {-1, 1}, {127, 1}, {-128, 1}, {128, 2}, {-129, 2}, {32767, 2},
      {32768, 3}, {INT32_MAX, 4}, {INT32_MIN, 4}, {INT64_MAX, 8}, {INT64_MIN, 8}};
  for (auto [v, width] : cases) {
    const std::string b = encode(3, &v);
    EXPECT_EQ(width, b.size()) << v;
    Int64 out = 42;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeInt, &out));
    EXPECT_EQ(v, out);
    EXPECT_EQ(std::to_string(v), text(3, b));
  }
  Int64 out = 7;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(encode(3, nullptr), owireDecodeInt, &out));
  EXPECT_EQ(0, out);
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, decode(std::string(9, '\1'), owireDecodeInt, &out));
}

TEST(OwirePrimitive, UIntLimitsAndWidths) {
  const std::pair<UInt64, size_t> cases[] = {
      {0, 1}, {255, 1}, {256, 2}, {65535, 2}, {65536, 3}, {UINT32_MAX, 4}, {UINT64_MAX, 8}};
  for (auto [v, width] : cases) {
    const std::string b = encode(4, &v);
    EXPECT_EQ(width, b.size());
    UInt64 out = 0;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeUInt, &out));
    EXPECT_EQ(v, out);
    EXPECT_EQ(std::to_string(v), text(4, b));
  }
  UInt64 out;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeUInt, &out));
  // The legacy code 2 is UINT.
  UInt64 v = 300;
  EXPECT_EQ(encode(4, &v), encode(2, &v));
}

TEST(OwirePrimitive, FloatAndDouble) {
  for (float v : {0.0f, -0.0f, 1.5f, -3.25e-7f, FLT_MAX, -FLT_MAX, FLT_MIN, FLT_TRUE_MIN}) {
    const std::string b = encode(5, &v);
    EXPECT_EQ(4u, b.size());
    float out;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeFloat, &out));
    EXPECT_EQ(0, std::memcmp(&v, &out, 4));
    // Text is the shortest form that reads back exactly.
    double parsed;
    const std::string t = text(5, b);
    OwfBuffer tb = buf(t);
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToDouble(&parsed, &tb)) << t;
    EXPECT_EQ(v, static_cast<float>(parsed)) << t;
  }
  for (double v : {0.0, 0.1, -2.5, DBL_MAX, -DBL_MAX, DBL_MIN, DBL_TRUE_MIN, 123456789.125}) {
    const std::string b = encode(6, &v);
    EXPECT_EQ(8u, b.size());
    double out;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeDouble, &out));
    EXPECT_EQ(v, out);
    double parsed;
    const std::string t = text(6, b);
    OwfBuffer tb = buf(t);
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToDouble(&parsed, &tb)) << t;
    EXPECT_EQ(v, parsed) << t;
  }
  EXPECT_EQ("0.1", text(6, encode(6, std::vector<double>{0.1}.data())));
  float f;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeFloat, &f));
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, decode(std::string(3, 'x'), owireDecodeFloat, &f));
  double d = std::nan("");
  EXPECT_EQ("NaN", text(6, encode(6, &d)));
  d = -HUGE_VAL;
  EXPECT_EQ("-Inf", text(6, encode(6, &d)));
}

TEST(OwirePrimitive, RealEveryHint) {
  std::vector<UInt8> hints;
  for (UInt8 h = 0; h <= 30; ++h) hints.push_back(h);
  hints.insert(hints.end(), {33, 34, 35});
  for (UInt8 hint : hints) {
    for (Int64 v : {Int64{0}, Int64{1}, Int64{-1}, Int64{12345}, Int64{-987654321},
                    Int64{INT64_MAX}, Int64{INT64_MIN}}) {
      const OwfReal r{0, hint, v};
      const std::string b = encode(8, &r);
      OwfReal out{9, 9, 9};
      ASSERT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeReal, &out));
      EXPECT_EQ(0, out.isBlank);
      EXPECT_EQ(hint, out.hint);
      if (hint < 33) {
        EXPECT_EQ(v, out.value);
      } else {
        EXPECT_EQ(1u, b.size());  // infinities and NaN carry no value bytes
      }
      // The text parses back to the same number.
      const std::string t = text(8, b);
      OwfBuffer tb = buf(t);
      OwfReal parsed;
      ASSERT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToReal(&parsed, &tb)) << t;
      double a, c;
      if (owireRealToDouble(&a, &out) == OWIRE_RET_SUCCESS && owireRealToDouble(&c, &parsed) == OWIRE_RET_SUCCESS) {
        if (std::isnan(a)) EXPECT_TRUE(std::isnan(c)) << t;
        else EXPECT_EQ(a, c) << t << " hint " << int(hint);
      }
      if (hint <= 14 || hint >= 33) {  // fractions may read back as whole numbers
        EXPECT_EQ(out.hint, parsed.hint) << t;
        if (hint < 33) {
          EXPECT_EQ(out.value, parsed.value) << t;
        }
      }
    }
  }
  // Width: one hint byte and the shortest value.
  OwfReal small{0, 12, 100};
  EXPECT_EQ(2u, encode(8, &small).size());
  // Blank.
  OwfReal blank{1, 14, 77};
  EXPECT_EQ(0u, encode(8, &blank).size());
  OwfReal out;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeReal, &out));
  EXPECT_EQ(1, out.isBlank);
  double dv;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireRealToDouble(&dv, &out));
  // Invalid hints are refused both ways.
  OwfReal bad{0, 31, 1};
  Enc e(64);
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodePrimitiveType(&e.it, 8, &bad));
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, decode(std::string("\x1F\x01", 2), owireDecodeReal, &out));
}

TEST(OwirePrimitive, RealTextForms) {
  const struct {
    OwfReal r;
    const char* text;
  } cases[] = {
      {{0, 12, 12345}, "123.45"},    {{0, 12, -5}, "-0.05"},       {{0, 14, 42}, "42"},
      {{0, 16, 42}, "4200"},         {{0, 0, 1}, "0.00000000000001"},
      {{0, 23, 3}, "1 1/2"},         {{0, 25, -11}, "-1 3/8"},     {{0, 30, 1}, "1/256"},
      {{0, 22, 7}, "7"},             {{0, 33, 0}, "Inf"},          {{0, 34, 0}, "-Inf"},
      {{0, 35, 0}, "NaN"}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.text, text(8, encode(8, &c.r)));
    char out[64];
    OwfBuffer o{sizeof out, out};
    EXPECT_EQ(OWIRE_RET_SUCCESS, owirePrimitiveToString(&c.r, 8, &o));
    EXPECT_EQ(c.text, std::string(out, o.length));
  }
  OwfReal r;
  OwfBuffer t = buf(" 1.5e3 ");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToReal(&r, &t));
  double d;
  owireRealToDouble(&d, &r);
  EXPECT_EQ(1500.0, d);
  t = buf("");
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireNumericStringToReal(&r, &t));
  EXPECT_EQ(1, r.isBlank);
  t = buf("12abc");
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireNumericStringToReal(&r, &t));
  t = buf("9999999999999999999/2");
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireNumericStringToReal(&r, &t));
  t = buf("3/2");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToReal(&r, &t));
  EXPECT_EQ(3, r.value);
  EXPECT_EQ(23, r.hint);
  t = buf("99999999999999999999");
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireNumericStringToReal(&r, &t));
  // Trailing zeros past 19 digits go to the exponent.
  t = buf("-979301120877396690000000");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToReal(&r, &t));
  owireRealToDouble(&d, &r);
  EXPECT_DOUBLE_EQ(-979301120877396690000000.0, d);
  t = buf("-9223372036854775808");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireNumericStringToReal(&r, &t));
  EXPECT_EQ(INT64_MIN, r.value);
}

TEST(OwirePrimitive, RealConversions) {
  OwfReal r;
  double d = 123.456;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 11));
  EXPECT_EQ(0, r.isBlank);
  EXPECT_EQ(123456, r.value);
  float f = 0.1f;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireFloatToReal(&r, &f, 13));
  EXPECT_EQ(1, r.value);
  d = 2.75;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 24));  // quarters
  EXPECT_EQ(11, r.value);
  double back;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireRealToDouble(&back, &r));
  EXPECT_EQ(2.75, back);
  d = HUGE_VAL;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 14));
  EXPECT_EQ(33, r.hint);
  d = 1;
  EXPECT_GT(0, owireDoubleToReal(&r, &d, 31));
}

// A value whose mantissa does not fit 64 bits at the hint is blank, and the
// call itself succeeds; only a bad argument fails.
TEST(OwirePrimitive, RealConversionOutOfRangeIsBlankNotFailure) {
  struct Case {
    double value;
    UInt8 hint;
  };
  for (const Case c :
       {Case{1e300, 0}, Case{-1e300, 14}, Case{1e19, 14}, Case{-1e5, 0}, Case{1e300, 30}}) {
    OwfReal r{0, 99, 42};
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &c.value, c.hint)) << c.value;
    EXPECT_EQ(1, r.isBlank) << c.value << " at " << int{c.hint};
    EXPECT_EQ(0, r.value);
  }
  float f = 3e38f;
  OwfReal r{0, 0, 7};
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireFloatToReal(&r, &f, 0));
  EXPECT_EQ(1, r.isBlank);
  f = -3e38f;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireFloatToReal(&r, &f, 14));
  EXPECT_EQ(1, r.isBlank);

  // The edges of the mantissa: the largest power of two below 2^63 fits,
  // 2^63 does not; -2^63 fits.
  double d = 4611686018427387904.0;  // 2^62
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 14));
  EXPECT_EQ(0, r.isBlank);
  EXPECT_EQ(INT64_C(4611686018427387904), r.value);
  d = 9223372036854775808.0;  // 2^63
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 14));
  EXPECT_EQ(1, r.isBlank);
  d = -9223372036854775808.0;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 14));
  EXPECT_EQ(0, r.isBlank);
  EXPECT_EQ(INT64_MIN, r.value);

  // The same value fits at a coarser hint.
  d = 1e300;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 21));
  EXPECT_EQ(1, r.isBlank);
  d = 1e20;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &d, 21));
  EXPECT_EQ(0, r.isBlank);
  EXPECT_EQ(INT64_C(10000000000000), r.value);

  // A bad hint or a missing argument is still a failure.
  d = 1e300;
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireDoubleToReal(&r, &d, 32));
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireDoubleToReal(&r, nullptr, 0));
  EXPECT_EQ(OWIRE_RET_INVALID_ARGUMENT, owireFloatToReal(nullptr, &f, 0));
}

// Infinities and not-a-number have their own hints: they convert to those and
// read back as the same value.
TEST(OwirePrimitive, RealConversionOfNonFiniteValuesUsesTheirHints) {
  struct Case {
    double value;
    UInt8 hint;
  };
  for (const Case c : {Case{HUGE_VAL, 33}, Case{-HUGE_VAL, 34}, Case{std::nan(""), 35}}) {
    OwfReal r{1, 0, 5};
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireDoubleToReal(&r, &c.value, 10));
    EXPECT_EQ(0, r.isBlank);
    EXPECT_EQ(c.hint, r.hint);
    double back = 0;
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireRealToDouble(&back, &r));
    if (std::isnan(c.value))
      EXPECT_TRUE(std::isnan(back));
    else
      EXPECT_EQ(c.value, back);
    const float f = static_cast<float>(c.value);
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireFloatToReal(&r, &f, 0));
    EXPECT_EQ(c.hint, r.hint);
  }
}

TEST(OwirePrimitive, DateTimeAndBlanks) {
  for (OwfDate d : {OwfDate{1, 1, 0}, OwfDate{31, 12, 65535}, OwfDate{29, 2, 2024}}) {
    const std::string b = encode(9, &d);
    EXPECT_EQ(4u, b.size());
    OwfDate out{};
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeDate, &out));
    EXPECT_EQ(d.day, out.day);
    EXPECT_EQ(d.month, out.month);
    EXPECT_EQ(d.year, out.year);
    OwfDate parsed;
    const std::string t = text(9, b);
    OwfBuffer tb = buf(t);
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireDateStringToDate(&parsed, &tb)) << t;
    EXPECT_EQ(0, std::memcmp(&parsed, &out, sizeof parsed)) << t;
  }
  EXPECT_EQ("29 FEB 2024", text(9, encode(9, std::vector<OwfDate>{{29, 2, 2024}}.data())));
  OwfDate blankDate{0, 0, 0};
  EXPECT_EQ(0u, encode(9, &blankDate).size());
  OwfDate d;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeDate, &d));
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(4, '\0'), owireDecodeDate, &d));

  const struct {
    OwfTime t;
    size_t width;
    const char* text;
  } times[] = {{{0, 0, 0, 0}, 2, "00:00:00"},
               {{23, 59, 0, 0}, 2, "23:59:00"},
               {{9, 30, 15, 0}, 3, "09:30:15"},
               {{23, 59, 59, 999}, 5, "23:59:59.999"},
               {{0, 0, 0, 1}, 5, "00:00:00.001"}};
  for (const auto& c : times) {
    const std::string b = encode(10, &c.t);
    EXPECT_EQ(c.width, b.size());
    OwfTime out{};
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeTime, &out));
    EXPECT_TRUE(same(c.t, out));
    EXPECT_EQ(c.text, text(10, b));
    OwfTime parsed;
    OwfBuffer tb = buf(c.text);
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireTimeStringToTime(&parsed, &tb));
    EXPECT_TRUE(same(parsed, out));
  }
  OwfTime blankTime{255, 255, 255, 65535};
  EXPECT_EQ(0u, encode(10, &blankTime).size());
  OwfTime t{};
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeTime, &t));
  EXPECT_TRUE(same(blankTime, t));
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(5, '\xFF'), owireDecodeTime, &t));
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, decode(std::string(4, '\1'), owireDecodeTime, &t));

  const OwfDateTime dts[] = {{{1, 1, 0}, {0, 0, 0, 0}},
                             {{31, 12, 65535}, {23, 59, 59, 999}},
                             {{7, 3, 2024}, {9, 30, 15, 0}},
                             {{7, 3, 2024}, {255, 255, 255, 65535}}};
  const size_t widths[] = {6, 9, 7, 9};
  for (int i = 0; i < 4; ++i) {
    const std::string b = encode(11, &dts[i]);
    EXPECT_EQ(widths[i], b.size());
    OwfDateTime out{};
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeDateTime, &out));
    EXPECT_EQ(0, std::memcmp(&dts[i].date, &out.date, sizeof out.date));
    EXPECT_TRUE(same(dts[i].time, out.time));
  }
  EXPECT_EQ("07 MAR 2024 09:30:15", text(11, encode(11, &dts[2])));
  OwfDateTime blankDt{{0, 0, 0}, {255, 255, 255, 65535}};
  EXPECT_EQ(0u, encode(11, &blankDt).size());
  OwfDateTime dt;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeDateTime, &dt));
  EXPECT_EQ("<blank>", text(11, std::string()));
}

TEST(OwirePrimitive, DateAndTimeParsersAndValidity) {
  OwfDate d;
  OwfBuffer t = buf("2024-03-07");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDateStringToDate(&d, &t));
  EXPECT_EQ(7, d.day);
  EXPECT_EQ(3, d.month);
  EXPECT_EQ(2024, d.year);
  t = buf("03/07/2024");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDateStringToDate(&d, &t));
  EXPECT_EQ(7, d.day);
  t = buf("7 mar 2024");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDateStringToDate(&d, &t));
  EXPECT_EQ(3, d.month);
  t = buf("7 xyz 2024");
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireDateStringToDate(&d, &t));
  t = buf("  ");
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireDateStringToDate(&d, &t));

  OwfTime tm;
  t = buf("12:34");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireTimeStringToTime(&tm, &t));
  EXPECT_EQ(12, tm.hour);
  EXPECT_EQ(34, tm.minute);
  t = buf("12:34:56:789");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireTimeStringToTime(&tm, &t));
  EXPECT_EQ(789, tm.millisecond);
  t = buf("12:34:56.5");
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireTimeStringToTime(&tm, &t));
  EXPECT_EQ(500, tm.millisecond);
  t = buf("1234");
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireTimeStringToTime(&tm, &t));
  // Out-of-range fields still have a text, and it reads back.
  for (OwfTime odd : {OwfTime{239, 23, 59, 0}, OwfTime{1, 2, 3, 65000}}) {
    char out[64];
    OwfBuffer o{sizeof out, out};
    ASSERT_EQ(OWIRE_RET_SUCCESS, owirePrimitiveToString(&odd, 10, &o));
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireTimeStringToTime(&tm, &o)) << str(o);
    EXPECT_TRUE(same(odd, tm)) << str(o);
  }
  for (OwfDate odd : {OwfDate{200, 13, 65535}, OwfDate{0, 5, 7}}) {
    char out[64];
    OwfBuffer o{sizeof out, out};
    ASSERT_EQ(OWIRE_RET_SUCCESS, owirePrimitiveToString(&odd, 9, &o));
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireDateStringToDate(&d, &o)) << str(o);
    EXPECT_EQ(odd.day, d.day);
    EXPECT_EQ(odd.month, d.month);
    EXPECT_EQ(odd.year, d.year);
  }

  OwfDate dates[] = {{29, 2, 2024}, {29, 2, 2023}, {0, 0, 0}, {31, 4, 2024}, {1, 13, 2024}, {0, 1, 2024}};
  const bool dateOk[] = {true, false, true, false, false, false};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(dateOk[i], owireDateIsValid(&dates[i])) << i;
  OwfTime times[] = {{23, 59, 59, 999}, {24, 0, 0, 0}, {0, 60, 0, 0}, {0, 0, 60, 0}, {0, 0, 0, 1000},
                     {255, 255, 255, 65535}};
  const bool timeOk[] = {true, false, false, false, false, true};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(timeOk[i], owireTimeIsValid(&times[i])) << i;
  OwfDateTime dt{{29, 2, 2023}, {0, 0, 0, 0}};
  EXPECT_FALSE(owireDateTimeIsValid(&dt));
  dt.date.day = 28;
  EXPECT_TRUE(owireDateTimeIsValid(&dt));
}

TEST(OwirePrimitive, EnumQosStateAndBuffers) {
  for (UInt16 v : {UInt16{0}, UInt16{255}, UInt16{256}, UInt16{65535}}) {
    const std::string b = encode(14, &v);
    EXPECT_EQ(v > 255 ? 2u : 1u, b.size());
    UInt16 out;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeEnum, &out));
    EXPECT_EQ(v, out);
    EXPECT_EQ(std::to_string(v), text(14, b));
  }
  UInt16 e;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, decode(std::string(), owireDecodeEnum, &e));

  const OwfQos qs[] = {{1, 1, 0, 0, 0}, {3, 3, 0, 500, 1000}, {2, 2, 1, 0, 0}, {0, 0, 0, 0, 0}};
  const char* qtext[] = {"RealTime/TickByTick", "Delayed:500/Rate:1000",
                         "DelayedUnknown/JustInTimeConflated/Flags:0x01", "Unspecified/Unspecified"};
  for (int i = 0; i < 4; ++i) {
    const std::string b = encode(12, &qs[i]);
    OwfQos out;
    EXPECT_EQ(OWIRE_RET_SUCCESS, decode(b, owireDecodeQos, &out));
    EXPECT_EQ(qs[i].timeliness, out.timeliness);
    EXPECT_EQ(qs[i].rate, out.rate);
    EXPECT_EQ(qs[i].flags, out.flags);
    EXPECT_EQ(qs[i].timeInfo, out.timeInfo);
    EXPECT_EQ(qs[i].rateInfo, out.rateInfo);
    EXPECT_EQ(qtext[i], text(12, b));
  }
  OwfQos badQos{16, 0, 0, 0, 0};
  Enc enc(64);
  EXPECT_EQ(OWIRE_RET_INVALID_DATA, owireEncodePrimitiveType(&enc.it, 12, &badQos));

  std::string longText(300, 'x');
  const OwfState st{4, 2, 17, buf(longText)};
  const std::string sb = encode(13, &st);
  Dec sd(sb);
  OwfState so;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDecodeState(&sd.it, &so));
  EXPECT_EQ(4, so.streamState);
  EXPECT_EQ(2, so.dataState);
  EXPECT_EQ(17, so.code);
  EXPECT_EQ(longText, str(so.text));
  EXPECT_TRUE(sd.inside(so.text));  // points into the input
  const OwfState st2{1, 1, 0, buf("All is well")};
  EXPECT_EQ("stream=1 data=1 code=0 text=\"All is well\"", text(13, encode(13, &st2)));

  for (UInt8 type : {16, 17, 18, 19, 130, 131, 134}) {
    const std::string s = "bytes of " + std::to_string(type);
    OwfBuffer in = buf(s);
    const std::string b = encode(type, &in);
    EXPECT_EQ(s, b);  // byte strings are their own content
    Dec d(b);
    OwfBuffer out;
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireDecodeBuffer(&d.it, &out));
    EXPECT_EQ(s, str(out));
    EXPECT_EQ(d.bytes.data(), out.data);
    EXPECT_EQ(s, text(type, b));
    OwfBuffer empty{0, nullptr};
    EXPECT_EQ(0u, encode(type, &empty).size());
  }
}

TEST(OwirePrimitive, ToStringBlankTooSmallAndUnsupported) {
  char out[4];
  OwfBuffer o{sizeof out, out};
  Int64 v = 123456;
  EXPECT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, owirePrimitiveToString(&v, 3, &o));
  o.length = sizeof out;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owirePrimitiveToString(nullptr, 3, &o));
  o.length = sizeof out;
  EXPECT_EQ(OWIRE_RET_UNSUPPORTED_DATA_TYPE, owirePrimitiveToString(&v, 132, &o));
  Dec d(std::string("\x40\xE2\x01", 3));
  o.length = 3;
  EXPECT_GT(0, owireEncodedPrimitiveToString(&d.it, 3, &o));
  Enc e(64);
  EXPECT_EQ(OWIRE_RET_UNSUPPORTED_DATA_TYPE, owireEncodePrimitiveType(&e.it, 132, &v));
}

TEST(OwirePrimitive, PrimitiveContentApi) {
  using namespace orvo::owire;
  char b[16];
  UInt32 n = 0;
  Int64 v = -2;
  EXPECT_EQ(OWIRE_RET_SUCCESS, encodePrimitiveContent(3, &v, b, b + sizeof b, &n));
  EXPECT_EQ(1u, n);
  EXPECT_EQ(OWIRE_RET_BUFFER_TOO_SMALL, encodePrimitiveContent(3, &v, b, b, &n));
  UInt32 size;
  OwfReal r{0, 10, 70000};
  EXPECT_EQ(OWIRE_RET_SUCCESS, primitiveContentSize(8, &r, &size));
  EXPECT_EQ(4u, size);
  OwfReal out;
  ASSERT_EQ(OWIRE_RET_SUCCESS, encodePrimitiveContent(8, &r, b, b + sizeof b, &n));
  EXPECT_EQ(OWIRE_RET_SUCCESS, decodePrimitiveContent(8, b, n, &out));
  EXPECT_EQ(70000, out.value);
  EXPECT_EQ(OWIRE_RET_UNSUPPORTED_DATA_TYPE, decodePrimitiveContent(132, b, n, &out));
}

TEST(OwireIterator, RoutinesAndEdgeCases) {
  OwfEncodeIterator e;
  clearEncodeIterator(&e);
  EXPECT_EQ(nullptr, e.buffer);
  EXPECT_EQ(-1, e.encodingLevel);
  EXPECT_EQ(0, encodeLevelState(&e));
  char mem[8];
  OwfBuffer zero{0, mem};
  EXPECT_EQ(-1, setEncodeIteratorBuffer(&e, &zero));
  EXPECT_EQ(nullptr, e.buffer);
  OwfBuffer nodata{8, nullptr};
  EXPECT_EQ(-1, setEncodeIteratorBuffer(&e, &nodata));
  OwfBuffer ok{8, mem};
  EXPECT_EQ(0, setEncodeIteratorBuffer(&e, &ok));
  EXPECT_EQ(0u, getEncodedLength(&e));
  EXPECT_EQ(-1, setEncodeIteratorVersion(&e, 15, 1));
  EXPECT_EQ(14, e.majorVersion);
  EXPECT_EQ(0, e.minorVersion);
  EXPECT_EQ(0, setEncodeIteratorVersion(&e, 14, 1));
  EXPECT_EQ(1, e.minorVersion);

  OwfDecodeIterator d;
  clearDecodeIterator(&d);
  EXPECT_EQ(-1, d.decodingLevel);
  OwfBuffer empty{0, nullptr};
  EXPECT_EQ(0, setDecodeIteratorBuffer(&d, &empty));
  Int64 v;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireDecodeInt(&d, &v));
  OwfFieldList fl;
  EXPECT_EQ(OWIRE_RET_BLANK_DATA, owireDecodeFieldList(&d, &fl, nullptr));
  OwfFieldEntry fe;
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d, &fe));
  EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&d, &fe));  // stays ended
  EXPECT_EQ(-1, setDecodeIteratorBuffer(&d, &nodata));
  EXPECT_EQ(nullptr, d.buffer);
  EXPECT_EQ(-1, setDecodeIteratorVersion(&d, 15, 0));
  EXPECT_EQ(14, d.majorVersion);

  // Copying a decode iterator gives an independent reader.
  Enc enc;
  OwfFieldList list{};
  list.flags = OWF_FLF_HAS_STANDARD_DATA;
  ASSERT_EQ(0, owireEncodeFieldListInit(&enc.it, &list, nullptr, 0));
  for (Int64 i = 0; i < 3; ++i) {
    OwfFieldEntry f{static_cast<Int16>(i + 1), 3, {0, nullptr}};
    ASSERT_EQ(0, owireEncodeFieldEntry(&enc.it, &f, &i));
  }
  ASSERT_EQ(0, owireEncodeFieldListComplete(&enc.it, true));
  Dec dec(enc.bytes());
  ASSERT_EQ(0, owireDecodeFieldList(&dec.it, &fl, nullptr));
  OwfDecodeIterator a = dec.it, b = dec.it;
  ASSERT_EQ(0, owireDecodeFieldEntry(&a, &fe));
  ASSERT_EQ(0, owireDecodeFieldEntry(&a, &fe));
  EXPECT_EQ(2, fe.fieldId);
  ASSERT_EQ(0, owireDecodeFieldEntry(&b, &fe));
  EXPECT_EQ(1, fe.fieldId);
}

TEST(OwireRetCode, TextForEveryCode) {
  for (int code = -100; code <= 100; ++code) {
    const char* t = owireRetCodeToString(code);
    ASSERT_NE(nullptr, t) << code;
    EXPECT_NE('\0', t[0]) << code;
  }
  EXPECT_STREQ("Buffer too small", owireRetCodeToString(OWIRE_RET_BUFFER_TOO_SMALL));
  EXPECT_STRNE(owireRetCodeToString(OWIRE_RET_FAILURE), owireRetCodeToString(OWIRE_RET_INVALID_DATA));
}

namespace {

// Encodes a field list of `values` (field ids 1, 2, ...) and returns its bytes.
std::string integerList(UInt8 type, const std::vector<UInt64>& values) {
  Enc e;
  OwfFieldList list{};
  list.flags = OWF_FLF_HAS_STANDARD_DATA;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireEncodeFieldListInit(&e.it, &list, nullptr, 0));
  Int16 fid = 1;
  for (UInt64 v : values) {
    OwfFieldEntry entry{fid++, type, {0, nullptr}};
    OwfReal real{0, 12, static_cast<Int64>(v)};
    const void* value = type == 8 ? static_cast<const void*>(&real) : &v;
    EXPECT_EQ(OWIRE_RET_SUCCESS, owireEncodeFieldEntry(&e.it, &entry, value));
  }
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireEncodeFieldListComplete(&e.it, true));
  return e.bytes();
}

}  // namespace

// Integer contents of every width, each followed by other entries' bytes or by
// the very end of the buffer (an exact-size copy, so that a read past the end
// is caught), read back through the iterator.
TEST(OwirePrimitive, IntegerContentsOfEveryWidthReadBackInsideAndAtTheEnd) {
  std::vector<UInt64> values;
  for (int bytes = 1; bytes <= 8; ++bytes) {
    const UInt64 top = bytes == 8 ? ~UInt64{0} : (UInt64{1} << (8 * bytes)) - 1;
    values.push_back(top);       // all ones: the widest of this width
    values.push_back(top >> 1);  // the largest positive signed value
    values.push_back((top >> 1) + 1);
  }
  for (const UInt8 type : {UInt8{3}, UInt8{4}, UInt8{8}}) {
    // Every value last once, and all of them in one list.
    std::vector<std::vector<UInt64>> lists{values};
    for (UInt64 v : values) lists.push_back({v});
    for (const auto& content : lists) {
      const std::string bytes = integerList(type, content);
      std::unique_ptr<char[]> exact(new char[bytes.size()]);
      std::memcpy(exact.get(), bytes.data(), bytes.size());
      OwfBuffer in{static_cast<UInt32>(bytes.size()), exact.get()};
      OwfDecodeIterator it;
      clearDecodeIterator(&it);
      ASSERT_EQ(0, setDecodeIteratorBuffer(&it, &in));
      OwfFieldList list;
      ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeFieldList(&it, &list, nullptr));
      OwfFieldEntry entry;
      for (UInt64 want : content) {
        ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeFieldEntry(&it, &entry));
        if (type == 4) {
          UInt64 got = 0;
          ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeUInt(&it, &got));
          EXPECT_EQ(want, got);
        } else if (type == 3) {
          Int64 got = 0;
          ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeInt(&it, &got));
          EXPECT_EQ(static_cast<Int64>(want), got);
        } else {
          OwfReal got{1, 0, 0};
          ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeReal(&it, &got));
          EXPECT_EQ(0, got.isBlank);
          EXPECT_EQ(12, got.hint);
          EXPECT_EQ(static_cast<Int64>(want), got.value);
        }
      }
      EXPECT_EQ(OWIRE_RET_END_OF_CONTAINER, owireDecodeFieldEntry(&it, &entry));
    }
  }
}
