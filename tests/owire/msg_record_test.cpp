// Operations on message records themselves: deep copy and release, size,
// validation and the key lookup.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "orvo/owire/owire_msg.h"
#include "tests/owire/msg_samples.h"

#define ORVO_EXPECT_SAME_MSG(a, b) EXPECT_EQ(orvo_test::msgDifference(a, b), "")
#define ORVO_EXPECT_SAME_TEXT(a, b) EXPECT_EQ(orvo_test::textOf(a), orvo_test::textOf(b))

namespace {

using orvo_test::ClassSample;

class MsgRecordTest : public ::testing::TestWithParam<ClassSample> {
 protected:
  OwireMsg full() const {
    OwireMsg msg;
    orvo_test::makeFull(GetParam(), &msg);
    return msg;
  }
};

// The copy must own every byte it points at: the source's bytes are
// overwritten before the copy is read.
TEST_P(MsgRecordTest, AllocatedCopyIsDeepAndReleasable) {
  OwireMsg source = full();
  OwireMsg expected = source;
  OwireMsg* copy = owireCopyMsg(&source, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  ASSERT_NE(copy, nullptr);

  const char* block = reinterpret_cast<const char*>(copy);
  const char* blockEnd = block + owireSizeOfMsg(&source, OWIRE_CPMF_ALL);
  for (const OwfBuffer& buffer : orvo_test::buffersOf(*copy)) {
    EXPECT_TRUE(orvo_test::liesWithin(buffer, block, blockEnd));
  }
  std::memset(&source, 0xA5, sizeof(source));
  ORVO_EXPECT_SAME_MSG(expected, *copy);
  EXPECT_EQ(owireValidateMsg(copy), 1);
  EXPECT_EQ(owireReleaseCopiedMsg(copy), OWIRE_RET_SUCCESS);
}

// The caller's storage need not be aligned; the size asked for is enough
// wherever the storage starts, and one byte less than needed is refused.
TEST_P(MsgRecordTest, CopyIntoCallerBufferAtAnyAlignment) {
  const OwireMsg source = full();
  const int size = owireSizeOfMsg(&source, OWIRE_CPMF_ALL);
  ASSERT_GT(size, static_cast<int>(sizeof(OwireMsg)));
  std::vector<char> storage(size + 16);
  for (std::size_t shift = 0; shift < 8; ++shift) {
    SCOPED_TRACE(shift);
    OwfBuffer buffer{static_cast<UInt32>(size), storage.data() + shift};
    OwireMsg* copy = owireCopyMsg(&source, OWIRE_CPMF_ALL, OWIRE_COPY_INTO_BUFFER, &buffer);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(copy) % alignof(OwireMsg), 0u);
    for (const OwfBuffer& part : orvo_test::buffersOf(*copy)) {
      EXPECT_TRUE(orvo_test::liesWithin(part, buffer.data, buffer.data + buffer.length));
    }
    ORVO_EXPECT_SAME_MSG(source, *copy);
  }
  OwfBuffer tooSmall{static_cast<UInt32>(sizeof(OwireMsg)), storage.data()};
  EXPECT_EQ(owireCopyMsg(&source, OWIRE_CPMF_ALL, OWIRE_COPY_INTO_BUFFER, &tooSmall), nullptr);
  EXPECT_EQ(owireCopyMsg(&source, OWIRE_CPMF_ALL, OWIRE_COPY_INTO_BUFFER, nullptr), nullptr);
}

std::string sampleName(const ::testing::TestParamInfo<ClassSample>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(AllClasses, MsgRecordTest, ::testing::ValuesIn(orvo_test::classSamples()),
                         sampleName);

OwireMsg fullOf(UInt8 msgClass) {
  for (const ClassSample& sample : orvo_test::classSamples()) {
    if (sample.msgClass == msgClass) {
      OwireMsg msg;
      orvo_test::makeFull(sample, &msg);
      return msg;
    }
  }
  ADD_FAILURE() << "no sample of class " << int{msgClass};
  return OwireMsg{};
}

TEST(MsgCopyMask, BuffersLeftOutOfTheMaskAreEmptyInTheCopy) {
  const OwireMsg source = fullOf(OWIRE_MC_REFRESH);
  const UInt32 mask = OWIRE_CPMF_HEADER | OWIRE_CPMF_KEY_NAME;
  EXPECT_LT(owireSizeOfMsg(&source, mask), owireSizeOfMsg(&source, OWIRE_CPMF_ALL));
  OwireMsg* copy = owireCopyMsg(&source, mask, OWIRE_COPY_ALLOCATE, nullptr);
  ASSERT_NE(copy, nullptr);
  ORVO_EXPECT_SAME_TEXT(copy->refreshMsg.header, source.refreshMsg.header);
  ORVO_EXPECT_SAME_TEXT(copy->msgBase.key.name, source.msgBase.key.name);
  for (const OwfBuffer* left :
       {&copy->msgBase.body, &copy->msgBase.key.attrib, &copy->refreshMsg.permissionData,
        &copy->refreshMsg.groupId, &copy->refreshMsg.state.text}) {
    EXPECT_EQ(left->length, 0u);
    EXPECT_EQ(left->data, nullptr);
  }
  EXPECT_EQ(copy->refreshMsg.seqNum, source.refreshMsg.seqNum);
  owireReleaseCopiedMsg(copy);
}

// A close may be handed over as its own, smaller record; nothing past it is
// read, and the rest of the copy is zero.
TEST(MsgCopy, CloseRecordIsReadOnlyUpToItsOwnSize) {
  OwireCloseMsg close;
  std::memset(&close, 0, sizeof(close));
  close.msgBase.msgClass = OWIRE_MC_CLOSE;
  close.msgBase.flags = OWIRE_CLMF_HAS_HEADER;
  close.header = orvo_test::bufferOf("bye");
  const auto* record = reinterpret_cast<const OwireMsg*>(&close);
  EXPECT_EQ(owireValidateMsg(record), 1);
  EXPECT_EQ(owireGetMsgKey(record), nullptr);
  OwireMsg* copy = owireCopyMsg(record, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(orvo_test::textOf(copy->closeMsg.header), "bye");
  owireReleaseCopiedMsg(copy);
}

TEST(MsgCopy, RawMessageOfADecodedRecordIsCopied) {
  OwireMsg source = fullOf(OWIRE_MC_UPDATE);
  std::vector<char> bytes(owireSizeOfMsg(&source, OWIRE_CPMF_ALL));
  OwfBuffer out{static_cast<UInt32>(bytes.size()), bytes.data()};
  OwfEncodeIterator encoder;
  clearEncodeIterator(&encoder);
  setEncodeIteratorBuffer(&encoder, &out);
  ASSERT_EQ(owireEncodeMsg(&encoder, &source), OWIRE_RET_SUCCESS);
  OwfBuffer in{getEncodedLength(&encoder), bytes.data()};
  OwfDecodeIterator decoder;
  clearDecodeIterator(&decoder);
  setDecodeIteratorBuffer(&decoder, &in);
  OwireMsg decoded;
  ASSERT_EQ(owireDecodeMsg(&decoder, &decoded), OWIRE_RET_SUCCESS);

  OwireMsg* copy = owireCopyMsg(&decoded, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  ASSERT_NE(copy, nullptr);
  const std::string raw(bytes.data(), in.length);
  std::memset(bytes.data(), 0, bytes.size());
  EXPECT_EQ(orvo_test::textOf(copy->msgBase.rawMessage), raw);
  owireReleaseCopiedMsg(copy);
}

TEST(MsgRecordBadInput, UnsoundRecordsFailValidateCopyAndSize) {
  EXPECT_EQ(owireValidateMsg(nullptr), 0);
  EXPECT_LT(owireSizeOfMsg(nullptr, OWIRE_CPMF_ALL), 0);
  EXPECT_EQ(owireCopyMsg(nullptr, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr), nullptr);
  EXPECT_EQ(owireReleaseCopiedMsg(nullptr), OWIRE_RET_SUCCESS);

  OwireMsg unknown = fullOf(OWIRE_MC_POST);
  unknown.msgBase.msgClass = 0;
  EXPECT_EQ(owireValidateMsg(&unknown), 0);
  EXPECT_LT(owireSizeOfMsg(&unknown, OWIRE_CPMF_ALL), 0);
  EXPECT_EQ(owireCopyMsg(&unknown, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr), nullptr);

  // A length without data, in a part of the class or of the common record.
  OwireMsg noData = fullOf(OWIRE_MC_ACK);
  noData.ackMsg.text.data = nullptr;
  EXPECT_EQ(owireValidateMsg(&noData), 0);
  noData = fullOf(OWIRE_MC_ACK);
  noData.msgBase.key.attrib.data = nullptr;
  EXPECT_EQ(owireValidateMsg(&noData), 0);
  // Copying it anyway leaves that buffer empty instead of reading null.
  OwireMsg* copy = owireCopyMsg(&noData, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->msgBase.key.attrib.length, 0u);
  owireReleaseCopiedMsg(copy);
}

TEST(MsgGetKey, KeyIsFoundByClassAndFlag) {
  struct Case {
    UInt8 msgClass;
    UInt16 keyFlag;  // 0: the class always has its key
  };
  for (const Case& c :
       {Case{OWIRE_MC_REFRESH, OWIRE_RFMF_HAS_MSG_KEY},
        Case{OWIRE_MC_STATUS, OWIRE_STMF_HAS_MSG_KEY},
        Case{OWIRE_MC_UPDATE, OWIRE_UPMF_HAS_MSG_KEY}, Case{OWIRE_MC_ACK, OWIRE_AKMF_HAS_MSG_KEY},
        Case{OWIRE_MC_GENERIC, OWIRE_GNMF_HAS_MSG_KEY},
        Case{OWIRE_MC_POST, OWIRE_PSMF_HAS_MSG_KEY}}) {
    SCOPED_TRACE(int{c.msgClass});
    OwireMsg msg;
    orvo_test::makeBare(c.msgClass, &msg);
    msg.msgBase.flags = static_cast<UInt16>(~c.keyFlag);
    EXPECT_EQ(owireGetMsgKey(&msg), nullptr);
    msg.msgBase.flags = c.keyFlag;
    EXPECT_EQ(owireGetMsgKey(&msg), &msg.msgBase.key);
    const OwireMsg& constMsg = msg;
    EXPECT_EQ(owireGetMsgKey(&constMsg), &msg.msgBase.key);
  }
  OwireMsg request;
  orvo_test::makeBare(OWIRE_MC_REQUEST, &request);
  EXPECT_EQ(owireGetMsgKey(&request), &request.msgBase.key);
  OwireMsg close;
  orvo_test::makeBare(OWIRE_MC_CLOSE, &close);
  close.msgBase.flags = 0xFFFF;
  EXPECT_EQ(owireGetMsgKey(&close), nullptr);
  close.msgBase.msgClass = 42;
  EXPECT_EQ(owireGetMsgKey(&close), nullptr);
  EXPECT_EQ(owireGetMsgKey(static_cast<OwireMsg*>(nullptr)), nullptr);
}

}  // namespace
