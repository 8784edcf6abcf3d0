// A growable array with a public view of its three fields, in the order
// capacity, count, element array. When the count reaches the capacity, the
// capacity becomes 5 if it was 0 and doubles otherwise; the new storage
// behind the copied elements is value-initialised (zero for plain types).
#ifndef ORVO_COMMON_ORVO_VECTOR_H_
#define ORVO_COMMON_ORVO_VECTOR_H_

#include <utility>

namespace orvo {
namespace common {

template <class T>
class ORVO_Vector {
 public:
  ORVO_Vector() : _capacity(0), _count(0), _data(nullptr) {}
  ORVO_Vector(const ORVO_Vector& other) : ORVO_Vector() { *this = other; }
  ~ORVO_Vector() { delete[] _data; }

  ORVO_Vector& operator=(const ORVO_Vector& other) {
    if (this == &other) return *this;
    clear();
    reserve(other._count);
    for (unsigned int i = 0; i < other._count; ++i) _data[i] = other._data[i];
    _count = other._count;
    return *this;
  }

  void push_back(const T& value) {
    if (_count == _capacity) grow();
    _data[_count++] = value;
  }

  // Makes `count` elements addressable, growing as push_back would.
  void resize(unsigned int count) {
    while (_capacity < count) grow();
    for (unsigned int i = count; i < _count; ++i) _data[i] = T();
    _count = count;
  }

  void reserve(unsigned int capacity) {
    if (capacity > _capacity) reallocate(capacity);
  }

  // Drops the elements and keeps the storage.
  void clear() {
    for (unsigned int i = 0; i < _count; ++i) _data[i] = T();
    _count = 0;
  }

  void removeLast() {
    if (_count != 0) _data[--_count] = T();
  }

  T& operator[](unsigned int i) { return _data[i]; }
  const T& operator[](unsigned int i) const { return _data[i]; }
  unsigned int size() const { return _count; }
  unsigned int capacity() const { return _capacity; }
  bool empty() const { return _count == 0; }
  T* begin() { return _data; }
  T* end() { return _data + _count; }
  const T* begin() const { return _data; }
  const T* end() const { return _data + _count; }

  unsigned int _capacity;
  unsigned int _count;
  T* _data;

 private:
  void grow() { reallocate(_capacity == 0 ? 5 : _capacity * 2); }

  void reallocate(unsigned int capacity) {
    T* fresh = new T[capacity]();
    for (unsigned int i = 0; i < _count; ++i) fresh[i] = std::move(_data[i]);
    delete[] _data;
    _data = fresh;
    _capacity = capacity;
  }
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_ORVO_VECTOR_H_
