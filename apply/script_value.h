// Values inside double quotes of a script line.
#pragma once

#include "store/record.h"

namespace apply {

// Puts a backslash before each double quote and backslash of the text, in place. What does not fit is cut, whole escape
// sequences only. '$' and '`' stay as they are, so a shell still expands them: part of the contract.
void escape_script_value(char (&text)[store::kValueSize]);

}  // namespace apply
