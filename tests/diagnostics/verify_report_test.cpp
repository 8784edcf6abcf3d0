#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <thread>

#include "diagnostics/DiagnosticsTestSupport.h"
#include "diagnostics/Terminal.h"
#include "diagnostics/Verify.h"
#include "gtest/gtest.h"
#include "orvo/common/UseOrvoVerify.h"
#include "orvo/common/VerifyFailure.h"

namespace orvo {
namespace diagnostics {
namespace {

using testing_support::fileExists;
using testing_support::readWholeFile;
using testing_support::ScopedEnvironment;
using testing_support::ScratchDirectory;

constexpr char kTitle[] = "ORVO Internal failure";
constexpr char kLogSentence[] = "\n\nORVO internal failure log has been written to: ";

std::string hex(unsigned value) {
  std::ostringstream text;
  text << std::uppercase << std::hex << value;
  return text.str();
}

// The first lines of a report made by this thread; the program has no '.'
// in its name, so the short name it was started under is the application.
std::string reportHead(const std::string& title) {
  return title + "\n\nApplication: " + program_invocation_short_name + "\nProcess Id: 0x" +
         hex(static_cast<unsigned>(getpid())) + "\nThread Id: 0x" +
         hex(static_cast<unsigned>(gettid()));
}

class VerifyReportTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _environment.set("ORVO_LOG_FILENAME", logPath());
    _environment.set("ORVO_NO_VERIFY", "true");
    _environment.set("ORVO_MESSAGEBOX_ENABLED", "false");
  }

  std::string logPath() const { return _directory.file("verify.log"); }
  std::string log() const { return readWholeFile(logPath()); }

