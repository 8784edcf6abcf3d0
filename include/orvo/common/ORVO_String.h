// Narrow text owned by value. The contents are always followed by a
// terminating zero, so c_str() is valid at any time; embedded zeros set with
// set() are kept and counted by length(). Texts of up to 23 bytes are held
// inside the object and allocate nothing.
#ifndef ORVO_COMMON_ORVO_STRING_H_
#define ORVO_COMMON_ORVO_STRING_H_

#include <cstring>

#include "orvo/common/Types.h"

namespace orvo {
namespace common {

class ORVO_String {
 public:
  ORVO_String() : _data(_inline), _length(0), _capacity(kInlineCapacity) { _inline[0] = '\0'; }
  // Copies `text`. A `length` of 0 measures the text up to its terminator;
  // otherwise at most `length` bytes are taken, stopping at a terminator.
  // `flag` is accepted for interface compatibility and has no effect.
  ORVO_String(const char* text, int length = 0, bool flag = false);
  ORVO_String(const ORVO_String& other);
  ORVO_String(ORVO_String&& other) noexcept;
  ~ORVO_String() {
    if (!isInline()) delete[] _data;
  }

  ORVO_String& operator=(const ORVO_String& other);
  ORVO_String& operator=(ORVO_String&& other) noexcept;
  ORVO_String& operator=(const char* text);

  // Replaces the contents by exactly `length` bytes of `text`.
  void set(const char* text, unsigned int length, bool /*flag*/ = false) {
    // Short texts from elsewhere are the common case (dictionary names).
    if (text != nullptr && length != 0 && length <= _capacity && !overlaps(text, length)) {
      std::memcpy(_data, text, length);
      _data[length] = '\0';
      _length = length;
      return;
    }
    setSlow(text, length);
  }

  ORVO_String& append(const char* text);
  ORVO_String& append(const char* text, unsigned int length);
  ORVO_String& append(const ORVO_String& other);
  ORVO_String& append(int value);
  ORVO_String& append(unsigned int value);
  ORVO_String& append(Int64 value);
  ORVO_String& append(char c);
  ORVO_String& operator+=(const ORVO_String& other) { return append(other); }
  ORVO_String& operator+=(const char* text) { return append(text); }

  const char* c_str() const { return _data; }
  const char* data() const { return _data; }
  unsigned int length() const { return _length; }
  unsigned int size() const { return _length; }
  bool empty() const { return _length == 0; }

  void clear();
  // Removes blanks, tabs, carriage returns and line feeds at both ends.
  ORVO_String& trimWhitespace();

  bool operator==(const ORVO_String& other) const;
  bool operator!=(const ORVO_String& other) const { return !(*this == other); }
  bool operator==(const char* text) const;
  bool operator!=(const char* text) const { return !(*this == text); }

 private:
  void reserve(unsigned int capacity);
  void assign(const char* text, unsigned int length);

  static constexpr unsigned int kInlineCapacity = 23;

  bool isInline() const { return _data == _inline; }
  bool overlaps(const char* text, unsigned int length) const {
    return text < _data + _capacity + 1 && text + length > _data;
  }
  void setSlow(const char* text, unsigned int length);
  void becomeEmptyInline();

  char* _data;  // _inline or a heap block of _capacity + 1 bytes
  unsigned int _length;
  unsigned int _capacity;
  char _inline[kInlineCapacity + 1];
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_ORVO_STRING_H_
