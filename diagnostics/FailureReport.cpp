#include "diagnostics/FailureReport.h"

#include <strings.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "diagnostics/FailureLog.h"
#include "diagnostics/StackTrace.h"
#include "orvo/common/UnicodeUtil.h"

namespace orvo {
namespace diagnostics {
namespace {

constexpr char kFallbackApplicationName[] = "ORVO";
constexpr char kLogWrittenSentence[] = "\n\nORVO internal failure log has been written to: ";

const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

// A setting is a short text; one that is too long is treated as missing,
// like a value that does not fit the buffer it is read into.
bool settingEquals(const char* name, const char* word) {
  const char* value = std::getenv(name);
  if (value == nullptr || std::strlen(value) >= kSettingSize) return false;
  return strcasecmp(value, word) == 0;
}

}  // namespace

void readReportSettings(ReportSettings* settings) {
  settings->messageBoxEnabled = !settingEquals("ORVO_MESSAGEBOX_ENABLED", "false");
  settings->noVerify = settingEquals("ORVO_NO_VERIFY", "true");
  readLogFileName(settings->logFileName, sizeof(settings->logFileName));
}

void readLogFileName(char* path, std::size_t size) {
  path[0] = '\0';
  const char* value = std::getenv("ORVO_LOG_FILENAME");
  if (value != nullptr && std::strlen(value) < size) std::strcpy(path, value);
}

void findApplicationName(char* name, std::size_t size) {
  char executable[kConfiguredPathSize];
  const ssize_t length = readlink("/proc/self/exe", executable, sizeof(executable) - 1);
  if (length <= 0) {
    copyCut(name, size, kFallbackApplicationName, size - 1);
    return;
  }
  executable[length] = '\0';
  char* slash = std::strrchr(executable, '/');
  char* base = slash != nullptr ? slash + 1 : executable;
  char* dot = std::strrchr(base, '.');
  if (dot != nullptr) *dot = '\0';
  const bool isUtf8 = common::UnicodeUtil::verifyUTF8String(base) == common::UTF8ConversionOK;
  copyCut(name, size, isUtf8 ? base : kFallbackApplicationName, size - 1);
}

unsigned int currentProcessId() { return static_cast<unsigned int>(getpid()); }

unsigned int currentThreadId() { return static_cast<unsigned int>(gettid()); }

void appendText(char* buffer, std::size_t size, const char* text) {
  if (size == 0 || text == nullptr) return;
  const std::size_t used = strnlen(buffer, size);
  if (used + 1 >= size) return;
  const std::size_t room = size - 1 - used;
  const std::size_t length = strnlen(text, room);
  std::memcpy(buffer + used, text, length);
  buffer[used + length] = '\0';
}

void appendFormat(char* buffer, std::size_t size, const char* format, ...) {
  if (size == 0) return;
  const std::size_t used = strnlen(buffer, size);
  if (used + 1 >= size) return;
  va_list args;
  va_start(args, format);
  std::vsnprintf(buffer + used, size - used, format, args);
  va_end(args);
}

void copyCut(char* out, std::size_t size, const char* text, std::size_t limit) {
  if (size == 0) return;
  const std::size_t length = strnlen(text, limit < size ? limit : size - 1);
  std::memcpy(out, text, length);
  out[length] = '\0';
}

FailureReport::FailureReport() {
  _applicationName[0] = '\0';
  _text[0] = '\0';
}

void FailureReport::compose(const ReportSite& site, const char* format, va_list args) {
  char message[kMessageSize] = "";
  if (format != nullptr) std::vsnprintf(message, sizeof(message), format, args);
  char lineText[16];
  std::snprintf(lineText, sizeof(lineText), "%d", static_cast<int>(site.line));
  findApplicationName(_applicationName, sizeof(_applicationName));

  const bool hasFile = site.file != nullptr;
  const bool hasLine = site.line != 0;
  const bool hasProblem = site.problem != nullptr;
  std::snprintf(_text, sizeof(_text),
                "%s\n\nApplication: %s\nProcess Id: 0x%X\nThread Id: 0x%X%s%s%s%s%s%s%s%s",
                orEmpty(site.title), _applicationName, currentProcessId(), currentThreadId(),
                hasFile ? "\n\nFile: " : "", hasFile ? site.file : "", hasLine ? "\nLine: " : "",
                hasLine ? lineText : "", hasProblem || format != nullptr ? "\n\nProblem:\n\t" : "",
                orEmpty(site.problem), hasProblem ? "\n\t" : "", message);
}

void FailureReport::composeFormatted(const ReportSite& site, const char* format, ...) {
  va_list args;
  va_start(args, format);
  compose(site, format, args);
  va_end(args);
}

void FailureReport::appendStackTrace(const void* context) {
  diagnostics::appendStackTrace(_text, sizeof(_text), context);
}

bool FailureReport::writeLog(const char* configuredPath) {
  char path[kConfiguredPathSize];
  common::UInt32 pathSize = kGeneratedPathSize;
  path[0] = '\0';
  if (configuredPath != nullptr && configuredPath[0] != '\0') {
    copyCut(path, sizeof(path), configuredPath, sizeof(path) - 1);
    pathSize = kConfiguredPathSize;
  }
  if (!writeFailureLog(_text, path, pathSize, _applicationName)) return false;
  append(kLogWrittenSentence);
  append(path);
  return true;
}

std::size_t FailureReport::length() const { return strnlen(_text, sizeof(_text)); }

}  // namespace diagnostics
}  // namespace orvo
