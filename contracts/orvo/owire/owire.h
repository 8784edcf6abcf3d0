// The wire codec's contract: records exchanged with the codec, the return
// codes the library tests, the codec functions, and the iterator routines the
// library performs on the records itself.
//
// Records keep the field order and widths of the wire contract; pointers are
// native. Iterators are plain memory: copying an OwfDecodeIterator gives an
// independent reader. The codec keeps no state outside these records.
#ifndef ORVO_OWIRE_OWIRE_H_
#define ORVO_OWIRE_OWIRE_H_

#include <cstddef>

#include "orvo/common/Types.h"

using orvo::common::Int16;
using orvo::common::Int32;
using orvo::common::Int64;
using orvo::common::Int8;
using orvo::common::UInt16;
using orvo::common::UInt32;
using orvo::common::UInt64;
using orvo::common::UInt8;

// ---------------------------------------------------------------------------
// Return codes.
enum OwireReturnCodes {
  OWIRE_RET_SUCCESS = 0,
  OWIRE_RET_FAILURE = -1,
  OWIRE_RET_INVALID_ARGUMENT = -2,
  OWIRE_RET_INCOMPLETE_DATA = -3,
  OWIRE_RET_UNSUPPORTED_DATA_TYPE = -4,
  OWIRE_RET_INVALID_VERSION = -5,
  OWIRE_RET_ITERATOR_OVERRUN = -6,
  OWIRE_RET_ENCODING_UNAVAILABLE = -7,
  OWIRE_RET_SET_DEF_NOT_PROVIDED = -8,
  OWIRE_RET_INVALID_ENCODE_STATE = -9,
  OWIRE_RET_BUFFER_TOO_SMALL = -21,
  OWIRE_RET_INVALID_DATA = -29,
  OWIRE_RET_END_OF_CONTAINER = 14,
  OWIRE_RET_BLANK_DATA = 15,
};

// Levels of nesting an iterator supports.
enum { OWIRE_MAX_LEVELS = 16 };

// ---------------------------------------------------------------------------
// Buffers and iterators.

struct OwfBuffer {
  UInt32 length;  // output buffers: capacity going in, used length coming out
  char* data;     // not owned
};

// Encode level states read by the data model.
enum OwfEncodeLevelState {
  EncodeLevelNone = 0,
  EncodeLevelSummary = 2,
  EncodeLevelSetDone = 7,
  EncodeLevelEntryOpen = 8,
  EncodeLevelFilterEntryDone = 15,
};

// One open container on the encode side. Everything but levelState is the
// codec's own bookkeeping. The header of an open Map, Series, Vector or
// FilterList holds its entries' container type, minus 128, in the byte
// containerStart[1] (see owireEncodeSetContainerType).
struct OwfEncodeLevel {
  char* containerStart;     // first byte of the container's header
  char* countPos;           // where the entry count is patched on completion
  char* entryStart;         // first byte of the open entry (rollback point)
  char* lengthPos;          // where the open part's length is patched
  UInt32 itemCount;         // entries written so far
  UInt8 containerType;      // data type code of the open container
  UInt8 levelState;         // OwfEncodeLevelState
  UInt8 flags;              // header flags as they stand
  UInt8 entryFlags;         // codec-private entry bookkeeping
  const void* setDef;       // set definition in force for set-defined rows
  UInt16 setIndex;          // next set-defined entry
  UInt8 keyType;            // Map key type, Array item type
  UInt8 phase;              // codec-private: which part lengthPos belongs to
  UInt32 totalCountHint;    // written after the summary
  const char* pendingSummary;    // pre-encoded summary given at Init
  UInt32 pendingSummaryLength;
  UInt16 itemLength;        // Array fixed item width, 0 = variable
  UInt16 reserved;
  char* setDataPos;         // length slot of a list's set-defined rows
};
struct OwfEncodeIterator {
  OwfBuffer* buffer;  // null when none
  char* curPos;
  char* endPos;
  UInt8 majorVersion;
  UInt8 minorVersion;
  Int8 encodingLevel;  // -1 when no container is open
  OwfEncodeLevel levels[OWIRE_MAX_LEVELS];
};

