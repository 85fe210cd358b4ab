#pragma once
#include <stdint.h>

#define PRId64 "lld"
#define SCNd64 "lld"
