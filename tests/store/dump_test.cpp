// The store as text on standard output.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "store/ipc_objects.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

using testing::ElementsAre;

// A printed line: texts laid over 119 blanks at columns 0, 30, 60 and 90.
std::string laid_out(const std::vector<std::string>& texts) {
  std::string line(119, ' ');
  for (size_t i = 0; i < texts.size(); ++i) {
    const std::string text = texts[i].substr(0, 119 - i * 30);
    line.replace(i * 30, text.size(), text);
  }
  return line + "\n";
}

std::string dump_of(const std::string& dat, int band = 0) {
  sandbox::load(band, "BssidNum=1\n" + dat);
  const std::string text = sandbox::stdout_of([=] { EXPECT_EQ(0, print_shm(band)); });
  const std::string first = "BssidNum:\n" + laid_out({"1"});
  EXPECT_EQ(first, text.substr(0, first.size()));
  return text.substr(first.size());
}

TEST(Dump, PrintsKeysAndFieldsFourToALine) {
  const struct {
    const char* line;
    std::string text;
  } rows[] = {
      {"A=1\n", "A:\n" + laid_out({"1"})},
      {"A=1;2;3\n", "A:\n" + laid_out({"1", "2", "3"})},
      {"A=1;2;3;4\n", "A:\n" + laid_out({"1", "2", "3", "4"})},
      {"A=1;2;3;4;5\n", "A:\n" + laid_out({"1", "2", "3", "4"}) + laid_out({"5"})},
      {"A=1;2;3;4;5;6;7;8\n", "A:\n" + laid_out({"1", "2", "3", "4"}) + laid_out({"5", "6", "7", "8"})},
      {"A=x\nB=y\n", "A:\n" + laid_out({"x"}) + "B:\n" + laid_out({"y"})},
  };
  for (int band : {0, 1}) {
    for (const auto& row : rows) EXPECT_EQ(row.text, dump_of(row.line, band)) << row.line;
  }
}

TEST(Dump, PrintsTheKeyAloneWhenThereAreNoFields) {
  EXPECT_EQ("A:\nB:\n" + laid_out({"1"}), dump_of("A=\nB=1\n"));
  EXPECT_EQ("WdsList:\n", dump_of("WdsList=\n"));
}

TEST(Dump, SkipsEmptyFields) {
  sandbox::load(0, "BssidNum=1\n");
  ASSERT_EQ(0, update_attr(0, -1, "BssidNum", ""));
  ASSERT_EQ(0, update_attr(0, 3, "BssidNum", "three"));
  ASSERT_EQ(0, update_attr(0, 8, "BssidNum", "eight"));
  EXPECT_EQ("BssidNum:\n" + laid_out({"three", "eight"}), sandbox::stdout_of([] { print_shm(0); }));
}

TEST(Dump, LaysALaterFieldOverALongEarlierOne) {
  const std::string a(29, 'a'), b(31, 'b'), c(70, 'c');
  EXPECT_EQ("A:\n" + laid_out({a, b, "x", c}), dump_of("A=" + a + ";" + b + ";x;" + c + "\n"));
  EXPECT_EQ("A:\n" + std::string(30, 'd') + "2" + std::string(69, 'd') + std::string(19, ' ') + "\n",
            dump_of("A=" + std::string(100, 'd') + ";2\n"));
}

TEST(Dump, PrintsNothingBeyondColumn119) {
  for (size_t length : {118U, 119U, 120U, 149U}) {
    const std::string value(length, 'v');
    EXPECT_EQ("A:\n" + laid_out({value}), dump_of("A=" + value + "\n")) << length;
  }
  for (size_t length : {28U, 29U, 30U}) {
    const std::string value(length, 'v');
    EXPECT_EQ("A:\n" + laid_out({"1", "2", "3", value}), dump_of("A=1;2;3;" + value + "\n")) << length;
  }
}

TEST(Dump, RemovesTheLineEndsInTheStore) {
  sandbox::load(0, "BssidNum=2\nHT_TxStream=1;2\nCR=3\r\n");
  sandbox::stdout_of([] { print_shm(0); });
  EXPECT_EQ("2", sandbox::field(0, "BssidNum", 1));
  EXPECT_EQ("2", sandbox::field(0, "HT_TxStream", 2));
  EXPECT_EQ("3\r", sandbox::field(0, "CR", 1));
}

TEST(Dump, EndsAtTheFirstEmptyKey) {
  EXPECT_EQ("A:\n" + laid_out({"1"}), dump_of("A=1\n=2\nB=3\n"));
}

TEST(Dump, TakesNoLock) {
  sandbox::load(0, "BssidNum=1\n");
  semctl(ipc::semaphore(0), 0, SETVAL, 0);
  const int steps = seams::semop_fault.calls;
  EXPECT_EQ("BssidNum:\n" + laid_out({"1"}), sandbox::stdout_of([] { EXPECT_EQ(0, wifimgr_lib_dump(0)); }));
  EXPECT_EQ(steps, seams::semop_fault.calls);
}

TEST(Dump, OfOneBandLeavesTheOtherAlone) {
  for (int band : {0, 1}) sandbox::load(band, "BssidNum=1\n");
  const std::string before = sandbox::segment_bytes(1);
  sandbox::stdout_of([] { wifimgr_lib_dump(0); });
  EXPECT_EQ(before, sandbox::segment_bytes(1));
}

TEST(Dump, OfAnotherBandIsRefused) {
  for (int band : {2, -1}) {
    EXPECT_THAT(seams::errors_of([=] { EXPECT_EQ(1, wifimgr_lib_dump(band)); }),
                ElementsAre("[print_shm]:===Fail Exit===The wifi_type is wrong.\n",
                            "[wifimgr_lib_dump]:===Fail Exit===Print the share memory data failed!\n"));
  }
}

TEST(Dump, OfAnUnattachedBandFails) {
  EXPECT_EQ("", sandbox::stdout_of([] { EXPECT_EQ(1, print_shm(0)); }));
  EXPECT_THAT(seams::errors_of([] { EXPECT_EQ(1, wifimgr_lib_dump(1)); }),
              ElementsAre("[wifimgr_lib_dump]:===Fail Exit===Print the share memory data failed!\n"));
}

TEST(Dump, TracesEntryAndSuccess) {
  sandbox::load(0, "BssidNum=1\n");
  sandbox::stdout_of([] {
    EXPECT_THAT(seams::trace_of([] { wifimgr_lib_dump(0); }),
                ElementsAre("[wifimgr_lib_dump]:===Enter===\n", "[print_shm]:===Enter===\n",
                            "[print_shm]:===Success Exit===\n", "[wifimgr_lib_dump]:===Success Exit===\n"));
  });
}

}  // namespace
