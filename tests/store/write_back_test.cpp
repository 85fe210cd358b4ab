// Writing a band's dat file anew from its store.
#include <dirent.h>
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

// Called before the library joins the fields of a record.
std::function<void()> g_before_merge;

// What ftruncate fails with; 0 for none.
int g_truncation_error = 0;

}  // namespace

extern "C" int merge_para(wifimgr_attr_record* record, char* out, int count) {
  static const auto original = reinterpret_cast<decltype(&merge_para)>(dlsym(RTLD_NEXT, "merge_para"));
  if (g_before_merge) g_before_merge();
  return original(record, out, count);
}

extern "C" int ftruncate(int file, off_t length) noexcept {
  errno = g_truncation_error;
  return errno == 0 ? static_cast<int>(syscall(SYS_ftruncate, file, length)) : -1;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string saved(int band = 0) {
  return sandbox::read_file(sandbox::dat_path(band));
}

// What a save with that SSID count makes of the file.
std::string rewritten(const std::string& dat, int ssids, int band = 0) {
  sandbox::write_file(sandbox::dat_path(band), dat);
  EXPECT_EQ(0, creat_shm_from_datafile(band));
  EXPECT_EQ(0, update_datafile_from_shm(band, ssids));
  return saved(band);
}

std::vector<std::string> errors_of_save(int band = 0, int ssids = 2) {
  return seams::errors_of([=] { EXPECT_EQ(1, update_datafile_from_shm(band, ssids)); });
}

void use_path(int band, const char* path) {
  char buffer[512] = "";
  std::strcpy(buffer, path);
  ASSERT_EQ(0, wifimgr_lib_set_wifi_path(band, buffer));
}

constexpr char kMixed[] =
    "Default\n#comment\n\nBssidNum=2\nSSID1=a\nSSID2=b\nSSID3=c\nAccessPolicy0=0\nAccessPolicy1=1\nAccessPolicy2=2\n"
    "HT_TxStream=1;1;1\n";

// A program attaches by itself, and somebody removes the segment's key before the library has seen it.
TEST(Save, OfASegmentThatNobodyCanMeasureLeavesTheFileWhole) {
  char* const segment = ipc::make_segment(0, 2 * ipc::kRecordSize, '\0');
  std::strcpy(segment, "BssidNum");
  std::strcpy(segment + sizeof wifimgr_attr_record::key, "1");
  sandbox::use_dat_path(0);
  sandbox::write_file(sandbox::dat_path(0), "Default\nBssidNum=1\n");
  ASSERT_EQ(0, shmctl(ipc::segment(0), IPC_RMID, nullptr));
  ASSERT_GE(ipc::make_semaphore(0, 1), 0);
  shm_addr_2_4g = segment;
  EXPECT_EQ(1, update_datafile_from_shm(0, 1));
  EXPECT_EQ("Default\nBssidNum=1\n", sandbox::read_file(sandbox::dat_path(0)));
}

TEST(Save, WritesAsManyFieldsAndKeysAsThereAreSsids) {
  for (int band : {0, 1}) {
    sandbox::load(band, kMixed);
    EXPECT_EQ(0, wifimgr_lib_save_dataFile(band));
    EXPECT_EQ("Default\nBssidNum=2\nSSID1=a\nSSID2=b\nAccessPolicy0=0\nAccessPolicy1=1\nHT_TxStream=1;1\n",
              saved(band));
  }
}

TEST(Save, CutsSharedKeysToTheSsidCount) {
  const struct {
    int ssids;
    const char* line;
  } rows[] = {{-2147483647, "K="},
              {-1, "K="},
              {0, "K="},
              {1, "K=1"},
              {2, "K=1;2"},
              {3, "K=1;2;3"},
              {7, "K=1;2;3;4;5;6;7"},
              {8, "K=1;2;3;4;5;6;7;8"},
              {9, "K=1;2;3;4;5;6;7;8"},
              {2147483647, "K=1;2;3;4;5;6;7;8"}};
  for (const auto& row : rows) {
    EXPECT_EQ(std::string("Default\n") + row.line + "\n", rewritten("K=1;2;3;4;5;6;7;8\n", row.ssids));
  }
}

TEST(Save, StopsAtTheFirstEmptyField) {
  EXPECT_EQ("Default\nK=1\n", rewritten("K=1\n", 8));
  ASSERT_EQ(0, update_attr(0, 3, "K", "3"));
  ASSERT_EQ(0, update_datafile_from_shm(0, 8));
  EXPECT_EQ("Default\nK=1\n", saved());
  ASSERT_EQ(0, update_attr(0, 1, "K", ""));
  ASSERT_EQ(0, update_datafile_from_shm(0, 8));
  EXPECT_EQ("Default\nK=\n", saved());
}

TEST(Save, LeavesOutTheKeysNumberedFromOneAboveTheCount) {
  for (const char* family : {"SSID", "RADIUS_Key", "WscDefaultSSID", "WPAPSK", "Key1Str", "Key2Str", "Key3Str",
                             "Key4Str", "WSC_UUID_E", "WSC_UUID_Str"}) {
    SCOPED_TRACE(family);
    const std::string key = family, line = key + "3=x\n";
    EXPECT_EQ("Default\n", rewritten(line, 2));
    EXPECT_EQ("Default\n" + line, rewritten(line, 3));
    EXPECT_EQ("Default\n" + line, rewritten(line, 4));
    EXPECT_EQ("Default\n", rewritten(key + "1=x\n", 0));
    EXPECT_EQ("Default\n", rewritten(key + "1=x\n", -5));
    EXPECT_EQ("Default\n" + key + "12=x\n", rewritten(key + "12=x\n", 12));
    EXPECT_EQ("Default\n", rewritten(key + "12=x\n", 11));
    EXPECT_EQ("Default\n" + key + "Tail=x\n", rewritten(key + "Tail=x\n", 0));
  }
}

TEST(Save, LeavesOutTheKeysNumberedFromZeroAtTheCount) {
  for (const char* family : {"AccessPolicy", "AccessControlList"}) {
    SCOPED_TRACE(family);
    const std::string key = family, line = key + "3=x\n";
    EXPECT_EQ("Default\n", rewritten(line, 2));
    EXPECT_EQ("Default\n", rewritten(line, 3));
    EXPECT_EQ("Default\n" + line, rewritten(line, 4));
    EXPECT_EQ("Default\n", rewritten(key + "0=x\n", 0));
    EXPECT_EQ("Default\n" + key + "0=x\n", rewritten(key + "0=x\n", 1));
    EXPECT_EQ("Default\n", rewritten(key + "Tail=x\n", 0));
    EXPECT_EQ("Default\n" + key + "Tail=x\n", rewritten(key + "Tail=x\n", 1));
  }
}

TEST(Save, WritesOneFieldOfANumberedKey) {
  EXPECT_EQ("Default\nSSID1=a\nAccessControlList0=m\n", rewritten("SSID1=a;b;c\nAccessControlList0=m;n\n", 4));
}

TEST(Save, WritesWholeValuesWhole) {
  EXPECT_EQ("Default\nAPAifsn=3;7;1;1\nWdsList=\nAPACM=0\n", rewritten("APAifsn=3;7;1;1\nWdsList=\nAPACM=0\n", 1));
  EXPECT_EQ("Default\nAPAifsn=\n", rewritten("APAifsn=3;7;1;1\n", 0));
}

TEST(Save, EndsAtTheFirstRecordWithoutAKey) {
  EXPECT_EQ("Default\nA=1\n", rewritten("A=1\n=2\nB=3\n", 1));
}

TEST(Save, KeepsTheStoreWhole) {
  sandbox::load(0, kMixed);
  const std::string before = sandbox::segment_bytes(0);
  ASSERT_EQ(0, update_datafile_from_shm(0, 1));
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST(Save, CountsTheSsidsThatAreStored) {
  const struct {
    const char* count;
    const char* line;
  } rows[] = {{"1", "K=1\n"},    {"3", "K=1;2;3\n"}, {"abc", "K=\n"},
              {"2x", "K=1;2\n"}, {"-1", "K=\n"},     {"99", "K=1;2;3\n"}};
  for (const auto& row : rows) {
    sandbox::load(0, "K=1;2;3\nBssidNum=8\n");
    ASSERT_EQ(0, update_attr(0, -1, "BssidNum", row.count));
    EXPECT_EQ(0, wifimgr_lib_save_dataFile(0));
    EXPECT_EQ(0U, saved().find(std::string("Default\n") + row.line + "BssidNum=")) << row.count;
  }
}

TEST(Save, WithoutAnSsidCountIsAPlainFailureThatLeavesTheFile) {
  sandbox::write_file(sandbox::dat_path(0), "#A\nA=1\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_save_dataFile(0)); }),
              ElementsAre("[read_attr]:===Fail Exit===The attr_name do not exist.\n"));
  EXPECT_EQ("[wifimgr_lib_save_dataFile]:===Fail Exit===\n",
            seams::trace_of([] { wifimgr_lib_save_dataFile(0); }).back());
  EXPECT_EQ("#A\nA=1\n", saved());
}

TEST(Save, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(errors_of_save(band),
                ElementsAre("[update_datafile_from_shm]:===Fail Exit===The wifi_type is wrong.\n"));
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, wifimgr_lib_save_dataFile(band)); }),
                ElementsAre("[read_attr]:===Fail Exit===The wifi_type is wrong.\n"));
  }
}

