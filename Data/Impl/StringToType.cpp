#include "Data/Impl/StringToType.h"

#include <cstring>

namespace orvo {
namespace odm {
namespace {

using common::ORVO_String;
using common::UInt32;

struct TypeName {
  const char* text;
  int type;
};

// Every spelling the reader accepts for a wire type.
const TypeName kOMMTypeNames[] = {
    {"INT32", 3},       {"INT64", 3},         {"INT", 3},           {"UINT32", 4},
    {"UINT64", 4},      {"UINT", 4},          {"FLOAT", 5},         {"DOUBLE", 6},
    {"REAL32", 8},      {"REAL64", 8},        {"REAL", 8},          {"DATE", 9},
    {"TIME", 10},       {"DATETIME", 11},     {"DATE_TIME", 11},    {"QOS", 12},
    {"STATUS", 13},     {"STATE", 13},        {"ENUM", 14},         {"ARRAY", 15},
    {"BUFFER", 16},     {"ASCII_STRING", 17}, {"UTF8_STRING", 18},  {"OMTES_STRING", 19},
    {"OPAQUE", 130},    {"XML", 131},         {"FIELD_LIST", 132},  {"ELEMENT_LIST", 133},
    {"ELEM_LIST", 133}, {"ANSI_PAGE", 134},   {"FILTER_LIST", 135}, {"VECTOR", 136},
    {"MAP", 137},       {"SERIES", 138},      {"MSG", 141}};

// "NONE" is left out on purpose: it reads as an unknown name, -1.
const TypeName kFieldTypeNames[] = {
    {"TIME_SECONDS", 0}, {"INTEGER", 1},          {"NUMERIC", 2},    {"DATE", 3},
    {"PRICE", 4},        {"ALPHANUMERIC", 5},     {"ENUMERATED", 6}, {"TIME", 7},
    {"BINARY", 8},       {"LONGALPHANUMERIC", 9}, {"OPAQUETYPE", 10}};

constexpr int kOMMTypeMiss = 0;
constexpr int kFieldTypeMiss = -1;

// The key strings live as long as the tables that point at them.
struct TypeTables {
  ORVO_String ommKeys[sizeof(kOMMTypeNames) / sizeof(kOMMTypeNames[0])];
  ORVO_String fieldKeys[sizeof(kFieldTypeNames) / sizeof(kFieldTypeNames[0])];
};

template <std::size_t N>
void fill(StringToType::Table* table, ORVO_String (&keys)[N], const TypeName (&names)[N]) {
  for (std::size_t i = 0; i < N; ++i) {
    keys[i] = names[i].text;
    table->insert(&keys[i], new int(names[i].type));
  }
}

void freeTable(StringToType::Table* table) {
  table->removeAll([](const ORVO_String*, int* value) { delete value; });
  delete table;
}

TypeTables* g_keys = nullptr;

// Built while the library loads, so that the tables exist before any
// dictionary is read and are never built concurrently.
[[maybe_unused]] const bool g_builtAtLoad = (StringToType::ommTypeTable(), true);

}  // namespace

StringToType::Table* StringToType::_ommTypes = nullptr;
StringToType::Table* StringToType::_fieldTypes = nullptr;

StringToType::StringToType() {
  g_keys = new TypeTables;
  _ommTypes = new Table(kOMMTypeBuckets, &StringToType::hashTypeName);
  _fieldTypes = new Table(kFieldTypeBuckets, &StringToType::hashTypeName);
  fill(_ommTypes, g_keys->ommKeys, kOMMTypeNames);
  fill(_fieldTypes, g_keys->fieldKeys, kFieldTypeNames);
}

StringToType::~StringToType() {
  freeTable(_ommTypes);
  freeTable(_fieldTypes);
  _ommTypes = nullptr;
  _fieldTypes = nullptr;
  delete g_keys;
  g_keys = nullptr;
}

const StringToType& StringToType::instance() {
  static const StringToType tables;
  return tables;
}

const StringToType::Table* StringToType::ommTypeTable() {
  instance();
  return _ommTypes;
}

const StringToType::Table* StringToType::fieldTypeTable() {
  instance();
  return _fieldTypes;
}

UInt32 StringToType::hashTypeName(const char* text, UInt32 length) {
  const char first = length == 0 ? '\0' : text[0];
  const UInt32 seed =
      static_cast<UInt32>(static_cast<common::Int32>(static_cast<signed char>(first)));
  return ortHashBytes(seed, text, length);
}

UInt32 StringToType::hashTypeName(const ORVO_String& name) {
  return hashTypeName(name.data(), name.length());
}

int StringToType::lookUp(const Table* table, const char* text, UInt32 length, int miss) {
  // Only after the tables were torn down at unload.
  if (table == nullptr) return miss;
  const int* type = table->findHashed(hashTypeName(text, length), [=](const ORVO_String& key) {
    return key.length() == length && std::memcmp(key.data(), text, length) == 0;
  });
  return type == nullptr ? miss : *type;
}

int StringToType::toOMMType(const char* text, UInt32 length) {
  return lookUp(ommTypeTable(), text, length, kOMMTypeMiss);
}

int StringToType::toFieldType(const char* text, UInt32 length) {
  return lookUp(fieldTypeTable(), text, length, kFieldTypeMiss);
}

}  // namespace odm
}  // namespace orvo
