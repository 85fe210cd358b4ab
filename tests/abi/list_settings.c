/* What a management process in C makes of the installed table: every setting with all of its columns, separated by tabs. */
#include <stdio.h>

#include <wifimgr_lib.h>

struct setting {
  const char *key, *scope, *numbering, *bands, *reads, *getter, *writes, *setter, *accepts;
  long low, high;
  const char *words, *refusal, *meaning, *unit, *on_2_4g, *on_5g, *secrecy, *effect;
  wifimgr_setter_t set;
};

static const struct setting settings[] = {
#define WIFIMGR_SETTING(key, scope, numbering, bands, reads, getter, writes, setter, accepts, low, high, words, \
                        refusal, meaning, unit, on_2_4g, on_5g, secrecy, effect)                                \
  {key,  #scope, #numbering, #bands,  #reads, #getter, #writes, #setter,  #accepts, low,                        \
   high, words,  refusal,    meaning, unit,   on_2_4g, on_5g,   #secrecy, #effect,  setter},
#include <wifimgr_settings.h>
};

/* Twice, with other macros, and without any. */
static const char* const groups[] = {
#define WIFIMGR_SETTING_GROUP(heading) heading,
#include <wifimgr_settings.h>
};
#include <wifimgr_settings.h>

/* A text as it is written in C, as far as these need it. */
static void print_text(const char* text) {
  for (; text != NULL && *text != '\0'; ++text) {
    if (*text == '\n') {
      (void)fputs("\\n", stdout);
    } else {
      (void)putchar(*text);
    }
  }
  (void)fputs(text == NULL ? "NULL\t" : "\t", stdout);
}

int main(void) {
  size_t i;
  for (i = 0; i < sizeof settings / sizeof settings[0]; ++i) {
    const struct setting* it = &settings[i];
    const char* const front[] = {it->key,    it->scope,  it->numbering, it->bands,  it->reads,
                                 it->getter, it->writes, it->setter,    it->accepts};
    const char* const rest[] = {it->words, it->refusal, it->meaning, it->unit, it->on_2_4g, it->on_5g, it->secrecy};
    size_t column;
    for (column = 0; column < sizeof front / sizeof front[0]; ++column) print_text(front[column]);
    (void)printf("%ld\t%ld\t", it->low, it->high);
    for (column = 0; column < sizeof rest / sizeof rest[0]; ++column) print_text(rest[column]);
    (void)puts(it->effect);
    if (it->set == NULL) return 1;
  }
  for (i = 0; i < sizeof groups / sizeof groups[0]; ++i) {
    if (groups[i][0] == '\0') return 1;
  }
  return i > 1 ? 0 : 1;
}
