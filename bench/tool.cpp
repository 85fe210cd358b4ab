// Runs programs in turn, to their end, and prints the least time of each as Google Benchmark would, and the processor's
// time in that run.
//
//   wifimgr_bench_tool TIMES NAME=COMMAND...
//
// Where the commands find what they need, as inside a simulated gateway, whose own start does not count then.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Work {
  std::string name;
  std::vector<std::string> words;
  double least_ns = 0;
  double cpu_ns = 0;
};

struct Taken {
  double real_ns;
  double cpu_ns;
};

double ns_of(const timeval& time) {
  return 1e9 * static_cast<double>(time.tv_sec) + 1e3 * static_cast<double>(time.tv_usec);
}

Work work_of(const std::string& argument) {
  const size_t equals = argument.find('=');
  Work work = {argument.substr(0, equals), {}};
  std::istringstream words(argument.substr(equals + 1));
  for (std::string word; words >> word;) work.words.push_back(word);
  return work;
}

// From the start to the end; ends the program where the command fails.
Taken run(const Work& work, const posix_spawn_file_actions_t& silence) {
  std::vector<char*> words;
  for (const std::string& word : work.words) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  pid_t child = 0;
  int status = 0;
  rusage usage = {};
  const auto start = std::chrono::steady_clock::now();
  const bool ended = posix_spawn(&child, words[0], &silence, nullptr, words.data(), environ) == 0 &&
                     wait4(child, &status, 0, &usage) == child;
  const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
  if (ended && status == 0) return {taken.count(), ns_of(usage.ru_utime) + ns_of(usage.ru_stime)};
  std::fprintf(stderr, "bench: %s does not work\n", work.name.c_str());
  std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::vector<Work> works;
  for (int i = 2; i < argc; ++i) works.push_back(work_of(argv[i]));
  posix_spawn_file_actions_t silence;
  posix_spawn_file_actions_init(&silence);
  posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  for (int times = std::atoi(argv[1]); times > 0; --times) {
    for (Work& work : works) {
      const Taken taken = run(work, silence);
      if (work.least_ns != 0 && work.least_ns <= taken.real_ns) continue;
      work.least_ns = taken.real_ns;
      work.cpu_ns = taken.cpu_ns;
    }
  }
  std::printf("{\"benchmarks\": [");
  for (size_t i = 0; i < works.size(); ++i) {
    std::printf(
        "%s\n  {\"run_type\": \"iteration\", \"run_name\": \"%s\", \"real_time\": %.0f, \"cpu_time\": %.0f, "
        "\"time_unit\": \"ns\"}",
        i == 0 ? "" : ",", works[i].name.c_str(), works[i].least_ns, works[i].cpu_ns);
  }
  std::printf("\n]}\n");
  return 0;
}
