// Where the window stands and how large it is, from one session to the next.
#pragma once

#include <QMainWindow>

#include "settings/SettingsStore.h"

namespace spectrino {

/// Before the window is shown. A place where nobody could reach it is moved onto a screen.
void RestorePlace(QMainWindow& window, SettingsStore& store);
/// Full screen is a way of looking, not a size to come back to: like minimised, it stores no place.
void SavePlace(const QMainWindow& window, SettingsStore& store);

}  // namespace spectrino
