#include "Data/Impl/MarketDomainValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/RespMsg.h"

namespace orvo {
namespace internal {
namespace {

using message::DomainMessageValidatorManager;
using message::RespMsg;

UInt8 commonUpdateRule(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return DomainMessageValidatorManager::validateMasksForUpdateMsg(msg, info, isReissue);
}

// `text`, the resp type number and " \n" to the errors.
void refuseNumber(const Msg& msg, TextMessageInfo& info, const char* text) {
  appendNumbered(info.errors(), text, respTypeNumOf(msg), " \n");
}

// Refuses the update when `holds` is false, then combines with the common
// update rule.
UInt8 ownRuleThenCommon(const Msg& msg, TextMessageInfo& info, bool isReissue, bool holds,
                        const char* text) {
  UInt8 status = kValid;
  if (!holds) {
    refuseNumber(msg, info, text);
    status = kInvalid;
  }
  return combine(status, commonUpdateRule(msg, info, isReissue));
}

// MarketByOrder, MarketByPrice and MarketMaker write their error whatever
// the number, so their updates never validate; the common rule still runs
// for its texts, and its result is dropped.
UInt8 refuseEveryUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue, const char* text) {
  refuseNumber(msg, info, text);
  commonUpdateRule(msg, info, isReissue);
  return kInvalid;
}

UInt8 marketPriceUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  const UInt8 number = respTypeNumOf(msg);
  const bool noRippleNumber = number == 7 || number == 11;
  const bool holds = !(noRippleNumber && (msg.getIndicationMask() & RespMsg::DoNotRippleFlag));
  return ownRuleThenCommon(msg, info, isReissue, holds,
                           "MarketPrice Update Response should NOT contain DoNotRippleFlag "
                           "indication flag because resptypeNum = ");
}

UInt8 marketByOrderUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return refuseEveryUpdate(
      msg, info, isReissue,
      "MarketByOrder Update Response should contain valid resptypeNum (0|1) = ");
}

UInt8 marketByPriceUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return refuseEveryUpdate(
      msg, info, isReissue,
      "MarketByPrice Update Response should contain valid resptypeNum (0|1) = ");
}

UInt8 marketMakerUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return refuseEveryUpdate(msg, info, isReissue,
                           "MarketMaker Update Response should contain valid resptypeNum (0|1) = ");
}

UInt8 symbolListUpdate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return ownRuleThenCommon(
      msg, info, isReissue, respTypeNumOf(msg) == 0,
      "RespTypeNum in SymbolList Update Response is Not Used. Should be 0. = ");
}

UInt8 responseMsgValidate(const Msg& msg, TextMessageInfo& info, bool isReissue,
                          const MarketDomain& domain) {
  const common::Int32 respType = respTypeOf(msg);
  switch (respType) {
    case RespMsg::RefreshResp:
      return DomainMessageValidatorManager::validateMasksForRefreshMsg(msg, info, isReissue);
    case RespMsg::StatusResp:
      return DomainMessageValidatorManager::validateMasksForStatusMsg(msg, info, isReissue);
    case RespMsg::UpdateResp:
      return domain.validateMasksForUpdateMsg(msg, info, isReissue);
    default:
      appendRespTypeRefusal(info.errors(), domain.respTypePrefix, respType);
      return kInvalid;
  }
}

}  // namespace

const MarketDomain kMarketPriceDomain = {" Validation of MarketPrice domain for messageType[",
                                         "MarketPrice Response with response type [",
                                         &marketPriceUpdate};
const MarketDomain kMarketByOrderDomain = {" Validation of MarketByOrder domain for messageType[",
                                           "MarketByOrder Response with response type [",
                                           &marketByOrderUpdate};
const MarketDomain kMarketByPriceDomain = {" Validation of MarketByPrice domain for messageType[",
                                           "MarketByPrice Response with response type [",
                                           &marketByPriceUpdate};
const MarketDomain kMarketMakerDomain = {" Validation of MarketMaker domain for messageType[",
                                         "MarketMaker Response with response type [",
                                         &marketMakerUpdate};
const MarketDomain kSymbolListDomain = {" Validation of SymbolList domain for messageType[",
                                        "SymbolList Response with response type [",
                                        &symbolListUpdate};

UInt8 validateMarketMessage(const Msg& msg, TextMessageInfo& info, bool isReissue,
                            const MarketDomain& domain) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return responseMsgValidate(msg, info, isReissue, domain);
    case Msg::ReqMsgEnum:
      return DomainMessageValidatorManager::requestMsgValidate(msg, info, isReissue);
    case Msg::PostMsgEnum:
    case Msg::AckMsgEnum:
      return kValid;
    default:
      return refuseMsgType(info, domain.msgTypePrefix, msg.getMsgType());
  }
}

}  // namespace internal
}  // namespace orvo
