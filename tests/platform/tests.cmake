wifimgr_test(constants_test platform/constants_test.cpp)
