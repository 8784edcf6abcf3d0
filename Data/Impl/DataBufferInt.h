// The library's internal side of DataBuffer and of the date, time and real
// value classes: the wire records inside the value classes, the fixed-width
// wire codes of set definitions, and the copy a managed entry makes of a
// value.
#ifndef ORVO_DATA_IMPL_DATA_BUFFER_INT_H_
#define ORVO_DATA_IMPL_DATA_BUFFER_INT_H_

#include "orvo/data/DataBuffer.h"
#include "orvo/data/Date.h"
#include "orvo/data/DateTime.h"
#include "orvo/data/Real32.h"
#include "orvo/data/Real64.h"
#include "orvo/data/Time.h"

namespace orvo {
namespace internal {

using common::UInt8;

class DataBufferInt {
 public:
  // The wire records the value classes carry, handed to the codec as they
  // are. The const forms serve records the codec only reads.
  static OwfDate& record(data::Date& value) { return value.getOwfDate(); }
  static OwfTime& record(data::Time& value) { return value.getOwfTime(); }
  static OwfDateTime& record(data::DateTime& value) { return value.getOwfDateTime(); }
  static OwfReal& record(data::Real64& value) { return value.getOwfReal64(); }
  static OwfReal& record(data::Real32& value) { return value.getOwfReal32(); }
  static const OwfDate& record(const data::Date& value) {
    return record(const_cast<data::Date&>(value));
  }
  static const OwfTime& record(const data::Time& value) {
    return record(const_cast<data::Time&>(value));
  }
  static const OwfDateTime& record(const data::DateTime& value) {
    return record(const_cast<data::DateTime&>(value));
  }
  static const OwfReal& record(const data::Real64& value) {
    return record(const_cast<data::Real64&>(value));
  }
  static const OwfReal& record(const data::Real32& value) {
    return record(const_cast<data::Real32&>(value));
  }

  // The wire code of a value of `type` written at width `encodedType` inside
  // a set definition (0: the type itself). Raises InvalidUsageException for a
  // width the type has no fixed form of.
  static UInt8 setDefinitionType(UInt8 type, UInt8 encodedType);
  // The same for the type and width a DataBuffer holds.
  static UInt8 setDefinitionType(const data::DataBuffer& value);

  // Makes `target` hold the value of `source` by the target's own setters,
  // so a managed target copies it. Byte strings are not copied this way.
  static void copyPrimitiveDataType(data::DataBuffer& target, const data::DataBuffer& source);

  // Frees bytes the DataBuffer allocated for its encoded data and empties
  // the encoded data, so that code which frees or reuses the encoded bytes of
  // any Data never meets a pointer to a value slot.
  static void releaseEncodedBytes(data::DataBuffer& value);
};

// Range check of one date or time field. Outside [low, high] it raises, as a
// bad value, "Attempt to pass invalid value of <field> [<value>] into
// <where>.", and the caller keeps the field as it was.
void checkDateTimeField(unsigned int value, unsigned int low, unsigned int high, const char* field,
                        const char* where);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_DATA_BUFFER_INT_H_
