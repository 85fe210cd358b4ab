#include "wlanctl/apply/run.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <utility>

#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/bridges.h"
#include "wlanctl/apply/unread.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/library/command.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/output.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/live/driver_time.h"
#include "wlanctl/live/link_downs.h"
#include "wlanctl/live/radio.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/difference.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

std::string text_of(Band band, int ssid, uint64_t (*getter)(uint32_t, int32_t, char*, uint32_t)) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  return getter(wifi_type_of(band), ssid, text, sizeof text) == 0 ? without_line_end(text) : "";
}

// The normalisation leaves modes that it does not know again: it would take the 192-bit one for an open network, and
// WEP with a RADIUS server for WEP without. They get back the name that it takes.
void name_modes_for_normalisation(Band band) {
  for (int ssid = 1; ssid <= ssid_count(band); ++ssid) {
    const std::string mode = text_of(band, ssid, wifimgr_lib_get_authMode);
    const char* name = nullptr;
    if (mode == "WPA3-192") name = "WPA3-192Bit";
    if (mode == "WEPAUTO" && text_of(band, ssid, wifimgr_lib_get_ieee8021x) == "1") name = "WEPRadius";
    if (name != nullptr) (void)wifimgr_lib_set_authMode(wifi_type_of(band), ssid, name);
  }
}

// Setting the SSID count twice to the same value takes the wish for a reload back, though the driver still has the old
// number of interfaces.
void ask_for_reload(Band band) {
  if (ssid_count(band) != store_global[number_of(band)].bss_count) {
    (void)wifimgr_lib_set_reloadFlag(wifi_type_of(band), "1");
  }
}

void note_complaints(Band band, const std::string& printed, Report& report) {
  if (!printed.empty()) report.note(std::string(label_of(band)) + ": the library says: " + printed);
}

bool write_dat_file(Band band, bool commit, Report& report) {
  clear_messages();
  // What the commands print of interfaces that were down already tells nobody anything.
  CaughtOutput commands;
  const int result = commit ? wifimgr_lib_commit(wifi_type_of(band), 1) : wifimgr_lib_save_dataFile(number_of(band));
  (void)commands.end();
  if (result == 0) return true;
  const std::string reason = first_reason();
  report.problem(
      {std::string(label_of(band)) + " was not applied, " + dat_path_of(band) + " cannot be written" + because(reason),
       "is the file writable, is there room, and is no line of it longer than 185 characters?", about(band)});
  return false;
}

bool write_script(Band band, int ssid, Report& report) {
  CaughtOutput complaints;
  const int32_t result = wifimgr_lib_write_wifi_execute_sh(wifi_type_of(band), static_cast<uint32_t>(ssid - 1));
  note_complaints(band, complaints.end(), report);
  if (result == 0) return true;
  report.problem({"cannot write " + script_path_of(band) + ", so the driver was not told of SSID " +
                      std::to_string(ssid) + " of " + label_of(band),
                  "is its folder writable, and is there room?", about(band)});
  return false;
}

// As the library wrote it, wherever its path is led.
std::string read_script(Band band) {
  std::FILE* const file = std::fopen(script_path_of(band).c_str(), "re");
  if (file == nullptr) return "";
  std::string text;
  for (int c = 0; (c = std::fgetc(file)) != EOF;) text += static_cast<char>(c);
  (void)std::fclose(file);
  return text;
}

// Whether each line is a command by itself: what was forced into a value may reach over several.
bool is_plain(const std::string& script) {
  for (const std::string& line : lines_of(script)) {
    const bool is_command = line.empty() || line.starts_with("#") || line.starts_with("/userfs/bin/iwpriv ");
    if (!is_command || std::count(line.begin(), line.end(), '"') % 2 != 0) return false;
  }
  return true;
}

// What the driver's tool prints may repeat a passphrase or a key.
std::string account_without_secret(Command command) {
  const std::string name = command.line.substr(command.line.rfind(' ') + 1);
  // A script that was run as a whole has them all.
  if (!command.line.starts_with("iwpriv ")) command.printed.clear();
  for (const char* const secret : {"PSK", "Key", "KEY", "ASCII"}) {
    if (name.find(secret) != std::string::npos) command.printed.clear();
  }
  return account_of(command);
}

// Of the commands behind the first `before` ones.
std::string cause_since(size_t before) {
  const std::vector<Command>& commands = commands_run();
  const auto failed = std::find_if(commands.begin() + static_cast<ptrdiff_t>(std::min(before, commands.size())),
                                   commands.end(), [](const Command& command) { return command.failed(); });
  return failed == commands.end() ? "" : account_without_secret(*failed);
}

