// Rules every post obeys, whatever its domain: how it is routed (item and
// service name, or on the stream), its post id and sequence number, and its
// payload.
#ifndef ORVO_MESSAGE_POST_MSG_VALIDATOR_H_
#define ORVO_MESSAGE_POST_MSG_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class PostMsgValidator {
 public:
  PostMsgValidator() = delete;

  // `msg` is a PostMsg.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_POST_MSG_VALIDATOR_H_
