// A scaled decimal number: a 64-bit mantissa and a magnitude type (the
// wire's hint; 14, the default, means no decimal shift), plus a length byte
// the application may carry along. The value is not checked.
#ifndef ORVO_DATA_REAL64_H_
#define ORVO_DATA_REAL64_H_

#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class Real64 {
 public:
  Real64();
  Real64(const Real64& other);
  // Copies every field, without a self-assignment test.
  Real64& operator=(const Real64& other);

  common::Int64 getValue() const { return _real.value; }
  void setValue(common::Int64 value) { _real.value = value; }
  common::UInt8 getMagnitudeType() const { return _real.hint; }
  void setMagnitudeType(common::UInt8 hint) { _real.hint = hint; }
  common::UInt8 getRealLength() const { return _realLength; }
  void setRealLength(common::UInt8 length) { _realLength = length; }

 private:
  friend class orvo::internal::DataBufferInt;
  OwfReal& getOwfReal64() { return _real; }

  OwfReal _real;
  common::UInt8 _realLength;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_REAL64_H_
