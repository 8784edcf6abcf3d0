// The library's internal face of Data: encode buffer management, entry data
// and in-place morphing. Containers, iterators and messages reach the Data
// fields through here.
#ifndef ORVO_DATA_IMPL_DATA_INT_H_
#define ORVO_DATA_IMPL_DATA_INT_H_

#include "orvo/common/Data.h"

namespace orvo {
namespace internal {

using common::Data;
using common::UInt8;
using common::UInt32;

class DataInt {
 public:
  // Runs the destructor of the object's real class, keeping its storage.
  // Fails for a type or message type the library cannot destroy in place.
  static void destroyDataObject(Data* data);
  // Rebuilds the object in place as the class of `dataType` (and `msgType`
  // for messages); an object of that class already is only cleared.
  static void shallowMorph(Data* data, UInt8 dataType, UInt8 msgType);

  // Entry data taken from a decoded entry: copied when managed, viewed
  // otherwise; the object must decode again.
  static void setEncodedLite(Data* data, const OwfBuffer& encoded);
  // Makes sure the object has a buffer of at least `size` bytes bound to
  // its own encode iterator, and marks it as being written.
  static void prepareForEncode(Data* data, UInt32 size);
  // Clears the encode and decode state for a new write under `root`,
  // keeping any buffer the object has.
  static void resetForEncode(Data* data, Data* root, UInt8 dataType);
  // Doubles the root's buffer and moves what `iter` has written into it.
  static void reallocateEncodeBuffer(Data* root, OwfEncodeIterator* iter);

  // Forgets a write in progress: the object now holds complete bytes, and a
  // binding left by clear() must not measure them.
  static void unbindEncodeIterator(Data* data) {
    data->_encodeIter.buffer = nullptr;
    data->_iterBound = false;
  }

  // The outermost object whose buffer receives the bytes of `data`.
  static Data* findRoot(Data* data);

  // Field access for library classes that are not Data subclasses.
  static OwfBuffer& encodedData(Data* data) { return data->_encodedData; }
  static OwfDecodeIterator& decodeIter(const Data* data) { return data->_decodeIter; }
  static OwfEncodeIterator& encodeIter(Data* data) { return data->_encodeIter; }
  static OwfEncodeIterator*& encodeIterPtr(Data* data) { return data->_encodeIterPtr; }
  static Data*& rootData(Data* data) { return data->_rootData; }
  static Data*& parentData(Data* data) { return data->_parentData; }
  static UInt8& encodeState(Data* data) { return data->_encodeState; }
  static bool& decoded(Data* data) { return data->_decoded; }
  static bool& ownsBuffer(Data* data) { return data->_ownsBuffer; }
  static bool managed(const Data* data) { return data->_managed; }
  static UInt32 capacity(const Data* data) { return data->_capacity; }
  static bool iterBound(const Data* data) { return data->_iterBound; }
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_DATA_INT_H_
