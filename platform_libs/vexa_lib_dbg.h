/* The platform's debug library, libvexa_lib_dbg.so.1: what the WLAN manager library imports from it. */
#ifndef VEXA_LIB_DBG_H
#define VEXA_LIB_DBG_H

#ifdef __cplusplus
extern "C" {
#endif

/* Returns non-zero when messages of `level` (1 errors .. 8 everything) of `module` are to be printed. */
int get_itf_dbg_switch(int level, int module);

/* Prints one message, printf-style. Returns the number of bytes printed, or a negative number. */
int vexa_itf_printf(const char* fmt, ...) __attribute__((format(printf, 1, 2)));

#ifdef __cplusplus
}
#endif

#endif
