// Where things are inside the simulation.
#pragma once

namespace gateway::place {

// What the simulated machine keeps of itself: its processes see it, the gateway's own software has no business in it.
inline constexpr char kState[] = "/run/gateway-sim";
inline constexpr char kJournal[] = "/run/gateway-sim/journal";
inline constexpr char kLock[] = "/run/gateway-sim/lock";
inline constexpr char kProc[] = "/run/gateway-sim/proc";
// A network namespace that holds the far ends of the radios' interfaces.
inline constexpr char kAir[] = "/run/gateway-sim/air";
inline constexpr char kBootId[] = "/run/gateway-sim/boot_id";
inline constexpr char kSystemLog[] = "/run/gateway-sim/syslog";
inline constexpr char kDriver[] = "/run/gateway-sim/driver";
inline constexpr char kLists[] = "/run/gateway-sim/lists";
inline constexpr char kFaultsLock[] = "/run/gateway-sim/lists/faults.lock";
inline constexpr char kToolFaults[] = "/run/gateway-sim/lists/tool-faults";
inline constexpr char kPayloads[] = "/run/gateway-sim/payloads";
inline constexpr char kModules[] = "/run/gateway-sim/modules";
inline constexpr char kModuleList[] = "/run/gateway-sim/module-list";
inline constexpr char kChips[] = "/run/gateway-sim/chips";
inline constexpr char kFlash[] = "/run/gateway-sim/flash";
inline constexpr char kRegisters[] = "/run/gateway-sim/registers";
// The machine's own ifconfig and brctl, which the recorders run.
inline constexpr char kRealTools[] = "/run/gateway-sim/real";

inline constexpr char kTools[] = "/userfs/bin";
inline constexpr char kToolProgram[] = "/userfs/bin/gateway-tools";
inline constexpr char kDriverLibrary[] = "/userfs/lib/libgateway_driver.so";

inline constexpr char kDat2_4G[] = "/etc/Wireless/RT2860AP/RT2860AP.dat";
inline constexpr char kDat5G[] = "/etc/Wireless/RT2860AP_AC/RT2860AP.dat";
inline constexpr char kModuleFiles[] = "/lib/modules/4.4.115";

inline constexpr char kLogSocket[] = "/dev/log";

inline constexpr char kPlatform[] = "/proc/zq2810";
inline constexpr char kPciDevices[] = "/proc/bus/pci/devices";

}  // namespace gateway::place
