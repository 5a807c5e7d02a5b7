// What can keep a run from starting, and how the user is told.
#pragma once

#include <optional>
#include <string>

#include "platform/Cure.h"
#include "platform/SoundInput.h"

namespace spectrino {

/// The message when an FFT length is no power of two of at least 2; nothing when it is one.
[[nodiscard]] std::optional<std::string> FftLengthError(int points);

/// The message when the sound input did not open. zoomLowersRate: High Res. Zoom is on at 4x or more, so the
/// rate that was refused may not be the one the user chose. reason: what really kept it, a sentence.
[[nodiscard]] std::string OpenFailureText(int sampleRateHz, bool zoomLowersRate, const std::string& reason);

/// What helps then. device: the input as it is listed; null when it is not. sampleRateHz: what was refused.
[[nodiscard]] Cure OpenFailureCure(int sampleRateHz, bool zoomLowersRate, const SoundDevice* device);

inline constexpr const char* kNoInputDevices = "You have no audio input devices!";
inline constexpr const char* kNoInputDevicesCure =
    "Plug in a sound card and see that the sound server runs, then start Spectrino again.";

}  // namespace spectrino
