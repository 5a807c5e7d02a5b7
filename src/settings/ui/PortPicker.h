// The Icom's serial port: a number, and the device that it stands for.
// Keeps what was picked until it is saved; opens no port.
#pragma once

#include <QComboBox>
#include <QObject>
#include <map>
#include <string>
#include <vector>

#include "platform/SerialPorts.h"
#include "settings/SettingsStore.h"
#include "settings/ui/FreshList.h"

namespace spectrino::setup {

class PortPicker final : public QObject {
  Q_OBJECT
 public:
  /// Fills devices for the number that numbers shows, now and whenever it changes. ports may be null: then
  /// there are none. All outlive it.
  PortPicker(QComboBox* numbers, FreshList* devices, SettingsStore& store, const SerialPorts* ports);

  /// The devices that there are now.
  void ListPorts();
  /// Stores what was picked.
  void Save();

 private:
  [[nodiscard]] int Number() const { return numbers_->currentIndex() + 1; }
  void ShowDevice();
  void Pick(int index);

  QComboBox* numbers_;
  FreshList* devices_;
  SettingsStore& store_;
  const SerialPorts* ports_;
  std::vector<SerialPortEntry> entries_;
  std::map<int, std::string> picks_;  ///< paths by port number
};

}  // namespace spectrino::setup
