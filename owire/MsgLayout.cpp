#include "owire/MsgLayout.h"

#include <cstddef>

namespace orvo {
namespace owire {
namespace {

using K = MsgPartKind;

#define ORVO_MSG_OFFSET(Record, field) static_cast<UInt16>(offsetof(Record, field))

// Every class record starts with its OwireMsgBase, so an offset into the
// base is the same in each of them.
constexpr UInt16 kKeyOffset = ORVO_MSG_OFFSET(OwireMsgBase, key);

constexpr MsgPart kKeyParts[] = {
    {OWIRE_MKF_HAS_SERVICE_ID, K::kU16, 0, ORVO_MSG_OFFSET(OwireMsgKey, serviceId)},
    {OWIRE_MKF_HAS_NAME, K::kBuffer, OWIRE_CPMF_KEY_NAME, ORVO_MSG_OFFSET(OwireMsgKey, name)},
    {OWIRE_MKF_HAS_NAME_TYPE, K::kU8, 0, ORVO_MSG_OFFSET(OwireMsgKey, nameType)},
    {OWIRE_MKF_HAS_FILTER, K::kVarU32, 0, ORVO_MSG_OFFSET(OwireMsgKey, filter)},
    {OWIRE_MKF_HAS_IDENTIFIER, K::kI32, 0, ORVO_MSG_OFFSET(OwireMsgKey, identifier)},
    {OWIRE_MKF_HAS_ATTRIB, K::kU8, 0, ORVO_MSG_OFFSET(OwireMsgKey, attribFormat)},
    {OWIRE_MKF_HAS_ATTRIB, K::kBuffer, OWIRE_CPMF_KEY_ATTRIB, ORVO_MSG_OFFSET(OwireMsgKey, attrib)},
};

constexpr MsgPart kBaseBuffers[] = {
    {0, K::kBuffer, OWIRE_CPMF_KEY_NAME,
     static_cast<UInt16>(kKeyOffset + offsetof(OwireMsgKey, name))},
    {0, K::kBuffer, OWIRE_CPMF_KEY_ATTRIB,
     static_cast<UInt16>(kKeyOffset + offsetof(OwireMsgKey, attrib))},
    {0, K::kBuffer, OWIRE_CPMF_BODY, ORVO_MSG_OFFSET(OwireMsgBase, body)},
    {0, K::kBuffer, OWIRE_CPMF_RAW_MESSAGE, ORVO_MSG_OFFSET(OwireMsgBase, rawMessage)},
};

#define ORVO_MSG_PART(Record, flag, kind, mask, field) \
  { flag, kind, mask, ORVO_MSG_OFFSET(Record, field) }

constexpr MsgPart kRequestParts[] = {
    {0, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireRequestMsg, OWIRE_RQMF_HAS_PRIORITY, K::kU8, 0, priorityClass),
    ORVO_MSG_PART(OwireRequestMsg, OWIRE_RQMF_HAS_PRIORITY, K::kU16, 0, priorityCount),
    ORVO_MSG_PART(OwireRequestMsg, OWIRE_RQMF_HAS_QOS, K::kQos, 0, qos),
    ORVO_MSG_PART(OwireRequestMsg, OWIRE_RQMF_HAS_WORST_QOS, K::kQos, 0, worstQos),
    ORVO_MSG_PART(OwireRequestMsg, OWIRE_RQMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kRefreshParts[] = {
    {OWIRE_RFMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_SEQ_NUM, K::kVarU32, 0, seqNum),
    ORVO_MSG_PART(OwireRefreshMsg, 0, K::kState, OWIRE_CPMF_STATE_TEXT, state),
    ORVO_MSG_PART(OwireRefreshMsg, 0, K::kBuffer, OWIRE_CPMF_GROUP_ID, groupId),
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_PERM_DATA, K::kBuffer, OWIRE_CPMF_PERM_DATA,
                  permissionData),
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherAddress),
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherId),
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_QOS, K::kQos, 0, qos),
    ORVO_MSG_PART(OwireRefreshMsg, OWIRE_RFMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kStatusParts[] = {
    {OWIRE_STMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_STATE, K::kState, OWIRE_CPMF_STATE_TEXT, state),
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_GROUP_ID, K::kBuffer, OWIRE_CPMF_GROUP_ID,
                  groupId),
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_PERM_DATA, K::kBuffer, OWIRE_CPMF_PERM_DATA,
                  permissionData),
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherAddress),
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherId),
    ORVO_MSG_PART(OwireStatusMsg, OWIRE_STMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kUpdateParts[] = {
    {OWIRE_UPMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireUpdateMsg, 0, K::kU8, 0, updateType),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_SEQ_NUM, K::kVarU32, 0, seqNum),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_CONF_INFO, K::kU16, 0, conflationCount),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_CONF_INFO, K::kU16, 0, conflationTime),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_PERM_DATA, K::kBuffer, OWIRE_CPMF_PERM_DATA,
                  permissionData),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherAddress),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_PUBLISHER_INFO, K::kVarU32, 0, publisherId),
    ORVO_MSG_PART(OwireUpdateMsg, OWIRE_UPMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kCloseParts[] = {
    ORVO_MSG_PART(OwireCloseMsg, OWIRE_CLMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kAckParts[] = {
    {OWIRE_AKMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireAckMsg, 0, K::kVarU32, 0, ackId),
    ORVO_MSG_PART(OwireAckMsg, OWIRE_AKMF_HAS_NAK_CODE, K::kU8, 0, nakCode),
    ORVO_MSG_PART(OwireAckMsg, OWIRE_AKMF_HAS_SEQ_NUM, K::kVarU32, 0, seqNum),
    ORVO_MSG_PART(OwireAckMsg, OWIRE_AKMF_HAS_TEXT, K::kBuffer, OWIRE_CPMF_NAK_TEXT, text),
    ORVO_MSG_PART(OwireAckMsg, OWIRE_AKMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kGenericParts[] = {
    {OWIRE_GNMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwireGenericMsg, OWIRE_GNMF_HAS_SEQ_NUM, K::kVarU32, 0, seqNum),
    ORVO_MSG_PART(OwireGenericMsg, OWIRE_GNMF_HAS_SECONDARY_SEQ_NUM, K::kVarU32, 0,
                  secondarySeqNum),
    ORVO_MSG_PART(OwireGenericMsg, OWIRE_GNMF_HAS_PERM_DATA, K::kBuffer, OWIRE_CPMF_PERM_DATA,
                  permissionData),
    ORVO_MSG_PART(OwireGenericMsg, OWIRE_GNMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

constexpr MsgPart kPostParts[] = {
    {OWIRE_PSMF_HAS_MSG_KEY, K::kKey, 0, kKeyOffset},
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_PART_NUM, K::kU16, 0, partNum),
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_POST_USER_RIGHTS, K::kU16, 0, postUserRights),
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_SEQ_NUM, K::kVarU32, 0, seqNum),
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_POST_ID, K::kVarU32, 0, postId),
    ORVO_MSG_PART(OwirePostMsg, 0, K::kVarU32, 0, publisherAddress),
    ORVO_MSG_PART(OwirePostMsg, 0, K::kVarU32, 0, publisherId),
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_PERM_DATA, K::kBuffer, OWIRE_CPMF_PERM_DATA,
                  permissionData),
    ORVO_MSG_PART(OwirePostMsg, OWIRE_PSMF_HAS_HEADER, K::kBuffer, OWIRE_CPMF_HEADER, header),
};

#undef ORVO_MSG_PART
#undef ORVO_MSG_OFFSET

template <std::size_t N>
constexpr MsgPartList listOf(const MsgPart (&parts)[N]) {
  return MsgPartList{parts, static_cast<int>(N)};
}

// Indexed by msgClass; entry 0 stands for every unknown class.
constexpr MsgClassLayout kLayouts[] = {
    {0, {nullptr, 0}},
    {sizeof(OwireRequestMsg), listOf(kRequestParts)},
    {sizeof(OwireRefreshMsg), listOf(kRefreshParts)},
    {sizeof(OwireStatusMsg), listOf(kStatusParts)},
    {sizeof(OwireUpdateMsg), listOf(kUpdateParts)},
    {sizeof(OwireCloseMsg), listOf(kCloseParts)},
    {sizeof(OwireAckMsg), listOf(kAckParts)},
    {sizeof(OwireGenericMsg), listOf(kGenericParts)},
    {sizeof(OwirePostMsg), listOf(kPostParts)},
};

constexpr MsgPartList kKeyPartList = listOf(kKeyParts);
constexpr MsgPartList kBaseBufferList = listOf(kBaseBuffers);

}  // namespace

const MsgClassLayout* msgClassLayout(UInt8 msgClass) {
  if (msgClass < OWIRE_MC_REQUEST || msgClass > OWIRE_MC_POST) return nullptr;
  return &kLayouts[msgClass];
}

const MsgPartList& msgKeyParts() { return kKeyPartList; }

const MsgPartList& msgBaseBuffers() { return kBaseBufferList; }

}  // namespace owire
}  // namespace orvo
