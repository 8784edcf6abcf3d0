#include "Data/Impl/DomainValidatorRules.h"

#include "orvo/message/GenericMsgValidator.h"
#include "orvo/message/RespMsgValidator.h"

namespace orvo {
namespace internal {
namespace {

using message::GenericMsgValidator;
using message::MsgValidatorManager;
using message::RespMsgValidator;

// GenericMsg::PayloadFlag.
const BitList kGenericRequiredHints = bitList({0x10});

UInt8 validateAttribForGenericMsg(const Msg& msg, TextMessageInfo& info, const BitList& required,
                                  const BitList& notUsed) {
  const UInt8 hint = attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::requiredAttributeInfo(hint, info, required);
  if (warningGateOpen(status, info)) {
    status = combine(status, MsgValidatorManager::setNotUsedAttributeInfo(hint, info, notUsed));
  }
  return status;
}

UInt8 validateMasksForGenericMsg(const Msg& msg, TextMessageInfo& info, const BitList& notUsed) {
  UInt8 status = GenericMsgValidator::requiredHintMask(msg, info, kGenericRequiredHints);
  if (warningGateOpen(status, info)) {
    status = combine(status, GenericMsgValidator::setNotUsedHintMask(msg, info, notUsed));
  }
  return status;
}

}  // namespace

UInt8 combineNotUsedMasks(const Msg& msg, TextMessageInfo& info, UInt8 status, const BitList& hints,
                          const BitList& indications, const BitList& manifest) {
  status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, hints));
  status = combine(status, RespMsgValidator::setNotUsedIndicationMask(msg, info, indications));
  return combine(status, RespMsgValidator::setNotUsedManifestHintMask(msg, info, manifest));
}

UInt8 genericMsgValidate(const Msg& msg, TextMessageInfo& info, const BitList& requiredAttrib,
                         const BitList& notUsedAttrib, const BitList& notUsedHints) {
  const UInt8 attribStatus = validateAttribForGenericMsg(msg, info, requiredAttrib, notUsedAttrib);
  return combine(attribStatus, validateMasksForGenericMsg(msg, info, notUsedHints));
}

}  // namespace internal
}  // namespace orvo
