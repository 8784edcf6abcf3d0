// The library's internal face of ElementListDef, as FieldListDefInt is for
// FieldListDef.
#ifndef ORVO_DATA_IMPL_ELEMENT_LIST_DEF_INT_H_
#define ORVO_DATA_IMPL_ELEMENT_LIST_DEF_INT_H_

#include "orvo/data/ElementListDef.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

class ElementListDefInt {
 public:
  static const OwfElementSetDef& setDef(const data::ElementListDef& def) { return def._setDef; }
  static const OwfLocalElementSetDefDb* defDb(const data::ElementListDef& def) {
    return def._pDefDb;
  }
  static void viewDecoded(data::ElementListDef& def, const OwfLocalElementSetDefDb* db,
                          const OwfElementSetDef& slot);
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ELEMENT_LIST_DEF_INT_H_
