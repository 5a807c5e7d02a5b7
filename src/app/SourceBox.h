// The window's list of sources: what it shows, and what choosing from it changes and stores.
// No widget, and no run: what the choice means to one is SourceChange's business.
#pragma once

#include "capture/DeviceList.h"
#include "run/Session.h"
#include "settings/SettingsStore.h"

namespace spectrino {

class SourceBox {
 public:
  SourceBox(Session& state, const DeviceList& devices, SettingsStore& store)
      : state_(state), devices_(devices), store_(store) {}

  /// The settings were read: what was chosen for this run alone goes before what is stored.
  void Loaded();
  /// Another source was stored elsewhere: what was chosen for this run alone is over.
  void Stored() { state_.ForcedSource.reset(); }
  /// The list as it stands now. The choice takes over the name that its device has in it.
  [[nodiscard]] SourceList::Shown Show();
  /// Another source than the chosen one stands at index.
  [[nodiscard]] bool IsAnother(int index) const;
  /// Where the first source of a kind stands now; nothing when there is none.
  [[nodiscard]] std::optional<int> FirstOf(SourceKind kind) const;
  /// Chooses and stores what stands at index, with the CAT control that reaches it.
  /// False: nothing to choose stands there.
  bool Choose(int index);

 private:
  Session& state_;
  const DeviceList& devices_;
  SettingsStore& store_;
};

}  // namespace spectrino
