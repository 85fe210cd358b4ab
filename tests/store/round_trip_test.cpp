// From the file to the store and back to the file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <random>
#include <string>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::Contains;

void write_dat(const std::string& text, int band = 0) {
  sandbox::write_file(sandbox::dat_path(band), text);
}
std::string saved(int band = 0) {
  return sandbox::read_file(sandbox::dat_path(band));
}

// The file after a load and a save with eight SSIDs.
std::string after_a_trip(const std::string& text, int band = 0) {
  write_dat(text, band);
  EXPECT_EQ(0, creat_shm_from_datafile(band));
  EXPECT_EQ(0, update_datafile_from_shm(band, 8));
  return saved(band);
}

std::string key_number(int number) {
  std::string key = "Key";
  return key += std::to_string(number);
}

// A key and two fields that make a line of `length` characters.
std::string line_of(size_t length) {
  return "BigKey=" + std::string(100, 'a') + ";" + std::string(length - 108, 'b');
}

TEST(RoundTrip, OfOneLine) {
  const struct {
    const char* line;
    const char* saved;
  } rows[] = {
      {"K=v\n", "K=v\n"},
      {"K=v", "K=v\n"},
      {"K=\n", "K=\n"},
      {"K=", "K=\n"},
      {"K=a;b;c\n", "K=a;b;c\n"},
      {"K=a;b;c;\n", "K=a;b;c\n"},
      {"K=;a;;b;\n", "K=a;b\n"},
      {"K=;\n", "K=\n"},
      {"K=1;2;3;4;5;6;7;8;9\n", "K=1;2;3;4;5;6;7;8\n"},
      {"K=a=b\n", "K=a\n"},
      {" K = v \n", " K = v \n"},
      {"K=#v\n", "K=#v\n"},
      {"#K=v\n", ""},
      {"\n", ""},
      {"Default\n", ""},
      {"Def\n", ""},
      {"=v\n", ""},
      {"Defaults=1\n", "Defaults=1\n"},
      {"WdsList=\n", "WdsList=\n"},
      {"WdsList=;;a;\n", "WdsList=;;a;\n"},
      {"APACM=0\n", "APACM=0\n"},
      {"APAifsn=3;7;1;1\n", "APAifsn=3;7;1;1\n"},
      {"SSID1=My Home\n", "SSID1=My Home\n"},
      {"SSID1=My;Home\n", "SSID1=My\n"},
      {"SSID9=x\n", ""},
      {"AccessPolicy8=x\n", ""},
      {"NoValue\n", "NoValue\n=\n"},
      {"K=\xc3\xa4\xff\n", "K=\xc3\xa4\xff\n"},
  };
  for (int band : {0, 1}) {
    for (const auto& row : rows) {
      EXPECT_EQ(std::string("Default\nBefore=1\n") + row.saved,
                after_a_trip(std::string("Default\nBefore=1\n") + row.line, band))
          << row.line;
    }
  }
}

TEST(RoundTrip, OfASavedFileChangesNothing) {
  const std::string once = after_a_trip("Default\n#c\nA=1\nB=1;2;3\nSSID1=x\nWdsList=a;;\nC=\nLast=end");
  EXPECT_EQ("Default\nA=1\nB=1;2;3\nSSID1=x\nWdsList=a;;\nC=\nLast=end\n", once);
  EXPECT_EQ(once, after_a_trip(once));
}

TEST(RoundTrip, OfCarriageReturnsKeepsThoseOfSplitValues) {
  EXPECT_EQ("Default\nDefault\r\n=\nChannel=6\r\nHT_TxStream=1;2\r\nNone=\r\nAPAifsn=3;7;1;1\n\r\n=\n",
            after_a_trip("Default\r\nChannel=6\r\nHT_TxStream=1;2\r\nNone=\r\nAPAifsn=3;7;1;1\r\n\r\n"));
}

TEST(RoundTrip, OfALineOfUpTo184CharactersKeepsIt) {
  for (size_t length : {150U, 183U, 184U}) {
    const std::string text = "Default\n" + line_of(length) + "\nAfter=1\n";
    EXPECT_EQ(text, after_a_trip(text)) << length;
  }
}

TEST(RoundTrip, OfALongerLineIsRefusedBeforeTheFileIsTouched) {
  for (size_t length : {185U, 186U, 200U, 250U}) {
    for (const char* end : {"\n", ""}) {
      const std::string text = "Default\n" + line_of(length) + end;
      write_dat(text);
      ASSERT_EQ(0, creat_shm_from_datafile(0));
      EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, update_datafile_from_shm(0, 8)); }), testing::IsEmpty());
      EXPECT_EQ("[update_datafile_from_shm]:===Fail Exit===\n",
                seams::trace_of([] { update_datafile_from_shm(0, 8); }).back());
      EXPECT_EQ(text, saved()) << length;
      EXPECT_EQ(1, ipc::semaphore_value(0));
    }
  }
}

