// DataBuffer text forms: getAsString and setFromString.
#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {
namespace {

using common::ORVO_String;
using common::UInt32;
using common::UInt8;
using internal::DataBufferInt;

constexpr UInt32 kSmallestText = 32;
// Calls of the codec's text conversion before a held value is given up on.
constexpr int kTextAttempts = 5;

bool isByteStringType(UInt8 type) {
  switch (type) {
    case BufferEnum:
    case AsciiStringEnum:
    case Utf8StringEnum:
    case OmtesStringEnum:
    case OpaqueEnum:
    case XmlEnum:
    case AnsiPageEnum:
      return true;
    default:
      return false;
  }
}

}  // namespace

// Grows the owned text buffer when `length` does not fit below its
// capacity; either way the whole capacity is offered to the codec.
void DataBuffer::ensureTextCapacity(UInt32 length) const {
  if (length >= _textCapacity) {
    delete[] _textBuffer.data;
    _textCapacity = length + 1 < kSmallestText ? kSmallestText : length + 1;
    _textBuffer.data = new char[_textCapacity];
    _textBuffer.data[0] = '\0';
  }
  _textBuffer.length = _textCapacity;
}

const ORVO_String& DataBuffer::getAsString() const {
  switch (_encodeState) {
    case EncodeStateEncoded:
      textFromWire();
      break;
    case EncodeStateEncoding:
      textFromValue();
      break;
    default:
      internal::failMessage("Unknown Data State.", _className, "getAsString()");
  }
  return _stringValue;
}

// The codec does not say how much room a text needs, so a call refused for
// room is retried with a larger buffer a few times; any other refusal is
// final and must not grow the buffer.
void DataBuffer::textFromWire() const {
  ensureTextCapacity(_encodedData.length);
  int ret = OWIRE_RET_FAILURE;
  for (int attempt = 1;; ++attempt) {
    pointDecoderAtValue();
    _textBuffer.length = _textCapacity;
    ret = owireEncodedPrimitiveToString(&_decodeIter, _bufferType, &_textBuffer);
    if (ret != OWIRE_RET_BUFFER_TOO_SMALL || attempt == kTextAttempts) break;
    delete[] _textBuffer.data;
    _textCapacity = _textCapacity * 2 + 100;
    _textBuffer.data = new char[_textCapacity];
  }
  if (ret < 0) {
    internal::failReason("Data decoding failed in DataBuffer::getAsString(); Reason: ", ret);
  }
  if (ret == OWIRE_RET_BLANK_DATA) {
    _stringValue.clear();
  } else {
    _stringValue.set(_textBuffer.data, _textBuffer.length, false);
  }
}

void DataBuffer::textFromValue() const {
  switch (_bufferType) {
    case IntEnum:
    case UIntEnum:
    case FloatEnum:
    case DoubleEnum:
    case RealEnum:
    case DateEnum:
    case TimeEnum:
      textFromSlot();
      break;
    case AsciiStringEnum:
    case Utf8StringEnum:
    case OmtesStringEnum:
    case OpaqueEnum:
    case XmlEnum:
    case AnsiPageEnum:
      _stringValue.set(reinterpret_cast<const char*>(_bufferView.c_buf()),
                       static_cast<unsigned int>(_bufferView.size()), false);
      break;
    default:
      failWrongType("] in DataBuffer::getAsString()");
  }
}

void DataBuffer::textFromSlot() const {
  ensureTextCapacity(_textBuffer.length);
  if (_encodedData.data == nullptr) {
    _stringValue.clear();
    return;
  }
  const int ret = owirePrimitiveToString(_encodedData.data, _bufferType, &_textBuffer);
  if (ret < 0) {
    internal::raiseIllegalCall(
        ORVO_String("Data conversion failed in DataBuffer::getAsStringInt()"));
  }
  if (ret == OWIRE_RET_BLANK_DATA) {
    _stringValue.clear();
  } else {
    _stringValue.set(_textBuffer.data, _textBuffer.length, false);
  }
}

