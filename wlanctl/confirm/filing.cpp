#include "wlanctl/confirm/filing.h"

#include <cerrno>
#include <cstring>
#include <optional>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/report.h"
#include "wlanctl/confirm/rollback.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/files/word_text.h"
#include "wlanctl/history/record.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-filing";
constexpr int kVersion = 1;

struct NotedFile {
  Band band = Band::k2_4G;
  std::string sum;     // of what it becomes
  std::string before;  // the whole of it
};

struct Note {
  std::string boot;
  std::string verb;
  std::vector<NotedFile> files;
};

std::string text_of(const Note& note) {
  Text text;
  text << note.boot << ' ' << note.verb << '\n';
  for (const NotedFile& file : note.files) {
    text << label_of(file.band) << ' ' << file.sum << ' ' << word_of(file.before) << '\n';
  }
  return text.str();
}

std::optional<Note> parse_note(const std::string& text) {
  const std::vector<std::string> lines = lines_of(text);
  const std::vector<std::string> head = lines.empty() ? lines : words_of(lines.front());
  if (head.size() != 2) return std::nullopt;
  Note note = {head[0], head[1], {}};
  for (size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> words = words_of(lines[i]);
    const std::optional<Band> band = words.size() == 3 ? parse_band(words[0]) : std::nullopt;
    const std::optional<std::string> before = band ? text_of_word(words[2]) : std::nullopt;
    if (!before) return std::nullopt;
    note.files.push_back({*band, words[1], *before});
  }
  return note;
}

std::optional<Note> read_note() {
  const std::optional<std::string> text = read_state_file(place::kFiling, kFormat, kVersion);
  const std::optional<Note> note = text ? parse_note(*text) : std::nullopt;
  return note && note->boot == this_boot() ? note : std::nullopt;
}

bool is_written(const NotedFile& file) {
  const std::optional<std::string> bytes = read_bytes(dat_path_of(file.band));
  return bytes && sum_of(*bytes) == file.sum;
}

// With what was known of the settings in force, and an entry: the one of the write is there already.
bool is_put_back(const NotedFile& file, Report& report) {
  const auto now = parse_dat_file(file.band).value_or(std::vector<wifimgr_attr_record>());
  if (!restore_applied(file.band, report) || !keep_applied(file.band, FileIs::kChanging, report)) return false;
  const Entry entry =
      begin_quiet_entry(file.band, Deed::kSave, changes_between(now, parse_dat_text(file.before)), report);
  const bool is_done =
      restore_dat_file(file.band, file.before, report) && keep_applied(file.band, FileIs::kSettled, report);
  finish_quiet_entry(entry, is_done ? kDone : kRefused, report);
  return is_done;
}

}  // namespace

bool begin_filing(const std::string& verb, const std::vector<FileToCome>& files, Report& report) {
  if (files.size() < 2) return true;
  Note note = {this_boot(), verb, {}};
  for (const FileToCome& file : files) {
    note.files.push_back({file.band, sum_of(file.text), read_bytes(dat_path_of(file.band)).value_or("")});
  }
  return write_state_file(place::kFiling, kFormat, kVersion, text_of(note), report);
}

bool end_filing(Report& report) {
  if (remove_state_file(place::kFiling)) return true;
  report.problem({std::string("cannot remove ") + place::kFiling + ": " + std::strerror(errno),
                  "remove it, or the dat files are put back"});
  return false;
}

namespace {

void note_damaged(Report& report) {
  if (!is_state_file_damaged(place::kFiling, kFormat, kVersion)) return;
  report.note(std::string("what ") + place::kFiling +
              " says of a wlanctl that ended between the writes of both dat files is damaged; look with wlanctl diff "
              "whether the dat files are as they should be");
}

}  // namespace

void take_back_filing(Report& report) {
  if (!is_state_file_there(place::kFiling)) return;
  std::optional<ToolLock> lock;
  if (!ToolLock::is_held_here()) {
    lock.emplace();
    if (!*lock) return;
  }
  const std::optional<Note> note = read_note();
  note_damaged(report);
  for (const NotedFile& file : note ? note->files : std::vector<NotedFile>()) {
    if (!is_written(file)) continue;
    if (!is_put_back(file, report)) return;
    report.note("wlanctl " + note->verb + " did not write both dat files; " + dat_path_of(file.band) + " is put back");
  }
  (void)end_filing(report);
}

void tell_filing(Band band, Report& report) {
  note_damaged(report);
  const std::optional<Note> note = is_state_file_there(place::kFiling) ? read_note() : std::nullopt;
  for (const NotedFile& file : note ? note->files : std::vector<NotedFile>()) {
    if (file.band != band) continue;
    report.note("wlanctl " + note->verb +
                " is writing both dat files, or ended in the middle; then the next wlanctl that changes something puts "
                "back what it had written");
  }
}

}  // namespace wlanctl
