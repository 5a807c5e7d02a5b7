// What the host program tells of its radio, as it was read last. Plain data.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "rig/RigBackend.h"

namespace spectrino {

/// The host's integers for the modes.
namespace hostmode {
inline constexpr int kUnknown = -1;
inline constexpr int kLsb = 0;
inline constexpr int kUsb = 1;
inline constexpr int kCw = 2;
inline constexpr int kAm = 4;
inline constexpr int kFm = 6;
inline constexpr int kWideFm = 7;
inline constexpr int kFsk = 8;
inline constexpr int kFskReverse = 9;
inline constexpr int kCwReverse = 12;
}  // namespace hostmode

struct HostVfo {
  double FreqHz = 0;  ///< 0 while unknown
  int Mode = hostmode::kUnknown;
  double WidthHz = 0;
  std::string ModeWord;    ///< Hamlib's
  std::uint64_t Read = 0;  ///< which read told it: counted in the order they were sent

  bool operator==(const HostVfo&) const = default;
};

struct HostState {
  std::array<HostVfo, 2> Vfos;  ///< A, B
  int Split = 0;
  int SubRx = 0;
  bool Transmitting = false;
  bool DataFamily = false;  ///< of modes 8 and 9: data rather than radio teletype was told last
  /// Nothing: this radio does not tell.
  std::optional<double> PreampDb, AttenuatorDb, PitchHz;
  std::optional<double> IfShiftHz;  ///< of the filter, from its usual place

  std::string Model;       ///< "IC-7300"; empty while unknown
  int ModelNumber = 0;     ///< Hamlib's
  bool SpeaksCiv = false;  ///< an Icom
  bool SetsMode = false;   ///< and with it the filter's width
  bool SetsIfShift = false;
  std::uint64_t Serial = 0;  ///< grows with each change

  bool operator==(const HostState&) const = default;
  [[nodiscard]] HostVfo& Of(Vfo vfo) { return Vfos[vfo == Vfo::A ? 0 : 1]; }
  [[nodiscard]] const HostVfo& Of(Vfo vfo) const { return Vfos[vfo == Vfo::A ? 0 : 1]; }
};

}  // namespace spectrino
