#include "soak/world.h"

#include <dirent.h>
#include <sys/mount.h>
#include <sys/sem.h>
#include <sys/shm.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "support/sandbox.h"
#include "vexa_lib_dbg.h"
#include "wifimgr_lib.h"

// Commands and messages are not this program's subject: none is run, none printed.
extern "C" {

int system(const char*) {
  return 0;
}

int get_itf_dbg_switch(int, int) {
  return 0;
}

}  // extern "C"

namespace soak {
namespace {

int g_complaints = 0;
std::string g_saved[kBands];
std::string g_keys[kBands];

// Long enough to be read and written in several pieces.
std::string dat_text(int band) {
  std::string text = "Default\n# soaked\nBssidNum=8\nReloadFlag=0\n";
  text += band == 0 ? "WirelessMode=9\nChannel=6\n" : "WirelessMode=14\nChannel=36\n";
  for (const char* const line :
       {"HideSSID=0;1;0;1;0;1;0;1\n", "AuthMode=OPEN;WPA2PSK;WPA2PSK;OPEN;OPEN;OPEN;OPEN;OPEN\n",
        "EncrypType=NONE;AES;AES;NONE;NONE;NONE;NONE;NONE\n", "BeaconPeriod=100\n", "TxPower=100\n", "HT_BW=1\n",
        "WmmCapable=1;1;1;1;1;1;1;1\n", "EnableSSID=1;1;0;0;0;0;0;0\n", "APAifsn=3;7;1;1\n", "WdsEnable=0\n",
        "WdsList=02:00:00:00:00:01;\n", "NoForwarding=0;0;0;0;0;0;0;0\n"}) {
    text += line;
  }
  for (const char ssid : {'1', '2', '3', '4', '5', '6', '7', '8'}) {
    text = text + "SSID" + ssid + "=Network-" + ssid + "\nWPAPSK" + ssid + "=" + std::string(140, ssid) + "\n";
    text = text + "RADIUS_Key" + ssid + "=" + std::string(140, ssid) + "\nKey1Str" + ssid + "=" +
           std::string(100, ssid) + "\n";
  }
  for (const char list : {'0', '1', '2', '3', '4', '5', '6', '7'}) {
    text = text + "AccessPolicy" + list + "=0\nAccessControlList" + list + "=" + std::string(140, list) + "\n";
  }
  return text;
}

void write_file(int band, const std::string& text) {
  std::FILE* const file = std::fopen(sandbox::dat_path(band).c_str(), "w");
  if (file == nullptr || std::fputs(text.c_str(), file) < 0 || std::fclose(file) != 0) {
    std::perror("soak: the dat file");
    std::exit(2);
  }
}

const wifimgr_attr_record* records(int band) {
  return reinterpret_cast<const wifimgr_attr_record*>(band == 0 ? shm_addr_2_4g : shm_addr_5g);
}

size_t room(int band) {
  shmid_ds status;
  const int segment = shmget(band == 0 ? 0x12345 : 0x12346, 0, 0);
  if (segment < 0 || shmctl(segment, IPC_STAT, &status) != 0) return 0;
  return status.shm_segsz / sizeof(wifimgr_attr_record);
}

}  // namespace

void complain(const std::string& rule, const std::string& doing) {
  if (++g_complaints <= 20) std::printf("broken: %s: %s\n", rule.c_str(), doing.c_str());
}

int complaints() {
  return g_complaints;
}

void make_world() {
  sandbox::enter();
  for (const char* const place : {"/etc", "/var"}) {
    if (mount("tmpfs", place, "tmpfs", 0, "mode=0755") != 0) {
      std::perror("soak: mount");
      std::exit(2);
    }
  }
  for (const char* const folder : {"/etc/Wireless", "/etc/Wireless/RT2860AP", "/etc/Wireless/RT2860AP_AC"}) {
    (void)mkdir(folder, 0755);
  }
  for (int band = 0; band < kBands; ++band) {
    write_file(band, dat_text(band));
    if (wifimgr_lib_init(band) != 0 || wifimgr_lib_save_dataFile(band) != 0) {
      std::fprintf(stderr, "soak: band %d cannot be loaded and saved\n", band);
      std::exit(2);
    }
    g_saved[band] = file_text(band);
    g_keys[band] = stored_keys(band);
    (void)wifimgr_lib_wifi_config_oper(static_cast<uint32_t>(band), 0);
  }
}

void restore_world() {
  for (int band = 0; band < kBands; ++band) {
    write_file(band, g_saved[band]);
    if (wifimgr_lib_init(band) != 0) complain("a band can be loaded again", std::to_string(band));
  }
}

const std::string& saved_text(int band) {
  return g_saved[band];
}

std::string file_text(int band) {
  std::string text;
  std::FILE* const file = std::fopen(sandbox::dat_path(band).c_str(), "r");
  if (file == nullptr) return text;
  char part[4096];
  for (size_t count; (count = std::fread(part, 1, sizeof part, file)) > 0;) text.append(part, count);
  (void)std::fclose(file);
  return text;
}

std::string stored_keys(int band) {
  std::string keys;
  const size_t end = room(band);
  for (size_t i = 0; i < end && records(band)[i].key[0] != '\0'; ++i) {
    keys.append(records(band)[i].key, strnlen(records(band)[i].key, WIFIMGR_KEY_SIZE));
    keys += '\n';
  }
  return keys;
}

const std::string& all_keys(int band) {
  return g_keys[band];
}

std::string stored_value(int band, const char* key, int field) {
  const size_t end = room(band);
  for (size_t i = 0; i < end && records(band)[i].key[0] != '\0'; ++i) {
    if (std::strncmp(records(band)[i].key, key, WIFIMGR_KEY_SIZE) != 0) continue;
    const char* const text = records(band)[i].field[field - 1];
    const size_t length = strnlen(text, WIFIMGR_FIELD_SIZE);
    return std::string(text, length > 0 && text[length - 1] == '\n' ? length - 1 : length);
  }
  return "";
}

bool lock_is_free(int band) {
  const int semaphore = semget(band == 0 ? 0x12348 : 0x12349, 1, 0);
  sembuf take = {0, -1, SEM_UNDO};
  sembuf give = {0, +1, SEM_UNDO};
  const timespec second = {1, 0};
  while (semtimedop(semaphore, &take, 1, &second) != 0) {
    if (errno == EINTR) continue;
    // What goes on must not wait for it for ever.
    (void)semctl(semaphore, 0, SETVAL, 1);
    return false;
  }
  return semop(semaphore, &give, 1) == 0;
}

bool store_is_terminated(int band) {
  const size_t end = room(band);
  for (size_t i = 0; i < end; ++i) {
    if (records(band)[i].key[WIFIMGR_KEY_SIZE - 1] != '\0') return false;
    for (const auto& field : records(band)[i].field) {
      if (field[WIFIMGR_FIELD_SIZE - 1] != '\0') return false;
    }
  }
  return end > 0;
}

int open_descriptors() {
  int count = 0;
  DIR* const folder = opendir("/proc/self/fd");
  if (folder == nullptr) return -1;
  while (readdir(folder) != nullptr) ++count;
  (void)closedir(folder);
  return count;
}

}  // namespace soak
