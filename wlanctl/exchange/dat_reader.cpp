#include "wlanctl/exchange/dat_reader.h"

#include <algorithm>
#include <map>

#include "wlanctl/check/dat_text.h"
#include "wlanctl/check/loss.h"
#include "wlanctl/keys/dat_key.h"
#include "wlanctl/keys/secret_mask.h"

namespace wlanctl {
namespace {

class Reader {
 public:
  Reader(const std::string& bytes, Band band) : band_(band), dat_(read_dat_text(bytes)) {
    text_.format = "dat";
    text_.bands = {band};
    for (const DatFinding& finding : losses_at_load(bytes)) {
      if (severity_of(finding.kind) != Severity::kError || text_.is_hopeless()) continue;
      refuse(finding.line, finding.key, finding.reason);
    }
  }

  SettingsText read() {
    for (const DatLine& line : dat_.lines) {
      if (line.key == kSsidCount && !line.fields.empty()) count_ = number_in(line.fields[0]);
    }
    for (const DatLine& line : dat_.lines) {
      if (text_.is_hopeless()) break;
      const auto [first, is_new] = lines_.try_emplace(line.key, line.number);
      if (is_new) {
        read_line(line);
      } else {
        refuse(line.number, line.key, "line " + std::to_string(first->second) + " has it already");
      }
    }
    if (dat_.lines.empty() && text_.problems.empty()) {
      text_.problems.push_back({0, "there are no settings in it", "is it the right file?"});
    }
    if (unserved_ > 0) {
      text_.notes.push_back(count_of(unserved_, "value") + " behind the last SSID of the file " +
                            (unserved_ == 1 ? "is" : "are") + " nobody's, and left out");
    }
    return std::move(text_);
  }

 private:
  void refuse(int line, const std::string& dat_key, const std::string& reason) {
    Json details = about(band_);
    if (!dat_key.empty()) details["dat_key"] = dat_key;
    text_.problems.push_back({line, (dat_key.empty() ? "" : dat_key + ": ") + reason,
                              "wlanctl check --band " + std::string(label_of(band_)) + " tells more",
                              std::move(details)});
  }

  void read_line(const DatLine& line) {
    int index = 0;
    const Key* const key = find_dat_key(line.key, &index);
    if (count_ && is_left_out(line.key, static_cast<int>(std::clamp<int64_t>(*count_, 0, WIFIMGR_FIELDS)))) {
      ++unserved_;
    } else if (key == nullptr || !key->is_on(band_)) {
      add(line, {}, joined(line.fields, ";"));
    } else if (key->numbering != Numbering::kShared) {
      add(line, {key, index}, joined(line.fields, ";"));
    } else if (key->scope == Scope::kBand) {
      const bool is_whole = is_split_list(*key) || keeps_list_whole(line.key);
      const std::string first = line.fields.empty() ? "" : line.fields[0];
      add(line, {key, -1}, is_whole ? joined(line.fields, ";") : first);
    } else {
      read_fields(line, *key);
    }
  }

  // A value for each SSID. What is empty is none.
  void read_fields(const DatLine& line, const Key& key) {
    int index = 0;
    for (const std::string& field : line.fields) {
      ++index;
      if (index > WIFIMGR_FIELDS || (count_ && index > *count_)) {
        ++unserved_;
      } else {
        add(line, {&key, index}, field);
      }
    }
  }

  void add(const DatLine& line, const Target& target, const std::string& value) {
    FileSetting setting;
    setting.band = band_;
    setting.target = target;
    if (target.key == nullptr) setting.dat_key = line.key;
    const bool is_secret = target.key != nullptr ? target.key->secret : is_secret_dat_key(line.key);
    setting.is_left_out = is_secret && value == kSecretLeftOut;
    if (!setting.is_left_out) setting.value = value;
    setting.line = line.number;
    text_.settings.push_back(std::move(setting));
  }

  Band band_;
  DatText dat_;
  SettingsText text_;
  std::optional<int64_t> count_;
  std::map<std::string, int> lines_;
  size_t unserved_ = 0;
};

}  // namespace

SettingsText read_dat_settings(const std::string& bytes, Band band) {
  return Reader(bytes, band).read();
}

bool has_dat_setting(const std::string& bytes) {
  const DatText dat = read_dat_text(bytes);
  return std::any_of(dat.lines.begin(), dat.lines.end(), [](const DatLine& line) {
    int index = 0;
    return find_dat_key(line.key, &index) != nullptr;
  });
}

}  // namespace wlanctl
