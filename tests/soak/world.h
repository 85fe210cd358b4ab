// The two bands that are soaked: their dat files, stores and locks, and what must hold of them whatever happened.
#pragma once

#include <string>

namespace soak {

inline constexpr int kBands = 2;

// Says what does not hold, with what was done, and counts it.
void complain(const std::string& rule, const std::string& doing);
int complaints();

// Private namespaces, folders and both bands loaded.
void make_world();

// Both dat files and stores as they were made.
void restore_world();

// The band's dat file as a save of the restored store writes it, and as it is now.
const std::string& saved_text(int band);
std::string file_text(int band);

// The keys of a band's store in their order, a line each.
std::string stored_keys(int band);
const std::string& all_keys(int band);

// A value of the store, read as another process reads it.
std::string stored_value(int band, const char* key, int field);

// Takes and gives back the lock within a second.
bool lock_is_free(int band);

// Every key and field ends within its width.
bool store_is_terminated(int band);

int open_descriptors();

}  // namespace soak
