// orvo-dict: loads a field dictionary and its enum type file and prints what
// they hold.
//
//   orvo-dict [FIELD_FILE [ENUM_FILE [FIELD ...]]]
//
// Without paths it loads the sample dictionary bundled in the source tree's
// data/ folder. Each FIELD (an id or an acronym) is looked up and printed
// with its enumeration displays. A file that does not load ends the program
// with status 1 and the loader's failure text on stderr.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "orvo/common/Exception.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/odm/ODMFidDef.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "orvo/odm/ODMFieldDictionaryInt.h"
#include "tools/BundledFile.h"

namespace {

using orvo::common::Int64;
using orvo::common::ORVO_String;
using orvo::odm::ODMFidDef;
using orvo::odm::ODMFieldDictionary;
using orvo::odm::ODMFieldDictionaryInt;

constexpr const char* kFieldFile = "data/orvo-fields.def";
constexpr const char* kEnumFile = "data/orvo-enums.def";
// Enumeration values tried when a field's displays are listed.
constexpr Int64 kDisplaysShown = 6;
constexpr Int64 kValuesTried = 1000;

void printFailure(const char* what) {
  const std::size_t n = std::strlen(what);
  std::fprintf(stderr, "orvo-dict: %s%s", what, n != 0 && what[n - 1] == '\n' ? "" : "\n");
}

std::string fieldLine(const ODMFidDef& def) {
  char line[512];
  std::snprintf(line, sizeof(line), "%6lld  %-18s \"%s\"  %s %lld",
                static_cast<long long>(def.getFieldId()), def.getName().c_str(),
                def.getLongName().c_str(), ODMFidDef::ommTypeToString(def.getOMMType()).c_str(),
                static_cast<long long>(def.getOMMLength()));
  std::string text(line);
  text += "  feed " + std::string(ODMFidDef::fieldTypeToString(def.getFieldType()).c_str());
  if (def.getRippleToFieldId() != 0) {
    text += "  ripples to " + std::to_string(def.getRippleToFieldId());
  }
  return text;
}

// Lists the first displays of an enumerated field. The public face offers
// lookups only, so values are tried in order.
void printDisplays(const ODMFidDef& def) {
  Int64 shown = 0;
  bool hasTable = true;
  for (Int64 value = 0; value < kValuesTried && shown < kDisplaysShown && hasTable; ++value) {
    try {
      const ORVO_String& display = def.displayValueFor(value);
      std::printf("          %4lld -> \"%s\"\n", static_cast<long long>(value), display.c_str());
      ++shown;
    } catch (const orvo::common::Exception& e) {
      hasTable = std::strstr(e.what(), "NOT set") == nullptr;
    }
  }
  if (!hasTable) std::printf("          (no enumeration table)\n");
}

bool isNumber(const char* text) {
  char* end = nullptr;
  std::strtoll(text, &end, 10);
  return end != text && *end == '\0';
}

// An id as typed; one beyond 32 bits becomes an id the lookup refuses as
// out of range rather than wrapping into a valid one.
orvo::common::Int32 fieldIdOf(const char* text) {
  const long long id = std::strtoll(text, nullptr, 10);
  if (id > INT32_MAX) return INT32_MAX;
  if (id < INT32_MIN) return INT32_MIN;
  return static_cast<orvo::common::Int32>(id);
}

void lookUp(const ODMFieldDictionary& dictionary, const char* field) {
  try {
    const ODMFidDef& def =
        isNumber(field) ? dictionary.getFidDef(fieldIdOf(field)) : dictionary.getFidDef(field);
    std::printf("  %s\n", fieldLine(def).c_str());
    if (def.getFieldType() == orvo::odm::FeedEnumerated) printDisplays(def);
  } catch (const orvo::common::Exception& e) {
    std::printf("  %s: %s\n", field, e.what());
  }
}

// Fields worth showing from any dictionary: both ends of the id range, and
// the first, a middle and the last enumerated field, looked up by name to
// show both indexes at work.
std::vector<std::string> sampleFields(const ODMFieldDictionaryInt& dictionary) {
  std::vector<std::string> fields;
  if (dictionary.size() == 0) return fields;
  if (dictionary.getMinNegFieldId() < 0) {
    fields.push_back(std::to_string(dictionary.getMinNegFieldId()));
  }
  fields.push_back(std::to_string(dictionary.getMaxFieldId()));
  std::vector<std::string> enumerated;
  for (Int64 id = dictionary.getMinNegFieldId(); id <= dictionary.getMaxFieldId(); ++id) {
    try {
      const ODMFidDef& def = dictionary.getFidDef(static_cast<orvo::common::Int32>(id));
      if (def.getFieldType() == orvo::odm::FeedEnumerated)
        enumerated.push_back(def.getName().c_str());
    } catch (const orvo::common::Exception&) {
      // no definition for this id
    }
  }
  if (!enumerated.empty()) {
    fields.push_back(enumerated.front());
    if (enumerated.size() > 2) fields.push_back(enumerated[enumerated.size() / 2]);
    if (enumerated.size() > 1) fields.push_back(enumerated.back());
  }
  return fields;
}

void printSummary(const ODMFieldDictionaryInt& d, const std::string& fieldPath,
                  const std::string& enumPath) {
  std::printf("field dictionary  %s\n", fieldPath.c_str());
  std::printf("  %llu definitions, ids %lld..%lld, dictionary id %lld, version \"%s\"\n",
              static_cast<unsigned long long>(d.size()),
              static_cast<long long>(d.getMinNegFieldId()),
              static_cast<long long>(d.getMaxFieldId()), static_cast<long long>(d.getDictId()),
              d.getVersion().c_str());
  std::printf("  file \"%s\", desc \"%s\", build \"%s\", date \"%s\"\n",
              d.getODMFldFileName().c_str(), d.getODMFldDesc().c_str(), d.getODMFldBuild().c_str(),
              d.getODMFldDate().c_str());
  std::printf("  longest: length %llu, enum length %llu, wire length %llu\n",
              static_cast<unsigned long long>(d.getMaxLength()),
              static_cast<unsigned long long>(d.getMaxEnumLength()),
              static_cast<unsigned long long>(d.getMaxOwfLength()));
  std::printf("enum type file    %s\n", enumPath.c_str());
  std::printf("  %u enumeration tables, RT_Version \"%s\", DT_Version \"%s\"\n",
              d.enumTables().size(), d.getEnumRTversion().c_str(), d.getEnumDTversion().c_str());
  std::printf("  file \"%s\", desc \"%s\", date \"%s\"\n", d.getEnumFileName().c_str(),
              d.getEnumDesc().c_str(), d.getEnumDate().c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && (std::strcmp(argv[1], "-h") == 0 || std::strcmp(argv[1], "--help") == 0)) {
    std::printf("usage: %s [FIELD_FILE [ENUM_FILE [FIELD ...]]]\n", argv[0]);
    return 0;
  }
  const std::string fieldPath = argc > 1 ? argv[1] : orvo::tool::findBundledFile(kFieldFile);
  const std::string enumPath = argc > 2 ? argv[2] : orvo::tool::findBundledFile(kEnumFile);

  ODMFieldDictionary& dictionary = ODMFieldDictionary::create();
  auto& concrete = static_cast<ODMFieldDictionaryInt&>(dictionary);
  try {
    dictionary.readODMFieldDictionary(ORVO_String(fieldPath.c_str()));
    dictionary.readODMEnumTypeDef(ORVO_String(enumPath.c_str()));
  } catch (const orvo::common::Exception& e) {
    printFailure(e.what());
    dictionary.destroy();
    return 1;
  }

  printSummary(concrete, fieldPath, enumPath);
  std::vector<std::string> fields;
  for (int i = 3; i < argc; ++i) fields.push_back(argv[i]);
  if (fields.empty()) fields = sampleFields(concrete);
  if (!fields.empty()) std::printf("lookups\n");
  for (const std::string& field : fields) lookUp(dictionary, field.c_str());
  dictionary.destroy();
  return 0;
}
