#include "diagnostics/CrashLog.h"

#include <cinttypes>
#include <cstdio>

#include "diagnostics/FailureReport.h"
#include "diagnostics/MachineContext.h"
#include "diagnostics/Terminal.h"
#include "diagnostics/Verify.h"

namespace orvo {
namespace diagnostics {
namespace {

using common::UInt32;

constexpr UInt32 kGuardPage = 0x80000001;
constexpr UInt32 kMisalignment = 0x80000002;
constexpr UInt32 kBreakpoint = 0x80000003;
constexpr UInt32 kSingleStep = 0x80000004;
constexpr UInt32 kAccessViolation = 0xC0000005;
constexpr UInt32 kInPageError = 0xC0000006;
constexpr UInt32 kInvalidHandle = 0xC0000008;
constexpr UInt32 kIllegalInstruction = 0xC000001D;
constexpr UInt32 kNoncontinuable = 0xC0000025;
constexpr UInt32 kArrayBounds = 0xC000008C;
constexpr UInt32 kFloatDenormal = 0xC000008D;
constexpr UInt32 kFloatDivideByZero = 0xC000008E;
constexpr UInt32 kFloatInexact = 0xC000008F;
constexpr UInt32 kFloatInvalid = 0xC0000090;
constexpr UInt32 kFloatOverflow = 0xC0000091;
constexpr UInt32 kFloatStackCheck = 0xC0000092;
constexpr UInt32 kFloatUnderflow = 0xC0000093;
constexpr UInt32 kIntegerDivideByZero = 0xC0000094;
constexpr UInt32 kIntegerOverflow = 0xC0000095;
constexpr UInt32 kPrivilegedInstruction = 0xC0000096;
constexpr UInt32 kStackOverflow = 0xC00000FD;
constexpr UInt32 kLanguageException = 0xE06D7363;

struct ExceptionText {
  UInt32 code;
  const char* text;
};

constexpr ExceptionText kExceptionTexts[] = {
    {kGuardPage, "Guard page"},
    {kMisalignment, "Datatype Misalignment"},
    {kBreakpoint, "Breakpoint"},
    {kSingleStep, "Single Step"},
    {kAccessViolation, "Access Violation"},
    {kInPageError, "Cannot load memory page"},
    {kInvalidHandle, "Invalid handle"},
    {kIllegalInstruction, "Attempt to execute an invalid instruction"},
    {kNoncontinuable, "Execution cannot be continued "},
    {kArrayBounds, "Array Bounds Exceeded"},
    {kFloatDenormal, "Floating Point Denormal Operand"},
    {kFloatDivideByZero, "Floating Point Division By Zero"},
    {kFloatInexact, "Floating Point Inexact Result"},
    {kFloatInvalid, "Floating Point Invalid Operation"},
    {kFloatOverflow, "Floating Point Overflow"},
    {kFloatStackCheck, "Stack Corrupted as a result of a Floating Point operation"},
    {kFloatUnderflow, "Floating Point Underflow"},
    {kIntegerDivideByZero, "Integer Division by Zero"},
    {kIntegerOverflow, "Integer Overflow"},
    {kPrivilegedInstruction, "Attempt to execute a priviliged instruction"},
    {kStackOverflow, "Stack overflow"},
    {kLanguageException, "C++ Exception"},
};

constexpr char kHandlerTitle[] = "ORVO Exception Handler";
constexpr int kPointerDigits = static_cast<int>(sizeof(void*) * 2);
// A fault this close to the stack pointer is a push or call that ran into
// the end of the stack.
constexpr std::uintptr_t kStackReach = 64 * 1024;

bool isStackOverflow(std::uintptr_t target, std::uintptr_t stackPointer) {
  return stackPointer != 0 && target != 0 && target + kStackReach >= stackPointer &&
         target <= stackPointer + kStackReach;
}

// Signals sent by a process (si_code <= 0) carry no fault address.
void describeMemoryFault(const siginfo_t* info, const void* context, ExceptionRecord* record) {
  const bool faulted = info != nullptr && info->si_code > 0;
  const auto target = faulted ? reinterpret_cast<std::uintptr_t>(info->si_addr) : 0;
  if (isStackOverflow(target, contextStackPointer(context))) {
    record->code = kStackOverflow;
    return;
  }
  record->code = kAccessViolation;
  const MemoryAccess access = contextFaultAccess(context);
  if (!faulted || access == MemoryAccess::Unknown) return;
  record->parameterCount = 2;
  record->parameters[0] = access == MemoryAccess::Write ? 1 : 0;
  record->parameters[1] = target;
}

UInt32 arithmeticCode(int how) {
  switch (how) {
    case FPE_INTDIV:
      return kIntegerDivideByZero;
    case FPE_INTOVF:
      return kIntegerOverflow;
    case FPE_FLTDIV:
      return kFloatDivideByZero;
    case FPE_FLTOVF:
      return kFloatOverflow;
    case FPE_FLTUND:
      return kFloatUnderflow;
    case FPE_FLTRES:
      return kFloatInexact;
    case FPE_FLTSUB:
      return kArrayBounds;
    default:
      return kFloatInvalid;
  }
}

bool isNeverReported(UInt32 code) {
  switch (code) {
    case kMisalignment:
    case kArrayBounds:
    case kFloatDenormal:
    case kFloatInexact:
    case kFloatUnderflow:
      return true;
    case kBreakpoint:
    case kSingleStep:
      return debuggerAttached();
    default:
      return false;
  }
}

void describeException(const ExceptionRecord& exception, char* text, std::size_t size) {
  std::snprintf(text, size, "Exception \"%s\" (0x%lX) occured at 0x%0*" PRIXPTR,
                exceptionName(exception.code), static_cast<unsigned long>(exception.code),
                kPointerDigits, reinterpret_cast<std::uintptr_t>(exception.address));
  if (exception.code == kAccessViolation && exception.parameterCount >= 2) {
    appendFormat(text, size, ": memory at 0x%0*" PRIXPTR " cannot be %s", kPointerDigits,
                 exception.parameters[1], exception.parameters[0] == 0 ? "read" : "written");
  }
}

}  // namespace

const char* exceptionName(UInt32 code) {
  for (const ExceptionText& entry : kExceptionTexts) {
    if (entry.code == code) return entry.text;
  }
  return "";
}

ExceptionRecord exceptionFromSignal(int signal, const siginfo_t* info, const void* context) {
  ExceptionRecord record;
  record.context = context;
  const std::uintptr_t interrupted = contextProgramCounter(context);
  record.address = interrupted != 0  ? reinterpret_cast<const void*>(interrupted)
                   : info != nullptr ? info->si_addr
                                     : nullptr;
  const int how = info != nullptr ? info->si_code : 0;
  switch (signal) {
    case SIGSEGV:
      describeMemoryFault(info, context, &record);
      break;
    case SIGBUS:
      record.code = how == BUS_ADRALN ? kMisalignment : kInPageError;
      break;
    case SIGFPE:
      record.code = arithmeticCode(how);
      break;
    case SIGILL:
      record.code =
          how == ILL_PRVOPC || how == ILL_PRVREG ? kPrivilegedInstruction : kIllegalInstruction;
      break;
    case SIGTRAP:
      record.code = how == TRAP_TRACE ? kSingleStep : kBreakpoint;
      break;
    case SIGABRT:
      record.code = kNoncontinuable;
      break;
    default:
      break;
  }
  return record;
}

bool exceptionFilter(const ExceptionRecord* exception, const char* problem, const char* file,
                     common::Int32 line, bool mayContinue) {
  if (exception == nullptr || isNeverReported(exception->code)) return false;
  char text[kMessageSize];
  describeException(*exception, text, sizeof(text));
  return verifyReport(kHandlerTitle, problem, file, line, true, mayContinue, exception->context,
                      "%s", text);
}

void logException(const ExceptionRecord* exception, const char* problem, const char* file,
                  common::Int32 line) {
  if (exception == nullptr) return;
  char text[kMessageSize];
  describeException(*exception, text, sizeof(text));
  char logFileName[kConfiguredPathSize];
  readLogFileName(logFileName, sizeof(logFileName));
  FailureReport report;
  report.composeFormatted({kHandlerTitle, problem, file, line}, "%s", text);
  report.appendStackTrace(exception->context);
  report.writeLog(logFileName);
}

}  // namespace diagnostics
}  // namespace orvo
