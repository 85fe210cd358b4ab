// The radios' neighbours: the site survey and the driver's table.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "driver/request.h"
#include "store/band.h"
#include "store/shell.h"
#include "store/stream.h"
#include "store/trace.h"
#include "wifimgr_lib.h"

namespace {

constexpr uint16_t kNeighbourTable = 0x0683;
static_assert(WIFIMGR_NEIGHBOUR_TABLE_SIZE == 0x4804);
static_assert(sizeof(wifimgr_neighbour) == 94 && offsetof(wifimgr_neighbour_list, first) == 4);

// More lines than these empty the first entry.
constexpr int kLabelLines = 3;

struct Survey {
  char command[72];
  char dump[32];
  char label[5];
};
constexpr Survey kSurveys[store::kBands] = {
    {"/userfs/bin/iwpriv ra0 get_site_survey > /tmp/site_survey_ra0", "/tmp/site_survey_ra0", "2.4G"},
    {"/userfs/bin/iwpriv rai0 get_site_survey > /tmp/site_survey_rai0", "/tmp/site_survey_rai0", "5G"},
};

}  // namespace

extern "C" int wifimgr_lib_set_PartialScan(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  (void)store::run_line(wifi_type == store::k2_4G ? "/userfs/bin/iwpriv ra0 set PartialScan=1 &"
                                                  : "/userfs/bin/iwpriv rai0 set PartialScan=1 &");
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_neighbourinfo(int wifi_type, wifimgr_neighbour_list* list) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (list == nullptr) return trace::fail(__func__);
  const Survey& survey = kSurveys[wifi_type];
  (void)store::run_line(survey.command);
  const store::Stream file(std::fopen(survey.dump, "re"));
  if (!file) return trace::fail(__func__, "fp is NULL");
  list->count = 0;
  // No column is parsed and the count stays 0, deliberately: the first entry tells the band, and is empty when the dump
  // has more than three lines. Whoever wants the neighbours reads the driver's table.
  char* line = nullptr;
  size_t size = 0;
  for (int lines = 0; getline(&line, &size, file.get()) >= 0;) {
    (void)std::snprintf(list->first.band, sizeof list->first.band, "%s", survey.label);
    if (lines < kLabelLines) {
      ++lines;
    } else {
      std::memset(&list->first, 0, sizeof list->first);
    }
  }
  std::free(line);
  return trace::success(__func__);
}

extern "C" int wifimgr_lib_get_neighbourinfo_v1(void* buffer, int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  // The socket's message names another query; kept, as callers match the text.
  constexpr driver::Complaints kComplaints = {"Create socket_id_StaRssi socket fail", "ioctl open fail"};
  const driver::Outcome outcome = driver::ask_oid(driver::radio_interface(wifi_type == store::k5G), kNeighbourTable,
                                                  buffer, WIFIMGR_NEIGHBOUR_TABLE_SIZE);
  if (const char* const why = driver::complaint_about(outcome, kComplaints)) return trace::fail(__func__, why);
  return trace::success(__func__);
}
