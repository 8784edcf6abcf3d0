// Rules of the MarketByPrice domain, the second stage of validateMsg for messages
// of that model type. Every update is refused, whatever its number; required as it stands.
#ifndef ORVO_MESSAGE_MARKET_BY_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_MARKET_BY_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class MarketByPriceDomainMessageValidator {
 public:
  MarketByPriceDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_MARKET_BY_PRICE_DOMAIN_MESSAGE_VALIDATOR_H_
