// What the driver's portable parts take from <stdlib.h>, as the kernel has it.
#pragma once
#include <linux/kernel.h>
#include <linux/mm.h>
#include <linux/slab.h>

static inline void* malloc(size_t size) {
  return kvmalloc(size, GFP_KERNEL);
}

static inline void* calloc(size_t count, size_t size) {
  return kvcalloc(count, size, GFP_KERNEL);
}

static inline void free(void* memory) {
  kvfree(memory);
}

static inline long strtol(const char* text, char** end, int base) {
  return simple_strtol(text, end, base);
}

static inline unsigned long strtoul(const char* text, char** end, int base) {
  return simple_strtoul(text, end, base);
}

static inline long atol(const char* text) {
  return simple_strtol(text, NULL, 10);
}
