// Each button that has a key of the window names it in its tool tip, behind what the tip says.
// Which key belongs to which button is the table of tuning/WindowKeys.
#pragma once

#include <QAbstractButton>
#include <QObject>
#include <QWidget>

#include "tuning/WindowKeys.h"

namespace spectrino {

/// "Esc", "P": a key as the tool tip names it.
[[nodiscard]] QString KeyText(char key);

class KeyTips final : public QObject {
 public:
  /// window: with all its buttons made; a button of the table that it does not have is left out.
  explicit KeyTips(QWidget& window);

 protected:
  /// A tool tip may be changed at any time; the key stays behind it.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static void Append(QAbstractButton& button, const WindowKey& key);
};

}  // namespace spectrino
