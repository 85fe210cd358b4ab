// Requests that are told to go wrong.
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "sim/driver/answers.h"
#include "sim/driver/lists.h"
#include "sim/driver/state.h"

#define FAULTS_NAME "faults"
// Held while a fault's count goes down, and by whoever else changes the faults.
#define FAULTS_LOCK DRIVER_LISTS "/faults.lock"

static bool meets(unsigned long number, const struct iwreq* request, const Fault* fault) {
  return is_fault_of(fault, number, request->u.data.flags, request->ifr_name);
}

static bool find_fault(char* text, unsigned long number, const struct iwreq* request, Fault* found) {
  char* rest = text;
  Fault fault;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (!parse_fault(line, &fault) || !meets(number, request, &fault)) continue;
    *found = fault;
    return true;
  }
  return false;
}

// Takes one from the first fault that the request meets, under the lock: of two processes only one gets the last.
static bool use_up(unsigned long number, const struct iwreq* request, Fault* met) {
  char* const text = read_state(DRIVER_LISTS, FAULTS_NAME);
  FILE* const file = text == NULL ? NULL : fopen(DRIVER_LISTS "/faults.new", "we");
  if (file == NULL) {
    free(text);
    return false;
  }
  bool is_met = false;
  char* rest = text;
  Fault fault;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (!parse_fault(line, &fault)) continue;
    if (!is_met && meets(number, request, &fault)) {
      is_met = true;
      *met = fault;
      if (fault.count > 0 && --fault.count == 0) continue;
    }
    char fresh[kMostListLine];
    format_fault(&fault, fresh);
    fprintf(file, "%s\n", fresh);
  }
  free(text);
  if (fclose(file) == 0) rename(DRIVER_LISTS "/faults.new", DRIVER_LISTS "/" FAULTS_NAME);
  return is_met;
}

bool meet_fault(unsigned long number, const struct iwreq* request, Fault* fault) {
  char* const text = read_state(DRIVER_LISTS, FAULTS_NAME);
  if (text == NULL) return false;
  Fault seen;
  const bool is_met = find_fault(text, number, request, &seen);
  free(text);
  if (!is_met) return false;
  const int lock = seen.count < 0 ? -1 : open_state(FAULTS_LOCK, O_RDWR);
  if (lock < 0) {
    *fault = seen;
    return true;
  }
  lock_state(lock);
  // Another process may have taken the last one meanwhile: then nothing goes wrong here.
  const bool is_left = use_up(number, request, fault);
  close(lock);
  return is_left;
}
