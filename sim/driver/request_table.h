// What the driver answers.
#pragma once

#include "sim/driver/answers.h"

// From which length of the payload on, and how much is written there; what nothing is written for is taken whole.
typedef struct RequestRow {
  unsigned long request;
  uint16_t oid;  // 0 for requests that have none
  uint16_t least_length;
  uint16_t reply;
  Answer answer;
} RequestRow;

// Null for what the driver does not answer.
const RequestRow* find_row(unsigned long number, uint16_t flags);
