#include "orvo/data/Real64.h"

namespace orvo {
namespace data {

// Not blank, no decimal shift.
Real64::Real64() : _real{0, 14, 0}, _realLength(0) {}

Real64::Real64(const Real64& other) : _real(other._real), _realLength(other._realLength) {}

Real64& Real64::operator=(const Real64& other) {
  _real = other._real;
  _realLength = other._realLength;
  return *this;
}

}  // namespace data
}  // namespace orvo
