// The wire codec's whole-message records and functions.
//
// An OwireMsg is a union over the eight message classes. Every class record
// begins with the same OwireMsgBase, so `msg.msgBase.msgClass` tells which
// member is in use and the common fields can be read through any member. A
// class record is only read up to its own size: a caller that knows the class
// may hand over a smaller record (a close, say) cast to OwireMsg.
//
// Buffers are views: an OwfBuffer with length 0 is absent. Records filled by
// owireDecodeMsg point into the decoded bytes and own nothing; a record made by
// owireCopyMsg lies in one block together with every byte it points at.
#ifndef ORVO_OWIRE_OWIRE_MSG_H_
#define ORVO_OWIRE_OWIRE_MSG_H_

#include "orvo/owire/owire.h"

// ---------------------------------------------------------------------------
// Message classes and the body format that means "no body".

enum OwireMsgClasses {
  OWIRE_MC_REQUEST = 1,
  OWIRE_MC_REFRESH = 2,
  OWIRE_MC_STATUS = 3,
  OWIRE_MC_UPDATE = 4,
  OWIRE_MC_CLOSE = 5,
  OWIRE_MC_ACK = 6,
  OWIRE_MC_GENERIC = 7,
  OWIRE_MC_POST = 8,
};

enum { OWIRE_BODY_FORMAT_NONE = 0x80 };

// ---------------------------------------------------------------------------
// Parts shared by several classes.

struct OwireQos {
  UInt8 timeliness;  // 0 not given, 1 real time, 2 delayed unknown, 3 delayed by timeInfo
  UInt8 rate;        // 0 not given, 1 tick by tick, 2 just-in-time filtered, 3 by rateInfo
  UInt8 qosBits;     // bit 0: the stream property of a request
  UInt16 timeInfo;
  UInt16 rateInfo;
};

struct OwireState {
  UInt8 streamState;
  UInt8 dataState;
  UInt8 statusCode;
  OwfBuffer text;
};

struct OwireMsgKey {
  UInt16 keyFlags;  // OWIRE_MKF_*; other bits are carried and not interpreted
  UInt16 serviceId;
  UInt8 nameType;
  OwfBuffer name;
  UInt32 filter;
  Int32 identifier;
  UInt8 attribFormat;  // data format of attrib
  OwfBuffer attrib;
};
enum OwireMsgKeyFlags {
  OWIRE_MKF_HAS_SERVICE_ID = 0x01,
  OWIRE_MKF_HAS_NAME = 0x02,
  OWIRE_MKF_HAS_NAME_TYPE = 0x04,
  OWIRE_MKF_HAS_FILTER = 0x08,
  OWIRE_MKF_HAS_IDENTIFIER = 0x10,
  OWIRE_MKF_HAS_ATTRIB = 0x20,
};

struct OwireMsgBase {
  UInt8 msgClass;    // OwireMsgClasses
  UInt8 modelType;   // message model type (domain)
  UInt8 bodyFormat;  // data format of body; OWIRE_BODY_FORMAT_NONE when there is none
  Int32 streamId;
  OwireMsgKey key;       // travels only when the class and its flags say so
  OwfBuffer body;        // the encoded body
  OwfBuffer rawMessage;  // the whole encoded message; filled by decoding
  UInt16 flags;          // per class, see below; bits a class does not define are carried
};

// ---------------------------------------------------------------------------
// The class records. Each flag that names a part makes that part travel.

struct OwireRequestMsg {
  OwireMsgBase msgBase;
  UInt8 priorityClass;
  UInt16 priorityCount;
  OwireQos qos;
  OwireQos worstQos;
  OwfBuffer header;
};
enum OwireRequestFlags {
  OWIRE_RQMF_HAS_HEADER = 0x0001,
  OWIRE_RQMF_HAS_PRIORITY = 0x0002,  // priorityClass and priorityCount
  OWIRE_RQMF_STREAMING = 0x0004,
  OWIRE_RQMF_INDICATION_01 = 0x0008,  // indications the data model carries through
  OWIRE_RQMF_INDICATION_02 = 0x0010,
  OWIRE_RQMF_NO_REFRESH = 0x0020,
  OWIRE_RQMF_HAS_QOS = 0x0040,
  OWIRE_RQMF_HAS_WORST_QOS = 0x0080,
  OWIRE_RQMF_INDICATION_80 = 0x0100,
  OWIRE_RQMF_PAUSE = 0x0200,
  OWIRE_RQMF_INDICATION_04 = 0x0400,
  OWIRE_RQMF_INDICATION_08 = 0x0800,
};
// A request always carries its key.

