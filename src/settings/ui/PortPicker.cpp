#include "settings/ui/PortPicker.h"

#include <QSignalBlocker>
#include <algorithm>

#include "settings/SerialAlias.h"

namespace spectrino::setup {

PortPicker::PortPicker(QComboBox* numbers, FreshList* devices, SettingsStore& store, const SerialPorts* ports)
    : numbers_(numbers), devices_(devices), store_(store), ports_(ports) {
  connect(numbers_, &QComboBox::currentIndexChanged, this, &PortPicker::ShowDevice);
  connect(devices_, &QComboBox::currentIndexChanged, this, &PortPicker::Pick);
  connect(devices_, &FreshList::AboutToShow, this, &PortPicker::ListPorts);
  ListPorts();
}

void PortPicker::ListPorts() {
  const QSignalBlocker silent(devices_);
  devices_->clear();
  entries_ = ports_ != nullptr ? ports_->List() : std::vector<SerialPortEntry>{};
  for (const SerialPortEntry& entry : entries_) devices_->addItem(QString::fromStdString(entry.Label));
  ShowDevice();
}

// The device of the chosen number: what was picked for it here, else what is stored. One that is none of the
// listed ports is shown by its path.
void PortPicker::ShowDevice() {
  const auto picked = picks_.find(Number());
  const std::string path = picked != picks_.end() ? picked->second : SerialPath(store_, Number());
  const QSignalBlocker silent(devices_);
  while (devices_->count() > static_cast<int>(entries_.size())) devices_->removeItem(devices_->count() - 1);
  const auto same = [&](const SerialPortEntry& entry) { return ports_->SameDevice(entry.Path, path); };
  const auto at = std::ranges::find_if(entries_, same);
  if (at == entries_.end()) {
    const QString shown = QString::fromStdString(path);
    const bool there = ports_ != nullptr && ports_->Exists(path);
    devices_->addItem(there ? shown : tr("%1 (not plugged in)").arg(shown));
  }
  devices_->setCurrentIndex(static_cast<int>(at - entries_.begin()));
}

void PortPicker::Pick(int index) {
  if (index < 0 || index >= static_cast<int>(entries_.size())) return;
  picks_[Number()] = entries_[static_cast<std::size_t>(index)].Path;
}

void PortPicker::Save() {
  for (const auto& [number, path] : picks_) SaveSerialAlias(store_, number, path);
}

}  // namespace spectrino::setup
