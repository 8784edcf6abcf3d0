// Rules every request obeys, whatever its domain, and the checks on a
// request that the domain validators call with their own lists.
#ifndef ORVO_MESSAGE_REQ_MSG_VALIDATOR_H_
#define ORVO_MESSAGE_REQ_MSG_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class ReqMsgValidator {
 public:
  ReqMsgValidator() = delete;

  // `msg` is a ReqMsg. It needs an AttribInfo, and unless it is a reissue
  // an interaction type with InitialImageFlag.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);
  // Judges the interaction type for a domain that does or does not support
  // reissues and pauses. Always MsgValid: it speaks only through the texts.
  static common::UInt8 validateInteractionType(const common::Msg& msg, TextMessageInfo& info,
                                               bool isReissue, bool reissueSupported,
                                               bool pauseSupported);
  // Despite its name, warns of the listed hint bits that are set. A
  // priority of class 1 and count 1 counts as not set.
  static common::UInt8 setNotUsedIndicationMask(const common::Msg& msg, TextMessageInfo& info,
                                                const common::ORVO_Vector<common::UInt8>& list,
                                                bool unused = false);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_REQ_MSG_VALIDATOR_H_
