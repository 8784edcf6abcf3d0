#include "orvo/message/SymbolListDomainMessageValidator.h"

#include "Data/Impl/MarketDomainValidator.h"

namespace orvo {
namespace message {

common::UInt8 SymbolListDomainMessageValidator::validateMessage(const common::Msg& msg,
                                                                TextMessageInfo& info,
                                                                bool isReissue) {
  return internal::validateMarketMessage(msg, info, isReissue, internal::kSymbolListDomain);
}

}  // namespace message
}  // namespace orvo