struct OwfFieldSetDef;
struct OwfElementSetDef;

struct OwfDecodeLevel {
  const char* endPos;  // end of this level's data
  const char* nextEntryPos;
  UInt16 nextItem;
  UInt8 containerType;
  UInt8 flags;
  const OwfFieldSetDef* fieldSetDef;
  const OwfElementSetDef* elementSetDef;
  UInt16 itemCount;  // total entries of the container just decoded
  UInt16 setCount;   // set-defined entries still to read
  UInt32 reserved;
  // Codec-private from here on.
  const char* entryEnd;    // end of the data of the entry decoded last
  const char* summaryPos;  // summary data of a Map, Series or Vector
  const char* setDefsPos;  // set definitions of a Map, Series or Vector
  const char* setPos;      // next set-defined row of a list
  const char* setEnd;      // end of a list's set-defined rows
  UInt32 summaryLength;
  UInt32 setDefsLength;
  UInt16 standardLeft;     // standard entries still to read
  UInt16 itemLength;       // Array fixed item width
  UInt8 entryType;         // Map key type, Array item type, list set-row base
  UInt8 setCountTotal;     // set-defined rows of a list
  UInt8 reserved2[2];
};
struct OwfDecodeIterator {
  UInt8 majorVersion;
  UInt8 minorVersion;
  Int8 decodingLevel;  // -1 before the first decode
  const char* curPos;
  OwfBuffer* buffer;  // null when none
  OwfDecodeLevel levels[OWIRE_MAX_LEVELS];
};

// ---------------------------------------------------------------------------
// Primitive records.

struct OwfDate {
  UInt8 day;
  UInt8 month;
  UInt16 year;
};

struct OwfTime {
  UInt8 hour;
  UInt8 minute;
  UInt8 second;
  UInt16 millisecond;
};

struct OwfDateTime {
  OwfDate date;
  OwfTime time;
};

struct OwfReal {
  UInt8 isBlank;  // 1 = blank
  UInt8 hint;     // magnitude type; 14 = exponent 0
  Int64 value;
};

struct OwfQos {
  UInt8 timeliness;  // 0 unspecified, 1 real time, 2 delayed unknown, 3 delayed by timeInfo
  UInt8 rate;        // 0 unspecified, 1 tick by tick, 2 just-in-time filtered, 3 by rateInfo
  UInt8 flags;       // bit 0 is cleared by the data model
  UInt16 timeInfo;
  UInt16 rateInfo;
};

struct OwfState {
  UInt8 streamState;
  UInt8 dataState;
  UInt8 code;
  OwfBuffer text;
};

// ---------------------------------------------------------------------------
// Container and entry records.

struct OwfFieldList {
  UInt8 flags;  // 0x01 info, 0x02 set data, 0x04 set id, 0x08 standard data
  Int16 dictionaryId;
  Int16 fieldListNum;
  UInt16 setId;
  OwfBuffer encSetData;
  OwfBuffer encEntries;
};
enum {
  OWF_FLF_HAS_FIELD_LIST_INFO = 0x01,
  OWF_FLF_HAS_SET_DATA = 0x02,
  OWF_FLF_HAS_SET_ID = 0x04,
  OWF_FLF_HAS_STANDARD_DATA = 0x08,
};

struct OwfFieldEntry {
  Int16 fieldId;
  UInt8 dataType;  // on decode: 0 for a standard entry, the set's type otherwise
  OwfBuffer encData;
};

struct OwfElementList {
  UInt8 flags;  // 0x01 info, 0x02 set data, 0x04 set id, 0x08 standard data
  Int16 elementListNum;
  UInt16 setId;
  OwfBuffer encSetData;
  OwfBuffer encEntries;
};
enum {
  OWF_ELF_HAS_ELEMENT_LIST_INFO = 0x01,
  OWF_ELF_HAS_SET_DATA = 0x02,
  OWF_ELF_HAS_SET_ID = 0x04,
  OWF_ELF_HAS_STANDARD_DATA = 0x08,
};

struct OwfElementEntry {
  OwfBuffer name;
  UInt8 dataType;
  OwfBuffer encData;
};

