// Rules every response obeys, whatever its domain, and the list checks on a
// response's masks that the domain validators call with their own lists of
// bit values. Required checks write errors and give MsgInvalid; not-used
// checks write warnings and give MsgValidWithWarning. The last argument of a
// list check is not used.
#ifndef ORVO_MESSAGE_RESP_MSG_VALIDATOR_H_
#define ORVO_MESSAGE_RESP_MSG_VALIDATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class RespMsgValidator {
 public:
  RespMsgValidator() = delete;

  // `msg` is a RespMsg. A refresh needs a status (Directory excepted) and a
  // resp type number of 0 or 1; an update must not carry a status.
  static common::UInt8 validateMessage(const common::Msg& msg, TextMessageInfo& info,
                                       bool isReissue);

  static common::UInt8 requiredIndicationMask(const common::Msg& msg, TextMessageInfo& info,
                                              const common::ORVO_Vector<common::UInt8>& list,
                                              bool unused = false);
  static common::UInt8 setNotUsedIndicationMask(const common::Msg& msg, TextMessageInfo& info,
                                                const common::ORVO_Vector<common::UInt8>& list,
                                                bool unused = false);
  // QualityOfServiceFlag cannot be required: it is reported as an invalid
  // list value.
  static common::UInt8 requiredHintMask(const common::Msg& msg, TextMessageInfo& info,
                                        const common::ORVO_Vector<common::UInt8>& list,
                                        bool unused = false);
  // The QualityOfServiceFlag entry looks at RespStatusFlag: a quality of
  // service alone draws no warning, a status does.
  static common::UInt8 setNotUsedHintMask(const common::Msg& msg, TextMessageInfo& info,
                                          const common::ORVO_Vector<common::UInt8>& list,
                                          bool unused = false);
  // Silent on an empty manifest. Otherwise the ItemGroupFlag entry goes on
  // to the PermissionDataFlag entry, and that one to the invalid-value line,
  // so either always ends in "Invalid Manifest flag".
  static common::UInt8 setNotUsedManifestHintMask(const common::Msg& msg, TextMessageInfo& info,
                                                  const common::ORVO_Vector<common::UInt8>& list,
                                                  bool unused = false);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_RESP_MSG_VALIDATOR_H_
