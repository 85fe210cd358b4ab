#include "wlanctl/store/storing_note.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>

#include "wlanctl/base/report.h"
#include "wlanctl/files/lock.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/files/word_text.h"
#include "wlanctl/keys/key.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {
namespace {

constexpr char kFormat[] = "wlanctl-storing";
constexpr int kVersion = 1;

struct Note {
  std::string boot;
  std::string verb;
  std::vector<NotedBand> changes;
};

std::string text_in(const char* field, size_t size) {
  return {field, strnlen(field, size)};
}

wifimgr_attr_record* find_record(std::vector<wifimgr_attr_record>& table, const std::string& key) {
  const auto record = std::find_if(table.begin(), table.end(), [&](const wifimgr_attr_record& one) {
    return text_in(one.key, sizeof one.key) == key;
  });
  return record == table.end() ? nullptr : &*record;
}

void put_into(char* field, const std::string& value) {
  std::memset(field, 0, WIFIMGR_FIELD_SIZE);
  std::copy_n(value.begin(), std::min<size_t>(value.size(), WIFIMGR_FIELD_SIZE), field);
}

// 0 for none.
int ssid_of(const NotedField& change) {
  int index = 0;
  const Key* const key = find_dat_key(change.key, &index);
  if (key == nullptr || key->scope != Scope::kSsid) return 0;
  return key->numbering == Numbering::kShared ? change.field + 1 : index;
}

std::string text_of(const Note& note) {
  Text text;
  text << note.boot << ' ' << note.verb << '\n';
  for (const NotedBand& band : note.changes) {
    for (const NotedField& field : band.fields) {
      text << label_of(band.band) << ' ' << word_of(field.key) << ' ' << field.field << ' ' << word_of(field.before);
      for (const std::string& value : field.becomes) text << ' ' << word_of(value);
      text << '\n';
    }
  }
  return text.str();
}

std::optional<NotedField> parse_field(const std::vector<std::string>& words) {
  const std::optional<std::string> key = text_of_word(words[1]);
  const std::optional<int64_t> number = number_in(words[2]);
  const std::optional<std::string> before = text_of_word(words[3]);
  if (!key || !number || *number < 0 || *number >= WIFIMGR_FIELDS || !before) return std::nullopt;
  NotedField field = {*key, static_cast<int>(*number), *before, {}};
  for (size_t i = 4; i < words.size(); ++i) {
    const std::optional<std::string> value = text_of_word(words[i]);
    if (!value) return std::nullopt;
    field.becomes.push_back(*value);
  }
  return field;
}

std::optional<Note> parse_note(const std::string& text) {
  Note note;
  const std::vector<std::string> lines = lines_of(text);
  const std::vector<std::string> head = lines.empty() ? lines : words_of(lines.front());
  if (head.size() != 2) return std::nullopt;
  note.boot = head[0];
  note.verb = head[1];
  for (const Band band : kBands) note.changes.push_back({band, {}});
  for (size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> words = words_of(lines[i]);
    const std::optional<Band> band = words.size() > 4 ? parse_band(words[0]) : std::nullopt;
    const std::optional<NotedField> field = band ? parse_field(words) : std::nullopt;
    if (!field) return std::nullopt;
    note.changes[static_cast<size_t>(number_of(*band))].fields.push_back(*field);
  }
  std::erase_if(note.changes, [](const NotedBand& band) { return band.fields.empty(); });
  return note;
}

bool is_storing_noted() {
  return is_state_file_there(place::kStoring);
}

std::optional<Note> read_note() {
  const std::optional<std::string> text = read_state_file(place::kStoring, kFormat, kVersion);
  return text ? parse_note(*text) : std::nullopt;
}

// Of one band. False where its store cannot be had. One that is gone has taken with it what was set.
bool put_back_band(const std::string& verb, const NotedBand& band, Report& report) {
  if (!has_store(band.band)) return true;
  Report unheard;
  const int count = open_store(band.band, unheard, Content::kToCome) ? put_back_noted(band.band, band.fields) : -1;
  const std::string what = "wlanctl " + verb + " ended in the middle of storing settings of " + label_of(band.band);
  if (count < 0) {
    report.note(what + ", and they cannot be put back: its store is not to be had");
  } else if (count == 0) {
    report.note(what + "; nothing of it is in the store");
  } else {
    report.note(what + "; what it had set is put back, " + count_of(static_cast<size_t>(count), "value"));
  }
  return count >= 0;
}

}  // namespace

