#include "wlanctl/apply/applied_state.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/hex.h"
#include "wlanctl/base/report.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/process.h"
#include "wlanctl/files/record_text.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/revert.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-applied";
constexpr int kVersion = 3;
constexpr uint32_t kTakeSnapshot = 0;
constexpr uint32_t kCompare = 1;
constexpr int kRestart = 1;

// In place of the dat file's sum.
constexpr char kAnySum[] = "any";
constexpr char kNoSum[] = "none";
constexpr char kApplyingSum[] = "applying:";  // and the process

std::vector<wifimgr_attr_record> g_settings[kBandCount];
bool g_told[kBandCount] = {true, true};
bool g_doubted[kBandCount] = {};
bool g_applying = false;  // in this process

std::string path_of(Band band) {
  return std::string(place::kApplied) + label_of(band);
}

std::string text_of(const wifimgr_band_snapshot& snapshot) {
  return hex_of(std::string(reinterpret_cast<const char*>(&snapshot), sizeof snapshot));
}

bool parse_hex(const std::string& text, wifimgr_band_snapshot* snapshot) {
  const std::optional<std::string> bytes = bytes_of_hex(text);
  if (!bytes || bytes->size() != sizeof *snapshot) return false;
  std::memcpy(snapshot, bytes->data(), sizeof *snapshot);
  return true;
}

// What the snapshot of this band must look like, whatever it says.
bool is_believable(Band band, const wifimgr_band_snapshot& snapshot, int64_t interfaces) {
  const char* const prefix = band == Band::k2_4G ? "ra" : "rai";
  return std::strncmp(snapshot.prefix, prefix, sizeof snapshot.prefix) == 0 && snapshot.bss_count >= 0 &&
         interfaces >= 0 && interfaces <= WIFIMGR_FIELDS;
}

std::string sum_of_dat_file(Band band) {
  return sum_of(read_bytes(dat_path_of(band)).value_or(""));
}

// Which of the served SSIDs are switched on.
std::vector<bool> switches_of(Band band) {
  std::vector<bool> switches;
  for (int ssid = 1; ssid <= ssid_count(band); ++ssid) switches.push_back(is_switched_on(band, ssid));
  return switches;
}

// The process of an apply that is at work; none where the word says something else.
std::optional<pid_t> applier_in(const std::string& word) {
  if (!word.starts_with(kApplyingSum)) return std::nullopt;
  return static_cast<pid_t>(number_in(word.substr(sizeof kApplyingSum - 1)).value_or(0));
}

struct Kept {
  bool is_current = false;  // of this boot, and nobody else has changed the dat file
  std::string text;         // "" when there is none
  bool is_cut_off = false;  // an apply has begun since, and nobody is at it
};

Kept read_kept(Band band) {
  const std::optional<std::string> text = read_state_file(path_of(band), kFormat, kVersion);
  const size_t end = text ? text->find('\n') : std::string::npos;
  if (end == std::string::npos) return {};
  const std::vector<std::string> head = words_of(text->substr(0, end));
  if (head.size() != 2 || head[0] != this_boot()) return {};
  const std::optional<pid_t> applier = applier_in(head[1]);
  // Its guardian goes on with what it has begun.
  const bool is_cut_off = applier && !g_applying && has_ended(*applier);
  const bool is_any = head[1] == kAnySum || applier;
  return {!is_cut_off && (is_any || head[1] == sum_of_dat_file(band)), text->substr(end + 1), is_cut_off};
}

// Band, interfaces, whether the driver was told, snapshot.
constexpr size_t kHeadWords = 4;
constexpr size_t kToldWord = 2;

// Without a look at the records, which take their time.
bool is_told_in(const Kept& kept) {
  const std::vector<std::string> head = words_of(kept.text.substr(0, kept.text.find('\n')));
  return !kept.is_current || head.size() != kHeadWords || head[kToldWord] == "1";
}

struct Parsed {
  wifimgr_band_snapshot snapshot = {};
  int interfaces = 0;
  bool is_told = true;
  std::vector<wifimgr_attr_record> settings;
};

