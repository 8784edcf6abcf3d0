#include "orvo/message/MarketByPriceDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"

namespace orvo {
namespace message {

common::UInt8 MarketByPriceDomainMessageValidator::validateMessage(const common::Msg& msg,
                                                                   TextMessageInfo& info,
                                                                   bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, internal::kMarketByPriceDomain);
}

}  // namespace message
}  // namespace orvo
