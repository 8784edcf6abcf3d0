// 16-bit wide text (UTF-16 code units), always terminated by a zero unit.
#ifndef ORVO_COMMON_ORVO_WSTRING_H_
#define ORVO_COMMON_ORVO_WSTRING_H_

namespace orvo {
namespace common {

class ORVO_WString {
 public:
  ORVO_WString();
  ORVO_WString(const ORVO_WString& other);
  ORVO_WString& operator=(const ORVO_WString& other);
  ~ORVO_WString();

  // Replaces the contents by `length` units of `text`.
  void set(const unsigned short* text, unsigned int length);
  void clear();

  const unsigned short* c_str() const { return _data; }
  unsigned int length() const { return _length; }
  bool empty() const { return _length == 0; }

 private:
  unsigned short* _data;  // a shared empty text while _capacity is 0
  unsigned int _length;
  unsigned int _capacity;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_ORVO_WSTRING_H_
