// The processes that help the driver.
#include <stdlib.h>
#include <string.h>

#include "sim/driver/answers.h"
#include "sim/driver/lists.h"
#include "sim/driver/state.h"

enum { kReplySize = 768, kMostEntries = 31, kMostCount = 255 };

struct Entry {
  char name[kListNameSize];
  uint32_t pid;
  uint8_t running;
  uint8_t rest[3];
};
_Static_assert(sizeof(struct Entry) == 24, "an entry of the process list");

// The count may be larger than what the reply has room for.
int answer_processes(const Query* query) {
  struct {
    uint8_t count;
    uint8_t rest[3];
    struct Entry entry[kMostEntries];
    uint8_t unused[kReplySize - 4 - kMostEntries * sizeof(struct Entry)];
  } reply;
  memset(&reply, 0, sizeof reply);
  char* const text = read_state(DRIVER_LISTS, "processes");
  char* rest = text;
  DriverProcess process;
  for (char* line; reply.count < kMostCount && (line = next_line(&rest)) != NULL;) {
    if (!parse_process(line, &process)) continue;
    if (reply.count < kMostEntries) {
      struct Entry* const entry = &reply.entry[reply.count];
      // A name that fills its field has no NUL.
      memcpy(entry->name, process.name, strlen(process.name));
      entry->pid = process.pid;
      entry->running = (uint8_t)process.running;
    }
    ++reply.count;
  }
  free(text);
  memcpy(query->data, &reply, sizeof reply);
  return 0;
}
