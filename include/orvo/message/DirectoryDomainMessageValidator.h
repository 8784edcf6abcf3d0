// Rules of the Directory domain, the second stage of validateMsg for messages
// of that model type. The data mask (the filter) is required, the item name is not used. Reissues
// and pauses are not supported.
#ifndef ORVO_MESSAGE_DIRECTORY_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_DIRECTORY_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class DirectoryDomainMessageValidator {
 public:
  DirectoryDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_DIRECTORY_DOMAIN_MESSAGE_VALIDATOR_H_
