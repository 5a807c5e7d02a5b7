#include "settings/SourceChoice.h"

#include <algorithm>

#include "settings/Keys.h"
#include "state/Val.h"

namespace spectrino {
namespace {

FlagKey FlagOf(const RadioSource& radio) {
  return {KeyName(radio.Name)};
}

}  // namespace

SourceId RadioSource::Id() const {
  return {Kind, Kind == SourceKind::Radio ? std::string(Name) : std::string()};
}

SourceList::SourceList(std::span<const SoundDevice> inputs, std::span<const RadioSource> radios)
    : inputCount_(inputs.size()), radios_(radios) {
  const auto add = [this](SourceId id, std::string_view name) {
    sources_.push_back({std::move(id), std::string(name), static_cast<int>(sources_.size())});
  };
  for (const SoundDevice& input : inputs) add({input.Kind, input.StableId}, input.Name);
  for (const RadioSource& radio : radios) add(radio.Id(), radio.Name);
}

std::optional<int> SourceList::Find(const ChosenSource& chosen) const {
  const auto indexOf = [](auto found, std::span<const ChosenSource> among) {
    return found == among.end() ? std::nullopt : std::optional(found->Index);
  };
  if (IsRadio(chosen.Id.Kind))
    return indexOf(std::ranges::find(std::span(sources_), chosen.Id, &ChosenSource::Id), sources_);
  const std::span<const ChosenSource> inputs = std::span(sources_).first(inputCount_);
  // The stored name does not say of which kind an input is; it is unique among all of them.
  if (!chosen.Id.DeviceId.empty()) {
    const auto stableId = [](const ChosenSource& source) { return source.Id.DeviceId; };
    return indexOf(std::ranges::find(inputs, chosen.Id.DeviceId, stableId), inputs);
  }
  // Two cards of one model have the same name; the index tells them apart while it still fits.
  const auto index = static_cast<std::size_t>(chosen.Index);
  if (index < inputs.size() && (chosen.Name.empty() || inputs[index].Name == chosen.Name))
    return chosen.Index;
  if (chosen.Name.empty()) return std::nullopt;
  return indexOf(std::ranges::find(inputs, chosen.Name, &ChosenSource::Name), inputs);
}

std::optional<ChosenSource> SourceList::At(int index) const {
  const auto at = static_cast<std::size_t>(index);
  return at < sources_.size() ? std::optional(sources_[at]) : std::nullopt;
}

std::optional<ChosenSource> SourceList::First(SourceKind kind) const {
  const auto kindOf = [](const ChosenSource& source) { return source.Id.Kind; };
  const auto found = std::ranges::find(sources_, kind, kindOf);
  return found == sources_.end() ? std::nullopt : std::optional(*found);
}

ChosenSource SourceList::Current(const ChosenSource& chosen) const {
  const std::optional<int> index = Find(chosen);
  return index ? *At(*index) : chosen;
}

std::vector<std::string> SourceList::Names() const {
  std::vector<std::string> names;
  names.reserve(sources_.size() + 1);
  for (const ChosenSource& source : sources_) names.push_back(source.Name);
  return names;
}

SourceList::Shown SourceList::Show(const ChosenSource& chosen) const {
  Shown shown{Names(), 0};
  const std::optional<int> index = Find(chosen);
  shown.Current = index.value_or(static_cast<int>(shown.Names.size()));
  if (!index) shown.Names.push_back(chosen.Name + " (missing)");
  return shown;
}

ChosenSource ReadSource(const SetupSection& setup, const ChosenSource& before,
                        std::span<const RadioSource> radios) {
  // A radio is chosen by its flag, however many sound inputs stand before it in the list.
  for (const RadioSource& radio : radios)
    if (setup.Read(FlagOf(radio))) return {radio.Id(), std::string(radio.Name), setup.Read(key::kDevice)};
  ChosenSource chosen{
      {SourceKind::SoundInput, setup.Read(key::kDeviceId)}, before.Name, setup.Read(key::kDevice)};
  if (setup.Has(key::kNDevice.Name)) chosen.Name = setup.Read(key::kNDevice);
  chosen.Name = std::string(Trim(chosen.Name));
  return chosen;
}

void PutSource(SetupBatch& batch, const SourceList& list, const ChosenSource& chosen) {
  if (const std::optional<int> index = list.Find(chosen)) batch.Put(key::kDevice, *index);
  const std::string deviceId = IsRadio(chosen.Id.Kind) ? std::string() : chosen.Id.DeviceId;
  if (chosen.Name.empty() && deviceId.empty()) return;
  batch.Put(key::kNDevice, chosen.Name).Put(key::kDeviceId, deviceId);
}

void PutRadioFlags(SetupBatch& batch, const SourceId& chosen, std::span<const RadioSource> radios) {
  for (const RadioSource& radio : radios) batch.Put(FlagOf(radio), radio.Id() == chosen);
}

}  // namespace spectrino
