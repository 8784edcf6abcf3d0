// The concrete field dictionary behind ODMFieldDictionary. Applications reach
// it only for the operations that are not on the abstract face (printing a
// dictionary back to text); everything else goes through ODMFieldDictionary.
//
// Storage: definitions are indexed by id in two arrays inside the object
// (ids 0..32767 and -1..-32768), so that a lookup by id is one indexed load,
// and by acronym in a chained hash table of 65537 buckets whose keys are the
// definitions' own name strings. The dictionary owns its definitions and its
// enumeration tables; a table shared by several fields is owned once.
// Definitions read from files are made in blocks that later reads reuse.
#ifndef ORVO_ODM_ODM_FIELD_DICTIONARY_INT_H_
#define ORVO_ODM_ODM_FIELD_DICTIONARY_INT_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/ORVO_Vector.h"
#include "orvo/common/Types.h"
#include "orvo/odm/ODMFieldDictionary.h"

namespace orvo {
namespace odm {

class ODMFidDefInt;
class ODMFidDefPool;
class ODMEnumTableInt;
class ODMFieldDictionaryReader;
template <class Key, class Value>
class ORTGenHash;

class ODMFieldDictionaryInt : public ODMFieldDictionary {
 public:
  static constexpr common::Int32 kMaxFieldId = 32767;
  static constexpr common::Int32 kMinFieldId = -32768;
  static constexpr common::Int64 kMaxDictId = 16383;
  static constexpr common::Int64 kMinDictId = -16383;

  ODMFieldDictionaryInt();

  const ODMFidDef& getFidDef(common::Int32 fieldId) const override;
  const ODMFidDef& getFidDef(const char* fieldName) const override;
  const common::ORVO_String& displayValueFor(common::Int64 fieldId,
                                             common::Int64 enumValue) const override;
  void setDictId(common::Int64 dictId) override;
  void readODMEnumTypeDef(const common::ORVO_String& path) override;
  void readODMFieldDictionary(const common::ORVO_String& path) override;
  void destroy() override;

  // Enters a definition in both indexes and takes it over. Answers false,
  // changing nothing, when its id is taken (the first definition of an id
  // wins) or lies outside -32768..32767; the caller then still owns it.
  bool addFidDef(ODMFidDefInt* def);
  // Deletes every definition. The id and length maxima keep their values.
  void clearFidDefs();
  // Deletes every enumeration table and unlinks the definitions from them.
  void clearEnumTables();
  // Points each definition at the last table that lists its id. False when
  // there are no tables or no definitions.
  bool linkEnumTables();

  // The definition of an id, or null when the id is out of range or free.
  ODMFidDefInt* findFidDef(common::Int64 fieldId) const;
  const common::ORVO_Vector<ODMEnumTableInt*>& enumTables() const { return _enumTables; }
  common::UInt64 getMaxLength() const { return _maxLength; }
  common::UInt64 getMaxEnumLength() const { return _maxEnumLength; }
  common::UInt64 getMaxOwfLength() const { return _maxOwfLength; }
  bool isDictIdSet() const { return _dictIdSet; }
  bool hasNoEnumInfo() const { return _noEnumInfo; }

 protected:
  ~ODMFieldDictionaryInt() override;

 private:
  friend class ODMFieldDictionaryReader;

  // The hash of an acronym in the name index.
  static common::UInt32 hashName(const char* name, common::UInt32 length);
  // addFidDef with the hash of the definition's name at hand.
  bool addFidDef(ODMFidDefInt* def, common::UInt32 nameHash);
  ODMFidDefInt*& slotOf(common::Int64 fieldId);
  void deleteAllFidDefs();
  // `unlink`: take the definition out of the name index first.
  void deleteFidDef(ODMFidDefInt*& slot, bool unlink);
  void deleteAllEnumTables();
  void unlinkEnumTables();

  ORTGenHash<const common::ORVO_String, ODMFidDefInt>* _nameTable;
  // Where file reads make their definitions.
  ODMFidDefPool* _fidDefPool;
  ODMFidDefInt* _fidDefs[kMaxFieldId + 1];
  ODMFidDefInt* _negFidDefs[-kMinFieldId + 1];  // slot = -id; slot 0 unused
  common::ORVO_Vector<ODMEnumTableInt*> _enumTables;
  bool _noEnumInfo;
  common::UInt64 _maxOwfLength;
  common::UInt64 _maxLength;
  common::UInt64 _maxEnumLength;
  bool _dictIdSet;
  common::Int64 _nextFid;
  common::UInt32 _nextEnumTable;
  // A table an enum file read was filling when it failed: not listed, but
  // kept alive because definitions may already point at it.
  ODMEnumTableInt* _unlistedEnumTable;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_ODM_ODM_FIELD_DICTIONARY_INT_H_
