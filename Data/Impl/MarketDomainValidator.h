// The five market domains share every rule but that of the update; each
// class hands its texts and its update rule to these operations.
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

common::UInt8 validateMarketMessage(const common::Msg& msg, message::TextMessageInfo& info,
                                    bool isReissue, const MarketDomain& domain);

// The update rule of MarketByOrder, MarketByPrice and MarketMaker: the error
// is written whatever the number, so such an update never validates. The
// common update rule still runs for its texts.
common::UInt8 refuseEveryUpdate(const common::Msg& msg, message::TextMessageInfo& info,
                                bool isReissue, const char* text);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_MARKET_DOMAIN_VALIDATOR_H_
