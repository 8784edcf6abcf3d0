// One row position of a FieldListDef: a field id, the value's type and how
// it is packed in a set-defined row (0: in its ordinary wire form).
#ifndef ORVO_DATA_FIELD_ENTRY_DEF_H_
#define ORVO_DATA_FIELD_ENTRY_DEF_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace data {

class FieldEntryDef {
 public:
  FieldEntryDef() : _fieldId(0), _type(0), _encodedType(0) {}
  virtual ~FieldEntryDef() = default;

  common::Int16 getFieldID() const { return _fieldId; }
  void setFieldID(common::Int16 fieldId) { _fieldId = fieldId; }
  common::UInt8 getType() const { return _type; }
  common::UInt8 getEncodedType() const { return _encodedType; }
  // Older type codes fold (1 to 3, 2 to 4, 7 to 8). The pair is checked
  // only when the entry is bound to a definition.
  void setType(common::UInt8 type, common::UInt8 encodedType);
  void clear();

 private:
  common::Int16 _fieldId;
  common::UInt8 _type;
  common::UInt8 _encodedType;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_ENTRY_DEF_H_
