#include "orvo/data/Date.h"

#include "Data/Impl/DataBufferInt.h"

namespace orvo {
namespace data {

using internal::checkDateTimeField;

Date::Date() : _date{0, 0, 0} {}

Date::Date(const Date& other) : _date(other._date) {}

Date& Date::operator=(const Date& other) {
  if (this != &other) _date = other._date;
  return *this;
}

Date::~Date() = default;

void Date::setDay(common::UInt8 day) {
  checkDateTimeField(day, 1, 31, "day", "Date::setDay()");
  _date.day = day;
}

void Date::setMonth(common::UInt8 month) {
  checkDateTimeField(month, 1, 12, "month", "Date::setMonth()");
  _date.month = month;
}

}  // namespace data
}  // namespace orvo
