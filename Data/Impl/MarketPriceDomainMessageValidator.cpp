#include "orvo/message/MarketPriceDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"

namespace orvo {
namespace message {

common::UInt8 MarketPriceDomainMessageValidator::validateMessage(const common::Msg& msg,
                                                                 TextMessageInfo& info,
                                                                 bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, internal::kMarketPriceDomain);
}

}  // namespace message
}  // namespace orvo