// "+0" and the empty text are a blank integer: zero in the slot and no
// encoded bytes.
void DataBuffer::holdBlankInteger(UInt8 type, UInt8 encodedType) {
  clearComBuffer();
  _encodedType = encodedType;
  void* slot = &_intValue;
  if (type == IntEnum) {
    _intValue = 0;
  } else {
    _uintValue = 0;
    slot = &_uintValue;
  }
  holdValue(slot, 0, type);
  _isBlank = true;
}

// The parse fills a 32-bit word laid over the enumeration and the two type
// bytes that follow it, so digits past 16 bits land in the width code (the
// type byte is set again by setEnumeration). Text that does not parse leaves
// the word as it was.
void DataBuffer::enumerationFromText(const char* text, UInt8 encodedType) {
  _encodedType = encodedType;
  unsigned int word = static_cast<unsigned int>(_enumValue) |
                      static_cast<unsigned int>(_bufferType) << 16 |
                      static_cast<unsigned int>(_encodedType) << 24;
  std::sscanf(text, "%ud", &word);
  _enumValue = static_cast<common::UInt16>(word & 0xFFFFu);
  _bufferType = static_cast<UInt8>(word >> 16);
  _encodedType = static_cast<UInt8>(word >> 24);
  setEnumeration(_enumValue);
}

// The number is parsed as a double into the place of the float slot, and the
// float is then read from that place: what is stored is the first four bytes
// of the double's image, not the number. Callers have always seen this.
void DataBuffer::floatFromText(const OwfBuffer& text) {
  unsigned char image[sizeof(double)] = {};
  std::memcpy(image, &_floatValue, sizeof(float));
  double parsed;
  std::memcpy(&parsed, image, sizeof(double));
  owireNumericStringToDouble(&parsed, &text);
  float stored;
  std::memcpy(&stored, &parsed, sizeof(float));
  setFloat(stored, 0);
}

// Numbers are set with width code 0 whatever `encodedType` is; the parsers'
// results are not checked, so text that does not parse leaves the slot's old
// value to be set.
void DataBuffer::setFromString(const ORVO_String& text, UInt8 type, UInt8 encodedType) {
  const char* chars = text.c_str();
  const UInt32 length = text.length();
  const OwfBuffer textBuffer{length, const_cast<char*>(chars)};
  if (length == 0) _isBlank = true;
  switch (type) {
    case EnumerationEnum:
      enumerationFromText(chars, encodedType);
      break;
    case Int32Enum:
    case IntEnum:
      if (length == 0 || text == "+0") {
        holdBlankInteger(IntEnum, encodedType);
      } else {
        std::sscanf(chars, "%" SCNd64, &_intValue);
        setInt64(_intValue, 0);
      }
      break;
    case UInt32Enum:
    case UIntEnum:
      if (length == 0 || text == "+0") {
        holdBlankInteger(UIntEnum, encodedType);
      } else {
        std::sscanf(chars, "%" SCNu64, &_uintValue);
        setUInt64(_uintValue, 0);
      }
      break;
    case FloatEnum:
      floatFromText(textBuffer);
      break;
    case DoubleEnum:
      owireNumericStringToDouble(&_doubleValue, &textBuffer);
      setDouble(_doubleValue, 0);
      break;
    case Real32Enum:
    case RealEnum:
      owireNumericStringToReal(&DataBufferInt::record(_real), &textBuffer);
      setReal64(_real, 0);
      break;
    case DateEnum:
      owireDateStringToDate(&DataBufferInt::record(_date), &textBuffer);
      setDate(_date, 0);
      break;
    case TimeEnum:
      owireTimeStringToTime(&DataBufferInt::record(_time), &textBuffer);
      setTime(_time, 0);
      break;
    default:
      if (!isByteStringType(type)) {
        internal::raiseIllegalCall(internal::valueText(
            "Invalid data type (", type, ") passed in to DataBuffer::setFromString()."));
      }
      _encodedType = encodedType;
      _bufferView.setFrom(reinterpret_cast<unsigned char*>(const_cast<char*>(chars)),
                          static_cast<int>(length), static_cast<int>(length), false);
      setBuffer(_bufferView, type);
      // A managed object keeps no view of the caller's text, only of its copy.
      if (_managed) getBuffer();
  }
}

}  // namespace data
}  // namespace orvo
