#include <algorithm>
#include <cfloat>
#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/DataInt.h"
#include "gtest/gtest.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "value_test_util.h"

namespace orvo {
namespace {

using common::Buffer;
using common::Int64;
using common::QualityOfService;
using common::QualityOfServiceInfo;
using common::RespStatus;
using common::UInt16;
using common::UInt64;
using common::UInt8;
using data::DataBuffer;
using data::Date;
using data::Real64;
using internal::DataBufferInt;
using internal::DataInt;
using testing::holdWire;
using testing::raisedBy;
using testing::wireBytes;

std::vector<char> realBytes(Int64 value, UInt8 hint) {
  OwfReal real{0, hint, value};
  return wireBytes(data::RealEnum, &real);
}

Real64 makeReal(Int64 value, UInt8 hint) {
  Real64 r;
  r.setValue(value);
  r.setMagnitudeType(hint);
  return r;
}

// The text a getter raises when the codec refuses `bytes` as a `type`.
std::string decodeFailure(const std::string& literal, const std::vector<char>& bytes, UInt8 type) {
  OwfDecodeIterator iter{};
  clearDecodeIterator(&iter);
  OwfBuffer buffer{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())};
  setDecodeIteratorBuffer(&iter, &buffer);
  union {
    Int64 i;
    UInt64 u;
    float f;
    double d;
    OwfReal real;
    OwfDate date;
    OwfTime time;
    OwfDateTime dateTime;
    OwfQos qos;
    OwfState state;
    UInt16 e;
  } out;
  int ret = 0;
  switch (type) {
    case 3:
      ret = owireDecodeInt(&iter, &out.i);
      break;
    case 4:
      ret = owireDecodeUInt(&iter, &out.u);
      break;
    case 5:
      ret = owireDecodeFloat(&iter, &out.f);
      break;
    case 6:
      ret = owireDecodeDouble(&iter, &out.d);
      break;
    case 8:
      ret = owireDecodeReal(&iter, &out.real);
      break;
    case 9:
      ret = owireDecodeDate(&iter, &out.date);
      break;
    case 10:
      ret = owireDecodeTime(&iter, &out.time);
      break;
    case 11:
      ret = owireDecodeDateTime(&iter, &out.dateTime);
      break;
    case 12:
      ret = owireDecodeQos(&iter, &out.qos);
      break;
    case 13:
      ret = owireDecodeState(&iter, &out.state);
      break;
    case 14:
      ret = owireDecodeEnum(&iter, &out.e);
      break;
  }
  EXPECT_LT(ret, 0) << "the codec accepts these bytes as type " << int(type);
  return literal + owireRetCodeToString(ret);
}

// ---------------------------------------------------------------------------
// Wrong types.

struct WrongType {
  std::string getter;
  UInt8 stored;
  std::function<void(const DataBuffer&)> call;
  std::string close;
};

TEST(DataBufferGetterTest, WrongStoredTypesRaiseTheValueForm) {
  const std::vector<WrongType> cases = {
      {"getInt64", 5, [](const DataBuffer& b) { b.getInt64(); }, "] in DataBuffer::getInt()"},
      {"getInt", 17, [](const DataBuffer& b) { b.getInt(); }, "] in DataBuffer::getInt()"},
      {"getUInt64", 6, [](const DataBuffer& b) { b.getUInt64(); }, "] in DataBuffer::getUInt()"},
      {"getInt32", 14, [](const DataBuffer& b) { b.getInt32(); }, "] in DataBuffer::getInt32()"},
      {"getUInt32", 9, [](const DataBuffer& b) { b.getUInt32(); }, "] in DataBuffer::getUInt32()"},
      {"getFloat", 6, [](const DataBuffer& b) { b.getFloat(); },
       "] in DataBuffer::getFloat(). Only RealEnum or FloatEnum types are allowed."},
      {"getDouble", 5, [](const DataBuffer& b) { b.getDouble(); },
       "] in DataBuffer::getDouble(). Only RealEnum or DoubleEnum types are allowed."},
      {"getFloat of an int", 3, [](const DataBuffer& b) { b.getFloat(); },
       "] in DataBuffer::getFloat(). Only RealEnum or FloatEnum types are allowed."},
      {"getReal64", 5, [](const DataBuffer& b) { b.getReal64(); }, "] in DataBuffer::getReal()"},
      {"getReal", 6, [](const DataBuffer& b) { b.getReal(); }, "] in DataBuffer::getReal()"},
      {"getReal32", 14, [](const DataBuffer& b) { b.getReal32(); }, "] in DataBuffer::getReal32()"},
      {"getDate", 11, [](const DataBuffer& b) { b.getDate(); }, "] in DataBuffer::getDate()"},
      {"getTime", 9, [](const DataBuffer& b) { b.getTime(); }, "] in DataBuffer::getTime()"},
      {"getDateTime", 10, [](const DataBuffer& b) { b.getDateTime(); },
       "] in DataBuffer::getDateTime()"},
      {"getQualityOfServiceInfo", 13, [](const DataBuffer& b) { b.getQualityOfServiceInfo(); },
       "] in DataBuffer::getQualityOfServiceInfo()"},
      {"getRespStatus", 12, [](const DataBuffer& b) { b.getRespStatus(); },
       "] in DataBuffer::getRespStatus()"},
      {"getEnumeration", 3, [](const DataBuffer& b) { b.getEnumeration(); },
       "] in DataBuffer::getEnumeration()"},
  };
  for (const WrongType& c : cases) {
    SCOPED_TRACE(c.getter);
    DataBuffer value(false);
    value.setBlankData(c.stored, 0);
    const auto raised = raisedBy([&] { c.call(value); });
    EXPECT_EQ("usage", raised.kind);
    EXPECT_EQ(1, raised.state);
    EXPECT_EQ("Invalid DataBuffer type [" + std::to_string(c.stored) + c.close, raised.text);
    EXPECT_EQ(c.stored, value.getDataBufferType());
  }
}

// ---------------------------------------------------------------------------
// Decoding of held wire bytes.

TEST(DataBufferGetterTest, EveryValueTypeDecodesItsWireBytesOnce) {
  const Int64 i = -123456789012LL;
  const UInt64 u = 18446744073709551615ull;
  const float f = -0.375f;
  const double d = 6.02214076e23;
  const UInt16 e = 4242;
  const OwfDate date{29, 2, 2024};
  const OwfTime time{13, 14, 15, 161};
  const OwfDateTime dateTime{{1, 1, 1970}, {0, 0, 1, 0}};
  std::vector<char> bytes = wireBytes(data::IntEnum, &i);

  DataBuffer value(false);
  holdWire(value, bytes, data::IntEnum);
  EXPECT_EQ(i, value.getInt64());
  EXPECT_TRUE(DataInt::decoded(&value));
  bytes.assign(bytes.size(), 0);  // a decoded value is not read again
  EXPECT_EQ(i, value.getInt());

  const auto uintBytes = wireBytes(data::UIntEnum, &u);
  DataBuffer uintValue(false);
  holdWire(uintValue, uintBytes, data::UIntEnum);
  EXPECT_EQ(u, uintValue.getUInt64());

  const auto floatBytes = wireBytes(data::FloatEnum, &f);
  DataBuffer floatValue(true);
  holdWire(floatValue, floatBytes, data::FloatEnum);
  EXPECT_EQ(f, floatValue.getFloat());

  const auto doubleBytes = wireBytes(data::DoubleEnum, &d);
  DataBuffer doubleValue(true);
  holdWire(doubleValue, doubleBytes, data::DoubleEnum);
  EXPECT_EQ(d, doubleValue.getDouble());

  const auto enumBytes = wireBytes(data::EnumerationEnum, &e);
  DataBuffer enumValue(false);
  holdWire(enumValue, enumBytes, data::EnumerationEnum);
  EXPECT_EQ(e, enumValue.getEnumeration());

  const auto dateBytes = wireBytes(data::DateEnum, &date);
  DataBuffer dateValue(false);
  holdWire(dateValue, dateBytes, data::DateEnum);
  EXPECT_EQ(29, dateValue.getDate().getDay());
  EXPECT_EQ(2, dateValue.getDate().getMonth());
  EXPECT_EQ(2024, dateValue.getDate().getYear());
  EXPECT_FALSE(dateValue.isBlank());

  const auto timeBytes = wireBytes(data::TimeEnum, &time);
  DataBuffer timeValue(false);
  holdWire(timeValue, timeBytes, data::TimeEnum);
  EXPECT_EQ(13, timeValue.getTime().getHour());
  EXPECT_EQ(161, timeValue.getTime().getMillisecond());

  const auto dateTimeBytes = wireBytes(data::DateTimeEnum, &dateTime);
  DataBuffer dateTimeValue(false);
  holdWire(dateTimeValue, dateTimeBytes, data::DateTimeEnum);
  EXPECT_EQ(1970, dateTimeValue.getDateTime().getYear());
  EXPECT_EQ(1, dateTimeValue.getDateTime().getSecond());
}

TEST(DataBufferGetterTest, BlankWireBytesReadBlank) {
  for (UInt8 type : {3, 4, 5, 6, 8, 9, 10, 11, 12, 13, 14}) {
    SCOPED_TRACE(int(type));
    DataBuffer value(false);
    holdWire(value, {}, type);
    EXPECT_TRUE(value.isBlank());
  }
}

TEST(DataBufferGetterTest, DateOfMonth228WithDayAndYearZeroIsBlank) {
  const std::vector<char> bytes = {0, static_cast<char>(0xE4), 0, 0};
  DataBuffer value(false);
  holdWire(value, bytes, data::DateEnum);
  EXPECT_EQ(0, value.getDate().getMonth());
  EXPECT_TRUE(value.isBlank());

  const std::vector<char> notBlank = {1, static_cast<char>(0xE4), 0, 0};
  DataBuffer other(false);
  holdWire(other, notBlank, data::DateEnum);
  EXPECT_EQ(0xE4, other.getDate().getMonth());
  EXPECT_FALSE(other.isBlank());
}

TEST(DataBufferGetterTest, RefusedBytesRaiseTheReasonFormAndStayUndecoded) {
  struct Case {
    UInt8 type;
    std::function<void(const DataBuffer&)> call;
    std::string literal;
  };
  const std::string head = "Data decoding failed in DataBuffer::";
  const std::vector<Case> cases = {
      {3, [](const DataBuffer& b) { b.getInt64(); }, head + "getInt(); Reason: "},
      {3, [](const DataBuffer& b) { b.getInt32(); }, head + "getInt(); Reason: "},
      {4, [](const DataBuffer& b) { b.getUInt64(); }, head + "getUInt(); Reason: "},
      {4, [](const DataBuffer& b) { b.getUInt32(); }, head + "getUInt(); Reason: "},
      {5, [](const DataBuffer& b) { b.getFloat(); }, head + "getFloat(); Reason: "},
      {6, [](const DataBuffer& b) { b.getDouble(); }, head + "getDouble(); Reason: "},
      {8, [](const DataBuffer& b) { b.getReal(); }, head + "getReal(); Reason: "},
      {8, [](const DataBuffer& b) { b.getReal32(); }, head + "getReal32(); Reason: "},
      {8, [](const DataBuffer& b) { b.getInt64(); }, head + "getReal(); Reason: "},
      {8, [](const DataBuffer& b) { b.getFloat(); }, head + "getFloat(); Reason: "},
      {8, [](const DataBuffer& b) { b.getDouble(); }, head + "getDouble(); Reason: "},
      {9, [](const DataBuffer& b) { b.getDate(); }, head + "getDate(); Reason: "},
      {10, [](const DataBuffer& b) { b.getTime(); }, head + "getTime(); Reason: "},
      {11, [](const DataBuffer& b) { b.getDateTime(); }, head + "getDateTime(); Reason: "},
      {12, [](const DataBuffer& b) { b.getQualityOfServiceInfo(); },
       head + "getQualityOfServiceInfo(); Reason: "},
      {13, [](const DataBuffer& b) { b.getRespStatus(); }, head + "getRespStatus(); Reason: "},
      {14, [](const DataBuffer& b) { b.getEnumeration(); }, head + "getEnumeration(); Reason: "},
  };
  // Longer than any fixed value, and a real's leading byte of 0x3F is no
  // magnitude type; a status is too short below three bytes.
  const std::vector<char> tooLong(11, 0x3F);
  const std::vector<char> tooShort(2, 0x3F);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.literal + std::to_string(c.type));
    const std::vector<char>& bad = c.type == data::StateEnum ? tooShort : tooLong;
    DataBuffer value(false);
    holdWire(value, bad, c.type);
    const auto raised = raisedBy([&] { c.call(value); });
    EXPECT_EQ("usage", raised.kind);
    EXPECT_EQ(decodeFailure(c.literal, bad, c.type), raised.text);
    EXPECT_FALSE(DataInt::decoded(&value));
    EXPECT_EQ(raised.text, raisedBy([&] { c.call(value); }).text);
  }
}

