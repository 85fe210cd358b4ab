// How a request is made: through the C library, where a preloaded driver answers, or past everything, where only a kernel can.
#pragma once

int make_request(int fd, unsigned long number, void* record);
