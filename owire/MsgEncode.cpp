// Encoding of whole messages: the header, then the class's parts in the order
// of its layout, then the body up to the end of the message.
#include <cstddef>

#include "orvo/owire/owire_msg.h"
#include "owire/MsgLayout.h"
#include "owire/MsgPrimitives.h"
#include "owire/WireBytes.h"

namespace orvo {
namespace owire {
namespace {

int fits(bool written) { return written ? OWIRE_RET_SUCCESS : OWIRE_RET_BUFFER_TOO_SMALL; }

int putParts(WireWriter& out, const MsgPartList& list, UInt16 flags, const void* record);

int putKey(WireWriter& out, const OwireMsgKey& key) {
  if (!out.putU16(key.keyFlags)) return OWIRE_RET_BUFFER_TOO_SMALL;
  return putParts(out, msgKeyParts(), key.keyFlags, &key);
}

int putPart(WireWriter& out, const MsgPart& part, const void* record) {
  switch (part.kind) {
    case MsgPartKind::kU8:
      return fits(out.putU8(fieldAt<UInt8>(record, part.offset)));
    case MsgPartKind::kU16:
      return fits(out.putU16(fieldAt<UInt16>(record, part.offset)));
    case MsgPartKind::kVarU32:
      return fits(out.putVarint(fieldAt<UInt32>(record, part.offset)));
    case MsgPartKind::kI32:
      return fits(out.putU32(static_cast<UInt32>(fieldAt<Int32>(record, part.offset))));
    case MsgPartKind::kBuffer:
      return putBuffer(out, fieldAt<OwfBuffer>(record, part.offset));
    case MsgPartKind::kQos:
      return putQos(out, fieldAt<OwireQos>(record, part.offset));
    case MsgPartKind::kState:
      return putState(out, fieldAt<OwireState>(record, part.offset));
    case MsgPartKind::kKey:
      return putKey(out, fieldAt<OwireMsgKey>(record, part.offset));
  }
  return OWIRE_RET_FAILURE;
}

int putParts(WireWriter& out, const MsgPartList& list, UInt16 flags, const void* record) {
  for (int i = 0; i < list.count; ++i) {
    const MsgPart& part = list.parts[i];
    if (!partTravels(part, flags)) continue;
    const int rc = putPart(out, part, record);
    if (rc != OWIRE_RET_SUCCESS) return rc;
  }
  return OWIRE_RET_SUCCESS;
}

bool putHeader(WireWriter& out, const OwireMsgBase& base) {
  if (out.room() < kMsgHeaderSize) return false;
  out.putU8(base.msgClass);
  out.putU8(base.modelType);
  out.putU8(base.bodyFormat);
  out.putU32(static_cast<UInt32>(base.streamId));
  out.putU16(base.flags);
  return true;
}

UInt64 partsSize(const MsgPartList& list, UInt16 flags, const void* record);

UInt64 partSize(const MsgPart& part, const void* record) {
  switch (part.kind) {
    case MsgPartKind::kU8:
      return 1;
    case MsgPartKind::kU16:
      return 2;
    case MsgPartKind::kVarU32:
      return varintWidth(fieldAt<UInt32>(record, part.offset));
    case MsgPartKind::kI32:
      return 4;
    case MsgPartKind::kBuffer:
      return bufferSize(fieldAt<OwfBuffer>(record, part.offset));
    case MsgPartKind::kQos:
      return qosSize(fieldAt<OwireQos>(record, part.offset));
    case MsgPartKind::kState:
      return stateSize(fieldAt<OwireState>(record, part.offset));
    case MsgPartKind::kKey: {
      const OwireMsgKey& key = fieldAt<OwireMsgKey>(record, part.offset);
      return 2 + partsSize(msgKeyParts(), key.keyFlags, &key);
    }
  }
  return 0;
}

UInt64 partsSize(const MsgPartList& list, UInt16 flags, const void* record) {
  UInt64 size = 0;
  for (int i = 0; i < list.count; ++i) {
    if (partTravels(list.parts[i], flags)) size += partSize(list.parts[i], record);
  }
  return size;
}

}  // namespace

UInt64 msgEncodedSize(const OwireMsg& msg, const MsgClassLayout& layout) {
  return kMsgHeaderSize + partsSize(layout.parts, msg.msgBase.flags, &msg) +
         msg.msgBase.body.length;
}

}  // namespace owire
}  // namespace orvo

using orvo::owire::MsgClassLayout;
using orvo::owire::WireWriter;

int owireEncodeMsg(OwfEncodeIterator* iter, const OwireMsg* msg) {
  if (iter == nullptr || msg == nullptr || iter->buffer == nullptr) {
    return OWIRE_RET_INVALID_ARGUMENT;
  }
  if (iter->curPos == nullptr || iter->endPos < iter->curPos) return OWIRE_RET_INVALID_ARGUMENT;
  if (iter->majorVersion != 14) return OWIRE_RET_INVALID_VERSION;
  const MsgClassLayout* layout = orvo::owire::msgClassLayout(msg->msgBase.msgClass);
  if (layout == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const OwfBuffer& body = msg->msgBase.body;
  if (body.length != 0 && body.data == nullptr) return OWIRE_RET_INVALID_ARGUMENT;

  // Nothing is committed to the iterator until the whole message fits.
  WireWriter out(iter->curPos, iter->endPos);
  if (!orvo::owire::putHeader(out, msg->msgBase)) return OWIRE_RET_BUFFER_TOO_SMALL;
  const int rc = orvo::owire::putParts(out, layout->parts, msg->msgBase.flags, msg);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  if (!out.putBytes(body.data, body.length)) return OWIRE_RET_BUFFER_TOO_SMALL;
  iter->curPos = out.pos();
  return OWIRE_RET_SUCCESS;
}
