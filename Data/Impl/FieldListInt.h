// The library's internal face of FieldList and FieldEntry: the wire
// records, the definitions in force, and the lazy header decode, for the
// iterators and for the containers that hold lists.
#ifndef ORVO_DATA_IMPL_FIELD_LIST_INT_H_
#define ORVO_DATA_IMPL_FIELD_LIST_INT_H_

#include "orvo/data/EntryAttrib.h"
#include "orvo/data/FieldEntry.h"
#include "orvo/data/FieldList.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {

class FieldListInt {
 public:
  static OwfFieldList& record(data::FieldList& list) { return list._fieldList; }
  static const OwfFieldList& record(const data::FieldList& list) { return list._fieldList; }
  // The table this list hands the codec when written with a definition.
  static OwfLocalFieldSetDefDb& defDb(data::FieldList& list) { return list._defDb; }
  // Definitions in force for decoding, set by an enclosing container.
  static OwfLocalFieldSetDefDb* defDbInUse(const data::FieldList& list) { return list._defDbInUse; }
  static void setDefDbInUse(data::FieldList& list, OwfLocalFieldSetDefDb* db) {
    list._defDbInUse = db;
  }
  static void startDecode(const data::FieldList& list, OwfLocalFieldSetDefDb* db,
                          const data::FieldListDef* def) {
    list.startDecode(db, def);
  }
  // Decodes the header at the position of an outer reader's `iter`.
  static void startDecodeSRI(const data::FieldList& list, OwfDecodeIterator* iter,
                             OwfLocalFieldSetDefDb* db) {
    list.startDecodeSRI(iter, db, nullptr);
  }

  static OwfFieldEntry& record(data::FieldEntry& entry) { return entry._fieldEntry; }
  static const OwfFieldEntry& record(const data::FieldEntry& entry) { return entry._fieldEntry; }
  static data::EntryAttrib& attrib(const data::FieldEntry& entry) { return entry._entryAttrib; }
  static void setContentMask(data::FieldEntry& entry, common::UInt8 mask) {
    entry._contentMask = mask;
  }
};

}  // namespace internal
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_FIELD_LIST_INT_H_
