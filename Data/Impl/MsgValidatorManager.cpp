#include "orvo/message/MsgValidatorManager.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AckMsgValidator.h"
#include "orvo/message/GenericMsgValidator.h"
#include "orvo/message/PostMsgValidator.h"
#include "orvo/message/ReqMsgValidator.h"
#include "orvo/message/RespMsgValidator.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_Vector;
using common::UInt8;
using internal::MaskRow;

struct validatorRefInfo {
  UInt8 (*validateMessage)(const Msg&, TextMessageInfo&, bool);
};

// Indexed by message type.
constexpr validatorRefInfo _msgValidatorList[] = {
    {nullptr},
    {&RespMsgValidator::validateMessage},
    {&ReqMsgValidator::validateMessage},
    {&GenericMsgValidator::validateMessage},
    {&PostMsgValidator::validateMessage},
    {&AckMsgValidator::validateMessage},
};
constexpr unsigned kMsgTypeCount = sizeof(_msgValidatorList) / sizeof(_msgValidatorList[0]);

constexpr MaskRow kRequiredAttribRows[] = {
    {0x02, 0x02, "Required AttribInfo Name is missing.\n"},
    {0x04, 0x04, "Required AttribInfo NameType is missing.\n"},
    {0x01, 0x01, "Required AttribInfo DataMask is missing.\n"},
    {0x08, 0x08, "Required AttribInfo ServiceName is missing.\n"},
    {0x10, 0x10, "Required AttribInfo ID is missing.\n"},
    {0x20, 0x20, "Required AttribInfo Attrib is missing.\n"},
    {0x40, 0x40, "Required AttribInfo ServiceID is missing.\n"},
};

constexpr MaskRow kNotUsedAttribRows[] = {
    {0x02, 0x02, "Warning: AttribInfo Name is set but it is not used. \n"},
    {0x04, 0x04, "Warning: AttribInfo NameType is set but it is not used. \n"},
    {0x01, 0x01, "Warning: AttribInfo DataMask is set but it is not used. \n"},
    {0x08, 0x08, "Warning: AttribInfo ServiceName is set but it is not used.\n"},
    {0x10, 0x10, "Warning: AttribInfo ID is set but it is not used.\n"},
    {0x20, 0x20, "Warning: AttribInfo Attrib is set but it is not used.\n"},
    {0x40, 0x40, "Warning: AttribInfo ServiceID is set but it is not used.\n"},
};

constexpr const char kInvalidAttribOpen[] = "Invalid AttribInfoInfo flag: [";
constexpr const char kInvalidAttribClose[] = "] \n";

// An unknown value in a required list is told but does not fail the check.
constexpr internal::MaskCheck kRequiredAttrib =
    internal::requiredCheck(kRequiredAttribRows, kInvalidAttribOpen, kInvalidAttribClose, true);
constexpr internal::MaskCheck kNotUsedAttrib =
    internal::notUsedCheck(kNotUsedAttribRows, kInvalidAttribOpen, kInvalidAttribClose);

}  // namespace

UInt8 MsgValidatorManager::validateMessage(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  const UInt8 msgType = msg.getMsgType();
  const bool knownType = msgType >= 1 && msgType < kMsgTypeCount;
  if (!knownType) {
    internal::appendNumbered(info.errors(), "Invalid message type: [", msgType, "].\n");
  }
  if (msg.getMsgModelType() == 0) {
    internal::appendNumbered(info.errors(), "Invalid message model type: [", msg.getMsgModelType(),
                             "].\n");
  }
  // There is no rule to call for an unknown type; its error text fails it.
  if (!knownType) return MsgInvalid;
  return _msgValidatorList[msgType].validateMessage(msg, info, isReissue);
}

UInt8 MsgValidatorManager::requiredAttributeInfo(UInt8 attribHint, TextMessageInfo& info,
                                                 const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(attribHint, info, list, kRequiredAttrib);
}

UInt8 MsgValidatorManager::setNotUsedAttributeInfo(UInt8 attribHint, TextMessageInfo& info,
                                                   const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(attribHint, info, list, kNotUsedAttrib);
}

}  // namespace message
}  // namespace orvo
