#include "Data/Impl/ODMFidDefPool.h"

#include <cassert>
#include <new>

namespace orvo {
namespace odm {

ODMFidDefInt* ODMFidDefPool::make() {
  const common::UInt32 block = _used / kBlockSize;
  if (block == _blocks.size()) _blocks.emplace_back(new Place[kBlockSize]);
  Place& place = _blocks[block][_used % kBlockSize];
  ODMFidDefInt* def = new (&place) ODMFidDefInt;
  def->_pooled = true;
  ++_used;
  return def;
}

void ODMFidDefPool::unmakeLast(ODMFidDefInt* def) {
  assert(_used != 0 &&
         static_cast<void*>(def) == &_blocks[(_used - 1) / kBlockSize][(_used - 1) % kBlockSize]);
  def->~ODMFidDefInt();
  --_used;
}

void ODMFidDefPool::destroy(ODMFidDefInt* def) {
  if (def->_pooled) {
    def->~ODMFidDefInt();
  } else {
    delete def;
  }
}

}  // namespace odm
}  // namespace orvo