void add_changes(const std::vector<wifimgr_attr_record>& from, const std::vector<wifimgr_attr_record>& to,
                 std::vector<NotedField>* fields) {
  for (size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
    if (std::memcmp(&from[i], &to[i], sizeof from[i]) == 0) continue;
    const std::string key = text_in(to[i].key, sizeof to[i].key);
    for (int at = 0; at < WIFIMGR_FIELDS; ++at) {
      const std::string before = text_in(from[i].field[at], WIFIMGR_FIELD_SIZE);
      const std::string after = text_in(to[i].field[at], WIFIMGR_FIELD_SIZE);
      if (before == after) continue;
      const auto known = std::find_if(fields->begin(), fields->end(),
                                      [&](const NotedField& one) { return one.key == key && one.field == at; });
      NotedField& field = known != fields->end() ? *known : fields->emplace_back(NotedField{key, at, before, {}});
      field.becomes.push_back(after);
    }
  }
}

bool are_all_stored(Band band, const std::vector<NotedField>& fields) {
  std::vector<wifimgr_attr_record> table = table_of_store(band);
  return std::all_of(fields.begin(), fields.end(), [&](const NotedField& field) {
    const wifimgr_attr_record* const record = find_record(table, field.key);
    return record != nullptr && text_in(record->field[field.field], WIFIMGR_FIELD_SIZE) == field.becomes.back();
  });
}

void store_unserved(Band band, const std::vector<NotedField>& fields, int served) {
  const StoreLock lock(band);
  if (!lock) return;
  std::vector<wifimgr_attr_record> table = lock.table();
  for (const NotedField& change : fields) {
    wifimgr_attr_record* const record = ssid_of(change) > served ? find_record(table, change.key) : nullptr;
    if (record == nullptr) continue;
    char* const field = record->field[change.field];
    if (text_in(field, WIFIMGR_FIELD_SIZE) == change.before) put_into(field, change.becomes.back());
  }
  (void)lock.replace(table);
}

int put_back_noted(Band band, const std::vector<NotedField>& fields) {
  const StoreLock lock(band);
  if (!lock) return -1;
  std::vector<wifimgr_attr_record> table = lock.table();
  int count = 0;
  for (const NotedField& change : fields) {
    wifimgr_attr_record* const record = find_record(table, change.key);
    if (record == nullptr) continue;
    char* const field = record->field[change.field];
    const std::string now = text_in(field, WIFIMGR_FIELD_SIZE);
    const bool is_ours = std::find(change.becomes.begin(), change.becomes.end(), now) != change.becomes.end();
    if (now == change.before || !is_ours) continue;
    put_into(field, change.before);
    ++count;
  }
  return count == 0 || lock.replace(table) ? count : -1;
}

bool note_storing(const std::string& verb, const std::vector<NotedBand>& changes, Report& report) {
  return write_state_file(place::kStoring, kFormat, kVersion, text_of({this_boot(), verb, changes}), report);
}

bool forget_storing(Report& report) {
  if (remove_state_file(place::kStoring)) return true;
  report.problem({std::string("cannot remove ") + place::kStoring + ": " + std::strerror(errno),
                  "remove it, or what was stored is put back"});
  return false;
}

namespace {

void note_damaged(Report& report) {
  if (!is_state_file_damaged(place::kStoring, kFormat, kVersion)) return;
  report.note(std::string("what ") + place::kStoring +
              " says of a wlanctl that ended in the middle is damaged; look whether the settings are as they should");
}

}  // namespace

void finish_storing(Report& report) {
  if (!is_storing_noted()) return;
  std::optional<ToolLock> lock;
  if (!ToolLock::is_held_here()) {
    lock.emplace();
    if (!*lock) return;
  }
  const std::optional<Note> note = read_note();
  if (note && note->boot == this_boot()) {
    std::vector<NotedBand> left;
    for (const NotedBand& band : note->changes) {
      if (!put_back_band(note->verb, band, report)) left.push_back(band);
    }
    if (!left.empty() && note_storing(note->verb, left, report)) return;
  }
  note_damaged(report);
  (void)forget_storing(report);
}

void drop_storing(Band band) {
  std::optional<Note> note = is_storing_noted() ? read_note() : std::nullopt;
  if (!note) return;
  std::erase_if(note->changes, [&](const NotedBand& changes) { return changes.band == band; });
  Report unheard;
  if (note->changes.empty() || !note_storing(note->verb, note->changes, unheard)) (void)forget_storing(unheard);
}

void tell_storing(Band band, Report& report) {
  note_damaged(report);
  const std::optional<Note> note = is_storing_noted() ? read_note() : std::nullopt;
  if (!note || note->boot != this_boot()) return;
  for (const NotedBand& changes : note->changes) {
    if (changes.band != band) continue;
    report.note("wlanctl " + note->verb + " is storing settings of " + label_of(band) +
                ", or ended in the middle; then the next wlanctl that changes something puts back what it had set");
  }
}

}  // namespace wlanctl
