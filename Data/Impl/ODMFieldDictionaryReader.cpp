#include "Data/Impl/ODMFieldDictionaryReader.h"

#include <sys/stat.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "Data/Impl/FailureFrame.h"
#include "Data/Impl/ODMEnumTableInt.h"
#include "Data/Impl/ODMFidDefInt.h"
#include "Data/Impl/ODMFidDefPool.h"
#include "Data/Impl/ORTGenHash.h"
#include "Data/Impl/StringToType.h"
#include "orvo/common/ORVO_WString.h"
#include "orvo/common/UnicodeUtil.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"

namespace orvo {
namespace odm {
namespace {

using common::Int64;
using common::ORVO_String;
using common::UInt32;
using common::UInt64;
using Token = ODMFieldDictionaryReader::Token;

constexpr Int64 kMaxColumnLength = 65535;

// isspace of the C locale.
inline bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The bytes ORVO_String::trimWhitespace removes.
inline bool isTrimmed(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// The scanners look at eight bytes of a line at a time: field lines are
// mostly columns padded with runs of blanks. They read a block only while
// the terminator lies behind what they have passed, so the reads stay within
// the terminator plus ODMFieldDictionaryReader::kScanSlack bytes.
constexpr UInt64 kEachByte = 0x0101010101010101ull;
constexpr UInt64 kHighBits = 0x8080808080808080ull;

// Eight bytes with the first of them in the low byte.
inline UInt64 loadBlock(const char* at) {
  UInt64 block;
  std::memcpy(&block, at, sizeof(block));
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  block = __builtin_bswap64(block);
#endif
  return block;
}

// Index of the first byte of a block that is not zero; `block` is not 0.
inline int firstNonZeroByte(UInt64 block) { return __builtin_ctzll(block) >> 3; }

// The first byte from `at` that is not a blank.
inline int skipBlanks(const char* line, int at) {
  for (;;) {
    const UInt64 others = loadBlock(line + at) ^ (kEachByte * ' ');
    if (others != 0) return at + firstNonZeroByte(others);
    at += 8;
  }
}

int skipSpaces(const char* line, int at) {
  for (;;) {
    at = skipBlanks(line, at);
    if (!isSpace(line[at])) return at;
    ++at;
  }
}

// The first white space byte or terminator from `at`. Bytes below 0x21 are
// marked exactly up to the first of them (the marks above it may be false),
// and among them only white space and the terminator end a word.
inline int skipWordBytes(const char* line, int at) {
  for (;;) {
    const UInt64 block = loadBlock(line + at);
    const UInt64 low = (block - kEachByte * 0x21) & ~block & kHighBits;
    if (low == 0) {
      at += 8;
      continue;
    }
    at += firstNonZeroByte(low);
    if (line[at] == '\0' || isSpace(line[at])) return at;
    ++at;
  }
}

// Whether the `length` bytes at `a` and at `b` are equal, compared in blocks
// of eight; both may be read up to seven bytes beyond `length`.
inline bool sameBlocks(const char* a, const char* b, UInt32 length) {
  for (UInt32 i = 0; i < length; i += 8) {
    UInt64 differences = loadBlock(a + i) ^ loadBlock(b + i);
    if (length - i < 8) differences &= (UInt64(1) << (8 * (length - i))) - 1;
    if (differences != 0) return false;
  }
  return true;
}

// The scanners work on a zero-terminated line from offset `from` and answer
// the offset behind what they took, or -1.

// A word: up to the next white space or the end of the line.
inline int scanWord(const char* line, int from, Token* token) {
  const int start = skipSpaces(line, from);
  const int at = skipWordBytes(line, start);
  if (at == start) return -1;
  *token = Token{line + start, UInt32(at - start)};
  return at;
}

// Text between `open` and the next `close`, neither part of the text. The
// first byte after white space must be `open`.
int scanDelimited(const char* line, int from, char open, char close, Token* token) {
  const int start = skipSpaces(line, from);
  if (line[start] != open) return -1;
  const char* end = std::strchr(line + start + 1, close);
  if (end == nullptr) return -1;
  *token = Token{line + start + 1, UInt32(end - (line + start + 1))};
  return int(end - line) + 1;
}

int scanQuoted(const char* line, int from, Token* token) {
  return scanDelimited(line, from, '"', '"', token);
}

// A display of the enum type file: "text" as it stands, or #hex#.
int scanDisplay(const char* line, int from, Token* token, char* opener) {
  const int start = skipSpaces(line, from);
  *opener = line[start];
  if (*opener != '"' && *opener != '#') return -1;
  return scanDelimited(line, start, *opener, *opener, token);
}

// The rest of the line up to its line feed. Answers the offset of the line
// end.
int scanRestOfLine(const char* line, int from, Token* token) {
  const int start = skipSpaces(line, from);
  int at = start;
  while (line[at] != '\0' && line[at] != '\n') ++at;
  if (at == start) return -1;
  *token = Token{line + start, UInt32(at - start)};
  return at;
}

// The failure reasons of one length column.
struct LengthColumn {
  const char* missing;
  const char* belowZero;
  const char* aboveMaximum;
};
constexpr LengthColumn kLength = {"Cannot find LENGTH", "LENGTH less than 0",
                                  "LENGTH exceeds allowed maximum of 65535"};
constexpr LengthColumn kEnumLength = {"Cannot find EnumLen", "EnumLen less than 0",
                                      "EnumLen exceeds allowed maximum of 65535"};
constexpr LengthColumn kOwfLength = {"Cannot find Owf Length", "Owf Length less than 0",
                                     "Owf Length exceeds allowed maximum of 65535"};

// Decimal digits from `at` up to the first other byte or `end`, advancing
// `at`; saturates just past the int range, where atoi would overflow.
inline Int64 readDigits(const char*& at, const char* end) {
  Int64 magnitude = 0;
  for (; at < end && *at >= '0' && *at <= '9'; ++at) {
    magnitude = magnitude * 10 + (*at - '0');
    if (magnitude > Int64(INT_MAX) + 1) magnitude = Int64(INT_MAX) + 1;
  }
  return magnitude;
}

inline int signedNumber(bool negative, Int64 magnitude) {
  const Int64 value = negative ? -magnitude : magnitude;
  return value > INT_MAX ? INT_MAX : int(value);
}

// Reads a number as atoi does: white space, one sign, digits up to the first
// other byte; 0 when there are no digits.
int toNumber(const Token& token) {
  const char* at = token.text;
  const char* const end = token.text + token.length;
  while (at < end && isSpace(*at)) ++at;
  bool negative = false;
  if (at < end && (*at == '+' || *at == '-')) negative = *at++ == '-';
  return signedNumber(negative, readDigits(at, end));
}

// A word read as toNumber reads it, in one pass: the number stops at the
// first byte that is not a digit (a word end included), and the rest of the
// word is passed over.
inline int scanNumber(const char* line, int from, int* number) {
  const int start = skipSpaces(line, from);
  const char* at = line + start;
  bool negative = false;
  if (*at == '+' || *at == '-') negative = *at++ == '-';
  const Int64 magnitude = readDigits(at, line + ODMDictionaryLineReader::kLineBufferSize);
  const int end = skipWordBytes(line, int(at - line));
  if (end == start) return -1;
  *number = signedNumber(negative, magnitude);
  return end;
}

bool sameText(const ORVO_String& text, const Token& token) {
  return text.length() == token.length && std::memcmp(text.data(), token.text, token.length) == 0;
}

ORVO_String toString(const Token& token) {
  ORVO_String text;
  text.set(token.text, token.length);
  return text;
}

ORVO_String trimmed(const Token& token) {
  ORVO_String text = toString(token);
  text.trimWhitespace();
  return text;
}

inline int hexDigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// strtol in base 16 of a pair of characters. Two hex digits, the pairs of
// any real display, are read here; strtol takes the rest (signs, white
// space, a "0x" prefix, odd last characters).
long hexPairValue(const char* pair) {
  const int high = hexDigitValue(pair[0]);
  const int low = hexDigitValue(pair[1]);
  if (high >= 0 && low >= 0) return high * 16 + low;
  return std::strtol(pair, nullptr, 16);
}

// Each pair of characters from the left is one byte as strtol reads it in
// base 16 (an odd last character stands alone); the display ends at the
// first byte of value 0. Writes at most (length + 1) / 2 bytes.
UInt32 hexToBytes(const Token& hex, char* out) {
  UInt32 n = 0;
  for (UInt32 i = 0; i < hex.length; i += 2) {
    const char pair[3] = {hex.text[i], i + 1 < hex.length ? hex.text[i + 1] : '\0', '\0'};
    const char byte = char(hexPairValue(pair) & 0xFF);
    if (byte == '\0') break;
    out[n++] = byte;
  }
  return n;
}

// The definition of the line being read, made in the dictionary's pool and
// given back to it unless the dictionary took it.
class DefInProgress {
 public:
  explicit DefInProgress(ODMFidDefPool& pool) : _pool(pool), _def(pool.make()) {}
  DefInProgress(const DefInProgress&) = delete;
  DefInProgress& operator=(const DefInProgress&) = delete;
  ~DefInProgress() { discard(); }

  ODMFidDefInt& get() { return *_def; }
  ODMFidDefInt* release() {
    ODMFidDefInt* def = _def;
    _def = nullptr;
    return def;
  }
  void discard() {
    if (_def != nullptr) _pool.unmakeLast(release());
  }

 private:
  ODMFidDefPool& _pool;
  ODMFidDefInt* _def;
};

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// The path must convert to wide text, from UTF-8 when it is valid UTF-8 and
// from the local code page otherwise. The file is opened by the path's own
// bytes.
void checkPathConverts(const ORVO_String& path) {
  common::ORVO_WString wide;
  ORVO_String error;
  const bool converted =
      common::UnicodeUtil::verifyUTF8String(path.c_str()) == common::UTF8ConversionOK
          ? common::UnicodeUtil::convertUTF8ToWideString(path, wide, error)
          : common::UnicodeUtil::convertToWideStringWithCP(path, wide, error, 0);
  if (converted) return;
  char text[257];
  std::snprintf(text, sizeof(text), "Dictionary path [%s] failure: [%s]", path.c_str(),
                error.c_str());
  internal::raiseBadValue(ORVO_String(text, 256, false));
}

bool isDirectory(std::FILE* file) {
  struct stat status;
  return fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode);
}

FilePtr openDictionaryFile(const ORVO_String& path, const char* failureHead,
                           const char* failureTail) {
  checkPathConverts(path);
  std::FILE* file = std::fopen(path.c_str(), "r");
  // A directory opens for reading here but is no file to read.
  if (file != nullptr && isDirectory(file)) {
    std::fclose(file);
    file = nullptr;
  }
  if (file == nullptr) {
    ORVO_String text(failureHead);
    text.append(path.c_str()).append(failureTail);
    internal::raiseIllegalCall(text);
  }
  return FilePtr(file);
}

}  // namespace

bool ODMFieldDictionaryReader::Token::is(const char* literal) const {
  return std::strlen(literal) == length && std::memcmp(text, literal, length) == 0;
}

ODMFieldDictionaryReader::ODMFieldDictionaryReader(ODMFieldDictionaryInt& dictionary)
    : _dictionary(dictionary), _lineNumber(0), _foundDef(nullptr) {
  std::memset(_line, 0, sizeof(_line));
}

void ODMFieldDictionaryReader::readFieldDictionary(ODMFieldDictionaryInt& dictionary,
                                                   const ORVO_String& path) {
  FilePtr file = openDictionaryFile(
      path, "ODMFieldDictionary::readODMFieldDictionary -Error opening file: \"", "\"");
  ODMDictionaryLineReader lines(file.get());
  ODMFieldDictionaryReader(dictionary).readFields(lines);
}

void ODMFieldDictionaryReader::readEnumTypeDef(ODMFieldDictionaryInt& dictionary,
                                               const ORVO_String& path) {
  FilePtr file =
      openDictionaryFile(path, "ODMFieldDictionary::readODMEnumTypeDef -Error opening File: ", "");
  ODMDictionaryLineReader lines(file.get());
  ODMFieldDictionaryReader(dictionary).readEnums(lines);
}

void ODMFieldDictionaryReader::readFieldDictionaryBytes(ODMFieldDictionaryInt& dictionary,
                                                        const char* bytes, std::size_t size) {
  ODMDictionaryLineReader lines(bytes, size);
  ODMFieldDictionaryReader(dictionary).readFields(lines);
}

void ODMFieldDictionaryReader::readEnumTypeDefBytes(ODMFieldDictionaryInt& dictionary,
                                                    const char* bytes, std::size_t size) {
  ODMDictionaryLineReader lines(bytes, size);
  ODMFieldDictionaryReader(dictionary).readEnums(lines);
}

bool ODMFieldDictionaryReader::splitTagLine(Token* key, Token* value) const {
  // Most lines that start with '!' are comments: settled by their first bytes.
  if (_line[0] == '!' && std::strncmp(_line, "!tag", 4) != 0) return false;
  Token word;
  const int afterTag = scanWord(_line, 0, &word);
  if (afterTag < 0 || !word.is("!tag")) return false;
  const int afterKey = scanWord(_line, afterTag, key);
  if (afterKey < 0) return false;
  if (scanRestOfLine(_line, afterKey, value) < 0) *value = Token{_line + afterKey, 0};
  return true;
}

// ---------------------------------------------------------------------------
// Field dictionary file

void ODMFieldDictionaryReader::readFields(ODMDictionaryLineReader& lines) {
  ODMFieldDictionaryInt& d = _dictionary;
  d.clearFidDefs();
  // With enum tables loaded, their id stands and the file's tag must match it.
  if (d._enumTables.size() == 0) {
    d._dictIdSet = false;
    d._dictId = 1;
  }
  ODMFidDefInt* previous = nullptr;
  common::ORVO_Vector<ODMFidDefInt*> pendingRipples;
  ORVO_String failure;
  UInt32 length;
  while (lines.readLine(_line, &length)) {
    ++_lineNumber;
    if (_line[0] == '!') {
      if (!applyFieldTag(&failure)) failFieldRead(failure);
      continue;
    }
    if (_line[0] == '\0' || _line[0] == '\n') continue;
    if (!moveTrimmedFieldLine()) continue;
    DefInProgress def(*d._fidDefPool);
    UInt32 nameHash;
    if (!parseFieldLine(def.get(), &nameHash, &failure)) {
      def.discard();  // before the clear, which frees every place of the pool
      failFieldRead(failure);
    }
    // The first definition of an id wins; a later one is dropped silently
    // and does not count as the previous line for ripples.
    if (!d.addFidDef(&def.get(), nameHash)) continue;
    ODMFidDefInt* added = def.release();
    // Chains usually ripple to the line just before: resolved without a lookup.
    if (previous != nullptr && previous->getName() == added->getRippleToName()) {
      added->setRippleToFieldId(previous->getFieldId());
    } else {
      pendingRipples.push_back(added);
    }
    previous = added;
  }
  // The others may point forward, so they are looked up once all lines are
  // in. A name no definition has (or "NULL") leaves the ripple at 0. "NULL"
  // stands on most lines and is looked up once.
  const ORVO_String kNull("NULL");
  const ODMFidDefInt* nullTarget = d._nameTable->find(kNull);
  for (ODMFidDefInt* def : pendingRipples) {
    const ORVO_String& name = def->getRippleToName();
    const ODMFidDefInt* target = name == kNull ? nullTarget : d._nameTable->find(name);
    if (target != nullptr) def->setRippleToFieldId(target->getFieldId());
  }
  d.linkEnumTables();
}

void ODMFieldDictionaryReader::failFieldRead(const ORVO_String& failure) {
  _dictionary.clearFidDefs();
  internal::raiseIllegalCall(failure);
}

// Field lines are parsed from their trimmed text copied over the start of the
// line buffer with no terminator behind it. With leading white space the last
// word therefore runs on into the old end of the line: two leading blanks
// before a line ending in "12" read it as "1212". Files with indented field
// lines get these numbers, so the copy is kept as it is.
bool ODMFieldDictionaryReader::moveTrimmedFieldLine() {
  if (!isTrimmed(_line[0])) return true;  // the usual line: nothing moves
  const std::size_t textLength = std::strlen(_line);
  std::size_t begin = 0;
  while (begin < textLength && isTrimmed(_line[begin])) ++begin;
  if (begin == textLength) return false;
  if (begin == 0) return true;
  std::size_t end = textLength;
  while (isTrimmed(_line[end - 1])) --end;
  std::memmove(_line, _line + begin, end - begin);
  return true;
}

int ODMFieldDictionaryReader::lookUpType(TypeWordMemo& memo, const Token& word,
                                         int (*lookUp)(const char*, UInt32)) {
  if (word.length > TypeWordMemo::kLongestWord) return lookUp(word.text, word.length);
  const UInt32 pick = word.length * 7u + static_cast<unsigned char>(word.text[0]) +
                      static_cast<unsigned char>(word.text[word.length - 1]) * 3u;
  TypeWordMemo::Slot& slot = memo.slots[pick % TypeWordMemo::kSlots];
  if (slot.length == word.length && sameBlocks(slot.text, word.text, word.length)) {
    return slot.type;
  }
  slot.type = lookUp(word.text, word.length);
  std::memcpy(slot.text, word.text, word.length);
  slot.length = static_cast<common::UInt8>(word.length);
  return slot.type;
}

bool ODMFieldDictionaryReader::fieldLineFailure(const char* reason, ORVO_String* failure) const {
  *failure = "ODMFieldDictionaryInt::readODMFieldDictionary -";
  failure->append(reason).append(" Line= ").append(_lineNumber).append("\n");
  return false;
}

// Reads a length column at `*at` and moves `*at` behind it; answers the
// failure reason of `column`, or null for a good length.
inline const char* readLengthColumn(const char* line, const LengthColumn& column, int* at,
                                    Int64* value) {
  int number;
  *at = scanNumber(line, *at, &number);
  if (*at < 0) return column.missing;
  if (number < 0) return column.belowZero;
  if (number > kMaxColumnLength) return column.aboveMaximum;
  *value = number;
  return nullptr;
}

bool ODMFieldDictionaryReader::parseFieldLine(ODMFidDefInt& def, UInt32* nameHash,
                                              ORVO_String* failure) {
  ODMFieldDictionaryInt& d = _dictionary;
  Token word;
  int at = scanWord(_line, 0, &word);
  if (at < 0) return fieldLineFailure("Cannot find ACRONYM", failure);
  def.setName(word.text, word.length);
  // The bucket the definition goes to loads while the rest of the line is read.
  *nameHash = ODMFieldDictionaryInt::hashName(word.text, word.length);
  d._nameTable->prefetchBucket(*nameHash);

  at = scanQuoted(_line, at, &word);
  if (at < 0) return fieldLineFailure("Cannot find DDE ACRONYM", failure);
  def.setLongName(word.text, word.length);

  int fieldId;
  at = scanNumber(_line, at, &fieldId);
  if (at < 0) return fieldLineFailure("Cannot find FID", failure);
  if (fieldId < ODMFieldDictionaryInt::kMinFieldId ||
      fieldId > ODMFieldDictionaryInt::kMaxFieldId) {
    *failure = "ODMFieldDictionaryInt::readODMFieldDictionary - Illegal FID = ";
    failure->append(fieldId).append(" Line = ").append(_lineNumber).append("\n");
    return false;
  }
  def.setFieldId(fieldId);

  at = scanWord(_line, at, &word);
  if (at < 0) return fieldLineFailure("Cannot find RIPPLES TO", failure);
  def.setRippleToName(word.text, word.length);

  at = scanWord(_line, at, &word);
  if (at < 0) return fieldLineFailure("Cannot find FIELD TYPE", failure);
  def.setFieldType(lookUpType(_fieldTypeMemo, word, &StringToType::toFieldType));

  Int64 length;
  const char* reason = readLengthColumn(_line, kLength, &at, &length);
  if (reason != nullptr) return fieldLineFailure(reason, failure);
  def.setLength(length);
  if (UInt64(length) > d._maxLength) d._maxLength = UInt64(length);

  at = scanWord(_line, at, &word);
  if (at < 0) return fieldLineFailure("Cannot find OWF TYPE", failure);
  // The enum length stands in brackets apart from the number: "( 4 )".
  if (word.text[0] == '(') {
    Int64 enumLength;
    reason = readLengthColumn(_line, kEnumLength, &at, &enumLength);
    if (reason != nullptr) return fieldLineFailure(reason, failure);
    def.setEnumLength(enumLength);
    if (UInt64(enumLength) > d._maxEnumLength) d._maxEnumLength = UInt64(enumLength);
    at = scanWord(_line, at, &word);
    if (at < 0) return fieldLineFailure("Cannot find  end ')' in EnumLen", failure);
    if (word.text[0] != ')')
      return fieldLineFailure("No ')' at end of EnumLen definition", failure);
    at = scanWord(_line, at, &word);
    if (at < 0) return fieldLineFailure("Cannot find OWF TYPE", failure);
  }
  def.setOMMType(lookUpType(_ommTypeMemo, word, &StringToType::toOMMType));

  Int64 ommLength;
  reason = readLengthColumn(_line, kOwfLength, &at, &ommLength);
  if (reason != nullptr) return fieldLineFailure(reason, failure);
  def.setOMMLength(ommLength);
  if (UInt64(ommLength) > d._maxOwfLength) d._maxOwfLength = UInt64(ommLength);
  return true;
}

bool ODMFieldDictionaryReader::fieldTagFailure(const ORVO_String& reason,
                                               ORVO_String* failure) const {
  *failure = "ODMFieldDictionaryInt::readODMFieldDictionary -!Tag ";
  failure->append(reason).append(" Line Number: \"").append(_lineNumber).append("\"");
  return false;
}

bool ODMFieldDictionaryReader::applyFieldTag(ORVO_String* failure) {
  Token key;
  Token value;
  if (!splitTagLine(&key, &value)) return true;  // a comment
  ODMFieldDictionaryInt& d = _dictionary;
  if (key.is("Type")) {
    if (toNumber(value) != 1) {
      ORVO_String reason("Type ");
      reason.append(value.text, value.length)
          .append(" indicates this is not a field definitions dictionary.");
      return fieldTagFailure(reason, failure);
    }
  } else if (key.is("Version")) {
    d._version = trimmed(value);
  } else if (key.is("DictionaryId")) {
    const int dictId = toNumber(value);
    if (dictId < ODMFieldDictionaryInt::kMinDictId || dictId > ODMFieldDictionaryInt::kMaxDictId) {
      return fieldTagFailure(
          ORVO_String("-dictionaryId is out of range. It should be in the range of -16383 to "
                      "16383\n"),
          failure);
    }
    if (d._dictIdSet && dictId != d._dictId) {
      ORVO_String reason("field definitions DictionaryId->");
      reason.append(value.text, value.length)
          .append(" does not match the current/existing DictionaryId-> ")
          .append(d._dictId)
          .append(" that was set earlier\n");
      return fieldTagFailure(reason, failure);
    }
    d._dictId = dictId;
    d._dictIdSet = true;
  } else if (key.is("Filename")) {
    d._fldFileName = toString(value);
  } else if (key.is("Desc")) {
    d._fldDesc = toString(value);
  } else if (key.is("Build")) {
    d._fldBuild = toString(value);
  } else if (key.is("Date")) {
    d._fldDate = toString(value);
  }
  return true;
}

// ---------------------------------------------------------------------------
// Enum type file

void ODMFieldDictionaryReader::readEnums(ODMDictionaryLineReader& lines) {
  ODMFieldDictionaryInt& d = _dictionary;
  d.clearEnumTables();
  // With field definitions loaded, their id stands and the file's tag must
  // match it.
  if (d._size == 0) {
    d._dictIdSet = false;
    d._dictId = 1;
  }
  // A value line closes the table: the next acronym line opens a new one,
  // and consecutive acronym lines share one.
  bool newTableWanted = true;
  std::unique_ptr<ODMEnumTableInt> current;
  _foundDef = nullptr;
  ORVO_String failure;
  UInt32 length;
  while (lines.readLine(_line, &length)) {
    ++_lineNumber;
    const char first = _line[0];
    if (first == '!') {
      if (!applyEnumTag(&failure)) failEnumRead(current.release(), failure);
      continue;
    }
    if (first == '\0') continue;
    if (first == ' ') {
      newTableWanted = true;
      if (!readValueLine(current.get(), &failure)) failEnumRead(current.release(), failure);
      continue;
    }
    if (newTableWanted) {
      if (current != nullptr) d._enumTables.push_back(current.release());
      current.reset(new ODMEnumTableInt);
      newTableWanted = false;
    }
    if (!readAcronymLine(current.get(), &failure)) failEnumRead(current.release(), failure);
  }
  if (current != nullptr) d._enumTables.push_back(current.release());
}

// The tables listed so far stay; the one in progress stays unlisted, alive
// for the definitions that already point at it. A new read clears both.
void ODMFieldDictionaryReader::failEnumRead(ODMEnumTableInt* tableInProgress,
                                            const ORVO_String& failure) {
  delete _dictionary._unlistedEnumTable;
  _dictionary._unlistedEnumTable = tableInProgress;
  internal::raiseIllegalCall(failure);
}

// "  <value>  <display>  <meaning>": a line without a value word or with a
// display that does not scan is passed over, which is how free-text
// continuation lines of the meaning column get through.
bool ODMFieldDictionaryReader::readValueLine(ODMEnumTableInt* table, ORVO_String* failure) {
  int value;
  const int afterValue = scanNumber(_line, 0, &value);
  if (afterValue < 0) return true;
  Token display;
  char opener;
  if (scanDisplay(_line, afterValue, &display, &opener) < 0) return true;
  char bytes[ODMDictionaryLineReader::kLineBufferSize];
  if (opener == '#') display = Token{bytes, hexToBytes(display, bytes)};
  if (table == nullptr) {
    *failure = "ODMFieldDictionary::readODMEnumTypeDef - Attempt to add enumeration '";
    failure->append(display.text, display.length)
        .append("' value '")
        .append(value)
        .append("'  while enumeration table is not defined. Line = ")
        .append(_lineNumber);
    return false;
  }
  table->addDisplay(value, display.text, display.length);
  return true;
}

// "<acronym> <fid>": anything behind the id is ignored, and a line without
// an id only opens its table.
bool ODMFieldDictionaryReader::readAcronymLine(ODMEnumTableInt* table, ORVO_String* failure) {
  Token acronym;
  const int afterAcronym = scanWord(_line, 0, &acronym);
  if (afterAcronym < 0) return true;
  int fieldId;
  if (scanNumber(_line, afterAcronym, &fieldId) < 0) return true;
  // For an id out of range the definition found on an earlier line stays
  // the one checked and linked below.
  if (fieldId >= ODMFieldDictionaryInt::kMinFieldId &&
      fieldId <= ODMFieldDictionaryInt::kMaxFieldId) {
    _foundDef = _dictionary.findFidDef(fieldId);
  }
  if (_foundDef != nullptr) {
    if (!sameText(_foundDef->getName(), acronym)) {
      *failure =
          "ODMFieldDictionary::readODMEnumTypeDef - Acronym mismatch between Field Dictionary and "
          "Enum Type Dictionary for fid ";
      failure->append(fieldId);
      return false;
    }
    _foundDef->setEnumTable(table);
  }
  // Also for ids without a definition, or out of range: a table may name
  // fields the field dictionary does not hold, or not yet.
  table->addFid(fieldId);
  return true;
}

bool ODMFieldDictionaryReader::applyEnumTag(ORVO_String* failure) {
  Token key;
  Token value;
  if (!splitTagLine(&key, &value)) return true;  // a comment
  ODMFieldDictionaryInt& d = _dictionary;
  if (key.is("Type")) {
    if (toNumber(value) != 2) {
      *failure = "ODMFieldDictionaryInt::readODMEnumTypeDef -!TagType ";
      failure->append(value.text, value.length)
          .append(" indicates this is not a set of enum tables. Line Number: \"")
          .append(_lineNumber)
          .append("\"");
      return false;
    }
  } else if (key.is("DT_Version")) {
    d._enumDTversion = trimmed(value);
  } else if (key.is("RT_Version")) {
    d._enumRTversion = trimmed(value);
  } else if (key.is("DictionaryId")) {
    // No range check here, unlike the field dictionary file.
    const int dictId = toNumber(value);
    if (d._dictIdSet && dictId != d._dictId) {
      *failure = "ODMFieldDictionaryInt::readODMEnumTypeDef -!TagEnum Tables DictionaryId->";
      failure->append(value.text, value.length)
          .append(" does not match the current/existing DictionaryId-> ")
          .append(d._dictId)
          .append(" that was set earlier\n Line Number: \"")
          .append(_lineNumber)
          .append("\"");
      return false;
    }
    d._dictId = dictId;
    d._dictIdSet = true;
  } else if (key.is("Filename")) {
    d._enumFileName = toString(value);
  } else if (key.is("Desc")) {
    d._enumDesc = toString(value);
  } else if (key.is("Date")) {
    d._enumDate = toString(value);
  }
  return true;
}

}  // namespace odm
}  // namespace orvo
