// The radios' calibration images.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include "platform/board.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Radio {
  int band;
  const char* temporary;
  const char* image;
  const char* read_flash;
  const char* write_flash;
  const char* copy;
  const char* default_kept;
  const char* not_opened;
};

const Radio kRadios[] = {
    {0, "/tmp/RT30xxEEPROM.bin", "/etc/RT30xxEEPROM.bin",
     "/userfs/bin/mtd readflash /tmp/RT30xxEEPROM.bin 131072 2621440 reservearea",
     "/userfs/bin/mtd writeflash /etc/RT30xxEEPROM.bin 131072 2621440 reservearea",
     "cat /tmp/RT30xxEEPROM.bin > /etc/RT30xxEEPROM.bin", "use default RT30xxEEPROM.bin\n",
     "[wifimgr_lib_get_wifi_calibration]:===Fail Exit===open tmp/RT30xxEEPROM.bin fail!!!\n"},
    {1, "/tmp/MT7610EEPROM.bin", "/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin",
     "/userfs/bin/mtd readflash /tmp/MT7610EEPROM.bin 131072 131072 reservearea",
     "/userfs/bin/mtd writeflash /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin 131072 131072 reservearea",
     "cat /tmp/MT7610EEPROM.bin > /etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin",
     "use default etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin\n",
     "[wifimgr_lib_get_wifi_calibration]:===Fail Exit===open tmp/MT7610EEPROM.bin fail!!!\n"},
};

constexpr char kEntered[] = "[wifimgr_lib_get_wifi_calibration]:===Enter===\n";
constexpr char kSucceeded[] = "[wifimgr_lib_get_wifi_calibration]:===Success Exit===\n";
constexpr char kDefault[] = "the default image";

const int kOtherBands[] = {2, -1, 256, INT_MAX, INT_MIN};

// Ids from the first to the last.
struct Ids {
  unsigned first;
  unsigned last;
};
const std::vector<Ids> kKnownIds[] = {
    {{0x3090, 0x309f},
     {0x3390, 0x339f},
     {0x5390, 0x539f},
     {0x7592, 0x7592},
     {0x7600, 0x760f},
     {0x7615, 0x7615},
     {0x7915, 0x7916}},
    {{0x7610, 0x761f}, {0x7662, 0x7663}, {0x7915, 0x7916}},
};

bool is_known(int band, unsigned id) {
  for (const Ids& ids : kKnownIds[band]) {
    if (id >= ids.first && id <= ids.last) return true;
  }
  return false;
}

std::string image_of(unsigned id, const std::string& rest = "") {
  return std::string{static_cast<char>(id & 0xff), static_cast<char>(id >> 8)} + rest;
}

// Has the tool read this image from flash, and the shell copy files.
void put_in_flash(const Radio& radio, const std::string& image) {
  seams::on_command = [&radio, image](const std::string& line) {
    if (line != radio.read_flash) return board::run(line);
    sandbox::write_file(radio.temporary, image);
    return 0;
  };
}

// Runs `check` for each band in an /etc with both default images.
void for_each_radio(const std::function<void(const Radio&)>& check) {
  board::use_own_etc();
  for (const Radio& radio : kRadios) {
    SCOPED_TRACE(radio.band);
    for (const Radio& any : kRadios) sandbox::write_file(any.image, kDefault);
    seams::commands.clear();
    check(radio);
  }
}

std::string stdout_of_reading(const Radio& radio, int result = 0) {
  return sandbox::stdout_of([&] { EXPECT_EQ(result, wifimgr_lib_get_wifi_calibration(radio.band)); });
}

TEST(Calibration, OfAKnownChipIsCopiedToTheDriver) {
  for_each_radio([](const Radio& radio) {
    const std::string image = image_of(0x7615, std::string("\0\xff\n", 3) + std::string(507, 'c'));
    put_in_flash(radio, image);
    EXPECT_EQ("", stdout_of_reading(radio));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash, radio.copy));
    EXPECT_EQ(image, sandbox::read_file(radio.image));
    EXPECT_EQ(kDefault, sandbox::read_file(kRadios[1 - radio.band].image));
    EXPECT_FALSE(sandbox::exists(radio.temporary));
  });
}

