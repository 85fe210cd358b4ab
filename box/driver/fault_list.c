#include "box/driver/fault_list.h"

#include <stdlib.h>
#include <string.h>

#include "box/driver/text.h"

static bool parse_line(const char* line, size_t length, Fault* fault) {
  char copy[kMostListLine];
  if (length >= sizeof copy) return false;
  memcpy(copy, line, length);
  copy[length] = '\0';
  return parse_fault(copy, fault);
}

bool find_fault(const char* faults, unsigned long request, uint16_t oid, const char* interface, Fault* met,
                char** left) {
  Fault fault;
  *left = NULL;
  for (const char* line = faults; *line != '\0';) {
    const size_t length = strcspn(line, "\n");
    const char* const next = line + length + (line[length] == '\n');
    if (parse_line(line, length, &fault) && is_fault_of(&fault, request, oid, interface)) {
      *met = fault;
      if (fault.count < 0) return true;
      Text text = {NULL, 0, 0, false};
      char fresh[kMostListLine];
      add_bytes(&text, faults, (size_t)(line - faults));
      if (--fault.count > 0) {
        format_fault(&fault, fresh);
        add_text(&text, fresh);
        add_text(&text, "\n");
      }
      add_text(&text, next);
      *left = finish_text(&text);
      return true;
    }
    line = next;
  }
  return false;
}
