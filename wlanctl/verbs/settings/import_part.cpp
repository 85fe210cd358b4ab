#include "wlanctl/verbs/settings/import_part.h"

#include <utility>

#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/exchange/reader.h"

namespace wlanctl {

ImportPart judged_import(Band band, const SettingsText& text, const Words& words, Report& report) {
  Wishes wishes = wishes_of(text, words.file, band, words.to_file ? "in the dat file" : "in the store");
  if (words.replace) {
    for (Wish& wish : default_wishes(text, words.file, band)) wishes.wishes.push_back(std::move(wish));
  }
  ImportPart part = {band, std::move(wishes.left), {}, {}, {}, ""};
  Report said;
  part.plan = words.to_file ? try_for_file(band, wishes.wishes, words.force, said)
                            : try_out(band, wishes.wishes, Order::kAsNeeded, words.force, said);
  const std::string of_band = text.bands.size() > 1 ? std::string(label_of(band)) + ": " : "";
  for (const Problem& problem : said.problems()) report.problem(problem);
  for (const std::string& note : said.notes()) report.note(of_band + note);
  part.changes = changes_of(part.plan);
  return part;
}

void note_all(const SettingsText& text, const Words& words, Report& report) {
  for (const std::string& note : text.notes) report.note(place_in(words.file, 0) + ": " + note);
}

void tell_left(const ImportPart& part, Report& report) {
  for (const LeftAlone& one : part.left) report.note(place_in(one.file, one.line) + ": " + one.reason);
}

void tell_changes(const ImportPart& part, const Words& words, const std::string& where, Report& report) {
  report.text() << text_of(part.band, part.changes) << label_of(part.band) << ": "
                << count_of(part.changes.size(), "value") << (words.dry_run ? " would be stored" : " stored") << where
                << '\n';
}

void tell_data(const Words& words, const SettingsText& text, const std::vector<ImportPart>& parts, Report& report) {
  Json bands = Json::array();
  for (const ImportPart& part : parts) {
    Json left = Json::array();
    for (const LeftAlone& one : part.left) left.push_back(one.name);
    bands.push_back({{"band", label_of(part.band)},
                     {"changes", json_of(part.changes)},
                     {"left", std::move(left)},
                     {"added_records", part.added},
                     {"next", words.dry_run ? "" : part.next}});
  }
  report.data() = {{"file", name_of_file(words.file)},
                   {"format", text.format},
                   {"dry_run", words.dry_run},
                   {"in_file", words.to_file},
                   {"bands", std::move(bands)}};
}

}  // namespace wlanctl
