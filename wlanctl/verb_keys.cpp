// keys: every setting with its scope, what it takes and what it means.
#include "wlanctl/command.h"
#include "wlanctl/key.h"

namespace wlanctl {
namespace {

struct Words {
  std::string band;
};

int run(const Words& words, Context& context) {
  std::vector<std::vector<std::string>> rows = {{"KEY", "OF", "ACCEPTS", "MEANING"}};
  Json keys = Json::array();
  const std::optional<Band> only = parse_band(words.band);
  for (const Key& key : all_keys()) {
    if (only && !key.is_on(*only)) continue;
    rows.push_back({key.name, word_for(key.scope), words_for(key.accepted), key.meaning});
    Json bands = Json::array();
    for (const Band band : kBands) {
      if (key.is_on(band)) bands.push_back(label_of(band));
    }
    keys.push_back({{"key", key.name},
                    {"scope", word_for(key.scope)},
                    {"bands", std::move(bands)},
                    {"accepted", words_for(key.accepted)},
                    {"choices", choices_of(key.accepted)},
                    {"meaning", key.meaning},
                    {"secret", key.secret}});
  }
  context.report.text() << table(rows);
  context.report.data() = {{"keys", std::move(keys)}};
  return kDone;
}

}  // namespace

void add_keys(CLI::App& app, Context& context) {
  add_verb<Words>(
      app, context, "keys", "List the settings: whose they are, what they accept, what they mean",
      [](CLI::App& verb, Words& words) {
        add_band(verb, words.band);
        verb.footer("Examples:\n  wlanctl keys\n  wlanctl keys 5g | grep VHT");
      },
      run);
}

}  // namespace wlanctl
