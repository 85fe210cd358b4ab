// wscd: the WPS daemon. It does nothing but be there, under its name, until it is killed.
#include <fcntl.h>
#include <unistd.h>

#include "sim/base/file.h"
#include "sim/records/journal.h"
#include "sim/tools/tool.h"

namespace gateway::tools {

int wscd(const Words& words) {
  const pid_t daemon = fork();
  if (daemon < 0) fail("start the daemon");
  if (daemon > 0) {
    record_call(words, {"wscd (process " + std::to_string(daemon) + "): started"});
    return 0;
  }
  setsid();
  if (chdir("/") != 0) _exit(1);
  // Callers that wait for the end of their output must not wait for the daemon.
  const int null = open("/dev/null", O_RDWR);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(null, stream);
  if (null > STDERR_FILENO) close(null);
  for (;;) pause();
}

}  // namespace gateway::tools
