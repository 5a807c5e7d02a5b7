// What is under the pointer: the frequency there, the level, the time, a mini-pan's passband. Where a
// mini-pan hides the plot they are the mini-pan's. Answers for one place of the picture as it is now, and is
// not kept; draws and changes nothing.
#pragma once

#include <QPointF>
#include <optional>
#include <span>
#include <string>

#include "display/FilterGrips.h"
#include "display/FrameTraces.h"
#include "display/Overlays.h"
#include "display/PlotBasis.h"
#include "display/StatusInset.h"
#include "display/WaterfallImage.h"

namespace spectrino {

/// The labels beside and below the plot.
enum class PlotAxis { None, Frequency, Level };

class PlotPointer {
 public:
  /// at: device pixels of the picture, inside it or not. All parts outlive this.
  PlotPointer(QPointF at, PlotBasis& basis, const FrameTraces& traces, const WaterfallImage& waterfall,
              StatusInset& inset, std::span<const PlotMarker> markers)
      : at_(at), basis_(basis), traces_(traces), waterfall_(waterfall), inset_(inset), markers_(markers) {}

  /// Where a click tunes to, MHz: in plot or mini-pan, or in the waterfall to what stood there. 0 anywhere
  /// else, and while the radio's frequency is unknown.
  [[nodiscard]] double TuneFreqMHz() const;
  /// In the last 22 logical pixels, beside the plot.
  [[nodiscard]] bool InRightStrip() const;
  /// The row of frequency labels, the column of level labels beside the plot.
  [[nodiscard]] PlotAxis Axis() const;
  [[nodiscard]] MiniPanHit MiniPan() const { return inset_.MiniPanAt(at_, basis_); }
  /// A receiver's passband in the plot, where no mini-pan lies over it.
  [[nodiscard]] PlotFilterHit Filter() const;
  /// On what the status inset is taken elsewhere by.
  [[nodiscard]] bool OnInsetGrip() const { return inset_.GripAt(at_, basis_); }
  /// x in plot or waterfall; nothing beside them.
  [[nodiscard]] std::optional<int> Column() const;
  /// In plot, waterfall or a mini-pan, wherever that stands.
  [[nodiscard]] bool OnPicture() const;
  /// Where the pointer's line is drawn: over plot and waterfall, or within a mini-pan. Only OnPicture().
  [[nodiscard]] HoverLine Line() const;
  /// The level shown there, in plot, mini-pan or waterfall; kUndrawnLevel where there is none.
  [[nodiscard]] float Level() const;
  /// Frequency, level and the waterfall's time as the operator reads them. Only OnPicture().
  [[nodiscard]] std::string Text() const;

 private:
  [[nodiscard]] int WaterfallRow() const;

  QPointF at_;
  PlotBasis& basis_;
  const FrameTraces& traces_;
  const WaterfallImage& waterfall_;
  StatusInset& inset_;
  std::span<const PlotMarker> markers_;
};

}  // namespace spectrino