struct OwfMap {
  UInt8 flags;  // see OWF_MPF_*
  UInt8 keyPrimitiveType;
  Int16 keyFieldId;
  UInt8 containerType;
  OwfBuffer encSetDefs;
  OwfBuffer encSummaryData;
  UInt32 totalCountHint;
  OwfBuffer encEntries;
};
enum {
  OWF_MPF_HAS_SET_DEFS = 0x01,
  OWF_MPF_HAS_SUMMARY_DATA = 0x02,
  OWF_MPF_HAS_PER_ENTRY_PERM_DATA = 0x04,
  OWF_MPF_HAS_TOTAL_COUNT_HINT = 0x08,
  OWF_MPF_HAS_KEY_FIELD_ID = 0x10,
};

struct OwfMapEntry {
  UInt8 flags;   // 0x01 has permission data
  UInt8 action;  // default 1
  OwfBuffer permData;
  OwfBuffer encKey;
  OwfBuffer encData;
};
enum { OWF_MPEF_HAS_PERM_DATA = 0x01 };

struct OwfSeries {
  UInt8 flags;  // see OWF_SEF_*
  UInt8 containerType;
  OwfBuffer encSetDefs;
  OwfBuffer encSummaryData;
  UInt32 totalCountHint;
  OwfBuffer encEntries;
};
enum {
  OWF_SEF_HAS_SET_DEFS = 0x01,
  OWF_SEF_HAS_SUMMARY_DATA = 0x02,
  OWF_SEF_HAS_TOTAL_COUNT_HINT = 0x04,
};

struct OwfSeriesEntry {
  OwfBuffer encData;
};

struct OwfVector {
  UInt8 flags;  // see OWF_VTF_*
  UInt8 containerType;
  OwfBuffer encSetDefs;
  OwfBuffer encSummaryData;
  UInt32 totalCountHint;
  OwfBuffer encEntries;
};
enum {
  OWF_VTF_HAS_SET_DEFS = 0x01,
  OWF_VTF_HAS_SUMMARY_DATA = 0x02,
  OWF_VTF_HAS_PER_ENTRY_PERM_DATA = 0x04,
  OWF_VTF_HAS_TOTAL_COUNT_HINT = 0x08,
  OWF_VTF_SUPPORTS_SORTING = 0x10,  // carried, not interpreted
};

struct OwfVectorEntry {
  UInt8 flags;   // 0x01 has permission data
  UInt8 action;  // default 1
  UInt32 index;
  OwfBuffer permData;
  OwfBuffer encData;
};
enum { OWF_VTEF_HAS_PERM_DATA = 0x01 };

struct OwfFilterList {
  UInt8 flags;  // 0x01 per-entry permission data, 0x02 total count hint
  UInt8 containerType;
  UInt8 totalCountHint;
  OwfBuffer encEntries;
};
enum {
  OWF_FTF_HAS_PER_ENTRY_PERM_DATA = 0x01,
  OWF_FTF_HAS_TOTAL_COUNT_HINT = 0x02,
};

struct OwfFilterEntry {
  UInt8 flags;  // 0x01 has permission data, 0x02 has its own container type
  UInt8 action;  // default 1
  UInt8 id;
  UInt8 containerType;
  OwfBuffer permData;
  OwfBuffer encData;
};
enum {
  OWF_FTEF_HAS_PERM_DATA = 0x01,
  OWF_FTEF_HAS_CONTAINER_TYPE = 0x02,
};

struct OwfArray {
  UInt8 primitiveType;
  UInt16 itemLength;  // 0 = variable length
  OwfBuffer encData;
};

// ---------------------------------------------------------------------------
// Local set definitions. Set ids run from 0 to 15 and index the tables.

enum { OWF_MAX_LOCAL_SET_DEFS = 16, OWF_SET_DEF_FREE = 255 };

struct OwfFieldSetDefEntry {
  Int16 fieldId;
  UInt8 dataType;  // a data type code, or a set code 64..80 (packed form)
};

struct OwfFieldSetDef {
  UInt16 setId;  // OWF_SET_DEF_FREE when the slot is free
  UInt8 count;
  OwfFieldSetDefEntry* entries;
};

