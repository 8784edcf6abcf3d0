#include "orvo/common/RespStatus.h"

namespace orvo {
namespace common {

RespStatus::RespStatus() : _streamState(UnspecifiedStreamState), _dataState(Suspect), _statusCode(0) {}

RespStatus::RespStatus(const RespStatus& other) : Status(other) {
  _streamState = other._streamState;
  _dataState = other._dataState;
  _statusCode = other._statusCode;
}

RespStatus& RespStatus::operator=(const RespStatus& other) {
  if (this == &other) return *this;
  Status::operator=(other);
  _streamState = other._streamState;
  _dataState = other._dataState;
  _statusCode = other._statusCode;
  return *this;
}

void RespStatus::clear() {
  _streamState = UnspecifiedStreamState;
  _dataState = Suspect;
  _statusCode = 0;
  releaseTexts();
}

}  // namespace common
}  // namespace orvo
