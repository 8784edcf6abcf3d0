#include "orvo/message/MarketMakerDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"

namespace orvo {
namespace message {

common::UInt8 MarketMakerDomainMessageValidator::validateMessage(const common::Msg& msg,
                                                                 TextMessageInfo& info,
                                                                 bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, internal::kMarketMakerDomain);
}

}  // namespace message
}  // namespace orvo
