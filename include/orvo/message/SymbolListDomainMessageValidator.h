// Rules of the SymbolList domain, the second stage of validateMsg for messages
// of that model type. An update's resp type number must be 0.
#ifndef ORVO_MESSAGE_SYMBOL_LIST_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_SYMBOL_LIST_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class SymbolListDomainMessageValidator {
 public:
  SymbolListDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_SYMBOL_LIST_DOMAIN_MESSAGE_VALIDATOR_H_
