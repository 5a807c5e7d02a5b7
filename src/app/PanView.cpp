#include "app/PanView.h"

#include <algorithm>

#include "app/PanTexts.h"
#include "app/VfoMarkers.h"
#include "display/SMeterText.h"
#include "state/FrequencyText.h"

namespace spectrino {

using namespace std::chrono_literals;

namespace {

constexpr const char* kNoReading = "--";

VfoReadings ReadingsOf(const RadioState& radio) {
  VfoReadings shown{.Frequency = QString::fromStdString(FrequencyText(radio.MainFreqMHz)),
                    .Mode = ModeText(radio.RadioMode)};
  if (radio.SubFreqMHz > 0) shown.SubFrequency = QString::fromStdString(FrequencyText(radio.SubFreqMHz));
  const double offsetKHz = (radio.SubFreqMHz - radio.MainFreqMHz) * 1000;
  const bool bothTold = radio.MainFreqMHz > 0 && radio.SubFreqMHz > 0;
  if (radio.SplitOn != 0 && bothTold)
    shown.Split = QString("SPLIT %1%2k").arg(offsetKHz > 0 ? "+" : "").arg(offsetKHz, 0, 'f', 2);
  else if (radio.SplitOn != 0)
    shown.Split = QString("SPLIT ") + kNoReading;
  return shown;
}

/// What the radio told last is not shown as if it still were so; what it did not tell is not shown at all.
VfoReadings DashedReadings(const RadioState& radio) {
  const QString noFrequency = QString::fromStdString(FrequencyText(0));
  VfoReadings shown = ReadingsOf(radio);
  shown.Frequency = noFrequency;
  if (!shown.Mode.isEmpty()) shown.Mode = kNoReading;
  if (!shown.SubFrequency.isEmpty()) shown.SubFrequency = noFrequency;
  if (!shown.Split.isEmpty()) shown.Split = QString("SPLIT ") + kNoReading;
  return shown;
}

}  // namespace

PanView::PanView(const Parts& parts)
    : parts_(parts), idle_(100ms), look_(100ms), panel_(100ms), inset_(60ms) {}

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
  options.Waterfall = {settings.WFPalette, settings.WFFloorDb, settings.WFContrast};
  options.Inset = static_cast<InsetPlace>(settings.InsetPlace);
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
  if (look_.Take(now)) ShowLinks();
  ShowPanel();
  ShowHeader();
  ShowOverlays();
  // A band change brings the band's own reference and range, and what follows the noise moves by itself.
  if (RangeShown() != shownRange_) ShowStrip();
  parts_.Scope->ShowNew(parts_.Cycle.View().Line.Arrived);
}

void PanView::ShowLinks() {
  LinkView& links = parts_.Links;
  links.Look();
  StatusLine& status = parts_.Scope->Status();
  if (const std::string news = links.TakeNews(); !news.empty()) {
    const QString spoken = QString::fromStdString(news);
    status.Name(spoken);
    parts_.Scope->Announce(spoken);
  }
  const QString text = QString::fromStdString(links.Text());
  const QString host = parts_.Cycle.HostMissing() ? "Castelon not found" : QString();
  status.Show(StatusLine::Rank::Health, links.OnlyLinesMissing() ? QString() : text);
  status.Show(StatusLine::Rank::Standing, links.OnlyLinesMissing() ? text : host);
  // A muted input or a volume that bends the levels: said while it lasts.
  status.Show(StatusLine::Rank::Warning, QString::fromStdString(parts_.Cycle.Warning()));
  parts_.Display.SetStopped(links.StoppedAt());
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
  VfoPanel& vfos = parts_.Header->Vfos();
  const bool asks = parts_.Links.Backend() != nullptr;
  vfos.AllowEntry(asks, asks && parts_.Cycle.View().Way.Traits.HasVfoB);
  vfos.Show(parts_.Links.RadioStale() ? DashedReadings(radio) : ReadingsOf(radio));
  ShowMeter();
}

void PanView::ShowMeter() {
  const Readings& meter = parts_.Cycle.Frames().Meter();
  if (parts_.Links.RadioStale() || parts_.Links.StoppedAt()) {
    parts_.Header->ShowMeter(meter.SMeterDbm, meter.SMeterHeldDbm, false, kNoReading);
    return;
  }
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

std::pair<int, int> PanView::RangeShown() const {
  return {parts_.State.Settings.RefLevel, ShownRangeDb(parts_.State, parts_.Cycle)};
}

void PanView::ShowStrip() {
  const PanSettings& settings = parts_.State.Settings;
  shownRange_ = RangeShown();
  RangePanelState state;
  state.AutoLevel = settings.AutoLevel;
  state.RefLevel = settings.RefLevel;
  state.RangeDb = shownRange_.second;
  state.WFFloorDb = settings.WFFloorDb;
  state.WFContrast = settings.WFContrast;
  state.DisplayMode = settings.DisplayMode;
  state.WaterfallSel = settings.WaterfallSel;
  state.Zoom = settings.Zoom;
  state.BackgroundPeakHold = settings.BackgroundPeakHold;
  const bool on = parts_.Cycle.Running() || parts_.Cycle.Starting();
  state.OwnScale = on ? parts_.Cycle.View().Link == nullptr : !IsRadio(settings.Source.Id.Kind);
  parts_.Strip->Show(state);
}

void PanView::ShowOverlays() {
  std::string info = InfoText(parts_.State, parts_.Cycle);
  if (parts_.Links.Backend() != nullptr) info += "   " + parts_.Tuning.WheelText().toStdString();
  parts_.Display.SetInfoText(std::move(info));
  if (!parts_.Cycle.Running()) {
    parts_.Display.SetStatus({}, 0, 0);
    parts_.Display.SetMarkers({});
    return;
  }
  ShowInset();
  const bool stale = parts_.Links.RadioStale();
  parts_.Display.SetTransmitting(!stale && parts_.State.Radio.Transmitting);
  // Where a radio was that is no longer heard is not where it is.
  std::vector<PlotMarker> markers = stale ? std::vector<PlotMarker>() : VfoMarkers(parts_.State.Radio);
  parts_.Tuning.ShowHeldFilter(markers);
  parts_.Display.SetMarkers(markers);
}

void PanView::ShowInset() {
  RadioKit* source = parts_.Cycle.View().Way.Source;
  if (source == nullptr) {
    parts_.Display.SetStatus({}, 0, 0);
    return;
  }
  if (!inset_.Take(parts_.Time.Now())) return;
  const PlotMarker main = VfoMarkers(parts_.State.Radio).front();
  StatusArea area = source->Status();
  // Of the whole line: a zoomed plot has ends of its own, one without a line has none yet.
  const ScaleState& scale = parts_.Cycle.Scale().State();
  if (scale.Zoomed || !scale.Geometry.Valid()) area.ScaleLeft = area.ScaleRight = {};
  parts_.Display.SetStatus(std::move(area), std::min(main.FreqMHz, main.PassbandLowMHz),
                           std::max(main.FreqMHz, main.PassbandHighMHz));
}

void PanView::ShowRunState() {
  const bool running = parts_.Cycle.Running();
  parts_.Header->ShowRunning(running, parts_.Cycle.Starting());
  parts_.Links.RunChanged();
  ShowLinks();
  ShowAll();
}

}  // namespace spectrino
