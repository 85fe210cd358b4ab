/* A management process, start to end: load both bands, change settings, find out how heavy the change is, apply it.
 *
 * Needs a gateway: run it on one, or inside the simulated one (gateway-sim -- apply_settings). */
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

#include "wifimgr_lib.h"

static const char* const kBandNames[] = {"2.4G", "5G"};

/* One setting that a user asked for. All setters of this shape have one type, so they fit into a table. */
struct wish {
  const char* what;
  wifimgr_setter_t set;
  int32_t index; /* -1 band-wide, 1 to 8 an SSID */
  const char* value;
};

static const struct wish kWishes24[] = {
    {"SSID 1", wifimgr_lib_set_ssid, 1, "Living Room"},
    {"passphrase of SSID 1", wifimgr_lib_set_WPAPSK, 1, "correct horse battery"},
    {"security of SSID 1", wifimgr_lib_set_authMode, 1, "WPA2PSKWPA3PSK"},
    {"cipher of SSID 1", wifimgr_lib_set_encrypType, 1, "AES"},
    {"channel", wifimgr_lib_set_channel, -1, "11"},
    {"TX power (level 3 of 6)", wifimgr_lib_set_txPower, -1, "3"},
    {"WDS ciphers", wifimgr_lib_set_wdsencryptype, -1, "AES;NONE;NONE;NONE"},
    {"WDS key of link 1", wifimgr_lib_set_wdskey, 1, "a shared wds key"},
    {"WDS peers", wifimgr_lib_set_wdslist, -1,
     "02:00:00:00:10:01;00:00:00:00:00:00;00:00:00:00:00:00;00:00:00:00:00:00"},
    {"WDS", wifimgr_lib_set_wdsenable, -1, "1"},
    {"SSID count", wifimgr_lib_set_bssidNum, -1, "3"},
    {"SSID 3", wifimgr_lib_set_ssid, 3, "Guests"},
    {"SSID 3 served", wifimgr_lib_set_enableSsid, 3, "1"},
    /* Refused, each with its reason: */
    {"channel", wifimgr_lib_set_channel, -1, "181"},
    {"cipher of SSID 1", wifimgr_lib_set_encrypType, 1, "aes"},
    {"SSID 5 of 3", wifimgr_lib_set_hideSSID, 5, "1"},
    {NULL, NULL, 0, NULL},
};

static const struct wish kWishes5[] = {
    {"SSID 1", wifimgr_lib_set_ssid, 1, "Living Room 5G"},
    {"passphrase of SSID 1", wifimgr_lib_set_WPAPSK, 1, "correct horse battery"},
    {"security of SSID 1", wifimgr_lib_set_authMode, 1, "WPA3PSK"},
    {"channel", wifimgr_lib_set_channel, -1, "0"},
    {"TX power", wifimgr_lib_set_txPower, -1, "80"},
    {"WDS", wifimgr_lib_set_wdsenable, -1, "1"},
    {"SSID count", wifimgr_lib_set_bssidNum, -1, "1"},
    /* Refused: */
    {"wireless mode", wifimgr_lib_set_wirelessMode, -1, "16"},
    {"2.4G region on 5G", wifimgr_lib_set_countryRegion, -1, "5"},
    {"RADIUS server", wifimgr_lib_set_radiusserver, 1, "256.1.1.1"},
    {NULL, NULL, 0, NULL},
};

static void heading(const char* text) {
  int colour = isatty(STDOUT_FILENO);
  printf("%s== %s%s\n", colour ? "\n\033[1m" : "\n", text, colour ? "\033[0m" : "");
}

/* What the answer of the comparison asks for. */
static const char* weight(uint64_t answer) {
  switch (answer) {
    case 0:
      return "0: nothing that is watched has changed";
    case 1:
      return "1: a change of the radio";
    default:
      return "2: a change that wants a reboot (SSID count or hardware NAT)";
  }
}

/* 0 when it cannot be read. */
static int ssid_count(int band) {
  char count[WIFIMGR_VALUE_SIZE] = "";
  if (wifimgr_lib_get_bssidnum(band, -1, count, sizeof count) != 0) return 0;
  return (int)strtol(count, NULL, 10);
}

static int start(int band) {
  /* Loading clears what all processes share of the band: only the process that owns the settings does this. */
  if (wifimgr_lib_init(band) != 0) {
    fprintf(stderr, "%s: cannot load the band; is its dat file there, and writable?\n", kBandNames[band]);
    return 1;
  }
  wifimgr_lib_wifi_config_oper((uint32_t)band, 0);
  printf("%-5s loaded, snapshot taken: interfaces \"%s0\" and on, SSID count %d\n", kBandNames[band],
         store_global[band].prefix, ssid_count(band));
  return 0;
}

