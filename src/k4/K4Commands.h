// What the K4 panel's controls send. State in, bytes out: no widget, and what the radio makes of it comes
// back through the parser.
#pragma once

#include <string>
#include <string_view>

#include "k4/K4Dial.h"
#include "k4/K4PanelView.h"
#include "k4/K4Sender.h"
#include "k4/K4State.h"
#include "platform/EventPump.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class K4Commands {
 public:
  /// All outlive it.
  K4Commands(K4State& state, K4Sender& sender, K4Dial& dial, K4PanelView& view, SettingsStore& store,
             EventPump& pump)
      : state_(state), sender_(sender), dial_(dial), view_(view), store_(store), pump_(pump) {}

  /// A button by its control name: "cmdAGCK4", "cmdNotch0", "cmdXFIL1", "cmdSpan0" ... An unknown name does
  /// nothing.
  void Click(std::string_view control);
  /// A check box that the operator clicked. Nothing while the parser runs: what it shows, the radio knows.
  void chkSplt_Click(bool on);
  void chkBSET_Click(bool on);
  void chkSub_Click(bool on);
  void chkDIV_Click(bool on);
  void chkIIR_Click(bool on);
  void chkFXT_Click(bool on);
  void chkMinipan_Click(bool on);
  void optK4Span_Click(int index) { state_.K4SpanPreset = index; }
  void cmdXFIL_Click(int receiver);
  void cmdQuick_Click();
  /// Mode button 0..7: LSB, USB, CW, CW-R, FM, AM, DATA-R, DATA; others send nothing.
  void cmdMode_Click(int index);
  /// value: 0..255. index: 1 main, 2 sub or balance.
  void sldVol_Change(int index, int value);
  void sldVol_Commit(int index);
  void sldNotch_Change(int value);
  void sldNotch_Commit();
  /// Which receivers the radio's own monitor shows: 0 main, 1 both. Only for a K4D with the second receiver
  /// automatic.
  void SelectMonitor(int which);

 private:
  /// Asks the radio to step a function on, and then for its state on both receivers.
  void Step(const std::string& mnemonic);
  void StepUnlessParsing(const std::string& mnemonic);
  void cmdANT_Click();
  void cmdPRE_Click();
  void cmdATT_Click();
  [[nodiscard]] bool Sub() const { return state_.RxSuffix == "$"; }

  K4State& state_;
  K4Sender& sender_;
  K4Dial& dial_;
  K4PanelView& view_;
  SettingsStore& store_;
  EventPump& pump_;
};

}  // namespace spectrino
