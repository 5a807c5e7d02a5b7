// What handlers may ask of the window itself.
#pragma once

namespace spectrino {

class WindowCommands {
 public:
  virtual ~WindowCommands() = default;
  virtual void ToggleFullScreen() = 0;
  /// AlwaysOnTop
  virtual void AlwaysOnTop(bool on) = 0;
  /// Off while a dialog is open that the window could cover; true restores the user's own choice.
  virtual void AllowOnTop(bool allow) = 0;
};

}  // namespace spectrino
