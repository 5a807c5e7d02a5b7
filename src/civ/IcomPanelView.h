// By which the parser moves the Icom panel's controls. Written values fire the controls' own handlers; those
// send nothing while CivParserBusy is set.
#pragma once

#include <string>

namespace spectrino {

/// The controls that both the operator and the radio move. Function + n is chkFunc (n), 0..5.
enum class PanelControl { AfLevel, Squelch, RefLevel, Span, Fixed, Function };

class IcomPanelView {
 public:
  virtual ~IcomPanelView() = default;
  virtual void SetAfSlider(int value) = 0;                 ///< sldVol (0), 0..255
  virtual void SetSquelchSlider(int value) = 0;            ///< sldSQL, 0..255
  virtual void SetRefLevelSlider(int value) = 0;           ///< sldRFLevel, -40..40 half decibels
  virtual void SelectSpan(int entry) = 0;                  ///< cboSpan, 0..9
  virtual void SetSpanLabel(const std::string& text) = 0;  ///< lblSpan
  virtual void ShowSpanList(bool list) = 0;   ///< cboSpan shown and lblSpan hidden, or the other way round
  virtual void SetFixedMode(bool fixed) = 0;  ///< chkFIX
  virtual void SetFunction(int index, bool on) = 0;  ///< chkFunc 0..5
};

}  // namespace spectrino
