// help: what --help says, asked the other way round.
#include "wlanctl/base/report.h"
#include "wlanctl/command_line/hint.h"
#include "wlanctl/command_line/parse.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int run(const Words& words, Report& report) {
  std::vector<std::string> asked;
  for (const std::string& word : {words.topic, words.topic_below}) {
    if (!word.empty()) asked.push_back(word);
  }
  const Mistake mistake = mistake_in(program(), asked);
  if (!mistake.message.empty()) {
    report.problem({mistake.message, (mistake.meant.empty() ? "" : "do you mean " + mistake.meant + "? ") +
                                         std::string("wlanctl help lists the verbs")});
    return kWrongUsage;
  }
  asked.emplace_back("--help");
  Words unsaid;
  const Parsed parsed = parse(program(), asked, &unsaid);
  report.text() << parsed.text;
  report.data() = {{"text", parsed.text}};
  return kDone;
}

constexpr Word kWords[] = {
    {"VERB", &Words::topic, "What to explain; the program without it", {.offers = "verb"}},
    {"BELOW", &Words::topic_below, "A verb below that, as pbc below wps", {.needs = "VERB", .offers = "verb-below"}}};

}  // namespace

const Verb kHelp = {"help",
                    "Explain a verb, or list them all",
                    "The same as wlanctl VERB --help.\n\n"
                    "Examples:\n"
                    "  wlanctl help\n"
                    "  wlanctl help apply\n"
                    "  wlanctl help wps pbc",
                    kWords,
                    run,
                    {},
                    true};

}  // namespace wlanctl