// The image is then the process's first descriptor.
TEST(Calibration, IsReadInAProcessWithoutStandardInput) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, image_of(0x7615, std::string(508, 'c')));
    seams::on_command = [put = seams::on_command](const std::string& line) {
      const int result = put(line);
      (void)close(STDIN_FILENO);
      return result;
    };
    const int input = dup(STDIN_FILENO);
    stdout_of_reading(radio);
    ASSERT_EQ(STDIN_FILENO, dup2(input, STDIN_FILENO));
    (void)close(input);
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash, radio.copy));
  });
}

TEST(Calibration, OfAnUnknownChipKeepsTheDefault) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, image_of(0x1234, std::string(510, 'c')));
    EXPECT_EQ(radio.default_kept, stdout_of_reading(radio));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash));
    EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
    EXPECT_FALSE(sandbox::exists(radio.temporary));
  });
}

TEST(Calibration, KnowsTheChipsOfItsBandAndNoOthers) {
  for_each_radio([](const Radio& radio) {
    unsigned id = 0;
    seams::on_command = [&](const std::string& line) {
      if (line == radio.read_flash) sandbox::write_file(radio.temporary, image_of(id));
      return 0;
    };
    std::string printed;
    unsigned unknown = 0;
    printed = sandbox::stdout_of([&] {
      for (; id <= 0xffff; ++id) {
        seams::commands.clear();
        ASSERT_EQ(0, wifimgr_lib_get_wifi_calibration(radio.band));
        const bool is_copied = seams::commands.size() == 2 && seams::commands[1] == radio.copy;
        ASSERT_EQ(is_known(radio.band, id), is_copied) << std::hex << id;
        if (!is_copied) ++unknown;
      }
    });
    std::string expected;
    for (unsigned i = 0; i < unknown; ++i) expected += radio.default_kept;
    EXPECT_TRUE(expected == printed) << "of " << unknown << " unknown ids";
  });
}

TEST(Calibration, OfThe7603IsTakenFor2_4GOnly) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, "\x03\x76");
    EXPECT_EQ(radio.band == 0 ? "" : radio.default_kept, stdout_of_reading(radio));
    EXPECT_EQ(radio.band == 0 ? "\x03\x76" : kDefault, sandbox::read_file(radio.image));
  });
}

TEST(Calibration, OfABlankFlashKeepsTheDefault) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, std::string(131072, '\xff'));
    EXPECT_EQ(radio.default_kept, stdout_of_reading(radio));
    EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
    EXPECT_FALSE(sandbox::exists(radio.temporary));
  });
}

TEST(Calibration, OfAnySizeIsCopiedWhole) {
  for_each_radio([](const Radio& radio) {
    for (const unsigned rest : {0U, 1U, 1021U, 1022U, 1023U, 131070U}) {
      SCOPED_TRACE(rest);
      const std::string image = image_of(0x7915, std::string(rest, 'c'));
      put_in_flash(radio, image);
      EXPECT_EQ("", stdout_of_reading(radio));
      EXPECT_EQ(image, sandbox::read_file(radio.image));
    }
  });
}

TEST(Calibration, OfOneByteIsUnknownWhateverWasReadBefore) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, image_of(0x7615));
    EXPECT_EQ("", stdout_of_reading(radio));
    for (const char* const byte : {"\x15", "\x16", "\x76"}) {
      sandbox::write_file(radio.image, kDefault);
      put_in_flash(radio, byte);
      EXPECT_EQ(radio.default_kept, stdout_of_reading(radio));
      EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
      EXPECT_FALSE(sandbox::exists(radio.temporary));
    }
  });
}

TEST(Calibration, ThatIsEmptyKeepsTheDefaultAndTheTemporaryFile) {
  for_each_radio([](const Radio& radio) {
    put_in_flash(radio, "");
    EXPECT_EQ("", stdout_of_reading(radio));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash));
    EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
    EXPECT_TRUE(sandbox::exists(radio.temporary));
  });
}

TEST(Calibration, ThatCannotBeReadKeepsTheDefault) {
  for_each_radio([](const Radio& radio) {
    ASSERT_EQ(0, mkdir(radio.temporary, 0755));
    seams::on_command = nullptr;
    const int open = requests::open_descriptors();
    EXPECT_EQ("", stdout_of_reading(radio));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash));
    EXPECT_TRUE(sandbox::exists(radio.temporary));
    EXPECT_EQ(open, requests::open_descriptors());
  });
}

