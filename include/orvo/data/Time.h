// A time of day as the wire carries it, to the millisecond. Each setter
// checks the range of its own field (hour 0..23, minute and second 0..59 with
// no leap second, millisecond 0..999). A new Time is all zero.
#ifndef ORVO_DATA_TIME_H_
#define ORVO_DATA_TIME_H_

#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class Time {
 public:
  Time();
  Time(const Time& other);
  Time& operator=(const Time& other);
  virtual ~Time();

  // Each setter raises InvalidUsageException for a value out of its range
  // and then keeps the field as it was.
  common::UInt8 getHour() const { return _time.hour; }
  void setHour(common::UInt8 hour);
  common::UInt8 getMinute() const { return _time.minute; }
  void setMinute(common::UInt8 minute);
  common::UInt8 getSecond() const { return _time.second; }
  void setSecond(common::UInt8 second);
  common::UInt16 getMillisecond() const { return _time.millisecond; }
  void setMillisecond(common::UInt16 millisecond);

 private:
  friend class orvo::internal::DataBufferInt;
  OwfTime& getOwfTime() { return _time; }

  OwfTime _time;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_TIME_H_