std::optional<Parsed> parse_applied(Band band, const std::string& text) {
  const size_t end = text.find('\n');
  if (end == std::string::npos) return std::nullopt;
  const std::vector<std::string> head = words_of(text.substr(0, end));
  if (head.size() != kHeadWords || head[0] != label_of(band)) return std::nullopt;
  const std::optional<int64_t> interfaces = number_in(head[1]);
  Parsed parsed;
  if (!interfaces || !parse_hex(head[3], &parsed.snapshot)) return std::nullopt;
  if (!is_believable(band, parsed.snapshot, *interfaces)) return std::nullopt;
  auto settings = parse_records(text.substr(end + 1));
  if (!settings || settings->empty()) return std::nullopt;
  parsed.interfaces = static_cast<int>(*interfaces);
  parsed.is_told = head[kToldWord] == "1";
  parsed.settings = std::move(*settings);
  return parsed;
}

}  // namespace

bool is_applied_damaged(Band band) {
  return is_state_file_damaged(path_of(band), kFormat, kVersion);
}

std::string applied_text(Band band) {
  Text text;
  text << label_of(band) << ' ' << pre_wlan_state[number_of(band)] << ' ' << (is_told(band) ? '1' : '0') << ' '
       << text_of(store_global[number_of(band)]) << '\n'
       << text_of_records(g_settings[number_of(band)]);
  return text.str();
}

bool adopt_applied(Band band, const std::string& text) {
  std::optional<Parsed> parsed = parse_applied(band, text);
  if (!parsed) return false;
  store_global[number_of(band)] = parsed->snapshot;
  pre_wlan_state[number_of(band)] = parsed->interfaces;
  g_settings[number_of(band)] = std::move(parsed->settings);
  g_doubted[number_of(band)] = false;
  set_told(band, parsed->is_told);
  return true;
}

LastApplied read_last_applied(Band band) {
  const Kept kept = read_kept(band);
  LastApplied applied = {std::nullopt, is_told_in(kept)};
  std::optional<Parsed> parsed = kept.is_current ? parse_applied(band, kept.text) : std::nullopt;
  if (parsed) applied.settings = std::move(parsed->settings);
  return applied;
}

std::optional<std::vector<wifimgr_attr_record>> last_applied(Band band) {
  return read_last_applied(band).settings;
}

std::optional<std::vector<wifimgr_attr_record>> applied_by_tool(Band band) {
  std::optional<Parsed> parsed = parse_applied(band, read_kept(band).text);
  if (!parsed) return std::nullopt;
  return std::move(parsed->settings);
}

bool was_told(Band band) {
  return is_told_in(read_kept(band));
}

bool is_in_force_known(Band band) {
  return read_kept(band).is_current;
}

bool is_apply_cut_off(Band band) {
  return read_kept(band).is_cut_off;
}

Problem untold(Band band) {
  const std::string label = label_of(band);
  return {"the driver did not take all of what was last applied to " + label,
          "wlanctl apply " + label + " tells it again", about(band)};
}

bool is_told(Band band) {
  return g_told[number_of(band)];
}

void set_told(Band band, bool told) {
  g_told[number_of(band)] = told;
}

bool restore_applied(Band band, Report& report) {
  Doubt doubt = Doubt::kNone;
  if (!restore_applied(band, &doubt, report)) return false;
  note_doubt(band, doubt, report);
  return true;
}

bool restore_applied(Band band, Doubt* doubt, Report& report) {
  *doubt = Doubt::kNone;
  const Kept kept = read_kept(band);
  if (kept.is_current && adopt_applied(band, kept.text)) {
    // Whether the driver has read it is not known any more.
    g_doubted[number_of(band)] = are_lacks_damaged(band);
    return true;
  }
  const auto content = parse_dat_file(band);
  if (!content) {
    report.problem(
        {unreadable_dat_file(band) + "; so what is in force is not known", "is it there, and readable?", about(band)});
    return false;
  }
  // A file that was cut off says nothing of what others may have applied.
  if (!kept.text.empty() && !is_complete(band, *content) && adopt_applied(band, kept.text)) return true;
  *doubt = kept.is_current || kept.text.empty() ? Doubt::kUnknown : kept.is_cut_off ? Doubt::kCutOff : Doubt::kChanged;
  const PrivateStore file(band, *content);
  take_applied(band);
  g_doubted[number_of(band)] = *doubt != Doubt::kUnknown || is_applied_damaged(band);
  // However many the file has: what is up now may be of what was last applied.
  const std::optional<Parsed> last = is_doubted(band) ? parse_applied(band, kept.text) : std::nullopt;
  if (last) pre_wlan_state[number_of(band)] = std::max(pre_wlan_state[number_of(band)], last->interfaces);
  return true;
}

