#include "orvo/data/FieldEntryDef.h"

#include "Data/Impl/FieldListDefInt.h"

namespace orvo {
namespace data {

void FieldEntryDef::setType(common::UInt8 type, common::UInt8 encodedType) {
  _type = internal::foldEntryDefType(type);
  _encodedType = encodedType;
}

void FieldEntryDef::clear() {
  _fieldId = 0;
  _type = 0;
  _encodedType = 0;
}

}  // namespace data

namespace internal {

UInt8 foldEntryDefType(UInt8 type) {
  switch (type) {
    case 1:
      return 3;
    case 2:
      return 4;
    case 7:
      return 8;
    default:
      return type;
  }
}

void typePairOfSetCode(UInt8 setCode, UInt8* type, UInt8* encodedType) {
  switch (setCode) {
    case OWF_SET_INT_1:
    case OWF_SET_UINT_1:
      *encodedType = 1;
      break;
    case OWF_SET_INT_2:
    case OWF_SET_UINT_2:
      *encodedType = 2;
      break;
    case OWF_SET_INT_4:
    case OWF_SET_UINT_4:
    case OWF_SET_FLOAT_4:
    case OWF_SET_DATE_4:
      *encodedType = 4;
      break;
    case OWF_SET_INT_8:
    case OWF_SET_UINT_8:
    case OWF_SET_DOUBLE_8:
      *encodedType = 7;
      break;
    case OWF_SET_REAL_4RB:
    case OWF_SET_REAL_8RB:
      *encodedType = 9;
      break;
    case OWF_SET_TIME_3:
      *encodedType = 3;
      break;
    case OWF_SET_TIME_5:
      *encodedType = 5;
      break;
    case OWF_SET_DATETIME_7:
      *encodedType = 6;
      break;
    case OWF_SET_DATETIME_9:
      *encodedType = 8;
      break;
    default:
      *encodedType = 0;
      break;
  }
  switch (setCode) {
    case OWF_SET_INT_1:
    case OWF_SET_INT_2:
    case OWF_SET_INT_4:
    case OWF_SET_INT_8:
      *type = 3;
      break;
    case OWF_SET_UINT_1:
    case OWF_SET_UINT_2:
    case OWF_SET_UINT_4:
    case OWF_SET_UINT_8:
      *type = 4;
      break;
    case OWF_SET_FLOAT_4:
      *type = 5;
      break;
    case OWF_SET_DOUBLE_8:
      *type = 6;
      break;
    case OWF_SET_REAL_4RB:
    case OWF_SET_REAL_8RB:
      *type = 8;
      break;
    case OWF_SET_DATE_4:
      *type = 9;
      break;
    case OWF_SET_TIME_3:
    case OWF_SET_TIME_5:
      *type = 10;
      break;
    case OWF_SET_DATETIME_7:
    case OWF_SET_DATETIME_9:
      *type = 11;
      break;
    default:
      *type = foldEntryDefType(setCode);
      break;
  }
}

}  // namespace internal
}  // namespace orvo
