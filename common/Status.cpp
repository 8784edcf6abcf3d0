#include "orvo/common/Status.h"

namespace orvo {
namespace common {
namespace {

const ORVO_String kNoText;

}  // namespace

Status::Status()
    : _statusText(nullptr),
      _rawText(nullptr),
      _wideText(nullptr),
      _rawWideText(nullptr),
      _ownsRawText(false),
      _ownsRawWideText(false) {}

Status::Status(const Status& other) : Status() { *this = other; }

Status::~Status() { releaseTexts(); }

Status& Status::operator=(const Status& other) {
  if (this == &other) return *this;
  if (other._statusText != nullptr) {
    setStatusText(*other._statusText);
  } else {
    delete _statusText;
    _statusText = nullptr;
  }
  return *this;
}

const ORVO_String& Status::getStatusText() const {
  return _statusText != nullptr ? *_statusText : kNoText;
}

void Status::setStatusText(const ORVO_String& text) {
  if (_statusText == nullptr) {
    _statusText = new ORVO_String(text);
  } else {
    *_statusText = text;
  }
}

void Status::releaseTexts() {
  delete _statusText;
  _statusText = nullptr;
  if (_ownsRawText) delete[] _rawText;
  _rawText = nullptr;
  if (_ownsRawWideText) delete[] _rawWideText;
  _rawWideText = nullptr;
  delete _wideText;
  _wideText = nullptr;
  _ownsRawText = false;
  _ownsRawWideText = false;
}

}  // namespace common
}  // namespace orvo
