// The page of first steps before the main window: when it is shown, what it hears and what its Start does.
#pragma once

#include "app/frmPan.h"
#include "capture/InputLevels.h"

namespace spectrino {

class FirstSteps {
 public:
  /// All outlive it.
  struct Parts {
    const Session& State;
    DeviceList& Devices;
    SettingsStore& Store;
    const SerialPorts& Ports;
    frmPan& Window;
  };
  explicit FirstSteps(const Parts& parts);

  /// Does not wait: the window lives on behind it. One that is open already comes to the front.
  void Open();

 private:
  Parts parts_;
  InputLevels levels_;
};

}  // namespace spectrino
