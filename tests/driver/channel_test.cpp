// The channel that a radio is on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/requests.h"
#include "support/sandbox.h"
#include "wifimgr_lib.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A driver that puts a number where the data pointer stood, as this one does with the channel.
auto on_channel(int32_t channel) {
  return [channel](const requests::Request&, void* record) {
    std::memcpy(static_cast<char*>(record) + 16, &channel, sizeof channel);
    return 0;
  };
}

TEST(Channel, IsAskedOfTheRadioWithoutAPayload) {
  char out[12];
  requests::driver = on_channel(11);
  EXPECT_EQ(0, wifimgr_lib_get_CHANNEL(0, out));
  EXPECT_EQ(0, wifimgr_lib_get_CHANNEL(1, out));
  ASSERT_EQ(2u, requests::sent.size());
  for (const requests::Request& request : requests::sent) {
    EXPECT_EQ(0x8B05u, request.number);
    EXPECT_FALSE(request.has_data);
    EXPECT_EQ(16, request.length);
    EXPECT_EQ(0, request.flags);
    EXPECT_EQ(0u, request.unused);
  }
  EXPECT_EQ(requests::padded("ra0"), requests::sent[0].interface);
  EXPECT_EQ(requests::padded("rai0"), requests::sent[1].interface);
}

}  // namespace
