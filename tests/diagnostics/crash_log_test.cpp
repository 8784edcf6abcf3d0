#include <signal.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "diagnostics/CrashLog.h"
#include "diagnostics/DiagnosticsTestSupport.h"
#include "gtest/gtest.h"
#include "orvo/common/ExceptionFilter.h"

namespace crash_probe {

volatile std::uintptr_t faultAddress = 16;

__attribute__((noinline)) void crashByWriting() {
  *reinterpret_cast<volatile int*>(faultAddress) = 1;
  asm volatile("" ::: "memory");
}

}  // namespace crash_probe

namespace orvo {
namespace diagnostics {
namespace {

using testing_support::fileExists;
using testing_support::readWholeFile;
using testing_support::ScopedEnvironment;
using testing_support::ScratchDirectory;

constexpr std::uint32_t kAccessViolation = 0xC0000005;

TEST(ExceptionNameTest, TextsStandAsTheyAre) {
  EXPECT_STREQ("Access Violation", exceptionName(kAccessViolation));
  EXPECT_STREQ("Execution cannot be continued ", exceptionName(0xC0000025));
  EXPECT_STREQ("Attempt to execute a priviliged instruction", exceptionName(0xC0000096));
  EXPECT_STREQ("Stack Corrupted as a result of a Floating Point operation",
               exceptionName(0xC0000092));
  EXPECT_STREQ("Guard page", exceptionName(0x80000001));
  EXPECT_STREQ("", exceptionName(0));
  EXPECT_STREQ("", exceptionName(0xC0000007));
}

std::uint32_t codeOf(int signal, int how) {
  siginfo_t info;
  std::memset(&info, 0, sizeof(info));
  info.si_signo = signal;
  info.si_code = how;
  return exceptionFromSignal(signal, &info, nullptr).code;
}

TEST(ExceptionFromSignalTest, SignalsMapToTheEventsOfTheTable) {
  EXPECT_EQ(0xC0000094u, codeOf(SIGFPE, FPE_INTDIV));
  EXPECT_EQ(0xC0000095u, codeOf(SIGFPE, FPE_INTOVF));
  EXPECT_EQ(0xC000008Eu, codeOf(SIGFPE, FPE_FLTDIV));
  EXPECT_EQ(0xC000008Fu, codeOf(SIGFPE, FPE_FLTRES));
  EXPECT_EQ(0xC0000093u, codeOf(SIGFPE, FPE_FLTUND));
  EXPECT_EQ(0xC000008Cu, codeOf(SIGFPE, FPE_FLTSUB));
  EXPECT_EQ(0xC0000096u, codeOf(SIGILL, ILL_PRVOPC));
  EXPECT_EQ(0xC000001Du, codeOf(SIGILL, ILL_ILLOPC));
  EXPECT_EQ(0x80000002u, codeOf(SIGBUS, BUS_ADRALN));
  EXPECT_EQ(0xC0000006u, codeOf(SIGBUS, BUS_ADRERR));
  EXPECT_EQ(0x80000003u, codeOf(SIGTRAP, TRAP_BRKPT));
  EXPECT_EQ(0x80000004u, codeOf(SIGTRAP, TRAP_TRACE));
  EXPECT_EQ(0xC0000025u, codeOf(SIGABRT, SI_TKILL));
  EXPECT_EQ(kAccessViolation, codeOf(SIGSEGV, SI_USER));
}

#if defined(__x86_64__)
TEST(ExceptionFromSignalTest, MemoryFaultsTellAccessAndStackOverflow) {
  ucontext_t context;
  std::memset(&context, 0, sizeof(context));
  context.uc_mcontext.gregs[REG_RIP] = 0x1234;
  context.uc_mcontext.gregs[REG_RSP] = 0x7F0000100000;
  context.uc_mcontext.gregs[REG_ERR] = 6;  // a write from user mode
  siginfo_t info;
  std::memset(&info, 0, sizeof(info));
  info.si_code = SEGV_MAPERR;
  info.si_addr = reinterpret_cast<void*>(0x10);

  ExceptionRecord write = exceptionFromSignal(SIGSEGV, &info, &context);
  EXPECT_EQ(kAccessViolation, write.code);
  EXPECT_EQ(reinterpret_cast<const void*>(0x1234), write.address);
  ASSERT_EQ(2u, write.parameterCount);
  EXPECT_EQ(1u, write.parameters[0]);
  EXPECT_EQ(0x10u, write.parameters[1]);

  context.uc_mcontext.gregs[REG_ERR] = 4;
  EXPECT_EQ(0u, exceptionFromSignal(SIGSEGV, &info, &context).parameters[0]);

  info.si_addr = reinterpret_cast<void*>(0x7F0000100000 - 8);
  const ExceptionRecord overflow = exceptionFromSignal(SIGSEGV, &info, &context);
  EXPECT_EQ(0xC00000FDu, overflow.code);
  EXPECT_EQ(0u, overflow.parameterCount);
}
#endif

class CrashLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _environment.set("ORVO_LOG_FILENAME", logPath());
    _environment.set("ORVO_NO_VERIFY", "true");
    _environment.set("ORVO_MESSAGEBOX_ENABLED", "false");
  }

  std::string logPath() const { return _directory.file("crash.log"); }
  std::string log() const { return readWholeFile(logPath()); }

  static ExceptionRecord record(std::uint32_t code) {
    ExceptionRecord exception;
    exception.code = code;
    exception.address = reinterpret_cast<const void*>(0x1234);
    return exception;
  }

