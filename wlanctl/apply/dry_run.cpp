#include "wlanctl/apply/dry_run.h"

#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/text.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/library/file_redirect.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"

namespace wlanctl {
namespace {

// What the library and the tool keep of a band in this process, put back at the end.
class ProcessState {
 public:
  explicit ProcessState(Band band)
      : band_(band), applied_(applied_text(band)), command_flags_{_11N_CMDflag, _11AC_CMDflag} {}
  ProcessState(const ProcessState&) = delete;
  ProcessState& operator=(const ProcessState&) = delete;
  ~ProcessState() {
    (void)adopt_applied(band_, applied_);
    _11N_CMDflag = command_flags_[0];
    _11AC_CMDflag = command_flags_[1];
  }

 private:
  Band band_;
  std::string applied_;
  int32_t command_flags_[2];
};

}  // namespace

std::optional<DryRun> dry_run(Band band, bool always_commit, Report& report) {
  const ProcessState as_before(band);
  const std::string before = read_bytes(dat_path_of(band)).value_or("");
  const MemoryFile dat(before);
  const MemoryFile script;
  // The one command line whose effect the library reads again: the bus as the line would have copied it.
  const MemoryFile devices(read_bytes("/proc/bus/pci/devices").value_or(""));
  if (!dat || !script || !devices) {
    report.problem({"no memory for a dry run", "stop something, and try again", about(band)});
    return std::nullopt;
  }
  const PrivateStore copy(band);
  const DatRedirect dat_redirect(band, dat);
  const FileRedirect file_redirect({{script_path_of(band), &script}, {"/tmp/devices", &devices}});
  const ShellScope recorder(ShellMode::kRecord);
  ShellScope::lines().clear();

  make_consistent(band, report);
  std::optional<Applied> applied = bring_into_force(band, always_commit, report);
  if (!applied) return std::nullopt;
  return DryRun{std::move(*applied), ShellScope::lines(), changed_lines(lines_of(before), lines_of(dat.text()))};
}

}  // namespace wlanctl
