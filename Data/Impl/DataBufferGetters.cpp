// DataBuffer getters: the lazy decode of held wire bytes and the conversions
// between the number types.
#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {
namespace {

using common::Buffer;
using common::Int64;
using common::ORVO_String;
using common::QualityOfService;
using common::QualityOfServiceInfo;
using common::RespStatus;
using common::UInt16;
using common::UInt32;
using common::UInt64;
using common::UInt8;
using internal::DataBufferInt;

constexpr UInt16 kUnknownInfo = 65535;
// A decoded date of day 0, month 0xE4 and year 0 is the wire's other form of
// a blank date.
constexpr UInt8 kBlankDateMonth = 0xE4;
// Magnitude types from this one on are binary exponents.
constexpr UInt8 kFirstBinaryHint = 22;
constexpr UInt8 kNoShiftHint = 14;

// Scale factor of a magnitude type. It steps by ten whatever the base, in
// single precision, so binary magnitudes scale by powers of ten as well; the
// integer getters are defined by exactly this arithmetic.
float power(int base, int exponent) {
  if (base == 0) return 0.0f;
  float result = 1.0f;
  for (int i = 0; i < exponent; ++i) result = result * 10.0f;
  for (int i = 0; i > exponent; --i) result = result / 10.0f;
  return result;
}

// Truncation toward zero into 64 bits; a product outside the range (or not
// a number) gives the processor's integer-indefinite value.
Int64 truncateToInt64(long double product) {
  constexpr long double kLimit = 9223372036854775808.0L;  // 2^63
  if (!(product > -kLimit - 1.0L && product < kLimit)) return std::numeric_limits<Int64>::min();
  return static_cast<Int64>(product);
}

// Conversion to float as the processor rounds it; a magnitude past the float
// range becomes infinite.
float narrowToFloat(double value) {
  if (value < -static_cast<double>(FLT_MAX)) return -std::numeric_limits<float>::infinity();
  return static_cast<float>(value);
}

long timelinessFromWire(const OwfQos& qos) {
  switch (qos.timeliness) {
    case 1:
      return QualityOfService::realTime;
    case 2:
      return QualityOfService::unspecifiedDelayedTimeliness;
    case 3:
      return qos.timeInfo == kUnknownInfo ? QualityOfService::unspecifiedTimeliness
                                          : static_cast<long>(qos.timeInfo);
    default:
      return QualityOfService::unspecifiedTimeliness;
  }
}

long rateFromWire(const OwfQos& qos) {
  switch (qos.rate) {
    case 1:
      return QualityOfService::tickByTick;
    case 2:
      return QualityOfService::justInTimeFilteredRate;
    case 3:
      return qos.rateInfo == kUnknownInfo ? QualityOfService::unspecifiedRate
                                          : static_cast<long>(qos.rateInfo);
    default:
      return QualityOfService::unspecifiedRate;
  }
}

void raiseCount(QualityOfServiceInfo& info) {
  info.setQualityOfServiceInstCount(info.getQualityOfServiceInstCount() + 1);
}

}  // namespace

// Getters run the lazy decode and so change the object: a getter is const
// for its callers only.
bool DataBuffer::needsDecode() const { return _encodeState == EncodeStateEncoded && !_decoded; }

void DataBuffer::pointDecoderAtValue() const {
  clearDecodeIterator(&_decodeIter);
  // A refused buffer leaves the iterator without one; the codec then fails
  // the call.
  setDecodeIteratorBuffer(&_decodeIter, const_cast<OwfBuffer*>(&_encodedData));
}

template <class T>
int DataBuffer::decodeInto(int (*decoder)(OwfDecodeIterator*, T*), T* slot,
                           const char* reason) const {
  pointDecoderAtValue();
  const int ret = decoder(&_decodeIter, slot);
  if (ret < 0) internal::failReason(reason, ret);
  _isBlank = ret == OWIRE_RET_BLANK_DATA;
  // Wire bytes reach an object only through a non-const call, so an object
  // that decodes is never a const one.
  _decoded = true;
  return ret;
}

void DataBuffer::failWrongType(const char* close) const {
  internal::raiseIllegalCall(internal::valueText("Invalid DataBuffer type [", _bufferType, close));
}

Int64 DataBuffer::integerFromReal() const {
  const Real64& real = getReal64();
  const UInt8 hint = real.getMagnitudeType();
  const float factor =
      hint < kFirstBinaryHint ? power(10, hint - kNoShiftHint) : power(2, kFirstBinaryHint - hint);
  return truncateToInt64(static_cast<long double>(real.getValue()) * factor);
}

Int64 DataBuffer::getInt64() const {
  switch (_bufferType) {
    case IntEnum:
      if (needsDecode()) {
        decodeInto(owireDecodeInt, &_intValue,
                   "Data decoding failed in DataBuffer::getInt(); Reason: ");
      }
      break;
    case UIntEnum:
      _intValue = static_cast<Int64>(getUInt64());
      break;
    case RealEnum:
      _intValue = integerFromReal();
      break;
    default:
      failWrongType("] in DataBuffer::getInt()");
  }
  return _intValue;
}

