// A document of each kind, spoilt in every place: no schema takes one that lacks a member, has one too many, or has one of
// another type.
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <regex>
#include <set>

#include "wlanctl.h"

namespace wlanctl_test {
namespace {

// In this order in one gateway; `before` comes first.
const struct {
  const char* words;
  const char* before;
} kCalls[] = {
    {"--help", ""},
    {"--version", ""},
    {"nonsense", ""},
    {"show 2.4g", "library_probe init 0 init 1"},
    {"get 2.4g Channel SSID:1", ""},
    {"set 2.4g Channel=11 SSID:1=Kitchen", ""},
    {"diff 2.4g", ""},
    {"status", ""},
    {"apply 2.4g --dry-run", ""},
    {"apply 2.4g --confirm 600", ""},
    {"confirm 2.4g", ""},
    {"save 2.4g", "wlanctl set 2.4g Channel=1"},
    {"revert 2.4g", "wlanctl set 2.4g Channel=3"},
    {"rollback 2.4g", "wlanctl apply 2.4g --confirm 600"},
    {"log", ""},
    {"undo", "wlanctl set 2.4g HideSSID:1=1; wlanctl save 2.4g"},
    {"edit 2.4g", "echo 'sed -i s/Kitchen/Attic/ $1' >editor; chmod +x editor; export EDITOR=./editor VISUAL="},
    {"import settings.json", "wlanctl export --output settings.json; wlanctl set 2.4g Channel=5"},
    {"export", ""},
    {"check /etc/Wireless/RT2860AP/RT2860AP.dat", "echo Channel=x >>/etc/Wireless/RT2860AP/RT2860AP.dat"},
    {"doctor", "ifconfig ra1 down"},
    {"dump 2.4g", "ifconfig ra1 up"},
    {"keys 2.4g", ""},
    {"explain Channel", ""},
    {"stations", ""},
    {"neighbours", ""},
    {"radio off 2.4g", ""},
    {"radio on 2.4g", ""},
    {"led 0", ""},
    {"button", ""},
    {"trace level 1", ""},
    {"calibration read 2.4g", "simctl calibration 2.4G chip=7915"},
    {"completion bash", ""},
    {"unlock 2.4g", ""},
    {"wps status 2.4g 1", ""},
    {"ssid list", ""},
    {"ssid add 2.4g Guest --passphrase-file word", "echo welcome-guests >word"},
    {"ssid disable 2.4g Guest", ""},
    {"ssid enable 2.4g Guest", ""},
    {"ssid rename 2.4g Guest Visitors", ""},
    {"ssid remove 2.4g Visitors --yes", ""},
    {"monitor 2.4g -n 1 --for 20", "(sleep 1; ifconfig ra1 down) &"},
};

// What the schemas leave open, and nothing else.
const char* const kTaken[] = {
    "check less /data/files",  // its exit code is 1, as of a call that came to no data
    "check less /problems/*/file",
    "export less /data/settings/bands/2.4g",  // it may be of one band, or of neither kind
    "export less /data/settings/bands/2.4g/other",
    "export less /data/settings/bands/2.4g/settings",
    "export less /data/settings/bands/5g",
    "export less /data/settings/bands/5g/other",
    "export less /data/settings/bands/5g/settings",
    "export wrong /data/settings",  // or the text of a dat file
};

// Members with names of their own, as many as there are settings.
bool is_map(const std::string& place) {
  return place.starts_with("/data/") && place != "/data/settings" &&
         (place.ends_with("/settings") || place.ends_with("/other"));
}

std::string kind_of(const Json& document) {
  const std::string verb = document["verb"];
  return verb.empty() ? "usage" : verb.substr(0, verb.find(' '));
}

// The elements of a list are of one kind.
std::string place_of(const Json::json_pointer& at) {
  return std::regex_replace(at.to_string(), std::regex("/[0-9]+(?=/|$)"), "/*");
}

struct Spoiler {
  const Json& document;
  std::set<std::string>& taken;  // what no schema refused
  std::set<std::string> seen;

  void take_unless_refused(const Json& spoilt, const std::string& what) {
    if (is_valid(spoilt)) taken.insert(kind_of(document) + " " + what);
  }

  void spoil(const Json& part, const Json::json_pointer& at) {
    const std::string place = place_of(at);
    if (seen.insert(place).second) spoil_here(part, at, place);
    if (is_map(place)) {
      spoil(part.front(), at / part.items().begin().key());
    } else if (part.is_object()) {
      for (const auto& [name, member] : part.items()) spoil(member, at / name);
    } else if (part.is_array()) {
      for (size_t i = 0; i < part.size(); ++i) spoil(part[i], at / i);
    }
  }

  void spoil_here(const Json& part, const Json::json_pointer& at, const std::string& place) {
    Json spoilt = document;
    spoilt[at] = part.is_structured() ? Json("text") : Json::array({Json::object()});
    take_unless_refused(spoilt, "wrong " + place);
    if (!part.is_object() || is_map(place)) return;
    spoilt = document;
    spoilt[at]["one_too_many"] = 1;
    take_unless_refused(spoilt, "more " + place);
    for (const auto& [name, member] : part.items()) {
      if (!seen.insert(place + "/" + name + " away").second) continue;
      spoilt = document;
      spoilt[at].erase(name);
      take_unless_refused(spoilt, "less " + place + "/" + name);
    }
  }
};

std::vector<Json> documents() {
  Words steps;
  for (const auto& call : kCalls) {
    const std::string before = call.before;
    steps.push_back((before.empty() ? "" : "{ " + before + "\n} >/dev/null 2>&1\n") + "wlanctl " + call.words +
                    " --json");
  }
  std::vector<Json> all;
  const std::vector<Result> results = run_steps(steps, {"--chips", "7603,7612"});
  for (size_t i = 0; i < results.size(); ++i) {
    all.push_back(document_in(results[i].out));
    EXPECT_TRUE(all.back()["data"].size() > 0 || kind_of(all.back()) == "usage") << steps[i] << results[i].out;
  }
  return all;
}

TEST(SchemaKinds, TakeNoDocumentThatIsSpoiltInAnyPlace) {
  std::set<std::string> kinds = {"envelope"};
  std::set<std::string> taken;
  for (const Json& document : documents()) {
    kinds.insert(kind_of(document));
    EXPECT_TRUE(is_valid(document)) << document;
    Spoiler{document, taken, {}}.spoil(document, Json::json_pointer(""));
  }
  for (const auto& entry : std::filesystem::directory_iterator(source_folder() + "/wlanctl/schema")) {
    EXPECT_TRUE(kinds.contains(entry.path().stem().string())) << entry.path();
  }
  EXPECT_EQ(std::set<std::string>(std::begin(kTaken), std::end(kTaken)), taken);
}

}  // namespace
}  // namespace wlanctl_test
