// The container of fields keyed by a 16-bit field id. A list holds standard
// data (each entry with its id; the wire gives no type) and set-defined data
// (rows laid out by a FieldListDef, so the types are known). Given bytes, a
// list decodes nothing until the first getter or read iterator needs the
// header, and then only once. Written, it is filled by a
// FieldListWriteIterator, into its own buffer or, when nested, straight into
// the buffer of the outermost object.
#ifndef ORVO_DATA_FIELD_LIST_H_
#define ORVO_DATA_FIELD_LIST_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class FieldListInt;
}  // namespace internal

namespace data {

class FieldEntry;
class FieldListDef;
class FieldListReadIterator;

class FieldList : public common::Data {
 public:
  // getContentMask bits.
  enum ContentMaskFlag { DataDefAvailableFlag = 0x01, SetDefinedDataFlag = 0x02 };
  // getHintMask bits.
  enum HintMaskFlag { InfoFlag = 0x01 };

  explicit FieldList(bool managed);
  ~FieldList() override;

  // Dictionary id first, then the list number; marks the list as carrying
  // information fields.
  void setInfo(short dictId, short fieldListNum);
  // A non-zero id is also flagged on the wire.
  void setDataDefID(common::UInt16 id);

  short getInfoDictID() const;
  short getInfoFieldListNum() const;
  common::UInt16 getDataDefID() const;
  // Entries other than the set-defined ones, as far as the definition in
  // force tells them apart.
  common::UInt32 getStandardDataCount() const;
  common::UInt8 getContentMask() const;
  common::UInt8 getHintMask() const;

  // Fills `entry` with the first field of id `fieldId`, its data read as
  // type `dataType`; clears `entry` and answers false when there is none.
  // Walks from the start at each call, on an iterator the list keeps.
  bool find(short fieldId, common::UInt32 dataType, FieldEntry& entry) const;

  // Back to an empty list ready to be written, keeping the buffer.
  void clear() override;

 private:
  friend class orvo::internal::FieldListInt;

  // Decodes the header once, when the list holds encoded bytes.
  void startDecode(OwfLocalFieldSetDefDb* defDb, const FieldListDef* def) const;
  // Decodes the header at the position of an outer reader's iterator.
  void startDecodeSRI(OwfDecodeIterator* iter, OwfLocalFieldSetDefDb* defDb,
                      const void* unused) const;
  void countStandardEntries(int ret, const OwfDecodeIterator& iter) const;

  OwfLocalFieldSetDefDb* _defDbInUse;
  mutable OwfFieldList _fieldList;
  OwfLocalFieldSetDefDb _defDb;
  mutable FieldListReadIterator* _findIter;
  mutable common::UInt32 _standardCount;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_FIELD_LIST_H_
