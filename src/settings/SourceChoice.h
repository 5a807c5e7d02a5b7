// Which source is chosen, the list it is chosen from, and the keys that keep the choice.
// The only place that counts positions in that list. Lists and opens no device itself.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SoundInput.h"
#include "settings/SetupSection.h"
#include "state/SourceId.h"

namespace spectrino {

/// A radio with a spectrum of its own, as a row of the list behind the sound inputs.
struct RadioSource {
  SourceKind Kind = SourceKind::Radio;
  std::string_view Name;  ///< as the list shows it; also the flag key that chooses it: at most 14 letters

  [[nodiscard]] SourceId Id() const;
};

/// The choice, whether its device is there now or not.
struct ChosenSource {
  SourceId Id{};       ///< of a sound input: no DeviceId when none was ever stored
  std::string Name{};  ///< as it was listed; empty: whatever sound input stands at Index
  int Index = 0;       ///< where it stood in the list when it was chosen

  bool operator==(const ChosenSource&) const = default;
};

/// Every source there is, in the order of the list: sound inputs in device order, then the radios.
class SourceList {
 public:
  SourceList() = default;
  /// radios: in the order of the list and of their flag keys; they outlive it.
  SourceList(std::span<const SoundDevice> inputs, std::span<const RadioSource> radios);

  [[nodiscard]] std::span<const RadioSource> Radios() const { return radios_; }
  /// Where the chosen one stands: a radio by its id; an input by its stable name; by its name, then its
  /// index, where no stable name was ever stored. Nothing when it is missing: the choice stands until it
  /// returns.
  [[nodiscard]] std::optional<int> Find(const ChosenSource& chosen) const;
  /// What stands at index; nothing behind the end of the list.
  [[nodiscard]] std::optional<ChosenSource> At(int index) const;
  /// The first source of a kind.
  [[nodiscard]] std::optional<ChosenSource> First(SourceKind kind) const;
  /// The chosen one under the name and place it has now; as it was when it is missing.
  [[nodiscard]] ChosenSource Current(const ChosenSource& chosen) const;

  struct Shown {
    std::vector<std::string> Names;
    int Current = 0;
  };
  /// The list as it is shown: a chosen source that is missing stands behind the others and says so.
  [[nodiscard]] Shown Show(const ChosenSource& chosen) const;
  [[nodiscard]] std::vector<std::string> Names() const;

 private:
  std::vector<ChosenSource> sources_;
  std::size_t inputCount_ = 0;
  std::span<const RadioSource> radios_;
};

/// The stored choice: the first radio whose flag is set, else a sound input. before: what was chosen until
/// now; its name is kept when the file names no source.
[[nodiscard]] ChosenSource ReadSource(const SetupSection& setup, const ChosenSource& before,
                                      std::span<const RadioSource> radios);
/// Keys "Device", "NDevice" and "DeviceId". Of a source that is missing from the list the old index says
/// nothing and stays; of one that has no name at all nothing is stored.
void PutSource(SetupBatch& batch, const SourceList& list, const ChosenSource& chosen);
/// The radios' flag keys.
void PutRadioFlags(SetupBatch& batch, const SourceId& chosen, std::span<const RadioSource> radios);

}  // namespace spectrino
