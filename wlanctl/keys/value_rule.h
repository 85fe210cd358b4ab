// What the gateway can serve of what the library's setters take: the tool's own rules.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

struct Accepted;
struct Key;

// Another setting of the same SSID or band, as it will be; none where it is not in the store, or does not count.
using Sibling = std::function<std::optional<std::string>(const char* name)>;

// What is worth setting: narrower than what the library takes, where it takes more than can be served.
const Accepted& served(const Key& key);

// The same in words.
std::string served_words(const Key& key);

// Every value, for Tab and `keys`; none where they are many.
std::vector<std::string> choices_on(const Key& key, Band band);

// The key's meaning, with what nobody but the driver knows of it.
std::string told_meaning(const Key& key);

// Why the gateway cannot serve the value; "" when it can. The values of secrets are not in it.
std::string unserved_reason(const Key& key, Band band, const std::string& value, const Sibling& sibling);

// Against an empty value, which the library takes: a normalisation makes of it what it likes. Of lists that SSIDs share a
// save says more.
std::string reason_against_none(const Key& key, Band band, const std::string& value);

// What to know of a value that is served, where it comes in the place of another; "" for nothing.
std::string told_of_change(const Key& key, const std::string& before, const std::string& after);

}  // namespace wlanctl
