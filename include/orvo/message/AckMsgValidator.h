// Rules every acknowledgement obeys: a service by name or id, and an ack id.
#ifndef ORVO_MESSAGE_ACK_MSG_VALIDATOR_H_
#define ORVO_MESSAGE_ACK_MSG_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class AckMsgValidator {
 public:
  AckMsgValidator() = delete;

  // `msg` is an AckMsg.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_ACK_MSG_VALIDATOR_H_
