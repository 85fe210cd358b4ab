// Reading and changing one attribute of a band's store.
#include "store/band.h"
#include "store/key_family.h"
#include "store/lock.h"
#include "store/record.h"
#include "store/segment.h"
#include "store/sought_key.h"
#include "store/trace.h"

namespace {

constexpr int kFound = 2;
constexpr int kAbsent = 3;
constexpr int kBandWide = -1;

constexpr char kNoSuchAttribute[] = "The attr_name do not exist.";

constexpr bool is_ssid_index(int index) {
  return index >= 1 && index <= store::kFields;
}

const store::Record* record_at(const char* segment, int record) {
  if (record < 0 || static_cast<unsigned>(record) >= store::room_at(segment)) return nullptr;
  return reinterpret_cast<const store::Record*>(segment) + record;
}

store::Record* record_at(char* segment, int record) {
  return const_cast<store::Record*>(record_at(static_cast<const char*>(segment), record));
}

// What a caller with `len` bytes gets of `record`; null, or why not. An index outside 1 to 8 copies nothing and is no
// failure; deliberate, as the getters of an SSID beyond the eighth must succeed.
const char* copy_out(const store::Record& record, int index, char* buf, unsigned len) {
  if (store::is_single_value_key(record.key)) {
    const size_t length = strnlen(record.field[0], len < store::kFieldSize ? len : store::kFieldSize);
    std::memcpy(buf, record.field[0], length);
    std::memset(buf + length, 0, len - length);
    return nullptr;
  }
  if (len < store::kFieldSize + 1) return "The size of buffer is too small!";
  const int field = index == kBandWide ? 1 : index;
  if (is_ssid_index(field)) std::memcpy(buf, record.field[field - 1], store::kFieldSize);
  return nullptr;
}

}  // namespace

extern "C" int is_attr_exist(char* segment, const char* name, unsigned* index) {
  trace::enter_often(__func__);
  if (segment == nullptr || name == nullptr || index == nullptr) return trace::fail(__func__);
  const store::Record* const table = reinterpret_cast<const store::Record*>(segment);
  const store::Record* const found = store::SoughtKey(name).find(table, store::room_at(segment));
  if (found == nullptr) return trace::fail(__func__).as(kAbsent);
  *index = static_cast<unsigned>(found - table);
  return trace::success_often(__func__).as(kFound);
}

extern "C" int read_attr(int wifi_type, int index, const char* name, char* buf, unsigned len) {
  trace::enter_often(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (name == nullptr || buf == nullptr) return trace::fail(__func__);
  store::Record* const table = store::records(wifi_type);
  if (table == nullptr) return trace::fail(__func__, kNoSuchAttribute);

  const int semaphore = store::look_up_semaphore(wifi_type);
  if (semaphore_p(semaphore) != 0) return trace::fail(__func__, store::kPFailed);
  unsigned found = 0;
  const char* const refusal =
      is_attr_exist(table->key, name, &found) == kFound ? copy_out(table[found], index, buf, len) : kNoSuchAttribute;
  const int released = semaphore_v(semaphore);
  if (refusal != nullptr) return trace::fail(__func__, refusal);
  if (released != 0) return trace::fail(__func__, store::kVFailed);
  return trace::success_often(__func__);
}

extern "C" int update_attr(int wifi_type, int index, const char* name, const char* value) {
  trace::enter_often(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (name == nullptr || value == nullptr) return trace::fail(__func__);
  store::Record* const table = store::records(wifi_type);
  if (table == nullptr) return trace::fail(__func__, kNoSuchAttribute);

  const int semaphore = store::look_up_semaphore(wifi_type);
  if (semaphore_p(semaphore) != 0) return trace::fail(__func__, store::kChangePFailed);
  const char* refusal = nullptr;
  unsigned found = 0;
  if (is_attr_exist(table->key, name, &found) != kFound) {
    refusal = kNoSuchAttribute;
  } else if (index != kBandWide && !is_ssid_index(index)) {
    refusal = "The index is invalid.";
  } else {
    const int record = static_cast<int>(found);
    const int failed = index == kBandWide ? update_common_attr(table->key, record, name, value)
                                          : update_attr_by_ssid(table->key, record, index, name, value);
    if (failed != 0) refusal = "Modify the attr_value failed.";
  }
  const int released = semaphore_v(semaphore);
  if (refusal != nullptr) return trace::fail(__func__, refusal);
  if (released != 0) return trace::fail(__func__, store::kChangeVFailed);
  return trace::success_often(__func__);
}

// Fields 2 to 8 are never touched, so a band-wide change keeps what else the attribute holds; deliberate, the VHT
// settings write their list that way.
extern "C" int update_common_attr(char* segment, int record, const char* name, const char* value) {
  trace::enter_often(__func__);
  if (segment == nullptr || name == nullptr || value == nullptr) return trace::fail(__func__);
  store::Record* const changed = record_at(segment, record);
  if (changed == nullptr || !store::has_key(*changed, name)) return trace::fail(__func__);
  store::set_field(changed->field[0], value);
  return trace::success_often(__func__);
}

// A record with another key is left alone and still counts as a success; deliberate, as callers look it up first.
extern "C" int update_attr_by_ssid(char* segment, int record, int index, const char* name, const char* value) {
  trace::enter_often(__func__);
  if (segment == nullptr || name == nullptr || value == nullptr) return trace::fail(__func__);
  if (store::is_single_value_key(name)) {
    if (update_common_attr(segment, record, name, value) != 0) return trace::fail(__func__);
    return trace::success_often(__func__);
  }
  store::Record* const changed = record_at(segment, record);
  if (changed != nullptr && is_ssid_index(index) && store::has_key(*changed, name)) {
    store::set_field(changed->field[index - 1], value);
  }
  return trace::success_often(__func__);
}
