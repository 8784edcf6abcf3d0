#include "diagnostics/Verify.h"

#include <signal.h>
#include <unistd.h>

#include "diagnostics/FailureReport.h"
#include "diagnostics/Terminal.h"
#include "orvo/common/UseOrvoVerify.h"
#include "orvo/common/VerifyFailure.h"

namespace orvo {
namespace diagnostics {
namespace {

constexpr char kBoxTitle[] = "ORVO Internal Failure";

// No destructors, no handlers: the process may be too damaged for either.
[[noreturn]] void endProcess() { _exit(-3); }

void buildReport(FailureReport* report, const ReportSite& site, bool withStack, const void* context,
                 const char* format, va_list args) __attribute__((format(printf, 5, 0)));

void buildReport(FailureReport* report, const ReportSite& site, bool withStack, const void* context,
                 const char* format, va_list args) {
  report->compose(site, format, args);
  if (withStack) report->appendStackTrace(context);
}

// Answers true for Retry (break here) and false for Ignore; every other way
// out of the box ends the process. Ignore is offered only under a debugger.
bool askPerson(FailureReport* report, bool mayContinue) {
  const int terminal = openTerminal();
  if (terminal < 0) endProcess();
  BoxButtons buttons = BoxButtons::Ok;
  if (mayContinue && debuggerAttached()) {
    report->append("\n\nPress Abort to exit, Retry to debug, Ignore to continue");
    buttons = BoxButtons::AbortRetryIgnore;
  } else if (mayContinue) {
    report->append("\n\nPress Cancel to exit, Retry to debug");
    buttons = BoxButtons::RetryCancel;
  }
  const BoxChoice choice = askOnTerminal(terminal, kBoxTitle, report->text(), buttons);
  close(terminal);
  if (choice == BoxChoice::Retry) return true;
  if (choice == BoxChoice::Ignore) return false;
  endProcess();
}

}  // namespace

bool verifyCheck(const char* title, const char* problem, const char* file, common::Int32 line,
                 bool withStack, bool mayContinue, const void* context, const char* format, ...) {
  (void)mayContinue;
  if (common::getUseOrvoVerify()) return true;
  char logFileName[kConfiguredPathSize];
  readLogFileName(logFileName, sizeof(logFileName));
  FailureReport report;
  va_list args;
  va_start(args, format);
  buildReport(&report, {title, problem, file, line}, withStack, context, format, args);
  va_end(args);
  report.writeLog(logFileName);
  throw common::VerifyFailure(report.text(), report.length());
}

bool verifyReport(const char* title, const char* problem, const char* file, common::Int32 line,
                  bool withStack, bool mayContinue, const void* context, const char* format, ...) {
  ReportSettings settings;
  readReportSettings(&settings);
  FailureReport report;
  va_list args;
  va_start(args, format);
  buildReport(&report, {title, problem, file, line}, withStack, context, format, args);
  va_end(args);
  report.writeLog(settings.logFileName);
  if (settings.noVerify) return false;
  if (!settings.messageBoxEnabled) endProcess();
  return askPerson(&report, mayContinue);
}

void debugBreak(const char* file, common::Int32 line) {
  (void)file;
  (void)line;
  raise(SIGTRAP);
}

}  // namespace diagnostics
}  // namespace orvo