int run_script(Band band, const std::string& text) {
  std::optional<WatchedScript> watched;
  if (is_plain(text)) watched.emplace(script_path_of(band));
  // On 5G each run uses up a permission.
  if (band == Band::k5G) (void)wifimgr_lib_set_11AC_CMDflag(1);
  // The driver's tool may repeat a passphrase in what it prints.
  const CaughtOutput unheard;
  (void)wifimgr_lib_execute_wlan_script(number_of(band), script_path_of(band).c_str());
  const int status = last_shell_status();
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

// By the settings in force: what the new ones want first could not be lacking before. A restart brings all of it about.
std::vector<Wanted> lacking_before(Band band, bool is_restarted) {
  if (is_restarted) return {};
  const PrivateStore in_force(band, settings_in_force(band));
  return Expectation(band, Operation::kSave, 0).lacking_now();
}

void look(Band band, const Expectation& expected, const std::vector<Wanted>& before, LinkDowns* downs, Applied* applied,
          Report& report) {
  applied->lacks = expected.look(applied->weight > 1, applied->committed ? downs : nullptr);
  applied->has_lacked_before = std::all_of(applied->lacks.begin(), applied->lacks.end(), [&](const Lack& lack) {
    return std::find(before.begin(), before.end(), lack.wanted) != before.end();
  });
  // A restart is looked at as a whole.
  if (applied->committed) {
    keep_bridges(band, expected.bridges(), report);
    const auto is_missing = [](const Lack& lack) { return lack.wanted.state == Wanted::State::kRestarted; };
    if (std::none_of(applied->lacks.begin(), applied->lacks.end(), is_missing)) forget_unread(band);
    return;
  }
  for (Lack& beside : lacks_beside(band, expected, &applied->lacks)) {
    if (!lacking(beside.wanted).empty()) applied->lacks.push_back(std::move(beside));
  }
}

// "Channel, SSID:2".
std::string names_of(const std::vector<Difference>& differences) {
  std::vector<std::string> names;
  for (const Difference& one : differences) names.push_back(printable(one.name()));
  return joined(names, ", ");
}

// What the store had when the library began is what it has brought into force. What differs since, the library's own note
// to itself aside, another process has set: the next apply is to find it.
void take_worked_with(Band band, std::vector<wifimgr_attr_record> worked_with, Report& report) {
  const std::vector<wifimgr_attr_record> now = table_of_store(band);
  const auto is_own_note = [](const wifimgr_attr_record& record) {
    return std::strncmp(record.key, kReloadFlag, sizeof record.key) == 0;
  };
  const auto note_now = std::find_if(now.begin(), now.end(), is_own_note);
  const auto note_then = std::find_if(worked_with.begin(), worked_with.end(), is_own_note);
  if (note_now != now.end() && note_then != worked_with.end()) *note_then = *note_now;
  {
    const PrivateStore in_force(band, worked_with);
    take_applied(band);
  }
  const std::vector<Difference> others = differences(records_of(worked_with), records_of(now), WIFIMGR_FIELDS);
  if (others.empty()) return;
  const std::string label = label_of(band);
  report.note(label + ": another process has changed the store meanwhile, which is not in force: " + names_of(others) +
              "; wlanctl diff " + label + " --in-force shows it, and wlanctl apply " + label + " applies it");
}

// The module that is loaded behind it stays the old one then, with its interfaces.
void note_unloaded(Band band, Report& report) {
  for (const Command& command : commands_run()) {
    if (!command.failed() || command.line.find("rmmod ") == std::string::npos) continue;
    report.note(std::string(label_of(band)) + ": the driver was not reloaded: " + account_of(command) +
                "; a reboot loads it anew");
  }
}

}  // namespace

std::string script_path_of(Band band) {
  return band == Band::k2_4G ? "/etc/Wireless/RT2860AP/WLAN_exec.sh" : "/etc/Wireless/RT2860AP_AC/WLAN_exec.sh";
}

void make_consistent(Band band, Report& report) {
  name_modes_for_normalisation(band);
  CaughtOutput complaints;
  (void)wifimgr_lib_check_wifi_value_befor_write_dat(wifi_type_of(band));
  note_complaints(band, complaints.end(), report);
}

std::optional<Applied> bring_into_force(Band band, bool always_commit, Report& report) {
  const DriverTime limited;
  Applied applied;
  applied.weight = weigh(band);
  applied.committed = always_commit || applied.weight != 0 || is_doubted(band);
  if (applied.committed) applied.weight = std::max(applied.weight, 1);
  ask_for_reload(band);
  // What is taken down first is all that is up, be it what an apply before could not take down.
  if (applied.committed) {
    int& interfaces = pre_wlan_state[number_of(band)];
    interfaces = std::max(interfaces, interfaces_up(band));
  }
  const bool is_real = ShellScope::mode() == ShellMode::kRun;
  std::optional<Expectation> expected;
  std::vector<Wanted> before;
  if (is_real) {
    before = lacking_before(band, applied.committed);
    expected.emplace(band, applied.committed ? Operation::kCommit : Operation::kSave, pre_wlan_state[number_of(band)]);
  }
  std::vector<wifimgr_attr_record> worked_with = table_of_store(band);
  LinkDowns downs;
  if (!write_dat_file(band, applied.committed, report)) return std::nullopt;
  bool written = true;
  bool failed = false;
  for (int ssid = 1; written && ssid <= ssid_count(band); ++ssid) {
    written = write_script(band, ssid, report);
    if (!written) break;
    Script script;
    script.ssid = ssid;
    script.path = script_path_of(band);
    script.text = read_script(band);
    const size_t commands_before = commands_run().size();
    script.status = run_script(band, script.text);
    if (script.status != 0) script.cause = cause_since(commands_before);
    // After a changed count the driver may lack the interface until the reboot.
    script.may_fail = link_state(interface_of(band, ssid - 1)) == LinkState::kAbsent &&
                      (applied.weight > 1 || link_state(interface_of(band, 0)) != LinkState::kAbsent);
    failed = failed || (script.status != 0 && !script.may_fail);
    applied.scripts.push_back(std::move(script));
  }
  if (is_real) note_unloaded(band, report);
  take_worked_with(band, std::move(worked_with), report);
  set_told(band, written && !failed);
  // What made it slow before may be gone with the restart.
  DriverTime::renew();
  if (expected && is_broken_off() == BrokenOff::kNo) look(band, *expected, before, &downs, &applied, report);
  return applied;
}

}  // namespace wlanctl
