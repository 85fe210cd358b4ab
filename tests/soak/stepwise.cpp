#include "soak/stepwise.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "soak/operation.h"
#include "soak/tracer.h"
#include "soak/world.h"
#include "wifimgr_lib.h"

namespace soak {
namespace {

// What the child tells.
struct Told {
  int result;
  int leaked;
};

Told* told() {
  static Told* const shared =
      static_cast<Told*>(mmap(nullptr, sizeof(Told), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
  return shared;
}

// The store that a save finds differs from the file, so that old and new can be told apart.
constexpr char kNewPeriod[] = "300";

std::string with_new_period(std::string text) {
  const std::string old = "BeaconPeriod=100\n";
  const size_t at = text.find(old);
  return at == std::string::npos ? text : text.replace(at, old.size(), "BeaconPeriod=300\n");
}

bool begins_with(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

void prepare(const Operation& operation, int band) {
  restore_world();
  if (operation.saves) (void)update_attr(band, -1, "BeaconPeriod", kNewPeriod);
}

Outcome attempt(const Operation& operation, int band, const Fault& fault) {
  *told() = {-1, 0};
  int descriptors = 0;
  return run(
      [&] {
        const int output = open("/tmp/output", O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        (void)dup2(output, STDOUT_FILENO);
        descriptors = open_descriptors();
      },
      [&] { told()->result = operation.run(band); }, [&] { told()->leaked = open_descriptors() - descriptors; }, fault);
}

void check_stores(const Operation& operation, int band, const std::string& doing) {
  for (int other = 0; other < kBands; ++other) {
    if (!lock_is_free(other)) complain("the lock is free within a second", doing);
    if (!store_is_terminated(other)) complain("every text of the store ends", doing);
    const std::string keys = stored_keys(other);
    if (operation.loads && other == band) {
      if (!begins_with(all_keys(other), keys)) complain("a part-loaded store has the first keys", doing);
    } else if (keys != all_keys(other)) {
      complain("every key is there once", doing);
    }
    if (other != band && file_text(other) != saved_text(other)) complain("the other band's file stays", doing);
  }
  const std::string file = file_text(band);
  if (!operation.saves) {
    if (file != saved_text(band)) complain("the file stays", doing);
  } else if (file != saved_text(band) && !begins_with(with_new_period(saved_text(band)), file)) {
    complain("a file is the old one, or the new one up to where it was left", doing);
  }
}

void check_value(const Operation& operation, int band, bool may_be_old, bool may_be_new, const std::string& doing) {
  if (!operation.changes) return;
  const std::string value = stored_value(band, operation.key, operation.field);
  if (value == operation.value ? !may_be_new : !may_be_old) complain("a value is as the result says", doing + value);
}

// After a call that failed: the result tells what became of the operation.
void check_result(const Operation& operation, int band, const Outcome& outcome, const std::string& doing) {
  if (!WIFEXITED(outcome.status) || WEXITSTATUS(outcome.status) != 0) {
    complain("a missing resource ends no process", doing);
    return;
  }
  const bool succeeded = told()->result == 0;
  if (told()->leaked != 0) complain("no descriptor is left open", doing);
  // What is refused by the second semaphore operation, which gives the lock back, has happened.
  check_value(operation, band, !succeeded, succeeded || outcome.number != -1, doing);
  if (succeeded && operation.saves && file_text(band) != with_new_period(saved_text(band))) {
    complain("a save that succeeds is complete", doing);
  }
  if (succeeded && operation.loads && stored_keys(band) != all_keys(band)) {
    complain("a load that succeeds is complete", doing);
  }
}

std::string describe(const Operation& operation, int band, const Outcome& outcome, int nth, const char* what) {
  std::string text = std::string(operation.name) + " of band " + std::to_string(band) + ", " + what + " " +
                     std::to_string(nth) + " (" + name_of(outcome.number) + ")";
  if (outcome.error != 0) text += std::string(", ") + std::strerror(outcome.error);
  return text + ", result " + std::to_string(told()->result);
}

}  // namespace

Steps kill_stepwise(int stride, bool (*is_over)()) {
  Steps steps;
  for (int i = 0; i < kOperationCount; ++i) {
    const Operation& operation = kOperations[i];
    for (int band = 0; band < kBands; ++band) {
      for (int nth = 1 + i % stride; !is_over(); nth += stride) {
        prepare(operation, band);
        const Outcome outcome = attempt(operation, band, {nth, true, 0});
        if (!outcome.was_touched) break;
        ++steps.kills;
        const std::string doing = describe(operation, band, outcome, nth, "killed before call");
        check_stores(operation, band, doing);
        check_value(operation, band, true, true, doing);
      }
    }
  }
  restore_world();
  return steps;
}

Steps fail_stepwise(int stride, bool (*is_over)()) {
  Steps steps;
  for (int i = 0; i < kOperationCount; ++i) {
    const Operation& operation = kOperations[i];
    for (int band = 0; band < kBands; ++band) {
      bool is_at_end = false;
      for (int nth = 1 + i % stride; !is_at_end && !is_over(); nth += stride) {
        for (int variant = 0; variant < 3; ++variant) {
          prepare(operation, band);
          const Outcome outcome = attempt(operation, band, {nth, false, variant});
          is_at_end = outcome.number == -1;
          if (!outcome.was_touched) break;
          ++steps.faults;
          const std::string doing = describe(operation, band, outcome, nth, "failing call");
          check_stores(operation, band, doing);
          check_result(operation, band, outcome, doing);
        }
      }
    }
  }
  restore_world();
  return steps;
}

}  // namespace soak
