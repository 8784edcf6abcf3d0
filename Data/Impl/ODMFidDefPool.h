// Storage for the field definitions that file reads make. A read makes one
// definition per line, tens of thousands for a full dictionary: making them
// in blocks costs one allocation per block instead of one per line, lays the
// definitions of consecutive lines side by side for the lookups that follow,
// and a reload makes its definitions in the blocks of the read before.
//
// Definitions that other code builds with new and enters through
// ODMFieldDictionaryInt::addFidDef stay single heap objects; `destroy` ends
// either kind.
#ifndef ORVO_DATA_IMPL_ODM_FID_DEF_POOL_H_
#define ORVO_DATA_IMPL_ODM_FID_DEF_POOL_H_

#include <memory>
#include <vector>

#include "Data/Impl/ODMFidDefInt.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class ODMFidDefPool {
 public:
  ODMFidDefPool() = default;
  ODMFidDefPool(const ODMFidDefPool&) = delete;
  ODMFidDefPool& operator=(const ODMFidDefPool&) = delete;

  // A default definition in the next free place.
  ODMFidDefInt* make();
  // Destroys `def`, which must be the definition made last, and frees its
  // place.
  void unmakeLast(ODMFidDefInt* def);
  // Destroys a definition of either kind.
  static void destroy(ODMFidDefInt* def);
  // Frees every place for reuse; the definitions in them must have been
  // destroyed. The blocks stay for the next read.
  void reuseAll() { _used = 0; }

  common::UInt32 used() const { return _used; }

 private:
  static constexpr common::UInt32 kBlockSize = 256;

  struct alignas(ODMFidDefInt) Place {
    unsigned char bytes[sizeof(ODMFidDefInt)];
  };

  std::vector<std::unique_ptr<Place[]>> _blocks;
  common::UInt32 _used = 0;  // places taken, in order over the blocks
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_FID_DEF_POOL_H_
