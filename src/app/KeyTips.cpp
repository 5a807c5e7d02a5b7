#include "app/KeyTips.h"

#include <QEvent>

namespace spectrino {
namespace {

QString NameOf(const WindowKey& key) {
  return QString::fromUtf8(key.Button.data(), static_cast<qsizetype>(key.Button.size()));
}

}  // namespace

QString KeyText(char key) {
  return key == kEscape ? QString("Esc") : QString(QLatin1Char(key)).toUpper();
}

KeyTips::KeyTips(QWidget& window) : QObject(&window) {
  for (const WindowKey& key : kWindowKeys) {
    auto* button = key.Button.empty() ? nullptr : window.findChild<QAbstractButton*>(NameOf(key));
    if (button == nullptr) continue;
    Append(*button, key);
    button->installEventFilter(this);
  }
}

bool KeyTips::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ToolTipChange) {
    for (const WindowKey& key : kWindowKeys)
      if (!key.Button.empty() && watched->objectName() == NameOf(key))
        Append(static_cast<QAbstractButton&>(*watched), key);
  }
  return QObject::eventFilter(watched, event);
}

void KeyTips::Append(QAbstractButton& button, const WindowKey& key) {
  const QString behind = " (" + KeyText(key.Key) + ")";
  if (!button.toolTip().endsWith(behind)) button.setToolTip(button.toolTip() + behind);
}

}  // namespace spectrino
