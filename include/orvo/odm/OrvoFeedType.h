// The type of a field in the legacy feed form, as a field dictionary records it.
#ifndef ORVO_ODM_ORVO_FEED_TYPE_H_
#define ORVO_ODM_ORVO_FEED_TYPE_H_

namespace orvo {
namespace odm {

enum OrvoFeedType : int {
  // What a type name that names no feed type reads as; 0 is a real type.
  FeedNone = -1,
  FeedTimeSeconds = 0,
  FeedInteger = 1,
  FeedNumeric = 2,
  FeedDate = 3,
  FeedPrice = 4,
  FeedAlphanumeric = 5,
  FeedEnumerated = 6,
  FeedTime = 7,
  FeedBinary = 8,
  FeedLongAlphanumeric = 9,
  FeedOpaqueType = 10
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_ODM_ORVO_FEED_TYPE_H_