TEST(RoundTrip, OfALongLineReadsItsPartsAsLines) {
  write_dat(line_of(185) + "\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(std::string(77, 'b'), sandbox::field(0, "BigKey", 2));
  write_dat(line_of(186) + "\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(std::string(77, 'b'), sandbox::field(0, "BigKey", 2));
  unsigned index = 0;
  EXPECT_EQ(2, is_attr_exist(shm_addr_2_4g, "b\n", &index));
}

TEST(RoundTrip, OfALineOf400CharactersMakesThreeLinesOfIt) {
  EXPECT_EQ(
      "Default\nKey=" + std::string(149, 'x') + "\n" + std::string(35, 'x') + "=\n" + std::string(30, 'x') + "\n=\n",
      after_a_trip("Default\nKey=" + std::string(396, 'x') + "\n"));
}

TEST(RoundTrip, RefusesAValueThatHasGrownBeyondALine) {
  const std::string key = "SSID5" + std::string(30, 'k');
  write_dat("Default\nA=1;2\n" + key + "=x\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  ASSERT_EQ(0, update_attr(0, -1, key.c_str(), std::string(148, 'v').c_str()));
  EXPECT_EQ(0, update_datafile_from_shm(0, 5));
  const std::string fits = "Default\nA=1;2\n" + key + "=" + std::string(148, 'v') + "\n";
  EXPECT_EQ(fits, saved());
  ASSERT_EQ(0, update_attr(0, -1, key.c_str(), std::string(149, 'v').c_str()));
  EXPECT_EQ(1, update_datafile_from_shm(0, 5));
  EXPECT_EQ(fits, saved());
  EXPECT_EQ(0, update_datafile_from_shm(0, 4)) << "a key that is left out cannot be too long";
  EXPECT_EQ("Default\nA=1;2\n", saved());
}

TEST(RoundTrip, MeasuresOnlyTheFieldsThatAreWritten) {
  write_dat("A=" + std::string(100, 'a') + ";b\n");
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  ASSERT_EQ(0, update_attr(0, 2, "A", std::string(149, 'b').c_str()));
  EXPECT_EQ(1, update_datafile_from_shm(0, 2));
  EXPECT_EQ(0, update_datafile_from_shm(0, 1));
  EXPECT_EQ("Default\nA=" + std::string(100, 'a') + "\n", saved());
}

TEST(RoundTrip, RefusesATooLongLineBehindOthers) {
  std::string text = "Default\n";
  for (int i = 0; i < 50; ++i) text += key_number(i) + "=v\n";
  text += line_of(185) + "\n";
  write_dat(text);
  ASSERT_EQ(0, creat_shm_from_datafile(0));
  EXPECT_EQ(1, update_datafile_from_shm(0, 8));
  EXPECT_EQ(text, saved());
}

TEST(RoundTrip, Of500LinesKeepsThemAll) {
  std::string text = "Default\n";
  for (int i = 0; i < 500; ++i) text += key_number(i) + "=" + std::to_string(i * i) + ";b\n";
  EXPECT_EQ(text, after_a_trip(text));
}

TEST(RoundTrip, OfRandomLinesKeepsThem) {
  const unsigned seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const std::string letters = "abcXYZ019 _-.:,/\\\"'$`&|<>()*?[]{}~!%^+@#";
  const auto text_of = [&](size_t longest) {
    std::string text(1 + random() % longest, ' ');
    for (char& c : text) c = letters[random() % letters.size()];
    return text;
  };
  std::string text = "Default\n";
  for (int i = 0; i < 200; ++i) {
    text += key_number(i) + text_of(10) + "=" + text_of(40);
    for (size_t more = random() % 3; more > 0; --more) text += ";", text += text_of(30);
    text += "\n";
  }
  EXPECT_EQ(text, after_a_trip(text));
}

TEST(RoundTrip, OfAnEmptyFileGivesTheFirstLine) {
  EXPECT_EQ("Default\n", after_a_trip(""));
  EXPECT_EQ("Default\n", after_a_trip("\n\n#\n"));
  EXPECT_EQ(1, wifimgr_lib_init(0));
}

TEST(RoundTrip, OfAReadOnlyFileIsRefusedBothWays) {
  sandbox::load(0, "BssidNum=1\n");
  const std::string path = sandbox::dat_path(0);
  ASSERT_EQ(0, mount(path.c_str(), path.c_str(), nullptr, MS_BIND, nullptr));
  ASSERT_EQ(0, mount(nullptr, path.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr));
  const std::string before = sandbox::segment_bytes(0);
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_init(0)); }),
              Contains("[creat_shm_from_datafile]:===Fail Exit===Open the file /tmp/dat/2.4g.dat failed.\n"));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_save_dataFile(0)); }),
              Contains("[update_datafile_from_shm]:===Fail Exit===Open the file /tmp/dat/2.4g.dat failed.\n"));
  EXPECT_EQ("BssidNum=1\n", saved());
  EXPECT_EQ(before, sandbox::segment_bytes(0));
}

TEST(RoundTrip, OfAFileThatHasBecomeADirectoryIsRefusedBothWays) {
  sandbox::load(0, "BssidNum=1\n");
  ASSERT_EQ(0, unlink(sandbox::dat_path(0).c_str()));
  ASSERT_EQ(0, mkdir(sandbox::dat_path(0).c_str(), 0755));
  EXPECT_EQ(1, wifimgr_lib_init(0));
  EXPECT_EQ(1, wifimgr_lib_save_dataFile(0));
  EXPECT_EQ("1\n", sandbox::field(0, "BssidNum", 1));
}

TEST(RoundTrip, OfEveryKeyOfTheTestsKeepsThem) {
  for (int band : {0, 1}) {
    sandbox::load(band, sandbox::full_dat(band));
    EXPECT_EQ(0, update_datafile_from_shm(band, 8));
    const std::string once = saved(band);
    EXPECT_EQ(once, after_a_trip(once, band));
  }
}

}  // namespace
