#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "Data/Impl/RespMsgTranslatorInt.h"
#include "gtest/gtest.h"
#include "orvo/common/UseOrvoVerify.h"
#include "orvo/common/VerifyFailure.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgTranslator.h"
#include "resp_msg_test_util.h"

namespace orvo {
namespace {

using common::Buffer;
using common::QualityOfService;
using common::RespStatus;
using common::UInt16;
using common::UInt8;
using message::AttribInfo;
using message::Manifest;
using message::RespMsg;
using message::RespMsgTranslator;
using resp_test::encodeRecord;
using resp_test::owf;
using resp_test::textOf;
using resp_test::viewOf;
using resp_test::zeroRecord;

OwireMsg encodedRecord(const RespMsg& msg) {
  OwireMsg record;
  std::memset(&record, 0, sizeof(record));
  RespMsgTranslator::encode(&msg, record);
  return record;
}

RespMsg& decodeInto(RespMsg& msg, const OwireMsg& record) {
  std::vector<unsigned char> bytes = encodeRecord(record);
  msg.setEncodedBuffer(viewOf(bytes));
  return msg;
}

struct IndicationCase {
  RespMsg::RespType respType;
  UInt8 indication;
  UInt16 wireFlag;  // 0: the class has no place for the indication
};

class IndicationTable : public ::testing::TestWithParam<IndicationCase> {};

// Each indication goes out as its class's flag, or not at all, and the flag
// comes back as the indication.
TEST_P(IndicationTable, IndicationMapsToItsFlagBothWays) {
  const IndicationCase& c = GetParam();
  RespMsg msg(true);
  msg.setRespType(c.respType);
  msg.setRespTypeNum(1);
  msg.setIndicationMask(c.indication);
  const OwireMsg record = encodedRecord(msg);
  // Refresh number 1 adds no flag, so every other bit comes from the mask.
  EXPECT_EQ(c.wireFlag, record.msgBase.flags);

  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(c.wireFlag != 0 ? c.indication : 0, back.getIndicationMask());
}

INSTANTIATE_TEST_SUITE_P(
    RespTypes, IndicationTable,
    ::testing::Values(IndicationCase{RespMsg::RefreshResp, RespMsg::ClearCacheFlag, 0x0100},
                      IndicationCase{RespMsg::RefreshResp, RespMsg::DoNotCacheFlag, 0x0200},
                      IndicationCase{RespMsg::RefreshResp, RespMsg::RefreshCompleteFlag, 0x0040},
                      IndicationCase{RespMsg::RefreshResp, RespMsg::CarriedStreamFlag, 0x0400},
                      IndicationCase{RespMsg::RefreshResp, RespMsg::DoNotFilterFlag, 0},
                      IndicationCase{RespMsg::RefreshResp, RespMsg::DoNotRippleFlag, 0},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::DoNotCacheFlag, 0x0040},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::DoNotFilterFlag, 0x0080},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::DoNotRippleFlag, 0x0100},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::ClearCacheFlag, 0},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::RefreshCompleteFlag, 0},
                      IndicationCase{RespMsg::UpdateResp, RespMsg::CarriedStreamFlag, 0},
                      IndicationCase{RespMsg::StatusResp, RespMsg::ClearCacheFlag, 0x0040},
                      IndicationCase{RespMsg::StatusResp, RespMsg::CarriedStreamFlag, 0x0080},
                      IndicationCase{RespMsg::StatusResp, RespMsg::DoNotCacheFlag, 0},
                      IndicationCase{RespMsg::StatusResp, RespMsg::DoNotRippleFlag, 0}));

TEST(RespMsgTranslatorTest, RefreshNumberTravelsAsTheSolicitedFlag) {
  RespMsg msg(true);
  EXPECT_EQ(OWIRE_RFMF_SOLICITED, encodedRecord(msg).msgBase.flags);  // number 0, no bit
  msg.setRespTypeNum(1);
  EXPECT_EQ(0, encodedRecord(msg).msgBase.flags);

  RespMsg back(true);
  decodeInto(back, zeroRecord(OWIRE_MC_REFRESH));
  EXPECT_EQ(1, back.getRespTypeNum());
  EXPECT_EQ(RespMsg::RespTypeNumFlag | RespMsg::RespStatusFlag, back.getHintMask());

  OwireMsg solicited = zeroRecord(OWIRE_MC_REFRESH);
  solicited.msgBase.flags = OWIRE_RFMF_SOLICITED;
  RespMsg back0(true);
  back0.setRespTypeNum(1);
  decodeInto(back0, solicited);
  EXPECT_EQ(0, back0.getRespTypeNum());
}

