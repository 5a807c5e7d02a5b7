#include "settings/SetupSection.h"

#include <algorithm>
#include <utility>

#include "state/Val.h"

namespace spectrino {

std::int32_t SetupSection::Read(const IntKey& key) const {
  const auto text = store_.FindSetting(kOwnApplication, section_, key.Name.Text());
  const std::int32_t value = text ? RoundToInt32(Val(*text)) : key.Default;
  const IntLimits& limits = key.Limits;
  if (value >= limits.Low && value <= limits.High) return value;
  return limits.Otherwise ? *limits.Otherwise : std::clamp(value, limits.Low, limits.High);
}

double SetupSection::Read(const NumberKey& key) const {
  const auto text = store_.FindSetting(kOwnApplication, section_, key.Name.Text());
  return text ? Val(*text) : key.Default;
}

std::string SetupSection::Read(const TextKey& key) const {
  return store_.GetSetting(kOwnApplication, section_, key.Name.Text(), key.Default);
}

bool SetupSection::Read(const FlagKey& key) const {
  const auto text = store_.FindSetting(kOwnApplication, section_, key.Name.Text());
  return text ? RoundToInt16(Val(*text)) == 1 : key.Default;
}

bool SetupSection::Has(const KeyName& key) const {
  return store_.FindSetting(kOwnApplication, section_, key.Text()).has_value();
}

void SetupSection::Write(const IntKey& key, std::int32_t value) {
  SetupBatch(*this).Put(key, value).Save();
}
void SetupSection::Write(const NumberKey& key, double value) {
  SetupBatch(*this).Put(key, value).Save();
}
void SetupSection::Write(const TextKey& key, std::string_view value) {
  SetupBatch(*this).Put(key, value).Save();
}
void SetupSection::Write(const FlagKey& key, bool value) {
  SetupBatch(*this).Put(key, value).Save();
}

template <typename Key, typename Value>
SetupBatch& SetupBatch::PutText(const Key& key, const Value& value, std::string text) {
  if (!setup_.Has(key.Name) || setup_.Read(key) != value)
    values_.push_back({std::string(key.Name.Text()), std::move(text)});
  return *this;
}

SetupBatch& SetupBatch::Put(const IntKey& key, std::int32_t value) {
  return PutText(key, value, std::to_string(value));
}
SetupBatch& SetupBatch::Put(const NumberKey& key, double value) {
  return PutText(key, value, NumberText(value));
}
SetupBatch& SetupBatch::Put(const TextKey& key, std::string_view value) {
  return PutText(key, value, std::string(value));
}
SetupBatch& SetupBatch::Put(const FlagKey& key, bool value) {
  return PutText(key, value, value ? "1" : "0");
}

void SetupBatch::Save() {
  setup_.store_.SaveSettings(kOwnApplication, setup_.section_, values_);
  values_.clear();
}

}  // namespace spectrino
