// Requests through validation: the rules of every request and those of each
// domain.
// Built once the message class is part of the tree.
#if __has_include("orvo/message/ReqMsg.h")

#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/QualityOfServiceRequest.h"
#include "orvo/data/FieldList.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/ReqMsg.h"
#include "orvo/message/ReqMsgValidator.h"
#include "resp_msg_test_util.h"
#include "validator_test_util.h"

namespace orvo {
namespace {

using message::AttribInfo;
using message::ReqMsg;
using message::ReqMsgValidator;
using validator_test::Collector;
using validator_test::list;
using validator_test::validate;
namespace vt = validator_test;

constexpr common::UInt8 kStreaming = ReqMsg::InitialImageFlag | ReqMsg::InterestAfterRefreshFlag;

const std::string kMarketNameTypeInfo =
    "Info: Recommended to set AttribInfo NameType. ORVO will Default to INSTRUMENT_OIC.  \n";
const std::string kLoginNameTypeInfo =
    "Info: Recommended to set AttribInfo NameType. ORVO will default to USER_NAME.  \n";

// A managed request in `domain` with the AttribInfo `fill` makes.
template <class F>
std::unique_ptr<ReqMsg> request(common::UInt8 domain, F fill,
                                common::UInt8 interaction = kStreaming) {
  auto msg = std::make_unique<ReqMsg>(true);
  msg->setMsgModelType(domain);
  msg->setInteractionType(interaction);
  AttribInfo info(true);
  fill(info);
  msg->setAttribInfo(info);
  return msg;
}

void marketItem(AttribInfo& info) {
  info.setName("AB.X");
  info.setNameType(1);
  info.setServiceName("FEED");
}

TEST(ReqMsgValidation, NeedsAttribInfoAndInitialImageUnlessReissued) {
  ReqMsg bare(true);
  bare.setMsgModelType(vt::kMarketPrice);
  bare.setInteractionType(ReqMsg::InterestAfterRefreshFlag);
  Collector c;
  EXPECT_EQ(0, ReqMsgValidator::validateMessage(bare, c.info(), false));
  EXPECT_EQ(
      "Required AttribInfo is not set.\n"
      "InteractionType without expected 'ReqMsg::InitialImageFlag' is Invalid. \n",
      c.errors());
  EXPECT_EQ(c.errors(), validate(bare).failure);

  auto reissue = request(vt::kMarketPrice, marketItem, ReqMsg::InterestAfterRefreshFlag);
  Collector r;
  EXPECT_EQ(1, ReqMsgValidator::validateMessage(*reissue, r.info(), true));
  EXPECT_EQ("", r.errors());
  EXPECT_EQ(1, validate(*reissue, true, true).status);
}

TEST(ReqMsgValidation, InteractionTypesOfReissuesAndSnapshots) {
  struct Case {
    int interaction;
    bool reissue;
    const char* error;
  } cases[] = {
      {2, true, ""},
      {3, true, ""},
      {4, true, ""},
      {5, true, ""},
      {0, true, "Invalid InteractionType for Reissue request. \n"},
      {1, true, "Invalid InteractionType for Reissue request. \n"},
      {6, true, "Invalid InteractionType for Reissue request. \n"},
      {7, true, "Invalid InteractionType for Reissue request. \n"},
      {1, false, ""},
      {3, false, ""},
      {6, false, ""},
      {7, false, ""},
      {4, false, "Non streaming (snapshot) request with 'ReqMsg::PauseFlag' is Invalid. \n"},
      {5, false, "Non streaming (snapshot) request with 'ReqMsg::PauseFlag' is Invalid. \n"},
  };
  for (const Case& c : cases) {
    auto msg = request(vt::kMarketPrice, marketItem, static_cast<common::UInt8>(c.interaction));
    Collector out;
    EXPECT_EQ(1, ReqMsgValidator::validateInteractionType(*msg, out.info(), c.reissue, true, true));
    EXPECT_EQ(c.error, out.errors()) << c.interaction << " reissue " << c.reissue;
    EXPECT_EQ("", out.warnings());
  }
}

TEST(ReqMsgValidation, UnsupportedPauseAndReissueAreWarnings) {
  auto pause = request(vt::kDirectory, marketItem, ReqMsg::PauseFlag);
  Collector c;
  EXPECT_EQ(1, ReqMsgValidator::validateInteractionType(*pause, c.info(), true, false, false));
  EXPECT_EQ(" Pause Request is not supported.\n  Reissue is not supported.\n ", c.warnings());
  EXPECT_EQ("", c.errors());
  // Only the pause alone counts as a pause request.
  auto streamingPause = request(vt::kDirectory, marketItem, 7);
  Collector s;
  ReqMsgValidator::validateInteractionType(*streamingPause, s.info(), false, false, false);
  EXPECT_EQ("", s.warnings());
}

TEST(ReqMsgValidation, NotUsedHintsSkipTheDefaultPriority) {
  unsigned char bytes[] = {'h'};
  auto msg = request(vt::kMarketPrice, marketItem);
  msg->setPriority(1, 1);
  msg->setHeader(common::Buffer(bytes, 1, 1, false));
  data::FieldList payload(true);
  resp_test::writeFields(payload, {{1, 2}});
  msg->setPayload(payload);
  msg->setRequestedQualityOfService(common::QualityOfServiceRequest());
  const auto all = list({0x01, 0x02, 0x04, 0x08, 0x10, 0x20});
  Collector c;
  EXPECT_EQ(2, ReqMsgValidator::setNotUsedIndicationMask(*msg, c.info(), all));
  EXPECT_EQ(
      " Warning: QualityOfService is set but it is not used \n"
      " Warning: AttribInfo is set but it is not used \n"
      " Warning: Header is set but it is not used \n"
      " Warning: Payload is set but it is not used \n"
      "Invalid HintMask for Request Msg: [32] \n",
      c.warnings());
  msg->setPriority(1, 2);
  Collector p;
  EXPECT_EQ(2, ReqMsgValidator::setNotUsedIndicationMask(*msg, p.info(), list({0x01})));
  EXPECT_EQ(" Warning: Priority is set but it is not used \n", p.warnings());
}

class MarketRequests : public ::testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Domains, MarketRequests,
                         ::testing::Values(vt::kMarketPrice, vt::kMarketByOrder, vt::kMarketByPrice,
                                           vt::kMarketMaker, vt::kSymbolList));

common::UInt8 domainOf(int param) { return static_cast<common::UInt8>(param); }

TEST_P(MarketRequests, ItemAndServiceMakeAValidRequest) {
  EXPECT_EQ(1, validate(*request(domainOf(GetParam()), marketItem)).status);
  auto byId = request(domainOf(GetParam()), [](AttribInfo& info) {
    info.setName("AB.X");
    info.setNameType(1);
    info.setServiceID(4);
  });
  EXPECT_EQ(1, validate(*byId).status);
  auto pausedStream = request(domainOf(GetParam()), marketItem, 7);
  EXPECT_EQ(1, validate(*pausedStream).status);
}

TEST_P(MarketRequests, MissingNameTypeIsInformationOnlyWithAText) {
  auto msg = request(domainOf(GetParam()), [](AttribInfo& info) {
    info.setName("AB.X");
    info.setServiceName("FEED");
  });
  const auto withText = validate(*msg, true);
  EXPECT_EQ(2, withText.status);
  EXPECT_EQ(kMarketNameTypeInfo, withText.text);
  EXPECT_EQ(1, validate(*msg, false).status);
}

TEST_P(MarketRequests, NotUsedPartsWarnWithOrWithoutAText) {
  unsigned char bytes[] = {'h'};
  auto msg = request(domainOf(GetParam()), [](AttribInfo& info) {
    marketItem(info);
    info.setDataMask(5);
    info.setID(2);
  });
  msg->setHeader(common::Buffer(bytes, 1, 1, false));
  const auto withText = validate(*msg, true);
  EXPECT_EQ(2, withText.status);
  EXPECT_EQ(
      "Warning: AttribInfo ID is set but it is not used.\n"
      "Warning: AttribInfo DataMask is set but it is not used. \n"
      " Warning: Header is set but it is not used \n",
      withText.text);
  EXPECT_EQ(2, validate(*msg, false).status);
}

TEST_P(MarketRequests, ServiceAndNameAreRequired) {
  auto msg = request(domainOf(GetParam()), [](AttribInfo& info) { info.setDataMask(1); });
  EXPECT_EQ(
      "Required AttribInfo Name is missing.\n"
      "Existence of either AttribInfo ServiceID or ServiceName is Required. \n",
      validate(*msg).failure);
}

TEST_P(MarketRequests, SnapshotPauseIsAnError) {
  auto msg =
      request(domainOf(GetParam()), marketItem, ReqMsg::InitialImageFlag | ReqMsg::PauseFlag);
  EXPECT_EQ("Non streaming (snapshot) request with 'ReqMsg::PauseFlag' is Invalid. \n",
            validate(*msg).failure);
}

void loginUser(AttribInfo& info) {
  info.setName("user");
  info.setNameType(1);
}

TEST(LoginRequests, NeedInterestAfterRefreshUnlessReissued) {
  EXPECT_EQ(1, validate(*request(vt::kLogin, loginUser)).status);
  auto snapshot = request(vt::kLogin, loginUser, ReqMsg::InitialImageFlag);
  EXPECT_EQ("Request without expected ReqMsg::InterestAfterRefreshFlag is Invalid. \n",
            validate(*snapshot).failure);
  EXPECT_EQ(1, validate(*snapshot, true, true).status);
}

TEST(LoginRequests, NameTypeInformationAndNotUsedParts) {
  auto msg = request(vt::kLogin, [](AttribInfo& info) {
    info.setName("user");
    info.setServiceID(3);
    info.setDataMask(1);
  });
  msg->setPriority(3, 1);
  const auto outcome = validate(*msg);
  EXPECT_EQ(2, outcome.status);
  EXPECT_EQ(
      "Warning: AttribInfo ServiceID is set but it is not used.\n"
      "Warning: AttribInfo DataMask is set but it is not used. \n"
      " Warning: Priority is set but it is not used \n" +
          kLoginNameTypeInfo,
      outcome.text);
  EXPECT_EQ("Required AttribInfo Name is missing.\n",
            validate(*request(vt::kLogin, [](AttribInfo&) {})).failure);
}

void directoryFilter(AttribInfo& info) { info.setDataMask(0x3F); }

TEST(DirectoryRequests, NeedADataMaskAndWarnOfNamesPausesAndReissues) {
  EXPECT_EQ(1, validate(*request(vt::kDirectory, directoryFilter)).status);
  auto named = request(vt::kDirectory, [](AttribInfo& info) {
    info.setDataMask(1);
    info.setName("x");
    info.setNameType(2);
  });
  EXPECT_EQ(
      "Warning: AttribInfo Name is set but it is not used. \n"
      "Warning: AttribInfo NameType is set but it is not used. \n",
      validate(*named).text);
  // The interaction rule speaks through its text alone: its warnings come
  // back, and the status stays 1.
  auto pause = request(vt::kDirectory, directoryFilter, ReqMsg::PauseFlag);
  const auto outcome = validate(*pause, true, true);
  EXPECT_EQ(1, outcome.status);
  EXPECT_EQ(" Pause Request is not supported.\n  Reissue is not supported.\n ", outcome.text);
  EXPECT_EQ("Required AttribInfo DataMask is missing.\n",
            validate(*request(vt::kDirectory, [](AttribInfo&) {})).failure);
}

void dictionaryName(AttribInfo& info) {
  info.setName("OrvoFields");
  info.setDataMask(0);
  info.setServiceName("FEED");
}

TEST(DictionaryRequests, NeedNameDataMaskAndServiceAndTakeAnyDataMask) {
  EXPECT_EQ(1, validate(*request(vt::kDictionary, dictionaryName)).status);
  for (common::UInt32 mask : {0x01u, 0x07u, 0x10u, 0xFFFFFFFFu}) {
    auto msg = request(vt::kDictionary, [mask](AttribInfo& info) {
      dictionaryName(info);
      info.setDataMask(mask);
    });
    EXPECT_EQ(1, validate(*msg).status) << mask;
  }
  auto bare = request(vt::kDictionary, [](AttribInfo& info) { info.setNameType(1); });
  EXPECT_EQ(
      "Required AttribInfo Name is missing.\n"
      "Required AttribInfo DataMask is missing.\n"
      "Existence of either AttribInfo ServiceID or ServiceName is Required. \n",
      validate(*bare).failure);
  auto typed = request(vt::kDictionary, [](AttribInfo& info) {
    dictionaryName(info);
    info.setNameType(1);
  });
  typed->setPriority(2, 2);
  // Priority is not looked at in the Dictionary domain.
  EXPECT_EQ("Warning: AttribInfo NameType is set but it is not used. \n", validate(*typed).text);
}

}  // namespace
}  // namespace orvo

#endif  // __has_include
