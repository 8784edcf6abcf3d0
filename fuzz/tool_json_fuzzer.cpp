// Arbitrary bytes through the command-line tool's decoder: a message to its
// JSON form and tree text, and the JSON form back to bytes. Decoding must
// never crash; what decodes without a fault must encode again, and encoding
// the bytes it gives must decode to the same JSON.
#include <cstddef>
#include <cstdint>
#include <string>

#include "tools/orvo/DataJson.h"
#include "tools/orvo/TreeText.h"

namespace {

bool holdsError(const orvo::tool::Json& j) {
  return j.dump().find("\"error\"") != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace orvo::tool;
  const std::string input(reinterpret_cast<const char*>(data), size);
  const FieldNames none;
  const OwfBuffer view{static_cast<UInt32>(input.size()), const_cast<char*>(input.data())};
  const Json message = decodeMessage(view, none);
  (void)messageTree(message);
  if (holdsError(message)) return 0;
  std::string again;
  try {
    again = encodeMessage(message, none, "m");
  } catch (const JsonFormError&) {
    // A decoded value may have no encoding of its own (a blank that the
    // encoder refuses, say); that is not a fault of the decoder.
    return 0;
  }
  const Json back = decodeMessage(
      OwfBuffer{static_cast<UInt32>(again.size()), const_cast<char*>(again.data())}, none);
  if (back != message) __builtin_trap();
  return 0;
}
