// Pieces of the mapping between message objects and wire records that every
// message translator shares: the key from and to an AttribInfo, the quality
// of service, and the body format of a payload.
#ifndef ORVO_DATA_IMPL_RESP_MSG_TRANSLATOR_INT_H_
#define ORVO_DATA_IMPL_RESP_MSG_TRANSLATOR_INT_H_

#include "orvo/common/Data.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/common/Types.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace internal {

// Fills `key` from `attrib`; true when anything was written. The service
// name does not travel: it only marks the key as having service id 0.
bool setOWIRECommonAttribute(OwireMsgKey& key, const message::AttribInfo& attrib);

// Adds the key of `record`, if it has one, to `attrib`, with the service
// name and id the encoded message carries. An attrib is rebuilt in the
// attrib storage at version major.minor.
void setCommonAttribute(const message::OwireEncodedMsg& encoded, OwireMsg* record,
                        common::UInt8 major, common::UInt8 minor, message::AttribInfo& attrib);

// `buffer` views the encoded bytes of `data`; `format` is its wire type, or
// "no body" when there are no bytes.
void setOWIREData(common::UInt8& format, OwfBuffer& buffer, const common::Data& data);

// Gives a morphed storage object decoded bytes (setEncodedLite). A storage
// cleared by a morph into its own class has its encode iterator bound to the
// bytes it viewed before; left bound, getEncodedBuffer would measure the new
// bytes by the old iterator.
void setDecodedBytes(common::Data* storage, const OwfBuffer& bytes);
void unbindEncodeIterator(common::Data* storage);

// Quality of service between the object's numbers and the wire's classes.
void qualityOfServiceToWire(const common::QualityOfService& qos, OwireQos& wire);
common::QualityOfService qualityOfServiceFromWire(const OwireQos& wire);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_RESP_MSG_TRANSLATOR_INT_H_
