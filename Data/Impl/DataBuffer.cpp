// DataBuffer storage: construction, the setters and clearing.
#include "orvo/data/DataBuffer.h"

#include <cstdint>
#include <cstring>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/common/QualityOfService.h"
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

constexpr UInt32 kNumberLength = 8;
constexpr UInt32 kFloatLength = 4;
constexpr UInt32 kEnumLength = 2;
constexpr UInt32 kRealLength = 16;
constexpr UInt32 kQosLength = 8;
constexpr UInt32 kStateLength = 12;
constexpr long kLargestInfo = 65535;

// Dates and times are held as their records, whose sizes are the wire's.
static_assert(sizeof(OwfDate) == 4 && sizeof(OwfTime) == 6 && sizeof(OwfDateTime) == 10,
              "date and time record sizes");

// The setters still take three older codes of the integer and real types.
UInt8 foldType(UInt8 type) {
  switch (type) {
    case DataBuffer::Int32Enum:
      return IntEnum;
    case DataBuffer::UInt32Enum:
      return UIntEnum;
    case DataBuffer::Real32Enum:
      return RealEnum;
    default:
      return type;
  }
}

bool isSettableBufferType(UInt8 type) { return (type >= 16 && type <= 134) || type >= 225; }

UInt16 cappedInfo(long value) {
  return static_cast<UInt16>(value > kLargestInfo ? kLargestInfo : value);
}

void timelinessToWire(long timeliness, OwfQos& qos) {
  if (timeliness == QualityOfService::unspecifiedTimeliness) {
    timeliness = QualityOfService::realTime;
  }
  if (timeliness < 0) {
    qos.timeliness = 0;
  } else if (timeliness == QualityOfService::realTime) {
    qos.timeliness = 1;
  } else if (timeliness < QualityOfService::unspecifiedDelayedTimeliness) {
    qos.timeliness = 3;
    qos.timeInfo = cappedInfo(timeliness);
  } else {
    qos.timeliness = 2;
  }
}

void rateToWire(long rate, OwfQos& qos) {
  if (rate == QualityOfService::unspecifiedRate) rate = QualityOfService::tickByTick;
  if (rate < 0) {
    qos.rate = 0;
  } else if (rate == QualityOfService::tickByTick) {
    qos.rate = 1;
  } else if (rate < QualityOfService::justInTimeFilteredRate) {
    qos.rate = 3;
    qos.rateInfo = cappedInfo(rate);
  } else if (rate == QualityOfService::justInTimeFilteredRate) {
    qos.rate = 2;
  } else {
    qos.rate = 3;
    qos.rateInfo = static_cast<UInt16>(kLargestInfo);
  }
}

}  // namespace

const ORVO_String DataBuffer::_className("DataBuffer");

DataBuffer::DataBuffer(bool managed)
    : Data(DataBufferEnum, managed),
      _textCapacity(0),
      _enumValue(0),
      _bufferType(0),
      _encodedType(0),
      _intValue(0),
      _uintValue(0),
      _floatValue(0),
      _doubleValue(0),
      _real(),
      _state{0, 0, 0, {0, nullptr}},
      _qos{0, 0, 0, 0, 0},
      _textBuffer{0, nullptr},
      _isBlank(true),
      _stateText(nullptr) {
  _ownsBuffer = managed;
}

DataBuffer::~DataBuffer() {
  releaseOwnedBytes();
  releaseStateText();
  delete[] _textBuffer.data;
  // Nothing is left for the base to free.
  _encodedData.data = nullptr;
  _ownsBuffer = false;
}

// A value slot, a real record or the status record may be what the encoded
// data points at; those lie inside the object and are never freed.
bool DataBuffer::holdsOwnStorage(const void* p) const {
  const auto address = reinterpret_cast<std::uintptr_t>(p);
  const auto start = reinterpret_cast<std::uintptr_t>(this);
  return address >= start && address < start + sizeof(DataBuffer);
}

// Frees the encoded bytes when the object allocated them: string bytes of a
// managed object, or wire bytes copied by setEncodedBuffer. Whatever the
// stored type, only a heap block of the object's own is freed, so declaring
// another type over held bytes can neither leak nor free a slot.
void DataBuffer::releaseOwnedBytes() {
  if (_ownsBuffer && _encodedData.data != nullptr && !holdsOwnStorage(_encodedData.data)) {
    // The text view of a string may still show these bytes.
    if (_bufferView.c_buf() == reinterpret_cast<unsigned char*>(_encodedData.data)) {
      _bufferView.clear();
    }
    delete[] _encodedData.data;
    _encodedData.data = nullptr;
    _capacity = 0;
  }
  // Only a managed object goes on owning what it is given next.
  _ownsBuffer = _managed;
}

void DataBuffer::clearComBuffer() {
  releaseOwnedBytes();
  _decoded = false;
}

void DataBuffer::releaseStateText() {
  delete[] _stateText;
  _stateText = nullptr;
}

