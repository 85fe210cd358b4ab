wifimgr_test(channel_test driver/channel_test.cpp)