struct OwfLocalFieldSetDefDb {
  OwfFieldSetDef definitions[OWF_MAX_LOCAL_SET_DEFS];
  OwfBuffer memory;  // work memory for decoding, given by the caller
};

struct OwfElementSetDefEntry {
  OwfBuffer name;
  UInt8 dataType;
};

struct OwfElementSetDef {
  UInt16 setId;
  UInt8 count;
  OwfElementSetDefEntry* entries;
};

struct OwfLocalElementSetDefDb {
  OwfElementSetDef definitions[OWF_MAX_LOCAL_SET_DEFS];
  OwfBuffer memory;
};

// Work memory sizes the data model gives for decoding set definitions.
enum {
  OWF_FIELD_SET_DEF_DB_MEMORY = 12000,
  OWF_ELEMENT_SET_DEF_DB_MEMORY = 50000,
};

// Set codes: the packed forms a set definition can give an entry.
enum OwfSetTypes {
  OWF_SET_INT_1 = 64,
  OWF_SET_UINT_1 = 65,
  OWF_SET_INT_2 = 66,
  OWF_SET_UINT_2 = 67,
  OWF_SET_INT_4 = 68,
  OWF_SET_UINT_4 = 69,
  OWF_SET_INT_8 = 70,
  OWF_SET_UINT_8 = 71,
  OWF_SET_FLOAT_4 = 72,
  OWF_SET_DOUBLE_8 = 73,
  OWF_SET_REAL_4RB = 74,
  OWF_SET_REAL_8RB = 75,
  OWF_SET_DATE_4 = 76,
  OWF_SET_TIME_3 = 77,
  OWF_SET_TIME_5 = 78,
  OWF_SET_DATETIME_7 = 79,
  OWF_SET_DATETIME_9 = 80,
};

// ---------------------------------------------------------------------------
// Iterator routines the data model performs itself on the records.

inline void clearEncodeIterator(OwfEncodeIterator* iter) {
  iter->buffer = nullptr;
  iter->curPos = nullptr;
  iter->endPos = nullptr;
  iter->majorVersion = 14;
  iter->minorVersion = 0;
  iter->encodingLevel = -1;
}

inline int setEncodeIteratorBuffer(OwfEncodeIterator* iter, OwfBuffer* buffer) {
  if (buffer->length == 0 || buffer->data == nullptr) {
    iter->buffer = nullptr;
    return -1;
  }
  iter->buffer = buffer;
  iter->curPos = buffer->data;
  iter->endPos = buffer->data + buffer->length;
  return 0;
}

inline int setEncodeIteratorVersion(OwfEncodeIterator* iter, UInt8 major, UInt8 minor) {
  if (major != 14) return -1;
  iter->majorVersion = major;
  iter->minorVersion = minor;
  return 0;
}

inline UInt32 getEncodedLength(const OwfEncodeIterator* iter) {
  return static_cast<UInt32>(iter->curPos - iter->buffer->data);
}

inline UInt8 encodeLevelState(const OwfEncodeIterator* iter) {
  return iter->encodingLevel < 0 ? 0 : iter->levels[iter->encodingLevel].levelState;
}

inline void clearDecodeIterator(OwfDecodeIterator* iter) {
  iter->majorVersion = 14;
  iter->minorVersion = 0;
  iter->decodingLevel = -1;
}

inline int setDecodeIteratorBuffer(OwfDecodeIterator* iter, OwfBuffer* buffer) {
  if (buffer->data == nullptr && buffer->length != 0) {
    iter->buffer = nullptr;
    return -1;
  }
  iter->buffer = buffer;
  iter->curPos = buffer->data;
  iter->levels[0].endPos = buffer->data + buffer->length;
  return 0;
}

inline int setDecodeIteratorVersion(OwfDecodeIterator* iter, UInt8 major, UInt8 minor) {
  if (major != 14) return -1;
  iter->majorVersion = major;
  iter->minorVersion = minor;
  return 0;
}

