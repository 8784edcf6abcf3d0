#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "diagnostics/DiagnosticsTestSupport.h"
#include "diagnostics/FailureLog.h"
#include "diagnostics/Verify.h"
#include "gtest/gtest.h"

namespace orvo {
namespace diagnostics {
namespace {

using testing_support::readWholeFile;
using testing_support::ScopedEnvironment;
using testing_support::ScratchDirectory;

std::string localStamp() {
  const std::time_t now = std::time(nullptr);
  std::tm local;
  localtime_r(&now, &local);
  char stamp[32];
  std::strftime(stamp, sizeof(stamp), "%Y%m%d_%H%M%S", &local);
  return stamp;
}

std::string hex8(unsigned value) {
  char text[16];
  std::snprintf(text, sizeof(text), "%08X", value);
  return text;
}

class FailureLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"TEMP", "TMP", "TMPDIR"}) _environment.unset(name);
  }

  // Writes `text` under a generated name and answers the name.
  std::string writeGenerated(const char* text) {
    char path[260] = "";
    EXPECT_TRUE(writeFailureLog(text, path, sizeof(path), "app")) << path;
    return path;
  }

  ScopedEnvironment _environment;
  ScratchDirectory _first;
  ScratchDirectory _second;
};

TEST_F(FailureLogTest, GeneratedNameFollowsThePatternInTemp) {
  _environment.set("TEMP", _first.path());
  _environment.set("TMP", _second.path());
  const std::string before = localStamp();
  const std::string path = writeGenerated("report text");
  const std::string after = localStamp();

  const std::string stamp = testing_support::between(
      path, _first.path() + "/app_" + hex8(getpid()) + "_" + hex8(gettid()) + "_", ".log");
  ASSERT_EQ(15u, stamp.size()) << path;
  EXPECT_TRUE(testing_support::madeOf(stamp.substr(0, 8) + stamp.substr(9), "0123456789"));
  EXPECT_EQ('_', stamp[8]);
  EXPECT_LE(before, stamp);
  EXPECT_GE(after, stamp);
  EXPECT_EQ("report text", readWholeFile(path));
  EXPECT_TRUE(_second.entries().empty());
}

TEST_F(FailureLogTest, DirectoryComesFromTmpThenTmpdirThenTheCurrentDirectory) {
  _environment.set("TEMP", "");  // an empty value counts as unset
  _environment.set("TMP", _first.path());
  EXPECT_EQ(0u, writeGenerated("a").find(_first.path() + "/app_"));

  _environment.unset("TMP");
  _environment.set("TMPDIR", _second.path());
  EXPECT_EQ(0u, writeGenerated("b").find(_second.path() + "/app_"));

  _environment.unset("TMPDIR");
  char previous[4096];
  ASSERT_NE(nullptr, getcwd(previous, sizeof(previous)));
  ScratchDirectory current;
  ASSERT_EQ(0, chdir(current.path().c_str()));
  const std::string path = writeGenerated("c");
  ASSERT_EQ(0, chdir(previous));
  EXPECT_EQ(0u, path.find(current.path() + "/app_")) << path;
  EXPECT_EQ(1u, current.entries().size());
}

TEST_F(FailureLogTest, ConfiguredPathCollectsEveryReport) {
  char path[4096];
  const std::string fixed = _first.file("fixed.log");
  for (const char* text : {"first\n", "second\n"}) {
    std::snprintf(path, sizeof(path), "%s", fixed.c_str());
    EXPECT_TRUE(writeFailureLog(text, path, sizeof(path), "app"));
    EXPECT_EQ(fixed, path);
  }
  EXPECT_EQ("first\nsecond\n", readWholeFile(fixed));
}

TEST_F(FailureLogTest, MissingOrBlockedDirectoriesAnswerFalse) {
  const std::string blocker = _first.file("plain-file");
  std::fclose(std::fopen(blocker.c_str(), "w"));
  char path[4096];
  std::snprintf(path, sizeof(path), "%s/x.log", blocker.c_str());
  EXPECT_FALSE(writeFailureLog("text", path, sizeof(path), "app"));

  _environment.set("TEMP", _first.file("does/not/exist"));
  char generated[260] = "";
  EXPECT_FALSE(writeFailureLog("text", generated, sizeof(generated), "app"));
}

TEST_F(FailureLogTest, NameThatDoesNotFitIsNotCut) {
  _environment.set("TEMP", _first.path() + "/" + std::string(230, 'd'));
  char generated[260] = "";
  EXPECT_FALSE(writeFailureLog("text", generated, sizeof(generated), "app"));
  EXPECT_STREQ("", generated);
  EXPECT_TRUE(_first.entries().empty());
}

TEST_F(FailureLogTest, ReportWithoutConfiguredPathLandsInTemp) {
  _environment.set("TEMP", _first.path());
  _environment.set("ORVO_LOG_FILENAME", "");
  _environment.set("ORVO_NO_VERIFY", "true");
  verifyReport("ORVO Internal failure", nullptr, nullptr, 0, false, true, nullptr, "%s", "gone");
  const auto names = _first.entries();
  ASSERT_EQ(1u, names.size());
  EXPECT_EQ(0u, names[0].find(std::string(program_invocation_short_name) + "_"));
  EXPECT_EQ(0u,
            readWholeFile(_first.file(names[0])).find("ORVO Internal failure\n\nApplication: "));
}

}  // namespace
}  // namespace diagnostics
}  // namespace orvo