TEST(Save, OfAnUnattachedBandLeavesTheFile) {
  sandbox::write_file(sandbox::dat_path(0), "A=1\n");
  ipc::make_semaphore(0, 1);
  EXPECT_EQ(1, update_datafile_from_shm(0, 1));
  EXPECT_EQ("A=1\n", saved());
}

TEST(Save, WhoseLockFailsBeforeTheFileIsOpenLeavesIt) {
  sandbox::load(0, kMixed);
  seams::fail(seams::semop_fault, 1, EINTR);
  EXPECT_THAT(errors_of_save(), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                            "[update_datafile_from_shm]:===Fail Exit===p operation failed.\n"));
  EXPECT_EQ(kMixed, saved());
  seams::fail(seams::semop_fault, 2, ERANGE);
  EXPECT_THAT(errors_of_save(), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                            "[update_datafile_from_shm]:===Fail Exit===v operation failed.\n"));
  EXPECT_EQ(kMixed, saved());
}

TEST(Save, WhoseLockFailsAfterTheFileIsOpenLeavesItTruncated) {
  sandbox::load(0, kMixed);
  seams::fail(seams::semop_fault, 3, EINTR);
  EXPECT_THAT(errors_of_save(), ElementsAre("[semaphore_p]:===Fail Exit===seamphore_p failed.\n",
                                            "[update_datafile_from_shm]:===Fail Exit===p operation failed.\n"));
  EXPECT_EQ("", saved());
}

