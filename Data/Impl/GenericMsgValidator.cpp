#include "orvo/message/GenericMsgValidator.h"

#include "Data/Impl/ValidatorChecks.h"

namespace orvo {
namespace message {
namespace {

using common::Msg;
using common::ORVO_Vector;
using common::UInt8;
using internal::MaskCheck;
using internal::MaskRow;

constexpr MaskRow kRequiredIndicationRows[] = {
    {0x01, 0x01, "Required MessageCompleteFlag Indication is missing. \n"},
};
constexpr MaskRow kNotUsedIndicationRows[] = {
    {0x01, 0x01, " Warning: MessageCompleteFlag is set but it is not used.  \n"},
};

constexpr MaskRow kRequiredHintRows[] = {
    {0x01, 0x01, "Required AttribInfo is missing. \n"},
    {0x02, 0x02, "Required Seq is missing. \n"},
    {0x04, 0x04, "Required SecondarySeq is missing. \n"},
    {0x08, 0x08, "Required Header is missing. \n"},
    {0x10, 0x10, "Required Payload is missing. \n"},
};
constexpr MaskRow kNotUsedHintRows[] = {
    {0x01, 0x01, " Warning: AttribInfo is set but it is not used.  \n"},
    {0x02, 0x02, " Warning: Seq is set but it is not used.  \n"},
    {0x04, 0x04, " Warning: SecondarySeq is set but it is not used.  \n"},
    {0x08, 0x08, " Warning: Header is set but it is not used.  \n"},
    {0x10, 0x10, " Warning: Payload is set but it is not used.  \n"},
};

constexpr MaskCheck kRequiredIndication = internal::requiredCheck(
    kRequiredIndicationRows, "Invalid Required IndicationMask flag for Generic Msg: [", "]. \n");
constexpr MaskCheck kNotUsedIndication = internal::notUsedCheck(
    kNotUsedIndicationRows, "Invalid IndicationMask flag for Generic Msg: [", "]. \n");
constexpr MaskCheck kRequiredHint =
    internal::requiredCheck(kRequiredHintRows, "Invalid Required Generic Hint Mask: [", "]. \n");
constexpr MaskCheck kNotUsedHint =
    internal::notUsedCheck(kNotUsedHintRows, "Invalid HintMask flag for Generic Msg: [", "] \n");

}  // namespace

UInt8 GenericMsgValidator::validateMessage(const Msg&, TextMessageInfo&, bool) {
  return internal::kValid;
}

UInt8 GenericMsgValidator::requiredIndicationMask(const Msg& msg, TextMessageInfo& info,
                                                  const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getIndicationMask(), info, list, kRequiredIndication);
}

UInt8 GenericMsgValidator::setNotUsedIndicationMask(const Msg& msg, TextMessageInfo& info,
                                                    const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getIndicationMask(), info, list, kNotUsedIndication);
}

UInt8 GenericMsgValidator::requiredHintMask(const Msg& msg, TextMessageInfo& info,
                                            const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getHintMask(), info, list, kRequiredHint);
}

UInt8 GenericMsgValidator::setNotUsedHintMask(const Msg& msg, TextMessageInfo& info,
                                              const ORVO_Vector<UInt8>& list, bool) {
  return internal::checkList(msg.getHintMask(), info, list, kNotUsedHint);
}

}  // namespace message
}  // namespace orvo
