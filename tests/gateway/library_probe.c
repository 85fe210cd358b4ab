/* A caller of the library for tests: carries out the steps that its arguments name, in one process.
 *
 *   init BAND | save BAND | dump BAND | normalise BAND | commit BAND SSID | oper BAND OPERATION
 *   set SETTER BAND INDEX VALUE      any exported setter of the common type
 *   get KEY BAND INDEX               a value of the store, without its line end
 *   level TEXT | chips | log TEXT
 *
 * Prints a line for each step: its words and the result. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "wifimgr_lib.h"

static char** g_argument;

static const char* next(void) {
  if (*g_argument == NULL) {
    fprintf(stderr, "library_probe: a word is missing\n");
    exit(2);
  }
  return *g_argument++;
}

static int next_number(void) {
  return (int)strtol(next(), NULL, 10);
}

static void do_set(void) {
  const char* name = next();
  union {
    void* address;
    wifimgr_setter_t setter;
  } symbol = {dlsym(RTLD_DEFAULT, name)};
  if (symbol.address == NULL) {
    fprintf(stderr, "library_probe: no setter %s\n", name);
    exit(2);
  }
  int band = next_number();
  int index = next_number();
  const char* value = next();
  printf("%s %d\n", name, (int)symbol.setter((uint32_t)band, index, value));
}

static void do_get(void) {
  const char* key = next();
  char text[WIFIMGR_VALUE_SIZE] = "";
  int band = next_number();
  int index = next_number();
  int result = read_attr(band, index, key, text, sizeof text);
  text[strcspn(text, "\r\n")] = '\0';
  printf("%s %d %s\n", key, result, text);
}

static void do_chips(void) {
  char flags[] = "0000000";
  int result = parse_driver(flags, 7);
  printf("chips %d %s\n", result, flags);
}

int main(int argc, char** argv) {
  (void)argc;
  setvbuf(stdout, NULL, _IOLBF, 0);
  for (g_argument = argv + 1; *g_argument != NULL;) {
    const char* step = next();
    if (strcmp(step, "set") == 0) {
      do_set();
    } else if (strcmp(step, "get") == 0) {
      do_get();
    } else if (strcmp(step, "chips") == 0) {
      do_chips();
    } else if (strcmp(step, "level") == 0) {
      printf("level %d\n", wifimgr_lib_set_dbg_level(next()));
    } else if (strcmp(step, "log") == 0) {
      zqdbg_blapi_printf("%s", next());
    } else {
      int band = next_number();
      if (strcmp(step, "init") == 0) {
        printf("init %d\n", wifimgr_lib_init(band));
      } else if (strcmp(step, "save") == 0) {
        printf("save %d\n", wifimgr_lib_save_dataFile(band));
      } else if (strcmp(step, "dump") == 0) {
        printf("dump %d\n", wifimgr_lib_dump(band));
      } else if (strcmp(step, "normalise") == 0) {
        printf("normalise %d\n", wifimgr_lib_check_wifi_value_befor_write_dat((uint32_t)band));
      } else if (strcmp(step, "commit") == 0) {
        printf("commit %d\n", wifimgr_lib_commit((uint32_t)band, next_number()));
      } else if (strcmp(step, "oper") == 0) {
        printf("oper %d\n", (int)wifimgr_lib_wifi_config_oper((uint32_t)band, next_number()));
      } else {
        fprintf(stderr, "library_probe: unknown step %s\n", step);
        return 2;
      }
    }
  }
  return 0;
}
