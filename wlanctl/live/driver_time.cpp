#include "wlanctl/live/driver_time.h"

#include <signal.h>
#include <sys/time.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "wlanctl/base/clock.h"

namespace wlanctl {
namespace {

constexpr int64_t kDriverMs = kDriverSeconds * kMsPerSecond;

// Again and again: the first signal may come just before the request waits.
constexpr int64_t kAgainMs = 100;

struct Waited {
  int64_t left_ms = kDriverMs;
  const Report* told = nullptr;  // whose reader knows
};
Waited g_waited[kBandCount];
bool g_is_limited = false;

timeval time_of(int64_t ms) {
  timeval time = {};
  time.tv_sec = static_cast<time_t>(ms / kMsPerSecond);
  time.tv_usec = static_cast<suseconds_t>(ms % kMsPerSecond * 1000);
  return time;
}

void set_timer(int64_t first_ms, int64_t again_ms) {
  const itimerval timer = {time_of(again_ms), time_of(first_ms)};
  (void)setitimer(ITIMER_REAL, &timer, nullptr);
}

// It does nothing: that it came is what ends the wait.
void note_signal(int) {}

void begin_signals(int64_t after_ms) {
  struct sigaction action = {};
  action.sa_handler = note_signal;  // and no SA_RESTART
  (void)sigaction(SIGALRM, &action, nullptr);
  sigset_t alarm;
  sigemptyset(&alarm);
  sigaddset(&alarm, SIGALRM);
  (void)sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
  set_timer(std::max<int64_t>(after_ms, 1), kAgainMs);
}

// The handler stays: a signal that is still under way must not end the tool.
void end_signals() {
  set_timer(0, 0);
}

}  // namespace

DriverTime::DriverTime() : is_first_(!g_is_limited) {
  if (!is_first_) return;
  g_is_limited = true;
  renew();
}

DriverTime::~DriverTime() {
  if (!is_first_) return;
  g_is_limited = false;
  renew();
}

void DriverTime::renew() {
  for (Waited& one : g_waited) one = {};
}

DriverTurn::DriverTurn(Band band)
    : band_(band), may_ask_(!is_driver_late(band)), is_limited_(g_is_limited && may_ask_), begin_ms_(ms_since_boot()) {
  if (is_limited_) begin_signals(g_waited[number_of(band)].left_ms);
}

DriverTurn::~DriverTurn() {
  if (!is_limited_) return;
  end_signals();
  g_waited[number_of(band_)].left_ms -= ms_since_boot() - begin_ms_;
}

bool is_driver_late(Band band) {
  return g_is_limited && g_waited[number_of(band)].left_ms <= 0;
}

Asked asked_of(Band band, const std::string& interface) {
  return {std::string(label_of(band)) + ": " + interface, about(band, interface)};
}

void complain_of_driver(Report& report, Band band, const std::string& interface, const std::string& what,
                        const std::string& reason) {
  const Asked asked = asked_of(band, interface);
  if (!is_driver_late(band)) return complain(report, asked, what, reason);
  if (std::exchange(g_waited[number_of(band)].told, &report) == &report) return;
  Json details = asked.details;
  details["question"] = what;
  details["reason"] = "the driver is slow";
  report.problem({asked.name + " did not tell " + what + " in time: the driver got " + std::to_string(kDriverSeconds) +
                      " s, and the rest of the band was not asked",
                  "try again; " + asked.next, std::move(details)});
}

}  // namespace wlanctl
