// What handlers may ask of the window itself.
#pragma once

namespace spectrino {

class WindowCommands {
 public:
  virtual ~WindowCommands() = default;
  virtual void ToggleFullScreen() = 0;
  /// AlwaysOnTop
  virtual void AlwaysOnTop(bool on) = 0;
};

}  // namespace spectrino
