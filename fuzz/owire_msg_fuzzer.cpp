// Fuzz target of the message codec.
//
// Any bytes given to owireDecodeMsg must give a return code without reading
// outside them. A message that decodes must be sound, point only into the
// input, copy and re-encode, and read back the same. The same bytes, taken as
// a record, must not trip owireValidateMsg, owireGetMsgKey or owireSizeOfMsg,
// which look at buffer pointers but never through them.
//
// With ORVO_MSG_WRITE_SEEDS=<dir> in the environment the target writes its
// seed corpus (messages made by the encoder) to <dir> and exits.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "orvo/owire/owire_msg.h"
#include "tests/owire/msg_samples.h"

namespace {

void check(bool ok, const char* what, const std::string& detail = std::string()) {
  if (ok) return;
  std::fprintf(stderr, "owire_msg_fuzzer: %s %s\n", what, detail.c_str());
  std::abort();
}

int decodeAll(const char* data, std::size_t size, OwireMsg* msg) {
  OwfBuffer in{static_cast<UInt32>(size), const_cast<char*>(data)};
  OwfDecodeIterator iter;
  clearDecodeIterator(&iter);
  if (setDecodeIteratorBuffer(&iter, &in) != 0) return OWIRE_RET_FAILURE;
  const int rc = owireDecodeMsg(&iter, msg);
  if (rc == OWIRE_RET_SUCCESS) check(iter.curPos == data + size, "decode stopped short");
  return rc;
}

std::vector<char> encodeAll(const OwireMsg& msg) {
  const int size = owireSizeOfMsg(&msg, OWIRE_CPMF_ALL);
  check(size > 0, "no size");
  std::vector<char> bytes(static_cast<std::size_t>(size));
  OwfBuffer out{static_cast<UInt32>(bytes.size()), bytes.data()};
  OwfEncodeIterator iter;
  clearEncodeIterator(&iter);
  setEncodeIteratorBuffer(&iter, &out);
  const int rc = owireEncodeMsg(&iter, &msg);
  check(rc == OWIRE_RET_SUCCESS, "re-encode failed", std::to_string(rc));
  bytes.resize(getEncodedLength(&iter));
  return bytes;
}

void checkCopies(const OwireMsg& decoded) {
  OwireMsg* copy = owireCopyMsg(&decoded, OWIRE_CPMF_ALL, OWIRE_COPY_ALLOCATE, nullptr);
  check(copy != nullptr, "copy failed");
  check(orvo_test::msgDifference(decoded, *copy).empty(), "copy differs",
        orvo_test::msgDifference(decoded, *copy));
  owireReleaseCopiedMsg(copy);

  std::vector<char> storage(static_cast<std::size_t>(owireSizeOfMsg(&decoded, OWIRE_CPMF_ALL)) + 1);
  OwfBuffer buffer{static_cast<UInt32>(storage.size() - 1), storage.data() + 1};
  copy = owireCopyMsg(&decoded, OWIRE_CPMF_ALL, OWIRE_COPY_INTO_BUFFER, &buffer);
  check(copy != nullptr, "copy into buffer failed");
  for (const OwfBuffer& part : orvo_test::buffersOf(*copy)) {
    check(orvo_test::liesWithin(part, buffer.data, buffer.data + buffer.length),
          "copy points outside its buffer");
  }
}

void checkDecoded(const char* data, std::size_t size, const OwireMsg& decoded) {
  check(owireValidateMsg(&decoded) == 1, "decoded record unsound");
  for (const OwfBuffer& part : orvo_test::buffersOf(decoded)) {
    check(orvo_test::liesWithin(part, data, data + size), "buffer outside the input");
  }
  check(decoded.msgBase.rawMessage.data == data && decoded.msgBase.rawMessage.length == size,
        "rawMessage is not the input");
  checkCopies(decoded);

  const std::vector<char> again = encodeAll(decoded);
  OwireMsg reread;
  check(decodeAll(again.data(), again.size(), &reread) == OWIRE_RET_SUCCESS, "re-decode failed");
  check(orvo_test::msgDifference(decoded, reread).empty(), "round trip differs",
        orvo_test::msgDifference(decoded, reread));
}

// The input's bytes taken as a record: only pointer values are looked at.
void checkRecordFunctions(const std::uint8_t* data, std::size_t size) {
  OwireMsg record;
  std::memset(&record, 0, sizeof(record));
  std::memcpy(&record, data, size < sizeof(record) ? size : sizeof(record));
  const int valid = owireValidateMsg(&record);
  check(valid == 0 || valid == 1, "validate gave another value");
  const OwireMsgKey* key = owireGetMsgKey(&record);
  check(key == nullptr || key == &record.msgBase.key, "key outside the record");
  const int bytes = owireSizeOfMsg(&record, OWIRE_CPMF_ALL);
  check(bytes != 0, "size of 0");
}

void writeSeeds(const char* dir) {
  std::vector<OwireMsg> seeds;
  for (const orvo_test::ClassSample& sample : orvo_test::classSamples()) {
    OwireMsg msg;
    orvo_test::makeBare(sample.msgClass, &msg);
    seeds.push_back(msg);
    orvo_test::makeFull(sample, &msg);
    seeds.push_back(msg);
    for (const orvo_test::OptionalPart& part : sample.parts) {
      if (part.fill == nullptr) continue;
      orvo_test::makeBare(sample.msgClass, &msg);
      msg.msgBase.flags = part.flag;
      part.fill(&msg);
      seeds.push_back(msg);
    }
  }
  for (std::size_t i = 0; i < seeds.size(); ++i) {
    const std::vector<char> bytes = encodeAll(seeds[i]);
    const std::string path = std::string(dir) + "/seed-" + std::to_string(i);
    FILE* file = std::fopen(path.c_str(), "wb");
    check(file != nullptr, "cannot write", path);
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
  }
  std::printf("wrote %zu seeds to %s\n", seeds.size(), dir);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  if (const char* dir = std::getenv("ORVO_MSG_WRITE_SEEDS")) {
    writeSeeds(dir);
    std::exit(0);
  }
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A copy of exactly `size` bytes, so that any read past the end is caught.
  std::vector<char> input(data, data + size);
  OwireMsg decoded;
  const int rc = decodeAll(input.data(), input.size(), &decoded);
  if (rc == OWIRE_RET_SUCCESS) {
    checkDecoded(input.data(), input.size(), decoded);
  } else {
    check(rc == OWIRE_RET_INCOMPLETE_DATA || rc == OWIRE_RET_INVALID_DATA,
          "unexpected decode failure", std::to_string(rc));
  }
  checkRecordFunctions(data, size);
  return 0;
}
