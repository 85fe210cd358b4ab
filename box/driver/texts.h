/* The driver's memory: texts in folders. Each is a file in /proc as well, the door through which it is looked at and changed from outside:
 * what was written counts, whole, once the file is closed. */
#pragma once

#include <linux/mutex.h>
#include <linux/proc_fs.h>

/* Held while texts are looked at or changed. */
extern struct mutex texts_lock;

struct text_folder {
  const char* path; /* what the driver's sources call it */
  struct proc_dir_entry* entry;
};

enum { FOLDER_SETTINGS, FOLDER_LISTS, FOLDER_PAYLOADS, FOLDER_BOARD, FOLDERS };
extern struct text_folder text_folders[FOLDERS];

int texts_start(void);
void texts_stop(void);

/* Makes an empty text, or one that a reader who opens it empties. The lock is not held. */
int text_create(int folder, const char* name, const char* bytes, bool emptied_by_readers);

/* Takes a text away, or all of a folder for a null name, and waits for who has it open. The lock is not held. */
void texts_remove(int folder, const char* name);

/* -ENOENT when there is no such text. The lock is held. */
int text_store(int folder, const char* name, const char* bytes, size_t size);
