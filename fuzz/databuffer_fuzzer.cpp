// Arbitrary wire bytes read as a value of any type: every getter and the
// text form either answer or raise the library's failure.
#include <cstddef>
#include <cstdint>

#include "orvo/common/Buffer.h"
#include "orvo/common/Exception.h"
#include "orvo/data/DataBuffer.h"

namespace {

using orvo::common::Buffer;
using orvo::data::DataBuffer;

template <class F>
void tolerate(F read) {
  try {
    read();
  } catch (const orvo::common::Exception&) {
  }
}

void readEverything(const DataBuffer& value) {
  tolerate([&] { (void)value.isBlank(); });
  tolerate([&] { (void)value.getInt64(); });
  tolerate([&] { (void)value.getUInt64(); });
  tolerate([&] { (void)value.getInt32(); });
  tolerate([&] { (void)value.getUInt32(); });
  tolerate([&] { (void)value.getFloat(); });
  tolerate([&] { (void)value.getDouble(); });
  tolerate([&] { (void)value.getReal64(); });
  tolerate([&] { (void)value.getReal32(); });
  tolerate([&] { (void)value.getDate(); });
  tolerate([&] { (void)value.getTime(); });
  tolerate([&] { (void)value.getDateTime(); });
  tolerate([&] { (void)value.getQualityOfServiceInfo(); });
  tolerate([&] { (void)value.getRespStatus(); });
  tolerate([&] { (void)value.getEnumeration(); });
  tolerate([&] { (void)value.getBuffer(); });
  tolerate([&] { (void)value.getAsString(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const uint8_t type = data[0];
  const bool managed = (data[1] & 1) != 0;
  Buffer bytes(const_cast<unsigned char*>(data + 2), static_cast<int>(size - 2),
               static_cast<int>(size - 2), false);
  DataBuffer value(managed);
  tolerate([&] {
    value.setEncodedBuffer(bytes);
    value.setDataBufferType(type);
  });
  readEverything(value);
  // The same object read again after a reset, as an entry's slot is reused.
  value.clear();
  tolerate([&] {
    value.setEncodedBuffer(bytes);
    value.setDataBufferType(static_cast<uint8_t>(type ^ 0x01));
  });
  readEverything(value);
  return 0;
}
