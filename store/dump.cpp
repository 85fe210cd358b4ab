// The store as text on standard output.
#include <cstdio>

#include "store/band.h"
#include "store/record.h"
#include "store/segment.h"
#include "store/trace.h"

namespace {

constexpr size_t kLineWidth = 119;
constexpr size_t kColumnWidth = 30;
constexpr int kFieldsPerLine = 4;

// Copies a field without its line end, which the store itself loses too, without its lock; deliberate, the dump is for
// a person who debugs. Another process may write meanwhile, so the copy is what is judged.
size_t take_text(char (&field)[store::kFieldSize], char (&text)[store::kFieldSize]) {
  std::memcpy(text, field, sizeof text);
  const size_t length = strnlen(text, sizeof text);
  if (length == 0 || text[length - 1] != '\n') return length;
  field[length - 1] = '\0';
  return length - 1;
}

class FieldLine {
 public:
  FieldLine() { clear(); }

  void add(const char* text, size_t length) {
    const size_t column = static_cast<size_t>(used_) * kColumnWidth;
    std::memcpy(text_ + column, text, length < kLineWidth - column ? length : kLineWidth - column);
    if (++used_ == kFieldsPerLine) print();
  }

  void print() {
    if (used_ == 0) return;
    (void)std::fwrite(text_, 1, sizeof text_, stdout);
    clear();
  }

 private:
  void clear() {
    used_ = 0;
    std::memset(text_, ' ', kLineWidth);
    text_[kLineWidth] = '\n';
  }

  char text_[kLineWidth + 1];
  int used_;
};

void print_record(store::Record& record) {
  (void)std::printf("%.*s:\n", static_cast<int>(strnlen(record.key, sizeof record.key)), record.key);
  FieldLine line;
  for (auto& field : record.field) {
    char text[store::kFieldSize];
    const size_t length = take_text(field, text);
    if (length > 0) line.add(text, length);
  }
  line.print();
}

}  // namespace

extern "C" int print_shm(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  store::Record* const table = store::records(wifi_type);
  if (table == nullptr) return trace::fail(__func__);
  const unsigned end = store::room(wifi_type);
  for (unsigned i = 0; i < end && table[i].key[0] != '\0'; ++i) print_record(table[i]);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_dump(int wifi_type) {
  trace::enter(__func__);
  if (print_shm(wifi_type) != 0) return trace::fail(__func__, "Print the share memory data failed!");
  return trace::success(__func__);
}
