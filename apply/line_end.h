// The line end that the last SSID's value still carries.
#pragma once

namespace apply {

// Cuts a trailing LF, CR, CR LF (or any character after an LF or CR that is last but one) from the text.
void strip_line_end(char* text);

}  // namespace apply