// ---------------------------------------------------------------------------
// Codec functions. Encoding functions may return OWIRE_RET_BUFFER_TOO_SMALL;
// the matching ...Complete(iter, false) then rolls the open item back, and
// after owireRealignEncodeIteratorBuffer the call can be repeated.
// Decoding functions never read outside the buffer they were given.

int owireEncodeFieldListInit(OwfEncodeIterator* iter, OwfFieldList* list,
                             const OwfLocalFieldSetDefDb* setDb, UInt16 setEncodingMaxSize);
int owireEncodeFieldListComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeFieldEntry(OwfEncodeIterator* iter, OwfFieldEntry* entry, const void* value);
int owireEncodeFieldEntryInit(OwfEncodeIterator* iter, OwfFieldEntry* entry, UInt16 maxSize);
int owireEncodeFieldEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeElementListInit(OwfEncodeIterator* iter, OwfElementList* list,
                               const OwfLocalElementSetDefDb* setDb, UInt16 setEncodingMaxSize);
int owireEncodeElementListComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeElementEntry(OwfEncodeIterator* iter, OwfElementEntry* entry, const void* value);
int owireEncodeElementEntryInit(OwfEncodeIterator* iter, OwfElementEntry* entry,
                                UInt16 maxSize);
int owireEncodeElementEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeFilterListInit(OwfEncodeIterator* iter, OwfFilterList* list);
int owireEncodeFilterListComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeFilterEntry(OwfEncodeIterator* iter, OwfFilterEntry* entry);
int owireEncodeFilterEntryInit(OwfEncodeIterator* iter, OwfFilterEntry* entry, UInt16 maxSize);
int owireEncodeFilterEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeArrayInit(OwfEncodeIterator* iter, OwfArray* array);
int owireEncodeArrayComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeArrayEntry(OwfEncodeIterator* iter, const OwfBuffer* encoded, const void* value);

int owireEncodeMapInit(OwfEncodeIterator* iter, OwfMap* map, UInt16 summaryMaxSize,
                       UInt16 setDefsMaxSize);
int owireEncodeMapSetDefsComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeMapSummaryDataComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeMapComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeMapEntry(OwfEncodeIterator* iter, OwfMapEntry* entry, const void* keyValue);
int owireEncodeMapEntryInit(OwfEncodeIterator* iter, OwfMapEntry* entry, const void* keyValue,
                            UInt16 maxSize);
int owireEncodeMapEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeSeriesInit(OwfEncodeIterator* iter, OwfSeries* series, UInt16 summaryMaxSize,
                          UInt16 setDefsMaxSize);
int owireEncodeSeriesSetDefsComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeSeriesSummaryDataComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeSeriesComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeSeriesEntry(OwfEncodeIterator* iter, OwfSeriesEntry* entry);
int owireEncodeSeriesEntryInit(OwfEncodeIterator* iter, OwfSeriesEntry* entry, UInt16 maxSize);
int owireEncodeSeriesEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeVectorInit(OwfEncodeIterator* iter, OwfVector* vector, UInt16 summaryMaxSize,
                          UInt16 setDefsMaxSize);
int owireEncodeVectorSetDefsComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeVectorSummaryDataComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeVectorComplete(OwfEncodeIterator* iter, bool success);
int owireEncodeVectorEntry(OwfEncodeIterator* iter, OwfVectorEntry* entry);
int owireEncodeVectorEntryInit(OwfEncodeIterator* iter, OwfVectorEntry* entry, UInt16 maxSize);
int owireEncodeVectorEntryComplete(OwfEncodeIterator* iter, bool success);

int owireEncodeLocalFieldSetDefDb(OwfEncodeIterator* iter, const OwfLocalFieldSetDefDb* db);
int owireEncodeLocalElementSetDefDb(OwfEncodeIterator* iter, const OwfLocalElementSetDefDb* db);
int owireEncodePrimitiveType(OwfEncodeIterator* iter, UInt8 primitiveType, const void* value);

int owireRealignEncodeIteratorBuffer(OwfEncodeIterator* iter, OwfBuffer* newBuffer);

