// Any commands to the simulated K4: answers and frames keep their shape.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "sim/k4/K4Radio.h"

// data: which radio, then commands, each up to its ";".
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace spectrino;
  if (size == 0) return 0;
  constexpr std::size_t kFrameBytes = 4162;
  K4Radio radio((data[0] & 1) != 0);
  radio.Changed = [](const std::string& reply) {
    if (!reply.ends_with(';')) std::abort();
  };
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  double seconds = 1;
  int commands = 0;
  for (std::size_t at = 0; at < text.size() && ++commands <= 200;) {
    const std::size_t end = text.find(';', at);
    if (end == std::string::npos) break;
    const std::string answer = radio.Answer(text.substr(at, end - at), seconds += 0.1);
    if (!answer.empty() && !answer.ends_with(';')) std::abort();
    at = end + 1;
  }
  for (const char display : {'A', 'Y', 'Z'})
    if (radio.Frame(display, seconds).size() != kFrameBytes) std::abort();
  return 0;
}
