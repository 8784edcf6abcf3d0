#include "tools/orvo/DataJson.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "tools/orvo/JsonRead.h"

namespace orvo {
namespace tool {
namespace {

constexpr UInt8 kNoData = 128;
constexpr UInt8 kMsg = 141;
constexpr UInt8 kArray = 15;
constexpr UInt8 kFieldList = 132;
constexpr UInt8 kElementList = 133;
constexpr UInt8 kFilterList = 135;
constexpr UInt8 kVector = 136;
constexpr UInt8 kMap = 137;
constexpr UInt8 kSeries = 138;

struct TypeNameRow {
  UInt8 code;
  const char* name;
};

constexpr TypeNameRow kTypeNames[] = {
    {3, "Int"},         {4, "UInt"},          {5, "Float"},       {6, "Double"},
    {8, "Real"},        {9, "Date"},          {10, "Time"},       {11, "DateTime"},
    {12, "Qos"},        {13, "State"},        {14, "Enum"},       {15, "Array"},
    {16, "Buffer"},     {17, "AsciiString"},  {18, "Utf8String"}, {19, "OmtesString"},
    {64, "Int1"},       {65, "UInt1"},        {66, "Int2"},       {67, "UInt2"},
    {68, "Int4"},       {69, "UInt4"},        {70, "Int8"},       {71, "UInt8"},
    {72, "Float4"},     {73, "Double8"},      {74, "Real4RB"},    {75, "Real8RB"},
    {76, "Date4"},      {77, "Time3"},        {78, "Time5"},      {79, "DateTime7"},
    {80, "DateTime9"},  {128, "NoData"},      {130, "Opaque"},    {131, "Xml"},
    {132, "FieldList"}, {133, "ElementList"}, {134, "AnsiPage"},  {135, "FilterList"},
    {136, "Vector"},    {137, "Map"},         {138, "Series"},    {141, "Msg"},
};

// The plain type a packed set code is read as.
UInt8 baseType(UInt8 type) {
  static constexpr UInt8 kBase[] = {3, 4, 3, 4, 3, 4, 3, 4, 5, 6, 8, 8, 9, 10, 10, 11, 11};
  return type >= 64 && type <= 80 ? kBase[type - 64] : type;
}

bool isContainer(UInt8 type) {
  return type == kArray || (type >= kFieldList && type <= kSeries && type != 134) || type == kMsg;
}

bool isByteString(UInt8 type) {
  return (type >= 16 && type <= 19) || type == 130 || type == 131 || type == 134;
}

std::string retText(int ret) { return owireRetCodeToString(ret); }

Json failure(int ret) { return Json{{"error", retText(ret)}}; }

// ---------------------------------------------------------------------------
// Small JSON readers that name the path of what is wrong.

template <class T>
T member(const Json& obj, const char* key, const std::string& path, T fallback) {
  const auto it = obj.find(key);
  return it == obj.end() ? fallback : number<T>(*it, path + "." + key);
}

const Json& required(const Json& obj, const char* key, const std::string& path) {
  const auto it = obj.find(key);
  if (it == obj.end()) bad(path, std::string("member \"") + key + "\" is missing");
  return *it;
}

const Json& arrayMember(const Json& obj, const char* key, const std::string& path) {
  const Json& j = required(obj, key, path);
  if (!j.is_array()) bad(path + "." + key, "an array is expected");
  return j;
}

void requireObject(const Json& j, const std::string& path) {
  if (!j.is_object()) bad(path, "an object is expected");
}

// Well-formed UTF-8 as JSON requires it: no overlong forms, no surrogates,
// nothing above U+10FFFF; NUL is refused too, to keep texts printable.
bool isValidUtf8Text(const char* text, std::size_t n) {
  const auto* p = reinterpret_cast<const unsigned char*>(text);
  for (std::size_t i = 0; i < n;) {
    const unsigned char c = p[i];
    if (c == 0) return false;
    if (c < 0x80) {
      ++i;
      continue;
    }
    std::size_t more;
    unsigned char low = 0x80, high = 0xBF;  // bounds of the second byte
    if (c >= 0xC2 && c <= 0xDF) {
      more = 1;
    } else if (c >= 0xE0 && c <= 0xEF) {
      more = 2;
      if (c == 0xE0) low = 0xA0;
      if (c == 0xED) high = 0x9F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      more = 3;
      if (c == 0xF0) low = 0x90;
      if (c == 0xF4) high = 0x8F;
    } else {
      return false;
    }
    if (n - i <= more) return false;
    if (p[i + 1] < low || p[i + 1] > high) return false;
    for (std::size_t k = 2; k <= more; ++k) {
      if ((p[i + k] & 0xC0) != 0x80) return false;
    }
    i += more + 1;
  }
  return true;
}

// Byte strings are JSON text when they are valid UTF-8 without NUL, else hex.
Json bytesJson(const char* data, std::size_t length) {
  if (isValidUtf8Text(data, length)) return Json(std::string(data, length));
  return Json{{"hex", toHex(data, length)}};
}

OwfBuffer view(const std::string& s) {
  return OwfBuffer{static_cast<UInt32>(s.size()), const_cast<char*>(s.data())};
}

void startDecoder(OwfDecodeIterator* it, OwfBuffer* bytes) {
  clearDecodeIterator(it);
  setDecodeIteratorBuffer(it, bytes);
}

// ---------------------------------------------------------------------------
// Primitive values.

// The codec's text form when it reads back to exactly the same record.
template <class Record, class Parse>
Json textIfExact(const Record& record, UInt8 type, Parse parse) {
  char text[128];
  OwfBuffer out{sizeof text, text};
  if (owirePrimitiveToString(&record, type, &out) != OWIRE_RET_SUCCESS) return Json();
  Record back{};
  OwfBuffer in{out.length, text};
  if (parse(&back, &in) != OWIRE_RET_SUCCESS || std::memcmp(&back, &record, sizeof record) != 0) {
    return Json();
  }
  return Json(std::string(text, out.length));
}

Json realJson(const OwfReal& real) {
  OwfReal canonical{};
  canonical.hint = real.hint;
  // Infinity and not-a-number carry no value on the wire.
  canonical.value = real.hint >= 33 ? 0 : real.value;
  Json text = textIfExact(canonical, 8, owireNumericStringToReal);
  if (!text.is_null()) return text;
  return Json{{"mantissa", real.value}, {"hint", real.hint}};
}

Json dateJson(const OwfDate& date) {
  Json text = textIfExact(date, 9, owireDateStringToDate);
  if (!text.is_null()) return text;
  return Json{{"day", date.day}, {"month", date.month}, {"year", date.year}};
}

Json timeJson(const OwfTime& time) {
  OwfTime canonical{};
  canonical.hour = time.hour;
  canonical.minute = time.minute;
  canonical.second = time.second;
  canonical.millisecond = time.millisecond;
  Json text = textIfExact(canonical, 10, owireTimeStringToTime);
  if (!text.is_null()) return text;
  return Json{{"hour", time.hour},
              {"minute", time.minute},
              {"second", time.second},
              {"millisecond", time.millisecond}};
}

Json floatingJson(double value) {
  if (std::isnan(value)) return Json("NaN");
  if (std::isinf(value)) return Json(value > 0 ? "Inf" : "-Inf");
  return Json(value);
}

Json decodePrimitive(OwfDecodeIterator* it, UInt8 type) {
  int ret;
  Json out;
  switch (type) {
    case 3: {
      Int64 v;
      if ((ret = owireDecodeInt(it, &v)) == OWIRE_RET_SUCCESS) out = v;
      break;
    }
    case 4: {
      UInt64 v;
      if ((ret = owireDecodeUInt(it, &v)) == OWIRE_RET_SUCCESS) out = v;
      break;
    }
    case 5: {
      float v;
      if ((ret = owireDecodeFloat(it, &v)) == OWIRE_RET_SUCCESS) out = floatingJson(v);
      break;
    }
    case 6: {
      double v;
      if ((ret = owireDecodeDouble(it, &v)) == OWIRE_RET_SUCCESS) out = floatingJson(v);
      break;
    }
    case 8: {
      OwfReal v;
      if ((ret = owireDecodeReal(it, &v)) == OWIRE_RET_SUCCESS) out = realJson(v);
      break;
    }
    case 9: {
      OwfDate v;
      if ((ret = owireDecodeDate(it, &v)) == OWIRE_RET_SUCCESS) out = dateJson(v);
      break;
    }
    case 10: {
      OwfTime v;
      if ((ret = owireDecodeTime(it, &v)) == OWIRE_RET_SUCCESS) out = timeJson(v);
      break;
    }
    case 11: {
      OwfDateTime v;
      if ((ret = owireDecodeDateTime(it, &v)) == OWIRE_RET_SUCCESS) {
        out = Json{{"date", dateJson(v.date)}, {"time", timeJson(v.time)}};
      }
      break;
    }
    case 12: {
      OwfQos v;
      if ((ret = owireDecodeQos(it, &v)) == OWIRE_RET_SUCCESS) {
        out = Json{{"timeliness", v.timeliness}, {"rate", v.rate}};
        if (v.timeInfo) out["timeInfo"] = v.timeInfo;
        if (v.rateInfo) out["rateInfo"] = v.rateInfo;
        if (v.flags) out["flags"] = v.flags;
      }
      break;
    }
    case 13: {
      OwfState v;
      if ((ret = owireDecodeState(it, &v)) == OWIRE_RET_SUCCESS) {
        out = Json{{"stream", v.streamState}, {"data", v.dataState}, {"code", v.code}};
        if (v.text.length) out["text"] = bytesJson(v.text.data, v.text.length);
      }
      break;
    }
    case 14: {
      UInt16 v;
      if ((ret = owireDecodeEnum(it, &v)) == OWIRE_RET_SUCCESS) out = v;
      break;
    }
    default: {
      if (!isByteString(type)) return Json{{"error", "unknown data type " + std::to_string(type)}};
      OwfBuffer v;
      if ((ret = owireDecodeBuffer(it, &v)) == OWIRE_RET_SUCCESS) out = bytesJson(v.data, v.length);
      break;
    }
  }
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  return out;
}

// A primitive value built from its JSON form, with the storage its record
// points at. Null JSON is blank: the codec writes blank for a null value.
class PrimitiveValue {
 public:
  PrimitiveValue(const Json& j, UInt8 type, const std::string& path) : _type(type) {
    std::memset(&_v, 0, sizeof _v);
    if (j.is_null()) {
      _blank = true;
      return;
    }
    parse(j, path);
  }
  PrimitiveValue(const PrimitiveValue&) = delete;
  PrimitiveValue& operator=(const PrimitiveValue&) = delete;

