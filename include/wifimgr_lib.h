/* libapi_lib_wifimgr.so.1: the WLAN manager library of a home gateway with two radios.
 *
 * A management process links it to read and change both radios' settings, to bring the running driver in line with
 * them, and to query driver and board. The usual life of such a process, for one band:
 *
 *   const char* script = "/etc/Wireless/RT2860AP/WLAN_exec.sh";   5G: RT2860AP_AC
 *   wifimgr_lib_init(0);                                 load the band's dat file into the shared store
 *   wifimgr_lib_wifi_config_oper(0, 0);                  remember what is in force
 *   wifimgr_lib_set_ssid(0, 1, "Living Room");           change settings in the store
 *   wifimgr_lib_set_channel(0, -1, "6");
 *   wifimgr_lib_check_wifi_value_befor_write_dat(0);     make dependent settings consistent
 *   switch (wifimgr_lib_wifi_config_oper(0, 1)) {        how heavy is the change?
 *     case 0: wifimgr_lib_save_dataFile(0); break;       nothing that is watched: write the file
 *     case 1: wifimgr_lib_commit(0, 1); break;           write the file, restart the interfaces
 *     case 2: wifimgr_lib_save_dataFile(0); break;       SSID count or hardware NAT: write the file, then reboot
 *   }
 *   for (number = 0; number < ssid_count; ++number) {    names, keys and security reach the radio by the script alone
 *     wifimgr_lib_write_wifi_execute_sh(0, number);
 *     wifimgr_lib_execute_wlan_script(0, script);        5G: wifimgr_lib_set_11AC_CMDflag(1) before
 *   }
 *   wifimgr_lib_wifi_config_oper(0, 0);                  remember what is in force now
 *
 * Conventions of all functions
 *
 * Threads    A process uses the library from one thread at a time. Between processes each band's store is serialised
 *            by its semaphore; a sequence of calls is not.
 * Bands      wifi_type is 0 for 2.4G and 1 for 5G. Any other value is refused.
 * Indexes    -1 addresses a band-wide value, 1 to 8 the value of that SSID.
 * Results    0 for success and 1 for failure, unless stated. A failure leaves the store as it was and outputs
 *            untouched, unless stated. Results never depend on tracing.
 * Buffers    The caller owns every buffer. Getters of settings want 151 bytes or more and write 150, the stored line
 *            end included; those of a key per SSID (SSID1, WPAPSK2, ...) take any length and write all of it, and a
 *            buffer that the value fills gets no NUL. Callers pass WIFIMGR_VALUE_SIZE to both. Texts given to setters
 *            are copied, cut to 149 characters.
 * Null       A null pointer is a failure (1 unless stated, nothing touched); predicates answer as for invalid text.
 * Blocking   Functions that use the store wait while another process holds the band's semaphore; a signal ends the
 *            wait as a failure. Nothing here allocates memory that a caller must free, except os_zalloc.
 * Trace      Messages go through the platform's debug library, module 6: entry and exit at level 8, reasons of
 *            failures at level 1. A refusal's text stands behind "[function]:===Fail Exit===".
 *
 * Sharp edges, all deliberate
 *
 * - wifimgr_lib_init clears the band's store and loads the file again, for all processes: unsaved changes of others
 *   are gone. A process that only wants to see or change the live store attaches the segment itself (shmget with key
 *   0x12345 for 2.4G, 0x12346 for 5G, then shmat) and stores the address in shm_addr_2_4g or shm_addr_5g instead.
 *   Before it detaches it again it stores null there.
 * - The first load of a process sets the band's lock free whoever holds it. That holder then gives back what is free
 *   already, and as long as it lives any two processes may be inside at once. Later loads of the process, and of its
 *   forked children, wait for the lock instead. One process initialises, and never while others use the band: beside
 *   a save, what is written is a part-loaded store, for good.
 * - A store whose dat file has outgrown the existing segment cannot be initialised by a process that has not loaded it
 *   before: remove the segment first (ipcrm -M 0x12345 or 0x12346). A process that loads again, after
 *   wifimgr_lib_set_wifi_path too, reads only as many lines as it has made room for, answers 0, and the next save
 *   destroys the rest of the file. The way round: init_shm before wifimgr_lib_init, or a new process.
 * - What failed in init_shm once (semget, shmat), or lost its semaphore or segment since, is not made again by
 *   wifimgr_lib_init in the same process: call init_shm first, or start anew.
 * - A save waits for the lock twice: for its checks, with the file whole, and to write, with the file emptied. A signal
 *   that ends the second wait leaves the file empty until the save is called again.
 * - A value has 149 characters at most, lists too, and what is longer is cut without a word: of nine addresses in an
 *   access list the last is lost.
 * - A line of 185 characters and its line end loads, and can never be saved.
 * - Saving writes what the store holds: comments and blank lines of the file are gone, and so is everything behind
 *   the SSID count (fields, and keys such as SSID5 with 4 SSIDs).
 * - A shared key is written up to its first empty field. Setting an SSID's value to "" therefore drops the values of
 *   all later SSIDs at the next save, and an empty field in a file moves the later ones down by one SSID at the load.
 * - ';' separates SSIDs and "=" ends a value at the next load, in every value that is stored, an SSID name or an
 *   access list too. A "\n" in a value makes lines of their own out of what follows it.
 * - Do not save a band whose dat file has a line without "=", or CR/LF line ends: such a line is written as its text
 *   and a line "=", at which the next load stops. What stands behind it is lost at the save after that, and a CR/LF
 *   file no longer initialises.
 * - The value of the last SSID of a shared key ends in the file's line end until it is set.
 * - An authentication mode that is not spelt as the table at wifimgr_lib_set_authMode has it opens the network.
 * - The normalisation is not to be called twice: it makes "WPA3-192" of "WPA3-192Bit", which a second one takes for an
 *   open network, and the second one also takes 802.1X off a WEP SSID with RADIUS. Set the authentication mode before
 *   each apply.
 * - An SSID that becomes open in the normalisation loses passphrase, WEP keys and cipher in the store.
 * - WDS keys of links 2 to 4 are written to field 1 of their key but read from field 2 to 4.
 */
#ifndef WIFIMGR_LIB_H
#define WIFIMGR_LIB_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define WIFIMGR_API __attribute__((visibility("default")))
#define WIFIMGR_PRINTF(fmt_at, args_at) __attribute__((format(printf, fmt_at, args_at)))
#define WIFIMGR_PACKED __attribute__((packed))
#else
#error "the records below need a compiler that packs structures as GCC does"
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Sizes and records ------------------------------------------------------------------------------------------- */

#define WIFIMGR_KEY_SIZE 36       /* a key: 35 characters and a NUL */
#define WIFIMGR_FIELD_SIZE 150    /* a value field: 149 characters and a NUL */
#define WIFIMGR_FIELDS 8          /* value fields of an attribute, one per SSID */
#define WIFIMGR_VALUE_SIZE 160    /* what callers give getters */
#define WIFIMGR_DAT_LINE_SIZE 186 /* a line of a dat file: 185 characters and a NUL */
#define WIFIMGR_DAT_PATH_SIZE 512 /* the path of a dat file with its NUL */

/* One attribute, as it lies in a band's shared-memory segment: 1236 bytes. An empty field begins with NUL; the first
 * record with an empty key ends the table. */
typedef struct wifimgr_attr_record {
  char key[WIFIMGR_KEY_SIZE];                     /* as in front of the "=" */
  char field[WIFIMGR_FIELDS][WIFIMGR_FIELD_SIZE]; /* of SSID 1 to 8; a band-wide value is the first */
} wifimgr_attr_record;

/* The common type of all setters that take band, index and value. */
typedef uint64_t (*wifimgr_setter_t)(uint32_t wifi_type, int32_t index, const char* value);

/* ---- Exported data of the store ---------------------------------------------------------------------------------- */

/* The bands' dat files. Written by wifimgr_lib_set_wifi_path; used at the next load or save. */
WIFIMGR_API extern char dat_path_2_4g[WIFIMGR_DAT_PATH_SIZE];
WIFIMGR_API extern char dat_path_5g[WIFIMGR_DAT_PATH_SIZE];

/* Where this process has the bands' segments attached; null until init_shm, or until the program stores the address
 * of a segment that it attached itself. Reads and changes work on what these point at. */
WIFIMGR_API extern char* shm_addr_2_4g;
WIFIMGR_API extern char* shm_addr_5g;

/* The bands' semaphore ids, -1 until init_shm. For information: every operation looks its semaphore up by key. */
WIFIMGR_API extern int semid_2_4g;
WIFIMGR_API extern int semid_5g;

/* Kept for programs that link it; the library leaves it at 0. */
WIFIMGR_API extern int cfg_in_shm_count;

/* Where rstrtok continues; null when no scan is under way. */
WIFIMGR_API extern char* __rstrtok;

/* ---- Dat file lines and list texts ------------------------------------------------------------------------------- */

/* Returns how many records the band's dat file needs: its lines, a longer one counting once per 185 characters, plus
 * 5. 0 when the file cannot be opened or read, or the band is neither 0 nor 1. Opens the file for reading. */
WIFIMGR_API int get_dat_para_num(int wifi_type);

/* Parses one line of a dat file, its line end included.
 * line  left as it is; key and value are each cut at 185 characters.
 * out   zeroed by the caller: key (cut to 35 characters) and fields (cut to 149) are filled in.
 * Returns 0; 1 without touching `out` for a comment ("#..."), an empty line and a prefix of "Default", which are no
 * attributes, and when attr_value_parser fails. A line that begins with "=" is an attribute without a key. */
WIFIMGR_API int parse_data_from_line(char* line, wifimgr_attr_record* out);

/* Splits a value into its fields, in place.
 * key     decides how: the values of WMM lists, AckPolicy, WdsList, WdsEncrypType and WdsPhyMode stay whole and lose
 *         their line end; all others are split at ";", empty fields are dropped and the last field keeps its line
 *         end.
 * value   modified; must outlive the use of `fields`.
 * count   receives the number of fields kept, at least 1 (also when there is none).
 * fields  caller's array of 8 pointers into `value`; those beyond the last field stay as they were.
 * Returns 0; 1 for a null pointer. */
WIFIMGR_API int attr_value_parser(const char* key, char* value, unsigned* count, char** fields);

/* Cuts the line end of a text of `len` characters in place: one character when it holds a CR anywhere, one when it
 * holds an LF anywhere. Returns 0; 5 and changes nothing when `len` is below 3 ("0\n" keeps its line end). */
WIFIMGR_API int parserstr(char* str, int len);

/* Takes the next token of `str`, or of the scan under way when `str` is null, and overwrites the delimiter behind it.
 * Returns the token inside the scanned text, or null when none is left. One scan per process (__rstrtok). */
WIFIMGR_API char* rstrtok(char* str, const char* delims);

/* Returns 1 when both texts are equal but for the case of ASCII letters, else 0: 1 means equal. */
WIFIMGR_API int rtstrcasecmp(const char* a, const char* b);

/* Copies the first four ";"-separated fields of `src`, which must hold four ";", to `dst`, which must have room for
 * them. The copy does not stop at a NUL. */
WIFIMGR_API void strextract(char* dst, const char* src);

/* ---- The shared store -------------------------------------------------------------------------------------------- */

/* Sets semaphore 0 of the set to `value`. Refusal: "set_semvalue failed.". */
WIFIMGR_API int set_semvalue(int semid, int value);

/* Removes the semaphore set. Refusal: "del_semvalue failed.". */
WIFIMGR_API int del_semvalue(int semid);

/* Takes the lock (blocking; the kernel gives it back when the process dies). A wait ended by a signal is a failure.
 * Refusal: "seamphore_p failed.". */
WIFIMGR_API int semaphore_p(int semid);

/* Gives the lock back. Refusal: "seamphore_v failed.". */
WIFIMGR_API int semaphore_v(int semid);

/* Creates or attaches the band's segment (permissions 0666, large enough for its dat file) and semaphore, sets the
 * semaphore free whoever holds it, and clears what its dat file needs of the segment. Called again it attaches anew.
 * Without a dat file it attaches an existing segment and clears as many records as this process has ever counted in
 * its dat files: none in a new process.
 * Refusals: "The wifi_type is wrong.", "Create share memory failed." (also for an existing segment that is too small,
 * and without dat file and segment), "Attach share memory failed.", "semget failed.", "Set sem value failed.",
 * "p operation failed.", "v operation failed."; a failure of a later step leaves what the earlier ones did. */
WIFIMGR_API int init_shm(int wifi_type);

/* Clears the band's segment and loads its dat file into it, after init_shm when this process has not called it yet.
 * The lock is taken per record, so others may see a half-loaded store, and a failure on the way leaves one. The file
 * must be writable. Refusals: "The wifi_type is wrong.", "Initialize share memory for 2.4G failed." (or 5G), "Open
 * the file %s failed." (init_shm may have cleared the store by then), "shm_tmp is NULL!", "p operation failed.", "v
 * operation failed."; 1 also when the file cannot be read to its end. */
WIFIMGR_API int creat_shm_from_datafile(int wifi_type);

/* Searches the table at `segment` for the key `name`, exactly. The caller holds the lock. Returns 2 and sets *index
 * to the record's position; 3 and leaves *index alone when there is none; 1 for a null pointer. */
WIFIMGR_API int is_attr_exist(char* segment, const char* name, unsigned* index);

/* Copies a value of the band's store to `buf`.
 * index  -1 or 1 copies field 1, 2 to 8 that field; another index copies nothing and is no failure. Keys of the
 *        families that are stored once per SSID give field 1 whatever the index: those that begin with SSID,
 *        RADIUS_Key, WscDefaultSSID, WPAPSK, Key1Str to Key4Str, AccessPolicy, AccessControlList, WSC_UUID_E or
 *        WSC_UUID_Str, with or without a number behind it.
 * len    at least 151, else "The size of buffer is too small!"; 150 bytes are written. For the families any length:
 *        what fits is copied, the rest filled with NUL, and nothing terminates a value of `len` or more characters.
 * Refusals also: "The wifi_type is wrong.", "The attr_name do not exist." (also before the band is attached), "p
 * operation failed.", "v operation failed." (the value is then in `buf`). */
WIFIMGR_API int read_attr(int wifi_type, int index, const char* name, char* buf, unsigned len);

/* Replaces a value of the band's store by `value`, cut to 149 characters; fields that it does not address stay. Only
 * keys of the loaded dat file exist.
 * index  -1 for field 1, 1 to 8 for that field; the families of read_attr always change field 1.
 * Refusals: "The wifi_type is wrong.", "p operation is wrong.", "The attr_name do not exist.", "The index is
 * invalid.", "Modify the attr_value failed.", "v operaion failed." (the value is then changed). */
