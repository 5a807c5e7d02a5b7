// Texts over the plot: the pointer's frequency and level, the information line, the waterfall's times.
// Draws what it is given; finds nothing out by itself.
#pragma once

#include <QFont>
#include <QRect>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "display/PlotLayout.h"
#include "display/TextCache.h"
#include "display/WaterfallImage.h"
#include "state/SpectrumLine.h"

namespace spectrino {

/// What is known of the place under the pointer.
struct HoverPlace {
  double FreqMHz = 0;
  bool FrequencyKnown = false;
  float Level = kUndrawnLevel;  ///< kUndrawnLevel: none
  bool InDb = true;             ///< the level is dBm, not the height of a radio's own scope
  std::optional<std::chrono::system_clock::time_point> TakenUtc;  ///< of a line of the waterfall
  std::string Segment{};                                          ///< of the band plan
};

/// "14.084.150  -71 dBm  12:34:56Z", "14.020.000  -71 dBm  20 m CW"; while no frequency is known the offset
/// from the centre, "+1.25K  -71 dBm". What is not known is left out.
[[nodiscard]] std::string HoverText(const HoverPlace& place);

/// The pointer's line, device pixels: rows Top..Bottom-1.
struct HoverLine {
  int X = 0;
  int Top = 0;
  int Bottom = 0;
  QRect Within{};  ///< the mini-pan whose picture it stands in; empty: the plot's

  bool operator==(const HoverLine&) const = default;
};

/// Dashed, its text beside it: at the top of a mini-pan that has the room, else in the plot's own strip;
/// right of it, left where it would leave mini-pan or plot. Returns the text's box.
QRect DrawHover(const OverlayPen& pen, const HoverLine& line, const std::string& text, const QFont& font);
/// The strip in which every hover text stands.
[[nodiscard]] QRect HoverStrip(const PlotLayout& layout, int textHeight);

/// Top left, shortened with an ellipsis where the plot is too narrow. Returns its box.
QRect DrawInfo(const OverlayPen& pen, const std::string& text, const QFont& font);

/// Lays a veil over all that was drawn and writes into the plot when its last line was taken, "Last line
/// 14:03:22 UTC": what shows is no longer so. Returns the text's box.
QRect DrawStopped(const OverlayPen& pen, std::chrono::system_clock::time_point lastLineUtc,
                  const QFont& font);

/// A time in the waterfall's label column.
struct TimeMark {
  int Y = 0;         ///< rows below the newest line
  std::string Text;  ///< "21:25Z"

  bool operator==(const TimeMark&) const = default;
};

/// The newest line's time, and below it each row where an older minute begins; those closer than minDistance
/// rows to the one above are left out.
[[nodiscard]] std::vector<TimeMark> TimeMarks(const WaterfallImage& waterfall, int minDistance);

/// Draws them in the label column; one that would be cut at the bottom is left out.
void DrawTimes(const OverlayPen& pen, const std::vector<TimeMark>& marks, const QFont& font);

}  // namespace spectrino
