// Helpers shared by the entry, list and definition tests: a decoded view of
// a written object, the value of an entry as a DataBuffer, and the text of
// whatever a call raised.
#ifndef ORVO_TESTS_DATA_ENTRY_TEST_UTIL_H_
#define ORVO_TESTS_DATA_ENTRY_TEST_UTIL_H_

#include <functional>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/Data.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/Msg.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/common/QualityOfServiceInfo.h"
#include "orvo/common/RespStatus.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace testing {

// The text of the InvalidUsageException `call` raised, or "no failure".
template <class F>
std::string usageTextOf(F call) {
  try {
    call();
  } catch (const common::InvalidUsageException& e) {
    return e.what();
  }
  return "no failure";
}

inline const data::DataBuffer& asValue(const common::Data& data) {
  return static_cast<const data::DataBuffer&>(data);
}

// A read view of another object's encoded bytes, the way an application
// receives them.
template <class Container>
void viewBytesOf(const common::Data& written, Container* reader) {
  reader->setEncodedBuffer(written.getEncodedBuffer());
}

inline common::Buffer bufferOf(const std::string& text) {
  return common::Buffer(reinterpret_cast<unsigned char*>(const_cast<char*>(text.data())),
                        static_cast<int>(text.size()), static_cast<int>(text.size()), false);
}

inline std::string textOf(const common::Buffer& buffer) {
  return std::string(reinterpret_cast<const char*>(buffer.c_buf()), buffer.size());
}

// One value of each primitive type an entry can carry, with the check that
// a value read back is the same.
struct PrimitiveCase {
  std::string name;
  common::UInt8 type;
  std::function<void(data::DataBuffer&)> set;
  std::function<void(const data::DataBuffer&)> expectSame;
};

