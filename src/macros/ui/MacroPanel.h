// The nine macro buttons in a row, each a push button or a toggle.
// Shows captions and forwards presses; the texts behind them are Macros'.
#pragma once

#include <QPushButton>
#include <QWidget>
#include <array>

#include "macros/Macros.h"

namespace spectrino {

class MacroPanel final : public QWidget {
  Q_OBJECT
 public:
  explicit MacroPanel(QWidget* parent = nullptr);

  /// Captions, and which of each pair is visible. Sends no signal. A toggle stays as it is, unless what it
  /// switches is another thing now: then it is off.
  void SetupMacroButtons(const MacroSet& macros);

 signals:
  void cmdMacro_Click(int n);
  void chkMacro_Click(int n, bool checked);
  /// A right click on either button of the pair, or the menu key or Shift+F10 while it has the focus.
  void EditMacro(int n);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// One of each pair is visible, in the same place.
  struct Place {
    QPushButton* cmdMacro = nullptr;
    QPushButton* chkMacro = nullptr;
    Macro shown;
  };

  QPushButton* AddButton(const QString& name, int n);
  void ShowCaption(Place& place, int n);
  void ElideCaptions();

  std::array<Place, kMacroCount> places_;
};

}  // namespace spectrino
