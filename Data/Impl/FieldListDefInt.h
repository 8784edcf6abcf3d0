// The library's internal face of the set definitions: the codec record of a
// definition, turning a definition into a view of a decoded container's
// table, and the reading of a row's set code into its type pair, which
// field and element definitions share.
#ifndef ORVO_DATA_IMPL_FIELD_LIST_DEF_INT_H_
#define ORVO_DATA_IMPL_FIELD_LIST_DEF_INT_H_

#include "orvo/common/Types.h"
#include "orvo/data/FieldListDef.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

using common::UInt8;

class FieldListDefInt {
 public:
  static const OwfFieldSetDef& setDef(const data::FieldListDef& def) { return def._setDef; }
  // The decoded table the definition views, or null when it owns its rows.
  static const OwfLocalFieldSetDefDb* defDb(const data::FieldListDef& def) { return def._pDefDb; }
  // Makes `def` a view of `slot` of the decoded table `db`, dropping any
  // rows it owned.
  static void viewDecoded(data::FieldListDef& def, const OwfLocalFieldSetDefDb* db,
                          const OwfFieldSetDef& slot);
};

// The older type codes a definition row folds: 1 to 3, 2 to 4, 7 to 8.
UInt8 foldEntryDefType(UInt8 type);

// The type and width a set code of a row stands for. Codes 74 and 75 both
// read as a real of width 9, though writing that pair gives 75 only; a code
// without a packed form is a plain type of width 0.
void typePairOfSetCode(UInt8 setCode, UInt8* type, UInt8* encodedType);

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_FIELD_LIST_DEF_INT_H_
