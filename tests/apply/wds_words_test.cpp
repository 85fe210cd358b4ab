// The WDS links' ciphers and PHY modes: four words each.
#include "apply/wds_checks.h"

namespace {

using wds::expect_refused;
using wds::expect_stored;
using wds::kSettings;
using wds::Setting;

// The two lists of words, which differ in the words alone.
struct Words {
  const Setting& setting;
  const char* word[4];
  std::string word_refusal;
  std::string count_refusal;
};

const Words kWords[] = {
    {kSettings[1],
     {"NONE", "WEP", "TKIP", "AES"},
     "[wifimgr_lib_set_wdsencryptype]:===Fail Exit===Please input value from NONE,WEP,TKIP,AES.\n",
     "[wifimgr_lib_set_wdsencryptype]:===Fail Exit===Please input 4 wdsencryptypes\n"},
    {kSettings[2],
     {"CCK", "OFDM", "HTMIX", "GREENFIELD"},
     "[wifimgr_lib_set_wdsphymode]:===Fail Exit===Please input value from CCK,OFDM,HTMIX,GREENFIELD.\n",
     "[wifimgr_lib_set_wdsphymode]:===Fail Exit===Please input 4 wdsphyModes\n"},
};

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
  return text;
}

TEST(WdsWords, EveryWordIsAcceptedInEveryPlaceAndCase) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Words& words : kWords) {
    for (int first = 0; first < 4; ++first) {
      std::string value;
      for (int i = 0; i < 4; ++i) value.append(i > 0 ? ";" : "").append(words.word[(first + i) % 4]);
      expect_stored(words.setting, value);
      expect_stored(words.setting, lower(value));
      value[1] = static_cast<char>(value[1] + 'a' - 'A');
      expect_stored(words.setting, value);
    }
  }
}

TEST(WdsWords, MixedCaseIsStoredUnchanged) {
  for (const int band : {0, 1}) dat::load(band, {});
  expect_stored(kSettings[1], "aes;AES;none;WEP");
}

TEST(WdsWords, EmptyOnesAreSkipped) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Words& words : kWords) {
    const std::string word = words.word[0];
    for (const std::string& value :
         {";" + word + ";" + word + ";" + word + ";" + word, word + ";;" + word + ";;;" + word + ";" + word,
          word + ";" + word + ";" + word + ";" + word + ";", word + ";" + word + ";" + word + ";" + word + ";;;"}) {
      expect_stored(words.setting, value);
    }
  }
}

TEST(WdsWords, OtherWordsAreRefused) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Words& words : kWords) {
    const std::string w = words.word[0];
    for (const std::string& wrong : std::vector<std::string>{"x", w + "x", w.substr(1), std::string(" ").append(w),
                                                             w + " ", w + "\n", "0", w + "," + w}) {
      for (const std::string& value : {wrong, wrong + ";" + w + ";" + w + ";" + w, w + ";" + w + ";" + w + ";" + wrong,
                                       w + ";" + wrong + ";" + w + ";" + w + ";" + w}) {
        expect_refused(words.setting.set, value, words.word_refusal);
      }
    }
  }
}

TEST(WdsWords, OtherCountsThanFourAreRefused) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Words& words : kWords) {
    const std::string w = words.word[3];
    for (const std::string& value :
         {std::string(), std::string(";"), std::string(";;;"), w, w + ";" + w, w + ";" + w + ";" + w,
          w + ";" + w + ";" + w + ";", w + ";" + w + ";" + w + ";" + w + ";" + w,
          w + ";" + w + ";" + w + ";" + w + ";x"}) {
      expect_refused(words.setting.set, value, words.count_refusal);
    }
  }
}

TEST(WdsWords, JudgesTheFirst160CharactersAndStores149) {
  for (const int band : {0, 1}) dat::load(band, {});
  for (const Words& words : kWords) {
    const std::string w = words.word[0];
    const std::string four = w + ";" + w + ";" + w + ";" + w;
    const std::string filled = four + std::string(160 - four.size(), ';');
    const std::string fifth_behind = filled + w;
    const std::string fifth_within = filled.substr(0, 159) + w;
    for (const int band : {0, 1}) {
      EXPECT_EQ(0U, words.setting.set(static_cast<uint32_t>(band), -1, fifth_behind.c_str()));
      EXPECT_EQ(filled.substr(0, 149), sandbox::field(band, words.setting.key, 1));
    }
    expect_refused(words.setting.set, fifth_within, words.count_refusal);
    expect_refused(words.setting.set, std::string(2000, 'x'), words.word_refusal);
  }
}

// The scan's position would point into a text that is gone.
TEST(WdsWords, LeaveNoScanBehind) {
  for (const int band : {0, 1}) dat::load(band, {});
  const std::string peer = "00:11:22:33:44:55";
  for (const std::string& value : {std::string("NONE;NONE;NONE;NONE"), std::string("NONE;x;NONE;NONE"),
                                   std::string("NONE;NONE;NONE;NONE;NONE;NONE"),
                                   peer + ";" + peer + ";" + peer + ";" + peer, peer + ";x;" + peer, std::string()}) {
    for (const wifimgr_setter_t set :
         {wifimgr_lib_set_wdsencryptype, wifimgr_lib_set_wdsphymode, wifimgr_lib_set_wdslist}) {
      set(0, -1, value.c_str());
      EXPECT_EQ(nullptr, __rstrtok);
      EXPECT_EQ(nullptr, rstrtok(nullptr, ";"));
    }
  }
}

}  // namespace