  const void* pointer() {
    if (_blank) return nullptr;
    if (isByteString(_type)) _v.buffer = view(_bytes);
    if (_type == 13) _v.state.text = view(_bytes);
    return &_v;
  }

 private:
  void parse(const Json& j, const std::string& path) {
    switch (_type) {
      case 3:
        _v.i = number<Int64>(j, path);
        return;
      case 4:
        _v.u = number<UInt64>(j, path);
        return;
      case 5:
        _v.f = static_cast<float>(floating(j, path));
        return;
      case 6:
        _v.d = floating(j, path);
        return;
      case 8:
        _v.real = real(j, path);
        return;
      case 9:
        _v.date = date(j, path);
        return;
      case 10:
        _v.time = time(j, path);
        return;
      case 11:
        requireObject(j, path);
        _v.dateTime.date = date(required(j, "date", path), path + ".date");
        _v.dateTime.time = time(required(j, "time", path), path + ".time");
        return;
      case 12:
        requireObject(j, path);
        _v.qos.timeliness = member<UInt8>(j, "timeliness", path, 0);
        _v.qos.rate = member<UInt8>(j, "rate", path, 0);
        _v.qos.timeInfo = member<UInt16>(j, "timeInfo", path, 0);
        _v.qos.rateInfo = member<UInt16>(j, "rateInfo", path, 0);
        _v.qos.flags = member<UInt8>(j, "flags", path, 0);
        return;
      case 13:
        requireObject(j, path);
        _v.state.streamState = member<UInt8>(j, "stream", path, 0);
        _v.state.dataState = member<UInt8>(j, "data", path, 0);
        _v.state.code = member<UInt8>(j, "code", path, 0);
        if (j.contains("text")) _bytes = bytesFrom(j["text"], path + ".text");
        return;
      case 14:
        _v.e = number<UInt16>(j, path);
        return;
      default:
        if (!isByteString(_type)) bad(path, "not a primitive type: " + typeName(_type));
        _bytes = bytesFrom(j, path);
        return;
    }
  }

  static double floating(const Json& j, const std::string& path) {
    if (j.is_number()) return j.get<double>();
    if (j.is_string()) {
      const std::string s = j.get<std::string>();
      if (s == "NaN") return std::nan("");
      if (s == "Inf") return HUGE_VAL;
      if (s == "-Inf") return -HUGE_VAL;
    }
    bad(path, "a number, \"NaN\", \"Inf\" or \"-Inf\" is expected");
  }

  template <class Record, class Parse>
  static Record fromText(const Json& j, Parse parse, const std::string& path, const char* what) {
    Record r{};
    const std::string s = j.get<std::string>();
    OwfBuffer in = view(s);
    const int ret = parse(&r, &in);
    if (ret != OWIRE_RET_SUCCESS) bad(path, std::string("not a ") + what + ": \"" + s + "\"");
    return r;
  }

  static OwfReal real(const Json& j, const std::string& path) {
    if (j.is_string()) return fromText<OwfReal>(j, owireNumericStringToReal, path, "real");
    if (j.is_number())
      return fromText<OwfReal>(Json(j.dump()), owireNumericStringToReal, path, "real");
    requireObject(j, path);
    OwfReal r{};
    r.value = number<Int64>(required(j, "mantissa", path), path + ".mantissa");
    r.hint = number<UInt8>(required(j, "hint", path), path + ".hint");
    return r;
  }

  static OwfDate date(const Json& j, const std::string& path) {
    if (j.is_string()) return fromText<OwfDate>(j, owireDateStringToDate, path, "date");
    requireObject(j, path);
    return OwfDate{member<UInt8>(j, "day", path, 0), member<UInt8>(j, "month", path, 0),
                   member<UInt16>(j, "year", path, 0)};
  }

