// A scaled decimal number with a 32-bit face: the mantissa is kept in 64
// bits, set sign-extended from an int and read back as its low 32 bits. The
// layout is that of Real64, so a DataBuffer serves either from one record.
#ifndef ORVO_DATA_REAL32_H_
#define ORVO_DATA_REAL32_H_

#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class Real32 {
 public:
  Real32();
  Real32(const Real32& other);
  // Copies every field, without a self-assignment test.
  Real32& operator=(const Real32& other);

  int getValue() const;
  void setValue(int value) { _real.value = value; }
  common::UInt8 getMagnitudeType() const { return _real.hint; }
  void setMagnitudeType(common::UInt8 hint) { _real.hint = hint; }
  common::UInt8 getRealLength() const { return _realLength; }
  void setRealLength(common::UInt8 length) { _realLength = length; }

 private:
  friend class orvo::internal::DataBufferInt;
  OwfReal& getOwfReal32() { return _real; }

  OwfReal _real;
  common::UInt8 _realLength;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_REAL32_H_
