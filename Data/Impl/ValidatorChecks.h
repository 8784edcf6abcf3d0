// What the validators share: the one list check behind every required and
// not-used check, the warning gate, the combining of results, the text
// helpers, and the access to the parts of a message that only its own class
// knows. Nothing here holds state.
#ifndef ORVO_DATA_IMPL_VALIDATOR_CHECKS_H_
#define ORVO_DATA_IMPL_VALIDATOR_CHECKS_H_

#include <cstddef>
#include <initializer_list>

#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/MsgValidatorManager.h"
#include "orvo/message/TextMessageInfo.h"

namespace orvo {
namespace internal {

using common::Msg;
using common::ORVO_String;
using common::UInt8;
using message::TextMessageInfo;
using BitList = common::ORVO_Vector<UInt8>;

constexpr UInt8 kInvalid = message::MsgValidatorManager::MsgInvalid;
constexpr UInt8 kValid = message::MsgValidatorManager::MsgValid;
constexpr UInt8 kWarning = message::MsgValidatorManager::MsgValidWithWarning;

// A rule table of bit values, built once at load and only read afterwards.
BitList bitList(std::initializer_list<UInt8> values);

// One row of a list check: the list value, the mask bit it tests (the same
// but for one response quirk) and the text written when the row fires.
struct MaskRow {
  UInt8 value;
  UInt8 bit;
  const char* text;
};

// A list check. A required check fires on a clear bit and writes errors with
// MsgInvalid; a not-used check fires on a set bit and writes warnings with
// MsgValidWithWarning. A list value without a row writes `invalidOpen`, the
// value and `invalidClose` to the same text, with the same status unless
// `invalidKeepsStatus`.
struct MaskCheck {
  const MaskRow* rows;
  std::size_t rowCount;
  bool firesWhenSet;
  const char* invalidOpen;
  const char* invalidClose;
  bool invalidKeepsStatus;
};

template <std::size_t N>
constexpr MaskCheck requiredCheck(const MaskRow (&rows)[N], const char* invalidOpen,
                                  const char* invalidClose, bool invalidKeepsStatus = false) {
  return MaskCheck{rows, N, false, invalidOpen, invalidClose, invalidKeepsStatus};
}

template <std::size_t N>
constexpr MaskCheck notUsedCheck(const MaskRow (&rows)[N], const char* invalidOpen,
                                 const char* invalidClose) {
  return MaskCheck{rows, N, true, invalidOpen, invalidClose, false};
}

UInt8 checkList(UInt8 mask, TextMessageInfo& info, const BitList& list, const MaskCheck& check);

// 0 when either is 0, else the larger.
inline UInt8 combine(UInt8 first, UInt8 second) {
  if (first == kInvalid || second == kInvalid) return kInvalid;
  return first > second ? first : second;
}

// The warning gate, tested before not-used checks: no error so far, and
// either somebody reads all warnings or none has been written yet.
inline bool warningGateOpen(UInt8 status, const TextMessageInfo& info) {
  return status != kInvalid && info.errors().empty() &&
         (info.isTextWanted() || info.warnings().empty());
}

// `open` + value in decimal + `close` appended to `target`.
inline void appendNumbered(ORVO_String& target, const char* open, long long value,
                           const char* close) {
  target.append(open).append(static_cast<common::Int64>(value)).append(close);
}

// The domain refusals: `prefix`, the number and the closing words, to the
// errors (or, for the Login response, the warnings).
inline UInt8 refuseMsgType(TextMessageInfo& info, const char* prefix, UInt8 msgType) {
  appendNumbered(info.errors(), prefix, msgType, "] is not Supported. \n");
  return kInvalid;
}
inline void appendRespTypeRefusal(ORVO_String& target, const char* prefix, common::Int32 respType) {
  appendNumbered(target, prefix, respType, "] is Not supported. \n");
}

// Parts of a message that live in its own class. `msg` must be of the class
// its message type names.
const message::AttribInfo& attribInfoOf(const Msg& msg);
UInt8 interactionTypeOf(const Msg& msg);
bool hasDefaultPriority(const Msg& msg);
common::Int32 respTypeOf(const Msg& msg);
UInt8 respTypeNumOf(const Msg& msg);
UInt8 manifestHintOf(const Msg& msg);
common::UInt32 ackIdOf(const Msg& msg);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_VALIDATOR_CHECKS_H_
