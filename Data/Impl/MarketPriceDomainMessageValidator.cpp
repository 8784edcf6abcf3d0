#include "orvo/message/MarketPriceDomainMessageValidator.h"

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
  UInt8 status = internal::kValid;
  const UInt8 number = internal::respTypeNumOf(msg);
  if ((number == 7 || number == 11) && (msg.getIndicationMask() & RespMsg::DoNotRippleFlag)) {
    internal::appendNumbered(info.errors(),
                             "MarketPrice Update Response should NOT contain DoNotRippleFlag "
                             "indication flag because resptypeNum = ",
                             number, " \n");
    status = internal::kInvalid;
  }
  return internal::combine(
      status, DomainMessageValidatorManager::validateMasksForUpdateMsg(msg, info, isReissue));
}

constexpr internal::MarketDomain kDomain = {
    " Validation of MarketPrice domain for messageType[",
    "MarketPrice Response with response type [",
    &validateMasksForUpdateMsg,
};

}  // namespace

UInt8 MarketPriceDomainMessageValidator::validateMessage(const Msg& msg, TextMessageInfo& info,
                                                         bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, kDomain);
}

}  // namespace message
}  // namespace orvo
