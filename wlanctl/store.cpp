#include "wlanctl/store.h"

#include <sys/sem.h>
#include <sys/shm.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "wlanctl/guardian.h"
#include "wlanctl/library_messages.h"

namespace wlanctl {
namespace {

constexpr key_t kSegments[] = {0x12345, 0x12346};
constexpr key_t kSemaphores[] = {0x12348, 0x12349};

char*& address_of(Band band) {
  return band == Band::k2_4G ? shm_addr_2_4g : shm_addr_5g;
}

int segment_of(Band band) {
  return shmget(kSegments[number_of(band)], 0, 0666);
}

size_t size_of_segment(Band band) {
  shmid_ds status = {};
  return shmctl(segment_of(band), IPC_STAT, &status) == 0 ? status.shm_segsz : 0;
}

// The band's lock, taken for one step.
class StoreLock {
 public:
  explicit StoreLock(Band band) : id_(semget(kSemaphores[number_of(band)], 1, 0666)) {
    held_ = id_ >= 0 && semaphore_p(id_) == 0;
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  ~StoreLock() {
    if (held_) (void)semaphore_v(id_);
  }
  explicit operator bool() const { return held_; }

 private:
  int id_;
  bool held_;
};

std::string without_line_end(const char* text, size_t most) {
  std::string value(text, strnlen(text, most));
  return value.substr(0, value.find_first_of("\r\n"));
}

StoreRecord shown(const wifimgr_attr_record& record) {
  StoreRecord shown;
  shown.key = without_line_end(record.key, sizeof record.key);
  for (const auto& field : record.field) shown.fields.push_back(without_line_end(field, sizeof field));
  while (!shown.fields.empty() && shown.fields.back().empty()) shown.fields.pop_back();
  return shown;
}

}  // namespace

bool open_store(Band band, Report& report) {
  if (address_of(band) != nullptr) return true;
  const int segment = segment_of(band);
  if (segment >= 0) {
    void* const address = shmat(segment, nullptr, 0);
    if (address != reinterpret_cast<void*>(-1)) {
      address_of(band) = static_cast<char*>(address);
      recover_pending(band, report);
      return true;
    }
    report.problem({std::string("the store of ") + label_of(band) + " cannot be attached: " + std::strerror(errno),
                    "run as the user of the management processes",
                    {{"band", label_of(band)}}});
    return false;
  }
  clear_messages();
  if (wifimgr_lib_init(number_of(band)) == 0) return true;
  report.problem({std::string("there is no store of ") + label_of(band) + ", and none can be made: " + first_reason(),
                  "is " + dat_path_of(band) + " there, and writable?",
                  {{"band", label_of(band)}}});
  return false;
}

std::string dat_path_of(Band band) {
  return band == Band::k2_4G ? dat_path_2_4g : dat_path_5g;
}

std::vector<StoreRecord> records_of_store(Band band) {
  return records_of_file(table_of_store(band));
}

std::vector<wifimgr_attr_record> table_of_store(Band band) {
  std::vector<wifimgr_attr_record> records;
  const StoreLock lock(band);
  const auto* const table = reinterpret_cast<const wifimgr_attr_record*>(address_of(band));
  const size_t room = size_of_segment(band) / sizeof *table;
  for (size_t i = 0; i < room && table[i].key[0] != '\0'; ++i) records.push_back(table[i]);
  return records;
}

std::optional<std::vector<wifimgr_attr_record>> parse_dat_file(Band band) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(dat_path_of(band).c_str(), "re"), std::fclose);
  if (!file) return std::nullopt;
  std::vector<wifimgr_attr_record> records;
  for (char line[WIFIMGR_DAT_LINE_SIZE]; std::fgets(line, sizeof line, file.get()) != nullptr;) {
    wifimgr_attr_record record = {};
    if (parse_data_from_line(line, &record) == 0) records.push_back(record);
  }
  return records;
}

std::vector<StoreRecord> records_of_file(const std::vector<wifimgr_attr_record>& parsed) {
  std::vector<StoreRecord> records;
  for (const wifimgr_attr_record& record : parsed) records.push_back(shown(record));
  return records;
}

PrivateStore::PrivateStore(Band band) : band_(band), live_(address_of(band)), copy_(size_of_segment(band)) {
  {
    const StoreLock lock(band);
    std::memcpy(copy_.data(), live_, copy_.size());
  }
  address_of(band) = copy_.data();
}

// As large as the segment at least: the library asks the system how much room there is.
PrivateStore::PrivateStore(Band band, const std::vector<wifimgr_attr_record>& content)
    : band_(band),
      live_(address_of(band)),
      copy_(std::max(size_of_segment(band), (content.size() + 1) * sizeof(wifimgr_attr_record))) {
  std::memcpy(copy_.data(), content.data(), content.size() * sizeof(wifimgr_attr_record));
  address_of(band) = copy_.data();
}

PrivateStore::~PrivateStore() {
  address_of(band_) = live_;
}

bool replace_store(Band band, const std::vector<wifimgr_attr_record>& content) {
  const size_t room = size_of_segment(band);
  const size_t used = content.size() * sizeof(wifimgr_attr_record);
  if (used + sizeof(wifimgr_attr_record) > room) return false;
  const StoreLock lock(band);
  if (!lock) return false;
  std::memcpy(address_of(band), content.data(), used);
  std::memset(address_of(band) + used, 0, room - used);
  return true;
}

std::optional<std::string> read_value(Band band, const Key& key, int index) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  // A key of an index of its own has one value.
  const int field = key.numbering == Numbering::kShared ? index : -1;
  if (read_attr(number_of(band), field, dat_key_of(key, index).c_str(), text, sizeof text) != 0) return std::nullopt;
  return without_line_end(text, sizeof text);
}

int ssid_count(Band band) {
  char text[WIFIMGR_VALUE_SIZE] = "";
  (void)wifimgr_lib_get_bssidnum(number_of(band), -1, text, sizeof text);
  const long count = std::strtol(text, nullptr, 10);
  return count < 0 ? 0 : static_cast<int>(std::min(count, static_cast<long>(WIFIMGR_FIELDS)));
}

Json json_value(const Key& key, const std::string& value) {
  if (key.holds_numbers() && !value.empty() && value.size() < 16 &&
      value.find_first_not_of("0123456789") == std::string::npos) {
    return std::stoll(value);
  }
  return json_text(value);
}

}  // namespace wlanctl
