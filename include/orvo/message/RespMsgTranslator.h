// Maps a RespMsg to the wire record of a refresh, status or update and back.
// Each direction drops what the other side has no place for: a refresh does
// not carry DoNotFilterFlag or DoNotRippleFlag, an update no quality of
// service or item group, a status no payload. A record filled by encode
// points into the message and is valid only while the message is unchanged.
#ifndef ORVO_MESSAGE_RESP_MSG_TRANSLATOR_H_
#define ORVO_MESSAGE_RESP_MSG_TRANSLATOR_H_

#include "orvo/common/Msg.h"
#include "orvo/common/Types.h"
#include "orvo/message/EncodedMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {

class RespMsgTranslator {
 public:
  RespMsgTranslator() = delete;

  // Same as internalEncode.
  static void encode(const common::Msg* msg, const OwireMsg& record);
  // Fills `record`, which the caller has zeroed, from the RespMsg `msg`
  // (written through the const reference). A resp type outside 1..3 leaves
  // the record untouched. A status on an update is an internal failure and
  // is left out.
  static void internalEncode(const common::Msg* msg, const OwireMsg& record);
  // Adds the content of the refresh, status or update record held by
  // `encoded` (an OwireEncodedMsg) to the RespMsg `msg`: bits set before
  // stay. With `keepEncoded` the message's encoded bytes view the record's
  // whole message, which must then outlive the message. Decoded parts view
  // the record's bytes, and an item group set on `encoded` views its bytes.
  static void decode(const EncodedMsg* encoded, common::Msg* msg, common::UInt8 major,
                     common::UInt8 minor, bool keepEncoded);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_RESP_MSG_TRANSLATOR_H_
