// The settings as a text for an editor, and what was made of it there.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/report.h"
#include "wlanctl/exchange/settings_text.h"

namespace wlanctl {

// Lines of KEY[:N]=VALUE below a comment that says what the setting means and takes. Secrets are kSecretLeftOut unless
// shown; what only is read, and what a line cannot hold, is a comment.
std::string edit_text_of(const std::vector<Band>& bands, bool secrets);

// With the problems as comments ("#! ") above their lines, in the place of those of an earlier round.
std::string with_problems(const std::string& text, const std::vector<Problem>& problems, const std::string& file);
std::string without_problems(const std::string& text);

// The text's settings that are other ones than those that were shown. Adds a problem for one that stands there twice.
std::vector<FileSetting> changed_settings(SettingsText* text, const std::vector<FileSetting>& shown);

}  // namespace wlanctl
