// A byte buffer: pointer, used size and capacity, and whether it owns the
// bytes. Owned bytes are allocated with new[] and freed with delete[].
#ifndef ORVO_COMMON_BUFFER_H_
#define ORVO_COMMON_BUFFER_H_

namespace orvo {
namespace common {

class Buffer {
 public:
  Buffer();
  // Takes the pointer as it is; `owned` hands the bytes over to the buffer.
  Buffer(unsigned char* data, int size, int capacity, bool owned);
  Buffer(const Buffer& other);
  virtual ~Buffer();

  Buffer& operator=(const Buffer& other);

  // With `owned` false, points at the bytes without copying; with `owned`
  // true, takes the bytes over and frees them later.
  void setFrom(unsigned char* data, int size, int capacity, bool owned);
  // Copies `size` bytes into storage of its own of `capacity` bytes.
  void setFrom(const unsigned char* data, int size, int capacity);
  // Copies `size` bytes.
  void setFrom(const unsigned char* data, int size);

  const unsigned char* c_buf() const { return _data; }
  int size() const { return _size; }
  int capacity() const { return _capacity; }
  bool isEmpty() const { return _size == 0; }
  bool isOwned() const { return _owned; }

  // Drops the contents, freeing what it owns.
  void clear();

 private:
  void release();

  unsigned char* _data;
  int _size;
  int _capacity;
  bool _owned;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_BUFFER_H_
