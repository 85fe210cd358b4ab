/* Requests that are told to fail. */
#include <linux/errno.h>
#include <linux/slab.h>

#include "box/driver/fault_list.h"
#include "box/driver/radio_state.h"
#include "sim/driver/answers.h"
#include "sim/driver/state.h"

int error_for(unsigned long number, const struct iwreq* request) {
  char* const faults = read_state(DRIVER_LISTS, "faults");
  char* left = NULL;
  const int error = faults ? meet_fault(faults, number, request->u.data.flags, request->ifr_name, &left) : 0;
  if (left) store_state(DRIVER_LISTS, "faults", left);
  kvfree(left);
  kvfree(faults);
  return error;
}
