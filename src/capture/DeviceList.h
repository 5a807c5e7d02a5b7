// The sound inputs of all kinds in device order, with what opens them, and the list of sources they make.
// Which of them is chosen is not known here; opens nothing.
#pragma once

#include <span>
#include <vector>

#include "platform/SoundInput.h"
#include "settings/SourceChoice.h"

namespace spectrino {

class DeviceList {
 public:
  struct Entry {
    SoundDevice Device;
    SoundInput* Input = nullptr;
  };

  /// The inputs are listed in this order. They and the radios must outlive the list.
  DeviceList(std::vector<SoundInput*> inputs, std::span<const RadioSource> radios)
      : inputs_(std::move(inputs)), sources_({}, radios) {}

  /// InitDevices: asks every input for its devices anew, leaving out those without formats.
  void InitDevices();
  /// The platform's inputs; virtual ones are counted as well.
  [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }
  /// The inputs, then the radios.
  [[nodiscard]] const SourceList& Sources() const { return sources_; }
  /// The chosen sound input, until the next InitDevices; null for a radio and for an input that is not there.
  [[nodiscard]] const Entry* Find(const ChosenSource& chosen) const;

 private:
  std::vector<SoundInput*> inputs_;
  std::vector<Entry> entries_;
  SourceList sources_;
};

}  // namespace spectrino
