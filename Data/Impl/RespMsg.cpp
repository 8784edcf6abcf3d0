#include "orvo/message/RespMsg.h"

#include <cstring>
#include <memory>
#include <new>

#include "Data/Impl/DataInt.h"
#include "Data/Impl/ElementListInt.h"
#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/FieldListInt.h"
#include "Data/Impl/RespMsgTranslatorInt.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/FieldList.h"
#include "orvo/data/NoData.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/DomainMessageValidatorManager.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/RespMsgTranslator.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {
namespace {

using common::Buffer;
using common::Data;
using common::ORVO_String;
using common::UInt8;
using internal::DataInt;

constexpr UInt8 kWireMajorVersion = 14;
// Minor version the codec is given when the message has no version of its own.
constexpr UInt8 kAnyMinorVersion = 0xFF;

const char kDefinitionInListText[] =
    "Payload FieldList or ElementList should not be encoded to contain a DataDef. Only Series, "
    "Map or Vector should contain actual defintions. Reported";
const char kEncodeFailedText[] =
    "The method RespMsg::getEncodedBuffer() is called from invalid/incomplete message";
const char kDecodeFailedText[] =
    "Data passed in method RespMsg::setEncodedBuffer() has invalid data format.";

// True when a field or element list was written with a set definition, which
// only Map, Series and Vector may carry.
bool listCarriesDefinition(const Data& data) {
  if (data.getDataType() == data::FieldListEnum) {
    auto& list = const_cast<data::FieldList&>(static_cast<const data::FieldList&>(data));
    const common::UInt16 id = internal::FieldListInt::record(list).setId;
    return id < OWF_MAX_LOCAL_SET_DEFS &&
           internal::FieldListInt::defDb(list).definitions[id].setId != OWF_SET_DEF_FREE;
  }
  if (data.getDataType() == data::ElementListEnum) {
    auto& list = const_cast<data::ElementList&>(static_cast<const data::ElementList&>(data));
    const common::UInt16 id = internal::ElementListInt::record(list).setId;
    return id < OWF_MAX_LOCAL_SET_DEFS &&
           internal::ElementListInt::defDb(list).definitions[id].setId != OWF_SET_DEF_FREE;
  }
  return false;
}

// The wire type of a payload: a DataBuffer counts as the value it holds.
UInt8 payloadTypeOf(const Data& data) {
  if (data.getDataType() != data::DataBufferEnum) return data.getDataType();
  return static_cast<const data::DataBuffer&>(data).getDataBufferType();
}

// The codec reads any minor version of 14 unless the message has one.
template <class Iterator>
void setMessageVersion(Iterator* iter, UInt8 major, UInt8 minor) {
  iter->majorVersion = kWireMajorVersion;
  iter->minorVersion = kAnyMinorVersion;
  if (major == kWireMajorVersion) {
    iter->majorVersion = major;
    iter->minorVersion = minor;
  }
}

}  // namespace

const ORVO_String RespMsg::_className("RespMsg");

RespMsg::RespMsg(bool managed)
    : Msg(managed),
      _respType(RefreshResp),
      _respTypeNum(0),
      _headerP(nullptr),
      _payloadStorage(new data::NoData(managed)),
      _payloadP(nullptr),
      _manifest(managed),
      _manifestP(nullptr),
      _attribInfoStorage(new AttribInfo(managed)),
      _attribInfoP(nullptr),
      _qosP(nullptr),
      _respStatusP(nullptr) {
  _msgType = RespMsgEnum;
}

RespMsg::RespMsg(const RespMsg& other) : RespMsg(other._managed) {
  _principalIdentity = other._principalIdentity;
  *this = other;
}

RespMsg::~RespMsg() {
  clear();
  delete _payloadStorage;
  delete _attribInfoStorage;
}

RespMsg* RespMsg::clone() const { return new RespMsg(*this); }

RespMsg& RespMsg::operator=(const RespMsg& other) {
  if (this == &other) return *this;
  Msg::operator=(other);
  _respType = other._respType;
  _respTypeNum = (_hintMask & RespTypeNumFlag) ? other._respTypeNum : 0;
  if (_hintMask & RespStatusFlag) copyRespStatus(other.getRespStatus());
  if (_hintMask & QualityOfServiceFlag) _qos = other.getQualityOfService();
  if (_hintMask & AttribInfoFlag) *_attribInfoStorage = other.getAttribInfo();
  if (_hintMask & ManifestFlag) _manifest = other.getManifest();
  if (_hintMask & HeaderFlag) _header = other.getHeader();
  if (_hintMask & PrincipalIdentityFlag) _principalIdentity = other._principalIdentity;
  if (_hintMask & PayloadFlag) copyPayloadIntoStorage(other.getPayload());
  return *this;
}

