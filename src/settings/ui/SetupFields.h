// One control of the setup dialog and its key: how it is filled, how it is written.
// Knows nothing of what the keys mean together.
#pragma once

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "settings/SettingKey.h"
#include "settings/SetupSection.h"

namespace spectrino::setup {

struct SetupField {
  std::string Key;  ///< the first of its keys
  std::function<void(const SetupSection&)> Load;
  std::function<void(SetupBatch&)> Put;
};
using SetupFields = std::vector<SetupField>;

/// Brings fields into the order in which their keys have always been written; newer keys follow as they come.
void SortAsWritten(SetupFields& fields);
/// The place of the radios' flag keys in that order.
inline constexpr const char* kRadioFlags = "ICOM";

[[nodiscard]] SetupField FlagField(QAbstractButton* button, const FlagKey& key);
/// The list's index is the key's value minus first.
[[nodiscard]] SetupField ListField(QComboBox* list, const IntKey& key, int first = 0);

// What is typed is saved as typed, whatever it is: the reader takes the leading number.
[[nodiscard]] SetupField TextField(QLineEdit* text, const TextKey& key);
[[nodiscard]] SetupField TextField(QLineEdit* text, const IntKey& key);
[[nodiscard]] SetupField TextField(QLineEdit* text, const NumberKey& key);
/// The text of a fresh store.
[[nodiscard]] std::string DefaultText(const IntKey& key);
[[nodiscard]] std::string DefaultText(const NumberKey& key);

/// A row of numbers that meet their limit before they are saved; within it they are saved as typed.
using SetupLimit = double (*)(double);
template <typename Key>
[[nodiscard]] SetupField LimitedField(QLineEdit* text, const Key& key, SetupLimit limit);
template <std::size_t N, typename Keys>
[[nodiscard]] SetupField RowField(QLineEdit* const (&texts)[N], const Keys& keys,
                                  SetupLimit limit = nullptr) {
  static_assert(Keys::kCount == N);
  std::array<SetupField, N> fields;
  for (std::size_t n = 0; n < N; ++n) {
    fields[n] = limit != nullptr ? LimitedField(texts[n], keys[n], limit) : TextField(texts[n], keys[n]);
  }
  return {fields[0].Key,
          [fields](const SetupSection& setup) {
            for (const SetupField& field : fields) field.Load(setup);
          },
          [fields](SetupBatch& batch) {
            for (const SetupField& field : fields) field.Put(batch);
          }};
}

}  // namespace spectrino::setup
