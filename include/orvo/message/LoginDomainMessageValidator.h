// Rules of the Login domain, the second stage of validateMsg for messages
// of that model type. A name is required, the service is not used; requests must keep interest
// after the refresh. Updates are accepted with a warning.
#ifndef ORVO_MESSAGE_LOGIN_DOMAIN_MESSAGE_VALIDATOR_H_
#define ORVO_MESSAGE_LOGIN_DOMAIN_MESSAGE_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class LoginDomainMessageValidator {
 public:
  LoginDomainMessageValidator() = delete;

  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_LOGIN_DOMAIN_MESSAGE_VALIDATOR_H_
