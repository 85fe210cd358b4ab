// Every exported function with null, boundary and garbage arguments, each in a child of its own: it may refuse, but
// neither crash nor hang, and the store stays whole and its lock free.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/sem.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <utility>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "sweep/arguments.h"

// A request for more memory than there is must be refused by the library, not by the sanitizer.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:detect_leaks=0";
}

namespace {

using sweep::Call;

constexpr unsigned kMostCalls = 400;
constexpr unsigned kSeconds = 600;  // for a call that waits for ever, on the busiest machine

// What the child tells about its progress.
struct Progress {
  unsigned calls;
  Call last;
  char complaint[128];
};
Progress* g_progress;

// The contents of all replies, and of nothing: a driver that answers anything.
std::mt19937 g_random;

int answer_garbage(const requests::Request& request, void* record) {
  if (!request.has_data || g_random() % 4 == 0) return g_random() % 2 == 0 ? 0 : -1;
  char* const reply = static_cast<char*>(requests::data_of(record));
  std::memset(reply, static_cast<int>(g_random() % 256), request.length);
  for (size_t i = 0; i < request.length && i < 64; ++i)
    reply[g_random() % request.length] = static_cast<char>(g_random());
  return 0;
}

template <typename Result, typename... Parameters, size_t... kAt>
void call_with(Result (*function)(Parameters...), const Call& call, std::index_sequence<kAt...>) {
  const std::tuple<Parameters...> values(sweep::value_of<Parameters>(call, kAt)...);
  (void)std::apply(function, values);
}

template <typename... Parameters, size_t... kAt>
std::array<unsigned, sweep::kMostParameters> counts_of(const Call& call, std::index_sequence<kAt...>) {
  return {sweep::values_of<Parameters>(call, kAt)...};
}

// All combinations where they are few, else as many of them at random.
template <typename Run>
void combine(const std::array<unsigned, sweep::kMostParameters>& counts, Call& call, const Run& run) {
  unsigned long long all = 1;
  for (const unsigned count : counts) all *= count == 0 ? 1 : count;
  const bool is_complete = all <= kMostCalls;
  for (unsigned long long i = 0; i < (is_complete ? all : kMostCalls); ++i) {
    unsigned long long rest = i;
    for (size_t parameter = 0; parameter < counts.size() && counts[parameter] != 0; ++parameter) {
      call.choices[parameter] =
          static_cast<unsigned>(is_complete ? rest % counts[parameter] : g_random() % counts[parameter]);
      rest /= counts[parameter];
    }
    run();
  }
}

void note(const Call& call) {
  ++g_progress->calls;
  seams::trace_level = g_progress->calls % 4 == 0 ? 8 : 0;
  g_progress->last = call;
}

template <typename Result, typename... Parameters>
void try_all(Result (*function)(Parameters...), Call call) {
  static_assert(sizeof...(Parameters) <= sweep::kMostParameters);
  constexpr auto kAll = std::index_sequence_for<Parameters...>();
  combine(counts_of<Parameters...>(call, kAll), call, [&] {
    note(call);
    call_with(function, call, kAll);
  });
}

// A format is the caller's own text: only what is one is handed over.
template <typename Result>
void try_all(Result (*function)(const char*, ...), Call call) {
  for (const char* const format : {static_cast<const char*>(nullptr), "", "text", "%%"}) {
    note(call);
    (void)function(format);
  }
}

// Takes anything.
template <typename Result>
void try_all(Result (*function)(...), Call call) {
  note(call);
  (void)function();
  (void)function(nullptr, -1, "text", 1ULL << 63);
}

struct Function {
  const char* name;
  void (*try_all)(const char* name);
};

template <typename... Names>
Call call_named(Names... names) {
  return {{names...}, {}};
}

#define FUNCTION(name, ...) {#name, [](const char*) { try_all(&name, call_named(__VA_ARGS__)); }},
const Function kFunctions[] = {
#include "sweep_functions.def"
};
#undef FUNCTION

void complain(const char* what) {
  (void)std::snprintf(g_progress->complaint, sizeof g_progress->complaint, "%s", what);
}

const char* shm_addr_of(int band) {
  return band == 0 ? shm_addr_2_4g : shm_addr_5g;
}

void check_store(int band) {
  const std::string bytes = sandbox::segment_bytes(band);
  if (bytes.size() < sizeof(wifimgr_attr_record)) return complain("a segment is gone");
  for (size_t at = 0; at + sizeof(wifimgr_attr_record) <= bytes.size(); at += sizeof(wifimgr_attr_record)) {
    wifimgr_attr_record record;
    std::memcpy(&record, bytes.data() + at, sizeof record);
    if (record.key[WIFIMGR_KEY_SIZE - 1] != '\0') complain("a key has no end");
    for (const auto& field : record.field) {
      if (field[WIFIMGR_FIELD_SIZE - 1] != '\0') complain("a field has no end");
    }
  }
  const int semaphore = semget(band == 0 ? 0x12348 : 0x12349, 1, 0);
  if (semaphore >= 0 && semctl(semaphore, 0, GETVAL, 0) < 1) complain("the lock is held");
}

[[noreturn]] void run_child(const Function& function, bool is_loaded) {
  alarm(kSeconds);
  g_random.seed(static_cast<unsigned>(std::strlen(function.name)));
  if (is_loaded) {
    for (const int band : {0, 1}) {
      sandbox::load(band, sandbox::full_dat(band));
      if (shm_addr_of(band) == nullptr) complain("the store cannot be loaded any more");
    }
  }
  {
    sandbox::StdoutCapture capture;
    function.try_all(function.name);
    (void)capture.take();
  }
  if (is_loaded) {
    for (const int band : {0, 1}) check_store(band);
  }
  std::_Exit(g_progress->complaint[0] == '\0' ? 0 : 1);
}

// Files whose names are arguments come to be here, and those with paths of their own in folders that are private too.
void prepare_folders() {
  ASSERT_EQ(0, mount("tmpfs", "/etc", "tmpfs", 0, "mode=0755"));
  ASSERT_EQ(0, mount("tmpfs", "/var", "tmpfs", 0, "mode=0755"));
  for (const char* const folder :
       {"/etc/Wireless", "/etc/Wireless/RT2860AP", "/etc/Wireless/RT2860AP_AC", "/var/run", "/tmp/sweep"}) {
    ASSERT_EQ(0, mkdir(folder, 0755));
  }
  ASSERT_EQ(0, chdir("/tmp/sweep"));
}

std::string choices_of(const Call& call) {
  std::string text;
  for (size_t i = 0; i < sweep::kMostParameters && call.names[i] != nullptr; ++i) {
    text += std::string(" ") + call.names[i] + "=#" + std::to_string(call.choices[i]);
  }
  return text;
}

void sweep_all(bool is_loaded) {
  prepare_folders();
  void* const shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  ASSERT_NE(MAP_FAILED, shared);
  g_progress = static_cast<Progress*>(shared);
  seams::on_command = [](const std::string&) {
    seams::commands.clear();
    return 0;
  };
  seams::on_trace = [](const std::string&) { seams::trace.clear(); };
  requests::driver = answer_garbage;
  requests::kernel = [](int, unsigned long, void*) {
    requests::queries.clear();
    return g_random() % 2 == 0 ? 0 : -1;
  };

  unsigned long long calls = 0;
  for (const Function& function : kFunctions) {
    *g_progress = Progress();
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) run_child(function, is_loaded);
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    EXPECT_EQ(0, status) << function.name << ": " << g_progress->complaint << " call " << g_progress->calls << ":"
                         << choices_of(g_progress->last)
                         << (WIFSIGNALED(status) ? std::string(", ") + strsignal(WTERMSIG(status)) : "");
    EXPECT_LT(0U, g_progress->calls) << function.name;
    calls += g_progress->calls;
  }
  std::printf("%zu functions, %llu calls\n", std::size(kFunctions), calls);
  EXPECT_LT(400U, std::size(kFunctions));
}

TEST(Sweep, EveryFunctionStandsAnyArgumentsBeforeAStoreIsThere) {
  sweep_all(false);
}

TEST(Sweep, EveryFunctionStandsAnyArgumentsOnALoadedStore) {
  sweep_all(true);
}

}  // namespace
