#pragma once
#include <linux/compiler.h>
#include <linux/errno.h>

// Nothing here sets it: the kernel's conversions do not report.
static int errno __maybe_unused;
