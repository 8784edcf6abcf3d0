// The stored form of a field definition. Its name string is also the key of
// the dictionary's name index, which points at it, so the name must not
// change while the definition is in a dictionary.
#ifndef ORVO_DATA_IMPL_ODM_FID_DEF_INT_H_
#define ORVO_DATA_IMPL_ODM_FID_DEF_INT_H_

#include "Data/Impl/ORTGenHash.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/odm/ODMFidDef.h"

namespace orvo {
namespace odm {

class ODMEnumTableInt;
class ODMFidDefPool;

class ODMFidDefInt : public ODMFidDef {
 public:
  // The node of the dictionary's name index, keyed on this definition's name.
  using NameLink = ORTGenHashLink<const common::ORVO_String, ODMFidDefInt>;

  ODMFidDefInt();
  ODMFidDefInt(const common::ORVO_String& name, const common::ORVO_String& longName,
               common::Int64 fieldId, const common::ORVO_String& rippleToName,
               common::Int64 rippleToFieldId, common::Int64 fieldType, common::Int64 enumLength,
               common::Int64 length, common::Int64 ommType, common::Int64 ommLength);
  ~ODMFidDefInt() override;
  // The name link points into the object itself.
  ODMFidDefInt(const ODMFidDefInt&) = delete;
  ODMFidDefInt& operator=(const ODMFidDefInt&) = delete;

  const common::ORVO_String& getName() const override { return _name; }
  const common::ORVO_String& getLongName() const override { return _longName; }
  common::Int64 getFieldId() const override { return _fieldId; }
  common::Int64 getRippleToFieldId() const override { return _rippleToFieldId; }
  const common::ORVO_String& getRippleToName() const override { return _rippleToName; }
  common::Int64 getFieldType() const override { return _fieldType; }
  common::Int64 getEnumLength() const override { return _enumLength; }
  common::Int64 getLength() const override { return _length; }
  common::Int64 getOMMType() const override { return _ommType; }
  common::Int64 getOMMLength() const override { return _ommLength; }
  const common::ORVO_String& displayValueFor(common::Int64 value) const override;

  // The key of the name index.
  const common::ORVO_String* nameKey() const { return &_name; }
  NameLink* nameLink() { return &_nameLink; }

  void setName(const char* text, common::UInt32 length) { _name.set(text, length); }
  void setLongName(const char* text, common::UInt32 length) { _longName.set(text, length); }
  void setFieldId(common::Int64 fieldId) { _fieldId = fieldId; }
  void setRippleToName(const char* text, common::UInt32 length) { _rippleToName.set(text, length); }
  void setRippleToFieldId(common::Int64 fieldId) { _rippleToFieldId = fieldId; }
  void setFieldType(common::Int64 type) { _fieldType = type; }
  void setEnumLength(common::Int64 length) { _enumLength = length; }
  void setLength(common::Int64 length) { _length = length; }
  void setOMMType(common::Int64 type) { _ommType = type; }
  void setOMMLength(common::Int64 length) { _ommLength = length; }

  // Not owned: the dictionary owns every table.
  ODMEnumTableInt* enumTable() const { return _enumTable; }
  void setEnumTable(ODMEnumTableInt* table) { _enumTable = table; }

  // Estimate of the encoded size of the definition's row.
  common::UInt32 sizeHint() const { return _sizeHint; }
  void updateSizeHint() { _sizeHint = _rippleToName.size() + _longName.size() + _name.size() + 10; }

 private:
  friend class ODMFidDefPool;

  common::ORVO_String _name;
  common::ORVO_String _longName;
  common::Int64 _fieldId;
  common::ORVO_String _rippleToName;
  common::Int64 _rippleToFieldId;
  common::Int64 _fieldType;
  common::Int64 _enumLength;
  common::Int64 _length;
  common::Int64 _ommType;
  common::Int64 _ommLength;
  ODMEnumTableInt* _enumTable;
  common::UInt32 _sizeHint;
  NameLink _nameLink;
  // Made in a pool's block rather than by new; the pool ends it.
  bool _pooled;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_FID_DEF_INT_H_
