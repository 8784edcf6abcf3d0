// The bookkeeping of a response: sequence number, conflation count and time,
// item group and permission data. A bit of the hint mask tells whether a
// field is present. A managed object copies the buffers it is given; an
// unmanaged one points at the caller's buffers, which must outlive it.
#ifndef ORVO_MESSAGE_MANIFEST_H_
#define ORVO_MESSAGE_MANIFEST_H_

#include "orvo/common/Buffer.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace message {

class Manifest {
 public:
  enum HintMaskFlags {
    SeqFlag = 0x01,
    FilteredFlag = 0x02,
    ItemGroupFlag = 0x04,
    PermissionDataFlag = 0x08
  };

  explicit Manifest(bool managed);
  // Copies take the buffers of `other` into buffers of their own.
  Manifest(const Manifest& other);
  Manifest& operator=(const Manifest& other);
  virtual ~Manifest();

  // A heap copy; the caller deletes it.
  Manifest* clone() const;
  // Back to the just-built state; the managed flag stays.
  void clear();

  common::UInt8 getHintMask() const { return _hintMask; }

  common::UInt32 getSeqNum() const { return _seqNum; }
  void setSeqNum(common::UInt32 seqNum);

  // Count and time of conflated updates are one attribute.
  common::UInt16 getFilteredCount() const { return _filteredCount; }
  common::UInt32 getFilteredTime() const { return _filteredTime; }
  void setFiltered(common::UInt16 count, common::UInt32 time);

  // Never null: the caller's buffer of an unmanaged object, else its own.
  const common::Buffer& getItemGroup() const;
  void setItemGroup(const common::Buffer& itemGroup);

  const common::Buffer& getPermissionData() const;
  void setPermissionData(const common::Buffer& permissionData);

 protected:
  void copyFrom(const Manifest& other);
  static const common::Buffer& viewOf(const common::Buffer* pointer, const common::Buffer& own);

  common::UInt8 _hintMask;
  common::UInt32 _seqNum;
  common::UInt16 _filteredCount;
  common::UInt32 _filteredTime;
  const common::Buffer* _itemGroupP;
  common::Buffer _itemGroup;
  const common::Buffer* _permissionDataP;
  common::Buffer _permissionData;
  bool _managed;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_MANIFEST_H_
