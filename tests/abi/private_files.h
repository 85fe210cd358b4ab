/* Files and IPC objects of one test program's own. */
#ifndef PRIVATE_FILES_H
#define PRIVATE_FILES_H

#include <stddef.h>

/* Moves the process into namespaces of its own for mounts and IPC, with an empty /tmp; ends it when the machine refuses. */
void enter_private_namespaces(void);

void write_text(const char* path, const char* text);

/* Reads at most size - 1 characters. */
void read_text(const char* path, char* text, size_t size);

#endif
