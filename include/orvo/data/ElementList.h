// The container of elements keyed by a name. Built as FieldList is:
// standard data (each element with its name and type) and set-defined data
// (rows laid out by an ElementListDef), a header decoded lazily once, and
// writing through an ElementListWriteIterator.
#ifndef ORVO_DATA_ELEMENT_LIST_H_
#define ORVO_DATA_ELEMENT_LIST_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/owire/owire.h"

namespace orvo {
namespace internal {
class ElementListInt;
}  // namespace internal

namespace data {

class ElementEntry;
class ElementListDef;
class ElementListReadIterator;

class ElementList : public common::Data {
 public:
  // getContentMask bits.
  enum ContentMaskFlag { DataDefAvailableFlag = 0x01, SetDefinedDataFlag = 0x02 };
  // getHintMask bits.
  enum HintMaskFlag { InfoFlag = 0x01 };

  explicit ElementList(bool managed);
  ~ElementList() override;

  // Marks the list as carrying information.
  void setElementListNum(short elementListNum);
  // A non-zero id is also flagged on the wire.
  void setDataDefID(common::UInt16 id);

  short getElementListNum() const;
  common::UInt16 getDataDefID() const;
  common::UInt32 getStandardDataCount() const;
  common::UInt8 getContentMask() const;
  common::UInt8 getHintMask() const;

  // Fills `entry` with the first element named exactly `name` (case
  // included); clears `entry` and answers false when there is none.
  bool find(const common::ORVO_String& name, ElementEntry& entry) const;

  // Back to an empty list ready to be written, keeping the buffer.
  void clear() override;

 private:
  friend class orvo::internal::ElementListInt;

  void startDecode(OwfLocalElementSetDefDb* defDb, const ElementListDef* def) const;
  void startDecodeSRI(OwfDecodeIterator* iter, OwfLocalElementSetDefDb* defDb,
                      const void* unused) const;
  void countStandardEntries(int ret, const OwfDecodeIterator& iter) const;

  OwfLocalElementSetDefDb* _defDbInUse;
  mutable OwfElementList _elementList;
  OwfLocalElementSetDefDb _defDb;
  mutable ElementListReadIterator* _findIter;
  mutable common::UInt32 _standardCount;

  static const common::ORVO_String _className;
};

}  // namespace data
}  // namespace orvo

#endif  // ORVO_DATA_ELEMENT_LIST_H_