TEST(RespMsgTranslatorTest, RefreshStateWithoutStatusIsOpenAndZeroOpensToo) {
  RespMsg msg(true);
  OwireMsg record = encodedRecord(msg);
  EXPECT_EQ(1, record.refreshMsg.state.streamState);
  EXPECT_EQ(0, record.refreshMsg.state.dataState);

  RespStatus status;
  status.setStreamState(RespStatus::UnspecifiedStreamState);
  status.setDataState(RespStatus::Ok);
  status.setStatusText("why");
  msg.setRespStatus(status);
  record = encodedRecord(msg);
  EXPECT_EQ(1, record.refreshMsg.state.streamState);
  EXPECT_EQ(1, record.refreshMsg.state.dataState);
  EXPECT_EQ("why",
            std::string(record.refreshMsg.state.text.data, record.refreshMsg.state.text.length));

  RespMsg status0(true);
  status0.setRespType(RespMsg::StatusResp);
  status0.setRespStatus(status);
  record = encodedRecord(status0);
  EXPECT_EQ(OWIRE_STMF_HAS_STATE, record.msgBase.flags);
  EXPECT_EQ(0, record.statusMsg.state.streamState);
}

TEST(RespMsgTranslatorTest, UpdateDropsQualityOfServiceAndItemGroup) {
  Manifest manifest(true);
  const std::string group = "g1";
  Buffer groupBuffer = viewOf(group);
  manifest.setItemGroup(groupBuffer);
  RespMsg msg(true);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setQualityOfService(QualityOfService(5, 5));
  msg.setManifest(manifest);
  const OwireMsg record = encodedRecord(msg);
  EXPECT_EQ(0, record.msgBase.flags);

  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(RespMsg::RespTypeNumFlag, back.getHintMask());
}

TEST(RespMsgTranslatorTest, RefreshDropsFilteredAndStatusDropsSeqAndFiltered) {
  Manifest manifest(true);
  manifest.setFiltered(2, 3);
  manifest.setSeqNum(4);
  RespMsg refresh(true);
  refresh.setRespTypeNum(1);
  refresh.setManifest(manifest);
  EXPECT_EQ(OWIRE_RFMF_HAS_SEQ_NUM, encodedRecord(refresh).msgBase.flags);

  RespMsg status(true);
  status.setRespType(RespMsg::StatusResp);
  status.setManifest(manifest);
  EXPECT_EQ(0, encodedRecord(status).msgBase.flags);
  RespMsg back(true);
  back.setEncodedBuffer(status.getEncodedBuffer());
  EXPECT_EQ(0, back.getHintMask());
}

TEST(RespMsgTranslatorTest, StatusSendsTheAddressTwiceUnderABitItDoesNotRead) {
  common::PublisherPrincipalIdentity identity;
  identity.setUserAddress(11);
  identity.setUserID(22);
  RespMsg msg(true);
  msg.setRespType(RespMsg::StatusResp);
  msg.setPrincipalIdentity(identity);
  const OwireMsg record = encodedRecord(msg);
  EXPECT_EQ(0x0800, record.msgBase.flags);
  EXPECT_EQ(11u, record.statusMsg.publisherAddress);
  EXPECT_EQ(11u, record.statusMsg.publisherId);

  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(0, back.getHintMask() & RespMsg::PrincipalIdentityFlag);
  EXPECT_EQ(0u, back.getPrincipalIdentity().getUserAddress());

  OwireMsg withPublisher = zeroRecord(OWIRE_MC_STATUS);
  withPublisher.msgBase.flags = OWIRE_STMF_HAS_PUBLISHER_INFO;
  withPublisher.statusMsg.publisherAddress = 11;
  withPublisher.statusMsg.publisherId = 22;
  RespMsg fromWire(true);
  decodeInto(fromWire, withPublisher);
  EXPECT_EQ(RespMsg::PrincipalIdentityFlag, fromWire.getHintMask());
  EXPECT_EQ(22u, fromWire.getPrincipalIdentity().getUserID());
}

TEST(RespMsgTranslatorTest, StatusTakesNoPayloadEvenWithABody) {
  OwireMsg record = zeroRecord(OWIRE_MC_STATUS);
  record.msgBase.bodyFormat = data::OpaqueEnum;
  const std::string body = "body";
  record.msgBase.body = owf(body);
  RespMsg back(true);
  decodeInto(back, record);
  EXPECT_EQ(0, back.getHintMask());
  EXPECT_EQ(data::NoDataEnum, back.getPayload().getDataType());
}

