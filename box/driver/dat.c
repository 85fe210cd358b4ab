#include "box/driver/dat.h"

#include <stdlib.h>
#include <string.h>

const char* dat_value(const char* dat, const char* key, size_t* length) {
  const size_t key_length = strlen(key);
  for (const char* line = dat; line != NULL && *line != '\0';) {
    const char* const end = strchr(line, '\n');
    if (*line != '#' && strncmp(line, key, key_length) == 0 && line[key_length] == '=') {
      const char* const value = line + key_length + 1;
      *length = end == NULL ? strlen(value) : (size_t)(end - value);
      if (*length > 0 && value[*length - 1] == '\r') --*length;
      return value;
    }
    line = end == NULL ? NULL : end + 1;
  }
  *length = 0;
  return NULL;
}

const char* dat_field(const char* dat, const char* key, int number, size_t* length) {
  size_t rest = 0;
  const char* field = dat_value(dat, key, &rest);
  while (field != NULL && rest > 0) {
    const char* const end = memchr(field, ';', rest);
    *length = end == NULL ? rest : (size_t)(end - field);
    if (*length > 0 && --number == 0) return field;
    if (end == NULL) break;
    rest -= *length + 1;
    field = end + 1;
  }
  *length = 0;
  return NULL;
}

long dat_number(const char* dat, const char* key, int number) {
  size_t length = 0;
  const char* const field = dat_field(dat, key, number, &length);
  char text[16];
  if (field == NULL) return 0;
  if (length > sizeof text - 1) length = sizeof text - 1;
  memcpy(text, field, length);
  text[length] = '\0';
  return strtol(text, NULL, 10);
}

int dat_ssid_count(const char* dat) {
  const long count = dat_number(dat, "BssidNum", 1);
  return count >= 1 && count <= kDatMostSsids ? (int)count : 1;
}
