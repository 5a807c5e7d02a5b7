// What a typed key is: its name, its default, and what happens to values out of range.
// The keys themselves are in Keys.h; SetupSection reads and writes them.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace spectrino {

/// A key's name with room for an index at its end: "Step" with 2 is "Step2".
class KeyName {
 public:
  constexpr KeyName(std::string_view name) : length_(name.size()) {
    assert(name.size() + 2 <= text_.size());
    for (std::size_t i = 0; i < name.size(); ++i) text_[i] = name[i];
  }
  /// index: 0..99.
  [[nodiscard]] constexpr KeyName WithIndex(std::size_t index) const {
    assert(index < 100);
    KeyName name = *this;
    if (index >= 10) name.text_[name.length_++] = static_cast<char>('0' + index / 10);
    name.text_[name.length_++] = static_cast<char>('0' + index % 10);
    return name;
  }
  [[nodiscard]] constexpr std::string_view Text() const { return {text_.data(), length_}; }

 private:
  std::array<char, 20> text_{};
  std::size_t length_;
};

/// Applied to what is read, never to what is stored. A value outside reads as Otherwise, or without one as
/// the nearer limit.
struct IntLimits {
  std::int32_t Low = INT32_MIN;
  std::int32_t High = INT32_MAX;
  std::optional<std::int32_t> Otherwise = std::nullopt;
};
inline constexpr IntLimits k16Bit{INT16_MIN, INT16_MAX};

/// As IntLimits: what is read is never outside. Far beyond what an operator means, near enough that no
/// arithmetic with it leaves the integers.
struct NumberLimits {
  double Low = -1e6;
  double High = 1e6;
};

struct IntKey {
  KeyName Name;
  std::int32_t Default = 0;
  IntLimits Limits = k16Bit;
};

struct NumberKey {
  KeyName Name;
  double Default = 0;
  int Decimals = 0;  ///< the fewest that its default is shown with
  NumberLimits Limits{};
};

struct FlagKey {
  KeyName Name;
  bool Default = false;
};

struct TextKey {
  KeyName Name;
  std::string_view Default;
};

/// A row of keys with the same name and an index behind it: kStep[2] is the key "Step2".
template <std::size_t N>
struct IntKeys {
  KeyName Name;
  std::array<std::int32_t, N> Defaults{};
  IntLimits Limits = k16Bit;

  static constexpr std::size_t kCount = N;
  [[nodiscard]] constexpr IntKey operator[](std::size_t n) const {
    return {Name.WithIndex(n), Defaults[n], Limits};
  }
};

template <std::size_t N>
struct NumberKeys {
  KeyName Name;
  double Default = 0;
  NumberLimits Limits{};

  static constexpr std::size_t kCount = N;
  [[nodiscard]] constexpr NumberKey operator[](std::size_t n) const {
    return {Name.WithIndex(n), Default, 0, Limits};
  }
};

/// The defaults of a row of keys.
template <typename Keys>
[[nodiscard]] constexpr auto DefaultsOf(const Keys& keys) {
  std::array<decltype(keys[0].Default), Keys::kCount> defaults{};
  for (std::size_t n = 0; n < Keys::kCount; ++n) defaults[n] = keys[n].Default;
  return defaults;
}

}  // namespace spectrino
