#include "orvo/common/Buffer.h"

#include <cstring>

namespace orvo {
namespace common {

Buffer::Buffer() : _data(nullptr), _size(0), _capacity(0), _owned(false) {}

Buffer::Buffer(unsigned char* data, int size, int capacity, bool owned)
    : _data(data), _size(size), _capacity(capacity), _owned(owned) {}

Buffer::Buffer(const Buffer& other) : Buffer() { *this = other; }

Buffer::~Buffer() { release(); }

Buffer& Buffer::operator=(const Buffer& other) {
  if (this != &other) setFrom(other._data, other._size, other._size);
  return *this;
}

void Buffer::release() {
  if (_owned) delete[] _data;
  _data = nullptr;
  _owned = false;
}

void Buffer::setFrom(unsigned char* data, int size, int capacity, bool owned) {
  if (data != _data) release();
  _data = data;
  _size = size;
  _capacity = capacity;
  _owned = owned;
}

void Buffer::setFrom(const unsigned char* data, int size, int capacity) {
  if (capacity < size) capacity = size;
  if (data == nullptr || size <= 0) {
    clear();
    return;
  }
  if (_owned && _capacity >= capacity && (data < _data || data >= _data + _capacity)) {
    std::memcpy(_data, data, size);  // reuse our own storage
    _size = size;
    return;
  }
  unsigned char* fresh = new unsigned char[capacity];
  std::memcpy(fresh, data, size);
  release();
  _data = fresh;
  _size = size;
  _capacity = capacity;
  _owned = true;
}

void Buffer::setFrom(const unsigned char* data, int size) { setFrom(data, size, size); }

void Buffer::clear() {
  release();
  _size = 0;
  _capacity = 0;
}

}  // namespace common
}  // namespace orvo
