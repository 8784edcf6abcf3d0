// Message files: one bare message, or a sequence of frames, each a 4-byte
// big-endian length followed by that many bytes of one message. Either may
// be written as hex text (whitespace ignored).
#ifndef ORVO_TOOLS_ORVO_MSG_FILE_H_
#define ORVO_TOOLS_ORVO_MSG_FILE_H_

#include <string>
#include <vector>

namespace orvo {
namespace tool {

enum class Framing { kAuto, kSingle, kFramed };

// Splits file bytes into messages. With kAuto the bytes are frames when they
// split into frames exactly, and one message otherwise.
std::vector<std::string> splitMessages(const std::string& bytes, Framing framing);

// Frames for several messages, or the bare message for one under kAuto.
std::string joinMessages(const std::vector<std::string>& messages, Framing framing);

// Whole file, or standard input for "-"; false with `error` set on failure.
bool readWholeFile(const std::string& path, std::string* out, std::string* error);
bool writeWholeFile(const std::string& path, const std::string& bytes, std::string* error);

}  // namespace tool
}  // namespace orvo

#endif  // ORVO_TOOLS_ORVO_MSG_FILE_H_
