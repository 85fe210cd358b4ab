// The WMM lists, and a walk over them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace wmm {

struct List {
  const char* key;
  const char* getter;
  int (*get)(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
  const char* index_refusal;  // the getter's; that of the setters is the same for all
  const char* setter;
  wifimgr_setter_t set;
};

#define LIST(suffix, key, index_refusal)                                                                  \
  {                                                                                                       \
    key, "wifimgr_lib_get_" #suffix, wifimgr_lib_get_##suffix, index_refusal, "wifimgr_lib_set_" #suffix, \
        wifimgr_lib_set_##suffix                                                                          \
  }

// clang-format off
inline const List kLists[] = {
    LIST(apAifsn, "APAifsn", "The index should be -1."),
    LIST(apCwmin, "APCwmin", "The index should be -1."),
    LIST(apCwmax, "APCwmax", "The index should be -1."),
    LIST(apTxop, "APTxop", "The index should be -1."),
    LIST(apACM, "APACM", "The index should be -1."),
    LIST(bssAifsn, "BSSAifsn", "The index is invalid."),
    LIST(bssCwmin, "BSSCwmin", "The index should be -1."),
    LIST(bssCwmax, "BSSCwmax", "The index should be -1."),
    LIST(bssTxop, "BSSTxop", "The index is should be -1."),
    LIST(bssACM, "BSSACM", "The index should be -1."),
    LIST(ackPolicy, "AckPolicy", "The index should be -1."),
};
// clang-format on

#undef LIST

// Runs `check` with each list and band.
template <typename Check>
void for_each_list(Check check) {
  for (const List& list : kLists) {
    for (const uint32_t band : {0U, 1U}) {
      SCOPED_TRACE(std::string(list.key) + " of band " + std::to_string(band));
      check(list, band);
    }
  }
}

inline void load_no_list() {
  for (const int band : {0, 1}) sandbox::load(band, "Default\nBssidNum=2\n");
}

}  // namespace wmm
