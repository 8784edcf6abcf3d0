// Pools of OwireEncodedMsg objects sorted by the storage size they stand
// for. initMsgPool configures the pool once (a second call does nothing until
// clearMsgPool); clearMsgPool deletes every pooled message. Both hold the
// pool lock for their whole length; a sub-pool's lock is taken only under it.
#ifndef ORVO_MESSAGE_OWIRE_ENCODED_MSG_POOL_H_
#define ORVO_MESSAGE_OWIRE_ENCODED_MSG_POOL_H_

#include <memory>

#include "orvo/common/Types.h"

namespace orvo {
namespace internal {
class SpinCountLock;
}  // namespace internal

namespace message {

class OwireEncodedMsgPool {
 public:
  OwireEncodedMsgPool();
  OwireEncodedMsgPool(const OwireEncodedMsgPool&) = delete;
  OwireEncodedMsgPool& operator=(const OwireEncodedMsgPool&) = delete;
  ~OwireEncodedMsgPool();

  // One sub-pool per size, sizes sorted ascending, each filled with
  // `initial` messages. `initial` outside 1..100000 becomes 10, `increment`
  // outside 10..100000 becomes 100. No sizes (null or `count` 0) leaves the
  // pool as it is.
  void initMsgPool(const int* sizes, common::UInt32 count, int initial, int increment);
  void clearMsgPool();

  bool isInitialized() const;
  common::UInt32 getSizeCount() const;
  // The sizes as sorted; `index` below getSizeCount().
  int getSize(common::UInt32 index) const;
  int getInitialCount() const;
  int getIncrement() const;
  // Messages the sub-pool of `index` has built and holds ready.
  int getMsgsCreated(common::UInt32 index) const;
  common::UInt32 getFreeCount(common::UInt32 index) const;

  struct SubPool;

 private:
  void buildSubPools();
  void sortSizes();
  const SubPool* subPoolAt(common::UInt32 index) const;

  std::unique_ptr<internal::SpinCountLock> _lock;
  std::unique_ptr<int[]> _sizes;
  common::UInt32 _count;
  std::unique_ptr<SubPool*[]> _subPools;
  int _initial;
  int _increment;
  bool _initialized;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_OWIRE_ENCODED_MSG_POOL_H_
