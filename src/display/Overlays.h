// What is drawn over the trace: markers with their flags, hover line, information text, times.
// Knows no radio; it is told frequencies, colours and texts.
#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "display/Colours.h"
#include "display/PlotLayout.h"
#include "display/ScalePainter.h"
#include "state/FrameGeometry.h"

class QPainter;

namespace spectrino {

class WaterfallImage;

/// A VFO in the plot. Colours are places in the colour table.
struct PlotMarker {
  double FreqMHz = 0;
  double PassbandLowMHz = 0;  ///< both 0: no filter known
  double PassbandHighMHz = 0;
  int ColourIndex = static_cast<int>(PlotColour::Mark);
  int FilterColourIndex = static_cast<int>(PlotColour::Filter);
  std::string Label;  ///< on the flag: "A", "B"

  bool operator==(const PlotMarker&) const = default;
};

/// The passbands in view, as column ranges.
[[nodiscard]] std::vector<PlotShade> PassbandShades(std::span<const PlotMarker> markers,
                                                    const FrameGeometry& geometry, const PlotLayout& layout,
                                                    const DisplayColours& colours);

struct MarkerFlag {
  int Column = 0;  ///< of the marker's line
  QRect Area;      ///< of the flag, beside the line
};

/// Where the flags of the markers in view stand, by index in markers; nothing for one out of view. No flag
/// leaves the plot or covers another.
[[nodiscard]] std::vector<std::optional<MarkerFlag>> PlaceFlags(std::span<const PlotMarker> markers,
                                                                const FrameGeometry& geometry,
                                                                const PlotLayout& layout);

/// "14.084.150  -71 dBm"; while no frequency is known "+1.25K  -71 dBm" from offsetHz. Without a level the
/// frequency alone. No frequency below 0.00001 MHz: "".
[[nodiscard]] std::string HoverText(double freqMHz, bool frequencyKnown, double offsetHz,
                                    std::optional<float> levelDbm);

/// area moved down until it meets none of taken.
[[nodiscard]] QRect MoveBelow(QRect area, std::span<const QRect> taken);

struct TimeMark {
  int Y = 0;  ///< line of the waterfall, 0 the newest
  std::string Text;
};

/// "21:25Z" at the newest line and at each first line of a minute; marks closer than distance lines to the
/// one above are left out.
[[nodiscard]] std::vector<TimeMark> TimeMarks(const WaterfallImage& waterfall, int distance);

/// Draws on pictures in device pixels, with one layout, colour table and font.
class OverlayPainter {
 public:
  OverlayPainter(QPainter& painter, const PlotLayout& layout, const DisplayColours& colours,
                 const QFont& font);

  void DrawMarkers(std::span<const PlotMarker> markers, std::span<const std::optional<MarkerFlag>> flags);
  /// Top left, below what is taken, cut with an ellipsis where the plot ends. Returns what it covers.
  QRect DrawInfo(std::string_view text, std::span<const QRect> taken);
  /// The part of the line between two rows, bottom excluded.
  void DrawHoverLine(int column, int top, int bottom);
  /// Beside the hover line, left of it where it would leave the plot.
  void DrawHoverText(int column, std::string_view text, std::span<const QRect> taken);
  /// In the label column.
  void DrawTimes(std::span<const TimeMark> marks);

 private:
  void DrawText(const QRect& area, const QString& text, PlotColour colour);

  QPainter& painter_;
  const PlotLayout& layout_;
  const DisplayColours& colours_;
  QFont font_;
};

}  // namespace spectrino
