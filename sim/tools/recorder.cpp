// ifconfig and brctl.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/network/network_state.h"
#include "sim/radio/following.h"
#include "sim/records/journal.h"
#include "sim/tools/interface_text.h"
#include "sim/tools/tool.h"

namespace gateway::tools {
namespace {

// Runs the real tool with the caller's standard streams, but for its output where `output` is given; returns its wait
// status.
int run_real(const Words& words, std::string* output) {
  const std::string program = std::string(place::kRealTools) + "/" + name_of(words[0]);
  int ends[2] = {-1, -1};
  if (output != nullptr && pipe2(ends, O_CLOEXEC) != 0) fail("make a pipe");
  const UniqueFd reader(ends[0]);
  UniqueFd writer(ends[1]);
  const pid_t child = fork();
  if (child < 0) fail("start " + program);
  if (child == 0) {
    if (writer && dup2(writer.get(), STDOUT_FILENO) < 0) _exit(127);
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    _exit(127);
  }
  writer.reset();
  if (reader) *output = read_text(reader.get(), program);
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) fail("wait for " + program);
  }
  return status;
}

}  // namespace

int record_real_tool(const Words& words) {
  int status = 0;
  // The machine's ifconfig writes addresses another way than the gateway's, which its software reads.
  const bool is_translated = name_of(words[0]) == "ifconfig";
  std::string output;
  {
    const StateLock lock;
    const NetworkState before = read_network_state();
    status = run_real(words, is_translated ? &output : nullptr);
    const NetworkState after = read_network_state();
    Words changes = changes_between(before, after);
    const Words more = follow_interfaces(before, after);
    changes.insert(changes.end(), more.begin(), more.end());
    record_call(words, changes);
  }
  const std::string text = as_gateway_prints(output);
  // Like the real one, it does not care where its output goes.
  for (size_t done = 0; done < text.size();) {
    const ssize_t put = write(STDOUT_FILENO, text.data() + done, text.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) break;
    done += static_cast<size_t>(put);
  }
  if (!WIFSIGNALED(status)) return WEXITSTATUS(status);
  std::signal(WTERMSIG(status), SIG_DFL);
  raise(WTERMSIG(status));
  return 128 + WTERMSIG(status);
}

}  // namespace gateway::tools
