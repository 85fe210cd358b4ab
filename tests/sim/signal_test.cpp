// How a simulation ends, and that nothing is left of it.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "simulation.h"

namespace sim_test {
namespace {

using testing::HasSubstr;

// Starts a process that no signal but SIGKILL ends, away from the command, and says that it is there.
constexpr char kStubborn[] =
    "trap '' TERM INT HUP; setsid sh -c \"trap '' TERM INT HUP; echo ready; exec sleep 1000\" & wait; wait";

// The mounts that name the simulation's own places. Those of other users of the machine come and go.
Words own_mounts(const std::string& mountinfo) {
  Words found;
  for (const std::string& line : lines_of(mountinfo)) {
    for (const char* place : {" /run/gateway-sim", " - tmpfs gateway ", " - overlay gateway "}) {
      if (line.find(place) == std::string::npos) continue;
      found.push_back(line);
      break;
    }
  }
  return found;
}

void expect_nothing_left() {
  for (const char* name : {"ra0", "rai0", "wds0", "wdsi0", "br-lan"}) EXPECT_EQ(if_nametoindex(name), 0U) << name;
  EXPECT_THAT(own_mounts(read_file("/proc/self/mountinfo")), testing::IsEmpty());
}

class Signals : public testing::TestWithParam<int> {};

// The output pipes close when the last process of the simulation has ended: finish() returning is the proof.
TEST_P(Signals, EndTheWholeSimulation) {
  Simulation simulation({"--", "sh", "-c", "setsid sh -c 'echo ready; exec sleep 1000' & wait"});
  simulation.wait_for_output("ready");
  kill(simulation.pid(), GetParam());
  EXPECT_EQ(simulation.finish().status, 128 + GetParam());
  expect_nothing_left();
}

INSTANTIATE_TEST_SUITE_P(Ending, Signals, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGKILL));

TEST(Ending, CommandMayEndByItselfWhenAsked) {
  Simulation simulation({"--", "sh", "-c", "trap 'echo asked; exit 5' TERM; sleep 1000 & echo ready; wait"});
  simulation.wait_for_output("ready");
  kill(simulation.pid(), SIGTERM);
  const Result result = simulation.finish();
  EXPECT_EQ(result.status, 5);
  EXPECT_THAT(result.out, HasSubstr("asked"));
}

TEST(Ending, StubbornCommandIsKilledAfterAMoment) {
  Simulation simulation({"--", "sh", "-c", kStubborn});
  simulation.wait_for_output("ready");
  kill(simulation.pid(), SIGTERM);
  EXPECT_EQ(simulation.finish().status, 128 + SIGTERM);
}

TEST(Ending, SecondSignalEndsItAtOnce) {
  Simulation simulation({"--", "sh", "-c", kStubborn});
  simulation.wait_for_output("ready");
  kill(simulation.pid(), SIGTERM);
  kill(simulation.pid(), SIGINT);
  const int status = simulation.finish().status;
  // Both may arrive before the first is looked at; then the lower number comes first.
  EXPECT_TRUE(status == 128 + SIGKILL || status == 128 + SIGINT || status == 128 + SIGTERM) << status;
}

TEST(Ending, BackgroundProcessesEndWithTheCommand) {
  const Result result = run({"--", "sh", "-c", "setsid sleep 1000 & exit 3"});
  EXPECT_EQ(result.status, 3);
  expect_nothing_left();
}

TEST(Ending, OrphansAreReaped) {
  const Result result = run({"--", "sh", "-c",
                             "sh -c 'sleep 0 & echo $!' > /tmp/orphan; pid=$(cat /tmp/orphan);"
                             "while [ -e /proc/$pid/stat ]; do :; done; echo gone"});
  EXPECT_EQ(result.out, "gone\n");
}

TEST(Ending, MountsOfASimulationCanBeTold) {
  EXPECT_THAT(own_mounts(run({"--", "cat", "/proc/self/mountinfo"}).out), testing::Not(testing::IsEmpty()));
}

TEST(Ending, SharedMemoryAndSemaphoresArePrivate) {
  for (const std::string kind : {"shm", "sem"}) {
    const std::string file = "/proc/sysvipc/" + kind;
    // A key that nobody else has, as ipcmk makes it up.
    const std::string key =
        run({"--", "sh", "-c",
             "ipcmk " + std::string(kind == "shm" ? "-M 4096" : "-S 1") + " >&2; awk 'NR == 2 { print $1 }' " + file})
            .out;
    ASSERT_NE(key, "");
    for (const std::string& line : lines_of(read_file(file))) {
      std::string other;
      std::istringstream(line) >> other;
      EXPECT_NE(other + "\n", key) << file;
    }
  }
}

// Who starts a simulation by `how`, and is killed. Returns what the simulation has to say then, up to its end.
std::string said_without_starter(const std::string& how, const std::string& script) {
  const TestFolder folder;
  int out[2];
  EXPECT_EQ(0, pipe2(out, O_CLOEXEC));
  const pid_t starter = fork();
  if (starter == 0) {
    dup2(out[1], STDOUT_FILENO);
    const std::string line = how + " '" + gateway_sim_program() + "' -- sh -c '" + script + "' 2>/dev/null & wait";
    if (chdir(folder.path().c_str()) == 0) execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
    _exit(202);
  }
  close(out[1]);
  std::string said;
  char c;
  while (said.find("ready\n") == std::string::npos && read(out[0], &c, 1) == 1) said += c;
  kill(starter, SIGKILL);
  waitpid(starter, nullptr, 0);
  write_file(folder / "killed", "");
  while (read(out[0], &c, 1) == 1) said += c;
  close(out[0]);
  return said;
}

constexpr char kSaysMore[] = "echo ready; until [ -e killed ]; do sleep 0.05; done; echo more";

// The end of what it says is the proof.
TEST(Starter, TakesItsSimulationWithIt) {
  EXPECT_EQ("ready\n", said_without_starter("", "echo ready; exec sleep 1000"));
}

TEST(Starter, IsNotNeededWhereItWasSaidSo) {
  EXPECT_EQ("ready\nmore\n", said_without_starter("setsid", kSaysMore));
  EXPECT_EQ("ready\nmore\n", said_without_starter("nohup", kSaysMore));
}

// A terminal with gateway-sim on it.
class Terminal {
 public:
  explicit Terminal(const Words& arguments) {
    pid_ = forkpty(&fd_, nullptr, nullptr, nullptr);
    if (pid_ != 0) return;
    Words words = arguments;
    words.insert(words.begin(), gateway_sim_program());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    execv(pointers[0], pointers.data());
    _exit(202);
  }
  ~Terminal() { close(fd_); }

