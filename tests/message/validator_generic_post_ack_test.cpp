// Generic, post and acknowledgement messages through validation.
// Built once the message class is part of the tree.
#if __has_include("orvo/message/GenericMsg.h")

#include <memory>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/data/FieldList.h"
#include "orvo/message/AckMsg.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/GenericMsg.h"
#include "orvo/message/GenericMsgValidator.h"
#include "orvo/message/PostMsg.h"
#include "orvo/message/PostMsgValidator.h"
#include "resp_msg_test_util.h"
#include "validator_test_util.h"

namespace orvo {
namespace {

using message::AckMsg;
using message::AttribInfo;
using message::GenericMsg;
using message::GenericMsgValidator;
using message::PostMsg;
using validator_test::Collector;
using validator_test::list;
using validator_test::validate;
namespace vt = validator_test;

// Objects the messages point at (a PostMsg always keeps pointers).
struct Parts {
  Parts() : payload(true), info(true) { resp_test::writeFields(payload, {{1, 2}}); }
  data::FieldList payload;
  AttribInfo info;
  unsigned char headerBytes[2] = {'h', 'd'};
  common::Buffer header{headerBytes, 2, 2, false};
};

TEST(GenericMsgValidation, ListChecksTellEachBit) {
  GenericMsg msg(true);
  Collector required;
  EXPECT_EQ(0, GenericMsgValidator::requiredHintMask(msg, required.info(),
                                                     list({0x01, 0x02, 0x04, 0x08, 0x10, 0x40})));
  EXPECT_EQ(
      "Required AttribInfo is missing. \n"
      "Required Seq is missing. \n"
      "Required SecondarySeq is missing. \n"
      "Required Header is missing. \n"
      "Required Payload is missing. \n"
      "Invalid Required Generic Hint Mask: [64]. \n",
      required.errors());
  Collector indication;
  EXPECT_EQ(
      0, GenericMsgValidator::requiredIndicationMask(msg, indication.info(), list({0x01, 0x02})));
  EXPECT_EQ(
      "Required MessageCompleteFlag Indication is missing. \n"
      "Invalid Required IndicationMask flag for Generic Msg: [2]. \n",
      indication.errors());

  Parts parts;
  parts.info.setName("x");
  msg.setAttribInfo(parts.info);
  msg.setSeqNum(1);
  msg.setSecondarySeqNum(2);
  msg.setHeader(parts.header);
  msg.setPayload(parts.payload);
  msg.setIndicationMask(GenericMsg::MessageCompleteFlag);
  Collector notUsed;
  EXPECT_EQ(2, GenericMsgValidator::setNotUsedHintMask(msg, notUsed.info(),
                                                       list({0x10, 0x08, 0x04, 0x02, 0x01, 0x20})));
  EXPECT_EQ(
      " Warning: Payload is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n"
      " Warning: SecondarySeq is set but it is not used.  \n"
      " Warning: Seq is set but it is not used.  \n"
      " Warning: AttribInfo is set but it is not used.  \n"
      "Invalid HintMask flag for Generic Msg: [32] \n",
      notUsed.warnings());
  Collector notUsedIndication;
  EXPECT_EQ(2, GenericMsgValidator::setNotUsedIndicationMask(msg, notUsedIndication.info(),
                                                             list({0x01, 0x04})));
  EXPECT_EQ(
      " Warning: MessageCompleteFlag is set but it is not used.  \n"
      "Invalid IndicationMask flag for Generic Msg: [4]. \n",
      notUsedIndication.warnings());
}

std::unique_ptr<GenericMsg> generic(common::UInt8 domain, Parts& parts) {
  auto msg = std::make_unique<GenericMsg>(true);
  msg->setMsgModelType(domain);
  msg->setAttribInfo(parts.info);
  msg->setPayload(parts.payload);
  return msg;
}

TEST(GenericMsgValidation, LoginAndDirectoryWantANameAndAPayload) {
  for (common::UInt8 domain : {common::UInt8{vt::kLogin}, common::UInt8{vt::kDirectory}}) {
    Parts parts;
    parts.info.setName("x");
    EXPECT_EQ(1, validate(*generic(domain, parts)).status);
    GenericMsg bare(true);
    bare.setMsgModelType(domain);
    EXPECT_EQ("Required AttribInfo Name is missing.\nRequired Payload is missing. \n",
              validate(bare).failure);
  }
}

TEST(GenericMsgValidation, LoginAndDirectoryDifferInWhatTheyDoNotUse) {
  Parts parts;
  parts.info.setName("x");
  parts.info.setNameType(1);
  parts.info.setDataMask(4);
  auto login = generic(vt::kLogin, parts);
  login->setSeqNum(1);
  login->setSecondarySeqNum(2);
  login->setHeader(parts.header);
  auto directory = generic(vt::kDirectory, parts);
  directory->setSeqNum(1);
  directory->setSecondarySeqNum(2);
  directory->setHeader(parts.header);
  const auto loginOutcome = validate(*login);
  EXPECT_EQ(2, loginOutcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo NameType is set but it is not used. \n"
      " Warning: Seq is set but it is not used.  \n"
      " Warning: SecondarySeq is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n",
      loginOutcome.text);
  EXPECT_EQ(
      "Warning: AttribInfo NameType is set but it is not used. \n"
      "Warning: AttribInfo DataMask is set but it is not used. \n"
      " Warning: SecondarySeq is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n",
      validate(*directory).text);
}

TEST(GenericMsgValidation, OtherDomainsRefuseGenericMessages) {
  const struct {
    common::UInt8 domain;
    const char* text;
  } cases[] = {
      {vt::kDictionary, "Validation of Dictionary domain for messageType[3] is not Supported. \n"},
      {vt::kMarketPrice,
       " Validation of MarketPrice domain for messageType[3] is not Supported. \n"},
      {vt::kMarketByOrder,
       " Validation of MarketByOrder domain for messageType[3] is not Supported. \n"},
      {vt::kMarketByPrice,
       " Validation of MarketByPrice domain for messageType[3] is not Supported. \n"},
      {vt::kMarketMaker,
       " Validation of MarketMaker domain for messageType[3] is not Supported. \n"},
      {vt::kSymbolList, " Validation of SymbolList domain for messageType[3] is not Supported. \n"},
  };
  for (const auto& c : cases) {
    Parts parts;
    parts.info.setName("x");
    EXPECT_EQ(c.text, validate(*generic(c.domain, parts)).failure);
  }
}

// A post routed by item and service name, asking for nothing.
std::unique_ptr<PostMsg> post(common::UInt8 domain, Parts& parts) {
  auto msg = std::make_unique<PostMsg>(true);
  msg->setMsgModelType(domain);
  parts.info.setName("AB.X");
  parts.info.setServiceName("FEED");
  msg->setAttribInfo(parts.info);
  msg->setPayload(parts.payload);
  msg->setIndicationMask(PostMsg::PostFirstPartFlag | PostMsg::PostLastPartFlag);
  return msg;
}

const std::string kOnStreamWarning =
    " Does not contains Item and SeriveName. This post message can be ONLY submited onStream. \n";

TEST(PostMsgValidation, RoutedSinglePartPostIsValidWhereSupported) {
  for (common::UInt8 domain : {common::UInt8{vt::kLogin}, common::UInt8{vt::kMarketPrice},
                               common::UInt8{vt::kSymbolList}}) {
    Parts parts;
    EXPECT_EQ(1, validate(*post(domain, parts)).status);
  }
  Parts dictionary;
  EXPECT_EQ("Validation of Dictionary domain for messageType[4] is not Supported. \n",
            validate(*post(vt::kDictionary, dictionary)).failure);
  Parts directory;
  EXPECT_EQ(" Validation of Directory domain for messageType[4] is not Supported. \n",
            validate(*post(vt::kDirectory, directory)).failure);
}

TEST(PostMsgValidation, PostWithoutItemAndServiceIsOnStreamOnly) {
  Parts parts;
  PostMsg msg(true);
  msg.setMsgModelType(vt::kMarketPrice);
  msg.setPayload(parts.payload);
  msg.setIndicationMask(PostMsg::PostFirstPartFlag | PostMsg::PostLastPartFlag);
  const auto outcome = validate(msg);
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(kOnStreamWarning, outcome.text);

  // A service id does not route a post.
  parts.info.setName("AB.X");
  parts.info.setServiceID(3);
  msg.setAttribInfo(parts.info);
  EXPECT_EQ(kOnStreamWarning, validate(msg).text);
}

TEST(PostMsgValidation, WarningAndErrorsTogetherStillFail) {
  PostMsg msg(true);
  msg.setMsgModelType(vt::kMarketPrice);
  Collector c;
  EXPECT_EQ(2, message::PostMsgValidator::validateMessage(msg, c.info(), false));
  EXPECT_EQ(kOnStreamWarning, c.warnings());
  EXPECT_EQ(
      "Invalid multi-part PostMsg with no PostID or SequenceNo. \n"
      "Required payload for Post Msg is missing. \n",
      c.errors());
  EXPECT_EQ(c.errors(), validate(msg).failure);
}

TEST(PostMsgValidation, ServiceNameAndIdTogetherAreRefused) {
  Parts parts;
  auto msg = post(vt::kMarketPrice, parts);
  parts.info.setServiceInt("FEED", 7, true);
  EXPECT_EQ("Both Service Name and Service ID are not allowed in PostMsg. \n",
            validate(*msg).failure);
}

TEST(PostMsgValidation, AcknowledgementNeedsAPostIdAndPartsNeedIdAndSequence) {
  Parts parts;
  auto msg = post(vt::kMarketPrice, parts);
  msg->setIndicationMask(PostMsg::PostWantAckFlag | PostMsg::PostFirstPartFlag |
                         PostMsg::PostLastPartFlag);
  EXPECT_EQ("Invalid PostMsg requesting acknowledgement with no PostID. \n",
            validate(*msg).failure);
  msg->setPostID(12);
  EXPECT_EQ(1, validate(*msg).status);

  msg->setIndicationMask(PostMsg::PostFirstPartFlag);
  EXPECT_EQ("Invalid multi-part PostMsg with no PostID or SequenceNo. \n", validate(*msg).failure);
  msg->setSeqNum(1);
  EXPECT_EQ(1, validate(*msg).status);
}

std::unique_ptr<AckMsg> ack(common::UInt8 domain, Parts& parts) {
  auto msg = std::make_unique<AckMsg>(true);
  msg->setMsgModelType(domain);
  parts.info.setServiceID(5);
  msg->setAttribInfo(parts.info);
  msg->setAckID(9);
  return msg;
}

TEST(AckMsgValidation, NeedsAServiceAndAnAckId) {
  Parts parts;
  auto msg = ack(vt::kMarketByOrder, parts);
  EXPECT_EQ(1, validate(*msg).status);
  msg->setAckID(0);
  EXPECT_EQ("Required AckID is missing in AckMsg. \n", validate(*msg).failure);

  AckMsg bare(true);
  bare.setMsgModelType(vt::kLogin);
  EXPECT_EQ(
      "Either Service Name or Serivce ID must exists in AckMsg. \n"
      "Required AckID is missing in AckMsg. \n",
      validate(bare).failure);
  Parts named;
  named.info.setName("only a name");
  bare.setAttribInfo(named.info);
  bare.setAckID(1);
  EXPECT_EQ("Either Service Name or Serivce ID must exists in AckMsg. \n", validate(bare).failure);
}

TEST(AckMsgValidation, DirectoryAndDictionaryRefuseAcknowledgements) {
  Parts directory;
  EXPECT_EQ(" Validation of Directory domain for messageType[5] is not Supported. \n",
            validate(*ack(vt::kDirectory, directory)).failure);
  Parts dictionary;
  EXPECT_EQ("Validation of Dictionary domain for messageType[5] is not Supported. \n",
            validate(*ack(vt::kDictionary, dictionary)).failure);
  Parts login;
  EXPECT_EQ(1, validate(*ack(vt::kLogin, login)).status);
}

}  // namespace
}  // namespace orvo

#endif  // __has_include
