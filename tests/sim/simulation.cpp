#include "simulation.h"

#include <dirent.h>
#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace sim_test {
namespace {

constexpr uid_t kNobody = 65534;

[[noreturn]] void start(const Words& arguments, const Simulation::Setting& setting) {
  Words words = {setting.program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  if (setting.as_nobody && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(200);
  if (!setting.folder.empty() && chdir(setting.folder.c_str()) != 0) _exit(201);
  execv(pointers[0], pointers.data());
  _exit(202);
}

int shell_status(int status) {
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// Appends what is there; false at the end of the stream.
bool take(int fd, std::string* text) {
  char part[4096];
  const ssize_t got = read(fd, part, sizeof part);
  if (got > 0) text->append(part, static_cast<size_t>(got));
  return got > 0 || (got < 0 && errno == EINTR);
}

}  // namespace

TestFolder::TestFolder() {
  char name[] = "/tmp/sim_test.XXXXXX";
  int ends[2];
  if (mkdtemp(name) == nullptr || pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no folder for a test");
  path_ = name;
  chmod(name, 0777);
  end_ = ends[1];
  janitor_ = fork();
  if (janitor_ == 0) {
    // Out of the terminal's reach; waits for the test's end, then tidies up.
    setsid();
    close(ends[1]);
    char nothing;
    while (read(ends[0], &nothing, 1) < 0 && errno == EINTR) continue;
    execlp("rm", "rm", "-rf", name, nullptr);
    _exit(1);
  }
  close(ends[0]);
}

TestFolder::~TestFolder() {
  close(end_);
  if (janitor_ > 0) waitpid(janitor_, nullptr, 0);
}

Simulation::Simulation(const Words& arguments, const Setting& setting) {
  int out[2];
  int err[2];
  if (pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  pid_ = fork();
  if (pid_ == 0) {
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    dup2(err[1], STDERR_FILENO);
    start(arguments, setting);
  }
  close(out[1]);
  close(err[1]);
  out_ = out[0];
  err_ = err[0];
}

Simulation::~Simulation() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  if (out_ >= 0) close(out_);
  if (err_ >= 0) close(err_);
}

void Simulation::wait_for_output(const std::string& text) {
  while (result_.out.find(text) == std::string::npos) {
    if (!take(out_, &result_.out)) throw std::runtime_error("the simulation ended without: " + text);
  }
}

Result Simulation::finish() {
  bool out_open = true;
  bool err_open = true;
  while (out_open || err_open) {
    pollfd waits[2] = {{out_open ? out_ : -1, POLLIN, 0}, {err_open ? err_ : -1, POLLIN, 0}};
    if (poll(waits, 2, -1) < 0) continue;
    if (waits[0].revents != 0) out_open = take(out_, &result_.out);
    if (waits[1].revents != 0) err_open = take(err_, &result_.err);
  }
  int status = 0;
  waitpid(pid_, &status, 0);
  pid_ = -1;
  result_.status = shell_status(status);
  return result_;
}

Result run(const Words& arguments) {
  return Simulation(arguments).finish();
}

Result run_in(const std::string& folder, const Words& arguments) {
  return Simulation(arguments, {.folder = folder}).finish();
}

Result run_script(const std::string& script, const Words& options) {
  const TestFolder folder;
  Words arguments = options;
  arguments.insert(arguments.end(), {"--", "sh", "-c", script});
  return run_in(folder.path(), arguments);
}

Result shell(const std::string& command) {
  Result result;
  FILE* pipe = popen(command.c_str(), "r");
  char part[512];
  for (size_t got; (got = fread(part, 1, sizeof part, pipe)) > 0;) result.out.append(part, got);
  result.status = shell_status(pclose(pipe));
  return result;
}

bool is_machines_root() {
  // The number that the kernel gives the first user namespace.
  return geteuid() == 0 && std::filesystem::read_symlink("/proc/self/ns/user") == "user:[4026531837]";
}

std::string read_file(const std::string& path) {
  std::ifstream stream(path);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

void write_file(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}

Words lines_of(const std::string& text) {
  Words lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::vector<Words> journal_of(const std::string& path) {
  std::vector<Words> journal;
  for (const std::string& line : lines_of(read_file(path))) {
    Words fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');) fields.push_back(field);
    journal.push_back(fields);
  }
  return journal;
}

std::string dat_text(int ssid_count, const std::string& enabled, const std::string& more) {
  return "Default\nBssidNum=" + std::to_string(ssid_count) + "\nEnableSSID=" + enabled + "\n" + more;
}

}  // namespace sim_test