  ScopedEnvironment _environment;
  ScratchDirectory _directory;
};

class ChecksSwitchedOff {
 public:
  ChecksSwitchedOff() { common::setUseOrvoVerify(false); }
  ~ChecksSwitchedOff() { common::setUseOrvoVerify(true); }
};

TEST_F(VerifyReportTest, ReportHasTheFixedLayout) {
  EXPECT_FALSE(verifyReport(kTitle, nullptr, "Data/Impl/FieldListWriteIterator.cpp", 42, false,
                            true, nullptr, "ORVO_VERIFY( %s ) failed", "ret == OWIRE_RET_SUCCESS"));
  EXPECT_EQ(reportHead(kTitle) +
                "\n\nFile: Data/Impl/FieldListWriteIterator.cpp\nLine: 42"
                "\n\nProblem:\n\tORVO_VERIFY( ret == OWIRE_RET_SUCCESS ) failed",
            log());
}

TEST_F(VerifyReportTest, OptionalPartsAreLeftOutAndReportsAppendToOneLog) {
  verifyReport(kTitle, "state lost", nullptr, 0, false, true, nullptr, "%s",
               "ORVO_VERIFY( 0 ) failed");
  verifyReport(kTitle, nullptr, nullptr, 7, false, true, nullptr, "%s", "ORVO_VERIFY( 0 ) failed");
  verifyReport(kTitle, "only a problem", "File.cpp", 0, false, true, nullptr, nullptr);
  verifyReport("Bare", nullptr, nullptr, 0, false, true, nullptr, nullptr);
  EXPECT_EQ(reportHead(kTitle) + "\n\nProblem:\n\tstate lost\n\tORVO_VERIFY( 0 ) failed" +
                reportHead(kTitle) + "\nLine: 7\n\nProblem:\n\tORVO_VERIFY( 0 ) failed" +
                reportHead(kTitle) + "\n\nFile: File.cpp\n\nProblem:\n\tonly a problem\n\t" +
                reportHead("Bare"),
            log());
}

TEST_F(VerifyReportTest, MessageIsCutTo511Bytes) {
  const std::string longText(600, 'x');
  verifyReport(kTitle, nullptr, nullptr, 0, false, true, nullptr, "%s", longText.c_str());
  EXPECT_EQ(reportHead(kTitle) + "\n\nProblem:\n\t" + std::string(511, 'x'), log());
}

TEST_F(VerifyReportTest, StackTraceFollowsTheMessage) {
  verifyReport(kTitle, nullptr, nullptr, 0, true, true, nullptr, "%s", "ORVO_VERIFY( 0 ) failed");
  const std::string text = log();
  const std::string head = reportHead(kTitle) + "\n\nProblem:\n\tORVO_VERIFY( 0 ) failed";
  ASSERT_EQ(head, text.substr(0, head.size()));
  EXPECT_EQ("\n\nStack Trace:\n0x", text.substr(head.size(), 17));
  EXPECT_NE(std::string::npos, text.find(": orvo::diagnostics::verifyReport() + "));
  EXPECT_NE(std::string::npos, text.find("_StackTraceFollowsTheMessage_Test::TestBody() + "));
}

TEST_F(VerifyReportTest, FailedCheckGoesOnWithNoVerifyInAnyCase) {
  _environment.set("ORVO_NO_VERIFY", "True");
  volatile int value = 1;
  ORVO_VERIFY(value == 1);
  EXPECT_FALSE(fileExists(logPath())) << "a passing check reports nothing";
  value = 2;
  ORVO_VERIFY(value == 1);
  const std::string text = log();
  EXPECT_NE(std::string::npos, text.find("\n\nFile: " __FILE__ "\nLine: "));
  EXPECT_NE(std::string::npos,
            text.find("\n\nProblem:\n\tORVO_VERIFY( value == 1 ) failed\n\nStack Trace:"));
}

TEST_F(VerifyReportTest, UnwritableLogOnlyLosesTheLogSentence) {
  const std::string blocker = _directory.file("plain-file");
  std::fclose(std::fopen(blocker.c_str(), "w"));
  _environment.set("ORVO_LOG_FILENAME", blocker + "/under/a/file.log");
  EXPECT_FALSE(verifyReport(kTitle, nullptr, nullptr, 0, true, true, nullptr, "%s", "x"));
  _environment.set("ORVO_LOG_FILENAME", _directory.file("missing/verify.log"));
  EXPECT_FALSE(verifyReport(kTitle, nullptr, nullptr, 0, true, true, nullptr, "%s", "x"));
  EXPECT_FALSE(fileExists(_directory.file("missing")));

  const ChecksSwitchedOff off;
  try {
    verifyCheck(kTitle, nullptr, nullptr, 0, false, true, nullptr, "%s", "ORVO_VERIFY( 0 ) failed");
    FAIL() << "no VerifyFailure";
  } catch (const std::exception& failure) {
    const common::VerifyFailure copy = dynamic_cast<const common::VerifyFailure&>(failure);
    EXPECT_EQ(reportHead(kTitle) + "\n\nProblem:\n\tORVO_VERIFY( 0 ) failed", copy.what());
  }
}

TEST_F(VerifyReportTest, SwitchedOffChecksRaiseVerifyFailureAfterLogging) {
  _environment.unset("ORVO_NO_VERIFY");
  const ChecksSwitchedOff off;
  volatile int value = 3;
  try {
    ORVO_VERIFY(value == 4);
    FAIL() << "no VerifyFailure";
  } catch (const common::VerifyFailure& failure) {
    const std::string text = failure.what();
    EXPECT_EQ(text.size(), failure.getLength());
    const std::string logged = log();
    EXPECT_EQ(logged + kLogSentence + logPath(), text);
    EXPECT_EQ(0u, logged.find(reportHead(kTitle) + "\n\nFile: " __FILE__ "\nLine: "));
    EXPECT_NE(std::string::npos, logged.find("ORVO_VERIFY( value == 4 ) failed\n\nStack Trace:"));
  }
}

TEST_F(VerifyReportTest, EnabledChecksLeaveTheReportToTheSecondHalf) {
  EXPECT_TRUE(verifyCheck(kTitle, nullptr, nullptr, 0, true, true, nullptr, "%s", "x"));
  EXPECT_FALSE(fileExists(logPath()));
}

using VerifyReportDeathTest = VerifyReportTest;

TEST_F(VerifyReportDeathTest, ProcessEndsWith253WhenThePromptIsOff) {
  _environment.unset("ORVO_NO_VERIFY");
  _environment.set("ORVO_MESSAGEBOX_ENABLED", "FALSE");
  volatile int value = 0;
  EXPECT_EXIT(
      {
        ORVO_VERIFY(value == 5);
        std::exit(0);
      },
      ::testing::ExitedWithCode(253), "");
  EXPECT_NE(std::string::npos, log().find("ORVO_VERIFY( value == 5 ) failed\n\nStack Trace:"));
}

TEST_F(VerifyReportDeathTest, ProcessEndsWith253WithoutATerminal) {
  _environment.unset("ORVO_NO_VERIFY");
  _environment.unset("ORVO_MESSAGEBOX_ENABLED");
  EXPECT_EXIT(
      {
        setsid();  // leaves any controlling terminal behind
        verifyReport(kTitle, nullptr, nullptr, 0, false, true, nullptr, "%s", "no terminal");
        std::exit(0);
      },
      ::testing::ExitedWithCode(253), "");
  EXPECT_NE(std::string::npos, log().find("\n\nProblem:\n\tno terminal"));
}

// Runs `statement` on a fresh pseudo-terminal that becomes the controlling
// terminal, with `answer` already typed. What the prompt writes is drained.
template <class Statement>
void onPseudoTerminal(const char* answer, Statement statement) {
  const int master = posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0 || setsid() < 0) std::_Exit(90);
  const int slave = open(ptsname(master), O_RDWR);
  if (slave < 0) std::_Exit(91);
  std::thread([master] {
    char sink[4096];
    while (read(master, sink, sizeof(sink)) > 0) {
    }
  }).detach();
  if (write(master, answer, std::strlen(answer)) < 0) std::_Exit(92);
  statement();
}

