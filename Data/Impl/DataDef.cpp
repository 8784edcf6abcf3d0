#include "orvo/common/DataDef.h"

namespace orvo {
namespace common {

const ORVO_String DataDef::_className("DataDef");

DataDef::~DataDef() {
  _word = 0;
  _defType = 0;
}

}  // namespace common
}  // namespace orvo
