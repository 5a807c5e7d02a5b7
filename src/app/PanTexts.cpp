#include "app/PanTexts.h"

#include "dsp/LevelScale.h"

namespace spectrino {

QString ModeText(int radioMode) {
  switch (radioMode) {
    case mode::kLsb:
      return "LSB";
    case mode::kUsb:
      return "USB";
    case mode::kCw:
      return "CW";
    case mode::kFm:
      return "FM";
    case mode::kAm:
      return "AM";
    case mode::kData:
      return "DATA";
    case mode::kCwReverse:
      return "CW-R";
    case mode::kDataReverse:
      return "DATA-R";
    case mode::kUnknown:
      return {};
    default:
      return "?";
  }
}

namespace {

/// What is wrong with a link; nothing while it is as it should be.
QString HealthText(LinkState state) {
  switch (state) {
    case LinkState::Connecting:
      return " (connecting)";
    case LinkState::Silent:
      return " (silent)";
    case LinkState::Lost:
      return " (lost)";
    case LinkState::Closed:
    case LinkState::Live:
      return {};
  }
  return {};
}

}  // namespace

int ShownRangeDb(const Session& session, RunCycle& cycle) {
  if (!session.Settings.AutoLevel) return RangeDb(session.Settings.RangeDivisor);
  const LevelScale& levels = cycle.Scale().State().Levels;
  return qRound((levels.TopLevel - levels.BottomLevel) / (levels.InDb ? 1 : LevelScale::kHeightsPerDb));
}

std::string InfoText(const Session& session, RunCycle& cycle) {
  const FrameGeometry& geometry = cycle.Scale().State().Geometry;
  QString text;
  if (geometry.Valid()) text = QString("Span %1 kHz   ").arg(geometry.ShownSpanHz() / 1000, 0, 'g', 5);
  const bool running = cycle.Running();
  const ChosenSource& chosen = session.Settings.Source;
  if (running ? session.Radio.OwnSpectrum : IsRadio(chosen.Id.Kind)) {
    const RadioKit* source = running ? cycle.View().Way.Source : nullptr;
    const std::string model = source != nullptr ? source->Model() : std::string();
    const std::string& name = running ? cycle.View().SourceName : chosen.Name;
    text += QString::fromStdString(model.empty() ? name : model);
    text += HealthText(cycle.Health().State);
  } else {
    const ZoomPlan& plan = cycle.View().Plan;
    text += QString("Range %1 dB   FFT %2 (%3 Hz)")
                .arg(ShownRangeDb(session, cycle))
                .arg(1 << plan.FftBits)
                .arg(static_cast<double>(plan.SampleRate) / (1 << plan.FftBits), 0, 'f', 1);
  }
  return text.toStdString();
}

}  // namespace spectrino
