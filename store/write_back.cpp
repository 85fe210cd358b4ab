// Writing a band's dat file anew from its store.
#include <stdio_ext.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "store/band.h"
#include "store/dat_path.h"
#include "store/decimal.h"
#include "store/key_family.h"
#include "store/lock.h"
#include "store/record.h"
#include "store/segment.h"
#include "store/stream.h"
#include "store/trace.h"

namespace {

// Room for what a record can make; what may be written is far shorter.
constexpr size_t kMergedSize = size_t{store::kFields} * store::kFieldSize + 1;
constexpr size_t kComposedSize = store::kKeySize + sizeof "=" - 1 + kMergedSize + sizeof "\n" - 1;

constexpr int kLeaveOut = -1;

enum class Composed { kLine, kNothing, kMergeFailed };

constexpr char kMergeRefusal[] = "merge some values to one line failed.";

int clamp_to_fields(int count) {
  // cppcheck-suppress compareBoolExpressionWithInt
  return count < 0 ? 0 : count > store::kFields ? store::kFields : count;
}

// A key as it is at this moment, terminated whatever another process wrote.
struct Key {
  explicit Key(const store::Record& record) {
    std::memcpy(text, record.key, store::kKeySize);
    text[store::kKeySize] = '\0';
  }
  char text[store::kKeySize + 1];
};

// How many fields of a record belong into the file, or kLeaveOut when the whole record does not. The families compare
// differently because one counts its SSIDs from 1 and the other from 0. The exported functions trace, so only keys of
// their family are put to them.
int fields_to_write(const char* key, int ssid_count) {
  const unsigned ssids = ssid_count > 0 ? static_cast<unsigned>(ssid_count) : 0;
  unsigned number = 0;
  if (store::family_numbered_from_one(key) != nullptr && get_attr_num(key, key, &number) == 0) {
    return number > ssids ? kLeaveOut : 1;
  }
  if (store::family_numbered_from_zero(key) != nullptr && get_attr_num_extended(key, key, &number) == 0) {
    return number >= ssids ? kLeaveOut : 1;
  }
  return clamp_to_fields(ssid_count);
}

// The length of the line that compose_line makes of these fields, its line end included.
size_t line_length(const char* key, const store::Record& record, int fields) {
  size_t length = std::strlen(key) + sizeof "=" - 1;
  char last = '=';
  for (int i = 0; i < fields; ++i) {
    size_t field = strnlen(record.field[i], store::kFieldSize - 1);
    if (field == 0) break;
    if (i > 0) {
      ++length;
      last = ';';
    }
    if (record.field[i][field - 1] == '\n') --field;
    if (field > 0) last = record.field[i][field - 1];
    length += field;
  }
  return last == '\n' ? length : length + 1;
}

Composed compose_line(store::Record& record, int ssid_count, char (&line)[kComposedSize]) {
  const Key key(record);
  const int fields = fields_to_write(key.text, ssid_count);
  if (fields == kLeaveOut || key.text[0] == '\0') return Composed::kNothing;
  const size_t start = std::strlen(key.text) + sizeof "=" - 1;
  std::memcpy(line, key.text, start);
  line[start - 1] = '=';
  line[start] = '\0';
  if (merge_para(&record, line + start, fields) != 0) return Composed::kMergeFailed;
  const size_t length = start + std::strlen(line + start);
  if (line[length - 1] != '\n') std::memcpy(line + length, "\n", sizeof "\n");
  return Composed::kLine;
}

// The records of a band, up to the first empty key. The caller holds the band's lock.
struct Table {
  store::Record* first;
  store::Record* last;