struct OwireRefreshMsg {
  OwireMsgBase msgBase;
  UInt32 seqNum;
  OwireState state;   // always carried
  OwfBuffer groupId;  // always carried, possibly empty
  OwfBuffer permissionData;
  UInt32 publisherAddress;
  UInt32 publisherId;
  OwireQos qos;
  OwfBuffer header;
};
enum OwireRefreshFlags {
  OWIRE_RFMF_HAS_HEADER = 0x0001,
  OWIRE_RFMF_HAS_PERM_DATA = 0x0002,
  OWIRE_RFMF_HAS_MSG_KEY = 0x0008,
  OWIRE_RFMF_HAS_SEQ_NUM = 0x0010,
  OWIRE_RFMF_SOLICITED = 0x0020,
  OWIRE_RFMF_REFRESH_COMPLETE = 0x0040,
  OWIRE_RFMF_HAS_QOS = 0x0080,
  OWIRE_RFMF_CLEAR_CACHE = 0x0100,
  OWIRE_RFMF_DO_NOT_CACHE = 0x0200,
  OWIRE_RFMF_PRIVATE_STREAM = 0x0400,
  OWIRE_RFMF_HAS_PUBLISHER_INFO = 0x0800,  // publisherAddress and publisherId
};

struct OwireStatusMsg {
  OwireMsgBase msgBase;
  OwireState state;
  OwfBuffer groupId;
  OwfBuffer permissionData;
  UInt32 publisherAddress;
  UInt32 publisherId;
  OwfBuffer header;
};
enum OwireStatusFlags {
  OWIRE_STMF_HAS_HEADER = 0x0001,
  OWIRE_STMF_HAS_PERM_DATA = 0x0002,
  OWIRE_STMF_HAS_MSG_KEY = 0x0008,
  OWIRE_STMF_HAS_GROUP_ID = 0x0010,
  OWIRE_STMF_HAS_STATE = 0x0020,
  OWIRE_STMF_CLEAR_CACHE = 0x0040,
  OWIRE_STMF_PRIVATE_STREAM = 0x0080,
  OWIRE_STMF_HAS_PUBLISHER_INFO = 0x0100,
};

struct OwireUpdateMsg {
  OwireMsgBase msgBase;
  UInt8 updateType;  // always carried
  UInt32 seqNum;
  UInt16 conflationCount;
  UInt16 conflationTime;
  OwfBuffer permissionData;
  UInt32 publisherAddress;
  UInt32 publisherId;
  OwfBuffer header;
};
enum OwireUpdateFlags {
  OWIRE_UPMF_HAS_HEADER = 0x0001,
  OWIRE_UPMF_HAS_PERM_DATA = 0x0002,
  OWIRE_UPMF_HAS_MSG_KEY = 0x0008,
  OWIRE_UPMF_HAS_SEQ_NUM = 0x0010,
  OWIRE_UPMF_HAS_CONF_INFO = 0x0020,  // conflationCount and conflationTime
  OWIRE_UPMF_DO_NOT_CACHE = 0x0040,
  OWIRE_UPMF_DO_NOT_CONFLATE = 0x0080,
  OWIRE_UPMF_DO_NOT_RIPPLE = 0x0100,
  OWIRE_UPMF_HAS_PUBLISHER_INFO = 0x0200,
};

// A close has no key: its key fields do not travel.
struct OwireCloseMsg {
  OwireMsgBase msgBase;
  OwfBuffer header;
};
enum OwireCloseFlags { OWIRE_CLMF_HAS_HEADER = 0x0001 };

struct OwireAckMsg {
  OwireMsgBase msgBase;
  UInt32 ackId;  // always carried
  UInt8 nakCode;
  UInt32 seqNum;
  OwfBuffer text;
  OwfBuffer header;
};
enum OwireAckFlags {
  OWIRE_AKMF_HAS_HEADER = 0x0001,
  OWIRE_AKMF_HAS_TEXT = 0x0002,
  OWIRE_AKMF_HAS_SEQ_NUM = 0x0008,
  OWIRE_AKMF_HAS_MSG_KEY = 0x0010,
  OWIRE_AKMF_HAS_NAK_CODE = 0x0020,
};

struct OwireGenericMsg {
  OwireMsgBase msgBase;
  UInt32 seqNum;
  UInt32 secondarySeqNum;
  OwfBuffer permissionData;  // carried for peers; the data model leaves it empty
  OwfBuffer header;
};
enum OwireGenericFlags {
  OWIRE_GNMF_HAS_HEADER = 0x0001,
  OWIRE_GNMF_HAS_PERM_DATA = 0x0002,
  OWIRE_GNMF_HAS_MSG_KEY = 0x0004,
  OWIRE_GNMF_HAS_SEQ_NUM = 0x0008,
  OWIRE_GNMF_MESSAGE_COMPLETE = 0x0010,
  OWIRE_GNMF_HAS_SECONDARY_SEQ_NUM = 0x0020,
};

