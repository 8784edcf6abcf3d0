#include "orvo/message/DomainMessageValidatorManager.h"

#include <array>

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/DictionaryDomainMessageValidator.h"
#include "orvo/message/DirectoryDomainMessageValidator.h"
#include "orvo/message/LoginDomainMessageValidator.h"
#include "orvo/message/MarketByOrderDomainMessageValidator.h"
#include "orvo/message/MarketByPriceDomainMessageValidator.h"
#include "orvo/message/MarketMakerDomainMessageValidator.h"
#include "orvo/message/MarketPriceDomainMessageValidator.h"
#include "orvo/message/MsgValidatorManager.h"
#include "orvo/message/ReqMsgValidator.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgValidator.h"
#include "orvo/message/SymbolListDomainMessageValidator.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_String;
using common::ORVO_Vector;
using common::UInt8;
using internal::bitList;
using internal::combine;
using internal::warningGateOpen;

struct validatorRefInfo {
  UInt8 (*validateMessage)(const Msg&, TextMessageInfo&, bool);
};

constexpr std::array<validatorRefInfo, 256> makeValidatorList() {
  std::array<validatorRefInfo, 256> list{};
  list[1] = {&LoginDomainMessageValidator::validateMessage};
  list[4] = {&DirectoryDomainMessageValidator::validateMessage};
  list[5] = {&DictionaryDomainMessageValidator::validateMessage};
  list[6] = {&MarketPriceDomainMessageValidator::validateMessage};
  list[7] = {&MarketByOrderDomainMessageValidator::validateMessage};
  list[8] = {&MarketByPriceDomainMessageValidator::validateMessage};
  list[9] = {&MarketMakerDomainMessageValidator::validateMessage};
  list[10] = {&SymbolListDomainMessageValidator::validateMessage};
  return list;
}

// Indexed by message model type; constant-initialised, so ready before any
// other static is.
constexpr std::array<validatorRefInfo, 256> _validatorList = makeValidatorList();

const char kServiceRequiredText[] =
    "Existence of either AttribInfo ServiceID or ServiceName is Required. \n";
const char kNameTypeInfoText[] =
    "Info: Recommended to set AttribInfo NameType. ORVO will Default to INSTRUMENT_OIC.  \n";

// ReqMsg::HeaderFlag.
const ORVO_Vector<UInt8> kRequestNotUsedHints = bitList({0x08});
// Name.
const ORVO_Vector<UInt8> kRequiredName = bitList({0x02});
// ID, Attrib, DataMask on a request; DataMask, ID, Attrib on a response.
const ORVO_Vector<UInt8> kRequestNotUsedAttrib = bitList({0x10, 0x20, 0x01});
const ORVO_Vector<UInt8> kResponseNotUsedAttrib = bitList({0x01, 0x10, 0x20});
// RespMsg::PayloadFlag.
const ORVO_Vector<UInt8> kRequiredPayload = bitList({0x40});
// RespMsg::HeaderFlag; for a status also PayloadFlag and QualityOfServiceFlag.
const ORVO_Vector<UInt8> kNotUsedHeader = bitList({0x20});
const ORVO_Vector<UInt8> kStatusNotUsedHints = bitList({0x20, 0x40, 0x04});

constexpr UInt8 kServiceBits = AttribInfo::ServiceNameFlag | AttribInfo::ServiceIDFlag;

// Name required, a service by name or by id, then the not-used list.
UInt8 validateMarketAttrib(const Msg& msg, TextMessageInfo& info, bool withNameTypeInfo,
                           const ORVO_Vector<UInt8>& notUsed) {
  const UInt8 hint = internal::attribInfoOf(msg).getHintMask();
  UInt8 status = MsgValidatorManager::requiredAttributeInfo(hint, info, kRequiredName, false);
  if (withNameTypeInfo && !(hint & AttribInfo::NameTypeFlag)) {
    info.information().append(kNameTypeInfoText);
  }
  status = combine(status, DomainMessageValidatorManager::checkServiceNameAndID(hint, info));
  if (warningGateOpen(status, info)) {
    status = combine(status, MsgValidatorManager::setNotUsedAttributeInfo(hint, info, notUsed));
  }
  return status;
}

bool hasAttribInfo(const Msg& msg) { return msg.getHintMask() & RespMsg::AttribInfoFlag; }

}  // namespace

