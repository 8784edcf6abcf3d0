// Fuzz target for the primitive decoders, the text forms and the text
// parsers. The first input byte chooses the data type; the rest is the
// value's content. A value that decodes is encoded again and must decode to
// the same content; the text of the value is parsed back where a parser
// exists.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "orvo/owire/owire.h"
#include "owire/Primitives.h"

namespace {

const UInt8 kTypes[] = {3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 130, 131, 134, 1, 2, 7};

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

void check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace orvo::owire;
  if (size < 1) return 0;
  const UInt8 type = kTypes[data[0] % sizeof kTypes];
  const UInt32 n = static_cast<UInt32>(size - 1);
  std::unique_ptr<char[]> bytes(new char[n ? n : 1]);
  if (n) std::memcpy(bytes.get(), data + 1, n);
  OwfBuffer in{n, n ? bytes.get() : nullptr};

  // Through the iterator.
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  if (setDecodeIteratorBuffer(&it, &in) != 0) return 0;
  AnyValue v;
  std::memset(&v, 0, sizeof v);
  switch (normalizeType(type)) {
    case 3: owireDecodeInt(&it, &v.i); break;
    case 4: owireDecodeUInt(&it, &v.u); break;
    case 5: owireDecodeFloat(&it, &v.f); break;
    case 6: owireDecodeDouble(&it, &v.d); break;
    case 8: owireDecodeReal(&it, &v.real); break;
    case 9: owireDecodeDate(&it, &v.date); break;
    case 10: owireDecodeTime(&it, &v.time); break;
    case 11: owireDecodeDateTime(&it, &v.dateTime); break;
    case 12: owireDecodeQos(&it, &v.qos); break;
    case 13: owireDecodeState(&it, &v.state); break;
    case 14: owireDecodeEnum(&it, &v.e); break;
    default: owireDecodeBuffer(&it, &v.buffer); break;
  }
  char text[256];
  OwfBuffer out{sizeof text, text};
  const int textRet = owireEncodedPrimitiveToString(&it, type, &out);

  // Content round trip.
  std::memset(&v, 0, sizeof v);
  const int ret = decodePrimitiveContent(type, n ? bytes.get() : nullptr, n, &v);
  if (ret == OWIRE_RET_SUCCESS && normalizeType(type) != 15) {
    char again[512];
    UInt32 m = 0;
    const int enc = encodePrimitiveContent(type, &v, again, again + sizeof again, &m);
    if (enc == OWIRE_RET_SUCCESS) {
      AnyValue w;
      std::memset(&w, 0, sizeof w);
      const int ret2 = decodePrimitiveContent(type, again, m, &w);
      check(ret2 == OWIRE_RET_SUCCESS || ret2 == OWIRE_RET_BLANK_DATA);
      char t1[256], t2[256];
      OwfBuffer o1{sizeof t1, t1}, o2{sizeof t2, t2};
      const int r1 = owirePrimitiveToString(&v, type, &o1);
      const int r2 = owirePrimitiveToString(&w, type, &o2);
      check(r1 == r2);
      if (r1 == OWIRE_RET_SUCCESS) check(o1.length == o2.length && std::memcmp(t1, t2, o1.length) == 0);
    }
  }
  // Parsers: of the text form, and of the raw input as text.
  if (textRet == OWIRE_RET_SUCCESS) {
    const UInt8 t = normalizeType(type);
    if (t == 8) {
      OwfReal r;
      check(owireNumericStringToReal(&r, &out) == OWIRE_RET_SUCCESS);
    } else if (t == 9) {
      OwfDate d;
      check(owireDateStringToDate(&d, &out) == OWIRE_RET_SUCCESS);
    } else if (t == 10) {
      OwfTime tm;
      check(owireTimeStringToTime(&tm, &out) == OWIRE_RET_SUCCESS);
    }
  }
  OwfReal r;
  double d;
  OwfDate date;
  OwfTime time;
  owireNumericStringToReal(&r, &in);
  owireNumericStringToDouble(&d, &in);
  owireDateStringToDate(&date, &in);
  owireTimeStringToTime(&time, &in);
  if (owireNumericStringToReal(&r, &in) == OWIRE_RET_SUCCESS) {
    owireRealToDouble(&d, &r);
    OwfReal back;
    owireDoubleToReal(&back, &d, r.hint);
  }
  return 0;
}
