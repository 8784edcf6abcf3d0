#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/DataInt.h"
#include "gtest/gtest.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "value_test_util.h"

namespace orvo {
namespace {

using common::Buffer;
using common::Data;
using common::Int64;
using common::ORVO_String;
using common::UInt16;
using common::UInt64;
using common::UInt8;
using data::DataBuffer;
using internal::DataBufferInt;
using internal::DataInt;
using testing::holdWire;
using testing::raisedBy;
using testing::wireBytes;

std::string textOf(const DataBuffer& value) { return value.getAsString().c_str(); }

// ---------------------------------------------------------------------------
// Numbers, dates and times parsed from text.

TEST(DataBufferTextTest, IntegersParseAndPrint) {
  DataBuffer value(false);
  value.setFromString("-9223372036854775808", data::IntEnum, 4);
  EXPECT_EQ(data::IntEnum, value.getDataBufferType());
  EXPECT_EQ(0, value.getEncodedType());  // numbers are always set at width 0
  EXPECT_EQ(std::numeric_limits<Int64>::min(), value.getInt64());
  EXPECT_EQ("-9223372036854775808", textOf(value));

  value.setFromString("18446744073709551615", DataBuffer::UInt32Enum, 0);
  EXPECT_EQ(data::UIntEnum, value.getDataBufferType());
  EXPECT_EQ(18446744073709551615ull, value.getUInt64());
  EXPECT_EQ("18446744073709551615", textOf(value));

  value.setFromString("42", DataBuffer::Int32Enum, 0);
  EXPECT_EQ(42, value.getInt32());
  EXPECT_EQ("42", textOf(value));
  EXPECT_FALSE(value.isBlank());
}

TEST(DataBufferTextTest, PlusZeroAndEmptyTextAreBlankIntegers) {
  for (const char* text : {"+0", ""}) {
    SCOPED_TRACE(text);
    DataBuffer value(true);
    value.setInt32(9);
    value.setFromString(text, data::IntEnum, 7);
    EXPECT_TRUE(value.isBlank());
    EXPECT_EQ(data::IntEnum, value.getDataBufferType());
    EXPECT_EQ(7, value.getEncodedType());
    EXPECT_EQ(0u, DataInt::encodedData(&value).length);
    EXPECT_EQ(0, value.getInt64());

    value.setFromString(text, data::UIntEnum, 1);
    EXPECT_TRUE(value.isBlank());
    EXPECT_EQ(data::UIntEnum, value.getDataBufferType());
    EXPECT_EQ(0u, value.getUInt64());
  }
  DataBuffer zero(false);
  zero.setFromString("0", data::IntEnum, 0);
  EXPECT_FALSE(zero.isBlank());
}

TEST(DataBufferTextTest, TextThatDoesNotParseSetsTheSlotsOldValue) {
  DataBuffer value(false);
  value.setInt64(31);
  value.setFromString("abc", data::IntEnum, 0);
  EXPECT_EQ(31, value.getInt64());
  EXPECT_FALSE(value.isBlank());
}

TEST(DataBufferTextTest, EnumerationDigitsPastSixteenBitsLandInTheWidthCode) {
  DataBuffer value(false);
  value.setFromString("7", data::EnumerationEnum, 5);
  EXPECT_EQ(7, value.getEnumeration());
  EXPECT_EQ(0, value.getEncodedType());
  EXPECT_EQ(data::EnumerationEnum, value.getDataBufferType());

  value.setFromString("83886087", data::EnumerationEnum, 0);  // 0x05000007
  EXPECT_EQ(7, value.getEnumeration());
  EXPECT_EQ(5, value.getEncodedType());
  EXPECT_EQ(data::EnumerationEnum, value.getDataBufferType());

  value.setFromString("x", data::EnumerationEnum, 3);  // no digits: the word is kept
  EXPECT_EQ(7, value.getEnumeration());
  EXPECT_EQ(3, value.getEncodedType());
}

TEST(DataBufferTextTest, FloatTextStoresTheFirstHalfOfTheDoubleImage) {
  for (const char* text : {"0.1", "1.5", "-123.456"}) {
    SCOPED_TRACE(text);
    const double parsed = std::strtod(text, nullptr);
    float expected;
    std::memcpy(&expected, &parsed, sizeof(expected));
    DataBuffer value(false);
    value.setFromString(text, data::FloatEnum, 4);
    EXPECT_EQ(data::FloatEnum, value.getDataBufferType());
    EXPECT_EQ(0, value.getEncodedType());
    const float held = value.getFloat();
    EXPECT_EQ(0, std::memcmp(&expected, &held, sizeof(held)));
  }
}

TEST(DataBufferTextTest, DoublesRealsDatesAndTimesParse) {
  DataBuffer value(true);
  value.setFromString("2.75", data::DoubleEnum, 7);
  EXPECT_EQ(2.75, value.getDouble());
  EXPECT_EQ(0, value.getEncodedType());

  value.setFromString("-12.34", DataBuffer::Real32Enum, 9);
  EXPECT_EQ(data::RealEnum, value.getDataBufferType());
  const data::Real64& real = value.getReal();
  EXPECT_NEAR(-12.34, real.getValue() * std::pow(10.0, real.getMagnitudeType() - 14), 1e-9);

  value.setFromString("2024-02-29", data::DateEnum, 4);
  EXPECT_EQ(2024, value.getDate().getYear());
  EXPECT_EQ(2, value.getDate().getMonth());
  EXPECT_EQ(29, value.getDate().getDay());
  EXPECT_EQ(0, value.getEncodedType());

  value.setFromString("08:09:10.011", data::TimeEnum, 5);
  EXPECT_EQ(8, value.getTime().getHour());
  EXPECT_EQ(10, value.getTime().getSecond());
  EXPECT_EQ(11, value.getTime().getMillisecond());
  EXPECT_EQ(data::TimeEnum, value.getDataBufferType());

  EXPECT_EQ("Invalid Date value passed into DataBuffer::setDate()",
            raisedBy([&] { value.setFromString("2023-02-30", data::DateEnum, 0); }).text);
}

// Text of a value held unencoded, parsed back into the same type, gives the
// same text again; and the wire bytes of the value give that text as well.
TEST(DataBufferTextTest, ValuesRoundTripThroughTextInBothStates) {
  struct Case {
    UInt8 type;
    const char* text;
  };
  const std::vector<Case> cases = {
      {3, "-17"},    {4, "4000000000"}, {5, "0.5"},           {6, "-1234.5678"}, {8, "98.765"},
      {8, "-0.001"}, {9, "1999-12-31"}, {10, "23:59:59.999"}, {10, "00:00"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " as " + std::to_string(c.type));
    DataBuffer first(true);
    first.setFromString(c.text, c.type, 0);
    const std::string printed = textOf(first);
    ASSERT_FALSE(printed.empty());
    DataBuffer second(true);
    second.setFromString(printed.c_str(), c.type, 0);
    EXPECT_EQ(printed, textOf(second));

    const auto bytes = wireBytes(c.type, DataInt::encodedData(&first).data);
    ASSERT_FALSE(bytes.empty());
    DataBuffer wire(false);
    holdWire(wire, bytes, c.type);
    EXPECT_EQ(printed, textOf(wire));
  }
}

// ---------------------------------------------------------------------------
// Byte strings.

TEST(DataBufferTextTest, StringTypesAreTakenAsTheyAre) {
  const ORVO_String text("caf\xc3\xa9 au lait");
  for (UInt8 type : {16, 17, 18, 19, 130, 131, 134}) {
    SCOPED_TRACE(int(type));
    DataBuffer managed(true);
    managed.setFromString(text, type, 3);
    EXPECT_EQ(type, managed.getDataBufferType());
    EXPECT_EQ(3, managed.getEncodedType());
    EXPECT_EQ(Data::EncodeStateEncoded, DataInt::encodeState(&managed));
    EXPECT_NE(text.c_str(), reinterpret_cast<const char*>(managed.getBuffer().c_buf()));
    EXPECT_EQ(text.length(), static_cast<unsigned>(managed.getBuffer().size()));

    DataBuffer view(false);
    view.setFromString(text, type, 0);
    EXPECT_EQ(text.c_str(), reinterpret_cast<const char*>(view.getBuffer().c_buf()));
  }
  DataBuffer ascii(false);
  ascii.setFromString(text, data::AsciiStringEnum, 0);
  EXPECT_EQ(std::string(text.c_str()), textOf(ascii));
  // A buffer set this way is wire bytes already, so its text is decoded too.
  DataBuffer buffer(true);
  buffer.setFromString(text, data::BufferEnum, 0);
  EXPECT_FALSE(textOf(buffer).empty());
}

TEST(DataBufferTextTest, ManagedStringsKeepNoViewOfTheCallersOrFreedBytes) {
  DataBuffer value(true);
  {
    const ORVO_String text("short lived");
    value.setFromString(text, data::AsciiStringEnum, 0);
  }
  EXPECT_EQ("short lived", textOf(value));
  // An unencoded string's text comes from the string view, which must not
  // show the freed copy.
  value.setBlankData(data::AsciiStringEnum, 0);
  EXPECT_EQ("", textOf(value));
}

TEST(DataBufferTextTest, LongTextsGrowTheTextBuffer) {
  DataBuffer value(true);
  for (std::size_t size : {31u, 32u, 33u, 1000u, 5000u, 40u}) {
    const std::string text(size, 'q');
    value.setFromString(text.c_str(), data::AsciiStringEnum, 0);
    EXPECT_EQ(text, textOf(value));
  }
}

TEST(DataBufferTextTest, TypesWithoutATextParserAreRefused) {
  for (UInt8 type : {0, 11, 12, 13, 15, 128, 132, 200}) {
    DataBuffer value(false);
    value.setInt32(3);
    const auto raised = raisedBy([&] { value.setFromString("1", type, 0); });
    EXPECT_EQ("Invalid data type (" + std::to_string(type) +
                  ") passed in to DataBuffer::setFromString().",
              raised.text);
    EXPECT_EQ(1, raised.state);
    EXPECT_EQ(3, value.getInt64());
  }
  DataBuffer empty(false);
  empty.setInt32(3);
  raisedBy([&] { empty.setFromString("", data::DateTimeEnum, 0); });
  EXPECT_TRUE(empty.isBlank());  // empty text marks the value blank first
}

// ---------------------------------------------------------------------------
// Text of every state.

TEST(DataBufferTextTest, UnencodedValuesWithoutATextFormAreRefused) {
  DataBuffer value(false);
  value.setEnumeration(4);
  EXPECT_EQ("Invalid DataBuffer type [14] in DataBuffer::getAsString()",
            raisedBy([&] { value.getAsString(); }).text);
  data::DateTime dt;
  value.setDateTime(dt);
  EXPECT_EQ("Invalid DataBuffer type [11] in DataBuffer::getAsString()",
            raisedBy([&] { value.getAsString(); }).text);
  value.setBlankData(data::BufferEnum, 0);
  EXPECT_EQ("Invalid DataBuffer type [16] in DataBuffer::getAsString()",
            raisedBy([&] { value.getAsString(); }).text);
}

TEST(DataBufferTextTest, BlankValuesHaveEmptyText) {
  DataBuffer value(false);
  value.setBlankData(data::IntEnum, 0);
  EXPECT_EQ("", textOf(value));
  for (UInt8 type : {3, 8, 9, 11, 12, 14, 17}) {
    SCOPED_TRACE(int(type));
    DataBuffer wire(false);
    holdWire(wire, {}, type);
    EXPECT_EQ("", textOf(wire));
  }
}

TEST(DataBufferTextTest, WireValuesOfEveryTypeHaveText) {
  const OwfDateTime dateTime{{2, 3, 2004}, {5, 6, 7, 8}};
  const OwfQos qos{1, 1, 0, 0, 0};
  const char statusText[] = "ok";
  const OwfState state{1, 1, 0, {2, const_cast<char*>(statusText)}};
  const UInt16 enumeration = 12;
  const struct {
    UInt8 type;
    const void* value;
  } cases[] = {{11, &dateTime}, {12, &qos}, {13, &state}, {14, &enumeration}};
  for (const auto& c : cases) {
    SCOPED_TRACE(int(c.type));
    const auto bytes = wireBytes(c.type, c.value);
    ASSERT_FALSE(bytes.empty());
    DataBuffer value(false);
    holdWire(value, bytes, c.type);
    std::vector<char> text(256);
    OwfBuffer out{static_cast<UInt32>(text.size()), text.data()};
    ASSERT_GE(owirePrimitiveToString(c.value, c.type, &out), 0);
    EXPECT_EQ(std::string(text.data(), out.length), textOf(value));
  }
}

TEST(DataBufferTextTest, RefusedWireBytesRaiseTheReasonForm) {
  const std::vector<char> bad(11, 0x3F);
  std::vector<char> text(1024);
  OwfBuffer out{static_cast<UInt32>(text.size()), text.data()};
  OwfDecodeIterator iter{};
  clearDecodeIterator(&iter);
  OwfBuffer in{static_cast<UInt32>(bad.size()), const_cast<char*>(bad.data())};
  setDecodeIteratorBuffer(&iter, &in);
  const int ret = owireEncodedPrimitiveToString(&iter, data::DateEnum, &out);
  ASSERT_LT(ret, 0);
  DataBuffer value(false);
  holdWire(value, bad, data::DateEnum);
  EXPECT_EQ(std::string("Data decoding failed in DataBuffer::getAsString(); Reason: ") +
                owireRetCodeToString(ret),
            raisedBy([&] { value.getAsString(); }).text);
}

}  // namespace
}  // namespace orvo
