#include "orvo/message/ReqMsgValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AttribInfo.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_Vector;
using common::UInt8;
using internal::kInvalid;
using internal::kValid;
using internal::MaskCheck;
using internal::MaskRow;

// Bits of a request: the hint mask and the interaction type.
constexpr UInt8 kPriorityFlag = 0x01;
constexpr UInt8 kAttribInfoFlag = 0x04;
constexpr UInt8 kInitialImageFlag = 0x01;
constexpr UInt8 kInterestAfterRefreshFlag = 0x02;
constexpr UInt8 kInteractionBits = 0x07;
constexpr UInt8 kPause = 0x04;

constexpr MaskRow kNotUsedHintRows[] = {
    {0x01, 0x01, " Warning: Priority is set but it is not used \n"},
    {0x02, 0x02, " Warning: QualityOfService is set but it is not used \n"},
    {0x04, 0x04, " Warning: AttribInfo is set but it is not used \n"},
    {0x08, 0x08, " Warning: Header is set but it is not used \n"},
    {0x10, 0x10, " Warning: Payload is set but it is not used \n"},
};

constexpr MaskCheck kNotUsedHint =
    internal::notUsedCheck(kNotUsedHintRows, "Invalid HintMask for Request Msg: [", "] \n");

}  // namespace

UInt8 ReqMsgValidator::validateMessage(const Msg& msg, TextMessageInfo& info, bool isReissue) {
  UInt8 status = kValid;
  if (!(msg.getHintMask() & kAttribInfoFlag)) {
    info.errors().append("Required AttribInfo is not set.\n");
    status = kInvalid;
  }
  if (!isReissue && !(internal::interactionTypeOf(msg) & kInitialImageFlag)) {
    info.errors().append(
        "InteractionType without expected 'ReqMsg::InitialImageFlag' is Invalid. \n");
    return kInvalid;
  }
  return status;
}

UInt8 ReqMsgValidator::validateInteractionType(const Msg& msg, TextMessageInfo& info,
                                               bool isReissue, bool reissueSupported,
                                               bool pauseSupported) {
  const UInt8 interaction = internal::interactionTypeOf(msg) & kInteractionBits;
  if (!pauseSupported && interaction == kPause) {
    info.warnings().append(" Pause Request is not supported.\n ");
  }
  if (isReissue) {
    if (!reissueSupported) {
      info.warnings().append(" Reissue is not supported.\n ");
    } else if (interaction < 2 || interaction > 5) {
      info.errors().append("Invalid InteractionType for Reissue request. \n");
    }
    return kValid;
  }
  // A pause without interest after the refresh (4 and 5) is a snapshot.
  if (interaction >= kPause && !(interaction & kInterestAfterRefreshFlag)) {
    info.errors().append(
        "Non streaming (snapshot) request with 'ReqMsg::PauseFlag' is Invalid. \n");
  }
  return kValid;
}

UInt8 ReqMsgValidator::setNotUsedIndicationMask(const Msg& msg, TextMessageInfo& info,
                                                const ORVO_Vector<UInt8>& list, bool) {
  UInt8 hint = msg.getHintMask();
  if (internal::hasDefaultPriority(msg)) hint &= ~kPriorityFlag;
  return internal::checkList(hint, info, list, kNotUsedHint);
}

}  // namespace message
}  // namespace orvo
