// Rules of the MarketPrice domain, the second stage of validateMsg for messages
// of that model type. An update of number 7 or 11 must not ask not to ripple.
#ifndef ORVO_MESSAGE_MARKET_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_MARKET_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class MarketPriceDomainMessageValidator {
 public:
  MarketPriceDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_MARKET_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_
