#include "diagnostics/Terminal.h"

#include <fcntl.h>
#include <strings.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace orvo {
namespace diagnostics {
namespace {

struct Button {
  BoxChoice choice;
  const char* word;
};

constexpr Button kOkButtons[] = {{BoxChoice::Ok, "OK"}};
constexpr Button kRetryCancelButtons[] = {{BoxChoice::Retry, "Retry"},
                                          {BoxChoice::Cancel, "Cancel"}};
constexpr Button kAbortRetryIgnoreButtons[] = {
    {BoxChoice::Abort, "Abort"}, {BoxChoice::Retry, "Retry"}, {BoxChoice::Ignore, "Ignore"}};

struct ButtonRow {
  const Button* buttons;
  int count;
  const char* prompt;
  BoxChoice closed;  // what closing the box without a choice means
};

ButtonRow rowOf(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::Ok:
      return {kOkButtons, 1, "[OK] ", BoxChoice::Ok};
    case BoxButtons::RetryCancel:
      return {kRetryCancelButtons, 2, "[Retry] [Cancel] ", BoxChoice::Cancel};
    case BoxButtons::AbortRetryIgnore:
      break;
  }
  return {kAbortRetryIgnoreButtons, 3, "[Abort] [Retry] [Ignore] ", BoxChoice::Abort};
}

void writeText(int fd, const char* text) {
  std::size_t length = std::strlen(text);
  while (length > 0) {
    const ssize_t written = write(fd, text, length);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text += written;
    length -= static_cast<std::size_t>(written);
  }
}

// Reads one line into `line`, dropping what does not fit; false at end of
// input or on an error.
bool readLine(int fd, char* line, std::size_t size) {
  std::size_t length = 0;
  for (;;) {
    char c;
    const ssize_t got = read(fd, &c, 1);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    if (c == '\n') break;
    if (length + 1 < size) line[length++] = c;
  }
  line[length] = '\0';
  return true;
}

// Blanks around the answer and a carriage return are ignored.
const char* trimmed(char* answer) {
  while (std::isspace(static_cast<unsigned char>(*answer))) ++answer;
  char* end = answer + std::strlen(answer);
  while (end > answer && std::isspace(static_cast<unsigned char>(end[-1]))) *--end = '\0';
  return answer;
}

bool matchButton(const ButtonRow& row, const char* answer, BoxChoice* choice) {
  // An OK box has one way out; any answer, even an empty line, presses it.
  if (row.count == 1) {
    *choice = row.buttons[0].choice;
    return true;
  }
  for (int i = 0; i < row.count; ++i) {
    const char* word = row.buttons[i].word;
    const bool initial = answer[0] != '\0' && answer[1] == '\0' &&
                         std::tolower(static_cast<unsigned char>(answer[0])) ==
                             std::tolower(static_cast<unsigned char>(word[0]));
    if (initial || strcasecmp(answer, word) == 0) {
      *choice = row.buttons[i].choice;
      return true;
    }
  }
  return false;
}

}  // namespace

int openTerminal() { return open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC); }

BoxChoice askOnTerminal(int fd, const char* title, const char* text, BoxButtons buttons) {
  const ButtonRow row = rowOf(buttons);
  writeText(fd, "\n");
  writeText(fd, title);
  writeText(fd, "\n\n");
  writeText(fd, text);
  writeText(fd, "\n\n");
  for (;;) {
    writeText(fd, row.prompt);
    char line[64];
    if (!readLine(fd, line, sizeof(line))) return row.closed;
    BoxChoice choice;
    if (matchButton(row, trimmed(line), &choice)) return choice;
  }
}

bool debuggerAttached() {
  const int fd = open("/proc/self/status", O_RDONLY | O_CLOEXEC);
  if (fd < 0) return false;
  char status[4096];
  const ssize_t length = read(fd, status, sizeof(status) - 1);
  close(fd);
  if (length <= 0) return false;
  status[length] = '\0';
  const char* tracer = std::strstr(status, "\nTracerPid:");
  return tracer != nullptr && std::strtol(tracer + std::strlen("\nTracerPid:"), nullptr, 10) != 0;
}

}  // namespace diagnostics
}  // namespace orvo
