#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "fuzz/tool_stand.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"
#include "wlanctl/apply/applied_state.h"
#include "wlanctl/base/json_print.h"
#include "wlanctl/confirm/outlived.h"
#include "wlanctl/confirm/pending.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/record_text.h"
#include "wlanctl/files/state_file.h"
#include "wlanctl/library/detached_store.h"
#include "wlanctl/store/private_store.h"
#include "wlanctl/store/segment.h"
#include "wlanctl/store/storing_note.h"

namespace {

using fuzz::Bytes;
using fuzz::require;
using fuzz::Table;
using namespace wlanctl;

constexpr char kFormat[] = "wlanctl-fuzzed";
constexpr int kVersion = 2;

// A field's bytes count up to the first NUL; all of them may be others.
bool is_same(const char* left, const char* right, size_t size) {
  return strnlen(left, size) == strnlen(right, size) && std::memcmp(left, right, strnlen(left, size)) == 0;
}

bool is_same(const Table& left, const Table& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](const auto& one, const auto& other) {
    if (!is_same(one.key, other.key, sizeof one.key)) return false;
    for (size_t i = 0; i < WIFIMGR_FIELDS; ++i) {
      if (!is_same(one.field[i], other.field[i], sizeof one.field[i])) return false;
    }
    return true;
  });
}

// Any bytes in records, also those that no loader would put there.
void try_records(Bytes bytes) {
  const std::string text(bytes.rest());
  if (const std::optional<Table> read = parse_records(text)) {
    const std::optional<Table> again = parse_records(text_of_records(*read));
    require(again && is_same(*again, *read), "records that were read are written and read again");
  }
  Table table(std::min<size_t>(text.size() / 64, 4));
  for (wifimgr_attr_record& record : table) {
    for (char& byte : record.key) byte = static_cast<char>(bytes.byte());
    for (auto& field : record.field) {
      const size_t length = bytes.byte() % (sizeof field + 1);
      for (size_t i = 0; i < length; ++i) field[i] = static_cast<char>(bytes.byte());
    }
  }
  const std::optional<Table> back = parse_records(text_of_records(table));
  require(back && is_same(*back, table), "records come back as they were written");
}

// Where, how, and the text.
void try_file(Bytes bytes) {
  const size_t where = static_cast<size_t>(bytes.byte()) * 256 + bytes.byte();
  const uint8_t change = bytes.byte();
  const std::string text(bytes.rest());
  const std::string path = "/tmp/state";
  Report report;
  require(write_state_file(path, kFormat, kVersion, text, report) && !report.has_problems(), "a file can be written");
  require(read_state_file(path, kFormat, kVersion) == text, "a file's text comes back");
  require(!read_state_file(path, kFormat, kVersion + 1), "another version's file is not read");
  require(!read_state_file(path, "wlanctl-fuzze", kVersion), "another format's file is not read");
  const std::string whole = sandbox::read_file(path);
  std::string damaged = whole;
  const size_t at = where % whole.size();
  switch (change % 4) {
    case 0:
      damaged.resize(at);
      break;
    case 1:
      damaged.insert(at, 1, static_cast<char>(change));
      break;
    case 2:
      damaged.erase(at, 1);
      break;
    default:
      damaged[at] = static_cast<char>(damaged[at] ^ change);
  }
  (void)fuzz::file_with("state", damaged);
  if (damaged != whole) require(!read_state_file(path, kFormat, kVersion), "a damaged file is not read");
  // The bytes themselves, as if they were such a file.
  (void)fuzz::file_with("state", text);
  (void)read_state_file(path, kFormat, kVersion);
  require(remove_state_file(path) && remove_state_file(path), "a file is removed once");
}

bool is_same(const Pending& left, const Pending& right) {
  return left.band == right.band && left.phase == right.phase && left.deadline_ms == right.deadline_ms &&
         left.boot == right.boot && left.applied == right.applied && left.dat == right.dat;
}

void try_pending(Bytes bytes) {
  const uint8_t how = bytes.byte();
  const Band band = fuzz::band_by(how);
  const std::string text(bytes.rest());
  if (const std::optional<Pending> read = parse_pending(band, text)) {
    const std::optional<Pending> again = parse_pending(band, text_of(*read));
    require(again && is_same(*again, *read), "what waits is written and read again");
    require(text.ends_with(read->applied + read->dat), "nothing of it is lost");
    const Band other = band == Band::k2_4G ? Band::k5G : Band::k2_4G;
    require(!parse_pending(other, text), "it is one band's");
  }
  Pending pending;
  pending.band = band;
  pending.phase = static_cast<Phase>(how / 2 % 4);
  for (int i = 0; i < 8; ++i) {
    pending.deadline_ms = static_cast<int64_t>(static_cast<uint64_t>(pending.deadline_ms) << 8U | bytes.byte());
  }
  pending.boot = this_boot();
  pending.applied = bytes.text();
  pending.dat = bytes.rest();
  const std::optional<Pending> back = parse_pending(band, text_of(pending));
  require(back && is_same(*back, pending), "what waits comes back as it was written");
  Report report;
  keep_over_boot(pending, report);
  const std::optional<Pending> kept = kept_over_boot(band);
  require(kept && is_same(*kept, pending), "what outlives a boot comes back as it was written");
  require(interrupted(band).has_value(), "of this boot, what nobody waits for any more was cut off");
  require(forget_over_boot(band, report) && !kept_over_boot(band), "what is forgotten is not there");
}

