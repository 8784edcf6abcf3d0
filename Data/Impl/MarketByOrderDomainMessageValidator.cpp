#include "orvo/message/MarketByOrderDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"
#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/RespMsg.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::UInt8;

UInt8 validateMasksForUpdateMsg(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  return internal::refuseEveryUpdate(
      msg, info, isReissue,
      "MarketByOrder Update Response should contain valid resptypeNum (0|1) = ");
}

constexpr internal::MarketDomain kDomain = {
    " Validation of MarketByOrder domain for messageType[",
    "MarketByOrder Response with response type [",
    &validateMasksForUpdateMsg,
};

}  // namespace

UInt8 MarketByOrderDomainMessageValidator::validateMessage(const Msg& msg, TextMessageInfo& info,
                                                           bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, kDomain);
}

}  // namespace message
}  // namespace orvo
