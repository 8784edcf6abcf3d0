// The identity of the item a message is about: name, name type, service
// (by name or by id, not both), data mask, id and an optional attrib payload.
// A bit of the hint mask, not the value of a field, tells whether the field
// is present. A managed object copies what it is given; an unmanaged one
// keeps views whose sources must outlive it.
#ifndef ORVO_MESSAGE_ATTRIB_INFO_H_
#define ORVO_MESSAGE_ATTRIB_INFO_H_

#include "orvo/common/Data.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/Types.h"
#include "orvo/data/NoData.h"

namespace orvo {
namespace message {

class AttribInfo {
 public:
  enum HintMaskFlags {
    DataMaskFlag = 0x01,
    NameFlag = 0x02,
    NameTypeFlag = 0x04,
    ServiceNameFlag = 0x08,
    IDFlag = 0x10,
    AttribFlag = 0x20,
    ServiceIDFlag = 0x40
  };

  explicit AttribInfo(bool managed);
  // Copies the fields whose bits are set in `other`, and the data mask.
  AttribInfo(const AttribInfo& other);
  AttribInfo& operator=(const AttribInfo& other);
  virtual ~AttribInfo();

  // A heap copy; the caller deletes it.
  AttribInfo* clone() const;
  // Back to the just-built state, except that the service id value stays
  // (only its bit goes) and the managed flag stays.
  void clear();

  common::UInt8 getHintMask() const { return _hintMask; }

  common::UInt32 getDataMask() const { return _dataMask; }
  void setDataMask(common::UInt32 dataMask);

  const common::ORVO_String& getName() const { return _name; }
  // On an unmanaged object an empty name leaves the former name in place;
  // the bit is set either way.
  void setName(const common::ORVO_String& name);

  common::UInt8 getNameType() const { return _nameType; }
  void setNameType(common::UInt8 nameType);

  const common::ORVO_String& getServiceName() const { return _serviceName; }
  // Fails (bad value) when the service id is set and the name is not.
  virtual void setServiceName(const common::ORVO_String& serviceName);

  common::UInt32 getServiceID() const { return _serviceId; }
  // Fails (bad value) when the service name is set and the id is not.
  virtual void setServiceID(common::UInt32 serviceId);

  common::Int32 getID() const { return _id; }
  void setID(common::Int32 id);

  // Never null: the empty attrib storage when no attrib was set.
  const common::Data& getAttrib() const;
  // Any container (or message) is accepted; a primitive value fails (bad
  // value). Managed: the bytes are copied into the object's own storage.
  void setAttrib(const common::Data& data);

  // For decoding: stores the name (its bit only when it is not empty) and,
  // when `hasId`, the id, without the exclusion rule of the public setters.
  void setServiceInt(const common::ORVO_String& name, common::UInt32 id, bool hasId);

 private:
  void storeString(common::ORVO_String& target, const common::ORVO_String& source);
  void copyAttribIntoStorage(const common::Data& data);
  void releaseAttribImage();
  common::Data& storage();
  const common::Data& storage() const;

  common::UInt8 _hintMask;
  common::ORVO_String _name;
  common::UInt8 _nameType;
  common::ORVO_String _serviceName;
  common::UInt32 _serviceId;
  common::Int32 _id;
  common::UInt32 _dataMask;
  // Room for any data object, rebuilt in place as the attrib's class.
  alignas(data::NoData) unsigned char _attribStorage[sizeof(data::NoData)];
  mutable const common::Data* _attrib;
  bool _managed;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_ATTRIB_INFO_H_
