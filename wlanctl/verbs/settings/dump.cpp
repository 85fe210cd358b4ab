// dump: the live store as it is.
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/command_line/common_words.h"
#include "wlanctl/confirm/recovery.h"
#include "wlanctl/keys/secret_mask.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/value.h"
#include "wlanctl/verbs/verbs.h"

namespace wlanctl {
namespace {

int dump(const Words& words, Report& report) {
  int code = kDone;
  Json bands = Json::array();
  for (const Band band : look_at_bands(bands_of(words.band), &code, report)) {
    Json records = Json::array();
    report.text() << label_of(band) << '\n';
    for (const StoreRecord& record : records_of(table_of_store(band))) {
      const bool is_masked = is_secret_dat_key(record.key) && !words.secrets;
      Json values = Json::array();
      std::string line;
      for (const std::string& field : record.fields) {
        const std::string shown = is_masked && !field.empty() ? kMasked : field;
        if (!values.empty()) line += ';';
        line += printable(shown);
        values.push_back(shown);
      }
      report.text() << "  " << printable(record.key) << '=' << line << '\n';
      records.push_back({{"key", record.key}, {"values", std::move(values)}});
    }
    bands.push_back({{"band", label_of(band)}, {"records", std::move(records)}});
  }
  report.data() = {{"bands", std::move(bands)}};
  return code;
}

constexpr Word kWords[] = {word::kBand, word::kSecrets};

}  // namespace

const Verb kDump = {"dump",
                    "Show the live store's records as they are",
                    "Examples:\n  wlanctl dump 2.4g | grep '  SSID'\n  wlanctl dump --json",
                    kWords,
                    dump,
                    {},
                    true};

}  // namespace wlanctl
