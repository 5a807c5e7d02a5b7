// What a radio with a status area of its own shows beside its spectrum: texts and mini-pans.
// Plain values: a radio's room fills them, the display draws them, neither knows the other.
#pragma once

#include <string>
#include <vector>

namespace spectrino {

/// The narrow spectrum around one receiver's frequency.
struct MiniPan {
  static constexpr int kHistory = 21;

  bool Shown = false;
  std::string Label;                        ///< "A", "B"
  std::vector<std::vector<float>> History;  ///< dB by point, newest first, at most kHistory lines
  float BottomLevel = 0;
  float TopLevel = 0;
  double LowMHz = 0;  ///< edges of the newest line
  double HighMHz = 0;
  double PassbandLowMHz = 0;
  double PassbandHighMHz = 0;
  double NotchMHz = 0;     ///< 0: no manual notch
  double SMeterShare = 0;  ///< 0..1 of the bar, S9 at 54 of 114 units
  std::string ScaleLeft;   ///< " -5.0kHz"
  std::string ScaleRight;  ///< "+5.0kHz"
};

struct StatusArea {
  bool Shown = false;
  std::string MainLine;  ///< "AGC-S PRE1 NB ANT:TX"
  std::string SubLine;
  std::string MainFreq;  ///< "14.074.000"
  std::string SubFreq;
  std::string MainFilter;  ///< "FL2"
  std::string SubFilter;
  std::string Split;  ///< " SPLIT ON" or "SPLIT OFF"
  bool SplitOn = false;
  std::string SplitOffset;  ///< "+6.00k"
  std::string Receivers;    ///< "SUB", "DIV   ", "SUB DIV   "
  bool Bset = false;
  bool Transmitting = false;
  bool Test = false;
  std::string RitXit;  ///< "RIT XIT +0.12"
  bool VoxOn = false;
  std::string Antenna;     ///< " TX:ANT1 ATU"
  std::string FilterText;  ///< "2700/1500 IIR"; empty while the manual notch is on
  std::string ScaleLeft;   ///< of the main panadapter: "-25kHz"
  std::string ScaleRight;
  bool NeedsDualPanOff = false;  ///< "Operation requires" / "DUAL Pan to be OFF"
  MiniPan Main;
  MiniPan Sub;
};

}  // namespace spectrino
