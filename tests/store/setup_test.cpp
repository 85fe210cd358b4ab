// What a management process calls first: loading a band, the dat file's path, the version.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

char (&path_buffer(int band))[WIFIMGR_DAT_PATH_SIZE] {
  return band == 0 ? dat_path_2_4g : dat_path_5g;
}

// What the buffers held when the program started, before the sandbox pointed them elsewhere.
const std::string g_first_paths[] = {std::string(dat_path_2_4g, WIFIMGR_DAT_PATH_SIZE),
                                     std::string(dat_path_5g, WIFIMGR_DAT_PATH_SIZE)};

void write_dat(int band, const std::string& text) {
  sandbox::write_file(sandbox::dat_path(band), text);
}

TEST(Init, RemembersTheSsidCount) {
  const struct {
    const char* value;
    int32_t count;
  } rows[] = {{"4", 4}, {"0", 0}, {"16", 16}, {"abc", 0}, {"3x", 3}, {"-2", -2}, {"", 0}, {"7;1;2", 7}, {" 5", 5}};
  for (const auto& row : rows) {
    for (int band : {0, 1}) {
      pre_wlan_state[0] = pre_wlan_state[1] = 77;
      sandbox::load(band, "BssidNum=" + std::string(row.value) + "\n");
      EXPECT_EQ(row.count, pre_wlan_state[band]) << row.value;
      EXPECT_EQ(77, pre_wlan_state[1 - band]) << row.value;
    }
  }
}

TEST(Init, NothingIsRememberedAtTheStart) {
  EXPECT_EQ(0, pre_wlan_state[0] | pre_wlan_state[1]);
}

TEST(Init, LoadsTheFile) {
  sandbox::load(1, "BssidNum=2\nChannel=36\n");
  EXPECT_EQ("36\n", sandbox::field(1, "Channel", 1));
}

TEST(Init, OfAnUnreadableFileIsRefused) {
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_init(1)); }),
              ElementsAre("[init_shm]:===Fail Exit===Create share memory failed.\n",
                          "[creat_shm_from_datafile]:===Fail Exit===Initialize share memory for 5G failed.\n",
                          "[wifimgr_lib_init]:===Fail Exit===Initialize the share memory failed!\n"));
}

TEST(Init, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, wifimgr_lib_init(band)); }),
                ElementsAre("[creat_shm_from_datafile]:===Fail Exit===The wifi_type is wrong.\n",
                            "[wifimgr_lib_init]:===Fail Exit===Initialize the share memory failed!\n"));
  }
}

TEST(Init, WithoutAnSsidCountFailsAndLeavesTheStoreLoaded) {
  write_dat(0, "Channel=6\n");
  pre_wlan_state[0] = 77;
  const std::vector<std::string> trace = seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_init(0)); });
  EXPECT_EQ("[wifimgr_lib_init]:===Enter===\n", trace.front());
  EXPECT_EQ("[wifimgr_lib_init]:===Fail Exit===\n", trace.back());
  EXPECT_EQ("6\n", sandbox::field(0, "Channel", 1));
  EXPECT_EQ(77, pre_wlan_state[0]);
}

TEST(Init, WithoutAnSsidCountGivesOnlyTheReadersReason) {
  write_dat(0, "Channel=6\n");
  EXPECT_THAT(seams::errors_of([] { wifimgr_lib_init(0); }),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
}

TEST(Init, ReplacesUnsavedChanges) {
  sandbox::load(0, "BssidNum=2\nChannel=6\n");
  ASSERT_EQ(0, update_attr(0, -1, "Channel", "11"));
  ASSERT_EQ(0, wifimgr_lib_init(0));
  EXPECT_EQ("6\n", sandbox::field(0, "Channel", 1));
}

TEST(SsidCount, IsReadAsStored) {
  for (int band : {0, 1}) {
    sandbox::load(band, "BssidNum=4\n");
    char buffer[160];
    std::memset(buffer, 'x', sizeof buffer);
    EXPECT_EQ(0, wifimgr_lib_get_bssidnum(band, -1, buffer, sizeof buffer));
    EXPECT_EQ("4\n" + std::string(148, '\0') + std::string(10, 'x'), std::string(buffer, sizeof buffer));
  }
}

TEST(SsidCount, WantsIndexMinusOneBeforeAnythingElse) {
  char buffer[160] = "old";
  for (int index : {0, 1, 8, -2, 2147483647}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_bssidnum(2, index, buffer, 1)); }),
                ElementsAre("[wifimgr_lib_get_bssidnum]:===Fail Exit===The index should be -1.\n"));
  }
  EXPECT_STREQ("old", buffer);
}

TEST(SsidCount, PassesTheRefusalsOfTheStoreOn) {
  sandbox::load(0, "BssidNum=4\n");
  char buffer[160];
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_bssidnum(2, -1, buffer, 160)); }),
              ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n"));
  EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_bssidnum(0, -1, buffer, 150)); }),
              ElementsAre("[read_attr]:===Fail Exit===The size of buffer is too small!\n"));
  EXPECT_EQ(1, wifimgr_lib_get_bssidnum(0, -1, nullptr, 160));
}

TEST(DatPath, StartsAsTheGatewaysOwn) {
  const char* const paths[] = {"/etc/Wireless/RT2860AP/RT2860AP.dat", "/etc/Wireless/RT2860AP_AC/RT2860AP.dat"};
  for (int band : {0, 1}) {
    std::string padded = paths[band];
    padded.resize(512, '\0');
    EXPECT_EQ(padded, g_first_paths[band]);
  }
}