static void change(int band, const struct wish* wishes) {
  uint64_t answer = wifimgr_lib_wifi_config_oper((uint32_t)band, 1);
  printf("%-5s before: %s\n", kBandNames[band], weight(answer));
  for (; wishes->what != NULL; ++wishes) {
    uint64_t refused = wishes->set((uint32_t)band, wishes->index, wishes->value);
    printf("%-5s %-26s %-24s %s\n", kBandNames[band], wishes->what, wishes->value, refused ? "refused" : "stored");
    uint64_t now = wifimgr_lib_wifi_config_oper((uint32_t)band, 1);
    if (now != answer) printf("%-5s -> the answer is now %s\n", kBandNames[band], weight(now));
    answer = now;
  }
}

static void show(int band, const char* when) {
  char power[WIFIMGR_VALUE_SIZE] = "", mode[WIFIMGR_VALUE_SIZE] = "", select[WIFIMGR_VALUE_SIZE] = "";
  wifimgr_lib_get_txPower(band, -1, power, sizeof power);
  wifimgr_lib_get_HT_OpMode(band, -1, mode, sizeof mode);
  wifimgr_lib_get_autoChannelSelect(band, -1, select, sizeof select);
  /* What came from the file still ends in its line end; atoi and the like do not mind. */
  int power_percent = 0, ht_mode = 0, auto_select = 0;
  sscanf(power, "%d", &power_percent);
  sscanf(mode, "%d", &ht_mode);
  sscanf(select, "%d", &auto_select);
  printf("%-5s %s TxPower=%d HT_OpMode=%d AutoChannelSelect=%d\n", kBandNames[band], when, power_percent, ht_mode,
         auto_select);
}

static int apply(int band) {
  show(band, "before:");
  wifimgr_lib_check_wifi_value_befor_write_dat((uint32_t)band);
  show(band, "after: ");

  uint64_t answer = wifimgr_lib_wifi_config_oper((uint32_t)band, 1);
  printf("%-5s the comparison answers %s\n", kBandNames[band], weight(answer));
  /* Names, passphrases and the like are not watched: they may have changed all the same. */
  if (answer == 0) return wifimgr_lib_save_dataFile(band);
  /* A gateway may reboot for 2. The commit does without: it writes the dat file, reloads the driver module because the
   * SSID count changed, and brings the interfaces back. */
  if (wifimgr_lib_commit((uint32_t)band, 1) != 0) {
    fprintf(stderr, "%s: the commit failed, nothing was restarted\n", kBandNames[band]);
    return 1;
  }
  wifimgr_lib_wifi_config_oper((uint32_t)band, 0);
  /* The next commit takes down what this one brought up. */
  pre_wlan_state[band] = ssid_count(band);
  printf("%-5s committed; with the new snapshot the answer is %s\n", kBandNames[band],
         weight(wifimgr_lib_wifi_config_oper((uint32_t)band, 1)));
  return 0;
}

/* Settings that the driver takes up while it runs: one script per SSID, written and run. */
static int run_scripts(int band, const char* script) {
  for (int number = 0; number < ssid_count(band); ++number) {
    if (wifimgr_lib_write_wifi_execute_sh((uint32_t)band, (uint32_t)number) != 0) {
      fprintf(stderr, "%s: cannot write %s\n", kBandNames[band], script);
      return 1;
    }
    /* On 5G each run uses up a permission. */
    if (band == 1) wifimgr_lib_set_11AC_CMDflag(1);
    wifimgr_lib_execute_wlan_script(band, script);
    printf("%-5s script of SSID %d written and run\n", kBandNames[band], number + 1);
  }
  return 0;
}

int main(void) {
  /* Refusals' reasons come on standard error, through the platform's debug library: keep both streams in step. */
  setvbuf(stdout, NULL, _IONBF, 0);

  heading("Start-up: load both bands, take the first snapshot");
  if (start(0) != 0 || start(1) != 0) return 1;

  heading("Change settings; ask after each how heavy an apply would be");
  change(0, kWishes24);
  change(1, kWishes5);

  heading("Apply: normalise, compare, commit, new snapshot");
  if (apply(0) != 0 || apply(1) != 0) return 1;

  heading("Bring what needs no restart to the driver: an execute script per SSID");
  if (run_scripts(0, "/etc/Wireless/RT2860AP/WLAN_exec.sh") != 0) return 1;
  if (run_scripts(1, "/etc/Wireless/RT2860AP_AC/WLAN_exec.sh") != 0) return 1;

  heading("One more change that is neither saved nor applied");
  uint64_t refused = wifimgr_lib_set_beaconPeriod(0, -1, "250");
  printf("2.4G  beacon period 250 %s\n", refused ? "refused" : "stored");
  return refused ? 1 : 0;
}