TEST_F(VerifyReportDeathTest, TerminalAnswersDecide) {
  const int probe = posix_openpt(O_RDWR | O_NOCTTY);
  if (probe < 0) GTEST_SKIP() << "no pseudo-terminals here";
  close(probe);
  _environment.unset("ORVO_NO_VERIFY");
  _environment.unset("ORVO_MESSAGEBOX_ENABLED");
  EXPECT_EXIT(onPseudoTerminal("cancel\n",
                               [] {
                                 ORVO_VERIFY(false);
                                 std::exit(0);
                               }),
              ::testing::ExitedWithCode(253), "");
  EXPECT_EXIT(onPseudoTerminal("r\n",
                               [] {
                                 ORVO_VERIFY(false);
                                 std::exit(0);
                               }),
              ::testing::KilledBySignal(SIGTRAP), "");
  // An OK prompt (no way to go on) ends the process whatever the answer.
  EXPECT_EXIT(onPseudoTerminal("retry\n",
                               [] {
                                 verifyReport(kTitle, nullptr, nullptr, 0, false, false, nullptr,
                                              nullptr);
                                 std::exit(0);
                               }),
              ::testing::ExitedWithCode(253), "");
}

class TerminalPromptTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0, socketpair(AF_UNIX, SOCK_STREAM, 0, _ends)); }
  void TearDown() override {
    close(_ends[0]);
    if (_ends[1] >= 0) close(_ends[1]);
  }

  BoxChoice ask(const std::string& typed, BoxButtons buttons, bool endInput = false) {
    EXPECT_EQ(static_cast<ssize_t>(typed.size()), write(_ends[1], typed.data(), typed.size()));
    if (endInput) shutdown(_ends[1], SHUT_WR);
    return askOnTerminal(_ends[0], "ORVO Internal Failure", "the report", buttons);
  }

  std::string shown() {
    shutdown(_ends[0], SHUT_WR);
    std::string text;
    char chunk[256];
    ssize_t got;
    while ((got = read(_ends[1], chunk, sizeof(chunk))) > 0) text.append(chunk, got);
    return text;
  }

  int _ends[2] = {-1, -1};
};

TEST_F(TerminalPromptTest, ShowsTitleAndTextAndAsksAgainUntilAButtonIsNamed) {
  EXPECT_EQ(BoxChoice::Retry, ask("maybe\n\nR\n", BoxButtons::RetryCancel));
  const std::string text = shown();
  EXPECT_EQ(0u, text.find("\nORVO Internal Failure\n\nthe report\n\n"));
  size_t prompts = 0;
  for (size_t at = text.find("[Retry] [Cancel] "); at != std::string::npos;
       at = text.find("[Retry] [Cancel] ", at + 1)) {
    ++prompts;
  }
  EXPECT_EQ(3u, prompts);
}

TEST_F(TerminalPromptTest, ButtonsByWordOrInitialInAnyCase) {
  EXPECT_EQ(BoxChoice::Cancel, ask("  CANCEL \r\n", BoxButtons::RetryCancel));
  EXPECT_EQ(BoxChoice::Ignore, ask("i\n", BoxButtons::AbortRetryIgnore));
  EXPECT_EQ(BoxChoice::Abort, ask("Abort\n", BoxButtons::AbortRetryIgnore));
  EXPECT_EQ(BoxChoice::Retry, ask("retry\n", BoxButtons::AbortRetryIgnore));
  EXPECT_EQ(BoxChoice::Cancel, ask(std::string(200, 'i') + "\nc\n", BoxButtons::RetryCancel));
  EXPECT_EQ(BoxChoice::Ok, ask("\n", BoxButtons::Ok));
}

TEST_F(TerminalPromptTest, EndOfInputClosesTheBox) {
  EXPECT_EQ(BoxChoice::Abort, ask("ignore it\n", BoxButtons::AbortRetryIgnore, true));
}

TEST(DebuggerDeathTest, ATracedProcessCountsAsDebugged) {
  EXPECT_EXIT(_exit(debuggerAttached() ? 1 : 0), ::testing::ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
        _exit(debuggerAttached() ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace diagnostics
}  // namespace orvo
