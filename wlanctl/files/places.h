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
inline constexpr char kBridges[] = "/var/run/wlanctl-bridges-";  // likewise: where a restart has put the interfaces
inline constexpr char kUnread[] = "/var/run/wlanctl-unread-";    // likewise: what the driver reads at its next start
inline constexpr char kFiling[] = "/var/run/wlanctl-filing";     // which dat files are being written, of both bands
inline constexpr char kStoring[] = "/var/run/wlanctl-storing";   // what is being stored, of both bands
inline constexpr char kEdit[] = "/var/run/wlanctl-edit-";        // and six letters: what is being edited
inline constexpr char kTakenBack[] = "/var/run/wlanctl-taken-back-";  // likewise: an apply that nobody confirmed
inline constexpr char kFolder[] = "/var/run";

}  // namespace wlanctl::place
