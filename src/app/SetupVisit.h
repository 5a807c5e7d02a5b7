// The setup dialog before the main window: what it is told of the program around it.
// What a change means to a run is the window's business.
#pragma once

#include "adapters/qt/QtNotifier.h"
#include "app/CatServing.h"
#include "app/HostServer.h"
#include "capture/DeviceList.h"
#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/ui/frmSetupPan.h"

namespace spectrino {

struct SetupVisit {
  SettingsStore& Store;
  DeviceList& Devices;
  const SerialPorts& Ports;
  QtNotifier& User;
  const HostServer& Server;
  const CatServing& Cat;
};

/// Opens it and does not wait: the run goes on behind it, and closing the window closes it. It deletes
/// itself. All that visit names outlives it. running: a run is on, or begins.
frmSetupPan* OpenSetup(const SetupVisit& visit, bool running, QWidget* window);

}  // namespace spectrino
