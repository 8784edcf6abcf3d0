// Fixed-width integer and floating types shared by every orvo namespace.
#ifndef ORVO_COMMON_TYPES_H_
#define ORVO_COMMON_TYPES_H_

#include <cstdint>

namespace orvo {
namespace common {

using UInt8 = std::uint8_t;
using UInt16 = std::uint16_t;
using UInt32 = std::uint32_t;
using UInt64 = std::uint64_t;
using Int8 = std::int8_t;
using Int16 = std::int16_t;
using Int32 = std::int32_t;
using Int64 = std::int64_t;
using Int = Int64;
using UInt = UInt64;
using Float = float;
using Double = double;

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_TYPES_H_