UInt64 DataBuffer::getUInt64() const {
  switch (_bufferType) {
    case UIntEnum:
      if (needsDecode()) {
        decodeInto(owireDecodeUInt, &_uintValue,
                   "Data decoding failed in DataBuffer::getUInt(); Reason: ");
      }
      break;
    case IntEnum:
      _uintValue = static_cast<UInt64>(getInt64());
      break;
    case RealEnum:
      _uintValue = static_cast<UInt64>(integerFromReal());
      break;
    default:
      failWrongType("] in DataBuffer::getUInt()");
  }
  return _uintValue;
}

// Never raises: a value past 32 bits comes back cut to its low 32 bits, and
// callers rely on that.
int DataBuffer::getInt32() const {
  switch (_bufferType) {
    case IntEnum:
      getInt64();
      break;
    case UIntEnum:
      _intValue = static_cast<Int64>(getUInt64());
      break;
    case RealEnum:
      _intValue = integerFromReal();
      break;
    default:
      failWrongType("] in DataBuffer::getInt32()");
  }
  return static_cast<int>(static_cast<UInt32>(static_cast<UInt64>(_intValue)));
}

// Out of range only when the unsigned image is past 32 bits and the signed
// slot is not negative: a negative number held as a signed integer passes.
UInt32 DataBuffer::getUInt32() const {
  switch (_bufferType) {
    case IntEnum:
      _uintValue = static_cast<UInt64>(getInt64());
      break;
    case UIntEnum:
      getUInt64();
      break;
    case RealEnum:
      _uintValue = static_cast<UInt64>(integerFromReal());
      break;
    default:
      failWrongType("] in DataBuffer::getUInt32()");
  }
  if (_uintValue > std::numeric_limits<UInt32>::max() && _intValue >= 0) {
    internal::raiseOutOfRange(
        internal::bracketText("Value Out of Range", _className.c_str(), "getUInt32()"));
  }
  return static_cast<UInt32>(_uintValue);
}

// Held wire bytes of a real, decoded afresh at each call by the float and
// double getters.
OwfReal DataBuffer::decodeRealRecord(const char* reason) const {
  OwfReal record{0, kNoShiftHint, 0};
  pointDecoderAtValue();
  const int ret = owireDecodeReal(&_decodeIter, &record);
  if (ret < 0) internal::failReason(reason, ret);
  if (ret == OWIRE_RET_BLANK_DATA) record.isBlank = 1;
  return record;
}

float DataBuffer::getFloat() const {
  static const char kReason[] = "Data decoding failed in DataBuffer::getFloat(); Reason: ";
  switch (_bufferType) {
    case FloatEnum:
      if (needsDecode()) decodeInto(owireDecodeFloat, &_floatValue, kReason);
      break;
    case RealEnum:
      // A real held unencoded is not converted: the float slot is returned.
      if (_encodeState == EncodeStateEncoded) {
        const OwfReal record = decodeRealRecord(kReason);
        if (record.isBlank == 1) {
          _isBlank = true;
          break;
        }
        double value = 0.0;
        owireRealToDouble(&value, &record);
        // Only the upper limit is checked, and the method word is the one
        // callers have always matched on.
        if (value > static_cast<double>(FLT_MAX)) {
          internal::raiseOutOfRange(
              internal::bracketText("Value Out of Range", _className.c_str(), "getInt32()"));
        }
        _floatValue = narrowToFloat(value);
        _isBlank = false;
      }
      break;
    default:
      failWrongType("] in DataBuffer::getFloat(). Only RealEnum or FloatEnum types are allowed.");
  }
  return _floatValue;
}

double DataBuffer::getDouble() const {
  static const char kReason[] = "Data decoding failed in DataBuffer::getDouble(); Reason: ";
  switch (_bufferType) {
    case DoubleEnum:
      if (needsDecode()) decodeInto(owireDecodeDouble, &_doubleValue, kReason);
      break;
    case RealEnum:
      if (_encodeState == EncodeStateEncoded) {
        const OwfReal record = decodeRealRecord(kReason);
        if (record.isBlank != 1) owireRealToDouble(&_doubleValue, &record);
      }
      break;
    default:
      failWrongType("] in DataBuffer::getDouble(). Only RealEnum or DoubleEnum types are allowed.");
  }
  return _doubleValue;
}

const Real64& DataBuffer::realValue(const char* reason, const char* wrongType) const {
  OwfReal& record = DataBufferInt::record(_real);
  switch (_bufferType) {
    case RealEnum:
      if (needsDecode()) {
        const int ret = decodeInto(owireDecodeReal, &record, reason);
        _isBlank = ret == OWIRE_RET_BLANK_DATA || record.isBlank == 1;
      } else if (_encodeState == EncodeStateEncoding && !_isBlank && _encodedData.data != nullptr &&
                 _encodedData.length >= sizeof(OwfReal)) {
        // An unmanaged value lives in the caller's record.
        std::memcpy(&record, _encodedData.data, sizeof(OwfReal));
      }
      break;
    case IntEnum:
    case UIntEnum: {
      // Read the number first, so that the blank flag is the value's own.
      const Int64 value = _bufferType == IntEnum ? getInt64() : static_cast<Int64>(getUInt64());
      record.isBlank = _isBlank ? 1 : 0;
      record.hint = kNoShiftHint;
      record.value = value;
      break;
    }
    default:
      failWrongType(wrongType);
  }
  return _real;
}