  static OwfTime time(const Json& j, const std::string& path) {
    if (j.is_string()) return fromText<OwfTime>(j, owireTimeStringToTime, path, "time");
    requireObject(j, path);
    return OwfTime{member<UInt8>(j, "hour", path, 0), member<UInt8>(j, "minute", path, 0),
                   member<UInt8>(j, "second", path, 0), member<UInt16>(j, "millisecond", path, 0)};
  }

  UInt8 _type;
  bool _blank = false;
  union {
    Int64 i;
    UInt64 u;
    float f;
    double d;
    OwfReal real;
    OwfDate date;
    OwfTime time;
    OwfDateTime dateTime;
    OwfQos qos;
    OwfState state;
    UInt16 e;
    OwfBuffer buffer;
  } _v;
  std::string _bytes;
};

// ---------------------------------------------------------------------------
// Encoding with a buffer that grows until the content fits.

template <class Body>
std::string encodeGrowing(Body body, const std::string& path) {
  for (std::size_t capacity = 256; capacity <= (std::size_t{1} << 31); capacity *= 2) {
    std::string out(capacity, '\0');
    OwfBuffer buffer{static_cast<UInt32>(capacity), out.data()};
    OwfEncodeIterator it;
    clearEncodeIterator(&it);
    setEncodeIteratorBuffer(&it, &buffer);
    const int ret = body(&it);
    if (ret == OWIRE_RET_BUFFER_TOO_SMALL) continue;
    if (ret < 0) bad(path, "the codec refused it: " + retText(ret));
    out.resize(getEncodedLength(&it));
    return out;
  }
  bad(path, "too large to encode");
}

#define ORVO_TRY(call)         \
  do {                         \
    const int ret_ = (call);   \
    if (ret_ < 0) return ret_; \
  } while (0)

std::string encodePrimitive(const Json& j, UInt8 type, const std::string& path) {
  PrimitiveValue value(j, type, path);
  return encodeGrowing(
      [&](OwfEncodeIterator* it) { return owireEncodePrimitiveType(it, type, value.pointer()); },
      path);
}

// ---------------------------------------------------------------------------
// Entry values: the JSON of an entry carries its data under "value".

// Pre-encoded bytes of an entry's value, or a primitive to hand over as a
// value record. Only list entries take a value record; the entries of the
// other containers carry bytes whatever their type.
struct EntryValue {
  std::string bytes;
  std::unique_ptr<PrimitiveValue> primitive;

  EntryValue(const Json& entry, UInt8 type, const FieldNames& names, const std::string& path,
             const SetDefinitions* sets, bool primitiveAsRecord) {
    const auto it = entry.find("value");
    if (it == entry.end()) {
      if (entry.contains("hex")) bytes = bytesFrom(entry, path);
      return;
    }
    if (isContainer(type) || type == kNoData || !primitiveAsRecord) {
      bytes = encodeData(*it, type, names, path + ".value", sets);
    } else {
      primitive.reset(new PrimitiveValue(*it, baseType(type), path + ".value"));
    }
  }
  const void* value() { return primitive ? primitive->pointer() : nullptr; }
  OwfBuffer encoded() const { return view(bytes); }
};

UInt8 actionCode(const Json& entry, const std::string& path,
                 std::initializer_list<std::pair<const char*, UInt8>> names) {
  const auto it = entry.find("action");
  if (it == entry.end()) return 1;
  if (it->is_string()) {
    for (const auto& [name, code] : names) {
      if (*it == name) return code;
    }
    bad(path + ".action", "unknown action " + it->dump());
  }
  return number<UInt8>(*it, path + ".action");
}

const char* actionName(UInt8 action, std::initializer_list<std::pair<const char*, UInt8>> names) {
  for (const auto& [name, code] : names) {
    if (code == action) return name;
  }
  return nullptr;
}

Json actionJson(UInt8 action, std::initializer_list<std::pair<const char*, UInt8>> names) {
  const char* name = actionName(action, names);
  return name != nullptr ? Json(name) : Json(action);
}

const std::initializer_list<std::pair<const char*, UInt8>> kMapActions = {
    {"update", 1}, {"add", 2}, {"delete", 3}};
const std::initializer_list<std::pair<const char*, UInt8>> kVectorActions = {
    {"update", 1}, {"set", 2}, {"clear", 3}, {"insert", 4}, {"delete", 5}};
const std::initializer_list<std::pair<const char*, UInt8>> kFilterActions = {
    {"update", 1}, {"set", 2}, {"clear", 3}};

}  // namespace

// Set definitions built from JSON, with the storage their records point at.
struct SetDefinitions {
  OwfLocalFieldSetDefDb fields{};
  OwfLocalElementSetDefDb elements{};
  std::vector<std::vector<OwfFieldSetDefEntry>> fieldRows;
  std::vector<std::vector<OwfElementSetDefEntry>> elementRows;
  std::vector<std::unique_ptr<std::string>> names;
  bool any = false;

  SetDefinitions() {
    for (auto& d : fields.definitions) d.setId = OWF_SET_DEF_FREE;
    for (auto& d : elements.definitions) d.setId = OWF_SET_DEF_FREE;
    fieldRows.resize(OWF_MAX_LOCAL_SET_DEFS);
    elementRows.resize(OWF_MAX_LOCAL_SET_DEFS);
  }

  void read(const Json& defs, UInt8 containerType, const FieldNames& fieldNames,
            const std::string& path) {
    if (!defs.is_array()) bad(path, "an array is expected");
    any = true;
    for (std::size_t k = 0; k < defs.size(); ++k) {
      const std::string at = path + "[" + std::to_string(k) + "]";
      const Json& def = defs[k];
      requireObject(def, at);
      const UInt16 setId = number<UInt16>(required(def, "setId", at), at + ".setId");
      if (setId >= OWF_MAX_LOCAL_SET_DEFS) bad(at + ".setId", "set ids run from 0 to 15");
      const Json& rows = arrayMember(def, "entries", at);
      if (rows.size() > 255) bad(at + ".entries", "at most 255 entries");
      for (std::size_t r = 0; r < rows.size(); ++r) {
        const std::string rowPath = at + ".entries[" + std::to_string(r) + "]";
        const UInt8 type = typeCode(required(rows[r], "type", rowPath), rowPath + ".type");
        if (containerType != kElementList) {
          fieldRows[setId].push_back(
              OwfFieldSetDefEntry{fieldIdOf(rows[r], fieldNames, rowPath), type});
        } else {
          names.emplace_back(
              new std::string(bytesFrom(required(rows[r], "name", rowPath), rowPath + ".name")));
          elementRows[setId].push_back(OwfElementSetDefEntry{view(*names.back()), type});
        }
      }
      if (containerType != kElementList) {
        fields.definitions[setId] =
            OwfFieldSetDef{setId, static_cast<UInt8>(rows.size()), fieldRows[setId].data()};
      } else {
        elements.definitions[setId] =
            OwfElementSetDef{setId, static_cast<UInt8>(rows.size()), elementRows[setId].data()};
      }
    }
  }

