// First stage of validation: the rules every message of a message type
// obeys, whatever its domain, and the two list checks on the hint mask of an
// AttribInfo. A list check walks a list of bit values in order and tells,
// for each, what is missing (errors) or set but not used (warnings).
//
// Every validator operation returns one of the three status codes below and
// holds no state, so validation may run on any number of threads at once.
#ifndef ORVO_MESSAGE_MSG_VALIDATOR_MANAGER_H_
#define ORVO_MESSAGE_MSG_VALIDATOR_MANAGER_H_

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class MsgValidatorManager {
 public:
  enum Status : common::UInt8 { MsgInvalid = 0, MsgValid = 1, MsgValidWithWarning = 2 };

  MsgValidatorManager() = delete;

  // Checks the message and model types, then applies the rules of the
  // message type. A message type outside 1..5 is reported and gives
  // MsgInvalid.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);

  // Errors for each listed AttribInfo bit that is clear in `attribHint`;
  // an unknown value is reported without changing the status.
  static common::UInt8 requiredAttributeInfo(common::UInt8 attribHint, TextMessageInfo& info,
                                             const common::ORVO_Vector<common::UInt8>& list,
                                             bool unused = false);
  // Warnings for each listed AttribInfo bit that is set in `attribHint`.
  static common::UInt8 setNotUsedAttributeInfo(common::UInt8 attribHint, TextMessageInfo& info,
                                               const common::ORVO_Vector<common::UInt8>& list,
                                               bool unused = false);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_MSG_VALIDATOR_MANAGER_H_
