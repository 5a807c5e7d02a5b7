// Lines of a slow waterfall: so many become one row, by their maximum or their average.
#pragma once

#include <span>
#include <vector>

namespace spectrino {

class LineJoin {
 public:
  /// lines: 1 and more to a row. Those of the row under way are counted anew.
  void Set(int lines, bool average);
  /// The next line begins a row: it stands elsewhere, or nothing before it is known.
  void Restart() { count_ = 0; }
  /// The levels of the row so far, this line in it. Until the next call; with one line to a row they are the
  /// line's own. kUndrawnLevel joins nothing.
  [[nodiscard]] std::span<const float> Add(std::span<const float> levels);
  /// The last line began a row.
  [[nodiscard]] bool Began() const { return count_ <= 1; }

 private:
  int lines_ = 1;
  bool average_ = false;
  int count_ = 0;  ///< lines in the row
  std::vector<float> row_;
};

}  // namespace spectrino