inline std::vector<PrimitiveCase> everyPrimitive() {
  using data::DataBuffer;
  std::vector<PrimitiveCase> cases;
  cases.push_back({"int", data::IntEnum, [](DataBuffer& v) { v.setInt(-1234567890123LL); },
                   [](const DataBuffer& v) { EXPECT_EQ(-1234567890123LL, v.getInt()); }});
  cases.push_back({"uint", data::UIntEnum,
                   [](DataBuffer& v) { v.setUInt(18446744073709551615ULL); },
                   [](const DataBuffer& v) { EXPECT_EQ(18446744073709551615ULL, v.getUInt()); }});
  cases.push_back({"float", data::FloatEnum, [](DataBuffer& v) { v.setFloat(1.5f); },
                   [](const DataBuffer& v) { EXPECT_EQ(1.5f, v.getFloat()); }});
  cases.push_back({"double", data::DoubleEnum, [](DataBuffer& v) { v.setDouble(-2.25e300); },
                   [](const DataBuffer& v) { EXPECT_EQ(-2.25e300, v.getDouble()); }});
  cases.push_back({"real", data::RealEnum,
                   [](DataBuffer& v) {
                     data::Real64 r;
                     r.setValue(-987654321);
                     r.setMagnitudeType(10);
                     v.setReal(r);
                   },
                   [](const DataBuffer& v) {
                     EXPECT_EQ(-987654321, v.getReal().getValue());
                     EXPECT_EQ(10, v.getReal().getMagnitudeType());
                   }});
  cases.push_back({"date", data::DateEnum,
                   [](DataBuffer& v) {
                     data::Date d;
                     d.setYear(2024);
                     d.setMonth(2);
                     d.setDay(29);
                     v.setDate(d);
                   },
                   [](const DataBuffer& v) {
                     EXPECT_EQ(2024, v.getDate().getYear());
                     EXPECT_EQ(2, v.getDate().getMonth());
                     EXPECT_EQ(29, v.getDate().getDay());
                   }});
  cases.push_back({"time", data::TimeEnum,
                   [](DataBuffer& v) {
                     data::Time t;
                     t.setHour(23);
                     t.setMinute(59);
                     t.setSecond(58);
                     t.setMillisecond(999);
                     v.setTime(t);
                   },
                   [](const DataBuffer& v) {
                     EXPECT_EQ(23, v.getTime().getHour());
                     EXPECT_EQ(59, v.getTime().getMinute());
                     EXPECT_EQ(58, v.getTime().getSecond());
                     EXPECT_EQ(999, v.getTime().getMillisecond());
                   }});
  cases.push_back({"datetime", data::DateTimeEnum,
                   [](DataBuffer& v) {
                     data::DateTime t;
                     t.setYear(1999);
                     t.setMonth(12);
                     t.setDay(31);
                     t.setHour(1);
                     t.setMinute(2);
                     t.setSecond(3);
                     t.setMillisecond(4);
                     v.setDateTime(t);
                   },
                   [](const DataBuffer& v) {
                     EXPECT_EQ(1999, v.getDateTime().getYear());
                     EXPECT_EQ(31, v.getDateTime().getDay());
                     EXPECT_EQ(3, v.getDateTime().getSecond());
                     EXPECT_EQ(4, v.getDateTime().getMillisecond());
                   }});
  cases.push_back({"qos", data::QosEnum,
                   [](DataBuffer& v) {
                     common::QualityOfServiceInfo info;
                     info.setQualityOfService(common::QualityOfService(
                         common::QualityOfService::realTime, common::QualityOfService::tickByTick));
                     v.setQualityOfServiceInfo(info);
                   },
                   [](const DataBuffer& v) {
                     const common::QualityOfService& q =
                         v.getQualityOfServiceInfo().getQualityOfService();
                     EXPECT_EQ(common::QualityOfService::realTime, q.getTimeliness());
                     EXPECT_EQ(common::QualityOfService::tickByTick, q.getRate());
                   }});
  cases.push_back({"state", data::StateEnum,
                   [](DataBuffer& v) {
                     common::RespStatus status;
                     status.setStreamState(common::RespStatus::Open);
                     status.setDataState(common::RespStatus::Ok);
                     status.setStatusCode(5);
                     status.setStatusText("all good");
                     v.setRespStatus(status);
                   },
                   [](const DataBuffer& v) {
                     EXPECT_EQ(common::RespStatus::Open, v.getRespStatus().getStreamState());
                     EXPECT_EQ(common::RespStatus::Ok, v.getRespStatus().getDataState());
                     EXPECT_EQ(5, v.getRespStatus().getStatusCode());
                     EXPECT_STREQ("all good", v.getRespStatus().getStatusText().c_str());
                   }});
  cases.push_back({"enum", data::EnumerationEnum, [](DataBuffer& v) { v.setEnumeration(65000); },
                   [](const DataBuffer& v) { EXPECT_EQ(65000, v.getEnumeration()); }});
  const std::vector<std::pair<common::UInt8, std::string>> strings = {
      {data::BufferEnum, std::string("raw\0bytes\xff", 10)},
      {data::AsciiStringEnum, "ascii text"},
      {data::Utf8StringEnum, "caf\xc3\xa9"},
      {data::OmtesStringEnum, "omtes"},
      {data::OpaqueEnum, std::string("\x01\x02\x00\x03", 4)},
      {data::XmlEnum, "<a b=\"1\"/>"},
      {data::AnsiPageEnum, "\x1b[1;1Hpage"}};
  for (const auto& s : strings) {
    const std::string text = s.second;
    cases.push_back({"bytes" + std::to_string(s.first), s.first,
                     [text, s](DataBuffer& v) { v.setBuffer(bufferOf(text), s.first); },
                     [text](const DataBuffer& v) { EXPECT_EQ(text, textOf(v.getBuffer())); }});
  }
  return cases;
}

// A message object, which no list entry may hold.
class AnyMsg : public common::Msg {
 public:
  AnyMsg() : Msg(false) { _msgType = RespMsgEnum; }
};

}  // namespace testing
}  // namespace orvo

#endif  // ORVO_TESTS_DATA_ENTRY_TEST_UTIL_H_
