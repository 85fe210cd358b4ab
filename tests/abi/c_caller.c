/* A caller in C that knows the library by its header alone. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "private_files.h"
#include "wifimgr_lib.h"

static int failures;

#define EXPECT(condition)                                             \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                     \
    }                                                                 \
  } while (0)

typedef void (*any_function)(void);

struct exported_function {
  const char* name;
  any_function address;
};

struct exported_object {
  const char* name;
  const void* address;
};

static const struct exported_function functions[] = {
#define FUNCTION(name) {#name, (any_function)name},
#define OBJECT(name)
#include "exported_names.def"
#undef FUNCTION
#undef OBJECT
};

static const struct exported_object objects[] = {
#define FUNCTION(name)
#define OBJECT(name) {#name, (const void*)&name},
#include "exported_names.def"
#undef FUNCTION
#undef OBJECT
};

static const char dat_text[] =
    "Default\n"
    "# a caller's file\n"
    "BssidNum=2\n"
    "ReloadFlag=0\n"
    "WirelessMode=9\n"
    "SSID1=First\n"
    "SSID2=Second\n"
    "HideSSID=0;0\n"
    "WdsEnable=0\n";

static const char saved_text[] =
    "Default\n"
    "BssidNum=2\n"
    "ReloadFlag=0\n"
    "WirelessMode=16\n"
    "SSID1=First\n"
    "SSID2=Changed\n"
    "HideSSID=0;1\n"
    "WdsEnable=0\n";

static void every_name_has_an_address(void) {
  size_t i;
  for (i = 0; i < sizeof functions / sizeof functions[0]; ++i) {
    if (functions[i].address == NULL) {
      fprintf(stderr, "no %s\n", functions[i].name);
      ++failures;
    }
  }
  for (i = 0; i < sizeof objects / sizeof objects[0]; ++i) {
    if (objects[i].address == NULL) {
      fprintf(stderr, "no %s\n", objects[i].name);
      ++failures;
    }
  }
}

static void settings_are_set_read_and_saved(const char* path) {
  static const wifimgr_setter_t setter = wifimgr_lib_set_wirelessMode;
  char dat_path[WIFIMGR_DAT_PATH_SIZE] = "";
  char text[WIFIMGR_VALUE_SIZE] = "";
  char file[1024];

  strcpy(dat_path, path);
  write_text(path, dat_text);
  EXPECT(wifimgr_lib_set_wifi_path(0, dat_path) == 0);
  EXPECT(wifimgr_lib_init(0) == 0);
  EXPECT(pre_wlan_state[0] == 2);
  EXPECT(shm_addr_2_4g != NULL);
  EXPECT(wifimgr_lib_wifi_config_oper(0, 0) == 0);
  EXPECT(strcmp(store_global[0].prefix, "ra") == 0 && store_global[0].wireless_mode == 9);

  EXPECT(wifimgr_lib_set_ssid(0, 2, "Changed") == 0);
  EXPECT(wifimgr_lib_set_hideSSID(0, 2, "1") == 0);
  EXPECT(setter(0, -1, "16") == 0);
  EXPECT(wifimgr_lib_set_hideSSID(0, 3, "1") == 1);
  EXPECT(wifimgr_lib_get_ssid(0, 2, text, sizeof text) == 0);
  EXPECT(strcmp(text, "Changed") == 0);
  EXPECT(wifimgr_lib_get_wirelessMode(0, -1, text, sizeof text) == 0);
  EXPECT(strcmp(text, "16") == 0);
  EXPECT(wifimgr_lib_wifi_config_oper(0, 1) == 1);

  EXPECT(wifimgr_lib_save_dataFile(0) == 0);
  read_text(path, file, sizeof file);
  EXPECT(strcmp(file, saved_text) == 0);
}

static void a_table_is_walked_and_copied(void) {
  wifimgr_key_setter copy[63];
  char names[7][WIFIMGR_ATTR_NAME_SIZE];
  const wifimgr_key_setter* record;
  int count = 0;

  for (record = wlan_common_default_parm; record->name[0] != '\0'; ++record) ++count;
  EXPECT(count == 54 && record->setter == NULL);
  EXPECT(wifimgr_lib_get_wlan_attr(1, copy) == 63);
  EXPECT(strcmp(copy[62].name, "DscpPriMapEnable") == 0 && copy[62].setter == wifimgr_lib_set_DscpPriMapEnable);
  EXPECT(wifimgr_lib_get_wlan_script_attr(names) == 7);
  EXPECT(strcmp(names[6], "IgmpSnEnable") == 0);

  strcpy(wlan_global_script_com_attr.name, "Channel");
  wlan_global_script_com_attr.setter = wifimgr_lib_set_channel;
  EXPECT(wifimgr_lib_get_wlan_attr(2, copy) == 1);
  EXPECT(strcmp(copy[0].name, "Channel") == 0 && copy[0].setter == wifimgr_lib_set_channel);
}

/* Callers pass what they always passed. */
static void functions_without_fixed_parameters_take_any(void) {
  EXPECT(wifimgr_lib_set_AP2040Rescan() == 0);
  EXPECT(wifimgr_lib_set_AP2040Rescan(0, -1, "1") == 0);
  EXPECT(wifimgr_lib_get_max_sta_num_ui() == 0);
  EXPECT(wifimgr_lib_get_max_sta_num_ui(1) == 0);
  EXPECT(wifimgr_lib_set_ixia5gflag(1) == 0 && wifimgr_lib_get_ixia5gflag() == -1);
  EXPECT(wifimgr_lib_check_wifi_ixia_test(0) == 0);
  EXPECT(wifimgr_lib_set_needRebootFlag(1) == 0);
}

int main(void) {
  enter_private_namespaces();
  every_name_has_an_address();
  a_table_is_walked_and_copied();
  functions_without_fixed_parameters_take_any();
  settings_are_set_read_and_saved("/tmp/wlan.dat");
  return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