TEST(RespMsgTranslatorTest, UpdateWithStatusIsReportedAndLeftOut) {
  setenv("ORVO_LOG_FILENAME", "/dev/null", 1);
  RespMsg msg(true);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespStatus(RespStatus());
  common::setUseOrvoVerify(false);
  std::string report;
  try {
    encodedRecord(msg);
  } catch (const common::VerifyFailure& failure) {
    report = failure.what();
  }
  common::setUseOrvoVerify(true);
  EXPECT_NE(std::string::npos, report.find("Illegal to send RespStatus in Update message"))
      << report;
  EXPECT_NE(std::string::npos, report.find("ORVO_VERIFY( 0 ) failed")) << report;
}

TEST(RespMsgTranslatorTest, OtherRespTypeLeavesTheRecordUntouched) {
  RespMsg msg(true);
  msg.setRespType(static_cast<RespMsg::RespType>(4));
  msg.setIndicationMask(RespMsg::ClearCacheFlag);
  OwireMsg record;
  std::memset(&record, 0xAB, sizeof(record));
  OwireMsg before = record;
  RespMsgTranslator::internalEncode(&msg, record);
  EXPECT_EQ(0, std::memcmp(&before, &record, sizeof(record)));
}

TEST(RespMsgTranslatorTest, KeyFromAttribInfo) {
  AttribInfo emptyName(true);
  emptyName.setName("");
  OwireMsgKey key{};
  EXPECT_FALSE(internal::setOWIRECommonAttribute(key, emptyName));
  EXPECT_EQ(0, key.keyFlags);

  AttribInfo byName(true);
  byName.setServiceName("SVC");
  key = OwireMsgKey{};
  key.serviceId = 9;
  EXPECT_TRUE(internal::setOWIRECommonAttribute(key, byName));
  EXPECT_EQ(OWIRE_MKF_HAS_SERVICE_ID, key.keyFlags);
  EXPECT_EQ(0, key.serviceId);

  // A decoded info can hold both service bits; the id wins.
  AttribInfo both(true);
  both.setServiceInt("SVC", 0x10203, true);
  key = OwireMsgKey{};
  internal::setOWIRECommonAttribute(key, both);
  EXPECT_EQ(OWIRE_MKF_HAS_SERVICE_ID, key.keyFlags);
  EXPECT_EQ(0x0203, key.serviceId);

  RespMsg msg(true);
  msg.setRespTypeNum(1);
  msg.setAttribInfo(emptyName);
  EXPECT_EQ(0, encodedRecord(msg).msgBase.flags);
}

TEST(RespMsgTranslatorTest, AttribPayloadComesBackInItsClass) {
  data::FieldList attrib(true);
  resp_test::writeFields(attrib, {{1, 2}});
  AttribInfo info(true);
  info.setAttrib(attrib);
  RespMsg msg(true);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setAttribInfo(info);
  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  ASSERT_TRUE(back.getAttribInfo().getHintMask() & AttribInfo::AttribFlag);
  EXPECT_EQ(data::FieldListEnum, back.getAttribInfo().getAttrib().getDataType());
  EXPECT_EQ((resp_test::Fields{{1, 2}}), resp_test::readFields(back.getAttribInfo().getAttrib()));
}

TEST(RespMsgTranslatorTest, GroupIdOfTheEncodedMessageOverridesTheRecord) {
  OwireMsg record = zeroRecord(OWIRE_MC_REFRESH);
  const std::string recordGroup = "rg";
  record.refreshMsg.groupId = owf(recordGroup);
  message::OwireEncodedMsg* encoded = message::OwireEncodedMsg::create(&record, false);
  const std::string override = "over";
  OwfBuffer overrideBuffer = owf(override);
  encoded->setGroupId(&overrideBuffer);
  RespMsg msg(true);
  RespMsgTranslator::decode(encoded, &msg, 14, 0, false);
  // The item group views the encoded message's bytes: read it before they go.
  EXPECT_EQ(override, textOf(msg.getManifest().getItemGroup()));
  EXPECT_TRUE(msg.getHintMask() & RespMsg::ManifestFlag);
  encoded->destroy();
}

