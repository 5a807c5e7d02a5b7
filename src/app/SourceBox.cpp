#include "app/SourceBox.h"

#include "settings/CatComposition.h"
#include "settings/Keys.h"

namespace spectrino {

void SourceBox::Loaded() {
  if (state_.ForcedSource) state_.Settings.Source = *state_.ForcedSource;
}

SourceList::Shown SourceBox::Show() {
  ChosenSource& chosen = state_.Settings.Source;
  chosen = devices_.Sources().Current(chosen);
  return devices_.Sources().Show(chosen);
}

bool SourceBox::IsAnother(int index) const {
  const std::optional<ChosenSource> at = devices_.Sources().At(index);
  return at && at->Id != state_.Settings.Source.Id;
}

std::optional<int> SourceBox::FirstOf(SourceKind kind) const {
  const std::optional<ChosenSource> first = devices_.Sources().First(kind);
  return first ? devices_.Sources().Find(*first) : std::nullopt;
}

bool SourceBox::Choose(int index) {
  const SourceList& sources = devices_.Sources();
  const std::optional<ChosenSource> chosen = sources.At(index);
  if (!chosen) return false;
  PanSettings& settings = state_.Settings;
  settings.Source = *chosen;
  settings.Control =
      ControlForSource(settings.Control, chosen->Id.Kind, static_cast<IcomData>(settings.IcomControl));
  Stored();
  SetupSection setup(store_);
  SetupBatch batch(setup);
  PutSource(batch, sources, *chosen);
  PutRadioFlags(batch, chosen->Id, sources.Radios());
  batch.Put(key::kCatControl, static_cast<int>(settings.Control)).Save();
  return true;
}

}  // namespace spectrino
