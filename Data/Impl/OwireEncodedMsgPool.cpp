#include "orvo/message/OwireEncodedMsgPool.h"

#include <utility>

#include "Data/Impl/SpinCountLock.h"
#include "orvo/message/OwireEncodedMsg.h"

namespace orvo {
namespace message {

using common::UInt32;
using internal::SpinCountLock;
using internal::SpinCountLockGuard;

namespace {

constexpr int kDefaultInitial = 10;
constexpr int kDefaultIncrement = 100;
constexpr int kMaxCount = 100000;

int initialOrDefault(int initial) {
  return initial != -1 && initial >= 1 && initial <= kMaxCount ? initial : kDefaultInitial;
}

int incrementOrDefault(int increment) {
  return increment != -1 && increment >= 10 && increment <= kMaxCount ? increment
                                                                      : kDefaultIncrement;
}

// A list of messages by their links: head, tail and count.
struct MsgList {
  ORTSLink* head = nullptr;
  ORTSLink* tail = nullptr;
  UInt32 count = 0;

  bool empty() const { return head == nullptr; }

  void pushBack(ORTSLink* link) {
    link->_next = nullptr;
    link->_prev = tail;
    if (tail != nullptr) {
      tail->_next = link;
    } else {
      head = link;
    }
    tail = link;
    ++count;
  }

  ORTSLink* popFront() {
    ORTSLink* link = head;
    head = link->_next;
    if (head != nullptr) {
      head->_prev = nullptr;
    } else {
      tail = nullptr;
    }
    link->resetLink();
    --count;
    return link;
  }

  // Moves all of `other` behind this list's messages.
  void splice(MsgList& other) {
    if (other.empty()) return;
    if (tail != nullptr) {
      tail->_next = other.head;
      other.head->_prev = tail;
    } else {
      head = other.head;
    }
    tail = other.tail;
    count += other.count;
    other.head = other.tail = nullptr;
    other.count = 0;
  }
};

}  // namespace

// Messages given back wait in `returned` and are handed out from `ready`.
struct OwireEncodedMsgPool::SubPool {
  explicit SubPool(int forSize) : lockP(&lock), size(forSize) {}

  MsgList returned;
  MsgList ready;
  SpinCountLock* lockP;
  UInt32 splices = 0;
  UInt32 takes = 0;
  UInt32 gives = 0;
  SpinCountLock lock{SpinCountLock::kDefaultSpinCount};
  int initial = 0;
  int increment = 0;
  int msgsCreated = 0;
  int reserved1 = 0;
  int reserved2 = 0;
  int size;

  void fill(int initialCount, int incrementCount) {
    initial = initialCount;
    increment = incrementCount;
    // Messages start without storage; the first copy sizes it.
    for (int i = 0; i < initialCount; ++i) ready.pushBack(new OwireEncodedMsg(0));
    msgsCreated = initialCount;
  }

  void drain() {
    SpinCountLockGuard guard(*lockP);
    for (;;) {
      while (!ready.empty()) delete static_cast<OwireEncodedMsg*>(ready.popFront());
      ready.splice(returned);
      ++splices;
      if (ready.empty()) break;
    }
    msgsCreated = 0;
  }
};

OwireEncodedMsgPool::OwireEncodedMsgPool()
    : _lock(new SpinCountLock(SpinCountLock::kDefaultSpinCount)),
      _count(0),
      _initial(0),
      _increment(0),
      _initialized(false) {}

OwireEncodedMsgPool::~OwireEncodedMsgPool() { clearMsgPool(); }

void OwireEncodedMsgPool::initMsgPool(const int* sizes, UInt32 count, int initial, int increment) {
  if (sizes == nullptr || count == 0) return;
  initial = initialOrDefault(initial);
  increment = incrementOrDefault(increment);

  SpinCountLockGuard guard(*_lock);
  if (_initialized) return;
  _sizes.reset(new int[count]);
  for (UInt32 i = 0; i < count; ++i) _sizes[i] = sizes[i];
  _count = count;
  sortSizes();
  _initial = initial;
  _increment = increment;
  buildSubPools();
  _initialized = true;
}

// Finds the first pair out of order, swaps it and starts again from the
// front.
void OwireEncodedMsgPool::sortSizes() {
  UInt32 i = 0;
  while (i + 1 < _count) {
    if (_sizes[i] > _sizes[i + 1]) {
      std::swap(_sizes[i], _sizes[i + 1]);
      i = 0;
    } else {
      ++i;
    }
  }
}

void OwireEncodedMsgPool::buildSubPools() {
  _subPools.reset(new SubPool*[_count]);
  for (UInt32 i = 0; i < _count; ++i) {
    _subPools[i] = new SubPool(_sizes[i]);
    _subPools[i]->fill(_initial, _increment);
  }
}

void OwireEncodedMsgPool::clearMsgPool() {
  SpinCountLockGuard guard(*_lock);
  if (!_initialized) return;
  for (UInt32 i = 0; i < _count; ++i) {
    _subPools[i]->drain();
    delete _subPools[i];
    _subPools[i] = nullptr;
  }
  _initialized = false;
}

bool OwireEncodedMsgPool::isInitialized() const {
  SpinCountLockGuard guard(*_lock);
  return _initialized;
}

UInt32 OwireEncodedMsgPool::getSizeCount() const {
  SpinCountLockGuard guard(*_lock);
  return _count;
}

int OwireEncodedMsgPool::getSize(UInt32 index) const {
  SpinCountLockGuard guard(*_lock);
  return index < _count ? _sizes[index] : 0;
}

int OwireEncodedMsgPool::getInitialCount() const {
  SpinCountLockGuard guard(*_lock);
  return _initial;
}

int OwireEncodedMsgPool::getIncrement() const {
  SpinCountLockGuard guard(*_lock);
  return _increment;
}

int OwireEncodedMsgPool::getMsgsCreated(UInt32 index) const {
  SpinCountLockGuard guard(*_lock);
  const SubPool* subPool = subPoolAt(index);
  return subPool != nullptr ? subPool->msgsCreated : 0;
}

UInt32 OwireEncodedMsgPool::getFreeCount(UInt32 index) const {
  SpinCountLockGuard guard(*_lock);
  const SubPool* subPool = subPoolAt(index);
  if (subPool == nullptr) return 0;
  SpinCountLockGuard subGuard(*subPool->lockP);
  return subPool->ready.count + subPool->returned.count;
}

const OwireEncodedMsgPool::SubPool* OwireEncodedMsgPool::subPoolAt(UInt32 index) const {
  return _initialized && index < _count ? _subPools[index] : nullptr;
}

}  // namespace message
}  // namespace orvo
