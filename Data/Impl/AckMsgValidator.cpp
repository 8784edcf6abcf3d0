#include "orvo/message/AckMsgValidator.h"

#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/AttribInfo.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::UInt8;

constexpr UInt8 kAttribInfoFlag = 0x01;
constexpr UInt8 kServiceBits = AttribInfo::ServiceNameFlag | AttribInfo::ServiceIDFlag;

bool namesService(const Msg& msg) {
  return (msg.getHintMask() & kAttribInfoFlag) &&
         (internal::attribInfoOf(msg).getHintMask() & kServiceBits);
}

}  // namespace

UInt8 AckMsgValidator::validateMessage(const Msg& msg, TextMessageInfo& info, bool) {
  UInt8 status = internal::kValid;
  if (!namesService(msg)) {
    info.errors().append("Either Service Name or Serivce ID must exists in AckMsg. \n");
    status = internal::kInvalid;
  }
  if (internal::ackIdOf(msg) == 0) {
    info.errors().append("Required AckID is missing in AckMsg. \n");
    return internal::kInvalid;
  }
  return status;
}

}  // namespace message
}  // namespace orvo