// ---------------------------------------------------------------------------
// Integer conversions.

TEST(DataBufferIntegerTest, SignedAndUnsignedShareTheirBits) {
  DataBuffer value(false);
  value.setUInt64(18446744073709551615ull);
  EXPECT_EQ(-1, value.getInt64());
  value.setInt64(-2);
  EXPECT_EQ(18446744073709551614ull, value.getUInt64());
}

TEST(DataBufferIntegerTest, Int32CutsToTheLowBitsAndNeverRaises) {
  DataBuffer value(true);  // keeps its own copy of each real
  value.setInt64(5000000000LL);
  EXPECT_EQ(705032704, value.getInt32());
  value.setUInt64((1ull << 32) + 7);
  EXPECT_EQ(7, value.getInt32());
  value.setReal(makeReal(3000000000LL, 14));
  EXPECT_EQ(static_cast<int>(3000000000u), value.getInt32());
  value.setInt32(-5);
  EXPECT_EQ(-5, value.getInt32());
}

TEST(DataBufferIntegerTest, UInt32RaisesPastThirtyTwoBitsUnlessTheSignedSlotIsNegative) {
  const std::string outOfRange = "Value Out of Range in class [DataBuffer] in method [getUInt32()]";
  DataBuffer value(false);
  value.setUInt64(1ull << 32);
  auto raised = raisedBy([&] { value.getUInt32(); });
  EXPECT_EQ("range", raised.kind);
  EXPECT_EQ(outOfRange, raised.text);
  EXPECT_EQ(1, raised.state);

  value.setInt64(5000000000LL);
  EXPECT_EQ(outOfRange, raisedBy([&] { value.getUInt32(); }).text);

  value.setInt32(-1);  // a negative signed number passes as its low bits
  EXPECT_EQ(4294967295u, value.getUInt32());

  value.setUInt32(4294967295u);
  EXPECT_EQ(4294967295u, value.getUInt32());

  DataBuffer fresh(true);
  fresh.setReal(makeReal(5000000000LL, 14));
  EXPECT_EQ(outOfRange, raisedBy([&] { fresh.getUInt32(); }).text);
  fresh.setReal(makeReal(42, 14));
  EXPECT_EQ(42u, fresh.getUInt32());
}