WIFIMGR_API int update_attr(int wifi_type, int index, const char* name, const char* value);

/* Replaces field 1 of record number `record` when its key is `name`. The caller holds the lock. 1 when it is not. */
WIFIMGR_API int update_common_attr(char* segment, int record, const char* name, const char* value);

/* Replaces field `index` (1 to 8) of record number `record` when its key is `name`; for a key of the families field
 * 1, whatever the index, through update_common_attr. The caller holds the lock. Returns 0 also when key or index do
 * not fit and nothing was changed; 1 when update_common_attr fails. */
WIFIMGR_API int update_attr_by_ssid(char* segment, int record, int index, const char* name, const char* value);

/* Returns `size` bytes of zeroed memory, to be freed by the caller with free; null when there is none. */
WIFIMGR_API void* os_zalloc(size_t size);

/* ---- Set-up and debug -------------------------------------------------------------------------------------------- */

/* The number of BSS interfaces that were brought up last, 2.4G first: what the commit takes down. Set by
 * wifimgr_lib_init, and by wifimgr_lib_set_bssidNum to the count before the change. */
WIFIMGR_API extern int32_t pre_wlan_state[2];

/* Loads the band (creat_shm_from_datafile) and remembers its SSID count in pre_wlan_state. Clears what all processes
 * share of the band. Refusal: "Initialize the share memory failed!" (the store may then be empty or half loaded); 1
 * also without a BssidNum, the store is then loaded. */
WIFIMGR_API int wifimgr_lib_init(int wifi_type);

/* Sets the band's dat file for the next load and save.
 * path  caller's buffer of at least WIFIMGR_DAT_PATH_SIZE bytes: all 512 are read and copied as they are; without a
 *       NUL among them the first 511 count.
 * Refusal: "The wifi type is invalid.". */
WIFIMGR_API int wifimgr_lib_set_wifi_path(int wifi_type, const char* path);

/* Prints the band's store on standard output (print_shm). Refusal: "Print the share memory data failed!". */
WIFIMGR_API int wifimgr_lib_dump(int wifi_type);

/* Prints each record of the band: its key and ":", then its fields, four to a line of 119 characters. Takes no lock
 * and removes the line ends of the stored values. Refusal: "The wifi_type is wrong."; 1 also before the band is
 * attached. */
WIFIMGR_API int print_shm(int wifi_type);

/* Clears `len` bytes of `buf` and writes the version, "7915", cut to fit. Returns 0; -1 for another band, with `buf`
 * cleared; 1 for a null `buf`. A length of 0 or less writes nothing. */
WIFIMGR_API int wifimgr_lib_get_version(int wifi_type, char* buf, int len);

/* Switches the debug trace on: writes "/tmp/wifi_lib_dbg_enable", and `level` to "/tmp/vexalib_dbg".
 * level  the highest level to print, as text: "1" reasons of failures, "8" everything.
 * Returns 0; 1 when the first file cannot be opened or one of them not be written to its end, and for a null level
 * (the first file is written then). A file that is a symbolic link cannot be opened. Whether
 * and when the files are looked at is the platform's debug library's business. */
WIFIMGR_API int wifimgr_lib_set_dbg_level(const char* level);

/* Writes a message, cut to 255 characters, to the kernel debug file "/proc/zq2810/dbg_msg". When that cannot be
 * opened, prints "open /proc/zq2810/dbg_msg fail" on standard output. */
WIFIMGR_API void zqdbg_blapi_printf(const char* fmt, ...) WIFIMGR_PRINTF(1, 2);

/* Replaces the content of the file by `text`. Returns 0, or -1 when it cannot be opened or not be written
 * to its end (or a pointer is null). */
WIFIMGR_API int doCmdWrite(const char* path, const char* text);

/* Sets flags[i] to '1' for each WLAN chip on the PCI bus, in the order 7603, 7612, 7615, 7663, 7915, 7916, 7905;
 * never clears one.
 * flags  7 characters, set to '0' by the caller.
 * count  not used.
 * Runs "cat /proc/bus/pci/devices > /tmp/devices" and reads that, which is what another user planted there when the
 * command could not write it. Refusal: "Open the file /tmp/devices failed.". */
WIFIMGR_API int parse_driver(char* flags, int count);

/* ---- Writing the dat file ---------------------------------------------------------------------------------------- */

/* Saves the band: update_datafile_from_shm with the stored SSID count. */
WIFIMGR_API int wifimgr_lib_save_dataFile(int wifi_type);

/* Rewrites the band's dat file in place from its store: "Default", then a line per record. Shared keys get as many
 * fields as there are SSIDs (at most 8, fewer at the first empty one); keys of SSIDs beyond the count are left out.
 * Holds the band's lock meanwhile, and empties the file once more when it has it. There is no backup: a failure after
 * the file was opened leaves it cut.
 * bssid_num  the SSID count; a negative one counts as 0.
 * Refuses with 1, before the file is touched, when a line would be longer than 185 characters. Refusals also: "The
 * wifi_type is wrong.", "Open the file %s failed.", "p operation failed.", "merge some values to one line failed.",
 * "v operation failed."; 1 also before the band is attached, and when the file cannot be written to its end. */
WIFIMGR_API int update_datafile_from_shm(int wifi_type, int bssid_num);

/* Appends the first `count` fields (at most 8, up to the first empty one) of `rec` to the text in `out`, joined by
 * ";", without their line ends. `out` must have room for them: 1201 bytes are enough for an empty text. */
WIFIMGR_API int merge_para(wifimgr_attr_record* rec, char* out, int count);

/* When `key` begins with the name of a family numbered from 1 (SSID, RADIUS_Key, WscDefaultSSID, WPAPSK, Key1Str to
 * Key4Str, WSC_UUID_E, WSC_UUID_Str), sets *num to the number behind that name in `line` (0 without digits) and
 * returns 0; otherwise 1. */
WIFIMGR_API int get_attr_num(const char* key, const char* line, unsigned* num);

/* get_attr_num for the families numbered from 0: AccessPolicy and AccessControlList. */
WIFIMGR_API int get_attr_num_extended(const char* key, const char* line, unsigned* num);

/* ---- Checks of value texts --------------------------------------------------------------------------------------- */

/* 1 when all characters are decimal digits (the empty text too), else 0. */
WIFIMGR_API int doStrDecCheck(const char* s);

/* 1 for a hexadecimal digit of either case, else -1. */
WIFIMGR_API int doHexCheck(char c);

/* 1 when all characters are hexadecimal digits (the empty text too), else 0. */
WIFIMGR_API int doStrHexCheck(const char* s);

/* 0 when all characters up to the first line end are decimal digits (none too), else 1. */
WIFIMGR_API int check_is_num(const char* s);

/* 0 when all characters up to the first line end are hexadecimal digits (none too), else 1. */
WIFIMGR_API int check_hex_valid(const char* s);

/* 1 for decimal digits whose value is below 256 (the empty text too), else 0. */
WIFIMGR_API int checkV4(const char* s);

/* How often `c` occurs in the text; 0 for NUL. */
WIFIMGR_API int charCnt(const char* s, char c);

/* 1 for a dotted IPv4 address, else 0. Of a 16-character text the first 15 are judged. */
WIFIMGR_API int IPV4check(const char* s);

/* Always 0: no text is accepted as a MAC address, so the setters that ask it refuse every value. Deliberate. */
WIFIMGR_API int MacCheck(const char* s);

/* 0 for a list of exactly four numbers, "a;b;c;d", whose fields are then in f1 to f4; else 1, with "The input
 * parameter is invalid.".
 * f1..f4  caller's buffers of WIFIMGR_FIELD_SIZE bytes each; a longer field is refused. Some may be filled on
 *         failure. */
WIFIMGR_API int check_para_valid(const char* s, char* f1, char* f2, char* f3, char* f4);

/* ---- Band-wide settings ------------------------------------------------------------------------------------------
 *
 * Getters: index must be -1 ("The index should be -1."); 150 bytes of field 1 are copied to `buf` of `len`, at least
 * 151, bytes. Setters: index must be -1 ("The ssid index here should be -1." unless stated); the value replaces field
 * 1. No blanks are trimmed, "1\n" is no number, and the empty text is 0 where numbers are asked for. Checks run in
 * the order value present, index, value, store. A key must be in the band's dat file. Nothing reaches the file or the
 * driver before a save or commit. */

/* BssidNum: how many SSIDs the band serves. The setter accepts any text. It remembers the count in force in
 * pre_wlan_state and sets ReloadFlag to "1" when the new text differs from the stored one over the new one's length
 * ("1" for a stored "12" is no change), else to "0" ("Set the ReloadFlag failed."); when the count in force cannot be
 * read, both are left alone and the new count is still written. A failure of a later step leaves what the earlier
 * ones did. */
