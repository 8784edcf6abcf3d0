#include "orvo/data/NoData.h"

#include "Data/Impl/DataInt.h"
#include "orvo/data/DataType.h"

namespace orvo {
namespace data {

NoData::NoData(bool managed) : Msg(managed) {
  _dataType = NoDataEnum;
  _ownsBuffer = managed;
}

NoData::NoData(const NoData& other) : NoData(other._managed) {}

NoData::~NoData() = default;

NoData& NoData::operator=(const NoData&) {
  _dataType = NoDataEnum;
  return *this;
}

void NoData::clear() {
  internal::DataInt::resetForEncode(this, this, NoDataEnum);
  _hintMask = 0;
  _indicationMask = 0;
  _dataType = NoDataEnum;
}

NoData* NoData::clone() const { return new NoData(_managed); }

}  // namespace data
}  // namespace orvo
