// status: both radios on one page, once or again and again.
#include <unistd.h>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/plan.h"
#include "wlanctl/apply/three_states.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/base/colour.h"
#include "wlanctl/base/ending_signals.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/live/board.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/neighbours.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/live/served_ssid.h"
#include "wlanctl/live/stations.h"
#include "wlanctl/live/wps_session.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

constexpr unsigned kDefaultSeconds = 2;
constexpr unsigned kMostSeconds = 3600;
constexpr size_t kMostShownNeighbours = 6;

template <typename Value>
std::string or_dash(const std::optional<Value>& value, const char* unit = "") {
  if (!value) return "-";
  if constexpr (std::is_convertible_v<Value, std::string>) {
    return *value + unit;
  } else {
    return std::to_string(*value) + unit;
  }
}

void print_board(Report& report, const Board& board) {
  report.text() << "gateway    br0 " << or_dash(board.bridge_address) << "  chip package "
                << or_dash(board.chip_package) << '\n';
  std::vector<std::string> words;
  if (!board.processes) words.emplace_back("-");
  for (const Process& process : board.processes.value_or(std::vector<Process>())) {
    words.push_back(printable(process.name) + " (" +
                    (process.is_running ? std::to_string(process.id) : std::string("stopped")) + ")");
  }
  report.text() << wrapped_below("processes", words);
}

void print_radio(Report& report, Band band, const Radio& radio) {
  report.text() << '\n'
                << wrapped_below(label_of(band),
                                 {interface_of(band, 0), or_dash(radio.address), "channel " + or_dash(radio.channel),
                                  "noise " + or_dash(radio.noise, " dBm"), "load " + or_dash(radio.load, "%"),
                                  or_dash(radio.temperature, " C")});
}

std::string painted_word(LinkState state) {
  const Paint paint = state == LinkState::kUp     ? Paint::kGreen
                      : state == LinkState::kDown ? Paint::kRed
                                                  : Paint::kYellow;
  return painted(paint, word_for(state));
}

struct SsidRows {
  Rows ssids = {{"  SSID", "INTERFACE", "STATE", "WPS", "STATIONS", "NAME"}};
  Rows stations = {{"  STATION", "SSID", "802.11k"}};
  std::vector<std::string> peers;
};

Json ask_ssid(Report& report, Band band, const ServedSsid& ssid, SsidRows* rows) {
  Json shown = {{"ssid", ssid.number},         {"interface", ssid.interface},  {"name", ssid.name},
                {"enabled", ssid.is_enabled},  {"state", word_for(ssid.link)}, {"stations", nullptr},
                {"wps", json_of(WpsSession())}};
  if (ssid.link == LinkState::kAbsent) {
    rows->ssids.push_back(
        {"  " + std::to_string(ssid.number), ssid.interface, painted_word(ssid.link), "-", "-", printable(ssid.name)});
    return shown;
  }
  const auto stations = stations_of(band, ssid.number, report);
  const WpsSession wps = wps_session_of(band, ssid.number, report);
  shown["stations"] = json_of(stations);
  shown["wps"] = json_of(wps);
  rows->ssids.push_back({"  " + std::to_string(ssid.number), ssid.interface, painted_word(ssid.link),
                         word_for_wps(wps.state), stations ? std::to_string(stations->size()) : "-",
                         printable(ssid.name)});
  if (wps.peer) rows->peers.push_back("  WPS of SSID " + std::to_string(ssid.number) + " is with " + *wps.peer);
  for (const Station& station : stations.value_or(std::vector<Station>())) {
    rows->stations.push_back({"  " + station.mac, std::to_string(ssid.number), yes_or_no(station.can_11k)});
  }
  return shown;
}

Json json_of(const ThreeStates& states) {
  return {{"agree", json_or_null(states.agree())},
          {"has_store", states.has_store},
          {"store_from_file", json_or_null(states.store_from_file)},
          {"store_from_in_force", json_or_null(states.store_from_in_force)},
          {"file_from_in_force", json_or_null(states.file_from_in_force)}};
}

