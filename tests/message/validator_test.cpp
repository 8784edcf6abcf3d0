// The validation frame, the list checks and the response rules.
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Msg.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/MsgValidatorManager.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgValidator.h"
#include "validator_resp_util.h"
#include "validator_test_util.h"

namespace orvo {
namespace {

using message::AttribInfo;
using message::DomainMessageValidatorManager;
using message::Manifest;
using message::MsgValidatorManager;
using message::RespMsg;
using message::RespMsgValidator;
using validator_test::Collector;
using validator_test::list;
using validator_test::marketRefresh;
using validator_test::Response;
using validator_test::validate;

TEST(ValidatorFrame, CombiningKeepsTheWorstOfAnErrorAndTheMostOfTheRest) {
  EXPECT_EQ(2, DomainMessageValidatorManager::setReturnMsgStatus(2, 1));
  EXPECT_EQ(2, DomainMessageValidatorManager::setReturnMsgStatus(1, 2));
  EXPECT_EQ(1, DomainMessageValidatorManager::setReturnMsgStatus(1, 1));
  EXPECT_EQ(0, DomainMessageValidatorManager::setReturnMsgStatus(0, 2));
  EXPECT_EQ(0, DomainMessageValidatorManager::setReturnMsgStatus(2, 0));
}

TEST(ValidatorFrame, OkToValidateWarningLetsAnInvalidStatusThrough) {
  Collector wanted(true);
  Collector unwanted(false);
  EXPECT_TRUE(DomainMessageValidatorManager::isOkToValidateWarning(0, unwanted.info()));
  EXPECT_TRUE(DomainMessageValidatorManager::isOkToValidateWarning(1, unwanted.info()));
  unwanted.info().warnings().append("w\n");
  EXPECT_FALSE(DomainMessageValidatorManager::isOkToValidateWarning(1, unwanted.info()));
  wanted.info().warnings().append("w\n");
  EXPECT_TRUE(DomainMessageValidatorManager::isOkToValidateWarning(2, wanted.info()));
  wanted.info().errors().append("e\n");
  EXPECT_FALSE(DomainMessageValidatorManager::isOkToValidateWarning(2, wanted.info()));
  EXPECT_TRUE(DomainMessageValidatorManager::isOkToValidateWarning(0, wanted.info()));
}

TEST(ValidatorFrame, RequiredAttribPartsAreReportedInListOrder) {
  Collector c;
  const auto all = list({0x02, 0x04, 0x01, 0x08, 0x10, 0x20, 0x40});
  EXPECT_EQ(0, MsgValidatorManager::requiredAttributeInfo(0, c.info(), all, false));
  EXPECT_EQ(
      "Required AttribInfo Name is missing.\n"
      "Required AttribInfo NameType is missing.\n"
      "Required AttribInfo DataMask is missing.\n"
      "Required AttribInfo ServiceName is missing.\n"
      "Required AttribInfo ID is missing.\n"
      "Required AttribInfo Attrib is missing.\n"
      "Required AttribInfo ServiceID is missing.\n",
      c.errors());
  Collector present;
  EXPECT_EQ(1, MsgValidatorManager::requiredAttributeInfo(0x7F, present.info(), all, false));
  EXPECT_EQ("", present.errors());
}

TEST(ValidatorFrame, AnUnknownRequiredAttribValueIsToldWithoutFailingTheCheck) {
  Collector c;
  EXPECT_EQ(1, MsgValidatorManager::requiredAttributeInfo(0x02, c.info(), list({0x80, 0x02})));
  EXPECT_EQ("Invalid AttribInfoInfo flag: [128] \n", c.errors());
  Collector failed;
  EXPECT_EQ(0, MsgValidatorManager::requiredAttributeInfo(0, failed.info(), list({0x02, 0x03})));
  EXPECT_EQ("Required AttribInfo Name is missing.\nInvalid AttribInfoInfo flag: [3] \n",
            failed.errors());
}

TEST(ValidatorFrame, NotUsedAttribPartsAreWarnedOfInListOrder) {
  Collector c;
  EXPECT_EQ(2, MsgValidatorManager::setNotUsedAttributeInfo(
                   0x7F, c.info(), list({0x40, 0x20, 0x10, 0x08, 0x01, 0x04, 0x02, 0x00})));
  EXPECT_EQ(
      "Warning: AttribInfo ServiceID is set but it is not used.\n"
      "Warning: AttribInfo Attrib is set but it is not used.\n"
      "Warning: AttribInfo ID is set but it is not used.\n"
      "Warning: AttribInfo ServiceName is set but it is not used.\n"
      "Warning: AttribInfo DataMask is set but it is not used. \n"
      "Warning: AttribInfo NameType is set but it is not used. \n"
      "Warning: AttribInfo Name is set but it is not used. \n"
      "Invalid AttribInfoInfo flag: [0] \n",
      c.warnings());
  EXPECT_EQ("", c.errors());
  Collector silent;
  EXPECT_EQ(1, MsgValidatorManager::setNotUsedAttributeInfo(0x02, silent.info(), list({0x40})));
  EXPECT_EQ("", silent.warnings());
}

TEST(ValidatorFrame, ServiceByNameOrByIdIsRequired) {
  Collector c;
  EXPECT_EQ(1, DomainMessageValidatorManager::checkServiceNameAndID(0x08, c.info()));
  EXPECT_EQ(1, DomainMessageValidatorManager::checkServiceNameAndID(0x40, c.info()));
  EXPECT_EQ("", c.errors());
  EXPECT_EQ(0, DomainMessageValidatorManager::checkServiceNameAndID(0x37, c.info()));
  EXPECT_EQ("Existence of either AttribInfo ServiceID or ServiceName is Required. \n", c.errors());
}

TEST(ValidatorFrame, ThrowIUERaisesAnIllegalCallWithTheText) {
  try {
    DomainMessageValidatorManager::throwIUE("some text \n");
    FAIL() << "no failure";
  } catch (const common::InvalidUsageException& e) {
    EXPECT_STREQ("some text \n", e.what());
    EXPECT_EQ(1, static_cast<int>(e.getStatus().getState()));
    EXPECT_EQ(1, static_cast<int>(e.getErrorType()));
    EXPECT_EQ(1, static_cast<int>(e.getSeverity()));
    EXPECT_EQ(4, static_cast<int>(e.getClassification()));
  }
}

TEST(ValidatorFrame, ModelTypesWithoutDomainValidatorFail) {
  for (int model : {2, 3, 11, 255}) {
    Response r = marketRefresh(static_cast<common::UInt8>(model));
    EXPECT_EQ("No Message validation is supported for message model type: [" +
                  std::to_string(model) + "]. \n",
              validate(r.msg()).failure);
  }
  Response none = marketRefresh(0);
  EXPECT_EQ(
      "Invalid message model type: [0].\n"
      "No Message validation is supported for message model type: [0]. \n",
      validate(none.msg(), false).failure);
}

// A message of a type no class has.
class StrayMsg : public common::Msg {
 public:
  explicit StrayMsg(common::UInt8 type) : Msg(true) {
    _msgType = type;
    _msgModelType = 6;
  }
};

TEST(ValidatorFrame, UnknownMessageTypesFailWithoutCallingARule) {
  for (int type : {0, 6, 200}) {
    try {
      DomainMessageValidatorManager::validateMsg(StrayMsg(static_cast<common::UInt8>(type)),
                                                 nullptr, false);
      FAIL() << "no failure for type " << type;
    } catch (const common::InvalidUsageException& e) {
      EXPECT_EQ("Invalid message type: [" + std::to_string(type) + "].\n", std::string(e.what()));
    }
  }
}

TEST(ValidatorFrame, AValidMessageGivesOneAndLeavesTheTextAlone) {
  const Response r = marketRefresh(validator_test::kMarketPrice);
  for (bool withText : {true, false}) {
    const auto outcome = validate(r.msg(), withText);
    EXPECT_EQ(1, outcome.status);
    EXPECT_EQ("", outcome.text);
  }
}

// With a text every warning is collected; without one the gate closes after
// the first stage that warned, since nobody reads the rest.
TEST(ValidatorFrame, WarningGateStopsAtTheFirstWarningWithoutAText) {
  Response r = marketRefresh(validator_test::kMarketPrice);
  r.header().attrib([](AttribInfo& info) {
    info.setName("AB.X");
    info.setServiceID(3);
    info.setID(4);
    info.setDataMask(2);
  });
  const std::string attribWarnings =
      "Warning: AttribInfo DataMask is set but it is not used. \n"
      "Warning: AttribInfo ID is set but it is not used.\n";
  const std::string headerWarning = " Warning: Header is set but it is not used.  \n";

  const auto withText = validate(r.msg(), true);
  EXPECT_EQ(2, withText.status);
  EXPECT_EQ(attribWarnings + headerWarning, withText.text);
  EXPECT_EQ(2, validate(r.msg(), false).status);

  Collector wanted(true);
  EXPECT_EQ(2, DomainMessageValidatorManager::validateMasksForRefreshMsg(r, wanted.info(), false));
  EXPECT_EQ(attribWarnings + headerWarning, wanted.warnings());
  Collector unwanted(false);
  EXPECT_EQ(2,
            DomainMessageValidatorManager::validateMasksForRefreshMsg(r, unwanted.info(), false));
  EXPECT_EQ(attribWarnings, unwanted.warnings());
}

TEST(ValidatorFrame, ErrorsOfBothStagesFailWithTheFirstStagesTexts) {
  Response r(validator_test::kMarketPrice, RespMsg::RefreshResp);
  r.number(2);
  // The first stage already failed: the domain stage does not run.
  EXPECT_EQ(
      "Response Refresh Msg has invalid RespTypeNum : [2]. \n"
      "Required to have RespStatus in Response Refresh Msg. \n",
      validate(r.msg()).failure);
}

TEST(RespMsgValidation, RefreshWithBadNumberHasErrorTextButStatusOne) {
  Response r = marketRefresh(validator_test::kMarketPrice);
  r.number(2);
  Collector c;
  EXPECT_EQ(1, RespMsgValidator::validateMessage(r, c.info(), false));
  EXPECT_EQ("Response Refresh Msg has invalid RespTypeNum : [2]. \n", c.errors());
  EXPECT_EQ("Response Refresh Msg has invalid RespTypeNum : [2]. \n", validate(r.msg()).failure);
  r.number(1);
  EXPECT_EQ(1, validate(r.msg()).status);
}

TEST(RespMsgValidation, RefreshNeedsAStatusOutsideTheDirectory) {
  Response market(validator_test::kMarketByOrder, RespMsg::RefreshResp);
  market.payload().item();
  EXPECT_EQ("Required to have RespStatus in Response Refresh Msg. \n",
            validate(market.msg()).failure);
  Response directory(validator_test::kDirectory, RespMsg::RefreshResp);
  directory.payload().attrib([](AttribInfo& info) { info.setDataMask(7); });
  Collector c;
  EXPECT_EQ(1, RespMsgValidator::validateMessage(directory, c.info(), false));
  EXPECT_EQ("", c.errors());
  EXPECT_EQ(1, validate(directory.msg()).status);
}

TEST(RespMsgValidation, UpdateMustNotCarryAStatusAndUnknownRespTypesFail) {
  Response update(validator_test::kSymbolList, RespMsg::UpdateResp);
  update.payload().status();
  EXPECT_EQ("Invalid to have RespStatus in Response Update Msg. \n",
            validate(update.msg()).failure);
  Response odd(validator_test::kMarketPrice, static_cast<RespMsg::RespType>(9));
  Collector c;
  EXPECT_EQ(0, RespMsgValidator::validateMessage(odd, c.info(), false));
  EXPECT_EQ("Response Msg has invalid RespType : [9]. \n", c.errors());
  EXPECT_EQ("Response Msg has invalid RespType : [9]. \n", validate(odd.msg()).failure);
  // A status has no rule of its own.
  Response status(validator_test::kMarketPrice, RespMsg::StatusResp);
  Collector s;
  EXPECT_EQ(1, RespMsgValidator::validateMessage(status.payload(), s.info(), false));
  EXPECT_EQ("", s.errors());
}

TEST(RespMsgValidation, IndicationChecksTellEachBitAndRefuseUnknownValues) {
  Response r(validator_test::kLogin, RespMsg::RefreshResp);
  Collector missing;
  EXPECT_EQ(0, RespMsgValidator::requiredIndicationMask(
                   r, missing.info(), list({0x01, 0x02, 0x04, 0x08, 0x10, 0x80})));
  EXPECT_EQ(
      "Required DoNotCacheFlag Indication is missing. \n"
      "Required DoNotFilterFlag Indication is missing. \n"
      "Required ClearCacheFlag Indication is missing. \n"
      "Required RefreshCompleteFlag Indication is missing. \n"
      "Required DoNotRippleFlag Indication is missing. \n"
      "Invalid Required Indication Masks flag: [128]. \n",
      missing.errors());
  r.indications(0x1F);
  Collector set;
  EXPECT_EQ(2, RespMsgValidator::setNotUsedIndicationMask(
                   r, set.info(), list({0x10, 0x08, 0x04, 0x02, 0x01, 0x80})));
  EXPECT_EQ(
      " Warning: DoNotRipple is set but it is not used.  \n"
      " Warning: RefreshComplete is set but it is not used.  \n"
      " Warning: ClearCache is set but it is not used.  \n"
      " Warning: DoNotFilter is set but it is not used.  \n"
      " Warning: DoNotCache is set but it is not used.  \n"
      "Invalid IndicationMask flag for Response Msg: [128]. \n",
      set.warnings());
  Collector unknownAlone;
  EXPECT_EQ(0, RespMsgValidator::requiredIndicationMask(r, unknownAlone.info(), list({0x20})));
}

TEST(RespMsgValidation, QualityOfServiceCannotBeRequired) {
  Response r(validator_test::kMarketPrice, RespMsg::RefreshResp);
  r.qos();
  Collector c;
  EXPECT_EQ(0, RespMsgValidator::requiredHintMask(r, c.info(), list({0x04})));
  EXPECT_EQ("Invalid Required HintMasks flag for Response Msg: [4]. \n", c.errors());
  Collector all;
  EXPECT_EQ(0, RespMsgValidator::requiredHintMask(
                   r, all.info(), list({0x01, 0x02, 0x08, 0x10, 0x20, 0x40, 0x80})));
  EXPECT_EQ(
      "Required RespTypeNum is missing. \n"
      "Required RespStatus is missing. \n"
      "Required AttribInfo is missing. \n"
      "Required Manifest is missing. \n"
      "Required Header is missing. \n"
      "Required Payload is missing. \n"
      "Required PrincipalIdentity is missing. \n",
      all.errors());
}

// The quality-of-service entry of the not-used check looks at the status bit.
TEST(RespMsgValidation, NotUsedQualityOfServiceFollowsTheStatusBit) {
  Response qosOnly(validator_test::kMarketPrice, RespMsg::StatusResp);
  qosOnly.qos();
  Collector silent;
  EXPECT_EQ(1, RespMsgValidator::setNotUsedHintMask(qosOnly, silent.info(), list({0x04})));
  EXPECT_EQ("", silent.warnings());

  Response statusOnly(validator_test::kMarketPrice, RespMsg::StatusResp);
  statusOnly.status();
  Collector warned;
  EXPECT_EQ(2, RespMsgValidator::setNotUsedHintMask(statusOnly, warned.info(), list({0x04})));
  EXPECT_EQ(" Warning: QualityOfService is set but it is not used.  \n", warned.warnings());
}

TEST(RespMsgValidation, NotUsedHintsAreWarnedOfInListOrder) {
  Response r(validator_test::kMarketPrice, RespMsg::RefreshResp);
  r.number(1).status().qos().item().header().payload();
  r.manifest(Manifest(true));
  common::PublisherPrincipalIdentity identity;
  const_cast<RespMsg&>(r.msg()).setPrincipalIdentity(identity);
  Collector c;
  EXPECT_EQ(2, RespMsgValidator::setNotUsedHintMask(
                   r, c.info(), list({0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01, 0x03})));
  EXPECT_EQ(
      " Warning: PrincipalIdentity is set but it is not used.  \n"
      " Warning: Payload is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n"
      " Warning: Manifest is set but it is not used.  \n"
      " Warning: AttribInfo is set but it is not used.  \n"
      " Warning: QualityOfService is set but it is not used.  \n"
      " Warning: RespStatus is set but it is not used.  \n"
      " Warning: RespTypeNum is set but it is not used.  \n"
      "Invalid HintMask flag for Response Msg: [3]. \n",
      c.warnings());
}

TEST(RespMsgValidation, ManifestCheckIsSilentOnAnEmptyManifest) {
  Response r(validator_test::kLogin, RespMsg::RefreshResp);
  r.manifest(Manifest(true));
  Collector c;
  EXPECT_EQ(1, RespMsgValidator::setNotUsedManifestHintMask(r, c.info(), list({0x08, 0x04, 0x99})));
  EXPECT_EQ("", c.warnings());
}

// ItemGroup goes on to PermissionData and that one to the invalid line.
TEST(RespMsgValidation, ManifestEntriesFallThroughToTheInvalidLine) {
  unsigned char bytes[] = {0, 1};
  common::Buffer group(bytes, 2, 2, false);
  Manifest seqOnly(true);
  seqOnly.setSeqNum(5);
  Response r(validator_test::kLogin, RespMsg::RefreshResp);
  r.manifest(seqOnly);
  Collector c;
  EXPECT_EQ(2, RespMsgValidator::setNotUsedManifestHintMask(r, c.info(), list({0x08, 0x02})));
  EXPECT_EQ("Invalid Manifest flag for Response Msg: [8] \n", c.warnings());

  Manifest full(true);
  full.setSeqNum(5);
  full.setFiltered(2, 30);
  full.setItemGroup(group);
  full.setPermissionData(group);
  Response f(validator_test::kLogin, RespMsg::RefreshResp);
  f.manifest(full);
  Collector all;
  EXPECT_EQ(2, RespMsgValidator::setNotUsedManifestHintMask(f, all.info(),
                                                            list({0x01, 0x02, 0x04, 0x08, 0x20})));
  EXPECT_EQ(
      " Warning: SeqNum is set but it is not used. \n"
      " Warning: Conflated Time and Count are set but they are not used.  \n"
      " Warning: ItemGroup is set but it is not used.  \n"
      " Warning: PermissionData is set but it is not used.  \n"
      "Invalid Manifest flag for Response Msg: [4] \n"
      " Warning: PermissionData is set but it is not used.  \n"
      "Invalid Manifest flag for Response Msg: [8] \n"
      "Invalid Manifest flag for Response Msg: [32] \n",
      all.warnings());
}

}  // namespace
}  // namespace orvo