UInt8 DomainMessageValidatorManager::validateMsg(const Msg& msg, ORVO_String* text,
                                                 bool isReissue) {
  ORVO_Vector<ORVO_String> texts;
  texts.resize(3);
  TextMessageInfo info(&texts);
  if (text != nullptr) info.setFlags(info.getFlags() | TextMessageInfo::TextWantedFlag);

  UInt8 status = MsgValidatorManager::validateMessage(msg, info, isReissue);
  const validatorRefInfo& domain = _validatorList[msg.getMsgModelType()];
  if (domain.validateMessage == nullptr) {
    internal::appendNumbered(info.errors(),
                             "No Message validation is supported for message model type: [",
                             msg.getMsgModelType(), "]. \n");
    throwIUE(info.errors());
  }
  if (status == MsgValidatorManager::MsgInvalid || !info.errors().empty()) {
    throwIUE(info.errors());
  }
  status = setReturnMsgStatus(status, domain.validateMessage(msg, info, isReissue));
  if (status == MsgValidatorManager::MsgInvalid || !info.errors().empty()) {
    throwIUE(info.errors());
  }
  // Without a text pointer nobody reads the information, so it leaves the
  // status alone.
  if (text != nullptr) {
    if (!info.warnings().empty()) text->append(info.warnings());
    if (!info.information().empty()) {
      text->append(info.information());
      status = MsgValidatorManager::MsgValidWithWarning;
    }
  }
  return status;
}

UInt8 DomainMessageValidatorManager::setReturnMsgStatus(UInt8 first, UInt8 second) {
  return combine(first, second);
}

// Differs from the warning gate of the rules in letting a status of 0 pass.
bool DomainMessageValidatorManager::isOkToValidateWarning(UInt8 status, TextMessageInfo& info) {
  if (status == MsgValidatorManager::MsgInvalid) return true;
  if (!info.errors().empty()) return false;
  if (info.isTextWanted()) return true;
  return info.warnings().empty();
}

UInt8 DomainMessageValidatorManager::checkServiceNameAndID(UInt8 attribHint,
                                                           TextMessageInfo& info) {
  if (attribHint & kServiceBits) return MsgValidatorManager::MsgValid;
  info.errors().append(kServiceRequiredText);
  return MsgValidatorManager::MsgInvalid;
}

void DomainMessageValidatorManager::throwIUE(const ORVO_String& text) {
  internal::raiseIllegalCall(text);
}

UInt8 DomainMessageValidatorManager::requestMsgValidate(const Msg& msg, TextMessageInfo& info,
                                                        bool isReissue) {
  UInt8 status = ReqMsgValidator::validateInteractionType(msg, info, isReissue, true, true);
  status = combine(status, validateAttribForRequestMsg(msg, info, isReissue));
  if (warningGateOpen(status, info)) {
    status =
        combine(status, ReqMsgValidator::setNotUsedIndicationMask(msg, info, kRequestNotUsedHints));
  }
  return status;
}

UInt8 DomainMessageValidatorManager::validateAttribForRequestMsg(const Msg& msg,
                                                                 TextMessageInfo& info, bool) {
  return validateMarketAttrib(msg, info, true, kRequestNotUsedAttrib);
}

UInt8 DomainMessageValidatorManager::validateAttribForResponseMsg(const Msg& msg,
                                                                  TextMessageInfo& info, bool) {
  return validateMarketAttrib(msg, info, false, kResponseNotUsedAttrib);
}

UInt8 DomainMessageValidatorManager::validateMasksForRefreshMsg(const Msg& msg,
                                                                TextMessageInfo& info,
                                                                bool isReissue) {
  UInt8 status = MsgValidatorManager::MsgValid;
  if (hasAttribInfo(msg)) status = validateAttribForResponseMsg(msg, info, isReissue);
  status = combine(status, RespMsgValidator::requiredHintMask(msg, info, kRequiredPayload));
  if (warningGateOpen(status, info)) {
    status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, kNotUsedHeader));
  }
  return status;
}

UInt8 DomainMessageValidatorManager::validateMasksForStatusMsg(const Msg& msg,
                                                               TextMessageInfo& info,
                                                               bool isReissue) {
  UInt8 status = MsgValidatorManager::MsgValid;
  if (hasAttribInfo(msg)) {
    status = validateAttribForResponseMsg(msg, info, isReissue);
    if (status == MsgValidatorManager::MsgInvalid) return status;
  }
  if (warningGateOpen(status, info)) {
    status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, kStatusNotUsedHints));
  }
  return status;
}

UInt8 DomainMessageValidatorManager::validateMasksForUpdateMsg(const Msg& msg,
                                                               TextMessageInfo& info,
                                                               bool isReissue) {
  UInt8 status = RespMsgValidator::requiredHintMask(msg, info, kRequiredPayload);
  if (hasAttribInfo(msg)) {
    status = combine(status, validateAttribForResponseMsg(msg, info, isReissue));
  }
  if (warningGateOpen(status, info)) {
    status = combine(status, RespMsgValidator::setNotUsedHintMask(msg, info, kNotUsedHeader));
  }
  return status;
}

}  // namespace message
}  // namespace orvo
