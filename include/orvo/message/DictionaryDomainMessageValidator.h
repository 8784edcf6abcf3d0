// Rules of the Dictionary domain, the second stage of validateMsg for messages
// of that model type. Name and data mask are required, and a service by name or id. Only requests,
// refreshes and statuses are supported.
#ifndef ORVO_MESSAGE_DICTIONARY_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_DICTIONARY_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class DictionaryDomainMessageValidator {
 public:
  DictionaryDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_DICTIONARY_DOMAIN_MESSAGE_VALIDATOR_H_
