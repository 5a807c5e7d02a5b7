// Any bytes as a recording: a reason, or frames that lie within the file.
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "sim/DemoBand.h"
#include "sim/IqFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace spectrino;
  std::istringstream file(std::string(reinterpret_cast<const char*>(data), size));
  IqFile iq;
  if (!ParseIqFile(file, size, iq).empty()) return 0;
  const bool lies =
      iq.DataAt >= 8 && iq.DataAt <= size && iq.Frames >= 1 && 4 * iq.Frames <= size - iq.DataAt;
  if (!lies || !IsSoundRate(iq.RateHz)) std::abort();
  return 0;
}