TEST(DataBufferIntegerTest, RealsScaleInSinglePrecisionPowersOfTen) {
  struct Row {
    Int64 value;
    UInt8 hint;
    Int64 integer;
  };
  const std::vector<Row> rows = {
      {1234, 14, 1234},
      {5, 16, 500},
      {7, 21, 70000000},
      {12345, 12, 123},
      {-1999, 11, -1},  // toward zero
      {123, 13, 12},
      {250, 12, 2},
      // A factor of 0.01 held in single precision is slightly below it.
      {100, 12, 0},
      // Binary magnitudes step by ten as well.
      {1000, 22, 1000},
      {1000, 23, 100},
      {-1000, 24, -9},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.value) + "@" + std::to_string(row.hint));
    DataBuffer value(true);  // keeps its own copy of each real
    value.setReal(makeReal(row.value, row.hint));
    EXPECT_EQ(row.integer, value.getInt64());
    EXPECT_EQ(static_cast<UInt64>(row.integer), value.getUInt64());
    const auto bytes = realBytes(row.value, row.hint);
    DataBuffer wire(false);
    holdWire(wire, bytes, data::RealEnum);
    EXPECT_EQ(row.integer, wire.getInt());
  }
}

TEST(DataBufferIntegerTest, IntegersReadAsRealsWithNoShift) {
  DataBuffer value(false);
  value.setInt64(-42);
  const Real64& real = value.getReal();
  EXPECT_EQ(-42, real.getValue());
  EXPECT_EQ(14, real.getMagnitudeType());
  EXPECT_EQ(0, DataBufferInt::record(real).isBlank);

  value.setUInt64(18446744073709551615ull);
  EXPECT_EQ(-1, value.getReal32().getValue());
  EXPECT_EQ(14, value.getReal32().getMagnitudeType());

  value.setBlankData(data::IntEnum, 0);
  EXPECT_EQ(1, DataBufferInt::record(value.getReal64()).isBlank);

  // Wire bytes of an integer are decoded before the blank flag is taken.
  const Int64 seven = 7;
  const auto bytes = wireBytes(data::IntEnum, &seven);
  DataBuffer wire(false);
  holdWire(wire, bytes, data::IntEnum);
  EXPECT_EQ(7, wire.getReal().getValue());
  EXPECT_EQ(0, DataBufferInt::record(wire.getReal()).isBlank);
}

