#include "diagnostics/FailureLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "diagnostics/FailureReport.h"

namespace orvo {
namespace diagnostics {
namespace {

constexpr std::size_t kDirectoryLimit = 259;
constexpr const char* kDirectoryVariables[] = {"TEMP", "TMP", "TMPDIR"};

bool findLogDirectory(char* directory, std::size_t size) {
  for (const char* name : kDirectoryVariables) {
    const char* value = std::getenv(name);
    if (value != nullptr && value[0] != '\0') {
      copyCut(directory, size, value, kDirectoryLimit);
      return true;
    }
  }
  char current[kConfiguredPathSize];
  if (getcwd(current, sizeof(current)) == nullptr) return false;
  copyCut(directory, size, current, kDirectoryLimit);
  return true;
}

bool generateLogName(const std::tm& now, char* path, common::UInt32 pathSize, const char* appName) {
  char directory[kDirectoryLimit + 1] = "";
  // Without a directory the separator is a zero byte: the name ends at once
  // and no file can be opened under it.
  const char separator = findLogDirectory(directory, sizeof(directory)) ? '/' : '\0';
  const int length = std::snprintf(
      path, pathSize, "%s%c%s_%8.8X_%8.8X_%4.4d%2.2d%2.2d_%2.2d%2.2d%2.2d.log", directory,
      separator, appName, currentProcessId(), currentThreadId(), now.tm_year + 1900, now.tm_mon + 1,
      now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec);
  // A name cut to fit would open some other file.
  if (length >= 0 && static_cast<common::UInt32>(length) < pathSize) return true;
  path[0] = '\0';
  return false;
}

bool writeAll(int fd, const char* text, std::size_t length) {
  while (length > 0) {
    const ssize_t written = write(fd, text, length);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text += written;
    length -= static_cast<std::size_t>(written);
  }
  return true;
}

}  // namespace

bool writeFailureLog(const char* text, char* path, common::UInt32 pathSize, const char* appName) {
  if (text == nullptr || path == nullptr || pathSize == 0) return false;
  const std::time_t seconds = std::time(nullptr);
  std::tm now;
  if (seconds == static_cast<std::time_t>(-1) || localtime_r(&seconds, &now) == nullptr) {
    return false;
  }
  if (path[0] == '\0' && !generateLogName(now, path, pathSize, appName != nullptr ? appName : "")) {
    return false;
  }
  const int fd = open(path, O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  if (fd < 0) return false;
  const bool written = writeAll(fd, text, std::strlen(text));
  const bool closed = close(fd) == 0;
  return written && closed;
}

}  // namespace diagnostics
}  // namespace orvo
