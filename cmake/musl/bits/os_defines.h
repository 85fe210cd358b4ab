/* Stands before the C++ library's header of the same name, which asks for the GNU C library's version: under musl there is
 * nothing of it to know. */
