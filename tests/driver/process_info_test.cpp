// The processes of the WLAN service.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "support/requests.h"
#include "support/sandbox.h"
#include "support/seams.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kPidFile[] = "/var/run/wlan_svc.pid";

// An entry of the driver's reply or of the record: 24 bytes.
std::string entry(const std::string& name, uint32_t pid, uint8_t running, const std::string& filling = {0, 0, 0}) {
  std::string bytes = name;
  bytes.resize(16, '\0');
  bytes.append(reinterpret_cast<const char*>(&pid), sizeof pid);
  bytes += static_cast<char>(running);
  return bytes + filling;
}

// The driver's n-th process, from 0; everything in the reply that no caller may see is filled.
std::string driver_entry(int number) {
  return entry("proc-" + std::to_string(number) + std::string(1, '\0') + "leftover",
               1000U + static_cast<uint32_t>(number), static_cast<uint8_t>(number + 1), "xyz");
}

std::string listed_entry(int number) {
  return entry("proc-" + std::to_string(number), 1000U + static_cast<uint32_t>(number),
               static_cast<uint8_t>(number + 1));
}

std::string reply(uint8_t count) {
  std::string bytes = std::string(1, static_cast<char>(count)) + "abc";
  for (int number = 0; number < 31; ++number) bytes += driver_entry(number);
  bytes.resize(768, '!');
  return bytes;
}

// The record's 196 bytes: head, the service where there is one, and the driver's first processes.
std::string record_of(uint8_t first_byte, const std::string& service, int listed) {
  std::string bytes(1, static_cast<char>(first_byte));
  bytes.append(3, '\0');
  bytes += service;
  for (int number = 0; number < listed; ++number) bytes += listed_entry(number);
  bytes.resize(196, '\0');
  return bytes;
}

// The record after the call; what stands behind it must stay.
std::string answer(int expected_result = 0) {
  struct {
    wifimgr_process_info record;
    char behind[8];
  } memory;
  std::memset(static_cast<void*>(&memory), '~', sizeof memory);
  EXPECT_EQ(expected_result, wifimgr_lib_get_wifi_process_info(&memory.record));
  EXPECT_EQ("~~~~~~~~", std::string(memory.behind, sizeof memory.behind));
  return std::string(reinterpret_cast<const char*>(&memory.record), 196);
}

std::string own_pid(const char* before = "", const char* after = "") {
  std::string text = before;
  text += std::to_string(getpid());
  text += after;
  return text;
}

std::string service_entry() {
  return entry("wlan.svc", static_cast<uint32_t>(getpid()), 1);
}

class WlanProcesses : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0, mount("tmpfs", "/run", "tmpfs", 0, "")); }
};

TEST_F(WlanProcesses, AreAskedOfThe5GRadio) {
  requests::driver = requests::answering(reply(0));
  answer();
  ASSERT_EQ(1u, requests::sent.size());
  const requests::Request& request = requests::sent[0];
  EXPECT_EQ(0x8BFEu, request.number);
  EXPECT_EQ(requests::padded("rai0"), request.interface);
  EXPECT_EQ(768, request.length);
  EXPECT_EQ(0, request.flags);
  EXPECT_EQ(0u, request.unused);
  EXPECT_EQ(std::string(768, '\0'), request.payload);
  EXPECT_THAT(requests::sockets, ElementsAre(requests::SocketCall{AF_INET, SOCK_DGRAM, 0}));
}

TEST_F(WlanProcesses, WithoutTheServiceAreTheDriversOneMoreThanItCountsUpToEight) {
  for (const auto& [count, first_byte, listed] :
       std::initializer_list<std::tuple<uint8_t, uint8_t, int>>{{0, 1, 1},
                                                                {1, 2, 2},
                                                                {6, 7, 7},
                                                                {7, 8, 8},
                                                                {8, 9, 8},
                                                                {127, 128, 8},
                                                                {128, 129, 8},
                                                                {254, 255, 8},
                                                                {255, 0, 8}}) {
    SCOPED_TRACE(count);
    requests::driver = requests::answering(reply(count));
    EXPECT_EQ(record_of(first_byte, "", listed), answer());
  }
}

TEST_F(WlanProcesses, BeginWithTheServiceWhileItRuns) {
  sandbox::write_file(kPidFile, own_pid("", "\n"));
  for (const auto& [count, first_byte, listed] :
       std::initializer_list<std::tuple<uint8_t, uint8_t, int>>{{0, 1, 0},
                                                                {1, 2, 1},
                                                                {6, 7, 6},
                                                                {7, 8, 7},
                                                                {8, 9, 7},
                                                                {127, 128, 7},
                                                                {128, 129, 7},
                                                                {254, 255, 7},
                                                                {255, 0, 7}}) {
    SCOPED_TRACE(count);
    requests::driver = requests::answering(reply(count));
    EXPECT_EQ(record_of(first_byte, service_entry(), listed), answer());
  }
}

