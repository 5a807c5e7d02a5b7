// Typed reads and writes of the program's own keys.
// Knows no key by itself and keeps no values: the store does.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "settings/Keys.h"
#include "settings/SettingsStore.h"

namespace spectrino {

/// One section of the program's own file. Reads never fail: a missing key gives its default, as does a number
/// with an exponent; text without a leading number is 0, and limits apply last. A value that is taken for
/// another one is logged once.
class SetupSection {
 public:
  explicit SetupSection(SettingsStore& store, std::string_view section = kSetupSection)
      : store_(store), section_(section) {}

  [[nodiscard]] std::int32_t Read(const IntKey& key) const;
  [[nodiscard]] double Read(const NumberKey& key) const;
  [[nodiscard]] std::string Read(const TextKey& key) const;
  /// On only for the value 1.
  [[nodiscard]] bool Read(const FlagKey& key) const;
  [[nodiscard]] bool Has(const KeyName& key) const;

  void Write(const IntKey& key, std::int32_t value);
  void Write(const NumberKey& key, double value);
  void Write(const TextKey& key, std::string_view value);
  void Write(const FlagKey& key, bool value);

 private:
  friend class SetupBatch;
  void TellMisread(const KeyName& key, const std::string& text, double taken) const;

  SettingsStore& store_;
  std::string section_;
};

/// Values gathered for one write of the file. Nothing is stored before Save.
class SetupBatch {
 public:
  explicit SetupBatch(SetupSection& setup) : setup_(setup) {}

  /// A stored value that reads as value already stays as it is, so that text which was out of range on load
  /// is not replaced by what it was taken for.
  SetupBatch& Put(const IntKey& key, std::int32_t value);
  SetupBatch& Put(const NumberKey& key, double value);
  SetupBatch& Put(const TextKey& key, std::string_view value);
  SetupBatch& Put(const FlagKey& key, bool value);
  void Save();

 private:
  template <typename Key, typename Value>
  SetupBatch& PutText(const Key& key, const Value& value, std::string text);

  SetupSection& setup_;
  std::vector<KeyValue> values_;
};

}  // namespace spectrino
