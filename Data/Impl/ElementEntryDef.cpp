#include "orvo/data/ElementEntryDef.h"

#include "Data/Impl/FieldListDefInt.h"

namespace orvo {
namespace data {

void ElementEntryDef::setType(common::UInt8 type, common::UInt8 encodedType) {
  _type = internal::foldEntryDefType(type);
  _encodedType = encodedType;
}

void ElementEntryDef::clear() {
  _name.clear();
  _type = 0;
  _encodedType = 0;
}

}  // namespace data
}  // namespace orvo
