// Reads the two text files of a field dictionary: the field dictionary file
// (one field definition per line) and the enum type file (enumeration tables,
// each headed by the acronyms and ids of the fields that share it).
//
// Both readers are total: any bytes give either a loaded dictionary or one of
// the readers' failures, raised as InvalidUsageException. They run on the
// lines of ODMDictionaryLineReader, from a file or from memory.
#ifndef ORVO_DATA_IMPL_ODM_FIELD_DICTIONARY_READER_H_
#define ORVO_DATA_IMPL_ODM_FIELD_DICTIONARY_READER_H_

#include <cstddef>

#include "Data/Impl/ODMDictionaryLineReader.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"

namespace orvo {
namespace odm {

class ODMFieldDictionaryInt;
class ODMFidDefInt;
class ODMEnumTableInt;

class ODMFieldDictionaryReader {
 public:
  // Replace the field definitions, or the enumeration tables, of `dictionary`
  // with those of the file at `path` (UTF-8; a path that is not valid UTF-8
  // is used as bytes).
  static void readFieldDictionary(ODMFieldDictionaryInt& dictionary,
                                  const common::ORVO_String& path);
  static void readEnumTypeDef(ODMFieldDictionaryInt& dictionary, const common::ORVO_String& path);

  // The same with `size` bytes in memory standing for the file's contents.
  static void readFieldDictionaryBytes(ODMFieldDictionaryInt& dictionary, const char* bytes,
                                       std::size_t size);
  static void readEnumTypeDefBytes(ODMFieldDictionaryInt& dictionary, const char* bytes,
                                   std::size_t size);

  // Zero bytes kept behind the line buffer: the scanners read eight bytes
  // at a time and may pass the terminator by up to seven.
  static constexpr common::UInt32 kScanSlack = 8;

  // A run of bytes of the line buffer.
  struct Token {
    const char* text;
    common::UInt32 length;
    bool is(const char* literal) const;
  };

 private:
  // Type words seen before and their numbers, in slots picked by length and
  // end bytes: a file uses a few dozen type words over and over, and a
  // compare is cheaper than the type table's hash. Words are compared in
  // blocks of eight bytes, against words that lie in the line buffer.
  struct TypeWordMemo {
    static constexpr common::UInt32 kSlots = 64;
    static constexpr common::UInt32 kLongestWord = 23;
    struct Slot {
      char text[kLongestWord + 1];  // whole blocks of eight
      common::UInt8 length = 0xFF;
      int type = 0;
    };
    Slot slots[kSlots];
  };

  explicit ODMFieldDictionaryReader(ODMFieldDictionaryInt& dictionary);

  static int lookUpType(TypeWordMemo& memo, const Token& word,
                        int (*lookUp)(const char*, common::UInt32));

  void readFields(ODMDictionaryLineReader& lines);
  void readEnums(ODMDictionaryLineReader& lines);

  // Field dictionary file.
  bool applyFieldTag(common::ORVO_String* failure);
  // Also answers the hash of the definition's name in the name index.
  bool parseFieldLine(ODMFidDefInt& def, common::UInt32* nameHash, common::ORVO_String* failure);
  bool fieldLineFailure(const char* reason, common::ORVO_String* failure) const;
  bool fieldTagFailure(const common::ORVO_String& reason, common::ORVO_String* failure) const;
  [[noreturn]] void failFieldRead(const common::ORVO_String& failure);

  // Enum type file.
  bool applyEnumTag(common::ORVO_String* failure);
  bool readValueLine(ODMEnumTableInt* table, common::ORVO_String* failure);
  bool readAcronymLine(ODMEnumTableInt* table, common::ORVO_String* failure);
  [[noreturn]] void failEnumRead(ODMEnumTableInt* tableInProgress,
                                 const common::ORVO_String& failure);

  // "!tag <key> <value>": false for any other line, and for no key.
  bool splitTagLine(Token* key, Token* value) const;
  bool moveTrimmedFieldLine();

  ODMFieldDictionaryInt& _dictionary;
  common::UInt32 _lineNumber;
  // The field definition the last acronym line with an id in range found.
  ODMFidDefInt* _foundDef;
  TypeWordMemo _fieldTypeMemo;
  TypeWordMemo _ommTypeMemo;
  char _line[ODMDictionaryLineReader::kLineBufferSize + kScanSlack];
};

}  // namespace odm
}  // namespace orvo

#endif  // ORVO_DATA_IMPL_ODM_FIELD_DICTIONARY_READER_H_
