#include "orvo/common/Msg.h"

#include "orvo/data/DataType.h"

namespace orvo {
namespace common {

Msg::Msg(bool managed)
    : Data(data::MsgEnum, managed),
      _hintMask(0),
      _indicationMask(0),
      _msgType(0),
      _msgModelType(0),
      _msgManaged(managed) {}

void Msg::clear() {
  _hintMask = 0;
  _indicationMask = 0;
}

Msg& Msg::operator=(const Msg& other) {
  if (this == &other) return *this;
  _hintMask = other._hintMask;
  _indicationMask = other._indicationMask;
  _msgType = other._msgType;
  _msgModelType = other._msgModelType;
  _msgManaged = other._msgManaged;
  _majorVersion = other._majorVersion;
  _minorVersion = other._minorVersion;
  return *this;
}

}  // namespace common
}  // namespace orvo
