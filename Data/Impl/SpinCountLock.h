// A recursive lock that spins a number of times before it blocks: for locks
// held only for a few instructions (appending to a list, taking a pooled
// object), where going to sleep costs more than the wait.
#ifndef ORVO_DATA_IMPL_SPIN_COUNT_LOCK_H_
#define ORVO_DATA_IMPL_SPIN_COUNT_LOCK_H_

#include <mutex>

namespace orvo {
namespace internal {

class SpinCountLock {
 public:
  static constexpr unsigned int kDefaultSpinCount = 4000;

  explicit SpinCountLock(unsigned int spinCount = kDefaultSpinCount) : _spinCount(spinCount) {}
  SpinCountLock(const SpinCountLock&) = delete;
  SpinCountLock& operator=(const SpinCountLock&) = delete;

  void lock() {
    for (unsigned int i = 0; i < _spinCount; ++i) {
      if (_mutex.try_lock()) return;
      pause();
    }
    _mutex.lock();
  }
  bool try_lock() { return _mutex.try_lock(); }
  void unlock() { _mutex.unlock(); }
  unsigned int spinCount() const { return _spinCount; }

 private:
  static void pause() {
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
  }

  std::recursive_mutex _mutex;
  const unsigned int _spinCount;
};

// Holds a SpinCountLock for the life of a scope.
class SpinCountLockGuard {
 public:
  explicit SpinCountLockGuard(SpinCountLock& lock) : _lock(lock) { _lock.lock(); }
  ~SpinCountLockGuard() { _lock.unlock(); }
  SpinCountLockGuard(const SpinCountLockGuard&) = delete;
  SpinCountLockGuard& operator=(const SpinCountLockGuard&) = delete;

 private:
  SpinCountLock& _lock;
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_SPIN_COUNT_LOCK_H_
