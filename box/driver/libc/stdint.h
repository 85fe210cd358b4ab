#pragma once
#include <linux/limits.h>
#include <linux/types.h>

#define UINT32_MAX U32_MAX
