#include "display/PicturePrint.h"

#include <QFontMetrics>
#include <QPainter>
#include <chrono>
#include <cstdio>

#include "display/Colours.h"
#include "display/Overlays.h"
#include "state/FrequencyText.h"

namespace spectrino {
namespace {

using Utc = std::chrono::system_clock::time_point;

constexpr double kCaptionFont = 11;  // logical pixels
constexpr double kCaptionPad = 5;

/// "2026-11-23"
std::string DayText(Utc utc) {
  const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(utc)};
  char text[24];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
  return text;
}

/// "2026-11-23   Waterfall 12:27:00 to 12:31:05 UTC   14.050.000 to 14.098.000 MHz, 48 kHz wide"
std::string CaptionText(PanDisplay& display) {
  const FrameGeometry& shown = display.Geometry();
  const WaterfallImage& waterfall = display.Waterfall();
  std::string text;
  if (const auto top = waterfall.RowAt(0)) {
    const auto bottom = waterfall.RowAt(waterfall.RowCount() - 1);
    text = DayText(top->TakenUtc) + "   Waterfall " + SecondText(bottom->TakenUtc) + " to " +
           SecondText(top->TakenUtc) + " UTC   ";
    // The trace goes on while an earlier piece of the waterfall is shown.
    const auto newest = display.Past().NewestUtc();
    if (!display.Past().Live() && newest) text += "Spectrum " + SecondText(*newest) + " UTC   ";
  }
  if (!shown.Valid()) return text;
  char span[32];
  std::snprintf(span, sizeof span, "%.6g kHz wide", shown.ShownSpanHz() / 1000);
  const bool known = shown.LeftMHz > 0;
  return text +
         (known ? FrequencyText(shown.LeftMHz) + " to " + FrequencyText(shown.RightMHz) + " MHz, " : "") +
         span;
}

}  // namespace

QImage PrintPicture(PanDisplay& display) {
  const PlotLayout& layout = display.Layout();
  if (layout.Width <= 0 || layout.Height <= 0) return {};
  const QFont font = DisplayFont(kCaptionFont, layout.Scale);
  const QFontMetrics metrics(font);
  const int pad = layout.Px(kCaptionPad);
  const int captionHeight = metrics.height() + 2 * pad;
  QImage image(layout.Width, captionHeight + layout.Height, QImage::Format_RGB32);
  image.fill(display.BackgroundColour());
  display.SetHover(std::nullopt);
  display.Past().HideLabel(true);
  {
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(status_colour::kBright));
    const QString caption = QString::fromStdString(CaptionText(display));
    painter.drawText(pad, pad + metrics.ascent(),
                     metrics.elidedText(caption, Qt::ElideRight, layout.Width - 2 * pad));
    painter.translate(0, captionHeight);
    display.Paint(painter);
  }
  display.Past().HideLabel(false);
  return image;
}

std::string PictureName(const PanDisplay& display) {
  std::string name = "waterfall";
  if (const auto top = display.Waterfall().RowAt(0)) {
    std::string time = SecondText(top->TakenUtc);
    std::erase(time, ':');
    name += "-" + DayText(top->TakenUtc) + "-" + time + "Z";
  }
  const FrameGeometry& shown = display.Geometry();
  if (shown.Valid() && shown.LeftMHz > 0) {
    char middle[32];
    std::snprintf(middle, sizeof middle, "-%.3fMHz", (shown.LeftMHz + shown.RightMHz) / 2);
    name += middle;
  }
  return name + ".png";
}

}  // namespace spectrino
