// What is known of an Icom: what its replies told, its scope's newest line, what the panel chose.
// Plain data, written by the parser, the scope assembly and the panel's handlers; no rule lives here.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace spectrino {

struct CivState {
  // The radio
  double RadioFreqMHz = 0;
  std::string IcomModeText;  ///< the mode byte as two hex characters
  int RadioModeIndex = 0;    ///< the Icom's own index of modes, not the shared mode code
  int AmVariant = 0;
  int AfLevel = 0;
  int SqlLevel = 0;
  int AgcSetting = 0;
  int FilterNumber = -1;  ///< of 1A 03, its width in the mode that the radio is in; -1: not told
  bool Transmitting = false;
  std::string RadioId;               ///< two hex characters; empty until the radio told
  std::uint64_t IdentitySerial = 0;  ///< counts up each time that it told
  std::string IcomModelName;
  int ScopeMaxLevel = 0;   ///< amplitude byte at full scale
  int SpectrumPoints = 0;  ///< points of one scope line
  int ScopePoints = 0;

  // The scope
  int ScopeFixedMode = 0;  ///< 0 centre, 1 fixed
  double ScopeCentreMHz = 0;
  double ScopeSpanMHz = 0;
  double ScopeLowEdgeMHz = 0;
  double ScopeHighEdgeMHz = 0;
  float ScopeRefLevel = 0;  ///< dB
  int ScopeSpeed = 0;
  double ScopeShownSpan = 0;
  int ScopeDivision = 0;
  int ScopeDivisionCount = 0;
  std::uint64_t ScopeDivisionsSeen = 0;   ///< counts up with each that came, of a broken line too
  std::string ScopeWaveHex;               ///< amplitude text collected so far
  std::vector<std::int16_t> ScopeLevels;  ///< 0..160, points 1..SpectrumPoints; index 0 stays 0
  std::uint64_t ScopeSerial = 0;          ///< counts up with each complete line; 0: none yet
  double ScopeLineLowMHz = 0;             ///< edges of that line, as its own header told
  double ScopeLineHighMHz = 0;
  std::array<double, 21> ScopeGridHz{};

  // The link
  int IcomControl = 0;            ///< 0 serial port, 1 through the host program
  std::string RadioAddress;       ///< two hex digits
  std::string ControllerAddress;  ///< two hex digits
  bool IcomActive = false;
  int ScanCode = 0;  ///< of the running scan, 0 when none
  bool ScanDialogOpen = false;

  // Guards
  bool CivSendBusy = false;
  bool CivParserBusy = false;
  bool ScopeWaveBusy = false;
  bool ResizeInProgress = false;
};

}  // namespace spectrino
