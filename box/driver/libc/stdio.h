#pragma once
#include <linux/kernel.h>
