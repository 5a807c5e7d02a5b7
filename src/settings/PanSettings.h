// The settings that the running program works with, and when each of them is loaded and saved.
// Links' own settings (ports, addresses) are not here: they are read through SetupSection when a link opens.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>

#include "settings/ColourTable.h"
#include "settings/SetupSection.h"
#include "settings/SourceChoice.h"
#include "state/CatControl.h"

namespace spectrino {

/// Default-constructed values are those of a fresh store: the keys' own defaults. Enumerations and indices
/// are always in range, whatever the file holds.
struct PanSettings {
  bool operator==(const PanSettings&) const = default;

  ChosenSource Source;

  // Sound card and transform.
  bool Use24Bits = key::k24Bits.Default;
  int Bits = key::kBits.Default;    ///< 0..8, transform length 2^(8 + Bits)
  int SRate = key::kSRate.Default;  ///< 0..6: 11025, 22050, 44100, 48000, 88200, 96000, 192000 Hz
  bool Iq = key::kIq.Default, IqCw = key::kIqCw.Default, IqUsb = key::kIqUsb.Default;
  bool Flip6 = key::kFlip6.Default;
  double FlipFreqMHz = key::kFlipFreq.Default, FlipFreq2MHz = key::kFlipFreq2.Default;
  bool TypZoom = key::kTypZoom.Default;  ///< zoom by a lower sample rate
  int Zoom = key::kZoom.Default;         ///< 0..5, magnification 2^Zoom
  bool SmoothZeroHz = key::kSmoothZeroHz.Default;
  /// 0..5: none, Hamming, Blackman, Blackman-Harris, Blackman-Nuttall, flat top
  int WindowTypeIndex = key::kWindowType.Default;
  int HistoryDepth = key::kHistoryDepth.Default;  ///< 0..10
  bool Priority = key::kPriority.Default;

  // Frequencies and tuning.
  CatControl Control{key::kCatControl.Default};
  int IcomControl = key::kIcomControl.Default;                 ///< 0 serial port, 1 through the host program
  std::array<double, 5> OffsetKHz = DefaultsOf(key::kOffset);  ///< 0 CW, 1 USB, 2 LSB, 3 AM/FM, 4 FSK
  std::array<double, 4> CenterKHz = DefaultsOf(key::kCenter);  ///< 0 CW, 1 USB, 2 LSB, 3 AM
  double GlobalOffsetKHz = key::kGlobalOffset.Default;
  std::array<int, 3> AutoSpanKHz = DefaultsOf(key::kAutoSpan);  ///< 0 CW/data, 1 SSB, 2 AM/FM
  std::array<int, 4> StepHz = DefaultsOf(key::kStep);  ///< 0 CW, 1 SSB, 2 AM/FM, 3 data; 0 means no step
  bool Mouse = key::kMouse.Default;                    ///< wheel tuning; changes take effect with a restart
  bool WheelInverted = key::kWheelInverted.Default;
  bool CwReverse = key::kCwReverse.Default, FskReverse = key::kFskReverse.Default;
  std::string HostEndpoint{key::kHostEndpoint.Default};  ///< host:port, empty for the default

  // Display.
  int DisplayDesign = key::kDesign.Default;  ///< 0 or 1
  bool SubD = key::kSubD.Default, Fill = key::kFill.Default, MHz = key::kMHz.Default;
  bool BandMode = key::kBandMode.Default;
  ColourTable Colours = kColoursK4;
  bool Qsy = key::kQsy.Default;
  bool WFFollow = key::kWFFollow.Default, WFLive = key::kWFLive.Default;
  int WFPalette = key::kWFPalette.Default;            ///< 0..3
  int WFFloorDb = key::kWFFloor.Default;              ///< -40..40
  int WFContrast = key::kWFContrast.Default;          ///< percent, 25..400
  int BandPlanRegion = key::kBandPlanRegion.Default;  ///< 0 no strip, 1..3
  int InsetPlace = key::kInsetPlace.Default;          ///< 0..4
  bool MinipanOption = key::kMinipan.Default;
  int OptSM = key::kOptSM.Default;  ///< S-meter source: 0 scope, 1 mini-pan
  int SMeterCorrDb = key::kSMeterCorr.Default;
  double SMeterHoldSeconds = key::kSMeterHold.Default;
  int DisplayMode = key::kDisplayMode.Default;  ///< 0..3
  int WaterfallSel = key::kWaterfall.Default;   ///< 0..3
  bool OnTop = key::kOnTop.Default, BackgroundPeakHold = key::kBackgroundPeakHold.Default;

  // Range.
  bool AutoLevel = key::kAutoLevel.Default;  ///< by the noise, not by reference and range
  bool AutoRef = key::kAutoRef.Default;      ///< remember reference and range for each band
  int RefLevel = key::kRef.Default;          ///< dB
  int RangeDivisor = key::kDivisor.Default;
  std::array<int, key::kRefBandCount> BandRef = ForEachBand(key::kRef.Default);
  std::array<int, key::kRefBandCount> BandDivisor = ForEachBand(key::kDivisor.Default);
  double BandLevelDb = key::kLevelCorrection.Default;  ///< level correction, the one key "db"

  // Balance of I and Q.
  double DePhase = key::kDePhase.Default, DeAmp = key::kDeAmp.Default;

 private:
  static constexpr std::array<int, key::kRefBandCount> ForEachBand(int value) {
    std::array<int, key::kRefBandCount> all{};
    all.fill(value);
    return all;
  }
};

/// What the main window reads once, when it is created.
void LoadStartup(const SetupSection& setup, PanSettings& settings);
/// What is read at startup and each time the setup dialog closes. radios: those that a flag can choose.
void LoadSettings(const SetupSection& setup, PanSettings& settings, std::span<const RadioSource> radios);

/// The range panel closes: level correction, reference and range, with AutoRef also for refBand (0..12;
/// nothing where the frequency has no band of its own or is unknown).
void SaveRange(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand);
void SaveZoom(SetupSection& setup, int zoom);
/// The window closes: its own choices and the range keys, in one write.
void SaveMainKeys(SetupSection& setup, const PanSettings& settings, std::optional<int> refBand);

enum class WindowState { Normal, Minimised, Maximised };

/// In twips, 15 to a pixel. The position and size of the normal state, whatever state the window is in.
struct WindowGeometry {
  int Top = key::kTop.Default, Left = key::kLeft.Default;
  int Height = key::kHeight.Default, Width = key::kWidth.Default;
  WindowState State = WindowState::Normal;
};

/// A minimised window never comes back minimised: State is Normal or Maximised.
[[nodiscard]] WindowGeometry LoadGeometry(const SetupSection& setup);
/// Maximised keeps the last normal position and size; minimised changes nothing.
void SaveGeometry(SetupSection& setup, const WindowGeometry& geometry);

}  // namespace spectrino
