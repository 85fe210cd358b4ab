#include <cstring>
#include <fstream>
#include <memory>

#include "fuzz/functions.h"
#include "fuzz/library_stand.h"
#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"

namespace {

// The input again and again, so that every byte of a reply can be its.
class Reply {
 public:
  explicit Reply(std::string_view bytes) : bytes_(bytes) {}
  void fill(char* out, size_t size) {
    for (size_t i = 0; i < size && !bytes_.empty(); ++i) out[i] = bytes_[at_++ % bytes_.size()];
  }

 private:
  std::string_view bytes_;
  size_t at_ = 0;
};

// What a shell line redirects its output to; the command's output is the input.
void answer_command(const std::string& line, std::string_view output) {
  const size_t redirection = line.rfind("> /tmp/");
  if (redirection == std::string::npos) return;
  std::ofstream file(line.substr(redirection + 2), std::ios::binary | std::ios::trunc);
  file.write(output.data(), static_cast<std::streamsize>(output.size()));
}

template <typename Record>
std::unique_ptr<Record> record() {
  return std::make_unique<Record>();
}

void query(int band) {
  for (const int index : {-1, 0, 1, 8, 9, 16}) {
    getMacEntryByIndex(record<wifimgr_station_list>().get(), static_cast<unsigned>(index));
    const auto list = record<wifimgr_wps_access_list>();
    (void)wifimgr_lib_get_WPS_ACL_INFO(band, index, list.get());
    uint32_t state = 0;
    char peer[64] = "";
    (void)wifimgr_lib_get_WpsStatus(band, &state, peer, index);
    UpdateWpsStatus(&state, peer, index);
    UpdateWpsStatusAC(&state, peer, index);
    const uint8_t mac[6] = {2, 0, 0, 0, 0, 1};
    uint8_t capability = 0;
    (void)wifimgr_lib_get_Sta11kCap(band, index, mac, &capability);
    (void)wifimgr_lib_get_Sta11vCap(band, index, mac, &capability);
  }
  char text[256] = "";
  UpdateChannel(text);
  UpdateChannelAC(text);
  (void)wifimgr_lib_get_CHANNEL(band, text);
  UpdatePinCode(text);
  UpdatePinCodeAC(text);
  (void)wifimgr_lib_get_WPS_STA_MAC(band, text);
  uint16_t status = 0;
  (void)wifimgr_lib_get_WPS_STATUS(band, &status);
  uint32_t temperature = 0;
  (void)wifimgr_lib_get_CPU_TEMPERATURE(band, &temperature);
  (void)getAPCount(band, record<wifimgr_ap_count>().get());
  (void)wifimgr_lib_get_neighbourinfo(band, record<wifimgr_neighbour_list>().get());
  const auto table = std::make_unique<char[]>(WIFIMGR_NEIGHBOUR_TABLE_SIZE);
  (void)wifimgr_lib_get_neighbourinfo_v1(table.get(), band);
  (void)wifimgr_lib_get_wifi_process_info(record<wifimgr_process_info>().get());
  char chips[8] = "0000000";
  (void)parse_driver(chips, 7);
  char address[32] = "";
  get_onu_ipaddr(address);
  fuzz::require(memchr(address, '\0', sizeof address) != nullptr, "an address ends");
  (void)wifimgr_lib_get_itf_hwaddr("br0", text, sizeof text);
  (void)wifimgr_lib_get_interface_mac0("br0", text, sizeof text);
  uint8_t bytes[16] = {};
  (void)wifimgr_lib_get_interface_mac("br0", bytes);
  (void)wifimgr_lib_get_ethaddr(bytes);
  (void)wifimgr_lib_get_br0_v6addr(bytes);
  (void)wifimgr_lib_get_test_itf_status("br0", 0xffff);
}

}  // namespace

// A band, how often a request fails, and the replies.
void fuzz::try_driver(std::string_view input) {
  Bytes bytes(input);
  const int band = bytes.byte() % 2;
  const unsigned failing = bytes.byte();
  Reply reply(bytes.rest());
  unsigned requests_so_far = 0;
  const auto answer = [&](void* record, size_t length) {
    if (failing != 0 && ++requests_so_far % failing == 0) return -1;
    char* const data = static_cast<char*>(requests::data_of(record));
    if (data != nullptr && length > 0) reply.fill(data, length);
    return 0;
  };
  requests::driver = [&](const requests::Request& request, void* record) { return answer(record, request.length); };
  // Behind the name of a request to the kernel lies its answer.
  requests::kernel = [&](int, unsigned long, void* record) {
    reply.fill(static_cast<char*>(record) + 16, 16);
    return failing != 0 && ++requests_so_far % failing == 0 ? -1 : 0;
  };
  seams::on_command = [&](const std::string& line) {
    answer_command(line, bytes.rest());
    return 0;
  };
  {
    std::ofstream pid("/var/run/wlan_svc.pid", std::ios::binary | std::ios::trunc);
    pid.write(bytes.rest().data(), static_cast<std::streamsize>(bytes.rest().size()));
  }
  quietly([&] {
    query(band);
    get_all(band, -1);
  });
}
