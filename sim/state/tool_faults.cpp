#include "sim/state/tool_faults.h"

#include <fcntl.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "sim/base/file.h"
#include "sim/base/places.h"
#include "sim/base/text.h"

namespace gateway {
namespace {

// A fault is a line, its fields separated by tabs; the text comes last. No field holds a tab or a line end itself, no
// word a blank.
std::string line_of(const ToolFault& fault) {
  std::ostringstream line;
  line << fault.tool << '\t' << joined(fault.words, " ") << '\t' << fault.skipped << '\t' << fault.count << '\t'
       << fault.delay_ms << '\t' << static_cast<int>(fault.ending) << '\t' << fault.number << '\t' << fault.text
       << '\n';
  return line.str();
}

ToolFault fault_of(const std::string& line) {
  ToolFault fault;
  std::istringstream fields(line);
  std::getline(fields, fault.tool, '\t');
  std::string words;
  std::getline(fields, words, '\t');
  std::istringstream stream(words);
  for (std::string word; stream >> word;) fault.words.push_back(word);
  int ending = 0;
  fields >> fault.skipped >> fault.count >> fault.delay_ms >> ending >> fault.number;
  fault.ending = static_cast<FaultEnding>(ending);
  fields.ignore(1);
  std::getline(fields, fault.text);
  return fault;
}

bool meets(const std::vector<std::string>& words, const ToolFault& fault) {
  const auto has = [&](const std::string& word) {
    return std::find(words.begin() + 1, words.end(), word) != words.end();
  };
  return name_of(words[0]) == fault.tool && std::all_of(fault.words.begin(), fault.words.end(), has);
}

}  // namespace

std::vector<ToolFault> load_tool_faults() {
  std::vector<ToolFault> faults;
  std::ifstream stream(place::kToolFaults);
  for (std::string line; std::getline(stream, line);) faults.push_back(fault_of(line));
  return faults;
}

void change_tool_faults(const std::function<void(std::vector<ToolFault>* faults)>& change) {
  const UniqueFd lock = open_file(place::kFaultsLock, O_RDWR | O_CREAT, 0666);
  lock_file(lock.get(), place::kFaultsLock);
  std::vector<ToolFault> faults = load_tool_faults();
  change(&faults);
  std::string text;
  for (const ToolFault& fault : faults) text += line_of(fault);
  swap_in(std::string(place::kToolFaults) + ".new", place::kToolFaults, text);
}

std::optional<ToolFault> take_tool_fault(const std::vector<std::string>& words) {
  const std::vector<ToolFault> known = load_tool_faults();
  if (std::none_of(known.begin(), known.end(), [&](const ToolFault& fault) { return meets(words, fault); })) return {};
  std::optional<ToolFault> met;
  change_tool_faults([&](std::vector<ToolFault>* faults) {
    for (ToolFault& fault : *faults) {
      if (!meets(words, fault)) continue;
      if (fault.skipped > 0) {
        --fault.skipped;
      } else if (!met) {
        met = fault;
        if (fault.count > 0) --fault.count;
      }
    }
    const auto is_used_up = [](const ToolFault& fault) { return fault.count == 0; };
    faults->erase(std::remove_if(faults->begin(), faults->end(), is_used_up), faults->end());
  });
  return met;
}

}  // namespace gateway
