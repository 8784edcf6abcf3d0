// Encoding and decoding of whole messages: round trips of every class with
// each optional part present and absent, the byte image, and bad input.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "orvo/owire/owire_msg.h"
#include "tests/owire/msg_samples.h"

#define ORVO_EXPECT_SAME_MSG(a, b) EXPECT_EQ(orvo_test::msgDifference(a, b), "")
#define ORVO_EXPECT_SAME_TEXT(a, b) EXPECT_EQ(orvo_test::textOf(a), orvo_test::textOf(b))

namespace {

using orvo_test::ClassSample;
using orvo_test::OptionalPart;

std::vector<char> encode(const OwireMsg& msg) {
  const int size = owireSizeOfMsg(&msg, OWIRE_CPMF_ALL);
  EXPECT_GT(size, 0);
  std::vector<char> bytes(size);
  OwfBuffer out{static_cast<UInt32>(bytes.size()), bytes.data()};
  OwfEncodeIterator iter;
  clearEncodeIterator(&iter);
  EXPECT_EQ(setEncodeIteratorBuffer(&iter, &out), 0);
  EXPECT_EQ(owireEncodeMsg(&iter, &msg), OWIRE_RET_SUCCESS);
  bytes.resize(getEncodedLength(&iter));
  return bytes;
}

// Decodes bytes[0, length) with a fresh iterator.
int decode(const char* bytes, std::size_t length, OwireMsg* msg) {
  OwfBuffer in{static_cast<UInt32>(length), const_cast<char*>(bytes)};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  if (setDecodeIteratorBuffer(&iter, &in) != 0) return -100;
  return owireDecodeMsg(&iter, msg);
}

int decode(const std::vector<char>& bytes, OwireMsg* msg) {
  return decode(bytes.data(), bytes.size(), msg);
}

void expectRoundTrip(const OwireMsg& msg) {
  const std::vector<char> bytes = encode(msg);
  OwireMsg decoded;
  ASSERT_EQ(decode(bytes, &decoded), OWIRE_RET_SUCCESS);
  ORVO_EXPECT_SAME_MSG(msg, decoded);
}

class MsgClassTest : public ::testing::TestWithParam<ClassSample> {
 protected:
  OwireMsg bare() const {
    OwireMsg msg;
    orvo_test::makeBare(GetParam().msgClass, &msg);
    return msg;
  }
  OwireMsg full() const {
    OwireMsg msg;
    orvo_test::makeFull(GetParam(), &msg);
    return msg;
  }
};

TEST_P(MsgClassTest, BareAndFullRoundTrip) {
  expectRoundTrip(bare());
  expectRoundTrip(full());
}

// A part that travels under the wrong flag is caught here: alone it is lost,
// or left out it still arrives.
TEST_P(MsgClassTest, EachOptionalPartTravelsOnlyWithItsFlag) {
  for (const OptionalPart& part : GetParam().parts) {
    SCOPED_TRACE(part.name);
    OwireMsg alone = bare();
    alone.msgBase.flags |= part.flag;
    if (part.fill != nullptr) part.fill(&alone);
    expectRoundTrip(alone);

    OwireMsg allButOne = bare();
    for (const OptionalPart& other : GetParam().parts) {
      if (&other == &part) continue;
      allButOne.msgBase.flags |= other.flag;
      if (other.fill != nullptr) other.fill(&allButOne);
    }
    orvo_test::addBody(&allButOne);
    expectRoundTrip(allButOne);
  }
}

TEST_P(MsgClassTest, DecodedBuffersPointIntoTheInput) {
  const std::vector<char> bytes = encode(full());
  OwfBuffer in{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  ASSERT_EQ(setDecodeIteratorBuffer(&iter, &in), 0);
  OwireMsg decoded;
  ASSERT_EQ(owireDecodeMsg(&iter, &decoded), OWIRE_RET_SUCCESS);

  EXPECT_EQ(decoded.msgBase.rawMessage.data, bytes.data());
  EXPECT_EQ(decoded.msgBase.rawMessage.length, bytes.size());
  EXPECT_EQ(iter.curPos, bytes.data() + bytes.size());
  for (const OwfBuffer& buffer : orvo_test::buffersOf(decoded)) {
    EXPECT_TRUE(orvo_test::liesWithin(buffer, bytes.data(), bytes.data() + bytes.size()));
  }
}

// The body runs to the end of the message, so a cut inside the body still
// decodes, with a shorter body; a cut before it never does.
TEST_P(MsgClassTest, TruncatedInputFailsUntilTheBody) {
  const OwireMsg msg = full();
  const std::vector<char> bytes = encode(msg);
  const std::size_t bodyStart = bytes.size() - msg.msgBase.body.length;
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    std::vector<char> cut(bytes.begin(), bytes.begin() + length);
    OwireMsg decoded;
    const int rc = decode(cut.data(), cut.size(), &decoded);
    if (length < bodyStart) {
      EXPECT_EQ(rc, OWIRE_RET_INCOMPLETE_DATA) << "length " << length;
    } else {
      ASSERT_EQ(rc, OWIRE_RET_SUCCESS) << "length " << length;
      EXPECT_EQ(decoded.msgBase.body.length, length - bodyStart);
    }
  }
}

TEST_P(MsgClassTest, EncodeIntoTooSmallBufferLeavesIteratorAlone) {
  const OwireMsg msg = full();
  const std::vector<char> expected = encode(msg);
  std::vector<char> space(expected.size());
  for (std::size_t capacity = 1; capacity <= expected.size(); ++capacity) {
    OwfBuffer out{static_cast<UInt32>(capacity), space.data()};
    OwfEncodeIterator iter;
    clearEncodeIterator(&iter);
    ASSERT_EQ(setEncodeIteratorBuffer(&iter, &out), 0);
    const int rc = owireEncodeMsg(&iter, &msg);
    if (capacity < expected.size()) {
      EXPECT_EQ(rc, OWIRE_RET_BUFFER_TOO_SMALL) << "capacity " << capacity;
      EXPECT_EQ(iter.curPos, space.data());
    } else {
      ASSERT_EQ(rc, OWIRE_RET_SUCCESS);
      EXPECT_EQ(std::string(space.data(), capacity), std::string(expected.data(), capacity));
    }
  }
}

std::string sampleName(const ::testing::TestParamInfo<ClassSample>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(AllClasses, MsgClassTest, ::testing::ValuesIn(orvo_test::classSamples()),
                         sampleName);

TEST(MsgKeyCodec, EachKeyPartTravelsOnlyWithItsKeyFlag) {
  OwireMsg full;
  orvo_test::makeBare(OWIRE_MC_GENERIC, &full);
  full.msgBase.flags = OWIRE_GNMF_HAS_MSG_KEY;
  orvo_test::fillKey(&full);
  for (UInt16 flag = 0x01; flag <= OWIRE_MKF_HAS_ATTRIB; flag <<= 1) {
    SCOPED_TRACE(flag);
    OwireMsg alone = full;
    OwireMsgKey& key = alone.msgBase.key;
    key.keyFlags = flag;
    if (flag != OWIRE_MKF_HAS_SERVICE_ID) key.serviceId = 0;
    if (flag != OWIRE_MKF_HAS_NAME) key.name = OwfBuffer{0, nullptr};
    if (flag != OWIRE_MKF_HAS_NAME_TYPE) key.nameType = 0;
    if (flag != OWIRE_MKF_HAS_FILTER) key.filter = 0;
    if (flag != OWIRE_MKF_HAS_IDENTIFIER) key.identifier = 0;
    if (flag != OWIRE_MKF_HAS_ATTRIB) key.attribFormat = 0, key.attrib = OwfBuffer{0, nullptr};
    expectRoundTrip(alone);
  }
}

TEST(MsgKeyCodec, EmptyNameStillTravelsAsPresent) {
  OwireMsg msg;
  orvo_test::makeBare(OWIRE_MC_GENERIC, &msg);
  msg.msgBase.flags = OWIRE_GNMF_HAS_MSG_KEY;
  msg.msgBase.key.keyFlags = OWIRE_MKF_HAS_NAME;
  msg.msgBase.key.name = orvo_test::bufferOf("");
  const std::vector<char> bytes = encode(msg);
  OwireMsg decoded;
  ASSERT_EQ(decode(bytes, &decoded), OWIRE_RET_SUCCESS);
  EXPECT_EQ(decoded.msgBase.key.keyFlags, OWIRE_MKF_HAS_NAME);
  EXPECT_EQ(decoded.msgBase.key.name.length, 0u);
}

TEST(MsgCodec, KeyOfAClassWithoutOneDoesNotTravel) {
  OwireMsg close;
  orvo_test::makeBare(OWIRE_MC_CLOSE, &close);
  orvo_test::fillKey(&close);
  OwireMsg decoded;
  ASSERT_EQ(decode(encode(close), &decoded), OWIRE_RET_SUCCESS);
  EXPECT_EQ(decoded.msgBase.key.keyFlags, 0);
  EXPECT_EQ(decoded.msgBase.key.name.length, 0u);
}

// A status flags its identity with its own bit; the bit a refresh uses for
// it is carried but brings no values along.
TEST(MsgCodec, FlagsAreCarriedButOnlyTheClassOwnBitsBringParts) {
  OwireMsg status;
  orvo_test::makeBare(OWIRE_MC_STATUS, &status);
  status.msgBase.flags = OWIRE_RFMF_HAS_PUBLISHER_INFO;
  status.statusMsg.publisherAddress = 5;
  status.statusMsg.publisherId = 6;
  OwireMsg decoded;
  ASSERT_EQ(decode(encode(status), &decoded), OWIRE_RET_SUCCESS);
  EXPECT_EQ(decoded.msgBase.flags, OWIRE_RFMF_HAS_PUBLISHER_INFO);
  EXPECT_EQ(decoded.statusMsg.publisherAddress, 0u);
  EXPECT_EQ(decoded.statusMsg.publisherId, 0u);
}

// The byte image is the documented one: header, parts in order, body.
TEST(MsgCodec, ByteImageOfAGenericMessage) {
  OwireMsg msg;
  std::memset(&msg, 0, sizeof(msg));
  msg.msgBase.msgClass = OWIRE_MC_GENERIC;
  msg.msgBase.modelType = 6;
  msg.msgBase.bodyFormat = 132;
  msg.msgBase.streamId = -2;
  msg.msgBase.flags = OWIRE_GNMF_HAS_MSG_KEY | OWIRE_GNMF_HAS_SEQ_NUM | OWIRE_GNMF_HAS_HEADER;
  msg.msgBase.key.keyFlags = OWIRE_MKF_HAS_SERVICE_ID | OWIRE_MKF_HAS_NAME | OWIRE_MKF_HAS_FILTER;
  msg.msgBase.key.serviceId = 0x0102;
  msg.msgBase.key.name = orvo_test::bufferOf("AB");
  msg.msgBase.key.filter = 300;
  msg.genericMsg.seqNum = 1;
  msg.genericMsg.header = orvo_test::bufferOf("h");
  msg.msgBase.body = orvo_test::bufferOf("xy");

  const std::vector<unsigned char> expected = {
      7,    6,    132,  0xFE, 0xFF, 0xFF, 0xFF, 0x0D, 0x00,  // class, model, format, stream, flags
      0x0B, 0x00, 0x02, 0x01, 2,    'A',  'B',  0xAC, 0x02,  // key: flags, service, name, filter
      0x01,                                                  // seqNum
      1,    'h',                                             // header
      'x',  'y'};                                            // body
  const std::vector<char> bytes = encode(msg);
  EXPECT_EQ(std::vector<unsigned char>(bytes.begin(), bytes.end()), expected);
}

TEST(MsgDecodeBadInput, UnknownClassIsInvalidData) {
  for (int msgClass : {0, 9, 255}) {
    const char bytes[] = {static_cast<char>(msgClass), 6, 0, 0, 0, 0, 0, 0, 0};
    OwireMsg decoded;
    EXPECT_EQ(decode(bytes, sizeof(bytes), &decoded), OWIRE_RET_INVALID_DATA) << msgClass;
  }
}

TEST(MsgDecodeBadInput, OverlongAndOversizedVarintsAreInvalidData) {
  // A generic with a sequence number: header, then the varint.
  const std::string header("\x07\x06\x80\x00\x00\x00\x00\x08\x00", 9);
  OwireMsg decoded;
  const std::string maxValue = header + "\xFF\xFF\xFF\xFF\x0F";
  ASSERT_EQ(decode(maxValue.data(), maxValue.size(), &decoded), OWIRE_RET_SUCCESS);
  EXPECT_EQ(decoded.genericMsg.seqNum, 0xFFFFFFFFu);
  const std::string tooLarge = header + "\xFF\xFF\xFF\xFF\x10";
  EXPECT_EQ(decode(tooLarge.data(), tooLarge.size(), &decoded), OWIRE_RET_INVALID_DATA);
  const std::string tooLong = header + "\x80\x80\x80\x80\x80\x00";
  EXPECT_EQ(decode(tooLong.data(), tooLong.size(), &decoded), OWIRE_RET_INVALID_DATA);
}

TEST(MsgDecodeBadInput, LengthBeyondTheEndIsIncomplete) {
  // A close with a header whose length claims more bytes than there are.
  const std::string bytes(
      "\x05\x00\x80\x00\x00\x00\x00\x01\x00\x05"
      "abcd",
      14);
  OwireMsg decoded;
  EXPECT_EQ(decode(bytes.data(), bytes.size(), &decoded), OWIRE_RET_INCOMPLETE_DATA);
}

TEST(MsgDecodeBadInput, EmptyInputAndBadIteratorsFailCleanly) {
  OwireMsg decoded;
  EXPECT_EQ(decode(nullptr, 0, &decoded), OWIRE_RET_INCOMPLETE_DATA);

  const std::vector<char> bytes = encode([] {
    OwireMsg m;
    orvo_test::makeBare(OWIRE_MC_CLOSE, &m);
    return m;
  }());
  OwfBuffer in{static_cast<UInt32>(bytes.size()), const_cast<char*>(bytes.data())};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  ASSERT_EQ(setDecodeIteratorBuffer(&iter, &in), 0);
  iter.majorVersion = 15;
  EXPECT_EQ(owireDecodeMsg(&iter, &decoded), OWIRE_RET_INVALID_VERSION);
  iter.majorVersion = 14;
  iter.curPos = bytes.data() + bytes.size() + 1;  // past the end
  EXPECT_EQ(owireDecodeMsg(&iter, &decoded), OWIRE_RET_INVALID_ARGUMENT);
  iter.curPos = bytes.data();
  iter.levels[0].endPos = bytes.data() + bytes.size() + 8;  // beyond the buffer
  EXPECT_EQ(owireDecodeMsg(&iter, &decoded), OWIRE_RET_INVALID_ARGUMENT);
  EXPECT_EQ(owireDecodeMsg(&iter, nullptr), OWIRE_RET_INVALID_ARGUMENT);
}

TEST(MsgEncodeBadInput, UnsoundRecordsAreRefused) {
  OwireMsg msg;
  orvo_test::makeBare(OWIRE_MC_UPDATE, &msg);
  msg.msgBase.flags = OWIRE_UPMF_HAS_HEADER;
  msg.updateMsg.header = OwfBuffer{4, nullptr};
  char space[256];
  OwfBuffer out{sizeof(space), space};
  OwfEncodeIterator iter;
  clearEncodeIterator(&iter);
  ASSERT_EQ(setEncodeIteratorBuffer(&iter, &out), 0);
  EXPECT_EQ(owireEncodeMsg(&iter, &msg), OWIRE_RET_INVALID_ARGUMENT);

  msg.updateMsg.header = OwfBuffer{0, nullptr};
  msg.msgBase.msgClass = 9;
  EXPECT_EQ(owireEncodeMsg(&iter, &msg), OWIRE_RET_INVALID_ARGUMENT);
  msg.msgBase.msgClass = OWIRE_MC_UPDATE;
  iter.majorVersion = 13;
  EXPECT_EQ(owireEncodeMsg(&iter, &msg), OWIRE_RET_INVALID_VERSION);
  iter.majorVersion = 14;

  OwireMsg request;
  orvo_test::makeBare(OWIRE_MC_REQUEST, &request);
  request.msgBase.flags = OWIRE_RQMF_HAS_QOS;
  request.requestMsg.qos.timeliness = 16;  // beyond what the quality of service form holds
  EXPECT_EQ(owireEncodeMsg(&iter, &request), OWIRE_RET_INVALID_DATA);
  EXPECT_EQ(iter.curPos, space);
}

// Seeds of the fuzz corpus come from the encoder; they must stay decodable
// and re-encode to the same bytes, or the corpus has gone stale.
TEST(MsgCorpus, SeedsDecodeAndReencodeToTheSameBytes) {
  const std::string dir = std::string(ORVO_SOURCE_DIR) + "/fuzz/corpus/owire_msg_fuzzer/";
  int seeds = 0;
  for (int i = 0;; ++i) {
    std::ifstream file(dir + "seed-" + std::to_string(i), std::ios::binary);
    if (!file) break;
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                  std::istreambuf_iterator<char>());
    OwireMsg decoded;
    ASSERT_EQ(decode(bytes, &decoded), OWIRE_RET_SUCCESS) << "seed-" << i;
    EXPECT_EQ(encode(decoded), bytes) << "seed-" << i;
    ++seeds;
  }
  EXPECT_GE(seeds, 16);
}

}  // namespace