void DataBuffer::holdValue(void* slot, UInt32 length, UInt8 type) {
  _bufferType = type;
  _isBlank = false;
  _encodedData.length = length;
  _encodedData.data = static_cast<char*>(slot);
  _encodeState = EncodeStateEncoding;
}

void DataBuffer::setDataBufferType(UInt8 type) {
  _bufferType = foldType(type);
  _isBlank = true;
}

void DataBuffer::setBlankData(UInt8 type, UInt8 encodedType) {
  clearComBuffer();
  _bufferType = foldType(type);
  _encodedType = encodedType;
  _isBlank = true;
  _encodedData = OwfBuffer{0, nullptr};
  _encodeState = EncodeStateEncoding;
}

void DataBuffer::setInt32(int value, UInt8 encodedType) { setInt64(value, encodedType); }

void DataBuffer::setUInt32(UInt32 value, UInt8 encodedType) { setUInt64(value, encodedType); }

void DataBuffer::setInt(Int64 value, UInt8 encodedType) { setInt64(value, encodedType); }

void DataBuffer::setUInt(UInt64 value, UInt8 encodedType) { setUInt64(value, encodedType); }

void DataBuffer::setInt64(Int64 value, UInt8 encodedType) {
  clearComBuffer();
  _encodedType = encodedType;
  _intValue = value;
  holdValue(&_intValue, kNumberLength, IntEnum);
}

void DataBuffer::setUInt64(UInt64 value, UInt8 encodedType) {
  clearComBuffer();
  _encodedType = encodedType;
  _uintValue = value;
  holdValue(&_uintValue, kNumberLength, UIntEnum);
}

void DataBuffer::setFloat(float value, UInt8 encodedType) {
  clearComBuffer();
  _encodedType = encodedType;
  _floatValue = value;
  holdValue(&_floatValue, kFloatLength, FloatEnum);
}

void DataBuffer::setDouble(double value, UInt8 encodedType) {
  clearComBuffer();
  _encodedType = encodedType;
  _doubleValue = value;
  holdValue(&_doubleValue, kNumberLength, DoubleEnum);
}

// A managed object copies the record into its own real; an unmanaged one
// points at the caller's. A blank real holds no encoded data.
void DataBuffer::holdReal(const OwfReal& record, UInt8 realLength, UInt8 encodedType) {
  clearComBuffer();
  _bufferType = RealEnum;
  _encodedType = encodedType;
  _isBlank = record.isBlank == 1;
  const OwfReal* held = &record;
  if (_managed) {
    OwfReal& own = DataBufferInt::record(_real);
    own = record;
    _real.setRealLength(realLength);
    held = &own;
  }
  _encodeState = EncodeStateEncoding;
  if (_isBlank) {
    _encodedData = OwfBuffer{0, nullptr};
  } else {
    _encodedData = OwfBuffer{kRealLength, reinterpret_cast<char*>(const_cast<OwfReal*>(held))};
  }
}

void DataBuffer::setReal(const Real64& value, UInt8 encodedType) {
  holdReal(DataBufferInt::record(value), value.getRealLength(), encodedType);
}

void DataBuffer::setReal64(const Real64& value, UInt8 encodedType) {
  holdReal(DataBufferInt::record(value), value.getRealLength(), encodedType);
}

void DataBuffer::setReal32(const Real32& value, UInt8 encodedType) {
  holdReal(DataBufferInt::record(value), value.getRealLength(), encodedType);
}

void DataBuffer::setReal32FromFloat(float value, UInt8 hint) {
  OwfReal& own = DataBufferInt::record(_real);
  const int ret = owireFloatToReal(&own, &value, hint);
  if (ret < 0) {
    internal::failReason("Data decoding failed in DataBuffer::setReal32FromFloat(); Reason: ", ret);
  }
  _bufferType = RealEnum;
  _encodeState = EncodeStateEncoding;
  _isBlank = own.isBlank != 0;
  if (!_isBlank) {
    clearComBuffer();
    _encodedData = OwfBuffer{kRealLength, reinterpret_cast<char*>(&own)};
  } else {
    releaseOwnedBytes();
    _encodedData = OwfBuffer{0, nullptr};
  }
}

void DataBuffer::setReal64FromDouble(double value, UInt8 hint) {
  OwfReal& own = DataBufferInt::record(_real);
  const int ret = owireDoubleToReal(&own, &value, hint);
  if (ret < 0) {
    internal::failReason("Data decoding failed in DataBuffer::setReal64FromDouble(); Reason: ",
                         ret);
  }
  _bufferType = RealEnum;
  _encodeState = EncodeStateEncoding;
  _isBlank = own.isBlank != 0;
  // Unlike the float form, a blank result keeps the encoded data as it was.
  if (!_isBlank) {
    clearComBuffer();
    _encodedData = OwfBuffer{kRealLength, reinterpret_cast<char*>(&own)};
  }
}

void DataBuffer::setEnumeration(UInt16 value) {
  clearComBuffer();
  _enumValue = value;
  holdValue(&_enumValue, kEnumLength, EnumerationEnum);
}