TEST(Save, WhoseUnlockFailsHasWrittenTheFile) {
  sandbox::load(0, "BssidNum=2\n");
  seams::fail(seams::semop_fault, 4, ERANGE);
  EXPECT_THAT(errors_of_save(), ElementsAre("[semaphore_v]:===Fail Exit===seamphore_v failed.\n",
                                            "[update_datafile_from_shm]:===Fail Exit===v operation failed.\n"));
  EXPECT_EQ("Default\nBssidNum=2\n", saved());
}

TEST(Save, IntoAFileThatCannotBeOpenedIsRefused) {
  sandbox::load(0, kMixed);
  use_path(0, "/tmp/none/2.4g.dat");
  EXPECT_THAT(errors_of_save(),
              ElementsAre("[update_datafile_from_shm]:===Fail Exit===Open the file /tmp/none/2.4g.dat "
                          "failed.\n"));
  use_path(0, "/tmp/dat");
  EXPECT_THAT(errors_of_save(),
              ElementsAre("[update_datafile_from_shm]:===Fail Exit===Open the file /tmp/dat failed.\n"));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST(Save, IntoAFullDeviceIsAPlainFailure) {
  sandbox::load(0, kMixed);
  use_path(0, "/dev/full");
  EXPECT_THAT(errors_of_save(), IsEmpty());
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST(Save, CreatesAMissingFile) {
  sandbox::load(0, "BssidNum=1\n");
  ASSERT_EQ(0, unlink(sandbox::dat_path(0).c_str()));
  EXPECT_EQ(0, update_datafile_from_shm(0, 1));
  EXPECT_EQ("Default\nBssidNum=1\n", saved());
}

TEST(Save, WritesInPlace) {
  sandbox::load(0, "BssidNum=1\n" + std::string(500, '#') + "\n");
  ASSERT_EQ(0, link(sandbox::dat_path(0).c_str(), "/tmp/dat/link"));
  ASSERT_EQ(0, chmod("/tmp/dat/link", 0640));
  ASSERT_EQ(0, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ("Default\nBssidNum=1\n", sandbox::read_file("/tmp/dat/link"));
  struct stat status {};
  ASSERT_EQ(0, stat(sandbox::dat_path(0).c_str(), &status));
  EXPECT_EQ(2U, status.st_nlink);
  EXPECT_EQ(0640U, status.st_mode & 07777);
  DIR* const directory = opendir("/tmp/dat");
  std::vector<std::string> names;
  while (const dirent* entry = readdir(directory)) names.emplace_back(entry->d_name);
  closedir(directory);
  EXPECT_THAT(names, testing::UnorderedElementsAre(".", "..", "link", "2.4g.dat"));
}

TEST(Save, TakesLinesOf185CharactersWhateverTheyEndIn) {
  const struct {
    const char* second_end;
    const char* third;
    size_t longest;
  } rows[] = {{"", "", 32}, {"\n", "", 32}, {"\n\n", "", 32}, {"", "\n", 31}, {"", "\n\n", 31}, {"", "z", 30}};
  sandbox::load(0, "BssidNum=3\nK=1\nEnd=1\n");
  ASSERT_EQ(0, update_attr(0, 1, "K", std::string(149, 'a').c_str()));
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    ASSERT_EQ(0, update_attr(0, 3, "K", row.third));
    ASSERT_EQ(0, update_attr(0, 2, "K", (std::string(row.longest, 'b') + row.second_end).c_str()));
    EXPECT_EQ(0, update_datafile_from_shm(0, 3));
    const std::string before = saved();
    const size_t start = before.find("K=");
    EXPECT_EQ(185U, before.find("\nEnd=") + 1 - start);
    ASSERT_EQ(0, update_attr(0, 2, "K", (std::string(row.longest + 1, 'b') + row.second_end).c_str()));
    EXPECT_EQ(1, update_datafile_from_shm(0, 3));
    EXPECT_EQ(before, saved());
  }
}

TEST(Save, HoldsTheLockForTheWholeRewrite) {
  sandbox::load(0, kMixed);
  std::vector<int> values;
  seams::on_trace = [&](const std::string& line) {
    if (line == "[merge_para]:===Enter===\n") values.push_back(ipc::semaphore_value(0));
  };
  const int steps = seams::semop_fault.calls;
  seams::trace_of([] { EXPECT_EQ(0, update_datafile_from_shm(0, 2)); });
  EXPECT_EQ(4, seams::semop_fault.calls - steps);
  EXPECT_THAT(values, testing::AllOf(testing::SizeIs(6), testing::Each(0)));
  EXPECT_EQ(1, ipc::semaphore_value(0));
}

TEST(Save, LeavesNothingOfASaveThatCameBetween) {
  sandbox::load(0, kMixed);
  int steps = 0;
  seams::on_trace = [&](const std::string& line) {
    // The second P is that of the rewrite: the file is open by then.
    if (line == "[semaphore_p]:===Enter===\n" && ++steps == 2) {
      sandbox::write_file(sandbox::dat_path(0), "Default\n" + std::string(5000, 'x') + "\nEnd=1\n");
    }
  };
  seams::trace_of([] { EXPECT_EQ(0, update_datafile_from_shm(0, 2)); });
  EXPECT_EQ("Default\nBssidNum=2\nSSID1=a\nSSID2=b\nAccessPolicy0=0\nAccessPolicy1=1\nHT_TxStream=1;1\n", saved());
}

// Space that is there again must not bring what comes behind the lost part.
TEST(Save, ThatLosesAPartEndsBeforeIt) {
  std::string dat = "BssidNum=1\n";
  for (int i = 0; i < 200; ++i) dat += "Key" + std::to_string(i) + "=" + std::string(100, 'v') + "\n";
  const std::string whole = rewritten(dat, 1);
  ASSERT_LT(2 * 8192u, whole.size());
  for (const int lost_until : {60, 120, 200}) {
    seams::limit_file_size(1000);
    int lines = 0;
    g_before_merge = [&] {
      if (++lines == lost_until) seams::limit_file_size(RLIM_INFINITY);
    };
    EXPECT_THAT(errors_of_save(0, 1), IsEmpty());
    EXPECT_EQ(whole.substr(0, 1000), saved()) << lost_until;
  }
}

TEST(Save, ThatLostAPartWritesNoneOfTheRestWhenItCloses) {
  std::string dat = "BssidNum=1\n";
  for (int i = 0; i < 200; ++i) dat += "Key" + std::to_string(i) + "=" + std::string(100, 'v') + "\n";
  const std::string whole = rewritten(dat, 1);
  seams::limit_file_size(1000);
  int releases = 0;
  seams::on_trace = [&](const std::string& line) {
    // The second V is that of the rewrite.
    if (line == "[semaphore_v]:===Enter===\n" && ++releases == 2) seams::limit_file_size(RLIM_INFINITY);
  };
  seams::trace_of([] { EXPECT_EQ(1, update_datafile_from_shm(0, 1)); });
  EXPECT_EQ(2, releases);
  EXPECT_EQ(whole.substr(0, 1000), saved());
}

TEST(Save, CountsOnlyWhatItWouldWriteOfALine) {
  sandbox::load(0, kMixed);
  const std::string wide(149, 'x');
  ipc::replace_record(0, "HT_TxStream", ipc::record("HT_TxStream", {"1", "", wide, wide}));
  EXPECT_EQ(0, update_datafile_from_shm(0, 8));
}

// Another process makes the widest line that there can be behind the check's back.
TEST(Save, HasRoomForTheWidestRecord) {
  sandbox::load(0, "BssidNum=8\nWidest=1\n");
  const std::string key(36, 'k');
  int releases = 0;
  seams::on_trace = [&](const std::string& line) {
    if (line != "[semaphore_v]:===Enter===\n" || ++releases != 1) return;
    const std::vector<std::string> fields(8, std::string(150, 'f'));
    ipc::replace_record(0, "Widest", ipc::record(key, fields));
  };
  seams::trace_of([] { EXPECT_EQ(0, update_datafile_from_shm(0, 8)); });
  std::string line = key + "=";
  for (int i = 0; i < 8; ++i) line += std::string(149, 'f') + (i < 7 ? ";" : "\n");
  EXPECT_EQ("Default\nBssidNum=8\n" + line, saved());
}

TEST(Save, WhoseFileCannotBeEmptiedIsAPlainFailure) {
  sandbox::load(0, kMixed);
  g_truncation_error = EIO;
  EXPECT_THAT(errors_of_save(), IsEmpty());
}

TEST(Save, IntoWhatHasNoLengthSucceeds) {
  sandbox::load(0, kMixed);
  g_truncation_error = EINVAL;
  EXPECT_EQ(0, update_datafile_from_shm(0, 2));
}

TEST(Save, DoesNotDependOnAnEarlierError) {
  sandbox::load(0, kMixed);
  for (const int earlier : {0, EIO, EINVAL}) {
    errno = earlier;
    EXPECT_EQ(0, update_datafile_from_shm(0, 2)) << earlier;
  }
}

TEST(Save, IntoAFileThatCannotBeOpenedFailsWithoutTraceToo) {
  sandbox::load(0, kMixed);
  use_path(0, "/tmp/dat");
  EXPECT_EQ(1, update_datafile_from_shm(0, 2));
}

TEST(Save, OfOneBandLeavesTheOtherAlone) {
  for (int band : {0, 1}) sandbox::load(band, kMixed);
  const std::string before = sandbox::segment_bytes(1);
  ASSERT_EQ(0, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ(before, sandbox::segment_bytes(1));
  EXPECT_EQ(kMixed, saved(1));
}

TEST(Save, ThatFailsClosesItsFiles) {
  sandbox::load(0, kMixed);
  const int first = dup(0);
  close(first);
  for (int nth : {1, 2, 3, 4}) {
    seams::fail(seams::semop_fault, nth, EINVAL);
    EXPECT_EQ(1, update_datafile_from_shm(0, 2));
    seams::fail(seams::semop_fault, 0, 0);
    semctl(ipc::semaphore(0), 0, SETVAL, 1);
  }
  const int after = dup(0);
  EXPECT_EQ(first, after);
  close(after);
}

}  // namespace
