// One field definition of a field dictionary: the acronym and long name of a
// field id, its type in the feed form and on the wire, its maximum lengths,
// the field it ripples to and, for an enumerated field, the display texts of
// its values.
//
// Definitions belong to their dictionary. An application holds references
// obtained from ODMFieldDictionary::getFidDef; they stay valid until the field
// definitions are reloaded or the dictionary is destroyed.
#ifndef ORVO_ODM_ODM_FID_DEF_H_
#define ORVO_ODM_ODM_FID_DEF_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/odm/OMMType.h"
#include "orvo/odm/OrvoFeedType.h"

namespace orvo {
namespace odm {

class ODMFidDef {
 public:
  ODMFidDef(const ODMFidDef&) = default;
  ODMFidDef& operator=(const ODMFidDef&) = default;
  virtual ~ODMFidDef();

  // The acronym.
  virtual const common::ORVO_String& getName() const = 0;
  // The DDE acronym.
  virtual const common::ORVO_String& getLongName() const = 0;
  virtual common::Int64 getFieldId() const = 0;
  // The field id rippled to; 0 for none.
  virtual common::Int64 getRippleToFieldId() const = 0;
  // The ripple column as read from a file; empty for a definition from the wire.
  virtual const common::ORVO_String& getRippleToName() const = 0;
  // An OrvoFeedType, or -1 for a type name the reader did not know.
  virtual common::Int64 getFieldType() const = 0;
  virtual common::Int64 getEnumLength() const = 0;
  virtual common::Int64 getLength() const = 0;
  // An OMMType, or 0 for a type name the reader did not know.
  virtual common::Int64 getOMMType() const = 0;
  virtual common::Int64 getOMMLength() const = 0;
  // The display text of `value` in this field's enumeration table. Raises
  // InvalidUsageException when the field has no table or the table has no
  // display for the value.
  virtual const common::ORVO_String& displayValueFor(common::Int64 value) const = 0;

  // Canonical name of a wire type; "UNKNOWN" for a number that is none.
  static common::ORVO_String ommTypeToString(OMMType type);
  static common::ORVO_String ommTypeToString(common::Int64 type);
  // Name of a feed type; "NONE" for a number that is none.
  static common::ORVO_String fieldTypeToString(OrvoFeedType type);
  static common::ORVO_String fieldTypeToString(common::Int64 type);
  // Wire type of a type name (canonical or alternative spelling); 0 for a
  // name it does not know.
  static OMMType stringToOMMType(const char* text);
  // Feed type of a type name; FeedNone (-1) for a name it does not know,
  // "NONE" included.
  static OrvoFeedType stringToFieldType(const char* text);

 protected:
  ODMFidDef() = default;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_ODM_ODM_FID_DEF_H_
