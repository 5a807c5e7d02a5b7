#include "app/PanView.h"

#include <algorithm>

#include "app/PanTexts.h"
#include "app/VfoMarkers.h"
#include "display/SMeterText.h"
#include "dsp/LevelScale.h"
#include "state/FrequencyText.h"

namespace spectrino {

using namespace std::chrono_literals;

PanView::PanView(const Parts& parts) : parts_(parts), idle_(100ms), panel_(100ms), inset_(60ms) {}

void PanView::ApplyOptions() {
  const PanSettings& settings = parts_.State.Settings;
  DisplayOptions options;
  options.Colours = settings.Colours;
  options.Fill = settings.Fill;
  options.SubD = settings.SubD;
  options.MHz = settings.MHz;
  options.WaterfallSel = settings.WaterfallSel;
  options.WFFollow = settings.WFFollow;
  options.WFLive = settings.WFLive;
  parts_.Display.SetOptions(options);
  const std::uint32_t meter = settings.Colours[static_cast<std::size_t>(ColourIndex::SMeter)];
  const std::uint32_t frequency = settings.Colours[static_cast<std::size_t>(ColourIndex::Frequency)];
  parts_.Header->SetColours(QColor(meter & 0xff, meter >> 8 & 0xff, meter >> 16 & 0xff),
                            QColor(frequency & 0xff, frequency >> 8 & 0xff, frequency >> 16 & 0xff));
}

void PanView::AfterPass() {
  const auto now = parts_.Time.Now();
  const bool newFrame = parts_.Times.Frames != shownFrames_;
  if (!newFrame && !idle_.Ready(now)) return;
  idle_.Restart(now);
  shownFrames_ = parts_.Times.Frames;
  ShowPanel();
  ShowHeader();
  ShowOverlays();
  ShowWarning();
  // A band change brings the band's own reference and range.
  const PanSettings& settings = parts_.State.Settings;
  if (std::pair(settings.RefLevel, settings.RangeDivisor) != shownRange_) ShowStrip();
  parts_.Scope->ShowNew(parts_.Cycle.View().Line.Arrived);
}

// A muted input or a volume that bends the levels: said while it lasts.
void PanView::ShowWarning() {
  std::string warning = parts_.Cycle.Warning();
  if (warning == shownWarning_) return;
  shownWarning_ = std::move(warning);
  parts_.Scope->ShowStatus(QString::fromStdString(shownWarning_));
}

void PanView::ShowPanel() {
  if (!panel_.Take(parts_.Time.Now())) return;
  RadioKit* source = parts_.Cycle.View().Way.Source;
  const RadioState& radio = parts_.State.Radio;
  if (source != nullptr) source->ShowPanel();
  parts_.Rows->ShowCurrent(source != nullptr ? source->AddressedMode(radio) : radio.RadioMode);
}

void PanView::ShowHeader() {
  const RadioState& radio = parts_.State.Radio;
  HeaderPanel& header = *parts_.Header;
  header.ShowFrequency(QString::fromStdString(FrequencyText(radio.MainFreqMHz)), ModeText(radio.RadioMode));
  const double offsetKHz = (radio.SubFreqMHz - radio.MainFreqMHz) * 1000;
  header.ShowSplit(radio.SplitOn != 0
                       ? QString("SPLIT %1%2k").arg(offsetKHz > 0 ? "+" : "").arg(offsetKHz, 0, 'f', 2)
                       : QString());
  header.ShowSubFrequency(radio.SubFreqMHz > 0 ? QString::fromStdString(FrequencyText(radio.SubFreqMHz))
                                               : QString());
  ShowMeter();
}

void PanView::ShowMeter() {
  const Readings& meter = parts_.Cycle.Frames().Meter();
  const bool known = parts_.Cycle.Running() && meter.SMeterKnown;
  const RadioKit* source = parts_.Cycle.Running() ? parts_.Cycle.View().Way.Source : nullptr;
  // Made from heights it is no calibrated level.
  const QString approximate = source != nullptr && source->Traits().LevelsAreHeights ? "~" : "";
  const auto dbm = static_cast<std::int16_t>(qBound(-500, qRound(meter.SMeterDbm), 500));
  const QString reading =
      approximate + QString::fromStdString(SMeterText(dbm, parts_.State.Settings.DisplayDesign));
  parts_.Header->ShowMeter(meter.SMeterDbm, meter.SMeterHeldDbm, known, known ? reading : QString());
}

void PanView::ShowScaleChange() {
  ShowStrip();
  ShowOverlays();
  parts_.Scope->update();
}

void PanView::ShowAll() {
  ShowStrip();
  ShowHeader();
  ShowOverlays();
  parts_.Scope->update();
}

void PanView::ShowStrip() {
  const PanSettings& settings = parts_.State.Settings;
  shownRange_ = {settings.RefLevel, settings.RangeDivisor};
  RangePanelState state;
  state.RefLevel = settings.RefLevel;
  state.RangeDb = RangeDb(settings.RangeDivisor);
  state.DisplayMode = settings.DisplayMode;
  state.WaterfallSel = settings.WaterfallSel;
  state.Zoom = settings.Zoom;
  state.BackgroundPeakHold = settings.BackgroundPeakHold;
  state.OwnScale = parts_.Cycle.View().Link == nullptr;
  parts_.Strip->Show(state);
}

void PanView::ShowOverlays() {
  std::string info = InfoText(parts_.State, parts_.Cycle);
  if (parts_.Cycle.Backend() != nullptr) info += "   " + parts_.Tuning.WheelText().toStdString();
  parts_.Display.SetInfoText(std::move(info));
  if (!parts_.Cycle.Running()) {
    parts_.Display.SetStatus({}, 0, 0);
    parts_.Display.SetMarkers({});
    return;
  }
  ShowInset();
  parts_.Display.SetTransmitting(parts_.State.Radio.Transmitting);
  parts_.Display.SetMarkers(VfoMarkers(parts_.State.Radio));
}

void PanView::ShowInset() {
  RadioKit* source = parts_.Cycle.View().Way.Source;
  if (source == nullptr) {
    parts_.Display.SetStatus({}, 0, 0);
    return;
  }
  if (!inset_.Take(parts_.Time.Now())) return;
  const PlotMarker main = VfoMarkers(parts_.State.Radio).front();
  parts_.Display.SetStatus(source->Status(), std::min(main.FreqMHz, main.PassbandLowMHz),
                           std::max(main.FreqMHz, main.PassbandHighMHz));
}

void PanView::ShowRunState() {
  const bool running = parts_.Cycle.Running();
  parts_.Header->ShowRunning(running, parts_.Cycle.Starting());
  if (!running && !shownWarning_.empty()) parts_.Scope->ShowStatus({});
  // Said while it was looked for; the picture is for the band now. A radio's own news stay.
  if (running && parts_.Cycle.View().Link == nullptr) parts_.Scope->ShowStatus({});
  shownWarning_.clear();
  ShowWarning();
  ShowAll();
}

}  // namespace spectrino
