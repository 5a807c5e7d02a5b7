// What the main window shows of the run: header, strip, deck, markers and texts over the plot.
#include <algorithm>

#include "app/PanTexts.h"
#include "app/VfoMarkers.h"
#include "app/frmPan.h"
#include "display/SMeterText.h"
#include "dsp/LevelScale.h"
#include "state/FrequencyText.h"

namespace spectrino {
namespace {
constexpr int kStatusMs = 60;  // the inset's texts and mini-pans: fast enough for a meter
constexpr int kPanelMs = 100;  // the buttons: as fast as an eye reads them
}  // namespace

// A muted input or a volume that bends the levels: said while it lasts.
void frmPan::ShowWarning() {
  std::string warning = parts_.Cycle.Audio().Warning();
  if (warning == shownWarning_) return;
  shownWarning_ = std::move(warning);
  scope_->ShowStatus(QString::fromStdString(shownWarning_));
}

void frmPan::ShowRadioPanel() {
  if (sincePanel_.isValid() && sincePanel_.elapsed() < kPanelMs) return;
  sincePanel_.restart();
  const K4State& k4 = parts_.K4.State();
  if (!deck_->K4()->isHidden()) deck_->K4()->Show(k4);
  const bool sub = parts_.State.Radio.K4Active && k4.RxSuffix == "$";
  deck_->ShowCurrent(sub ? k4.SubRadioMode : parts_.State.Radio.RadioMode);
}

void frmPan::ShowHeader() {
  const RadioState& radio = parts_.State.Radio;
  header_->ShowFrequency(QString::fromStdString(FrequencyText(radio.MainFreqMHz)), ModeText(radio.RadioMode));
  const double offsetKHz = (radio.SubFreqMHz - radio.MainFreqMHz) * 1000;
  header_->ShowSplit(radio.SplitOn != 0
                         ? QString("SPLIT %1%2k").arg(offsetKHz > 0 ? "+" : "").arg(offsetKHz, 0, 'f', 2)
                         : QString());
  header_->ShowSubFrequency(radio.SubFreqMHz > 0 ? QString::fromStdString(FrequencyText(radio.SubFreqMHz))
                                                 : QString());
  const Readings& meter = parts_.Cycle.Meter();
  const bool known = parts_.Cycle.Running() && meter.SMeterKnown;
  // Heights of an Icom's scope are no calibrated levels.
  const QString approximate = radio.IcomActive ? "~" : "";
  const auto dbm = static_cast<std::int16_t>(qBound(-500, qRound(meter.SMeterDbm), 500));
  header_->ShowMeter(
      meter.SMeterDbm, meter.SMeterHeldDbm, known,
      known ? approximate + QString::fromStdString(SMeterText(dbm, parts_.State.Settings.DisplayDesign))
            : QString());
}

// A run shows it with its next frame; a stopped window has none.
void frmPan::ShowScaleChange() {
  ShowStrip();
  ShowOverlays();
  scope_->update();
}

void frmPan::ShowStrip() {
  const PanSettings& settings = parts_.State.Settings;
  shownRange_ = {settings.RefLevel, settings.RangeDivisor};
  RangePanelState state;
  state.RefLevel = settings.RefLevel;
  state.RangeDb = RangeDb(settings.RangeDivisor);
  state.DisplayMode = settings.DisplayMode;
  state.WaterfallSel = settings.WaterfallSel;
  state.Zoom = settings.Zoom;
  state.BackgroundPeakHold = settings.BackgroundPeakHold;
  state.OwnScale = !RadioSourceActive(parts_.State.Radio);
  range_->Show(state);
}

void frmPan::ShowOverlays() {
  const RadioState& radio = parts_.State.Radio;
  const std::string& model = radio.IcomActive ? parts_.Icom.State().IcomModelName : parts_.Cycle.SourceName();
  std::string info = InfoText(parts_.State, parts_.Cycle, model);
  if (parts_.Cycle.Backend() != nullptr) info += "   " + tuning_->WheelText().toStdString();
  parts_.Display.SetInfoText(std::move(info));
  if (!parts_.Cycle.Running()) {
    parts_.Display.SetStatus({}, 0, 0);
    parts_.Display.SetMarkers({});
    return;
  }
  const std::vector<PlotMarker> markers = VfoMarkers(radio);
  const PlotMarker& main = markers.front();
  if (radio.K4Active) parts_.K4.FollowStatus();
  if (!radio.K4Active) {
    parts_.Display.SetStatus({}, 0, 0);
  } else if (!sinceStatus_.isValid() || sinceStatus_.elapsed() >= kStatusMs) {
    sinceStatus_.start();
    parts_.Display.SetStatus(parts_.K4.Status(), std::min(main.FreqMHz, main.PassbandLowMHz),
                             std::max(main.FreqMHz, main.PassbandHighMHz));
  }
  parts_.Display.SetTransmitting(radio.Transmitting);
  parts_.Display.SetMarkers(markers);
}

void frmPan::ShowRunState() {
  const bool running = parts_.Cycle.Running();
  header_->ShowRunning(running, parts_.Cycle.Starting());
  parts_.Icom.RunChanged(running);
  tuning_->RunChanged(running);
  if (running && !passTimer_.isActive()) passTimer_.start(0);
  if (!running && !shownWarning_.empty()) scope_->ShowStatus({});
  // Said while it was looked for; the picture is for the band now. A radio's own news stay.
  if (running && !RadioSourceActive(parts_.State.Radio)) scope_->ShowStatus({});
  shownWarning_.clear();
  ShowWarning();
  ShowStrip();
  ShowHeader();
  ShowOverlays();
  scope_->update();
}

}  // namespace spectrino
