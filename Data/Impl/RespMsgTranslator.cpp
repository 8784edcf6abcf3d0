#include "orvo/message/RespMsgTranslator.h"

#include "Data/Impl/DataInt.h"
#include "Data/Impl/RespMsgTranslatorInt.h"
#include "diagnostics/Verify.h"
#include "orvo/data/DataBuffer.h"
#include "orvo/data/DataType.h"
#include "orvo/message/AttribInfo.h"
#include "orvo/message/ManifestInt.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/RespMsg.h"
#include "orvo/message/RespMsgInt.h"

namespace orvo {
namespace message {
namespace {

using common::Buffer;
using common::Data;
using common::ORVO_String;
using common::QualityOfService;
using common::RespStatus;
using common::UInt16;
using common::UInt32;
using common::UInt8;

// Indication bits and the wire flag each travels as, per class.
struct FlagPair {
  UInt8 indication;
  UInt16 wire;
};
constexpr FlagPair kRefreshIndications[] = {
    {RespMsg::ClearCacheFlag, OWIRE_RFMF_CLEAR_CACHE},
    {RespMsg::DoNotCacheFlag, OWIRE_RFMF_DO_NOT_CACHE},
    {RespMsg::RefreshCompleteFlag, OWIRE_RFMF_REFRESH_COMPLETE},
    {RespMsg::CarriedStreamFlag, OWIRE_RFMF_PRIVATE_STREAM},
};
constexpr FlagPair kUpdateIndications[] = {
    {RespMsg::DoNotCacheFlag, OWIRE_UPMF_DO_NOT_CACHE},
    {RespMsg::DoNotFilterFlag, OWIRE_UPMF_DO_NOT_CONFLATE},
    {RespMsg::DoNotRippleFlag, OWIRE_UPMF_DO_NOT_RIPPLE},
};
constexpr FlagPair kStatusIndications[] = {
    {RespMsg::ClearCacheFlag, OWIRE_STMF_CLEAR_CACHE},
    {RespMsg::CarriedStreamFlag, OWIRE_STMF_PRIVATE_STREAM},
};

// The publisher of a status goes out under this bit, which the status does
// not read back: the decode side looks at OWIRE_STMF_HAS_PUBLISHER_INFO.
constexpr UInt16 kStatusPublisherEncodeFlag = 0x0800;

template <size_t N>
UInt16 wireIndications(UInt8 indications, const FlagPair (&table)[N]) {
  UInt16 flags = 0;
  for (const FlagPair& pair : table) {
    if (indications & pair.indication) flags |= pair.wire;
  }
  return flags;
}

template <size_t N>
UInt8 indicationsOf(UInt16 flags, const FlagPair (&table)[N]) {
  UInt8 indications = 0;
  for (const FlagPair& pair : table) {
    if (flags & pair.wire) indications |= pair.indication;
  }
  return indications;
}

OwfBuffer viewOf(const Buffer& buffer) {
  return OwfBuffer{static_cast<UInt32>(buffer.size()),
                   reinterpret_cast<char*>(const_cast<unsigned char*>(buffer.c_buf()))};
}

const UInt8* bytesOf(const OwfBuffer& buffer) {
  return reinterpret_cast<const UInt8*>(buffer.data);
}

bool has(UInt8 mask, UInt8 bit) { return (mask & bit) != 0; }

// ---------------------------------------------------------------------------
// Message to record.

// The key travels only when it came out non-empty.
void encodeAttribInfo(const RespMsg& msg, OwireMsgBase& base, UInt16 hasKeyFlag) {
  if (!has(msg.getHintMask(), RespMsg::AttribInfoFlag)) return;
  if (internal::setOWIRECommonAttribute(base.key, msg.getAttribInfo())) base.flags |= hasKeyFlag;
}

// A stream state of 0 cannot open a refresh stream, so it goes out as 1;
// a status sends it as it stands.
void encodeState(const RespStatus& status, bool substituteOpen, OwireState& state) {
  UInt8 streamState = static_cast<UInt8>(status.getStreamState());
  if (substituteOpen && streamState == 0) streamState = 1;
  state.streamState = streamState;
  state.dataState = static_cast<UInt8>(status.getDataState());
  state.statusCode = status.getStatusCode();
  const ORVO_String& text = status.getStatusText();
  state.text = OwfBuffer{text.length(), const_cast<char*>(text.c_str())};
}

void encodePayload(const RespMsg& msg, OwireMsgBase& base) {
  if (has(msg.getHintMask(), RespMsg::PayloadFlag)) {
    internal::setOWIREData(base.bodyFormat, base.body, msg.getPayload());
  }
}

void encodeRefresh(const RespMsg& msg, OwireRefreshMsg& rec) {
  OwireMsgBase& base = rec.msgBase;
  const UInt8 hint = msg.getHintMask();
  // The number goes out whether or not its bit is set: 0 is solicited.
  if (msg.getRespTypeNum() == 0) base.flags |= OWIRE_RFMF_SOLICITED;
  base.flags |= wireIndications(msg.getIndicationMask(), kRefreshIndications);
  encodeAttribInfo(msg, base, OWIRE_RFMF_HAS_MSG_KEY);
  if (has(hint, RespMsg::PrincipalIdentityFlag)) {
    base.flags |= OWIRE_RFMF_HAS_PUBLISHER_INFO;
    rec.publisherAddress = msg.getPrincipalIdentity().getUserAddress();
    rec.publisherId = msg.getPrincipalIdentity().getUserID();
  }
  if (has(hint, RespMsg::RespStatusFlag)) {
    encodeState(msg.getRespStatus(), true, rec.state);
  } else {
    rec.state.streamState = 1;
  }
  if (has(hint, RespMsg::ManifestFlag)) {
    const Manifest& manifest = msg.getManifest();
    const UInt8 parts = manifest.getHintMask();
    if (has(parts, Manifest::SeqFlag)) {
      base.flags |= OWIRE_RFMF_HAS_SEQ_NUM;
      rec.seqNum = manifest.getSeqNum();
    }
    if (has(parts, Manifest::ItemGroupFlag)) rec.groupId = viewOf(manifest.getItemGroup());
    if (has(parts, Manifest::PermissionDataFlag)) {
      base.flags |= OWIRE_RFMF_HAS_PERM_DATA;
      rec.permissionData = viewOf(manifest.getPermissionData());
    }
  }
  if (has(hint, RespMsg::QualityOfServiceFlag)) {
    base.flags |= OWIRE_RFMF_HAS_QOS;
    internal::qualityOfServiceToWire(msg.getQualityOfService(), rec.qos);
  }
  if (has(hint, RespMsg::HeaderFlag)) {
    base.flags |= OWIRE_RFMF_HAS_HEADER;
    rec.header = viewOf(msg.getHeader());
  }
  encodePayload(msg, base);
}

void reportStatusOnUpdate() {
  if (diagnostics::verifyCheck("ORVO Internal failure",
                               "Illegal to send RespStatus in Update message", __FILE__, __LINE__,
                               true, true, nullptr, "%s", "ORVO_VERIFY( 0 ) failed") &&
      diagnostics::verifyReport("ORVO Internal failure",
                                "Illegal to send RespStatus in Update message", __FILE__, __LINE__,
                                true, true, nullptr, "%s", "ORVO_VERIFY( 0 ) failed")) {
    diagnostics::debugBreak(__FILE__, __LINE__);
  }
}

void encodeUpdate(const RespMsg& msg, OwireUpdateMsg& rec) {
  OwireMsgBase& base = rec.msgBase;
  const UInt8 hint = msg.getHintMask();
  rec.updateType = msg.getRespTypeNum();
  base.flags |= wireIndications(msg.getIndicationMask(), kUpdateIndications);
  encodeAttribInfo(msg, base, OWIRE_UPMF_HAS_MSG_KEY);
  if (has(hint, RespMsg::PrincipalIdentityFlag)) {
    base.flags |= OWIRE_UPMF_HAS_PUBLISHER_INFO;
    rec.publisherAddress = msg.getPrincipalIdentity().getUserAddress();
    rec.publisherId = msg.getPrincipalIdentity().getUserID();
  }
  if (has(hint, RespMsg::RespStatusFlag)) reportStatusOnUpdate();
  if (has(hint, RespMsg::ManifestFlag)) {
    const Manifest& manifest = msg.getManifest();
    const UInt8 parts = manifest.getHintMask();
    if (has(parts, Manifest::SeqFlag)) {
      base.flags |= OWIRE_UPMF_HAS_SEQ_NUM;
      rec.seqNum = manifest.getSeqNum();
    }
    if (has(parts, Manifest::FilteredFlag)) {
      base.flags |= OWIRE_UPMF_HAS_CONF_INFO;
      rec.conflationCount = manifest.getFilteredCount();
      rec.conflationTime = static_cast<UInt16>(manifest.getFilteredTime() & 0xFFFF);
    }
    if (has(parts, Manifest::PermissionDataFlag)) {
      base.flags |= OWIRE_UPMF_HAS_PERM_DATA;
      rec.permissionData = viewOf(manifest.getPermissionData());
    }
  }
  if (has(hint, RespMsg::HeaderFlag)) {
    base.flags |= OWIRE_UPMF_HAS_HEADER;
    rec.header = viewOf(msg.getHeader());
  }
  encodePayload(msg, base);
}

void encodeStatus(const RespMsg& msg, OwireStatusMsg& rec) {
  OwireMsgBase& base = rec.msgBase;
  const UInt8 hint = msg.getHintMask();
  base.flags |= wireIndications(msg.getIndicationMask(), kStatusIndications);
  encodeAttribInfo(msg, base, OWIRE_STMF_HAS_MSG_KEY);
  if (has(hint, RespMsg::PrincipalIdentityFlag)) {
    // Both values are the address, under a bit the decoder does not read:
    // kept as the system has always sent it.
    base.flags |= kStatusPublisherEncodeFlag;
    rec.publisherAddress = msg.getPrincipalIdentity().getUserAddress();
    rec.publisherId = msg.getPrincipalIdentity().getUserAddress();
  }
  if (has(hint, RespMsg::RespStatusFlag)) {
    base.flags |= OWIRE_STMF_HAS_STATE;
    encodeState(msg.getRespStatus(), false, rec.state);
  }
  if (has(hint, RespMsg::ManifestFlag)) {
    const Manifest& manifest = msg.getManifest();
    const UInt8 parts = manifest.getHintMask();
    if (has(parts, Manifest::ItemGroupFlag)) {
      base.flags |= OWIRE_STMF_HAS_GROUP_ID;
      rec.groupId = viewOf(manifest.getItemGroup());
    }
    if (has(parts, Manifest::PermissionDataFlag)) {
      base.flags |= OWIRE_STMF_HAS_PERM_DATA;
      rec.permissionData = viewOf(manifest.getPermissionData());
    }
  }
  if (has(hint, RespMsg::HeaderFlag)) {
    base.flags |= OWIRE_STMF_HAS_HEADER;
    rec.header = viewOf(msg.getHeader());
  }
}

// ---------------------------------------------------------------------------
// Record to message.

void decodeState(const OwireState& state, RespStatus& status) {
  status.setStreamState(static_cast<RespStatus::StreamState>(state.streamState));
  status.setDataState(static_cast<RespStatus::DataState>(state.dataState));
  status.setStatusCode(state.statusCode);
  if (state.text.length != 0) {
    ORVO_String text;
    text.set(state.text.data, state.text.length, false);
    status.setStatusText(text);
  }
}

void decodeIdentity(RespMsg& msg, UInt32 address, UInt32 id) {
  RespMsgInt::setPublisherPrincipalIdentity(msg, address, id);
  RespMsgInt::setHintMaskInt(msg, RespMsg::PrincipalIdentityFlag);
}

void decodeAttribInfo(const OwireEncodedMsg& encoded, OwireMsg* record, RespMsg& msg, UInt8 major,
                      UInt8 minor) {
  internal::setCommonAttribute(encoded, record, major, minor, RespMsgInt::ownAttribInfo(msg));
  RespMsgInt::setHintMaskInt(msg, RespMsg::AttribInfoFlag);
}

// A group id set on the encoded message overrides the record's.
void setItemGroup(const OwfBuffer* group, ManifestInt& manifest, const OwfBuffer& recordGroup) {
  if (recordGroup.length == 0) return;
  const OwfBuffer& source = group != nullptr ? *group : recordGroup;
  manifest.setItemGroupInt(bytesOf(source), static_cast<int>(source.length));
}

void setPermissionData(const OwfBuffer& data, ManifestInt& manifest) {
  if (data.length == 0) return;
  manifest.setPermissionDataInt(bytesOf(data), static_cast<int>(data.length));
}

void setHeader(const OwfBuffer& header, RespMsg& msg) {
  RespMsgInt::setHeaderInt(msg, bytesOf(header), static_cast<int>(header.length));
}

void markManifestIfAny(RespMsg& msg) {
  if (RespMsgInt::ownManifest(msg).getHintMask() != 0) {
    RespMsgInt::setHintMaskInt(msg, RespMsg::ManifestFlag);
  }
}

void orIndications(RespMsg& msg, UInt8 indications) {
  msg.setIndicationMask(msg.getIndicationMask() | indications);
}

void decodeRefresh(const OwireEncodedMsg& encoded, OwireMsg* record, RespMsg& msg, UInt8 major,
                   UInt8 minor) {
  OwireRefreshMsg& rec = record->refreshMsg;
  const UInt16 flags = rec.msgBase.flags;
  msg.setRespType(RespMsg::RefreshResp);
  msg.setRespTypeNum((flags & OWIRE_RFMF_SOLICITED) ? 0 : 1);
  orIndications(msg, indicationsOf(flags, kRefreshIndications));
  if (flags & OWIRE_RFMF_HAS_PUBLISHER_INFO) {
    decodeIdentity(msg, rec.publisherAddress, rec.publisherId);
  }
  decodeState(rec.state, RespMsgInt::decodedRespStatus(msg));
  RespMsgInt::setHintMaskInt(msg, RespMsg::RespStatusFlag);
  if (flags & OWIRE_RFMF_HAS_MSG_KEY) decodeAttribInfo(encoded, record, msg, major, minor);
  ManifestInt& manifest = RespMsgInt::ownManifest(msg);
  if (flags & OWIRE_RFMF_HAS_SEQ_NUM) manifest.setSeqNum(rec.seqNum);
  setItemGroup(encoded.getGroupId(), manifest, rec.groupId);
  if (flags & OWIRE_RFMF_HAS_PERM_DATA) setPermissionData(rec.permissionData, manifest);
  markManifestIfAny(msg);
  if (flags & OWIRE_RFMF_HAS_QOS) {
    QualityOfService& qos = RespMsgInt::decodedQualityOfService(msg);
    qos = internal::qualityOfServiceFromWire(rec.qos);
    msg.setQualityOfService(qos);
  }
  if (flags & OWIRE_RFMF_HAS_HEADER) setHeader(rec.header, msg);
  RespMsgInt::setDataInt(msg, record, major, minor);
}

void decodeUpdate(const OwireEncodedMsg& encoded, OwireMsg* record, RespMsg& msg, UInt8 major,
                  UInt8 minor) {
  OwireUpdateMsg& rec = record->updateMsg;
  const UInt16 flags = rec.msgBase.flags;
  msg.setRespType(RespMsg::UpdateResp);
  msg.setRespTypeNum(rec.updateType);
  orIndications(msg, indicationsOf(flags, kUpdateIndications));
  if (flags & OWIRE_UPMF_HAS_MSG_KEY) decodeAttribInfo(encoded, record, msg, major, minor);
  if (flags & OWIRE_UPMF_HAS_PUBLISHER_INFO) {
    decodeIdentity(msg, rec.publisherAddress, rec.publisherId);
  }
  ManifestInt& manifest = RespMsgInt::ownManifest(msg);
  if (flags & OWIRE_UPMF_HAS_SEQ_NUM) manifest.setSeqNum(rec.seqNum);
  if (flags & OWIRE_UPMF_HAS_CONF_INFO) {
    manifest.setFiltered(rec.conflationCount, static_cast<UInt32>(rec.conflationTime));
  }
  if (flags & OWIRE_UPMF_HAS_PERM_DATA) setPermissionData(rec.permissionData, manifest);
  markManifestIfAny(msg);
  if (flags & OWIRE_UPMF_HAS_HEADER) setHeader(rec.header, msg);
  RespMsgInt::setDataInt(msg, record, major, minor);
}

// A status never takes a payload, whatever body the record carries.
void decodeStatus(const OwireEncodedMsg& encoded, OwireMsg* record, RespMsg& msg, UInt8 major,
                  UInt8 minor) {
  OwireStatusMsg& rec = record->statusMsg;
  const UInt16 flags = rec.msgBase.flags;
  msg.setRespType(RespMsg::StatusResp);
  orIndications(msg, indicationsOf(flags, kStatusIndications));
  if (flags & OWIRE_STMF_HAS_STATE) {
    decodeState(rec.state, RespMsgInt::decodedRespStatus(msg));
    RespMsgInt::setHintMaskInt(msg, RespMsg::RespStatusFlag);
  }
  if (flags & OWIRE_STMF_HAS_PUBLISHER_INFO) {
    decodeIdentity(msg, rec.publisherAddress, rec.publisherId);
  }
  if (flags & OWIRE_STMF_HAS_MSG_KEY) decodeAttribInfo(encoded, record, msg, major, minor);
  ManifestInt& manifest = RespMsgInt::ownManifest(msg);
  setItemGroup(encoded.getGroupId(), manifest, rec.groupId);
  if (flags & OWIRE_STMF_HAS_PERM_DATA) setPermissionData(rec.permissionData, manifest);
  markManifestIfAny(msg);
  if (flags & OWIRE_STMF_HAS_HEADER) setHeader(rec.header, msg);
}

}  // namespace

void RespMsgTranslator::encode(const common::Msg* msg, const OwireMsg& record) {
  internalEncode(msg, record);
}

void RespMsgTranslator::internalEncode(const common::Msg* msg, const OwireMsg& record) {
  const RespMsg& resp = *static_cast<const RespMsg*>(msg);
  OwireMsg& rec = const_cast<OwireMsg&>(record);
  UInt8 msgClass = 0;
  switch (resp.getRespType()) {
    case RespMsg::RefreshResp:
      msgClass = OWIRE_MC_REFRESH;
      break;
    case RespMsg::StatusResp:
      msgClass = OWIRE_MC_STATUS;
      break;
    case RespMsg::UpdateResp:
      msgClass = OWIRE_MC_UPDATE;
      break;
    default:
      return;
  }
  rec.msgBase.msgClass = msgClass;
  rec.msgBase.modelType = resp.getMsgModelType();
  rec.msgBase.bodyFormat = OWIRE_BODY_FORMAT_NONE;
  rec.msgBase.streamId = 0;
  if (msgClass == OWIRE_MC_REFRESH) encodeRefresh(resp, rec.refreshMsg);
  if (msgClass == OWIRE_MC_UPDATE) encodeUpdate(resp, rec.updateMsg);
  if (msgClass == OWIRE_MC_STATUS) encodeStatus(resp, rec.statusMsg);
}

void RespMsgTranslator::decode(const EncodedMsg* encoded, common::Msg* msg, UInt8 major,
                               UInt8 minor, bool keepEncoded) {
  const auto& owire = *static_cast<const OwireEncodedMsg*>(encoded);
  OwireMsg* record = const_cast<OwireMsg*>(owire.getOwireMsg());
  RespMsg& resp = *static_cast<RespMsg*>(msg);
  if (record == nullptr) return;
  resp.setMsgModelType(record->msgBase.modelType);
  resp.setAssociatedMetaInfo(major, minor);
  switch (record->msgBase.msgClass) {
    case OWIRE_MC_UPDATE:
      decodeUpdate(owire, record, resp, major, minor);
      break;
    case OWIRE_MC_REFRESH:
      decodeRefresh(owire, record, resp, major, minor);
      break;
    case OWIRE_MC_STATUS:
      decodeStatus(owire, record, resp, major, minor);
      break;
    default:
      break;
  }
  if (keepEncoded) {
    const OwfBuffer& raw = record->msgBase.rawMessage;
    RespMsgInt::getEncodedBufferInt(resp).setFrom(reinterpret_cast<unsigned char*>(raw.data),
                                                  static_cast<int>(raw.length),
                                                  static_cast<int>(raw.length), false);
  }
}

}  // namespace message

// ---------------------------------------------------------------------------
// Shared with the other message translators.

namespace internal {

using common::Data;
using common::QualityOfService;
using common::UInt16;
using common::UInt32;
using common::UInt8;
using message::AttribInfo;

bool setOWIRECommonAttribute(OwireMsgKey& key, const AttribInfo& attrib) {
  const UInt8 hint = attrib.getHintMask();
  bool written = false;
  if (hint & AttribInfo::ServiceNameFlag) {
    key.keyFlags |= OWIRE_MKF_HAS_SERVICE_ID;
    key.serviceId = 0;
    written = true;
  }
  if (hint & AttribInfo::ServiceIDFlag) {
    key.keyFlags |= OWIRE_MKF_HAS_SERVICE_ID;
    key.serviceId = static_cast<UInt16>(attrib.getServiceID() & 0xFFFF);
    written = true;
  }
  if (hint & AttribInfo::NameTypeFlag) {
    key.keyFlags |= OWIRE_MKF_HAS_NAME_TYPE;
    key.nameType = attrib.getNameType();
    written = true;
  }
  if ((hint & AttribInfo::NameFlag) && attrib.getName().length() != 0) {
    key.keyFlags |= OWIRE_MKF_HAS_NAME;
    key.name = OwfBuffer{attrib.getName().length(), const_cast<char*>(attrib.getName().data())};
    written = true;
  }
  if (hint & AttribInfo::DataMaskFlag) {
    key.keyFlags |= OWIRE_MKF_HAS_FILTER;
    key.filter = attrib.getDataMask();
    written = true;
  }
  if (hint & AttribInfo::IDFlag) {
    key.keyFlags |= OWIRE_MKF_HAS_IDENTIFIER;
    key.identifier = attrib.getID();
    written = true;
  }
  if (hint & AttribInfo::AttribFlag) {
    const Data& data = attrib.getAttrib();
    key.attribFormat = data.getDataType() == data::DataBufferEnum
                           ? static_cast<const data::DataBuffer&>(data).getDataBufferType()
                           : data.getDataType();
    const common::Buffer& bytes = data.getEncodedBuffer();
    key.attrib = OwfBuffer{static_cast<UInt32>(bytes.size()),
                           reinterpret_cast<char*>(const_cast<unsigned char*>(bytes.c_buf()))};
    key.keyFlags |= OWIRE_MKF_HAS_ATTRIB;
    written = true;
  }
  return written;
}

void setCommonAttribute(const message::OwireEncodedMsg& encoded, OwireMsg* record, UInt8 major,
                        UInt8 minor, AttribInfo& attrib) {
  const OwireMsgKey* key = owireGetMsgKey(record);
  if (key == nullptr) return;
  attrib.setServiceInt(encoded.getServiceName(), key->serviceId,
                       (key->keyFlags & OWIRE_MKF_HAS_SERVICE_ID) != 0);
  if (key->keyFlags & OWIRE_MKF_HAS_NAME_TYPE) attrib.setNameType(key->nameType);
  if (key->keyFlags & OWIRE_MKF_HAS_NAME) {
    common::ORVO_String name;
    name.set(key->name.data, key->name.length, false);
    attrib.setName(name);
    // An unmanaged info keeps its former name when given an empty one; the
    // key's name wins here, empty or not.
    const_cast<common::ORVO_String&>(attrib.getName()).set(key->name.data, key->name.length, false);
  }
  if (key->keyFlags & OWIRE_MKF_HAS_IDENTIFIER) attrib.setID(key->identifier);
  if (key->keyFlags & OWIRE_MKF_HAS_FILTER) attrib.setDataMask(key->filter);
  if (key->keyFlags & OWIRE_MKF_HAS_ATTRIB) {
    attrib.setAttrib(attrib.getAttrib());
    Data* target = const_cast<Data*>(&attrib.getAttrib());
    if (message::RespMsgInt::isOwireDataFormatAnOrvoDataBuffer(key->attribFormat)) {
      DataInt::shallowMorph(target, data::DataBufferEnum, 0);
      static_cast<data::DataBuffer*>(target)->setDataBufferType(key->attribFormat);
    } else {
      DataInt::shallowMorph(target, key->attribFormat, 0);
    }
    setDecodedBytes(target, key->attrib);
    target->setAssociatedMetaInfo(major, minor);
  }
}

void unbindEncodeIterator(Data* storage) { DataInt::encodeIter(storage).buffer = nullptr; }

void setDecodedBytes(Data* storage, const OwfBuffer& bytes) {
  DataInt::setEncodedLite(storage, bytes);
  unbindEncodeIterator(storage);
}

void setOWIREData(UInt8& format, OwfBuffer& buffer, const Data& data) {
  const common::Buffer& bytes = data.getEncodedBuffer();
  buffer = OwfBuffer{static_cast<UInt32>(bytes.size()),
                     reinterpret_cast<char*>(const_cast<unsigned char*>(bytes.c_buf()))};
  if (buffer.length == 0) {
    format = OWIRE_BODY_FORMAT_NONE;
  } else if (data.getDataType() == data::DataBufferEnum) {
    format = static_cast<const data::DataBuffer&>(data).getDataBufferType();
  } else {
    format = data.getDataType();
  }
}

namespace {

constexpr UInt32 kLargestWireQosInfo = 65535;

UInt16 cappedInfo(long value) {
  return static_cast<UInt16>(value > static_cast<long>(kLargestWireQosInfo) ? kLargestWireQosInfo
                                                                            : value);
}

}  // namespace

void qualityOfServiceToWire(const QualityOfService& qos, OwireQos& wire) {
  wire.qosBits &= static_cast<UInt8>(~0x01);
  long timeliness = qos.getTimeliness();
  if (timeliness == QualityOfService::unspecifiedTimeliness)
    timeliness = QualityOfService::realTime;
  if (timeliness < 0) {
    wire.timeliness = 0;
  } else if (timeliness == QualityOfService::realTime) {
    wire.timeliness = 1;
  } else if (timeliness < QualityOfService::unspecifiedDelayedTimeliness) {
    wire.timeliness = 3;
    wire.timeInfo = cappedInfo(timeliness);
  } else {
    wire.timeliness = 2;
  }
  long rate = qos.getRate();
  if (rate == QualityOfService::unspecifiedRate) rate = QualityOfService::tickByTick;
  if (rate < 0) {
    wire.rate = 0;
  } else if (rate == QualityOfService::tickByTick) {
    wire.rate = 1;
  } else if (rate == QualityOfService::justInTimeFilteredRate) {
    wire.rate = 2;
  } else if (rate < QualityOfService::justInTimeFilteredRate) {
    wire.rate = 3;
    wire.rateInfo = cappedInfo(rate);
  } else {
    wire.rate = 3;
    wire.rateInfo = static_cast<UInt16>(kLargestWireQosInfo);
  }
}

QualityOfService qualityOfServiceFromWire(const OwireQos& wire) {
  QualityOfService qos;
  switch (wire.timeliness) {
    case 1:
      qos.setTimeliness(QualityOfService::realTime);
      break;
    case 2:
      qos.setTimeliness(QualityOfService::unspecifiedDelayedTimeliness);
      break;
    case 3:
      qos.setTimeliness(wire.timeInfo == kLargestWireQosInfo
                            ? QualityOfService::unspecifiedTimeliness
                            : static_cast<long>(wire.timeInfo));
      break;
    default:
      qos.setTimeliness(QualityOfService::unspecifiedTimeliness);
  }
  switch (wire.rate) {
    case 1:
      qos.setRate(QualityOfService::tickByTick);
      break;
    case 2:
      qos.setRate(QualityOfService::justInTimeFilteredRate);
      break;
    case 3:
      qos.setRate(wire.rateInfo == kLargestWireQosInfo ? QualityOfService::unspecifiedRate
                                                       : static_cast<long>(wire.rateInfo));
      break;
    default:
      qos.setRate(QualityOfService::unspecifiedRate);
  }
  return qos;
}

}  // namespace internal
}  // namespace orvo
