// The five market domains share every rule but that of the update. Each
// class is one of the descriptions below, with its texts and its update
// rule, handed to validateMarketMessage.
#ifndef ORVO_DATA_IMPL_MARKET_DOMAIN_VALIDATOR_H_
#define ORVO_DATA_IMPL_MARKET_DOMAIN_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace internal {

struct MarketDomain {
  // " Validation of <Domain> domain for messageType["
  const char* msgTypePrefix;
  // "<Domain> Response with response type ["
  const char* respTypePrefix;
  common::UInt8 (*validateMasksForUpdateMsg)(const common::Msg&, message::TextMessageInfo&,
                                             bool isReissue);
};

extern const MarketDomain kMarketPriceDomain;
extern const MarketDomain kMarketByOrderDomain;
extern const MarketDomain kMarketByPriceDomain;
extern const MarketDomain kMarketMakerDomain;
extern const MarketDomain kSymbolListDomain;

common::UInt8 validateMarketMessage(const common::Msg& msg, message::TextMessageInfo& info,
                                    bool isReissue, const MarketDomain& domain);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_MARKET_DOMAIN_VALIDATOR_H_
