#include "orvo/message/DictionaryDomainMessageValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/DomainMessageValidatorManager.h"
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
using internal::kInvalid;
using internal::kValid;
using internal::warningGateOpen;

// AttribInfo: Name, DataMask; NameType, ID, Attrib.
const ORVO_Vector<UInt8> kRequiredAttrib = bitList({0x02, 0x01});
const ORVO_Vector<UInt8> kNotUsedAttrib = bitList({0x04, 0x10, 0x20});
// Request hints: QualityOfService, Header, Payload.
const ORVO_Vector<UInt8> kRequestNotUsedHints = bitList({0x02, 0x08, 0x10});
// Response: Payload; DoNotFilter, DoNotRipple; QualityOfService, Header;
// conflation and, on a refresh, ItemGroup.
const ORVO_Vector<UInt8> kRequiredPayload = bitList({0x40});
const ORVO_Vector<UInt8> kNotUsedIndications = bitList({0x02, 0x10});
const ORVO_Vector<UInt8> kNotUsedHints = bitList({0x04, 0x20});
const ORVO_Vector<UInt8> kRefreshNotUsedManifest = bitList({0x02, 0x04});
const ORVO_Vector<UInt8> kStatusNotUsedManifest = bitList({0x02});

const char kRespTypeNumText[] = "Response Refresh Msg for Dictionary has invalid RespTypeNum : [";

constexpr UInt8 kDataMaskBit = 0x01;
constexpr UInt8 kFilterBits = 0x0F;

// Judges the value it is given for a data mask with no filter bit. It is
// given the AttribInfo hint mask, whose DataMaskFlag is itself a filter bit,
// so the rule never speaks and any data mask passes; kept as it stands.
UInt8 validateDataMasks(UInt8 attribHint, TextMessageInfo& info) {
  const bool hasDataMask = (attribHint & kDataMaskBit) != 0;
  const bool hasFilter = (attribHint & kFilterBits) != 0;
  if (hasDataMask && !hasFilter) {
    info.errors().append("AttribInfo DataMask for Dictionary contains invalid filter flags. \n");
    return kInvalid;
  }
  return kValid;
}

// The same for the request and the response.
UInt8 validateAttrib(const Msg& msg, TextMessageInfo& info) {
  const UInt8 hint = internal::attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::requiredAttributeInfo(hint, info, kRequiredAttrib);
  status = combine(status, validateDataMasks(hint, info));
  status = combine(status, DomainMessageValidatorManager::checkServiceNameAndID(hint, info));
  if (warningGateOpen(status, info)) {
    status =
        combine(status, MsgValidatorManager::setNotUsedAttributeInfo(hint, info, kNotUsedAttrib));
  }
  return status;
}

UInt8 requestMsgValidate(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  UInt8 status = ReqMsgValidator::validateInteractionType(msg, info, isReissue, false, false);
  status = combine(status, validateAttrib(msg, info));
  if (warningGateOpen(status, info)) {
    status =
        combine(status, ReqMsgValidator::setNotUsedIndicationMask(msg, info, kRequestNotUsedHints));
  }
  return status;
}

bool refuseRespTypeNum(const Msg& msg, TextMessageInfo& info) {
  const UInt8 number = internal::respTypeNumOf(msg);
  if (number == 0) return false;
  internal::appendNumbered(info.errors(), kRespTypeNumText, number, "]. \n");
  return true;
}

// Checks the refresh.
UInt8 validateMasksForResponseMsg(const Msg& msg, TextMessageInfo& info) {
  UInt8 status = refuseRespTypeNum(msg, info) ? kInvalid : kValid;
  status = combine(status, RespMsgValidator::requiredHintMask(msg, info, kRequiredPayload));
  status = combine(status, validateAttrib(msg, info));
  if (!warningGateOpen(status, info)) return status;
  status =
      combine(status, RespMsgValidator::setNotUsedIndicationMask(msg, info, kNotUsedIndications));
  status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, kNotUsedHints));
  return combine(status,
                 RespMsgValidator::setNotUsedManifestHintMask(msg, info, kRefreshNotUsedManifest));
}

UInt8 validateMasksForStatusMsg(const Msg& msg, TextMessageInfo& info) {
  if (refuseRespTypeNum(msg, info)) return kInvalid;
  if (!warningGateOpen(kValid, info)) return kValid;
  const UInt8 hint = internal::attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::setNotUsedAttributeInfo(hint, info, kNotUsedAttrib);
  status =
      combine(status, RespMsgValidator::setNotUsedIndicationMask(msg, info, kNotUsedIndications));
  status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, kNotUsedHints));
  return combine(status,
                 RespMsgValidator::setNotUsedManifestHintMask(msg, info, kStatusNotUsedManifest));
}

UInt8 responseMsgValidate(const Msg& msg, TextMessageInfo& info) {
  const common::Int32 respType = internal::respTypeOf(msg);
  switch (respType) {
    case RespMsg::RefreshResp:
      return validateMasksForResponseMsg(msg, info);
    case RespMsg::StatusResp:
      return validateMasksForStatusMsg(msg, info);
    default:
      internal::appendRespTypeRefusal(info.errors(), "Dictionary Response with response type [",
                                      respType);
      return kInvalid;
  }
}

}  // namespace

UInt8 DictionaryDomainMessageValidator::validateMessage(const Msg& msg, TextMessageInfo& info,
                                                        bool isReissue) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return responseMsgValidate(msg, info);
    case Msg::ReqMsgEnum:
      return requestMsgValidate(msg, info, isReissue);
    default:
      return internal::refuseMsgType(info, "Validation of Dictionary domain for messageType[",
                                     msg.getMsgType());
  }
}

}  // namespace message
}  // namespace orvo
