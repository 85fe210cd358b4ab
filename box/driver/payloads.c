/* What callers hand the driver: kept as it came, in hexadecimal. */
#include <linux/errno.h>
#include <linux/mm.h>
#include <linux/string.h>

#include "box/driver/bands.h"
#include "box/driver/texts.h"
#include "sim/driver/answers.h"

static int keep(const Query* query, const char* kind) {
  char name[40];
  char* text;
  int error;
  snprintf(name, sizeof name, "%s.%s", query->interface, kind);
  text = kvmalloc(2 * query->length + 1, GFP_KERNEL);
  if (!text) return ENOMEM;
  *bin2hex(text, query->data, query->length) = '\0';
  error = text_store(FOLDER_PAYLOADS, name, text, 2 * query->length);
  kvfree(text);
  return -error;
}

int keep_oui_filter(const Query* query) {
  return keep(query, "OuiFilter");
}

int keep_probe_response(const Query* query) {
  return keep(query, "ProbeResponse");
}

/* Whatever the payload names: the radio has no entry left afterwards, on any of its BSSs. */
int forget_probe_responses(const Query* query) {
  int i;
  for (i = 0; i < kMostBsss; ++i) {
    char name[40];
    snprintf(name, sizeof name, "%s%d.ProbeResponse", query->radio, i);
    text_store(FOLDER_PAYLOADS, name, "", 0);
  }
  return 0;
}
