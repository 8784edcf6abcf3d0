#include "orvo/message/LoginDomainMessageValidator.h"

#include "Data/Impl/DomainValidatorRules.h"
#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AttribInfo.h"
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

constexpr UInt8 kInterestAfterRefreshFlag = 0x02;

// AttribInfo: Name; ServiceName, ServiceID, ID, DataMask.
const ORVO_Vector<UInt8> kRequiredAttrib = bitList({0x02});
const ORVO_Vector<UInt8> kNotUsedAttrib = bitList({0x08, 0x40, 0x10, 0x01});
// Request hints: Priority, QualityOfService, Header, Payload.
const ORVO_Vector<UInt8> kRequestNotUsedHints = bitList({0x01, 0x02, 0x08, 0x10});
// Response: RefreshComplete; Header, QualityOfService; DoNotCache,
// DoNotRipple (and DoNotFilter on a status); ItemGroup, PermissionData,
// conflation.
const ORVO_Vector<UInt8> kRefreshRequiredIndications = bitList({0x08});
const ORVO_Vector<UInt8> kResponseNotUsedHints = bitList({0x20, 0x04});
const ORVO_Vector<UInt8> kRefreshNotUsedIndications = bitList({0x01, 0x10});
const ORVO_Vector<UInt8> kStatusNotUsedIndications = bitList({0x01, 0x10, 0x02});
const ORVO_Vector<UInt8> kNotUsedManifest = bitList({0x04, 0x08, 0x02});
// Generic: Name; NameType, ServiceName, ServiceID, ID; Seq, SecondarySeq,
// Header.
const ORVO_Vector<UInt8> kGenericNotUsedAttrib = bitList({0x04, 0x08, 0x40, 0x10});
const ORVO_Vector<UInt8> kGenericNotUsedHints = bitList({0x02, 0x04, 0x08});

UInt8 attribHintOf(const Msg& msg) { return internal::attribInfoOf(msg).getHintMask(); }

UInt8 validateInteractionTypeForRequestMsg(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  if (isReissue || (internal::interactionTypeOf(msg) & kInterestAfterRefreshFlag)) {
    return internal::kValid;
  }
  info.errors().append("Request without expected ReqMsg::InterestAfterRefreshFlag is Invalid. \n");
  return internal::kInvalid;
}

UInt8 validateAttribForRequestMsg(const Msg& msg, TextMessageInfo& info) {
  const UInt8 hint = attribHintOf(msg);
  UInt8 status = MsgValidatorManager::requiredAttributeInfo(hint, info, kRequiredAttrib);
  if (!(hint & AttribInfo::NameTypeFlag)) {
    info.information().append(
        "Info: Recommended to set AttribInfo NameType. ORVO will default to USER_NAME.  \n");
  }
  if (warningGateOpen(status, info)) {
    status =
        combine(status, MsgValidatorManager::setNotUsedAttributeInfo(hint, info, kNotUsedAttrib));
  }
  return status;
}

UInt8 requestMsgValidate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  UInt8 status = ReqMsgValidator::validateInteractionType(msg, info, isReissue, true, true);
  status = combine(status, validateInteractionTypeForRequestMsg(msg, info, isReissue));
  status = combine(status, validateAttribForRequestMsg(msg, info));
  if (warningGateOpen(status, info)) {
    status =
        combine(status, ReqMsgValidator::setNotUsedIndicationMask(msg, info, kRequestNotUsedHints));
  }
  return status;
}

UInt8 validateMasksForResponseMsg(const Msg& msg, TextMessageInfo& info) {
  const bool isRefresh = internal::respTypeOf(msg) == RespMsg::RefreshResp;
  UInt8 status = internal::kValid;
  if (isRefresh) {
    status = RespMsgValidator::requiredIndicationMask(msg, info, kRefreshRequiredIndications);
  }
  if (!warningGateOpen(status, info)) return status;
  status = internal::combineNotUsedMasks(
      msg, info, status, kResponseNotUsedHints,
      isRefresh ? kRefreshNotUsedIndications : kStatusNotUsedIndications, kNotUsedManifest);
  return combine(status, MsgValidatorManager::setNotUsedAttributeInfo(attribHintOf(msg), info,
                                                                      kNotUsedAttrib));
}

UInt8 responseMsgValidate(const Msg& msg, TextMessageInfo& info) {
  const common::Int32 respType = internal::respTypeOf(msg);
  if (respType == RespMsg::RefreshResp || respType == RespMsg::StatusResp) {
    return validateMasksForResponseMsg(msg, info);
  }
  internal::appendRespTypeRefusal(info.warnings(), "Login Response with response type [", respType);
  return internal::kWarning;
}

}  // namespace

UInt8 LoginDomainMessageValidator::validateMessage(const Msg& msg, TextMessageInfo& info,
                                                   bool isReissue) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return responseMsgValidate(msg, info);
    case Msg::ReqMsgEnum:
      return requestMsgValidate(msg, info, isReissue);
    case Msg::GenericMsgEnum:
      return internal::genericMsgValidate(msg, info, kRequiredAttrib, kGenericNotUsedAttrib,
                                          kGenericNotUsedHints);
    case Msg::PostMsgEnum:
    case Msg::AckMsgEnum:
      return internal::kValid;
    default:
      return internal::refuseMsgType(info, " Validation of Login domain for messageType[",
                                     msg.getMsgType());
  }
}

}  // namespace message
}  // namespace orvo
