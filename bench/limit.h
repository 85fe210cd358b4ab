// What the library's contract demands of the system, done by itself.
#pragma once

namespace bench::limit {

int look_up();  // the band's semaphore, by its key
void p(int semaphore);
void v(int semaphore);
void lock_cycle();  // what every read and every change of a value does: look-up, P, V
void load();        // P and V for clearing and for each record
void save();        // the same bytes through fopen, fputs and fclose, and four steps of the semaphore

}  // namespace bench::limit
