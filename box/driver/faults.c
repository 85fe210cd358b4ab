/* Requests that are told to go wrong. */
#include <linux/errno.h>
#include <linux/slab.h>

#include "box/driver/fault_list.h"
#include "box/driver/radio_state.h"
#include "sim/driver/answers.h"
#include "sim/driver/state.h"

bool meet_fault(unsigned long number, const struct iwreq* request, Fault* fault) {
  char* const faults = read_state(DRIVER_LISTS, "faults");
  char* left = NULL;
  const bool is_met = faults && find_fault(faults, number, request->u.data.flags, request->ifr_name, fault, &left);
  if (left) store_state(DRIVER_LISTS, "faults", left);
  kvfree(left);
  kvfree(faults);
  return is_met;
}
