#include "wlanctl/store/saved_text.h"

#include "wlanctl/library/file_redirect.h"
#include "wlanctl/store/dat_file.h"
#include "wlanctl/store/private_store.h"

namespace wlanctl {

std::optional<std::string> saved_text(Band band) {
  const MemoryFile file;
  const DatRedirect redirect(band, file);
  if (wifimgr_lib_save_dataFile(number_of(band)) != 0) return std::nullopt;
  return file.text();
}

std::optional<std::string> saved_text(Band band, const std::vector<wifimgr_attr_record>& content) {
  const PrivateStore store(band, content);
  return saved_text(band);
}

}  // namespace wlanctl
