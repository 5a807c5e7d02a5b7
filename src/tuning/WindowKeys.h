// The keys of the window: what each does, and the button that does the same.
// The one place where both meet; who handles them is the tuner and the window.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace spectrino {

enum class KeyAction {
  ToggleFullScreen,
  ZoomIn,
  ZoomOut,
  ZoomOff,
  WheelToA,
  WheelToB,
  WheelFast,
  WheelNormal,
  Spot,
  ToggleAutoLevel
};

struct WindowKey {
  char Key = 0;  ///< as typed, lower case
  KeyAction Does = KeyAction::Spot;
  std::string_view Button{};  ///< its object name; empty: no button does this
};

inline constexpr char kEscape = 27;
inline constexpr auto kWindowKeys = std::to_array<WindowKey>({
    {kEscape, KeyAction::ToggleFullScreen, "cmdFullScreen"},
    {'+', KeyAction::ZoomIn},
    {'-', KeyAction::ZoomOut},
    {'a', KeyAction::WheelToA},
    {'b', KeyAction::WheelToB},
    {'f', KeyAction::WheelFast},
    {'s', KeyAction::WheelNormal},
    {'p', KeyAction::Spot, "cmdSpot"},
    {'v', KeyAction::ToggleAutoLevel, "chkAutoLevel"},
    {'z', KeyAction::ZoomOff, "optZoom0"},
});

/// Null for a character that is no key. Upper and lower case are the same.
[[nodiscard]] constexpr const WindowKey* FindKey(char character) {
  if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  const auto* key = std::ranges::find(kWindowKeys, character, &WindowKey::Key);
  return key == kWindowKeys.end() ? nullptr : key;
}

}  // namespace spectrino
