#include "orvo/common/Data.h"

#include <cstring>

#include "Data/Impl/DataInt.h"

namespace orvo {
namespace common {

const ORVO_String Data::_className("Data");

Data::Data(UInt8 dataType, bool managed)
    : _decoded(false),
      _ownsBuffer(false),
      _managed(managed),
      _dataType(dataType),
      _encodedData{0, nullptr},
      _spareData{0, nullptr},
      _capacity(0),
      _rootData(this),
      _parentData(this),
      _encodeIterPtr(&_encodeIter),
      _iterBound(false),
      _encodeState(EncodeStateNone),
      _majorVersion(14),
      _minorVersion(0) {
  // Iterators are copied as plain memory, so no byte of them is left
  // undefined.
  std::memset(&_decodeIter, 0, sizeof(_decodeIter));
  std::memset(&_encodeIter, 0, sizeof(_encodeIter));
  clearDecodeIterator(&_decodeIter);
  clearEncodeIterator(&_encodeIter);
}

Data::~Data() {
  if (_ownsBuffer) {
    delete[] _encodedData.data;
    delete[] _spareData.data;
    _encodedData.data = nullptr;
    _spareData.data = nullptr;
  }
}

const Buffer& Data::getEncodedBuffer() const {
  const int size = _encodeIter.buffer != nullptr ? static_cast<int>(getEncodedLength(&_encodeIter))
                                                 : static_cast<int>(_encodedData.length);
  _encodedView.setFrom(reinterpret_cast<unsigned char*>(_encodedData.data), size, size, false);
  return _encodedView;
}

void Data::setEncodedBuffer(const Buffer& buffer) {
  const UInt32 size = static_cast<UInt32>(buffer.size());
  if (_ownsBuffer) {
    delete[] _encodedData.data;
    _encodedData.data = nullptr;
    _capacity = 0;
    if (size != 0) {
      _encodedData.data = new char[size];
      std::memcpy(_encodedData.data, buffer.c_buf(), size);
      _capacity = size;  // a later write must not trust an older, larger size
    }
  } else {
    _encodedData.data = reinterpret_cast<char*>(const_cast<unsigned char*>(buffer.c_buf()));
  }
  _encodedData.length = size;
  _encodeState = EncodeStateEncoded;
  internal::DataInt::unbindEncodeIterator(this);
}

void Data::setAssociatedMetaInfo(UInt8 major, UInt8 minor) {
  _majorVersion = major;
  _minorVersion = minor;
  _decodeIter.majorVersion = major;
  _decodeIter.minorVersion = minor;
  _encodeIter.majorVersion = major;
  _encodeIter.minorVersion = minor;
}

void Data::setAssociatedMetaInfo(const Handle& handle) {
  if (handle.getMajorVersion() != 0) {
    _majorVersion = handle.getMajorVersion();
    _minorVersion = handle.getMinorVersion();
  }
  // Only the version the codec speaks reaches the iterators.
  setDecodeIteratorVersion(&_decodeIter, _majorVersion, _minorVersion);
  setEncodeIteratorVersion(&_encodeIter, _majorVersion, _minorVersion);
}

}  // namespace common
}  // namespace orvo
