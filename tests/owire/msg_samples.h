// Message records for the codec tests and the fuzz seeds: for every class a
// bare record and the optional parts that can be added to it one by one, and a
// field-by-field comparison written out per class, independent of the codec's
// own layout tables.
#ifndef ORVO_TESTS_OWIRE_MSG_SAMPLES_H_
#define ORVO_TESTS_OWIRE_MSG_SAMPLES_H_

#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "orvo/owire/owire_msg.h"

namespace orvo_test {

inline OwfBuffer bufferOf(const char* text) {
  return OwfBuffer{static_cast<UInt32>(std::strlen(text)), const_cast<char*>(text)};
}

inline std::string textOf(const OwfBuffer& buffer) {
  return buffer.length == 0 ? std::string() : std::string(buffer.data, buffer.length);
}

// A flag of a class, and what it adds to the record besides the flag; null
// for flags that carry no part.
struct OptionalPart {
  const char* name;
  UInt16 flag;
  void (*fill)(OwireMsg*);
};

struct ClassSample {
  const char* name;
  UInt8 msgClass;
  std::vector<OptionalPart> parts;
};

inline void PrintTo(const ClassSample& sample, std::ostream* os) { *os << sample.name; }

inline void fillKey(OwireMsg* msg) {
  OwireMsgKey& key = msg->msgBase.key;
  key.keyFlags = OWIRE_MKF_HAS_SERVICE_ID | OWIRE_MKF_HAS_NAME | OWIRE_MKF_HAS_NAME_TYPE |
                 OWIRE_MKF_HAS_FILTER | OWIRE_MKF_HAS_IDENTIFIER | OWIRE_MKF_HAS_ATTRIB;
  key.serviceId = 0xBEEF;
  key.nameType = 3;
  key.name = bufferOf("ITEM.NAME");
  key.filter = 0x89ABCDEF;
  key.identifier = -42;
  key.attribFormat = 133;
  key.attrib = bufferOf("attrib-bytes");
}

inline void fillQos(OwireQos* qos, UInt8 timeliness, UInt8 rate) {
  qos->timeliness = timeliness;
  qos->rate = rate;
  qos->qosBits = 1;
  qos->timeInfo = timeliness == 3 ? 1500 : 0;
  qos->rateInfo = rate == 3 ? 65535 : 0;
}

inline void fillState(OwireState* state, const char* text) {
  state->streamState = 4;
  state->dataState = 2;
  state->statusCode = 17;
  state->text = bufferOf(text);
}

// The bare record of a class: what travels whatever the flags say.
inline void makeBare(UInt8 msgClass, OwireMsg* msg) {
  std::memset(msg, 0, sizeof(*msg));
  msg->msgBase.msgClass = msgClass;
  msg->msgBase.modelType = 6;
  msg->msgBase.bodyFormat = OWIRE_BODY_FORMAT_NONE;
  msg->msgBase.streamId = -3;
  switch (msgClass) {
    case OWIRE_MC_REFRESH:
      msg->refreshMsg.state.streamState = 1;
      break;
    case OWIRE_MC_UPDATE:
      msg->updateMsg.updateType = 9;
      break;
    case OWIRE_MC_ACK:
      msg->ackMsg.ackId = 0xFFFFFFFF;
      break;
    case OWIRE_MC_POST:
      msg->postMsg.publisherAddress = 0x0A000001;
      msg->postMsg.publisherId = 12345;
      break;
    default:
      break;
  }
}

// A body is not an optional part of a class: any record may hold one.
inline void addBody(OwireMsg* msg) {
  msg->msgBase.bodyFormat = 132;
  msg->msgBase.body = bufferOf("\x01\x02 body bytes \x00 end");
  msg->msgBase.body.length = 20;
}

inline void makeFull(const ClassSample& sample, OwireMsg* msg) {
  makeBare(sample.msgClass, msg);
  for (const OptionalPart& part : sample.parts) {
    msg->msgBase.flags |= part.flag;
    if (part.fill != nullptr) part.fill(msg);
  }
  addBody(msg);
}

// The first field in which two records differ, as "field: a vs b", or empty
// when they agree in every field but rawMessage, which only decoding fills.
#define ORVO_MSG_DIFF(field)                                                                      \
  if (a.field != b.field) {                                                                       \
    return std::string(#field ": ") + std::to_string(a.field) + " vs " + std::to_string(b.field); \
  }
#define ORVO_MSG_DIFF_BUFFER(field)                                                        \
  if (textOf(a.field) != textOf(b.field)) {                                                \
    return std::string(#field ": '") + textOf(a.field) + "' vs '" + textOf(b.field) + "'"; \
  }
#define ORVO_MSG_DIFF_QOS(qos)  \
  ORVO_MSG_DIFF(qos.timeliness) \
  ORVO_MSG_DIFF(qos.rate)       \
  ORVO_MSG_DIFF(qos.qosBits)    \
  ORVO_MSG_DIFF(qos.timeInfo)   \
  ORVO_MSG_DIFF(qos.rateInfo)
#define ORVO_MSG_DIFF_STATE(state) \
  ORVO_MSG_DIFF(state.streamState) \
  ORVO_MSG_DIFF(state.dataState)   \
  ORVO_MSG_DIFF(state.statusCode)  \
  ORVO_MSG_DIFF_BUFFER(state.text)

inline std::string msgDifference(const OwireMsg& a, const OwireMsg& b) {
  ORVO_MSG_DIFF(msgBase.msgClass)
  ORVO_MSG_DIFF(msgBase.modelType)
  ORVO_MSG_DIFF(msgBase.bodyFormat)
  ORVO_MSG_DIFF(msgBase.streamId)
  ORVO_MSG_DIFF(msgBase.flags)
  ORVO_MSG_DIFF_BUFFER(msgBase.body)
  if (a.msgBase.msgClass != OWIRE_MC_CLOSE) {
    ORVO_MSG_DIFF(msgBase.key.keyFlags)
    ORVO_MSG_DIFF(msgBase.key.serviceId)
    ORVO_MSG_DIFF(msgBase.key.nameType)
    ORVO_MSG_DIFF_BUFFER(msgBase.key.name)
    ORVO_MSG_DIFF(msgBase.key.filter)
    ORVO_MSG_DIFF(msgBase.key.identifier)
    ORVO_MSG_DIFF(msgBase.key.attribFormat)
    ORVO_MSG_DIFF_BUFFER(msgBase.key.attrib)
  }
  switch (a.msgBase.msgClass) {
    case OWIRE_MC_REQUEST:
      ORVO_MSG_DIFF(requestMsg.priorityClass)
      ORVO_MSG_DIFF(requestMsg.priorityCount)
      ORVO_MSG_DIFF_QOS(requestMsg.qos)
      ORVO_MSG_DIFF_QOS(requestMsg.worstQos)
      ORVO_MSG_DIFF_BUFFER(requestMsg.header)
      break;
    case OWIRE_MC_REFRESH:
      ORVO_MSG_DIFF(refreshMsg.seqNum)
      ORVO_MSG_DIFF_STATE(refreshMsg.state)
      ORVO_MSG_DIFF_BUFFER(refreshMsg.groupId)
      ORVO_MSG_DIFF_BUFFER(refreshMsg.permissionData)
      ORVO_MSG_DIFF(refreshMsg.publisherAddress)
      ORVO_MSG_DIFF(refreshMsg.publisherId)
      ORVO_MSG_DIFF_QOS(refreshMsg.qos)
      ORVO_MSG_DIFF_BUFFER(refreshMsg.header)
      break;
    case OWIRE_MC_STATUS:
      ORVO_MSG_DIFF_STATE(statusMsg.state)
      ORVO_MSG_DIFF_BUFFER(statusMsg.groupId)
      ORVO_MSG_DIFF_BUFFER(statusMsg.permissionData)
      ORVO_MSG_DIFF(statusMsg.publisherAddress)
      ORVO_MSG_DIFF(statusMsg.publisherId)
      ORVO_MSG_DIFF_BUFFER(statusMsg.header)
      break;
    case OWIRE_MC_UPDATE:
      ORVO_MSG_DIFF(updateMsg.updateType)
      ORVO_MSG_DIFF(updateMsg.seqNum)
      ORVO_MSG_DIFF(updateMsg.conflationCount)
      ORVO_MSG_DIFF(updateMsg.conflationTime)
      ORVO_MSG_DIFF_BUFFER(updateMsg.permissionData)
      ORVO_MSG_DIFF(updateMsg.publisherAddress)
      ORVO_MSG_DIFF(updateMsg.publisherId)
      ORVO_MSG_DIFF_BUFFER(updateMsg.header)
      break;
    case OWIRE_MC_CLOSE:
      ORVO_MSG_DIFF_BUFFER(closeMsg.header)
      break;
    case OWIRE_MC_ACK:
      ORVO_MSG_DIFF(ackMsg.ackId)
      ORVO_MSG_DIFF(ackMsg.nakCode)
      ORVO_MSG_DIFF(ackMsg.seqNum)
      ORVO_MSG_DIFF_BUFFER(ackMsg.text)
      ORVO_MSG_DIFF_BUFFER(ackMsg.header)
      break;
    case OWIRE_MC_GENERIC:
      ORVO_MSG_DIFF(genericMsg.seqNum)
      ORVO_MSG_DIFF(genericMsg.secondarySeqNum)
      ORVO_MSG_DIFF_BUFFER(genericMsg.permissionData)
      ORVO_MSG_DIFF_BUFFER(genericMsg.header)
      break;
    case OWIRE_MC_POST:
      ORVO_MSG_DIFF(postMsg.partNum)
      ORVO_MSG_DIFF(postMsg.postUserRights)
      ORVO_MSG_DIFF(postMsg.seqNum)
      ORVO_MSG_DIFF(postMsg.postId)
      ORVO_MSG_DIFF(postMsg.publisherAddress)
      ORVO_MSG_DIFF(postMsg.publisherId)
      ORVO_MSG_DIFF_BUFFER(postMsg.permissionData)
      ORVO_MSG_DIFF_BUFFER(postMsg.header)
      break;
    default:
      return "unknown class " + std::to_string(a.msgBase.msgClass);
  }
  return std::string();
}

#undef ORVO_MSG_DIFF_STATE
#undef ORVO_MSG_DIFF_QOS
#undef ORVO_MSG_DIFF_BUFFER
#undef ORVO_MSG_DIFF

// The buffers a decoded or copied record of `msg`'s class may fill.
inline std::vector<OwfBuffer> buffersOf(const OwireMsg& msg) {
  std::vector<OwfBuffer> all = {msg.msgBase.key.name, msg.msgBase.key.attrib, msg.msgBase.body,
                                msg.msgBase.rawMessage};
  switch (msg.msgBase.msgClass) {
    case OWIRE_MC_REQUEST:
      all.push_back(msg.requestMsg.header);
      break;
    case OWIRE_MC_REFRESH:
      all.insert(all.end(), {msg.refreshMsg.state.text, msg.refreshMsg.groupId,
                             msg.refreshMsg.permissionData, msg.refreshMsg.header});
      break;
    case OWIRE_MC_STATUS:
      all.insert(all.end(), {msg.statusMsg.state.text, msg.statusMsg.groupId,
                             msg.statusMsg.permissionData, msg.statusMsg.header});
      break;
    case OWIRE_MC_UPDATE:
      all.insert(all.end(), {msg.updateMsg.permissionData, msg.updateMsg.header});
      break;
    case OWIRE_MC_CLOSE:
      all.push_back(msg.closeMsg.header);
      break;
    case OWIRE_MC_ACK:
      all.insert(all.end(), {msg.ackMsg.text, msg.ackMsg.header});
      break;
    case OWIRE_MC_GENERIC:
      all.insert(all.end(), {msg.genericMsg.permissionData, msg.genericMsg.header});
      break;
    case OWIRE_MC_POST:
      all.insert(all.end(), {msg.postMsg.permissionData, msg.postMsg.header});
      break;
  }
  return all;
}

inline bool liesWithin(const OwfBuffer& buffer, const char* begin, const char* end) {
  if (buffer.length == 0 && buffer.data == nullptr) return true;
  return buffer.data >= begin && buffer.data + buffer.length <= end;
}

// Bits no class defines are carried as they stand.
constexpr UInt16 kUndefinedFlag = 0x8000;

inline const std::vector<ClassSample>& classSamples() {
  static const std::vector<ClassSample> samples = {
      {"Request",
       OWIRE_MC_REQUEST,
       {
           {"Key", 0, fillKey},  // a request's key always travels
           {"Priority", OWIRE_RQMF_HAS_PRIORITY,
            [](OwireMsg* m) {
              m->requestMsg.priorityClass = 2;
              m->requestMsg.priorityCount = 300;
            }},
           {"Streaming", OWIRE_RQMF_STREAMING, nullptr},
           {"Indication01", OWIRE_RQMF_INDICATION_01, nullptr},
           {"Indication02", OWIRE_RQMF_INDICATION_02, nullptr},
           {"NoRefresh", OWIRE_RQMF_NO_REFRESH, nullptr},
           {"Qos", OWIRE_RQMF_HAS_QOS, [](OwireMsg* m) { fillQos(&m->requestMsg.qos, 3, 3); }},
           {"WorstQos", OWIRE_RQMF_HAS_WORST_QOS,
            [](OwireMsg* m) { fillQos(&m->requestMsg.worstQos, 2, 2); }},
           {"Indication80", OWIRE_RQMF_INDICATION_80, nullptr},
           {"Pause", OWIRE_RQMF_PAUSE, nullptr},
           {"Indication04", OWIRE_RQMF_INDICATION_04, nullptr},
           {"Indication08", OWIRE_RQMF_INDICATION_08, nullptr},
           {"Header", OWIRE_RQMF_HAS_HEADER,
            [](OwireMsg* m) { m->requestMsg.header = bufferOf("request header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Refresh",
       OWIRE_MC_REFRESH,
       {
           {"Key", OWIRE_RFMF_HAS_MSG_KEY, fillKey},
           {"SeqNum", OWIRE_RFMF_HAS_SEQ_NUM,
            [](OwireMsg* m) { m->refreshMsg.seqNum = 0xFFFFFFFF; }},
           {"StateText", 0, [](OwireMsg* m) { fillState(&m->refreshMsg.state, "All is well"); }},
           {"GroupId", 0, [](OwireMsg* m) { m->refreshMsg.groupId = bufferOf("\x7F\x01"); }},
           {"PermData", OWIRE_RFMF_HAS_PERM_DATA,
            [](OwireMsg* m) { m->refreshMsg.permissionData = bufferOf("perm-rf"); }},
           {"PublisherInfo", OWIRE_RFMF_HAS_PUBLISHER_INFO,
            [](OwireMsg* m) {
              m->refreshMsg.publisherAddress = 0x7F000001;
              m->refreshMsg.publisherId = 77;
            }},
           {"Qos", OWIRE_RFMF_HAS_QOS, [](OwireMsg* m) { fillQos(&m->refreshMsg.qos, 3, 2); }},
           {"Solicited", OWIRE_RFMF_SOLICITED, nullptr},
           {"RefreshComplete", OWIRE_RFMF_REFRESH_COMPLETE, nullptr},
           {"ClearCache", OWIRE_RFMF_CLEAR_CACHE, nullptr},
           {"DoNotCache", OWIRE_RFMF_DO_NOT_CACHE, nullptr},
           {"PrivateStream", OWIRE_RFMF_PRIVATE_STREAM, nullptr},
           {"Header", OWIRE_RFMF_HAS_HEADER,
            [](OwireMsg* m) { m->refreshMsg.header = bufferOf("refresh header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Status",
       OWIRE_MC_STATUS,
       {
           {"Key", OWIRE_STMF_HAS_MSG_KEY, fillKey},
           {"State", OWIRE_STMF_HAS_STATE,
            [](OwireMsg* m) { fillState(&m->statusMsg.state, "Item closed"); }},
           {"GroupId", OWIRE_STMF_HAS_GROUP_ID,
            [](OwireMsg* m) { m->statusMsg.groupId = bufferOf("\x02\x03"); }},
           {"PermData", OWIRE_STMF_HAS_PERM_DATA,
            [](OwireMsg* m) { m->statusMsg.permissionData = bufferOf("perm-st"); }},
           {"PublisherInfo", OWIRE_STMF_HAS_PUBLISHER_INFO,
            [](OwireMsg* m) {
              m->statusMsg.publisherAddress = 0xC0A80001;
              m->statusMsg.publisherId = 0xC0A80001;
            }},
           {"ClearCache", OWIRE_STMF_CLEAR_CACHE, nullptr},
           {"PrivateStream", OWIRE_STMF_PRIVATE_STREAM, nullptr},
           {"Header", OWIRE_STMF_HAS_HEADER,
            [](OwireMsg* m) { m->statusMsg.header = bufferOf("status header"); }},
           {"Undefined", 0x0800, nullptr},
       }},
      {"Update",
       OWIRE_MC_UPDATE,
       {
           {"Key", OWIRE_UPMF_HAS_MSG_KEY, fillKey},
           {"SeqNum", OWIRE_UPMF_HAS_SEQ_NUM, [](OwireMsg* m) { m->updateMsg.seqNum = 128; }},
           {"ConfInfo", OWIRE_UPMF_HAS_CONF_INFO,
            [](OwireMsg* m) {
              m->updateMsg.conflationCount = 5;
              m->updateMsg.conflationTime = 0xFFFF;
            }},
           {"PermData", OWIRE_UPMF_HAS_PERM_DATA,
            [](OwireMsg* m) { m->updateMsg.permissionData = bufferOf("perm-up"); }},
           {"PublisherInfo", OWIRE_UPMF_HAS_PUBLISHER_INFO,
            [](OwireMsg* m) {
              m->updateMsg.publisherAddress = 1;
              m->updateMsg.publisherId = 0x10000000;
            }},
           {"DoNotCache", OWIRE_UPMF_DO_NOT_CACHE, nullptr},
           {"DoNotConflate", OWIRE_UPMF_DO_NOT_CONFLATE, nullptr},
           {"DoNotRipple", OWIRE_UPMF_DO_NOT_RIPPLE, nullptr},
           {"Header", OWIRE_UPMF_HAS_HEADER,
            [](OwireMsg* m) { m->updateMsg.header = bufferOf("update header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Close",
       OWIRE_MC_CLOSE,
       {
           {"Header", OWIRE_CLMF_HAS_HEADER,
            [](OwireMsg* m) { m->closeMsg.header = bufferOf("close header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Ack",
       OWIRE_MC_ACK,
       {
           {"Key", OWIRE_AKMF_HAS_MSG_KEY, fillKey},
           {"NakCode", OWIRE_AKMF_HAS_NAK_CODE, [](OwireMsg* m) { m->ackMsg.nakCode = 11; }},
           {"SeqNum", OWIRE_AKMF_HAS_SEQ_NUM, [](OwireMsg* m) { m->ackMsg.seqNum = 300000; }},
           {"Text", OWIRE_AKMF_HAS_TEXT, [](OwireMsg* m) { m->ackMsg.text = bufferOf("denied"); }},
           {"Header", OWIRE_AKMF_HAS_HEADER,
            [](OwireMsg* m) { m->ackMsg.header = bufferOf("ack header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Generic",
       OWIRE_MC_GENERIC,
       {
           {"Key", OWIRE_GNMF_HAS_MSG_KEY, fillKey},
           {"SeqNum", OWIRE_GNMF_HAS_SEQ_NUM, [](OwireMsg* m) { m->genericMsg.seqNum = 7; }},
           {"SecondarySeqNum", OWIRE_GNMF_HAS_SECONDARY_SEQ_NUM,
            [](OwireMsg* m) { m->genericMsg.secondarySeqNum = 0x01020304; }},
           {"PermData", OWIRE_GNMF_HAS_PERM_DATA,
            [](OwireMsg* m) { m->genericMsg.permissionData = bufferOf("perm-gn"); }},
           {"MessageComplete", OWIRE_GNMF_MESSAGE_COMPLETE, nullptr},
           {"Header", OWIRE_GNMF_HAS_HEADER,
            [](OwireMsg* m) { m->genericMsg.header = bufferOf("generic header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
      {"Post",
       OWIRE_MC_POST,
       {
           {"Key", OWIRE_PSMF_HAS_MSG_KEY, fillKey},
           {"PartNum", OWIRE_PSMF_HAS_PART_NUM, [](OwireMsg* m) { m->postMsg.partNum = 0x7FFF; }},
           {"PostUserRights", OWIRE_PSMF_HAS_POST_USER_RIGHTS,
            [](OwireMsg* m) { m->postMsg.postUserRights = 0x0005; }},
           {"SeqNum", OWIRE_PSMF_HAS_SEQ_NUM, [](OwireMsg* m) { m->postMsg.seqNum = 99; }},
           {"PostId", OWIRE_PSMF_HAS_POST_ID, [](OwireMsg* m) { m->postMsg.postId = 0xFFFFFFFE; }},
           {"PermData", OWIRE_PSMF_HAS_PERM_DATA,
            [](OwireMsg* m) { m->postMsg.permissionData = bufferOf("perm-ps"); }},
           {"PostComplete", OWIRE_PSMF_POST_COMPLETE, nullptr},
           {"Ack", OWIRE_PSMF_ACK, nullptr},
           {"Header", OWIRE_PSMF_HAS_HEADER,
            [](OwireMsg* m) { m->postMsg.header = bufferOf("post header"); }},
           {"Undefined", kUndefinedFlag, nullptr},
       }},
  };
  return samples;
}

}  // namespace orvo_test

#endif  // ORVO_TESTS_OWIRE_MSG_SAMPLES_H_
