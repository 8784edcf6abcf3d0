#include <cstring>
#include <string>
#include <vector>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/DataInt.h"
#include "gtest/gtest.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/NoData.h"
#include "value_test_util.h"

namespace orvo {
namespace {

using common::Buffer;
using common::Data;
using common::QualityOfService;
using common::QualityOfServiceInfo;
using common::RespStatus;
using common::UInt8;
using data::DataBuffer;
using data::Date;
using data::DateTime;
using data::Real32;
using data::Real64;
using data::Time;
using internal::DataBufferInt;
using internal::DataInt;
using testing::holdWire;
using testing::raisedBy;
using testing::wireBytes;

const OwfBuffer& encoded(DataBuffer& value) { return DataInt::encodedData(&value); }
UInt8 stateOf(DataBuffer& value) { return DataInt::encodeState(&value); }

Date makeDate(int year, int month, int day) {
  Date d;
  d.setYear(static_cast<common::UInt16>(year));
  d.setMonth(static_cast<UInt8>(month));
  d.setDay(static_cast<UInt8>(day));
  return d;
}

Real64 makeReal(common::Int64 value, UInt8 hint) {
  Real64 r;
  r.setValue(value);
  r.setMagnitudeType(hint);
  return r;
}

TEST(DataBufferTypeTest, OlderCodesAreFoldedAndTheValueReadsBlank) {
  DataBuffer value(false);
  EXPECT_EQ(data::DataBufferEnum, value.getDataType());
  const std::vector<std::pair<UInt8, UInt8>> folds = {{1, 3}, {2, 4},   {7, 8},
                                                      {3, 3}, {19, 19}, {142, 142}};
  for (const auto& fold : folds) {
    value.setInt32(5);
    value.setDataBufferType(fold.first);
    EXPECT_EQ(fold.second, value.getDataBufferType());
    EXPECT_TRUE(value.isBlank());
    // Only the type and the blank flag change.
    EXPECT_EQ(8u, encoded(value).length);
  }
}

TEST(DataBufferTypeTest, BlankDataFoldsTheTypeAndDropsTheBytes) {
  DataBuffer value(true);
  value.setBuffer(Buffer(reinterpret_cast<unsigned char*>(const_cast<char*>("abc")), 3, 3, false),
                  data::AsciiStringEnum);
  value.setBlankData(DataBuffer::Real32Enum, 9);
  EXPECT_EQ(data::RealEnum, value.getDataBufferType());
  EXPECT_EQ(9, value.getEncodedType());
  EXPECT_TRUE(value.isBlank());
  EXPECT_EQ(0u, encoded(value).length);
  EXPECT_EQ(nullptr, encoded(value).data);
  EXPECT_EQ(Data::EncodeStateEncoding, stateOf(value));
}

TEST(DataBufferNumberTest, NumbersLiveInTheirSlotsWithTheirWidths) {
  DataBuffer value(false);
  value.setInt32(-1, 4);
  EXPECT_EQ(data::IntEnum, value.getDataBufferType());
  EXPECT_EQ(4, value.getEncodedType());
  EXPECT_EQ(8u, encoded(value).length);
  EXPECT_EQ(Data::EncodeStateEncoding, stateOf(value));
  EXPECT_FALSE(value.isBlank());
  EXPECT_EQ(-1, value.getInt64());
  common::Int64 held;
  std::memcpy(&held, encoded(value).data, sizeof(held));
  EXPECT_EQ(-1, held);  // sign-extended, as the codec will be handed it

  value.setUInt32(0xFFFFFFFFu, 2);
  EXPECT_EQ(data::UIntEnum, value.getDataBufferType());
  EXPECT_EQ(4294967295ull, value.getUInt64());
  EXPECT_EQ(8u, encoded(value).length);

  value.setInt64(-9000000000LL);
  EXPECT_EQ(-9000000000LL, value.getInt());
  value.setUInt(18000000000000000000ull);
  EXPECT_EQ(18000000000000000000ull, value.getUInt());

  value.setFloat(1.5f, 4);
  EXPECT_EQ(data::FloatEnum, value.getDataBufferType());
  EXPECT_EQ(4u, encoded(value).length);
  EXPECT_EQ(1.5f, value.getFloat());

  value.setDouble(-2.25, 7);
  EXPECT_EQ(data::DoubleEnum, value.getDataBufferType());
  EXPECT_EQ(8u, encoded(value).length);
  EXPECT_EQ(-2.25, value.getDouble());
  EXPECT_EQ(7, value.getEncodedType());
}

TEST(DataBufferNumberTest, EnumerationKeepsTheWidthCode) {
  DataBuffer value(false);
  value.setInt32(1, 4);
  value.setEnumeration(65535);
  EXPECT_EQ(data::EnumerationEnum, value.getDataBufferType());
  EXPECT_EQ(4, value.getEncodedType());
  EXPECT_EQ(2u, encoded(value).length);
  EXPECT_EQ(65535, value.getEnumeration());
  EXPECT_FALSE(value.isBlank());
}

TEST(DataBufferRealTest, ManagedCopiesTheRecordAndUnmanagedPointsAtIt) {
  Real64 real = makeReal(1234, 12);
  DataBuffer managed(true);
  DataBuffer view(false);
  managed.setReal(real, 9);
  view.setReal64(real);
  EXPECT_EQ(16u, encoded(managed).length);
  EXPECT_EQ(9, managed.getEncodedType());
  EXPECT_NE(reinterpret_cast<const char*>(&DataBufferInt::record(real)), encoded(managed).data);
  EXPECT_EQ(reinterpret_cast<const char*>(&DataBufferInt::record(real)), encoded(view).data);

  real.setValue(99);
  EXPECT_EQ(1234, managed.getReal64().getValue());
  EXPECT_EQ(99, view.getReal().getValue());
  EXPECT_EQ(12, view.getReal32().getMagnitudeType());
}

TEST(DataBufferRealTest, Real32MinusOneIsMinusOneOverSixtyFourBits) {
  Real32 real;
  real.setValue(-1);
  DataBuffer value(true);
  value.setReal32(real);
  EXPECT_EQ(-1, value.getReal64().getValue());
  EXPECT_EQ(-1, value.getReal32().getValue());
  EXPECT_EQ(-1, value.getInt64());
}

TEST(DataBufferRealTest, BlankRealHoldsNoBytes) {
  Real64 real = makeReal(5, 14);
  DataBufferInt::record(real).isBlank = 1;
  for (bool managed : {true, false}) {
    DataBuffer value(managed);
    value.setReal(real);
    EXPECT_TRUE(value.isBlank());
    EXPECT_EQ(0u, encoded(value).length);
    EXPECT_EQ(nullptr, encoded(value).data);
    EXPECT_EQ(data::RealEnum, value.getDataBufferType());
  }
}

TEST(DataBufferRealTest, RealsFromBinaryNumbersGoThroughTheCodec) {
  DataBuffer value(false);
  value.setReal32FromFloat(12.5f, 12);
  EXPECT_EQ(data::RealEnum, value.getDataBufferType());
  EXPECT_EQ(1250, value.getReal().getValue());
  EXPECT_EQ(12, value.getReal().getMagnitudeType());
  EXPECT_EQ(16u, encoded(value).length);

  value.setReal64FromDouble(-0.001, 11);
  EXPECT_EQ(-1, value.getReal().getValue());
  EXPECT_FALSE(value.isBlank());

  // A refused conversion raises the codec's reason.
  OwfReal scratch;
  const float f = 1.0f;
  const double d = 1.0;
  const std::string floatReason = owireRetCodeToString(owireFloatToReal(&scratch, &f, 200));
  const std::string doubleReason = owireRetCodeToString(owireDoubleToReal(&scratch, &d, 200));
  EXPECT_EQ("Data decoding failed in DataBuffer::setReal32FromFloat(); Reason: " + floatReason,
            raisedBy([&] { value.setReal32FromFloat(1.0f, 200); }).text);
  EXPECT_EQ("Data decoding failed in DataBuffer::setReal64FromDouble(); Reason: " + doubleReason,
            raisedBy([&] { value.setReal64FromDouble(1.0, 200); }).text);
}

TEST(DataBufferDateTest, ValidValuesAreHeldAsTheirRecords) {
  const Date date = makeDate(2024, 2, 29);
  DataBuffer managed(true);
  DataBuffer view(false);
  managed.setDate(date, 4);
  view.setDate(date);
  EXPECT_EQ(4u, encoded(managed).length);
  EXPECT_EQ(4, managed.getEncodedType());
  EXPECT_NE(reinterpret_cast<const char*>(&DataBufferInt::record(date)), encoded(managed).data);
  EXPECT_EQ(reinterpret_cast<const char*>(&DataBufferInt::record(date)), encoded(view).data);
  EXPECT_EQ(29, managed.getDate().getDay());

  Time time;
  time.setHour(23);
  time.setMillisecond(5);
  managed.setTime(time, 5);
  EXPECT_EQ(6u, encoded(managed).length);
  EXPECT_EQ(5, managed.getTime().getMillisecond());

  DateTime dt;
  dt.setYear(2023);
  dt.setMonth(12);
  dt.setDay(31);
  dt.setSecond(59);
  managed.setDateTime(dt, 8);
  EXPECT_EQ(10u, encoded(managed).length);
  EXPECT_EQ(59, managed.getDateTime().getSecond());
  EXPECT_EQ(data::DateTimeEnum, managed.getDataBufferType());
}

TEST(DataBufferDateTest, InvalidCombinationsRaiseBadValueAndHoldNothing) {
  DataBuffer value(true);
  const auto date = raisedBy([&] { value.setDate(makeDate(2023, 2, 29), 4); });
  EXPECT_EQ("Invalid Date value passed into DataBuffer::setDate()", date.text);
  EXPECT_EQ(2, date.state);
  EXPECT_EQ(data::DateEnum, value.getDataBufferType());
  EXPECT_EQ(0u, encoded(value).length);
  EXPECT_EQ(nullptr, encoded(value).data);

  Time time;
  DataBufferInt::record(time).hour = 24;
  EXPECT_EQ("Invalid Time value passed in to DataBuffer::setTime()",
            raisedBy([&] { value.setTime(time); }).text);
  EXPECT_EQ(data::TimeEnum, value.getDataBufferType());

  DateTime dt;
  dt.setYear(2023);
  dt.setMonth(4);
  dt.setDay(31);
  const auto both = raisedBy([&] { value.setDateTime(dt); });
  EXPECT_EQ("Invalid DateTime value passed in to DataBuffer::setDateTime()", both.text);
  EXPECT_EQ(2, both.state);
  EXPECT_EQ(0u, encoded(value).length);
}

struct QosCase {
  long timeliness, rate;
  UInt8 wireTimeliness, wireRate;
  int timeInfo, rateInfo;  // -1: not looked at
};

TEST(DataBufferQosTest, QualityOfServiceIsMappedOntoTheWireRecord) {
  const long jit = QualityOfService::justInTimeFilteredRate;
  const std::vector<QosCase> cases = {
      {QualityOfService::realTime, QualityOfService::tickByTick, 1, 1, -1, -1},
      {QualityOfService::unspecifiedTimeliness, QualityOfService::unspecifiedRate, 1, 1, -1, -1},
      {-5, -7, 0, 0, -1, -1},
      {30, 500, 3, 3, 30, 500},
      {70000, 70000, 3, 3, 65535, 65535},
      {QualityOfService::unspecifiedDelayedTimeliness, jit, 2, 2, -1, -1},
      {QualityOfService::unspecifiedDelayedTimeliness + 0L, jit + 1, 2, 3, -1, 65535},
  };
  DataBuffer value(false);
  for (const QosCase& c : cases) {
    SCOPED_TRACE(std::to_string(c.timeliness) + "/" + std::to_string(c.rate));
    QualityOfServiceInfo info;
    info.setQualityOfService(QualityOfService(c.timeliness, c.rate));
    value.setQualityOfServiceInfo(info);
    EXPECT_EQ(data::QosEnum, value.getDataBufferType());
    ASSERT_EQ(8u, encoded(value).length);
    const OwfQos& qos = *reinterpret_cast<const OwfQos*>(value.getBuffer().c_buf());
    EXPECT_EQ(c.wireTimeliness, qos.timeliness);
    EXPECT_EQ(c.wireRate, qos.rate);
    if (c.timeInfo >= 0) {
      EXPECT_EQ(c.timeInfo, qos.timeInfo);
    }
    if (c.rateInfo >= 0) {
      EXPECT_EQ(c.rateInfo, qos.rateInfo);
    }
  }
  // The getter reports the last decoded value, not the one set.
  EXPECT_EQ(0, value.getQualityOfServiceInfo().getQualityOfServiceInstCount());
  EXPECT_EQ(QualityOfService(), value.getQualityOfServiceInfo().getQualityOfService());
}

TEST(DataBufferStatusTest, StreamStateZeroIsHeldAsOpen) {
  RespStatus status;
  status.setStreamState(RespStatus::UnspecifiedStreamState);
  status.setDataState(RespStatus::Ok);
  status.setStatusCode(17);
  status.setStatusText("all good");
  DataBuffer value(true);
  value.setRespStatus(status);
  EXPECT_EQ(data::StateEnum, value.getDataBufferType());
  EXPECT_EQ(12u, encoded(value).length);
  const RespStatus& back = value.getRespStatus();
  EXPECT_EQ(RespStatus::Open, back.getStreamState());
  EXPECT_EQ(RespStatus::Ok, back.getDataState());
  EXPECT_EQ(17, back.getStatusCode());
  EXPECT_EQ("all good", std::string(back.getStatusText().c_str()));

  status.setStreamState(RespStatus::Closed);
  value.setRespStatus(status);
  EXPECT_EQ(RespStatus::Closed, value.getRespStatus().getStreamState());
}

TEST(DataBufferStatusTest, ManagedCopiesTheTextAndUnmanagedPointsAtIt) {
  DataBuffer managed(true);
  DataBuffer view(false);
  RespStatus* status = new RespStatus;
  status->setStatusText("closed by source");
  managed.setRespStatus(*status);
  view.setRespStatus(*status);
  const OwfState& viewed = *reinterpret_cast<const OwfState*>(view.getBuffer().c_buf());
  EXPECT_EQ(status->getStatusText().c_str(), viewed.text.data);
  EXPECT_EQ(16u, viewed.text.length);
  delete status;
  EXPECT_EQ("closed by source", std::string(managed.getRespStatus().getStatusText().c_str()));
  // Managed text is freed with the object or by clear().
  managed.clear();
  managed.setRespStatus(RespStatus());
  EXPECT_EQ(0u, managed.getRespStatus().getStatusText().length());
}

TEST(DataBufferBufferTest, OnlyByteStringAndHighTypesAreAccepted) {
  unsigned char bytes[] = {'x', 'y'};
  const Buffer buffer(bytes, 2, 2, false);
  DataBuffer value(false);
  for (UInt8 rejected : {0, 3, 14, 15, 135, 141, 224}) {
    const auto raised = raisedBy([&] { value.setBuffer(buffer, rejected); });
    EXPECT_EQ(
        "Invalid data type (" + std::to_string(rejected) + ") passed to DataBuffer::setBuffer().",
        raised.text);
    EXPECT_EQ(1, raised.state);
  }
  for (UInt8 accepted : {16, 19, 130, 134, 225, 230, 255}) {
    value.setBuffer(buffer, accepted);
    EXPECT_EQ(accepted, value.getDataBufferType());
    EXPECT_EQ(Data::EncodeStateEncoded, stateOf(value));
    EXPECT_FALSE(value.isBlank());
  }
}

TEST(DataBufferBufferTest, ManagedCopiesTheBytesAndUnmanagedViewsThem) {
  std::vector<unsigned char> bytes = {1, 2, 3, 4, 5};
  const Buffer buffer(bytes.data(), 5, 5, false);
  DataBuffer managed(true);
  DataBuffer view(false);
  managed.setBuffer(buffer, data::OpaqueEnum);
  view.setBuffer(buffer, data::OpaqueEnum);
  EXPECT_EQ(bytes.data(), view.getBuffer().c_buf());
  EXPECT_NE(bytes.data(), managed.getBuffer().c_buf());
  bytes[0] = 9;
  EXPECT_EQ(1, managed.getBuffer().c_buf()[0]);
  EXPECT_EQ(5, managed.getBuffer().size());
  EXPECT_FALSE(managed.getBuffer().isOwned());

  managed.setBuffer(Buffer(bytes.data(), 0, 0, false), data::AsciiStringEnum);
  EXPECT_TRUE(managed.isBlank());
}

TEST(DataBufferLifecycleTest, NewIsBlankClearedIsNotAndHasNoState) {
  DataBuffer value(true);
  EXPECT_TRUE(value.isBlank());
  value.setInt32(3, 1);
  value.clear();
  EXPECT_FALSE(value.isBlank());
  EXPECT_EQ(0, value.getDataBufferType());
  EXPECT_EQ(0, value.getEncodedType());
  EXPECT_EQ(0u, encoded(value).length);
  EXPECT_EQ(Data::EncodeStateNone, stateOf(value));
  EXPECT_EQ("Unknown Data State. in class [DataBuffer] in method [getAsString()]",
            raisedBy([&] { value.getAsString(); }).text);
  value.setUInt32(8);
  EXPECT_EQ(8u, value.getUInt32());
}

TEST(DataBufferLifecycleTest, EncodedValueTypesDecodeToAnswerBlankness) {
  const std::vector<char> blank = wireBytes(data::EnumerationEnum, nullptr);
  const common::UInt16 seven = 7;
  const std::vector<char> seven_bytes = wireBytes(data::EnumerationEnum, &seven);
  ASSERT_FALSE(seven_bytes.empty());
  DataBuffer blankValue(false);
  holdWire(blankValue, blank, data::EnumerationEnum);
  EXPECT_TRUE(blankValue.isBlank());
  EXPECT_TRUE(DataInt::decoded(&blankValue));
  DataBuffer value(false);
  holdWire(value, seven_bytes, data::EnumerationEnum);
  EXPECT_FALSE(value.isBlank());
  EXPECT_EQ(7, value.getEnumeration());

  // Byte strings are blank when they have no bytes.
  DataBuffer text(false);
  holdWire(text, seven_bytes, data::AsciiStringEnum);
  EXPECT_FALSE(text.isBlank());
  holdWire(text, blank, data::AsciiStringEnum);
  EXPECT_TRUE(text.isBlank());
}

TEST(DataBufferLifecycleTest, ManagedValueTakesEncodedBytesAfterASlotValue) {
  const common::Int64 number = -77;
  std::vector<char> bytes = wireBytes(data::IntEnum, &number);
  DataBuffer value(true);
  value.setInt32(5);
  holdWire(value, bytes, data::IntEnum);
  EXPECT_NE(bytes.data(), encoded(value).data);  // copied
  bytes.assign(bytes.size(), 0);
  EXPECT_EQ(-77, value.getInt64());
  value.setDouble(1.0);  // frees the copy
  holdWire(value, wireBytes(data::IntEnum, &number), data::IntEnum);
  value.setBuffer(Buffer(reinterpret_cast<unsigned char*>(bytes.data()), 1, 1, false), 16);
}

TEST(DataBufferLifecycleTest, NoDataStorageMorphsIntoADataBuffer) {
  for (bool managed : {true, false}) {
    Data* slot = new data::NoData(managed);
    DataInt::shallowMorph(slot, data::DataBufferEnum, 0);
    ASSERT_EQ(data::DataBufferEnum, slot->getDataType());
    auto* value = static_cast<DataBuffer*>(slot);
    EXPECT_TRUE(value->isBlank());
    unsigned char bytes[] = {'a', 'b'};
    value->setBuffer(Buffer(bytes, 2, 2, false), data::AsciiStringEnum);
    EXPECT_EQ(managed, value->getBuffer().c_buf() != bytes);
    DataInt::shallowMorph(slot, data::DataBufferEnum, 0);  // same class: only cleared
    EXPECT_EQ(0, value->getDataBufferType());
    value->setInt32(4);
    DataInt::shallowMorph(slot, data::NoDataEnum, 0);
    EXPECT_EQ(data::NoDataEnum, slot->getDataType());
    DataInt::shallowMorph(slot, data::DataBufferEnum, 0);
    delete slot;
  }
}

TEST(DataBufferSetDefinitionTest, TypeAndWidthSelectTheFixedWireForm) {
  struct Row {
    UInt8 type, width, wire;
  };
  const std::vector<Row> rows = {
      {3, 1, 0x40},  {3, 2, 0x42}, {3, 4, 0x44},  {3, 7, 0x46},  {4, 1, 0x41},
      {4, 2, 0x43},  {4, 4, 0x45}, {4, 7, 0x47},  {5, 4, 0x48},  {6, 7, 0x49},
      {8, 9, 0x4B},  {9, 4, 0x4C}, {10, 3, 0x4D}, {10, 5, 0x4E}, {11, 6, 0x4F},
      {11, 8, 0x50}, {3, 0, 3},    {17, 0, 17},   {200, 0, 200},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.wire, DataBufferInt::setDefinitionType(row.type, row.width))
        << int(row.type) << "/" << int(row.width);
  }
  EXPECT_EQ("Wrong combination", raisedBy([] { DataBufferInt::setDefinitionType(3, 3); }).text);
  EXPECT_EQ("Wrong combination", raisedBy([] { DataBufferInt::setDefinitionType(4, 8); }).text);
  for (UInt8 type : {5, 8, 10, 16}) {
    const auto raised = raisedBy([&] { DataBufferInt::setDefinitionType(type, 1); });
    EXPECT_EQ("Wrong combination of Type and EncodedType", raised.text);
    EXPECT_EQ(1, raised.state);
  }

  DataBuffer value(false);
  value.setInt32(5, 2);
  EXPECT_EQ(0x42, DataBufferInt::setDefinitionType(value));
  value.setBlankData(DataBuffer::UInt32Enum, 7);
  EXPECT_EQ(0x47, DataBufferInt::setDefinitionType(value));
}

}  // namespace
}  // namespace orvo
