#include "orvo/message/GroupID.h"

#include <arpa/inet.h>

#include <cstring>
#include <vector>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"

namespace orvo {
namespace {

using common::Buffer;
using common::ORVO_Vector;
using common::UInt16;
using message::GroupID;

std::vector<UInt16> numbersOf(const GroupID& group) {
  const ORVO_Vector<UInt16>& numbers = group.getAsVector();
  return std::vector<UInt16>(numbers.begin(), numbers.end());
}

// The image as the host reads it back with ntohs.
std::vector<UInt16> decodeImage(const Buffer& image) {
  std::vector<UInt16> numbers;
  for (int offset = 0; offset + 1 < image.size(); offset += 2) {
    UInt16 wire;
    std::memcpy(&wire, image.c_buf() + offset, 2);
    numbers.push_back(ntohs(wire));
  }
  return numbers;
}

TEST(GroupIDTest, ImageIsBigEndianInOrder) {
  GroupID group;
  EXPECT_EQ(0, group.getAsBuffer().size());
  group.append(0x0102);
  group.append(0xA0B0);
  const Buffer& image = group.getAsBuffer();
  ASSERT_EQ(4, image.size());
  const unsigned char expected[] = {0x01, 0x02, 0xA0, 0xB0};
  EXPECT_EQ(0, std::memcmp(expected, image.c_buf(), 4));
  EXPECT_EQ(numbersOf(group), decodeImage(image));
}

TEST(GroupIDTest, ImageGrowsInStepsOfEight) {
  GroupID group;
  for (UInt16 i = 1; i <= 4; ++i) group.append(i);
  EXPECT_EQ(8, group.getAsBuffer().size());
  EXPECT_EQ(8, group.getAsBuffer().capacity());
  group.append(5);
  EXPECT_EQ(10, group.getAsBuffer().size());
  EXPECT_EQ(16, group.getAsBuffer().capacity());
  for (UInt16 i = 6; i <= 13; ++i) group.append(i);
  const Buffer& image = group.getAsBuffer();
  EXPECT_EQ(26, image.size());
  EXPECT_EQ(32, image.capacity());
  EXPECT_EQ(numbersOf(group), decodeImage(image));
}

TEST(GroupIDTest, SetFromBufferReadsNetworkOrderAndReplacesNumbers) {
  GroupID group;
  group.append(99);
  const unsigned char bytes[] = {0x00, 0x07, 0x12, 0x34};
  group.setFromBuffer(Buffer(const_cast<unsigned char*>(bytes), 4, 4, false));
  EXPECT_EQ((std::vector<UInt16>{7, 0x1234}), numbersOf(group));
  EXPECT_EQ(0, std::memcmp(bytes, group.getAsBuffer().c_buf(), 4));
}

TEST(GroupIDTest, SetFromBufferReallocatesOnlyWhenTheSizeReachesTheCapacity) {
  GroupID group;
  unsigned char bytes[16] = {0, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0, 7, 0, 8};
  group.setFromBuffer(Buffer(bytes, 6, 6, false));
  EXPECT_EQ(8, group.getAsBuffer().capacity());
  group.setFromBuffer(Buffer(bytes, 8, 8, false));
  EXPECT_EQ(16, group.getAsBuffer().capacity());
  EXPECT_EQ((std::vector<UInt16>{1, 2, 3, 4}), numbersOf(group));
  group.setFromBuffer(Buffer(bytes, 16, 16, false));
  EXPECT_EQ(24, group.getAsBuffer().capacity());
  EXPECT_EQ(8u, group.getAsVector().size());
}

TEST(GroupIDTest, OddSizeTakesItsLastLowByteFromBehindTheImage) {
  GroupID group;
  const unsigned char bytes[] = {0x01, 0x02, 0x03};
  group.setFromBuffer(Buffer(const_cast<unsigned char*>(bytes), 3, 3, false));
  // A fresh image is zero behind the copied bytes.
  EXPECT_EQ((std::vector<UInt16>{0x0102, 0x0300}), numbersOf(group));
}

TEST(GroupIDTest, SetFromItsOwnImage) {
  GroupID group;
  for (UInt16 i = 0; i < 4; ++i) group.append(static_cast<UInt16>(i * 257));
  const std::vector<UInt16> before = numbersOf(group);
  group.setFromBuffer(group.getAsBuffer());  // size equals capacity: reallocates
  EXPECT_EQ(before, numbersOf(group));
}

TEST(GroupIDTest, SetFromVectorReplacesNumbersAndImageFollowsLater) {
  GroupID group;
  group.append(1);
  ORVO_Vector<UInt16> numbers;
  numbers.push_back(0xFFFF);
  numbers.push_back(0);
  numbers.push_back(0x8001);
  group.setFromVector(numbers);
  EXPECT_EQ((std::vector<UInt16>{0xFFFF, 0, 0x8001}), numbersOf(group));
  EXPECT_EQ(numbersOf(group), decodeImage(group.getAsBuffer()));
  group.setFromVector(group.getAsVector());
  EXPECT_EQ(3u, group.getAsVector().size());
}

TEST(GroupIDTest, VectorCapacityStartsAtFiveAndDoubles) {
  GroupID group;
  group.append(1);
  EXPECT_EQ(5u, group.getAsVector().capacity());
  for (UInt16 i = 0; i < 5; ++i) group.append(i);
  EXPECT_EQ(10u, group.getAsVector().capacity());
}

}  // namespace
}  // namespace orvo
