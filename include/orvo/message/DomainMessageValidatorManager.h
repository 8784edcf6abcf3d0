// The public entry of validation, behind validateMsg of every message class:
// the rules of the message type (MsgValidatorManager), then those of the
// message model type (the domain validators). Errors end in a failure;
// warnings and information come back as text and as the return code.
//
// Also offers the default domain rules that the market domains rest on and
// the small checks the domain validators share. Holds no state.
#ifndef ORVO_MESSAGE_DOMAIN_MESSAGE_VALIDATOR_MANAGER_H_
#define ORVO_MESSAGE_DOMAIN_MESSAGE_VALIDATOR_MANAGER_H_

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace message {

class DomainMessageValidatorManager {
 public:
  DomainMessageValidatorManager() = delete;

  // Returns MsgValid or MsgValidWithWarning. With `text`, the warnings and
  // then the information are appended to it, and information makes the
  // result MsgValidWithWarning; without it the first warning ends the search
  // for more. Any error, and any model type without a domain validator,
  // fails (illegal call) with the error texts.
  static common::UInt8 validateMsg(const common::Msg& msg, common::ORVO_String* text,
                                   bool isReissue);

  // Combines two results: 0 when either is 0, else the larger.
  static common::UInt8 setReturnMsgStatus(common::UInt8 first, common::UInt8 second);
  static bool isOkToValidateWarning(common::UInt8 status, TextMessageInfo& info);
  // Error unless the AttribInfo hint names a service by name or by id.
  static common::UInt8 checkServiceNameAndID(common::UInt8 attribHint, TextMessageInfo& info);
  [[noreturn]] static void throwIUE(const common::ORVO_String& text);

  // Default domain rules. Request rules read ReqMsg bits, the others RespMsg
  // bits.
  static common::UInt8 requestMsgValidate(const common::Msg& msg, TextMessageInfo& info,
                                          bool isReissue);
  static common::UInt8 validateAttribForRequestMsg(const common::Msg& msg, TextMessageInfo& info,
                                                   bool isReissue);
  static common::UInt8 validateAttribForResponseMsg(const common::Msg& msg, TextMessageInfo& info,
                                                    bool isReissue);
  static common::UInt8 validateMasksForRefreshMsg(const common::Msg& msg, TextMessageInfo& info,
                                                  bool isReissue);
  static common::UInt8 validateMasksForStatusMsg(const common::Msg& msg, TextMessageInfo& info,
                                                 bool isReissue);
  static common::UInt8 validateMasksForUpdateMsg(const common::Msg& msg, TextMessageInfo& info,
                                                 bool isReissue);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_DOMAIN_MESSAGE_VALIDATOR_MANAGER_H_