// ---------------------------------------------------------------------------
// Floating conversions.

TEST(DataBufferFloatTest, WireRealsConvertAtEveryCall) {
  std::vector<char> bytes = realBytes(1250, 12);
  DataBuffer value(false);
  holdWire(value, bytes, data::RealEnum);
  EXPECT_EQ(12.5f, value.getFloat());
  EXPECT_EQ(12.5, value.getDouble());
  // The viewed bytes change in place; the next call reads them again.
  const std::vector<char> other = realBytes(-2500, 13);
  ASSERT_EQ(other.size(), bytes.size());
  std::copy(other.begin(), other.end(), bytes.begin());
  EXPECT_EQ(-250.0f, value.getFloat());
  EXPECT_EQ(-250.0, value.getDouble());
  EXPECT_FALSE(value.isBlank());
}

TEST(DataBufferFloatTest, FloatRaisesAboveTheFloatRangeWithTheInt32MethodWord) {
  const auto huge = realBytes(0, 33);  // positive infinity
  DataBuffer value(false);
  holdWire(value, huge, data::RealEnum);
  const auto raised = raisedBy([&] { value.getFloat(); });
  EXPECT_EQ("range", raised.kind);
  EXPECT_EQ("Value Out of Range in class [DataBuffer] in method [getInt32()]", raised.text);
  EXPECT_TRUE(std::isinf(value.getDouble()));

  // Only the upper limit is checked.
  const auto negative = realBytes(0, 34);
  DataBuffer below(false);
  holdWire(below, negative, data::RealEnum);
  const float f = below.getFloat();
  EXPECT_TRUE(std::isinf(f) && f < 0);
}

