#include "orvo/message/RespMsgInt.h"

#include <new>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/RespMsgTranslatorInt.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/NoData.h"
#include "orvo/message/AttribInfo.h"

namespace orvo {
namespace message {
namespace {

using common::Data;
using common::UInt32;
using common::UInt8;
using internal::DataInt;

constexpr UInt8 kFirstBufferOnlyFormat = 0xE0;

}  // namespace

RespMsgInt::RespMsgInt(UInt32 /*size*/) : RespMsg(false) {}

RespMsgInt::~RespMsgInt() { _payloadP = nullptr; }

void RespMsgInt::setHintMaskInt(RespMsg& msg, UInt32 mask) {
  msg._hintMask |= static_cast<UInt8>(mask);
}

void RespMsgInt::unSetHintMaskInt(RespMsg& msg, UInt32 mask) {
  msg._hintMask &= static_cast<UInt8>(~mask);
}

common::Buffer& RespMsgInt::getEncodedBufferInt(RespMsg& msg) { return msg._encodedView; }

void RespMsgInt::setHeaderInt(RespMsg& msg, const UInt8* data, int length) {
  msg._header.setFrom(const_cast<UInt8*>(data), length, length, false);
  msg._hintMask |= RespMsg::HeaderFlag;
}

void RespMsgInt::setPublisherPrincipalIdentity(RespMsg& msg, UInt32 userAddress, UInt32 userID) {
  msg._principalIdentity.setUserAddress(userAddress);
  msg._principalIdentity.setUserID(userID);
}

void RespMsgInt::setDataInt(RespMsg& msg, const OwireMsg* record, UInt8 major, UInt8 minor) {
  const UInt8 format = record->msgBase.bodyFormat;
  Data* storage = msg._payloadStorage;
  if (isOwireDataFormatAnOrvoDataBuffer(format)) {
    DataInt::shallowMorph(storage, data::DataBufferEnum, 0);
    static_cast<data::DataBuffer*>(storage)->setDataBufferType(format);
  } else {
    DataInt::shallowMorph(storage, format, 0);
  }
  internal::setDecodedBytes(storage, record->msgBase.body);
  storage->setAssociatedMetaInfo(major, minor);
  msg._payloadP = storage;
  if (format == data::NoDataEnum) {
    unSetHintMaskInt(msg, RespMsg::PayloadFlag);
  } else {
    setHintMaskInt(msg, RespMsg::PayloadFlag);
  }
}

AttribInfo& RespMsgInt::ownAttribInfo(RespMsg& msg) { return *msg._attribInfoStorage; }

ManifestInt& RespMsgInt::ownManifest(RespMsg& msg) { return msg._manifest; }

common::RespStatus& RespMsgInt::decodedRespStatus(RespMsg& msg) {
  return msg._respStatusP != nullptr ? const_cast<common::RespStatus&>(*msg._respStatusP)
                                     : msg._respStatus;
}

common::QualityOfService& RespMsgInt::decodedQualityOfService(RespMsg& msg) {
  return msg._qosP != nullptr ? const_cast<common::QualityOfService&>(*msg._qosP) : msg._qos;
}

void RespMsgInt::shallowReConstructor(Data* data, UInt8 msgType) {
  if (data->getDataType() == data::MsgEnum &&
      static_cast<common::Msg*>(data)->getMsgType() == msgType) {
    data->clear();
    return;
  }
  const bool managed = DataInt::managed(data);
  DataInt::destroyDataObject(data);
  new (data) RespMsg(managed);
}

bool RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(UInt8 format) {
  return format == data::OpaqueEnum || format == data::XmlEnum || format == data::AnsiPageEnum ||
         format > kFirstBufferOnlyFormat;
}

}  // namespace message
}  // namespace orvo
