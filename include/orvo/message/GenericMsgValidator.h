// Generic messages have no rule of their own outside a domain; the list
// checks on their masks serve the domain validators.
#ifndef ORVO_MESSAGE_GENERIC_MSG_VALIDATOR_H_
#define ORVO_MESSAGE_GENERIC_MSG_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class GenericMsgValidator {
 public:
  GenericMsgValidator() = delete;

  // Always MsgValid.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);

  static common::UInt8 requiredIndicationMask(const common::Msg& msg, TextMessageInfo& info,
                                              const common::ORVO_Vector<common::UInt8>& list,
                                              bool unused = false);
  static common::UInt8 setNotUsedIndicationMask(const common::Msg& msg, TextMessageInfo& info,
                                                const common::ORVO_Vector<common::UInt8>& list,
                                                bool unused = false);
  static common::UInt8 requiredHintMask(const common::Msg& msg, TextMessageInfo& info,
                                        const common::ORVO_Vector<common::UInt8>& list,
                                        bool unused = false);
  static common::UInt8 setNotUsedHintMask(const common::Msg& msg, TextMessageInfo& info,
                                          const common::ORVO_Vector<common::UInt8>& list,
                                          bool unused = false);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_GENERIC_MSG_VALIDATOR_H_
