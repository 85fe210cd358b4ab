// Requests that are told to fail.
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
  if (fault->request != number) return false;
  if (fault->oid >= 0 && fault->oid != request->u.data.flags) return false;
  return strcmp(fault->interface, "*") == 0 ||
         strncmp(fault->interface, request->ifr_name, sizeof request->ifr_name) == 0;
}

static bool find_fault(char* text, unsigned long number, const struct iwreq* request, Fault* found) {
  char* rest = text;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (parse_fault(line, found) && meets(number, request, found)) return true;
  }
  return false;
}

// Takes one from the first fault that the request meets, under the lock: of two processes only one gets the last.
static int use_up(unsigned long number, const struct iwreq* request) {
  char* const text = read_state(DRIVER_LISTS, FAULTS_NAME);
  FILE* const file = text == NULL ? NULL : fopen(DRIVER_LISTS "/faults.new", "we");
  if (file == NULL) {
    free(text);
    return 0;
  }
  int error = 0;
  char* rest = text;
  Fault fault;
  for (char* line; (line = next_line(&rest)) != NULL;) {
    if (!parse_fault(line, &fault)) continue;
    if (error == 0 && meets(number, request, &fault)) {
      error = fault.error;
      if (fault.count > 0 && --fault.count == 0) continue;
    }
    char fresh[kMostListLine];
    format_fault(&fault, fresh);
    fprintf(file, "%s\n", fresh);
  }
  free(text);
  if (fclose(file) == 0) rename(DRIVER_LISTS "/faults.new", DRIVER_LISTS "/" FAULTS_NAME);
  return error;
}

int error_for(unsigned long number, const struct iwreq* request) {
  char* const text = read_state(DRIVER_LISTS, FAULTS_NAME);
  if (text == NULL) return 0;
  Fault fault;
  const bool found = find_fault(text, number, request, &fault);
  free(text);
  if (!found) return 0;
  if (fault.count < 0) return fault.error;
  const int lock = open_state(FAULTS_LOCK, O_RDWR);
  if (lock < 0) return fault.error;
  lock_state(lock);
  const int error = use_up(number, request);
  close(lock);
  return error;
}
