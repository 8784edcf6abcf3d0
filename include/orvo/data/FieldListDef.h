// A set definition of a FieldList: a set id (0 to 15) and the ordered field
// ids and types of the rows, so that set-defined rows leave them out. Built
// with a FieldListDefWriteIterator, read with a FieldListDefReadIterator.
// The heart of the object is the codec's own record, handed to the codec
// without conversion.
//
// A definition either owns its entries or views those of a decoded
// container, valid while that container lives and is not cleared.
#ifndef ORVO_DATA_FIELD_LIST_DEF_H_
#define ORVO_DATA_FIELD_LIST_DEF_H_

#include "orvo/common/DataDef.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class FieldListDefInt;
}  // namespace internal

namespace data {

class FieldListDef : public common::DataDef {
 public:
  enum ContentMaskFlag { DataDefIDFlag = 0x01 };

  FieldListDef();
  // Copies get entry arrays of their own.
  FieldListDef(const FieldListDef& other);
  FieldListDef& operator=(const FieldListDef& other);
  ~FieldListDef() override;

  common::DataDef* clone() const override;
  // Back to a fresh, empty definition.
  void clear();

  common::UInt16 getDataDefID() const { return _setDef.setId; }
  // Ids above 15 fail.
  void setDataDefID(common::UInt16 id);
  // DataDefIDFlag once an id was given, or when the definition views a
  // decoded container.
  common::UInt8 getContentMask() const;
  common::UInt8 getCount() const { return _setDef.count; }

 private:
  friend class orvo::internal::FieldListDefInt;
  friend class FieldListDefReadIterator;
  friend class FieldListDefWriteIterator;

  void copyFrom(const FieldListDef& other);
  void reserve(common::UInt16 newCapacity, bool keep);
  void releaseEntries();

  OwfFieldSetDef _setDef;
  const OwfLocalFieldSetDefDb* _pDefDb;
  common::UInt16 _defCapacity;
  bool _idSet;
  // Whether the entry array is this object's to free; a copy of a view owns
  // its array although it still names the database it came from.
  bool _ownsEntries;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_DEF_H_
