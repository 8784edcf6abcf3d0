// The text of a failure report and the settings that decide what follows it.
// A report runs in a process of unknown health, so everything here works in
// fixed buffers on the caller's stack and never raises.
#ifndef ORVO_DIAGNOSTICS_FAILURE_REPORT_H_
#define ORVO_DIAGNOSTICS_FAILURE_REPORT_H_

#include <cstdarg>
#include <cstddef>

#include "orvo/common/Types.h"

namespace orvo {
namespace diagnostics {

constexpr std::size_t kReportSize = 40960;
constexpr std::size_t kMessageSize = 512;
constexpr std::size_t kSettingSize = 32;  // a longer setting counts as missing
constexpr std::size_t kConfiguredPathSize = 4096;
constexpr std::size_t kGeneratedPathSize = 260;
constexpr std::size_t kApplicationNameSize = 256;

// The three settings, read from the environment at each report.
struct ReportSettings {
  bool messageBoxEnabled = true;               // "false" in any case turns the prompt off
  bool noVerify = false;                       // "true" in any case lets a failed check go on
  char logFileName[kConfiguredPathSize] = {};  // empty: generate a name
};

void readReportSettings(ReportSettings* settings);
void readLogFileName(char* path, std::size_t size);

// File name of the main program without directories and without what follows
// its last '.'; "ORVO" when it cannot be had or is not UTF-8.
void findApplicationName(char* name, std::size_t size);

unsigned int currentProcessId();
unsigned int currentThreadId();

// Appends `text` to the terminated text in `buffer`, cut to fit `size`.
void appendText(char* buffer, std::size_t size, const char* text);
// Appends formatted text in the same way.
void appendFormat(char* buffer, std::size_t size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// Copies at most `limit` bytes of `text` and terminates; `size` > `limit`.
void copyCut(char* out, std::size_t size, const char* text, std::size_t limit);

// Where a report comes from: its first line and the optional parts of its
// "Problem" section and its "File"/"Line" lines.
struct ReportSite {
  const char* title;
  const char* problem;  // null: no problem text
  const char* file;     // null: no "File:" line
  common::Int32 line;   // 0: no "Line:" line
};

// One report. About 41 KiB: meant to live on the reporting thread's stack.
class FailureReport {
 public:
  FailureReport();
  FailureReport(const FailureReport&) = delete;
  FailureReport& operator=(const FailureReport&) = delete;

  // Fills the text; a null `format` leaves the message out.
  void compose(const ReportSite& site, const char* format, va_list args)
      __attribute__((format(printf, 3, 0)));
  void composeFormatted(const ReportSite& site, const char* format, ...)
      __attribute__((format(printf, 3, 4)));

  // `context` is a ucontext_t* where the trace starts, null for here.
  void appendStackTrace(const void* context);

  // Writes the text to `configuredPath`, or to a generated path when that is
  // empty, and on success names the file at the end of the text.
  bool writeLog(const char* configuredPath);

  void append(const char* text) { appendText(_text, sizeof(_text), text); }
  const char* text() const { return _text; }
  std::size_t length() const;
  const char* applicationName() const { return _applicationName; }

 private:
  char _applicationName[kApplicationNameSize];
  char _text[kReportSize];
};

}  // namespace diagnostics
}  // namespace orvo

#endif  // ORVO_DIAGNOSTICS_FAILURE_REPORT_H_
