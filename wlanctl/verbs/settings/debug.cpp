// dump: the live store as it is. trace: what the library's users write to the debug log.
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "wlanctl/command_line/command.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/library/query.h"
#include "wlanctl/store/store.h"

namespace wlanctl {
namespace {

struct DumpWords {
  std::string band;
  bool secrets = false;
};

int dump(const DumpWords& words, Context& context) {
  Report& report = context.report;
  Json bands = Json::array();
  for (const Band band : bands_of(words.band)) {
    if (!open_store(band, report)) return kNoStore;
    Json records = Json::array();
    report.text() << label_of(band) << '\n';
    for (const StoreRecord& record : records_of_store(band)) {
      const bool is_masked = is_secret_dat_key(record.key) && !words.secrets;
      Json values = Json::array();
      std::string line;
      for (const std::string& field : record.fields) {
        const std::string shown = is_masked && !field.empty() ? kMasked : field;
        if (!values.empty()) line += ';';
        line += printable(shown);
        values.push_back(json_text(shown));
      }
      report.text() << "  " << printable(record.key) << '=' << line << '\n';
      records.push_back({{"key", json_text(record.key)}, {"values", std::move(values)}});
    }
    bands.push_back({{"band", label_of(band)}, {"records", std::move(records)}});
  }
  report.data() = {{"bands", std::move(bands)}};
  return kDone;
}

// The debug library's switch; the level has a file of its own, which matters with the switch only.
constexpr char kTraceSwitch[] = "/tmp/wifi_lib_dbg_enable";
constexpr int kEverything = 8;

struct NoWords {};
struct LevelWords {
  int level = 0;
};

int trace_at(int level, Context& context) {
  Report& report = context.report;
  std::string reason;
  if (!call_quietly([&] { return wifimgr_lib_set_dbg_level(std::to_string(level).c_str()) == 0; }, &reason)) {
    report.problem({std::string("the trace cannot be switched on: ") + kTraceSwitch + " cannot be written",
                    "run as root, and is there room in /tmp?",
                    {{"file", kTraceSwitch}, {"reason", json_text(reason)}}});
    return kRefused;
  }
  report.data() = {{"trace", "on"}, {"level", level}};
  report.text() << "trace: on, level " << level << '\n';
  return kDone;
}

int trace_on(const NoWords&, Context& context) {
  return trace_at(kEverything, context);
}

int trace_level(const LevelWords& words, Context& context) {
  return trace_at(words.level, context);
}

int trace_off(const NoWords&, Context& context) {
  Report& report = context.report;
  if (unlink(kTraceSwitch) != 0 && errno != ENOENT) {
    report.problem({std::string("the trace cannot be switched off: ") + kTraceSwitch + ": " + std::strerror(errno),
                    "run as root",
                    {{"file", kTraceSwitch}}});
    return kRefused;
  }
  report.data() = {{"trace", "off"}, {"level", nullptr}};
  report.text() << "trace: off\n";
  return kDone;
}

void add_trace(CLI::App& app, Context& context) {
  CLI::App* const trace = app.add_subcommand("trace", "Switch the trace of all processes");
  trace->require_subcommand(1);
  trace->footer(
      "Where the trace goes is the platform's business. It names settings, and may hold\n"
      "their values: switch it off again.\n\n"
      "Examples:\n  wlanctl trace on\n  wlanctl trace level 1\n  wlanctl trace off");
  add_verb<NoWords>(
      *trace, context, "on", "Everything: level 8",
      [](CLI::App& verb, NoWords&) { verb.footer("Examples:\n  wlanctl trace on"); }, trace_on);
  add_verb<NoWords>(
      *trace, context, "off", "Nothing",
      [](CLI::App& verb, NoWords&) { verb.footer("Examples:\n  wlanctl trace off"); }, trace_off);
  add_verb<LevelWords>(
      *trace, context, "level", "On, up to a level",
      [](CLI::App& verb, LevelWords& words) {
        verb.add_option("N", words.level, "1 for reasons of failures to 8 for all")
            ->required()
            ->check(CLI::Range(1, kEverything));
        verb.footer("Examples:\n  wlanctl trace level 1");
      },
      trace_level);
}

}  // namespace

void add_debug(CLI::App& app, Context& context) {
  add_verb<DumpWords>(
      app, context, "dump", "Show the live store's records as they are",
      [](CLI::App& verb, DumpWords& words) {
        add_band(verb, words.band);
        verb.add_flag("--secrets", words.secrets, "Show passphrases and keys");
        verb.footer("Examples:\n  wlanctl dump 2.4g | grep '  SSID'\n  wlanctl dump --json");
      },
      dump);
  add_trace(app, context);
}

}  // namespace wlanctl
