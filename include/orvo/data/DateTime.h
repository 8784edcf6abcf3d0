// A date and a time of day together, with the field checks of Date and Time
// (the failure texts name DateTime). A new DateTime is all zero.
#ifndef ORVO_DATA_DATE_TIME_H_
#define ORVO_DATA_DATE_TIME_H_

#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class DateTime {
 public:
  DateTime();
  DateTime(const DateTime& other);
  DateTime& operator=(const DateTime& other);
  virtual ~DateTime();

  // Each setter raises InvalidUsageException for a value out of its range
  // and then keeps the field as it was. The year is not checked.
  common::UInt8 getDay() const { return _dateTime.date.day; }
  void setDay(common::UInt8 day);
  common::UInt8 getMonth() const { return _dateTime.date.month; }
  void setMonth(common::UInt8 month);
  common::UInt16 getYear() const { return _dateTime.date.year; }
  void setYear(common::UInt16 year) { _dateTime.date.year = year; }
  common::UInt8 getHour() const { return _dateTime.time.hour; }
  void setHour(common::UInt8 hour);
  common::UInt8 getMinute() const { return _dateTime.time.minute; }
  void setMinute(common::UInt8 minute);
  common::UInt8 getSecond() const { return _dateTime.time.second; }
  void setSecond(common::UInt8 second);
  common::UInt16 getMillisecond() const { return _dateTime.time.millisecond; }
  void setMillisecond(common::UInt16 millisecond);

 private:
  friend class orvo::internal::DataBufferInt;
  OwfDateTime& getOwfDateTime() { return _dateTime; }

  OwfDateTime _dateTime;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_DATE_TIME_H_
