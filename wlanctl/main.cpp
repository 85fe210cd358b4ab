// wlanctl: shows, changes, checks and applies the settings of both radios, and shows the live radio.
#include <fcntl.h>
#include <malloc.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>

#include "wlanctl/base/colour.h"
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/hint.h"
#include "wlanctl/command_line/parse.h"
#include "wlanctl/library/command.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

using CommandLine = std::vector<std::string>;

// Else the first file that is opened, such as a dat file, would get what is printed.
void open_standard_files() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(file, F_GETFD) < 0 && errno == EBADF) (void)open("/dev/null", O_RDWR);
  }
}

// Any user may list the processes with their words, where a value may be a passphrase. A guardian keeps them long.
CommandLine taken_words(int argc, char** argv) {
  CommandLine words(argv + std::min(argc, 1), argv + argc);
  for (int i = 1; i < argc; ++i) {
    char* const equals = std::strchr(argv[i], '=');
    if (equals != nullptr) std::memset(equals + 1, '*', std::strlen(equals + 1));
  }
  return words;
}

std::string without_values(std::string message, const CommandLine& words) {
  for (const std::string& word : words) {
    const size_t equals = word.find('=');
    if (equals == std::string::npos || equals + 1 == word.size()) continue;
    const std::string shown = word.substr(0, equals + 1) + "...";
    for (size_t at = 0; (at = message.find(word, at)) != std::string::npos; at += shown.size()) {
      message.replace(at, word.size(), shown);
    }
  }
  return message;
}

// What the program says of itself, which is no verb's.
int tell(const std::string& text, Report& report) {
  report.data() = {{"text", text}};
  report.text() << text;
  return kDone;
}

int refuse_usage(const Parsed& parsed, const CommandLine& words, Report& report) {
  const Mistake mistake = mistake_in(program(), words);
  const bool is_found = !mistake.message.empty();
  const std::string path = is_found ? mistake.path : parsed.path;
  report.problem(
      {without_values(is_found ? mistake.message : parsed.text, words),
       (mistake.meant.empty() ? "" : "do you mean " + mistake.meant + "? ") +
           (path.empty() ? "wlanctl --help lists the verbs" : "wlanctl " + path + " --help shows what it takes")});
  return kWrongUsage;
}

Colours colours_by(const std::string& word) {
  if (word == "always") return Colours::kAlways;
  return word == "never" ? Colours::kNever : Colours::kAuto;
}

int carry_out(const Parsed& parsed, const CommandLine& words, const Words& said, Report& report) {
  switch (parsed.asks) {
    case Parsed::Asks::kVerb:
      limit_commands(said.command_seconds);
      choose_colours(said.json ? Colours::kNever : colours_by(said.colour));
      if (parsed.verb->is_long && !said.no_pager) report.allow_pager();
      return parsed.verb->run(said, report);
    case Parsed::Asks::kHelp:
      report.allow_pager();
      return tell(parsed.text, report);
    case Parsed::Asks::kVersion:
      return tell(program().version + std::string("\n"), report);
    case Parsed::Asks::kNothing:
      break;
  }
  return refuse_usage(parsed, words, report);
}

// Tables of a band's settings come and go, each as large as the segment: they get the same memory again and again, where
// the system would have to clear new pages for each.
void keep_freed_memory() {
#ifdef M_TRIM_THRESHOLD
  constexpr int kMost = 4 << 20;
  (void)mallopt(M_MMAP_THRESHOLD, kMost);
  (void)mallopt(M_TRIM_THRESHOLD, kMost);
#endif
}

int run(int argc, char** argv) {
  const CommandLine words = taken_words(argc, argv);
  Words said;
  said.json = std::find(words.begin(), words.end(), "--json") != words.end();
  const Parsed parsed = parse(program(), words, &said);
  Report report;
  report.begin(parsed.path, said.json);
  return report.finish(carry_out(parsed, words, said, report));
}

}  // namespace
}  // namespace wlanctl

int main(int argc, char** argv) {
  try {
    wlanctl::open_standard_files();
    // A file that grows too large is a write that fails.
    (void)signal(SIGXFSZ, SIG_IGN);
    wlanctl::keep_freed_memory();
    return wlanctl::run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "wlanctl: %s; this is a fault of the tool\n", error.what());
    return wlanctl::kRefused;
  }
}
