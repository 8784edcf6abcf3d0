#include <cstring>
#include <memory>
#include <string>

#include "gtest/gtest.h"
#include "orvo/common/Buffer.h"
#include "orvo/common/UseOrvoVerify.h"
#include "orvo/common/VerifyFailure.h"
#include "orvo/message/OwireEncodedMsg.h"
#include "orvo/message/OwireUnencodedMsg.h"
#include "orvo/owire/owire_msg.h"

namespace orvo {
namespace message {

class OwireEncodedMsgTestPeer {
 public:
  static void validate(const OwireEncodedMsg& msg) { msg.validateOwireEncodedMsg(); }
};

namespace {

using common::UInt32;

// Destroys an EncodedMsg at the end of a scope.
struct Destroyer {
  void operator()(EncodedMsg* msg) const { msg->destroy(); }
};
using EncodedPtr = std::unique_ptr<OwireEncodedMsg, Destroyer>;

struct CodecCopyReleaser {
  void operator()(OwireMsg* msg) const { owireReleaseCopiedMsg(msg); }
};
using CodecCopyPtr = std::unique_ptr<OwireMsg, CodecCopyReleaser>;

OwfBuffer viewOf(std::string& text) {
  return OwfBuffer{static_cast<UInt32>(text.size()), &text[0]};
}

// A refresh with a named key and a body, over strings the caller keeps.
OwireMsg refreshRecord(std::string& name, std::string& body) {
  OwireMsg msg;
  std::memset(&msg, 0, sizeof(msg));
  msg.msgBase.msgClass = OWIRE_MC_REFRESH;
  msg.msgBase.modelType = 6;
  msg.msgBase.bodyFormat = 132;
  msg.msgBase.flags = OWIRE_RFMF_HAS_MSG_KEY;
  msg.msgBase.key.keyFlags = OWIRE_MKF_HAS_NAME;
  msg.msgBase.key.name = viewOf(name);
  msg.msgBase.body = viewOf(body);
  return msg;
}

OwireMsg recordOfClass(UInt8 msgClass) {
  OwireMsg msg;
  std::memset(&msg, 0, sizeof(msg));
  msg.msgBase.msgClass = msgClass;
  msg.msgBase.bodyFormat = OWIRE_BODY_FORMAT_NONE;
  msg.msgBase.modelType = 7;
  return msg;
}

std::string nameOf(const OwireMsg* msg) {
  return std::string(msg->msgBase.key.name.data, msg->msgBase.key.name.length);
}

// Runs `call` with checks switched off and returns the failure report.
template <class Call>
std::string verifyReportOf(Call call) {
  common::setUseOrvoVerify(false);
  std::string report;
  try {
    call();
  } catch (const common::VerifyFailure& failure) {
    report = failure.what();
  }
  common::setUseOrvoVerify(true);
  return report;
}

TEST(OwireEncodedMsgTest, BorrowedRecordIsNotCopied) {
  std::string name = "ACME.X", body = "body-bytes";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, false));
  EXPECT_EQ(&record, msg->getOwireMsg());
  EXPECT_FALSE(msg->isOwner());
  EXPECT_EQ(0, msg->bufferSize());
  EXPECT_EQ(1, msg->getMsgType());
  EXPECT_EQ(6, msg->getMsgModelType());
}

TEST(OwireEncodedMsgTest, CopiedRecordIsIndependentOfItsSource) {
  std::string name = "ACME.X", body = "body-bytes";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, true));
  ASSERT_NE(nullptr, msg->getOwireMsg());
  EXPECT_NE(&record, msg->getOwireMsg());
  EXPECT_TRUE(msg->isOwner());
  EXPECT_EQ(owireSizeOfMsg(&record, OWIRE_CPMF_ALL), msg->bufferSize());

  name.assign("XXXXX");
  body.assign("xxxxxxxxxx");
  EXPECT_EQ("ACME.X", nameOf(msg->getOwireMsg()));
  EXPECT_EQ("body-bytes", std::string(msg->getOwireMsg()->msgBase.body.data,
                                      msg->getOwireMsg()->msgBase.body.length));
}

TEST(OwireEncodedMsgTest, StorageIsReusedWhenTheCopyFitsAndSizedExactlyOtherwise) {
  std::string longName(200, 'L'), shortName = "S", body = "b";
  OwireMsg large = refreshRecord(longName, body);
  OwireMsg small = refreshRecord(shortName, body);
  EncodedPtr msg(OwireEncodedMsg::create(&large, true));
  const int largeSize = msg->bufferSize();

  msg->setOwireMsg(&small, true);
  EXPECT_EQ(largeSize, msg->bufferSize());
  EXPECT_EQ("S", nameOf(msg->getOwireMsg()));

  std::string longer(500, 'M');
  OwireMsg larger = refreshRecord(longer, body);
  msg->setOwireMsg(&larger, true);
  EXPECT_EQ(owireSizeOfMsg(&larger, OWIRE_CPMF_ALL), msg->bufferSize());
  EXPECT_GT(msg->bufferSize(), largeSize);
  EXPECT_EQ(longer, nameOf(msg->getOwireMsg()));
}

