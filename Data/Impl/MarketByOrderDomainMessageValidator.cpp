#include "orvo/message/MarketByOrderDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"

namespace orvo {
namespace message {

common::UInt8 MarketByOrderDomainMessageValidator::validateMessage(const common::Msg& msg,
                                                                   TextMessageInfo& info,
                                                                   bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, internal::kMarketByOrderDomain);
}

}  // namespace message
}  // namespace orvo
