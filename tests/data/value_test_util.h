// Helpers shared by the value tests: wire bytes of one primitive and the
// text and shape of a raised failure.
#ifndef ORVO_TESTS_DATA_VALUE_TEST_UTIL_H_
#define ORVO_TESTS_DATA_VALUE_TEST_UTIL_H_

#include <string>
#include <vector>

#include "orvo/common/Buffer.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/OutOfRangeException.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace testing {

// What a call raised: the exception class, its text and its state.
struct Raised {
  std::string kind;  // "usage", "range" or "none"
  std::string text;
  int state = 0;
};

template <class F>
Raised raisedBy(F call) {
  try {
    call();
  } catch (const common::OutOfRangeException& e) {
    return {"range", e.what(), static_cast<int>(e.getStatus().getState())};
  } catch (const common::InvalidUsageException& e) {
    return {"usage", e.what(), static_cast<int>(e.getStatus().getState())};
  }
  return {"none", "", 0};
}

// The codec's content bytes of one primitive value (null: blank).
inline std::vector<char> wireBytes(common::UInt8 type, const void* value) {
  std::vector<char> bytes(64);
  OwfBuffer buffer{static_cast<UInt32>(bytes.size()), bytes.data()};
  OwfEncodeIterator iter{};
  clearEncodeIterator(&iter);
  setEncodeIteratorBuffer(&iter, &buffer);
  const int ret = owireEncodePrimitiveType(&iter, type, value);
  if (ret < 0) return {};
  bytes.resize(getEncodedLength(&iter));
  return bytes;
}

// Hands `bytes` to `value` as the wire bytes of a value of `type`, the way
// an entry does. The bytes must outlive an unmanaged `value`.
inline void holdWire(data::DataBuffer& value, const std::vector<char>& bytes, common::UInt8 type) {
  const int size = static_cast<int>(bytes.size());
  value.setEncodedBuffer(common::Buffer(
      reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())), size, size, false));
  value.setDataBufferType(type);
}

}  // namespace testing
}  // namespace orvo

#endif  // ORVO_TESTS_DATA_VALUE_TEST_UTIL_H_
