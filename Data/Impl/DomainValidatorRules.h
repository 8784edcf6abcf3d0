// Rule sequences that several domains run with lists of their own.
#ifndef ORVO_DATA_IMPL_DOMAIN_VALIDATOR_RULES_H_
#define ORVO_DATA_IMPL_DOMAIN_VALIDATOR_RULES_H_

#include "Data/Impl/ValidatorChecks.h"

namespace orvo {
namespace internal {

// The not-used checks of a response on its hint mask, its indication mask
// and its manifest, in that order, combined into `status`.
UInt8 combineNotUsedMasks(const Msg& msg, TextMessageInfo& info, UInt8 status, const BitList& hints,
                          const BitList& indications, const BitList& manifest);

// A generic message: the required and (through the gate) not-used AttribInfo
// parts, then a payload and (through the gate) the not-used hints.
UInt8 genericMsgValidate(const Msg& msg, TextMessageInfo& info, const BitList& requiredAttrib,
                         const BitList& notUsedAttrib, const BitList& notUsedHints);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_DOMAIN_VALIDATOR_RULES_H_
