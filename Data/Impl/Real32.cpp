#include "orvo/data/Real32.h"

namespace orvo {
namespace data {

// Not blank, no decimal shift.
Real32::Real32() : _real{0, 14, 0}, _realLength(0) {}

Real32::Real32(const Real32& other) : _real(other._real), _realLength(other._realLength) {}

Real32& Real32::operator=(const Real32& other) {
  _real = other._real;
  _realLength = other._realLength;
  return *this;
}

int Real32::getValue() const {
  return static_cast<int>(static_cast<common::UInt32>(static_cast<common::UInt64>(_real.value)));
}

}  // namespace data
}  // namespace orvo
