// The settings that the running program works with, and when each of them is loaded and saved.
// Links' own settings (ports, addresses) are not here: they are read through SetupSection when a link opens.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/SoundInput.h"
#include "settings/ColourTable.h"
#include "settings/SetupSection.h"
#include "state/CatControl.h"

namespace spectrino {

/// Default-constructed values are those of a fresh store. Enumerations and indices are always in range,
/// whatever the file holds.
struct PanSettings {
  bool operator==(const PanSettings&) const = default;

  // Source.
  int Device = 0;          ///< index in the list of sources: sound inputs, then "ICOM", "K4", "K4D"
  std::string NDevice;     ///< name of the chosen source, trimmed
  std::string DeviceId;    ///< stable name of the chosen sound input; empty when none was ever chosen
  std::string SourceName;  ///< "ICOM", "K4", "K4D" or a sound input's name; empty means the input at Device
  bool Icom = false, K4 = false, K4D = false;

  // Sound card and transform.
  bool Use24Bits = false;
  int Bits = 5;   ///< 0..8, transform length 2^(8 + Bits)
  int SRate = 2;  ///< 0..6: 11025, 22050, 44100, 48000, 88200, 96000, 192000 Hz
  bool Iq = false, IqCw = false, IqUsb = false;
  bool Flip6 = false;
  double FlipFreqMHz = 44, FlipFreq2MHz = 54;
  bool TypZoom = false;  ///< zoom by a lower sample rate
  int Zoom = 0;          ///< 0..5, magnification 2^Zoom
  bool SmoothZeroHz = false;
  int WindowTypeIndex = 0;  ///< 0..5: none, Hamming, Blackman, Blackman-Harris, Blackman-Nuttall, flat top
  int HistoryDepth = 2;     ///< 0..10
  bool Priority = false;

  // Frequencies and tuning.
  CatControl Control = CatControl::HostIf;
  int IcomControl = 0;                                      ///< 0 serial port, 1 through the host program
  std::array<double, 5> OffsetKHz{};                        ///< 0 CW, 1 USB, 2 LSB, 3 AM/FM, 4 FSK
  std::array<double, 4> CenterKHz{7015, 7015, 7015, 7015};  ///< 0 CW, 1 USB, 2 LSB, 3 AM
  double GlobalOffsetKHz = -6;
  std::array<int, 3> AutoSpanKHz{25, 150, 300};  ///< 0 CW/data, 1 SSB, 2 AM/FM
  std::array<int, 4> StepHz{10, 25, 100, 10};    ///< 0 CW, 1 SSB, 2 AM/FM, 3 data; 0 means no step
  bool Mouse = true;                             ///< wheel tuning; changes take effect with a restart
  bool WheelInverted = false;
  std::array<double, 2> QSplitKHz{1, 5};
  bool CwReverse = false, FskReverse = false;
  std::string HostEndpoint;  ///< host:port, empty for the default

  // Display.
  int DisplayDesign = 0;  ///< 0 or 1
  bool SubD = false, Fill = true, MHz = true, BandMode = false;
  ColourTable Colours = kColoursK4;
  bool Qsy = true;
  bool WFFollow = true;
  bool MinipanOption = false;
  int OptSM = 0;  ///< S-meter source: 0 scope, 1 mini-pan
  int SMeterCorrDb = 0;
  double SMeterHoldSeconds = 4;
  int DisplayMode = 0;   ///< 0..3
  int WaterfallSel = 0;  ///< 0..3
  bool OnTop = false, BackgroundPeakHold = false;

  // Range.
  bool AutoRef = true;  ///< remember reference and range for each band
  int RefLevel = -60;   ///< dB
  int RangeDivisor = 1000000;
  std::array<int, key::kRefBandCount> BandRef = [] {
    std::array<int, key::kRefBandCount> all{};
    all.fill(-60);
    return all;
  }();
  std::array<int, key::kRefBandCount> BandDivisor = [] {
    std::array<int, key::kRefBandCount> all{};
    all.fill(1000000);
    return all;
  }();
  double BandLevelDb = 0;  ///< level correction, the one key "db"

  // Balance of I and Q.
  double DePhase = 0, DeAmp = 0;
};

/// What the main window reads once, when it is created.
void LoadStartup(const SetupSection& setup, PanSettings& settings);
/// What is read at startup and each time the setup dialog closes. soundInputCount: sound inputs now listed.
/// settings.SourceName is kept when the file names no source.
void LoadSettings(const SetupSection& setup, int soundInputCount, PanSettings& settings);

/// Which of the listed inputs was chosen: by its stable name; by its name, then its index, where no stable
/// name was ever stored. Nothing when the chosen one is missing: the choice stands until it returns.
[[nodiscard]] std::optional<std::size_t> FindChosenInput(const PanSettings& settings,
                                                         std::span<const SoundDevice> inputs);

/// The range panel closes: level correction, reference and range, with AutoRef also for refBand (0..12;
/// nothing where the frequency has no band of its own or is unknown).
void SaveRange(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand);
/// The source was chosen in the list: index, names and the three flags of the radios, in one write.
void SaveSource(SetupSection& setup, const PanSettings& settings);
void SaveZoom(SetupSection& setup, int zoom);
/// The window closes: its own choices and the range keys, in one write.
void SaveMainKeys(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand);

enum class WindowState { Normal, Minimised, Maximised };

/// In twips, 15 to a pixel. The position and size of the normal state, whatever state the window is in.
struct WindowGeometry {
  int Top = 0, Left = 0;
  int Height = 5175, Width = 10905;
  WindowState State = WindowState::Normal;
};

/// A minimised window never comes back minimised: State is Normal or Maximised.
[[nodiscard]] WindowGeometry LoadGeometry(const SetupSection& setup);
/// Maximised keeps the last normal position and size; minimised changes nothing.
void SaveGeometry(SetupSection& setup, const WindowGeometry& geometry);

}  // namespace spectrino
