// What is known of a K4: what its replies told, what its panadapter stream delivered, what the panel chose.
// Plain data, written by the parsers and the panel's handlers; no rule lives here.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "k4/K4Record.h"

namespace spectrino {

/// Main and sub receiver, side by side.
inline constexpr int kMainRx = 0;
inline constexpr int kSubRx = 1;

/// One line of the radio's own spectrum.
struct K4PanChannel {
  int FixedTune = 0;
  double SpanMHz = 0;
  float RefLevelDb = 0;
  double LowEdgeMHz = 0;
  double CenterMHz = 0;
  double HighEdgeMHz = 0;
  std::vector<std::int16_t> Levels;  ///< whole dB, points 1..Points; index 0 holds no point
  int Points = 0;
  std::uint64_t Serial = 0;  ///< counts up with each published line; 0: none yet
};

inline constexpr int kPanMain = 0;      ///< "A"
inline constexpr int kPanMiniMain = 2;  ///< "Y"
inline constexpr int kPanMiniSub = 3;   ///< "Z"

struct K4State {
  // Frequencies and modes
  double VfoAMHz = 0;
  double MainFreqMHz = 0;
  double SubFreqMHz = 0;
  int RadioMode = 0;
  int SubRadioMode = 0;
  int SplitOn = 0;
  int IfShiftMainHz = 0;
  int IfShiftSubHz = 0;
  int FilterBwMainHz = 0;
  int FilterBwSubHz = 0;
  int CwPitchHz = 0;
  int SMeterMain = 0;
  int SMeterSub = 0;
  int DataModeMain = 0;
  int DataModeSub = 0;
  int Transmitting = 0;

  // Radio
  int FxtOn = 0;
  int DiversityOn = 0;
  int IirOn = 0;
  int BsetOn = 0;
  int SubRxOn = -1;      ///< -1: not told yet
  std::string RxSuffix;  ///< "" or "$": the receiver that the panel addresses
  bool IsK4D = false;
  int K4MonitorKind = -1;  ///< -1: not told yet
  std::array<int, 2> FilterNo{};
  float McuVersion = 0;

  // Panel
  int AgcMain = 0;
  int AgcSub = 0;
  int PreampMain = 0;
  int PreampSub = 0;
  int AttMain = 0;
  int AttSub = 0;
  int ApfMain = 0;
  int ApfSub = 0;
  int NrMain = 0;
  int NrSub = 0;
  int NbMain = 0;
  int NbSub = 0;
  int NotchManualMain = 0;
  int NotchManualSub = 0;
  int NotchPitchMain = 0;
  int NotchPitchSub = 0;
  int NotchAutoMain = 0;
  int NotchAutoSub = 0;
  int RxAntMain = 0;
  int RxAntSub = 0;
  int RitOn = 0;
  int XitOn = 0;
  int RitOffsetHz = 0;
  int VoxOn = 0;
  int Antenna = 0;
  int TestMode = 0;
  int AtuMode = 0;
  int AfBalanceMode = 0;
  int AfBalance = 0;

  // Panadapter
  double PanCenterMHz = 0;
  double PanSpanMHz = 0;
  int PanRefLevelDb = 0;
  int PanScaleDb = 0;
  int PanSpeedMode = 0;
  int PanAverage = 0;
  int PanPeakMode = 0;
  int PanDsm = 0;
  int PanDpm = 0;
  int PanHdpm = 0;
  int PanFxa = 0;
  int PanLabels = 0;
  int PanNb = 0;
  int PanNbLevel = 0;
  int PanVfoAMarker = 0;
  int PanVfoBMarker = 0;
  int WaterfallA = 0;
  int WaterfallC = 0;
  int WaterfallM = 0;
  int WaterfallHeight = 0;
  int WaterfallBs = 0;
  int PanRvm = 0;
  int MarkerAOn = 0;
  int MarkerBOn = 0;
  double MarkerAMHz = 0;
  double MarkerBMHz = 0;
  int PanMpSub = 0;
  std::array<std::string, 10> FixedTuneNames;
  K4Record Record;

  // Session and stream
  bool K4Connected = false;
  bool K4Active = false;
  bool K4PanDataSeen = false;
  int K4SpanPreset = 0;  ///< which optK4Span button is pressed
  bool MinipanOn = false;
  int MinipanHistoryCount = 0;  ///< restarted when the mini-pans are switched on
  int SpectrumPoints = 0;       ///< of the main line
  std::array<K4PanChannel, 4> K4PanChannels;
  std::array<double, 21> K4PanGridHz{};
  float K4PanRefLevel = 0;

  // Guards
  bool K4ParserBusy = false;
  bool K4UpdatingFromRadio = false;
  bool K4PanBusy = false;
};

}  // namespace spectrino
