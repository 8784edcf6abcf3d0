// The orvo program as a user runs it: on the bundled samples and on broken
// files, checking exit codes, output and the JSON round trip.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace {

const std::string kTool = ORVO_BINARY_DIR "/tools/orvo/orvo";
const std::string kSource = ORVO_SOURCE_DIR;

struct ToolRun {
  int status;
  std::string out;
};

// Runs the tool with `args` (shell words); stderr joins stdout.
ToolRun run(const std::string& args) {
  const std::string command = kTool + " " + args + " 2>&1";
  ToolRun r{-1, ""};
  FILE* p = popen(command.c_str(), "r");
  if (p == nullptr) return r;
  char chunk[4096];
  std::size_t n;
  while ((n = std::fread(chunk, 1, sizeof chunk, p)) > 0) r.out.append(chunk, n);
  const int raw = pclose(p);
  r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  return r;
}

std::string temp(const std::string& name) { return ::testing::TempDir() + "orvo_cli_" + name; }

std::string slurp(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void spit(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

TEST(OrvoCliTest, DecodeJsonThenEncodeGivesTheSameBytes) {
  for (const char* sample : {"market-price.jsonl", "order-book.json"}) {
    const std::string bin = temp("a.bin"), json = temp("a.json"), again = temp("b.bin");
    ASSERT_EQ(run("encode " + kSource + "/data/samples/" + sample + " -o " + bin).status, 0);
    const ToolRun decoded = run("decode --json " + bin);
    ASSERT_EQ(decoded.status, 0) << decoded.out;
    spit(json, decoded.out);
    ASSERT_EQ(run("encode " + json + " -o " + again).status, 0);
    EXPECT_EQ(slurp(bin), slurp(again)) << sample;
  }
}

TEST(OrvoCliTest, TreeNamesFieldsAndShowsEnumerationDisplays) {
  const std::string bin = temp("mp.bin");
  ASSERT_EQ(run("encode " + kSource + "/data/samples/market-price.jsonl -o " + bin).status, 0);
  const ToolRun tree = run("decode " + bin);
  ASSERT_EQ(tree.status, 0);
  EXPECT_NE(tree.out.find("# message 5"), std::string::npos);
  EXPECT_NE(tree.out.find("BUY_PX               Real 101.25"), std::string::npos) << tree.out;
  EXPECT_NE(tree.out.find("QUOTE_CCY            Enum 392 \"JPY\""), std::string::npos);
  EXPECT_NE(tree.out.find("refresh  domain 6  stream 5  [solicited refreshComplete clearCache]"),
            std::string::npos);
  // Without a dictionary, field values are bytes.
  const ToolRun bare = run("decode --no-dict " + bin);
  EXPECT_EQ(bare.out.find("BUY_PX"), std::string::npos);
  EXPECT_NE(bare.out.find("hex"), std::string::npos);
}

TEST(OrvoCliTest, HexInAndOut) {
  const std::string hex = temp("mp.hex");
  ASSERT_EQ(run("encode --hex " + kSource + "/data/samples/order-book.json -o " + hex).status, 0);
  const ToolRun tree = run("decode --hex " + hex);
  EXPECT_EQ(tree.status, 0);
  EXPECT_NE(tree.out.find("delete key \"100.75B\""), std::string::npos) << tree.out;
}

TEST(OrvoCliTest, BrokenInputsFailCleanly) {
  const std::string junk = temp("junk.bin");
  spit(junk, std::string("\x07\x00\xff\xff\xff\x01garbage", 13));
  ToolRun r = run("decode " + junk);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("not a message"), std::string::npos) << r.out;

  r = run("decode " + temp("missing.bin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("No such file or directory"), std::string::npos);

  const std::string badJson = temp("bad.json");
  spit(badJson, "{\"class\": \"update\", \"streamId\": \"five\"}");
  r = run("encode " + badJson + " -o " + temp("x.bin"));
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("message 1.streamId: an integer is expected"), std::string::npos) << r.out;

  spit(badJson, "{not json");
  r = run("encode " + badJson);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find("parse error"), std::string::npos) << r.out;

  EXPECT_EQ(run("frobnicate").status, 2);
  EXPECT_EQ(run("decode --wat x").status, 2);
}

TEST(OrvoCliTest, DictCheckReportsCountsOrTheFailingLine) {
  ToolRun r = run("dict check");
  ASSERT_EQ(r.status, 0) << r.out;
  EXPECT_NE(r.out.find("fields"), std::string::npos);

  const std::string broken = temp("broken.def");
  spit(broken, "BAD_LINE \"NO END\n");
  r = run("dict check --dict " + broken);
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.out.find(broken), std::string::npos) << r.out;
}

TEST(OrvoCliTest, HelpListsEveryCommand) {
  const ToolRun r = run("--help");
  EXPECT_EQ(r.status, 0);
  for (const char* command : {"decode", "encode", "dict check"}) {
    EXPECT_NE(r.out.find(command), std::string::npos) << command;
  }
}

}  // namespace
