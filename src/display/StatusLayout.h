// Where the parts of the radio's status area stand: an inset beside the tuned signal, in two where it is low.
// Places only; drawing is StatusPainter's.
#pragma once

#include <QFont>
#include <QRect>
#include <vector>

#include "display/PlotLayout.h"
#include "display/TextCache.h"
#include "state/FrameGeometry.h"
#include "state/StatusArea.h"

namespace spectrino {

struct StatusWord {
  std::string Text;
  QRgb Colour = 0;
  int X = 0;  ///< from the left edge of the inset's texts
};
using StatusRow = std::vector<StatusWord>;

struct MiniPanPlace {
  QRect Box;  ///< empty: there is no room for it
  QRect Meter;
  QRect Trace;
  QRect History;          ///< empty: no room
  bool Labelled = false;  ///< names under the meter's ticks
};

/// Of the tuned signal.
enum class InsetSide { None, Left, Right };

struct StatusPlaces {
  InsetSide Side = InsetSide::None;  ///< of the texts; None: there is no inset
  QRect Texts;
  std::vector<StatusRow> Rows;
  QRect Grip;  ///< by which the inset is taken elsewhere
  MiniPanPlace Main;
  MiniPanPlace Sub;

  /// All that the inset covers; empty when there is no room for one.
  [[nodiscard]] QRect Bounds() const { return Texts.united(Grip).united(Main.Box).united(Sub.Box); }
};

/// The texts stand on the side with more room beside the tuned signal, no wider than that room, the mini-pans
/// below them; on the side where they stood before (last) as long as nothing there narrows them, so that
/// tuning about the middle does not make them hop. In a low plot the mini-pans stand on the signal's other
/// side. A text that finds no room in its row begins the next one. lowMHz, highMHz: the tuned signal, which
/// nothing hides.
[[nodiscard]] StatusPlaces PlaceStatus(const PlotLayout& layout, const FrameGeometry& geometry, double lowMHz,
                                       double highMHz, const StatusArea& area, TextCache& texts,
                                       const QFont& font, InsetSide last = InsetSide::None);

/// x of a frequency in a mini-pan's trace, kept within it.
[[nodiscard]] double MiniPanX(const QRect& trace, const MiniPan& pan, double mhz);

}  // namespace spectrino
