// The dat file, the folders that are written to, and the tool's own files.
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "wlanctl/apply/applied_state.h"
#include "wlanctl/apply/in_force.h"
#include "wlanctl/base/text.h"
#include "wlanctl/check/dat_check.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/confirm/taken_back.h"
#include "wlanctl/doctor/checks.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/store/dat_file.h"

namespace wlanctl {
namespace {

constexpr char kDatFile[] = "dat file";
constexpr char kApply[] = "apply";
constexpr char kRoom[] = "room";

// A dat file of all settings has some 16 KB, and what an apply keeps is twice that.
constexpr unsigned long long kLeastRoom = 64 * 1024;

bool may(const std::string& path, int access) {
  return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0;
}

size_t count_with(const std::vector<DatFinding>& findings, Severity severity) {
  return static_cast<size_t>(std::count_if(findings.begin(), findings.end(), [&](const DatFinding& finding) {
    return severity_of(finding.kind) == severity;
  }));
}

void check_content(Band band, const std::string& path, Diagnosis& diagnosis) {
  const std::optional<std::string> bytes = read_bytes(path);
  if (!bytes) return diagnosis.ill(Ill::kDatUnreadable, kDatFile, band, path);
  const std::string sized = path + ", " + count_of(bytes->size(), "byte");
  if (bytes->empty()) return diagnosis.ill(Ill::kDatEmpty, kDatFile, band, path);
  if (parse_dat_text(*bytes).empty()) return diagnosis.ill(Ill::kDatNoSettings, kDatFile, band, path);
  diagnosis.well(kDatFile, band, sized);
  diagnosis.add(bytes->back() != '\n', Ill::kDatUnended, kDatFile, band, "the last line of " + path);
  const std::vector<DatFinding> findings = check_dat(*bytes, {band});
  const size_t errors = count_with(findings, Severity::kError);
  const size_t warnings = count_with(findings, Severity::kWarning);
  if (errors > 0) diagnosis.ill(Ill::kDatErrors, kDatFile, band, count_of(errors, "error") + " in " + path);
  if (warnings > 0) diagnosis.ill(Ill::kDatDoubts, kDatFile, band, count_of(warnings, "warning") + " in " + path);
  if (errors + warnings == 0) diagnosis.well(kDatFile, band, "the lines of " + path);
}

void check_room(const std::string& folder, Diagnosis& diagnosis) {
  struct statvfs status;
  if (statvfs(folder.c_str(), &status) != 0) return;
  const unsigned long long free = static_cast<unsigned long long>(status.f_bavail) * status.f_frsize;
  diagnosis.add(free < kLeastRoom, Ill::kNoRoom, kRoom, std::nullopt,
                folder + ", " + std::to_string(free / 1024) + " KB free");
}

// Against what other users plant there; see what the library runs.
void check_protection(const char* setting, int wanted, Ill ill, Diagnosis& diagnosis) {
  const std::string path = std::string("/proc/sys/fs/") + setting;
  const std::optional<std::string> bytes = read_bytes(path);
  const std::string value = without_line_end(bytes.value_or(""));
  diagnosis.add(number_in(value).value_or(0) < wanted, ill, "/tmp", std::nullopt,
                std::string("fs.") + setting + (bytes ? " is " + value : " is not told"));
}

std::string folder_of(const std::string& path) {
  return path.substr(0, path.rfind('/'));
}

void check_pending(Band band, Diagnosis& diagnosis) {
  const std::string path = std::string(place::kPending) + label_of(band);
  const std::optional<Pending> pending = read_pending(band);
  if (is_way_back_damaged(band)) {
    return diagnosis.ill(Ill::kPendingDamaged, kApply, band, "what was kept over the boot");
  }
  if (!is_pending(band)) {
    const bool was_interrupted = interrupted(band).has_value();
    return diagnosis.add(was_interrupted, Ill::kInterrupted, kApply, band,
                         was_interrupted ? "what was kept over the boot" : "no apply waits");
  }
  if (const auto unreadable = pending ? std::nullopt : unreadable_state_file(path)) {
    return diagnosis.ill(Ill::kPending, kApply, band, path + ", which cannot be read" + because(unreadable->reason));
  }
  if (!pending) return diagnosis.ill(Ill::kPendingDamaged, kApply, band, path);
  if (pending->phase == Phase::kGoingBack) {
    return diagnosis.ill(Ill::kPending, kApply, band, path + ", and its roll back has begun");
  }
  if (pending->is_over()) return diagnosis.ill(Ill::kPendingOver, kApply, band, path);
  diagnosis.ill(Ill::kPending, kApply, band, path + ", " + count_of(pending->seconds_left(), "second") + " left");
}

}  // namespace

void check_dat_file(Band band, Diagnosis& diagnosis) {
  const std::string path = dat_path_of(band);
  struct stat status;
  if (stat(path.c_str(), &status) != 0) {
    return diagnosis.ill(errno == ENOENT ? Ill::kDatMissing : Ill::kDatUnreadable, kDatFile, band, path);
  }
  if (!S_ISREG(status.st_mode)) return diagnosis.ill(Ill::kDatNoFile, kDatFile, band, path);
  check_content(band, path, diagnosis);
  if (!may(path, W_OK)) diagnosis.ill(Ill::kDatUnwritable, kDatFile, band, path);
}

void check_folders(const std::vector<Band>& bands, Diagnosis& diagnosis) {
  diagnosis.add(!may("/tmp", W_OK | X_OK), Ill::kTmpUnwritable, "/tmp", std::nullopt, "/tmp");
  check_protection("protected_symlinks", 1, Ill::kTmpLinks, diagnosis);
  check_protection("protected_regular", 2, Ill::kTmpFiles, diagnosis);
  for (const Band band : bands) check_room(folder_of(dat_path_of(band)), diagnosis);
  check_room(place::kFolder, diagnosis);
}

void check_applies(Band band, Diagnosis& diagnosis) {
  check_pending(band, diagnosis);
  const std::string applied = std::string(place::kApplied) + label_of(band);
  const bool is_there = is_state_file_there(applied);
  const bool is_damaged = is_there && !kept_in_force(band) && !unreadable_state_file(applied);
  diagnosis.add(is_damaged, Ill::kStateDamaged, kApply, band, applied);
  if (is_taken_back_damaged(band)) {
    diagnosis.ill(Ill::kStateDamaged, kApply, band, std::string(place::kTakenBack) + label_of(band));
  }
  if (are_lacks_damaged(band)) {
    return diagnosis.ill(Ill::kStateDamaged, kApply, band, std::string(place::kLacking) + label_of(band));
  }
  const std::vector<Lack> lacks = lacks_of(band);
  for (const Lack& lack : lacks) diagnosis.ill(Ill::kNotInForce, kApply, band, text_of(lack));
  const bool is_told = was_told(band);
  if (!is_told) diagnosis.ill(Ill::kNotInForce, kApply, band, "the driver did not take all of it");
  // Where somebody has written the dat file since, nobody knows.
  const bool is_known = !is_there || is_in_force_known(band);
  if (lacks.empty() && is_told && is_known) diagnosis.well(kApply, band, "what was applied is in force");
}

}  // namespace wlanctl
