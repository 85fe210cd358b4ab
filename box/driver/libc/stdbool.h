#pragma once
#include <linux/types.h>
