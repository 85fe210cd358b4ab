// completion: what makes Tab work.
#include "wlanctl/command_line/command.h"
#include "wlanctl/completion/completion.h"

namespace wlanctl {
namespace {

struct Words {
  std::string shell;
};

}  // namespace

void add_completion(CLI::App& app, Context& context) {
  add_verb<Words>(
      app, context, "completion", "Print the completion script of a shell",
      [](CLI::App& verb, Words& words) {
        verb.add_option("SHELL", words.shell, "bash or zsh")->required()->check(CLI::IsMember({"bash", "zsh"}));
        verb.footer(
            "It knows the verbs, bands, options, keys and the values that a key accepts. An\n"
            "installed wlanctl has it in place already.\n\n"
            "Examples:\n"
            "  . <(wlanctl completion bash)\n"
            "  wlanctl completion bash >/etc/bash_completion.d/wlanctl\n"
            "  wlanctl completion zsh >/usr/local/share/zsh/site-functions/_wlanctl");
      },
      [&app](const Words& words, Context& now) {
        const VerbWords program = words_of(app);
        const std::string script = words.shell == "bash" ? bash_completion(program) : zsh_completion(program);
        now.report.text() << script;
        now.report.data() = {{"shell", words.shell}, {"script", script}};
        return kDone;
      });
}

}  // namespace wlanctl
