#include "sim/tools/interface_text.h"

#include <map>
#include <sstream>

namespace gateway::tools {
namespace {

constexpr char kAddress[] = "inet";

// The line in the gateway's way; as it is when it tells of no IPv4 address.
std::string translated(const std::string& line) {
  std::istringstream words(line);
  std::string first;
  std::string address;
  if (!(words >> first >> address) || first != kAddress) return line;
  std::map<std::string, std::string> facts;
  for (std::string name, value; words >> name >> value;) facts[name] = value;
  std::string text = line.substr(0, line.find(kAddress)) + "inet addr:" + address;
  if (facts.count("destination") != 0) text += "  P-t-P:" + facts["destination"];
  if (facts.count("broadcast") != 0) text += "  Bcast:" + facts["broadcast"];
  if (facts.count("netmask") != 0) text += "  Mask:" + facts["netmask"];
  return text;
}

}  // namespace

std::string as_gateway_prints(const std::string& output) {
  std::string text;
  for (size_t start = 0; start < output.size();) {
    const size_t end = output.find('\n', start);
    const size_t length = end == std::string::npos ? std::string::npos : end - start;
    text += translated(output.substr(start, length));
    if (end == std::string::npos) break;
    text += '\n';
    start = end + 1;
  }
  return text;
}

}  // namespace gateway::tools
