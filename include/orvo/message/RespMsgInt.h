// The library's internal side of RespMsg. As an object it is an unmanaged
// RespMsg that can sit in a list. Its static operations are the access the
// translators need to any RespMsg: they set decoded attributes without
// copying and without the checks of the public setters.
#ifndef ORVO_MESSAGE_RESP_MSG_INT_H_
#define ORVO_MESSAGE_RESP_MSG_INT_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Data.h"
#include "orvo/common/Types.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/RespMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {

class RespMsgInt : public RespMsg, public ORTSLink {
 public:
  // `size` is not used. The link points at itself.
  explicit RespMsgInt(common::UInt32 size);
  // Drops the payload pointer before the message is cleared.
  ~RespMsgInt() override;

  // ORs, or clears, the low byte of `mask` in the hint mask.
  static void setHintMaskInt(RespMsg& msg, common::UInt32 mask);
  static void unSetHintMaskInt(RespMsg& msg, common::UInt32 mask);
  // The encoded-bytes cache, as it stands.
  static common::Buffer& getEncodedBufferInt(RespMsg& msg);
  // Views `length` bytes at `data` as the own header (no copy) and sets
  // HeaderFlag; a header pointer set earlier still wins in getHeader().
  static void setHeaderInt(RespMsg& msg, const common::UInt8* data, int length);
  // Both values of the identity; no bit.
  static void setPublisherPrincipalIdentity(RespMsg& msg, common::UInt32 userAddress,
                                            common::UInt32 userID);
  // Makes the payload storage the body of `record`, in the class its format
  // names, at version major.minor. A record without body clears PayloadFlag.
  static void setDataInt(RespMsg& msg, const OwireMsg* record, common::UInt8 major,
                         common::UInt8 minor);
  // The storage the translators decode into (never a caller's object).
  static AttribInfo& ownAttribInfo(RespMsg& msg);
  static ManifestInt& ownManifest(RespMsg& msg);
  // The status and quality of service a decode writes: the pointed-to
  // object when one is set, else the own one.
  static common::RespStatus& decodedRespStatus(RespMsg& msg);
  static common::QualityOfService& decodedQualityOfService(RespMsg& msg);

  // Rebuilds `data` in place as a RespMsg with its managed flag; a RespMsg
  // already is only cleared. `msgType` is the message type asked for.
  static void shallowReConstructor(common::Data* data, common::UInt8 msgType);

  // Body and attrib formats carried in a DataBuffer rather than in a
  // container object: opaque, XML, ANSI page and the formats above 0xE0.
  static bool isOwireDataFormatAnOrvoDataBuffer(common::UInt8 format);
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_RESP_MSG_INT_H_
