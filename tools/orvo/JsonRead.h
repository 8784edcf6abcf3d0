// Readers of the JSON form shared by data and messages: each names the path of
// what is wrong in the JsonFormError it raises.
#ifndef ORVO_TOOLS_ORVO_JSON_READ_H_
#define ORVO_TOOLS_ORVO_JSON_READ_H_

#include <cstdint>
#include <limits>
#include <string>

#include "tools/orvo/DataJson.h"

namespace orvo {
namespace tool {

[[noreturn]] inline void bad(const std::string& path, const std::string& what) {
  throw JsonFormError(path + ": " + what);
}

// A JSON integer that fits T.
template <class T>
T number(const Json& j, const std::string& path) {
  if (!j.is_number_integer()) bad(path, "an integer is expected");
  if (j.is_number_unsigned()) {
    const auto v = j.get<std::uint64_t>();
    if (v > static_cast<std::uint64_t>(std::numeric_limits<T>::max())) bad(path, "out of range");
    return static_cast<T>(v);
  }
  const auto v = j.get<std::int64_t>();
  if (v < static_cast<std::int64_t>(std::numeric_limits<T>::min()) ||
      (v > 0 &&
       static_cast<std::uint64_t>(v) > static_cast<std::uint64_t>(std::numeric_limits<T>::max()))) {
    bad(path, "out of range");
  }
  return static_cast<T>(v);
}

// Bytes given as JSON text or as {"hex": ...}.
std::string bytesFrom(const Json& j, const std::string& path);

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_ORVO_JSON_READ_H_
