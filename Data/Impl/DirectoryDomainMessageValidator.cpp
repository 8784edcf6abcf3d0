#include "orvo/message/DirectoryDomainMessageValidator.h"

#include "Data/Impl/DomainValidatorRules.h"
#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/ReqMsgValidator.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgValidator.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_Vector;
using common::UInt8;
using internal::bitList;
using internal::combine;
using internal::warningGateOpen;

// AttribInfo: DataMask; on a request Name, NameType, ID, Attrib; on a
// response everything else; on a status everything.
const ORVO_Vector<UInt8> kRequiredAttrib = bitList({0x01});
const ORVO_Vector<UInt8> kRequestNotUsedAttrib = bitList({0x02, 0x04, 0x10, 0x20});
const ORVO_Vector<UInt8> kResponseNotUsedAttrib = bitList({0x02, 0x04, 0x08, 0x40, 0x10, 0x20});
const ORVO_Vector<UInt8> kStatusNotUsedAttrib = bitList({0x02, 0x04, 0x08, 0x40, 0x10, 0x20, 0x01});
// Request hints: Priority, QualityOfService, Header, Payload.
const ORVO_Vector<UInt8> kRequestNotUsedHints = bitList({0x01, 0x02, 0x08, 0x10});
// Response: Payload; QualityOfService, Header; DoNotRipple; conflation,
// ItemGroup, PermissionData.
const ORVO_Vector<UInt8> kRequiredPayload = bitList({0x40});
const ORVO_Vector<UInt8> kResponseNotUsedHints = bitList({0x04, 0x20});
const ORVO_Vector<UInt8> kResponseNotUsedIndications = bitList({0x10});
const ORVO_Vector<UInt8> kResponseNotUsedManifest = bitList({0x02, 0x04, 0x08});
// Status: QualityOfService, Header, Payload; DoNotRipple, DoNotCache,
// DoNotFilter; ItemGroup, PermissionData, SeqNum.
const ORVO_Vector<UInt8> kStatusNotUsedHints = bitList({0x04, 0x20, 0x40});
const ORVO_Vector<UInt8> kStatusNotUsedIndications = bitList({0x10, 0x01, 0x02});
const ORVO_Vector<UInt8> kStatusNotUsedManifest = bitList({0x04, 0x08, 0x01});
// Generic: Name; all else; Payload; SecondarySeq, Header.
const ORVO_Vector<UInt8> kGenericRequiredAttrib = bitList({0x02});
const ORVO_Vector<UInt8> kGenericNotUsedAttrib = bitList({0x04, 0x08, 0x40, 0x10, 0x20, 0x01});
const ORVO_Vector<UInt8> kGenericNotUsedHints = bitList({0x04, 0x08});

// The data mask of a directory takes any filter.
UInt8 validateDataMasks(UInt8) { return internal::kValid; }

UInt8 validateAttrib(const Msg& msg, TextMessageInfo& info, const ORVO_Vector<UInt8>& notUsed) {
  const UInt8 hint = internal::attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::requiredAttributeInfo(hint, info, kRequiredAttrib);
  status = combine(status, validateDataMasks(hint));
  if (warningGateOpen(status, info)) {
    status = combine(status, MsgValidatorManager::setNotUsedAttributeInfo(hint, info, notUsed));
  }
  return status;
}

UInt8 requestMsgValidate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  UInt8 status = ReqMsgValidator::validateInteractionType(msg, info, isReissue, false, false);
  status = combine(status, validateAttrib(msg, info, kRequestNotUsedAttrib));
  if (warningGateOpen(status, info)) {
    status =
        combine(status, ReqMsgValidator::setNotUsedIndicationMask(msg, info, kRequestNotUsedHints));
  }
  return status;
}

// Checks the refresh and the update.
UInt8 validateMasksForResponseMsg(const Msg& msg, TextMessageInfo& info) {
  const UInt8 number = internal::respTypeNumOf(msg);
  if (internal::respTypeOf(msg) == RespMsg::UpdateResp && number != 0) {
    internal::appendNumbered(info.errors(),
                             "Response Update RespTypeNum should be 0. Invalid RespTypeNum : [",
                             number, "]. \n");
  }
  UInt8 status = validateAttrib(msg, info, kResponseNotUsedAttrib);
  status = combine(status, RespMsgValidator::requiredHintMask(msg, info, kRequiredPayload));
  if (!warningGateOpen(status, info)) return status;
  return internal::combineNotUsedMasks(msg, info, status, kResponseNotUsedHints,
                                       kResponseNotUsedIndications, kResponseNotUsedManifest);
}

// Checks the status.
UInt8 validateMasksForUpdateMsg(const Msg& msg, TextMessageInfo& info) {
  const UInt8 hint = internal::attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::setNotUsedAttributeInfo(hint, info, kStatusNotUsedAttrib);
  if (!warningGateOpen(status, info)) return status;
  return internal::combineNotUsedMasks(msg, info, status, kStatusNotUsedHints,
                                       kStatusNotUsedIndications, kStatusNotUsedManifest);
}

// The status goes to the rule named after the update and the update to the
// one named after the response; the names are kept as they are.
UInt8 responseMsgValidate(const Msg& msg, TextMessageInfo& info) {
  const common::Int32 respType = internal::respTypeOf(msg);
  switch (respType) {
    case RespMsg::RefreshResp:
    case RespMsg::UpdateResp:
      return validateMasksForResponseMsg(msg, info);
    case RespMsg::StatusResp:
      return validateMasksForUpdateMsg(msg, info);
    default:
      internal::appendRespTypeRefusal(info.errors(), "Directory Response with response type [",
                                      respType);
      return internal::kInvalid;
  }
}

}  // namespace

UInt8 DirectoryDomainMessageValidator::validateMessage(const Msg& msg, TextMessageInfo& info,
                                                       bool isReissue) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return responseMsgValidate(msg, info);
    case Msg::ReqMsgEnum:
      return requestMsgValidate(msg, info, isReissue);
    case Msg::GenericMsgEnum:
      return internal::genericMsgValidate(msg, info, kGenericRequiredAttrib, kGenericNotUsedAttrib,
                                          kGenericNotUsedHints);
    default:
      return internal::refuseMsgType(info, " Validation of Directory domain for messageType[",
                                     msg.getMsgType());
  }
}

}  // namespace message
}  // namespace orvo
