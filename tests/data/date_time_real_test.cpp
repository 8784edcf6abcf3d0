#include <functional>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/data/Date.h"
#include "orvo/data/DateTime.h"
#include "orvo/data/Real32.h"
#include "orvo/data/Real64.h"
#include "orvo/data/Time.h"
#include "value_test_util.h"

namespace orvo {
namespace {

using data::Date;
using data::DateTime;
using data::Real32;
using data::Real64;
using data::Time;
using testing::raisedBy;

// One rejected value of a field setter and the exact text it must raise.
struct RangeCase {
  std::string name;
  std::function<void()> set;
  std::function<unsigned()> field;  // reads the field back
  unsigned before;                  // what the field held before the call
  std::string text;
};

std::vector<RangeCase> rejectedValues(Date& date, Time& time, DateTime& dt) {
  return {
      {"Date month 0", [&] { date.setMonth(0); }, [&] { return date.getMonth(); }, 5,
       "Attempt to pass invalid value of month [0] into Date::setMonth()."},
      {"Date month 13", [&] { date.setMonth(13); }, [&] { return date.getMonth(); }, 5,
       "Attempt to pass invalid value of month [13] into Date::setMonth()."},
      {"Date day 0", [&] { date.setDay(0); }, [&] { return date.getDay(); }, 17,
       "Attempt to pass invalid value of day [0] into Date::setDay()."},
      {"Date day 32", [&] { date.setDay(32); }, [&] { return date.getDay(); }, 17,
       "Attempt to pass invalid value of day [32] into Date::setDay()."},
      {"Time hour 24", [&] { time.setHour(24); }, [&] { return time.getHour(); }, 9,
       "Attempt to pass invalid value of hour [24] into Time::setHour()."},
      {"Time minute 60", [&] { time.setMinute(60); }, [&] { return time.getMinute(); }, 30,
       "Attempt to pass invalid value of minute [60] into Time::setMinute()."},
      {"Time second 60", [&] { time.setSecond(60); }, [&] { return time.getSecond(); }, 59,
       "Attempt to pass invalid value of second [60] into Time::setSecond()."},
      {"Time millisecond 1000", [&] { time.setMillisecond(1000); },
       [&] { return time.getMillisecond(); }, 999,
       "Attempt to pass invalid value of millisecond [1000] into Time::setMillisecond()."},
      {"Time millisecond 65535", [&] { time.setMillisecond(65535); },
       [&] { return time.getMillisecond(); }, 999,
       "Attempt to pass invalid value of millisecond [65535] into Time::setMillisecond()."},
      {"DateTime month 0", [&] { dt.setMonth(0); }, [&] { return dt.getMonth(); }, 5,
       "Attempt to pass invalid value of month [0] into DateTime::setMonth()."},
      {"DateTime month 255", [&] { dt.setMonth(255); }, [&] { return dt.getMonth(); }, 5,
       "Attempt to pass invalid value of month [255] into DateTime::setMonth()."},
      {"DateTime day 32", [&] { dt.setDay(32); }, [&] { return dt.getDay(); }, 17,
       "Attempt to pass invalid value of day [32] into DateTime::setDay()."},
      {"DateTime hour 24", [&] { dt.setHour(24); }, [&] { return dt.getHour(); }, 9,
       "Attempt to pass invalid value of hour [24] into DateTime::setHour()."},
      {"DateTime minute 60", [&] { dt.setMinute(60); }, [&] { return dt.getMinute(); }, 30,
       "Attempt to pass invalid value of minute [60] into DateTime::setMinute()."},
      {"DateTime second 60", [&] { dt.setSecond(60); }, [&] { return dt.getSecond(); }, 59,
       "Attempt to pass invalid value of second [60] into DateTime::setSecond()."},
      {"DateTime millisecond 1000", [&] { dt.setMillisecond(1000); },
       [&] { return dt.getMillisecond(); }, 999,
       "Attempt to pass invalid value of millisecond [1000] into DateTime::setMillisecond()."},
  };
}

void fillValid(Date& date, Time& time, DateTime& dt) {
  date.setMonth(5);
  date.setDay(17);
  time.setHour(9);
  time.setMinute(30);
  time.setSecond(59);
  time.setMillisecond(999);
  dt.setMonth(5);
  dt.setDay(17);
  dt.setHour(9);
  dt.setMinute(30);
  dt.setSecond(59);
  dt.setMillisecond(999);
}

TEST(DateTimeRangeTest, RejectedValuesRaiseBadValueAndKeepTheField) {
  Date date;
  Time time;
  DateTime dt;
  fillValid(date, time, dt);
  for (const RangeCase& c : rejectedValues(date, time, dt)) {
    SCOPED_TRACE(c.name);
    const auto raised = raisedBy(c.set);
    EXPECT_EQ("usage", raised.kind);
    EXPECT_EQ(c.text, raised.text);
    EXPECT_EQ(2, raised.state);  // bad value, not illegal call
    EXPECT_EQ(c.before, c.field());
  }
}

TEST(DateTimeRangeTest, BoundaryValuesAreAccepted) {
  Date date;
  date.setMonth(1);
  date.setMonth(12);
  date.setDay(1);
  date.setDay(31);
  date.setYear(0);
  date.setYear(65535);
  EXPECT_EQ(12, date.getMonth());
  EXPECT_EQ(31, date.getDay());
  EXPECT_EQ(65535, date.getYear());

  Time time;
  time.setHour(23);
  time.setMinute(59);
  time.setSecond(59);
  time.setMillisecond(999);
  time.setHour(0);
  EXPECT_EQ(0, time.getHour());
  EXPECT_EQ(999, time.getMillisecond());
}

TEST(DateTimeRangeTest, FieldsAreCheckedAloneNotAsACalendarDate) {
  Date date;
  date.setMonth(2);
  date.setDay(31);  // the combination is checked only when a DataBuffer takes it
  EXPECT_EQ(31, date.getDay());
  EXPECT_EQ(2, date.getMonth());
}

TEST(DateTimeValueTest, CopiesKeepEveryField) {
  DateTime dt;
  dt.setYear(2024);
  dt.setMonth(2);
  dt.setDay(29);
  dt.setHour(23);
  dt.setMinute(58);
  dt.setSecond(57);
  dt.setMillisecond(456);
  const DateTime copy(dt);
  DateTime assigned;
  assigned = dt;
  for (const DateTime* d : {&copy, static_cast<const DateTime*>(&assigned)}) {
    EXPECT_EQ(2024, d->getYear());
    EXPECT_EQ(2, d->getMonth());
    EXPECT_EQ(29, d->getDay());
    EXPECT_EQ(23, d->getHour());
    EXPECT_EQ(58, d->getMinute());
    EXPECT_EQ(57, d->getSecond());
    EXPECT_EQ(456, d->getMillisecond());
  }

  Date date;
  date.setYear(1999);
  date.setMonth(12);
  date.setDay(31);
  Date& self = date;
  date = self;
  EXPECT_EQ(1999, date.getYear());
  Time time;
  time.setMillisecond(7);
  Time timeCopy(time);
  EXPECT_EQ(7, timeCopy.getMillisecond());
}

TEST(RealValueTest, DefaultsAreNotBlankWithNoShift) {
  const Real64 r64;
  const Real32 r32;
  EXPECT_EQ(0, r64.getValue());
  EXPECT_EQ(14, r64.getMagnitudeType());
  EXPECT_EQ(0, r64.getRealLength());
  EXPECT_EQ(0, r32.getValue());
  EXPECT_EQ(14, r32.getMagnitudeType());
  EXPECT_EQ(0, r32.getRealLength());
}

TEST(RealValueTest, Real32KeepsTheSignInSixtyFourBitsAndReadsTheLowHalf) {
  Real32 r;
  r.setValue(-1);
  EXPECT_EQ(-1, r.getValue());
  r.setValue(-2147483647 - 1);
  EXPECT_EQ(-2147483647 - 1, r.getValue());
  r.setValue(2147483647);
  EXPECT_EQ(2147483647, r.getValue());
}

TEST(RealValueTest, CopiesTakeValueHintAndLength) {
  Real64 r;
  r.setValue(-123456789012345LL);
  r.setMagnitudeType(10);
  r.setRealLength(9);
  Real64 copy(r);
  Real64 assigned;
  assigned = r;
  for (const Real64* x :
       {static_cast<const Real64*>(&copy), static_cast<const Real64*>(&assigned)}) {
    EXPECT_EQ(-123456789012345LL, x->getValue());
    EXPECT_EQ(10, x->getMagnitudeType());
    EXPECT_EQ(9, x->getRealLength());
  }
  Real32 small;
  small.setValue(77);
  small.setMagnitudeType(12);
  small.setRealLength(3);
  Real32 smallCopy;
  smallCopy = small;
  EXPECT_EQ(77, smallCopy.getValue());
  EXPECT_EQ(12, smallCopy.getMagnitudeType());
  EXPECT_EQ(3, smallCopy.getRealLength());
}

}  // namespace
}  // namespace orvo
