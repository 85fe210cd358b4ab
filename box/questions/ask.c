// Puts wireless requests to the driver and prints the answers, a line each, so that two drivers' can be compared.
//
//   ask [UID] <QUESTIONS
//
// A question is INTERFACE REQUEST FLAGS LENGTH [PAYLOAD], numbers in hexadecimal but for LENGTH. PAYLOAD is what the caller's
// buffer begins with, in hexadecimal; "null" and "bad" stand for addresses that are not there, "record" for a request whose own record is
// not. A length that the answer has changed is printed too. "#" begins a comment. UID is the user who asks. Where there is
// no such user, as in a namespace that an ordinary user has made, it is root without capabilities.
#define _GNU_SOURCE
#include <net/if.h>

#include <errno.h>
#include <linux/capability.h>
#include <linux/wireless.h>
#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "make_request.h"

enum { kBuffer = 65536, kShown = 512, kStatistics = 0x8BE9, kOid = 0x8BE1, kNeighbours = 0x0683 };

typedef struct Question {
  char interface[32];
  unsigned long request;
  unsigned flags;
  unsigned length;
  char payload[256];
} Question;

static uint8_t buffer[kBuffer];

static void* payload_from(const char* text) {
  memset(buffer, 0, sizeof buffer);
  if (strcmp(text, "null") == 0) return NULL;
  // In the first page, where nothing is ever mapped.
  if (strcmp(text, "bad") == 0) return (void*)16;
  for (size_t i = 0; text[2 * i] != '\0' && text[2 * i + 1] != '\0'; ++i) {
    const char byte[] = {text[2 * i], text[2 * i + 1], '\0'};
    buffer[i] = (uint8_t)strtoul(byte, NULL, 16);
  }
  return buffer;
}

// What time and traffic change is no answer: counters, and how long ago a neighbour was heard.
static void blank(const Question* question) {
  if (question->request == kStatistics) memset(buffer + 8, 0, 48);
  if (question->request != kOid || question->flags != kNeighbours) return;
  for (size_t i = 0; i < 128; ++i) memset(buffer + 4 + 144 * i + 12, 0, 4);
}

static void print_buffer(void) {
  size_t length = sizeof buffer;
  uint32_t sum = 0;
  while (length > 0 && buffer[length - 1] == 0) --length;
  for (size_t i = 0; i < length; ++i) sum = sum * 31 + buffer[i];
  for (size_t i = 0; i < length && i < kShown; ++i) printf("%02x", buffer[i]);
  if (length > kShown) printf("... %zu bytes, sum %08x", length, sum);
}

static void ask(int fd, const Question* question) {
  struct iwreq request = {0};
  const bool has_record = strcmp(question->payload, "record") != 0;
  snprintf(request.ifr_name, sizeof request.ifr_name, "%.15s", question->interface);
  request.u.data.pointer = payload_from(has_record ? question->payload : "");
  request.u.data.length = (uint16_t)question->length;
  request.u.data.flags = (uint16_t)question->flags;
  printf("%s %04lx %04x %u %s: ", question->interface, question->request, question->flags, question->length,
         question->payload);
  if (make_request(fd, question->request, has_record ? (void*)&request : (void*)16) < 0) {
    printf("%s\n", strerrorname_np(errno));
    return;
  }
  if (question->request == SIOCGIWNAME) {
    printf("%s", request.u.name);
  } else if (question->request == SIOCGIWFREQ) {
    printf("%d %d", request.u.freq.m, request.u.freq.e);
  } else {
    blank(question);
    print_buffer();
    if (request.u.data.length != question->length) printf(" (%u bytes)", (unsigned)request.u.data.length);
  }
  printf("\n");
}

static bool parse(const char* line, Question* question) {
  memset(question, 0, sizeof *question);
  return sscanf(line, "%31s %lx %x %u %255s", question->interface, &question->request, &question->flags,
                &question->length, question->payload) >= 4;
}

static bool become(unsigned user) {
  struct __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
  const struct __user_cap_data_struct none[2] = {{0, 0, 0}, {0, 0, 0}};
  if (setgid(user) == 0) return setuid(user) == 0;
  return errno == EINVAL && syscall(SYS_capset, &header, none) == 0;
}

int main(int argc, char** argv) {
  if (argc > 1 && !become((unsigned)atoi(argv[1]))) {
    perror("ask");
    return 1;
  }
  const int fd = socket(AF_INET, SOCK_DGRAM, 0);
  char line[512];
  while (fgets(line, sizeof line, stdin) != NULL) {
    Question question;
    if (line[0] != '#' && line[0] != '\n' && parse(line, &question)) ask(fd, &question);
  }
  return close(fd);
}
