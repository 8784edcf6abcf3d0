// A calendar date as the wire carries it: day, month and year. Each setter
// checks the range of its own field only (month 1..12, day 1..31, any year);
// whether the combination is a real date is checked when a DataBuffer takes
// the value. A new Date is all zero, which is how a blank date reads.
#ifndef ORVO_DATA_DATE_H_
#define ORVO_DATA_DATE_H_

#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class Date {
 public:
  Date();
  Date(const Date& other);
  Date& operator=(const Date& other);
  virtual ~Date();

  common::UInt8 getDay() const { return _date.day; }
  // Raises InvalidUsageException for a day outside 1..31; the day is kept.
  void setDay(common::UInt8 day);
  common::UInt8 getMonth() const { return _date.month; }
  // Raises InvalidUsageException for a month outside 1..12; the month is kept.
  void setMonth(common::UInt8 month);
  common::UInt16 getYear() const { return _date.year; }
  void setYear(common::UInt16 year) { _date.year = year; }

 private:
  friend class orvo::internal::DataBufferInt;
  OwfDate& getOwfDate() { return _date; }

  OwfDate _date;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_DATE_H_