Json ask_band(Report& report, Band band, const ThreeStates& states) {
  const bool answers = is_there(band, report);
  const Radio radio = answers ? radio_of(band, report) : Radio();
  print_radio(report, band, radio);
  const std::string head = "  settings: ";
  report.text() << head << joined(wrapped(states.line(), kColumns - head.size()), "\n" + std::string(head.size(), ' '))
                << '\n';
  SsidRows rows;
  Json ssids = Json::array();
  for (const ServedSsid& ssid : served_ssids(band)) ssids.push_back(ask_ssid(report, band, ssid, &rows));
  report.text() << table(rows.ssids);
  for (const std::string& peer : rows.peers) report.text() << peer << '\n';
  if (rows.stations.size() > 1) report.text() << table(rows.stations);
  const auto neighbours = answers ? neighbours_of(band, report) : std::nullopt;
  report.text() << "  neighbours: " << (neighbours ? std::to_string(neighbours->size()) : "-") << '\n';
  if (neighbours && !neighbours->empty()) {
    report.text() << table_of(*neighbours, kMostShownNeighbours);
    if (neighbours->size() > kMostShownNeighbours) {
      report.text() << "  and weaker ones: wlanctl neighbours " << label_of(band) << '\n';
    }
  }
  return {{"band", label_of(band)},
          {"interface", interface_of(band, 0)},
          {"address", json_or_null(radio.address)},
          {"channel", json_or_null(radio.channel)},
          {"noise_dbm", json_or_null(radio.noise)},
          {"load_percent", json_or_null(radio.load)},
          {"temperature_celsius", json_or_null(radio.temperature)},
          {"settings", json_of(states)},
          {"ssids", std::move(ssids)},
          {"neighbours", json_of(neighbours)}};
}

// A driver that is not there is told already.
void note_undone_of(Band band, const ThreeStates& states, Report& report) {
  Report unheard;
  if (!parse_dat_file(band)) report.note(unreadable_dat_file(band) + "; is it there, and readable?");
  if (link_state(interface_of(band, 0)) == LinkState::kAbsent) return;
  if (restore_applied(band, unheard)) note_system(band, states.lacks, report);
}

// What does not depend on a band's store is shown in any case.
int show_page(const std::vector<Band>& bands_asked, Report& report) {
  const DriverTime limited;
  int code = kDone;
  std::vector<Band> opened;
  for (const Band band : bands_asked) {
    if (look_at_band(band, report)) {
      note_waiting(band, report);
      opened.push_back(band);
    } else {
      code = kNoStore;
    }
  }
  const Board board = board_of(report);
  print_board(report, board);
  Json bands = Json::array();
  for (const Band band : opened) {
    const ThreeStates states = three_states_of(band);
    Json shown = ask_band(report, band, states);
    shown["taken_back"] = json_of(note_taken_back(band, report));
    bands.push_back(std::move(shown));
    if (states.is_lacking()) code = worse_of(code, kNotInForce);
    complain_of(band, states.lacks, next_step(band), report);
    if (!states.is_told) report.problem(untold(band));
    if (const std::optional<std::string> count = senseless_count(band)) {
      tell_senseless_count(band, *count, report);
      code = worse_of(code, kRefused);
    } else {
      note_undone_of(band, states, report);
    }
  }
  report.data() = {{"board", json_of(board)}, {"bands", std::move(bands)}};
  return code == kDone && report.has_problems() ? kNoAnswer : code;
}

int watch(const std::vector<Band>& bands, unsigned seconds, bool as_json, Report& report) {
  // They come between two pages, never into a query.
  const EndingSignals signals;
  const bool clears = !as_json && isatty(STDOUT_FILENO) != 0;
  const char* before = clears ? "\033[H\033[2J" : "";
  do {
    report.text() << before;
    if (!clears) before = "\n";
    const int exit_code = show_page(bands, report);
    if (exit_code == kNoStore && report.data()["bands"].empty()) return exit_code;
    if (!report.refresh(exit_code)) return kRefused;
  } while (!signals.come_within(seconds));
  return kDone;
}

int run(const Words& words, Report& report) {
  const std::vector<Band> bands = bands_of(words.band);
  if (!words.is_watching) return show_page(bands, report);
  const std::vector<unsigned>& seconds = words.watch_seconds;
  return watch(bands, seconds.empty() || seconds.front() == 0 ? kDefaultSeconds : seconds.front(), words.json, report);
}

constexpr Word kWords[] = {
    word::kBand,
    {"--watch",
     &Words::watch_seconds,
     "Every so many seconds (2), until interrupted",
     {.lowest = 1, .highest = kMostSeconds, .value_name = "SECONDS", .is_given = &Words::is_watching}},
};

}  // namespace

const Verb kStatus = {"status", "Show both live radios on one page, or one",
                      "Where not all that was applied is in force, or the driver did not take all of\n"
                      "it, the exit code is 6. With --watch and --json each page is a document on a\n"
                      "line of its own. A watch that is interrupted or hung up (SIGINT, SIGTERM,\n"
                      "SIGHUP unless that is ignored) ends with exit code 0.\n\n"
                      "Examples:\n"
                      "  wlanctl status\n"
                      "  wlanctl status 5g --watch 5\n"
                      "  wlanctl status --json | jq '.data.bands[].channel'",
                      kWords, run};

}  // namespace wlanctl
