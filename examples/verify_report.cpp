// The failure report as an application meets it. The library's integrity
// checks are internal; the public way into the same report is the crash log,
// so this program installs it and then aborts.
//
//   verify_report [log path]
//
// The optional log path may hold the markers {a} {h} {p} {t} and $VARIABLES;
// it is prepared and then used as ORVO_LOG_FILENAME. Without it the setting
// from the environment holds, or a name is generated in TEMP, TMP, TMPDIR or
// the current directory. With ORVO_MESSAGEBOX_ENABLED=false, or without a
// terminal, the process ends with status 253 after the report; with
// ORVO_NO_VERIFY=true the abort goes on as usual.
#include <cstdio>
#include <cstdlib>

#include "orvo/common/ExceptionFilter.h"
#include "orvo/common/LogPath.h"

int main(int argc, char** argv) {
  if (argc > 1) {
    char path[4096];
    if (!orvo::common::prepareLogPath(argv[1], path, sizeof(path), true)) {
      std::fprintf(stderr, "verify_report: unusable log path: %s\n", argv[1]);
      return 2;
    }
    setenv("ORVO_LOG_FILENAME", path, 1);
    std::printf("log: %s\n", path);
    std::fflush(stdout);
  }
  if (!orvo::common::installExceptionFilter("verify_report example")) {
    std::fprintf(stderr, "verify_report: the crash log could not be installed\n");
    return 1;
  }
  std::abort();
}
