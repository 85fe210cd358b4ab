#include "wlanctl/keys/secret_mask.h"

#include <cstring>

#include "wlanctl/keys/key.h"

namespace wlanctl {
namespace {

constexpr char kNextCommand[] = "\n/userfs/bin/iwpriv ";
constexpr char kSet[] = " set ";

// The driver's name for a WEP key, "Key1", lacks what the setting's has.
bool is_secret_of_driver(const std::string& name) {
  const Key* key = find_key(name);
  if (key == nullptr) key = find_key(name + "Str");
  return key != nullptr && key->secret;
}

std::string masked_command(const std::string& command) {
  const size_t set = command.find(kSet);
  if (set == std::string::npos) return command;
  const size_t name = set + sizeof kSet - 1;
  const size_t equals = command.find('=', name);
  if (equals == std::string::npos || !is_secret_of_driver(command.substr(name, equals - name))) return command;
  const bool quoted = command.compare(equals + 1, 1, "\"") == 0;
  const std::string end = command.back() == '\n' ? "\n" : "";
  return command.substr(0, equals + 1) + (quoted ? std::string("\"") + kMasked + "\"" : std::string(kMasked)) + end;
}

}  // namespace

std::string shown_value(const Key& key, const std::string& value) {
  return key.secret && !value.empty() ? kMasked : value;
}

bool is_secret_dat_key(const std::string& dat_key) {
  int index = 0;
  if (const Key* const key = find_dat_key(dat_key, &index)) return key->secret;
  for (const char* const word : {"psk", "passphrase", "password", "passwd", "secret", "pincode"}) {
    if (strcasestr(dat_key.c_str(), word) != nullptr) return true;
  }
  // "RADIUS_Key", "RADIUS_Acct_Key2", "ApCliKey1Str", but neither "DefaultKeyID" nor "Key1Type" nor "RekeyInterval".
  std::string name = dat_key.substr(0, dat_key.find_last_not_of("0123456789") + 1);
  if (name.ends_with("Str")) {
    name.resize(name.size() - 3);
    name.resize(name.find_last_not_of("0123456789") + 1);
  }
  return name.ends_with("Key") || name.ends_with("_key");
}

std::string masked_dat_line(const std::string& line) {
  const size_t equals = line.find('=');
  if (equals == std::string::npos || equals + 1 == line.size() || !is_secret_dat_key(line.substr(0, equals)))
    return line;
  return line.substr(0, equals + 1) + kMasked;
}

std::string masked_script(const std::string& script) {
  std::string masked;
  for (size_t at = 0; at < script.size();) {
    const size_t next = script.find(kNextCommand, at);
    const size_t end = next == std::string::npos ? script.size() : next + 1;
    masked += masked_command(script.substr(at, end - at));
    at = end;
  }
  return masked;
}

}  // namespace wlanctl
