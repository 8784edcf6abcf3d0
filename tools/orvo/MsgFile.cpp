#include "tools/orvo/MsgFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace orvo {
namespace tool {
namespace {

constexpr std::size_t kFrameHead = 4;

std::size_t frameLength(const std::string& bytes, std::size_t at) {
  std::size_t n = 0;
  for (std::size_t k = 0; k < kFrameHead; ++k)
    n = n << 8 | static_cast<unsigned char>(bytes[at + k]);
  return n;
}

// The frames, or nothing when the bytes do not split into frames exactly.
std::vector<std::string> frames(const std::string& bytes) {
  std::vector<std::string> out;
  std::size_t at = 0;
  while (at < bytes.size()) {
    if (bytes.size() - at < kFrameHead) return {};
    const std::size_t n = frameLength(bytes, at);
    at += kFrameHead;
    if (n == 0 || n > bytes.size() - at) return {};
    out.push_back(bytes.substr(at, n));
    at += n;
  }
  return out;
}

}  // namespace

std::vector<std::string> splitMessages(const std::string& bytes, Framing framing) {
  if (framing == Framing::kSingle) return {bytes};
  std::vector<std::string> out = frames(bytes);
  if (out.empty() && framing == Framing::kAuto && !bytes.empty()) out.push_back(bytes);
  return out;
}

std::string joinMessages(const std::vector<std::string>& messages, Framing framing) {
  if (framing == Framing::kSingle || (framing == Framing::kAuto && messages.size() == 1)) {
    std::string out;
    for (const std::string& m : messages) out += m;
    return out;
  }
  std::string out;
  for (const std::string& m : messages) {
    const std::size_t n = m.size();
    for (int shift = 24; shift >= 0; shift -= 8) out += static_cast<char>((n >> shift) & 0xFF);
    out += m;
  }
  return out;
}

bool readWholeFile(const std::string& path, std::string* out, std::string* error) {
  std::FILE* f = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
  if (f == nullptr) {
    *error = path + ": " + std::strerror(errno);
    return false;
  }
  out->clear();
  char chunk[65536];
  std::size_t n;
  while ((n = std::fread(chunk, 1, sizeof chunk, f)) > 0) out->append(chunk, n);
  const bool failed = std::ferror(f) != 0;
  if (f != stdin) std::fclose(f);
  if (failed) *error = path + ": read error";
  return !failed;
}

bool writeWholeFile(const std::string& path, const std::string& bytes, std::string* error) {
  std::FILE* f = path == "-" ? stdout : std::fopen(path.c_str(), "wb");
  if (f == nullptr) {
    *error = path + ": " + std::strerror(errno);
    return false;
  }
  const bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  if (f != stdout) {
    if (std::fclose(f) != 0) return *error = path + ": write error", false;
  } else {
    std::fflush(f);
  }
  if (!ok) *error = path + ": write error";
  return ok;
}

}  // namespace tool
}  // namespace orvo
