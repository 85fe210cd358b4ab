// Completion scripts of the shells, made of the command line's words and the table of keys.
#pragma once

#include <string>

#include "wlanctl/completion/words.h"
#include "wlanctl/keys/key.h"

namespace wlanctl {

std::string bash_completion(const VerbWords& program);
std::string zsh_completion(const VerbWords& program);

// Parts of both.

// Within single quotes, as both shells read them.
std::string shell_quoted(const std::string& text);

// The values to offer for a key, and on which bands, "2.4g,5g".
struct Offer {
  std::string bands;
  std::vector<std::string> values;
};

// One for all bands that have the same ones; a secret is better read from standard input.
std::vector<Offer> offers_of(const Key& key);

}  // namespace wlanctl
