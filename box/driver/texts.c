#include "box/driver/texts.h"

#include <linux/fs.h>
#include <linux/list.h>
#include <linux/mm.h>
#include <linux/slab.h>
#include <linux/string.h>
#include <linux/uaccess.h>

#include "sim/driver/state.h"

#include "box/driver/radio_state.h"

enum { NAME_ROOM = 40, MOST_BYTES = 1 << 20 };

struct text {
  struct list_head list;
  struct proc_dir_entry* entry;
  int folder;
  bool emptied_by_readers;
  char name[NAME_ROOM];
  char* bytes; /* null: empty */
  size_t size;
};

/* What one opening of a text's file sees, or has written. */
struct session {
  struct text* text;
  bool replaces;
  char* bytes;
  size_t size;
  size_t room;
};

DEFINE_MUTEX(texts_lock);
static LIST_HEAD(texts);
static struct proc_dir_entry* door;

struct text_folder text_folders[FOLDERS] = {
    {DRIVER_SETTINGS, NULL},
    {DRIVER_LISTS, NULL},
    {DRIVER_PAYLOADS, NULL},
    {"/proc/zq2810", NULL},
};

static struct text* find(int folder, const char* name) {
  struct text* text;
  list_for_each_entry(text, &texts, list) {
    if (text->folder == folder && strcmp(text->name, name) == 0) return text;
  }
  return NULL;
}

static int find_folder(const char* path) {
  int folder;
  for (folder = 0; folder < FOLDERS; ++folder) {
    if (strcmp(text_folders[folder].path, path) == 0) return folder;
  }
  return -1;
}

static char* copy_of(const struct text* text) {
  char* const copy = kvmalloc(text->size + 1, GFP_KERNEL);
  if (!copy) return NULL;
  if (text->size) memcpy(copy, text->bytes, text->size);
  copy[text->size] = '\0';
  return copy;
}

/* Takes the bytes over. */
static void replace(struct text* text, char* bytes, size_t size) {
  kvfree(text->bytes);
  text->bytes = bytes;
  text->size = size;
}

int text_store(int folder, const char* name, const char* bytes, size_t size) {
  struct text* const text = find(folder, name);
  char* fresh = NULL;
  lockdep_assert_held(&texts_lock);
  if (!text) return -ENOENT;
  if (size) {
    fresh = kvmalloc(size, GFP_KERNEL);
    if (!fresh) return -ENOMEM;
    memcpy(fresh, bytes, size);
  }
  replace(text, fresh, size);
  return 0;
}

/* What the portable parts see of all this. */
char* read_state(const char* folder, const char* name) {
  const struct text* const text = find(find_folder(folder), name);
  lockdep_assert_held(&texts_lock);
  return text ? copy_of(text) : NULL;
}

char* read_radio_list(const char* kind, const char* radio) {
  char name[NAME_ROOM];
  snprintf(name, sizeof name, "%s-%s", kind, radio);
  return read_state(DRIVER_LISTS, name);
}

int store_state(const char* folder, const char* name, const char* text) {
  return -text_store(find_folder(folder), name, text, strlen(text));
}

static int door_open(struct inode* inode, struct file* file) {
  struct text* const text = pde_data(inode);
  struct session* const session = kzalloc(sizeof *session, GFP_KERNEL);
  if (!session) return -ENOMEM;
  session->text = text;
  session->replaces = (file->f_flags & O_ACCMODE) == O_WRONLY || (file->f_flags & O_TRUNC);
  if (!session->replaces) {
    mutex_lock(&texts_lock);
    session->bytes = copy_of(text);
    session->size = text->size;
    if (session->bytes && text->emptied_by_readers) replace(text, NULL, 0);
    mutex_unlock(&texts_lock);
    if (!session->bytes) {
      kfree(session);
      return -ENOMEM;
    }
  }
  file->private_data = session;
  return 0;
}