void RespMsg::clear() {
  Msg::clear();
  _respType = RefreshResp;
  _respTypeNum = 0;
  _header.clear();
  releasePayloadImage();
  _manifest.clear();
  _attribInfoStorage->clear();
  releaseDecodedAttrib();
  _principalIdentity.clear();
  _encodedView.clear();
  _decodedBytes.clear();
  _headerP = nullptr;
  _payloadP = nullptr;
  _manifestP = nullptr;
  _attribInfoP = nullptr;
  _qosP = nullptr;
  _respStatusP = nullptr;
  _majorVersion = kWireMajorVersion;
  _minorVersion = 0;
}

// Frees the bytes the storage owns and leaves it empty and undecoded, in the
// class it has, so that nothing in it views bytes that clear() releases.
void RespMsg::releasePayloadImage() {
  Data* storage = _payloadStorage;
  if (storage->getDataType() == data::DataBufferEnum) {
    storage->clear();
  } else {
    storage->setEncodedBuffer(Buffer());
    DataInt::encodedData(storage).data = nullptr;
    DataInt::encodedData(storage).length = 0;
  }
  DataInt::decoded(storage) = false;
}

// The attrib storage may still hold a header decoded from bytes that clear()
// releases; as a NoData it holds nothing a reader could follow.
void RespMsg::releaseDecodedAttrib() {
  Data* attrib = const_cast<Data*>(&_attribInfoStorage->getAttrib());
  if (attrib->getDataType() != data::NoDataEnum) {
    DataInt::shallowMorph(attrib, data::NoDataEnum, 0);
  }
}

void RespMsg::setRespTypeNum(UInt8 number) {
  _respTypeNum = number;
  _hintMask |= RespTypeNumFlag;
}

const common::RespStatus& RespMsg::getRespStatus() const {
  return _respStatusP != nullptr ? *_respStatusP : _respStatus;
}

void RespMsg::copyRespStatus(const common::RespStatus& source) {
  if (&source == &_respStatus) return;
  _respStatus = source;
}

void RespMsg::setRespStatus(const common::RespStatus& status) {
  if (_managed) {
    copyRespStatus(status);
  } else {
    _respStatusP = &status;
  }
  _hintMask |= RespStatusFlag;
}

const common::QualityOfService& RespMsg::getQualityOfService() const {
  return _qosP != nullptr ? *_qosP : _qos;
}

void RespMsg::setQualityOfService(const common::QualityOfService& qos) {
  if (_managed) {
    _qos = qos;
  } else {
    _qosP = &qos;
  }
  _hintMask |= QualityOfServiceFlag;
}

const AttribInfo& RespMsg::getAttribInfo() const {
  return _attribInfoP != nullptr ? *_attribInfoP : *_attribInfoStorage;
}

void RespMsg::setAttribInfo(const AttribInfo& info) {
  if (_managed) {
    *_attribInfoStorage = info;
  } else {
    _attribInfoP = &info;
  }
  takeVersionOf(info.getAttrib());
  _hintMask |= AttribInfoFlag;
}

const Manifest& RespMsg::getManifest() const {
  return _manifestP != nullptr ? *_manifestP : _manifest;
}

void RespMsg::setManifest(const Manifest& manifest) {
  if (_managed) {
    _manifest = manifest;
  } else {
    _manifestP = &manifest;
  }
  _hintMask |= ManifestFlag;
}

const Buffer& RespMsg::getHeader() const { return _headerP != nullptr ? *_headerP : _header; }

void RespMsg::setHeader(const Buffer& header) {
  if (_managed) {
    _header = header;
  } else {
    _headerP = &header;
  }
  _hintMask |= HeaderFlag;
}

const Data& RespMsg::getPayload() const {
  if (_payloadP == nullptr) _payloadP = _payloadStorage;
  return *_payloadP;
}

void RespMsg::setPayload(const Data& data) {
  if (listCarriesDefinition(data)) {
    internal::failMessage(kDefinitionInListText, _className, "setPayload()");
  }
  const UInt8 type = payloadTypeOf(data);
  if (type < data::NoDataEnum || type == data::MsgEnum) {
    internal::raiseBadValue(internal::valueText(
        "Data passed in method RespMsg::setPayload() has invalid data format [", type, "]."));
  }
  if (_managed) {
    copyPayloadIntoStorage(data);
  } else {
    _payloadP = &data;
  }
  takeVersionOf(*_payloadP);
  _hintMask |= PayloadFlag;
}

