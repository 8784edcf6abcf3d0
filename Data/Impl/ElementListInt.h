// The library's internal face of ElementList and ElementEntry: the wire
// records, the definitions in force, and the lazy header decode, for the
// iterators and for the containers that hold lists.
#ifndef ORVO_DATA_IMPL_ELEMENT_LIST_INT_H_
#define ORVO_DATA_IMPL_ELEMENT_LIST_INT_H_

#include "orvo/data/ElementEntry.h"
#include "orvo/data/ElementList.h"
#include "orvo/data/EntryAttrib.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

class ElementListInt {
 public:
  static OwfElementList& record(data::ElementList& list) { return list._elementList; }
  static const OwfElementList& record(const data::ElementList& list) { return list._elementList; }
  // The table this list hands the codec when written with a definition.
  static OwfLocalElementSetDefDb& defDb(data::ElementList& list) { return list._defDb; }
  // Definitions in force for decoding, set by an enclosing container.
  static OwfLocalElementSetDefDb* defDbInUse(const data::ElementList& list) {
    return list._defDbInUse;
  }
  static void setDefDbInUse(data::ElementList& list, OwfLocalElementSetDefDb* db) {
    list._defDbInUse = db;
  }
  static void startDecode(const data::ElementList& list, OwfLocalElementSetDefDb* db,
                          const data::ElementListDef* def) {
    list.startDecode(db, def);
  }
  // Decodes the header at the position of an outer reader's `iter`.
  static void startDecodeSRI(const data::ElementList& list, OwfDecodeIterator* iter,
                             OwfLocalElementSetDefDb* db) {
    list.startDecodeSRI(iter, db, nullptr);
  }

  static OwfElementEntry& record(data::ElementEntry& entry) { return entry._elementEntry; }
  static const OwfElementEntry& record(const data::ElementEntry& entry) {
    return entry._elementEntry;
  }
  static data::EntryAttrib& attrib(const data::ElementEntry& entry) { return entry._entryAttrib; }
  static void setContentMask(data::ElementEntry& entry, common::UInt8 mask) {
    entry._contentMask = mask;
  }
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ELEMENT_LIST_INT_H_