struct OwirePostMsg {
  OwireMsgBase msgBase;
  UInt16 partNum;
  UInt16 postUserRights;
  UInt32 seqNum;
  UInt32 postId;
  UInt32 publisherAddress;  // always carried, with publisherId
  UInt32 publisherId;
  OwfBuffer permissionData;
  OwfBuffer header;
};
enum OwirePostFlags {
  OWIRE_PSMF_HAS_HEADER = 0x0001,
  OWIRE_PSMF_HAS_POST_ID = 0x0002,
  OWIRE_PSMF_HAS_MSG_KEY = 0x0004,
  OWIRE_PSMF_HAS_SEQ_NUM = 0x0008,
  OWIRE_PSMF_POST_COMPLETE = 0x0020,
  OWIRE_PSMF_ACK = 0x0040,
  OWIRE_PSMF_HAS_PERM_DATA = 0x0080,
  OWIRE_PSMF_HAS_PART_NUM = 0x0100,
  OWIRE_PSMF_HAS_POST_USER_RIGHTS = 0x0200,
};

union OwireMsg {
  OwireMsgBase msgBase;
  OwireRequestMsg requestMsg;
  OwireRefreshMsg refreshMsg;
  OwireStatusMsg statusMsg;
  OwireUpdateMsg updateMsg;
  OwireCloseMsg closeMsg;
  OwireAckMsg ackMsg;
  OwireGenericMsg genericMsg;
  OwirePostMsg postMsg;
};

// ---------------------------------------------------------------------------
// Copy masks: which buffers owireCopyMsg copies. A buffer left out of the mask
// is empty (length 0, null data) in the copy.
enum OwireCopyMsgFlags {
  OWIRE_CPMF_KEY_NAME = 0x001,
  OWIRE_CPMF_KEY_ATTRIB = 0x002,
  OWIRE_CPMF_BODY = 0x004,
  OWIRE_CPMF_HEADER = 0x008,
  OWIRE_CPMF_PERM_DATA = 0x010,
  OWIRE_CPMF_GROUP_ID = 0x020,
  OWIRE_CPMF_STATE_TEXT = 0x040,
  OWIRE_CPMF_NAK_TEXT = 0x080,
  OWIRE_CPMF_RAW_MESSAGE = 0x100,
  OWIRE_CPMF_ALL = 0xFFF,
};

// owireCopyMsg's third argument.
enum OwireCopyMsgStorage {
  OWIRE_COPY_INTO_BUFFER = -1,  // lay the copy into the caller's buffer
  OWIRE_COPY_ALLOCATE = 0,      // allocate; end with owireReleaseCopiedMsg
};

// ---------------------------------------------------------------------------
// Functions.

// Writes `msg` at the iterator's position and advances it; on any failure the
// iterator is left as it was. OWIRE_RET_BUFFER_TOO_SMALL when the rest of the
// buffer cannot hold the message; OWIRE_RET_INVALID_ARGUMENT for a null
// argument, an unknown class or a travelling buffer with a length and no
// data; OWIRE_RET_INVALID_DATA for a quality of service that has no wire form.
int owireEncodeMsg(OwfEncodeIterator* iter, const OwireMsg* msg);

// Reads one message: all bytes from the iterator's position to the end of its
// buffer. Clears `msg` first. Every buffer filled points into those bytes and
// rawMessage covers them all. Total: any input gives a return code, nothing is
// read outside the bytes and nothing is allocated.
int owireDecodeMsg(OwfDecodeIterator* iter, OwireMsg* msg);

// Bytes needed by either a copy with `copyMask` (for any alignment of the
// caller's buffer) or an encoding of `msg`, whichever is larger. A negative
// code when `msg` is null, of an unknown class or too large for an int.
int owireSizeOfMsg(const OwireMsg* msg, UInt32 copyMask);

// A deep copy of `msg`, with the buffers selected by `copyMask`.
// `storage` OWIRE_COPY_INTO_BUFFER: laid into `buffer`, which must hold
// owireSizeOfMsg bytes; the copy must not be released. OWIRE_COPY_ALLOCATE:
// `buffer` is ignored and the copy is allocated in one block.
// Null when `msg` is null or of an unknown class, or the buffer is too small.
OwireMsg* owireCopyMsg(const OwireMsg* msg, UInt32 copyMask, int storage, OwfBuffer* buffer);

// Frees a record made by owireCopyMsg with OWIRE_COPY_ALLOCATE, or a record
// handed over to the codec that was allocated with std::malloc. Null is a no-op.
int owireReleaseCopiedMsg(OwireMsg* msg);

// 1 when `msg` can be encoded and copied: a known class, and every buffer of
// the class that has a length has data. 0 otherwise. Reads no buffer contents.
int owireValidateMsg(const OwireMsg* msg);

// The key inside `msg`, or null when its class has none or its flags say it
// is absent.
OwireMsgKey* owireGetMsgKey(OwireMsg* msg);
const OwireMsgKey* owireGetMsgKey(const OwireMsg* msg);

#endif  // ORVO_OWIRE_OWIRE_MSG_H_
