// One enumeration table of a dictionary: the ids of the fields that share it,
// in the order given (ids without a definition included), and the display
// texts of its values. The dictionary owns each table once; definitions of
// the fields point at it.
#ifndef ORVO_DATA_IMPL_ODM_ENUM_TABLE_INT_H_
#define ORVO_DATA_IMPL_ODM_ENUM_TABLE_INT_H_

#include "Data/Impl/EnumValToDiplayValTable.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class ODMEnumTableInt {
 public:
  ODMEnumTableInt();
  ODMEnumTableInt(const ODMEnumTableInt&) = delete;
  ODMEnumTableInt& operator=(const ODMEnumTableInt&) = delete;
  virtual ~ODMEnumTableInt();

  void addFid(common::Int64 fieldId);
  void addDisplay(common::Int64 value, const common::ORVO_String& display);
  void addDisplay(common::Int64 value, const char* text, common::UInt32 length);
  const common::ORVO_String* getDisplay(common::Int64 value) const {
    return _enumDisplays.getDisplay(value);
  }

  const common::ORVO_Vector<common::Int64>& fids() const { return _fids; }
  const EnumValToDiplayValTable& enumDisplays() const { return _enumDisplays; }
  // Estimate of the table's encoded size: 2 per id, display size + 2 per display.
  common::UInt32 sizeHint() const { return _sizeHint; }

 private:
  common::ORVO_Vector<common::Int64> _fids;
  EnumValToDiplayValTable _enumDisplays;
  common::UInt32 _sizeHint;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_ENUM_TABLE_INT_H_