  static Int16 fieldIdOf(const Json& row, const FieldNames& fieldNames, const std::string& path) {
    if (row.contains("fid")) return number<Int16>(row["fid"], path + ".fid");
    Int32 id;
    if (row.contains("name") && row["name"].is_string() &&
        fieldNames.idOf(row["name"].get<std::string>(), &id)) {
      return static_cast<Int16>(id);
    }
    bad(path, "a \"fid\", or a \"name\" the dictionary knows, is expected");
  }
};

namespace {

// ---------------------------------------------------------------------------
// Containers: decoding.

Json fieldSetDefsJson(const OwfLocalFieldSetDefDb& db, const FieldNames& names) {
  Json out = Json::array();
  for (const OwfFieldSetDef& def : db.definitions) {
    if (def.setId == OWF_SET_DEF_FREE) continue;
    Json rows = Json::array();
    for (int k = 0; k < def.count; ++k) {
      Json row{{"fid", def.entries[k].fieldId}};
      const std::string name = names.nameOf(def.entries[k].fieldId);
      if (!name.empty()) row["name"] = name;
      row["type"] = typeName(def.entries[k].dataType);
      rows.push_back(row);
    }
    out.push_back(Json{{"setId", def.setId}, {"entries", rows}});
  }
  return out;
}

Json elementSetDefsJson(const OwfLocalElementSetDefDb& db) {
  Json out = Json::array();
  for (const OwfElementSetDef& def : db.definitions) {
    if (def.setId == OWF_SET_DEF_FREE) continue;
    Json rows = Json::array();
    for (int k = 0; k < def.count; ++k) {
      rows.push_back(Json{{"name", bytesJson(def.entries[k].name.data, def.entries[k].name.length)},
                          {"type", typeName(def.entries[k].dataType)}});
    }
    out.push_back(Json{{"setId", def.setId}, {"entries", rows}});
  }
  return out;
}

void closeEntries(Json& obj, int ret) {
  if (ret != OWIRE_RET_END_OF_CONTAINER) obj["error"] = retText(ret);
}

Json decodeFieldList(OwfDecodeIterator* it, const FieldNames& names,
                     const OwfLocalFieldSetDefDb* sets) {
  OwfFieldList list;
  int ret = owireDecodeFieldList(it, &list, sets);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj = Json::object();
  if (list.flags & OWF_FLF_HAS_FIELD_LIST_INFO) {
    obj["info"] = Json{{"dictionaryId", list.dictionaryId}, {"fieldListNum", list.fieldListNum}};
  }
  if (list.flags & OWF_FLF_HAS_SET_ID) obj["setId"] = list.setId;
  if (list.flags & OWF_FLF_HAS_SET_DATA) obj["setEntries"] = Json::array();
  if (list.flags & OWF_FLF_HAS_STANDARD_DATA) obj["entries"] = Json::array();
  OwfFieldEntry e;
  while ((ret = owireDecodeFieldEntry(it, &e)) == OWIRE_RET_SUCCESS) {
    Json entry{{"fid", e.fieldId}};
    const std::string name = names.nameOf(e.fieldId);
    if (!name.empty()) entry["name"] = name;
    const bool setDefined = e.dataType != 0;
    const UInt8 type = setDefined ? baseType(e.dataType) : names.wireTypeOf(e.fieldId);
    if (type == 0) {
      entry["hex"] = toHex(e.encData.data, e.encData.length);
    } else {
      if (!setDefined) entry["type"] = typeName(type);
      entry["value"] = decodeData(e.encData, type, names);
      if (type == 14 && entry["value"].is_number()) {
        const std::string display = names.displayOf(e.fieldId, entry["value"].get<Int64>());
        if (!display.empty()) entry["display"] = display;
      }
    }
    obj[setDefined ? "setEntries" : "entries"].push_back(entry);
  }
  closeEntries(obj, ret);
  return obj;
}

Json decodeElementList(OwfDecodeIterator* it, const FieldNames& names,
                       const OwfLocalElementSetDefDb* sets) {
  OwfElementList list;
  int ret = owireDecodeElementList(it, &list, sets);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj = Json::object();
  if (list.flags & OWF_ELF_HAS_ELEMENT_LIST_INFO)
    obj["info"] = {{"elementListNum", list.elementListNum}};
  if (list.flags & OWF_ELF_HAS_SET_ID) obj["setId"] = list.setId;
  if (list.flags & OWF_ELF_HAS_SET_DATA) obj["setEntries"] = Json::array();
  if (list.flags & OWF_ELF_HAS_STANDARD_DATA) obj["entries"] = Json::array();
  const UInt16 setRows = it->levels[it->decodingLevel].setCount;
  OwfElementEntry e;
  for (int index = 0; (ret = owireDecodeElementEntry(it, &e)) == OWIRE_RET_SUCCESS; ++index) {
    const bool setDefined = index < setRows;
    const UInt8 type = baseType(e.dataType);
    Json entry{{"name", bytesJson(e.name.data, e.name.length)}};
    if (!setDefined) entry["type"] = typeName(type);
    entry["value"] = decodeData(e.encData, type, names);
    obj[setDefined ? "setEntries" : "entries"].push_back(entry);
  }
  closeEntries(obj, ret);
  return obj;
}

Json decodeFilterList(OwfDecodeIterator* it, const FieldNames& names) {
  OwfFilterList list;
  int ret = owireDecodeFilterList(it, &list);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj{{"containerType", typeName(list.containerType)}};
  if (list.flags & OWF_FTF_HAS_TOTAL_COUNT_HINT) obj["countHint"] = list.totalCountHint;
  if (list.flags & OWF_FTF_HAS_PER_ENTRY_PERM_DATA) obj["perEntryPermData"] = true;
  obj["entries"] = Json::array();
  OwfFilterEntry e;
  while ((ret = owireDecodeFilterEntry(it, &e)) == OWIRE_RET_SUCCESS) {
    Json entry{{"id", e.id}, {"action", actionJson(e.action, kFilterActions)}};
    if (e.flags & OWF_FTEF_HAS_CONTAINER_TYPE) entry["type"] = typeName(e.containerType);
    if (e.flags & OWF_FTEF_HAS_PERM_DATA)
      entry["permData"] = toHex(e.permData.data, e.permData.length);
    if (e.encData.length != 0 || e.action != 3) {
      entry["value"] = decodeData(e.encData, e.containerType, names);
    }
    obj["entries"].push_back(entry);
  }
  closeEntries(obj, ret);
  return obj;
}

Json decodeArray(OwfDecodeIterator* it, const FieldNames& names) {
  OwfArray array;
  int ret = owireDecodeArray(it, &array);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj{{"itemType", typeName(array.primitiveType)}};
  if (array.itemLength != 0) obj["itemLength"] = array.itemLength;
  obj["items"] = Json::array();
  OwfBuffer item;
  while ((ret = owireDecodeArrayEntry(it, &item)) == OWIRE_RET_SUCCESS) {
    obj["items"].push_back(decodeData(item, array.primitiveType, names));
  }
  closeEntries(obj, ret);
  return obj;
}

// What Map, Series and Vector share: set definitions, summary data and the
// count hint, read in the order they travel.
struct KeyedParts {
  static_assert(+OWF_MPF_HAS_SET_DEFS == +OWF_SEF_HAS_SET_DEFS &&
                    +OWF_SEF_HAS_SET_DEFS == +OWF_VTF_HAS_SET_DEFS &&
                    +OWF_MPF_HAS_SUMMARY_DATA == +OWF_SEF_HAS_SUMMARY_DATA &&
                    +OWF_SEF_HAS_SUMMARY_DATA == +OWF_VTF_HAS_SUMMARY_DATA,
                "keyed header flags");
  static constexpr UInt8 kHasSetDefs = OWF_MPF_HAS_SET_DEFS;
  static constexpr UInt8 kHasSummary = OWF_MPF_HAS_SUMMARY_DATA;