WIFIMGR_API int wifimgr_lib_get_bssidnum(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssidNum(uint32_t wifi_type, int32_t index, const char* value);

/* ReloadFlag: "1" when the next commit must reload the driver module. Any text, no index. */
WIFIMGR_API int wifimgr_lib_get_reloadFlag(uint32_t wifi_type, char* buf, uint32_t len);
WIFIMGR_API int wifimgr_lib_set_reloadFlag(uint32_t wifi_type, const char* value);

/* CountryRegion: regulatory region of 2.4G. Accepts digits, 0 to 7, 31, 32 or 33. Only band 0: the getter refuses
 * others with "The wifi type should be 0.", the setter, before it looks at the index, with "The input parameter is
 * invalid.", which is its refusal of a value too. */
WIFIMGR_API int wifimgr_lib_get_countryRegion(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_countryRegion(uint32_t wifi_type, int32_t index, const char* value);

/* CountryRegionABand: regulatory region of 5G. Only band 1: the getter refuses others with "The wifi type should be
 * 1.", the setter with "The input parameter is invalid.", as it does other values. Accepts digits, 0 to 14. */
WIFIMGR_API int wifimgr_lib_get_countryRegionABand(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_countryRegionABand(uint32_t wifi_type, int32_t index, const char* value);

/* WirelessMode: accepts digits ("The WirelessMode value should be DEC num.") and one of 0, 1, 3 to 10, 16 on 2.4G
 * ("The WirelessMode value for 2.4G is invalid."), of 2, 3, 5, 8, 10, 11, 14, 15, 17 on 5G ("The WirelessMode value
 * for 5G is invalid."). What a number means is the driver's:
 *
 *   2.4G alone  0 802.11b/g    1 b only   4 g only   6 n only  7 g/n  9 b/g/n  16 b/g/n/ax
 *   5G alone    2 802.11a      11 n only  14 a/n/ac  15 n/ac   17 a/n/ac/ax
 *   both        3 802.11a/b/g  5 a/b/g/n  8 a/n      10 a/g/n
 */
WIFIMGR_API int wifimgr_lib_get_wirelessMode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wirelessMode(uint32_t wifi_type, int32_t index, const char* value);

/* HT_BW: accepts digits, 0 or 1, and only while the stored WirelessMode is 2, 5 to 11 or 14 to 17 ("The wirelessMode
 * do not support to set the HT_BW value.", checked before the index). Refusal: "The HT_BW value should be 0 or 1.". */
WIFIMGR_API int wifimgr_lib_get_HT_BW(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_BW(uint32_t wifi_type, int32_t index, const char* value);

/* HT_GI: accepts digits, 0 or 1, and only while the stored WirelessMode is 5 to 11 or 14 to 17 ("The wirelessMode do
 * not support to set the HT_GI value.", checked before the index). Refusal: "The HT_GI value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_GI(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_GI(uint32_t wifi_type, int32_t index, const char* value);

/* VHT_BW: accepts digits, 0 to 3 ("The VHT_BW value should be from 0 to 3."), and writes the value once per SSID,
 * joined by ";", into field 1; as many whole values as stay below 159 characters, of which the store keeps 149. The
 * fields 2 to 8 that the file had stay and are saved behind it. 1 when the SSID count cannot be read. */
WIFIMGR_API int wifimgr_lib_get_VHT_BW(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_VHT_BW(uint32_t wifi_type, int32_t index, const char* value);

/* VHT_SGI: accepts digits, 0 or 1 ("The VHT_SGI value should be between 0 to 1."); written as
 * wifimgr_lib_set_VHT_BW does, but cut at 149 characters. */
WIFIMGR_API int wifimgr_lib_get_VHT_SGI(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_VHT_SGI(uint32_t wifi_type, int32_t index, const char* value);

/* Channel: Channel number; 0 lets the driver choose. Accepts digits, 0 to 180. Refusal: "The input channel is
 * invalid.Please input from 0 to 180". */
WIFIMGR_API int wifimgr_lib_get_channel(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_channel(uint32_t wifi_type, int32_t index, const char* value);

/* AutoChannelSelect: Automatic channel selection. Accepts digits, 0 to 3. Refusal: "The input
 * channel is invalid.Please input from 0 to 3". */
WIFIMGR_API int wifimgr_lib_get_autoChannelSelect(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_autoChannelSelect(uint32_t wifi_type, int32_t index, const char* value);

/* AutoChannelSkipList: Channels that the automatic selection leaves out, ";"-separated. Accepts any text. Another
 * index: "The ssid index is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_AutoChannelSkipList(uint32_t wifi_type, int32_t index, const char* value);

/* CountryCode: Two-letter country code. Accepts any text. */
WIFIMGR_API int wifimgr_lib_get_countryCode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_countryCode(uint32_t wifi_type, int32_t index, const char* value);

/* MacAddress: The radio's MAC address. Accepts nothing: every value is refused, deliberately (see MacCheck). Refusal:
 * "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1.". */
WIFIMGR_API int wifimgr_lib_get_macAddress(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MacAddress(uint32_t wifi_type, int32_t index, const char* value);

/* BeaconPeriod: Beacon interval in time units of 1.024 ms. Accepts digits, 20 to 1024. Refusal: "The BeaconPeriod
 * value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_beaconPeriod(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_beaconPeriod(uint32_t wifi_type, int32_t index, const char* value);

/* DtimPeriod: DTIM interval in beacons. Accepts digits, 1 to 255. Refusal: "The DtimPeriod value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_dtimPeriod(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_dtimPeriod(uint32_t wifi_type, int32_t index, const char* value);

/* RTSThreshold: RTS threshold in bytes. Accepts digits, 1 to 2347. Refusal: "The RTSThreshold value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_rtsThreshold(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_rtsThreshold(uint32_t wifi_type, int32_t index, const char* value);

/* FragThreshold: Fragmentation threshold in bytes. Accepts digits, 256 to 2346. Refusal: "The FragThreshold value is
 * invalid.". */
WIFIMGR_API int wifimgr_lib_get_fragThreshold(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_fragThreshold(uint32_t wifi_type, int32_t index, const char* value);

/* TxPower: TX power in percent; on 2.4G the normalisation takes 1 to 6 for levels. Accepts digits, 0 to 100. Refusal:
 * "The TxPower value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_txPower(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_txPower(uint32_t wifi_type, int32_t index, const char* value);

/* PERCENTAGEenable: Whether TxPower counts as a percentage. Accepts digits, 0 to 1. Refusal: "The PERCENTAGEenable
 * value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_PERCENTAGEenable(uint32_t wifi_type, int32_t index, const char* value);

/* BGProtection: 802.11b/g protection. Accepts digits, 0 to 2. Refusal: "The BGProtection
 * value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_bgProtection(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_bgProtection(uint32_t wifi_type, int32_t index, const char* value);

/* DisableOLBC: Disables overlapping legacy BSS detection. Accepts digits, 0 to 1. Refusal: "The DisableOLBC value is
 * invalid.". */
WIFIMGR_API int wifimgr_lib_get_disableOLBC(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_disableOLBC(uint32_t wifi_type, int32_t index, const char* value);

/* TxPreamble: Short preamble. Accepts digits, 0 to 1. Refusal: "The TxPreamble value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_txPreamble(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_txPreamble(uint32_t wifi_type, int32_t index, const char* value);

/* TxBurst: TX burst. Accepts digits, 0 to 1. Refusal: "The TxBurst value is invalid.". The normalisation makes it "1"
 * on both bands. */
WIFIMGR_API int wifimgr_lib_get_txBurst(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_txBurst(uint32_t wifi_type, int32_t index, const char* value);

/* PktAggregate: Packet aggregation. Accepts digits, 0 to 1. Refusal: "The PktAggregate value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_pktAggregate(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_pktAggregate(uint32_t wifi_type, int32_t index, const char* value);

/* TurboRate: Turbo rate. Accepts digits, 0 to 2147483647. Refusal: "The TurboRate value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_turboRate(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_turboRate(uint32_t wifi_type, int32_t index, const char* value);

/* NoForwardingBTNBSSID: No forwarding between BSSs. Accepts digits, 0 to 1. Refusal: "The NoForwardingBTNBSSID value
 * is invalid.". */
WIFIMGR_API int wifimgr_lib_get_noForwardingBTNBSSID(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_noForwardingBTNBSSID(uint32_t wifi_type, int32_t index, const char* value);

/* ShortSlot: Short slot time. Accepts digits, 0 to 1. Refusal: "The ShortSlot value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_shortSlot(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_shortSlot(uint32_t wifi_type, int32_t index, const char* value);

/* WirelessEvent: Wireless events to user space. Accepts digits, 0 to 1. Refusal: "The WirelessEvent value is
 * invalid.". */
WIFIMGR_API int wifimgr_lib_get_wirelessEvent(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wirelessEvent(uint32_t wifi_type, int32_t index, const char* value);

/* PMKCachePeriod: PMK cache period. Accepts digits, 0 to 65535. Refusal: "The PMKCachePeriod value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_pmkCachePeriod(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_pmkCachePeriod(uint32_t wifi_type, int32_t index, const char* value);

/* BasicRate: Basic rate set as a bit mask. Accepts digits, 0 to 4095. Refusal: "The BasicRate value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_basicRate(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_basicRate(uint32_t wifi_type, int32_t index, const char* value);

/* DLSCapable: Direct link set-up. Accepts digits, 0 to 1. Refusal: "The DLSCapable value should be 0 or 1.". */
WIFIMGR_API int wifimgr_lib_get_dlsCapable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_dlsCapable(uint32_t wifi_type, int32_t index, const char* value);

/* EfuseBufferMode: Calibration from the buffer instead of the fuses. Accepts digits, 0 to 1. Refusal: "The
 * EfuseBufferMode value should be 0 or 1.". */
WIFIMGR_API int wifimgr_lib_get_EfuseBufferMode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_EfuseBufferMode(uint32_t wifi_type, int32_t index, const char* value);

/* AMSDU_NUM: Number of MSDUs in an A-MSDU. Accepts digits, however many. Refusal: "The AMSDU_NUM value should be
 * Digital.". */
WIFIMGR_API int wifimgr_lib_get_AMSDU_NUM(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_AMSDU_NUM(uint32_t wifi_type, int32_t index, const char* value);

/* DscpPriMapEnable: DSCP to priority map. Accepts digits, however many. Refusal: "The DscpPriMapEnable value should
 * be number.". */
WIFIMGR_API int wifimgr_lib_get_DscpPriMapEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_DscpPriMapEnable(uint32_t wifi_type, int32_t index, const char* value);

/* HT_OpMode: HT operating mode. Accepts digits, 0 to 1. Refusal: "The HT_OpMode value is invalid.". The normalisation
 * overwrites it: on 2.4G "1" in wireless modes 0, 1, 7, 9 and 16 and "0" in others, on 5G always "0". */
WIFIMGR_API int wifimgr_lib_get_HT_OpMode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_OpMode(uint32_t wifi_type, int32_t index, const char* value);

/* HT_TxStream: TX stream count. Accepts a text whose leading number is 0 to 4 (a word counts as 0 and is stored).
 * Another index: "The ssid index is invalid.". Refusal: "The HT_TxStream value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_TxStream(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_TxStream(uint32_t wifi_type, int32_t index, const char* value);

/* HT_RxStream: RX stream count. Accepts a text whose leading number is 0 to 4 (a word counts as 0 and is stored).
 * Another index: "The ssid index is invalid.". Refusal: "The HT_RxStream value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_RxStream(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_RxStream(uint32_t wifi_type, int32_t index, const char* value);

/* HT_LDPC: HT LDPC coding. Accepts digits, 0 to 1. Refusal: "The VHT_LDPC value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_HT_LDPC(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_LDPC(uint32_t wifi_type, int32_t index, const char* value);

/* HT_EXTCHA: HT extension channel. Accepts digits, 0 to 1. Another index: "The ssid index is
 * invalid.". Refusal: "The HT_EXTCHA value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_EXTCHA(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_EXTCHA(uint32_t wifi_type, int32_t index, const char* value);

/* HT_BSSCoexistence: 20/40 MHz BSS coexistence. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.".
 * Refusal: "The HT_BSSCoexistence value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_BSSCoexistence(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_BSSCoexistence(uint32_t wifi_type, int32_t index, const char* value);

/* HT_AutoBA: Automatic block ack. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The
 * HT_AutoBA value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_AutoBA(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_AutoBA(uint32_t wifi_type, int32_t index, const char* value);

/* HT_RDG: Reverse direction grant. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The
 * HT_RDG value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_RDG(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_RDG(uint32_t wifi_type, int32_t index, const char* value);

/* HT_MpduDensity: MPDU density. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The
 * HT_MpduDensity value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_MpduDensity(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_MpduDensity(uint32_t wifi_type, int32_t index, const char* value);

/* HT_BAWinSize: Block ack window size in frames. Accepts digits, 0 to 256. Another index: "The ssid index is
 * invalid.". Refusal: "The HT_BAWinSize value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_BAWinSize(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_BAWinSize(uint32_t wifi_type, int32_t index, const char* value);

/* HT_HTC: HT control field. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The HT_HTC
 * value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_HTC(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_HTC(uint32_t wifi_type, int32_t index, const char* value);

/* HT_LinkAdapt: HT link adaptation. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The HT_LinkAdapt value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_LinkAdapt(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_LinkAdapt(uint32_t wifi_type, int32_t index, const char* value);

/* HT_AMSDU: A-MSDU. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The HT_AMSDU value
 * is invalid.". */
WIFIMGR_API int wifimgr_lib_get_HT_AMSDU(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_AMSDU(uint32_t wifi_type, int32_t index, const char* value);

/* HT_STBC: HT space-time block coding. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The HT_STBC value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_HT_STBC(uint32_t wifi_type, int32_t index, const char* value);

/* IEEE80211H: 802.11h spectrum management. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.".
 * Refusal: "The IEEE80211H value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_IEEE80211H(uint32_t wifi_type, int32_t index, const char* value);

/* G_BAND_256QAM: 256-QAM on 2.4 GHz. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The G_BAND_256QAM value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_G_BAND_256QAM(uint32_t wifi_type, int32_t index, const char* value);

/* WHNAT: WLAN hardware NAT; a change asks for a reboot. Accepts digits, 0 to 1. Another index: "The ssid index is
 * invalid.". Refusal: "The WHNAT value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_WHNAT(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_WHNAT(uint32_t wifi_type, int32_t index, const char* value);

/* WOEOFF: WLAN offload engine off. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal: "The
 * WOEOFF value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_WOEOFF(uint32_t wifi_type, int32_t index, const char* value);

/* ProbeHideSSID: Probe responses for a hidden SSID. Accepts digits, 0 to 1. Another index: "The ssid index is
 * invalid.". Refusal: "The ProbeHideSSID value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ProbeHideSSID(uint32_t wifi_type, int32_t index, const char* value);

/* SHORTGIFLAG: Short guard interval flag. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.".
 * Refusal: "The SHORTGIFLAG value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_SHORTGIFLAG(uint32_t wifi_type, int32_t index, const char* value);

/* ITxBfEn: Implicit TX beamforming. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The ITxBfEn value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ITxBfEn(uint32_t wifi_type, int32_t index, const char* value);

/* ETxBfEnCond: Explicit TX beamforming. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The ETxBfEnCond value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ETxBfEnCond(uint32_t wifi_type, int32_t index, const char* value);

/* ETxBfIncapable: No explicit TX beamforming capability. Accepts digits, 0 to 1. Another index: "The ssid index is
 * invalid.". Refusal: "The ETxBfIncapable value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ETxBfIncapable(uint32_t wifi_type, int32_t index, const char* value);

/* MUTxRxEnable: Multi-user TX and RX. Accepts digits, 0 to 1. Another index: "The ssid index is invalid.". Refusal:
 * "The MUTxRxEnable value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_MUTxRxEnable(uint32_t wifi_type, int32_t index, const char* value);

/* StaNumDetect: Station count detection. Accepts digits, 0 to 2147483647. Another index: "The ssid index is invalid.".
 * Refusal: "The StaNumDetect value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_StaNumDetect(uint32_t wifi_type, int32_t index, const char* value);

/* VHT_LDPC: VHT LDPC coding. Accepts digits, 0 to 1. Refusal: "The VHT_LDPC value should be between 0 to 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_VHT_LDPC(uint32_t wifi_type, int32_t index, const char* value);

/* VHT_STBC: VHT space-time block coding. Accepts digits, 0 to 1. Refusal: "The VHT_STBC value should be between 0 to
 * 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_VHT_STBC(uint32_t wifi_type, int32_t index, const char* value);

/* VHT_BW_SIGNAL: VHT bandwidth signalling. Accepts digits, 0 to 1. Refusal: "The VHT_BW_SIGNAL value is invalid.". */
WIFIMGR_API int wifimgr_lib_get_VHT_BW_SIGNAL(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_VHT_BW_SIGNAL(uint32_t wifi_type, int32_t index, const char* value);

/* Vht1024QamSupport: 1024-QAM. Accepts digits, however many. Refusal: "The Vht1024QamSupport value should be
 * number.". */
WIFIMGR_API int wifimgr_lib_get_Vht1024QamSupport(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_Vht1024QamSupport(uint32_t wifi_type, int32_t index, const char* value);

/* MuOfdmaDlEnable: Downlink MU-OFDMA. Accepts digits, 0 to 1. Refusal: "The muofdmadl value should be between 0 to
 * 1.". */
WIFIMGR_API int wifimgr_lib_get_MuOfdmaDlEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MuOfdmaDlEnable(uint32_t wifi_type, int32_t index, const char* value);

/* MuOfdmaUlEnable: Uplink MU-OFDMA. Accepts digits, 0 to 1. Refusal: "The muofdma value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_MuOfdmaUlEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MuOfdmaUlEnable(uint32_t wifi_type, int32_t index, const char* value);

/* MuMimoDlEnable: Downlink MU-MIMO. Accepts digits, 0 to 1. Refusal: "The mumimodl value should be between 0 to 1.".
 */
WIFIMGR_API int wifimgr_lib_get_MuMimoDlEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MuMimoDlEnable(uint32_t wifi_type, int32_t index, const char* value);

/* MuMimoUlEnable: Uplink MU-MIMO. Accepts digits, 0 to 1. Refusal: "The mumimoul value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_MuMimoUlEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MuMimoUlEnable(uint32_t wifi_type, int32_t index, const char* value);

/* SREnable: Spatial reuse. Accepts digits, 0 to 1. Refusal: "The SREnable value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_SREnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_SREnable(uint32_t wifi_type, int32_t index, const char* value);

/* SRMode: Spatial reuse mode. Accepts digits, 0 to 1. Refusal: "The SRMode value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_SRMode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_SRMode(uint32_t wifi_type, int32_t index, const char* value);

/* SRSDEnable: Spatial reuse SD. Accepts digits, 0 to 1. Refusal: "The SRSDEnable value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_SRSDEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_SRSDEnable(uint32_t wifi_type, int32_t index, const char* value);

/* PPEnable: Preamble puncturing. Accepts digits, 0 to 1. Refusal: "The PPEnable value should be between 0 to 1.". */
WIFIMGR_API int wifimgr_lib_get_PPEnable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_PPEnable(uint32_t wifi_type, int32_t index, const char* value);

/* TWTSupport: Target wake time. Accepts digits, 0 to 2. Refusal: "The twtsupport value should
 * be between 0 ~2.". */
WIFIMGR_API int wifimgr_lib_get_TWTSupport(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_TWTSupport(uint32_t wifi_type, int32_t index, const char* value);

/* HeraStbcPriority: HE STBC priority. Accepts digits, however many. Refusal: "The HeraStbcPriority value should be
 * number.". */
WIFIMGR_API int wifimgr_lib_get_HeraStbcPriority(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_HeraStbcPriority(uint32_t wifi_type, int32_t index, const char* value);

/* MaxRuOfdma: Most OFDMA users. Accepts digits, however many. Refusal: "The MaxRuOfdma value should be number.". */
WIFIMGR_API int wifimgr_lib_get_MaxRuOfdma(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MaxRuOfdma(uint32_t wifi_type, int32_t index, const char* value);

/* MaxDLMuMimo: Most downlink MU-MIMO users. Accepts digits, however many. Refusal: "The MaxDLMuMimo value should be
 * number.". */
WIFIMGR_API int wifimgr_lib_get_MaxDLMuMimo(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MaxDLMuMimo(uint32_t wifi_type, int32_t index, const char* value);

/* MaxULMuMimo: Most uplink MU-MIMO users. Accepts digits, however many. Refusal: "The MaxULMuMimo value should be
 * number.". */
WIFIMGR_API int wifimgr_lib_get_MaxULMuMimo(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_MaxULMuMimo(uint32_t wifi_type, int32_t index, const char* value);

/* Disable160RuMu: No multi-user RU at 160 MHz. Accepts digits, however many. Refusal: "The Disable160RuMu value
 * should be number.". */
WIFIMGR_API int wifimgr_lib_get_Disable160RuMu(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_Disable160RuMu(uint32_t wifi_type, int32_t index, const char* value);

/* own_ip_addr: The 802.1X authenticator's own IPv4 address. Accepts an address that IPV4check accepts. Refusal: "The
 * own IP is invalid.\nPlease input from 0.0.0.0 to 255.255.255.255". */
WIFIMGR_API int wifimgr_lib_get_ownip(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_ownip(uint32_t wifi_type, int32_t index, const char* value);

/* session_timeout_interval: 802.1X session time-out in seconds. Accepts up to ten digits, at most 2147483647; the
 * empty text too. Refusal: "The timeout value is invalid.\nPlease input from 0 to 2147483647.". */
WIFIMGR_API int wifimgr_lib_get_session_timeout_interval(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_session_timeout_interval(uint32_t wifi_type, int32_t index, const char* value);

/* EAPifname: Interface that carries EAP. Accepts any text. */
WIFIMGR_API uint64_t wifimgr_lib_set_EAPifname(uint32_t wifi_type, int32_t index, const char* value);

/* PreAuthifname: Interface that carries pre-authentication. Accepts any text. */
WIFIMGR_API uint64_t wifimgr_lib_set_PreAuthifname(uint32_t wifi_type, int32_t index, const char* value);

/* ---- Per-SSID settings -------------------------------------------------------------------------------------------
 *
 * ssid_index is 1 to the band's BssidNum ("The ssid index should be from 1 to BssidNum:%d."). Checks run in the order
 * value present, SSID count readable, index, value, store. Fields exist for SSIDs 1 to 8: beyond, setters fail in the
 * store, and getters of shared keys succeed and copy nothing. Getters of a key per SSID take a buffer of any length,
 * see read_attr; the others want 151 bytes. */

/* EnableSSID: Whether the SSID is served; 1 brings its interface up. Accepts any text. */
WIFIMGR_API uint64_t wifimgr_lib_get_enableSsid(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_enableSsid(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* SSID%d (a key per SSID, numbered from 1): Network name. Accepts any text. */
WIFIMGR_API uint64_t wifimgr_lib_get_ssid(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_ssid(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* HideSSID: Beacons without the network name. Accepts digits, 0 to 1. Refusal: "The HideSSID value should be 0 or
 * 1.". */
WIFIMGR_API uint64_t wifimgr_lib_get_hideSSID(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_hideSSID(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* NoForwarding: No forwarding between stations of the SSID. Accepts digits, 0 to 1. Refusal: "The NoForwarding value
 * is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_noForwarding(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_noForwarding(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* MaxStaNum: Most stations. Accepts digits, 0 to 45. Refusal: "The MaxStaNum value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_maxStaNum(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_maxStaNum(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* MbssMaxStaNum: Most stations of the SSID among several. Accepts digits, 0 to 64. Refusal: "The MbssMaxStaNum value
 * is invalid,%d.". */
WIFIMGR_API uint64_t wifimgr_lib_get_mbssMaxStaNum(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_mbssMaxStaNum(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WmmCapable: WMM. Accepts digits, 0 to 1. Refusal: "The WmmCapable value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_get_wmmCapable(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_wmmCapable(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* APSDCapable: U-APSD; a change of SSID 1 is watched. Accepts digits, 0 to 1. Refusal: "The APSDCapable value should
 * be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_get_apsdCapable(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apsdCapable(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* IgmpSnEnable: IGMP snooping. Accepts digits, 0 to 1. Refusal: "The IgmpSnEnable value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_get_igmpSnEnable(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_igmpSnEnable(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* FixedTxMode: Fixed TX mode: 0 none, 1 CCK, 2 OFDM. Accepts digits, 0 to 2. Refusal: "The FixedTxMode value should be
 * between 0 and 2.". The normalisation overwrites it, see update_fixedTxMode; on 5G it is "0" then. */
WIFIMGR_API uint64_t wifimgr_lib_get_fixedTxMode(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_fixedTxMode(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* TxRate: Fixed TX rate. Accepts digits, 0 to 2147483647. Refusal: "The TxRate value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_txRate(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_txRate(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* FtSupport: Fast transition (802.11r). Accepts digits, 0 to 1. Refusal: "The FtSupport value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ftSupport(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* FtOtd: Fast transition over the distribution system. Accepts digits, 0 to 1. Refusal: "The FtOtd value should be 0
 * or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ftotd(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RRMEnable: Radio measurement (802.11k). Accepts digits, 0 to 1. Refusal: "The rrmEnable value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_rrmEnable(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WNMEnable: Network management (802.11v). Accepts digits, 0 to 1. Refusal: "The rrmEnable value should be 0 or 1.".
 */
WIFIMGR_API uint64_t wifimgr_lib_set_wnmEnable(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* ApCliMacManual_Flag: Whether the client interface has a MAC address of its own. Accepts digits, 0 to 1. Refusal:
 * "The ApCliMac_Manual_Flag value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ApCliMac_Manual_Flag(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* ApCliMacManual: That MAC address. Accepts nothing: every value is refused, deliberately (see MacCheck). Refusal:
 * "Please input correct MacAddress, such as 00:1a:22:aa:dc:a1.". */
WIFIMGR_API uint64_t wifimgr_lib_set_ApCliMac_Manual(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* AuthMode: Authentication mode. Accepts any text. These spellings, exactly so, secure a network:
 *
 *   Spelling          Kind         In the store after the normalisation
 *   WPAPSK            personal     WPAPSK
 *   WPA2PSK           personal     WPA2PSK
 *   WPAPSKWPA2PSK     personal     WPAPSKWPA2PSK
 *   WPA3PSK           personal     WPA3PSK
 *   WPA2PSKWPA3PSK    personal     WPA2PSKWPA3PSK
 *   WPA               enterprise   WPA
 *   WPA2              enterprise   WPA2
 *   WPA1WPA2          enterprise   WPA1WPA2
 *   WPA3              enterprise   WPA3
 *   WPA3-192Bit       enterprise   WPA3-192
 *   WEP               WEP          WEPAUTO
 *   WEPRadius         WEP          WEPAUTO
 *   OPEN              open         OPEN
 *
 * Whatever has "WEP" in it is WEP, with 802.1X when it has "Radius" in it too. Any other spelling opens the network
 * in the normalisation, without a word: "WPA1PSKWPA2PSK" (as the driver's survey prints it), "WPA2-PSK", "WPA3SAE",
 * "wpa2psk". Then AuthMode is OPEN, EncrypType NONE, DefaultKeyID, passphrase, WEP keys and their types "0". Personal
 * modes use WPAPSK, enterprise modes the RADIUS settings; EncrypType is the caller's choice with both. */
WIFIMGR_API uint64_t wifimgr_lib_get_authMode(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_authMode(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* EncrypType: Cipher. Accepts NONE, WEP, TKIP, AES, TKIPAES or GCMP256. Refusal: "The EncrypType value should be
 * chosed from NONE,WEP,TKIP,AES,TKIPAES.". */
WIFIMGR_API uint64_t wifimgr_lib_get_encrypType(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_encrypType(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WEPAuthType: WEP authentication type, such as "OpenSystem". Accepts any text. Only stored, for the driver's next
 * start: normalisation and execute script make every WEP SSID "WEPAUTO", whatever stands here. */
WIFIMGR_API uint64_t wifimgr_lib_get_wepAuthType(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_wepAuthType(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* IEEE8021X: 802.1X. Accepts "0" or "1", nothing else. Refusal: "The IEEE8021X value is invalid.\nPlease input 0 or
 * 1.". The normalisation overwrites it by the authentication mode, but for personal modes and OPEN. */
WIFIMGR_API uint64_t wifimgr_lib_get_ieee8021x(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_ieee8021x(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WPAPSK%d (a key per SSID, numbered from 1): WPA passphrase or pre-shared key. Accepts at most 64 characters, the
 * empty text too. Refusal: "The WPAPSK value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_WPAPSK(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_WPAPSK(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* DefaultKeyID: WEP key in use. Accepts digits, 0 to 4. Refusal: "The DefaultKeyID value is invalid.". The
 * normalisation makes it "2" for WPA modes and "0" for OPEN. */
WIFIMGR_API uint64_t wifimgr_lib_get_defaultKeyID(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_defaultKeyID(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RekeyMethod: Group key renewal. Accepts TIME, PKT or DISABLE. Refusal: "The RekeyMethod value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_rekeyMethod(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_rekeyMethod(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RekeyInterval: Group key renewal interval. Accepts digits, 0 to 4194303. Refusal:
 * "The RekeyInterval value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_rekeyInterval(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_rekeyInterval(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* PreAuth: WPA2 pre-authentication. Accepts digits, 0 to 1. Refusal: "The PreAuth value should be 0 or 1.". */
WIFIMGR_API uint64_t wifimgr_lib_get_preAuth(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_preAuth(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* PMFMFPC: PMF capable. Accepts digits, 0 to 1. Refusal: "The PMFMFPC value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_PMFMFPC(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_PMFMFPC(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* PMFMFPR: PMF required. Accepts digits, 0 to 1. Refusal: "The PMFMFPR value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_PMFMFPR(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_PMFMFPR(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* PMFSHA256: PMF with SHA-256. Accepts digits, 0 to 1. Refusal: "The PMFSHA256 value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_PMFSHA256(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_PMFSHA256(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RADIUS_Server: RADIUS server, IPv4. Accepts an address that IPV4check accepts. Refusal: "The RADIUS_Server IP value
 * is invalid.Please input from 0.0.0.0 to 255.255.255.255". */
WIFIMGR_API uint64_t wifimgr_lib_get_radiusserver(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_radiusserver(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RADIUS_Port: RADIUS port. Accepts digits, 1 to 65535. Refusal: "The RADIUS_Port value is invalid.\nPlease input
 * DecNum from 1 - 65535". */
WIFIMGR_API uint64_t wifimgr_lib_get_radiusport(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_radiusport(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* RADIUS_Key%d (a key per SSID, numbered from 1): RADIUS shared secret. Accepts 8 to 63 characters, or 64 hexadecimal
 * digits. Refusal: "The RADIUS_Key is invalid.\nPlease input 8-63 characters or 64 Hex string.". */
WIFIMGR_API uint64_t wifimgr_lib_get_radiuskey(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_radiuskey(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* AccessPolicy%d (a key per SSID, numbered from 0: SSID 1 has number 0): MAC access policy. Accepts digits, 0 to 2.
 * Refusal: "The AccessPolicy value is invalid.". An unreadable SSID count in the getter: "get_bssidnum err.". */
WIFIMGR_API uint64_t wifimgr_lib_get_accessPolicy(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_accessPolicy(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* AccessControlList%d (a key per SSID, numbered from 0: SSID 1 has number 0): MAC addresses of the access policy,
 * ";"-separated; the store keeps 149 characters, eight addresses. Accepts any text. The execute script carries only the
 * first to the driver: at the ";" a shell begins another command. */
WIFIMGR_API uint64_t wifimgr_lib_get_accessControlList(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_accessControlList(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WscDefaultSSID%d (a key per SSID, numbered from 1): Network name of unconfigured WPS. Accepts at most 32
 * characters. Refusal: "The input value is invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_get_wscDefaultSSID(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_wscDefaultSSID(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* WscConfMode: WPS mode: 0 off, else the sum of 1 (enrollee), 2 (proxy) and 4 (registrar). The WPS actions work in 1, 2
 * and 7 alone. Written by wifimgr_lib_set_wscConfMode. */
WIFIMGR_API uint64_t wifimgr_lib_get_wscConfMode(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);

/* WscConfStatus: WPS configuration state: 1 unconfigured, 2 configured. Written by wifimgr_lib_set_wscConfStatus. */
WIFIMGR_API uint64_t wifimgr_lib_get_WscConfStatus(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);

/* WscV2Support: WPS 2.0; a change of SSID 1 is watched. Written by wifimgr_lib_set_wscV2Support. */
WIFIMGR_API uint64_t wifimgr_lib_get_wscV2Support(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);

/* HT_MCS: accepts digits, 0 to 15, 32 or 33 ("The HT_MCS value is invalid."), and only while the stored WirelessMode
 * is 5 to 11 or 14 to 17 ("The wirelessMode do not support to set the HT_BW value.", checked before the index). */
WIFIMGR_API uint64_t wifimgr_lib_get_HT_MCS(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_HT_MCS(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* Key%dType (key number 1 to 4): form of a WEP key, "0" hexadecimal or "1" characters; exactly one character ("The
 * KeyType value is invalid."). A number without a key in the dat file fails in the store. */
WIFIMGR_API uint64_t wifimgr_lib_get_keyType(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf,
                                             uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_keyType(uint32_t wifi_type, int32_t ssid_index, int32_t key_number,
                                             const char* value);

/* Key%dStr%d (key number 1 to 4, then SSID index): a WEP key; any text. */
WIFIMGR_API uint64_t wifimgr_lib_get_keyStr(uint32_t wifi_type, int32_t ssid_index, int32_t key_number, char* buf,
                                            uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_keyStr(uint32_t wifi_type, int32_t ssid_index, int32_t key_number,
                                            const char* value);

/* wifimgr_lib_get_keyType, wifimgr_lib_set_keyType, wifimgr_lib_get_keyStr and wifimgr_lib_set_keyStr with the key
 * number in the name: 0, or 1 when that function fails. */
WIFIMGR_API uint64_t wifimgr_lib_get_key1Type(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key2Type(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key3Type(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key4Type(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key1Str(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key2Str(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key3Str(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_get_key4Str(uint32_t wifi_type, int32_t ssid_index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_key1Type(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key2Type(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key3Type(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key4Type(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key1Str(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key2Str(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key3Str(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_key4Str(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* ---- WMM parameter lists -----------------------------------------------------------------------------------------
 *
 * Band-wide, kept whole: exactly four numbers joined by ";", one per access category in the driver's order, such as
 * "3;7;1;1". No range is checked. The setter looks at the value (check_para_valid, then a plain fail exit) before the
 * index ("The ssid index here should be -1."); the getter refuses another index than -1 with "The index should be -1."
 * unless stated. The whole list replaces the stored one as it is given, up to 149 characters. */

/* APAifsn: the access point's AIFSN. */
WIFIMGR_API int wifimgr_lib_get_apAifsn(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apAifsn(uint32_t wifi_type, int32_t index, const char* value);

/* APCwmin: the access point's CWmin. */
WIFIMGR_API int wifimgr_lib_get_apCwmin(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apCwmin(uint32_t wifi_type, int32_t index, const char* value);

/* APCwmax: the access point's CWmax. */
WIFIMGR_API int wifimgr_lib_get_apCwmax(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apCwmax(uint32_t wifi_type, int32_t index, const char* value);

/* APTxop: the access point's TXOP. */
WIFIMGR_API int wifimgr_lib_get_apTxop(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apTxop(uint32_t wifi_type, int32_t index, const char* value);

/* APACM: the access point's admission control. */
WIFIMGR_API int wifimgr_lib_get_apACM(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_apACM(uint32_t wifi_type, int32_t index, const char* value);

/* BSSAifsn: the stations' AIFSN. The getter refuses an index with "The index is invalid.". */
WIFIMGR_API int wifimgr_lib_get_bssAifsn(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssAifsn(uint32_t wifi_type, int32_t index, const char* value);

/* BSSCwmin: the stations' CWmin. */
WIFIMGR_API int wifimgr_lib_get_bssCwmin(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssCwmin(uint32_t wifi_type, int32_t index, const char* value);

/* BSSCwmax: the stations' CWmax. */
WIFIMGR_API int wifimgr_lib_get_bssCwmax(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssCwmax(uint32_t wifi_type, int32_t index, const char* value);

/* BSSTxop: the stations' TXOP. The getter refuses an index with "The index is should be -1.". */
WIFIMGR_API int wifimgr_lib_get_bssTxop(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssTxop(uint32_t wifi_type, int32_t index, const char* value);

/* BSSACM: the stations' admission control. */
WIFIMGR_API int wifimgr_lib_get_bssACM(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_bssACM(uint32_t wifi_type, int32_t index, const char* value);

/* AckPolicy: the acknowledgement policy. */
WIFIMGR_API int wifimgr_lib_get_ackPolicy(uint32_t wifi_type, int32_t index, char* buf, uint32_t len);
WIFIMGR_API uint64_t wifimgr_lib_set_ackPolicy(uint32_t wifi_type, int32_t index, const char* value);

/* ---- WDS settings ------------------------------------------------------------------------------------------------
 *
 * Four links per band. Indexes, buffers and refusals are those of the band-wide settings. */

/* WdsEnable: exactly one digit, 0 off or 1 to 4 the mode. Refusal: "Please input value from 0 to
 * 4(0:disable;1-4:diffrent modes,recommend 1).". */
WIFIMGR_API int wifimgr_lib_get_wdsenable(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wdsenable(uint32_t wifi_type, int32_t index, const char* value);

/* WdsEncrypType: the four links' ciphers, ";"-separated, each NONE, WEP, TKIP or AES in any case; stored as given.
 * Refusals: "Please input value from NONE,WEP,TKIP,AES.", "Please input %d wdsencryptypes". */
WIFIMGR_API int wifimgr_lib_get_wdsencryptype(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wdsencryptype(uint32_t wifi_type, int32_t index, const char* value);

/* WdsPhyMode: the four links' PHY modes, each CCK, OFDM, HTMIX or GREENFIELD in any case; stored as given. Refusals:
 * "Please input value from CCK,OFDM,HTMIX,GREENFIELD.", "Please input %d wdsphyModes". */
WIFIMGR_API int wifimgr_lib_get_wdsphymode(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wdsphymode(uint32_t wifi_type, int32_t index, const char* value);

/* WdsList: the four peers' MAC addresses, ";"-separated, at most three ";". Each has 17 characters; what separates
 * the digits is not looked at. Refusals: "Please input acceptable Mac address.", "Mac address check error!", "Please
 * input %d Mac addresses". */
WIFIMGR_API int wifimgr_lib_get_wdslist(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wdslist(uint32_t wifi_type, int32_t index, const char* value);

/* Wds%dKey (link minus 1): the key of a link; index is the link, 1 to 4. The setter checks it as a WEP or a WPA key,
 * by the link's stored cipher (spelt in capitals), and writes field 1; the getter reads the field with the link's
 * number, so for links 2 to 4 it does not give what the setter wrote. Deliberate. Refusals of the getter: "The wdskey
 * index is invalid, please input 1 to %d.". Of the setter: "The wdskey index should be from 1 to %d.",
 * "get_wdsencryptype err.", "The number of WdsEncrypType is should be %d.", "Please input 5 or 13 ASCII characters /
 * 10 or 26 hexadecimal characters!", "Please input 8 to 64 hexadecimal characters!", "WdsEntryType in datfile is
 * ERR." (NONE and unknown ciphers). */
WIFIMGR_API int wifimgr_lib_get_wdskey(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API uint64_t wifimgr_lib_set_wdskey(uint32_t wifi_type, int32_t index, const char* value);

/* 0 for a WPA key of `length` characters: 8 to 63 of any kind, or 64 hexadecimal digits; else -1. */
WIFIMGR_API int wdskey_check(int length, const char* key);

/* 0 for a WEP key of `length` characters: 5 or 13 of any kind, or 10 or 26 hexadecimal digits; else -1. */
WIFIMGR_API int wdskey_check_for_wep(int length, const char* key);

/* ---- Tables of keys ----------------------------------------------------------------------------------------------
 *
 * Groups of dat keys, each with the setter that writes it, for callers that walk them with values of their own. The
 * library holds no values and never walks them. A record with an empty name ends each table; its setter is null, as is
 * that of a key that cannot be written. */

#define WIFIMGR_TABLE_NAME_SIZE 64 /* the name in a record of a table */
#define WIFIMGR_ATTR_NAME_SIZE 20  /* a name of wlan_script_com_attr */

/* A dat key and what writes it. */
typedef struct wifimgr_key_setter {
  char name[WIFIMGR_TABLE_NAME_SIZE]; /* padded with NUL */
  wifimgr_setter_t setter;            /* null where nothing writes the key */
} wifimgr_key_setter;

/* Band-wide keys with defaults: 54 on 2.4G, 63 on 5G. RekeyInterval and RekeyMethod among them are per SSID. */
WIFIMGR_API extern wifimgr_key_setter wlan_common_default_parm[55];
WIFIMGR_API extern wifimgr_key_setter wlan_ac_common_default_parm[64];

/* Per-SSID keys with defaults: 6, the same on both bands. */
WIFIMGR_API extern wifimgr_key_setter wlan_entry_default_parm[7];
WIFIMGR_API extern wifimgr_key_setter wlan_ac_entry_default_parm[7];

/* Basic radio keys: 24 on 2.4G, 32 on 5G. Row 1 of 5G is CountryRegion, whose setter refuses that band. */
WIFIMGR_API extern wifimgr_key_setter wlan_script_com_attr_config[25];
WIFIMGR_API extern wifimgr_key_setter wlan_ac_script_com_attr_config[33];

/* One record for the caller to fill; empty at the start. No end record follows it. */
WIFIMGR_API extern wifimgr_key_setter wlan_global_script_com_attr;

/* Names only: seven, and an empty slot that ends the list. */
WIFIMGR_API extern char wlan_script_com_attr[8][WIFIMGR_ATTR_NAME_SIZE];

/* Copies a table without its end record and returns the number of records.
 * type  0 the 2.4G table, 1 the 5G table; for wifimgr_lib_get_wlan_attr also 2, the global record.
 * out   caller's array, large enough for the table (54 or 63; 6; 24 or 32 records). Names are terminated; bytes
 *       behind them, and records behind the last one, stay untouched.
 * 0 for another type, an empty table or a null pointer, with nothing written. */
WIFIMGR_API int wifimgr_lib_get_wlan_attr(int type, wifimgr_key_setter* out);
WIFIMGR_API int wifimgr_lib_get_wlan_entry_attr(int type, wifimgr_key_setter* out);
WIFIMGR_API int wifimgr_lib_get_wlan_script_com_attr_config(int type, wifimgr_key_setter* out);

/* Copies the names of wlan_script_com_attr into the caller's 7 slots and returns 7; 0 for a null pointer. */
WIFIMGR_API int wifimgr_lib_get_wlan_script_attr(char (*out)[WIFIMGR_ATTR_NAME_SIZE]);

/* ---- Process-wide flags and fixed answers ------------------------------------------------------------------------
 *
 * Process memory; none of these traces. */

/* What takes anything: callers pass what they always passed, or nothing. C before C23 says so by a declaration without
 * a prototype, which -Wstrict-prototypes is not to report here. */
#if defined(__cplusplus) || (defined(__STDC_VERSION__) && __STDC_VERSION__ >= 202311L)
#define WIFIMGR_ANYTHING ...
#define WIFIMGR_ANYTHING_BEGIN
#define WIFIMGR_ANYTHING_END
#else
#define WIFIMGR_ANYTHING
#define WIFIMGR_ANYTHING_BEGIN _Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Wstrict-prototypes\"")
#define WIFIMGR_ANYTHING_END _Pragma("GCC diagnostic pop")
#endif

/* Command flags of this process, -1 until set. The getters return 0 while they are -1; the setters return 0. The 5G
 * flag lets wifimgr_lib_execute_wlan_script run one script. */
WIFIMGR_API extern int32_t _11N_CMDflag;
WIFIMGR_API extern int32_t _11AC_CMDflag;
WIFIMGR_API int32_t wifimgr_lib_get_11N_CMDflag(void);
WIFIMGR_API int32_t wifimgr_lib_get_11AC_CMDflag(void);
WIFIMGR_API int wifimgr_lib_set_11N_CMDflag(uint32_t value);
WIFIMGR_API int wifimgr_lib_set_11AC_CMDflag(uint32_t value);

/* Always 1. */
WIFIMGR_API int wifimgr_lib_get_wlan_igmp_snooping_support(void);

/* Take anything, do nothing and return 0. */
WIFIMGR_ANYTHING_BEGIN
WIFIMGR_API int wifimgr_lib_set_AP2040Rescan(WIFIMGR_ANYTHING);
WIFIMGR_API int wifimgr_lib_get_max_sta_num_ui(WIFIMGR_ANYTHING);
WIFIMGR_API int wifimgr_lib_set_ixia5gflag(WIFIMGR_ANYTHING);
WIFIMGR_API int wifimgr_lib_check_wifi_ixia_test(WIFIMGR_ANYTHING);
WIFIMGR_API int wifimgr_lib_set_needRebootFlag(WIFIMGR_ANYTHING);
WIFIMGR_ANYTHING_END

/* Stores `value` in the caller's variable; nothing for a null pointer. Returns 0. */
WIFIMGR_API int wifimgr_lib_set_iswps5gstart_val(uint32_t* variable, uint32_t value);

/* A flag that nothing in the library changes, wifimgr_lib_set_ixia5gflag neither, and its value: -1. */
WIFIMGR_API extern int32_t ixia5gflag;
WIFIMGR_API int32_t wifimgr_lib_get_ixia5gflag(void);

/* Texts of this platform, cut to `size` bytes with their NUL: "/proc/zq2810/wlan_button", ".../wps_button",
 * ".../wps_5g_button", ".../wlan11ac_button"; "3", the way of selecting a channel automatically; "0", the 802.1X
 * value of the execute script. Nothing is written to a null pointer or with a size of 0 or less. Return 0. */
WIFIMGR_API int wifimgr_lib_get_WLAN_BUTTON_PATH(char* out, int size);
WIFIMGR_API int wifimgr_lib_get_WPS_BUTTON_PATH(char* out, int size);
WIFIMGR_API int wifimgr_lib_get_WPS_5G_BUTTON_PATH(char* out, int size);
WIFIMGR_API int wifimgr_lib_get_WLAN11AC_BUTTON_PATH(char* out, int size);
WIFIMGR_API int wifimgr_lib_get_CHANNEL_SELECT_DEF(char* out, int size);
WIFIMGR_API int wifimgr_lib_get_IEEE8021X_VAL(char* out, int size);

/* The text "MbssMaxStaNum", written as wifimgr_lib_get_WLAN_BUTTON_PATH writes; for another band `out` stays untouched.
 */
WIFIMGR_API int wifimgr_lib_get_WLAN_MAX_STA_NUM_NAME(int wifi_type, char* out, int size);

/* The text "N/A", written as wifimgr_lib_get_WLAN_BUTTON_PATH writes; wifimgr_lib_is_WHNAT_support leaves `dst`
 * untouched for another band. */
WIFIMGR_API int wifimgr_lib_is_WHNAT_support(uint32_t wifi_type, char* dst, int32_t size);
WIFIMGR_API int wifimgr_lib_is_Tx_Rx_Stream_support(char* dst, int32_t size);

/* Numbers of this platform: 15000, 0x340000, 0x340001. Nothing is written to a null pointer. Return 0. */
WIFIMGR_API int wifimgr_lib_get_MESH_TRIGGER_WAIT(uint32_t* value);
WIFIMGR_API int wifimgr_lib_get_img_boot_flag_offset(uint32_t* value);
WIFIMGR_API int wifimgr_lib_get_img_commit_flag_offset(uint32_t* value);

/* ---- Change detection -------------------------------------------------------------------------------------------- */

/* What was in force when a band's snapshot was taken, by dat key: 432 bytes, packed, integers in native byte order,
 * texts padded with NUL. Both bands have the same layout; each fills its own country field. */
typedef struct wifimgr_band_snapshot {
  char prefix[16];               /* of the interface names: "ra" or "rai" */
  int32_t bss_count;             /* BssidNum */
  int32_t whnat;                 /* WHNAT */
  int32_t channel;               /* Channel */
  int32_t country_region;        /* CountryRegion, of 2.4G */
  int32_t country_region_a_band; /* CountryRegionABand, of 5G */
  int32_t beacon_period;         /* BeaconPeriod */
  int32_t dtim_period;           /* DtimPeriod */
  int32_t ht_tx_stream;          /* HT_TxStream */
  int32_t ht_rx_stream;          /* HT_RxStream */
  int32_t ht_bss_coexistence;    /* HT_BSSCoexistence */
  int32_t wireless_mode;         /* WirelessMode */
  int32_t ht_extcha;             /* HT_EXTCHA */
  int32_t ht_bw;                 /* HT_BW */
  int32_t ht_gi;                 /* HT_GI */
  int32_t vht_bw;                /* VHT_BW, of 5G */
  int32_t vht_sgi;               /* VHT_SGI, of 5G */
  int32_t tx_power;              /* TxPower */
  int32_t mu_ofdma_dl_enable;    /* MuOfdmaDlEnable */
  int32_t mu_ofdma_ul_enable;    /* MuOfdmaUlEnable */
  int32_t mu_mimo_dl_enable;     /* MuMimoDlEnable */
  int32_t mu_mimo_ul_enable;     /* MuMimoUlEnable */
  int32_t twt_support;           /* TWTSupport */
  int32_t sr_enable;             /* SREnable */
  int32_t sr_mode;               /* SRMode */
  int32_t srsd_enable;           /* SRSDEnable */
  int32_t frag_threshold;        /* FragThreshold */
  uint8_t wds_enable;            /* WdsEnable */
  char wds_encryp_type[32];      /* WdsEncrypType */
  char wds_key[65];              /* Wds0Key, the key of link 1 */
  char wds_list[80];             /* WdsList */
  char wep_key[4][27];           /* Key1Str1 to Key4Str1, only while WDS is on and SSID 1 uses WEP */
  int32_t apsd_capable[2];       /* APSDCapable of SSID 1; the second number is not used */
  int32_t wsc_v2_support[2];     /* WscV2Support of SSID 1; the second number is not used */
  int32_t ssid_enable;           /* EnableSSID of SSID 1 */
  char filling[6];               /* not used */
} WIFIMGR_PACKED wifimgr_band_snapshot;

/* The snapshots of 2.4G and 5G: process memory, zero until taken. */
WIFIMGR_API extern wifimgr_band_snapshot store_global[2];

/* oper 0 takes the band's snapshot and returns 0. oper 1 compares the store with it and returns 0 when nothing
 * watched has changed, 1 for a change of the radio, 2 for one that needs a reboot (SSID count or WHNAT). Before the
 * first snapshot everything that is not zero counts as changed. Another band or oper: 0, nothing touched. */
WIFIMGR_API uint64_t wifimgr_lib_wifi_config_oper(uint32_t wifi_type, int32_t oper);

/* The groups of watched settings. Each _store fills its fields of the record and returns 0; each _compare returns 0
 * when they equal the store, else the answer of wifimgr_lib_wifi_config_oper. Settings that cannot be read are left
 * alone and do not differ, unless stated. A null record: 0, nothing done. */

/* BssidNum and WHNAT; a difference is 2. */
WIFIMGR_API uint64_t systemreboot_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t systemreboot_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* Channel, BeaconPeriod, DtimPeriod, HT_TxStream, HT_RxStream, WirelessMode, TxPower, FragThreshold, and the band's
 * country region (0 when unreadable). */
WIFIMGR_API uint64_t commoncap_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t commoncap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* APSDCapable, WscV2Support and EnableSSID, of SSID 1 only. An unreadable SSID count differs. */
WIFIMGR_API uint64_t entrycap_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t entrycap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* HT_BSSCoexistence, HT_EXTCHA, HT_BW, HT_GI. */
WIFIMGR_API uint64_t htcap_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t htcap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* VHT_BW and VHT_SGI, of 5G only (0 when unreadable); nothing when the SSID count cannot be read. */
WIFIMGR_API uint64_t vhtcap_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t vhtcap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* MuOfdmaDlEnable, MuOfdmaUlEnable, MuMimoDlEnable, MuMimoUlEnable, TWTSupport, SREnable, SRMode, SRSDEnable. */
WIFIMGR_API uint64_t hecap_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t hecap_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* WdsEnable, WdsEncrypType, the key of link 1 and WdsList, and SSID 1's four WEP keys while WDS is on and SSID 1 uses
 * WEP. The compare looks beyond WdsEnable only while WDS is on. Unreadable texts count as empty. */
WIFIMGR_API uint64_t wds_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t wds_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* Nothing yet: the store returns its record as a number, the compare 0. */
WIFIMGR_API uint64_t chipspecial_store(wifimgr_band_snapshot* record, uint32_t wifi_type);
WIFIMGR_API uint64_t chipspecial_compare(wifimgr_band_snapshot* record, uint32_t wifi_type);

/* ---- Applying ---------------------------------------------------------------------------------------------------- */

/* Makes the band's dependent settings consistent in the store: security fields by the authentication mode of each
 * SSID; WMM, fixed TX mode, bandwidths, basic rates and HT operating mode by the wireless mode; automatic channel
 * selection by the channel; TxPower levels 1 to 6 of 2.4G to percentages. What callers set is overwritten: TxBurst "1"
 * on both bands, FixedTxMode and HT_OpMode "0" on 5G, IEEE8021X and DefaultKeyID by the authentication mode
 * (update_auth_mode), and an SSID that becomes open loses passphrase, keys and cipher. Prints on standard output when
 * WirelessMode, BssidNum or, on 2.4G, a WmmCapable cannot be read (the first two then count as 0), and when a setter of
 * update_auth_mode refuses; other failures are silent, and none stops it. Another band: nothing is done. Returns 0. */
WIFIMGR_API int wifimgr_lib_check_wifi_value_befor_write_dat(uint32_t wifi_type);

/* The part of wifimgr_lib_check_wifi_value_befor_write_dat for one SSID's security. The modes are those of
 * wifimgr_lib_set_authMode. WEP becomes "WEPAUTO" with cipher WEP, 802.1X by "Radius" in the mode and key types by the
 * keys' lengths. WPA modes lose their WEP keys and get DefaultKeyID "2", the enterprise ones 802.1X "0"; "WPA3-192Bit"
 * becomes "WPA3-192", and an SSID that has that already becomes open. Anything else becomes "OPEN": cipher, passphrase
 * and WEP keys are lost. Prints "write_wlan_config:wifimgr_lib_set_authMode fail." for a refused AuthMode, and the same
 * text with ieee8021x, encrypType (but authMode where it becomes open), keyType, defaultKeyID, WPAPSK and keyStr for
 * those. */
WIFIMGR_API void update_auth_mode(uint32_t wifi_type, uint32_t ssid_index);

/* The part of wifimgr_lib_check_wifi_value_befor_write_dat for one SSID's FixedTxMode, on 2.4G: "1" for wireless mode
 * 1, "2" for mode 4, "0" for others; in mode 0 "1" for a CCK rate (1, 2, 5.5, 11), "2" when it cannot be read,
 * unchanged otherwise. */
WIFIMGR_API void update_fixedTxMode(uint32_t wifi_type, uint32_t ssid_index, uint32_t wireless_mode);

/* Applies the band: writes its dat file, takes its four WDS interfaces and as many BSS interfaces as pre_wlan_state
 * says down and out of br-lan, reloads the driver module when ReloadFlag begins with "1" (it is set to "0" first),
 * and brings the BSSs whose EnableSSID is 1, and the four WDS interfaces when WdsEnable begins with "1", up and into
 * br-lan. pre_wlan_state stays as it is.
 * ssid_index  only checked, 1 to BssidNum ("The ssid index parameter is invalid."); the whole band is applied.
 * Runs ifconfig, brctl, rmmod and insmod through the shell and does not look at their status. Returns 1, before any
 * interface is touched, also when BssidNum cannot be read (so for another band), and with "Set the ReloadFlag
 * failed.", "type should be 2.4G or 5G ." or "WIFI_2_4G updtate datefile from shm failed." ("WIFI_5G ..."); in the
 * last two cases ReloadFlag may be "0" already. */
WIFIMGR_API int wifimgr_lib_commit(uint32_t wifi_type, int32_t ssid_index);

/* ---- Restarts, radio, reboot -------------------------------------------------------------------------------------
 *
 * Shell lines whose status is not looked at, with ifconfig and brctl. Which bridge is used belongs to the operation:
 * the commit and wifimgr_lib_restartInterface work on br-lan, all others on br0. */

/* A restart of a band's interfaces. */
typedef struct wifimgr_restart_request {
  uint32_t band;      /* 0 for 2.4G, 1 for 5G */
  int32_t old_count;  /* BSS interfaces that are up: 0 to old_count - 1 are taken down */
  uint32_t new_count; /* only compared with old_count, as 32-bit words */
  uint32_t up_mask;   /* bit i brings BSS interface i up; bits 0 to 7 */
  int32_t wds;        /* not 0: bring the four WDS interfaces up */
  uint32_t spare;     /* not used */
} wifimgr_restart_request;

/* Takes interfaces down and out of br-lan and brings those of the mask, and WDS, up and into it. With another count:
 * WDS first, then the BSSs, then ReloadFlag is set to "0" when parse_driver succeeds. With the same count: the BSSs,
 * and on 2.4G then WDS. Prints "addif wds%d to br0" (5G "addif wdsi%d to br0") for each WDS interface, though the
 * bridge is br-lan. Refusal: "Set the ReloadFlag failed." (what went down stays down); 1 also for another band or a
 * null request. */
WIFIMGR_API uint64_t wifimgr_lib_restartInterface(const wifimgr_restart_request* request);

/* wifimgr_lib_restartInterface on a copy of the request. Returns 0 whatever that returns; 1 for a null request. */
WIFIMGR_API uint64_t wifimgr_lib_do_restartInterface(const wifimgr_restart_request* request);

/* By `kind`: 1 wifimgr_lib_restartInterface. 2 takes new_count BSSs, and on 5G the four WDS interfaces, down and out
 * of br0. 3 returns 0 for the value "1" and 1 for others on 2.4G and does nothing; on 5G does as 2 and returns 1. 4
 * does as 2 for the value "1". Any other kind does nothing. Returns 0 unless stated; 1 for a null request, and
 * for a null value of the kinds 3 and 4, which alone look at it. */
WIFIMGR_API uint64_t wifimgr_lib_restart_wlan_Interface(const wifimgr_restart_request* request, uint64_t unused,
                                                        const char* value, int32_t kind);

/* oper 0: takes the band's BSSs (as many as BssidNum) and WDS interfaces down and out of br0. oper 1: brings the
 * enabled BSSs, and WDS when WdsEnable is 1, up and into br0, and prints "add %s%d to br0" for a BSS, "addif %s%d to
 * br0" for a WDS interface; a disabled SSID 1 of 2.4G is brought up and down once, and with BssidNum below 2 no other
 * is looked at. Another oper does nothing. Prints "write_wlan_config:wifimgr_lib_get_bssidnum fail." and counts 0,
 * whatever the oper, when BssidNum cannot be read; so for another band, where oper 0 then runs lines without an
 * interface prefix. Does not trace. */
WIFIMGR_API void doWifiDownUp(uint32_t wifi_type, uint32_t oper);

/* doWifiDownUp down, and for an oper other than 0 up again. Returns 0. */
WIFIMGR_API uint64_t wifimgr_lib_wifi_execute(uint32_t wifi_type, uint32_t oper);

/* Runs "rmmod mt7915_ap" and "insmod /lib/modules/mt7915_ap.ko"; returns what system returned for the second. Does
 * not trace. */
WIFIMGR_API int reload_WlanAC_Driver(void);

/* Runs "rmmod rt3390ap" and "insmod /lib/modules/rt3390ap.ko". Returns 0. */
WIFIMGR_API uint64_t wifimgr_lib_insmod_ko(void);

/* oper 0: as doWifiDownUp. oper 1: brings each BSS whose EnableSSID is 1 up and into br0, takes the others down and
 * out of it, and brings WDS up when WdsEnable is 1 (and leaves it alone otherwise); prints as doWifiDownUp. Another
 * oper does nothing; an unreadable BssidNum and another band are as in doWifiDownUp. Returns 0. */
WIFIMGR_API int wifimgr_lib_wifi_onoff(uint32_t wifi_type, uint32_t oper);

/* Reboots for a changed setting: takes the bands' interfaces down with /sbin/ifconfig, stores the new value and runs
 * "reboot".
 * current      the value in force, one unsigned byte; also the number of the band's BSSs. Receives the low byte of
 *              new_value.
 * wds_count    WDS interfaces of each band.
 * other_count  the other band's BSS count, as text.
 * key          the setting. BssidNum and WHNAT never reboot, deliberately.
 * Returns 0; nothing is done when the value is the same, for those two keys, for another band and for a null pointer.
 */
WIFIMGR_API int wifimgr_lib_reboot(int32_t wifi_type, uint8_t* current, uint32_t new_value, int32_t wds_count,
                                   const char* other_count, const char* key);

/* ---- Execute script and run-time settings ------------------------------------------------------------------------ */

/* Writes the band's execute script, iwpriv lines with the current settings of one SSID, to
 * "/etc/Wireless/RT2860AP/WLAN_exec.sh" (2.4G) or "/etc/Wireless/RT2860AP_AC/WLAN_exec.sh" (5G), mode 0700, in place
 * of the last one. The band's snapshot must have been taken: the interface prefix comes from it. Of an access list only
 * the first address reaches the driver. "WPA3-192Bit", of which no normalisation has made "WPA3-192", is no mode that
 * the script knows: the network comes up open.
 * ssid_number  0-based.
 * SSID, pre-shared key and WEP keys stand in double quotes, without a line end, with a backslash before each double
 * quote and backslash, cut to 159 characters in whole escape sequences. Everything else is written as stored. A shell
 * that runs the script still expands dollar signs and backquotes in quotes, and everything in the other values.
 * Returns the result of chmod; -1 for another band or when the file cannot be opened; 1 when it cannot be written to
 * its end: it is emptied then, and wifimgr_lib_execute_wlan_script of this process does not run it. Prints on standard
 * output when WirelessMode, BssidNum or the SSID's WmmCapable cannot be read; other unreadable settings only lose their
 * line. */
WIFIMGR_API int32_t wifimgr_lib_write_wifi_execute_sh(uint32_t wifi_type, uint32_t ssid_number);

/* Runs a command line: always on 2.4G; on 5G only while wifimgr_lib_get_11AC_CMDflag is 1, which is then set to 0.
 * Returns 0, also for another band, a null command, or one that names the band's execute script when that could not be
 * written to its end (nothing is run, the flag stays). */
WIFIMGR_API uint64_t wifimgr_lib_execute_wlan_script(int32_t wifi_type, const char* command);

/* Runs "ifconfig ra%d txqueuelen %d" for the first `count` 2.4G interfaces. length in packets. Returns 0. */
WIFIMGR_API int wifimgr_lib_set_WifiTxQueue(int32_t count, uint32_t length);

/* Writes the command line "/userfs/bin/iwpriv rai%d set TxBurst=%s" and a line end to `dst`, cut to `size` bytes;
 * always for a 5G interface. Runs nothing. Returns 0; nothing is written for a null pointer or a size of 0 or less. */
WIFIMGR_API int wifimgr_lib_set_TxBurst_to_file(char* dst, int32_t size, int32_t ssid_number, const char* value);

/* wifimgr_lib_set_mbssMaxStaNum under another name; for another band 0 and nothing is written. */
WIFIMGR_API uint64_t wifimgr_lib_set_MaxStaNum(uint32_t wifi_type, uint32_t ssid_index, const char* value);

/* Adds 1 to the last of the six bytes at `mac`, without a carry. Returns 0. */
WIFIMGR_API int wifimgr_lib_use_global_mac(uint8_t* mac);

/* ---- Driver: requests --------------------------------------------------------------------------------------------
 *
 * These ask or tell the WLAN driver through a request of the wireless extensions on one of its interfaces, over a
 * datagram socket that each call opens and closes. Nothing is cached, the store is not touched, and they may run in
 * several threads at once. The radio as a whole is asked on "ra0" (2.4G) or "rai0" (5G), SSID interface i on "ra%d" or
 * "rai%d" with i counted from 0. Texts are written with their NUL; what a buffer must hold is given with each.
 *
 * Results, unless stated: 0; 1 for a wrong band or index, or a null pointer; -1 when the socket cannot be opened or
 * the driver refuses. Outputs stay untouched on failure, unless stated. The band is checked before the socket is
 * opened. Reasons marked "prints" go to standard output and leave no exit in the trace, the others go to the trace.
 * Payloads of the caller's are not looked at: a null one is sent too, and a null interface name is the empty name. */

/* Sends any wireless request: `length` bytes at `data` for the interface `ifname` (cut to 15 characters). Returns
 * what ioctl returned; -1 with "\n===  create socket fail ===" or "\n===  ioctl open fail ===" in the trace. */
WIFIMGR_API int wifimgr_lib_ioctl(int request, void* data, const char* ifname, uint16_t length);

/* Sends the private request 0x8BE1 with an object id, for queries and for commands.
 * Returns what ioctl returned, a negative number with "@@@ioctl fail\r" printed; -1 without a socket, printing
 * "%s %d: socket open fail" with the function's name and 2229. */
WIFIMGR_API int wifimgr_lib_OidQueryInformation(uint16_t oid, const char* ifname, void* data, uint16_t length);

/* The driver's statistics (request 0x8BE9) of an interface, `length` bytes at `data`; their layout is the driver's.
 * Prints "==>%s: Create %s socket fail" (function, interface) without a socket. */
WIFIMGR_API int wifimgr_lib_get_WIFI_STATS(const char* ifname, void* data, uint16_t length);

/* Sends an OUI filter to the radio, as it is (OID 0x9220). Prints "[%s]Create socket fail", "[%s]:ioctl open fail". */
WIFIMGR_API int wifimgr_lib_set_OUI_FILTER(int wifi_type, void* data, uint16_t length);

/* Probe-response entries, sent as they are. 2 is a second name for 5G. A wrong band leaves the socket open: each such
 * call costs the process a descriptor; deliberate.
 * _execute  OID 0x9204 to SSID interfaces 0 to 7 in order, as far as bits 0, 1, ... of ssid_mask are set. The first
 *           clear bit ends the call with -1, as its request goes to an interface without a name; 0 only when the low
 *           eight bits are all set.
 * _delete   OID 0x9205 to the radio. Prints "function ==> [%s]  line ==> [%d]" with 2599 and 2612 on the way and 2622
 *           after it. */
WIFIMGR_API int wifimgr_lib_proberesp_execute(int wifi_type, void* data, uint16_t length, int ssid_mask);
WIFIMGR_API int wifimgr_lib_proberesp_delete(int wifi_type, void* data, uint16_t length);

/* ---- Driver: radio ----------------------------------------------------------------------------------------------- */

/* The radio's channel as a decimal text; `out` of 12 bytes or more. "6" on failure, for 5G too. Print
 * "==>UpdateChannel: Create socket fail" or "==>UpdateChannel: ioctl open fail"; UpdateChannelAC says
 * "UpdateChannelAC". The first two are 2.4G and 5G, and do not trace. */
WIFIMGR_API void UpdateChannel(char* out);
WIFIMGR_API void UpdateChannelAC(char* out);
WIFIMGR_API int wifimgr_lib_get_CHANNEL(int wifi_type, char* out);

/* Noise level of the radio's channel (OID 0x069C), as a decimal text; `out` of 12 bytes or more. index -1.
 * Returns 1 for all failures. Refusals: "The index should be -1." (before the band), "get_Noise: Create socket fail",
 * "get_Noise: ioctl open fail". */
WIFIMGR_API int wifimgr_lib_get_Noise(int wifi_type, int index, char* out);

/* The load that the driver reports for the radio's channel (OID 0x0765), with index, buffer, results and first refusal
 * of wifimgr_lib_get_Noise. Refusals also: "chanLoad: Create socket fail", "chanLoad: ioctl open fail". */
WIFIMGR_API int wifimgr_lib_get_chanLoad(int wifi_type, int index, char* out);

/* The load of 5G for band steering, as a signed number cut to out_size bytes. ssid_index must be 1; every band but 0
 * is 5G. Returns 1 for all failures. Refusals: "The ssid index should be 1 .", "Only 5G support BndstrgChanLoad.",
 * and those of wifimgr_lib_get_chanLoad. */
WIFIMGR_API int wifimgr_lib_get_BndstrgChanLoad(int wifi_type, int ssid_index, char* out, int out_size);

/* Chip temperature as the driver reports it (OID 0x09A1). Returns 1 for all failures. Refusals:
 * "wifimgr_lib_get_WPS_STA_MAC: Create socket fail", "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail" (so they read). */
WIFIMGR_API int wifimgr_lib_get_CPU_TEMPERATURE(int wifi_type, uint32_t* value);

/* The driver's AP count record: 80 bytes, two parts of them cleared; the meaning is the driver's. */
typedef struct wifimgr_ap_count {
  uint8_t head[40];      /* the driver's */
  uint8_t cleared_40[8]; /* zero */
  uint8_t middle[8];     /* the driver's */
  uint8_t cleared_56[8]; /* zero */
  uint8_t tail[16];      /* the driver's */
} wifimgr_ap_count;

/* Request 0x8BFC; 0 is 2.4G, every other number 5G. Returns -1 for all failures. Prints "==>getAPCount(): XXXXXX
 * socket open fail", "==>getAPCount(): XXXXXX ioctl open fail". Does not trace. */
WIFIMGR_API int getAPCount(int wifi_type, wifimgr_ap_count* out);

/* ---- Driver: stations -------------------------------------------------------------------------------------------- */

#define WIFIMGR_STATIONS 64 /* room in a list of stations */

/* Stations of an interface: as many MACs as `count` says are valid. 2.4G may list a station twice, hence 64. */
typedef struct wifimgr_station_list {
  uint64_t count;                   /* valid addresses */
  uint8_t mac[WIFIMGR_STATIONS][6]; /* of the stations, in the driver's order */
} WIFIMGR_PACKED wifimgr_station_list;

/* The stations of one interface (request 0x8BEF), from the driver's table of 32.
 * index  0 to 7 for "ra%d", 8 to 15 for "rai%d" with index - 8; another one, and a null `out`, do nothing.
 * On failure and with an empty table `out` stays as it was, its count too. Prints "==>getMacEntryByIndex(): create
 * socket fail.", "==>getMacEntryByIndex(): XXXXXX ioctl open fail", "==>getMacEntryByIndex(): 7915 no sta existance".
 * Does not trace. */
WIFIMGR_API void getMacEntryByIndex(wifimgr_station_list* out, unsigned index);

/* Whether a station can do 802.11k (1 or 0), and the driver's byte of what it can do of 802.11v.
 * ssid_index  1 to 4.
 * mac         six bytes.
 * Return 1 for all failures. Refusals: "The ssid index should be from 1 to 4" (before the band), "getSta11kCap:
 * Create socket fail", "getSta11kCap: malloc fail", "getSta11kCap: ioctl open fail"; wifimgr_lib_get_Sta11vCap has
 * getSta11vCap in these. */
WIFIMGR_API int wifimgr_lib_get_Sta11kCap(int wifi_type, int ssid_index, const uint8_t* mac, uint8_t* capable);
WIFIMGR_API int wifimgr_lib_get_Sta11vCap(int wifi_type, int ssid_index, const uint8_t* mac, uint8_t* cap);

/* ---- Driver: neighbours, processes, command texts ---------------------------------------------------------------- */

/* Starts a partial scan in the background: "/userfs/bin/iwpriv ra0 set PartialScan=1 &" (5G rai0). */
WIFIMGR_API int wifimgr_lib_set_PartialScan(int wifi_type);

/* A neighbour as the survey would list it. */
typedef struct wifimgr_neighbour {
  char band[5];     /* "2.4G" or "5G" */
  uint8_t rest[89]; /* not filled in */
} wifimgr_neighbour;

/* What wifimgr_lib_get_neighbourinfo writes: 98 bytes, packed. */
typedef struct wifimgr_neighbour_list {
  uint32_t count;          /* always 0 */
  wifimgr_neighbour first; /* at most its label is set */
} WIFIMGR_PACKED wifimgr_neighbour_list;

/* Makes the driver dump a site survey to "/tmp/site_survey_ra0" or "/tmp/site_survey_rai0", which stays. The survey
 * is not parsed, deliberately: the count is always 0. The first entry holds the band's label when the dump has one to
 * three lines, is all zero when it has more and untouched when it is empty. For the neighbours themselves take
 * wifimgr_lib_get_neighbourinfo_v1. Returns 1 for all failures. Refusal: "fp is NULL". */
WIFIMGR_API int wifimgr_lib_get_neighbourinfo(int wifi_type, wifimgr_neighbour_list* list);

#define WIFIMGR_NEIGHBOUR_TABLE_SIZE 18436 /* the driver's neighbour table */

/* The driver's neighbour table (OID 0x0683) as it is; `buffer` of WIFIMGR_NEIGHBOUR_TABLE_SIZE bytes. Mind the order
 * of the arguments. Returns 1 for all failures. Refusals: "Create socket_id_StaRssi socket fail", "ioctl open fail".
 */
WIFIMGR_API int wifimgr_lib_get_neighbourinfo_v1(void* buffer, int wifi_type);

#define WIFIMGR_PROCESSES 8 /* most that a record of processes lists */

/* A process of the WLAN service. */
typedef struct wifimgr_process {
  char name[16];      /* padded with NUL; 16 characters fill it without one */
  uint32_t pid;       /* its process id */
  uint8_t running;    /* 1 while it runs */
  uint8_t filling[3]; /* not used */
} wifimgr_process;

/* The processes of the WLAN service: 196 bytes. */
typedef struct wifimgr_process_info {
  uint8_t count;      /* of the driver's processes, plus 1; 255 of them give 0. Only 8 are ever listed. */
  uint8_t filling[3]; /* not used */
  wifimgr_process process[WIFIMGR_PROCESSES]; /* the service itself first */
} wifimgr_process_info;

/* The processes of the WLAN service: itself first, as "wlan.svc", when "/var/run/wlan_svc.pid" names a live process,
 * then those that the driver reports (request 0x8BFE on rai0). Returns 1 for all failures. */
WIFIMGR_API int wifimgr_lib_get_wifi_process_info(wifimgr_process_info* record);

/* Writes an iwpriv command line for an interface, cut to `size` bytes; runs nothing.
 * prefix, index  the interface: the prefix alone for index -1, else both; cut to 15 characters.
 * kind           0 "/userfs/bin/iwpriv %s set %s", 1 "/userfs/bin/iwpriv %s %s", with interface and argument.
 * Returns 0. `out` stays untouched for another kind, a null pointer or a size of 0 or less. */
WIFIMGR_API int wifimgr_lib_set_WIFI_CMD(const char* prefix, int index, int size, const char* argument, char* out,
                                         int kind);

/* Writes a printf template for lines of a script, cut to `size` bytes: "/userfs/bin/iwpriv ra%d set %s=%s\n" (5G
 * rai%d), for interface number, key and value. Returns 0, 1 for another band; nothing is written to a null pointer or
 * with a size of 0 or less. */
WIFIMGR_API int wifimgr_lib_get_WLAN_SCRIPT(int wifi_type, int size, char* out);

/* ---- WPS: the driver's session -----------------------------------------------------------------------------------
 *
 * Results and conventions of the driver requests. ssid_index counts from 0 here and is not checked: an interface that
 * the driver does not have is refused by it. */

/* The PIN with leading zeros to eight digits (OID 0x0752); `out` of 11 bytes or more. "0" on failure. Print
 * "==>UpdatePinCode: Create socket fail" or "==>UpdatePinCode: ioctl open fail"; UpdatePinCodeAC says
 * "UpdatePinCodeAC". The first two are those of the 2.4G and 5G radio, and do not trace. */
WIFIMGR_API void UpdatePinCode(char* out);
WIFIMGR_API void UpdatePinCodeAC(char* out);
WIFIMGR_API int wifimgr_lib_get_WPS_PIN_CODE(int wifi_type, int ssid_index, char* out);

/* The state of an interface's WPS session (OID 0x0751) and, for states 3 to 0x7fffffff, its peer (OID 0x075C).
 * state     the driver's code; 0 when it cannot be read.
 * peer_mac  18 bytes: the MAC in capitals with colons. Untouched for other states; its first byte is 0 on failure, a
 *           failing second request too, which leaves the state that was read.
 * Print "==>UpdateWpsStatus: Create socket fail", "==>UpdateWpsStatus: ioctl open fail", "==>UpdateWpsMac: ioctl open
 * fail:%d" with the result. The first two are 2.4G and 5G; they do nothing with a null pointer, and do not
 * trace. */
WIFIMGR_API void UpdateWpsStatus(uint32_t* state, char* peer_mac, int ssid_index);
WIFIMGR_API void UpdateWpsStatusAC(uint32_t* state, char* peer_mac, int ssid_index);
WIFIMGR_API int wifimgr_lib_get_WpsStatus(int wifi_type, uint32_t* state, char* peer_mac, int ssid_index);

/* The radio's WPS status word (request 0x8BF2). Prints "[%s]Create socket fail", "[%s]:ioctl open fail". */
WIFIMGR_API int wifimgr_lib_get_WPS_STATUS(int wifi_type, uint16_t* status);

/* The station in WPS with the radio (OID 0x2044): its MAC in small letters with colons, `out` of 18 bytes or more.
 * Returns 1 for all failures but missing memory: 4, printing "malloc failed.". Refusals:
 * "wifimgr_lib_get_WPS_STA_MAC: Create socket fail", "wifimgr_lib_get_WPS_STA_MAC: ioctl open fail". */
WIFIMGR_API int wifimgr_lib_get_WPS_STA_MAC(int wifi_type, char* out);

#define WIFIMGR_WPS_ACCESS_ENTRIES 64 /* entries of a WPS access list */

/* A MAC is cut at its first zero byte and filled with zeros: 00:11:22:33:44:55 reads as six zeros. Deliberate. */
typedef struct wifimgr_wps_access_entry {
  uint8_t mac[6]; /* of the station */
  uint16_t value; /* the driver's */
} wifimgr_wps_access_entry;

/* The access list of an interface's WPS: 528 bytes. */
typedef struct wifimgr_wps_access_list {
  uint8_t header[16];                                         /* the driver's */
  wifimgr_wps_access_entry entry[WIFIMGR_WPS_ACCESS_ENTRIES]; /* all of them; the unused are zero */
} wifimgr_wps_access_list;

/* The access list of an interface's WPS (OID 0x052A). Prints "[%s]:Create ACL socket fail", "[%s]:ioctl open fail". */
WIFIMGR_API int wifimgr_lib_get_WPS_ACL_INFO(int wifi_type, int ssid_index, wifimgr_wps_access_list* out);

/* ---- WPS: settings and service -----------------------------------------------------------------------------------
 *
 * The setters check value, index (1 to 8, however many SSIDs the band has) and band, in this order. Those of stored
 * keys change the store before they look at the band, as update_attr does. Then they run "/userfs/bin/iwpriv ra%d set
 * KEY=VALUE" (5G rai%d, number ssid_index - 1), the value escaped for the shell; its result is not looked at. A
 * number has nothing but digits up to the first line end; none is 0. What stands behind a line end is not looked at and
 * is stored and sent all the same: "1\n2" passes for 1.
 * Return 0, or 1. Refusals: "The input parameter is invalid.", "The ssid index is invalid.", "The wifi type is
 * invalid.", "Set the KEY failed." when the store refuses; 1 also when the escaped value needs more than 159 characters
 * (the store is changed then). */

/* Stored under their key: WscConfMode 0 to 7; WscConfStatus 1 or 2; WscV2Support 0 or 1; WscMaxPinAttack 0 to 10;
 * WscKeyASCII 0, 1 or 8 to 63; WscSetupLockTime 0 to 2147483647. */
WIFIMGR_API uint64_t wifimgr_lib_set_wscConfMode(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscConfStatus(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscV2Support(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscMaxPinAttack(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscKeyASCII(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscSetupLockTime(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* Only sent: WscMode 1 (PIN) or 2 (push button); WscPinCode any number, its checksum is not tested; WscGenPinCode 0 or
 * 1. */
WIFIMGR_API uint64_t wifimgr_lib_set_wscMode(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscPinCode(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_wscGenPinCode(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* Send WscGetConf=1, WscStop=1 and WscOOB=1. */
WIFIMGR_API uint64_t wifimgr_lib_set_wscGetConf(uint32_t wifi_type, int32_t ssid_index);
WIFIMGR_API uint64_t wifimgr_lib_set_wscStop(uint32_t wifi_type, int32_t ssid_index);
WIFIMGR_API uint64_t wifimgr_lib_set_wscOOB(uint32_t wifi_type, int32_t ssid_index);

/* Only stored, any text: WSC_UUID_E1 to 8 and WSC_UUID_Str1 to 8. A refusal of the store is a plain 1. */
WIFIMGR_API uint64_t wifimgr_lib_set_WscUUIDE(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_WscUUIDStr(uint32_t wifi_type, int32_t ssid_index, const char* value);

/* The PIN of one of the band's SSIDs (OID 0x0752): eight digits or more, `out` of 11 bytes or more.
 * ssid_index  1 to BssidNum.
 * Returns 1 for all failures. Refusals: "get_bssidnum err.", "The ssid index should be from 1 to BssidNum:%d.",
 * "UpdatePinCode: ioctl open fail", "UpdatePinCodeAC: Create socket fail" (so on both bands). */
WIFIMGR_API int wifimgr_lib_get_wscPinCode(int wifi_type, int ssid_index, char* out);

/* Does nothing and returns 0, whatever is passed. Does not trace. */
WIFIMGR_ANYTHING_BEGIN
WIFIMGR_API int wifimgr_lib_get_wps_info(WIFIMGR_ANYTHING);
WIFIMGR_ANYTHING_END

/* WPS actions: each writes a script of iwpriv lines to `path`, for the caller to run. The band's snapshot must have
 * been taken: the interface prefix comes from it.
 * ssid_index      counts from 0.
 * start_argument  two numbers: the method, 0 for PIN and 1 for push button, and the PIN (0 for none), which is read
 *                 with method 0 only.
 * Unless WscConfMode of the SSID is 1, 2 or 7 nothing is written and the result is 0; so for another band.
 * _start_wps   WscConfMode, WscConfStatus, WscMode, WscPinCode and WscGetConf lines; the file gets mode 0700. 0 also
 *              when the file cannot be opened; 1, with an empty file, when the low byte of WscConfStatus is not 1 or
 *              2, and when it cannot be written to its end; 1 also when the mode cannot be set.
 * _stop_wps    "WscStop"; _genpincode "WscGenPinCode=1"; _resetoob "WscOOB=1". 1 when the file cannot be opened or
 *              not be written to its end.
 * 1 also for a null path and, where WPS is on, for a null start_argument; nothing is written then. */
WIFIMGR_API int wifimgr_lib_service_start_wps(const char* path, int wifi_type, int ssid_index,
                                              const uint32_t* start_argument);
WIFIMGR_API int wifimgr_lib_service_stop_wps(const char* path, int wifi_type, int ssid_index);
WIFIMGR_API int wifimgr_lib_service_genpincode(const char* path, int wifi_type, int ssid_index);
WIFIMGR_API int wifimgr_lib_service_resetoob(const char* path, int wifi_type, int ssid_index);

/* Ends the WPS daemon ("killall -9 wscd") and, when `enable` is "Yes" and WscConfMode of the SSID is not 0, starts it
 * again: "/usr/bin/wscd -i %s%d -a %s -m 1 &" with the interface and the address of br0, or none when what
 * get_onu_ipaddr found is no IPv4 address.
 * ssid_index  counts from 1.
 * Returns 0, also when nothing was started; -1 for another band and 1 for a null text, nothing is run then. Prints
 * "write_wlan_config:wifimgr_lib_get_wscConfMode fail." when the mode cannot be read. */
WIFIMGR_API int wifimgr_lib_service_wpsstart_wifiupnp(int wifi_type, int ssid_index, const char* enable);

/* The IPv4 address of br0, as ifconfig prints it behind "inet addr:"; `out` of 32 bytes or more. Untouched when there
 * is none. Writes "/tmp/br0_info.txt", which stays. Does not trace. */
WIFIMGR_API void get_onu_ipaddr(char* out);

/* ---- Board: buttons, LED, chip ----------------------------------------------------------------------------------- */

/* Read "/proc/zq2810/wps_button", ".../ahb_status" and ".../wlan11ac_button" without waiting. Up to `size` bytes are
 * read and the last byte of `buffer` is set to NUL, so one byte gives "". `count` receives the number of bytes read,
 * 0xffffffff for an error. Return 0; -1 when the file cannot be opened or a pointer is null. */
WIFIMGR_API int wifimgr_lib_get_WPS_BUTTON(char* buffer, int size, uint32_t* count);
WIFIMGR_API int wifimgr_lib_get_AHB_STATUS(char* buffer, int size, uint32_t* count);
WIFIMGR_API int wifimgr_lib_get_WLAN11AC_BUTTON(char* buffer, int size, uint32_t* count);

/* Write the text, as it is, to ".../wps_button", ".../wps_5g_button", ".../ahb_status" and ".../wlan_wps_button".
 * Return 0, also when the file cannot be opened or the text is null. */
WIFIMGR_API int wifimgr_lib_set_WPS_BUTTON(const char* text);
WIFIMGR_API int wifimgr_lib_set_WPS_5G_BUTTON(const char* text);
WIFIMGR_API int wifimgr_lib_set_AHB_STATUS(const char* text);
WIFIMGR_API int wifimgr_lib_set_WLAN_WPS_BUTTON(const char* text);

/* Reads a button's file as wifimgr_lib_get_WPS_BUTTON does.
 * mode  0 returns 2 when something was read (or reading failed), 0 when nothing was, -2 when the file cannot be
 *       opened; 1 returns the number of bytes, -1 for an error or when the file cannot be opened.
 * Returns -2 for another mode. */
WIFIMGR_API int wifimgr_lib_get_button_state(int mode, const char* path, char* buffer, int size);

/* Runs "echo %s > /proc/zq2810/led_wlan" with the text, unescaped. The line is cut to 63 characters as a whole: a
 * text of more than 34 loses part of the redirection. Deliberate. Returns 0. */
WIFIMGR_API int wifimgr_lib_set_LED_WLAN(const char* text);

#define WIFIMGR_WLANSHARE_CMD_SIZE 64 /* the buffer of wifimgr_lib_get_WLANSHARE_CMD */

/* Writes "echo %d %d %s %s > /proc/zq2810/wlanshare", cut to 63 characters, to `out` of 64 bytes; runs nothing.
 * Returns 0. */
WIFIMGR_API int wifimgr_lib_get_WLANSHARE_CMD(char* out, int a, int b, const char* text1, const char* text2);

/* The chip's package id from "/proc/zq2810/chip_id"; untouched when there is no number in it. Returns 0; -1 when the
 * file cannot be opened, 1 for a null pointer. Prints "Critical Bugs, Can't get package id!"; "fscanf error!",
 * without a line end, for an empty file. */
WIFIMGR_API int wifimgr_lib_get_CHIP_ID(int* id);

/* Routes the 5G radio's PCIe: writes a register with "sys memwl", which one depends on the chip's package.
 * flag  0 or 1, else "The flag value is invalid.".
 * Returns 1 for an unknown package (or no chip_id file), printing "2810" and "unknow package". */
WIFIMGR_API int wifimgr_lib_set_5G_PCIE(int flag);

/* ---- Board: calibration ------------------------------------------------------------------------------------------ */

/* Copies the radio's calibration image from flash, with "/userfs/bin/mtd", to the file that the driver loads
 * ("/etc/RT30xxEEPROM.bin", 5G "/etc/Wireless/RT2860AP_AC/RT30xxEEPROM.bin") when its chip id, the first two bytes,
 * is one of the band's; otherwise prints "use default ..." and leaves that file alone. The image passes through
 * "/tmp/RT30xxEEPROM.bin" or "/tmp/MT7610EEPROM.bin", which is removed, but not when it is empty: 0 then, too. A file
 * of that name that another user has put there, and that the tool could not overwrite, is believed; a copy that is cut
 * by a full file system is not noticed.
 * Refusals: "The wifi type is invalid.", "open tmp/RT30xxEEPROM.bin fail!!!" (5G MT7610EEPROM.bin). */
WIFIMGR_API int wifimgr_lib_get_wifi_calibration(int wifi_type);

/* Writes the driver's image file back to flash. The tool's result is not looked at: a write that failed shows in
 * nothing. Refusal: "The wifi type is
 * invalid.". */
WIFIMGR_API int wifimgr_lib_set_wifi_calibration(int wifi_type);

/* ---- Board: network identity -------------------------------------------------------------------------------------
 *
 * The kernel's answers about interfaces; names are cut to 15 characters. Outputs stay untouched on failure. */

/* The hardware address in capitals with colons, cut to `size` bytes. Return 0, or -1. The first prints "%s %d: socket
 * open fail" or "%s %d: ioctl open fail" with its name and 2026 or 2033, the second only the former with 2078. */
WIFIMGR_API int wifimgr_lib_get_itf_hwaddr(const char* ifname, char* out, int size);
WIFIMGR_API int wifimgr_lib_get_interface_mac0(const char* ifname, char* out, int size);

/* The six bytes of the hardware address, asked over a raw socket, which needs CAP_NET_RAW. Always 0. */
WIFIMGR_API int wifimgr_lib_get_interface_mac(const char* ifname, uint8_t* mac);

/* What wifimgr_lib_get_interface_mac asks, of br0; six zero bytes when they cannot be read, and 0 all the same. 1 for a
 * null pointer. */
WIFIMGR_API int wifimgr_lib_get_ethaddr(uint8_t* mac);

/* What wifimgr_lib_get_interface_mac asks, of br0, over the caller's socket, which stays open. Returns 0, or -1. */
WIFIMGR_API int wifimgr_lib_get_ifaddr(int socket, uint8_t* mac);

/* An IPv6 address from the MAC of br0: bytes 2 to 15 of `record`, the last eight being the interface identifier.
 * Bytes 0 and 1 are the caller's. Returns 0, or -1. */
WIFIMGR_API int wifimgr_lib_get_br0_v6addr(uint8_t* record);

/* 1 when the interface's flags (IFF_UP is 0x1) have any bit of the mask, else 0; 0 also on failure. */
WIFIMGR_API int wifimgr_lib_get_test_itf_status(const char* ifname, uint16_t mask);

/* ---- DFS zero-wait, MBO, multi-AP -------------------------------------------------------------------------------- */

/* DfsDedicatedZeroWait, DfsZeroWaitDefault: band-wide, on 5G only; index -1. Accept digits, 0 to 1. Refusals: "The
 * type should be 1.", "The ssid index is invalid." (getters "The index should be -1."), "The DfsDedicatedZeroWait
 * value is invalid.", "The DfsZeroWaitDefault value is invalid.". Buffers as for all getters. */
WIFIMGR_API uint64_t wifimgr_lib_set_DfsDedicatedZeroWait(uint32_t wifi_type, int32_t index, const char* value);
WIFIMGR_API uint64_t wifimgr_lib_set_DfsZeroWaitDefault(uint32_t wifi_type, int32_t index, const char* value);
WIFIMGR_API int wifimgr_lib_get_DfsDedicatedZeroWait(int wifi_type, int index, char* buf, unsigned len);
WIFIMGR_API int wifimgr_lib_get_DfsZeroWaitDefault(int wifi_type, int index, char* buf, unsigned len);

/* MboSupport1 to 8: multi-band operation of an SSID, 1 to BssidNum. Accepts a text whose leading number is 0 to 1,
 * one without a number being 0. Refusals: "The ssid index should be from 1 to BssidNum:%d.", "The MboSupport value is
 * invalid.". */
WIFIMGR_API uint64_t wifimgr_lib_set_MboSupport(uint32_t wifi_type, int32_t ssid_index, const char* value);
WIFIMGR_API int wifimgr_lib_get_MboSupport(int wifi_type, int ssid_index, char* buf, unsigned len);

/* MapMode: multi-AP mode. The setter takes index -1, writes the band given and accepts 0 to 2 (a text without a
 * number is 0); the getter takes an SSID index of the band given and reads 2.4G, whatever the band. Deliberate.
 * Refusals: "The index should be -1.", "The MapMode value is invalid."; getter: "The ssid index should be from 1 to
 * BssidNum:%d.". */
WIFIMGR_API uint64_t wifimgr_lib_set_MapMode(uint32_t wifi_type, int32_t index, const char* value);
WIFIMGR_API int wifimgr_lib_get_MapMode(int wifi_type, int ssid_index, char* buf, unsigned len);

#ifdef __cplusplus
}
#endif

#endif
