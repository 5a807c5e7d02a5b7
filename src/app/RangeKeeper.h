// Stores reference and range once the clicks on their buttons have ended, under the band they were changed
// in.
#pragma once

#include <QTimer>
#include <optional>

#include "run/Session.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class RangeKeeper {
 public:
  /// Both outlive it.
  RangeKeeper(const Session& session, SettingsStore& store);

  /// A button changed reference or range.
  void Changed();
  /// Stores now what still waits; before the settings are read again.
  void StoreWaiting();

 private:
  void Store();

  const Session& session_;
  SettingsStore& store_;
  QTimer timer_;
  std::optional<int> band_;
};

/// The band that reference and range of now belong to; nothing where there is none.
[[nodiscard]] std::optional<int> CurrentRefBand(const Session& session);

}  // namespace spectrino
