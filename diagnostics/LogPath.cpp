#include "orvo/common/LogPath.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "diagnostics/FailureReport.h"

namespace orvo {
namespace common {
namespace {

constexpr std::size_t kExpandedSize = 260;
constexpr std::size_t kMarkerReserve = 25;
constexpr std::size_t kFullPathSize = 500;
constexpr std::size_t kShortPathLimit = 260;
constexpr std::size_t kDirectorySize = 500;
constexpr std::size_t kMarkerValueSize = 501;  // an application name of up to 500 characters
constexpr std::size_t kHostNameSize = 256;
constexpr char kTestFileName[] = "_#test#_.txt";
constexpr char kReservedNameCharacters[] = "\"*:<>?|";

bool isDirectory(const char* path) {
  struct stat status;
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

bool clearPath(char* out) {
  out[0] = '\0';
  return false;
}

// Fills a fixed buffer and remembers whether everything fitted.
class BoundedText {
 public:
  BoundedText(char* out, std::size_t size) : _out(out), _size(size) {}

  void add(const char* text, std::size_t length) {
    if (!_fits || length >= _size - _length) {
      _fits = false;
      return;
    }
    std::memcpy(_out + _length, text, length);
    _length += length;
  }
  void add(const char* text) { add(text, std::strlen(text)); }
  void add(char c) { add(&c, 1); }

  // Terminates the text; false (and an empty text) when it did not fit.
  bool finish() {
    _out[_fits ? _length : 0] = '\0';
    return _fits;
  }

 private:
  char* _out;
  std::size_t _size;
  std::size_t _length = 0;
  bool _fits = true;
};

bool isNameStart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }
bool isNameCharacter(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// $NAME and ${NAME} take the value of a set variable. Anything else, unset
// variables included, stays as written.
bool expandEnvironment(const char* path, char* out, std::size_t size) {
  BoundedText text(out, size);
  for (const char* p = path; *p != '\0';) {
    const bool braced = p[0] == '$' && p[1] == '{';
    const char* nameStart = p + (braced ? 2 : 1);
    if (p[0] != '$' || !isNameStart(*nameStart)) {
      text.add(*p++);
      continue;
    }
    const char* nameEnd = nameStart;
    while (isNameCharacter(*nameEnd)) ++nameEnd;
    char name[kExpandedSize];
    const std::size_t nameLength = static_cast<std::size_t>(nameEnd - nameStart);
    if ((braced && *nameEnd != '}') || nameLength >= sizeof(name)) {
      text.add(*p++);
      continue;
    }
    std::memcpy(name, nameStart, nameLength);
    name[nameLength] = '\0';
    const char* after = nameEnd + (braced ? 1 : 0);
    const char* value = std::getenv(name);
    if (value != nullptr) {
      text.add(value);
    } else {
      text.add(p, static_cast<std::size_t>(after - p));
    }
    p = after;
  }
  return text.finish();
}

bool markerValue(char letter, char* value, std::size_t size) {
  switch (std::tolower(static_cast<unsigned char>(letter))) {
    case 'a':
      diagnostics::findApplicationName(value, size);
      return true;
    case 'h': {
      char host[kHostNameSize];
      if (gethostname(host, sizeof(host)) != 0) host[0] = '\0';
      host[sizeof(host) - 1] = '\0';
      diagnostics::copyCut(value, size, host, size - 1);
      return true;
    }
    case 'p':
      std::snprintf(value, size, "%d", static_cast<int>(getpid()));
      return true;
    case 't':
      std::snprintf(value, size, "%d", static_cast<int>(std::time(nullptr)));
      return true;
    default:
      return false;
  }
}

// Inserted values are not scanned again.
bool replaceMarkers(const char* text, char* out, std::size_t size) {
  BoundedText result(out, size);
  for (const char* p = text; *p != '\0';) {
    char value[kMarkerValueSize];
    if (p[0] == '{' && std::isalpha(static_cast<unsigned char>(p[1])) && p[2] == '}' &&
        markerValue(p[1], value, sizeof(value))) {
      result.add(value);
      p += 3;
    } else {
      result.add(*p++);
    }
  }
  return result.finish();
}

// Resolves "." and ".." by the text alone; the path need not exist.
bool makeFullPath(const char* path, char* out, std::size_t size) {
  char joined[kFullPathSize * 2];
  BoundedText whole(joined, sizeof(joined));
  if (path[0] != '/') {
    char current[kFullPathSize];
    if (getcwd(current, sizeof(current)) == nullptr) return false;
    whole.add(current);
    whole.add('/');
  }
  whole.add(path);
  if (!whole.finish()) return false;

  std::size_t length = 0;
  for (const char* p = joined; *p != '\0';) {
    while (*p == '/') ++p;
    const char* end = p;
    while (*end != '\0' && *end != '/') ++end;
    const std::size_t segment = static_cast<std::size_t>(end - p);
    if (segment == 2 && p[0] == '.' && p[1] == '.') {
      while (length > 0 && out[length - 1] != '/') --length;
      if (length > 0) --length;
    } else if (segment > 0 && !(segment == 1 && p[0] == '.')) {
      if (length + 1 + segment >= size) return false;
      out[length++] = '/';
      std::memcpy(out + length, p, segment);
      length += segment;
    }
    p = end;
  }
  const bool keepsSlash = joined[std::strlen(joined) - 1] == '/';
  if ((length == 0 || keepsSlash) && length + 1 < size) out[length++] = '/';
  out[length] = '\0';
  return true;
}

void useFullPath(char* path, std::size_t size) {
  char full[kFullPathSize];
  if (!makeFullPath(path, full, sizeof(full))) return;
  const std::size_t length = std::strlen(full);
  if (length < kShortPathLimit && length < size) std::memcpy(path, full, length + 1);
}

bool isUsableFilePath(const char* path) {
  const char* slash = std::strrchr(path, '/');
  const char* name = slash != nullptr ? slash + 1 : path;
  const char* dot = std::strrchr(name, '.');
  const std::size_t stemLength =
      dot != nullptr ? static_cast<std::size_t>(dot - name) : std::strlen(name);
  if (stemLength == 0 || std::strpbrk(name, kReservedNameCharacters) != nullptr) return false;
  if (slash == nullptr) return true;
  char directory[kDirectorySize];
  const std::size_t length = static_cast<std::size_t>(slash - path) + 1;
  if (length >= sizeof(directory)) return false;
  std::memcpy(directory, path, length);
  directory[length] = '\0';
  return checkLogDirectory(directory) && !isDirectory(path);
}

// '/' is the only separator here; a backslash belongs to a name.
void foldSeparators(const char* in, char* out) {
  std::size_t length = 0;
  for (; *in != '\0'; ++in) {
    if (*in == '/' && length > 0 && out[length - 1] == '/') continue;
    out[length++] = *in;
  }
  out[length] = '\0';
}

bool isListableDirectory(const char* directory) {
  DIR* listing = opendir(directory);
  if (listing == nullptr) return false;
  closedir(listing);
  return true;
}

// The test file is new and gone again at once.
bool canCreateTestFile(const char* directory) {
  char file[kDirectorySize + sizeof(kTestFileName) + 1];
  const std::size_t length = std::strlen(directory);
  const bool hasSlash = length > 0 && directory[length - 1] == '/';
  std::snprintf(file, sizeof(file), "%s%s%s", directory, hasSlash ? "" : "/", kTestFileName);
  const int fd = open(file, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (fd < 0) return false;
  unlink(file);
  close(fd);
  return true;
}

// Missing directories are made one by one, with the mode the process's umask
// leaves. Only the last one decides.
bool createDirectories(const char* directory) {
  char path[kDirectorySize];
  std::strcpy(path, directory);
  std::size_t length = std::strlen(path);
  while (length > 1 && path[length - 1] == '/') path[--length] = '\0';
  for (std::size_t i = 1; i < length; ++i) {
    if (path[i] != '/') continue;
    path[i] = '\0';
    mkdir(path, 0777);
    path[i] = '/';
  }
  if (mkdir(path, 0777) == 0) return true;
  return errno == EEXIST && canCreateTestFile(path);
}

}  // namespace

bool prepareLogPath(const char* path, char* out, UInt32 outSize, bool expand) {
  if (out == nullptr || outSize == 0) return false;
  out[0] = '\0';
  if (path == nullptr || isDirectory(path)) return false;
  char expanded[kExpandedSize];
  if (!expandEnvironment(path, expanded, sizeof(expanded)) || expanded[0] == '\0') return false;
  if (outSize < std::strlen(expanded) + kMarkerReserve || !replaceMarkers(expanded, out, outSize)) {
    return clearPath(out);
  }
  if (expand) useFullPath(out, outSize);
  return isUsableFilePath(out) || clearPath(out);
}

bool checkLogDirectory(const char* directory) {
  if (directory == nullptr) return false;
  const std::size_t length = strnlen(directory, kDirectorySize);
  if (length == 0 || length >= kDirectorySize) return false;
  char folded[kDirectorySize];
  foldSeparators(directory, folded);
  if (isListableDirectory(folded)) return canCreateTestFile(folded);
  return createDirectories(folded);
}

}  // namespace common
}  // namespace orvo
