// What is not in force of what was applied, kept until it is mended.
#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "wlanctl/apply/in_force.h"
#include "wlanctl/apply/undone.h"
#include "wlanctl/base/report.h"
#include "wlanctl/base/terminal.h"
#include "wlanctl/files/bytes.h"
#include "wlanctl/files/places.h"
#include "wlanctl/files/state_file.h"

namespace wlanctl {
namespace {

using State = Wanted::State;

constexpr char kFormat[] = "wlanctl-lacking";
constexpr int kVersion = 1;
constexpr const char* kStates[] = {"up", "down", "loaded", "answers", "channel", "restarted", "bridged"};

std::string path_of(Band band) {
  return std::string(place::kLacking) + label_of(band);
}

std::optional<State> parse_state(const std::string& word) {
  for (size_t i = 0; i < std::size(kStates); ++i) {
    if (word == kStates[i]) return static_cast<State>(i);
  }
  return std::nullopt;
}

// As they were kept, mended or not.
std::vector<Lack> read_lacks(Band band) {
  const std::optional<std::string> text = read_state_file(path_of(band), kFormat, kVersion);
  // What was kept cannot be read: the system can.
  if (!text && is_state_file_there(path_of(band))) return look_closely(band);
  const std::vector<std::string> lines = lines_of(text.value_or(""));
  std::vector<Lack> lacks;
  if (lines.empty() || lines[0] != this_boot()) return lacks;
  for (size_t i = 1; i < lines.size(); ++i) {
    std::vector<std::string> words = split_at(lines[i], '\t');
    words.resize(4);
    const std::optional<State> state = parse_state(words[0]);
    const Wanted wanted = {state.value_or(State::kUp), words[1], words[2]};
    if (state) lacks.push_back({wanted, words[3]});
  }
  return lacks;
}

// A driver may be too late to tell just now.
bool is_lacking(Lack* lack) {
  const bool is_so = !lacking(lack->wanted).empty();
  lack->is_unknown = is_so && is_unknown(lack->wanted);
  return is_so;
}

// The interface has to be in its bridge whenever it is up.
bool has_bridge(const Wanted& wanted) {
  return wanted.state == State::kBridged || (wanted.state == State::kUp && !wanted.detail.empty());
}

}  // namespace

void keep_lacks(Band band, const std::vector<Lack>& lacks, Report& report) {
  if (lacks.empty()) {
    (void)remove_state_file(path_of(band));
    return;
  }
  std::string text = this_boot() + "\n";
  for (const Lack& lack : lacks) {
    text += joined({kStates[static_cast<int>(lack.wanted.state)], lack.wanted.subject, lack.wanted.detail,
                    printable(on_one_line(lack.cause))},
                   "\t") +
            "\n";
  }
  (void)write_state_file(path_of(band), kFormat, kVersion, text, report);
}

bool are_lacks_damaged(Band band) {
  return is_state_file_damaged(path_of(band), kFormat, kVersion);
}

void drop_missing_restarts(std::vector<Lack>* lacks) {
  std::erase_if(*lacks, [](const Lack& lack) { return lack.wanted.state == State::kRestarted; });
}

std::vector<Lack> lacks_of(Band band) {
  std::vector<Lack> lacks;
  for (Lack& kept : read_lacks(band)) {
    if (is_lacking(&kept)) lacks.push_back(std::move(kept));
  }
  return lacks;
}

std::vector<Lack> lacks_beside(Band band, const Expectation& operation, std::vector<Lack>* found) {
  std::vector<Lack> beside;
  for (Lack& kept : read_lacks(band)) {
    const std::string& interface = kept.wanted.subject;
    const bool is_wanted_up = operation.wants_up(interface);
    if (is_wanted_up && kept.wanted.state == State::kBridged) kept.wanted.state = State::kUp;
    if (!is_wanted_up && has_bridge(kept.wanted) && operation.judges(kept.wanted)) {
      kept.wanted.state = State::kBridged;
      beside.push_back(std::move(kept));
      continue;
    }
    if (!is_lacking(&kept) && kept.wanted.state != State::kBridged) continue;
    if (!operation.judges(kept.wanted)) {
      beside.push_back(std::move(kept));
      continue;
    }
    if (!is_wanted_up || kept.wanted.state != State::kUp) continue;
    const auto same = std::find_if(found->begin(), found->end(), [&](const Lack& lack) {
      return lack.wanted.state == State::kUp && lack.wanted.subject == interface;
    });
    if (same == found->end()) {
      beside.push_back(std::move(kept));
    } else if (has_bridge(kept.wanted)) {
      same->wanted = kept.wanted;
    }
  }
  return beside;
}

}  // namespace wlanctl
