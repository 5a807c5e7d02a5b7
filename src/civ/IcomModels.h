// What differs between the radios, and what their mode bytes mean.
// Tables and look-ups only; whoever asks keeps the answer.
#pragma once

#include <string_view>

namespace spectrino {

struct IcomModel {
  std::string_view Id;  ///< data byte of the 19 00 reply, two upper-case hex digits
  std::string_view Name;
  int ScopeMaxLevel = 0;   ///< amplitude byte at full scale
  int SpectrumPoints = 0;  ///< points of one scope line
};

/// What a radio is called that is not known.
inline constexpr std::string_view kUnknownModel = "ICOM?";

/// Null for a radio that is not known.
[[nodiscard]] const IcomModel* FindIcomModel(std::string_view id);

/// By the name that a host program tells: the model's own, or that and more behind it.
[[nodiscard]] const IcomModel* FindIcomModelByName(std::string_view name);

struct IcomMode {
  int ModeByte = 0;  ///< as its hex text reads in decimal: byte 12h is twelve
  int RadioModeIndex = 0;
  int AmVariant = -1;  ///< -1: says nothing of it
};

/// Null for a mode byte that is not known.
[[nodiscard]] const IcomMode* FindIcomMode(int modeByte);

/// RadioModeIndex to the mode code that all radios share (state/RadioState.h); 0 when there is none.
[[nodiscard]] int IcomModeCode(int modeIndex);

}  // namespace spectrino