TEST(OwireEncodedMsgTest, CopyingItsOwnRecordKeepsIt) {
  std::string name = "SELF", body = "payload";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, true));
  msg->setOwireMsg(msg->getOwireMsg(), true);
  ASSERT_NE(nullptr, msg->getOwireMsg());
  EXPECT_EQ("SELF", nameOf(msg->getOwireMsg()));
}

TEST(OwireEncodedMsgTest, CreatedWithStorageCopiesIntoIt) {
  std::string name = "N", body = "B";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(4096));
  EXPECT_EQ(4096, msg->bufferSize());
  EXPECT_EQ(nullptr, msg->getOwireMsg());
  msg->setOwireMsg(&record, true);
  EXPECT_EQ(4096, msg->bufferSize());
  EXPECT_EQ("N", nameOf(msg->getOwireMsg()));
}

TEST(OwireEncodedMsgTest, UnsizableRecordLeavesNoRecord) {
  OwireMsg unknown = recordOfClass(0);
  EncodedPtr msg(OwireEncodedMsg::create(&unknown, true));
  EXPECT_EQ(nullptr, msg->getOwireMsg());
  EncodedPtr none(OwireEncodedMsg::create(nullptr, true));
  EXPECT_EQ(nullptr, none->getOwireMsg());
}

TEST(OwireEncodedMsgTest, MessageTypeMappingIsCoarse) {
  const struct {
    UInt8 msgClass;
    UInt8 msgType;
  } cases[] = {{OWIRE_MC_REQUEST, 2}, {OWIRE_MC_REFRESH, 1}, {OWIRE_MC_STATUS, 1},
               {OWIRE_MC_UPDATE, 1},  {OWIRE_MC_CLOSE, 1},   {OWIRE_MC_ACK, 1},
               {OWIRE_MC_GENERIC, 3}, {OWIRE_MC_POST, 1}};
  for (const auto& c : cases) {
    OwireMsg record = recordOfClass(c.msgClass);
    EncodedPtr msg(OwireEncodedMsg::create(&record, false));
    EXPECT_EQ(c.msgType, msg->getMsgType()) << "class " << int(c.msgClass);
    EXPECT_EQ(7, msg->getMsgModelType());
  }
}

TEST(OwireEncodedMsgTest, DetachGivesAnIndependentCopyAndKeepsTheRecord) {
  std::string name = "DETACH", body = "b";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, true));
  const OwireMsg* kept = msg->getOwireMsg();
  CodecCopyPtr detached(msg->detachOwireMsg());
  ASSERT_NE(nullptr, detached);
  EXPECT_NE(kept, detached.get());
  EXPECT_EQ(kept, msg->getOwireMsg());
  EXPECT_EQ("DETACH", nameOf(detached.get()));
}

TEST(OwireEncodedMsgTest, DetachOfABorrowedRecordIsReported) {
  std::string name = "N", body = "B";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, false));
  const std::string report = verifyReportOf([&] { CodecCopyPtr copy(msg->detachOwireMsg()); });
  EXPECT_NE(std::string::npos, report.find("ORVO_VERIFY( _isOwner ) failed")) << report;
  EXPECT_NE(std::string::npos, report.find("Cannot detach messages not owned! ")) << report;
  EXPECT_NE(std::string::npos, report.find("OwireEncodedMsg")) << report;

  msg->setOwnership(true);  // only the flag changes
  EXPECT_EQ(&record, msg->getOwireMsg());
  EXPECT_EQ("", verifyReportOf([&] { CodecCopyPtr copy(msg->detachOwireMsg()); }));
}

TEST(OwireEncodedMsgTest, UnsoundRecordIsReported) {
  std::string name = "N", body = "B";
  OwireMsg sound = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&sound, false));
  EXPECT_EQ("", verifyReportOf([&] { OwireEncodedMsgTestPeer::validate(*msg); }));

  OwireMsg unsound = sound;
  unsound.msgBase.body.data = nullptr;  // a length without data
  msg->setOwireMsg(&unsound, false);
  const std::string report = verifyReportOf([&] { OwireEncodedMsgTestPeer::validate(*msg); });
  EXPECT_NE(std::string::npos, report.find("ORVO_VERIFY( owireValidateMsg( _pOwireMsg ) ) failed"))
      << report;
  EXPECT_NE(std::string::npos, report.find("Invalid OwireMsg")) << report;
}

