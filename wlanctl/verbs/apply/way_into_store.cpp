#include "wlanctl/verbs/apply/way_into_store.h"

#include "wifimgr_lib.h"
#include "wlanctl/base/report.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"

namespace wlanctl {

namespace {

void note_until_then(Band band, Report& report) {
  report.note(std::string(label_of(band)) +
              ": until then a save or an apply of the live store writes the dat file without it");
}

}  // namespace

void tell_restart(Band band, const std::string& what, Report& report) {
  const std::string label = label_of(band);
  report.text() << "  " << dat_path_of(band) << " has " << what << "; the live store has no room for it.\n"
                << "  It comes with a reboot or, without one, with these steps in their order:\n"
                << "    1. stop the management processes, which hold the store\n"
                << "    2. ipcrm -M " << segment_key_of(band) << '\n'
                << "    3. wlanctl apply " << label << " --again   (makes the new store, with room)\n"
                << "    4. start the management processes\n";
  note_until_then(band, report);
}

std::string tell_way_into_store(Band band, const std::string& what, size_t records, Report& report) {
  std::string again = std::string("wlanctl apply ") + label_of(band) + " --again";
  if (!is_store_there(band)) {
    report.text() << "  " << again << " makes the live store of it, and brings it into force\n";
    return again;
  }
  if (size_of_store(band) < (records + 1) * sizeof(wifimgr_attr_record)) {
    tell_restart(band, what, report);
    return "";
  }
  std::string revert = std::string("wlanctl revert ") + label_of(band);
  report.text() << "  " << revert << " takes it into the live store,\n  " << again << " brings it into force\n";
  note_until_then(band, report);
  return revert;
}

}  // namespace wlanctl
