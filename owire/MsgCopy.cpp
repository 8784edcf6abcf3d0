// Whole-record operations that need no bytes of the wire: size, deep copy,
// release, validation and the key lookup.
//
// A copy is one block: the record, then the bytes of every copied buffer in
// the order the class's layout visits them.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>

#include "orvo/owire/owire_msg.h"
#include "owire/MsgLayout.h"

namespace orvo {
namespace owire {
namespace {

static_assert(alignof(OwireMsg) <= alignof(std::max_align_t),
              "an allocated copy must start at the block's start");

// Calls fn(buffer, copyMask) for every buffer of the record: those of the
// common part, then those of the class.
template <typename Record, typename Fn>
void forEachBuffer(const MsgClassLayout& layout, Record* record, Fn&& fn) {
  using Buffer = std::conditional_t<std::is_const<Record>::value, const OwfBuffer, OwfBuffer>;
  const MsgPartList& base = msgBaseBuffers();
  for (int i = 0; i < base.count; ++i) {
    fn(fieldAt<Buffer>(record, base.parts[i].offset), base.parts[i].copyMask);
  }
  for (int i = 0; i < layout.parts.count; ++i) {
    const MsgPart& part = layout.parts.parts[i];
    if (part.kind == MsgPartKind::kBuffer) {
      fn(fieldAt<Buffer>(record, part.offset), part.copyMask);
    } else if (part.kind == MsgPartKind::kState) {
      fn(fieldAt<Buffer>(record, static_cast<UInt16>(part.offset + offsetof(OwireState, text))),
         part.copyMask);
    }
  }
}

bool copied(const OwfBuffer& buffer, UInt32 bufferMask, UInt32 copyMask) {
  return (bufferMask & copyMask) != 0 && buffer.data != nullptr;
}

UInt64 copiedBytes(const OwireMsg& msg, const MsgClassLayout& layout, UInt32 copyMask) {
  UInt64 bytes = 0;
  forEachBuffer(layout, &msg, [&](const OwfBuffer& buffer, UInt32 bufferMask) {
    if (copied(buffer, bufferMask, copyMask)) bytes += buffer.length;
  });
  return bytes;
}

std::size_t alignmentPad(const void* at) {
  const auto address = reinterpret_cast<std::uintptr_t>(at);
  return (alignof(OwireMsg) - address % alignof(OwireMsg)) % alignof(OwireMsg);
}

// `block` has room for the aligned record and every copied byte.
OwireMsg* layCopy(const OwireMsg& msg, const MsgClassLayout& layout, UInt32 copyMask, char* block) {
  char* at = block + alignmentPad(block);
  auto* copy = reinterpret_cast<OwireMsg*>(at);
  std::memset(copy, 0, sizeof(OwireMsg));
  std::memcpy(copy, &msg, layout.recordSize);
  char* cursor = at + sizeof(OwireMsg);
  forEachBuffer(layout, copy, [&](OwfBuffer& buffer, UInt32 bufferMask) {
    if (!copied(buffer, bufferMask, copyMask)) {
      buffer = OwfBuffer{0, nullptr};
      return;
    }
    if (buffer.length != 0) std::memcpy(cursor, buffer.data, buffer.length);
    buffer.data = cursor;
    cursor += buffer.length;
  });
  return copy;
}

const MsgPart* keyPart(const MsgClassLayout& layout) {
  for (int i = 0; i < layout.parts.count; ++i) {
    if (layout.parts.parts[i].kind == MsgPartKind::kKey) return &layout.parts.parts[i];
  }
  return nullptr;
}

bool keyTravels(const OwireMsg& msg) {
  const MsgClassLayout* layout = msgClassLayout(msg.msgBase.msgClass);
  if (layout == nullptr) return false;
  const MsgPart* part = keyPart(*layout);
  return part != nullptr && partTravels(*part, msg.msgBase.flags);
}

}  // namespace
}  // namespace owire
}  // namespace orvo

using orvo::owire::MsgClassLayout;
using orvo::owire::msgClassLayout;

namespace {

// Bytes of a copy laid at an address `pad` bytes short of alignment.
UInt64 copySize(const OwireMsg& msg, const MsgClassLayout& layout, UInt32 copyMask,
                std::size_t pad) {
  return pad + sizeof(OwireMsg) + orvo::owire::copiedBytes(msg, layout, copyMask);
}

}  // namespace

int owireSizeOfMsg(const OwireMsg* msg, UInt32 copyMask) {
  if (msg == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const MsgClassLayout* layout = msgClassLayout(msg->msgBase.msgClass);
  if (layout == nullptr) return OWIRE_RET_INVALID_ARGUMENT;
  const UInt64 copyBytes = copySize(*msg, *layout, copyMask, alignof(OwireMsg) - 1);
  const UInt64 encodedBytes = orvo::owire::msgEncodedSize(*msg, *layout);
  const UInt64 size = copyBytes > encodedBytes ? copyBytes : encodedBytes;
  return size > INT_MAX ? OWIRE_RET_FAILURE : static_cast<int>(size);
}

OwireMsg* owireCopyMsg(const OwireMsg* msg, UInt32 copyMask, int storage, OwfBuffer* buffer) {
  if (msg == nullptr) return nullptr;
  const MsgClassLayout* layout = msgClassLayout(msg->msgBase.msgClass);
  if (layout == nullptr) return nullptr;
  if (storage == OWIRE_COPY_INTO_BUFFER) {
    if (buffer == nullptr || buffer->data == nullptr) return nullptr;
    const UInt64 need = copySize(*msg, *layout, copyMask, orvo::owire::alignmentPad(buffer->data));
    if (need > buffer->length) return nullptr;
    return orvo::owire::layCopy(*msg, *layout, copyMask, buffer->data);
  }
  const UInt64 need = copySize(*msg, *layout, copyMask, 0);
  if (need > SIZE_MAX) return nullptr;
  char* block = static_cast<char*>(std::malloc(static_cast<std::size_t>(need)));
  if (block == nullptr) return nullptr;
  return orvo::owire::layCopy(*msg, *layout, copyMask, block);
}

int owireReleaseCopiedMsg(OwireMsg* msg) {
  std::free(msg);
  return OWIRE_RET_SUCCESS;
}

int owireValidateMsg(const OwireMsg* msg) {
  if (msg == nullptr) return 0;
  const MsgClassLayout* layout = msgClassLayout(msg->msgBase.msgClass);
  if (layout == nullptr) return 0;
  bool sound = true;
  orvo::owire::forEachBuffer(*layout, msg, [&](const OwfBuffer& buffer, UInt32) {
    if (buffer.length != 0 && buffer.data == nullptr) sound = false;
  });
  return sound ? 1 : 0;
}

OwireMsgKey* owireGetMsgKey(OwireMsg* msg) {
  return msg != nullptr && orvo::owire::keyTravels(*msg) ? &msg->msgBase.key : nullptr;
}

const OwireMsgKey* owireGetMsgKey(const OwireMsg* msg) {
  return msg != nullptr && orvo::owire::keyTravels(*msg) ? &msg->msgBase.key : nullptr;
}
