// Fuzz target of the response message.
//
// Any bytes given to RespMsg::setEncodedBuffer either decode or raise one of
// the library's exceptions; the getters, a copy and a read of the payload must
// then work on whatever the message holds without reading outside memory.
// The first input byte picks a managed or unmanaged message and whether the
// rest is decoded twice into the same message, which keeps what the first
// decode set.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "orvo/common/Buffer.h"
#include "orvo/common/Exception.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/ElementListReadIterator.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/Manifest.h"
#include "orvo/message/RespMsg.h"

namespace {

using orvo::common::Buffer;
using orvo::common::Data;
using orvo::message::RespMsg;

volatile std::size_t sink;

void touch(const Buffer& buffer) {
  std::size_t sum = 0;
  for (int i = 0; i < buffer.size(); ++i) sum += buffer.c_buf()[i];
  sink = sink + sum;
}

template <class F>
void guarded(F call) {
  try {
    call();
  } catch (const orvo::common::Exception&) {
  }
}

void readPayload(const Data& payload) {
  if (payload.getDataType() == orvo::data::FieldListEnum) {
    orvo::data::FieldListReadIterator reader;
    guarded([&] {
      int steps = 0;
      for (reader.start(static_cast<const orvo::data::FieldList&>(payload));
           !reader.off() && steps < 1000; reader.forth(), ++steps) {
        sink = sink + static_cast<std::size_t>(reader.value().getFieldID());
        touch(reader.value().getData().getEncodedBuffer());
      }
    });
  } else if (payload.getDataType() == orvo::data::ElementListEnum) {
    orvo::data::ElementListReadIterator reader;
    guarded([&] {
      int steps = 0;
      for (reader.start(static_cast<const orvo::data::ElementList&>(payload));
           !reader.off() && steps < 1000; reader.forth(), ++steps) {
        sink = sink + reader.value().getName().length();
      }
    });
  } else {
    touch(payload.getEncodedBuffer());
  }
}

void readEverything(const RespMsg& msg) {
  sink = sink + msg.getHintMask() + msg.getIndicationMask() + msg.getRespType() +
         msg.getRespTypeNum() + msg.getMsgModelType();
  const auto& info = msg.getAttribInfo();
  sink = sink + info.getName().length() + info.getServiceName().length() + info.getServiceID() +
         info.getNameType() + info.getDataMask();
  readPayload(info.getAttrib());
  const auto& manifest = msg.getManifest();
  sink = sink + manifest.getSeqNum() + manifest.getFilteredCount() + manifest.getFilteredTime();
  touch(manifest.getItemGroup());
  touch(manifest.getPermissionData());
  touch(msg.getHeader());
  sink = sink + msg.getRespStatus().getStatusText().length() + msg.getRespStatus().getStatusCode();
  sink = sink + static_cast<std::size_t>(msg.getQualityOfService().getRate());
  sink = sink + msg.getPrincipalIdentity().getUserID();
  readPayload(msg.getPayload());
  guarded([&] { touch(msg.getEncodedBuffer()); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::uint8_t mode = data[0];
  std::vector<unsigned char> bytes(data + 1, data + size);
  Buffer input(bytes.data(), static_cast<int>(bytes.size()), static_cast<int>(bytes.size()), false);

  RespMsg msg((mode & 0x01) != 0);
  guarded([&] { msg.setEncodedBuffer(input); });
  if (mode & 0x02) guarded([&] { msg.setEncodedBuffer(input); });
  bytes.assign(bytes.size(), 0xEE);  // the message must not view the caller's bytes
  readEverything(msg);
  guarded([&] {
    RespMsg copy(msg);
    readEverything(copy);
  });
  msg.clear();
  readEverything(msg);
  return 0;
}
