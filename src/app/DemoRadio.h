// The simulated radio of a demo, and the settings that lead to it. A demo's settings are its own.
#pragma once

#include <QTimer>
#include <memory>

#include "app/CommandLine.h"
#include "platform/Notifier.h"
#include "settings/SettingsStore.h"
#include "settings/SourceChoice.h"
#include "sim/icom/IcomSimPort.h"
#include "sim/k4/K4SimServer.h"

namespace spectrino {

class DemoRadio {
 public:
  /// Starts the radio that the demo is about, if it is about one, and writes the way to it into the store.
  /// The user is told where that fails.
  /// radios: the rows of the list of sources; they outlive it.
  DemoRadio(DemoKind demo, std::span<const RadioSource> radios, SettingsStore& store, Notifier& user);

  /// Null in a demo of anything else.
  [[nodiscard]] K4SimServer* K4() const { return k4_.get(); }
  [[nodiscard]] IcomSimPort* Icom() const { return icom_.get(); }

 private:
  void StartK4(bool isK4D, SettingsStore& store, Notifier& user);
  void StartIcom(SettingsStore& store, Notifier& user);

  std::span<const RadioSource> radios_;
  std::unique_ptr<K4SimServer> k4_;
  std::unique_ptr<IcomSimPort> icom_;
  QTimer tmrIcom_;
};

}  // namespace spectrino
