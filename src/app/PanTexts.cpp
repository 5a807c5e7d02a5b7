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

std::string InfoText(const Session& session, const RunCycle& cycle, const std::string& radioModel) {
  const double spanKHz = cycle.Scale().Geometry.ShownSpanHz() / 1000;
  QString text = QString("Span %1 kHz").arg(spanKHz, 0, 'g', 5);
  if (RadioSourceActive(session.Radio)) {
    text += "   " + QString::fromStdString(radioModel);
  } else {
    const ZoomPlan& plan = cycle.Plan();
    text += QString("   Range %1 dB   FFT %2 (%3 Hz)")
                .arg(RangeDb(session.Settings.RangeDivisor))
                .arg(1 << plan.FftBits)
                .arg(static_cast<double>(plan.SampleRate) / (1 << plan.FftBits), 0, 'f', 1);
  }
  return text.toStdString();
}

}  // namespace spectrino
