#include "Data/Impl/DataInt.h"

#include <cstring>
#include <new>

#include "Data/Impl/DataBufferInt.h"
#include "Data/Impl/FailureFrame.h"
#include "diagnostics/Verify.h"
#include "orvo/common/Msg.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/NoData.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgInt.h"

namespace orvo {
namespace internal {
namespace {

using common::Msg;
using data::NoData;

// Every class that can be built in a NoData's place must fit in it.
static_assert(sizeof(NoData) == NoData::kMorphStorageBytes, "NoData storage size");
static_assert(sizeof(data::DataBuffer) <= sizeof(NoData), "a DataBuffer must fit a NoData");
static_assert(sizeof(data::FieldList) <= sizeof(NoData), "a FieldList must fit a NoData");
static_assert(sizeof(data::ElementList) <= sizeof(NoData), "an ElementList must fit a NoData");
static_assert(sizeof(message::RespMsg) <= sizeof(NoData), "a RespMsg must fit a NoData");
static_assert(sizeof(message::RespMsgInt) <= sizeof(NoData), "a RespMsgInt must fit a NoData");

constexpr UInt32 kSmallestEncodeBuffer = 16;

[[noreturn]] void failDestroy(const char* what, unsigned int number) {
  ORVO_String text(what);
  text.append(number).append(")");
  failMessage(text.c_str(), "DataInt", "'destroyDataObject'");
}

// Morph failures name the FieldList class whatever the object is.
[[noreturn]] void failMorph() {
  failMessage("Unsupported functionality", "FieldList", "'shallowMorph'");
}

template <class Target>
void morphTo(Data* data, UInt8 targetType) {
  if (data->getDataType() == targetType) {
    data->clear();
    return;
  }
  const bool managed = DataInt::managed(data);
  DataInt::destroyDataObject(data);
  new (data) Target(managed);
}

void morphToMsg(Data* data, UInt8 msgType) {
  switch (msgType) {
    case Msg::RespMsgEnum:
      message::RespMsgInt::shallowReConstructor(data, msgType);
      return;
    default:
      failMorph();
  }
}

}  // namespace

void DataInt::destroyDataObject(Data* data) {
  const UInt8 type = data->getDataType();
  switch (type) {
    case data::FieldListEnum:
    case data::ElementListEnum:
    case data::SeriesEnum:
    case data::FilterListEnum:
    case data::MapEnum:
    case data::VectorEnum:
    case data::ArrayEnum:
    case data::NoDataEnum:
    case data::DataBufferEnum:
      data->~Data();
      return;
    case data::MsgEnum: {
      // Post and acknowledgement messages are left out on purpose: only the
      // three original message classes can be destroyed in place.
      const UInt8 msgType = static_cast<Msg*>(data)->getMsgType();
      if (msgType == Msg::RespMsgEnum || msgType == Msg::ReqMsgEnum ||
          msgType == Msg::GenericMsgEnum) {
        data->~Data();
        return;
      }
      failDestroy("Attempt to destroy Msg object of unknown MsgType (", msgType);
    }
    default:
      failDestroy("Attempt to destroy Data object of unknow dataType (", type);
  }
}

void DataInt::shallowMorph(Data* data, UInt8 dataType, UInt8 msgType) {
  switch (dataType) {
    case 0:
    case data::NoDataEnum:
      morphTo<NoData>(data, data::NoDataEnum);
      return;
    case data::FieldListEnum:
      morphTo<data::FieldList>(data, data::FieldListEnum);
      return;
    case data::ElementListEnum:
      morphTo<data::ElementList>(data, data::ElementListEnum);
      return;
    case data::DataBufferEnum:
      morphTo<data::DataBuffer>(data, data::DataBufferEnum);
      return;
    case data::MsgEnum:
      morphToMsg(data, msgType);
      return;
    default:
      failMorph();
  }
}

void DataInt::setEncodedLite(Data* data, const OwfBuffer& encoded) {
  // A DataBuffer's encoded data may point at one of its own value fields,
  // which must never be freed or written over as a heap block.
  if (data->_dataType == data::DataBufferEnum) {
    DataBufferInt::releaseEncodedBytes(*static_cast<data::DataBuffer*>(data));
  }
  OwfBuffer& own = data->_encodedData;
  if (data->_managed) {
    if (!data->_ownsBuffer || data->_capacity < encoded.length) {
      if (data->_ownsBuffer) delete[] own.data;
      own.data = encoded.length != 0 ? new char[encoded.length] : nullptr;
      data->_capacity = encoded.length;
    }
    if (encoded.length != 0) std::memcpy(own.data, encoded.data, encoded.length);
    own.length = encoded.length;
    data->_ownsBuffer = true;
  } else {
    // A view replaces any buffer the object owned from an earlier write.
    if (data->_ownsBuffer) {
      delete[] own.data;
      data->_ownsBuffer = false;
      data->_capacity = 0;
    }
    own = encoded;
  }
  data->_decoded = false;
  data->_encodeState = Data::EncodeStateEncoded;
  unbindEncodeIterator(data);
}

void DataInt::prepareForEncode(Data* data, UInt32 size) {
  OwfBuffer& own = data->_encodedData;
  if (size > data->_capacity) {
    if (own.data != nullptr && data->_ownsBuffer) delete[] own.data;
    data->_ownsBuffer = true;
    own.length = size;
    own.data = new char[size];
    own.data[0] = 0;
    data->_capacity = size;
  } else {
    own.length = data->_capacity;
  }
  if (!data->_iterBound) {
    setEncodeIteratorBuffer(&data->_encodeIter, &own);
    data->_iterBound = true;
  }
  data->_encodeState = Data::EncodeStateEncoding;
}

void DataInt::resetForEncode(Data* data, Data* root, UInt8 /*dataType*/) {
  data->_rootData = root;
  data->_parentData = root;
  data->_decoded = false;
  data->_iterBound = false;
  data->_encodeState = Data::EncodeStateNone;
  data->_majorVersion = 14;
  data->_minorVersion = 0;
  clearEncodeIterator(&data->_encodeIter);
  clearDecodeIterator(&data->_decodeIter);
  OwfBuffer& own = data->_encodedData;
  if (own.data != nullptr && data->_ownsBuffer) {
    own.length = data->_capacity;
    if (own.length != 0) own.data[0] = 0;
  }
  if (own.length != 0 && own.data != nullptr) {
    setEncodeIteratorBuffer(&data->_encodeIter, &own);
  } else {
    data->_encodeIter.buffer = nullptr;
  }
  own.length = 0;
  data->_encodeIterPtr = &data->_encodeIter;
}

void DataInt::reallocateEncodeBuffer(Data* root, OwfEncodeIterator* iter) {
  char* old = root->_encodedData.data;
  OwfBuffer previous{root->_capacity, old};
  iter->buffer = &previous;
  const UInt32 doubled = root->_capacity * 2;
  root->_capacity = doubled < kSmallestEncodeBuffer ? kSmallestEncodeBuffer : doubled;
  root->_encodedData.data = new char[root->_capacity];
  root->_encodedData.length = root->_capacity;
  const int ret = owireRealignEncodeIteratorBuffer(iter, &root->_encodedData);
  ORVO_VERIFY(ret == OWIRE_RET_SUCCESS);
  if (old != nullptr && root->_ownsBuffer) delete[] old;
  root->_ownsBuffer = true;
}

Data* DataInt::findRoot(Data* data) {
  while (data->_rootData != data) data = data->_rootData;
  return data;
}

}  // namespace internal
}  // namespace orvo