TEST(RespMsgTranslatorTest, KeepEncodedViewsTheRawMessage) {
  RespMsg source(true);
  source.setRespType(RespMsg::UpdateResp);
  std::vector<unsigned char> bytes = resp_test::bytesOf(source.getEncodedBuffer());
  OwfBuffer input{static_cast<common::UInt32>(bytes.size()), reinterpret_cast<char*>(bytes.data())};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  setDecodeIteratorBuffer(&iter, &input);
  OwireMsg record;
  ASSERT_EQ(OWIRE_RET_SUCCESS, owireDecodeMsg(&iter, &record));
  message::OwireEncodedMsg* encoded = message::OwireEncodedMsg::create(&record, false);
  RespMsg msg(true);
  RespMsgTranslator::decode(encoded, &msg, 14, 0, true);
  encoded->destroy();
  EXPECT_EQ(bytes.data(), msg.getEncodedBuffer().c_buf());
  EXPECT_EQ(static_cast<int>(bytes.size()), msg.getEncodedBuffer().size());
}

struct QosCase {
  long timeliness;
  long rate;
  UInt8 wireTimeliness;
  UInt16 timeInfo;
  UInt8 wireRate;
  UInt16 rateInfo;
  long backTimeliness;
  long backRate;
};

class QosTable : public ::testing::TestWithParam<QosCase> {};

TEST_P(QosTable, MapsToTheWireAndBack) {
  const QosCase& c = GetParam();
  OwireQos wire{};
  wire.qosBits = 0x03;
  internal::qualityOfServiceToWire(QualityOfService(c.timeliness, c.rate), wire);
  EXPECT_EQ(0x02, wire.qosBits);
  EXPECT_EQ(c.wireTimeliness, wire.timeliness);
  EXPECT_EQ(c.timeInfo, wire.timeInfo);
  EXPECT_EQ(c.wireRate, wire.rate);
  EXPECT_EQ(c.rateInfo, wire.rateInfo);
  const QualityOfService back = internal::qualityOfServiceFromWire(wire);
  EXPECT_EQ(c.backTimeliness, back.getTimeliness());
  EXPECT_EQ(c.backRate, back.getRate());
}

const long kDelayed = QualityOfService::unspecifiedDelayedTimeliness;
const long kJit = QualityOfService::justInTimeFilteredRate;

INSTANTIATE_TEST_SUITE_P(
    Values, QosTable,
    ::testing::Values(
        // Timeliness and rate left open go out as real time and tick by tick.
        QosCase{QualityOfService::unspecifiedTimeliness, QualityOfService::unspecifiedRate, 1, 0, 1,
                0, QualityOfService::realTime, QualityOfService::tickByTick},
        QosCase{-7, -3, 0, 0, 0, 0, QualityOfService::unspecifiedTimeliness,
                QualityOfService::unspecifiedRate},
        QosCase{30, 500, 3, 30, 3, 500, 30, 500},
        QosCase{70000, 65534, 3, 65535, 3, 65534, QualityOfService::unspecifiedTimeliness, 65534},
        QosCase{kDelayed, kJit, 2, 0, 2, 0, kDelayed, kJit},
        QosCase{kDelayed, kJit + 1, 2, 0, 3, 65535, kDelayed, QualityOfService::unspecifiedRate}));

TEST(RespMsgTranslatorTest, QualityOfServiceTravelsOnlyWithRefresh) {
  RespMsg msg(true);
  msg.setRespTypeNum(1);
  msg.setQualityOfService(QualityOfService(30, 500));
  const OwireMsg record = encodedRecord(msg);
  EXPECT_EQ(OWIRE_RFMF_HAS_QOS, record.msgBase.flags);
  EXPECT_EQ(3, record.refreshMsg.qos.timeliness);
  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_TRUE(back.getHintMask() & RespMsg::QualityOfServiceFlag);
  EXPECT_EQ(QualityOfService(30, 500), back.getQualityOfService());
}

TEST(RespMsgTranslatorTest, DecodedStatusTextOnlyWhenPresent) {
  OwireMsg record = zeroRecord(OWIRE_MC_STATUS);
  record.msgBase.flags = OWIRE_STMF_HAS_STATE;
  record.statusMsg.state.streamState = 4;
  record.statusMsg.state.dataState = 1;
  record.statusMsg.state.statusCode = 200;
  RespStatus status;
  status.setStatusText("earlier");
  RespMsg msg(true);
  msg.setRespStatus(status);
  decodeInto(msg, record);
  EXPECT_EQ(RespStatus::Closed, msg.getRespStatus().getStreamState());
  EXPECT_EQ(200, msg.getRespStatus().getStatusCode());
  EXPECT_EQ("earlier", std::string(msg.getRespStatus().getStatusText().c_str()));
}

}  // namespace
}  // namespace orvo
