// How the window and its dialogs look: one style for every button, dark by default.
#pragma once

class QApplication;

namespace spectrino {

void ApplyTheme(QApplication& application);

}  // namespace spectrino
