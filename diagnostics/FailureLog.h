// The log file of a failure report.
#ifndef ORVO_DIAGNOSTICS_FAILURE_LOG_H_
#define ORVO_DIAGNOSTICS_FAILURE_LOG_H_

#include "orvo/common/Types.h"

namespace orvo {
namespace diagnostics {

// Appends `text` to the file at `path`, creating it if needed. An empty
// `path` first receives a generated name (at most `pathSize` bytes):
// <dir>/<appName>_<pid>_<tid>_<yyyymmdd>_<hhmmss>.log, the directory taken from
// TEMP, TMP, TMPDIR or the current directory, in that order. True only if
// the file was opened, written in full and closed.
bool writeFailureLog(const char* text, char* path, common::UInt32 pathSize, const char* appName);

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_FAILURE_LOG_H_