  ScopedEnvironment _environment;
  ScratchDirectory _directory;
};

TEST_F(CrashLogTest, QuietEventsAreNotReported) {
  for (const std::uint32_t code :
       {0x80000002u, 0xC000008Cu, 0xC000008Du, 0xC000008Fu, 0xC0000093u}) {
    const ExceptionRecord exception = record(code);
    EXPECT_FALSE(exceptionFilter(&exception, nullptr, nullptr, 0, true)) << code;
  }
  EXPECT_FALSE(fileExists(logPath()));
}

TEST_F(CrashLogTest, FilterReportsUnderItsOwnTitle) {
  const ExceptionRecord exception = record(0xC0000094);
  EXPECT_FALSE(exceptionFilter(&exception, "while pricing", "Pricer.cpp", 12, true));
  const std::string expected =
      "\n\nFile: Pricer.cpp\nLine: 12\n\nProblem:\n\twhile pricing\n\t"
      "Exception \"Integer Division by Zero\" (0xC0000094) occured at 0x0000000000001234"
      "\n\nStack Trace:\n0x";
  const std::string text = log();
  EXPECT_EQ(0u, text.find("ORVO Exception Handler\n\nApplication: ")) << text;
  EXPECT_NE(std::string::npos, text.find(expected)) << text;
}

TEST_F(CrashLogTest, LogExceptionOnlyWritesTheLog) {
  _environment.unset("ORVO_NO_VERIFY");  // would end the process in a filter
  ExceptionRecord exception = record(kAccessViolation);
  exception.parameterCount = 2;
  exception.parameters[0] = 1;
  exception.parameters[1] = 0x20;
  logException(&exception, nullptr, nullptr, 0);
  exception.parameters[0] = 0;
  logException(&exception, nullptr, nullptr, 0);
  const ExceptionRecord quiet = record(0xC000008F);
  logException(&quiet, nullptr, nullptr, 0);
  const std::string text = log();
  const std::string violation =
      "\n\nProblem:\n\tException \"Access Violation\" (0xC0000005) occured at "
      "0x0000000000001234: memory at 0x0000000000000020 cannot be ";
  const std::size_t written = text.find(violation + "written\n\nStack Trace:");
  const std::size_t read = text.find(violation + "read\n\nStack Trace:");
  EXPECT_NE(std::string::npos, written);
  EXPECT_NE(std::string::npos, read);
  EXPECT_LT(written, read);
  EXPECT_NE(std::string::npos, text.find("\"Floating Point Inexact Result\" (0xC000008F)"));
}

using CrashLogDeathTest = CrashLogTest;

TEST_F(CrashLogDeathTest, InstalledFilterReportsAFaultAndEndsWith253) {
  _environment.unset("ORVO_NO_VERIFY");
  EXPECT_EXIT(
      {
        common::installExceptionFilter("crash test");
        crash_probe::crashByWriting();
        std::exit(0);
      },
      ::testing::ExitedWithCode(253), "");
  const std::string text = log();
  EXPECT_EQ(0u, text.find("ORVO Exception Handler\n\nApplication: ")) << text;
  EXPECT_NE(std::string::npos,
            text.find("\n\nProblem:\n\tcrash test\n\tException \"Access Violation\" "
                      "(0xC0000005) occured at 0x"));
  EXPECT_NE(std::string::npos,
            text.find(": memory at 0x0000000000000010 cannot be written\n\nStack Trace:\n0x"));
  const std::size_t firstFrame = text.find("\n0x", text.find("Stack Trace:"));
  EXPECT_NE(std::string::npos, text.find(": crash_probe::crashByWriting() + ", firstFrame)) << text;
  EXPECT_EQ(text.find("\n", firstFrame + 1), text.find("\n", text.find("crashByWriting")))
      << "the trace starts at the faulting function";
}

TEST_F(CrashLogDeathTest, AbortIsReportedToo) {
  _environment.unset("ORVO_NO_VERIFY");
  EXPECT_EXIT(
      {
        common::installExceptionFilter();
        std::abort();
      },
      ::testing::ExitedWithCode(253), "");
  EXPECT_NE(std::string::npos,
            log().find("\n\nProblem:\n\tException \"Execution cannot be continued \" "
                       "(0xC0000025) occured at 0x"));
}

void exitWith42(int) { _exit(42); }

// After its report the filter hands the event to the handler it replaced.
TEST_F(CrashLogDeathTest, EventGoesOnToTheEarlierHandler) {
  EXPECT_EXIT(
      {
        signal(SIGSEGV, exitWith42);
        common::installExceptionFilter();
        crash_probe::crashByWriting();
        std::exit(0);
      },
      ::testing::ExitedWithCode(42), "");
  EXPECT_NE(std::string::npos, log().find("Exception \"Access Violation\""));

  _environment.unset("ORVO_NO_VERIFY");
  EXPECT_EXIT(
      {
        signal(SIGSEGV, exitWith42);
        common::installExceptionLogger();
        crash_probe::crashByWriting();
        std::exit(0);
      },
      ::testing::ExitedWithCode(42), "");
}

TEST_F(CrashLogDeathTest, RemovedFilterReportsNothing) {
  _environment.unset("ORVO_NO_VERIFY");
  EXPECT_EXIT(
      {
        signal(SIGSEGV, exitWith42);
        common::installExceptionFilter();
        common::removeExceptionFilter();
        crash_probe::crashByWriting();
        std::exit(0);
      },
      ::testing::ExitedWithCode(42), "");
  EXPECT_FALSE(fileExists(logPath()));
}

}  // namespace
}  // namespace diagnostics
}  // namespace orvo