// Shared by the date and time setters: a managed object holds its own copy
// of the record, an unmanaged one the caller's. An invalid value leaves the
// type set and the encoded data empty.
template <class Value, class Record>
void DataBuffer::holdCalendarValue(const Value& value, Value& own, UInt8 type, UInt8 encodedType,
                                   bool (*isValid)(const Record*), const char* invalidText) {
  clearComBuffer();
  const Record* record = &DataBufferInt::record(value);
  if (_managed) {
    own = value;
    record = &DataBufferInt::record(own);
  }
  _bufferType = type;
  _encodedType = encodedType;
  _isBlank = false;
  if (!isValid(record)) {
    _encodedData = OwfBuffer{0, nullptr};
    internal::raiseBadValue(ORVO_String(invalidText));
  }
  _encodedData = OwfBuffer{sizeof(Record), reinterpret_cast<char*>(const_cast<Record*>(record))};
  _encodeState = EncodeStateEncoding;
}

void DataBuffer::setDate(const Date& value, UInt8 encodedType) {
  holdCalendarValue(value, _date, DateEnum, encodedType, owireDateIsValid,
                    "Invalid Date value passed into DataBuffer::setDate()");
}

void DataBuffer::setTime(const Time& value, UInt8 encodedType) {
  holdCalendarValue(value, _time, TimeEnum, encodedType, owireTimeIsValid,
                    "Invalid Time value passed in to DataBuffer::setTime()");
}

void DataBuffer::setDateTime(const DateTime& value, UInt8 encodedType) {
  holdCalendarValue(value, _dateTime, DateTimeEnum, encodedType, owireDateTimeIsValid,
                    "Invalid DateTime value passed in to DataBuffer::setDateTime()");
}

void DataBuffer::setQualityOfServiceInfo(const QualityOfServiceInfo& value) {
  clearComBuffer();
  const QualityOfService& qos = value.getQualityOfService();
  _qos.flags &= static_cast<UInt8>(~1u);
  timelinessToWire(qos.getTimeliness(), _qos);
  rateToWire(qos.getRate(), _qos);
  holdValue(&_qos, kQosLength, QosEnum);
}

void DataBuffer::setRespStatus(const RespStatus& value) {
  clearComBuffer();
  _state.code = value.getStatusCode();
  _state.dataState = static_cast<UInt8>(value.getDataState());
  // The wire has no unspecified stream state: it reads as open.
  const UInt8 stream = static_cast<UInt8>(value.getStreamState());
  _state.streamState = stream == 0 ? 1 : stream;
  const ORVO_String& text = value.getStatusText();
  _state.text.length = text.length();
  if (_managed) {
    releaseStateText();
    _stateText = new char[text.length() + 1];
    std::memcpy(_stateText, text.c_str(), text.length());
    _stateText[text.length()] = '\0';
    _state.text.data = _stateText;
  } else {
    _state.text.data = const_cast<char*>(text.c_str());
  }
  holdValue(&_state, kStateLength, StateEnum);
}

void DataBuffer::setBuffer(const Buffer& buffer, UInt8 type) {
  if (!isSettableBufferType(type)) {
    internal::raiseIllegalCall(
        internal::valueText("Invalid data type (", type, ") passed to DataBuffer::setBuffer()."));
  }
  clearComBuffer();
  const UInt32 size = static_cast<UInt32>(buffer.size());
  const unsigned char* bytes = buffer.c_buf();
  if (_managed) {
    char* copy = nullptr;
    if (size != 0) {
      copy = new char[size];
      std::memcpy(copy, bytes, size);
    }
    _encodedData.data = copy;
    _capacity = size;
  } else {
    _encodedData.data = reinterpret_cast<char*>(const_cast<unsigned char*>(bytes));
  }
  _encodedData.length = size;
  // The bytes count as wire bytes already.
  _encodeState = EncodeStateEncoded;
  _bufferType = type;
  _isBlank = false;
}

void DataBuffer::setEncodedBuffer(const Buffer& buffer) {
  // The base frees the old bytes when the object owns its buffer; a value
  // slot is not such a block.
  releaseOwnedBytes();
  if (holdsOwnStorage(_encodedData.data)) _encodedData.data = nullptr;
  Data::setEncodedBuffer(buffer);
}

void DataBuffer::clear() {
  _bufferView.clear();
  clearComBuffer();
  if (_ownsBuffer && _bufferType == StateEnum) {
    releaseStateText();
    _state.text = OwfBuffer{0, nullptr};
  }
  // Unlike a new object, a cleared one is not blank.
  _isBlank = false;
  _bufferType = 0;
  _encodedType = 0;
  _encodedData = OwfBuffer{0, nullptr};
  _encodeState = EncodeStateNone;
  _ownsBuffer = _managed;
}

}  // namespace data

namespace internal {

void DataBufferInt::releaseEncodedBytes(data::DataBuffer& value) {
  value.releaseOwnedBytes();
  value._encodedData = OwfBuffer{0, nullptr};
}

}  // namespace internal
}  // namespace orvo