  void type(const std::string& text) {
    EXPECT_EQ(write(fd_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }

  // Reads up to and including `text`.
  bool shows(const std::string& text) {
    char c;
    for (std::string seen; read(fd_, &c, 1) == 1;) {
      seen += c;
      if (seen.size() >= text.size() && seen.compare(seen.size() - text.size(), text.size(), text) == 0) return true;
    }
    return false;
  }

  int status() {
    int status = 0;
    waitpid(pid_, &status, 0);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  }

 private:
  int fd_ = -1;
  pid_t pid_ = -1;
};

TEST(Shell, SurvivesInterruptAtItsPrompt) {
  Terminal terminal({"--shell"});
  ASSERT_TRUE(terminal.shows("gateway# "));
  // A shell that is busy with its line looks at the interrupt when it gets the next key.
  terminal.type("half a command\x03\n");
  ASSERT_TRUE(terminal.shows("gateway# "));
  terminal.type("echo still-$((40 + 2))\n");
  ASSERT_TRUE(terminal.shows("still-42"));
  terminal.type("exit 7\n");
  EXPECT_EQ(terminal.status(), 7);
}

TEST(Shell, InterruptEndsTheForegroundCommandOnly) {
  Terminal terminal({"--shell"});
  ASSERT_TRUE(terminal.shows("gateway# "));
  terminal.type("sh -c 'echo run''ning; exec sleep 1000'\n");
  ASSERT_TRUE(terminal.shows("running\r\n"));
  terminal.type("\x03");
  ASSERT_TRUE(terminal.shows("gateway# "));
  terminal.type("exit 0\n");
  EXPECT_EQ(terminal.status(), 0);
}

TEST(Shell, InterruptReachesACommandOnTheTerminal) {
  Terminal terminal({"--", "sh", "-c", "echo ready; exec sleep 1000"});
  ASSERT_TRUE(terminal.shows("ready"));
  terminal.type("\x03");
  EXPECT_EQ(terminal.status(), 128 + SIGINT);
}

TEST(Shell, CommandDecidesAboutAnInterrupt) {
  Terminal terminal({"--", "sh", "-c", "trap 'exit 6' INT; echo ready; while :; do read line; done"});
  ASSERT_TRUE(terminal.shows("ready"));
  terminal.type("\x03");
  EXPECT_EQ(terminal.status(), 6);
}

}  // namespace
}  // namespace sim_test
