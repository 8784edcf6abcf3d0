// orvo: the command-line tool for messages and field dictionaries.
//
//   orvo decode FILE     messages to an indented tree, or JSON with --json
//   orvo encode FILE     the JSON form back to message bytes
//   orvo dict check      loads the two dictionary files and reports counts
//
// Errors go to stderr with exit status 1 (2 for a bad command line).
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "orvo/common/Exception.h"
#include "orvo/common/ORVO_String.h"
#include "orvo/odm/ODMFieldDictionary.h"
#include "tools/BundledFile.h"
#include "tools/orvo/DataJson.h"
#include "tools/orvo/FieldNames.h"
#include "tools/orvo/MsgFile.h"
#include "tools/orvo/TreeText.h"

namespace orvo {
namespace tool {
namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;

const char kHelp[] =
    "usage: orvo COMMAND [OPTIONS]\n"
    "\n"
    "Commands:\n"
    "  decode FILE        print each message of FILE as an indented tree\n"
    "      --json           one JSON object per line instead (the form encode reads)\n"
    "      --hex            FILE holds hex text rather than bytes\n"
    "      --single         FILE is one bare message (default: frames when they fit)\n"
    "      --framed         FILE is a sequence of frames (4-byte big-endian length + message)\n"
    "  encode FILE.json   build messages from their JSON form (one object, an array,\n"
    "                     or one object per line) and write their bytes\n"
    "      -o OUT           write to OUT (default: standard output)\n"
    "      --hex            write hex text\n"
    "      --single | --framed   as for decode (default: bare for one message, frames for more)\n"
    "  dict check         load the dictionary files and report what they hold\n"
    "\n"
    "Dictionary options (decode, encode, dict):\n"
    "  --dict FIELDFILE   field dictionary file (default: the bundled data/orvo-fields.def)\n"
    "  --enums ENUMFILE   enum type file (default: the bundled data/orvo-enums.def)\n"
    "  --no-dict          use no dictionary: field values print as hex\n"
    "\n"
    "FILE may be - for standard input.\n";

struct Options {
  std::vector<std::string> args;
  bool json = false;
  bool hex = false;
  bool noDict = false;
  Framing framing = Framing::kAuto;
  std::string out = "-";
  std::string dict;
  std::string enums;
};

[[noreturn]] void usage(const std::string& what) {
  std::fprintf(stderr, "orvo: %s\n(see orvo --help)\n", what.c_str());
  std::exit(kUsage);
}

Options parseOptions(int argc, char** argv, int first) {
  Options o;
  for (int k = first; k < argc; ++k) {
    const std::string a = argv[k];
    auto next = [&]() -> std::string {
      if (k + 1 >= argc) usage(a + " needs a value");
      return argv[++k];
    };
    if (a == "--json")
      o.json = true;
    else if (a == "--hex")
      o.hex = true;
    else if (a == "--no-dict")
      o.noDict = true;
    else if (a == "--single")
      o.framing = Framing::kSingle;
    else if (a == "--framed")
      o.framing = Framing::kFramed;
    else if (a == "-o")
      o.out = next();
    else if (a == "--dict")
      o.dict = next();
    else if (a == "--enums")
      o.enums = next();
    else if (a.size() > 1 && a[0] == '-' && a != "-")
      usage("unknown option " + a);
    else
      o.args.push_back(a);
  }
  return o;
}

// A loaded dictionary pair, destroyed when the command ends.
class LoadedDictionary {
 public:
  ~LoadedDictionary() {
    if (_dictionary != nullptr) _dictionary->destroy();
  }

  // False with the loader's text in `error`.
  bool load(const Options& o, std::string* error) {
    _fieldPath = o.dict.empty() ? findBundledFile("data/orvo-fields.def") : o.dict;
    _enumPath = o.enums.empty() ? findBundledFile("data/orvo-enums.def") : o.enums;
    _dictionary = &odm::ODMFieldDictionary::create();
    try {
      _dictionary->readODMFieldDictionary(common::ORVO_String(_fieldPath.c_str()));
    } catch (const common::Exception& e) {
      *error = _fieldPath + ": " + e.what();
      return false;
    }
    try {
      _dictionary->readODMEnumTypeDef(common::ORVO_String(_enumPath.c_str()));
    } catch (const common::Exception& e) {
      *error = _enumPath + ": " + e.what();
      return false;
    }
    return true;
  }

  const odm::ODMFieldDictionary* get() const { return _dictionary; }
  const std::string& fieldPath() const { return _fieldPath; }
  const std::string& enumPath() const { return _enumPath; }

