// A field dictionary: the definitions of the field ids of field lists, looked
// up by id or by acronym, and the enumeration tables that turn the values of
// enumerated fields into display texts.
//
// A dictionary is made only by create() and ended only by destroy(); the
// process keeps a list of live dictionaries and destroys those left at
// unload. Each dictionary is independent: nothing is shared by path. The
// field definitions and the enumeration tables are loaded separately, from
// two text files, in either order; loading one half replaces that half and
// keeps the other.
//
// Thread safety: a dictionary is filled by one thread and only then read.
// Lookups may run in parallel with each other, never with a load.
#ifndef ORVO_ODM_ODM_FIELD_DICTIONARY_H_
#define ORVO_ODM_ODM_FIELD_DICTIONARY_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/odm/ODMFidDef.h"

namespace orvo {
namespace odm {

class ODMFieldDictionary {
 public:
  // A new empty dictionary, registered in the process-wide list.
  static ODMFieldDictionary& create();

  ODMFieldDictionary(const ODMFieldDictionary&) = delete;
  ODMFieldDictionary& operator=(const ODMFieldDictionary&) = delete;

  // Number of field definitions.
  common::UInt64 size() const { return _size; }
  // Highest and lowest negative field id ever loaded; a reload or a failed
  // load does not lower them.
  common::Int64 getMaxFieldId() const { return _maxFieldId; }
  common::Int64 getMinNegFieldId() const { return _minNegFieldId; }
  common::Int64 getDictId() const { return _dictId; }
  const common::ORVO_String& getVersion() const { return _version; }
  // Raises InvalidUsageException for an empty text.
  void setVersion(const common::ORVO_String& version);

  // Tags of the field dictionary file.
  const common::ORVO_String& getODMFldFileName() const { return _fldFileName; }
  const common::ORVO_String& getODMFldDesc() const { return _fldDesc; }
  const common::ORVO_String& getODMFldBuild() const { return _fldBuild; }
  const common::ORVO_String& getODMFldDate() const { return _fldDate; }
  // Tags of the enum type file.
  const common::ORVO_String& getEnumRTversion() const { return _enumRTversion; }
  const common::ORVO_String& getEnumDTversion() const { return _enumDTversion; }
  const common::ORVO_String& getEnumFileName() const { return _enumFileName; }
  const common::ORVO_String& getEnumDesc() const { return _enumDesc; }
  const common::ORVO_String& getEnumDate() const { return _enumDate; }

  // The definition of a field id; raises InvalidUsageException when the id
  // lies outside -32768..32767 or has no definition.
  virtual const ODMFidDef& getFidDef(common::Int32 fieldId) const = 0;
  // The definition of an acronym; of two definitions with one acronym, the
  // one loaded last. Raises InvalidUsageException when there is none.
  virtual const ODMFidDef& getFidDef(const char* fieldName) const = 0;
  // The display text of a value of an enumerated field. Raises
  // InvalidUsageException when the id is out of range, has no definition or
  // no table, or the table has no display for the value.
  virtual const common::ORVO_String& displayValueFor(common::Int64 fieldId,
                                                     common::Int64 enumValue) const = 0;
  // Raises InvalidUsageException outside -16383..16383.
  virtual void setDictId(common::Int64 dictId) = 0;
  // Loads the enumeration tables from an enum type file, replacing the
  // tables loaded before. Raises InvalidUsageException on a bad path, a file
  // that cannot be opened or a bad line.
  virtual void readODMEnumTypeDef(const common::ORVO_String& path) = 0;
  // Loads the field definitions from a field dictionary file, replacing the
  // definitions loaded before. A failed load leaves no definitions. Raises
  // InvalidUsageException on a bad path, a file that cannot be opened or a
  // bad line.
  virtual void readODMFieldDictionary(const common::ORVO_String& path) = 0;
  // Frees everything and deletes the dictionary.
  virtual void destroy() = 0;

 protected:
  ODMFieldDictionary();
  virtual ~ODMFieldDictionary();

  common::UInt64 _size;
  common::Int64 _maxFieldId;
  common::Int64 _minNegFieldId;
  common::Int64 _dictId;
  common::ORVO_String _version;
  common::ORVO_String _fldFileName;
  common::ORVO_String _fldDesc;
  common::ORVO_String _fldBuild;
  common::ORVO_String _fldDate;
  common::ORVO_String _enumRTversion;
  common::ORVO_String _enumDTversion;
  common::ORVO_String _enumFileName;
  common::ORVO_String _enumDesc;
  common::ORVO_String _enumDate;
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_ODM_ODM_FIELD_DICTIONARY_H_
