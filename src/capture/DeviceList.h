// Every spectrum source there is: sound inputs of all kinds in device order, then the radios.
// Knows names and how to find a device again; opens nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/SoundInput.h"
#include "settings/PanSettings.h"

namespace spectrino {

inline constexpr const char* kIcomSource = "ICOM";
inline constexpr const char* kK4Source = "K4";
inline constexpr const char* kK4DSource = "K4D";

/// Whether the name is one of the radios that deliver their own spectrum.
[[nodiscard]] bool IsRadioSource(const std::string& name);

class DeviceList {
 public:
  struct Entry {
    SoundDevice Device;
    SoundInput* Input = nullptr;
  };

  /// The inputs are listed in this order and must outlive the list.
  explicit DeviceList(std::vector<SoundInput*> inputs) : inputs_(std::move(inputs)) {}

  /// InitDevices: asks every input for its devices anew, leaving out those without formats.
  void InitDevices();
  /// The platform's inputs; virtual ones are counted as well.
  [[nodiscard]] int SoundInputCount() const { return static_cast<int>(entries_.size()); }
  [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }
  /// All names as DevicesBox shows them: the inputs, then "ICOM", "K4", "K4D".
  [[nodiscard]] std::vector<std::string> Names() const;

  /// The chosen sound input: by stable id when one is stored, else by name, else by list index.
  /// Nothing when a stored device is not there now; the choice is kept then, not replaced.
  [[nodiscard]] std::optional<int> FindChosen(const PanSettings& settings) const;

 private:
  std::vector<SoundInput*> inputs_;
  std::vector<Entry> entries_;
};

}  // namespace spectrino
