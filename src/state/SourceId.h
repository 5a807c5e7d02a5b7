// What delivers the lines of a run, as a value: equal ids are the same source.
// Neither its name in a list nor how it is stored; those are settings/SourceChoice's.
#pragma once

#include <string>

namespace spectrino {

enum class SourceKind {
  SoundInput,  ///< a sound server's or card's input
  Demo,        ///< the signal that the program makes itself
  Recording,   ///< a file of I/Q samples
  K4,
  K4D,
  Icom,
  Radio,  ///< any other radio with a spectrum of its own; DeviceId is its name
};

/// The radio delivers the spectrum itself, so that no sound input is involved.
[[nodiscard]] constexpr bool IsRadio(SourceKind kind) {
  return kind == SourceKind::K4 || kind == SourceKind::K4D || kind == SourceKind::Icom ||
         kind == SourceKind::Radio;
}

struct SourceId {
  SourceKind Kind = SourceKind::SoundInput;
  std::string DeviceId{};  ///< of an input its stable name; empty for a radio of a kind of its own

  bool operator==(const SourceId&) const = default;
};

}  // namespace spectrino
