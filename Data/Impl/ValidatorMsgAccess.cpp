#include "Data/Impl/ValidatorChecks.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"

#if __has_include("orvo/message/ReqMsg.h")
#include "orvo/message/ReqMsg.h"
#define ORVO_VALIDATOR_HAS_REQ 1
#endif
#if __has_include("orvo/message/GenericMsg.h")
#include "orvo/message/AckMsg.h"
#include "orvo/message/GenericMsg.h"
#include "orvo/message/PostMsg.h"
#define ORVO_VALIDATOR_HAS_GEN 1
#endif

// The only place where validation meets the concrete message classes; every
// other validator source reads a message through Msg alone.
namespace orvo {
namespace internal {
namespace {

using message::RespMsg;

const RespMsg& asResp(const Msg& msg) { return static_cast<const RespMsg&>(msg); }

// The priority that a request has unless one is set.
constexpr UInt8 kDefaultPriorityClass = 1;
constexpr common::UInt16 kDefaultPriorityCount = 1;

// An AttribInfo with nothing set, for a message type without one.
const message::AttribInfo& emptyAttribInfo() {
  static const message::AttribInfo empty(false);
  return empty;
}

}  // namespace

const message::AttribInfo& attribInfoOf(const Msg& msg) {
  switch (msg.getMsgType()) {
    case Msg::RespMsgEnum:
      return asResp(msg).getAttribInfo();
#ifdef ORVO_VALIDATOR_HAS_REQ
    case Msg::ReqMsgEnum:
      return static_cast<const message::ReqMsg&>(msg).getAttribInfo();
#endif
#ifdef ORVO_VALIDATOR_HAS_GEN
    case Msg::GenericMsgEnum:
      return static_cast<const message::GenericMsg&>(msg).getAttribInfo();
    case Msg::PostMsgEnum:
      return static_cast<const message::PostMsg&>(msg).getAttribInfo();
    case Msg::AckMsgEnum:
      return static_cast<const message::AckMsg&>(msg).getAttribInfo();
#endif
    default:
      return emptyAttribInfo();
  }
}

UInt8 interactionTypeOf(const Msg& msg) {
#ifdef ORVO_VALIDATOR_HAS_REQ
  return static_cast<const message::ReqMsg&>(msg).getInteractionType();
#else
  (void)msg;
  return 0;
#endif
}

bool hasDefaultPriority(const Msg& msg) {
#ifdef ORVO_VALIDATOR_HAS_REQ
  const auto& request = static_cast<const message::ReqMsg&>(msg);
  return request.getPriorityClass() == kDefaultPriorityClass &&
         request.getPriorityCount() == kDefaultPriorityCount;
#else
  (void)msg;
  return kDefaultPriorityClass == kDefaultPriorityCount;
#endif
}

common::Int32 respTypeOf(const Msg& msg) { return asResp(msg).getRespType(); }

UInt8 respTypeNumOf(const Msg& msg) { return asResp(msg).getRespTypeNum(); }

UInt8 manifestHintOf(const Msg& msg) { return asResp(msg).getManifest().getHintMask(); }

common::UInt32 ackIdOf(const Msg& msg) {
#ifdef ORVO_VALIDATOR_HAS_GEN
  return static_cast<const message::AckMsg&>(msg).getAckID();
#else
  (void)msg;
  return 0;
#endif
}

}  // namespace internal
}  // namespace orvo