void doubt_applied(Band band) {
  g_doubted[number_of(band)] = true;
}

bool is_doubted(Band band) {
  return g_doubted[number_of(band)];
}

void note_doubt(Band band, Doubt doubt, Report& report) {
  if (doubt == Doubt::kNone) return;
  // An apply may have made it known meanwhile.
  const bool is_known = last_applied(band).has_value();
  if (doubt == Doubt::kCutOff) {
    const std::string label = label_of(band);
    report.note("an apply of " + label + " had ended in the middle; " +
                (is_known
                     ? "all of it was applied anew"
                     : "its dat file counts as what is in force, and wlanctl apply " + label + " applies it anew"));
    return;
  }
  if (doubt == Doubt::kChanged && is_known) {
    report.note(
        dat_path_of(band) +
        " had changed since wlanctl last applied it; it counted as what was in force, and all of it was applied anew");
  } else if (!is_known) {
    report.note((doubt == Doubt::kUnknown
                     ? std::string("nothing is known of what was last applied to ") + label_of(band) + "; its dat file"
                     : dat_path_of(band) + " has changed since wlanctl last applied it; it") +
                " counts as what is in force; wlanctl apply " + label_of(band) + " makes it known");
  }
}

void take_applied(Band band) {
  (void)wifimgr_lib_wifi_config_oper(wifi_type_of(band), kTakeSnapshot);
  // Those that are not served count too: what is taken down first is all of them.
  pre_wlan_state[number_of(band)] = ssid_count(band);
  g_settings[number_of(band)] = table_of_store(band);
  g_doubted[number_of(band)] = false;
  set_told(band, true);
}

bool keep_applied(Band band, FileIs file, Report& report) {
  // What is damaged stays so for now: it says that nothing is known.
  if (is_doubted(band) && is_applied_damaged(band)) return true;
  g_applying = g_applying || file == FileIs::kApplying;
  const std::string sum = file == FileIs::kApplying  ? kApplyingSum + std::to_string(getpid())
                          : is_doubted(band)         ? kNoSum
                          : file == FileIs::kSettled ? sum_of_dat_file(band)
                                                     : kAnySum;
  const std::string head = this_boot() + " " + sum + "\n";
  return write_state_file(path_of(band), kFormat, kVersion, head + applied_text(band), report);
}

void forget_applied(Band band) {
  (void)remove_state_file(path_of(band));
}

std::optional<KeptInForce> kept_in_force(Band band) {
  const std::optional<std::string> text = read_state_file(path_of(band), kFormat, kVersion);
  const size_t end = text ? text->find('\n') : std::string::npos;
  if (end == std::string::npos) return std::nullopt;
  const std::vector<std::string> head = words_of(text->substr(0, end));
  const bool is_changing = head.size() == 2 && head[1] == kAnySum;
  return KeptInForce{is_changing ? FileIs::kChanging : FileIs::kSettled, sum_of(text->substr(end + 1))};
}

const std::vector<wifimgr_attr_record>& settings_in_force(Band band) {
  return g_settings[number_of(band)];
}

int weigh(Band band) {
  return weigh(band, settings_in_force(band));
}

int weigh(Band band, const std::vector<wifimgr_attr_record>& before) {
  const int weight = static_cast<int>(wifimgr_lib_wifi_config_oper(wifi_type_of(band), kCompare));
  if (weight > 0 || before.empty()) return weight;
  const std::vector<bool> now = switches_of(band);
  const PrivateStore in_force(band, before);
  return switches_of(band) == now ? weight : kRestart;
}

}  // namespace wlanctl
