#include "orvo/message/RespMsgValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_Vector;
using common::UInt8;
using internal::kInvalid;
using internal::kValid;
using internal::kWarning;
using internal::MaskCheck;
using internal::MaskRow;

constexpr UInt8 kDirectoryModelType = 4;

constexpr MaskRow kRequiredIndicationRows[] = {
    {0x01, 0x01, "Required DoNotCacheFlag Indication is missing. \n"},
    {0x02, 0x02, "Required DoNotFilterFlag Indication is missing. \n"},
    {0x04, 0x04, "Required ClearCacheFlag Indication is missing. \n"},
    {0x08, 0x08, "Required RefreshCompleteFlag Indication is missing. \n"},
    {0x10, 0x10, "Required DoNotRippleFlag Indication is missing. \n"},
};

constexpr MaskRow kNotUsedIndicationRows[] = {
    {0x01, 0x01, " Warning: DoNotCache is set but it is not used.  \n"},
    {0x02, 0x02, " Warning: DoNotFilter is set but it is not used.  \n"},
    {0x04, 0x04, " Warning: ClearCache is set but it is not used.  \n"},
    {0x08, 0x08, " Warning: RefreshComplete is set but it is not used.  \n"},
    {0x10, 0x10, " Warning: DoNotRipple is set but it is not used.  \n"},
};

// No row for QualityOfServiceFlag: it cannot be required.
constexpr MaskRow kRequiredHintRows[] = {
    {0x01, 0x01, "Required RespTypeNum is missing. \n"},
    {0x02, 0x02, "Required RespStatus is missing. \n"},
    {0x08, 0x08, "Required AttribInfo is missing. \n"},
    {0x10, 0x10, "Required Manifest is missing. \n"},
    {0x20, 0x20, "Required Header is missing. \n"},
    {0x40, 0x40, "Required Payload is missing. \n"},
    {0x80, 0x80, "Required PrincipalIdentity is missing. \n"},
};

// The QualityOfServiceFlag row tests RespStatusFlag; applications rely on
// the warnings as they stand.
constexpr MaskRow kNotUsedHintRows[] = {
    {0x01, 0x01, " Warning: RespTypeNum is set but it is not used.  \n"},
    {0x02, 0x02, " Warning: RespStatus is set but it is not used.  \n"},
    {0x04, 0x02, " Warning: QualityOfService is set but it is not used.  \n"},
    {0x08, 0x08, " Warning: AttribInfo is set but it is not used.  \n"},
    {0x10, 0x10, " Warning: Manifest is set but it is not used.  \n"},
    {0x20, 0x20, " Warning: Header is set but it is not used.  \n"},
    {0x40, 0x40, " Warning: Payload is set but it is not used.  \n"},
    {0x80, 0x80, " Warning: PrincipalIdentity is set but it is not used.  \n"},
};

constexpr MaskCheck kRequiredIndication = internal::requiredCheck(
    kRequiredIndicationRows, "Invalid Required Indication Masks flag: [", "]. \n");
constexpr MaskCheck kNotUsedIndication = internal::notUsedCheck(
    kNotUsedIndicationRows, "Invalid IndicationMask flag for Response Msg: [", "]. \n");
constexpr MaskCheck kRequiredHint = internal::requiredCheck(
    kRequiredHintRows, "Invalid Required HintMasks flag for Response Msg: [", "]. \n");
constexpr MaskCheck kNotUsedHint =
    internal::notUsedCheck(kNotUsedHintRows, "Invalid HintMask flag for Response Msg: [", "]. \n");

// Wrong values speak through the error text only; the result stays 1.
UInt8 refreshRespMsgValidate(const Msg& msg, TextMessageInfo& info) {
  const UInt8 number = internal::respTypeNumOf(msg);
  if (number != 0 && number != 1) {
    internal::appendNumbered(info.errors(), "Response Refresh Msg has invalid RespTypeNum : [",
                             number, "]. \n");
  }
  if (!(msg.getHintMask() & RespMsg::RespStatusFlag) &&
      msg.getMsgModelType() != kDirectoryModelType) {
    info.errors().append("Required to have RespStatus in Response Refresh Msg. \n");
  }
  return kValid;
}

UInt8 updateRespMsgValidate(const Msg& msg, TextMessageInfo& info) {
  if (msg.getHintMask() & RespMsg::RespStatusFlag) {
    info.errors().append("Invalid to have RespStatus in Response Update Msg. \n");
    return kInvalid;
  }
  return kValid;
}

}  // namespace

UInt8 RespMsgValidator::validateMessage(const Msg& msg, TextMessageInfo& info, bool) {
  const common::Int32 respType = internal::respTypeOf(msg);
  switch (respType) {
    case RespMsg::RefreshResp:
      return refreshRespMsgValidate(msg, info);
    case RespMsg::StatusResp:
      return kValid;
    case RespMsg::UpdateResp:
      return updateRespMsgValidate(msg, info);
    default:
      internal::appendNumbered(info.errors(), "Response Msg has invalid RespType : [", respType,
                               "]. \n");
      return kInvalid;
  }
}

UInt8 RespMsgValidator::requiredIndicationMask(const Msg& msg, TextMessageInfo& info,
                                               const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getIndicationMask(), info, list, kRequiredIndication);
}

UInt8 RespMsgValidator::setNotUsedIndicationMask(const Msg& msg, TextMessageInfo& info,
                                                 const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getIndicationMask(), info, list, kNotUsedIndication);
}

UInt8 RespMsgValidator::requiredHintMask(const Msg& msg, TextMessageInfo& info,
                                         const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getHintMask(), info, list, kRequiredHint);
}

UInt8 RespMsgValidator::setNotUsedHintMask(const Msg& msg, TextMessageInfo& info,
                                           const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getHintMask(), info, list, kNotUsedHint);
}

// Kept apart from the table-driven checks: the ItemGroup and PermissionData
// entries fall through to the next one, and applications see that output.
UInt8 RespMsgValidator::setNotUsedManifestHintMask(const Msg& msg, TextMessageInfo& info,
                                                   const ORVO_Vector<UInt8>& list, bool) {
  const UInt8 mask = internal::manifestHintOf(msg);
  if (mask == 0) return kValid;
  UInt8 status = kValid;
  for (UInt8 value : list) {
    switch (value) {
      case 0x01:
        if (mask & Manifest::SeqFlag) {
          info.warnings().append(" Warning: SeqNum is set but it is not used. \n");
          status = kWarning;
        }
        continue;
      case 0x02:
        if (mask & Manifest::FilteredFlag) {
          info.warnings().append(
              " Warning: Conflated Time and Count are set but they are not used.  \n");
          status = kWarning;
        }
        continue;
      case 0x04:
        if (mask & Manifest::ItemGroupFlag) {
          info.warnings().append(" Warning: ItemGroup is set but it is not used.  \n");
        }
        [[fallthrough]];
      case 0x08:
        if (mask & Manifest::PermissionDataFlag) {
          info.warnings().append(" Warning: PermissionData is set but it is not used.  \n");
        }
        [[fallthrough]];
      default:
        internal::appendNumbered(info.warnings(), "Invalid Manifest flag for Response Msg: [",
                                 value, "] \n");
        status = kWarning;
    }
  }
  return status;
}

}  // namespace message
}  // namespace orvo