TEST(OwireEncodedMsgTest, GroupIdIsCopiedAndGrowsToExactlyItsLength) {
  EncodedPtr msg(OwireEncodedMsg::create(0));
  EXPECT_EQ(nullptr, msg->getGroupId());
  std::string group = "0123456789ABCDEF!";
  OwfBuffer source = viewOf(group);
  msg->setGroupId(&source);
  group.assign(group.size(), '-');
  ASSERT_NE(nullptr, msg->getGroupId());
  EXPECT_EQ("0123456789ABCDEF!", std::string(msg->getGroupId()->data, msg->getGroupId()->length));
  msg->setGroupId(nullptr);
  EXPECT_EQ(nullptr, msg->getGroupId());
}

TEST(OwireEncodedMsgTest, CleanUpDropsRecordNameAndGroupOnly) {
  std::string name = "N", body = "B", group = "GG";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, true));
  const int storage = msg->bufferSize();
  OwfBuffer groupId = viewOf(group);
  msg->setGroupId(&groupId);
  msg->setServiceName("FEED");
  msg->setServiceId(12);
  msg->setConnVersion(15, 3);

  msg->cleanUp();
  EXPECT_EQ(nullptr, msg->getOwireMsg());
  EXPECT_EQ(nullptr, msg->getGroupId());
  EXPECT_TRUE(msg->getServiceName().empty());
  EXPECT_TRUE(msg->hasServiceId());
  EXPECT_EQ(12u, msg->getServiceId());
  EXPECT_EQ(15, msg->getConnMajVer());
  EXPECT_EQ(3, msg->getConnMinVer());
  EXPECT_TRUE(msg->isOwner());
  EXPECT_EQ(storage, msg->bufferSize());
}

TEST(OwireEncodedMsgTest, CloneCopiesRecordAndServiceButNotGroupOrVersion) {
  std::string name = "CLONE", body = "B", group = "GG";
  OwireMsg record = refreshRecord(name, body);
  EncodedPtr msg(OwireEncodedMsg::create(&record, false));
  OwfBuffer groupId = viewOf(group);
  msg->setGroupId(&groupId);
  msg->setServiceName("FEED");
  msg->setConnVersion(15, 1);

  EncodedPtr copy(static_cast<OwireEncodedMsg*>(msg->clone()));
  EXPECT_NE(&record, copy->getOwireMsg());
  EXPECT_TRUE(copy->isOwner());
  EXPECT_EQ("CLONE", nameOf(copy->getOwireMsg()));
  EXPECT_EQ("FEED", std::string(copy->getServiceName().c_str()));
  EXPECT_FALSE(copy->hasServiceId());
  EXPECT_EQ(nullptr, copy->getGroupId());
  EXPECT_EQ(14, copy->getConnMajVer());
  EXPECT_EQ(0, copy->getConnMinVer());

  msg->setServiceId(33);
  EncodedPtr withId(static_cast<OwireEncodedMsg*>(msg->clone()));
  EXPECT_TRUE(withId->hasServiceId());
  EXPECT_EQ(33u, withId->getServiceId());
}

TEST(OwireUnencodedMsgTest, CopyAndTakeOver) {
  std::string name = "UNENC", body = "B";
  OwireMsg record = refreshRecord(name, body);
  OwireUnencodedMsg copied(&record, true);
  EXPECT_NE(&record, copied.getOwireMsg());
  EXPECT_EQ("UNENC", nameOf(copied.getOwireMsg()));
  EXPECT_EQ(0x8D, copied.getDataType());
  EXPECT_EQ(0, copied.getMsgType());
  EXPECT_EQ(0, copied.getMsgModelType());

  // A record handed over without copy is released with the object.
  OwireMsg* handedOver = owireCopyMsg(&record, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  std::unique_ptr<OwireUnencodedMsg> owner(new OwireUnencodedMsg(handedOver, false));
  EXPECT_EQ(handedOver, owner->getOwireMsg());
  std::unique_ptr<OwireUnencodedMsg> clone(owner->clone());
  owner.reset();
  EXPECT_EQ("UNENC", nameOf(clone->getOwireMsg()));

  OwireUnencodedMsg empty(nullptr, false);
  EXPECT_EQ(nullptr, empty.getOwireMsg());
}

TEST(OwireUnencodedMsgTest, EncodedBufferIsKeptAsGivenWithoutEncoding) {
  std::string name = "N", body = "B";
  OwireMsg record = refreshRecord(name, body);
  OwireUnencodedMsg msg(&record, true);
  common::Msg& asMsg = msg;
  EXPECT_EQ(0, asMsg.getEncodedBuffer().size());
  unsigned char bytes[] = {1, 2, 3};
  asMsg.setEncodedBuffer(common::Buffer(bytes, 3, 3, false));
  EXPECT_EQ(3, asMsg.getEncodedBuffer().size());
  EXPECT_EQ(0, std::memcmp(bytes, asMsg.getEncodedBuffer().c_buf(), 3));
  EXPECT_FALSE(asMsg.isBlank());
}

}  // namespace
}  // namespace message
}  // namespace orvo
