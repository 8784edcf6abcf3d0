#include "orvo/message/AttribInfo.h"

#include <new>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/FailureFrame.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace message {

using common::Buffer;
using common::Data;
using common::Int32;
using common::ORVO_String;
using common::UInt32;
using common::UInt8;
using internal::DataInt;

namespace {

constexpr UInt8 kDefaultNameType = 1;
// Wire codes below this one are primitive values, which cannot be an attrib.
constexpr UInt8 kFirstContainerType = 0x80;

// The data type an attrib is stored as: a DataBuffer counts as the value it
// holds.
UInt8 attribTypeOf(const Data& data) {
  const UInt8 type = data.getDataType();
  if (type != data::DataBufferEnum) return type;
  return static_cast<const data::DataBuffer&>(data).getDataBufferType();
}

bool onlyFirstIsSet(UInt8 mask, UInt8 first, UInt8 second) {
  return (mask & first) != 0 && (mask & second) == 0;
}

}  // namespace

AttribInfo::AttribInfo(bool managed)
    : _hintMask(0),
      _nameType(kDefaultNameType),
      _serviceId(0),
      _id(0),
      _dataMask(0),
      _attrib(nullptr),
      _managed(managed) {
  new (_attribStorage) data::NoData(managed);
}

AttribInfo::AttribInfo(const AttribInfo& other) : AttribInfo(other._managed) { *this = other; }

AttribInfo::~AttribInfo() {
  _name.clear();
  _serviceName.clear();
  releaseAttribImage();
  DataInt::destroyDataObject(&storage());
}

AttribInfo& AttribInfo::operator=(const AttribInfo& other) {
  if (this == &other) return *this;
  _managed = other._managed;
  _hintMask = other._hintMask;
  if (_hintMask & NameFlag) _name = other._name;
  if (_hintMask & NameTypeFlag) _nameType = other._nameType;
  if (_hintMask & ServiceNameFlag) _serviceName = other._serviceName;
  if (_hintMask & ServiceIDFlag) _serviceId = other._serviceId;
  if (_hintMask & IDFlag) _id = other._id;
  // The attrib is always copied into the own storage, even when unmanaged:
  // the source's attrib may be a view that dies with the source.
  if (_hintMask & AttribFlag) copyAttribIntoStorage(other.getAttrib());
  _dataMask = other._dataMask;
  return *this;
}

AttribInfo* AttribInfo::clone() const { return new AttribInfo(*this); }

void AttribInfo::clear() {
  _hintMask = 0;
  _name.clear();
  _nameType = kDefaultNameType;
  _serviceName.clear();
  // The service id value stays on purpose; only its bit goes.
  _id = 0;
  _dataMask = 0;
  _attrib = nullptr;
  releaseAttribImage();
}

void AttribInfo::setDataMask(UInt32 dataMask) {
  _dataMask = dataMask;
  _hintMask |= DataMaskFlag;
}

void AttribInfo::setName(const ORVO_String& name) {
  if (_managed || name.length() > 0) storeString(_name, name);
  _hintMask |= NameFlag;
}

void AttribInfo::setNameType(UInt8 nameType) {
  _nameType = nameType;
  _hintMask |= NameTypeFlag;
}

void AttribInfo::setServiceName(const ORVO_String& serviceName) {
  // The text names setServiceID() here as well; it is the system's own.
  if (onlyFirstIsSet(_hintMask, ServiceIDFlag, ServiceNameFlag)) {
    internal::raiseBadValue(
        "The AttribInfo instance calling AttribInfo::setServiceID() method has ServiceID already "
        "set. Not allowed to set both the ServiceID and also serviceName.");
  }
  storeString(_serviceName, serviceName);
  _hintMask = static_cast<UInt8>((_hintMask & ~ServiceIDFlag) | ServiceNameFlag);
}

void AttribInfo::setServiceID(UInt32 serviceId) {
  if (onlyFirstIsSet(_hintMask, ServiceNameFlag, ServiceIDFlag)) {
    internal::raiseBadValue(
        "The AttribInfo instance calling AttribInfo::setServiceID() method has Service name "
        "already set. Not allowed to set both the ServiceName and also serviceID.");
  }
  _hintMask = static_cast<UInt8>((_hintMask & ~ServiceNameFlag) | ServiceIDFlag);
  _serviceId = serviceId;
}

void AttribInfo::setServiceInt(const ORVO_String& name, UInt32 id, bool hasId) {
  storeString(_serviceName, name);
  if (name.length() > 0) _hintMask |= ServiceNameFlag;
  if (hasId) {
    _hintMask |= ServiceIDFlag;
    _serviceId = id;
  }
}

void AttribInfo::setID(Int32 id) {
  _id = id;
  _hintMask |= IDFlag;
}

const Data& AttribInfo::getAttrib() const {
  if (_attrib == nullptr) _attrib = &storage();
  return *_attrib;
}

void AttribInfo::setAttrib(const Data& data) {
  if (attribTypeOf(data) < kFirstContainerType) {
    internal::raiseBadValue(
        "Data passed in method AttribInfo::setAttrib() has invalid data format.");
  }
  if (_managed) {
    copyAttribIntoStorage(data);
  } else {
    _attrib = &data;
  }
  _hintMask |= AttribFlag;
}

void AttribInfo::storeString(ORVO_String& target, const ORVO_String& source) {
  if (_managed) {
    target = source;
  } else {
    target.set(source.data(), source.length(), false);
  }
}

void AttribInfo::copyAttribIntoStorage(const Data& data) {
  Data& own = storage();
  if (&data != &own) {
    DataInt::shallowMorph(&own, attribTypeOf(data), 0);
    own.setEncodedBuffer(data.getEncodedBuffer());
    own.setAssociatedMetaInfo(data.getMajorVersion(), data.getMinorVersion());
  }
  _attrib = &own;
}

// Frees the bytes the storage owns and leaves it blank and undecoded, in the
// class it has.
void AttribInfo::releaseAttribImage() {
  Data& own = storage();
  own.setEncodedBuffer(Buffer());
  DataInt::encodedData(&own).data = nullptr;
  DataInt::decoded(&own) = false;
  DataInt::encodeState(&own) = Data::EncodeStateNone;
  own.clear();  // drops a header decoded from the freed bytes
}

Data& AttribInfo::storage() { return *std::launder(reinterpret_cast<Data*>(_attribStorage)); }

const Data& AttribInfo::storage() const {
  return *std::launder(reinterpret_cast<const Data*>(_attribStorage));
}

}  // namespace message
}  // namespace orvo
