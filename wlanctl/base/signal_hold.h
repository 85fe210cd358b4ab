// An apply takes down the very radio that its operator may come in by: what would end the tool in the middle, such as the
// hang-up of the terminal, or stop it there, waits until this ends.
#pragma once

#include <signal.h>

#include <initializer_list>

namespace wlanctl {

class SignalHold {
 public:
  SignalHold() { (void)sigprocmask(SIG_BLOCK, &held(), &before_); }
  SignalHold(const SignalHold&) = delete;
  SignalHold& operator=(const SignalHold&) = delete;
  ~SignalHold() { (void)sigprocmask(SIG_SETMASK, &before_, nullptr); }

  static const sigset_t& held() {
    static const sigset_t signals = [] {
      sigset_t held;
      sigemptyset(&held);
      for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGPIPE, SIGTSTP}) sigaddset(&held, number);
      return held;
    }();
    return signals;
  }

 private:
  sigset_t before_;
};

}  // namespace wlanctl