TEST(DataBufferFloatTest, UnencodedRealsDoNotConvert) {
  DataBuffer value(true);  // keeps its own copy of each real
  value.setFloat(2.5f);
  value.setReal(makeReal(999, 14));
  EXPECT_EQ(2.5f, value.getFloat());
  value.setDouble(-8.0);
  value.setReal(makeReal(999, 14));
  EXPECT_EQ(-8.0, value.getDouble());
}

TEST(DataBufferFloatTest, BlankWireRealKeepsTheSlots) {
  DataBuffer value(false);
  value.setFloat(3.0f);
  value.setDouble(4.0);
  holdWire(value, {}, data::RealEnum);
  EXPECT_EQ(4.0, value.getDouble());
  EXPECT_EQ(3.0f, value.getFloat());
  EXPECT_TRUE(value.isBlank());
}

// ---------------------------------------------------------------------------
// Reals.

TEST(DataBufferRealTest, WireRealsDecodeOnceWithTheirBlankFlag) {
  const auto bytes = realBytes(-31415, 10);
  DataBuffer value(true);
  holdWire(value, bytes, data::RealEnum);
  EXPECT_EQ(-31415, value.getReal64().getValue());
  EXPECT_EQ(10, value.getReal32().getMagnitudeType());
  EXPECT_FALSE(value.isBlank());

  DataBuffer blank(true);
  holdWire(blank, {}, data::RealEnum);
  EXPECT_EQ(1, DataBufferInt::record(blank.getReal()).isBlank);
  EXPECT_TRUE(blank.isBlank());
}

TEST(DataBufferRealTest, Real32AndReal64AreOneStorage) {
  DataBuffer value(true);  // keeps its own copy of each real
  value.setReal(makeReal(-7, 12));
  const data::Real32& r32 = value.getReal32();
  const Real64& r64 = value.getReal64();
  EXPECT_EQ(static_cast<const void*>(&r32), static_cast<const void*>(&r64));
  EXPECT_EQ(-7, r32.getValue());
}

