#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>

#include "diagnostics/DiagnosticsTestSupport.h"
#include "gtest/gtest.h"
#include "orvo/common/LogPath.h"

namespace orvo {
namespace common {
namespace {

using testing_support::fileExists;
using testing_support::ScopedEnvironment;
using testing_support::ScratchDirectory;

bool isDirectory(const std::string& path) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

class LogPathTest : public ::testing::Test {
 protected:
  // The prepared path, or "" when the call answered false.
  std::string prepared(const std::string& path, bool expand = false, UInt32 size = 1024) {
    char out[1024];
    std::memset(out, 'x', sizeof(out));
    const bool ok = prepareLogPath(path.c_str(), out, size, expand);
    EXPECT_EQ(ok, out[0] != '\0') << path;
    return out;
  }

  void makeFile(const std::string& path) { std::fclose(std::fopen(path.c_str(), "w")); }

  ScratchDirectory _directory;
  ScopedEnvironment _environment;
};

TEST_F(LogPathTest, MarkersBecomeApplicationHostProcessAndTime) {
  char host[256] = "";
  gethostname(host, sizeof(host));
  const long before = static_cast<long>(std::time(nullptr));
  const std::string path = prepared(_directory.path() + "/{a}_{H}_{p}_{T}_{x}_{a.log");
  const long after = static_cast<long>(std::time(nullptr));
  const std::string seconds =
      testing_support::between(path,
                               _directory.path() + "/" + program_invocation_short_name + "_" +
                                   host + "_" + std::to_string(getpid()) + "_",
                               "_{x}_{a.log");
  ASSERT_TRUE(testing_support::madeOf(seconds, "0123456789")) << path;
  EXPECT_LE(before, std::stol(seconds));
  EXPECT_GE(after, std::stol(seconds));
}

TEST_F(LogPathTest, EnvironmentVariablesAreExpandedAndUnknownOnesKept) {
  _environment.set("ORVO_TEST_LOG_DIR", _directory.path());
  _environment.unset("ORVO_TEST_UNSET");
  EXPECT_EQ(_directory.file("a.log"), prepared("${ORVO_TEST_LOG_DIR}/a.log"));
  EXPECT_EQ(_directory.file("b.log"), prepared("$ORVO_TEST_LOG_DIR/b.log"));
  EXPECT_EQ(_directory.file("$ORVO_TEST_UNSET/c.log"),
            prepared(_directory.path() + "/$ORVO_TEST_UNSET/c.log"));
  EXPECT_TRUE(isDirectory(_directory.file("$ORVO_TEST_UNSET")));
  EXPECT_EQ("", prepared(_directory.path() + "/" + std::string(260, 'n') + ".log"));
}

TEST_F(LogPathTest, ResultNeedsRoomForThePathAnd25More) {
  const std::string path = _directory.file("room.log");
  const UInt32 length = static_cast<UInt32>(path.size());
  EXPECT_EQ("", prepared(path, false, length + 24));
  EXPECT_EQ(path, prepared(path, false, length + 25));
  // A marker may need more than the 25 spare bytes; the result must fit.
  EXPECT_EQ("", prepared(_directory.path() + "/{h}{h}{h}{h}{h}{h}{a}{a}.log", false,
                         static_cast<UInt32>(_directory.path().size()) + 40));
}

TEST_F(LogPathTest, BadFileNamesGiveNothing) {
  const std::string base = _directory.path() + "/";
  for (const char* name : {"", ".log", "a*b.log", "a.l?g", "a|b", "a<b", "a>b", "a\"b", "a:b"}) {
    EXPECT_EQ("", prepared(base + name)) << name;
  }
}

TEST_F(LogPathTest, DirectoriesAreNoLogFiles) {
  EXPECT_EQ("", prepared(_directory.path()));
  const std::string pidDirectory = _directory.file(std::to_string(getpid()));
  ASSERT_EQ(0, mkdir(pidDirectory.c_str(), 0700));
  EXPECT_EQ("", prepared(_directory.path() + "/{p}"));
}

TEST_F(LogPathTest, MissingDirectoriesAreCreated) {
  const std::string path = _directory.path() + "/a/b//c/x.log";
  EXPECT_EQ(path, prepared(path));
  EXPECT_TRUE(isDirectory(_directory.file("a/b/c")));
  EXPECT_TRUE(testing_support::ScratchDirectory::listDirectory(_directory.file("a/b/c")).empty());

  makeFile(_directory.file("plain"));
  EXPECT_EQ("", prepared(_directory.path() + "/plain/sub/x.log"));
}

TEST_F(LogPathTest, NameAloneStandsAndExpandMakesItAbsolute) {
  char previous[4096];
  ASSERT_NE(nullptr, getcwd(previous, sizeof(previous)));
  ASSERT_EQ(0, chdir(_directory.path().c_str()));
  const std::string alone = prepared("alone.log");
  const std::string absolute = prepared("alone.log", true);
  const std::string dotted = prepared("./logs/../other/./x.log", true);
  ASSERT_EQ(0, chdir(previous));
  EXPECT_EQ("alone.log", alone);
  EXPECT_EQ(_directory.file("alone.log"), absolute);
  EXPECT_EQ(_directory.file("other/x.log"), dotted);
  EXPECT_FALSE(fileExists(_directory.file("logs")));
}

TEST_F(LogPathTest, CheckLogDirectory) {
  EXPECT_FALSE(checkLogDirectory(""));
  EXPECT_FALSE(checkLogDirectory(nullptr));
  EXPECT_FALSE(checkLogDirectory(("/tmp/" + std::string(495, 'd')).c_str()));
  EXPECT_TRUE(checkLogDirectory(_directory.path().c_str()));
  EXPECT_TRUE(checkLogDirectory((_directory.path() + "//new///deeper/").c_str()));
  EXPECT_TRUE(isDirectory(_directory.file("new/deeper")));
  EXPECT_TRUE(checkLogDirectory((_directory.path() + "/new").c_str()));
  makeFile(_directory.file("plain"));
  EXPECT_FALSE(checkLogDirectory(_directory.file("plain").c_str()));
  EXPECT_FALSE(checkLogDirectory(_directory.file("plain/below").c_str()));
  EXPECT_FALSE(fileExists(_directory.file("_#test#_.txt")));
  EXPECT_FALSE(fileExists(_directory.file("new/_#test#_.txt")));
}

}  // namespace
}  // namespace common
}  // namespace orvo
