#include "orvo/message/OwireEncodedMsg.h"

#include <cstring>

#include "diagnostics/Verify.h"

namespace orvo {
namespace message {

using common::ORVO_String;
using common::UInt32;
using common::UInt8;

namespace {

constexpr UInt32 kInitialGroupIdCapacity = 8;
constexpr UInt8 kDefaultMajorVersion = 14;
constexpr UInt8 kDefaultMinorVersion = 0;

// Reports an internal failure with an explanation and lets the caller go on
// when the report returns.
void reportInternalFailure(const char* problem, const char* expression, const char* file,
                           int line) {
  if (diagnostics::verifyCheck("ORVO Internal failure", problem, file, line, true, true, nullptr,
                               "%s", expression) &&
      diagnostics::verifyReport("ORVO Internal failure", problem, file, line, true, true, nullptr,
                                "%s", expression)) {
    diagnostics::debugBreak(file, line);
  }
}

}  // namespace

OwireEncodedMsg* OwireEncodedMsg::create(int size) { return new OwireEncodedMsg(size); }

OwireEncodedMsg* OwireEncodedMsg::create(const OwireMsg* msg, bool copy) {
  OwireEncodedMsg* encoded = new OwireEncodedMsg(0);
  encoded->setOwireMsg(msg, copy);
  return encoded;
}

OwireEncodedMsg::OwireEncodedMsg(int size)
    : _pOwireMsg(nullptr),
      _buffer(nullptr),
      _bufferSize(size > 0 ? size : 0),
      _isOwner(false),
      _serviceId(0),
      _hasServiceId(false),
      _groupId{0, new char[kInitialGroupIdCapacity]()},
      _groupIdCapacity(kInitialGroupIdCapacity),
      _connMajorVersion(kDefaultMajorVersion),
      _connMinorVersion(kDefaultMinorVersion) {
  if (_bufferSize != 0) _buffer = new UInt8[_bufferSize];
}

OwireEncodedMsg::~OwireEncodedMsg() {
  delete[] _buffer;
  delete[] _groupId.data;
}

void OwireEncodedMsg::setOwireMsg(const OwireMsg* msg, bool copy) {
  if (!copy) {
    _pOwireMsg = msg;
    _isOwner = false;
    return;
  }
  copyIntoStorage(msg);
  _isOwner = true;
}

void OwireEncodedMsg::copyIntoStorage(const OwireMsg* msg) {
  const int needed = owireSizeOfMsg(msg, OWIRE_CPMF_ALL);
  if (needed < 0) {
    _pOwireMsg = nullptr;
    return;
  }
  // A record lying in the storage is its own source; it is copied into a
  // fresh block before the old one goes.
  const bool reuse = _buffer != nullptr && needed <= _bufferSize && !storageHolds(msg);
  UInt8* old = nullptr;
  if (!reuse) {
    old = _buffer;
    _bufferSize = needed;
    _buffer = new UInt8[needed];
  }
  OwfBuffer storage{static_cast<UInt32>(_bufferSize), reinterpret_cast<char*>(_buffer)};
  _pOwireMsg = owireCopyMsg(msg, OWIRE_CPMF_ALL, OWIRE_COPY_INTO_BUFFER, &storage);
  delete[] old;
}

bool OwireEncodedMsg::storageHolds(const void* p) const {
  const UInt8* byte = static_cast<const UInt8*>(p);
  return _buffer != nullptr && byte >= _buffer && byte < _buffer + _bufferSize;
}

OwireMsg* OwireEncodedMsg::detachOwireMsg() {
  if (!_isOwner) {
    reportInternalFailure("Cannot detach messages not owned! ", "ORVO_VERIFY( _isOwner ) failed",
                          __FILE__, __LINE__);
  }
  return owireCopyMsg(_pOwireMsg, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
}

void OwireEncodedMsg::validateOwireEncodedMsg() const {
  if ((owireValidateMsg(_pOwireMsg) & 0xFF) == 0) {
    reportInternalFailure("Invalid OwireMsg",
                          "ORVO_VERIFY( owireValidateMsg( _pOwireMsg ) ) failed", __FILE__,
                          __LINE__);
  }
}

void OwireEncodedMsg::setServiceId(UInt32 serviceId) {
  _serviceId = serviceId;
  _hasServiceId = true;
}

const OwfBuffer* OwireEncodedMsg::getGroupId() const {
  return _groupId.length != 0 ? &_groupId : nullptr;
}

void OwireEncodedMsg::setGroupId(const OwfBuffer* groupId) {
  const UInt32 length = groupId != nullptr && groupId->data != nullptr ? groupId->length : 0;
  if (length > _groupIdCapacity) {
    delete[] _groupId.data;
    _groupId.data = new char[length];
    _groupIdCapacity = length;
  }
  if (length != 0) std::memmove(_groupId.data, groupId->data, length);
  _groupId.length = length;
}

void OwireEncodedMsg::setConnVersion(UInt8 major, UInt8 minor) {
  _connMajorVersion = major;
  _connMinorVersion = minor;
}

// Deliberately coarse: posts, acknowledgements and every response class
// report a response.
UInt8 OwireEncodedMsg::getMsgType() const {
  const UInt8 msgClass = _pOwireMsg != nullptr ? _pOwireMsg->msgBase.msgClass : 0;
  switch (msgClass) {
    case OWIRE_MC_REQUEST:
      return 2;
    case OWIRE_MC_GENERIC:
      return 3;
    default:
      return 1;
  }
}

UInt8 OwireEncodedMsg::getMsgModelType() const {
  return _pOwireMsg != nullptr ? _pOwireMsg->msgBase.modelType : 0;
}

EncodedMsg* OwireEncodedMsg::clone() const {
  OwireEncodedMsg* copy = new OwireEncodedMsg(0);
  copy->setOwireMsg(_pOwireMsg, true);
  copy->_serviceName = _serviceName;
  if (_hasServiceId) copy->setServiceId(_serviceId);
  return copy;
}

void OwireEncodedMsg::destroy() { delete this; }

void OwireEncodedMsg::cleanUp() {
  _serviceName.clear();
  _groupId.length = 0;
  _groupId.data[0] = 0;
  _pOwireMsg = nullptr;
}

}  // namespace message
}  // namespace orvo
