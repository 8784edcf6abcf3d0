// Decoding of whole messages. Every read is bounded by the message's end, the
// walk over a class's parts is a fixed list, and nothing is allocated or
// copied: buffers in the record point into the input.
#include <cstdint>
#include <cstring>

#include "orvo/owire/owire_msg.h"
#include "owire/CodecInternal.h"
#include "owire/MsgLayout.h"
#include "owire/MsgPrimitives.h"
#include "owire/WireBytes.h"

namespace orvo {
namespace owire {
namespace {

int complete(bool read) { return read ? OWIRE_RET_SUCCESS : OWIRE_RET_INCOMPLETE_DATA; }

int getParts(WireReader& in, const MsgPartList& list, UInt16 flags, void* record);

int getKey(WireReader& in, OwireMsgKey* key) {
  if (!in.getU16(&key->keyFlags)) return OWIRE_RET_INCOMPLETE_DATA;
  return getParts(in, msgKeyParts(), key->keyFlags, key);
}

int getPart(WireReader& in, const MsgPart& part, void* record) {
  switch (part.kind) {
    case MsgPartKind::kU8:
      return complete(in.getU8(&fieldAt<UInt8>(record, part.offset)));
    case MsgPartKind::kU16:
      return complete(in.getU16(&fieldAt<UInt16>(record, part.offset)));
    case MsgPartKind::kVarU32:
      return getVarint32(in, &fieldAt<UInt32>(record, part.offset));
    case MsgPartKind::kI32: {
      UInt32 bits;
      if (!in.getU32(&bits)) return OWIRE_RET_INCOMPLETE_DATA;
      fieldAt<Int32>(record, part.offset) = static_cast<Int32>(bits);
      return OWIRE_RET_SUCCESS;
    }
    case MsgPartKind::kBuffer:
      return getBuffer(in, &fieldAt<OwfBuffer>(record, part.offset));
    case MsgPartKind::kQos:
      return getQos(in, &fieldAt<OwireQos>(record, part.offset));
    case MsgPartKind::kState:
      return getState(in, &fieldAt<OwireState>(record, part.offset));
    case MsgPartKind::kKey:
      return getKey(in, &fieldAt<OwireMsgKey>(record, part.offset));
  }
  return OWIRE_RET_FAILURE;
}

int getParts(WireReader& in, const MsgPartList& list, UInt16 flags, void* record) {
  for (int i = 0; i < list.count; ++i) {
    const MsgPart& part = list.parts[i];
    if (!partTravels(part, flags)) continue;
    const int rc = getPart(in, part, record);
    if (rc != OWIRE_RET_SUCCESS) return rc;
  }
  return OWIRE_RET_SUCCESS;
}

int getHeader(WireReader& in, OwireMsgBase* base) {
  UInt32 streamId;
  if (!in.getU8(&base->msgClass) || !in.getU8(&base->modelType) || !in.getU8(&base->bodyFormat) ||
      !in.getU32(&streamId) || !in.getU16(&base->flags)) {
    return OWIRE_RET_INCOMPLETE_DATA;
  }
  base->streamId = static_cast<Int32>(streamId);
  return OWIRE_RET_SUCCESS;
}

bool within(const char* p, const char* begin, const char* end) {
  const auto at = reinterpret_cast<std::uintptr_t>(p);
  return at >= reinterpret_cast<std::uintptr_t>(begin) &&
         at <= reinterpret_cast<std::uintptr_t>(end);
}

// The message is the value the iterator stands on, as for any primitive; its
// range must also lie inside the iterator's buffer.
bool findMessage(const OwfDecodeIterator& iter, const char** start, const char** end) {
  if (iter.buffer == nullptr) return false;
  if (iter.buffer->data == nullptr && iter.buffer->length != 0) return false;
  if (valueRange(&iter, start, end) != OWIRE_RET_SUCCESS) return false;
  const char* begin = iter.buffer->data;
  const char* bufferEnd = begin + iter.buffer->length;
  return within(*start, begin, bufferEnd) && within(*end, *start, bufferEnd);
}

}  // namespace
}  // namespace owire
}  // namespace orvo

using orvo::owire::MsgClassLayout;
using orvo::owire::WireReader;

int owireDecodeMsg(OwfDecodeIterator* iter, OwireMsg* msg) {
  if (iter == nullptr || msg == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  if (iter->majorVersion != 14) return OWIRE_RET_INVALID_VERSION;
  const char* start;
  const char* end;
  if (!orvo::owire::findMessage(*iter, &start, &end)) return OWIRE_RET_INVALID_ARGUMENT;
  std::memset(msg, 0, sizeof(*msg));

  WireReader in(start, end);
  OwireMsgBase& base = msg->msgBase;
  int rc = orvo::owire::getHeader(in, &base);
  if (rc != OWIRE_RET_SUCCESS) return rc;
  const MsgClassLayout* layout = orvo::owire::msgClassLayout(base.msgClass);
  if (layout == nullptr) return OWIRE_RET_INVALID_DATA;
  rc = orvo::owire::getParts(in, layout->parts, base.flags, msg);
  if (rc != OWIRE_RET_SUCCESS) return rc;

  base.body.length = static_cast<UInt32>(in.remaining());
  base.body.data = const_cast<char*>(in.pos());
  base.rawMessage.length = static_cast<UInt32>(end - start);
  base.rawMessage.data = const_cast<char*>(start);
  iter->curPos = end;
  return OWIRE_RET_SUCCESS;
}
