/* A caller of the library for tests: carries out the steps that its arguments name, in one process.
 *
 *   attach | init BAND | save BAND | dump BAND | normalise BAND | commit BAND SSID | oper BAND OPERATION
 *   set SETTER BAND INDEX VALUE      any exported setter of the common type
 *   get KEY BAND INDEX               a value of the store, without its line end
 *   put KEY BAND INDEX VALUE         the same past every check
 *   level TEXT | chips | log TEXT
 *   state BAND COUNT                 how many BSSs a commit takes down
 *   restart BAND OLD_COUNT NEW_COUNT MASK WDS | dispatch BAND COUNT VALUE KIND
 *   execute BAND OPERATION | downup BAND OPERATION | radio BAND OPERATION
 *   reboot BAND CURRENT NEW WDS_COUNT OTHER_COUNT KEY | txqueue COUNT LENGTH
 *   script BAND SSID_NUMBER | flag VALUE | run BAND COMMAND
 *   and those of probe_driver.c, probe_wps.c and probe_board.c
 *
 * Prints a line for each step: its words and the result. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "../../examples/attach_store.h"
#include "library_probe.h"
#include "wifimgr_lib.h"

static char** g_argument;

const char* next(void) {
  if (*g_argument == NULL) {
    fprintf(stderr, "library_probe: a word is missing\n");
    exit(2);
  }
  return *g_argument++;
}

int next_number(void) {
  return (int)strtol(next(), NULL, 0);
}

void* exported(const char* name) {
  void* const address = dlsym(RTLD_DEFAULT, name);
  if (address == NULL) {
    fprintf(stderr, "library_probe: no function %s\n", name);
    exit(2);
  }
  return address;
}

static void do_set(void) {
  const char* name = next();
  union {
    void* address;
    wifimgr_setter_t setter;
  } symbol = {exported(name)};
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

static void do_put(void) {
  const char* key = next();
  int band = next_number();
  int index = next_number();
  printf("%s %d\n", key, update_attr(band, index, key, next()));
}

static void do_restart(int band) {
  wifimgr_restart_request request = {.band = (uint32_t)band};
  request.old_count = next_number();
  request.new_count = (uint32_t)next_number();
  request.up_mask = (uint32_t)next_number();
  request.wds = next_number();
  printf("restart %d\n", (int)wifimgr_lib_restartInterface(&request));
}

static void do_dispatch(int band) {
  wifimgr_restart_request request = {.band = (uint32_t)band};
  request.new_count = (uint32_t)next_number();
  const char* value = next();
  printf("dispatch %d\n", (int)wifimgr_lib_restart_wlan_Interface(&request, 0, value, next_number()));
}

static void do_reboot(int band) {
  uint8_t current = (uint8_t)next_number();
  uint32_t new_value = (uint32_t)next_number();
  int links = next_number();
  const char* other_count = next();
  int result = wifimgr_lib_reboot(band, &current, new_value, links, other_count, next());
  printf("reboot %d %d\n", result, current);
}

/* The steps that bring settings into force, but for the commit; 0 when this is none of them. */
static int do_apply(const char* step, int band) {
  if (strcmp(step, "restart") == 0) {
    do_restart(band);
  } else if (strcmp(step, "dispatch") == 0) {
    do_dispatch(band);
  } else if (strcmp(step, "execute") == 0) {
    printf("execute %d\n", (int)wifimgr_lib_wifi_execute((uint32_t)band, (uint32_t)next_number()));
  } else if (strcmp(step, "downup") == 0) {
    doWifiDownUp((uint32_t)band, (uint32_t)next_number());
  } else if (strcmp(step, "radio") == 0) {
    printf("radio %d\n", wifimgr_lib_wifi_onoff((uint32_t)band, (uint32_t)next_number()));
  } else if (strcmp(step, "reboot") == 0) {
    do_reboot(band);
  } else if (strcmp(step, "script") == 0) {
    printf("script %d\n", wifimgr_lib_write_wifi_execute_sh((uint32_t)band, (uint32_t)next_number()));
  } else if (strcmp(step, "run") == 0) {
    printf("run %d\n", (int)wifimgr_lib_execute_wlan_script(band, next()));
  } else {
    return 0;
  }
  return 1;
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
    } else if (strcmp(step, "put") == 0) {
      do_put();
    } else if (strcmp(step, "attach") == 0) {
      printf("attach %d\n", attach_store());
    } else if (strcmp(step, "flag") == 0) {
      printf("flag %d\n", wifimgr_lib_set_11AC_CMDflag((uint32_t)next_number()));
    } else if (strcmp(step, "txqueue") == 0) {
      int count = next_number();
      printf("txqueue %d\n", wifimgr_lib_set_WifiTxQueue(count, (uint32_t)next_number()));
    } else if (strcmp(step, "chips") == 0) {
      do_chips();
    } else if (strcmp(step, "level") == 0) {
      printf("level %d\n", wifimgr_lib_set_dbg_level(next()));
    } else if (strcmp(step, "log") == 0) {
      zqdbg_blapi_printf("%s", next());
    } else if (do_driver(step) || do_wps(step) || do_board(step)) {
      continue;
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
      } else if (strcmp(step, "state") == 0) {
        pre_wlan_state[band] = next_number();
        printf("state %d\n", pre_wlan_state[band]);
      } else if (strcmp(step, "oper") == 0) {
        printf("oper %d\n", (int)wifimgr_lib_wifi_config_oper((uint32_t)band, next_number()));
      } else if (!do_apply(step, band)) {
        fprintf(stderr, "library_probe: unknown step %s\n", step);
        return 2;
      }
    }
  }
  return 0;
}
