#pragma once
#include <linux/string.h>
