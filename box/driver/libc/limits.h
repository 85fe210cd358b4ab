#pragma once
#include <linux/limits.h>
