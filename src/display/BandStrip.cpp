#include "display/BandStrip.h"

#include <QFontMetrics>
#include <algorithm>
#include <array>
#include <cmath>

#include "display/Colours.h"
#include "display/ScalePainter.h"

namespace spectrino {
namespace {

// Logical pixels.
constexpr int kRoomyPicture = 240;
constexpr double kNamedStrip = 12;
constexpr double kThinStrip = 4;
constexpr double kNameFont = 9;
constexpr double kNameRoom = 3;

/// Less than the trace's brightness, enough for black letters.
constexpr double kSegmentOpacity = 0.75;
constexpr QRgb kNoUse = 0xFF59626E;
constexpr QRgb kOutOfBand = 0xFF8C2A22;

// Okabe and Ito, "Color Universal Design" (2008): told apart by every kind of colour vision.
constexpr std::array<QRgb, 7> kColours{
    0xFFE69F00,  // CW: orange
    0xFF56B4E9,  // Digital: sky blue
    0xFF009E73,  // Phone: bluish green
    0xFF9AA5B1,  // All: grey
    0xFFCC79A7,  // Beacons: reddish purple
    0xFF3F8FC4,  // Satellite: blue, lighter than theirs for the dark ground
    0xFFF0E442,  // FM: yellow
};

/// One drawing of the strip.
class Strip {
 public:
  Strip(QPainter& painter, const PlotLayout& layout, const FrameGeometry& geometry, QRgb background)
      : painter_(painter), layout_(layout), geometry_(geometry), background_(background) {
    painter_.setFont(DisplayFont(kNameFont, layout.Scale));
  }

  void OutOfBand() {
    const int top = layout_.PlotBottom();
    const int middle = top + layout_.StripHeight / 2;
    painter_.fillRect(0, middle, layout_.PlotWidth, layout_.LineWidth(), QColor(kOutOfBand));
    QColor hatch(kOutOfBand);
    hatch.setAlphaF(0.55F);
    const int step = layout_.Px(6);
    const int height = layout_.StripHeight;
    painter_.save();
    painter_.setClipRect(0, top, layout_.PlotWidth, height);
    painter_.setPen(QPen(hatch, layout_.LineWidth()));
    for (int x = -height; x < layout_.PlotWidth; x += step)
      painter_.drawLine(x, top + height, x + height, top);
    painter_.restore();
  }

  void Fill(double lowMHz, double highMHz, QRgb colour, const QString& name) {
    const auto xOf = [this](double mhz) {
      return static_cast<int>(
          std::lround(std::clamp(geometry_.FrequencyToPixel(mhz), 0.0, double(layout_.PlotWidth))));
    };
    const int left = xOf(lowMHz);
    // A beacon's kilohertz shows at every zoom.
    const int width = std::min(std::max(xOf(highMHz) - left, layout_.LineWidth()), layout_.PlotWidth - left);
    if (width <= 0 || highMHz <= geometry_.LeftMHz || lowMHz >= geometry_.RightMHz) return;
    const QRect box(left, layout_.PlotBottom(), width, layout_.StripHeight);
    painter_.fillRect(box, QColor(Mix(background_, colour, kSegmentOpacity)));
    // Its beginning, where a neighbour may be of the same colour.
    painter_.fillRect(left, box.top(), layout_.LineWidth(), box.height(), QColor(background_));
    const QFontMetrics metrics(painter_.font());
    if (name.isEmpty() || box.height() < metrics.ascent()) return;
    if (metrics.horizontalAdvance(name) + 2 * layout_.Px(kNameRoom) > width) return;
    painter_.setPen(Qt::black);
    painter_.drawText(box, Qt::AlignCenter, name);
  }

 private:
  QPainter& painter_;
  const PlotLayout& layout_;
  const FrameGeometry& geometry_;
  QRgb background_;
};

}  // namespace

QRgb BandUseColour(BandUse use) {
  return kColours[static_cast<std::size_t>(use)];
}

int BandStripHeight(int logicalHeight, double scale) {
  return static_cast<int>(std::lround((logicalHeight < kRoomyPicture ? kThinStrip : kNamedStrip) * scale));
}

void DrawBandStrip(QPainter& painter, const PlotLayout& layout, const ScaleState& scale, const BandPlan& plan,
                   QRgb background) {
  if (plan.Empty() || !scale.FrequencyKnown || layout.StripHeight <= 0 || layout.PlotHeight <= 0) return;
  FrameGeometry geometry = scale.Geometry;
  geometry.PlotWidth = layout.PlotWidth;
  if (!geometry.Valid()) return;
  Strip strip(painter, layout, geometry, background);
  strip.OutOfBand();
  for (const PlannedBand& band : plan.Bands()) {
    if (band.HighMHz <= geometry.LeftMHz || band.LowMHz >= geometry.RightMHz) continue;
    strip.Fill(band.LowMHz, band.HighMHz, kNoUse, {});
    for (const BandSegment& segment : band.Segments) {
      const std::string_view name = BandUseText(segment.Use);
      strip.Fill(segment.LowMHz, segment.HighMHz, BandUseColour(segment.Use),
                 QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    }
  }
}

}  // namespace spectrino
