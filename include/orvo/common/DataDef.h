// Base of set definitions: a definition type code and a word the
// definitions use for their own bookkeeping.
#ifndef ORVO_COMMON_DATA_DEF_H_
#define ORVO_COMMON_DATA_DEF_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace common {

class DataDef {
 public:
  virtual ~DataDef();

  UInt8 getDefType() const { return _defType; }
  // A copy of the definition with storage of its own; the caller owns it.
  virtual DataDef* clone() const = 0;

 protected:
  explicit DataDef(UInt8 defType) : _word(0), _defType(defType) {}

  UInt32 _word;
  UInt8 _defType;

  static const ORVO_String _className;
};

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_DATA_DEF_H_
