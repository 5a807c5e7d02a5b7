// Any text from the CAT connection, cut anywhere: nothing may crash, and cutting may not matter.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "k4/CatParser.h"
#include "k4/RecordingPanel.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace spectrino;
  const std::string text(reinterpret_cast<const char*>(data), size);
  RecordingPanel panel;
  K4State whole;
  std::string buffer = text;
  ParseK4Replies(buffer, whole, panel);
  if (buffer.find(';') != std::string::npos || whole.K4ParserBusy) std::abort();
  K4State pieces;
  std::string part = text.substr(0, size / 2);
  ParseK4Replies(part, pieces, panel);
  part += text.substr(size / 2);
  ParseK4Replies(part, pieces, panel);
  if (part != buffer || pieces.RxSuffix != whole.RxSuffix || pieces.SplitOn != whole.SplitOn) std::abort();
  return 0;
}
