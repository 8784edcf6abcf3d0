#include <memory>
#include <string>
#include <vector>

#include "Data/Impl/DataInt.h"
#include "gtest/gtest.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldEntryDef.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/data/FieldListDefWriteIterator.h"
#include "orvo/data/NoData.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgInt.h"
#include "resp_msg_test_util.h"

namespace orvo {
namespace {

using common::Buffer;
using common::QualityOfService;
using common::RespStatus;
using common::UInt8;
using message::AttribInfo;
using message::Manifest;
using message::RespMsg;
using message::RespMsgInt;
using resp_test::failureOf;
using resp_test::Fields;
using resp_test::readFields;
using resp_test::textOf;
using resp_test::viewOf;
using resp_test::writeFields;

const Fields kFields = {{22, 4100}, {25, -7}, {30, 1234567890123}};

class RespMsgRoundTrip : public ::testing::TestWithParam<bool> {};

// A refresh with every attribute the refresh carries comes back whole, from
// a managed or an unmanaged message.
TEST_P(RespMsgRoundTrip, RefreshKeepsEveryCarriedAttribute) {
  const bool managed = GetParam();
  data::FieldList payload(true);
  writeFields(payload, kFields);
  AttribInfo info(true);
  info.setName("ITEM.N");
  info.setServiceID(260);
  info.setNameType(3);
  info.setDataMask(0x1F);
  info.setID(-5);
  RespStatus status;
  status.setStreamState(RespStatus::NonStreaming);
  status.setDataState(RespStatus::Ok);
  status.setStatusCode(9);
  status.setStatusText("All is well");
  const std::string group("\x00\x01\x00\x02", 4);
  const std::string perm = "perm-bytes";
  const std::string header = "hdr";
  Buffer groupBuffer = viewOf(group);
  Buffer permBuffer = viewOf(perm);
  Buffer headerBuffer = viewOf(header);
  Manifest manifest(true);
  manifest.setSeqNum(77);
  manifest.setItemGroup(groupBuffer);
  manifest.setPermissionData(permBuffer);
  QualityOfService qos(QualityOfService::realTime, 500);
  common::PublisherPrincipalIdentity identity;
  identity.setUserAddress(0x0A000001);
  identity.setUserID(42);

  RespMsg msg(managed);
  msg.setMsgModelType(6);
  msg.setRespType(RespMsg::RefreshResp);
  msg.setRespTypeNum(0);
  msg.setIndicationMask(RespMsg::ClearCacheFlag | RespMsg::DoNotCacheFlag |
                        RespMsg::RefreshCompleteFlag | RespMsg::CarriedStreamFlag);
  msg.setAttribInfo(info);
  msg.setRespStatus(status);
  msg.setManifest(manifest);
  msg.setQualityOfService(qos);
  msg.setHeader(headerBuffer);
  msg.setPayload(payload);
  msg.setPrincipalIdentity(identity);

  std::vector<unsigned char> bytes = resp_test::bytesOf(msg.getEncodedBuffer());
  RespMsg back(managed);
  back.setEncodedBuffer(viewOf(bytes));
  bytes.assign(bytes.size(), 0);  // the message decodes its own copy

  EXPECT_EQ(RespMsg::RefreshResp, back.getRespType());
  EXPECT_EQ(6, back.getMsgModelType());
  EXPECT_EQ(0, back.getRespTypeNum());
  EXPECT_EQ(msg.getIndicationMask(), back.getIndicationMask());
  EXPECT_EQ(0xFF, back.getHintMask());
  EXPECT_EQ("ITEM.N", std::string(back.getAttribInfo().getName().c_str()));
  EXPECT_EQ(260u, back.getAttribInfo().getServiceID());
  EXPECT_EQ(3, back.getAttribInfo().getNameType());
  EXPECT_EQ(0x1Fu, back.getAttribInfo().getDataMask());
  EXPECT_EQ(-5, back.getAttribInfo().getID());
  EXPECT_EQ(RespStatus::NonStreaming, back.getRespStatus().getStreamState());
  EXPECT_EQ(RespStatus::Ok, back.getRespStatus().getDataState());
  EXPECT_EQ(9, back.getRespStatus().getStatusCode());
  EXPECT_EQ("All is well", std::string(back.getRespStatus().getStatusText().c_str()));
  EXPECT_EQ(77u, back.getManifest().getSeqNum());
  EXPECT_EQ(group, textOf(back.getManifest().getItemGroup()));
  EXPECT_EQ(perm, textOf(back.getManifest().getPermissionData()));
  EXPECT_EQ(Manifest::SeqFlag | Manifest::ItemGroupFlag | Manifest::PermissionDataFlag,
            back.getManifest().getHintMask());
  EXPECT_EQ(qos, back.getQualityOfService());
  EXPECT_EQ(header, textOf(back.getHeader()));
  EXPECT_EQ(0x0A000001u, back.getPrincipalIdentity().getUserAddress());
  EXPECT_EQ(42u, back.getPrincipalIdentity().getUserID());
  ASSERT_EQ(data::FieldListEnum, back.getPayload().getDataType());
  EXPECT_EQ(kFields, readFields(back.getPayload()));
}

TEST_P(RespMsgRoundTrip, UpdateKeepsNumberFlagsManifestAndPayload) {
  const bool managed = GetParam();
  data::FieldList payload(true);
  writeFields(payload, kFields);
  Manifest manifest(true);
  manifest.setSeqNum(1000);
  manifest.setFiltered(3, 0x12345);
  const std::string perm = "pp";
  Buffer permBuffer = viewOf(perm);
  manifest.setPermissionData(permBuffer);
  common::PublisherPrincipalIdentity identity;
  identity.setUserAddress(7);
  identity.setUserID(8);

  RespMsg msg(managed);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(200);
  msg.setIndicationMask(RespMsg::DoNotCacheFlag | RespMsg::DoNotFilterFlag |
                        RespMsg::DoNotRippleFlag);
  msg.setManifest(manifest);
  msg.setPayload(payload);
  msg.setPrincipalIdentity(identity);

  RespMsg back(managed);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(RespMsg::UpdateResp, back.getRespType());
  EXPECT_EQ(200, back.getRespTypeNum());
  EXPECT_EQ(msg.getIndicationMask(), back.getIndicationMask());
  EXPECT_EQ(RespMsg::RespTypeNumFlag | RespMsg::ManifestFlag | RespMsg::PayloadFlag |
                RespMsg::PrincipalIdentityFlag,
            back.getHintMask());
  EXPECT_EQ(1000u, back.getManifest().getSeqNum());
  EXPECT_EQ(3, back.getManifest().getFilteredCount());
  // Only the low 16 bits of the conflation time travel.
  EXPECT_EQ(0x2345u, back.getManifest().getFilteredTime());
  EXPECT_EQ(perm, textOf(back.getManifest().getPermissionData()));
  EXPECT_EQ(7u, back.getPrincipalIdentity().getUserAddress());
  EXPECT_EQ(8u, back.getPrincipalIdentity().getUserID());
  EXPECT_EQ(kFields, readFields(back.getPayload()));
}

TEST_P(RespMsgRoundTrip, StatusKeepsStateGroupAndHeaderButNoPayload) {
  const bool managed = GetParam();
  data::FieldList payload(true);
  writeFields(payload, kFields);
  RespStatus status;
  status.setStreamState(RespStatus::UnspecifiedStreamState);
  status.setDataState(RespStatus::Suspect);
  status.setStatusCode(4);
  Manifest manifest(true);
  const std::string group = "gg";
  Buffer groupBuffer = viewOf(group);
  manifest.setItemGroup(groupBuffer);
  manifest.setSeqNum(5);  // a status has no place for it
  const std::string header = "status-header";
  Buffer headerBuffer = viewOf(header);

  RespMsg msg(managed);
  msg.setRespType(RespMsg::StatusResp);
  msg.setIndicationMask(RespMsg::ClearCacheFlag | RespMsg::CarriedStreamFlag);
  msg.setRespStatus(status);
  msg.setManifest(manifest);
  msg.setHeader(headerBuffer);
  msg.setPayload(payload);

  RespMsg back(managed);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(RespMsg::StatusResp, back.getRespType());
  EXPECT_EQ(msg.getIndicationMask(), back.getIndicationMask());
  EXPECT_EQ(RespMsg::RespStatusFlag | RespMsg::ManifestFlag | RespMsg::HeaderFlag,
            back.getHintMask());
  // A status sends stream state 0 as it stands.
  EXPECT_EQ(RespStatus::UnspecifiedStreamState, back.getRespStatus().getStreamState());
  EXPECT_EQ(RespStatus::Suspect, back.getRespStatus().getDataState());
  EXPECT_EQ(4, back.getRespStatus().getStatusCode());
  EXPECT_EQ(Manifest::ItemGroupFlag, back.getManifest().getHintMask());
  EXPECT_EQ(group, textOf(back.getManifest().getItemGroup()));
  EXPECT_EQ(header, textOf(back.getHeader()));
  EXPECT_EQ(data::NoDataEnum, back.getPayload().getDataType());
}

INSTANTIATE_TEST_SUITE_P(ManagedAndUnmanaged, RespMsgRoundTrip, ::testing::Bool());

TEST(RespMsgTest, FreshMessageDefaults) {
  RespMsg msg(true);
  EXPECT_EQ(RespMsg::RefreshResp, msg.getRespType());
  EXPECT_EQ(1, msg.getMsgType());
  EXPECT_EQ(data::MsgEnum, msg.getDataType());
  EXPECT_EQ(0, msg.getHintMask());
  EXPECT_EQ(14, msg.getMajorVersion());
  EXPECT_EQ(0, msg.getMinorVersion());
  EXPECT_FALSE(msg.isBlank());
  EXPECT_EQ(data::NoDataEnum, msg.getPayload().getDataType());
  EXPECT_EQ(RespStatus::Suspect, msg.getRespStatus().getDataState());
}

TEST(RespMsgTest, EncodedBufferIsACacheUntilClear) {
  RespMsg msg(true);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(1);
  const std::vector<unsigned char> first = resp_test::bytesOf(msg.getEncodedBuffer());
  msg.setRespTypeNum(99);
  EXPECT_EQ(first, resp_test::bytesOf(msg.getEncodedBuffer()));

  msg.clear();
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(99);
  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  EXPECT_EQ(99, back.getRespTypeNum());
}

TEST(RespMsgTest, SetEncodedBufferFillsTheCacheWithItsBytes) {
  RespMsg msg(false);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(3);
  std::vector<unsigned char> bytes = resp_test::bytesOf(msg.getEncodedBuffer());
  RespMsg back(false);
  back.setEncodedBuffer(viewOf(bytes));
  EXPECT_EQ(bytes, resp_test::bytesOf(back.getEncodedBuffer()));
  EXPECT_NE(bytes.data(), back.getEncodedBuffer().c_buf());
}

TEST(RespMsgTest, BytesThatAreNotAMessageFailAndStayInTheCache) {
  std::vector<unsigned char> garbage = {0x09, 0x00, 0x80};  // class 9 does not exist
  RespMsg msg(true);
  msg.setIndicationMask(RespMsg::DoNotCacheFlag);
  const auto failure = failureOf([&] { msg.setEncodedBuffer(viewOf(garbage)); });
  EXPECT_EQ("Data passed in method RespMsg::setEncodedBuffer() has invalid data format.",
            failure.first);
  EXPECT_EQ(2, failure.second);
  EXPECT_EQ(garbage, resp_test::bytesOf(msg.getEncodedBuffer()));
  EXPECT_EQ(RespMsg::DoNotCacheFlag, msg.getIndicationMask());
}

TEST(RespMsgTest, EmptyBufferChangesNothing) {
  RespMsg msg(true);
  msg.setRespType(RespMsg::StatusResp);
  msg.setIndicationMask(RespMsg::ClearCacheFlag);
  msg.setEncodedBuffer(Buffer());
  EXPECT_EQ(RespMsg::StatusResp, msg.getRespType());
  EXPECT_EQ(RespMsg::ClearCacheFlag, msg.getIndicationMask());
  EXPECT_EQ(0, msg.getHintMask());
}

TEST(RespMsgTest, DecodingAddsToWhatTheMessageHeld) {
  RespMsg source(true);
  source.setRespType(RespMsg::UpdateResp);
  source.setIndicationMask(RespMsg::DoNotRippleFlag);
  RespMsg target(true);
  const std::string header = "kept";
  Buffer headerBuffer = viewOf(header);
  target.setHeader(headerBuffer);
  target.setIndicationMask(RespMsg::DoNotCacheFlag);
  target.setEncodedBuffer(source.getEncodedBuffer());
  EXPECT_EQ(RespMsg::DoNotCacheFlag | RespMsg::DoNotRippleFlag, target.getIndicationMask());
  EXPECT_TRUE(target.getHintMask() & RespMsg::HeaderFlag);
  EXPECT_EQ(header, textOf(target.getHeader()));
}

// A header decoded earlier still views the bytes it came from after a second
// decode that has no header replaces the cache.
TEST(RespMsgTest, SecondDecodeKeepsEarlierViewsValid) {
  const std::string header = "first-header";
  Buffer headerBuffer = viewOf(header);
  RespMsg withHeader(true);
  withHeader.setRespType(RespMsg::UpdateResp);
  withHeader.setHeader(headerBuffer);
  RespMsg without(true);
  without.setRespType(RespMsg::UpdateResp);

  RespMsg target(true);
  target.setEncodedBuffer(withHeader.getEncodedBuffer());
  target.setEncodedBuffer(without.getEncodedBuffer());
  EXPECT_EQ(header, textOf(target.getHeader()));
}

TEST(RespMsgTest, SecondDecodeOfAPayloadReadsTheNewBytes) {
  const Fields longer = {{1, 1}, {2, 2}, {3, 3}, {4, 4}};
  const Fields shorter = {{9, 9}};
  std::vector<std::vector<unsigned char>> encoded;
  for (const Fields* fields : {&longer, &shorter}) {
    data::FieldList payload(true);
    writeFields(payload, *fields);
    RespMsg msg(true);
    msg.setRespType(RespMsg::UpdateResp);
    msg.setPayload(payload);
    encoded.push_back(resp_test::bytesOf(msg.getEncodedBuffer()));
  }
  for (bool managed : {true, false}) {
    RespMsg target(managed);
    target.setEncodedBuffer(viewOf(encoded[0]));
    target.setEncodedBuffer(viewOf(encoded[1]));
    EXPECT_EQ(shorter, readFields(target.getPayload()));
    RespMsg copy(target);
    EXPECT_EQ(shorter, readFields(copy.getPayload()));
    EXPECT_EQ(target.getPayload().getEncodedBuffer().size(),
              copy.getPayload().getEncodedBuffer().size());
  }
}

TEST(RespMsgTest, ServiceNameOverloadNamesTheDecodedService) {
  AttribInfo info(true);
  info.setName("X");
  RespMsg source(true);
  source.setAttribInfo(info);
  RespMsg target(true);
  target.setEncodedBuffer(source.getEncodedBuffer(), "FEED_A");
  EXPECT_EQ("FEED_A", std::string(target.getAttribInfo().getServiceName().c_str()));
  EXPECT_TRUE(target.getAttribInfo().getHintMask() & AttribInfo::ServiceNameFlag);
}

TEST(RespMsgTest, PayloadOfAPlainNumberFailsWithItsType) {
  data::DataBuffer number(true);
  number.setInt(5);
  RespMsg msg(true);
  const auto failure = failureOf([&] { msg.setPayload(number); });
  EXPECT_EQ("Data passed in method RespMsg::setPayload() has invalid data format [3].",
            failure.first);
  EXPECT_EQ(2, failure.second);
  EXPECT_EQ(0, msg.getHintMask());

  RespMsg inner(true);
  EXPECT_EQ("Data passed in method RespMsg::setPayload() has invalid data format [141].",
            failureOf([&] { msg.setPayload(inner); }).first);
}

TEST(RespMsgTest, PayloadListWithASetDefinitionFails) {
  data::FieldListDef def;
  def.setDataDefID(2);
  data::FieldListDefWriteIterator defWriter;
  defWriter.start(def, 0);
  data::FieldEntryDef row;
  row.setFieldID(10);
  row.setType(data::IntEnum, 0);
  defWriter.bind(row);
  defWriter.complete();
  data::FieldList list(true);
  data::FieldListWriteIterator writer;
  writer.start(list, data::FieldListWriteIterator::DefinedDataFlag, &def);
  data::DataBuffer value(false);
  value.setInt(1);
  writer.bind(value);
  writer.complete();

  RespMsg msg(true);
  const auto failure = failureOf([&] { msg.setPayload(list); });
  EXPECT_EQ(
      "Payload FieldList or ElementList should not be encoded to contain a DataDef. Only Series, "
      "Map or Vector should contain actual defintions. Reported in class [RespMsg] in method "
      "[setPayload()]",
      failure.first);
  EXPECT_EQ(1, failure.second);
}

TEST(RespMsgTest, OpaquePayloadTravelsAsItsValueType) {
  const std::string opaque = "\x01\x02raw";
  data::DataBuffer value(true);
  value.setBuffer(viewOf(opaque), data::OpaqueEnum);
  RespMsg msg(true);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setPayload(value);
  RespMsg back(true);
  back.setEncodedBuffer(msg.getEncodedBuffer());
  ASSERT_EQ(data::DataBufferEnum, back.getPayload().getDataType());
  const auto& held = static_cast<const data::DataBuffer&>(back.getPayload());
  EXPECT_EQ(data::OpaqueEnum, held.getDataBufferType());
  EXPECT_EQ(opaque, textOf(held.getEncodedBuffer()));
}

TEST(RespMsgTest, CopyTakesPayloadAndAttributesDeeply) {
  auto payload = std::make_unique<data::FieldList>(true);
  writeFields(*payload, kFields);
  RespMsg msg(false);
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(4);
  msg.setPayload(*payload);
  RespMsg copy(msg);
  payload.reset();
  EXPECT_EQ(RespMsg::UpdateResp, copy.getRespType());
  EXPECT_EQ(4, copy.getRespTypeNum());
  EXPECT_EQ(kFields, readFields(copy.getPayload()));

  RespMsg noNumber(true);
  noNumber.setRespType(RespMsg::UpdateResp);
  RespMsg assigned(true);
  assigned.setRespTypeNum(9);
  assigned = noNumber;
  EXPECT_EQ(0, assigned.getRespTypeNum());
}

TEST(RespMsgTest, ClearRestoresDefaultsAndKeepsModelType) {
  RespMsg msg(true);
  msg.setMsgModelType(7);
  msg.setRespType(RespMsg::StatusResp);
  msg.setRespTypeNum(1);
  msg.setIndicationMask(RespMsg::ClearCacheFlag);
  msg.setAssociatedMetaInfo(14, 3);
  msg.clear();
  EXPECT_EQ(7, msg.getMsgModelType());
  EXPECT_EQ(RespMsg::RefreshResp, msg.getRespType());
  EXPECT_EQ(0, msg.getRespTypeNum());
  EXPECT_EQ(0, msg.getHintMask());
  EXPECT_EQ(0, msg.getIndicationMask());
  EXPECT_EQ(0, msg.getMinorVersion());
}

TEST(RespMsgTest, UnencodableRespTypeFails) {
  RespMsg msg(true);
  msg.setRespType(static_cast<RespMsg::RespType>(9));
  const auto failure = failureOf([&] { msg.getEncodedBuffer(); });
  EXPECT_EQ("The method RespMsg::getEncodedBuffer() is called from invalid/incomplete message",
            failure.first);
  EXPECT_EQ(2, failure.second);
}

TEST(RespMsgTest, HolderMorphsIntoARespMsgAndBack) {
  data::NoData holder(true);
  internal::DataInt::shallowMorph(&holder, data::MsgEnum, 1);
  auto* msg = reinterpret_cast<RespMsg*>(&holder);
  ASSERT_EQ(data::MsgEnum, msg->getDataType());
  EXPECT_EQ(1, msg->getMsgType());
  msg->setRespTypeNum(5);
  internal::DataInt::shallowMorph(msg, data::MsgEnum, 1);  // already one: only cleared
  EXPECT_EQ(0, msg->getRespTypeNum());
  internal::DataInt::shallowMorph(msg, data::NoDataEnum, 0);
  EXPECT_EQ(data::NoDataEnum, holder.getDataType());
}

TEST(RespMsgIntTest, BodyFormatDecidesThePayloadShape) {
  EXPECT_TRUE(RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(0xE1));
  EXPECT_FALSE(RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(0xE0));
  EXPECT_TRUE(RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(data::XmlEnum));
  EXPECT_FALSE(RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(data::FieldListEnum));

  RespMsg msg(true);
  RespMsgInt::setHintMaskInt(msg, RespMsg::PayloadFlag);
  OwireMsg record = resp_test::zeroRecord(OWIRE_MC_UPDATE);
  RespMsgInt::setDataInt(msg, &record, 14, 0);
  EXPECT_EQ(0, msg.getHintMask() & RespMsg::PayloadFlag);
  EXPECT_EQ(data::NoDataEnum, msg.getPayload().getDataType());
}

}  // namespace
}  // namespace orvo
