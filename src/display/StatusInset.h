// The radio's status area over the plot: what it shows, where it stands, and its picture.
// Where a part goes is StatusLayout's, how it looks StatusPainter's.
#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <QRegion>

#include "display/PlotBasis.h"
#include "display/StatusLayout.h"
#include "state/SpectrumLine.h"
#include "state/StatusArea.h"

namespace spectrino {

enum class MiniPanPart { None, Beside, LowEdge, HighEdge, Passband };

/// What of a mini-pan lies under a pixel. Part None: nothing, and the rest says nothing.
struct MiniPanHit {
  MiniPanPart Part = MiniPanPart::None;  ///< Beside: anywhere in it but the passband and its edges
  bool Sub = false;                      ///< the sub receiver's
  double FreqMHz = 0;                    ///< of the mini-pan, at that x
  float Level = kUndrawnLevel;           ///< of its newest line
  double HzPerPixel = 0;                 ///< device pixels
  QRect Picture;                         ///< its trace and history
};

/// Pixels are device pixels of the whole picture.
class StatusInset {
 public:
  /// An area that is not Shown draws nothing. lowMHz, highMHz: the tuned signal, which the inset must not
  /// hide. Returns whether what stands outside the inset changes as well: the span's texts.
  bool Set(StatusArea area, double lowMHz, double highMHz);
  [[nodiscard]] bool Shown() const { return area_.Shown; }
  /// Sizes, fonts or the geometry are others than before.
  void BasisMoved() { placesStale_ = true; }
  /// The colours are.
  void LookChanged() { pictureStale_ = true; }

  /// Draws the inset and the span's texts.
  void Paint(QPainter& painter, PlotBasis& basis);
  /// Where it was drawn since the last call and where it stands, if it was set or moved; else nothing. Asked
  /// for with every repaint, a whole one too: a place that is forgotten stays on the screen.
  [[nodiscard]] QRegion TakeChanged(PlotBasis& basis);
  [[nodiscard]] bool GripAt(QPointF at, PlotBasis& basis);
  /// Edges reach a few pixels to both sides; a narrow passband keeps its middle.
  [[nodiscard]] MiniPanHit MiniPanAt(QPointF at, PlotBasis& basis);

 private:
  const StatusPlaces& Places(PlotBasis& basis);

  StatusArea area_;
  double tunedLowMHz_ = 0;
  double tunedHighMHz_ = 0;
  StatusPlaces places_;
  QImage picture_;
  QRegion drawn_;  ///< where it may be on the screen
  bool placesStale_ = true;
  bool pictureStale_ = true;
  bool changed_ = false;
};

}  // namespace spectrino