TEST_F(WlanProcesses, TakeTheServicesIdFromTheFirstLine) {
  requests::driver = requests::answering(reply(2));
  for (const std::string& text :
       {own_pid(), own_pid("", "\n1\n"), own_pid("  ", "\n"), own_pid("\t+", " x\n"), own_pid("000", "\n"),
        own_pid("", "x"), own_pid("", ".5\n"), own_pid(std::string(27, ' ').c_str()),
        own_pid(std::string(28, ' ').c_str()), own_pid(std::string(5000, '\t').c_str(), "\n"),
        own_pid(std::string(5000, '0').c_str(), "\n")}) {
    SCOPED_TRACE(text);
    sandbox::write_file(kPidFile, text);
    EXPECT_EQ(record_of(3, service_entry(), 2), answer());
  }
}

TEST_F(WlanProcesses, HaveNoServiceWithoutAnIdOfALiveProcess) {
  requests::driver = requests::answering(reply(2));
  for (const std::string& text : {std::string(), std::string("\n"), own_pid("\n", "\n"), std::string("pid\n"),
                                  own_pid("x"), own_pid("0x"), std::string("0\n"), own_pid("-", "\n"),
                                  std::string("2147483647\n"), std::string("self\n"), std::string(1000, 'x')}) {
    SCOPED_TRACE(text);
    sandbox::write_file(kPidFile, text);
    EXPECT_EQ(record_of(3, "", 3), answer());
  }
}

TEST_F(WlanProcesses, HaveNoServiceWhenItsFileCannotBeRead) {
  requests::driver = requests::answering(reply(2));
  EXPECT_EQ(record_of(3, "", 3), answer());
  ASSERT_EQ(0, mkdir(kPidFile, 0755));
  EXPECT_EQ(record_of(3, "", 3), answer());
}

TEST_F(WlanProcesses, OfAnotherKindMayBeTheService) {
  requests::driver = requests::answering(reply(0));
  sandbox::write_file(kPidFile, "1\n");
  EXPECT_EQ(record_of(1, entry("wlan.svc", 1, 1), 0), answer());
}

TEST_F(WlanProcesses, KeepNamesOf16CharactersWithoutAnEnd) {
  for (const auto& [name, listed] :
       std::initializer_list<std::pair<std::string, std::string>>{{"", ""},
                                                                  {"a", "a"},
                                                                  {"fifteen-letters", "fifteen-letters"},
                                                                  {"sixteen--letters", "sixteen--letters"},
                                                                  {{"\0hidden", 7}, ""},
                                                                  {{"fifteen\0letters!", 16}, "fifteen"}}) {
    SCOPED_TRACE(name);
    requests::driver = requests::answering(std::string(4, '\0') + entry(name, 0xfedcba98, 0xff, "xyz"));
    std::string expected = record_of(1, entry(listed, 0xfedcba98, 0xff), 0);
    EXPECT_EQ(expected, answer());
  }
}

TEST_F(WlanProcesses, AreThereWhenTheDriverAnswersMoreThanZero) {
  requests::driver = [](const requests::Request& request, void* record) {
    requests::answering(reply(0))(request, record);
    return 1;
  };
  EXPECT_EQ(record_of(1, "", 1), answer());
}

TEST_F(WlanProcesses, StayAsTheyWereWithoutASocketOrAnAnswer) {
  sandbox::write_file(kPidFile, own_pid("", "\n"));
  requests::driver = requests::answering(reply(2));
  const int before = requests::open_descriptors();
  const auto ask = [] { EXPECT_EQ(std::string(196, '~'), answer(1)); };
  const auto enter_and_fail = ElementsAre("[wifimgr_lib_get_wifi_process_info]:===Enter===\n",
                                          "[wifimgr_lib_get_wifi_process_info]:===Fail Exit===\n");
  EXPECT_EQ("", sandbox::stdout_of([&] {
              seams::fail(requests::socket_fault, 1, EMFILE);
              EXPECT_THAT(seams::trace_of(ask), enter_and_fail);
              EXPECT_THAT(requests::sent, IsEmpty());
              seams::fail(requests::ioctl_fault, 1, ENODEV);
              EXPECT_THAT(seams::trace_of(ask), enter_and_fail);
            }));
  EXPECT_EQ(before, requests::open_descriptors());
}

TEST_F(WlanProcesses, WithoutARecordFailAndAskNothing) {
  EXPECT_EQ(1, wifimgr_lib_get_wifi_process_info(nullptr));
  EXPECT_THAT(requests::sockets, IsEmpty());
}

TEST_F(WlanProcesses, TraceEntryAndSuccessAndLeaveNoDescriptor) {
  requests::driver = requests::answering(reply(8));
  const int before = requests::open_descriptors();
  for (const std::string& pid : {own_pid(), std::string("x")}) {
    sandbox::write_file(kPidFile, pid);
    EXPECT_THAT(seams::trace_of([] { answer(); }),
                ElementsAre("[wifimgr_lib_get_wifi_process_info]:===Enter===\n",
                            "[wifimgr_lib_get_wifi_process_info]:===Success Exit===\n"));
  }
  EXPECT_EQ(before, requests::open_descriptors());
  EXPECT_THAT(seams::commands, IsEmpty());
}

}  // namespace
