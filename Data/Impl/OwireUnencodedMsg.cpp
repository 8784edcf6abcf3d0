#include "orvo/message/OwireUnencodedMsg.h"

namespace orvo {
namespace message {

using common::Buffer;

namespace {

OwireMsg* codecCopyOf(const OwireMsg* msg) {
  return owireCopyMsg(msg, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
}

}  // namespace

OwireUnencodedMsg::OwireUnencodedMsg(OwireMsg* msg, bool copy)
    : common::Msg(false), _pOwireMsg(copy ? codecCopyOf(msg) : msg) {}

// Also a record taken over without copy is released by the codec.
OwireUnencodedMsg::~OwireUnencodedMsg() {
  if (_pOwireMsg != nullptr) owireReleaseCopiedMsg(_pOwireMsg);
}

OwireUnencodedMsg* OwireUnencodedMsg::clone() const {
  return new OwireUnencodedMsg(_pOwireMsg, true);
}

const Buffer& OwireUnencodedMsg::getEncodedBuffer() const { return _encodedView; }

void OwireUnencodedMsg::setEncodedBuffer(const Buffer& buffer) { _encodedView = buffer; }

}  // namespace message
}  // namespace orvo
