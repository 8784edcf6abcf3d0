// An EncodedMsg over a wire record (OwireMsg). The record is either borrowed
// (it must outlive the object, as a decoded record on the caller's stack
// does) or an owned deep copy laid into storage the object keeps and reuses
// for the next copy that fits. Alongside the record it carries the service
// name or id, a group id and the version of the connection.
#ifndef ORVO_MESSAGE_OWIRE_ENCODED_MSG_H_
#define ORVO_MESSAGE_OWIRE_ENCODED_MSG_H_

#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/message/EncodedMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {

// A link of a doubly linked list; it points at itself when not in a list.
class ORTSLink {
 public:
  ORTSLink() : _next(this), _prev(this) {}
  ORTSLink(const ORTSLink&) = delete;
  ORTSLink& operator=(const ORTSLink&) = delete;

  void resetLink() { _next = _prev = this; }
  bool isLinked() const { return _next != this; }

  ORTSLink* _next;
  ORTSLink* _prev;
};

class OwireEncodedMsg : public EncodedMsg, public ORTSLink {
 public:
  // A new object with `size` bytes of storage for owned copies.
  static OwireEncodedMsg* create(int size);
  // A new object without storage, holding `msg` as setOwireMsg would.
  static OwireEncodedMsg* create(const OwireMsg* msg, bool copy);

  // Borrows `msg`, or with `copy` lays a deep copy of it into the storage,
  // reallocating to exactly the needed size when the storage is too small.
  // A record the codec cannot size (null, unknown class) leaves no record.
  void setOwireMsg(const OwireMsg* msg, bool copy);
  // Null when empty.
  const OwireMsg* getOwireMsg() const { return _pOwireMsg; }
  // A codec-allocated copy of the owned record for the caller to release
  // with owireReleaseCopiedMsg; the object keeps its record. Detaching a
  // borrowed record is reported as an internal failure.
  OwireMsg* detachOwireMsg();
  // Only sets the owner flag.
  void setOwnership(bool isOwner) { _isOwner = isOwner; }
  bool isOwner() const { return _isOwner; }
  int bufferSize() const { return _bufferSize; }

  const common::ORVO_String& getServiceName() const { return _serviceName; }
  void setServiceName(const common::ORVO_String& serviceName) { _serviceName = serviceName; }
  common::UInt32 getServiceId() const { return _serviceId; }
  void setServiceId(common::UInt32 serviceId);
  bool hasServiceId() const { return _hasServiceId; }

  // Null when no group id is held.
  const OwfBuffer* getGroupId() const;
  // Copies the bytes; null counts as an empty group id.
  void setGroupId(const OwfBuffer* groupId);

  common::UInt8 getConnMajVer() const { return _connMajorVersion; }
  common::UInt8 getConnMinVer() const { return _connMinorVersion; }
  void setConnVersion(common::UInt8 major, common::UInt8 minor);

  // 2 for a request record, 3 for a generic one, 1 for every other class.
  common::UInt8 getMsgType() const override;
  common::UInt8 getMsgModelType() const override;
  // Copies the record (owned), the service name and a set service id; the
  // group id and the version are not copied.
  EncodedMsg* clone() const override;
  // Deletes the object; nothing goes back to a pool.
  void destroy() override;
  // Drops the record, the service name and the group id; keeps the storage,
  // the owner flag, the service id and the version.
  void cleanUp();

 protected:
  explicit OwireEncodedMsg(int size);
  ~OwireEncodedMsg() override;

 private:
  friend class OwireEncodedMsgPool;
  friend class OwireEncodedMsgTestPeer;

  void copyIntoStorage(const OwireMsg* msg);
  bool storageHolds(const void* p) const;
  // Reports an unsound record as an internal failure.
  void validateOwireEncodedMsg() const;

  const OwireMsg* _pOwireMsg;
  common::UInt8* _buffer;
  common::Int32 _bufferSize;
  bool _isOwner;
  common::ORVO_String _serviceName;
  common::UInt32 _serviceId;
  bool _hasServiceId;
  OwfBuffer _groupId;
  common::UInt32 _groupIdCapacity;
  common::UInt8 _connMajorVersion;
  common::UInt8 _connMinorVersion;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_OWIRE_ENCODED_MSG_H_
