#include "settings/SetupSection.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "state/Val.h"

namespace spectrino {
namespace {

/// What a setting's text says.
struct StoredNumber {
  double Value = 0;
  bool Misspelt = false;  ///< no number at all ("-inf", "nan", "loud"), or one with an exponent
};

/// The leading number, else 0. "1e308" is not the 1 that it begins with: otherwise is taken for it.
StoredNumber NumberOf(std::string_view text, double otherwise) {
  text = Trim(text);
  const std::size_t end = std::min(text.find_first_not_of("+-.0123456789"), text.size());
  const std::string_view rest = text.substr(end);
  if (text.substr(0, end).find_first_of("0123456789") == std::string_view::npos) return {0, !text.empty()};
  const bool exponent =
      (rest.starts_with('e') || rest.starts_with('E')) && rest.find_first_of("+-0123456789", 1) == 1;
  return exponent ? StoredNumber{otherwise, true} : StoredNumber{Val(text), false};
}

/// Rounding is no news, nor a unit behind a number.
bool IsNews(const StoredNumber& stored, double taken) {
  return stored.Misspelt || std::abs(stored.Value - taken) >= 1;
}

}  // namespace

std::int32_t SetupSection::Read(const IntKey& key) const {
  const auto text = store_.FindSetting(kOwnApplication, section_, key.Name.Text());
  if (!text) return key.Default;
  const StoredNumber stored = NumberOf(*text, key.Default);
  const std::int32_t value = RoundToInt32(stored.Value);
  const IntLimits& limits = key.Limits;
  const bool within = value >= limits.Low && value <= limits.High;
  const std::int32_t taken = within             ? value
                             : limits.Otherwise ? *limits.Otherwise
                                                : std::clamp(value, limits.Low, limits.High);
  if (IsNews(stored, taken)) TellMisread(key.Name, *text, taken);
  return taken;
}

double SetupSection::Read(const NumberKey& key) const {
  const auto text = store_.FindSetting(kOwnApplication, section_, key.Name.Text());
  if (!text) return key.Default;
  const StoredNumber stored = NumberOf(*text, key.Default);
  const double taken = std::clamp(stored.Value, key.Limits.Low, key.Limits.High);
  if (IsNews(stored, taken)) TellMisread(key.Name, *text, taken);
  return taken;
}

void SetupSection::TellMisread(const KeyName& key, const std::string& text, double taken) const {
  constexpr std::size_t kMostShown = 40;
  std::string line = section_ + " " + std::string(key.Text()) + "=" + text.substr(0, kMostShown);
  if (text.size() > kMostShown) line += "...";
  store_.LogOnce(line + " is no value for this key: taken as " + NumberText(taken));
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