// ---------------------------------------------------------------------------
// Quality of service and status.

TEST(DataBufferQosTest, WireRecordsReadAsQualityOfService) {
  struct Row {
    OwfQos wire;
    long timeliness, rate;
  };
  const std::vector<Row> rows = {
      {{1, 1, 0, 0, 0}, QualityOfService::realTime, QualityOfService::tickByTick},
      {{2, 2, 0, 0, 0},
       QualityOfService::unspecifiedDelayedTimeliness,
       QualityOfService::justInTimeFilteredRate},
      {{3, 3, 0, 40, 250}, 40, 250},
      {{3, 3, 0, 65535, 65535},
       QualityOfService::unspecifiedTimeliness,
       QualityOfService::unspecifiedRate},
      {{0, 0, 0, 0, 0}, QualityOfService::unspecifiedTimeliness, QualityOfService::unspecifiedRate},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::to_string(row.wire.timeliness) + "/" + std::to_string(row.wire.rate));
    const auto bytes = wireBytes(data::QosEnum, &row.wire);
    DataBuffer value(false);
    holdWire(value, bytes, data::QosEnum);
    const QualityOfServiceInfo& info = value.getQualityOfServiceInfo();
    EXPECT_EQ(row.timeliness, info.getQualityOfService().getTimeliness());
    EXPECT_EQ(row.rate, info.getQualityOfService().getRate());
    EXPECT_EQ(1, info.getQualityOfServiceInstCount());
  }
}

TEST(DataBufferQosTest, EachFreshDecodeCountsOneInstance) {
  const OwfQos wire{1, 1, 0, 0, 0};
  const auto bytes = wireBytes(data::QosEnum, &wire);
  DataBuffer value(false);
  holdWire(value, bytes, data::QosEnum);
  value.getQualityOfServiceInfo();
  EXPECT_EQ(1, value.getQualityOfServiceInfo().getQualityOfServiceInstCount());
  DataInt::setEncodedLite(
      &value, OwfBuffer{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())});
  EXPECT_EQ(2, value.getQualityOfServiceInfo().getQualityOfServiceInstCount());
}

TEST(DataBufferStatusTest, WireStatusReadsWithItsText) {
  const char text[] = "Item not found";
  const OwfState state{4, 2, 9, {14, const_cast<char*>(text)}};
  const auto bytes = wireBytes(data::StateEnum, &state);
  DataBuffer value(false);
  holdWire(value, bytes, data::StateEnum);
  const RespStatus& status = value.getRespStatus();
  EXPECT_EQ(RespStatus::Closed, status.getStreamState());
  EXPECT_EQ(RespStatus::Suspect, status.getDataState());
  EXPECT_EQ(9, status.getStatusCode());
  EXPECT_EQ("Item not found", std::string(status.getStatusText().c_str()));
}

// ---------------------------------------------------------------------------
// Buffers.

TEST(DataBufferViewTest, BufferIsAViewOfTheHeldBytesForAnyType) {
  DataBuffer value(false);
  value.setInt32(9);
  EXPECT_EQ(8, value.getBuffer().size());
  EXPECT_EQ(8, value.getBuffer().capacity());
  EXPECT_FALSE(value.getBuffer().isOwned());
  value.setEnumeration(3);
  EXPECT_EQ(2, value.getBuffer().size());
  value.clear();
  EXPECT_EQ(0, value.getBuffer().size());
}

// ---------------------------------------------------------------------------
// Copies made for managed entries.

