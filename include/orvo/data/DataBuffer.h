// The holder of one primitive value of any type: integers, floats, scaled
// reals, dates and times, quality of service, status, enumerations and byte
// strings.
//
// A setter keeps the value unencoded in a slot of its own and points the
// encoded data at that slot, so that a write iterator hands the value to the
// codec directly (state EncodeStateEncoding). Byte strings given to setBuffer
// and bytes given to setEncodedBuffer are wire bytes (EncodeStateEncoded);
// the getters decode them lazily, once, into the slot of the stored type.
// Getters convert between some types; a type they cannot serve raises
// InvalidUsageException, and a number that does not fit the asked width
// raises OutOfRangeException (getInt32 never does: it cuts to 32 bits).
//
// A managed DataBuffer copies what it is given; an unmanaged one keeps
// pointers to the caller's records and bytes, which must outlive it.
#ifndef ORVO_DATA_DATA_BUFFER_H_
#define ORVO_DATA_DATA_BUFFER_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/QualityOfServiceInfo.h"
#include "orvo/common/RespStatus.h"
#include "orvo/common/Types.h"
#include "orvo/data/Date.h"
#include "orvo/data/DateTime.h"
#include "orvo/data/Real32.h"
#include "orvo/data/Real64.h"
#include "orvo/data/Time.h"

namespace orvo {
namespace internal {
class DataBufferInt;
}  // namespace internal

namespace data {

class DataBuffer : public common::Data {
 public:
  // Older type codes the setters accept and store as 3, 4 and 8.
  enum LegacyTypeEnum { Int32Enum = 1, UInt32Enum = 2, Real32Enum = 7 };

  explicit DataBuffer(bool managed);
  ~DataBuffer() override;

  // Declares the type of the bytes held (folding the older codes) and marks
  // the value blank until it is read; nothing else changes.
  void setDataBufferType(common::UInt8 type);
  common::UInt8 getDataBufferType() const { return _bufferType; }
  // Width code that selects a fixed-width wire form inside a set definition.
  common::UInt8 getEncodedType() const { return _encodedType; }

  // A blank value of `type`.
  void setBlankData(common::UInt8 type, common::UInt8 encodedType = 0);

  void setInt32(int value, common::UInt8 encodedType = 0);
  void setUInt32(common::UInt32 value, common::UInt8 encodedType = 0);
  void setInt64(common::Int64 value, common::UInt8 encodedType = 0);
  void setInt(common::Int64 value, common::UInt8 encodedType = 0);
  void setUInt64(common::UInt64 value, common::UInt8 encodedType = 0);
  void setUInt(common::UInt64 value, common::UInt8 encodedType = 0);
  void setFloat(float value, common::UInt8 encodedType = 0);
  void setDouble(double value, common::UInt8 encodedType = 0);
  void setReal(const Real64& value, common::UInt8 encodedType = 0);
  void setReal32(const Real32& value, common::UInt8 encodedType = 0);
  void setReal64(const Real64& value, common::UInt8 encodedType = 0);
  // A real built by the codec from a binary number at magnitude `hint`.
  void setReal32FromFloat(float value, common::UInt8 hint);
  void setReal64FromDouble(double value, common::UInt8 hint);
  void setEnumeration(common::UInt16 value);
  // The date and time setters raise InvalidUsageException when the fields
  // together do not make a valid value; the type is then set and the value
  // is empty.
  void setDate(const Date& value, common::UInt8 encodedType = 0);
  void setTime(const Time& value, common::UInt8 encodedType = 0);
  void setDateTime(const DateTime& value, common::UInt8 encodedType = 0);
  void setQualityOfServiceInfo(const common::QualityOfServiceInfo& value);
  void setRespStatus(const common::RespStatus& value);
  // Encoded bytes of a byte-string or other wire type (16..134, 225..255).
  void setBuffer(const common::Buffer& buffer, common::UInt8 type);
  // Parses `text` as a value of `type`; strings are taken as they are.
  void setFromString(const common::ORVO_String& text, common::UInt8 type,
                     common::UInt8 encodedType = 0);

  void setEncodedBuffer(const common::Buffer& buffer) override;
  // Back to an empty, non-blank value of type 0, keeping nothing.
  void clear() override;
  // Decodes held wire bytes of a value type to answer.
  bool isBlank() const override;

  common::Int64 getInt64() const;
  common::Int64 getInt() const { return getInt64(); }
  common::UInt64 getUInt64() const;
  common::UInt64 getUInt() const { return getUInt64(); }
  // The low 32 bits of the value, whatever its size.
  int getInt32() const;
  common::UInt32 getUInt32() const;
  float getFloat() const;
  double getDouble() const;
  const Real64& getReal64() const;
  const Real64& getReal() const { return getReal64(); }
  const Real32& getReal32() const;
  const Date& getDate() const;
  const Time& getTime() const;
  const DateTime& getDateTime() const;
  const common::QualityOfServiceInfo& getQualityOfServiceInfo() const;
  const common::RespStatus& getRespStatus() const;
  common::UInt16 getEnumeration() const;
  // The held bytes as they are, for any type; a view, never a copy.
  const common::Buffer& getBuffer() const;
  // The value as text. Raises InvalidUsageException on a cleared object.
  const common::ORVO_String& getAsString() const;

 private:
  friend class orvo::internal::DataBufferInt;

  void clearComBuffer();
  void releaseOwnedBytes();
  void releaseStateText();
  bool holdsOwnStorage(const void* p) const;
  void holdValue(void* slot, common::UInt32 length, common::UInt8 type);
  template <class Value, class Record>
  void holdCalendarValue(const Value& value, Value& own, common::UInt8 type,
                         common::UInt8 encodedType, bool (*isValid)(const Record*),
                         const char* invalidText);
  void holdReal(const OwfReal& record, common::UInt8 realLength, common::UInt8 encodedType);
  void holdBlankInteger(common::UInt8 type, common::UInt8 encodedType);
  void enumerationFromText(const char* text, common::UInt8 encodedType);
  void floatFromText(const OwfBuffer& text);

  bool needsDecode() const;
  template <class T>
  int decodeInto(int (*decoder)(OwfDecodeIterator*, T*), T* slot, const char* reason) const;
  void pointDecoderAtValue() const;
  OwfReal decodeRealRecord(const char* reason) const;
  const Real64& realValue(const char* reason, const char* wrongType) const;
  common::Int64 integerFromReal() const;
  void qosInfoFromWire() const;
  void ensureTextCapacity(common::UInt32 length) const;
  void textFromWire() const;
  void textFromValue() const;
  void textFromSlot() const;
  [[noreturn]] void failWrongType(const char* close) const;

  mutable common::UInt32 _textCapacity;
  mutable common::UInt16 _enumValue;
  common::UInt8 _bufferType;
  common::UInt8 _encodedType;
  mutable common::Int64 _intValue;
  mutable common::UInt64 _uintValue;
  mutable float _floatValue;
  mutable double _doubleValue;
  mutable common::QualityOfServiceInfo _qosInfo;
  mutable Date _date;
  mutable Time _time;
  mutable DateTime _dateTime;
  // One record read as either face: getReal32 answers from the same storage.
  union {
    mutable Real64 _real;
    Real32 _real32;
  };
  mutable OwfState _state;
  mutable OwfQos _qos;
  mutable common::RespStatus _respStatus;
  mutable common::Buffer _bufferView;
  mutable common::ORVO_String _stringValue;
  mutable OwfBuffer _textBuffer;
  mutable bool _isBlank;
  char* _stateText;  // the status text copy a managed object owns, or null

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_DATA_BUFFER_H_