TEST(DatPath, Copies512BytesAsTheyAre) {
  for (int band : {0, 1}) {
    const std::string other(path_buffer(1 - band), WIFIMGR_DAT_PATH_SIZE);
    std::string path(600, 'p');
    path.replace(5, 1, 1, '\0');
    EXPECT_EQ(0, wifimgr_lib_set_wifi_path(band, path.data()));
    EXPECT_EQ(path.substr(0, 512), std::string(path_buffer(band), WIFIMGR_DAT_PATH_SIZE));
    EXPECT_EQ(other, std::string(path_buffer(1 - band), WIFIMGR_DAT_PATH_SIZE));
  }
}

TEST(DatPath, MayBeTakenFromTheBufferItself) {
  const std::string before(dat_path_2_4g, 512);
  EXPECT_EQ(0, wifimgr_lib_set_wifi_path(0, dat_path_2_4g));
  EXPECT_EQ(before, std::string(dat_path_2_4g, 512));
}

TEST(DatPath, CountsFromTheNextLoadAndSave) {
  sandbox::load(0, "BssidNum=1\nChannel=6\n");
  sandbox::write_file("/tmp/dat/other.dat", "BssidNum=1\nChannel=11\n");
  char path[512] = "/tmp/dat/other.dat";
  ASSERT_EQ(0, wifimgr_lib_set_wifi_path(0, path));
  ASSERT_EQ(0, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ("Default\nBssidNum=1\nChannel=6\n", sandbox::read_file("/tmp/dat/other.dat"));
  sandbox::write_file("/tmp/dat/other.dat", "BssidNum=1\nChannel=13\n");
  ASSERT_EQ(0, wifimgr_lib_init(0));
  EXPECT_EQ("13\n", sandbox::field(0, "Channel", 1));
  EXPECT_EQ("BssidNum=1\nChannel=6\n", sandbox::read_file(sandbox::dat_path(0)));
}

TEST(DatPath, WithoutATerminatorCountsAsItsFirst511Characters) {
  std::string path = "/tmp/";
  while (path.size() + 251 < 511) {
    path += std::string(250, 'd') + "/";
    ASSERT_EQ(0, mkdir(path.c_str(), 0755));
  }
  path += std::string(511 - path.size(), 'f');
  sandbox::write_file(path, "BssidNum=1\nChannel=9\n");
  const std::string unterminated = path + "X";
  ASSERT_EQ(0, wifimgr_lib_set_wifi_path(0, unterminated.data()));
  EXPECT_EQ('X', dat_path_2_4g[511]);
  EXPECT_EQ(7, get_dat_para_num(0));
  EXPECT_EQ(0, wifimgr_lib_init(0));
  EXPECT_EQ(0, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ("Default\nBssidNum=1\nChannel=9\n", sandbox::read_file(path));
}

TEST(DatPath, OfAnotherBandIsRefused) {
  char path[512] = "/tmp/x";
  for (int band : {2, -1}) {
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_set_wifi_path(band, path)); }),
                ElementsAre("[wifimgr_lib_set_wifi_path]:===Fail Exit===The wifi type is invalid.\n"));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_set_wifi_path(band, nullptr)); }),
                ElementsAre("[wifimgr_lib_set_wifi_path]:===Fail Exit===The wifi type is invalid.\n"));
  }
  EXPECT_EQ(sandbox::dat_path(0), dat_path_2_4g);
  EXPECT_EQ(sandbox::dat_path(1), dat_path_5g);
}

TEST(DatPath, OfNullIsAPlainFailure) {
  EXPECT_THAT(
      seams::trace_of([] { EXPECT_EQ(1, wifimgr_lib_set_wifi_path(0, nullptr)); }),
      ElementsAre("[wifimgr_lib_set_wifi_path]:===Enter===\n", "[wifimgr_lib_set_wifi_path]:===Fail Exit===\n"));
  EXPECT_EQ(sandbox::dat_path(0), dat_path_2_4g);
}

TEST(Version, IsTheSameForBothBandsInAClearedBuffer) {
  for (int band : {0, 1}) {
    std::string buffer(20, 'x');
    EXPECT_EQ(0, wifimgr_lib_get_version(band, buffer.data(), 16));
    EXPECT_EQ("7915" + std::string(12, '\0') + "xxxx", buffer);
  }
}

TEST(Version, IsCutToTheLength) {
  const struct {
    int length;
    std::string written;
  } rows[] = {{5, std::string("7915\0", 5)},
              {4, std::string("791\0", 4)},
              {2, std::string("7\0", 2)},
              {1, std::string("\0", 1)},
              {0, ""},
              {-1, ""},
              {-2147483647, ""}};
  for (const auto& row : rows) {
    std::string buffer(8, 'x');
    EXPECT_EQ(0, wifimgr_lib_get_version(0, buffer.data(), row.length));
    EXPECT_EQ(row.written + std::string(8 - row.written.size(), 'x'), buffer) << row.length;
  }
}

TEST(Version, OfAnotherBandIsMinusOneWithTheBufferCleared) {
  for (int band : {2, -1}) {
    std::string buffer(20, 'x');
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(-1, wifimgr_lib_get_version(band, buffer.data(), 16)); }),
                ElementsAre("[wifimgr_lib_get_version]:===Fail Exit===The wifi_type is wrong.\n"));
    EXPECT_EQ(std::string(16, '\0') + "xxxx", buffer);
  }
  char one = 'x';
  EXPECT_EQ(-1, wifimgr_lib_get_version(2, &one, 1));
  EXPECT_EQ('\0', one);
}

TEST(Version, OfNullIsAFailure) {
  EXPECT_EQ(1, wifimgr_lib_get_version(0, nullptr, 16));
  EXPECT_EQ(1, wifimgr_lib_get_version(0, nullptr, 0));
}

}  // namespace
