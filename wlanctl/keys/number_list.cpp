#include "wlanctl/keys/number_list.h"

#include <cstdlib>
#include <optional>

#include "wlanctl/base/text.h"

namespace wlanctl {
namespace {

constexpr char kSteps[] = " in steps of ";
constexpr char kTo[] = " to ";

struct Part {
  std::optional<Band> band;  // none: of both
  std::string text;
};

std::string trimmed(const std::string& text) {
  const size_t begin = text.find_first_not_of(' ');
  return begin == std::string::npos ? "" : text.substr(begin);
}

std::vector<Part> parts_of(const std::string& words) {
  std::vector<Part> parts;
  for (const std::string& piece : split_at(words, ';')) {
    Part part = {std::nullopt, trimmed(piece)};
    const size_t blank = part.text.find(' ');
    part.band = parse_band(part.text.substr(0, blank));
    if (part.band) part.text = blank == std::string::npos ? "" : part.text.substr(blank + 1);
    parts.push_back(part);
  }
  return parts;
}

// False where the text is neither a number nor two with a "to" between them.
bool add_numbers(const std::string& text, int64_t step, std::vector<long>* numbers) {
  const size_t to = text.find(kTo);
  const std::optional<int64_t> first = number_in(text.substr(0, to));
  const std::optional<int64_t> last = to == std::string::npos ? first : number_in(text.substr(to + sizeof kTo - 1));
  if (!first || !last) return false;
  for (int64_t number = *first; number <= *last; number += step) numbers->push_back(static_cast<long>(number));
  return true;
}

bool add_part(const std::string& text, std::vector<long>* numbers) {
  const size_t steps = text.find(kSteps);
  const std::optional<int64_t> step =
      steps == std::string::npos ? std::optional<int64_t>(1) : number_in(text.substr(steps + sizeof kSteps - 1));
  if (!step || *step < 1) return false;
  for (const std::string& piece : split_at(text.substr(0, steps), ',')) {
    if (!add_numbers(trimmed(piece), *step, numbers)) return false;
  }
  return true;
}

}  // namespace

std::vector<long> numbers_in(const std::string& words, Band band) {
  std::vector<long> numbers;
  for (const Part& part : parts_of(words)) {
    if (part.band.value_or(band) == band && !add_part(part.text, &numbers)) return {};
  }
  return numbers;
}

std::string part_about(const std::string& words, Band band) {
  for (const Part& part : parts_of(words)) {
    if (part.band == band) return part.text;
  }
  return "";
}

}  // namespace wlanctl
