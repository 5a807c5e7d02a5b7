// What can keep a run from starting, and how the user is told.
#pragma once

#include <optional>
#include <string>

namespace spectrino {

/// The message when an FFT length is no power of two of at least 2; nothing when it is one.
[[nodiscard]] std::optional<std::string> FftLengthError(int points);

/// The message when the sound input did not open. zoomLowersRate: High Res. Zoom is on at 4x or more, so the
/// rate that was refused may not be the one the user chose. reason: what really kept it, a sentence.
[[nodiscard]] std::string OpenFailureText(int sampleRateHz, bool zoomLowersRate, const std::string& reason);

inline constexpr const char* kNoInputDevices = "You have no audio input devices!";

}  // namespace spectrino
