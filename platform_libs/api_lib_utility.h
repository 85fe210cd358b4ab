/* The platform's utility library, libapi_lib_utility.so.1: what the WLAN manager library imports from it. */
#ifndef API_LIB_UTILITY_H
#define API_LIB_UTILITY_H

#ifdef __cplusplus
extern "C" {
#endif

/* Escapes `in` for use as one word of a shell command line.
 * out, out_size  caller's buffer and its size, terminating NUL included.
 * A line end becomes a backslash and a line end, which a shell takes for a continued line and removes.
 * Returns 0, or -1 when the escaped text does not fit (or an argument is missing); `out` is then empty. */
int api_escape_parameter(const char* in, char* out, int out_size);

#ifdef __cplusplus
}
#endif

#endif