  std::unique_ptr<OwfLocalFieldSetDefDb> fieldSets;
  std::unique_ptr<OwfLocalElementSetDefDb> elementSets;
  std::unique_ptr<char[]> memory;

  // The set definition and summary flags are 0x01 and 0x02 in all three.
  void read(OwfDecodeIterator* it, Json& obj, UInt8 flags, UInt8 containerType,
            const OwfBuffer& summary, bool hasCountHint, UInt32 countHint,
            const FieldNames& names) {
    obj["containerType"] = typeName(containerType);
    if (flags & kHasSetDefs) readSetDefs(it, obj, containerType, names);
    if (flags & kHasSummary) {
      obj["summary"] =
          decodeData(summary, containerType, names, fieldSets.get(), elementSets.get());
    }
    if (hasCountHint) obj["countHint"] = countHint;
  }

  void readSetDefs(OwfDecodeIterator* it, Json& obj, UInt8 containerType, const FieldNames& names) {
    int ret;
    if (containerType == kElementList) {
      memory.reset(new char[OWF_ELEMENT_SET_DEF_DB_MEMORY]);
      elementSets.reset(new OwfLocalElementSetDefDb());
      elementSets->memory = OwfBuffer{OWF_ELEMENT_SET_DEF_DB_MEMORY, memory.get()};
      ret = owireDecodeLocalElementSetDefDb(it, elementSets.get());
      if (ret == OWIRE_RET_SUCCESS) obj["setDefs"] = elementSetDefsJson(*elementSets);
    } else {
      memory.reset(new char[OWF_FIELD_SET_DEF_DB_MEMORY]);
      fieldSets.reset(new OwfLocalFieldSetDefDb());
      fieldSets->memory = OwfBuffer{OWF_FIELD_SET_DEF_DB_MEMORY, memory.get()};
      ret = owireDecodeLocalFieldSetDefDb(it, fieldSets.get());
      if (ret == OWIRE_RET_SUCCESS) obj["setDefs"] = fieldSetDefsJson(*fieldSets, names);
    }
    if (ret != OWIRE_RET_SUCCESS) {
      obj["setDefs"] = failure(ret);
      fieldSets.reset();
      elementSets.reset();
    }
  }

  Json payload(const OwfBuffer& bytes, UInt8 type, const FieldNames& names) const {
    return decodeData(bytes, type, names, fieldSets.get(), elementSets.get());
  }
};

Json decodeMap(OwfDecodeIterator* it, const FieldNames& names) {
  OwfMap map;
  int ret = owireDecodeMap(it, &map);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj{{"keyType", typeName(map.keyPrimitiveType)}};
  if (map.flags & OWF_MPF_HAS_KEY_FIELD_ID) obj["keyFieldId"] = map.keyFieldId;
  if (map.flags & OWF_MPF_HAS_PER_ENTRY_PERM_DATA) obj["perEntryPermData"] = true;
  KeyedParts parts;
  parts.read(it, obj, map.flags, map.containerType, map.encSummaryData,
             map.flags & OWF_MPF_HAS_TOTAL_COUNT_HINT, map.totalCountHint, names);
  obj["entries"] = Json::array();
  OwfMapEntry e;
  while ((ret = owireDecodeMapEntry(it, &e, nullptr)) == OWIRE_RET_SUCCESS) {
    Json entry{{"action", actionJson(e.action, kMapActions)}};
    entry["key"] = decodeData(e.encKey, map.keyPrimitiveType, names);
    if (e.flags & OWF_MPEF_HAS_PERM_DATA)
      entry["permData"] = toHex(e.permData.data, e.permData.length);
    if (e.encData.length != 0 || e.action != 3) {
      entry["value"] = parts.payload(e.encData, map.containerType, names);
    }
    obj["entries"].push_back(entry);
  }
  closeEntries(obj, ret);
  return obj;
}

Json decodeSeries(OwfDecodeIterator* it, const FieldNames& names) {
  OwfSeries series;
  int ret = owireDecodeSeries(it, &series);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj = Json::object();
  KeyedParts parts;
  parts.read(it, obj, series.flags, series.containerType, series.encSummaryData,
             series.flags & OWF_SEF_HAS_TOTAL_COUNT_HINT, series.totalCountHint, names);
  obj["entries"] = Json::array();
  OwfSeriesEntry e;
  while ((ret = owireDecodeSeriesEntry(it, &e)) == OWIRE_RET_SUCCESS) {
    obj["entries"].push_back(
        Json{{"value", parts.payload(e.encData, series.containerType, names)}});
  }
  closeEntries(obj, ret);
  return obj;
}

Json decodeVector(OwfDecodeIterator* it, const FieldNames& names) {
  OwfVector vector;
  int ret = owireDecodeVector(it, &vector);
  if (ret == OWIRE_RET_BLANK_DATA) return Json();
  if (ret != OWIRE_RET_SUCCESS) return failure(ret);
  Json obj = Json::object();
  if (vector.flags & OWF_VTF_HAS_PER_ENTRY_PERM_DATA) obj["perEntryPermData"] = true;
  if (vector.flags & OWF_VTF_SUPPORTS_SORTING) obj["sortable"] = true;
  KeyedParts parts;
  parts.read(it, obj, vector.flags, vector.containerType, vector.encSummaryData,
             vector.flags & OWF_VTF_HAS_TOTAL_COUNT_HINT, vector.totalCountHint, names);
  obj["entries"] = Json::array();
  OwfVectorEntry e;
  while ((ret = owireDecodeVectorEntry(it, &e)) == OWIRE_RET_SUCCESS) {
    Json entry{{"index", e.index}, {"action", actionJson(e.action, kVectorActions)}};
    if (e.flags & OWF_VTEF_HAS_PERM_DATA)
      entry["permData"] = toHex(e.permData.data, e.permData.length);
    if (e.encData.length != 0 || (e.action != 3 && e.action != 5)) {
      entry["value"] = parts.payload(e.encData, vector.containerType, names);
    }
    obj["entries"].push_back(entry);
  }
  closeEntries(obj, ret);
  return obj;
}

// ---------------------------------------------------------------------------
// Containers: encoding. Nested values are encoded first, each into bytes of
// its own, and handed to the codec as pre-encoded content.

UInt16 listFlag(const Json& obj, const char* key, UInt16 flag) {
  return obj.contains(key) ? flag : 0;
}

template <class Entry, class Fill>
std::vector<std::unique_ptr<EntryValue>> entryValues(const Json& rows, const std::string& path,
                                                     Fill typeOf, const FieldNames& names,
                                                     std::vector<Entry>* records,
                                                     bool primitiveAsRecord = true) {
  std::vector<std::unique_ptr<EntryValue>> values;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const std::string at = path + "[" + std::to_string(k) + "]";
    requireObject(rows[k], at);
    Entry record{};
    const UInt8 type = typeOf(rows[k], at, &record);
    values.emplace_back(new EntryValue(rows[k], type, names, at, nullptr, primitiveAsRecord));
    record.encData = values.back()->encoded();
    records->push_back(record);
  }
  return values;
}

std::string encodeFieldList(const Json& obj, const FieldNames& names, const std::string& path,
                            const SetDefinitions* sets) {
  requireObject(obj, path);
  OwfFieldList list{};
  list.flags = static_cast<UInt8>(listFlag(obj, "info", OWF_FLF_HAS_FIELD_LIST_INFO) |
                                  listFlag(obj, "setId", OWF_FLF_HAS_SET_ID) |
                                  listFlag(obj, "setEntries", OWF_FLF_HAS_SET_DATA) |
                                  listFlag(obj, "entries", OWF_FLF_HAS_STANDARD_DATA));
  if (obj.contains("info")) {
    list.dictionaryId = member<Int16>(obj["info"], "dictionaryId", path + ".info", 0);
    list.fieldListNum = member<Int16>(obj["info"], "fieldListNum", path + ".info", 0);
  }
  list.setId = member<UInt16>(obj, "setId", path, 0);
  const OwfFieldSetDef* def = nullptr;
  if (obj.contains("setEntries")) {
    if (sets == nullptr || list.setId >= OWF_MAX_LOCAL_SET_DEFS ||
        sets->fields.definitions[list.setId].setId == OWF_SET_DEF_FREE) {
      bad(path + ".setId", "no set definition " + std::to_string(list.setId) + " is in force");
    }
    def = &sets->fields.definitions[list.setId];
  }
  std::vector<OwfFieldEntry> setRecords, records;
  auto setValues = entryValues<OwfFieldEntry>(
      obj.value("setEntries", Json::array()), path + ".setEntries",
      [&](const Json&, const std::string& at, OwfFieldEntry* e) -> UInt8 {
        const std::size_t index = setRecords.size();
        if (index >= def->count) bad(at, "more entries than the set definition has");
        e->fieldId = def->entries[index].fieldId;
        e->dataType = baseType(def->entries[index].dataType);
        return e->dataType;
      },
      names, &setRecords);
  auto values = entryValues<OwfFieldEntry>(
      obj.value("entries", Json::array()), path + ".entries",
      [&](const Json& row, const std::string& at, OwfFieldEntry* e) -> UInt8 {
        e->fieldId = SetDefinitions::fieldIdOf(row, names, at);
        UInt8 type = row.contains("type") ? typeCode(row["type"], at + ".type")
                                          : names.wireTypeOf(e->fieldId);
        if (type == 0 && !row.contains("hex")) {
          bad(at, "field " + std::to_string(e->fieldId) +
                      " is not in the dictionary: give its \"type\"");
        }
        e->dataType = type;
        return type;
      },
      names, &records);
  const UInt16 setLength = def == nullptr ? 0 : 0xFFFF;
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeFieldListInit(it, &list, sets ? &sets->fields : nullptr, setLength));
        for (std::size_t k = 0; k < setRecords.size(); ++k) {
          ORVO_TRY(owireEncodeFieldEntry(it, &setRecords[k], setValues[k]->value()));
        }
        for (std::size_t k = 0; k < records.size(); ++k) {
          ORVO_TRY(owireEncodeFieldEntry(it, &records[k], values[k]->value()));
        }
        return owireEncodeFieldListComplete(it, true);
      },
      path);
}