  explicit Table(int band) : first(store::records(band)), last(first) {
    const unsigned room = store::room(band);
    for (unsigned i = 0; i < room && last->key[0] != '\0'; ++i) ++last;
  }
  store::Record* begin() const { return first; }
  store::Record* end() const { return last; }
};

// The loader takes at most 185 characters a line, so a longer one would come back as two.
bool are_loadable(int band, int ssid_count) {
  for (const store::Record& record : Table(band)) {
    const Key key(record);
    const int fields = fields_to_write(key.text, ssid_count);
    if (fields != kLeaveOut && line_length(key.text, record, fields) > store::kLineSize - 1) return false;
  }
  return true;
}

// What is still to be written is dropped: behind a part that was lost it would make another file of what is left.
bool give_up(std::FILE* file) {
  __fpurge(file);
  return false;
}

// A line that another process made too long since the check is written whole: cutting it would lose what it holds.
bool write_lines(int band, int ssid_count, std::FILE* file, const char*& refusal) {
  if (std::fputs("Default\n", file) < 0) return give_up(file);
  char line[kComposedSize];
  for (store::Record& record : Table(band)) {
    const Composed composed = compose_line(record, ssid_count, line);
    if (composed == Composed::kMergeFailed) {
      refusal = kMergeRefusal;
      return false;
    }
    if (composed == Composed::kLine && std::fputs(line, file) < 0) return give_up(file);
  }
  return std::fflush(file) == 0 || give_up(file);
}

// Everything that can refuse a save does so here, while the file still holds its old text.
const char* check_before_writing(int band, int ssid_count, int semaphore, bool& fits) {
  fits = false;
  if (semaphore_p(semaphore) != 0) return store::kPFailed;
  const bool loadable = are_loadable(band, ssid_count);
  if (semaphore_v(semaphore) != 0 && loadable) return store::kVFailed;
  fits = loadable;
  return nullptr;
}

// Another save may have written since this one opened the file; its longer text must not show behind this one's. What
// is no regular file has no length.
bool empty_again(std::FILE* file) {
  return ftruncate(fileno(file), 0) == 0 || errno == EINVAL;
}

// In place, with neither a temporary file nor a rename, so that a link or a bound file at this path stays one.
trace::Result rewrite(const char* function, int band, int ssid_count, int semaphore, store::Stream& file) {
  flockfile(file.get());
  std::rewind(file.get());
  const char* refusal = semaphore_p(semaphore) != 0 ? store::kPFailed : nullptr;
  bool written = false;
  if (refusal == nullptr) {
    written = empty_again(file.get()) && write_lines(band, ssid_count, file.get(), refusal);
    if (semaphore_v(semaphore) != 0 && written) refusal = store::kVFailed;
  }
  funlockfile(file.get());
  written = file.close() && written;
  if (refusal != nullptr || !written) return trace::fail(function, refusal);
  return trace::success(function);
}

trace::Result take_number(const char* line, unsigned* num, const char* function, const char* prefix) {
  if (prefix == nullptr || strnlen(line, std::strlen(prefix)) < std::strlen(prefix)) return trace::fail(function);
  *num = static_cast<unsigned>(store::decimal(line + std::strlen(prefix)));
  return trace::success(function);
}

}  // namespace

extern "C" int get_attr_num(const char* key, const char* line, unsigned* num) {
  trace::enter(__func__);
  if (key == nullptr || line == nullptr || num == nullptr) return trace::fail(__func__);
  return take_number(line, num, __func__, store::family_numbered_from_one(key));
}

extern "C" int get_attr_num_extended(const char* key, const char* line, unsigned* num) {
  trace::enter(__func__);
  if (key == nullptr || line == nullptr || num == nullptr) return trace::fail(__func__);
  return take_number(line, num, __func__, store::family_numbered_from_zero(key));
}

extern "C" int merge_para(wifimgr_attr_record* rec, char* out, int count) {
  trace::enter(__func__);
  if (rec == nullptr || out == nullptr) return trace::fail(__func__);
  char* end = out + std::strlen(out);
  const char* const start = end;
  for (int i = 0; i < clamp_to_fields(count); ++i) {
    // Measured once, and judged in the copy: a process that does not take the lock may change the field meanwhile.
    const void* const behind = memccpy(end, rec->field[i], '\0', store::kFieldSize - 1);
    if (behind == end + 1) {
      *end = '\0';
      break;
    }
    end = behind != nullptr ? const_cast<char*>(static_cast<const char*>(behind)) - 1 : end + store::kFieldSize - 1;
    if (end[-1] == '\n') --end;
    *end++ = ';';
  }
  if (end != start) *--end = '\0';
  return trace::success(__func__);
}

extern "C" int update_datafile_from_shm(int wifi_type, int bssid_num) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  // Of records whose end is not known none would be written, and all of the file be lost.
  if (store::records(wifi_type) == nullptr || store::room(wifi_type) == 0) return trace::fail(__func__);
  const int semaphore = store::look_up_semaphore(wifi_type);
  bool fits = false;
  const char* const refusal = check_before_writing(wifi_type, bssid_num, semaphore, fits);
  if (!fits) return trace::fail(__func__, refusal);

  const store::DatPath path(wifi_type);
  store::Stream file(std::fopen(path.text, "w+e"));
  if (!file) return trace::fail_printing(__func__, store::kOpenFailed, path.text);
  return rewrite(__func__, wifi_type, bssid_num, semaphore, file);
}

extern "C" int wifimgr_lib_save_dataFile(int wifi_type) {
  trace::enter(__func__);
  char count[store::kValueSize] = "";
  if (wifimgr_lib_get_bssidnum(wifi_type, -1, count, sizeof count) != 0) return trace::fail(__func__);
  if (update_datafile_from_shm(wifi_type, store::decimal(count)) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}
