// Helpers for the codec tests: an encoder that grows its buffer the way the
// data model does (roll back, double, realign, call again), and decoding
// shortcuts.
#ifndef ORVO_TESTS_OWIRE_TEST_UTIL_H_
#define ORVO_TESTS_OWIRE_TEST_UTIL_H_

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvo/owire/owire.h"
#include "owire/Walk.h"

namespace owire_test {

inline OwfBuffer buf(const std::string& s) {
  return OwfBuffer{static_cast<UInt32>(s.size()), const_cast<char*>(s.data())};
}
inline OwfBuffer buf(const char* s) {
  return OwfBuffer{static_cast<UInt32>(std::strlen(s)), const_cast<char*>(s)};
}
inline std::string str(const OwfBuffer& b) { return std::string(b.data ? b.data : "", b.length); }

// An encode iterator over a heap buffer that grows on demand.
struct Enc {
  std::unique_ptr<char[]> store;
  OwfBuffer buffer{0, nullptr};
  OwfEncodeIterator it;
  int grows = 0;

  explicit Enc(UInt32 capacity = 1 << 16) {
    store.reset(new char[capacity]);
    std::memset(store.get(), 0xCD, capacity);
    buffer = OwfBuffer{capacity, store.get()};
    clearEncodeIterator(&it);
    EXPECT_EQ(0, setEncodeIteratorBuffer(&it, &buffer));
  }
  void grow() {
    OwfBuffer old = buffer;
    it.buffer = &old;  // the record describing the old bytes
    const UInt32 capacity = buffer.length * 2;
    std::unique_ptr<char[]> bigger(new char[capacity]);
    std::memset(bigger.get(), 0xCD, capacity);
    OwfBuffer fresh{capacity, bigger.get()};
    ASSERT_EQ(OWIRE_RET_SUCCESS, owireRealignEncodeIteratorBuffer(&it, &fresh));
    buffer = fresh;
    it.buffer = &buffer;
    store.swap(bigger);  // the old memory is freed only now
    ++grows;
  }
  // An ...Init call: on too small, roll back with `rollback` (which must
  // succeed), grow and call again.
  int init(const std::function<int()>& call, const std::function<int()>& rollback) {
    int ret;
    while ((ret = call()) == OWIRE_RET_BUFFER_TOO_SMALL) {
      EXPECT_EQ(OWIRE_RET_SUCCESS, rollback());
      grow();
    }
    return ret;
  }
  // A one-step call: on too small, grow and call again with no rollback.
  int step(const std::function<int()>& call) {
    int ret;
    while ((ret = call()) == OWIRE_RET_BUFFER_TOO_SMALL) grow();
    return ret;
  }
  std::string bytes() const { return std::string(buffer.data, getEncodedLength(&it)); }
};

// A decode iterator over `bytes`.
struct Dec {
  std::string bytes;
  OwfBuffer buffer;
  OwfDecodeIterator it;
  explicit Dec(std::string b) : bytes(std::move(b)) {
    buffer = buf(bytes);
    clearDecodeIterator(&it);
    EXPECT_EQ(0, setDecodeIteratorBuffer(&it, &buffer));
  }
  bool inside(const OwfBuffer& b) const {
    if (b.length == 0) return true;
    return b.data >= bytes.data() && b.data + b.length <= bytes.data() + bytes.size();
  }
};

inline std::string walk(const std::string& bytes, UInt8 type) {
  Dec d(bytes);
  orvo::owire::Walker w;
  w.walk(&d.it, type);
  EXPECT_EQ(0, w.errors) << w.out;
  return w.out;
}

}  // namespace owire_test

#endif  // ORVO_TESTS_OWIRE_TEST_UTIL_H_