std::string encodeElementList(const Json& obj, const FieldNames& names, const std::string& path,
                              const SetDefinitions* sets) {
  requireObject(obj, path);
  OwfElementList list{};
  list.flags = static_cast<UInt8>(listFlag(obj, "info", OWF_ELF_HAS_ELEMENT_LIST_INFO) |
                                  listFlag(obj, "setId", OWF_ELF_HAS_SET_ID) |
                                  listFlag(obj, "setEntries", OWF_ELF_HAS_SET_DATA) |
                                  listFlag(obj, "entries", OWF_ELF_HAS_STANDARD_DATA));
  if (obj.contains("info")) {
    list.elementListNum = member<Int16>(obj["info"], "elementListNum", path + ".info", 0);
  }
  list.setId = member<UInt16>(obj, "setId", path, 0);
  const OwfElementSetDef* def = nullptr;
  if (obj.contains("setEntries")) {
    if (sets == nullptr || list.setId >= OWF_MAX_LOCAL_SET_DEFS ||
        sets->elements.definitions[list.setId].setId == OWF_SET_DEF_FREE) {
      bad(path + ".setId", "no set definition " + std::to_string(list.setId) + " is in force");
    }
    def = &sets->elements.definitions[list.setId];
  }
  std::vector<std::string> entryNames;
  const Json& setRows = obj.value("setEntries", Json::array());
  const Json& rows = obj.value("entries", Json::array());
  entryNames.reserve(setRows.size() + rows.size());
  std::vector<OwfElementEntry> setRecords, records;
  auto setValues = entryValues<OwfElementEntry>(
      setRows, path + ".setEntries",
      [&](const Json&, const std::string& at, OwfElementEntry* e) -> UInt8 {
        const std::size_t index = setRecords.size();
        if (index >= def->count) bad(at, "more entries than the set definition has");
        e->name = def->entries[index].name;
        e->dataType = baseType(def->entries[index].dataType);
        return e->dataType;
      },
      names, &setRecords);
  auto values = entryValues<OwfElementEntry>(
      rows, path + ".entries",
      [&](const Json& row, const std::string& at, OwfElementEntry* e) -> UInt8 {
        entryNames.push_back(bytesFrom(required(row, "name", at), at + ".name"));
        e->name = view(entryNames.back());
        e->dataType = typeCode(required(row, "type", at), at + ".type");
        return e->dataType;
      },
      names, &records);
  const UInt16 setLength = def == nullptr ? 0 : 0xFFFF;
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(
            owireEncodeElementListInit(it, &list, sets ? &sets->elements : nullptr, setLength));
        for (std::size_t k = 0; k < setRecords.size(); ++k) {
          ORVO_TRY(owireEncodeElementEntry(it, &setRecords[k], setValues[k]->value()));
        }
        for (std::size_t k = 0; k < records.size(); ++k) {
          ORVO_TRY(owireEncodeElementEntry(it, &records[k], values[k]->value()));
        }
        return owireEncodeElementListComplete(it, true);
      },
      path);
}

