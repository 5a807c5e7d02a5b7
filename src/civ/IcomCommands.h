// What each of the Icom panel's controls sends to the radio.
// Holds no widget and opens no port; replies are the parser's, the scan is ScanCommands'.
#pragma once

#include <optional>

#include "civ/AskedValue.h"
#include "civ/CivSender.h"
#include "civ/CivState.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"

namespace spectrino {

/// Command numbers and layouts: the radios' CI-V reference guides. No reply is waited for: what a radio does
/// not know it rejects, and nothing happens. Indices outside their range are ignored.
class IcomCommands {
 public:
  IcomCommands(CivState& state, CivSender& sender, EventPump& pump, const Clock& clock)
      : state_(state), sender_(sender), pump_(pump), clock_(clock) {}

  // What tuning, band and mode buttons use as well.

  /// Sets the frequency, then reads everything back. 0 and less, which is no frequency, sends nothing.
  void SetIcomFrequency(double freqMHz);
  /// modeIndex: 0 LSB, 1 USB, 2 CW, 3 AM, 4 FM, 5 RTTY, 6 synchronous AM, 7 wide FM, 8 DV. reverse: CW-R and
  /// RTTY-R. filterNo: 1..3, or 0 to leave the filter to the radio.
  void SetIcomMode(int modeIndex, bool reverse, int filterNo);
  /// level: limited to 0..255. Returns what was sent.
  int SetIcomAfLevel(int level);
  int SetIcomSquelch(int level);
  /// The scope's reference level, limited to the -20..20 dB that radios have, and the request to read it
  /// back.
  void SetIcomRefLevel(double dB);
  /// entry: 0..9 of cboSpan, half spans from 2.5 kHz to 2.5 MHz.
  void SetIcomSpan(int entry);

  /// number: of IcomFilters. Read back at once.
  void SetIcomFilterNumber(int number);

  // The controls. Those that the parser moves do nothing while it does.

  /// index: 0 preamplifier, 1 noise blanker, 2 noise reduction, 3 automatic notch, 4 attenuator, 5 IP+.
  void chkFunc_Click(int index, bool checked);
  /// Memory mode, or VFO mode.
  void chkMEM_Click(bool checked);
  /// The next of fast, middle, slow, counted from what was asked for last: what the radio told meanwhile may
  /// be older.
  void cmdAGC_Click();
  /// 0..2: filter 1..3 in the mode that the radio is in. Waits 25 ms for the radio; a click meanwhile
  /// replaces the filter on its way.
  void cmdFil_Click(int index);
  /// The next of fast, middle, slow sweep, counted in the same way. Nothing while no Icom is the source of
  /// the spectrum.
  void cmdSpeed_Click();
  /// One third of the scope's span up (0, 2) or down (1, 3) from the display's centre, in centre mode.
  void cmdUpDn_Click(int index, double centreMHz);
  void cboSpan_Click(int entry);
  void sldVol_Change(int value);
  void sldSQL_Change(int value);
  /// value: -40..40 half decibels.
  void sldRFLevel_Change(int value);
  /// Reads a slider's level back, once its value stands.
  void ReadAfLevel();
  void ReadSquelch();
  void ReadRefLevel();
  /// Fixed mode, or centre mode.
  void chkFIX_Click(bool checked);

  // What the operator changed at the radio itself.

  /// How many states of the panel the radio can be asked for, one at a time: functions, AGC, levels, sweep,
  /// the filter's width.
  static constexpr int kPanelStates = 12;
  /// index: counts on through them. What a model does not have is not asked for.
  void AskPanelState(int index);

 private:
  void SendRefLevel(double dB);

  CivState& state_;
  CivSender& sender_;
  EventPump& pump_;
  const Clock& clock_;
  AskedValue agc_;
  AskedValue speed_;
  std::optional<int> awaitedFilter_;  ///< 1..3 while cmdFil_Click waits
};

}  // namespace spectrino
