#include "capture/DeviceList.h"

namespace spectrino {

bool IsRadioSource(const std::string& name) {
  return name == kIcomSource || name == kK4Source || name == kK4DSource;
}

void DeviceList::InitDevices() {
  entries_.clear();
  for (SoundInput* input : inputs_) {
    for (SoundDevice& device : input->Devices()) {
      if (device.HasFormats) entries_.push_back({std::move(device), input});
    }
  }
}

std::vector<std::string> DeviceList::Names() const {
  std::vector<std::string> names;
  names.reserve(entries_.size() + 3);
  for (const Entry& entry : entries_) names.push_back(entry.Device.Name);
  names.insert(names.end(), {kIcomSource, kK4Source, kK4DSource});
  return names;
}

std::optional<int> DeviceList::FindChosen(const PanSettings& settings) const {
  std::vector<SoundDevice> devices;
  devices.reserve(entries_.size());
  for (const Entry& entry : entries_) devices.push_back(entry.Device);
  const std::optional<std::size_t> found = FindChosenInput(settings, devices);
  return found ? std::optional<int>(static_cast<int>(*found)) : std::nullopt;
}

}  // namespace spectrino
