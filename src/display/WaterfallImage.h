// The waterfall's memory: lines of levels with their frequencies and times, and their picture.
// Chooses no levels and no scale; each line keeps the colours of the scale that it was drawn with.
#pragma once

#include <QImage>
#include <QPoint>
#include <chrono>
#include <optional>
#include <span>
#include <vector>

class QPainter;

namespace spectrino {

struct WaterfallRow {
  double LeftMHz = 0;   ///< frequency at x = 0
  double RightMHz = 0;  ///< frequency at x = width
  std::chrono::system_clock::time_point Utc{};
  float BottomLevel = 0;  ///< level of colour index 0
  float TopLevel = 0;     ///< level of colour index 256
  bool IsDimmed = false;  ///< half brightness: the radio was transmitting
};

class WaterfallImage {
 public:
  /// Device pixels. Lines held before are laid out anew: the strongest level where columns merge, the nearest
  /// one where they spread; the oldest fall off. Memory: 8 bytes a pixel. The only call that allocates.
  void Resize(int width, int height);

  /// One level per column (kUndrawnLevel: no value, drawn like index 0). Becomes the top line, all others
  /// move down by one, the oldest falls off.
  void AddLine(std::span<const float> levels, const WaterfallRow& row);
  void Clear();

  [[nodiscard]] int Width() const { return width_; }
  [[nodiscard]] int Height() const { return height_; }
  /// Lines held, at most Height().
  [[nodiscard]] int LineCount() const { return lineCount_; }
  /// The line at y, 0 the newest; nothing below the oldest.
  [[nodiscard]] std::optional<WaterfallRow> RowAt(int y) const;

  /// Draws the lines held with the newest at topLeft; what lies below the oldest stays as it is.
  void Draw(QPainter& painter, QPoint topLeft) const;

 private:
  [[nodiscard]] int SlotOf(int y) const { return (newest_ + y) % height_; }
  [[nodiscard]] std::span<float> LevelsOf(int slot);
  void PaintSlot(int slot);

  int width_ = 0;
  int height_ = 0;
  int newest_ = 0;  ///< slot of the top line; older ones follow, around the end
  int lineCount_ = 0;
  std::vector<float> levels_;       ///< by slot and column
  std::vector<WaterfallRow> rows_;  ///< by slot
  QImage picture_;                  ///< by slot
};

/// Columns of one width laid on another: the strongest where several fall into one, else the nearest.
void ResampleColumns(std::span<const float> from, std::span<float> to);

}  // namespace spectrino
