// Where the tool keeps what must outlive a call: gone with a reboot, like what it describes.
#pragma once

namespace wlanctl::place {

inline constexpr char kLock[] = "/var/run/wlanctl.lock";
inline constexpr char kMaking[] = "/var/run/wlanctl-making";     // held while a store is made where there is none
inline constexpr char kApplied[] = "/var/run/wlanctl-applied-";  // and the band's label
inline constexpr char kPending[] = "/var/run/wlanctl-pending-";  // likewise: an apply that waits for its confirmation
inline constexpr char kGuard[] = "/var/run/wlanctl-guard-";      // likewise: held by who watches over that
inline constexpr char kKept[] = "/var/run/wlanctl-kept-";        // likewise: the dat file before a write that lost some
inline constexpr char kLacking[] = "/var/run/wlanctl-lacking-";  // likewise: what was applied and is not in force
inline constexpr char kUnfinished[] = "/var/run/wlanctl-ssids";  // what a change of SSIDs is about to change
inline constexpr char kFolder[] = "/var/run";

}  // namespace wlanctl::place
