// The waterfall's picture: the newest lines of the past, or a piece of it that the operator went back to, a
// row of pixels each. Keeps no levels: what is not drawn from the newest line is drawn from the past.
#pragma once

#include <QImage>
#include <QPainter>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "dsp/LinePast.h"
#include "state/ScaleState.h"

namespace spectrino {

/// What a line of the waterfall knows of itself.
struct WaterfallRow {
  double LeftMHz = 0;   ///< frequency at x = 0 when the line was taken
  double RightMHz = 0;  ///< frequency at the picture's width
  std::chrono::system_clock::time_point TakenUtc{};
  float BottomLevel = 0;     ///< its colours run from here
  float TopLevel = 0;        ///< to here
  float UnitsPerDb = 1;      ///< of its levels
  bool Dimmed = false;       ///< half brightness: the radio was transmitting
  std::uint64_t Number = 0;  ///< its line in the past
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
  /// The past outlives this.
  explicit WaterfallImage(const LinePast& past) : past_(past) {}

  /// Device pixels; draws the rows anew. Memory is taken here and nowhere else: four bytes a pixel and 56 a
  /// row.
  void Resize(int width, int height);
  /// Colour where no line has been yet.
  void SetEmptyColour(QRgb colour);
  /// With follow on, lines stand where their frequencies are in the range that was given to SetRange or came
  /// with the newest line; off, they scroll straight down.
  void SetFollow(bool follow);
  /// The lines that are held are coloured anew.
  void SetLook(const WaterfallLook& look);
  /// The scale shows this range now. All rows are drawn anew if it is another one and they follow it.
  void SetRange(double leftMHz, double rightMHz);
  /// After the past was cleared.
  void Clear();

  /// The past has a new line, or another newest one with the same number. On top, unless an earlier piece is
  /// shown: then the picture stands. levels: one per column, as many as the picture is wide; of the line's
  /// points, which may be more than the past keeps.
  void AddLine(std::span<const float> levels, const WaterfallRow& row);

  /// So many rows back into the past, or towards now where negative; as far as it goes. Returns whether the
  /// picture changed.
  bool ScrollBy(int rows);
  void ShowNow();
  /// The newest line is on top.
  [[nodiscard]] bool Live() const { return !top_; }

  /// Draws it with its top left corner there, in the painter's pixels.
  void Draw(QPainter& painter, int left, int top) const;

  [[nodiscard]] int Width() const { return picture_.width(); }
  [[nodiscard]] int Height() const { return picture_.height(); }
  /// Lines shown, at most Height().
  [[nodiscard]] int RowCount() const { return count_; }
  /// The line y pixels below the top one; nothing where no line has been yet.
  [[nodiscard]] std::optional<WaterfallRow> RowAt(int y) const;
  /// From its darkest to its brightest colour.
  [[nodiscard]] LevelRange ColourRange(const WaterfallRow& row) const;
  /// Level at a column as the past has it; kUndrawnLevel where there is none.
  [[nodiscard]] float LevelAt(int x, int y) const;
  /// Frequency at a column as it is shown, 0 where no line has been yet.
  [[nodiscard]] double FrequencyAt(double x, int y) const;

 private:
  using CodeColours = std::array<QRgb, 256>;

  [[nodiscard]] int SlotAt(int y) const;
  [[nodiscard]] QRgb* PixelsOf(int slot);
  /// From x = 0 on, in bytes of the line.
  [[nodiscard]] CellRange Resample(const KeptLine& line, double firstX, std::span<std::uint8_t> cells) const;
  void PaintNewest(std::span<const float> levels);
  void PaintFromPast(int slot, const KeptLine& line);
  void PaintAll();
  const CodeColours& ColoursOf(const KeptLine& line);

  const LinePast& past_;
  QImage picture_;  ///< a ring of rows: the top one at head_, older ones below it, then from row 0 on
  std::vector<WaterfallRow> rows_;   ///< the same ring
  std::vector<std::uint8_t> cells_;  ///< a row's levels, as bytes
  int head_ = 0;
  int count_ = 0;
  std::optional<std::uint64_t> top_;  ///< line on top while an earlier piece is shown
  QRgb emptyColour_ = 0xFF000000U;
  bool follow_ = false;
  WaterfallLook look_;
  double leftMHz_ = 0;  ///< what lines follow
  double rightMHz_ = 0;

  struct ColourKey {
    LevelCodes Codes;
    LevelRange Range;
    bool Dimmed = false;
    bool operator==(const ColourKey&) const = default;
  };
  std::optional<ColourKey> coloured_;  ///< what codeColours_ is for
  CodeColours codeColours_{};
};

}  // namespace spectrino
