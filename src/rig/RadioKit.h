// One way to a radio with everything that belongs to it: what an operator asks of it, its lines, its panel.
// A kit is one folder; the program holds a list of them and names none.
#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <string>

#include "platform/Clock.h"
#include "platform/EventPump.h"
#include "platform/Notifier.h"
#include "platform/WindowCommands.h"
#include "rig/LinkHealth.h"
#include "rig/RadioLink.h"
#include "rig/RadioTraits.h"
#include "rig/RigBackend.h"
#include "settings/PanSettings.h"
#include "settings/SettingsStore.h"
#include "settings/SourceChoice.h"
#include "state/CatControl.h"
#include "state/SourceId.h"
#include "state/StatusArea.h"

class QWidget;

namespace spectrino {

/// What every kit is made with; all outlive it. The window comes later and goes earlier.
struct KitParts {
  SettingsStore& Store;
  const PanSettings& Settings;
  Notifier& User;
  EventPump& Pump;
  const Clock& Time;
  std::function<bool()> Abandoned;  ///< Stop was pressed: a start that is under way gives up
  bool Unattended = false;          ///< nobody can answer a dialog
};

class RadioKit {
 public:
  virtual ~RadioKit() = default;
  RadioKit() = default;
  RadioKit(const RadioKit&) = delete;
  RadioKit& operator=(const RadioKit&) = delete;

  [[nodiscard]] virtual RigBackend& Backend() = 0;
  [[nodiscard]] virtual const RadioTraits& Traits() const = 0;
  [[nodiscard]] virtual LinkHealth Health() const = 0;
  /// Of the part that tells the frequency and takes commands, where lines have a connection of their own.
  [[nodiscard]] virtual LinkHealth CommandHealth() const { return Health(); }

  /// Its lines; null where it sends none.
  [[nodiscard]] virtual RadioLink* Link() { return nullptr; }
  /// The sources whose lines these are, as rows of the list of sources.
  [[nodiscard]] virtual std::span<const RadioSource> Sources() const { return {}; }
  [[nodiscard]] bool Serves(const SourceId& source) const {
    return std::ranges::any_of(Sources(), [&](const RadioSource& row) { return row.Id() == source; });
  }
  /// Whether frequencies and commands of this way go through it.
  [[nodiscard]] virtual bool Carries(CatWay /*way*/) const { return false; }

  /// Whether it is the dial of such a source where nothing else carries frequencies.
  [[nodiscard]] virtual bool IsDialOf(SourceKind /*source*/) const { return false; }

  /// Whether its own commands go through what carries this way: it controls itself then.
  [[nodiscard]] virtual bool GoesThrough(CatWay /*way*/) const { return false; }

  /// The way that the settings name from now on, whether a run is on or not: a link that lives beside runs
  /// opens for its own way and closes for any other.
  virtual void WayChosen(CatWay /*way*/) {}

  /// What it is, for the information line; empty: as its source is called.
  [[nodiscard]] virtual std::string Model() const { return {}; }
  /// The mode of the receiver that the mode buttons address.
  [[nodiscard]] virtual int AddressedMode(const RadioState& radio) const { return radio.RadioMode; }
  /// A run that takes its lines from here began or ended, or one of another source did (serving false).
  virtual void RunChanged(bool /*serving*/) {}

  /// Its controls, a row of the deck; null where it has none. The kit's own: whoever shows it gives it back
  /// before it goes.
  [[nodiscard]] virtual QWidget* Panel() { return nullptr; }
  /// The window that the panel's dialogs stand before; null: it is gone.
  virtual void SetWindow(WindowCommands* /*window*/) {}
  /// Brings what the panel shows up to date, a few times a second.
  virtual void ShowPanel() {}
  /// What it shows beside its spectrum; not Shown where it has none.
  [[nodiscard]] virtual StatusArea Status() { return {}; }
};

}  // namespace spectrino
