#include "orvo/message/PostMsgValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AttribInfo.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::UInt8;
using internal::kInvalid;
using internal::kValid;
using internal::kWarning;

// Bits of a post's hint and indication masks.
constexpr UInt8 kAttribInfoFlag = 0x01;
constexpr UInt8 kPayloadFlag = 0x04;
constexpr UInt8 kPostIDFlag = 0x08;
constexpr UInt8 kSeqFlag = 0x10;
constexpr UInt8 kFirstPartFlag = 0x01;
constexpr UInt8 kLastPartFlag = 0x02;
constexpr UInt8 kWantAckFlag = 0x04;

constexpr UInt8 kItemAndService = AttribInfo::NameFlag | AttribInfo::ServiceNameFlag;

bool isRoutedByItemAndService(const Msg& msg) {
  return (msg.getHintMask() & kAttribInfoFlag) &&
         (internal::attribInfoOf(msg).getHintMask() & kItemAndService) == kItemAndService;
}

bool isSinglePart(UInt8 indication) {
  return (indication & (kFirstPartFlag | kLastPartFlag)) == (kFirstPartFlag | kLastPartFlag);
}

// An error leaves a warning status standing: the error text decides anyway.
UInt8 failUnlessWarned(UInt8 status) { return status == kValid ? kInvalid : status; }

}  // namespace

UInt8 PostMsgValidator::validateMessage(const Msg& msg, TextMessageInfo& info, bool) {
  UInt8 status = kValid;
  if (isRoutedByItemAndService(msg)) {
    if (internal::attribInfoOf(msg).getHintMask() & AttribInfo::ServiceIDFlag) {
      info.errors().append("Both Service Name and Service ID are not allowed in PostMsg. \n");
      status = kInvalid;
    }
  } else {
    info.warnings().append(
        " Does not contains Item and SeriveName. This post message can be ONLY submited "
        "onStream. \n");
    status = kWarning;
  }
  const UInt8 hint = msg.getHintMask();
  const UInt8 indication = msg.getIndicationMask();
  if ((indication & kWantAckFlag) && !(hint & kPostIDFlag)) {
    info.errors().append("Invalid PostMsg requesting acknowledgement with no PostID. \n");
    status = failUnlessWarned(status);
  } else if (!isSinglePart(indication) &&
             (hint & (kPostIDFlag | kSeqFlag)) != (kPostIDFlag | kSeqFlag)) {
    info.errors().append("Invalid multi-part PostMsg with no PostID or SequenceNo. \n");
    status = failUnlessWarned(status);
  }
  if (!(hint & kPayloadFlag)) {
    info.errors().append("Required payload for Post Msg is missing. \n");
    status = failUnlessWarned(status);
  }
  return status;
}

}  // namespace message
}  // namespace orvo
