// Encoded data of any wire type to and from the tool's JSON form
// (docs/json-form.md). Decoding never fails: a part that does not decode
// is shown with an "error" member holding the codec's text. Encoding raises
// JsonFormError naming the JSON path of what is wrong.
#ifndef ORVO_TOOLS_ORVO_DATA_JSON_H_
#define ORVO_TOOLS_ORVO_DATA_JSON_H_

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

#include "orvo/owire/owire.h"
#include "tools/orvo/FieldNames.h"

namespace orvo {
namespace tool {

using Json = nlohmann::ordered_json;

class JsonFormError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Name of a wire data type code ("Real", "FieldList", ...), or its number
// as text when it has none.
std::string typeName(UInt8 type);
// The code of a type name or number; raises JsonFormError when unknown.
UInt8 typeCode(const Json& name, const std::string& path);

// Decodes `bytes` as a value of `type`. `fieldSets`/`elementSets` are the
// set definitions in force (those of the enclosing Map, Series or Vector).
Json decodeData(const OwfBuffer& bytes, UInt8 type, const FieldNames& names,
                const OwfLocalFieldSetDefDb* fieldSets = nullptr,
                const OwfLocalElementSetDefDb* elementSets = nullptr);

struct SetDefinitions;

// Encodes the JSON form of a value of `type` into bytes.
std::string encodeData(const Json& value, UInt8 type, const FieldNames& names,
                       const std::string& path, const SetDefinitions* sets = nullptr);

// Decodes a whole encoded message into its JSON form (defined in MsgJson.cpp;
// a message can be the payload of another).
Json decodeMessage(const OwfBuffer& bytes, const FieldNames& names);
std::string encodeMessage(const Json& message, const FieldNames& names, const std::string& path);

// Bytes as lower-case hex, and back (raising JsonFormError on bad text).
std::string toHex(const char* data, std::size_t length);
std::string fromHex(const std::string& text, const std::string& path);

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_ORVO_DATA_JSON_H_
