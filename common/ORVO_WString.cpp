#include "orvo/common/ORVO_WString.h"

#include <cstring>

namespace orvo {
namespace common {
namespace {

unsigned short kEmptyWide[1] = {0};

}  // namespace

ORVO_WString::ORVO_WString() : _data(kEmptyWide), _length(0), _capacity(0) {}

ORVO_WString::ORVO_WString(const ORVO_WString& other) : ORVO_WString() {
  set(other._data, other._length);
}

ORVO_WString& ORVO_WString::operator=(const ORVO_WString& other) {
  if (this != &other) set(other._data, other._length);
  return *this;
}

ORVO_WString::~ORVO_WString() {
  if (_capacity != 0) delete[] _data;
}

void ORVO_WString::set(const unsigned short* text, unsigned int length) {
  if (text == nullptr || length == 0) {
    clear();
    return;
  }
  if (length > _capacity) {
    unsigned short* fresh = new unsigned short[length + 1];
    if (_capacity != 0) delete[] _data;
    _data = fresh;
    _capacity = length;
  }
  std::memmove(_data, text, length * sizeof(unsigned short));
  _data[length] = 0;
  _length = length;
}

void ORVO_WString::clear() {
  _length = 0;
  if (_capacity != 0) _data[0] = 0;
}

}  // namespace common
}  // namespace orvo