 private:
  odm::ODMFieldDictionary* _dictionary = nullptr;
  std::string _fieldPath;
  std::string _enumPath;
};

int fail(const std::string& what) {
  std::fprintf(stderr, "orvo: %s\n", what.c_str());
  return kFailed;
}

// The dictionary for decode and encode: none with --no-dict.
bool namesFor(const Options& o, LoadedDictionary& loaded, FieldNames* names, std::string* error) {
  if (o.noDict) return true;
  if (!loaded.load(o, error)) return false;
  *names = FieldNames(loaded.get());
  return true;
}

bool readInput(const Options& o, std::string* bytes, std::string* error) {
  if (o.args.size() != 1) usage("one input FILE is expected");
  if (!readWholeFile(o.args[0], bytes, error)) return false;
  if (!o.hex) return true;
  try {
    *bytes = fromHex(*bytes, o.args[0]);
    return true;
  } catch (const JsonFormError& e) {
    *error = e.what();
    return false;
  }
}

int runDecode(const Options& o) {
  std::string bytes, error;
  if (!readInput(o, &bytes, &error)) return fail(error);
  LoadedDictionary loaded;
  FieldNames names;
  if (!namesFor(o, loaded, &names, &error)) return fail(error);
  const std::vector<std::string> messages = splitMessages(bytes, o.framing);
  if (messages.empty()) return fail(o.args[0] + ": holds no message");
  int broken = 0;
  for (std::size_t k = 0; k < messages.size(); ++k) {
    const OwfBuffer view{static_cast<UInt32>(messages[k].size()),
                         const_cast<char*>(messages[k].data())};
    const Json message = decodeMessage(view, names);
    if (message.contains("error") && !message.contains("class")) ++broken;
    if (o.json) {
      std::printf("%s\n", message.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    } else {
      if (messages.size() > 1)
        std::printf("# message %zu (%zu bytes)\n", k + 1, messages[k].size());
      std::fputs(messageTree(message).c_str(), stdout);
    }
  }
  if (broken != 0) {
    return fail(std::to_string(broken) + " of " + std::to_string(messages.size()) +
                " messages did not decode");
  }
  return 0;
}

// One object, an array of objects, or one object per line.
std::vector<Json> readJsonMessages(const std::string& text, const std::string& path) {
  std::vector<Json> out;
  try {
    const Json whole = Json::parse(text);
    if (whole.is_array()) {
      for (const Json& m : whole) out.push_back(m);
    } else {
      out.push_back(whole);
    }
    return out;
  } catch (const Json::parse_error&) {
  }
  std::size_t lineNo = 0, at = 0;
  while (at < text.size()) {
    std::size_t end = text.find('\n', at);
    if (end == std::string::npos) end = text.size();
    const std::string line = text.substr(at, end - at);
    ++lineNo;
    at = end + 1;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    try {
      out.push_back(Json::parse(line));
    } catch (const Json::parse_error& e) {
      throw JsonFormError(path + ":" + std::to_string(lineNo) + ": " + e.what());
    }
  }
  return out;
}

int runEncode(const Options& o) {
  if (o.args.size() != 1) usage("one input FILE.json is expected");
  std::string text, error;
  if (!readWholeFile(o.args[0], &text, &error)) return fail(error);
  LoadedDictionary loaded;
  FieldNames names;
  if (!namesFor(o, loaded, &names, &error)) return fail(error);
  std::vector<std::string> messages;
  try {
    const std::vector<Json> forms = readJsonMessages(text, o.args[0]);
    if (forms.empty()) return fail(o.args[0] + ": holds no message");
    for (std::size_t k = 0; k < forms.size(); ++k) {
      messages.push_back(encodeMessage(forms[k], names, "message " + std::to_string(k + 1)));
    }
  } catch (const JsonFormError& e) {
    return fail(e.what());
  }
  std::string bytes = joinMessages(messages, o.framing);
  if (o.hex) bytes = toHex(bytes.data(), bytes.size()) + "\n";
  if (!writeWholeFile(o.out, bytes, &error)) return fail(error);
  return 0;
}

int runDictCheck(const Options& o) {
  LoadedDictionary loaded;
  std::string error;
  if (!loaded.load(o, &error)) return fail(error);
  const odm::ODMFieldDictionary& d = *loaded.get();
  std::printf("field file   %s\n", loaded.fieldPath().c_str());
  std::printf("enum file    %s\n", loaded.enumPath().c_str());
  std::printf("fields       %llu\n", static_cast<unsigned long long>(d.size()));
  std::printf("highest id   %lld\n", static_cast<long long>(d.getMaxFieldId()));
  std::printf("lowest id    %lld\n", static_cast<long long>(d.getMinNegFieldId()));
  std::printf("dictionary   %lld\n", static_cast<long long>(d.getDictId()));
  std::printf("version      %s\n", d.getVersion().c_str());
  std::printf("enum version %s\n", d.getEnumDTversion().c_str());
  return 0;
}

int runDict(int argc, char** argv) {
  if (argc < 3) usage("dict needs a subcommand: check");
  const std::string sub = argv[2];
  const Options o = parseOptions(argc, argv, 3);
  if (sub == "check") return runDictCheck(o);
  usage("unknown dict subcommand " + sub);
}

}  // namespace
}  // namespace tool
}  // namespace orvo

int main(int argc, char** argv) {
  using namespace orvo::tool;
  if (argc < 2) usage("a command is expected");
  const std::string command = argv[1];
  if (command == "--help" || command == "-h" || command == "help") {
    std::fputs(kHelp, stdout);
    return 0;
  }
  if (command == "decode") return runDecode(parseOptions(argc, argv, 2));
  if (command == "encode") return runEncode(parseOptions(argc, argv, 2));
  if (command == "dict") return runDict(argc, argv);
  usage("unknown command " + command);
}
