// completion: what makes Tab work.
#include "wlanctl/completion/completion.h"

#include "wlanctl/base/report.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int run(const Words& words, Report& report) {
  const VerbWords all = words_of(program());
  const std::string script = words.shell == "bash" ? bash_completion(all) : zsh_completion(all);
  report.text() << script;
  report.data() = {{"shell", words.shell}, {"script", script}};
  return kDone;
}

std::string shells() {
  return "bash,zsh";
}

constexpr Word kWords[] = {{"SHELL", &Words::shell, "bash or zsh", {.required = true, .choices = shells}}};

}  // namespace

const Verb kCompletion = {"completion", "Print the completion script of a shell",
                          "It knows the verbs, bands, options, keys and the values that a key accepts. An\n"
                          "installed wlanctl has it in place already.\n\n"
                          "Examples:\n"
                          "  . <(wlanctl completion bash)\n"
                          "  wlanctl completion bash >/etc/bash_completion.d/wlanctl\n"
                          "  wlanctl completion zsh >/usr/local/share/zsh/site-functions/_wlanctl",
                          kWords, run};

}  // namespace wlanctl
