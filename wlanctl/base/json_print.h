// A JSON value as text. The one file behind this pays for the JSON library.
#pragma once

#include <string>

namespace wlanctl {

class Json;

enum class Layout { kOnOneLine, kIndented };

std::string printed(const Json& value, Layout layout);

}  // namespace wlanctl
