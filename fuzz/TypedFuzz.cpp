// Whatever an operator may type: frequencies and macros.
#include <cmath>
#include <cstdint>
#include <string>

#include "Require.h"
#include "civ/HexText.h"
#include "fakes/FakeRig.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/Recorders.h"
#include "macros/Macros.h"
#include "state/FrequencyText.h"

namespace {

using namespace spectrino;
using fuzz::Require;

void TypeFrequency(const std::string& text) {
  const double mhz = TypedMHz(text);
  Require(std::isfinite(mhz) && mhz >= 0);
  Require(!FrequencyText(mhz).empty());
  Require(DecodeFreq(EncodeFreq(mhz)) >= 0 && EncodeFreq(mhz).size() == 10);
}

void TypeMacro(const std::string& text, int n) {
  MemorySettingsFile file;
  RecordingNotifier user;
  SettingsStore store(file, user);
  FakeRig rig;
  Macros macros({store, [&rig] { return &rig; }, [] { return RadioTraits{}; }});
  const Macro macro{text, text, text.substr(text.size() / 2), (n & 1) != 0};
  macros.Save(n, macro);
  const Macro kept = macros.Load(n);
  const std::string storable = IniDocument::StorableText(text);
  Require(kept.Mac == storable && kept.OnOff == macro.OnOff);
  macros.cmdMacro_Click(n);
  macros.chkMacro_Click(n, false);
  Require(rig.Requests.size() == 2);
  Require(BytesFromHexText(text).size() == text.size() / 2);
}

}  // namespace

// data: which macro, then the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  TypeFrequency(text);
  TypeMacro(text, data[0] % kMacroCount);
  return 0;
}
