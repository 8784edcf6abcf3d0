// Whole messages to and from the JSON form. One table per message class
// names its parts, where they sit in the class record, and the flag that
// says whether each travels; decoding and encoding both walk that table.
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <vector>

#include "orvo/owire/owire_msg.h"
#include "tools/orvo/DataJson.h"
#include "tools/orvo/JsonRead.h"

namespace orvo {
namespace tool {
namespace {

enum class Kind { kU8, kU16, kU32, kI32, kHex, kText, kQos, kState, kPair32, kPair16, kPriority };

struct Part {
  const char* name;
  Kind kind;
  std::size_t offset;
  UInt16 flag;                  // 0: the part always travels
  const char* first = nullptr;  // member names of a two-number part
  const char* second = nullptr;
};

struct FlagName {
  UInt16 bit;
  const char* name;
};

struct ClassForm {
  UInt8 msgClass;
  const char* name;
  UInt16 keyFlag;  // 0xFFFF: always has a key; 0: never
  std::vector<Part> parts;
  std::vector<FlagName> flags;
};

#define AT(record, member) offsetof(record, member)

const std::vector<ClassForm>& classForms() {
  static const std::vector<ClassForm> forms = {
      {OWIRE_MC_REQUEST,
       "request",
       0xFFFF,
       {{"priority", Kind::kPriority, AT(OwireRequestMsg, priorityClass), OWIRE_RQMF_HAS_PRIORITY,
         "class", "count"},
        {"qos", Kind::kQos, AT(OwireRequestMsg, qos), OWIRE_RQMF_HAS_QOS},
        {"worstQos", Kind::kQos, AT(OwireRequestMsg, worstQos), OWIRE_RQMF_HAS_WORST_QOS},
        {"header", Kind::kHex, AT(OwireRequestMsg, header), OWIRE_RQMF_HAS_HEADER}},
       {{OWIRE_RQMF_STREAMING, "streaming"},
        {OWIRE_RQMF_INDICATION_01, "indication01"},
        {OWIRE_RQMF_INDICATION_02, "indication02"},
        {OWIRE_RQMF_NO_REFRESH, "noRefresh"},
        {OWIRE_RQMF_INDICATION_80, "indication80"},
        {OWIRE_RQMF_PAUSE, "pause"},
        {OWIRE_RQMF_INDICATION_04, "indication04"},
        {OWIRE_RQMF_INDICATION_08, "indication08"}}},
      {OWIRE_MC_REFRESH,
       "refresh",
       OWIRE_RFMF_HAS_MSG_KEY,
       {{"seqNum", Kind::kU32, AT(OwireRefreshMsg, seqNum), OWIRE_RFMF_HAS_SEQ_NUM},
        {"state", Kind::kState, AT(OwireRefreshMsg, state), 0},
        {"groupId", Kind::kHex, AT(OwireRefreshMsg, groupId), 0},
        {"permData", Kind::kHex, AT(OwireRefreshMsg, permissionData), OWIRE_RFMF_HAS_PERM_DATA},
        {"publisher", Kind::kPair32, AT(OwireRefreshMsg, publisherAddress),
         OWIRE_RFMF_HAS_PUBLISHER_INFO, "address", "id"},
        {"qos", Kind::kQos, AT(OwireRefreshMsg, qos), OWIRE_RFMF_HAS_QOS},
        {"header", Kind::kHex, AT(OwireRefreshMsg, header), OWIRE_RFMF_HAS_HEADER}},
       {{OWIRE_RFMF_SOLICITED, "solicited"},
        {OWIRE_RFMF_REFRESH_COMPLETE, "refreshComplete"},
        {OWIRE_RFMF_CLEAR_CACHE, "clearCache"},
        {OWIRE_RFMF_DO_NOT_CACHE, "doNotCache"},
        {OWIRE_RFMF_PRIVATE_STREAM, "privateStream"}}},
      {OWIRE_MC_STATUS,
       "status",
       OWIRE_STMF_HAS_MSG_KEY,
       {{"state", Kind::kState, AT(OwireStatusMsg, state), OWIRE_STMF_HAS_STATE},
        {"groupId", Kind::kHex, AT(OwireStatusMsg, groupId), OWIRE_STMF_HAS_GROUP_ID},
        {"permData", Kind::kHex, AT(OwireStatusMsg, permissionData), OWIRE_STMF_HAS_PERM_DATA},
        {"publisher", Kind::kPair32, AT(OwireStatusMsg, publisherAddress),
         OWIRE_STMF_HAS_PUBLISHER_INFO, "address", "id"},
        {"header", Kind::kHex, AT(OwireStatusMsg, header), OWIRE_STMF_HAS_HEADER}},
       {{OWIRE_STMF_CLEAR_CACHE, "clearCache"}, {OWIRE_STMF_PRIVATE_STREAM, "privateStream"}}},
      {OWIRE_MC_UPDATE,
       "update",
       OWIRE_UPMF_HAS_MSG_KEY,
       {{"updateType", Kind::kU8, AT(OwireUpdateMsg, updateType), 0},
        {"seqNum", Kind::kU32, AT(OwireUpdateMsg, seqNum), OWIRE_UPMF_HAS_SEQ_NUM},
        {"conflation", Kind::kPair16, AT(OwireUpdateMsg, conflationCount), OWIRE_UPMF_HAS_CONF_INFO,
         "count", "time"},
        {"permData", Kind::kHex, AT(OwireUpdateMsg, permissionData), OWIRE_UPMF_HAS_PERM_DATA},
        {"publisher", Kind::kPair32, AT(OwireUpdateMsg, publisherAddress),
         OWIRE_UPMF_HAS_PUBLISHER_INFO, "address", "id"},
        {"header", Kind::kHex, AT(OwireUpdateMsg, header), OWIRE_UPMF_HAS_HEADER}},
       {{OWIRE_UPMF_DO_NOT_CACHE, "doNotCache"},
        {OWIRE_UPMF_DO_NOT_CONFLATE, "doNotConflate"},
        {OWIRE_UPMF_DO_NOT_RIPPLE, "doNotRipple"}}},
      {OWIRE_MC_CLOSE,
       "close",
       0,
       {{"header", Kind::kHex, AT(OwireCloseMsg, header), OWIRE_CLMF_HAS_HEADER}},
       {}},
      {OWIRE_MC_ACK,
       "ack",
       OWIRE_AKMF_HAS_MSG_KEY,
       {{"ackId", Kind::kU32, AT(OwireAckMsg, ackId), 0},
        {"nakCode", Kind::kU8, AT(OwireAckMsg, nakCode), OWIRE_AKMF_HAS_NAK_CODE},
        {"seqNum", Kind::kU32, AT(OwireAckMsg, seqNum), OWIRE_AKMF_HAS_SEQ_NUM},
        {"text", Kind::kText, AT(OwireAckMsg, text), OWIRE_AKMF_HAS_TEXT},
        {"header", Kind::kHex, AT(OwireAckMsg, header), OWIRE_AKMF_HAS_HEADER}},
       {}},
      {OWIRE_MC_GENERIC,
       "generic",
       OWIRE_GNMF_HAS_MSG_KEY,
       {{"seqNum", Kind::kU32, AT(OwireGenericMsg, seqNum), OWIRE_GNMF_HAS_SEQ_NUM},
        {"secondarySeqNum", Kind::kU32, AT(OwireGenericMsg, secondarySeqNum),
         OWIRE_GNMF_HAS_SECONDARY_SEQ_NUM},
        {"permData", Kind::kHex, AT(OwireGenericMsg, permissionData), OWIRE_GNMF_HAS_PERM_DATA},
        {"header", Kind::kHex, AT(OwireGenericMsg, header), OWIRE_GNMF_HAS_HEADER}},
       {{OWIRE_GNMF_MESSAGE_COMPLETE, "messageComplete"}}},
      {OWIRE_MC_POST,
       "post",
       OWIRE_PSMF_HAS_MSG_KEY,
       {{"partNum", Kind::kU16, AT(OwirePostMsg, partNum), OWIRE_PSMF_HAS_PART_NUM},
        {"postUserRights", Kind::kU16, AT(OwirePostMsg, postUserRights),
         OWIRE_PSMF_HAS_POST_USER_RIGHTS},
        {"seqNum", Kind::kU32, AT(OwirePostMsg, seqNum), OWIRE_PSMF_HAS_SEQ_NUM},
        {"postId", Kind::kU32, AT(OwirePostMsg, postId), OWIRE_PSMF_HAS_POST_ID},
        {"publisher", Kind::kPair32, AT(OwirePostMsg, publisherAddress), 0, "address", "id"},
        {"permData", Kind::kHex, AT(OwirePostMsg, permissionData), OWIRE_PSMF_HAS_PERM_DATA},
        {"header", Kind::kHex, AT(OwirePostMsg, header), OWIRE_PSMF_HAS_HEADER}},
       {{OWIRE_PSMF_POST_COMPLETE, "postComplete"}, {OWIRE_PSMF_ACK, "ack"}}},
  };
  return forms;
}

#undef AT

const ClassForm* formOf(UInt8 msgClass) {
  for (const ClassForm& form : classForms()) {
    if (form.msgClass == msgClass) return &form;
  }
  return nullptr;
}

template <class T>
T& field(OwireMsg& msg, std::size_t offset) {
  return *reinterpret_cast<T*>(reinterpret_cast<char*>(&msg) + offset);
}
template <class T>
const T& field(const OwireMsg& msg, std::size_t offset) {
  return *reinterpret_cast<const T*>(reinterpret_cast<const char*>(&msg) + offset);
}

Json qosJson(const OwireQos& q) {
  Json out{{"timeliness", q.timeliness}, {"rate", q.rate}};
  if (q.qosBits) out["bits"] = q.qosBits;
  if (q.timeInfo) out["timeInfo"] = q.timeInfo;
  if (q.rateInfo) out["rateInfo"] = q.rateInfo;
  return out;
}

OwireQos qosFrom(const Json& j, const std::string& path) {
  if (!j.is_object()) bad(path, "an object is expected");
  OwireQos q{};
  q.timeliness = number<UInt8>(j.value("timeliness", Json(0)), path + ".timeliness");
  q.rate = number<UInt8>(j.value("rate", Json(0)), path + ".rate");
  q.qosBits = number<UInt8>(j.value("bits", Json(0)), path + ".bits");
  q.timeInfo = number<UInt16>(j.value("timeInfo", Json(0)), path + ".timeInfo");
  q.rateInfo = number<UInt16>(j.value("rateInfo", Json(0)), path + ".rateInfo");
  return q;
}

Json partJson(const OwireMsg& msg, const Part& part) {
  switch (part.kind) {
    case Kind::kU8:
      return field<UInt8>(msg, part.offset);
    case Kind::kU16:
      return field<UInt16>(msg, part.offset);
    case Kind::kU32:
      return field<UInt32>(msg, part.offset);
    case Kind::kI32:
      return field<Int32>(msg, part.offset);
    case Kind::kHex: {
      const OwfBuffer& b = field<OwfBuffer>(msg, part.offset);
      return toHex(b.data, b.length);
    }
    case Kind::kText: {
      const OwfBuffer& b = field<OwfBuffer>(msg, part.offset);
      return decodeData(b, 16, FieldNames());
    }
    case Kind::kQos:
      return qosJson(field<OwireQos>(msg, part.offset));
    case Kind::kState: {
      const OwireState& s = field<OwireState>(msg, part.offset);
      Json out{{"stream", s.streamState}, {"data", s.dataState}, {"code", s.statusCode}};
      if (s.text.length) out["text"] = decodeData(s.text, 16, FieldNames());
      return out;
    }
    case Kind::kPair32:
      return Json{{part.first, field<UInt32>(msg, part.offset)},
                  {part.second, field<UInt32>(msg, part.offset + sizeof(UInt32))}};
    case Kind::kPair16:
      return Json{{part.first, field<UInt16>(msg, part.offset)},
                  {part.second, field<UInt16>(msg, part.offset + sizeof(UInt16))}};
    case Kind::kPriority:
      return Json{{part.first, field<UInt8>(msg, part.offset)},
                  {part.second, field<UInt16>(msg, offsetof(OwireRequestMsg, priorityCount))}};
  }
  return Json();
}

// Bytes a part points at; kept alive until the message is encoded.
using Storage = std::vector<std::unique_ptr<std::string>>;

OwfBuffer keep(Storage& storage, std::string bytes) {
  storage.emplace_back(new std::string(std::move(bytes)));
  std::string& s = *storage.back();
  return OwfBuffer{static_cast<UInt32>(s.size()), s.empty() ? nullptr : s.data()};
}

void partFrom(const Json& j, const Part& part, OwireMsg& msg, Storage& storage,
              const std::string& path) {
  switch (part.kind) {
    case Kind::kU8:
      field<UInt8>(msg, part.offset) = number<UInt8>(j, path);
      return;
    case Kind::kU16:
      field<UInt16>(msg, part.offset) = number<UInt16>(j, path);
      return;
    case Kind::kU32:
      field<UInt32>(msg, part.offset) = number<UInt32>(j, path);
      return;
    case Kind::kI32:
      field<Int32>(msg, part.offset) = number<Int32>(j, path);
      return;
    case Kind::kHex:
      if (!j.is_string()) bad(path, "hex text is expected");
      field<OwfBuffer>(msg, part.offset) = keep(storage, fromHex(j.get<std::string>(), path));
      return;
    case Kind::kText:
      field<OwfBuffer>(msg, part.offset) = keep(storage, bytesFrom(j, path));
      return;
    case Kind::kQos:
      field<OwireQos>(msg, part.offset) = qosFrom(j, path);
      return;
    case Kind::kState: {
      if (!j.is_object()) bad(path, "an object is expected");
      OwireState& s = field<OwireState>(msg, part.offset);
      s.streamState = number<UInt8>(j.value("stream", Json(0)), path + ".stream");
      s.dataState = number<UInt8>(j.value("data", Json(0)), path + ".data");
      s.statusCode = number<UInt8>(j.value("code", Json(0)), path + ".code");
      if (j.contains("text")) s.text = keep(storage, bytesFrom(j["text"], path + ".text"));
      return;
    }
    case Kind::kPair32:
      if (!j.is_object()) bad(path, "an object is expected");
      field<UInt32>(msg, part.offset) = number<UInt32>(j.value(part.first, Json(0)), path);
      field<UInt32>(msg, part.offset + sizeof(UInt32)) =
          number<UInt32>(j.value(part.second, Json(0)), path);
      return;
    case Kind::kPair16:
      if (!j.is_object()) bad(path, "an object is expected");
      field<UInt16>(msg, part.offset) = number<UInt16>(j.value(part.first, Json(0)), path);
      field<UInt16>(msg, part.offset + sizeof(UInt16)) =
          number<UInt16>(j.value(part.second, Json(0)), path);
      return;
    case Kind::kPriority:
      if (!j.is_object()) bad(path, "an object is expected");
      field<UInt8>(msg, part.offset) = number<UInt8>(j.value(part.first, Json(0)), path);
      field<UInt16>(msg, offsetof(OwireRequestMsg, priorityCount)) =
          number<UInt16>(j.value(part.second, Json(0)), path);
      return;
  }
}

Json keyJson(const OwireMsgKey& key, const FieldNames& names) {
  Json out = Json::object();
  UInt16 known = 0;
  auto has = [&](UInt16 bit) {
    known |= bit;
    return (key.keyFlags & bit) != 0;
  };
  if (has(OWIRE_MKF_HAS_SERVICE_ID)) out["serviceId"] = key.serviceId;
  if (has(OWIRE_MKF_HAS_NAME)) out["name"] = decodeData(key.name, 16, names);
  if (has(OWIRE_MKF_HAS_NAME_TYPE)) out["nameType"] = key.nameType;
  if (has(OWIRE_MKF_HAS_FILTER)) out["filter"] = key.filter;
  if (has(OWIRE_MKF_HAS_IDENTIFIER)) out["identifier"] = key.identifier;
  if (has(OWIRE_MKF_HAS_ATTRIB)) {
    out["attribType"] = typeName(key.attribFormat);
    out["attrib"] = decodeData(key.attrib, key.attribFormat, names);
  }
  if (key.keyFlags & ~known) out["otherKeyFlags"] = key.keyFlags & ~known;
  return out;
}

void keyFrom(const Json& j, OwireMsgKey& key, const FieldNames& names, Storage& storage,
             const std::string& path) {
  if (!j.is_object()) bad(path, "an object is expected");
  if (j.contains("serviceId")) {
    key.keyFlags |= OWIRE_MKF_HAS_SERVICE_ID;
    key.serviceId = number<UInt16>(j["serviceId"], path + ".serviceId");
  }
  if (j.contains("name")) {
    key.keyFlags |= OWIRE_MKF_HAS_NAME;
    key.name = keep(storage, bytesFrom(j["name"], path + ".name"));
  }
  if (j.contains("nameType")) {
    key.keyFlags |= OWIRE_MKF_HAS_NAME_TYPE;
    key.nameType = number<UInt8>(j["nameType"], path + ".nameType");
  }
  if (j.contains("filter")) {
    key.keyFlags |= OWIRE_MKF_HAS_FILTER;
    key.filter = number<UInt32>(j["filter"], path + ".filter");
  }
  if (j.contains("identifier")) {
    key.keyFlags |= OWIRE_MKF_HAS_IDENTIFIER;
    key.identifier = number<Int32>(j["identifier"], path + ".identifier");
  }
  if (j.contains("attrib")) {
    key.keyFlags |= OWIRE_MKF_HAS_ATTRIB;
    if (!j.contains("attribType")) bad(path, "an \"attrib\" needs its \"attribType\"");
    key.attribFormat = typeCode(j["attribType"], path + ".attribType");
    key.attrib = keep(storage, encodeData(j["attrib"], key.attribFormat, names, path + ".attrib"));
  }
  if (j.contains("otherKeyFlags")) {
    key.keyFlags |= number<UInt16>(j["otherKeyFlags"], path + ".otherKeyFlags");
  }
}

}  // namespace

Json decodeMessage(const OwfBuffer& bytes, const FieldNames& names) {
  OwfBuffer input = bytes;
  OwfDecodeIterator it;
  clearDecodeIterator(&it);
  setDecodeIteratorBuffer(&it, &input);
  OwireMsg msg;
  const int ret = owireDecodeMsg(&it, &msg);
  if (ret != OWIRE_RET_SUCCESS) {
    return Json{{"error", std::string("not a message: ") + owireRetCodeToString(ret)}};
  }
  const ClassForm* form = formOf(msg.msgBase.msgClass);
  Json out = Json::object();
  out["class"] = form != nullptr ? Json(form->name) : Json(msg.msgBase.msgClass);
  out["domain"] = msg.msgBase.modelType;
  out["streamId"] = msg.msgBase.streamId;
  UInt16 known = 0;
  Json flagNames = Json::array();
  if (form != nullptr) {
    for (const FlagName& f : form->flags) {
      known |= f.bit;
      if (msg.msgBase.flags & f.bit) flagNames.push_back(f.name);
    }
    for (const Part& part : form->parts) {
      known |= part.flag;
      if (part.flag == 0 || (msg.msgBase.flags & part.flag)) out[part.name] = partJson(msg, part);
    }
    if (form->keyFlag != 0 && form->keyFlag != 0xFFFF) known |= form->keyFlag;
  }
  if (!flagNames.empty()) out["flags"] = flagNames;
  if (msg.msgBase.flags & ~known) out["otherFlags"] = msg.msgBase.flags & ~known;
  if (const OwireMsgKey* key = owireGetMsgKey(&msg)) out["key"] = keyJson(*key, names);
  if (msg.msgBase.bodyFormat != OWIRE_BODY_FORMAT_NONE) {
    out["bodyType"] = typeName(msg.msgBase.bodyFormat);
    out["body"] = decodeData(msg.msgBase.body, msg.msgBase.bodyFormat, names);
  }
  return out;
}

std::string encodeMessage(const Json& message, const FieldNames& names, const std::string& path) {
  if (!message.is_object()) bad(path, "a message object is expected");
  const auto classIt = message.find("class");
  if (classIt == message.end()) bad(path, "member \"class\" is missing");
  const ClassForm* form = nullptr;
  for (const ClassForm& f : classForms()) {
    if (*classIt == f.name) form = &f;
  }
  if (form == nullptr) {
    bad(path + ".class", "one of request, refresh, status, update, close, ack, generic, post");
  }
  OwireMsg msg;
  std::memset(&msg, 0, sizeof msg);
  Storage storage;
  msg.msgBase.msgClass = form->msgClass;
  msg.msgBase.modelType = number<UInt8>(message.value("domain", Json(0)), path + ".domain");
  msg.msgBase.streamId = number<Int32>(message.value("streamId", Json(0)), path + ".streamId");
  for (const Part& part : form->parts) {
    const auto it = message.find(part.name);
    if (it == message.end()) {
      if (part.flag == 0 && part.kind == Kind::kState)
        bad(path, std::string("member \"") + part.name + "\" is missing");
      continue;
    }
    msg.msgBase.flags |= part.flag;
    partFrom(*it, part, msg, storage, path + "." + part.name);
  }
  if (message.contains("flags")) {
    const Json& flags = message["flags"];
    if (!flags.is_array()) bad(path + ".flags", "an array of flag names is expected");
    for (const Json& name : flags) {
      bool found = false;
      for (const FlagName& f : form->flags) {
        if (name == f.name) {
          msg.msgBase.flags |= f.bit;
          found = true;
        }
      }
      if (!found) bad(path + ".flags", "unknown flag " + name.dump() + " for a " + form->name);
    }
  }
  if (message.contains("otherFlags")) {
    msg.msgBase.flags |= number<UInt16>(message["otherFlags"], path + ".otherFlags");
  }
  if (message.contains("key")) {
    if (form->keyFlag == 0) bad(path + ".key", std::string("a ") + form->name + " has no key");
    if (form->keyFlag != 0xFFFF) msg.msgBase.flags |= form->keyFlag;
    keyFrom(message["key"], msg.msgBase.key, names, storage, path + ".key");
  }
  msg.msgBase.bodyFormat = OWIRE_BODY_FORMAT_NONE;
  if (message.contains("bodyType")) {
    msg.msgBase.bodyFormat = typeCode(message["bodyType"], path + ".bodyType");
    msg.msgBase.body = keep(storage, encodeData(message.value("body", Json()),
                                                msg.msgBase.bodyFormat, names, path + ".body"));
  } else if (message.contains("body")) {
    bad(path + ".body", "a body needs its \"bodyType\"");
  }
  for (std::size_t capacity = 256;; capacity *= 2) {
    std::string out(capacity, '\0');
    OwfBuffer buffer{static_cast<UInt32>(capacity), out.data()};
    OwfEncodeIterator it;
    clearEncodeIterator(&it);
    setEncodeIteratorBuffer(&it, &buffer);
    const int ret = owireEncodeMsg(&it, &msg);
    if (ret == OWIRE_RET_BUFFER_TOO_SMALL && capacity < (std::size_t{1} << 31)) continue;
    if (ret < 0)
      bad(path, std::string("the codec refused the message: ") + owireRetCodeToString(ret));
    out.resize(getEncodedLength(&it));
    return out;
  }
}

}  // namespace tool
}  // namespace orvo