std::string encodeFilterList(const Json& obj, const FieldNames& names, const std::string& path) {
  requireObject(obj, path);
  OwfFilterList list{};
  list.containerType = typeCode(required(obj, "containerType", path), path + ".containerType");
  if (obj.contains("countHint")) {
    list.flags |= OWF_FTF_HAS_TOTAL_COUNT_HINT;
    list.totalCountHint = number<UInt8>(obj["countHint"], path + ".countHint");
  }
  if (obj.value("perEntryPermData", false)) list.flags |= OWF_FTF_HAS_PER_ENTRY_PERM_DATA;
  std::vector<std::string> perms;
  const Json& rows = arrayMember(obj, "entries", path);
  perms.reserve(rows.size());
  std::vector<OwfFilterEntry> records;
  auto values = entryValues<OwfFilterEntry>(
      rows, path + ".entries",
      [&](const Json& row, const std::string& at, OwfFilterEntry* e) -> UInt8 {
        e->id = number<UInt8>(required(row, "id", at), at + ".id");
        e->action = actionCode(row, at, kFilterActions);
        e->containerType = list.containerType;
        if (row.contains("type")) {
          e->flags |= OWF_FTEF_HAS_CONTAINER_TYPE;
          e->containerType = typeCode(row["type"], at + ".type");
        }
        perms.emplace_back();
        if (row.contains("permData")) {
          e->flags |= OWF_FTEF_HAS_PERM_DATA;
          perms.back() = fromHex(row["permData"].get<std::string>(), at + ".permData");
          e->permData = view(perms.back());
        }
        return e->containerType;
      },
      names, &records, false);
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeFilterListInit(it, &list));
        for (OwfFilterEntry& e : records) ORVO_TRY(owireEncodeFilterEntry(it, &e));
        return owireEncodeFilterListComplete(it, true);
      },
      path);
}

std::string encodeArray(const Json& obj, const std::string& path) {
  requireObject(obj, path);
  OwfArray array{};
  array.primitiveType = typeCode(required(obj, "itemType", path), path + ".itemType");
  array.itemLength = member<UInt16>(obj, "itemLength", path, 0);
  const Json& items = arrayMember(obj, "items", path);
  std::vector<std::unique_ptr<PrimitiveValue>> values;
  for (std::size_t k = 0; k < items.size(); ++k) {
    values.emplace_back(new PrimitiveValue(items[k], array.primitiveType,
                                           path + ".items[" + std::to_string(k) + "]"));
  }
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeArrayInit(it, &array));
        for (auto& value : values) ORVO_TRY(owireEncodeArrayEntry(it, nullptr, value->pointer()));
        return owireEncodeArrayComplete(it, true);
      },
      path);
}

// The shared head of Map, Series and Vector: container type, set
// definitions (as travelling bytes), summary and count hint.
struct KeyedHead {
  UInt8 containerType = 0;
  SetDefinitions sets;
  std::string setDefBytes;
  std::string summary;
  bool hasSummary = false;
  bool hasCountHint = false;
  UInt32 countHint = 0;

  KeyedHead(const Json& obj, const FieldNames& names, const std::string& path) {
    requireObject(obj, path);
    containerType = typeCode(required(obj, "containerType", path), path + ".containerType");
    if (obj.contains("setDefs")) {
      sets.read(obj["setDefs"], containerType, names, path + ".setDefs");
      setDefBytes = encodeGrowing(
          [&](OwfEncodeIterator* it) {
            return containerType == kElementList
                       ? owireEncodeLocalElementSetDefDb(it, &sets.elements)
                       : owireEncodeLocalFieldSetDefDb(it, &sets.fields);
          },
          path + ".setDefs");
    }
    if (obj.contains("summary")) {
      hasSummary = true;
      summary = encodeData(obj["summary"], containerType, names, path + ".summary", setsInForce());
    }
    if (obj.contains("countHint")) {
      hasCountHint = true;
      countHint = number<UInt32>(obj["countHint"], path + ".countHint");
    }
  }
  const SetDefinitions* setsInForce() const { return sets.any ? &sets : nullptr; }
  UInt8 flags(UInt8 setDefsFlag, UInt8 summaryFlag, UInt8 countFlag) const {
    return static_cast<UInt8>((setDefBytes.empty() && !sets.any ? 0 : setDefsFlag) |
                              (hasSummary ? summaryFlag : 0) | (hasCountHint ? countFlag : 0));
  }

  // A summary that is there but blank has no bytes to hand over at Init: it
  // is written in place, empty.
  int writeBlankSummary(OwfEncodeIterator* it, int (*complete)(OwfEncodeIterator*, bool)) const {
    return hasSummary && summary.empty() ? complete(it, true) : OWIRE_RET_SUCCESS;
  }

  EntryValue* payload(const Json& row, const FieldNames& names, const std::string& at) const {
    return new EntryValue(row, containerType, names, at, setsInForce(), false);
  }
};

std::string permFrom(const Json& row, const std::string& at, UInt8* flags, UInt8 flag) {
  if (!row.contains("permData")) return std::string();
  *flags |= flag;
  return fromHex(row["permData"].get<std::string>(), at + ".permData");
}

std::string encodeMap(const Json& obj, const FieldNames& names, const std::string& path) {
  KeyedHead head(obj, names, path);
  OwfMap map{};
  map.containerType = head.containerType;
  map.keyPrimitiveType = typeCode(required(obj, "keyType", path), path + ".keyType");
  map.flags =
      head.flags(OWF_MPF_HAS_SET_DEFS, OWF_MPF_HAS_SUMMARY_DATA, OWF_MPF_HAS_TOTAL_COUNT_HINT);
  if (obj.contains("keyFieldId")) {
    map.flags |= OWF_MPF_HAS_KEY_FIELD_ID;
    map.keyFieldId = number<Int16>(obj["keyFieldId"], path + ".keyFieldId");
  }
  if (obj.value("perEntryPermData", false)) map.flags |= OWF_MPF_HAS_PER_ENTRY_PERM_DATA;
  map.encSetDefs = view(head.setDefBytes);
  map.encSummaryData = view(head.summary);
  map.totalCountHint = head.countHint;
  const Json& rows = arrayMember(obj, "entries", path);
  std::vector<OwfMapEntry> records(rows.size());
  std::vector<std::unique_ptr<EntryValue>> values;
  std::vector<std::unique_ptr<PrimitiveValue>> keys;
  std::vector<std::string> perms(rows.size());
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const std::string at = path + ".entries[" + std::to_string(k) + "]";
    requireObject(rows[k], at);
    OwfMapEntry& e = records[k];
    e.action = actionCode(rows[k], at, kMapActions);
    keys.emplace_back(
        new PrimitiveValue(required(rows[k], "key", at), map.keyPrimitiveType, at + ".key"));
    perms[k] = permFrom(rows[k], at, &e.flags, OWF_MPEF_HAS_PERM_DATA);
    e.permData = view(perms[k]);
    values.emplace_back(head.payload(rows[k], names, at));
    e.encData = values.back()->encoded();
  }
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeMapInit(it, &map, 0, 0));
        ORVO_TRY(head.writeBlankSummary(it, owireEncodeMapSummaryDataComplete));
        for (std::size_t k = 0; k < records.size(); ++k) {
          ORVO_TRY(owireEncodeMapEntry(it, &records[k], keys[k]->pointer()));
        }
        return owireEncodeMapComplete(it, true);
      },
      path);
}

