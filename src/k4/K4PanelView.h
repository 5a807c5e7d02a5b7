// By which the CAT parser moves the K4 panel's controls. What is shown is never sent back: a check box that
// is written fires nothing, and a slider's handler sends nothing while the parser runs.
#pragma once

#include <string>

namespace spectrino {

enum class K4Check { Splt, Bset, Sub, Div, Iir, Fxt };

class K4PanelView {
 public:
  virtual ~K4PanelView() = default;
  virtual void SetCheck(K4Check check, bool ticked) = 0;
  /// chkSub, as it looks now.
  [[nodiscard]] virtual bool SubTicked() const = 0;
  /// cdmXFIL: 0 main, 1 sub.
  virtual void SetFilterCaption(int receiver, const std::string& caption) = 0;
  /// sldVol: 1 main, 2 sub; 0..255.
  virtual void SetVolume(int index, int value) = 0;
  /// Of sldVol (2).
  virtual void SetVolumeToolTip(const std::string& text) = 0;
  /// sldNotch: a tenth of the pitch in Hz.
  [[nodiscard]] virtual int Notch() const = 0;
  virtual void SetNotch(int value) = 0;
  virtual void SetNotchToolTip(const std::string& text) = 0;
};

}  // namespace spectrino