void RespMsg::copyPayloadIntoStorage(const Data& source) {
  Data* storage = _payloadStorage;
  if (&source != storage) {
    DataInt::shallowMorph(storage, source.getDataType(), 0);
    // The storage must know what its bytes are to go out with their format.
    if (source.getDataType() == data::DataBufferEnum) {
      static_cast<data::DataBuffer*>(storage)->setDataBufferType(payloadTypeOf(source));
    }
    // A copy is deep on an unmanaged message too: the storage takes bytes of
    // its own, never a view of what it held before.
    if (!DataInt::ownsBuffer(storage)) {
      DataInt::encodedData(storage) = OwfBuffer{0, nullptr};
      DataInt::ownsBuffer(storage) = true;
    }
    storage->setEncodedBuffer(source.getEncodedBuffer());
    internal::unbindEncodeIterator(storage);
    storage->setAssociatedMetaInfo(source.getMajorVersion(), source.getMinorVersion());
  }
  _payloadP = storage;
}

void RespMsg::takeVersionOf(const Data& data) {
  _majorVersion = data.getMajorVersion();
  _minorVersion = data.getMinorVersion();
}

void RespMsg::setPrincipalIdentity(const common::PublisherPrincipalIdentity& identity) {
  _principalIdentity = identity;
  _hintMask |= PrincipalIdentityFlag;
}

const Buffer& RespMsg::getEncodedBuffer() const {
  if (!_encodedView.isEmpty()) return _encodedView;

  OwireMsg record;
  std::memset(&record, 0, sizeof(record));
  RespMsgTranslator::internalEncode(this, record);

  const int size = owireSizeOfMsg(&record, OWIRE_CPMF_ALL);
  if (size <= 0) internal::raiseBadValue(kEncodeFailedText);
  std::unique_ptr<char[]> bytes(new char[size]);
  OwfBuffer target{static_cast<common::UInt32>(size), bytes.get()};
  OwfEncodeIterator iter;
  clearEncodeIterator(&iter);
  setMessageVersion(&iter, _majorVersion, _minorVersion);
  setEncodeIteratorBuffer(&iter, &target);
  if (owireEncodeMsg(&iter, &record) != OWIRE_RET_SUCCESS) {
    internal::raiseBadValue(kEncodeFailedText);
  }
  _encodedView.setFrom(reinterpret_cast<const unsigned char*>(bytes.get()),
                       static_cast<int>(getEncodedLength(&iter)));
  return _encodedView;
}

void RespMsg::setEncodedBuffer(const Buffer& buffer) {
  OwireMsg record;
  std::memset(&record, 0, sizeof(record));
  if (buffer.isEmpty()) return;

  const int size = buffer.size();
  _decodedBytes.emplace_back(new unsigned char[size]);
  unsigned char* bytes = _decodedBytes.back().get();
  std::memcpy(bytes, buffer.c_buf(), size);
  _encodedView.setFrom(bytes, size, size, false);

  OwfBuffer source{static_cast<common::UInt32>(size), reinterpret_cast<char*>(bytes)};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  setMessageVersion(&iter, _majorVersion, _minorVersion);
  setDecodeIteratorBuffer(&iter, &source);
  if (owireDecodeMsg(&iter, &record) != OWIRE_RET_SUCCESS) {
    internal::raiseBadValue(kDecodeFailedText);
  }

  // The wrapper borrows the record; ending it early would leak it on a throw.
  std::unique_ptr<OwireEncodedMsg, void (*)(OwireEncodedMsg*)> encoded(
      OwireEncodedMsg::create(&record, false), [](OwireEncodedMsg* m) { m->destroy(); });
  RespMsgTranslator::decode(encoded.get(), this, _majorVersion, _minorVersion, false);
}

void RespMsg::setEncodedBuffer(const Buffer& buffer, const ORVO_String& serviceName) {
  setEncodedBuffer(buffer);
  // A caller's attrib info and the decoded one both get the name.
  if (_attribInfoP != nullptr) const_cast<AttribInfo*>(_attribInfoP)->setServiceName(serviceName);
  _attribInfoStorage->setServiceName(serviceName);
}

common::UInt8 RespMsg::validateMsg(ORVO_String* text, bool isReissue) const {
  return DomainMessageValidatorManager::validateMsg(*this, text, isReissue);
}

}  // namespace message
}  // namespace orvo
