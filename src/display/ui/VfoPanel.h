// Both frequencies, the mode and the split of the header, and the line in which a frequency is typed.
// Shows and forwards; knows no radio.
#pragma once

#include <QColor>
#include <QLabel>
#include <QWidget>

#include "display/ui/DigitLabel.h"
#include "display/ui/FrequencyEntry.h"

namespace spectrino {

struct VfoReadings {
  QString Frequency = "---------";  ///< of VFO A, "14.074.000"
  QString Mode{};                   ///< empty: no badge
  QString SubFrequency{};           ///< of VFO B; empty: not shown
  QString Split{};                  ///< "SPLIT +6.00k"; empty: not shown

  bool operator==(const VfoReadings&) const = default;
};

class VfoPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit VfoPanel(QWidget* parent = nullptr);

  void Show(const VfoReadings& readings);
  /// Where a frequency can be typed, and its digits turned.
  void AllowEntry(bool a, bool b);
  /// Opens the entry of VFO A (0) or B (1) with what was typed already; nothing where none is allowed.
  void BeginEntry(int vfo, const QString& typed);
  /// Of VFO A.
  void SetColour(const QColor& colour);
  /// roomy: VFO B and the letters before the frequencies are shown. brief: the split without its offset.
  void Fit(bool roomy, bool brief);

 signals:
  /// vfo: 0 A, 1 B. Typed as it was typed.
  void FrequencyTyped(int vfo, const QString& text);
  /// A digit worth so many hertz was clicked (direction: +1 up, -1 down) or turned by the wheel (delta:
  /// eighths of a degree).
  void DigitClicked(int vfo, double hertz, int direction);
  void DigitTurned(int vfo, double hertz, int delta);
  /// What is shown takes another width than before.
  void WidthChanged();

 private:
  void ShowFrequency();
  void Connect(DigitLabel* digits, int vfo);

  QLabel* lblA_;
  DigitLabel* lblFreqA_;
  QLabel* lblMode_;
  QLabel* lblB_;
  DigitLabel* lblFreqB_;
  QLabel* lblSplit_;
  FrequencyEntry* txtFrequency_;
  QColor colour_{0xff, 0xff, 0xff};
  VfoReadings shown_;
  bool roomy_ = true;
  bool entry_[2] = {false, false};
  int entryVfo_ = 0;
};

}  // namespace spectrino
