// An item group: a list of 16-bit numbers and its byte image, the numbers in
// network byte order, two bytes each. The image is brought up to date by
// getAsBuffer.
#ifndef ORVO_MESSAGE_GROUP_ID_H_
#define ORVO_MESSAGE_GROUP_ID_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace message {

class GroupID {
 public:
  GroupID();
  GroupID(const GroupID&) = delete;
  GroupID& operator=(const GroupID&) = delete;
  virtual ~GroupID();

  // The byte image of the numbers; valid until the next change of the object.
  const common::Buffer& getAsBuffer();
  const common::ORVO_Vector<common::UInt16>& getAsVector() const { return _numbers; }

  // Reads the numbers from an image. An odd size takes its last number's low
  // byte from the byte behind the image, which the storage always holds.
  void setFromBuffer(const common::Buffer& image);
  void setFromVector(const common::ORVO_Vector<common::UInt16>& numbers);
  void append(common::UInt16 number);

 private:
  void replaceStorage(int capacity, const common::UInt8* bytes, int size);

  common::Buffer _image;  // a view of _storage
  common::UInt8* _storage;
  int _storageCapacity;
  common::ORVO_Vector<common::UInt16> _numbers;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_GROUP_ID_H_
