// The response message: a refresh, a status or an update for an item. It
// carries an AttribInfo, a status, a quality of service, a Manifest, an
// opaque header, a payload and a publisher identity, each present when its
// hint bit is set.
//
// A managed message copies what the setters give it; an unmanaged one keeps
// pointers to the caller's objects, which must outlive it. Decoded messages
// (setEncodedBuffer) view the bytes the message copied for itself.
//
// getEncodedBuffer encodes once and keeps the bytes: setters called later do
// not change what it returns until clear().
#ifndef ORVO_MESSAGE_RESP_MSG_H_
#define ORVO_MESSAGE_RESP_MSG_H_

#include <memory>
#include <vector>

#include "orvo/common/Buffer.h"
#include "orvo/common/Data.h"
#include "orvo/common/Msg.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/common/PublisherPrincipalIdentity.h"
#include "orvo/common/QualityOfService.h"
#include "orvo/common/RespStatus.h"
#include "orvo/common/Types.h"
#include "orvo/message/ManifestInt.h"

namespace orvo {
namespace data {
class NoData;
}  // namespace data

namespace message {

class AttribInfo;
class Manifest;
class RespMsgInt;

class RespMsg : public common::Msg {
 public:
  enum RespType : common::Int32 { RefreshResp = 1, StatusResp = 2, UpdateResp = 3 };

  enum HintMaskFlag {
    RespTypeNumFlag = 0x01,
    RespStatusFlag = 0x02,
    QualityOfServiceFlag = 0x04,
    AttribInfoFlag = 0x08,
    ManifestFlag = 0x10,
    HeaderFlag = 0x20,
    PayloadFlag = 0x40,
    PrincipalIdentityFlag = 0x80
  };

  enum IndicationMaskFlag {
    DoNotCacheFlag = 0x01,
    DoNotFilterFlag = 0x02,
    ClearCacheFlag = 0x04,
    RefreshCompleteFlag = 0x08,
    DoNotRippleFlag = 0x10,
    // Only carried to and from the wire; nothing here gives it a meaning.
    CarriedStreamFlag = 0x80
  };

  explicit RespMsg(bool managed);
  // Deep copy of the attributes whose bits are set; the encoded bytes are
  // not copied.
  RespMsg(const RespMsg& other);
  RespMsg& operator=(const RespMsg& other);
  ~RespMsg() override;

  // A heap copy; the caller deletes it.
  virtual RespMsg* clone() const;
  // Back to the just-built state, keeping the model type and the managed
  // flag. Empties the encoded-bytes cache.
  void clear() override;

  RespType getRespType() const { return _respType; }
  void setRespType(RespType respType) { _respType = respType; }
  // A refresh's number is 0 (solicited) or 1; an update's is its update type.
  common::UInt8 getRespTypeNum() const { return _respTypeNum; }
  void setRespTypeNum(common::UInt8 number);

  const common::RespStatus& getRespStatus() const;
  void setRespStatus(const common::RespStatus& status);

  const common::QualityOfService& getQualityOfService() const;
  void setQualityOfService(const common::QualityOfService& qos);

  const AttribInfo& getAttribInfo() const;
  // The message takes the version of the info's attrib.
  void setAttribInfo(const AttribInfo& info);

  const Manifest& getManifest() const;
  void setManifest(const Manifest& manifest);

  const common::Buffer& getHeader() const;
  void setHeader(const common::Buffer& header);

  // Never null: the empty payload storage when no payload was set.
  const common::Data& getPayload() const;
  // Any container, or a DataBuffer holding a container type. A field or
  // element list written with a set definition fails (illegal call); any
  // other type fails as a bad value. The message takes the payload's version.
  void setPayload(const common::Data& data);

  const common::PublisherPrincipalIdentity& getPrincipalIdentity() const {
    return _principalIdentity;
  }
  void setPrincipalIdentity(const common::PublisherPrincipalIdentity& identity);

  // The encoded message. Fails (bad value) when the message cannot be
  // encoded, e.g. a resp type outside 1..3.
  const common::Buffer& getEncodedBuffer() const override;
  // Copies `buffer` and decodes it on top of what the message holds: bits
  // set earlier stay. An empty buffer changes nothing. Bytes that are not a
  // message fail (bad value); the cache then holds those bytes.
  void setEncodedBuffer(const common::Buffer& buffer) override;
  // As above, then names the service of the attrib info.
  void setEncodedBuffer(const common::Buffer& buffer, const common::ORVO_String& serviceName);

  // Applies the rules of responses and of the message's domain:
  // DomainMessageValidatorManager::validateMsg.
  common::UInt8 validateMsg(common::ORVO_String* text, bool isReissue) const;

 private:
  friend class RespMsgInt;

  void copyRespStatus(const common::RespStatus& source);
  void copyPayloadIntoStorage(const common::Data& source);
  void releasePayloadImage();
  void releaseDecodedAttrib();
  void takeVersionOf(const common::Data& data);

  RespType _respType;
  common::UInt8 _respTypeNum;
  common::Buffer _header;
  const common::Buffer* _headerP;
  // A NoData rebuilt in place as the payload's class; deleted as a Data.
  common::Data* _payloadStorage;
  mutable const common::Data* _payloadP;
  ManifestInt _manifest;
  const Manifest* _manifestP;
  AttribInfo* _attribInfoStorage;
  const AttribInfo* _attribInfoP;
  common::QualityOfService _qos;
  const common::QualityOfService* _qosP;
  common::RespStatus _respStatus;
  const common::RespStatus* _respStatusP;
  common::PublisherPrincipalIdentity _principalIdentity;
  // Copies of the bytes given to setEncodedBuffer. All are kept until
  // clear(): attributes that a later decode does not overwrite still view
  // the bytes of an earlier one.
  std::vector<std::unique_ptr<unsigned char[]>> _decodedBytes;

  static const common::ORVO_String _className;
};

}  // namespace message
}  // namespace orvo

#endif  // ORVO_MESSAGE_RESP_MSG_H_
