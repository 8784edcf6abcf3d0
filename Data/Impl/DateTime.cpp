#include "orvo/data/DateTime.h"

#include "Data/Impl/DataBufferInt.h"

namespace orvo {
namespace data {

using internal::checkDateTimeField;

DateTime::DateTime() : _dateTime{{0, 0, 0}, {0, 0, 0, 0}} {}

DateTime::DateTime(const DateTime& other) : _dateTime(other._dateTime) {}

DateTime& DateTime::operator=(const DateTime& other) {
  if (this != &other) _dateTime = other._dateTime;
  return *this;
}

DateTime::~DateTime() = default;

void DateTime::setDay(common::UInt8 day) {
  checkDateTimeField(day, 1, 31, "day", "DateTime::setDay()");
  _dateTime.date.day = day;
}

void DateTime::setMonth(common::UInt8 month) {
  checkDateTimeField(month, 1, 12, "month", "DateTime::setMonth()");
  _dateTime.date.month = month;
}

void DateTime::setHour(common::UInt8 hour) {
  checkDateTimeField(hour, 0, 23, "hour", "DateTime::setHour()");
  _dateTime.time.hour = hour;
}

void DateTime::setMinute(common::UInt8 minute) {
  checkDateTimeField(minute, 0, 59, "minute", "DateTime::setMinute()");
  _dateTime.time.minute = minute;
}

void DateTime::setSecond(common::UInt8 second) {
  checkDateTimeField(second, 0, 59, "second", "DateTime::setSecond()");
  _dateTime.time.second = second;
}

void DateTime::setMillisecond(common::UInt16 millisecond) {
  checkDateTimeField(millisecond, 0, 999, "millisecond", "DateTime::setMillisecond()");
  _dateTime.time.millisecond = millisecond;
}

}  // namespace data
}  // namespace orvo
