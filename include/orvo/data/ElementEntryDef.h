// One row position of an ElementListDef: an element name, the value's type
// and how it is packed in a set-defined row (0: in its ordinary wire form).
#ifndef ORVO_DATA_ELEMENT_ENTRY_DEF_H_
#define ORVO_DATA_ELEMENT_ENTRY_DEF_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace data {

class ElementEntryDef {
 public:
  ElementEntryDef() : _type(0), _encodedType(0) {}
  virtual ~ElementEntryDef() = default;

  const common::ORVO_String& getName() const { return _name; }
  void setName(const common::ORVO_String& name) { _name = name; }
  common::UInt8 getType() const { return _type; }
  common::UInt8 getEncodedType() const { return _encodedType; }
  // Older type codes fold (1 to 3, 2 to 4, 7 to 8). The pair is checked
  // only when the entry is bound to a definition.
  void setType(common::UInt8 type, common::UInt8 encodedType);
  void clear();

 private:
  friend class ElementListDefReadIterator;

  common::ORVO_String _name;
  common::UInt8 _type;
  common::UInt8 _encodedType;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_ENTRY_DEF_H_
