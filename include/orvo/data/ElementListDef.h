// A set definition of an ElementList: a set id (0 to 15) and the ordered
// element names and types of the rows. Each entry owns a copy of its name.
// Otherwise as FieldListDef.
#ifndef ORVO_DATA_ELEMENT_LIST_DEF_H_
#define ORVO_DATA_ELEMENT_LIST_DEF_H_

#include "orvo/common/DataDef.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class ElementListDefInt;
}  // namespace internal

namespace data {

class ElementListDef : public common::DataDef {
 public:
  enum ContentMaskFlag { DataDefIDFlag = 0x01 };

  ElementListDef();
  ElementListDef(const ElementListDef& other);
  ElementListDef& operator=(const ElementListDef& other);
  ~ElementListDef() override;

  common::DataDef* clone() const override;
  void clear();

  common::UInt16 getDataDefID() const { return _setDef.setId; }
  void setDataDefID(common::UInt16 id);
  common::UInt8 getContentMask() const;
  // Wider than FieldListDef::getCount on purpose; the value is the same.
  common::UInt32 getCount() const { return _setDef.count; }

 private:
  friend class orvo::internal::ElementListDefInt;
  friend class ElementListDefReadIterator;
  friend class ElementListDefWriteIterator;

  void copyFrom(const ElementListDef& other);
  void reserve(common::UInt16 newCapacity, bool keep);
  void releaseEntries();

  OwfElementSetDef _setDef;
  const OwfLocalElementSetDefDb* _pDefDb;
  bool _idSet;
  common::UInt16 _defCapacity;
  bool _ownsEntries;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_DEF_H_