std::string encodeSeries(const Json& obj, const FieldNames& names, const std::string& path) {
  KeyedHead head(obj, names, path);
  OwfSeries series{};
  series.containerType = head.containerType;
  series.flags =
      head.flags(OWF_SEF_HAS_SET_DEFS, OWF_SEF_HAS_SUMMARY_DATA, OWF_SEF_HAS_TOTAL_COUNT_HINT);
  series.encSetDefs = view(head.setDefBytes);
  series.encSummaryData = view(head.summary);
  series.totalCountHint = head.countHint;
  const Json& rows = arrayMember(obj, "entries", path);
  std::vector<OwfSeriesEntry> records(rows.size());
  std::vector<std::unique_ptr<EntryValue>> values;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const std::string at = path + ".entries[" + std::to_string(k) + "]";
    requireObject(rows[k], at);
    values.emplace_back(head.payload(rows[k], names, at));
    records[k].encData = values.back()->encoded();
  }
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeSeriesInit(it, &series, 0, 0));
        ORVO_TRY(head.writeBlankSummary(it, owireEncodeSeriesSummaryDataComplete));
        for (OwfSeriesEntry& e : records) ORVO_TRY(owireEncodeSeriesEntry(it, &e));
        return owireEncodeSeriesComplete(it, true);
      },
      path);
}

std::string encodeVector(const Json& obj, const FieldNames& names, const std::string& path) {
  KeyedHead head(obj, names, path);
  OwfVector vector{};
  vector.containerType = head.containerType;
  vector.flags =
      head.flags(OWF_VTF_HAS_SET_DEFS, OWF_VTF_HAS_SUMMARY_DATA, OWF_VTF_HAS_TOTAL_COUNT_HINT);
  if (obj.value("perEntryPermData", false)) vector.flags |= OWF_VTF_HAS_PER_ENTRY_PERM_DATA;
  if (obj.value("sortable", false)) vector.flags |= OWF_VTF_SUPPORTS_SORTING;
  vector.encSetDefs = view(head.setDefBytes);
  vector.encSummaryData = view(head.summary);
  vector.totalCountHint = head.countHint;
  const Json& rows = arrayMember(obj, "entries", path);
  std::vector<OwfVectorEntry> records(rows.size());
  std::vector<std::unique_ptr<EntryValue>> values;
  std::vector<std::string> perms(rows.size());
  for (std::size_t k = 0; k < rows.size(); ++k) {
    const std::string at = path + ".entries[" + std::to_string(k) + "]";
    requireObject(rows[k], at);
    OwfVectorEntry& e = records[k];
    e.index = number<UInt32>(required(rows[k], "index", at), at + ".index");
    e.action = actionCode(rows[k], at, kVectorActions);
    perms[k] = permFrom(rows[k], at, &e.flags, OWF_VTEF_HAS_PERM_DATA);
    e.permData = view(perms[k]);
    values.emplace_back(head.payload(rows[k], names, at));
    e.encData = values.back()->encoded();
  }
  return encodeGrowing(
      [&](OwfEncodeIterator* it) {
        ORVO_TRY(owireEncodeVectorInit(it, &vector, 0, 0));
        ORVO_TRY(head.writeBlankSummary(it, owireEncodeVectorSummaryDataComplete));
        for (OwfVectorEntry& e : records) ORVO_TRY(owireEncodeVectorEntry(it, &e));
        return owireEncodeVectorComplete(it, true);
      },
      path);
}

}  // namespace

std::string bytesFrom(const Json& j, const std::string& path) {
  if (j.is_string()) return j.get<std::string>();
  if (j.is_object() && j.contains("hex")) {
    if (!j["hex"].is_string()) bad(path + ".hex", "a string is expected");
    return fromHex(j["hex"].get<std::string>(), path + ".hex");
  }
  bad(path, "a string or {\"hex\": ...} is expected");
}

std::string typeName(UInt8 type) {
  for (const TypeNameRow& row : kTypeNames) {
    if (row.code == type) return row.name;
  }
  return std::to_string(type);
}

UInt8 typeCode(const Json& name, const std::string& path) {
  if (name.is_number_integer()) return number<UInt8>(name, path);
  if (name.is_string()) {
    for (const TypeNameRow& row : kTypeNames) {
      if (name == row.name) return row.code;
    }
  }
  bad(path, "unknown data type " + name.dump());
}

Json decodeData(const OwfBuffer& bytes, UInt8 type, const FieldNames& names,
                const OwfLocalFieldSetDefDb* fieldSets,
                const OwfLocalElementSetDefDb* elementSets) {
  OwfBuffer input = bytes;
  OwfDecodeIterator it;
  startDecoder(&it, &input);
  switch (type) {
    case kNoData:  // no content; bytes found there are kept as they are
      return bytes.length == 0 ? Json() : Json{{"hex", toHex(bytes.data, bytes.length)}};
    case kMsg:
      return bytes.length == 0 ? Json() : decodeMessage(bytes, names);
    case kFieldList:
      return decodeFieldList(&it, names, fieldSets);
    case kElementList:
      return decodeElementList(&it, names, elementSets);
    case kFilterList:
      return decodeFilterList(&it, names);
    case kArray:
      return decodeArray(&it, names);
    case kMap:
      return decodeMap(&it, names);
    case kSeries:
      return decodeSeries(&it, names);
    case kVector:
      return decodeVector(&it, names);
    default:
      return decodePrimitive(&it, baseType(type));
  }
}

std::string encodeData(const Json& value, UInt8 type, const FieldNames& names,
                       const std::string& path, const SetDefinitions* sets) {
  if (value.is_null() && isContainer(type)) return std::string();
  switch (type) {
    case kNoData:
      return value.is_null() ? std::string() : bytesFrom(value, path);
    case kMsg:
      return encodeMessage(value, names, path);
    case kFieldList:
      return encodeFieldList(value, names, path, sets);
    case kElementList:
      return encodeElementList(value, names, path, sets);
    case kFilterList:
      return encodeFilterList(value, names, path);
    case kArray:
      return encodeArray(value, path);
    case kMap:
      return encodeMap(value, names, path);
    case kSeries:
      return encodeSeries(value, names, path);
    case kVector:
      return encodeVector(value, names, path);
    default:
      return encodePrimitive(value, baseType(type), path);
  }
}

std::string toHex(const char* data, std::size_t length) {
  static const char kDigits[] = "0123456789abcdef";
  std::string out;
  out.reserve(length * 2);
  for (std::size_t k = 0; k < length; ++k) {
    const unsigned char c = static_cast<unsigned char>(data[k]);
    out += kDigits[c >> 4];
    out += kDigits[c & 15];
  }
  return out;
}

std::string fromHex(const std::string& text, const std::string& path) {
  std::string out;
  int high = -1;
  for (char c : text) {
    int digit;
    if (c >= '0' && c <= '9')
      digit = c - '0';
    else if (c >= 'a' && c <= 'f')
      digit = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
      digit = c - 'A' + 10;
    else if (c == ' ' || c == '\n' || c == '\r' || c == '\t')
      continue;
    else
      bad(path, std::string("not a hex digit: '") + c + "'");
    if (high < 0) {
      high = digit;
    } else {
      out += static_cast<char>(high << 4 | digit);
      high = -1;
    }
  }
  if (high >= 0) bad(path, "an odd number of hex digits");
  return out;
}

}  // namespace tool
}  // namespace orvo
