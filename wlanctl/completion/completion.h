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

// "2.4g,5g": where the key is.
std::string bands_with(const Key& key);

// The values to offer; a secret is better read from standard input.
std::vector<std::string> offers_of(const Key& key);

}  // namespace wlanctl
