// The two rows of the deck that change band and mode.
// Shows and forwards; which button does what, and which one is in use, is decided elsewhere.
#pragma once

#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <optional>

#include "bands/DeckLayout.h"

namespace spectrino {

class BandModePanel final : public QWidget {
  Q_OBJECT
 public:
  /// Of each of its buttons in its row.
  static constexpr int kButtonStretch = 4;

  explicit BandModePanel(QWidget* parent = nullptr);

  /// Captions, tool tips and which mode buttons there are.
  void Show(const DeckLayout& layout);
  /// Which buttons look pressed; nothing: none of the row. Sends no signal. reverse: the radio is in the
  /// reverse mode of the button, which "rev" shows where there is one.
  void ShowCurrent(std::optional<int> bandButton, std::optional<int> modeButton, bool reverse);
  /// Behind the mode buttons. stretch: how many of them its width is worth.
  void AddToModeRow(QWidget* widget, int stretch);

 signals:
  void cmdBand_Click(int index);
  void cmdMode_Click(int index);

 private:
  QPushButton* AddButton(const QString& name, QHBoxLayout* row);

  QHBoxLayout* bandRow_;
  QHBoxLayout* modeRow_;
  std::array<QPushButton*, kBandButtonCount> cmdBand_{};
  std::array<QPushButton*, kModeButtonCount> cmdMode_{};
  DeckLayout layout_;
};

}  // namespace spectrino