const Real64& DataBuffer::getReal64() const {
  return realValue("Data decoding failed in DataBuffer::getReal(); Reason: ",
                   "] in DataBuffer::getReal()");
}

const Real32& DataBuffer::getReal32() const {
  realValue("Data decoding failed in DataBuffer::getReal32(); Reason: ",
            "] in DataBuffer::getReal32()");
  return _real32;
}

const Date& DataBuffer::getDate() const {
  if (_bufferType != DateEnum) failWrongType("] in DataBuffer::getDate()");
  if (needsDecode()) {
    OwfDate& record = DataBufferInt::record(_date);
    const int ret = decodeInto(owireDecodeDate, &record,
                               "Data decoding failed in DataBuffer::getDate(); Reason: ");
    if (ret >= 0 && record.day == 0 && record.month == kBlankDateMonth && record.year == 0) {
      record.month = 0;
      _isBlank = true;
    }
  }
  return _date;
}

const Time& DataBuffer::getTime() const {
  if (_bufferType != TimeEnum) failWrongType("] in DataBuffer::getTime()");
  if (needsDecode()) {
    decodeInto(owireDecodeTime, &DataBufferInt::record(_time),
               "Data decoding failed in DataBuffer::getTime(); Reason: ");
  }
  return _time;
}

const DateTime& DataBuffer::getDateTime() const {
  if (_bufferType != DateTimeEnum) failWrongType("] in DataBuffer::getDateTime()");
  if (needsDecode()) {
    decodeInto(owireDecodeDateTime, &DataBufferInt::record(_dateTime),
               "Data decoding failed in DataBuffer::getDateTime(); Reason: ");
  }
  return _dateTime;
}

// Only a fresh decode updates the info (and raises its instance count): a
// value put in by the setter is not reflected here.
const QualityOfServiceInfo& DataBuffer::getQualityOfServiceInfo() const {
  if (_bufferType != QosEnum) failWrongType("] in DataBuffer::getQualityOfServiceInfo()");
  if (needsDecode()) {
    decodeInto(owireDecodeQos, &_qos,
               "Data decoding failed in DataBuffer::getQualityOfServiceInfo(); Reason: ");
    qosInfoFromWire();
  }
  return _qosInfo;
}

void DataBuffer::qosInfoFromWire() const {
  _qosInfo.setQualityOfService(QualityOfService(timelinessFromWire(_qos), rateFromWire(_qos)));
  raiseCount(_qosInfo);
}

const RespStatus& DataBuffer::getRespStatus() const {
  if (_bufferType != StateEnum) failWrongType("] in DataBuffer::getRespStatus()");
  if (needsDecode()) {
    decodeInto(owireDecodeState, &_state,
               "Data decoding failed in DataBuffer::getRespStatus(); Reason: ");
  }
  _respStatus.setStreamState(static_cast<RespStatus::StreamState>(_state.streamState));
  _respStatus.setDataState(static_cast<RespStatus::DataState>(_state.dataState));
  _respStatus.setStatusCode(_state.code);
  if (_state.text.data != nullptr) {
    ORVO_String text;
    text.set(_state.text.data, _state.text.length, false);
    _respStatus.setStatusText(text);
  }
  return _respStatus;
}

UInt16 DataBuffer::getEnumeration() const {
  if (_bufferType != EnumerationEnum) failWrongType("] in DataBuffer::getEnumeration()");
  if (needsDecode()) {
    decodeInto(owireDecodeEnum, &_enumValue,
               "Data decoding failed in DataBuffer::getEnumeration(); Reason: ");
  }
  return _enumValue;
}

const Buffer& DataBuffer::getBuffer() const {
  if (!_bufferView.isEmpty()) _bufferView.clear();
  const int size = static_cast<int>(_encodedData.length);
  _bufferView.setFrom(reinterpret_cast<unsigned char*>(_encodedData.data), size, size, false);
  return _bufferView;
}

// Held wire bytes of a value type are decoded to answer; anything else is
// blank when it holds no bytes.
bool DataBuffer::isBlank() const {
  if (_encodeState != EncodeStateEncoded) return _isBlank;
  switch (_bufferType) {
    case IntEnum:
      getInt64();
      break;
    case UIntEnum:
      getUInt64();
      break;
    case FloatEnum:
      getFloat();
      break;
    case DoubleEnum:
      getDouble();
      break;
    case RealEnum:
      getReal64();
      break;
    case DateEnum:
      getDate();
      break;
    case TimeEnum:
      getTime();
      break;
    case DateTimeEnum:
      getDateTime();
      break;
    case QosEnum:
      getQualityOfServiceInfo();
      break;
    case StateEnum:
      getRespStatus();
      break;
    case EnumerationEnum:
      getEnumeration();
      break;
    default:
      return _encodedData.length == 0;
  }
  return _isBlank;
}

}  // namespace data
}  // namespace orvo
