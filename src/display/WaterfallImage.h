// The waterfall: one line of colours per frame, newest on top, and the levels behind them.
// Takes levels per pixel column; which levels those are and where the picture stands is decided elsewhere.
#pragma once

#include <QImage>
#include <QPainter>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "state/ScaleState.h"

namespace spectrino {

/// What a line of the waterfall knows of itself.
struct WaterfallRow {
  double LeftMHz = 0;   ///< frequency at x = 0 when the line was taken
  double RightMHz = 0;  ///< frequency at the picture's width
  std::chrono::system_clock::time_point TakenUtc{};
  float BottomLevel = 0;  ///< its colours run from here
  float TopLevel = 0;     ///< to here
  float UnitsPerDb = 1;   ///< of its levels
  bool Dimmed = false;    ///< half brightness: the radio was transmitting
};

/// How all lines are coloured.
struct WaterfallLook {
  int Palette = 0;
  int FloorDb = 0;            ///< the darkest level lies so much above a line's BottomLevel
  int ContrastPercent = 100;  ///< a line's range divided by it has all colours; above 0

  bool operator==(const WaterfallLook&) const = default;
};

class WaterfallImage {
 public:
  /// Device pixels. What is held is laid out again: columns by the nearest one, rows as they are, those that
  /// no longer fit are forgotten. Memory is taken here and nowhere else: ten bytes a pixel and 48 a row.
  void Resize(int width, int height);
  /// Colour where no line has been yet.
  void SetEmptyColour(QRgb colour);
  /// With follow on, older lines stand where their frequencies are in the newest line's range; off, they
  /// scroll straight down.
  void SetFollow(bool follow);
  /// The lines that are held are coloured anew.
  void SetLook(const WaterfallLook& look);
  void Clear();

  /// A new line on top. levels: one per column, as many as the picture is wide.
  void AddLine(std::span<const float> levels, const WaterfallRow& row);

  /// Draws it with its top left corner there, in the painter's pixels.
  void Draw(QPainter& painter, int left, int top) const;

  [[nodiscard]] int Width() const { return picture_.width(); }
  [[nodiscard]] int Height() const { return picture_.height(); }
  /// Lines held, at most Height().
  [[nodiscard]] int RowCount() const { return count_; }
  /// The line y pixels below the newest; nothing where no line has been yet.
  [[nodiscard]] std::optional<WaterfallRow> RowAt(int y) const;
  /// From its darkest to its brightest colour.
  [[nodiscard]] LevelRange ColourRange(const WaterfallRow& row) const;
  /// Level at a column as it is shown; kUndrawnLevel where there is none.
  [[nodiscard]] float LevelAt(int x, int y) const;
  /// Frequency at a column as it is shown, 0 where no line has been yet.
  [[nodiscard]] double FrequencyAt(double x, int y) const;

 private:
  [[nodiscard]] int SlotAt(int y) const;
  [[nodiscard]] std::span<const float> LevelsOf(int slot) const;
  /// Which of a row's own columns are shown where: column Start + x * Step, for x from First up to End. In
  /// 32.32 fixed point: a retuning dial maps every pixel of the picture anew.
  struct RowMap {
    std::int64_t Start = 0;
    std::int64_t Step = 0;
    int First = 0;
    int End = 0;
    [[nodiscard]] int Source(int x) const { return static_cast<int>((Start + x * Step) >> 32); }
  };
  [[nodiscard]] RowMap MapOf(const WaterfallRow& row) const;
  void ColourSlot(int slot);
  void PaintSlot(int slot);
  void PaintAll();

  QImage picture_;  ///< a ring of rows: the newest at head_, older ones below it, then from row 0 on
  std::vector<float> levels_;           ///< the same ring, Width() levels a row
  std::vector<std::uint16_t> colours_;  ///< the same ring: index of each level's colour
  std::vector<WaterfallRow> rows_;      ///< the same ring
  int head_ = 0;
  int count_ = 0;
  QRgb emptyColour_ = 0xFF000000U;
  bool follow_ = false;
  WaterfallLook look_;
  double leftMHz_ = 0;  ///< range of the newest line, which older ones follow
  double rightMHz_ = 0;
};

}  // namespace spectrino