// What is in force, as the library and the tool know it.
void try_applied(Bytes bytes) {
  const Band band = fuzz::band_by(bytes.byte());
  static const Table tables[] = {{}, {}};
  const DetachedStore store(band, tables[number_of(band)]);
  const std::string before = applied_text(band);
  std::string text(bytes.rest());
  // The snapshot's bytes in full are more than an input has: what is left out is as it was.
  if (const size_t mark = text.find('@'); mark != std::string::npos) {
    text.replace(mark, 1, before.substr(0, before.find('\n')));
  }
  if (!adopt_applied(band, text)) {
    require(applied_text(band) == before, "what is not believable changes nothing");
    return;
  }
  const std::string adopted = applied_text(band);
  (void)fuzz::heard([&] { (void)weigh(band); });
  require(adopt_applied(band, adopted) && applied_text(band) == adopted, "what is in force is written and read again");
}

// Settings that are stored and, as their wlanctl was killed, put back by the next.
void try_storing(Bytes bytes) {
  constexpr int kMost = 6;
  const uint8_t how = bytes.byte();
  const Band band = fuzz::band_by(how);
  const PrivateStore store(band, fuzz::open_full_store(band));
  const Table before = table_of_store(band);
  Table after = before;
  std::vector<NotedField> fields;
  for (int i = 0; i < kMost && !bytes.is_empty(); ++i) {
    const Table from = after;
    wifimgr_attr_record& record = after[static_cast<size_t>(bytes.byte()) * 2 % after.size()];
    char(&field)[WIFIMGR_FIELD_SIZE] = record.field[bytes.byte() % WIFIMGR_FIELDS];
    const std::string text = bytes.text();
    std::memset(field, 0, sizeof field);
    std::memcpy(field, text.data(), std::min(text.size(), sizeof field));
    add_changes(from, after, &fields);
  }
  Report report;
  require(note_storing("fuzz", {{band, fields}}, report), "a note can be written");
  require(replace_store(band, after), "settings can be stored");
  finish_storing(report);
  require(is_same(table_of_store(band), before), "what was set is put back");
  require(access(place::kStoring, F_OK) != 0, "what was put back is noted no more");
  // Any other text in its place.
  require(write_state_file(place::kStoring, "wlanctl-storing", 1, this_boot() + " fuzz\n" + std::string(bytes.rest()),
                           report),
          "a note can be written");
  (void)fuzz::told_by([&](Report& told) {
    tell_storing(band, told);
    finish_storing(told);
    return kDone;
  });
  require(access(place::kStoring, F_OK) != 0, "a note is gone when it was read");
}

// A document of the input's texts; how deep, and what comes next, say its bytes.
Json json_of(Bytes& bytes, int depth) {
  const uint8_t kind = bytes.byte();
  switch (depth == 0 ? 0 : kind % 6) {
    case 1: {
      Json array = Json::array();
      for (int i = kind / 6 % 8; i > 0; --i) array.push_back(json_of(bytes, depth - 1));
      return array;
    }
    case 2: {
      Json object = Json::object();
      for (int i = kind / 6 % 8; i > 0; --i) {
        const std::string name = bytes.text();
        object[name] = json_of(bytes, depth - 1);
      }
      return object;
    }
    case 3:
      return static_cast<long long>(static_cast<uint64_t>(kind) << 56U | bytes.byte());
    case 4:
      return kind / 6 % 2 != 0;
    case 5:
      return nullptr;
    default:
      return bytes.text();
  }
}

void require_same(const nlohmann::json& parsed, const Json& value) {
  switch (value.kind()) {
    case Json::Kind::kNull:
      return require(parsed.is_null(), "null stays null");
    case Json::Kind::kTruth:
      return require(parsed.is_boolean() && parsed == (value.number() != 0), "a truth stays one");
    case Json::Kind::kNumber:
      return require(parsed.is_number_integer() && parsed == value.number(), "a number stays the same");
    case Json::Kind::kText:
      require(parsed.is_string(), "a text stays one");
      if (fuzz::is_utf8(value.text())) require(parsed == value.text(), "a text stays the same");
      return;
    case Json::Kind::kArray:
      require(parsed.is_array() && parsed.size() == value.items().size(), "an array keeps its items");
      for (size_t i = 0; i < value.items().size(); ++i) require_same(parsed[i], value.items()[i]);
      return;
    case Json::Kind::kObject:
      require(parsed.is_object(), "an object stays one");
      // Two names may look the same once their bytes are replaced.
      if (!std::all_of(value.names().begin(), value.names().end(), fuzz::is_utf8)) return;
      for (size_t i = 0; i < value.items().size(); ++i) require_same(parsed.at(value.names()[i]), value.items()[i]);
  }
}

void try_json(Bytes bytes) {
  constexpr int kDepth = 5;
  const Json value = json_of(bytes, kDepth);
  for (const Layout layout : {Layout::kOnOneLine, Layout::kIndented}) {
    const std::string text = printed(value, layout);
    fuzz::require_json(text);
    require(layout == Layout::kIndented || text.find('\n') == std::string::npos, "one line is one line");
    require_same(nlohmann::json::parse(text), value);
  }
}

}  // namespace

// A byte for what it is, and its bytes.
void fuzz::try_wlanctl_state(std::string_view input) {
  static const bool is_set = setenv("WLANCTL_FOLDER", "/tmp", 1) == 0;
  require(is_set, "what outlives a boot has a folder");
  Bytes bytes(input);
  switch (bytes.byte() % 6) {
    case 0:
      return try_records(bytes);
    case 1:
      return try_file(bytes);
    case 2:
      return try_pending(bytes);
    case 3:
      return try_applied(bytes);
    case 4:
      return try_storing(bytes);
    default:
      return try_json(bytes);
  }
}
