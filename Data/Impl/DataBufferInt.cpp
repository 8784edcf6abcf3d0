#include "Data/Impl/DataBufferInt.h"

#include <cstring>

#include "Data/Impl/FailureFrame.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace internal {
namespace {

using common::ORVO_String;
using common::QualityOfService;
using data::DataBuffer;

[[noreturn]] void failCombination(const char* text) { raiseIllegalCall(ORVO_String(text)); }

// The packed integer forms: 1, 2, 4 and 8 bytes (width codes 1, 2, 4, 7),
// signed and unsigned interleaved from 0x40.
UInt8 packedIntegerType(UInt8 type, UInt8 encodedType) {
  const UInt8 unsignedStep = type == data::UIntEnum ? 1 : 0;
  switch (encodedType) {
    case 1:
      return 0x40 + unsignedStep;
    case 2:
      return 0x42 + unsignedStep;
    case 4:
      return 0x44 + unsignedStep;
    case 7:
      return 0x46 + unsignedStep;
    default:
      failCombination("Wrong combination");
  }
}

// The wire record of a quality of service read back for a copy. Unlike the
// getter's reading, rate 3 gives the number 3 and the delay is taken as it
// is; codes past 3 keep the defaults.
QualityOfService qosForCopy(const OwfQos& wire) {
  QualityOfService qos;
  switch (wire.timeliness) {
    case 0:
      qos.setTimeliness(QualityOfService::unspecifiedTimeliness);
      break;
    case 1:
      qos.setTimeliness(QualityOfService::realTime);
      break;
    case 2:
      qos.setTimeliness(QualityOfService::unspecifiedDelayedTimeliness);
      break;
    case 3:
      qos.setTimeliness(wire.timeInfo);
      break;
    default:
      break;
  }
  switch (wire.rate) {
    case 0:
      qos.setRate(QualityOfService::unspecifiedRate);
      break;
    case 1:
      qos.setRate(QualityOfService::tickByTick);
      break;
    case 2:
      qos.setRate(QualityOfService::justInTimeFilteredRate);
      break;
    case 3:
      qos.setRate(3);
      break;
    default:
      break;
  }
  return qos;
}

}  // namespace

void checkDateTimeField(unsigned int value, unsigned int low, unsigned int high, const char* field,
                        const char* where) {
  if (value >= low && value <= high) return;
  ORVO_String open("Attempt to pass invalid value of ");
  open.append(field).append(" [");
  ORVO_String close("] into ");
  close.append(where).append(".");
  raiseBadValue(valueText(open.c_str(), value, close.c_str()));
}

UInt8 DataBufferInt::setDefinitionType(UInt8 type, UInt8 encodedType) {
  if (encodedType == 0) return type;
  switch (type) {
    case data::IntEnum:
    case data::UIntEnum:
      return packedIntegerType(type, encodedType);
    case data::FloatEnum:
      if (encodedType == 4) return 0x48;
      break;
    case data::DoubleEnum:
      if (encodedType == 7) return 0x49;
      break;
    case data::RealEnum:
      if (encodedType == 9) return 0x4B;
      break;
    case data::DateEnum:
      if (encodedType == 4) return 0x4C;
      break;
    case data::TimeEnum:
      if (encodedType == 3) return 0x4D;
      if (encodedType == 5) return 0x4E;
      break;
    case data::DateTimeEnum:
      if (encodedType == 6) return 0x4F;
      if (encodedType == 8) return 0x50;
      break;
    default:
      break;
  }
  failCombination("Wrong combination of Type and EncodedType");
}

UInt8 DataBufferInt::setDefinitionType(const DataBuffer& value) {
  return setDefinitionType(value._bufferType, value._encodedType);
}

// The value is read from the source's slots, into which isBlank() has decoded
// any wire bytes. An unmanaged source holds a date, time or real in the
// caller's record instead, and that record is what is copied. The value is
// set from the target's own slot so that even an unmanaged target points at
// storage that lives as long as it does.
void DataBufferInt::copyPrimitiveDataType(DataBuffer& target, const DataBuffer& source) {
  if (&source == &target) return;
  if (source.isBlank()) {
    target.setBlankData(source._bufferType, source._encodedType);
    return;
  }
  auto heldValue = [&source](auto value) {
    auto& record = DataBufferInt::record(value);
    const OwfBuffer& held = source._encodedData;
    if (source._encodeState == DataBuffer::EncodeStateEncoding && held.data != nullptr &&
        held.length == sizeof(record)) {
      std::memcpy(&record, held.data, sizeof(record));
    }
    return value;
  };
  const UInt8 width = source._encodedType;
  switch (source._bufferType) {
    case data::IntEnum:
      target.setInt(source._intValue, width);
      break;
    case data::UIntEnum:
      target.setUInt(source._uintValue, width);
      break;
    case data::FloatEnum:
      target.setFloat(source._floatValue, width);
      break;
    case data::DoubleEnum:
      target.setDouble(source._doubleValue, width);
      break;
    case data::RealEnum:
      target._real = heldValue(source._real);
      target.setReal(target._real, width);
      break;
    case data::DateEnum:
      target._date = heldValue(source._date);
      target.setDate(target._date, width);
      break;
    case data::TimeEnum:
      target._time = heldValue(source._time);
      target.setTime(target._time, width);
      break;
    case data::DateTimeEnum:
      target._dateTime = heldValue(source._dateTime);
      target.setDateTime(target._dateTime, width);
      break;
    case data::QosEnum:
      target._qosInfo.setQualityOfService(qosForCopy(source._qos));
      target._qosInfo.setQualityOfServiceInstCount(target._qosInfo.getQualityOfServiceInstCount() +
                                                   1);
      target.setQualityOfServiceInfo(target._qosInfo);
      break;
    case data::StateEnum:
      target.setRespStatus(source.getRespStatus());
      break;
    case data::EnumerationEnum:
      target.setEnumeration(source._enumValue);
      break;
    default:
      failMessage("Illegal DataBuffer Type", "DataBufferInt", "copyPrimitiveDataType()");
  }
}

}  // namespace internal
}  // namespace orvo
