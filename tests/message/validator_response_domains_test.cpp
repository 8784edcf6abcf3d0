// Responses through validateMsg in every domain that has rules for them.
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/DictionaryDomainMessageValidator.h"
#include "orvo/message/DirectoryDomainMessageValidator.h"
#include "orvo/message/LoginDomainMessageValidator.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/MarketPriceDomainMessageValidator.h"
#include "orvo/message/RespMsg.h"
#include "validator_resp_util.h"
#include "validator_test_util.h"

namespace orvo {
namespace {

using message::AttribInfo;
using message::Manifest;
using message::RespMsg;
using validator_test::Collector;
using validator_test::marketRefresh;
using validator_test::Response;
using validator_test::validate;
namespace vt = validator_test;

const std::string kPayloadMissing = "Required Payload is missing. \n";
// Every refresh carries a status, and the quality-of-service entry of the
// not-used hints looks at the status bit.
const std::string kQosWarning = " Warning: QualityOfService is set but it is not used.  \n";
const std::string kServiceMissing =
    "Existence of either AttribInfo ServiceID or ServiceName is Required. \n";

struct MarketCase {
  common::UInt8 domain;
  const char* name;
};

class MarketResponses : public ::testing::TestWithParam<MarketCase> {};

INSTANTIATE_TEST_SUITE_P(Domains, MarketResponses,
                         ::testing::Values(MarketCase{vt::kMarketPrice, "MarketPrice"},
                                           MarketCase{vt::kMarketByOrder, "MarketByOrder"},
                                           MarketCase{vt::kMarketByPrice, "MarketByPrice"},
                                           MarketCase{vt::kMarketMaker, "MarketMaker"},
                                           MarketCase{vt::kSymbolList, "SymbolList"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_P(MarketResponses, RefreshNeedsNameServiceAndPayload) {
  EXPECT_EQ(1, validate(marketRefresh(GetParam().domain).msg()).status);

  Response bare(GetParam().domain, RespMsg::RefreshResp);
  bare.status();
  EXPECT_EQ(kPayloadMissing, validate(bare.msg()).failure);

  Response nameless(GetParam().domain, RespMsg::RefreshResp);
  nameless.status().attrib([](AttribInfo& info) { info.setNameType(1); });
  EXPECT_EQ("Required AttribInfo Name is missing.\n" + kServiceMissing + kPayloadMissing,
            validate(nameless.msg()).failure);
}

TEST_P(MarketResponses, StatusWarnsOfPayloadAndOfTheStatusBitAsQualityOfService) {
  Response plain(GetParam().domain, RespMsg::StatusResp);
  plain.item();
  EXPECT_EQ(1, validate(plain.msg()).status);
  plain.status();
  EXPECT_EQ(kQosWarning, validate(plain.msg()).text);

  Response loaded(GetParam().domain, RespMsg::StatusResp);
  loaded.status().item().payload().header();
  const auto outcome = validate(loaded.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      " Warning: Header is set but it is not used.  \n"
      " Warning: Payload is set but it is not used.  \n"
      " Warning: QualityOfService is set but it is not used.  \n",
      outcome.text);
  EXPECT_EQ(2, validate(loaded.msg(), false).status);

  Response qosOnly(GetParam().domain, RespMsg::StatusResp);
  qosOnly.qos();
  EXPECT_EQ(1, validate(qosOnly.msg()).status);
}

TEST_P(MarketResponses, StatusWithBadAttribStopsBeforeTheHintChecks) {
  Response r(GetParam().domain, RespMsg::StatusResp);
  r.header().attrib([](AttribInfo& info) { info.setServiceName("FEED"); });
  EXPECT_EQ("Required AttribInfo Name is missing.\n", validate(r.msg()).failure);
}

// Three market domains write their update error whatever the number, so no
// update of theirs ever validates; the common rule still adds its texts.
TEST(MarketUpdates, OrderPriceAndMakerDomainsRefuseEveryUpdate) {
  const struct {
    common::UInt8 domain;
    const char* text;
  } cases[] = {
      {vt::kMarketByOrder,
       "MarketByOrder Update Response should contain valid resptypeNum (0|1) = "},
      {vt::kMarketByPrice,
       "MarketByPrice Update Response should contain valid resptypeNum (0|1) = "},
      {vt::kMarketMaker, "MarketMaker Update Response should contain valid resptypeNum (0|1) = "},
  };
  for (const auto& c : cases) {
    for (int number : {0, 1, 9}) {
      Response good(c.domain, RespMsg::UpdateResp);
      good.payload().item().number(static_cast<common::UInt8>(number));
      EXPECT_EQ(c.text + std::to_string(number) + " \n", validate(good.msg()).failure);
    }
    Response bare(c.domain, RespMsg::UpdateResp);
    EXPECT_EQ(c.text + std::string("0 \n") + kPayloadMissing, validate(bare.msg()).failure);
  }
}

TEST(MarketUpdates, MarketPriceRefusesDoNotRippleOnNumbersSevenAndEleven) {
  for (int number : {7, 11}) {
    Response r(vt::kMarketPrice, RespMsg::UpdateResp);
    r.payload()
        .item()
        .number(static_cast<common::UInt8>(number))
        .indications(RespMsg::DoNotRippleFlag);
    EXPECT_EQ(
        "MarketPrice Update Response should NOT contain DoNotRippleFlag indication flag because "
        "resptypeNum = " +
            std::to_string(number) + " \n",
        validate(r.msg()).failure);
  }
  Response eight(vt::kMarketPrice, RespMsg::UpdateResp);
  eight.payload().item().number(8).indications(RespMsg::DoNotRippleFlag);
  EXPECT_EQ(1, validate(eight.msg()).status);
  Response seven(vt::kMarketPrice, RespMsg::UpdateResp);
  seven.payload().number(7);
  EXPECT_EQ(1, validate(seven.msg()).status);
}

TEST(MarketUpdates, SymbolListWantsNumberZero) {
  Response zero(vt::kSymbolList, RespMsg::UpdateResp);
  zero.payload();
  EXPECT_EQ(1, validate(zero.msg()).status);
  Response three(vt::kSymbolList, RespMsg::UpdateResp);
  three.payload().number(3).header();
  EXPECT_EQ("RespTypeNum in SymbolList Update Response is Not Used. Should be 0. = 3 \n",
            validate(three.msg()).failure);
}

TEST(MarketUpdates, UpdateWarnsOfHeaderAndChecksAnAttribInfo) {
  Response r(vt::kMarketPrice, RespMsg::UpdateResp);
  r.payload().header().attrib([](AttribInfo& info) {
    info.setName("AB.X");
    info.setServiceID(1);
    info.setAttrib(data::FieldList(true));
  });
  const auto outcome = validate(r.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo Attrib is set but it is not used.\n"
      " Warning: Header is set but it is not used.  \n",
      outcome.text);
}

TEST(MarketResponsesDirect, UnknownRespTypeIsRefusedByTheDomain) {
  Response r(vt::kMarketPrice, static_cast<RespMsg::RespType>(4));
  Collector c;
  EXPECT_EQ(0, message::MarketPriceDomainMessageValidator::validateMessage(r, c.info(), false));
  EXPECT_EQ("MarketPrice Response with response type [4] is Not supported. \n", c.errors());
}

Response loginRefresh() {
  Response r(vt::kLogin, RespMsg::RefreshResp);
  r.status().indications(RespMsg::RefreshCompleteFlag).attrib([](AttribInfo& info) {
    info.setName("user");
  });
  return r;
}

TEST(LoginResponses, RefreshNeedsRefreshCompleteAndStatusDoesNot) {
  const auto outcome = validate(loginRefresh().msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(kQosWarning, outcome.text);
  Response incomplete(vt::kLogin, RespMsg::RefreshResp);
  incomplete.status();
  EXPECT_EQ("Required RefreshCompleteFlag Indication is missing. \n",
            validate(incomplete.msg()).failure);
  Response status(vt::kLogin, RespMsg::StatusResp);
  EXPECT_EQ(1, validate(status.msg()).status);
}

TEST(LoginResponses, UpdateIsAWarningNotAnError) {
  Response update(vt::kLogin, RespMsg::UpdateResp);
  const auto outcome = validate(update.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ("Login Response with response type [3] is Not supported. \n", outcome.text);
  EXPECT_EQ(2, validate(update.msg(), false).status);
}

TEST(LoginResponses, NotUsedPartsAreWarnedOfInRuleOrder) {
  Response r = loginRefresh();
  r.header().qos().indications(RespMsg::RefreshCompleteFlag | RespMsg::DoNotCacheFlag |
                               RespMsg::DoNotFilterFlag | RespMsg::DoNotRippleFlag);
  r.attrib([](AttribInfo& info) {
    info.setName("user");
    info.setServiceID(2);
    info.setDataMask(1);
  });
  const auto outcome = validate(r.msg());
  EXPECT_EQ(2, outcome.status);
  // On a refresh DoNotFilter is not looked at.
  EXPECT_EQ(
      " Warning: Header is set but it is not used.  \n"
      " Warning: QualityOfService is set but it is not used.  \n"
      " Warning: DoNotCache is set but it is not used.  \n"
      " Warning: DoNotRipple is set but it is not used.  \n"
      "Warning: AttribInfo ServiceID is set but it is not used.\n"
      "Warning: AttribInfo DataMask is set but it is not used. \n",
      outcome.text);

  Response status(vt::kLogin, RespMsg::StatusResp);
  status.indications(RespMsg::DoNotFilterFlag);
  EXPECT_EQ(" Warning: DoNotFilter is set but it is not used.  \n", validate(status.msg()).text);
}

TEST(LoginResponses, NonEmptyManifestDrawsTheInvalidLineTwice) {
  Manifest manifest(true);
  manifest.setSeqNum(1);
  Response r = loginRefresh();
  r.manifest(manifest);
  const auto outcome = validate(r.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(kQosWarning +
                "Invalid Manifest flag for Response Msg: [4] \n"
                "Invalid Manifest flag for Response Msg: [8] \n",
            outcome.text);
}

TEST(LoginResponses, UnknownRespTypesAreOnlyWarnedOf) {
  Response r(vt::kLogin, static_cast<RespMsg::RespType>(0));
  Collector c;
  EXPECT_EQ(2, message::LoginDomainMessageValidator::validateMessage(r, c.info(), false));
  EXPECT_EQ("Login Response with response type [0] is Not supported. \n", c.warnings());
}

Response directoryRefresh() {
  Response r(vt::kDirectory, RespMsg::RefreshResp);
  r.payload().attrib([](AttribInfo& info) { info.setDataMask(0x3F); });
  return r;
}

TEST(DirectoryResponses, RefreshAndUpdateNeedDataMaskAndPayload) {
  EXPECT_EQ(1, validate(directoryRefresh().msg()).status);
  Response bare(vt::kDirectory, RespMsg::RefreshResp);
  EXPECT_EQ("Required AttribInfo DataMask is missing.\n" + kPayloadMissing,
            validate(bare.msg()).failure);
  Response update(vt::kDirectory, RespMsg::UpdateResp);
  update.payload().number(1).attrib([](AttribInfo& info) { info.setDataMask(1); });
  EXPECT_EQ("Response Update RespTypeNum should be 0. Invalid RespTypeNum : [1]. \n",
            validate(update.msg()).failure);
  update.number(0);
  EXPECT_EQ(1, validate(update.msg()).status);
}

TEST(DirectoryResponses, RefreshWarnsOfEverythingButTheFilter) {
  Manifest manifest(true);
  manifest.setFiltered(1, 2);
  Response r = directoryRefresh();
  r.status().qos().header().manifest(manifest).indications(RespMsg::DoNotRippleFlag |
                                                           RespMsg::DoNotCacheFlag);
  r.attrib([](AttribInfo& info) {
    info.setDataMask(1);
    info.setName("x");
    info.setServiceName("FEED");
  });
  const auto outcome = validate(r.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo Name is set but it is not used. \n"
      "Warning: AttribInfo ServiceName is set but it is not used.\n"
      " Warning: QualityOfService is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n"
      " Warning: DoNotRipple is set but it is not used.  \n"
      " Warning: Conflated Time and Count are set but they are not used.  \n"
      "Invalid Manifest flag for Response Msg: [4] \n"
      "Invalid Manifest flag for Response Msg: [8] \n",
      outcome.text);
}

TEST(DirectoryResponses, StatusUsesNoAttribPart) {
  Response plain(vt::kDirectory, RespMsg::StatusResp);
  EXPECT_EQ(1, validate(plain.msg()).status);
  Response named(vt::kDirectory, RespMsg::StatusResp);
  named.status().payload().indications(RespMsg::DoNotFilterFlag).attrib([](AttribInfo& info) {
    info.setName("x");
  });
  const auto outcome = validate(named.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo Name is set but it is not used. \n"
      " Warning: QualityOfService is set but it is not used.  \n"
      " Warning: Payload is set but it is not used.  \n"
      " Warning: DoNotFilter is set but it is not used.  \n",
      outcome.text);
}

TEST(DirectoryResponses, UnknownRespTypeIsRefused) {
  Response r(vt::kDirectory, static_cast<RespMsg::RespType>(5));
  Collector c;
  EXPECT_EQ(0, message::DirectoryDomainMessageValidator::validateMessage(r, c.info(), false));
  EXPECT_EQ("Directory Response with response type [5] is Not supported. \n", c.errors());
}

Response dictionaryRefresh() {
  Response r(vt::kDictionary, RespMsg::RefreshResp);
  r.status().payload().attrib([](AttribInfo& info) {
    info.setName("OrvoFields");
    info.setDataMask(0);
    info.setServiceID(9);
  });
  return r;
}

TEST(DictionaryResponses, RefreshNeedsNameDataMaskServiceAndNumberZero) {
  EXPECT_EQ(kQosWarning, validate(dictionaryRefresh().msg()).text);
  Response numbered = dictionaryRefresh();
  numbered.number(1);
  EXPECT_EQ("Response Refresh Msg for Dictionary has invalid RespTypeNum : [1]. \n",
            validate(numbered.msg()).failure);
  Response bare(vt::kDictionary, RespMsg::RefreshResp);
  bare.status();
  EXPECT_EQ(kPayloadMissing + "Required AttribInfo Name is missing.\n" +
                "Required AttribInfo DataMask is missing.\n" + kServiceMissing,
            validate(bare.msg()).failure);
}

TEST(DictionaryResponses, RefreshWarningsComeInRuleOrder) {
  Manifest manifest(true);
  manifest.setFiltered(1, 1);
  Response r = dictionaryRefresh();
  r.header().manifest(manifest).indications(RespMsg::DoNotFilterFlag | RespMsg::DoNotRippleFlag);
  r.attrib([](AttribInfo& info) {
    info.setName("OrvoFields");
    info.setDataMask(3);
    info.setServiceID(9);
    info.setNameType(2);
  });
  const auto outcome = validate(r.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo NameType is set but it is not used. \n"
      " Warning: DoNotFilter is set but it is not used.  \n"
      " Warning: DoNotRipple is set but it is not used.  \n"
      " Warning: QualityOfService is set but it is not used.  \n"
      " Warning: Header is set but it is not used.  \n"
      " Warning: Conflated Time and Count are set but they are not used.  \n"
      "Invalid Manifest flag for Response Msg: [4] \n",
      outcome.text);
}

TEST(DictionaryResponses, StatusNeedsNumberZeroAndOnlyWarns) {
  Response status(vt::kDictionary, RespMsg::StatusResp);
  status.header().attrib([](AttribInfo& info) { info.setID(3); });
  const auto outcome = validate(status.msg());
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo ID is set but it is not used.\n"
      " Warning: Header is set but it is not used.  \n",
      outcome.text);
  status.number(4);
  EXPECT_EQ("Response Refresh Msg for Dictionary has invalid RespTypeNum : [4]. \n",
            validate(status.msg()).failure);
}

TEST(DictionaryResponses, UpdatesAreNotSupported) {
  Response update(vt::kDictionary, RespMsg::UpdateResp);
  update.payload();
  EXPECT_EQ("Dictionary Response with response type [3] is Not supported. \n",
            validate(update.msg()).failure);
  Collector c;
  EXPECT_EQ(0, message::DictionaryDomainMessageValidator::validateMessage(update, c.info(), false));
}

}  // namespace
}  // namespace orvo
