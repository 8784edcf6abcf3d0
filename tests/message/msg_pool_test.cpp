#include "gtest/gtest.h"
#include "orvo/message/OwireEncodedMsgPool.h"

namespace orvo {
namespace {

using message::OwireEncodedMsgPool;

TEST(OwireEncodedMsgPoolTest, SizesAreSortedAndEachSubPoolIsFilled) {
  OwireEncodedMsgPool pool;
  EXPECT_FALSE(pool.isInitialized());
  const int sizes[] = {300, 100, 200, 100, 50};
  pool.initMsgPool(sizes, 5, 3, 20);
  ASSERT_TRUE(pool.isInitialized());
  ASSERT_EQ(5u, pool.getSizeCount());
  const int sorted[] = {50, 100, 100, 200, 300};
  for (unsigned int i = 0; i < 5; ++i) {
    EXPECT_EQ(sorted[i], pool.getSize(i));
    EXPECT_EQ(3, pool.getMsgsCreated(i));
    EXPECT_EQ(3u, pool.getFreeCount(i));
  }
  EXPECT_EQ(3, pool.getInitialCount());
  EXPECT_EQ(20, pool.getIncrement());
  EXPECT_EQ(0, pool.getMsgsCreated(5));  // out of range reads nothing
}

TEST(OwireEncodedMsgPoolTest, OutOfRangeCountsFallBackToDefaults) {
  const struct {
    int initial, increment, expectedInitial, expectedIncrement;
  } cases[] = {
      {-1, 5, 10, 100},          {0, 9, 10, 100}, {1, 10, 1, 10}, {100000, 100000, 100000, 100000},
      {100001, 100001, 10, 100}, {7, -1, 7, 100}};
  const int size = 64;
  for (const auto& c : cases) {
    OwireEncodedMsgPool pool;
    pool.initMsgPool(&size, 1, c.initial, c.increment);
    EXPECT_EQ(c.expectedInitial, pool.getInitialCount()) << c.initial;
    EXPECT_EQ(c.expectedIncrement, pool.getIncrement()) << c.increment;
    EXPECT_EQ(static_cast<unsigned>(c.expectedInitial), pool.getFreeCount(0));
  }
}

TEST(OwireEncodedMsgPoolTest, SecondInitKeepsTheFirstConfigurationUntilCleared) {
  OwireEncodedMsgPool pool;
  const int first[] = {10, 20};
  const int second[] = {5, 6, 7};
  pool.initMsgPool(first, 2, 2, 10);
  pool.initMsgPool(second, 3, 4, 50);
  EXPECT_EQ(2u, pool.getSizeCount());
  EXPECT_EQ(10, pool.getSize(0));
  EXPECT_EQ(2, pool.getInitialCount());

  pool.clearMsgPool();
  EXPECT_FALSE(pool.isInitialized());
  EXPECT_EQ(0u, pool.getFreeCount(0));
  pool.clearMsgPool();  // a cleared pool stays cleared

  pool.initMsgPool(second, 3, 4, 50);
  EXPECT_EQ(3u, pool.getSizeCount());
  EXPECT_EQ(4, pool.getMsgsCreated(2));
}

TEST(OwireEncodedMsgPoolTest, NoSizesLeaveThePoolUninitialised) {
  OwireEncodedMsgPool pool;
  const int size = 8;
  pool.initMsgPool(&size, 0, 1, 10);
  pool.initMsgPool(nullptr, 3, 1, 10);
  EXPECT_FALSE(pool.isInitialized());
}

}  // namespace
}  // namespace orvo
