#include "orvo/common/ORVO_String.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace orvo {
namespace common {
namespace {

bool isBlankChar(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

void ORVO_String::becomeEmptyInline() {
  _data = _inline;
  _length = 0;
  _capacity = kInlineCapacity;
  _inline[0] = '\0';
}

ORVO_String::ORVO_String(const char* text, int length, bool /*flag*/) : ORVO_String() {
  if (text == nullptr) return;
  const unsigned int n = length <= 0 ? static_cast<unsigned int>(std::strlen(text))
                                     : static_cast<unsigned int>(strnlen(text, length));
  assign(text, n);
}

ORVO_String::ORVO_String(const ORVO_String& other) : ORVO_String() {
  assign(other._data, other._length);
}

ORVO_String::ORVO_String(ORVO_String&& other) noexcept : _data(nullptr), _length(0), _capacity(0) {
  *this = std::move(other);
}

ORVO_String& ORVO_String::operator=(const ORVO_String& other) {
  if (this != &other) assign(other._data, other._length);
  return *this;
}

ORVO_String& ORVO_String::operator=(ORVO_String&& other) noexcept {
  if (this == &other) return *this;
  if (_data != nullptr && _data != _inline) delete[] _data;  // _data is null only while constructing
  if (other.isInline()) {
    _data = _inline;
    _capacity = kInlineCapacity;
    std::memcpy(_inline, other._inline, other._length + 1);
  } else {
    _data = other._data;
    _capacity = other._capacity;
  }
  _length = other._length;
  other.becomeEmptyInline();
  return *this;
}

ORVO_String& ORVO_String::operator=(const char* text) {
  if (text == nullptr) {
    clear();
  } else {
    assign(text, static_cast<unsigned int>(std::strlen(text)));
  }
  return *this;
}

void ORVO_String::setSlow(const char* text, unsigned int length) {
  if (text == nullptr) length = 0;
  assign(text, length);
}

void ORVO_String::reserve(unsigned int capacity) {
  if (capacity <= _capacity) return;
  unsigned int grown = _capacity * 2;
  while (grown < capacity) grown *= 2;
  char* fresh = new char[grown + 1];
  std::memcpy(fresh, _data, _length + 1);
  if (!isInline()) delete[] _data;
  _data = fresh;
  _capacity = grown;
}

void ORVO_String::assign(const char* text, unsigned int length) {
  if (length == 0) {
    clear();
    return;
  }
  if (text >= _data && text < _data + _length) {  // assigning a part of ourselves
    ORVO_String copy;
    copy.assign(text, length);
    *this = std::move(copy);
    return;
  }
  _length = 0;
  reserve(length);
  std::memcpy(_data, text, length);
  _length = length;
  _data[_length] = '\0';
}

ORVO_String& ORVO_String::append(const char* text, unsigned int length) {
  if (text == nullptr || length == 0) return *this;
  if (text >= _data && text < _data + _length + 1) {
    ORVO_String copy(*this);
    return *this = copy.append(text, length);
  }
  reserve(_length + length);
  std::memcpy(_data + _length, text, length);
  _length += length;
  _data[_length] = '\0';
  return *this;
}

ORVO_String& ORVO_String::append(const char* text) {
  if (text == nullptr) return *this;
  return append(text, static_cast<unsigned int>(std::strlen(text)));
}

ORVO_String& ORVO_String::append(const ORVO_String& other) {
  if (&other == this) {
    ORVO_String copy(other);
    return append(copy._data, copy._length);
  }
  return append(other._data, other._length);
}

ORVO_String& ORVO_String::append(int value) {
  char digits[16];
  int n = std::snprintf(digits, sizeof(digits), "%d", value);
  return append(digits, static_cast<unsigned int>(n));
}

ORVO_String& ORVO_String::append(unsigned int value) {
  char digits[16];
  int n = std::snprintf(digits, sizeof(digits), "%u", value);
  return append(digits, static_cast<unsigned int>(n));
}

ORVO_String& ORVO_String::append(Int64 value) {
  char digits[24];
  int n = std::snprintf(digits, sizeof(digits), "%lld", static_cast<long long>(value));
  return append(digits, static_cast<unsigned int>(n));
}

ORVO_String& ORVO_String::append(char c) { return append(&c, 1); }

void ORVO_String::clear() {
  _length = 0;
  _data[0] = '\0';
}

ORVO_String& ORVO_String::trimWhitespace() {
  unsigned int begin = 0;
  unsigned int end = _length;
  while (begin < end && isBlankChar(_data[begin])) ++begin;
  while (end > begin && isBlankChar(_data[end - 1])) --end;
  if (begin == 0 && end == _length) return *this;
  const unsigned int n = end - begin;
  if (n != 0) std::memmove(_data, _data + begin, n);
  _length = n;
  _data[_length] = '\0';
  return *this;
}

bool ORVO_String::operator==(const ORVO_String& other) const {
  return _length == other._length && std::memcmp(_data, other._data, _length) == 0;
}

bool ORVO_String::operator==(const char* text) const {
  if (text == nullptr) return _length == 0;
  const std::size_t n = std::strlen(text);
  return n == _length && std::memcmp(_data, text, n) == 0;
}

}  // namespace common
}  // namespace orvo
