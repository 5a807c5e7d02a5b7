// Any text as the settings file: it survives a rewrite, and what is read from it is within its limits.
#include <cmath>
#include <cstdint>
#include <string>

#include "Require.h"
#include "fakes/MemorySettingsFile.h"
#include "fakes/RadioSources.h"
#include "fakes/Recorders.h"
#include "settings/PanSettings.h"

namespace {

using namespace spectrino;
using fuzz::Require;

void ReadAll(SettingsStore& store) {
  const SetupSection setup(store);
  PanSettings settings;
  LoadStartup(setup, settings);
  LoadSettings(setup, settings, kRadioSources);
  Require(settings.Bits >= 0 && settings.Bits <= 8);
  Require(settings.SRate >= 0 && settings.SRate <= 6);
  Require(settings.Zoom >= 0 && settings.Zoom <= 5);
  Require(settings.RangeDivisor >= 1);
  for (const double value : {settings.BandLevelDb, settings.DePhase, settings.DeAmp, settings.FlipFreqMHz})
    Require(std::isfinite(value));
  Require(LoadGeometry(setup).State != WindowState::Minimised);
}

}  // namespace

// data: the length of a value, the value, the text of the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string all(reinterpret_cast<const char*>(data + 1), size - 1);
  const std::string value = IniDocument::StorableText(all.substr(0, data[0]));
  const std::string text = all.size() > data[0] ? all.substr(data[0]) : std::string();

  std::string why;
  if (auto document = IniDocument::Parse(text, why)) {
    Require(document->Text() == text);
    document->Set("Setup", "Device", value);
    Require(document->Find("setup", "DEVICE") == value);
    const auto again = IniDocument::Parse(document->Text(), why);
    Require(again && again->Find("Setup", "Device") == value && again->HasSectionsOf(*document));
  } else {
    Require(!why.empty());
  }
  MemorySettingsFile file;
  file.Files["Spectrino"] = text;
  RecordingNotifier user;
  SettingsStore store(file, user);
  ReadAll(store);
  SetupSection setup(store);
  SaveZoom(setup, 5);
  Require(setup.Read(key::kZoom) == 5);
  ReadAll(store);
  return 0;
}
