#include "app/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include "settings/PanSettings.h"
#include "settings/SetupSection.h"

namespace spectrino {
namespace {
constexpr int kTwipsPerPixel = 15;
}

void RestorePlace(QMainWindow& window, SettingsStore& store) {
  const WindowGeometry stored = LoadGeometry(SetupSection(store));
  QRect wanted(stored.Left / kTwipsPerPixel, stored.Top / kTwipsPerPixel, stored.Width / kTwipsPerPixel,
               stored.Height / kTwipsPerPixel);
  // A monitor that is gone, or an absurd size.
  const QScreen* screen = QGuiApplication::screenAt(wanted.center());
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  const QRect room = screen->availableGeometry();
  wanted.setSize(wanted.size().boundedTo(room.size()).expandedTo(window.minimumSize()));
  wanted.moveLeft(qBound(room.left(), wanted.left(), qMax(room.left(), room.right() - wanted.width() + 1)));
  wanted.moveTop(qBound(room.top(), wanted.top(), qMax(room.top(), room.bottom() - wanted.height() + 1)));
  window.resize(wanted.size());
  window.move(wanted.topLeft());
  if (stored.State == WindowState::Maximised)
    window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void SavePlace(const QMainWindow& window, SettingsStore& store) {
  WindowGeometry geometry;
  const QRect place(window.pos(), window.size());
  geometry.Left = place.left() * kTwipsPerPixel;
  geometry.Top = place.top() * kTwipsPerPixel;
  geometry.Width = place.width() * kTwipsPerPixel;
  geometry.Height = place.height() * kTwipsPerPixel;
  geometry.State = window.isMinimized() || window.isFullScreen() ? WindowState::Minimised
                   : window.isMaximized()                        ? WindowState::Maximised
                                                                 : WindowState::Normal;
  SetupSection setup(store);
  SaveGeometry(setup, geometry);
}

}  // namespace spectrino