TEST(DataBufferCopyTest, EveryValueTypeIsCopiedWithItsWidth) {
  DataBuffer source(false);
  DataBuffer target(true);
  const auto copy = [&] { DataBufferInt::copyPrimitiveDataType(target, source); };

  source.setInt64(-5, 7);
  copy();
  EXPECT_EQ(-5, target.getInt64());
  EXPECT_EQ(7, target.getEncodedType());
  source.setUInt64(6, 2);
  copy();
  EXPECT_EQ(6u, target.getUInt64());
  source.setFloat(1.25f, 4);
  copy();
  EXPECT_EQ(1.25f, target.getFloat());
  source.setDouble(2.5, 7);
  copy();
  EXPECT_EQ(2.5, target.getDouble());
  source.setEnumeration(77);
  copy();
  EXPECT_EQ(77, target.getEnumeration());

  Real64 real = makeReal(12345, 11);
  source.setReal(real, 9);
  copy();
  real.setValue(0);  // the target holds its own copy
  EXPECT_EQ(12345, target.getReal().getValue());
  EXPECT_EQ(11, target.getReal().getMagnitudeType());
  EXPECT_EQ(9, target.getEncodedType());

  Date date;
  date.setYear(2001);
  date.setMonth(9);
  date.setDay(11);
  source.setDate(date, 4);
  copy();
  EXPECT_EQ(2001, target.getDate().getYear());
  EXPECT_EQ(11, target.getDate().getDay());

  data::Time time;
  time.setMinute(44);
  source.setTime(time, 3);
  copy();
  EXPECT_EQ(44, target.getTime().getMinute());
  EXPECT_EQ(3, target.getEncodedType());

  data::DateTime dt;
  dt.setYear(1999);
  dt.setMonth(12);
  dt.setDay(31);
  dt.setHour(23);
  source.setDateTime(dt, 8);
  copy();
  EXPECT_EQ(23, target.getDateTime().getHour());
  EXPECT_EQ(1999, target.getDateTime().getYear());

  RespStatus status;
  status.setStatusText("copied");
  status.setStatusCode(3);
  source.setRespStatus(status);
  copy();
  EXPECT_EQ("copied", std::string(target.getRespStatus().getStatusText().c_str()));
  EXPECT_EQ(3, target.getRespStatus().getStatusCode());
}

TEST(DataBufferCopyTest, WireSourcesAreDecodedFirst) {
  const Int64 number = 123456789;
  const auto bytes = wireBytes(data::IntEnum, &number);
  DataBuffer source(false);
  holdWire(source, bytes, data::IntEnum);
  DataBuffer target(true);
  DataBufferInt::copyPrimitiveDataType(target, source);
  EXPECT_EQ(number, target.getInt64());
  EXPECT_EQ(common::Data::EncodeStateEncoding, DataInt::encodeState(&target));
}

TEST(DataBufferCopyTest, BlankSelfAndByteStringSources) {
  DataBuffer source(false);
  DataBuffer target(true);
  source.setBlankData(DataBuffer::UInt32Enum, 2);
  target.setInt32(4);
  DataBufferInt::copyPrimitiveDataType(target, source);
  EXPECT_TRUE(target.isBlank());
  EXPECT_EQ(data::UIntEnum, target.getDataBufferType());
  EXPECT_EQ(2, target.getEncodedType());

  target.setInt32(4);
  DataBufferInt::copyPrimitiveDataType(target, target);
  EXPECT_EQ(4, target.getInt32());

  unsigned char bytes[] = {'o', 'k'};
  source.setBuffer(Buffer(bytes, 2, 2, false), data::AsciiStringEnum);
  const auto raised = raisedBy([&] { DataBufferInt::copyPrimitiveDataType(target, source); });
  EXPECT_EQ("Illegal DataBuffer Type in class [DataBufferInt] in method [copyPrimitiveDataType()]",
            raised.text);
  EXPECT_EQ(1, raised.state);
}

TEST(DataBufferCopyTest, QualityOfServiceCopyTakesRateThreeAsANumber) {
  const OwfQos wire{3, 3, 0, 65535, 100};
  const auto bytes = wireBytes(data::QosEnum, &wire);
  DataBuffer source(false);
  holdWire(source, bytes, data::QosEnum);
  DataBuffer target(true);
  DataBufferInt::copyPrimitiveDataType(target, source);
  const QualityOfServiceInfo& info = target.getQualityOfServiceInfo();
  EXPECT_EQ(65535, info.getQualityOfService().getTimeliness());
  EXPECT_EQ(3, info.getQualityOfService().getRate());
  EXPECT_EQ(1, info.getQualityOfServiceInstCount());
  const OwfQos& held = *reinterpret_cast<const OwfQos*>(target.getBuffer().c_buf());
  EXPECT_EQ(3, held.timeliness);
  EXPECT_EQ(65535, held.timeInfo);
  EXPECT_EQ(3, held.rate);
  EXPECT_EQ(3, held.rateInfo);
}

}  // namespace
}  // namespace orvo
