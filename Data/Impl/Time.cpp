#include "orvo/data/Time.h"

#include "Data/Impl/DataBufferInt.h"

namespace orvo {
namespace data {

using internal::checkDateTimeField;

Time::Time() : _time{0, 0, 0, 0} {}

Time::Time(const Time& other) : _time(other._time) {}

Time& Time::operator=(const Time& other) {
  if (this != &other) _time = other._time;
  return *this;
}

Time::~Time() = default;

void Time::setHour(common::UInt8 hour) {
  checkDateTimeField(hour, 0, 23, "hour", "Time::setHour()");
  _time.hour = hour;
}

void Time::setMinute(common::UInt8 minute) {
  checkDateTimeField(minute, 0, 59, "minute", "Time::setMinute()");
  _time.minute = minute;
}

void Time::setSecond(common::UInt8 second) {
  checkDateTimeField(second, 0, 59, "second", "Time::setSecond()");
  _time.second = second;
}

void Time::setMillisecond(common::UInt16 millisecond) {
  checkDateTimeField(millisecond, 0, 999, "millisecond", "Time::setMillisecond()");
  _time.millisecond = millisecond;
}

}  // namespace data
}  // namespace orvo
