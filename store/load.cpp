// Loading a band: its dat file, parsed line by line into the segment.
#include <cstdio>

#include "store/band.h"
#include "store/dat_path.h"
#include "store/lock.h"
#include "store/record.h"
#include "store/segment.h"
#include "store/stream.h"
#include "store/trace.h"

namespace {

// The segment may be smaller than what this process counts with when its address was set from outside.
unsigned usable_records(int band) {
  const unsigned capacity = store::capacity(band);
  const unsigned room = store::room(band);
  return capacity < room ? capacity : room;
}

const char* clear(int band, int semaphore) {
  if (semaphore_p(semaphore) != 0) return store::kPFailed;
  std::memset(store::records(band)->key, 0, size_t{usable_records(band)} * sizeof(store::Record));
  return semaphore_v(semaphore) == 0 ? nullptr : store::kVFailed;
}

const char* put(store::Record& free_record, const store::Record& parsed, int semaphore) {
  if (semaphore_p(semaphore) != 0) return store::kPFailed;
  std::memcpy(free_record.key, parsed.key, sizeof free_record.key);
  for (int i = 0; i < store::kFields && parsed.field[i][0] != '\0'; ++i) {
    std::memcpy(free_record.field[i], parsed.field[i], sizeof free_record.field[i]);
  }
  return semaphore_v(semaphore) == 0 ? nullptr : store::kVFailed;
}

// Loads until the end of the file, the first refusal, or an error of reading, which the file itself then tells.
const char* fill(int band, std::FILE* file, int semaphore) {
  const char* refusal = clear(band, semaphore);
  store::Record* free_record = store::records(band);
  const unsigned end = usable_records(band);
  char line[store::kLineSize];
  // The stream is nobody else's, so its lock is not asked for at each line.
  for (unsigned lines = 0; refusal == nullptr && lines < end && fgets_unlocked(line, sizeof line, file) != nullptr;
       ++lines) {
    store::Record parsed = {};
    if (parse_data_from_line(line, &parsed) == 0) refusal = put(*free_record++, parsed, semaphore);
  }
  return refusal;
}

}  // namespace

extern "C" int creat_shm_from_datafile(int wifi_type) {
  trace::enter(__func__);
  if (!store::is_band(wifi_type)) return trace::fail(__func__, store::kWrongBand);
  if (!store::has_segment(wifi_type) && init_shm(wifi_type) != 0) {
    return trace::fail(__func__, wifi_type == store::k2_4G ? "Initialize share memory for 2.4G failed."
                                                           : "Initialize share memory for 5G failed.");
  }
  const int semaphore = store::look_up_semaphore(wifi_type);
  const store::DatPath path(wifi_type);
  // Update mode, so that a file which could never be saved again is refused now; deliberate.
  const store::Stream file(std::fopen(path.text, "r+e"));
  if (!file) {
    WIFIMGR_TRACE(trace::kErrorLevel, "[%s]:===Fail Exit===Open the file %s failed.\n", __func__, path.text);
    return 1;
  }
  if (store::records(wifi_type) == nullptr) return trace::fail(__func__, "shm_tmp is NULL!");
  const char* const refusal = fill(wifi_type, file.get(), semaphore);
  if (refusal != nullptr) return trace::fail(__func__, refusal);
  // A file that was read in part must not count as loaded: the next save would cut it to that part.
  if (std::ferror(file.get()) != 0) return trace::fail(__func__);
  return trace::success(__func__);
}
