// What a session with an Icom is made of.
#pragma once

#include "civ/CivState.h"
#include "civ/IcomPanelView.h"
#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "platform/SerialPort.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// All of it outlives the session.
struct IcomParts {
  SerialPort& Port;
  CivState& State;
  IcomPanelView& Panel;
  SettingsStore& Store;
  const Clock& Time;
  EventPump& Pump;
  Notifier& User;
};

}  // namespace spectrino
