// Carries out what the button of a message box promises.
// Which cure belongs to which trouble is told where the trouble is.
#pragma once

#include "app/frmPan.h"
#include "platform/Cure.h"

namespace spectrino {

class Remedies {
 public:
  /// Both outlive it.
  Remedies(frmPan& window, SettingsStore& store) : window_(window), store_(store) {}

  /// From the event loop, never inside a pass. A run that is on ends where the cure starts another.
  void Take(const Cure& cure);

 private:
  void OpenSetup();
  template <typename Key, typename Value>
  void StartWith(const Key& key, const Value& value);

  frmPan& window_;
  SettingsStore& store_;
};

}  // namespace spectrino