static ssize_t door_read(struct file* file, char __user* to, size_t size, loff_t* at) {
  const struct session* const session = file->private_data;
  if (session->replaces) return 0;
  return simple_read_from_buffer(to, size, at, session->bytes, session->size);
}

static ssize_t door_write(struct file* file, const char __user* from, size_t size, loff_t* at) {
  struct session* const session = file->private_data;
  if (!session->replaces) return -EBADF;
  if (size > MOST_BYTES - session->size) return -EFBIG;
  if (session->size + size > session->room) {
    const size_t room = max_t(size_t, 2 * session->room, session->size + size);
    char* const bytes = kvmalloc(room, GFP_KERNEL);
    if (!bytes) return -ENOMEM;
    if (session->size) memcpy(bytes, session->bytes, session->size);
    kvfree(session->bytes);
    session->bytes = bytes;
    session->room = room;
  }
  if (copy_from_user(session->bytes + session->size, from, size)) return -EFAULT;
  session->size += size;
  *at += size;
  return size;
}

static int door_release(struct inode* inode, struct file* file) {
  struct session* const session = file->private_data;
  if (session->replaces) {
    mutex_lock(&texts_lock);
    replace(session->text, session->bytes, session->size);
    mutex_unlock(&texts_lock);
  } else {
    kvfree(session->bytes);
  }
  kfree(session);
  return 0;
}

static const struct proc_ops kDoor = {
    .proc_open = door_open,
    .proc_read = door_read,
    .proc_write = door_write,
    .proc_release = door_release,
    .proc_lseek = default_llseek,
};

int text_create(int folder, const char* name, const char* bytes, bool emptied_by_readers) {
  struct text* const text = kzalloc(sizeof *text, GFP_KERNEL);
  int error;
  if (!text) return -ENOMEM;
  text->folder = folder;
  text->emptied_by_readers = emptied_by_readers;
  strscpy(text->name, name, sizeof text->name);
  mutex_lock(&texts_lock);
  list_add_tail(&text->list, &texts);
  error = text_store(folder, name, bytes, strlen(bytes));
  mutex_unlock(&texts_lock);
  if (!error) text->entry = proc_create_data(name, 0644, text_folders[folder].entry, &kDoor, text);
  if (text->entry) return 0;
  mutex_lock(&texts_lock);
  list_del(&text->list);
  mutex_unlock(&texts_lock);
  kfree(text);
  return error ? error : -ENOMEM;
}

void texts_remove(int folder, const char* name) {
  struct text* text;
  struct text* next;
  LIST_HEAD(gone);
  mutex_lock(&texts_lock);
  list_for_each_entry_safe(text, next, &texts, list) {
    if (text->folder == folder && (!name || strcmp(text->name, name) == 0)) list_move(&text->list, &gone);
  }
  mutex_unlock(&texts_lock);
  list_for_each_entry_safe(text, next, &gone, list) {
    proc_remove(text->entry);
    kvfree(text->bytes);
    kfree(text);
  }
}

int texts_start(void) {
  door = proc_mkdir("gateway_driver", NULL);
  if (!door) return -ENOMEM;
  text_folders[FOLDER_SETTINGS].entry = proc_mkdir("driver", door);
  text_folders[FOLDER_LISTS].entry = proc_mkdir("lists", door);
  text_folders[FOLDER_PAYLOADS].entry = proc_mkdir("payloads", door);
  text_folders[FOLDER_BOARD].entry = proc_mkdir("zq2810", NULL);
  if (text_folders[FOLDER_SETTINGS].entry && text_folders[FOLDER_LISTS].entry && text_folders[FOLDER_PAYLOADS].entry &&
      text_folders[FOLDER_BOARD].entry) {
    return 0;
  }
  texts_stop();
  return -ENOMEM;
}

void texts_stop(void) {
  int folder;
  for (folder = 0; folder < FOLDERS; ++folder) texts_remove(folder, NULL);
  proc_remove(text_folders[FOLDER_BOARD].entry);
  proc_remove(door);
}
