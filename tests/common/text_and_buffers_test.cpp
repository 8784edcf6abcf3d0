#include <cstring>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/ORVO_WString.h"
#include "orvo/common/UnicodeUtil.h"

namespace orvo {
namespace common {
namespace {

TEST(OrvoStringTest, LengthZeroMeasuresAndLimitStopsAtTerminator) {
  const char* text = "quote of the day";
  ORVO_String measured(text, 0, false);
  ORVO_String limited(text, 256, false);
  EXPECT_EQ(measured, limited);
  EXPECT_EQ(std::strlen(text), limited.length());
  ORVO_String cut(text, 5, false);
  EXPECT_EQ(cut, "quote");
}

TEST(OrvoStringTest, AppendsNumbersInDecimal) {
  ORVO_String s;
  s.append(4294967295u).append(" ").append(-7).append(" ").append(Int64{-9223372036854775807LL});
  EXPECT_EQ(s, "4294967295 -7 -9223372036854775807");
}

TEST(OrvoStringTest, SetKeepsEmbeddedZerosAndSelfAppendIsSafe) {
  ORVO_String s;
  s.set("a\0b", 3);
  EXPECT_EQ(3u, s.length());
  EXPECT_EQ('b', s.data()[2]);
  ORVO_String t("ab");
  t.append(t).append(t.c_str() + 1);
  EXPECT_EQ(t, "ababbab");
}

TEST(OrvoStringTest, TrimWhitespaceAtBothEnds) {
  ORVO_String s(" \t name \r\n");
  EXPECT_EQ(s.trimWhitespace(), "name");
  ORVO_String blanks("   ");
  EXPECT_TRUE(blanks.trimWhitespace().empty());
  EXPECT_STREQ("", blanks.c_str());
}

TEST(OrvoStringTest, CopyAndAssignmentAreDeep) {
  ORVO_String a("first");
  ORVO_String b(a);
  a.append(" changed");
  EXPECT_EQ(b, "first");
  b = "second";
  EXPECT_EQ(a, "first changed");
  a.clear();
  EXPECT_TRUE(a.empty());
  EXPECT_NE(a, b);
}

TEST(OrvoStringTest, MovesAcrossTheInlineLimitKeepTheText) {
  ORVO_String shortText("short");
  ORVO_String longText("a text well beyond the inline room of a string");
  ORVO_String a(std::move(shortText));
  ORVO_String b(std::move(longText));
  EXPECT_TRUE(shortText.empty());
  EXPECT_TRUE(longText.empty());
  EXPECT_EQ(a, "short");
  EXPECT_EQ(b, "a text well beyond the inline room of a string");
  a = std::move(b);
  b = std::move(a);
  EXPECT_EQ(b, "a text well beyond the inline room of a string");
  a = "x";
  for (int i = 0; i < 40; ++i) a.append('y');
  a = std::move(shortText);
  EXPECT_TRUE(a.empty());
  EXPECT_STREQ("", a.c_str());
}

TEST(BufferTest, UnownedSetFromDoesNotCopy) {
  unsigned char bytes[4] = {1, 2, 3, 4};
  {
    Buffer view;
    view.setFrom(bytes, 4, 4, false);
    EXPECT_EQ(bytes, view.c_buf());
    EXPECT_FALSE(view.isOwned());
  }
  EXPECT_EQ(4, bytes[3]);  // the view's end left the bytes alone
}

TEST(BufferTest, CopyingSetFromAndAssignmentOwnTheirBytes) {
  unsigned char bytes[3] = {7, 8, 9};
  Buffer copy;
  copy.setFrom(bytes, 3, 10);
  EXPECT_NE(bytes, copy.c_buf());
  EXPECT_EQ(3, copy.size());
  EXPECT_EQ(10, copy.capacity());
  bytes[0] = 0;
  EXPECT_EQ(7, copy.c_buf()[0]);
  Buffer other;
  other = copy;
  EXPECT_NE(copy.c_buf(), other.c_buf());
  EXPECT_EQ(0, std::memcmp(copy.c_buf(), other.c_buf(), 3));
  other.clear();
  EXPECT_TRUE(other.isEmpty());
}

TEST(BufferTest, OwnedSetFromTakesTheBytesOver) {
  Buffer owner;
  owner.setFrom(new unsigned char[5]{1, 2, 3, 4, 5}, 5, 5, true);
  EXPECT_TRUE(owner.isOwned());
  owner.setFrom(owner.c_buf() + 1, 2);  // copying from itself must read before freeing
  EXPECT_EQ(2, owner.c_buf()[0]);
  EXPECT_EQ(3, owner.c_buf()[1]);
}

TEST(OrvoVectorTest, GrowsToFiveThenDoublesWithZeroFill) {
  ORVO_Vector<int*> v;
  EXPECT_EQ(0u, v._capacity);
  int x = 0;
  v.push_back(&x);
  EXPECT_EQ(5u, v._capacity);
  for (int i = 0; i < 5; ++i) v.push_back(&x);
  EXPECT_EQ(10u, v._capacity);
  EXPECT_EQ(6u, v._count);
  for (unsigned int i = v._count; i < v._capacity; ++i) EXPECT_EQ(nullptr, v._data[i]);
  v.resize(21);
  EXPECT_EQ(40u, v.capacity());
  EXPECT_EQ(nullptr, v[20]);
}

TEST(OrvoVectorTest, HoldsStringsByValue) {
  ORVO_Vector<ORVO_String> texts;
  for (int i = 0; i < 12; ++i) texts.push_back(ORVO_String("t").append(i));
  ORVO_Vector<ORVO_String> copy(texts);
  texts.clear();
  EXPECT_EQ(12u, copy.size());
  EXPECT_EQ(copy[11], "t11");
}

TEST(UnicodeUtilTest, VerifiesUtf8) {
  EXPECT_EQ(UTF8ConversionOK, UnicodeUtil::verifyUTF8String("plain ascii"));
  EXPECT_EQ(UTF8ConversionOK, UnicodeUtil::verifyUTF8String("caf\xC3\xA9 \xF0\x9F\x98\x80"));
  EXPECT_NE(UTF8ConversionOK, UnicodeUtil::verifyUTF8String("caf\xE9"));
  EXPECT_EQ(UTF8Overlong, UnicodeUtil::verifyUTF8String("\xC0\xAF"));
  EXPECT_EQ(UTF8Surrogate, UnicodeUtil::verifyUTF8String("\xED\xA0\x80"));
  EXPECT_EQ(UTF8SourceExhausted, UnicodeUtil::verifyUTF8String("ab\xE2\x82"));
}

TEST(UnicodeUtilTest, ConvertsToUtf16WithSurrogatePairs) {
  ORVO_WString wide;
  ORVO_String error;
  ASSERT_TRUE(UnicodeUtil::convertUTF8ToWideString(ORVO_String("A\xC3\xA9\xF0\x9F\x98\x80"),
                                                   wide, error));
  ASSERT_EQ(4u, wide.length());
  EXPECT_EQ(0x41, wide.c_str()[0]);
  EXPECT_EQ(0xE9, wide.c_str()[1]);
  EXPECT_EQ(0xD83D, wide.c_str()[2]);
  EXPECT_EQ(0xDE00, wide.c_str()[3]);
  EXPECT_EQ(0, wide.c_str()[4]);
}

TEST(UnicodeUtilTest, FailedConversionGivesAnErrorText) {
  ORVO_WString wide;
  ORVO_String error;
  EXPECT_FALSE(UnicodeUtil::convertUTF8ToWideString(ORVO_String("ok\xFF"), wide, error));
  EXPECT_TRUE(wide.empty());
  EXPECT_EQ(error, "illegal UTF-8 byte at byte 2");
  ASSERT_TRUE(UnicodeUtil::convertToWideStringWithCP(ORVO_String("\xE9t\xE9"), wide, error, 0));
  EXPECT_EQ(3u, wide.length());
  EXPECT_EQ(0xE9, wide.c_str()[0]);
}

}  // namespace
}  // namespace common
}  // namespace orvo