// Sets the entries' container type of the Map, Series, Vector or FilterList
// open at the current level: in the level and in the header already written
// (the byte containerStart[1], which holds the type minus 128). Lets a Map or
// Vector that began with payload-free entries take its type later.
int owireEncodeSetContainerType(OwfEncodeIterator* iter, UInt8 containerType);

int owireDecodeFieldList(OwfDecodeIterator* iter, OwfFieldList* list,
                         const OwfLocalFieldSetDefDb* setDb);
int owireDecodeFieldEntry(OwfDecodeIterator* iter, OwfFieldEntry* entry);
int owireDecodeElementList(OwfDecodeIterator* iter, OwfElementList* list,
                           const OwfLocalElementSetDefDb* setDb);
int owireDecodeElementEntry(OwfDecodeIterator* iter, OwfElementEntry* entry);
int owireDecodeFilterList(OwfDecodeIterator* iter, OwfFilterList* list);
int owireDecodeFilterEntry(OwfDecodeIterator* iter, OwfFilterEntry* entry);
int owireDecodeArray(OwfDecodeIterator* iter, OwfArray* array);
int owireDecodeArrayEntry(OwfDecodeIterator* iter, OwfBuffer* entry);
int owireDecodeMap(OwfDecodeIterator* iter, OwfMap* map);
int owireDecodeMapEntry(OwfDecodeIterator* iter, OwfMapEntry* entry, void* keyValue);
int owireDecodeSeries(OwfDecodeIterator* iter, OwfSeries* series);
int owireDecodeSeriesEntry(OwfDecodeIterator* iter, OwfSeriesEntry* entry);
int owireDecodeVector(OwfDecodeIterator* iter, OwfVector* vector);
int owireDecodeVectorEntry(OwfDecodeIterator* iter, OwfVectorEntry* entry);
int owireDecodeLocalFieldSetDefDb(OwfDecodeIterator* iter, OwfLocalFieldSetDefDb* db);
int owireDecodeLocalElementSetDefDb(OwfDecodeIterator* iter, OwfLocalElementSetDefDb* db);

int owireDecodeInt(OwfDecodeIterator* iter, Int64* value);
int owireDecodeUInt(OwfDecodeIterator* iter, UInt64* value);
int owireDecodeFloat(OwfDecodeIterator* iter, float* value);
int owireDecodeDouble(OwfDecodeIterator* iter, double* value);
int owireDecodeReal(OwfDecodeIterator* iter, OwfReal* value);
int owireDecodeDate(OwfDecodeIterator* iter, OwfDate* value);
int owireDecodeTime(OwfDecodeIterator* iter, OwfTime* value);
int owireDecodeDateTime(OwfDecodeIterator* iter, OwfDateTime* value);
int owireDecodeQos(OwfDecodeIterator* iter, OwfQos* value);
int owireDecodeState(OwfDecodeIterator* iter, OwfState* value);
int owireDecodeEnum(OwfDecodeIterator* iter, UInt16* value);
// Any primitive as its raw bytes (BUFFER, strings, OPAQUE, XML, ANSI_PAGE).
int owireDecodeBuffer(OwfDecodeIterator* iter, OwfBuffer* value);

int owireFloatToReal(OwfReal* real, const float* value, UInt8 hint);
int owireDoubleToReal(OwfReal* real, const double* value, UInt8 hint);
int owireRealToDouble(double* value, const OwfReal* real);
int owireNumericStringToReal(OwfReal* real, const OwfBuffer* text);
int owireNumericStringToDouble(double* value, const OwfBuffer* text);
int owireDateStringToDate(OwfDate* date, const OwfBuffer* text);
int owireTimeStringToTime(OwfTime* time, const OwfBuffer* text);
bool owireDateIsValid(const OwfDate* date);
bool owireTimeIsValid(const OwfTime* time);
bool owireDateTimeIsValid(const OwfDateTime* dateTime);
int owirePrimitiveToString(const void* value, UInt8 primitiveType, OwfBuffer* out);
int owireEncodedPrimitiveToString(OwfDecodeIterator* iter, UInt8 primitiveType, OwfBuffer* out);
const char* owireRetCodeToString(int code);

#endif  // ORVO_OWIRE_OWIRE_H_
