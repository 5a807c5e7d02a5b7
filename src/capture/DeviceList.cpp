#include "capture/DeviceList.h"

#include <algorithm>

namespace spectrino {

void DeviceList::InitDevices() {
  entries_.clear();
  std::vector<SoundDevice> devices;
  for (SoundInput* input : inputs_) {
    for (SoundDevice& device : input->Devices()) {
      if (!device.HasFormats) continue;
      devices.push_back(device);
      entries_.push_back({std::move(device), input});
    }
  }
  sources_ = SourceList(devices, sources_.Radios());
}

const DeviceList::Entry* DeviceList::Find(const ChosenSource& chosen) const {
  if (IsRadio(chosen.Id.Kind) || !sources_.Find(chosen)) return nullptr;
  const SourceId id = sources_.Current(chosen).Id;
  const auto same = [&id](const Entry& entry) { return entry.Device.StableId == id.DeviceId; };
  const auto entry = std::ranges::find_if(entries_, same);
  return entry == entries_.end() ? nullptr : &*entry;
}

}  // namespace spectrino