TEST(Calibration, FailsWhenTheToolLeavesNoFile) {
  for_each_radio([](const Radio& radio) {
    seams::on_command = [](const std::string&) { return 256; };
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ("", stdout_of_reading(radio, 1)); }), ElementsAre(radio.not_opened));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash));
    EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
  });
}

TEST(Calibration, GoesByTheFileWhateverTheToolReturns) {
  for_each_radio([](const Radio& radio) {
    sandbox::write_file(radio.temporary, image_of(0x7615));
    seams::on_command = [](const std::string&) { return -1; };
    EXPECT_EQ("", stdout_of_reading(radio));
    EXPECT_THAT(seams::commands, ElementsAre(radio.read_flash, radio.copy));
    EXPECT_FALSE(sandbox::exists(radio.temporary));
  });
}

TEST(Calibration, LeavesTheOtherBandsTemporaryFileAlone) {
  for_each_radio([](const Radio& radio) {
    const char* const other = kRadios[1 - radio.band].temporary;
    sandbox::write_file(other, "kept");
    put_in_flash(radio, image_of(0x7615));
    EXPECT_EQ("", stdout_of_reading(radio));
    EXPECT_EQ("kept", sandbox::read_file(other));
    ASSERT_EQ(0, unlink(other));
  });
}

TEST(Calibration, IsClosedBeforeItIsCopied) {
  for_each_radio([](const Radio& radio) {
    const int open = requests::open_descriptors();
    int open_at_copy = 0;
    sandbox::write_file(radio.temporary, image_of(0x7615));
    seams::on_command = [&](const std::string& line) {
      if (line == radio.copy) open_at_copy = requests::open_descriptors();
      return 0;
    };
    EXPECT_EQ(0, wifimgr_lib_get_wifi_calibration(radio.band));
    EXPECT_EQ(open, open_at_copy);
    EXPECT_EQ(open, requests::open_descriptors());
  });
}

TEST(Calibration, TracesEntryAndExit) {
  for_each_radio([](const Radio& radio) {
    for (const unsigned id : {0x7615U, 0x1234U}) {
      put_in_flash(radio, image_of(id));
      (void)sandbox::stdout_of([&] {
        EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_wifi_calibration(radio.band); }),
                    ElementsAre(kEntered, kSucceeded));
      });
    }
    seams::on_command = nullptr;
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_get_wifi_calibration(radio.band); }),
                ElementsAre(kEntered, radio.not_opened));
  });
}

TEST(Calibration, RefusesAnUnknownBandBeforeItRunsAnything) {
  for (const int band : kOtherBands) {
    SCOPED_TRACE(band);
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_get_wifi_calibration(band)); }),
                ElementsAre("[wifimgr_lib_get_wifi_calibration]:===Fail Exit===The wifi type is invalid.\n"));
    EXPECT_THAT(seams::errors_of([&] { EXPECT_EQ(1, wifimgr_lib_set_wifi_calibration(band)); }),
                ElementsAre("[wifimgr_lib_set_wifi_calibration]:===Fail Exit===The wifi type is invalid.\n"));
  }
  EXPECT_THAT(seams::commands, IsEmpty());
}

TEST(Calibration, IsWrittenBackFromTheDriversImage) {
  for_each_radio([](const Radio& radio) {
    for (const int result : {0, 256, -1}) {
      seams::commands.clear();
      seams::on_command = [result](const std::string&) { return result; };
      EXPECT_EQ("", sandbox::stdout_of([&] { EXPECT_EQ(0, wifimgr_lib_set_wifi_calibration(radio.band)); }));
      EXPECT_THAT(seams::commands, ElementsAre(radio.write_flash));
      EXPECT_EQ(kDefault, sandbox::read_file(radio.image));
    }
  });
}

TEST(Calibration, IsWrittenBackWithATraceOfEntryAndSuccess) {
  for (const int band : {0, 1}) {
    EXPECT_THAT(seams::trace_of([&] { (void)wifimgr_lib_set_wifi_calibration(band); }),
                ElementsAre("[wifimgr_lib_set_wifi_calibration]:===Enter===\n",
                            "[wifimgr_lib_set_wifi_calibration]:===Success Exit===\n"));
  }
}

}  // namespace
