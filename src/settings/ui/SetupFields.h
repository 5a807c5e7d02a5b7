// One control of the setup dialog and its key: how it is filled, how it is written.
// Knows nothing of what the keys mean together.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <functional>

#include "settings/SettingKey.h"
#include "settings/SetupSection.h"

namespace spectrino::setup {

struct SetupField {
  std::function<void(const SetupSection&)> Load;
  std::function<void(SetupBatch&)> Put;
};

[[nodiscard]] SetupField FlagField(QAbstractButton* button, const FlagKey& key);
/// The list's index is the key's value minus first.
[[nodiscard]] SetupField ListField(QComboBox* list, const IntKey& key, int first = 0);
/// Saved as typed, whatever it is: the reader takes the leading number.
[[nodiscard]] SetupField TextField(QLineEdit* text, const KeyName& key, const std::string& defaultText);
/// A number that meets its limit before it is saved; within it, it is saved as typed.
[[nodiscard]] SetupField LimitedField(QLineEdit* text, const KeyName& key, const std::string& defaultText,
                                      std::function<double(double)> limit);

}  // namespace spectrino::setup
