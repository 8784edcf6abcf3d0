// Helpers shared by the response message tests.
#ifndef ORVO_TESTS_MESSAGE_RESP_MSG_TEST_UTIL_H_
#define ORVO_TESTS_MESSAGE_RESP_MSG_TEST_UTIL_H_

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/FieldListReadIterator.h"
#include "orvo/data/FieldListWriteIterator.h"
#include "orvo/message/RespMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace resp_test {

using Fields = std::vector<std::pair<short, common::Int64>>;

inline void writeFields(data::FieldList& list, const Fields& fields) {
  data::FieldListWriteIterator writer;
  writer.start(list, data::FieldListWriteIterator::StandardDataFlag);
  for (const auto& f : fields) {
    data::DataBuffer value(false);
    value.setInt(f.second);
    data::FieldEntry entry(false);
    entry.setFieldID(f.first);
    entry.setData(value);
    writer.bind(entry);
  }
  writer.complete();
}

inline Fields readFields(const common::Data& payload) {
  Fields fields;
  data::FieldListReadIterator reader;
  for (reader.start(static_cast<const data::FieldList&>(payload)); !reader.off(); reader.forth()) {
    const data::FieldEntry& e = reader.value();
    fields.emplace_back(e.getFieldID(),
                        static_cast<const data::DataBuffer&>(e.getData(data::IntEnum)).getInt());
  }
  return fields;
}

inline std::vector<unsigned char> bytesOf(const common::Buffer& buffer) {
  return std::vector<unsigned char>(buffer.c_buf(), buffer.c_buf() + buffer.size());
}

inline common::Buffer viewOf(std::vector<unsigned char>& bytes) {
  return common::Buffer(bytes.data(), static_cast<int>(bytes.size()),
                        static_cast<int>(bytes.size()), false);
}

inline common::Buffer viewOf(const std::string& text) {
  auto* data = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
  return common::Buffer(data, static_cast<int>(text.size()), static_cast<int>(text.size()), false);
}

inline std::string textOf(const common::Buffer& buffer) {
  return std::string(reinterpret_cast<const char*>(buffer.c_buf()), buffer.size());
}

inline OwfBuffer owf(const std::string& text) {
  return OwfBuffer{static_cast<common::UInt32>(text.size()), const_cast<char*>(text.data())};
}

// The record a message encodes to, as the codec reads it back.
inline OwireMsg recordOf(const message::RespMsg& msg, std::vector<unsigned char>& storage) {
  storage = bytesOf(msg.getEncodedBuffer());
  OwfBuffer bytes{static_cast<common::UInt32>(storage.size()),
                  reinterpret_cast<char*>(storage.data())};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  setDecodeIteratorBuffer(&iter, &bytes);
  OwireMsg record;
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireDecodeMsg(&iter, &record));
  return record;
}

// Wire bytes of a record built by hand.
inline std::vector<unsigned char> encodeRecord(const OwireMsg& record) {
  const int size = owireSizeOfMsg(&record, OWIRE_CPMF_ALL);
  EXPECT_GT(size, 0);
  std::vector<unsigned char> bytes(size > 0 ? size : 1);
  OwfBuffer target{static_cast<common::UInt32>(bytes.size()),
                   reinterpret_cast<char*>(bytes.data())};
  OwfEncodeIterator iter;
  clearEncodeIterator(&iter);
  setEncodeIteratorBuffer(&iter, &target);
  EXPECT_EQ(OWIRE_RET_SUCCESS, owireEncodeMsg(&iter, &record));
  bytes.resize(getEncodedLength(&iter));
  return bytes;
}

inline OwireMsg zeroRecord(common::UInt8 msgClass) {
  OwireMsg record;
  std::memset(&record, 0, sizeof(record));
  record.msgBase.msgClass = msgClass;
  record.msgBase.bodyFormat = OWIRE_BODY_FORMAT_NONE;
  return record;
}

// Text and state of the InvalidUsageException `call` raised.
template <class F>
std::pair<std::string, int> failureOf(F call) {
  try {
    call();
  } catch (const common::InvalidUsageException& e) {
    return {e.what(), static_cast<int>(e.getStatus().getState())};
  }
  return {"no failure", 0};
}

}  // namespace resp_test
}  // namespace orvo

#endif  // ORVO_TESTS_MESSAGE_RESP_MSG_TEST_UTIL_H_
