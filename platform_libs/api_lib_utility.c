/* Stand-in for the platform's utility library. */
#include "api_lib_utility.h"

#include <stddef.h>
#include <string.h>

/* Everything that a POSIX shell may give a meaning to outside quotes, white space included. */
static const char kShellCharacters[] = "|&;<>()$`\\\"'*?[]#~=%!{}^ \t\n\v\f\r";

__attribute__((visibility("default"))) int api_escape_parameter(const char* in, char* out, int out_size) {
  if (out == NULL || out_size <= 0) return -1;
  out[0] = '\0';
  if (in == NULL) return -1;
  size_t room = (size_t)out_size - 1;
  size_t used = 0;
  for (; *in != '\0'; ++in) {
    size_t wanted = strchr(kShellCharacters, *in) != NULL ? 2 : 1;
    if (room - used < wanted) {
      out[0] = '\0';
      return -1;
    }
    if (wanted == 2) out[used++] = '\\';
    out[used++] = *in;
  }
  out[used] = '\0';
  return 0;
}
