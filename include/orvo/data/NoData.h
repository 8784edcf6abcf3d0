// The empty data object. Its storage is as large as the largest class the
// library can rebuild in its place (any container, DataBuffer or message),
// which is how message payloads and entries hold data of any class without
// allocating: the library morphs the NoData into the class it needs.
#ifndef ORVO_DATA_NO_DATA_H_
#define ORVO_DATA_NO_DATA_H_

#include <cstddef>

#include "orvo/common/Msg.h"

namespace orvo {
namespace data {

class NoData : public common::Msg {
 public:
  // Total bytes an object of NoData occupies; checked at build time against
  // every class that can be built in its place.
  static constexpr std::size_t kMorphStorageBytes = 8192;

  explicit NoData(bool managed);
  ~NoData() override;

  // Always blank, even with bytes set.
  bool isBlank() const override { return true; }
  // Resets the encode side and the masks, and stays a NoData.
  void clear() override;
  // A new NoData with the same managed flag and full storage.
  virtual NoData* clone() const;

 private:
  NoData(const NoData& other);
  NoData& operator=(const NoData& other);

  alignas(std::max_align_t) unsigned char _morphStorage[kMorphStorageBytes - sizeof(common::Msg)];
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_NO_DATA_H_
