// Commands that are to go wrong.
#include "sim/state/tool_faults.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sim/base/text.h"
#include "sim/records/journal.h"
#include "sim/simctl/words.h"
#include "sim/tools/process.h"

namespace gateway::tools::simctl {
namespace {

constexpr long kMostDelayMs = 24 * 60 * 60 * 1000L;
constexpr uint32_t kMostStatus = 255;

void end_with(ToolFault* fault, FaultEnding ending, int number) {
  if (fault->ending != FaultEnding::kWorks) throw UsageError("a call ends one way: hang, exit= or signal=");
  fault->ending = ending;
  fault->number = number;
}

void take_signal(ToolFault* fault, const std::string& value) {
  const int number = signal_from(value);
  if (number <= 0 || sigabbrev_np(number) == nullptr) throw UsageError("no signal is called " + value);
  end_with(fault, FaultEnding::kDies, number);
}

void take_text(ToolFault* fault, const std::string& value) {
  if (value.empty() || on_one_line(value) != value) throw UsageError("a text is one line: " + on_one_line(value));
  fault->text = value;
}

void take_first_call(ToolFault* fault, const std::string& value) {
  const uint32_t call = number_from(value, "call", INT32_MAX);
  if (call == 0) throw UsageError("calls are counted from 1 on");
  fault->skipped = static_cast<int>(call) - 1;
}

constexpr struct {
  const char* key;
  void (*take)(ToolFault* fault, const std::string& value);
} kKeys[] = {
    {"print", take_text},
    {"slow",
     [](ToolFault* fault, const std::string& value) { fault->delay_ms = milliseconds_from(value, kMostDelayMs); }},
    {"exit",
     [](ToolFault* fault, const std::string& value) {
       end_with(fault, FaultEnding::kExits, static_cast<int>(number_from(value, "exit status", kMostStatus)));
     }},
    {"signal", take_signal},
    {"call", take_first_call},
};

void take_pair(ToolFault* fault, const std::string& word, size_t equals) {
  Words known;
  for (const auto& row : kKeys) {
    if (word.compare(0, equals, row.key) == 0) return row.take(fault, word.substr(equals + 1));
    known.emplace_back(std::string(row.key) + "=");
  }
  throw UsageError("unknown: " + word + " (known: " + joined(known, ", ") + ", hang)");
}

}  // namespace

std::string fault_text(const ToolFault& fault) {
  Words does;
  if (!fault.text.empty()) does.push_back("prints \"" + fault.text + "\"");
  if (fault.delay_ms > 0) does.push_back(delay_text(fault.delay_ms));
  if (fault.ending == FaultEnding::kHangs) does.emplace_back("hangs");
  if (fault.ending == FaultEnding::kExits) does.push_back("exits with " + std::to_string(fault.number));
  if (fault.ending == FaultEnding::kDies) does.push_back(std::string("dies of SIG") + sigabbrev_np(fault.number));
  std::string text = fault.tool + " " + joined(does, ", ");
  if (!fault.words.empty()) text += ", given " + joined(fault.words, " ");
  if (fault.skipped > 0) text += ", after " + std::to_string(fault.skipped) + (fault.skipped == 1 ? " call" : " calls");
  return text + times_text(fault.count);
}

Changes fail_tool(const Words& words) {
  ToolFault fault;
  fault.tool = words[0];
  for (size_t i = 1; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (const size_t equals = word.find('='); equals != std::string::npos) {
      take_pair(&fault, word, equals);
    } else if (word == "hang") {
      end_with(&fault, FaultEnding::kHangs, 0);
    } else if (is_count(word)) {
      fault.count = count_from(words, i);
    } else if (word.empty() || std::any_of(word.begin(), word.end(), [](unsigned char c) { return c <= ' '; })) {
      throw UsageError("a call's word has no blank in it: " + on_one_line(word));
    } else {
      fault.words.push_back(word);
    }
  }
  if (fault.text.empty() && fault.delay_ms == 0 && fault.ending == FaultEnding::kWorks) {
    throw UsageError("how it goes wrong is missing: print=, slow=, exit=, signal= or hang");
  }
  change_tool_faults([&](std::vector<ToolFault>* faults) {
    // What was said of the same calls before does not hold any more; a fault that waits for its call is added to it.
    const auto is_same = [&](const ToolFault& old) {
      return fault.skipped == 0 && old.tool == fault.tool && old.words == fault.words;
    };
    faults->erase(std::remove_if(faults->begin(), faults->end(), is_same), faults->end());
    faults->push_back(fault);
  });
  return {"commands: " + fault_text(fault)};
}

}  // namespace gateway::tools::simctl
