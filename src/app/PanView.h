// What the window shows of a run: header, strip, deck, markers and texts over the plot, at the pace of an
// eye. Decides nothing of the run and changes nothing in it.
#pragma once

#include <string>
#include <utility>

#include "app/Deck.h"
#include "app/LinkView.h"
#include "app/TuningInput.h"
#include "display/PanDisplay.h"
#include "display/ui/HeaderPanel.h"
#include "display/ui/RangePanel.h"
#include "display/ui/ScopeWidget.h"
#include "run/RunCycle.h"
#include "run/Session.h"
#include "state/Pacer.h"

namespace spectrino {

class PanView {
 public:
  /// All outlive it.
  struct Parts {
    const Session& State;
    RunCycle& Cycle;
    LinkView& Links;
    PanDisplay& Display;
    const StageTimes& Times;
    const Clock& Time;
    const TuningInput& Tuning;
    HeaderPanel* Header;
    ScopeWidget* Scope;
    RangePanel* Strip;
    Deck* Rows;
  };
  explicit PanView(const Parts& parts);

  /// Colours and what else the settings say of the picture.
  void ApplyOptions();
  /// After each pass of the run. What it left unchanged is not put together again.
  void AfterPass();
  /// The run began, ended or is being started.
  void ShowRunState();
  /// Settings were loaded, or the choice of source changed.
  void ShowAll();
  /// Reference, range or zoom changed. A run shows it with its next frame; a stopped window has none.
  void ShowScaleChange();
  /// How the links do; without a run too.
  void ShowLinks();

 private:
  void ShowHeader();
  void ShowMeter();
  [[nodiscard]] std::pair<int, int> RangeShown() const;
  void ShowStrip();
  void ShowOverlays();
  void ShowInset();
  void ShowPanel();

  Parts parts_;
  std::pair<int, int> shownRange_;  ///< reference and range in dB that the strip tells
  std::uint64_t shownFrames_ = 0;
  Pacer idle_;   ///< how old header and markers may get without a new frame
  Pacer look_;   ///< links: a trouble is told within 3 s
  Pacer panel_;  ///< buttons: as fast as an eye reads them
  Pacer inset_;  ///< texts and mini-pans: fast enough for a meter
};

}  // namespace spectrino
