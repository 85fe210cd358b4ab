#include "wlanctl/verbs/settings/import_to_file.h"

#include <utility>

#include "wlanctl/base/interrupt.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/signal_hold.h"
#include "wlanctl/confirm/filing.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/exchange/file_records.h"
#include "wlanctl/exchange/writer.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/store/added_records.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/verbs/apply/guarded_save.h"
#include "wlanctl/verbs/apply/way_into_store.h"
#include "wlanctl/verbs/settings/import_part.h"

namespace wlanctl {
namespace {

using Table = std::vector<wifimgr_attr_record>;

// What the dat file has or, where that is nothing, the store. None with a problem.
std::optional<Table> content_of(Band band, const Words& words, Report& report) {
  bool has_settings = false;
  if (is_store_there(band)) {
    if (!open_store(band, report, Content::kToCome)) return std::nullopt;
    has_settings = !StoreLock(band).is_empty();
    if (has_settings && !(words.dry_run ? look_at_band(band, report) : open_band(band, report))) return std::nullopt;
  }
  if (const std::string reason = reason_against_dat_file(band); !reason.empty()) {
    report.problem({unreadable_dat_file(band), "is it the right path?", about(band)});
    return std::nullopt;
  }
  Table file = parse_dat_text(read_bytes(dat_path_of(band)).value_or(""));
  return file.empty() && has_settings ? table_of_store(band) : std::move(file);
}

struct FileToBe {
  Table content;
  std::string text;  // of the same
  ImportPart part;
};

std::string text_of_store(Band band, Report& report) {
  Report said;
  std::string text = dat_of_settings(band, Secrets::kShown, said);
  for (const Problem& problem : said.problems()) {
    report.problem({problem.message, "leave it out of what is imported", problem.details});
  }
  return text;
}

// Judges them all; the exit code, with problems that say what is refused.
int judge_all(const SettingsText& text, const std::vector<Band>& bands, const Words& words,
              std::vector<FileToBe>* files, Report& report) {
  int code = kDone;
  for (const Band band : bands) {
    std::optional<Table> content = content_of(band, words, report);
    if (!content) code = worse_of(code, kNoStore);
    if (!content || refuse_undecided(band, report)) continue;
    const Table lacking = lacking_records(*content, text, band);
    content->insert(content->end(), lacking.begin(), lacking.end());
    const EnlargedStore store(band, *content);
    ImportPart part = judged_import(band, text, words, report);
    for (const wifimgr_attr_record& record : lacking) part.added.push_back(key_of(record));
    if (report.has_problems() || !put_into_file_store(part.plan, report)) continue;
    files->push_back({table_of_store(band), text_of_store(band, report), std::move(part)});
  }
  return code == kDone && report.has_problems() ? kRefused : code;
}

bool changes_nothing(const ImportPart& part) {
  return part.changes.empty() && part.added.empty();
}

int write_files(const std::vector<FileToBe>& files, bool force, Report& report) {
  std::vector<FileToCome> changed;
  for (const FileToBe& file : files) {
    if (!changes_nothing(file.part)) changed.push_back({file.part.band, file.text});
  }
  if (!begin_filing("import", changed, report)) return kRefused;

  for (const FileToBe& file : files) {
    if (changes_nothing(file.part)) continue;
    const EnlargedStore store(file.part.band, file.content);
    const int code = write_guarded(file.part.band, file.text, force, report);
    if (code == kDone) continue;
    take_back_filing(report);
    return code;
  }
  return end_filing(report) ? kDone : kRefused;
}

void tell(FileToBe& file, const Words& words, Report& report) {
  ImportPart& part = file.part;
  const std::string path = dat_path_of(part.band);
  tell_left(part, report);
  if (changes_nothing(part)) {
    report.text() << label_of(part.band) << ": nothing changes; " << path << " would have no more\n";
    return;
  }
  const size_t lines = part.added.size();
  tell_changes(part, words, " in\n  " + path + (lines == 0 ? "" : ",\n  with " + count_of(lines, "new line")), report);
  if (!words.dry_run) part.next = tell_way_into_store(part.band, "all of that", file.content.size(), report);
}

}  // namespace

int import_to_file(const SettingsText& text, const std::vector<Band>& bands, const Words& words, Report& report) {
  if (!words.dry_run) take_back_filing(report);
  std::vector<FileToBe> files;
  if (const int code = judge_all(text, bands, words, &files, report); code != kDone) return code;
  note_all(text, words, report);
  if (!words.dry_run) {
    const SignalHold hold;
    const InterruptAnswer answer("interrupted; the dat files are written first, and the result told");
    if (const int code = write_files(files, words.force, report); code != kDone) return code;
  }
  std::vector<ImportPart> parts;
  for (FileToBe& file : files) {
    tell(file, words, report);
    parts.push_back(file.part);
  }
  tell_data(words, text, parts, report);
  return kDone;
}

}  // namespace wlanctl
