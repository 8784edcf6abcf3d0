// Base of every value, container and message. A Data object lives in one of
// three ways: a decoded view over bytes somebody else owns, an encoded copy
// it owns, or an object being written through an encode iterator. It carries
// both codec iterators inside itself so that neither encoding nor decoding
// allocates. A managed object (constructed with `managed` true) deep-copies
// what it is given; an unmanaged one keeps views whose sources must outlive it.
#ifndef ORVO_COMMON_DATA_H_
#define ORVO_COMMON_DATA_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Handle.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class DataInt;
}  // namespace internal

namespace common {

class Data {
 public:
  enum EncodeState { EncodeStateNone = 0, EncodeStateEncoding = 1, EncodeStateEncoded = 2 };

  virtual ~Data();

  UInt8 getDataType() const { return _dataType; }

  // The encoded bytes, without copying. While an encode iterator is bound the
  // size is what has been written so far.
  virtual const Buffer& getEncodedBuffer() const;
  virtual UInt8 getMajorVersion() const { return _majorVersion; }
  virtual UInt8 getMinorVersion() const { return _minorVersion; }
  // True exactly when no encoded bytes are held.
  virtual bool isBlank() const { return _encodedData.length == 0; }
  // Returns the object to its just-built state, keeping any buffer it has.
  virtual void clear() = 0;
  // Takes encoded bytes: copied when the object owns its buffer, viewed
  // otherwise. A header decoded earlier stays until clear().
  virtual void setEncodedBuffer(const Buffer& buffer);
  // Sets the wire version of the object and of both its iterators.
  virtual void setAssociatedMetaInfo(UInt8 major, UInt8 minor);
  // Takes the version of a connection; an unset handle (major 0) changes
  // nothing, and the iterators follow only version 14.
  virtual void setAssociatedMetaInfo(const Handle& handle);

  // Storage of a Data object may be rebuilt in place as another class, so
  // deletion never relies on the static size of the class.
  static void operator delete(void* p) { ::operator delete(p); }

 protected:
  Data(UInt8 dataType, bool managed);
  Data(const Data&) = delete;
  Data& operator=(const Data&) = delete;

  mutable bool _decoded;  // getters decode lazily
  bool _ownsBuffer;
  bool _managed;
  UInt8 _dataType;
  OwfBuffer _encodedData;
  OwfBuffer _spareData;
  UInt32 _capacity;
  Data* _rootData;
  Data* _parentData;
  OwfEncodeIterator* _encodeIterPtr;
  bool _iterBound;
  mutable OwfDecodeIterator _decodeIter;
  OwfEncodeIterator _encodeIter;
  UInt8 _encodeState;
  UInt8 _majorVersion;
  UInt8 _minorVersion;
  mutable Buffer _encodedView;

  static const ORVO_String _className;

  friend class orvo::internal::DataInt;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_DATA_H_
