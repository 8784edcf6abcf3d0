#include <string>

#include "Data/Impl/FailureFrame.h"
#include "gtest/gtest.h"
#include "orvo/common/InvalidUsageException.h"
#include "orvo/common/OutOfRangeException.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
namespace {

using common::Exception;
using common::GeneralExceptionStatus;
using common::InvalidUsageException;
using common::OutOfRangeException;

template <class E, class F>
E caught(F raise) {
  try {
    raise();
  } catch (const E& e) {
    return e;
  }
  ADD_FAILURE() << "nothing raised";
  return E(common::UnknownErrorType, common::InformationSeverity, common::UnknownClassification,
           GeneralExceptionStatus::StateOk, GeneralExceptionStatus::StatusCodeNone,
           ORVO_String());
}

TEST(FailureFrameTest, BracketFormIsCutAt256AndPlainFormIsNot) {
  const std::string longText(300, 'x');
  auto bracket = caught<InvalidUsageException>(
      [&] { failMessage(longText.c_str(), "FieldEntry", "setData( const Data& )"); });
  EXPECT_EQ(std::string(256, 'x'), bracket.what());
  auto plain = caught<InvalidUsageException>(
      [&] { throwUsage(longText.c_str(), "FieldListWriteIterator", "complete"); });
  EXPECT_EQ(longText + " in class FieldListWriteIterator in method complete", plain.what());
}

TEST(FailureFrameTest, BracketFormLayoutAndIllegalCallShape) {
  auto e = caught<InvalidUsageException>([] {
    failMessage("Attempt to pass in invalid data format.", "FieldEntry", "setData( const Data& )");
  });
  EXPECT_STREQ(
      "Attempt to pass in invalid data format. in class [FieldEntry] in method "
      "[setData( const Data& )]",
      e.what());
  EXPECT_EQ(1, e.getErrorType());
  EXPECT_EQ(1, e.getSeverity());
  EXPECT_EQ(4, e.getClassification());
  EXPECT_EQ(1, e.getStatus().getState());
  EXPECT_EQ(1, e.getStatus().getStatusCode());
  EXPECT_EQ(e.getStatus().getStatusText(), e.what());
}

TEST(FailureFrameTest, WhileFormCarriesTheCodecText) {
  auto e = caught<InvalidUsageException>([] {
    failWhile(OWIRE_RET_FAILURE, kPhraseInitializingEncodeFor, "Series", "Vector",
              "setSummaryData");
  });
  EXPECT_EQ(std::string(owireRetCodeToString(OWIRE_RET_FAILURE)) +
                " while initializing encode for Series in class [Vector] in method "
                "[setSummaryData]",
            e.what());
}

TEST(FailureFrameTest, ReasonValueAndShapes) {
  auto reason = caught<InvalidUsageException>(
      [] { failReason("Data decoding failed in DataBuffer::getDate(); Reason: ", -1); });
  EXPECT_EQ(std::string("Data decoding failed in DataBuffer::getDate(); Reason: ") +
                owireRetCodeToString(-1),
            reason.what());

  ORVO_String value = valueText("Invalid DataBuffer type [", 4294967295u, "] in DataBuffer::getDate()");
  EXPECT_EQ(value, "Invalid DataBuffer type [4294967295] in DataBuffer::getDate()");

  auto bad = caught<InvalidUsageException>([&] { raiseBadValue(value); });
  EXPECT_EQ(2, bad.getStatus().getState());
  auto range = caught<OutOfRangeException>([&] { raiseOutOfRange(value); });
  EXPECT_EQ(4, range.getErrorType());
  EXPECT_EQ(1, range.getStatus().getState());
  // Both derive from the common base and from std::exception.
  const std::exception& base = range;
  EXPECT_STREQ(value.c_str(), base.what());
  EXPECT_NE(nullptr, dynamic_cast<const Exception*>(&base));
}

TEST(FailureFrameTest, RetCodeTextIsNeverNull) {
  for (int code : {0, -1, -21, -29, 14, 15, -12345, 999}) {
    ASSERT_NE(nullptr, owireRetCodeToString(code)) << code;
  }
}

}  // namespace
}  // namespace internal
}  // namespace orvo
