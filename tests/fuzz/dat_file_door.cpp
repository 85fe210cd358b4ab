#include <sstream>

#include "fuzz/library_stand.h"
#include "support/sandbox.h"

namespace {

// A file of which the contract promises that it comes back as it was saved: every line has a key and a value, and no
// other "=" or field separator that the next load would take for one.
bool comes_back(const std::string& text) {
  std::istringstream lines(text);
  std::string line;
  if (!std::getline(lines, line) || line != "Default") return false;
  while (std::getline(lines, line)) {
    const size_t equals = line.find('=');
    if (equals == 0 || equals == std::string::npos || line.find('=', equals + 1) != std::string::npos) return false;
    if (line[0] == '#' || line.size() > 184 || equals > 35) return false;
    if (line.find('\r') != std::string::npos || line.find('\0') != std::string::npos) return false;
    if (line.back() == ';' || line.find(";;") != std::string::npos || line[equals + 1] == ';') return false;
  }
  return text.back() == '\n';
}

}  // namespace

void fuzz::try_dat_file(std::string_view input) {
  Bytes bytes(input);
  const int band = bytes.byte() % 2;
  if (load(band, bytes.rest()) != 0) {
    require_whole_store(band);
    return;
  }
  quietly([&] { require(wifimgr_lib_dump(band) == 0, "a loaded store is dumped"); });
  require_whole_store(band);
  // A dump takes line ends out of the store, so it is loaded once more before it is saved.
  if (load(band, bytes.rest()) != 0 || wifimgr_lib_save_dataFile(band) != 0) {
    require_whole_store(band);
    return;
  }
  const std::string saved = sandbox::read_file(sandbox::dat_path(band));
  require(saved.compare(0, 8, "Default\n") == 0, "a saved file begins with its first line");
  require_whole_store(band);
  const std::string stored = keys(band);
  if (load(band, saved) != 0) {
    require(!comes_back(saved), "a saved file is loaded");
    return;
  }
  if (!comes_back(saved)) return;
  require(wifimgr_lib_save_dataFile(band) == 0, "a loaded file is saved");
  require(sandbox::read_file(sandbox::dat_path(band)) == saved, "a saved file comes back as it was saved");
  require_whole_store(band);
}
