#include "orvo/message/GroupID.h"

#include <arpa/inet.h>

#include <cstring>

namespace orvo {
namespace message {

using common::Buffer;
using common::ORVO_Vector;
using common::UInt16;
using common::UInt8;

namespace {

constexpr int kInitialCapacity = 8;
constexpr int kBytesPerNumber = 2;

// The smallest capacity above `capacity`, in steps of 8, that holds `needed`.
int grownCapacity(int capacity, int needed) {
  return capacity + ((needed - capacity - 1) & ~7) + 8;
}

// Always strictly above `size`, so an odd size can read one byte further.
int capacityFor(int size) { return (size / 8) * 8 + 8; }

}  // namespace

GroupID::GroupID() : _storage(new UInt8[kInitialCapacity]()), _storageCapacity(kInitialCapacity) {
  _image.setFrom(_storage, 0, _storageCapacity, false);
}

GroupID::~GroupID() {
  _image.setFrom(nullptr, 0, 0, false);
  delete[] _storage;
}

const Buffer& GroupID::getAsBuffer() {
  const int needed = kBytesPerNumber * static_cast<int>(_numbers.size());
  if (needed > _storageCapacity)
    replaceStorage(grownCapacity(_storageCapacity, needed), nullptr, 0);
  for (unsigned int i = 0; i < _numbers.size(); ++i) {
    const UInt16 wire = htons(_numbers[i]);
    std::memcpy(_storage + kBytesPerNumber * i, &wire, sizeof(wire));
  }
  _image.setFrom(_storage, needed, _storageCapacity, false);
  return _image;
}

void GroupID::setFromBuffer(const Buffer& image) {
  _numbers.clear();
  const int size = image.size() > 0 ? image.size() : 0;
  if (_storageCapacity > size) {
    // The image may be this object's own.
    if (size != 0) std::memmove(_storage, image.c_buf(), size);
  } else {
    replaceStorage(capacityFor(size), image.c_buf(), size);
  }
  _image.setFrom(_storage, size, _storageCapacity, false);
  for (int offset = 0; offset < size; offset += kBytesPerNumber) {
    UInt16 wire;
    std::memcpy(&wire, _storage + offset, sizeof(wire));
    _numbers.push_back(ntohs(wire));
  }
}

void GroupID::setFromVector(const ORVO_Vector<UInt16>& numbers) {
  if (&numbers == &_numbers) return;
  _numbers.clear();
  for (UInt16 number : numbers) _numbers.push_back(number);
}

void GroupID::append(UInt16 number) { _numbers.push_back(number); }

// The new storage is filled before the old one goes, since `bytes` may lie
// in it.
void GroupID::replaceStorage(int capacity, const UInt8* bytes, int size) {
  UInt8* fresh = new UInt8[capacity]();
  if (size != 0) std::memcpy(fresh, bytes, size);
  _image.setFrom(fresh, 0, capacity, false);
  delete[] _storage;
  _storage = fresh;
  _storageCapacity = capacity;
}

}  // namespace message
}  // namespace orvo
