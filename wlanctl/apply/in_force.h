// Whether what was applied is in force: the kernel is asked, not the commands. What is not stays known until it is mended.
#pragma once

#include <string>
#include <vector>

#include "wlanctl/base/band.h"

namespace wlanctl {

class LinkDowns;
class Report;

// What should hold of an interface, a module or a band's driver. The driver reads the dat file when the first interface of
// a band comes up: one that a restart has left up keeps it from that, whatever becomes of it later, until the next restart
// (kRestarted).
struct Wanted {
  enum class State { kUp, kDown, kLoaded, kAnswers, kChannel, kRestarted, kBridged };
  State state = State::kUp;
  std::string subject;  // "ra0", "mt7603eap", "2.4g"
  std::string
      detail;  // the bridge of kUp, "" where any will do, and of kBridged, once it is up; the channel of kChannel

  bool operator==(const Wanted& other) const = default;
};

// What does not hold, with the command that is to blame where there is one.
struct Lack {
  Wanted wanted;
  std::string cause;
  bool is_unknown = false;  // the driver had its time before it told: nobody knows whether it holds
};

// What a driver that is late did not tell any more.
bool is_unknown(const Wanted& wanted);

// Whether there is any, and nothing is known to lack.
bool are_all_unknown(const std::vector<Lack>& lacks);

// "ra0 is down"; "" when all is as wanted.
std::string lacking(const Wanted& wanted);

// The operations of the library that change interfaces, with the bridge that each works on.
enum class Operation { kCommit, kSave, kRadioOn, kRadioOff };

// What is to be after an operation, by the settings in the store and what is there when this is made, before the
// operation runs. `interfaces` of the band are up at most.
class Expectation {
 public:
  Expectation(Band band, Operation operation, int interfaces);

  // Looks, when the operation is done. `may_lack_interfaces`: the driver makes new ones at the next boot. `downs`: of an
  // operation that takes down what was up before.
  std::vector<Lack> look(bool may_lack_interfaces, LinkDowns* downs = nullptr) const;

  // What does not hold at this moment, without a cause.
  std::vector<Wanted> lacking_now() const;

  // Whether `look` says all there is to say of that.
  bool judges(const Wanted& wanted) const;
  bool wants_up(const std::string& interface) const;

  // What it wants up of the band itself, with its bridge.
  const std::vector<Wanted>& bridges() const { return bridges_; }

 private:
  std::vector<Wanted> wanted_;
  std::vector<Wanted> bridges_;
  std::vector<std::string> up_before_;  // of the band
  std::vector<Wanted> await_boot_;      // the driver that is there had made none of these before
};

// Keeps them, in place of those before; none ends that.
void keep_lacks(Band band, const std::vector<Lack>& lacks, Report& report);

// The radio has started, and the driver has read the dat file.
void drop_missing_restarts(std::vector<Lack>* lacks);

// Whether they were kept and cannot be read.
bool are_lacks_damaged(Band band);

// Those kept that still lack now or, where they cannot be read, what the system lacks of an open store's settings.
std::vector<Lack> lacks_of(Band band);

// What of those kept is to be kept beside what an operation found: it neither mended it nor looks at it. A bridge that
// was applied stays wanted whatever the operation wants, also of what it takes down, which lacks nothing until it is up;
// `found` wants it then, too.
std::vector<Lack> lacks_beside(Band band, const Expectation& operation, std::vector<Lack>* found);

// A problem for each, with what to do next.
void complain_of(Band band, const std::vector<Lack>& lacks, const std::string& next, Report& report);
std::string text_of(const Lack& lack);

// What another apply does not mend by itself: "brctl delif br0 ra0 takes it out; ", as brctl puts no interface that is in
// a bridge into another one.
std::string way_out(const Wanted& wanted);

// What brings it into force.
std::string next_step(Band band);

// Where it is not known what is in force, what the driver can be asked of the settings in the store: its channel.
std::vector<Lack> lacks_by_driver(Band band);

// Where an apply with a restart puts interfaces, and where the library's switch of a radio puts those in no bridge.
inline constexpr char kApplyBridge[] = "br-lan";
inline constexpr char kSwitchBridge[] = "br0";

}  // namespace wlanctl
