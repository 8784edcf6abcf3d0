// Helpers for an application that chooses the path of the failure log (the
// ORVO_LOG_FILENAME setting). The failure report itself does not use them:
// it takes the configured path as it stands.
#ifndef ORVO_COMMON_LOG_PATH_H_
#define ORVO_COMMON_LOG_PATH_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace common {

// Makes `out` (`outSize` bytes) a usable log file path made from `path`, or
// empty; answers whether it is non-empty. In order: $NAME and ${NAME} take
// the value of set environment variables (at most 259 bytes in all); the
// markers {a}, {h}, {p} and {t}, in any case, become the application name,
// the host name, the process id and the time in seconds; with `expand` a
// relative path is made absolute. The result is empty when `path` is a
// directory, when `outSize` is below the expanded length plus 25, when the
// file name is empty or holds one of " * : < > ? |, when the directory
// cannot be made ready (see checkLogDirectory), or when the result names a
// directory. A name without a directory part is taken as it stands.
bool prepareLogPath(const char* path, char* out, UInt32 outSize, bool expand);

// Makes sure `directory` (1 to 499 bytes) exists and a file can be created
// in it, creating the missing directories along the way. Never raises.
bool checkLogDirectory(const char* directory);

}  // namespace common
}  // namespace orvo

#endif  // ORVO_COMMON_LOG_PATH_H_
