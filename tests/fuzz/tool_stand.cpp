#include "fuzz/tool_stand.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <nlohmann/json.hpp>

#include "support/sandbox.h"
#include "wlanctl/library/band_variables.h"
#include "wlanctl/library/messages.h"
#include "wlanctl/library/shell.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/segment.h"

namespace fuzz {
namespace {

constexpr int kStreams[] = {STDOUT_FILENO, STDERR_FILENO};

std::string content_of(int file) {
  struct stat status = {};
  require(fstat(file, &status) == 0, "what was printed is there");
  std::string text(static_cast<size_t>(status.st_size), '\0');
  const ssize_t got = pread(file, text.data(), text.size(), 0);
  require(got == status.st_size, "what was printed can be read");
  return text;
}

// The character that begins at `at`, and how long it is; -1 where there is none.
long character_at(const std::string& text, size_t at, size_t* length) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  static constexpr struct {
    unsigned mask, lead;
    long lowest;
  } kForms[] = {{0x80, 0x00, 0}, {0xe0, 0xc0, 0x80}, {0xf0, 0xe0, 0x800}, {0xf8, 0xf0, 0x10000}};
  for (size_t form = 0; form < 4; ++form) {
    if ((byte(at) & kForms[form].mask) != kForms[form].lead || at + form >= text.size()) continue;
    long character = static_cast<long>(byte(at) & ~kForms[form].mask);
    for (size_t i = 1; i <= form; ++i) {
      if ((byte(at + i) & 0xc0U) != 0x80) return -1;
      character = character * 0x40 + static_cast<long>(byte(at + i) & 0x3fU);
    }
    const bool is_half = character >= 0xd800 && character <= 0xdfff;
    if (character < kForms[form].lowest || character > 0x10ffff || is_half) return -1;
    *length = form + 1;
    return character;
  }
  return -1;
}

}  // namespace

void forget() {
  // A value of "-" is a line of standard input, and nobody is asked for one.
  static const int nobody = [] {
    const int none = open("/dev/null", O_RDONLY | O_CLOEXEC);
    return dup2(none, STDIN_FILENO);
  }();
  require(nobody == STDIN_FILENO, "standard input is empty");
  for (const int band : {0, 1}) sandbox::use_dat_path(band);
  for (const wlanctl::Band band : wlanctl::kBands) wlanctl::address_of(band) = nullptr;
  wlanctl::clear_messages();
  wlanctl::ShellScope::lines().clear();
  // Nothing of what a door has stored may reach a shell.
  static const wlanctl::ShellScope nothing_runs(wlanctl::ShellMode::kDrop);
}

wlanctl::Band band_by(uint8_t byte) {
  return byte % 2 == 0 ? wlanctl::Band::k2_4G : wlanctl::Band::k5G;
}

Table loaded(wlanctl::Band band, std::string_view dat_text) {
  (void)file_with(band == wlanctl::Band::k2_4G ? "dat/2.4g.dat" : "dat/5g.dat", dat_text);
  const std::optional<Table> table = wlanctl::look_at_dat_file(band, wlanctl::StoreLock(band));
  require(table.has_value(), "a dat file is read");
  return *table;
}

const Table& open_full_store(wlanctl::Band band) {
  struct Full {
    char* address = nullptr;
    Table table;
  };
  static Full stores[wlanctl::kBandCount];
  Full& full = stores[wlanctl::number_of(band)];
  if (full.address == nullptr) {
    full.table = loaded(band, sandbox::full_dat(wlanctl::number_of(band)));
    wlanctl::Report report;
    quietly([&] { (void)wlanctl::open_store(band, report); });
    full.address = wlanctl::address_of(band);
    require(full.address != nullptr, "a store can be made");
  }
  wlanctl::address_of(band) = full.address;
  return full.table;
}

std::string file_with(const std::string& name, std::string_view bytes) {
  const std::string path = "/tmp/" + name;
  std::FILE* const file = std::fopen(path.c_str(), "we");
  require(file != nullptr, "a file can be written");
  (void)std::fwrite(bytes.data(), 1, bytes.size(), file);
  require(std::fclose(file) == 0, "a file is written");
  return path;
}

std::string heard(const std::function<void()>& run) {
  static const int file = open("/tmp", O_TMPFILE | O_RDWR | O_APPEND | O_CLOEXEC, 0600);
  int saved[2];
  (void)std::fflush(stdout);
  for (size_t i = 0; i < 2; ++i) {
    saved[i] = fcntl(kStreams[i], F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    require(file >= 0 && saved[i] >= 0 && dup2(file, kStreams[i]) >= 0, "output can be caught");
  }
  run();
  (void)std::fflush(stdout);
  for (size_t i = 0; i < 2; ++i) {
    (void)dup2(saved[i], kStreams[i]);
    (void)close(saved[i]);
  }
  std::string text = content_of(file);
  (void)ftruncate(file, 0);
  return text;
}

std::string told_by(const std::function<int(wlanctl::Report& report)>& verb) {
  std::string told;
  for (const bool as_json : {false, true}) {
    const std::string text = heard([&] {
      wlanctl::Report report;
      report.begin("fuzz", as_json);
      const int code = verb(report);
      (void)report.finish(code);
    });
    if (as_json) {
      require_json(text);
    } else {
      require_printable(text);
    }
    told += text;
  }
  return told;
}

void require_printable(const std::string& text) {
  size_t length = 0;
  for (size_t at = 0; at < text.size(); at += length) {
    const long character = character_at(text, at, &length);
    require(character >= 0, "what is printed is UTF-8");
    require(character == '\n' || (character >= ' ' && (character < 0x7f || character >= 0xa0)),
            "a terminal acts on nothing that is printed");
    const bool turns = (character >= 0x202a && character <= 0x202e) || (character >= 0x2066 && character <= 0x2069);
    require(!turns, "nothing that is printed turns the direction of a text");
  }
}

void require_json(const std::string& document) {
  require_printable(document);
  require(nlohmann::json::accept(document), "a JSON document can be parsed");
}

bool is_utf8(const std::string& text) {
  size_t length = 0;
  for (size_t at = 0; at < text.size(); at += length) {
    if (character_at(text, at, &length) < 0) return false;
  }
  return true;
}

bool is_telltale(const std::string& value) {
  constexpr size_t kLongEnough = 6;
  return value.size() >= kLongEnough && value.find_first_of("!#^~") != std::string::npos;
}

}  // namespace fuzz
