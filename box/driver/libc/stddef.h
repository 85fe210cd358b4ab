#pragma once
#include <linux/stddef.h>
#include <linux/types.h>
